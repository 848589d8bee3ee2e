#include "device/CheckedExchange.h"

#include <stdexcept>
#include <utility>
#include <vector>

namespace walrim {

namespace {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;
using Found = CheckedFrameReader::Found;

constexpr milliseconds PollTime{2};
/// A line without a byte for this long has nothing more of a burst.
constexpr milliseconds QuietTime{100};

void CountInBurst(int& frames) {
  if (++frames > PacketReply::LastSlot) throw std::out_of_range("more than five frames in one burst");
}

}  // namespace

PacketReply PacketLink::CheckedExchange::Run(int packet_id, const ByteBuffer& data) {
  Send(packet_id, data);
  for (int tries = 1;; ++tries) {
    const Trouble trouble = Collect();
    if (trouble == Trouble::None) break;
    if (trouble == Trouble::Silence || tries == MostTries) {
      link_.Note(trouble == Trouble::Silence ? (link_.port_.LineLost() ? "line lost" : "time-out") : "given up");
      if (reply_.Count == 0) reply_.Count = ReceiveTimeout;
      return reply_;
    }
    Repeat(trouble, packet_id, data);
  }
  DropWhatFollows();
  return reply_;
}

void PacketLink::CheckedExchange::Send(int packet_id, const ByteBuffer& data) {
  sent_id_ = packet_id;
  sent_data_ = data;
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
    const Frame& frame = reader_.Last();
    if (!repeated_ && !settled_ && BeganTooEarly()) return SettleLateBurst(found);
    if (found == Found::WholeFrame && frame.Id() == Pid_Nak_Byte) return Trouble::Refused;
    const bool before_ack = answer_ == ExpectedAnswer::AckAndAnswer && FindAckSlot(reply_) < 0;
    if (found == Found::WholeFrame || (before_ack && frame.Id() == Pid_Ack_Byte)) {
      // Of a damaged ACK the answer behind it tells that the packet was taken.
      TakeFrame(frame);
    } else if (before_ack) {
      damage_passed_over_ = true;
    } else {
      damaged_id_ = frame.Id();
      return Trouble::Damaged;
    }
    if (damage_passed_over_ && reply_.Count > 0 && FindAckSlot(reply_) < 0) return Trouble::AckMissing;
  }
  return Trouble::None;
}

bool PacketLink::CheckedExchange::Complete() const {
  if (answer_ == ExpectedAnswer::OneFrame) return reply_.Count > 0;
  const int ack = FindAckSlot(reply_);
  return ack > 0 && reply_.Count > ack;
}

/// Half a frame, or noise in place of one, is damage; nothing at all is a receiver that does not answer.
PacketLink::CheckedExchange::Trouble PacketLink::CheckedExchange::TroubleOfSilence() {
  const int ack = FindAckSlot(reply_);
  const bool damage = reader_.Pending() || damage_passed_over_ || (ack > 0 && reply_.Slot(ack).damaged);
  TraceCutShort();
  damaged_id_ = reader_.Last().Id();
  reader_ = {};
  if (!damage || link_.port_.LineLost()) return Trouble::Silence;
  if (answer_ == ExpectedAnswer::OneFrame) return Trouble::Damaged;
  return ack > 0 && !reply_.Slot(ack).damaged ? Trouble::Damaged : Trouble::AckMissing;
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
    if (link_.port_.LineLost() || link_.clock_.Monotonic() - last_progress > limit) return Found::Nothing;
    link_.YieldNowAndThen();
    link_.port_.Wait(PollTime);
  }
}

/// Takes what has come, up to the end of a frame.
Found PacketLink::CheckedExchange::TakeInput() {
  const nanoseconds now = link_.clock_.Monotonic();
  if (!reader_.Pending()) frame_began_ = now;
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
    link_.trace_->Frame({FrameDirection::Received, link_.TraceTime(), skipped, "skipped"});
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
    CountInBurst(count);
    frames.push_back(reader_.Last());
  }
  const std::size_t wanted = answer_ == ExpectedAnswer::OneFrame ? 1 : 2;
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
  if (repeated_) link_.DrainInput();
}

void PacketLink::CheckedExchange::FinishBurst(int& frames) {
  if (link_.port_.InBufferCount() == 0) return;
  while (NextFrame(QuietTime) != Found::Nothing)
    CountInBurst(frames);
}

PacketReply PacketLink::ExchangeChecked(int packet_id, const ByteBuffer& data, ExpectedAnswer answer) {
  int frames_before = std::exchange(burst_frames_, 0);
  if (frames_before > 0) CheckedExchange(*this, answer).FinishBurst(frames_before);
  port_.ClearInBuffer();
  return CheckedExchange(*this, answer).Run(packet_id, data);
}

}  // namespace walrim
