// A receiver that answers as the one in a trace did: a user's report, played to the program.
#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>

#include "receiver/LineEnd.h"
#include "receiver/LineFrame.h"

namespace walrim {

/// What happened on the line of a trace.
struct TraceStep {
  enum class Kind : std::uint8_t { HostSends, ReceiverSends, LineLost };

  Kind kind = Kind::HostSends;
  /// When its first byte begins and its last one has passed, since the trace began.
  std::chrono::nanoseconds begin{};
  std::chrono::nanoseconds end{};
  std::vector<std::uint8_t> bytes;
  std::size_t line = 0;  ///< of the trace, from 1
};

struct TraceReading {
  std::vector<TraceStep> steps;
  std::string problem;  ///< what makes it no trace, with the line's number; empty for a trace
};

/// Reads a trace:
///
///   line   := seconds TAB ( TX | RX ) TAB id TAB size TAB bytes [ TAB "! " mark ]  |  seconds TAB "--" TAB note
///   id, size := what stands in the frame there, decimal, or "-"
///   bytes  := pairs of hexadecimal digits with a blank between them
///
/// Empty lines and those that begin with "#" say nothing. A trace has at least one TX.
[[nodiscard]] TraceReading ReadTrace(std::string_view text);

/// Expects the host's packets of a trace one by one, byte for byte, and sends behind each of them what followed it, as
/// late as it came. What the host says while bytes are still due changes nothing about them.
class TraceReplay : public LineEnd {
 public:
  /// Of a trace that was read without a problem.
  explicit TraceReplay(std::vector<TraceStep> steps);

  void Receive(std::span<const std::uint8_t> bytes, std::chrono::nanoseconds now) override;
  [[nodiscard]] std::optional<std::chrono::nanoseconds> NextDue() const override;
  [[nodiscard]] std::vector<std::uint8_t> Send(std::chrono::nanoseconds now) override;
  /// Once the host has sent another packet than the trace has, or the line was lost there.
  [[nodiscard]] bool LineClosed() const override { return lost_ || !problem_.empty(); }

  /// Names the first packet that differs: its number from 1, what was expected and what came. Empty where none did.
  [[nodiscard]] const std::string& Problem() const { return problem_; }

 private:
  struct DueByte {
    std::chrono::nanoseconds due;
    std::uint8_t byte;
  };

  void TakePacket(std::chrono::nanoseconds now);
  void FollowTrace(std::chrono::nanoseconds now);

  std::vector<TraceStep> steps_;
  std::size_t next_ = 0;     ///< the step that the host is to take
  std::size_t packets_ = 0;  ///< of the host that came as expected
  std::vector<std::uint8_t> came_;
  LineFrameReader reader_;
  std::deque<DueByte> due_;
  std::optional<std::chrono::nanoseconds> lost_at_;
  bool lost_ = false;
  std::string problem_;
};

}  // namespace walrim
