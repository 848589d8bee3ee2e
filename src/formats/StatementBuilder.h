// Writing the statements of a map-server script.
#pragma once

#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

#include "formats/StatementTable.h"

namespace walrim {

/// Appends a statement without a line end. values are in the order of the keyword's keys; missing ones are empty, and
/// an empty one is left out.
void AppendStatement(std::string& out, StatementKeyword keyword, std::span<const std::string_view> values);
void AppendStatement(std::string& out, StatementKeyword keyword, std::initializer_list<std::string_view> values);

}  // namespace walrim
