#include "receiver/ReceiverDatum.h"

#include <cmath>

namespace walrim {

namespace {

constexpr double Pi = 3.1415926;
constexpr double RadiansPerDegree = Pi / 180;

struct Axes {
  double a_m;
  double e2;
};
constexpr Axes Bessel{6377397.155, 0.006674372230950351};
constexpr Axes Wgs84{6378137.0, 0.006694379990208539};

struct Geocentric {
  double x_m;
  double y_m;
  double z_m;
};

Geocentric FromSurface(const DatumPosition& position, const Axes& axes) {
  const double lat = position.lat_deg * RadiansPerDegree;
  const double lon = position.lon_deg * RadiansPerDegree;
  const double n = axes.a_m / std::sqrt(1 - axes.e2 * std::sin(lat) * std::sin(lat));
  return {n * std::cos(lat) * std::cos(lon), n * std::cos(lat) * std::sin(lon), (1 - axes.e2) * n * std::sin(lat)};
}

// The angle of (x, y) as the files' reckoning has it: 0 where x is 0, and half a turn is Pi above.
double Angle(double y, double x) {
  if (x == 0) return 0;
  const double angle = std::atan(y / x);
  if (x > 0) return angle;
  return y >= 0 ? angle + Pi : angle - Pi;
}

DatumPosition ToSurface(const Geocentric& point, const Axes& axes) {
  const double p = std::hypot(point.x_m, point.y_m);
  const double s = std::sqrt(1 - axes.e2);
  const double theta = Angle(point.z_m, s * p);
  const double lat = Angle(point.z_m + axes.a_m * axes.e2 / s * std::pow(std::sin(theta), 3),
                           p - axes.a_m * axes.e2 * std::pow(std::cos(theta), 3));
  return {lat / RadiansPerDegree, Angle(point.y_m, point.x_m) / RadiansPerDegree};
}

}  // namespace

DatumPosition PositionOnWgs84(const DatumPosition& tokyo) {
  Geocentric point = FromSurface(tokyo, Bessel);
  point.x_m += -128 - 0.35;
  point.y_m += 481 - 0.45;
  point.z_m += 664;
  return ToSurface(point, Wgs84);
}

}  // namespace walrim
