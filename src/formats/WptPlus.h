// WPT+ texts: their waypoints, routes and track logs, without what only receivers know of them.
#pragma once

#include "formats/Format.h"

namespace walrim {

/// Reads the lines of a text. A route begins at each RN line, a log at the first TP line and at each whose flag is "1".
/// Positions before any Datum line are on WGS84; those on a datum that is not known are skipped.
[[nodiscard]] ImportResult ReadWptPlus(LineSource& lines, DataSet& data, const ReadSettings& settings);

/// Writes a Datum line and the records. Nothing where the wanted kinds hold nothing.
[[nodiscard]] WriteReport WriteWptPlus(TextOutput& out, const DataSet& data, const WriteSettings& settings);

}  // namespace walrim
