#include <algorithm>

#include "formats/StatementTable.h"
#include "text/Utf8.h"

namespace walrim {
namespace {

constexpr std::string_view FullWidthSemicolon = "；";

bool BreaksStatement(char c) {
  static constexpr auto Breaks = [] {
    std::array<bool, 256> breaks{};
    for (const char each : {';', '\r', '\n', '\t', '\0'})
      breaks[static_cast<unsigned char>(each)] = true;
    return breaks;
  }();
  return Breaks[static_cast<unsigned char>(c)];
}

void AppendValue(std::string& out, std::string_view value) {
  while (true) {
    const auto* const at = std::find_if(value.begin(), value.end(), BreaksStatement);
    const auto count = static_cast<std::size_t>(at - value.begin());
    out.append(value.substr(0, count));
    if (count == value.size()) return;
    out.append(value[count] == ';' ? FullWidthSemicolon : " ");
    value.remove_prefix(count + 1);
  }
}

void AppendComment(std::string& out, std::string_view text) {
  const std::size_t begin = out.size();
  if (text.find("//") == std::string_view::npos) out.append("//");
  out.append(text);
  std::replace_if(
      out.begin() + static_cast<std::ptrdiff_t>(begin), out.end(),
      [](char c) { return c == '\r' || c == '\n' || c == '\0'; }, ' ');
  if (out.back() != ';') out += ';';
}

void AppendMapServer(std::string& out, std::string_view version, std::string_view savable) {
  out.append("mapserver ");
  if (TrimBlanks(version) == "end") {
    out.append("end;");
    return;
  }
  out.append(ScriptStart);
  AppendValue(out, version);
  savable = TrimBlanks(savable);
  if (!savable.empty()) out.append(Savable).append(savable == "no" ? "no" : "yes");
  out += ';';
}

void AppendHeader(std::string& out, std::string_view prog, std::string_view templ, std::string_view date) {
  out.append(HeaderStart);
  AppendValue(out, prog);
  out.append(HeaderTempl);
  AppendValue(out, templ);
  out.append(HeaderDate);
  AppendValue(out, date);
  out += ';';
}

void AppendItem(std::string& out, const StatementRow& row, std::size_t key, std::string_view value) {
  if (key > 0 || !row.bare_selector) out.append(row.keys[key]).append("=");
  AppendValue(out, value);
}

void AppendMulti(std::string& out, const StatementRow& row, std::span<const std::string_view> values) {
  out.append("\t\t").append(row.keyword).append("\t");
  for (std::size_t key = 0; key < std::min(values.size(), row.keys.size()) && !row.keys[key].empty(); ++key) {
    if (values[key].empty() && !(key == 0 && row.first_always)) continue;
    if (key > 0) out.append("\r\n\t\t\t\t");
    AppendItem(out, row, key, values[key]);
  }
  out += ';';
}

}  // namespace

void AppendStatement(std::string& out, std::string_view keyword, std::span<const std::string_view> values) {
  const auto value = [&](std::size_t i) { return i < values.size() ? values[i] : std::string_view(); };
  const StatementRow* row = FindStatementRow(keyword);
  if (row == nullptr) {
    out.append("// Not Suport [");
    AppendValue(out, keyword);
    out.append("]");
  } else if (row->layout == StatementLayout::Comment) {
    AppendComment(out, value(0));
  } else if (row->layout == StatementLayout::MapServer) {
    AppendMapServer(out, value(0), value(1));
  } else if (row->layout == StatementLayout::Header) {
    AppendHeader(out, value(0), value(1), value(2));
  } else if (row->layout == StatementLayout::Single) {
    AppendMulti(out, *row, std::array<std::string_view, 1>{value(0)});
  } else {
    AppendMulti(out, *row, values);
  }
}

std::string BuildStatement(std::string_view keyword, std::initializer_list<std::string_view> values) {
  std::string statement;
  AppendStatement(statement, keyword, std::span(values.begin(), values.size()));
  return statement;
}

}  // namespace walrim
