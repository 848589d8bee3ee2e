#include "formats/StatementTable.h"

#include <algorithm>

#include "text/Scan.h"

namespace walrim {
namespace {

using enum StatementKeyword;

constexpr std::array<StatementRow, 17> Rows{{
    {Point, "point", true, false, {"oid", "gid", "pos", "str", "strformat", "url", "urltype", "info"}},
    {Line, "line", true, false, {"oid", "gid", "pos", "str", "strformat", "url", "urltype", "info"}},
    {Group,
     "group",
     false,
     false,
     {"gid", "gname", "textrgb", "linergb", "areargb", "bodrrgb", "textstyle", "linestyle", "areastyle", "pointstyle",
      "bodrstyle", "iconsize", "linewidth", "bodrwidth", "textsize", "textoff"}},
    {MapServer, "mapserver", false, false, {}},
    {Init, "init", true, false, {"file"}},
    {Kanji, "kanji", true, false, {"code"}},
    {Georef, "georef", true, false, {"system"}},
    {Theme, "theme", true, false, {"str"}},
    {Icon, "icon", false, false, {"name", "file", "format"}},
    {Message, "message", false, false, {"str", "url", "urltype"}},
    {Circle, "circle", false, false, {"r", "rmax", "strpos"}},
    {Rect, "rect", false, false, {"width", "height", "widthmax", "heightmax"}},
    {Area, "area", false, false, {}},
    {Disp, "disp", false, true, {"selector", "area", "scale"}},
    {Pick, "pick", false, false, {"cgi", "param", "method"}},
    {Input, "input", false, false, {"type", "precision"}},
    {Addon, "addon", false, false, {"title", "author", "updatable"}},
}};

}  // namespace

const StatementRow& RowOf(StatementKeyword keyword) {
  return Rows.at(static_cast<std::size_t>(keyword));
}

const StatementRow* FindStatementRow(std::string_view name) {
  const auto* const row =
      std::find_if(Rows.begin(), Rows.end(), [&](const StatementRow& known) { return SameWord(known.name, name); });
  return row == Rows.end() ? nullptr : row;
}

}  // namespace walrim
