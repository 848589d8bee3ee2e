#include "geo/Datum.h"

#include <cmath>

#include "geo/RoundPi.h"
#include "text/Scan.h"

namespace walrim {
namespace {

/// An earth-centred position in metres.
struct CartesianPoint {
  double x_m = 0;
  double y_m = 0;
  double z_m = 0;
};

/// Semi-major axis in metres and first eccentricity squared.
struct Ellipsoid {
  double a_m;
  double e2;
};
constexpr Ellipsoid Wgs84Ellipsoid{6378137.0, 0.006694379990208539};
constexpr Ellipsoid Bessel1841Ellipsoid{6377397.155, 0.006674372230950351};

double Atan2(double y, double x) {
  // Not a quarter turn: files hold 0 for positions on this meridian.
  if (x == 0) return 0;
  const double angle = std::atan(y / x);
  if (x > 0) return angle;
  return y >= 0 ? angle + RoundPi : angle - RoundPi;
}

CartesianPoint CartesianOf(const GeoPoint& point, const Ellipsoid& ellipsoid) {
  const double latitude = point.latitude_deg * DegreesToRadians;
  const double longitude = point.longitude_deg * DegreesToRadians;
  const double sin_latitude = std::sin(latitude);
  const double cos_latitude = std::cos(latitude);
  const double n = ellipsoid.a_m / std::sqrt(1 - ellipsoid.e2 * sin_latitude * sin_latitude);
  return {(n + point.height_m) * cos_latitude * std::cos(longitude),
          (n + point.height_m) * cos_latitude * std::sin(longitude),
          ((1 - ellipsoid.e2) * n + point.height_m) * sin_latitude};
}

GeoPoint GeodeticOf(const CartesianPoint& point, const Ellipsoid& ellipsoid) {
  // Bowring's formula, one step.
  const auto [a_m, e2] = ellipsoid;
  const double p = std::sqrt(point.x_m * point.x_m + point.y_m * point.y_m);
  const double s = std::sqrt(1 - e2);
  const double theta = Atan2(point.z_m, s * p);
  const double sin_theta = std::sin(theta);
  const double cos_theta = std::cos(theta);
  const double latitude = Atan2(point.z_m + a_m * e2 / s * sin_theta * sin_theta * sin_theta,
                                p - a_m * e2 * cos_theta * cos_theta * cos_theta);
  const double longitude = Atan2(point.y_m, point.x_m);
  const double sin_latitude = std::sin(latitude);
  const double n = a_m / std::sqrt(1 - e2 * sin_latitude * sin_latitude);
  return {latitude / DegreesToRadians, longitude / DegreesToRadians, p / std::cos(latitude) - n};
}

GeoPoint WgsToTokyo(const GeoPoint& point) {
  CartesianPoint at = CartesianOf(point, Wgs84Ellipsoid);
  at.x_m += 128;
  at.y_m += -481;
  at.z_m += -664;
  return GeodeticOf(at, Bessel1841Ellipsoid);
}

GeoPoint TokyoToWgs(const GeoPoint& point) {
  CartesianPoint at = CartesianOf(point, Bessel1841Ellipsoid);
  // Not the exact inverse of the way there: it carries two corrections, added after the shift.
  at.x_m = at.x_m - 128 - 0.35;
  at.y_m = at.y_m + 481 - 0.45;
  at.z_m = at.z_m + 664;
  return GeodeticOf(at, Wgs84Ellipsoid);
}

}  // namespace

std::string_view DatumName(Datum datum) {
  switch (datum) {
    case Datum::Wgs84:
      return "WGS84";
    case Datum::Tokyo:
      return "Tokyo";
  }
  return {};
}

std::optional<Datum> DatumOfName(std::string_view name) {
  for (const Datum datum : {Datum::Wgs84, Datum::Tokyo}) {
    if (SameWord(name, DatumName(datum))) return datum;
  }
  return std::nullopt;
}

bool OnGlobe(const GeoPoint& point) {
  return std::abs(point.latitude_deg) <= 90 && std::abs(point.longitude_deg) <= 180;
}

GeoPoint ConvertDatum(const GeoPoint& point, Datum from, Datum to) {
  if (from == to) return point;
  return to == Datum::Tokyo ? WgsToTokyo(point) : TokyoToWgs(point);
}

}  // namespace walrim
