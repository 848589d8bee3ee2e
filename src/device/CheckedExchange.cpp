#include "device/CheckedExchange.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>
#include <utility>
#include <vector>

namespace walrim {

namespace {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;
using Found = CheckedFrameReader::Found;

constexpr milliseconds PollTime{2};

void CountInBurst(int& frames) {
  if (++frames > PacketReply::LastSlot) throw std::out_of_range("more than five frames in one burst");
}

}  // namespace

PacketReply PacketLink::CheckedExchange::Run(int packet_id, const ByteBuffer& data) {
  packet_id_ = packet_id;
  started_at_ = link_.clock_.Monotonic();
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
  if (reply_.Count == 0) reply_.Count = ReceiveTimeout;
  return reply_;
}

/// Not every receiver sends an ACK again when it is asked to. That one came for the packet is what counts.
bool PacketLink::CheckedExchange::TakeDamagedAck() {
  if (!damaged_ack_ || Complete()) return false;
  TakeFrame(*damaged_ack_);
  return true;
}

void PacketLink::CheckedExchange::Send(int packet_id, const ByteBuffer& data) {
  sent_id_ = packet_id;
  sent_data_ = data;
  frames_ = 0;
  sent_at_ = link_.clock_.Monotonic();
  sent_line_time_ = LineByteTime * static_cast<std::int64_t>(FrameOnWire(packet_id, data).size());
  link_.SendPacket(packet_id, data);
}

/// Receives until the answer is whole, or something stands in its way.
PacketLink::CheckedExchange::Trouble PacketLink::CheckedExchange::Collect() {
  damage_passed_over_ = false;
  while (!Complete()) {
    const Found found = NextFrame(ReceiveTimeoutTime);
    if (found == Found::Nothing) return TroubleOfSilence();
    if (PassOver(found)) continue;
    if (!repeated_ && !settled_ && BeganTooEarly()) return SettleLateBurst(found);
    CountInBurst(frames_);
    const Trouble trouble = found == Found::WholeFrame ? TakeWhole(reader_.Last()) : TakeDamaged(reader_.Last());
    if (trouble != Trouble::None) return trouble;
  }
  return Trouble::None;
}

/// Acknowledges a frame that came unasked.
bool PacketLink::CheckedExchange::PassOver(Found found) {
  if (found != Found::WholeFrame || !link_.BelongsToNoTransfer(reader_.Last())) return false;
  link_.Acknowledge(reader_.Last().Id());
  return true;
}

PacketLink::CheckedExchange::Trouble PacketLink::CheckedExchange::TakeWhole(const Frame& frame) {
  if (frame.Id() == Pid_Nak_Byte) return Trouble::Refused;
  if (IsStale(frame)) {
    // A number of records that comes again was not heard to be acknowledged.
    const bool number = answer_ == ExpectedAnswer::OneFrame && frame.Id() == link_.session_.link_pids.Pid_Records;
    if (number) link_.Acknowledge(frame.Id());
    return Trouble::None;
  }
  if (reply_.Count == 0) reply_.waited = frame_began_ - sent_at_;
  TakeFrame(frame);
  const bool damage_before = damage_passed_over_ || reader_.Skipped() > 0;
  return AckIsDue() && damage_before ? Trouble::AckMissing : Trouble::None;
}

PacketLink::CheckedExchange::Trouble PacketLink::CheckedExchange::TakeDamaged(const Frame& frame) {
  if (answer_ == ExpectedAnswer::AckAndAnswer && AckIsDue()) {
    // Of a damaged ACK the answer behind it tells that the packet was taken.
    if (frame.Id() == Pid_Ack_Byte)
      TakeFrame(frame);
    else
      damage_passed_over_ = true;
    return Trouble::None;
  }
  damaged_id_ = frame.Id();
  if (answer_ == ExpectedAnswer::Ack && frame.Id() == Pid_Ack_Byte) damaged_ack_ = frame;
  return WaitBehindDamage();
}

/// What looked like a damaged frame may have been noise in front of one that is coming: that is not asked for, or it
/// would come twice.
PacketLink::CheckedExchange::Trouble PacketLink::CheckedExchange::WaitBehindDamage() {
  for (Found found = NextFrame(Patience()); found != Found::Nothing; found = NextFrame(Patience())) {
    if (PassOver(found)) continue;
    CountInBurst(frames_);
    const Frame& frame = reader_.Last();
    if (frame.damaged || IsStale(frame)) continue;
    return TakeWhole(frame);
  }
  reader_ = {};
  return Trouble::Damaged;
}

/// Frames that belong to an earlier exchange, or to none.
bool PacketLink::CheckedExchange::IsStale(const Frame& frame) const {
  const bool is_ack = frame.Id() == Pid_Ack_Byte;
  const bool names_packet = frame.bytes[2] == 0 || frame.bytes[3] == packet_id_;
  switch (answer_) {
    case ExpectedAnswer::OneFrame:
      return is_ack || frame.Id() == link_.session_.link_pids.Pid_Records;
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
  if (answer_ == ExpectedAnswer::OneFrame) return reply_.Count > 0;
  const int ack = FindAckSlot(reply_);
  return ack > 0 && (answer_ == ExpectedAnswer::Ack || reply_.Count > ack);
}

/// Half a frame, noise in place of one, or an answer without its ACK is damage; nothing at all is a receiver that does
/// not answer.
PacketLink::CheckedExchange::Trouble PacketLink::CheckedExchange::TroubleOfSilence() {
  const int ack = FindAckSlot(reply_);
  const bool ack_damaged = ack > 0 && reply_.Slot(ack).damaged;
  const bool ack_missing = answer_ == ExpectedAnswer::AckAndAnswer && ack < 0;
  const bool damage = reader_.Pending() || damage_passed_over_ || ack_damaged || (ack_missing && reply_.Count > 0);
  TraceCutShort();
  damaged_id_ = reader_.Last().Id();
  reader_ = {};
  if (!damage || WaitIsOver()) return Trouble::Silence;
  return ack_missing || ack_damaged ? Trouble::AckMissing : Trouble::Damaged;
}

/// A command can be sent again as it is: the receiver begins anew. A damaged frame is asked for, whatever it was.
void PacketLink::CheckedExchange::Repeat(Trouble trouble, int packet_id, const ByteBuffer& data) {
  repeated_ = true;
  if (trouble == Trouble::Damaged) {
    Send(Pid_Nak_Byte, IntegerToBuffer(damaged_id_));
  } else if (trouble == Trouble::Refused && sent_id_ == Pid_Nak_Byte) {
    Send(sent_id_, ByteBuffer(sent_data_));
  } else {
    reply_ = {};
    Send(packet_id, data);
  }
}

/// The next frame, or Nothing when no byte came for as long as patience; half a frame is waited for longer.
Found PacketLink::CheckedExchange::NextFrame(nanoseconds patience) {
  auto last_progress = link_.clock_.Monotonic();
  while (true) {
    if (link_.port_.InBufferCount() > 0) {
      const Found found = TakeInput();
      if (found != Found::Nothing) return found;
      last_progress = link_.clock_.Monotonic();
    }
    const nanoseconds limit = reader_.Pending() ? ReceiveTimeoutTime : patience;
    const bool silent = link_.clock_.Monotonic() - last_progress > limit;
    const std::optional<NoAnswer> over = link_.WaitIsOver(last_progress);
    link_.why_ = over.value_or(NoAnswer::Silence);
    if (silent || over || WaitIsOver()) return Found::Nothing;
    link_.YieldNowAndThen();
    link_.port_.Wait(PollTime);
  }
}

/// Bytes that keep coming do not keep a cancelled transfer waiting.
bool PacketLink::CheckedExchange::WaitIsOver() const {
  const bool cancelled = link_.session_.TransferAborted && link_.clock_.Monotonic() - started_at_ > ReceiveTimeoutTime;
  return cancelled || link_.why_ != NoAnswer::Silence || link_.port_.LineLost();
}

/// How long a frame may still be on its way: as long as the receiver took for its slowest answer.
nanoseconds PacketLink::CheckedExchange::Patience() const {
  return std::clamp<nanoseconds>(slowest_answer_, QuietTime, ReceiveTimeoutTime);
}

/// Takes what has come, up to the end of a frame.
Found PacketLink::CheckedExchange::TakeInput() {
  const nanoseconds now = link_.clock_.Monotonic();
  if (!reader_.Pending()) {
    frame_began_ = now;
    slowest_answer_ = std::max(slowest_answer_, now - sent_at_);
  }
  frame_ended_ = now;
  for (std::size_t left = link_.port_.InBufferCount(); left > 0; --left) {
    const auto byte = link_.port_.Input();
    if (!byte) break;
    const Found found = TakeByte(*byte);
    if (found == Found::Nothing) continue;
    TraceFound(found);
    return found;
  }
  return Found::Nothing;
}

Found PacketLink::CheckedExchange::TakeByte(std::uint8_t byte) {
  ++link_.session_.input_seen;
  try {
    return reader_.Take(byte);
  } catch (const std::out_of_range&) {
    if (link_.trace_ != nullptr) {
      link_.trace_->Frame({FrameDirection::Received, link_.TraceTime(), reader_.Raw(), "too long"});
    }
    throw;
  }
}

void PacketLink::CheckedExchange::TraceFound(Found found) {
  if (link_.trace_ == nullptr) return;
  const auto raw = reader_.Raw();
  const auto skipped = raw.first(reader_.Skipped());
  if (!skipped.empty()) {
    link_.trace_->Frame({FrameDirection::Received, link_.TraceTime(), skipped, SkippedMark});
  }
  link_.trace_->Frame({FrameDirection::Received, link_.TraceTime(), raw.subspan(skipped.size()),
                       found == Found::DamagedFrame ? "damaged" : ""});
}

void PacketLink::CheckedExchange::TraceCutShort() {
  if (link_.trace_ == nullptr || !reader_.Pending()) return;
  link_.trace_->Frame({FrameDirection::Received, link_.TraceTime(), reader_.Raw(), "cut short"});
}

void PacketLink::CheckedExchange::TakeFrame(const Frame& frame) {
  if (reply_.Count >= PacketReply::LastSlot) throw std::out_of_range("more than five frames in one burst");
  ++reply_.Count;
  reply_.slots[static_cast<std::size_t>(reply_.Count)] = frame;
}

/// True for a frame that cannot be the answer: it began on the line before the packet had left. Where a line knows
/// nothing of bytes on their way out, their time at 9600 baud tells, unless the frame came faster than that itself.
bool PacketLink::CheckedExchange::BeganTooEarly() const {
  if (link_.input_while_sending_) return true;
  const nanoseconds frame_line_time = LineByteTime * static_cast<std::int64_t>(reader_.Raw().size());
  return frame_began_ - sent_at_ < sent_line_time_ && frame_ended_ - frame_began_ >= frame_line_time / 2;
}

/// The burst that answered the packet before goes on. The answer to this one is behind it: the last frames count.
PacketLink::CheckedExchange::Trouble PacketLink::CheckedExchange::SettleLateBurst(Found first) {
  settled_ = true;
  std::vector<Frame> frames;
  int count = 0;
  for (Found found = first; found != Found::Nothing; found = NextFrame(QuietTime)) {
    if (PassOver(found)) continue;
    CountInBurst(count);
    frames.push_back(reader_.Last());
  }
  const std::size_t wanted = answer_ == ExpectedAnswer::AckAndAnswer ? 2 : 1;
  for (std::size_t k = frames.size() < wanted ? 0 : frames.size() - wanted; k < frames.size(); ++k) {
    damaged_id_ = frames[k].Id();
    if (frames[k].damaged) return Trouble::Damaged;
    if (frames[k].Id() == Pid_Nak_Byte) return Trouble::Refused;
    TakeFrame(frames[k]);
  }
  return Collect();
}

/// Frames beyond the answer are left out. Behind a repetition there may be one on its way still.
void PacketLink::CheckedExchange::DropWhatFollows() {
  link_.burst_frames_ = reply_.Count;
  FinishBurst(link_.burst_frames_);
  if (repeated_) link_.DrainInput(Patience());
}

void PacketLink::CheckedExchange::FinishBurst(int& frames) {
  bool unasked = true;
  while (!unasked || link_.port_.InBufferCount() > 0) {
    const Found found = NextFrame(QuietTime);
    if (found == Found::Nothing) return;
    unasked = PassOver(found);
    if (!unasked) CountInBurst(frames);
  }
}

void PacketLink::CheckedExchange::AcknowledgeRest() {
  started_at_ = link_.clock_.Monotonic();
  link_.BeginExchange(0, answer_);
  while (NextFrame(QuietTime) != Found::Nothing && link_.clock_.Monotonic() - started_at_ < ReceiveTimeoutTime) {
    const Frame& frame = reader_.Last();
    const bool verdict = frame.Id() == Pid_Ack_Byte || frame.Id() == Pid_Nak_Byte;
    if (!frame.damaged && !verdict) link_.Acknowledge(frame.Id());
  }
}

void PacketLink::AcknowledgeInput() {
  try {
    CheckedExchange(*this, ExpectedAnswer::OneFrame).AcknowledgeRest();
  } catch (const std::out_of_range&) {
    DrainInput();
  }
}

PacketReply PacketLink::ExchangeChecked(int packet_id, const ByteBuffer& data, ExpectedAnswer answer) {
  BeginExchange(packet_id, answer);
  int frames_before = std::exchange(burst_frames_, 0);
  if (frames_before > 0) CheckedExchange(*this, answer).FinishBurst(frames_before);
  port_.ClearInBuffer();
  return CheckedExchange(*this, answer).Run(packet_id, data);
}

}  // namespace walrim
