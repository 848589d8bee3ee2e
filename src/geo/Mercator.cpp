#include "geo/Mercator.h"

#include <cmath>
#include <numbers>

namespace walrim {
namespace {

// Tiles are cut by the exact circle: at the finest zoom a rounded one is pixels off.
constexpr double Pi = std::numbers::pi;
constexpr double EquatorRadius_m = 6378137;

double Radians(double degrees) {
  return degrees * Pi / 180;
}

}  // namespace

MercatorPoint MercatorOf(double lat_deg, double lon_deg) {
  const double lat = Radians(std::clamp(lat_deg, -MercatorEdge_deg, MercatorEdge_deg));
  return {(lon_deg + 180) / 360, 0.5 - std::asinh(std::tan(lat)) / (2 * Pi)};
}

double LatitudeOfMercator(double y) {
  return std::atan(std::sinh((0.5 - y) * 2 * Pi)) * 180 / Pi;
}

double LongitudeOfMercator(double x) {
  return (x - std::floor(x)) * 360 - 180;
}

double MetresOfMercator(double lat_deg) {
  return 2 * Pi * EquatorRadius_m * std::cos(Radians(lat_deg));
}

}  // namespace walrim
