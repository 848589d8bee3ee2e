// Positions on the two datums of the program, and the angle notations of its texts.
#pragma once

#include <string>
#include <string_view>

namespace walrim {

/// π as every angle computation of the system takes it. Results are meant to match this value, not the exact one.
inline constexpr double AnglePi = 3.1415926;
/// Degrees to radians: AnglePi / 180.
inline constexpr double DegreesToRadians = 0.017453292222222222;

/// A geodetic position: degrees north, degrees east, metres above the ellipsoid.
struct GeoPoint {
  double latitude_deg = 0;
  double longitude_deg = 0;
  double height_m = 0;
};

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
inline constexpr Ellipsoid Wgs84Ellipsoid{6378137.0, 0.006694379990208539};
inline constexpr Ellipsoid Bessel1841Ellipsoid{6377397.155, 0.006674372230950351};

[[nodiscard]] double Atan2(double y, double x);
[[nodiscard]] double ArcSin(double x);
[[nodiscard]] CartesianPoint GeodeticToCartesian(const GeoPoint& point, double a_m, double e2);
[[nodiscard]] GeoPoint CartesianToGeodetic(const CartesianPoint& point, double a_m, double e2);
[[nodiscard]] GeoPoint WgsToTokyo(const GeoPoint& point);
[[nodiscard]] GeoPoint TokyoToWgs(const GeoPoint& point);

/// Converts between the datums named "WGS84" and "TOKYO" (without regard to case); any other pair of names returns the
/// point unchanged.
[[nodiscard]] GeoPoint ConvertDatum(const GeoPoint& point, std::string_view from, std::string_view to);

/// Great-circle distance in kilometres of two positions given as decimal-degree texts (latitude, longitude twice), on
/// a sphere with the Bessel semi-major axis.
[[nodiscard]] double SphericalDistance(std::string_view lat1, std::string_view lon1, std::string_view lat2,
                                       std::string_view lon2);
/// The same for degrees that are numbers already.
[[nodiscard]] double SphericalDistance(double lat1_deg, double lon1_deg, double lat2_deg, double lon2_deg);

}  // namespace walrim
