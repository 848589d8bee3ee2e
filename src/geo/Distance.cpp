#include "geo/Distance.h"

#include <cmath>

#include "geo/RoundPi.h"

namespace walrim {
namespace {

/// Twice the Bessel semi-major axis in kilometres.
constexpr double SphereDiameterKm = 12754.79431;

double HalfDifferenceRadians(double a_deg, double b_deg) {
  return (a_deg - b_deg) / 2 * RoundPi / 180;
}

double ArcSin(double x) {
  const double cosine_squared = 1 - x * x;
  // At the end of its range, or a rounding beyond it.
  if (cosine_squared <= 0) return x < 0 ? -RoundPi / 2 : RoundPi / 2;
  return std::atan(x / std::sqrt(cosine_squared));
}

}  // namespace

double SphericalDistance(double lat1_deg, double lon1_deg, double lat2_deg, double lon2_deg) {
  const double middle = (lat1_deg + lat2_deg) / 2 * RoundPi / 180;
  const double half_latitude = HalfDifferenceRadians(lat1_deg, lat2_deg);
  const double half_longitude = HalfDifferenceRadians(lon1_deg, lon2_deg);
  const double across = std::cos(middle) * std::sin(half_longitude);
  const double along = std::cos(half_longitude) * std::sin(half_latitude);
  return ArcSin(std::sqrt(across * across + along * along)) * SphereDiameterKm;
}

}  // namespace walrim
