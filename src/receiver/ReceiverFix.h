// What a receiver knows of its time and its place, as it tells them.
//
//   date and time (14) := D600 := month:8 day:8 year:16 hour:16 minute:8 second:8      UTC
//   position (17)      := D700 := lat:double lon:double                                radians
//   PVT (51)           := D800 := alt:float epe:float eph:float epv:float fix:16 tow:double lat:double lon:double
//                         east:float north:float up:float msl_hght:float leap:16 wn_days:32
//                         tow in seconds of the week, GPS time; UTC = 1989/12/31 + wn_days + tow - leap
#pragma once

#include <cstdint>
#include <optional>

#include "receiver/LineFrame.h"

namespace walrim {

inline constexpr std::uint8_t DateTimeData = 14;
/// Receivers count weeks with ten bits.
inline constexpr std::int64_t SecondsPerRollOver = 1024LL * 7 * 86400;

/// utc_s are seconds since 1989/12/31 00:00:00.
[[nodiscard]] LinePacket DateTimePacket(std::int64_t utc_s);

/// The time of such a packet; nothing where its data are no date that there is.
[[nodiscard]] std::optional<std::int64_t> UtcSecondsOf(const LinePacket& date_time);

/// Where the demonstration receiver stands: in front of a mountain railway's station, west of Tokyo.
[[nodiscard]] LinePacket PositionPacket();

/// A fix in three dimensions, standing there. utc_s as for DateTimePacket.
[[nodiscard]] LinePacket PvtPacket(std::int64_t utc_s);

}  // namespace walrim
