#include "qt/QtClock.h"

#include <ctime>
#include <gtest/gtest.h>

namespace walrim {
namespace {

CivilTime SystemLocalTime() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec};
}

TEST(QtClock, MonotonicNeverGoesBack) {
  const QtClock clock;
  auto last = clock.Monotonic();
  const auto start = last;
  while (last == start) {
    const auto now = clock.Monotonic();
    ASSERT_GE(now, last);
    last = now;
  }
  EXPECT_GT(last, start);
}

TEST(QtClock, LocalTimeIsTheSystemsLocalTime) {
  const QtClock clock;
  // The second may end between two readings, so that one that lies between two equal ones decides.
  CivilTime before;
  CivilTime told;
  CivilTime after;
  do {
    before = SystemLocalTime();
    told = clock.LocalTime();
    after = SystemLocalTime();
  } while (before != after);
  EXPECT_EQ(told, before);
}

}  // namespace
}  // namespace walrim
