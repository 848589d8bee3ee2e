// What walrim-cli prints of the figures of logs and routes.
#pragma once

#include <string>

#include "records/DataSet.h"

namespace walrim {

/// A table of the logs, with a sum where they are several, and one of the routes, for a terminal: columns are as wide
/// as their texts, and full-width characters count twice. Times are local, utc_offset_hours ahead of UTC.
[[nodiscard]] std::string StatsText(const DataSet& data, int utc_offset_hours);

/// An object with logs, total and routes. Lengths and heights are in metres, times in seconds, moments in UTC as ISO
/// 8601, speeds in metres a second; what is not known is left out.
[[nodiscard]] std::string StatsJson(const DataSet& data);

}  // namespace walrim
