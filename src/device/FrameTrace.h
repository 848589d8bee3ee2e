// A trace of the line: what a user sends when asking for help.
#pragma once

#include <chrono>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace walrim {

enum class FrameDirection { Sent, Received };

/// One frame as it went over the wire, with its doubled bytes.
struct TracedFrame {
  FrameDirection direction = FrameDirection::Sent;
  std::chrono::nanoseconds time{};  ///< since the trace began
  std::span<const std::uint8_t> bytes;
  std::string_view mark;  ///< what is wrong with it; empty when nothing is
};

/// The mark of bytes that are no frame: they have neither id nor size.
inline constexpr std::string_view SkippedMark = "skipped";

/// Takes the frames of the link as they go. Must not throw.
class FrameTrace {
 public:
  virtual ~FrameTrace() = default;
  virtual void Frame(const TracedFrame& frame) = 0;
  /// Anything else worth knowing: a port opened or closed, a time-out.
  virtual void Note(std::chrono::nanoseconds time, std::string_view text) = 0;
};

/// The line that a file of a trace begins with.
inline constexpr std::string_view TraceHeading = "# seconds\tdirection\tid\tsize\tbytes";

/// One line without line end: seconds with six decimals, TX or RX, id, size, the bytes as pairs of hexadecimal digits,
/// and the mark where there is one; separated by TABs. Id and size are "-" where the frame is too short to have them.
[[nodiscard]] std::string TraceLine(const TracedFrame& frame);
[[nodiscard]] std::string TraceNoteLine(std::chrono::nanoseconds time, std::string_view text);

}  // namespace walrim
