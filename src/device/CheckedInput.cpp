#include "device/CheckedInput.h"

#include <algorithm>
#include <stdexcept>

namespace walrim {

namespace {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;
using Found = CheckedFrameReader::Found;

constexpr milliseconds PollTime{2};

}  // namespace

void CountInBurst(int& frames) {
  if (++frames > PacketReply::LastSlot) throw std::out_of_range("more than five frames in one burst");
}

void PacketLink::CheckedInput::NoteSending(std::size_t wire_bytes) {
  sent_at_ = link_.clock_.Monotonic();
  sent_line_time_ = LineByteTime * static_cast<std::int64_t>(wire_bytes);
}

bool PacketLink::CheckedInput::PassOver(Found found) {
  if (found != Found::WholeFrame || !link_.BelongsToNoTransfer(reader_.Last())) return false;
  link_.Acknowledge(reader_.Last().Id());
  return true;
}

Found PacketLink::CheckedInput::NextFrame(nanoseconds patience) {
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

bool PacketLink::CheckedInput::WaitIsOver() const {
  const bool cancelled = link_.stop_.aborted && link_.clock_.Monotonic() - started_at_ > ReceiveTimeoutTime;
  return cancelled || link_.why_ != NoAnswer::Silence || link_.port_.LineLost();
}

nanoseconds PacketLink::CheckedInput::Patience() const {
  return std::clamp<nanoseconds>(slowest_answer_, QuietTime, ReceiveTimeoutTime);
}

/// Takes what has come, up to the end of a frame.
Found PacketLink::CheckedInput::TakeInput() {
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

Found PacketLink::CheckedInput::TakeByte(std::uint8_t byte) {
  ++link_.input_seen_;
  try {
    return reader_.Take(byte);
  } catch (const std::out_of_range&) {
    if (link_.trace_ != nullptr) {
      link_.trace_->Frame({FrameDirection::Received, link_.TraceTime(), reader_.Raw(), "too long"});
    }
    throw;
  }
}

void PacketLink::CheckedInput::TraceFound(Found found) {
  if (link_.trace_ == nullptr) return;
  const auto raw = reader_.Raw();
  const auto skipped = raw.first(reader_.Skipped());
  if (!skipped.empty()) {
    link_.trace_->Frame({FrameDirection::Received, link_.TraceTime(), skipped, SkippedMark});
  }
  link_.trace_->Frame({FrameDirection::Received, link_.TraceTime(), raw.subspan(skipped.size()),
                       found == Found::DamagedFrame ? "damaged" : ""});
}

void PacketLink::CheckedInput::TraceCutShort() {
  if (link_.trace_ == nullptr || !reader_.Pending()) return;
  link_.trace_->Frame({FrameDirection::Received, link_.TraceTime(), reader_.Raw(), "cut short"});
}

/// Where a line knows nothing of bytes on their way out, their time at 9600 baud tells, unless the frame came faster
/// than that itself.
bool PacketLink::CheckedInput::BeganTooEarly() const {
  if (link_.input_while_sending_) return true;
  const nanoseconds frame_line_time = LineByteTime * static_cast<std::int64_t>(reader_.Raw().size());
  return frame_began_ - sent_at_ < sent_line_time_ && frame_ended_ - frame_began_ >= frame_line_time / 2;
}

void PacketLink::CheckedInput::FinishBurst(int& frames) {
  bool unasked = true;
  while (!unasked || link_.port_.InBufferCount() > 0) {
    const Found found = NextFrame(QuietTime);
    if (found == Found::Nothing) return;
    unasked = PassOver(found);
    if (!unasked) CountInBurst(frames);
  }
}

void PacketLink::CheckedInput::AcknowledgeRest() {
  Begin();
  while (NextFrame(QuietTime) != Found::Nothing && link_.clock_.Monotonic() - started_at_ < ReceiveTimeoutTime) {
    const Frame& frame = reader_.Last();
    const bool verdict = frame.Id() == PacketId::Ack || frame.Id() == PacketId::Nak;
    if (!frame.damaged && !verdict) link_.Acknowledge(frame.Id());
  }
}

}  // namespace walrim
