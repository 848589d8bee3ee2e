#include "formats/XmlValues.h"

#include <array>
#include <charconv>
#include <system_error>

#include "formats/FieldValues.h"
#include "formats/XmlSyntax.h"
#include "text/Dates.h"
#include "text/Scan.h"

namespace walrim {
namespace {

/// Plain digits, the fewest that read back as the same value; false where they are more than MostXmlDigits.
template <typename Number>
bool AppendDigits(std::string& out, Number value) {
  std::array<char, MostXmlDigits> buffer;
  // Adding 0 takes the sign off a zero.
  const auto [end, error] =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value + Number(0), std::chars_format::fixed);
  if (error != std::errc()) return false;
  out.append(buffer.data(), end);
  return true;
}

}  // namespace

void AppendXmlMetres(std::string& out, float metres) {
  static_cast<void>(AppendDigits(out, metres));
}

void AppendXmlAngle(std::string& out, double deg) {
  if (deg == 180) deg = -180;
  if (AppendDigits(out, deg)) return;
  constexpr int Decimals = 15;
  std::array<char, MostXmlDigits> buffer;
  out.append(buffer.data(),
             std::to_chars(buffer.data(), buffer.data() + buffer.size(), deg, std::chars_format::fixed, Decimals).ptr);
}

std::string XmlAngle(double deg) {
  std::string text;
  AppendXmlAngle(text, deg);
  return text;
}

void AppendXmlTime(std::string& out, GarminSeconds time) {
  const std::size_t begin = out.size();
  AppendDateTime(out, CivilFromGarminSeconds(time));
  out[begin + 4] = out[begin + 7] = '-';
  out[begin + 10] = 'T';
  out += 'Z';
}

std::string XmlText(std::string_view text) {
  return text.empty() ? std::string() : XmlCharacters(TrimBlanks(OneLine(text)));
}

}  // namespace walrim
