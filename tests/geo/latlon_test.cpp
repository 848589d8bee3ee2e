#include <cmath>
#include <gtest/gtest.h>
#include <limits>

#include "geo/GeneralLatLon.h"

namespace walrim {
namespace {

constexpr double DegreesPerMetre = 1 / 111000.0;

TEST(Atan2, IsZeroOnTheYAxis) {
  EXPECT_EQ(Atan2(5, 0), 0);
  EXPECT_EQ(Atan2(-5, 0), 0);
}

TEST(Atan2, TurnsByTheSystemsPi) {
  EXPECT_DOUBLE_EQ(Atan2(1, 1), std::atan(1.0));
  EXPECT_DOUBLE_EQ(Atan2(1, -1), std::atan(-1.0) + 3.1415926);
  EXPECT_DOUBLE_EQ(Atan2(-1, -1), std::atan(1.0) - 3.1415926);
  EXPECT_DOUBLE_EQ(Atan2(0, -1), 3.1415926);
}

TEST(ArcSin, HoldsToTheEndsOfItsRange) {
  EXPECT_DOUBLE_EQ(ArcSin(0.5), std::atan(0.5 / std::sqrt(0.75)));
  EXPECT_NEAR(ArcSin(1), 1.5707963, 1e-7);
  EXPECT_NEAR(ArcSin(-1), -1.5707963, 1e-7);
  EXPECT_NEAR(ArcSin(1 + 1e-15), 1.5707963, 1e-7);
}

TEST(ConvertDatum, ShiftsToTheJapaneseDatumAsPublished) {
  // Around Tokyo Station the old datum reads some 11.7" less in latitude and 11.6" more in longitude.
  const GeoPoint tokyo = ConvertDatum({35.681, 139.767, 0}, "WGS84", "TOKYO");
  EXPECT_NEAR((tokyo.latitude_deg - 35.681) * 3600, -11.7, 0.3);
  EXPECT_NEAR((tokyo.longitude_deg - 139.767) * 3600, 11.6, 0.3);
}

TEST(ConvertDatum, MatchesTheStepsDoneByHand) {
  const GeoPoint start{35, 135, 0};
  CartesianPoint at = GeodeticToCartesian(start, 6378137.0, 0.006694379990208539);
  at = {at.x_m + 128, at.y_m - 481, at.z_m - 664};
  const GeoPoint expected = CartesianToGeodetic(at, 6377397.155, 0.006674372230950351);
  const GeoPoint tokyo = WgsToTokyo(start);
  EXPECT_EQ(tokyo.latitude_deg, expected.latitude_deg);
  EXPECT_EQ(tokyo.longitude_deg, expected.longitude_deg);
  EXPECT_EQ(tokyo.height_m, expected.height_m);
}

TEST(ConvertDatum, NamesAreComparedInUpperCase) {
  const GeoPoint upper = ConvertDatum({35, 135, 0}, "WGS84", "TOKYO");
  const GeoPoint lower = ConvertDatum({35, 135, 0}, "wgs84", "tokyo");
  EXPECT_EQ(lower.latitude_deg, upper.latitude_deg);
  EXPECT_NE(lower.latitude_deg, 35);
}

TEST(ConvertDatum, OtherPairsLeaveThePointAsItIs) {
  for (const auto& [from, to] : {std::pair{"WGS84", "WGS84"}, {"TOKYO", "TOKYO"}, {"WGS84", "NAD27"}, {"", ""}}) {
    const GeoPoint point = ConvertDatum({35, 135, 12}, from, to);
    EXPECT_EQ(point.latitude_deg, 35);
    EXPECT_EQ(point.longitude_deg, 135);
    EXPECT_EQ(point.height_m, 12);
  }
}

TEST(ConvertDatum, TheWayBackCarriesItsCorrections) {
  const GeoPoint back = TokyoToWgs(WgsToTokyo({35, 135, 0}));
  EXPECT_NE(back.latitude_deg, 35);
  EXPECT_NE(back.longitude_deg, 135);
  EXPECT_NEAR(back.latitude_deg, 35, DegreesPerMetre);
  EXPECT_NEAR(back.longitude_deg, 135, DegreesPerMetre);

  // West of 90 degrees the short pi does not come into it, and the corrections show as they are.
  const CartesianPoint start = GeodeticToCartesian({35, 45, 0}, Wgs84Ellipsoid.a_m, Wgs84Ellipsoid.e2);
  const CartesianPoint end =
      GeodeticToCartesian(TokyoToWgs(WgsToTokyo({35, 45, 0})), Wgs84Ellipsoid.a_m, Wgs84Ellipsoid.e2);
  EXPECT_NEAR(end.x_m - start.x_m, -0.35, 0.001);
  EXPECT_NEAR(end.y_m - start.y_m, -0.45, 0.001);
  EXPECT_NEAR(end.z_m - start.z_m, 0, 0.001);
}

TEST(CartesianToGeodetic, LongitudeIsZeroWhereXIsZero) {
  const GeoPoint east = CartesianToGeodetic({0, 6378137, 0}, Wgs84Ellipsoid.a_m, Wgs84Ellipsoid.e2);
  EXPECT_EQ(east.longitude_deg, 0);
  const GeoPoint west = CartesianToGeodetic({0, -6378137, 0}, Wgs84Ellipsoid.a_m, Wgs84Ellipsoid.e2);
  EXPECT_EQ(west.longitude_deg, 0);
}

TEST(CartesianToGeodetic, IsTheWayBack) {
  for (double latitude = -80; latitude <= 80; latitude += 7.3) {
    for (double longitude = -179; longitude < 180; longitude += 13.7) {
      const GeoPoint back =
          CartesianToGeodetic(GeodeticToCartesian({latitude, longitude, 250}, Wgs84Ellipsoid.a_m, Wgs84Ellipsoid.e2),
                              Wgs84Ellipsoid.a_m, Wgs84Ellipsoid.e2);
      ASSERT_NEAR(back.latitude_deg, latitude, 1e-9);
      ASSERT_NEAR(back.longitude_deg, longitude, 1e-5) << "the short pi shows beyond 90 degrees";
      ASSERT_NEAR(back.height_m, 250, 1e-3);
    }
  }
}

TEST(ConvertDatum, ResultsAreNumbersEverywhere) {
  for (double latitude = -90; latitude <= 90; latitude += 15) {
    for (double longitude = -180; longitude <= 180; longitude += 15) {
      for (const GeoPoint& point : {WgsToTokyo({latitude, longitude, 0}), TokyoToWgs({latitude, longitude, 0})}) {
        ASSERT_TRUE(std::isfinite(point.latitude_deg) && std::isfinite(point.longitude_deg));
        ASSERT_LE(std::abs(point.latitude_deg), 90);
        ASSERT_LE(std::abs(point.longitude_deg), 180);
      }
    }
  }
}

TEST(SphericalDistance, IsZeroForEqualPoints) {
  EXPECT_EQ(SphericalDistance("34.5", "135", "34.5", "135"), 0);
}

TEST(SphericalDistance, OneDegreeOnTheEquator) {
  EXPECT_NEAR(SphericalDistance("0", "135", "0", "136"), 111.3, 0.05);
  EXPECT_DOUBLE_EQ(SphericalDistance("0", "135", "0", "136"), SphericalDistance(0, 135, 0, 136));
}

TEST(SphericalDistance, TextsAreReadLeniently) {
  EXPECT_EQ(SphericalDistance("0x", "135 E", "0", "136"), SphericalDistance(0, 135, 0, 136));
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
