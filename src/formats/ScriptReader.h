// Reading a map-server script.
#pragma once

#include "formats/Format.h"

namespace walrim {

/// A script of WriteScript gives back its waypoints, routes and track logs; of any other, each point becomes a
/// waypoint. A record counts as the line that it would be of a WPT+ text, from 2 on, where the account speaks of lines.
[[nodiscard]] ImportResult ReadScript(LineSource& lines, DataSet& data, const ReadSettings& settings);

}  // namespace walrim
