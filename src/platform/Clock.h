// Time, handed in from outside.
#pragma once

#include <chrono>
#include <cstdint>

#include "text/Dates.h"

namespace walrim {

class Clock {
 public:
  virtual ~Clock() = default;

  /// Time that only goes forward, from an arbitrary start; for time-outs and pacing.
  [[nodiscard]] virtual std::chrono::nanoseconds Monotonic() const = 0;
  /// The wall clock in UTC, in seconds since 1989/12/31 00:00:00.
  [[nodiscard]] virtual std::int64_t UtcSeconds() const = 0;
  /// The wall clock in local time; for names and stamps.
  [[nodiscard]] virtual CivilTime LocalTime() const = 0;
};

}  // namespace walrim
