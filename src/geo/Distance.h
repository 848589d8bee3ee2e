// Distances on the globe.
#pragma once

namespace walrim {

/// Great-circle distance in kilometres of two positions in degrees, on a sphere with the Bessel semi-major axis.
[[nodiscard]] double SphericalDistance(double lat1_deg, double lon1_deg, double lat2_deg, double lon2_deg);

}  // namespace walrim
