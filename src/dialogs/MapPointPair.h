// A pair of angles, as people and maps write it.
#pragma once

#include <optional>
#include <string_view>

#include "dialogs/MapPoint.h"

namespace walrim {

/// On WGS84 unless a datum's name stands beside it. Nothing for a text that could mean anything else.
[[nodiscard]] std::optional<MapPoint> PointOfPair(std::string_view text);

/// One of the two by itself.
struct MapAngle {
  double degrees = 0;      ///< north and east positive
  char direction = 0;      ///< N, S, E or W; 0 where the text has none
  bool is_number = false;  ///< a number alone, which may be in another notation than degrees
};
/// The angle of a text that is nothing else; nothing for any other text.
[[nodiscard]] std::optional<MapAngle> AngleOfText(std::string_view text);

}  // namespace walrim
