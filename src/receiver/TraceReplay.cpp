#include "receiver/TraceReplay.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

#include "text/Scan.h"

namespace walrim {

namespace {

using std::chrono::nanoseconds;
using Kind = TraceStep::Kind;

constexpr double LongestTrace_s = 1.0e9;
/// The id that begins an identification.
constexpr std::string_view ProductRequest = "254";
/// Of a byte at 9600 baud.
constexpr nanoseconds ByteTime{1'041'667};
/// More than any packet has on the line, all its bytes doubled.
constexpr std::size_t LongestPacket = 2 * (MaxLinePacketData + 6);

std::optional<nanoseconds> TimeOf(std::string_view text) {
  double seconds = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds, std::chars_format::fixed);
  const bool whole = error == std::errc() && end == text.data() + text.size();
  if (!whole || !(seconds >= 0 && seconds < LongestTrace_s)) return std::nullopt;
  return std::chrono::duration_cast<nanoseconds>(std::chrono::duration<double>(seconds));
}

std::optional<std::vector<std::uint8_t>> BytesOfDigits(std::string_view text) {
  std::vector<std::uint8_t> bytes;
  bytes.reserve(text.size() / 3 + 1);
  do {
    const std::string_view pair = TakeUpTo(text, ' ');
    std::uint8_t byte = 0;
    const auto [end, error] = std::from_chars(pair.data(), pair.data() + pair.size(), byte, 16);
    if (pair.size() != 2 || error != std::errc() || end != pair.data() + 2) return std::nullopt;
    bytes.push_back(byte);
  } while (!text.empty());
  return bytes;
}

bool NamesByte(std::string_view text, const std::vector<std::uint8_t>& bytes, std::size_t index) {
  return text == "-" || (index < bytes.size() && text == std::to_string(bytes[index]));
}

/// Reads one line after the other.
class TraceReader {
 public:
  /// What is wrong with a line; empty for a good one.
  std::string Take(std::string_view line, std::size_t number) {
    const std::optional<nanoseconds> time = TimeOf(TakeUpTo(line, '\t'));
    if (!time) return "no time in front";
    const std::string_view direction = TakeUpTo(line, '\t');
    if (direction == "--") {
      TakeNote(line, *time, number);
      return {};
    }
    if (direction != "TX" && direction != "RX") return "neither TX nor RX nor --";
    return TakeFrame(direction == "TX" ? Kind::HostSends : Kind::ReceiverSends, line, *time, number);
  }
  [[nodiscard]] std::vector<TraceStep> Steps() { return std::move(steps_); }

 private:
  void TakeNote(std::string_view note, nanoseconds time, std::size_t number) {
    if (note == "checked link") settling_ = false;
    const bool gone = note.starts_with("port ") && note.ends_with(" cannot be opened");
    if (note == "line lost") Add({Kind::LineLost, time, time, {}, number});
    // A port that was not there any more had gone before.
    if (gone && !steps_.empty()) Add({Kind::LineLost, steps_.back().end, steps_.back().end, {}, number});
  }

  std::string TakeFrame(Kind kind, std::string_view rest, nanoseconds time, std::size_t number) {
    const std::string_view id = TakeUpTo(rest, '\t');
    const std::string_view size = TakeUpTo(rest, '\t');
    const std::optional<std::vector<std::uint8_t>> bytes = BytesOfDigits(TakeUpTo(rest, '\t'));
    if (!bytes) return "no bytes in hexadecimal digits";
    if (!NamesByte(id, *bytes, 1) || !NamesByte(size, *bytes, 2)) return "id or size differ from the bytes";
    if (!rest.empty() && !rest.starts_with("! ")) return "something behind the bytes that is no mark";
    if (kind == Kind::HostSends && id == ProductRequest) settling_ = true;
    TraceStep step{kind, time, time, *bytes, number};
    if (kind == Kind::ReceiverSends) GuessBeginning(step);
    Add(std::move(step));
    last_ = time;
    last_size_ = kind == Kind::HostSends ? bytes->size() : 0;
    return {};
  }

  /// Only when a frame had been read is traced. On the plain link that was once its burst had settled: once nothing
  /// more had come for as long as its beginning was waited for; so it came half way. On the checked link it was at its
  /// end: it began at the line's pace before, or, slower, once the host's packet had left, as the host may have given
  /// up waiting for its beginning otherwise.
  void GuessBeginning(TraceStep& step) const {
    const nanoseconds span = std::max(step.end - last_, nanoseconds(0));
    if (settling_) {
      step.begin = step.end = last_ + span / 2;
      return;
    }
    const nanoseconds sending = ByteTime * static_cast<std::int64_t>(last_size_);
    const nanoseconds coming = ByteTime * static_cast<std::int64_t>(step.bytes.size());
    step.begin = last_ + std::clamp(span - coming, nanoseconds(0), sending);
  }

  /// What came before anything was sent answers nothing.
  void Add(TraceStep step) {
    if (step.kind == Kind::HostSends || !steps_.empty()) steps_.push_back(std::move(step));
  }

  std::vector<TraceStep> steps_;
  nanoseconds last_{};         ///< the time of the frame before
  std::size_t last_size_ = 0;  ///< its bytes where the host sent it
  bool settling_ = true;       ///< an identification, or the plain link
};

std::string Described(std::span<const std::uint8_t> bytes) {
  constexpr char digits[] = "0123456789ABCDEF";
  std::string text = "id " + (bytes.size() > 1 ? std::to_string(bytes[1]) : "-") + ",";
  for (const std::uint8_t byte : bytes)
    text.append({' ', digits[byte >> 4], digits[byte & 15]});
  return text;
}

}  // namespace

TraceReading ReadTrace(std::string_view text) {
  TraceReader reader;
  for (std::size_t number = 1; !text.empty(); ++number) {
    std::string_view line = TakeUpTo(text, '\n');
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (line.empty() || line.starts_with('#')) continue;
    const std::string problem = reader.Take(line, number);
    if (!problem.empty()) return {{}, "line " + std::to_string(number) + ": " + problem};
  }
  TraceReading reading{reader.Steps(), {}};
  if (reading.steps.empty()) reading.problem = "no packet was sent in it";
  return reading;
}

TraceReplay::TraceReplay(std::vector<TraceStep> steps) : steps_(std::move(steps)) {}

void TraceReplay::Receive(std::span<const std::uint8_t> bytes, nanoseconds now) {
  for (const std::uint8_t byte : bytes) {
    if (LineClosed()) return;
    came_.push_back(byte);
    if (reader_.Take(byte) || came_.size() > LongestPacket) TakePacket(now);
  }
}

void TraceReplay::TakePacket(nanoseconds now) {
  const std::string number = "packet " + std::to_string(packets_ + 1);
  if (next_ == steps_.size()) {
    problem_ = number + ": nothing expected, the trace is over; came " + Described(came_);
  } else if (came_ != steps_[next_].bytes) {
    problem_ = number + " (line " + std::to_string(steps_[next_].line) + "): expected " +
               Described(steps_[next_].bytes) + "; came " + Described(came_);
  } else {
    ++packets_;
    FollowTrace(now);
  }
  came_.clear();
}

void TraceReplay::FollowTrace(nanoseconds now) {
  const nanoseconds shift = now - steps_[next_].end;
  nanoseconds due = due_.empty() ? now : std::max(now, due_.back().due);
  for (++next_; next_ < steps_.size() && steps_[next_].kind != Kind::HostSends; ++next_) {
    const TraceStep& step = steps_[next_];
    const auto size = static_cast<std::int64_t>(step.bytes.size());
    for (std::int64_t i = 0; i < size; ++i) {
      due = std::max(due, shift + step.begin + (step.end - step.begin) * (i + 1) / size);
      due_.push_back({due, step.bytes[static_cast<std::size_t>(i)]});
    }
    if (step.kind == Kind::LineLost) lost_at_ = std::max(due, shift + step.end);
  }
}

std::optional<nanoseconds> TraceReplay::NextDue() const {
  return due_.empty() ? lost_at_ : due_.front().due;
}

std::vector<std::uint8_t> TraceReplay::Send(nanoseconds now) {
  std::vector<std::uint8_t> bytes;
  while (!LineClosed() && !due_.empty() && due_.front().due <= now) {
    bytes.push_back(due_.front().byte);
    due_.pop_front();
  }
  lost_ = lost_ || (due_.empty() && lost_at_ && *lost_at_ <= now);
  return bytes;
}

}  // namespace walrim
