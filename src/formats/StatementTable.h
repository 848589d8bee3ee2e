// The table of statements that the builder and the parser walk.
#pragma once

#include <array>
#include <string_view>

#include "formats/Statement.h"

namespace walrim {

/// How a statement is laid out.
enum class StatementLayout { Comment, MapServer, Header, Single, Multi };

struct StatementRow {
  std::string_view keyword;
  StatementLayout layout;
  bool first_always = false;   ///< the first key is written without a value too
  bool bare_selector = false;  ///< the first value stands without its key
  std::array<std::string_view, MaxStatementValues> keys;
};

/// The row of a keyword; null for an unknown one.
[[nodiscard]] const StatementRow* FindStatementRow(std::string_view keyword);

// The pieces of the statements that are no lists of keys.
inline constexpr std::string_view HeaderStart = "//Header:Prog:";
inline constexpr std::string_view HeaderTempl = " Templ:";
inline constexpr std::string_view HeaderDate = " Date:";
inline constexpr std::string_view ScriptStart = "script ver=";
inline constexpr std::string_view Savable = " savable=";

}  // namespace walrim
