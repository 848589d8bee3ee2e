#include "qt/LineSettings.h"

#include <array>
#include <charconv>
#include <cstddef>

namespace walrim {

namespace {

using SettingFields = std::array<std::string_view, 4>;

std::optional<SettingFields> SplitFields(std::string_view text) {
  SettingFields fields;
  for (std::size_t i = 0; i < fields.size(); ++i) {
    const std::size_t comma = text.find(',');
    const bool last = i + 1 == fields.size();
    if ((comma == std::string_view::npos) != last) return std::nullopt;
    fields[i] = text.substr(0, comma);
    if (!last) text.remove_prefix(comma + 1);
  }
  return fields;
}

std::optional<int> NumberWithin(std::string_view text, int low, int high) {
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  if (value < low || value > high) return std::nullopt;
  return value;
}

std::optional<LineParity> ParityOfLetter(std::string_view letter) {
  if (letter == "N" || letter == "n") return LineParity::None;
  if (letter == "E" || letter == "e") return LineParity::Even;
  if (letter == "O" || letter == "o") return LineParity::Odd;
  if (letter == "M" || letter == "m") return LineParity::Mark;
  if (letter == "S" || letter == "s") return LineParity::Space;
  return std::nullopt;
}

}  // namespace

std::optional<LineSettings> ParseLineSettings(std::string_view text) {
  const auto fields = SplitFields(text);
  if (!fields) return std::nullopt;
  const auto baud = NumberWithin((*fields)[0], 50, 4'000'000);
  const auto parity = ParityOfLetter((*fields)[1]);
  const auto data_bits = NumberWithin((*fields)[2], 5, 8);
  const auto stop_bits = NumberWithin((*fields)[3], 1, 2);
  if (!baud || !parity || !data_bits || !stop_bits) return std::nullopt;
  return LineSettings{*baud, *parity, *data_bits, *stop_bits};
}

}  // namespace walrim
