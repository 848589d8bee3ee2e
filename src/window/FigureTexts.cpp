#include "window/FigureTexts.h"

namespace walrim {
namespace {

constexpr double MetresPerKilometre = 1000;
constexpr double KilometresPerHour = 3.6;  ///< of a metre a second

QString Unknown() {
  return QStringLiteral("-");
}

}  // namespace

QString DistanceText(double metres) {
  return QString::number(metres / MetresPerKilometre, 'f', 2) + QStringLiteral(" km");
}

QString DurationText(std::optional<std::int64_t> seconds) {
  if (!seconds) return Unknown();
  return QString::asprintf("%lld:%02lld:%02lld", static_cast<long long>(*seconds / 3600),
                           static_cast<long long>(*seconds / 60 % 60), static_cast<long long>(*seconds % 60));
}

QString SpeedText(std::optional<double> metres_per_second) {
  if (!metres_per_second) return Unknown();
  return QString::number(*metres_per_second * KilometresPerHour, 'f', 1) + QStringLiteral(" km/h");
}

QString HeightText(std::optional<double> metres) {
  if (!metres) return Unknown();
  return QString::number(*metres, 'f', 0) + QStringLiteral(" m");
}

}  // namespace walrim
