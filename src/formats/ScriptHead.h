// What every script begins and ends with.
#pragma once

#include <cstddef>

#include "formats/ScriptTheme.h"
#include "text/Dates.h"
#include "text/TextOutput.h"

namespace walrim {

struct ScriptContents {
  std::size_t waypoints = 0;
  std::size_t routes = 0;
  std::size_t logs = 0;
};

/// Writes what stands before the statements of the records: head, message, theme and the seven groups.
void WriteScriptHead(TextOutput& out, const ScriptContents& contents, const ScriptTheme& theme, const CivilTime& now);

/// Writes what stands behind them.
void WriteScriptEnd(TextOutput& out);

}  // namespace walrim
