// What a receiver knows of its time and its place, as it tells them.
//
//   date and time (14) := D600 := month:8 day:8 year:16 hour:16 minute:8 second:8      UTC
//   position (17)      := D700 := lat:double lon:double                                radians
#pragma once

#include <cstdint>

#include "receiver/LineFrame.h"

namespace walrim {

/// utc_s are seconds since 1989/12/31 00:00:00.
[[nodiscard]] LinePacket DateTimePacket(std::int64_t utc_s);

/// Where the demonstration receiver stands: in front of a mountain railway's station, west of Tokyo.
[[nodiscard]] LinePacket PositionPacket();

}  // namespace walrim
