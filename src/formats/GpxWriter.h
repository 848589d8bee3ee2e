// Writing a data set as GPX 1.1, with Garmin's extension.
#pragma once

#include "formats/Format.h"

namespace walrim {

/// Always on WGS84 and in UTC, lines end with LF. A position that is not on the globe is skipped.
[[nodiscard]] WriteReport WriteGpx(TextOutput& out, const DataSet& data, const WriteSettings& settings);

}  // namespace walrim
