// What the readers of a map point's texts share.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "dialogs/MapPoint.h"

namespace walrim {

// Each reads one form of text, without blanks around it; nothing where the text is not of that form.
[[nodiscard]] std::optional<MapPoint> PointOfScript(std::string_view text);
[[nodiscard]] std::optional<MapPoint> PointOfGeoLink(std::string_view text);
[[nodiscard]] std::optional<MapPoint> PointOfPair(std::string_view text);

namespace map_point {

/// A longer number is no coordinate.
inline constexpr std::size_t MostDigits = 40;

/// Takes digits, with a point and digits behind them or without; nothing, with text untouched, where there are none or
/// too many.
std::optional<std::string_view> TakeNumber(std::string_view& text);

[[nodiscard]] bool HasFraction(std::string_view number);
[[nodiscard]] double Degrees(std::string_view number);
/// Degrees of three parts; nothing where the degrees have a fraction or the minutes or seconds are out of range.
[[nodiscard]] std::optional<double> DegreesOfParts(std::string_view degrees, std::string_view minutes,
                                                   std::string_view seconds, bool seconds_may_be_60 = false);
/// A point on WGS84 without texts; nothing where it is out of range.
[[nodiscard]] std::optional<MapPoint> PointAt(double lat_deg, double lon_deg);

}  // namespace map_point
}  // namespace walrim
