#include "formats/StatementBuilder.h"

#include <algorithm>
#include <array>

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
  for (std::size_t key = 0; key < row.keys.size() && !row.keys[key].empty(); ++key) {
    const std::string_view value = key < values.size() ? values[key] : std::string_view();
    if (value.empty() && !(key == 0 && row.first_always)) continue;
    if (key > 0) out.append("\r\n\t\t\t\t");
    if (key > 0 || !row.bare_selector) out.append(row.keys[key]).append("=");
    AppendValue(out, value);
  }
  out += ';';
}

void AppendStatement(std::string& out, StatementKeyword keyword, std::initializer_list<std::string_view> values) {
  AppendStatement(out, keyword, std::span(values.begin(), values.size()));
}

}  // namespace walrim
