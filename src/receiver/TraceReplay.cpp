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
    if (note.starts_with("port ")) settling_ = true;
    if (note == "checked link") settling_ = false;
    if (note == "line lost") Add({Kind::LineLost, time, {}, number});
  }

  std::string TakeFrame(Kind kind, std::string_view rest, nanoseconds time, std::size_t number) {
    const std::string_view id = TakeUpTo(rest, '\t');
    const std::string_view size = TakeUpTo(rest, '\t');
    const std::optional<std::vector<std::uint8_t>> bytes = BytesOfDigits(TakeUpTo(rest, '\t'));
    if (!bytes) return "no bytes in hexadecimal digits";
    if (!NamesByte(id, *bytes, 1) || !NamesByte(size, *bytes, 2)) return "id or size differ from the bytes";
    if (!rest.empty() && !rest.starts_with("! ")) return "something behind the bytes that is no mark";
    // On the plain link a frame is read, and traced, once its burst has settled: once nothing more has come for as long
    // as its beginning was waited for. So it came half way between the line before and its own.
    const bool late = kind == Kind::ReceiverSends && settling_;
    Add({kind, late ? last_ + std::max(time - last_, nanoseconds(0)) / 2 : time, *bytes, number});
    last_ = time;
    return {};
  }

  /// What came before anything was sent answers nothing.
  void Add(TraceStep step) {
    if (step.kind == Kind::HostSends || !steps_.empty()) steps_.push_back(std::move(step));
  }

  std::vector<TraceStep> steps_;
  nanoseconds last_{};    ///< the time of the frame before
  bool settling_ = true;  ///< an identification, or the plain link
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
  const nanoseconds sent_at = steps_[next_].time;
  for (++next_; next_ < steps_.size() && steps_[next_].kind != Kind::HostSends; ++next_) {
    TraceStep step = steps_[next_];
    step.time = now + std::max(step.time - sent_at, nanoseconds(0));
    if (!due_.empty()) step.time = std::max(step.time, due_.back().time);
    due_.push_back(std::move(step));
  }
}

std::optional<nanoseconds> TraceReplay::NextDue() const {
  if (due_.empty()) return std::nullopt;
  return due_.front().time;
}

std::vector<std::uint8_t> TraceReplay::Send(nanoseconds now) {
  std::vector<std::uint8_t> bytes;
  while (!LineClosed() && !due_.empty() && due_.front().time <= now) {
    const TraceStep& step = due_.front();
    bytes.insert(bytes.end(), step.bytes.begin(), step.bytes.end());
    lost_ = step.kind == Kind::LineLost;
    due_.pop_front();
  }
  return bytes;
}

}  // namespace walrim
