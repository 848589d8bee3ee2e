// What every script begins and ends with.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

#include "formats/ScriptLabels.h"
#include "text/Dates.h"

namespace walrim {

struct ScriptContents {
  std::size_t waypoints = 0;
  std::size_t routes = 0;
  std::size_t logs = 0;
};

/// Appends a statement with CR LF.
void AppendStatementLine(std::string& out, std::string_view keyword, std::initializer_list<std::string_view> values);

/// The statements before those of the records: head, message, theme and the seven groups.
[[nodiscard]] std::string ScriptHead(const ScriptContents& contents, const ScriptTheme& theme, const CivilTime& now);

/// Appends the statements behind those of the records.
void AppendScriptEnd(std::string& out);

}  // namespace walrim
