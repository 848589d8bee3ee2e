// What went over the line lately, for a user who asks for help afterwards.
#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <vector>

#include "device/FrameTrace.h"

namespace walrim {

/// Keeps the frames and notes of all commands. Where they become too many the oldest go.
class TraceMemory : public FrameTrace {
 public:
  /// About as many bytes are kept: hours on the line.
  static constexpr std::size_t MostBytes = std::size_t{8} << 20;

  void Frame(const TracedFrame& frame) override;
  void Note(std::chrono::nanoseconds time, std::string_view text) override;

  /// Whether nothing is kept.
  [[nodiscard]] bool Empty() const { return events_.empty(); }
  /// The trace as it stands in a file; the positions as PositionHiding makes them where they are to be hidden.
  [[nodiscard]] std::string Text(bool hide_positions) const;

 private:
  struct Event {
    bool note = false;
    FrameDirection direction = FrameDirection::Sent;
    std::chrono::nanoseconds time{};
    std::vector<std::uint8_t> bytes;
    std::string text;  ///< a note, or a frame's mark
  };

  [[nodiscard]] static std::size_t SizeOf(const Event& event);
  void Keep(Event event);

  std::deque<Event> events_;
  std::size_t kept_bytes_ = 0;
};

}  // namespace walrim
