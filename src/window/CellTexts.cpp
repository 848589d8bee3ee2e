#include "window/CellTexts.h"

#include <array>
#include <cmath>
#include <cstdio>

namespace walrim {

namespace {

/// Of what is off the globe files tell no less.
constexpr double LargestShown_deg = 360;

template <typename... Values>
std::string Formatted(const char* form, Values... values) {
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), form, values...);
  return text.data();
}

/// A number that is not shown as "-0".
std::string Rounded(const char* form, double value) {
  const std::string text = Formatted(form, value);
  return text.find_first_not_of("-0.") == std::string::npos && text.front() == '-' ? text.substr(1) : text;
}

std::string DegreesMinutesSeconds(double degrees) {
  constexpr long long TenthsOfMinute = 600;
  const long long tenths = std::llround(std::abs(degrees) * 60 * TenthsOfMinute);
  const char* sign = degrees < 0 && tenths > 0 ? "-" : "";
  const auto seconds = static_cast<double>(tenths % TenthsOfMinute) / 10;
  return Formatted("%s%lld°%02lld'%04.1f\"", sign, tenths / (60 * TenthsOfMinute), tenths / TenthsOfMinute % 60,
                   seconds);
}

}  // namespace

std::string ShownAngle(double degrees, AngleNotation notation) {
  const bool on_globe = std::abs(degrees) <= LargestShown_deg;
  if (on_globe && notation == AngleNotation::D) return Rounded("%.6f", degrees);
  if (on_globe && notation == AngleNotation::DMS) return DegreesMinutesSeconds(degrees);
  std::string text;
  AppendAngle(text, degrees, notation);
  return text;
}

std::string ShownMetres(std::optional<double> metres) {
  return metres ? Rounded("%.0f", *metres) : std::string();
}

std::string ShownKilometres(double metres) {
  constexpr double MetresOfKilometre = 1000;
  return Formatted("%.2f", metres / MetresOfKilometre);
}

std::string ShownDuration(std::optional<std::int64_t> seconds) {
  if (!seconds) return {};
  return Formatted("%lld:%02lld:%02lld", static_cast<long long>(*seconds / 3600),
                   static_cast<long long>(*seconds / 60 % 60), static_cast<long long>(*seconds % 60));
}

}  // namespace walrim
