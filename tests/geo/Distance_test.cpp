#include "geo/Distance.h"

#include <cmath>
#include <gtest/gtest.h>

namespace walrim {
namespace {

TEST(SphericalDistance, IsZeroForEqualPoints) {
  EXPECT_EQ(SphericalDistance(34.5, 135, 34.5, 135), 0);
}

TEST(SphericalDistance, OneDegreeOnTheEquator) {
  EXPECT_NEAR(SphericalDistance(0, 135, 0, 136), 111.3, 0.05);
}

TEST(SphericalDistance, IsANumberForAntipodalPoints) {
  for (double longitude = -180; longitude <= 180; longitude += 0.25) {
    const double distance = SphericalDistance(0, longitude, 0, longitude - 180);
    ASSERT_TRUE(std::isfinite(distance));
    ASSERT_NEAR(distance, 20035, 2);
  }
  EXPECT_TRUE(std::isfinite(SphericalDistance(90, 0, -90, 0)));
}

}  // namespace
}  // namespace walrim
