// Writing a data set as KML 2.2, for programs that show places and ways on a globe. It is only written.
#pragma once

#include "formats/Format.h"

namespace walrim {

/// Always on WGS84 and in UTC, lines end with LF. Nothing is written where no record has a position on the globe.
[[nodiscard]] WriteReport WriteKml(TextOutput& out, const DataSet& data, const WriteSettings& settings);

}  // namespace walrim
