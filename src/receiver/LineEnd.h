// Who is at the receiver's end of a line.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace walrim {

/// Bytes in and bytes out, without a thread or a clock of its own. Times are on any clock that only goes forward; each
/// call's time is at or after the one before.
class LineEnd {
 public:
  virtual ~LineEnd() = default;

  /// Puts bytes on the line towards the receiver.
  virtual void Receive(std::span<const std::uint8_t> bytes, std::chrono::nanoseconds now) = 0;
  /// When the next byte from the receiver has passed, or it does something unasked; nothing when neither will be.
  [[nodiscard]] virtual std::optional<std::chrono::nanoseconds> NextDue() const = 0;
  /// The bytes from the receiver that have passed by now, each given once.
  [[nodiscard]] virtual std::vector<std::uint8_t> Send(std::chrono::nanoseconds now) = 0;
  /// True once the line is of no more use. Nothing passes any more.
  [[nodiscard]] virtual bool LineClosed() const = 0;
};

}  // namespace walrim
