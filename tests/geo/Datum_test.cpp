#include "geo/Datum.h"

#include <cmath>
#include <gtest/gtest.h>

namespace walrim {
namespace {

constexpr double DegreesPerMetre = 1 / 111000.0;

GeoPoint ToTokyo(const GeoPoint& point) {
  return ConvertDatum(point, Datum::Wgs84, Datum::Tokyo);
}

GeoPoint ToWgs84(const GeoPoint& point) {
  return ConvertDatum(point, Datum::Tokyo, Datum::Wgs84);
}

TEST(DatumOfName, KnowsBothInAnyCase) {
  EXPECT_EQ(DatumOfName("wgs84"), Datum::Wgs84);
  EXPECT_EQ(DatumOfName("TOKYO"), Datum::Tokyo);
  EXPECT_EQ(DatumOfName("NAD27"), std::nullopt);
  EXPECT_EQ(DatumOfName(""), std::nullopt);
  EXPECT_EQ(DatumName(Datum::Tokyo), "Tokyo");
  EXPECT_EQ(DatumName(Datum::Wgs84), "WGS84");
}

TEST(ConvertDatum, ShiftsToTheJapaneseDatumAsPublished) {
  // Around Tokyo Station the old datum reads some 11.7" less in latitude and 11.6" more in longitude.
  const GeoPoint tokyo = ToTokyo({35.681, 139.767, 0});
  EXPECT_NEAR((tokyo.latitude_deg - 35.681) * 3600, -11.7, 0.3);
  EXPECT_NEAR((tokyo.longitude_deg - 139.767) * 3600, 11.6, 0.3);
}

TEST(ConvertDatum, MatchesTheStepsDoneElsewhere) {
  // Worked out with another program from the published steps.
  struct Row {
    GeoPoint wgs84;
    GeoPoint tokyo;
  };
  constexpr Row Rows[] = {
      {{35, 135, 0}, {34.9967606600053, 135.0027314484942, -15.5719631}},
      {{35.681, 139.767, 0}, {35.6777181634952, 139.7701402960527, -1.7330181}},
      {{-33.5, -70.25, 0}, {-33.5019727514265, -70.2504526727546, 1499.6983568}},
      {{0, 45, 0}, {-0.0060051243494, 44.9961314511051, 490.2856464}},
      {{51, -0.5, 0}, {50.9947347380600, -0.5068356807530, 266.9497376}},
  };
  for (const Row& row : Rows) {
    const GeoPoint tokyo = ToTokyo(row.wgs84);
    EXPECT_NEAR(tokyo.latitude_deg, row.tokyo.latitude_deg, 1e-11);
    EXPECT_NEAR(tokyo.longitude_deg, row.tokyo.longitude_deg, 1e-11);
    EXPECT_NEAR(tokyo.height_m, row.tokyo.height_m, 1e-5);
  }
}

TEST(ConvertDatum, OneDatumLeavesThePointAsItIs) {
  for (const Datum datum : {Datum::Wgs84, Datum::Tokyo}) {
    const GeoPoint point = ConvertDatum({35, 135, 12}, datum, datum);
    EXPECT_EQ(point.latitude_deg, 35);
    EXPECT_EQ(point.longitude_deg, 135);
    EXPECT_EQ(point.height_m, 12);
  }
}

TEST(ConvertDatum, TheWayBackCarriesItsCorrections) {
  // 0.35 m along the first axis and 0.45 m along the second: west of 90 degrees the short pi does not come into it.
  const GeoPoint back = ToWgs84(ToTokyo({0, 45, 0}));
  const double east_m = back.longitude_deg - 45 > 0 ? 1 : -1;
  EXPECT_LT(east_m, 0);
  EXPECT_NEAR((45 - back.longitude_deg) / DegreesPerMetre, (0.45 - 0.35) * std::sqrt(0.5), 0.01);
  EXPECT_NEAR(back.height_m, -(0.45 + 0.35) * std::sqrt(0.5), 0.01);

  const GeoPoint japan = ToWgs84(ToTokyo({35, 135, 0}));
  EXPECT_NE(japan.latitude_deg, 35);
  EXPECT_NE(japan.longitude_deg, 135);
  EXPECT_NEAR(japan.latitude_deg, 35, DegreesPerMetre);
  EXPECT_NEAR(japan.longitude_deg, 135, DegreesPerMetre);
}

TEST(ConvertDatum, AgreesWithItselfAllOverTheGlobe) {
  for (double latitude = -80; latitude <= 80; latitude += 7.3) {
    for (double longitude = -179; longitude < 180; longitude += 13.7) {
      const GeoPoint back = ToWgs84(ToTokyo({latitude, longitude, 250}));
      ASSERT_NEAR(back.latitude_deg, latitude, DegreesPerMetre);
      ASSERT_NEAR(back.longitude_deg, longitude, 1.5 * DegreesPerMetre / std::cos(latitude * 0.0175))
          << "with the short pi";
      ASSERT_NEAR(back.height_m, 250, 1);
    }
  }
}

TEST(ConvertDatum, ResultsAreNumbersOnTheGlobeEverywhere) {
  for (double latitude = -90; latitude <= 90; latitude += 15) {
    for (double longitude = -180; longitude <= 180; longitude += 15) {
      for (const GeoPoint& point : {ToTokyo({latitude, longitude, 0}), ToWgs84({latitude, longitude, 0})}) {
        ASSERT_TRUE(std::isfinite(point.latitude_deg) && std::isfinite(point.longitude_deg));
        ASSERT_TRUE(OnGlobe(point));
      }
    }
  }
}

TEST(OnGlobe, EndsAtThePolesAndTheDateLine) {
  EXPECT_TRUE(OnGlobe({90, 180}));
  EXPECT_TRUE(OnGlobe({-90, -180}));
  EXPECT_FALSE(OnGlobe({90.001, 0}));
  EXPECT_FALSE(OnGlobe({0, -180.001}));
  EXPECT_FALSE(OnGlobe({std::nan(""), 0}));
}

}  // namespace
}  // namespace walrim
