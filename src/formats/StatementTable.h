// The statements of a map-server script: a keyword and its values.
//
//   statement = TAB TAB keyword TAB key "=" value *(CR LF 4TAB key "=" value) ";"
//   script    = *(statement CR LF | "//" anything CR LF)
//
// There is no escape. A ";", a TAB or a line end inside a value would end it, so that a value is written with the
// full-width "；" for ";" and with a blank for the others. All else stands as it is.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace walrim {

/// In the order of the table's rows.
enum class StatementKeyword : std::uint8_t {
  Point,
  Line,
  Group,
  MapServer,
  Init,
  Kanji,
  Georef,
  Theme,
  Icon,
  Message,
  Circle,
  Rect,
  Area,
  Disp,
  Pick,
  Input,
  Addon,
  Comment  ///< a text with "//" in it that is no other statement; has no row
};

inline constexpr std::size_t MaxStatementValues = 16;

/// The keys of points and lines, as indices of their values.
struct ObjectKey {
  static constexpr std::size_t Oid = 0;
  static constexpr std::size_t Gid = 1;
  static constexpr std::size_t Pos = 2;
  static constexpr std::size_t Str = 3;
  static constexpr std::size_t Info = 7;
};

struct StatementRow {
  StatementKeyword keyword;
  std::string_view name;
  bool first_always = false;   ///< the first key is written without a value too
  bool bare_selector = false;  ///< the first value stands without its key
  std::array<std::string_view, MaxStatementValues> keys;
};

/// keyword is one with a row.
[[nodiscard]] const StatementRow& RowOf(StatementKeyword keyword);
/// The row of a keyword's name in any case; null for an unknown one.
[[nodiscard]] const StatementRow* FindStatementRow(std::string_view name);

}  // namespace walrim
