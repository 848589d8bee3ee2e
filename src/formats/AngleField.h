// Angles in the fields of lines that anybody may have written.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "geo/GeneralLatLon.h"

namespace walrim {

/// The notation that a name in any case stands for, as ConvertAngle knows it; empty for an unknown one.
[[nodiscard]] std::string_view NotationOfName(std::string_view name);

/// Decimal degrees of an angle; nothing for a text that begins with no number or has too many parts. What it takes,
/// ConvertAngle takes too.
[[nodiscard]] std::optional<double> DegreesOfField(std::string_view text, std::string_view notation);

/// The position of two such texts; nothing where one is no angle or the two are off the globe.
[[nodiscard]] std::optional<GeoPoint> PointOfFields(std::string_view lat, std::string_view lon,
                                                    std::string_view notation);

/// Appends ConvertAngle(text, notation, "MPS") for a text that DegreesOfField takes.
void AppendMpsAngle(std::string& out, std::string_view text, std::string_view notation);

}  // namespace walrim
