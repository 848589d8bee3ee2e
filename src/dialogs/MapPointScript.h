// A map-server script with one point among its statements.
#pragma once

#include <optional>
#include <string_view>

#include "dialogs/MapPoint.h"

namespace walrim {

/// Its text stands without blanks around it. The position and its datum are read as those of a script in a file.
/// Nothing where there is none, or anything else that is drawn.
[[nodiscard]] std::optional<MapPoint> PointOfScript(std::string_view text);

}  // namespace walrim
