#include "formats/FieldValues.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

#include "text/Cp932.h"
#include "text/Numbers.h"
#include "text/Scan.h"

namespace walrim {
namespace {

/// Most heights and depths are not known.
constexpr std::string_view UnknownMetresText = "1E+25";
constexpr std::size_t StateWidth = 2;

constexpr bool IsStripped(char c) {
  return c == '"' || c == '=';
}

}  // namespace

bool IsWrapped(std::string_view column) {
  return column.size() >= 3 && column.starts_with("=\"") && column.back() == '"';
}

std::string_view PlainText(std::string_view column, std::string& scratch) {
  if (IsWrapped(column)) return column.substr(2, column.size() - 3);
  if (std::none_of(column.begin(), column.end(), IsStripped)) return column;
  scratch.clear();
  std::remove_copy_if(column.begin(), column.end(), std::back_inserter(scratch), IsStripped);
  return scratch;
}

bool SaysWord(std::string_view column, std::string_view word) {
  for (const char c : column) {
    if (IsStripped(c)) continue;
    if (word.empty() || UpperCase(c) != UpperCase(word.front())) return false;
    word.remove_prefix(1);
  }
  return word.empty();
}

std::uint8_t ByteOf(std::string_view text) {
  return static_cast<std::uint8_t>(LeadingInteger(text, 0, 255));
}

std::uint16_t WordOf(std::string_view text) {
  return static_cast<std::uint16_t>(LeadingInteger(text, 0, 65535));
}

float SingleOf(std::string_view text) {
  if (text == UnknownMetresText) return UnknownMetres;
  const double value = LeadingNumber(text);
  if (std::abs(value) > static_cast<double>(std::numeric_limits<float>::max())) return UnknownMetres;
  return static_cast<float>(value);
}

std::optional<float> MetresOf(std::string_view text) {
  const float metres = SingleOf(text);
  return metres == UnknownMetres ? std::nullopt : std::optional(metres);
}

void AppendMetres(std::string& out, std::optional<float> metres) {
  if (metres) return AppendShortestNumber(out, *metres);
  out.append(UnknownMetresText);
}

bool TruthOf(std::string_view text) {
  return SameWord(TrimBlanks(text), "TRUE");
}

std::string LineText(std::string_view text) {
  std::string line(text);
  std::replace(line.begin(), line.end(), '\0', ' ');
  return line;
}

std::string OneLine(std::string_view text) {
  std::string line(text);
  std::replace_if(
      line.begin(), line.end(), [](char c) { return c == '\0' || IsSpace(c); }, ' ');
  return line;
}

std::string CapitalText(std::string_view text) {
  std::string capitals(text);
  for (char& c : capitals)
    c = c == '\0' ? ' ' : UpperCase(c);
  return capitals;
}

std::string StateText(std::string_view text) {
  if (text.empty()) return {};
  std::string state = CapitalText(CutToCp932Width(text, StateWidth));
  state.erase(state.find_last_not_of(' ') + 1);
  return state;
}

}  // namespace walrim
