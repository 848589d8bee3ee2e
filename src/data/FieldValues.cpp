#include "data/FieldValues.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "data/DeviceEntries.h"
#include "text/Numbers.h"
#include "text/Utf8.h"

namespace walrim {

namespace {

/// Most heights and depths are not known.
constexpr std::string_view UnknownMetresText = "1E+25";

}  // namespace

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

std::string MetresText(float metres) {
  return metres == UnknownMetres ? std::string(UnknownMetresText) : ShortestNumber(metres);
}

double TimeOf(std::string_view text) {
  return static_cast<double>(LeadingInteger(text, 0, 4294967295));
}

bool TruthOf(std::string_view text) {
  text = TrimBlanks(text);
  return text.size() == 4 && (text == "TRUE" || UpperCase(text) == "TRUE");
}

std::string_view TruthText(bool truth) {
  return truth ? "TRUE" : "FALSE";
}

void AssignText(std::string& to, std::string_view text) {
  to.assign(text);
  for (char& c : to) {
    if (c == '\0') c = ' ';
  }
}

void AssignUpper(std::string& to, std::string_view text) {
  to.assign(text);
  for (char& c : to) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - ('a' - 'A'));
    if (c == '\0') c = ' ';
  }
}

void AssignNumber(std::string& to, long long value) {
  char buffer[24];
  const char* const end = std::to_chars(buffer, buffer + sizeof buffer, value).ptr;
  to.assign(buffer, static_cast<std::size_t>(end - buffer));
}

}  // namespace walrim
