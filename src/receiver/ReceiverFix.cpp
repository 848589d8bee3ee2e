#include "receiver/ReceiverFix.h"

#include <numbers>

#include "receiver/WireBytes.h"
#include "text/Dates.h"

namespace walrim {

namespace {

constexpr std::uint8_t DateTimeData = 14;
constexpr std::uint8_t PositionData = 17;

constexpr double RadiansPerDegree = std::numbers::pi / 180;
constexpr double StandingLat = 35.6323 * RadiansPerDegree;
constexpr double StandingLon = 139.2700 * RadiansPerDegree;

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

LinePacket PositionPacket() {
  WireBytes bytes;
  bytes.Double(StandingLat);
  bytes.Double(StandingLon);
  return {PositionData, bytes.Take()};
}

}  // namespace walrim
