#include "device/CheckedExchange.h"

#include <stdexcept>
#include <string_view>
#include <utility>
#include <vector>

namespace walrim {

using Found = CheckedFrameReader::Found;

PacketReply PacketLink::CheckedExchange::Run(int packet_id, std::span<const std::uint8_t> data) {
  packet_id_ = packet_id;
  input_.Begin();
  link_.BeginExchange(packet_id, answer_);
  Send(packet_id, data);
  for (int tries = 1;; ++tries) {
    const Trouble trouble = Collect();
    if (trouble == Trouble::None) break;
    const bool given_up = trouble == Trouble::Silence || tries == MostTries;
    if (given_up && TakeDamagedAck()) break;
    if (given_up) return Failed(trouble);
    Repeat(trouble, packet_id, data);
  }
  DropWhatFollows();
  return reply_;
}

PacketReply PacketLink::CheckedExchange::Failed(Trouble trouble) {
  std::string_view note = "given up";
  if (trouble == Trouble::Silence) {
    reply_.why = link_.why_;
    note = link_.port_.LineLost() ? "line lost" : reply_.why == NoAnswer::Cancel ? "cancelled" : "time-out";
  } else {
    reply_.why = trouble == Trouble::Refused ? NoAnswer::Refusal : NoAnswer::Damage;
  }
  link_.Note(note);
  if (reply_.count == 0) reply_.count = ReceiveTimeout;
  return reply_;
}

/// Not every receiver sends an ACK again when it is asked to. That one came for the packet is what counts.
bool PacketLink::CheckedExchange::TakeDamagedAck() {
  if (!damaged_ack_ || Complete()) return false;
  TakeFrame(*damaged_ack_);
  return true;
}

void PacketLink::CheckedExchange::Send(int packet_id, std::span<const std::uint8_t> data) {
  sent_id_ = packet_id;
  sent_data_.assign(data.begin(), data.end());
  frames_ = 0;
  input_.NoteSending(FrameOnWire(packet_id, data).size());
  link_.SendPacket(packet_id, data);
}

/// Receives until the answer is whole, or something stands in its way.
auto PacketLink::CheckedExchange::Collect() -> Trouble {
  damage_passed_over_ = false;
  while (!Complete()) {
    const Found found = input_.NextFrame(ReceiveTimeoutTime);
    if (found == Found::Nothing) return TroubleOfSilence();
    if (input_.PassOver(found)) continue;
    if (!repeated_ && !settled_ && input_.BeganTooEarly()) return SettleLateBurst(found);
    CountInBurst(frames_);
    const Trouble trouble = found == Found::WholeFrame ? TakeWhole(input_.Last()) : TakeDamaged(input_.Last());
    if (trouble != Trouble::None) return trouble;
  }
  return Trouble::None;
}

auto PacketLink::CheckedExchange::TakeWhole(const Frame& frame) -> Trouble {
  if (frame.Id() == PacketId::Nak) return Trouble::Refused;
  if (IsStale(frame)) {
    // A number of records that comes again was not heard to be acknowledged.
    const bool number = answer_ == ExpectedAnswer::OneFrame && frame.Id() == PacketId::Records;
    if (number) link_.Acknowledge(frame.Id());
    return Trouble::None;
  }
  if (reply_.count == 0) reply_.waited = input_.Waited();
  TakeFrame(frame);
  const bool damage_before = damage_passed_over_ || input_.NoiseBefore();
  return AckIsDue() && damage_before ? Trouble::AckMissing : Trouble::None;
}

auto PacketLink::CheckedExchange::TakeDamaged(const Frame& frame) -> Trouble {
  if (answer_ == ExpectedAnswer::AckAndAnswer && AckIsDue()) {
    // Of a damaged ACK the answer behind it tells that the packet was taken.
    if (frame.Id() == PacketId::Ack)
      TakeFrame(frame);
    else
      damage_passed_over_ = true;
    return Trouble::None;
  }
  damaged_id_ = frame.Id();
  if (answer_ == ExpectedAnswer::Ack && frame.Id() == PacketId::Ack) damaged_ack_ = frame;
  return WaitBehindDamage();
}

/// What looked like a damaged frame may have been noise in front of one that is coming: that is not asked for, or it
/// would come twice.
auto PacketLink::CheckedExchange::WaitBehindDamage() -> Trouble {
  for (Found found = input_.NextFrame(input_.Patience()); found != Found::Nothing;
       found = input_.NextFrame(input_.Patience())) {
    if (input_.PassOver(found)) continue;
    CountInBurst(frames_);
    const Frame& frame = input_.Last();
    if (frame.damaged || IsStale(frame)) continue;
    return TakeWhole(frame);
  }
  input_.Forget();
  return Trouble::Damaged;
}

/// Frames that belong to an earlier exchange, or to none.
bool PacketLink::CheckedExchange::IsStale(const Frame& frame) const {
  const bool is_ack = frame.Id() == PacketId::Ack;
  const bool names_packet = frame.bytes[2] == 0 || frame.bytes[3] == packet_id_;
  switch (answer_) {
    case ExpectedAnswer::OneFrame:
      return is_ack || frame.Id() == PacketId::Records;
    case ExpectedAnswer::Ack:
      return !is_ack || !names_packet;
    case ExpectedAnswer::AckAndAnswer:
      return is_ack && (!AckIsDue() || !names_packet);
  }
  return false;
}

bool PacketLink::CheckedExchange::AckIsDue() const {
  return answer_ != ExpectedAnswer::OneFrame && FindAckSlot(reply_) < 0;
}

bool PacketLink::CheckedExchange::Complete() const {
  if (answer_ == ExpectedAnswer::OneFrame) return reply_.count > 0;
  const int ack = FindAckSlot(reply_);
  return ack > 0 && (answer_ == ExpectedAnswer::Ack || reply_.count > ack);
}

/// Half a frame, noise in place of one, or an answer without its ACK is damage; nothing at all is a receiver that does
/// not answer.
auto PacketLink::CheckedExchange::TroubleOfSilence() -> Trouble {
  const int ack = FindAckSlot(reply_);
  const bool ack_damaged = ack > 0 && reply_.Slot(ack).damaged;
  const bool ack_missing = answer_ == ExpectedAnswer::AckAndAnswer && ack < 0;
  const bool damage = input_.Pending() || damage_passed_over_ || ack_damaged || (ack_missing && reply_.count > 0);
  input_.TraceCutShort();
  damaged_id_ = input_.Last().Id();
  input_.Forget();
  if (!damage || input_.WaitIsOver()) return Trouble::Silence;
  return ack_missing || ack_damaged ? Trouble::AckMissing : Trouble::Damaged;
}

/// A command can be sent again as it is: the receiver begins anew. A damaged frame is asked for, whatever it was.
void PacketLink::CheckedExchange::Repeat(Trouble trouble, int packet_id, std::span<const std::uint8_t> data) {
  repeated_ = true;
  if (trouble == Trouble::Damaged) {
    Send(PacketId::Nak, NumberData(damaged_id_));
  } else if (trouble == Trouble::Refused && sent_id_ == PacketId::Nak) {
    Send(sent_id_, std::vector(sent_data_));
  } else {
    reply_ = {};
    Send(packet_id, data);
  }
}

void PacketLink::CheckedExchange::TakeFrame(const Frame& frame) {
  if (reply_.count >= PacketReply::LastSlot) throw std::out_of_range("more than five frames in one burst");
  ++reply_.count;
  reply_.slots[static_cast<std::size_t>(reply_.count)] = frame;
}

/// The burst that answered the packet before goes on. The answer to this one is behind it: the last frames count.
auto PacketLink::CheckedExchange::SettleLateBurst(Found first) -> Trouble {
  settled_ = true;
  std::vector<Frame> frames;
  int count = 0;
  for (Found found = first; found != Found::Nothing; found = input_.NextFrame(QuietTime)) {
    if (input_.PassOver(found)) continue;
    CountInBurst(count);
    frames.push_back(input_.Last());
  }
  const std::size_t wanted = answer_ == ExpectedAnswer::AckAndAnswer ? 2 : 1;
  for (std::size_t k = frames.size() < wanted ? 0 : frames.size() - wanted; k < frames.size(); ++k) {
    damaged_id_ = frames[k].Id();
    if (frames[k].damaged) return Trouble::Damaged;
    if (frames[k].Id() == PacketId::Nak) return Trouble::Refused;
    TakeFrame(frames[k]);
  }
  return Collect();
}

/// Frames beyond the answer are left out. Behind a repetition there may be one on its way still.
void PacketLink::CheckedExchange::DropWhatFollows() {
  link_.burst_frames_ = reply_.count;
  input_.FinishBurst(link_.burst_frames_);
  if (repeated_) link_.DrainInput(input_.Patience());
}

}  // namespace walrim
