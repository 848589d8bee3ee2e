#include "receiver/ReceiverFix.h"

#include <numbers>

#include "receiver/WireBytes.h"
#include "text/Dates.h"

namespace walrim {

namespace {

constexpr std::uint8_t PositionData = 17;
constexpr std::uint8_t PvtData = 51;

constexpr double RadiansPerDegree = std::numbers::pi / 180;
constexpr double StandingLat = 35.6323 * RadiansPerDegree;
constexpr double StandingLon = 139.2700 * RadiansPerDegree;
// The ellipsoid is 39 m below the sea there, the station 190 m above it.
constexpr float StandingAlt = 229;
constexpr float EllipsoidAboveSea = -39;
constexpr std::uint16_t Fix3D = 3;
constexpr std::uint16_t LeapSeconds = 13;
constexpr std::int64_t SecondsPerWeek = 7 * 86400;

}  // namespace

LinePacket DateTimePacket(std::int64_t utc_s) {
  const CivilTime time = CivilFromGarminSeconds(utc_s);
  WireBytes bytes;
  bytes.U8(static_cast<std::uint8_t>(time.month));
  bytes.U8(static_cast<std::uint8_t>(time.day));
  bytes.U16(static_cast<std::uint16_t>(time.year));
  bytes.U16(static_cast<std::uint16_t>(time.hour));
  bytes.U8(static_cast<std::uint8_t>(time.minute));
  bytes.U8(static_cast<std::uint8_t>(time.second));
  return {DateTimeData, bytes.Take()};
}

std::optional<std::int64_t> UtcSecondsOf(const LinePacket& date_time) {
  const std::vector<std::uint8_t>& data = date_time.data;
  if (data.size() != 8) return std::nullopt;
  const CivilTime time{data[2] + 256 * data[3], data[0], data[1], data[4] + 256 * data[5], data[6], data[7]};
  const std::int64_t utc_s = SecondsSinceGarminEpoch(time);
  // What is no date comes back as another one.
  if (time.year > 9999 || CivilFromGarminSeconds(utc_s) != time) return std::nullopt;
  return utc_s;
}

LinePacket PositionPacket() {
  WireBytes bytes;
  bytes.Double(StandingLat);
  bytes.Double(StandingLon);
  return {PositionData, bytes.Take()};
}

LinePacket PvtPacket(std::int64_t utc_s) {
  const std::int64_t gps_s = utc_s + LeapSeconds;
  const std::int64_t weeks = gps_s / SecondsPerWeek;
  WireBytes bytes;
  bytes.Float(StandingAlt);
  bytes.Float(15);
  bytes.Float(9);
  bytes.Float(12);
  bytes.U16(Fix3D);
  bytes.Double(static_cast<double>(gps_s - weeks * SecondsPerWeek));
  bytes.Double(StandingLat);
  bytes.Double(StandingLon);
  bytes.Float(0);
  bytes.Float(0);
  bytes.Float(0);
  bytes.Float(EllipsoidAboveSea);
  bytes.U16(LeapSeconds);
  bytes.U32(static_cast<std::uint32_t>(weeks * 7));
  return {PvtData, bytes.Take()};
}

}  // namespace walrim
