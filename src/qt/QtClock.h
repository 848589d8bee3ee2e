// The computer's clocks.
#pragma once

#include "platform/Clock.h"

namespace walrim {

class QtClock : public Clock {
 public:
  [[nodiscard]] std::chrono::nanoseconds Monotonic() const override;
  [[nodiscard]] std::int64_t UtcSeconds() const override;
  [[nodiscard]] CivilTime LocalTime() const override;
};

}  // namespace walrim
