#include "formats/StatementBuilder.h"

#include <algorithm>

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

}  // namespace

void AppendStatement(std::string& out, StatementKeyword keyword, std::span<const std::string_view> values) {
  const StatementRow& row = RowOf(keyword);
  out.append("\t\t").append(row.name).append("\t");
  for (std::size_t key = 0; key < std::min(values.size(), row.keys.size()) && !row.keys[key].empty(); ++key) {
    if (values[key].empty() && !(key == 0 && row.first_always)) continue;
    if (key > 0) out.append("\r\n\t\t\t\t");
    if (key > 0 || !row.bare_selector) out.append(row.keys[key]).append("=");
    AppendValue(out, values[key]);
  }
  out += ';';
}

void AppendStatement(std::string& out, StatementKeyword keyword, std::initializer_list<std::string_view> values) {
  AppendStatement(out, keyword, std::span(values.begin(), values.size()));
}

}  // namespace walrim
