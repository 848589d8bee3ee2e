// A pair of angles, as people and maps write it.
#pragma once

#include <optional>
#include <string_view>

#include "dialogs/MapPoint.h"

namespace walrim {

/// On WGS84 unless a datum's name stands beside it. Nothing for a text that could mean anything else.
[[nodiscard]] std::optional<MapPoint> PointOfPair(std::string_view text);

}  // namespace walrim
