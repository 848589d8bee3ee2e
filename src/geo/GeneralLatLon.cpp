#include "geo/GeneralLatLon.h"

#include <cmath>

#include "text/Numbers.h"
#include "text/Utf8.h"

namespace walrim {
namespace {

/// Twice the Bessel semi-major axis in kilometres.
constexpr double SphereDiameterKm = 12754.79431;

double HalfDifferenceRadians(double a_deg, double b_deg) {
  return (a_deg - b_deg) / 2 * AnglePi / 180;
}

}  // namespace

double Atan2(double y, double x) {
  // Not a quarter turn: positions on this meridian have always come back as 0.
  if (x == 0) return 0;
  const double angle = std::atan(y / x);
  if (x > 0) return angle;
  return y >= 0 ? angle + AnglePi : angle - AnglePi;
}

double ArcSin(double x) {
  const double cosine_squared = 1 - x * x;
  // At the end of its range, or a rounding beyond it.
  if (cosine_squared <= 0) return x < 0 ? -AnglePi / 2 : AnglePi / 2;
  return std::atan(x / std::sqrt(cosine_squared));
}

CartesianPoint GeodeticToCartesian(const GeoPoint& point, double a_m, double e2) {
  const double latitude = point.latitude_deg * DegreesToRadians;
  const double longitude = point.longitude_deg * DegreesToRadians;
  const double sin_latitude = std::sin(latitude);
  const double cos_latitude = std::cos(latitude);
  const double n = a_m / std::sqrt(1 - e2 * sin_latitude * sin_latitude);
  return {(n + point.height_m) * cos_latitude * std::cos(longitude),
          (n + point.height_m) * cos_latitude * std::sin(longitude), ((1 - e2) * n + point.height_m) * sin_latitude};
}

GeoPoint CartesianToGeodetic(const CartesianPoint& point, double a_m, double e2) {
  // Bowring's formula, one step.
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
  CartesianPoint at = GeodeticToCartesian(point, Wgs84Ellipsoid.a_m, Wgs84Ellipsoid.e2);
  at.x_m += 128;
  at.y_m += -481;
  at.z_m += -664;
  return CartesianToGeodetic(at, Bessel1841Ellipsoid.a_m, Bessel1841Ellipsoid.e2);
}

GeoPoint TokyoToWgs(const GeoPoint& point) {
  CartesianPoint at = GeodeticToCartesian(point, Bessel1841Ellipsoid.a_m, Bessel1841Ellipsoid.e2);
  // Not the exact inverse of the way there: it carries two corrections, added after the shift.
  at.x_m = at.x_m - 128 - 0.35;
  at.y_m = at.y_m + 481 - 0.45;
  at.z_m = at.z_m + 664;
  return CartesianToGeodetic(at, Wgs84Ellipsoid.a_m, Wgs84Ellipsoid.e2);
}

GeoPoint ConvertDatum(const GeoPoint& point, std::string_view from, std::string_view to) {
  if (from == to) return point;
  const std::string from_name = UpperCase(from);
  const std::string to_name = UpperCase(to);
  if (from_name == "WGS84" && to_name == "TOKYO") return WgsToTokyo(point);
  if (from_name == "TOKYO" && to_name == "WGS84") return TokyoToWgs(point);
  return point;
}

double SphericalDistance(std::string_view lat1, std::string_view lon1, std::string_view lat2, std::string_view lon2) {
  return SphericalDistance(LeadingNumber(lat1), LeadingNumber(lon1), LeadingNumber(lat2), LeadingNumber(lon2));
}

double SphericalDistance(double lat1_deg, double lon1_deg, double lat2_deg, double lon2_deg) {
  const double middle = (lat1_deg + lat2_deg) / 2 * AnglePi / 180;
  const double half_latitude = HalfDifferenceRadians(lat1_deg, lat2_deg);
  const double half_longitude = HalfDifferenceRadians(lon1_deg, lon2_deg);
  const double across = std::cos(middle) * std::sin(half_longitude);
  const double along = std::cos(half_longitude) * std::sin(half_latitude);
  return ArcSin(std::sqrt(across * across + along * along)) * SphereDiameterKm;
}

}  // namespace walrim
