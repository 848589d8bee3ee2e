#include "formats/TrackStatistics.h"

#include <algorithm>
#include <cmath>

#include "formats/WptDates.h"
#include "text/Dates.h"
#include "text/Numbers.h"

namespace walrim {
namespace {

/// Seconds that passed between two points; nothing where that is not known or time runs backwards.
std::optional<std::int64_t> Elapsed(const LoggedPoint& from, const LoggedPoint& to) {
  if (!from.seconds || !to.seconds || *to.seconds < *from.seconds) return std::nullopt;
  return *to.seconds - *from.seconds;
}

std::string ElapsedText(std::int64_t seconds) {
  std::string text;
  AppendPadded(text, seconds / 3600, 2);
  text += ':';
  AppendPadded(text, seconds / 60 % 60, 2);
  text += ':';
  AppendPadded(text, seconds % 60, 2);
  return text;
}

/// Empty where no time passed.
std::string SpeedText(double km, std::int64_t seconds) {
  if (seconds == 0) return {};
  return ThousandthsText(km / (static_cast<double>(seconds) / 3600)) + "km/hr";
}

}  // namespace

std::string ThousandthsText(double value) {
  constexpr double MostDigits = 1e15;
  const auto thousandths = std::llround(std::clamp(value, 0.0, MostDigits) * 1000);
  if (thousandths == 0) return "0";
  std::string text = thousandths < 1000 ? std::string() : std::to_string(thousandths / 1000);
  if (thousandths % 1000 == 0) return text;
  text.append(".").append(PadNumber(thousandths % 1000, 3));
  text.erase(text.find_last_not_of('0') + 1);
  return text;
}

std::string LogStatistics(std::span<const LoggedPoint> points) {
  std::string text;
  if (points.empty()) return text;
  if (points.front().seconds) text += " Start[" + PointTime(points.front()) + "]";
  if (points.back().seconds) text += " End[" + PointTime(points.back()) + "]";
  text += " Total:";
  const auto elapsed = Elapsed(points.front(), points.back());
  if (elapsed) text += ElapsedText(*elapsed) + " ";
  double km = 0;
  for (const LoggedPoint& point : points)
    km += point.leg_km;
  text += std::to_string(points.size()) + "tps " + ThousandthsText(km) + "km ";
  if (elapsed) text += SpeedText(km, *elapsed);
  return text;
}

std::string PointTime(const LoggedPoint& point) {
  std::string text;
  if (point.seconds) {
    AppendWptMoment(text, CivilFromGarminSeconds(*point.seconds), ' ');
  } else {
    text.append(NoDate).append(" ").append(NoTime);
  }
  return text;
}

std::string IntervalText(const LoggedPoint& before, const LoggedPoint& point) {
  constexpr std::size_t UsualLength = 48;
  std::string text;
  text.reserve(UsualLength);
  text += " Intv. ";
  const auto elapsed = Elapsed(before, point);
  if (elapsed) text.append(ElapsedText(*elapsed)).append(" ");
  text.append(ThousandthsText(point.leg_km)).append("km ");
  if (elapsed) text += SpeedText(point.leg_km, *elapsed);
  return text;
}

}  // namespace walrim
