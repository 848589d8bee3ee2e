// What the readers of a map point's texts share.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "dialogs/MapPoint.h"

namespace walrim::map_point {

/// A longer number is no coordinate.
inline constexpr std::size_t MostDigits = 40;

/// Takes digits, with a point and digits behind them or without; nothing, with text untouched, where there are none or
/// too many.
std::optional<std::string_view> TakeNumber(std::string_view& text);
/// The value of one with a "-" in front of it or without.
std::optional<double> TakeSigned(std::string_view& text);
/// Takes two of them with a separator between, latitude first, wherever that lies.
std::optional<MapPoint> TakePosition(std::string_view& text, std::string_view separator);

[[nodiscard]] bool HasFraction(std::string_view number);
[[nodiscard]] double Degrees(std::string_view number);
/// Degrees of three parts; nothing where the degrees have a fraction or the minutes or seconds are out of range.
[[nodiscard]] std::optional<double> DegreesOfParts(std::string_view degrees, std::string_view minutes,
                                                   std::string_view seconds);
/// A point on WGS84 without texts, wherever it lies.
[[nodiscard]] MapPoint PointAt(double lat_deg, double lon_deg);

/// A query's value, whose "+" are blanks.
[[nodiscard]] std::string QueryText(std::string_view value);

}  // namespace walrim::map_point
