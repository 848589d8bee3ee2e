#include "formats/StatementTable.h"

#include <algorithm>

namespace walrim {
namespace {

using Layout = StatementLayout;

constexpr std::array<StatementRow, 19> Rows{{
    {"point", Layout::Multi, true, false, {"oid", "gid", "pos", "str", "strformat", "url", "urltype", "info"}},
    {"line", Layout::Multi, true, false, {"oid", "gid", "pos", "str", "strformat", "url", "urltype", "info"}},
    {"group",
     Layout::Multi,
     false,
     false,
     {"gid", "gname", "textrgb", "linergb", "areargb", "bodrrgb", "textstyle", "linestyle", "areastyle", "pointstyle",
      "bodrstyle", "iconsize", "linewidth", "bodrwidth", "textsize", "textoff"}},
    {"comment", Layout::Comment, false, false, {"text"}},
    {"mapserver", Layout::MapServer, false, false, {"ver", "savable"}},
    {"init", Layout::Single, true, false, {"file"}},
    {"kanji", Layout::Single, true, false, {"code"}},
    {"georef", Layout::Single, true, false, {"system"}},
    {"theme", Layout::Single, true, false, {"str"}},
    {"icon", Layout::Multi, false, false, {"name", "file", "format"}},
    {"message", Layout::Multi, false, false, {"str", "url", "urltype"}},
    {"circle", Layout::Multi, false, false, {"r", "rmax", "strpos"}},
    {"rect", Layout::Multi, false, false, {"width", "height", "widthmax", "heightmax"}},
    {"area", Layout::Multi, false, false, {}},
    {"disp", Layout::Multi, false, true, {"selector", "area", "scale"}},
    {"pick", Layout::Multi, false, false, {"cgi", "param", "method"}},
    {"input", Layout::Multi, false, false, {"type", "precision"}},
    {"addon", Layout::Multi, false, false, {"title", "author", "updatable"}},
    {"hedder", Layout::Header, false, false, {"Prog", "Templ", "Date"}},
}};

}  // namespace

const StatementRow* FindStatementRow(std::string_view keyword) {
  const auto* const row =
      std::find_if(Rows.begin(), Rows.end(), [&](const StatementRow& known) { return known.keyword == keyword; });
  return row == Rows.end() ? nullptr : row;
}

std::string_view Statement::Value(std::string_view key) const {
  const StatementRow* row = FindStatementRow(keyword);
  if (row == nullptr || key.empty()) return {};
  const auto* const found = std::find(row->keys.begin(), row->keys.end(), key);
  return found == row->keys.end() ? std::string_view() : values[static_cast<std::size_t>(found - row->keys.begin())];
}

}  // namespace walrim
