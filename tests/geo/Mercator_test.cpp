// Expected values are hand-computed, or are the tiles that the map servers number so.
#include "geo/Mercator.h"

#include <cmath>
#include <gtest/gtest.h>
#include <utility>

namespace walrim {
namespace {

/// The numbers of the tile that a position lies on.
std::pair<int, int> TileAt(double lat_deg, double lon_deg, int zoom) {
  const MercatorPoint at = MercatorOf(lat_deg, lon_deg);
  return {static_cast<int>(std::floor(std::ldexp(at.x, zoom))), static_cast<int>(std::floor(std::ldexp(at.y, zoom)))};
}

TEST(Mercator, TheMiddleOfTheWorldIsTheMiddleOfTheSquare) {
  EXPECT_EQ(MercatorOf(0, 0), (MercatorPoint{0.5, 0.5}));
}

TEST(Mercator, TheEdgesAreTheEdges) {
  EXPECT_EQ(MercatorOf(0, -180).x, 0);
  EXPECT_EQ(MercatorOf(0, 180).x, 1);
  EXPECT_NEAR(MercatorOf(MercatorEdge_deg, 0).y, 0, 1e-12);
  EXPECT_NEAR(MercatorOf(-MercatorEdge_deg, 0).y, 1, 1e-12);
}

TEST(Mercator, WhatLiesBeyondTheEdgesLiesOnThem) {
  EXPECT_NEAR(MercatorOf(90, 10).y, 0, 1e-12);
  EXPECT_NEAR(MercatorOf(-90, 10).y, 1, 1e-12);
}

TEST(Mercator, FortyFiveDegreesNorthIsHandComputed) {
  // ln(tan(67.5 degrees)) = ln(1 + sqrt(2)) = 0.88137358702
  EXPECT_NEAR(MercatorOf(45, 90).y, 0.5 - 0.881373587019543 / (2 * 3.141592653589793), 1e-15);
  EXPECT_EQ(MercatorOf(45, 90).x, 0.75);
}

TEST(Mercator, ThePeakOfFujiLiesOnItsTile) {
  // x = (138.727778 + 180) / 360 * 16384; y = (1 - ln(tan(lat) + 1 / cos(lat)) / pi) / 2 * 16384 = 6469.59
  EXPECT_EQ(TileAt(35.360556, 138.727778, 14), (std::pair{14505, 6469}));
}

TEST(Mercator, PositionsComeBack) {
  for (const double lat : {-85.0, -33.5, 0.0, 35.6252, 84.9}) {
    for (const double lon : {-179.9, -0.25, 0.0, 139.2437, 179.9}) {
      const MercatorPoint at = MercatorOf(lat, lon);
      EXPECT_NEAR(LatitudeOfMercator(at.y), lat, 1e-9);
      EXPECT_NEAR(LongitudeOfMercator(at.x), lon, 1e-9);
    }
  }
}

TEST(Mercator, ALongitudeBeyondTheSquareIsTheSameLongitude) {
  EXPECT_NEAR(LongitudeOfMercator(1.25), -90, 1e-9);
  EXPECT_NEAR(LongitudeOfMercator(-0.25), 90, 1e-9);
}

TEST(Mercator, AWholeTurnAtSixtyDegreesIsHalfOfTheEquator) {
  EXPECT_NEAR(MetresOfMercator(0), 40'075'016.686, 0.001);
  EXPECT_NEAR(MetresOfMercator(60), 20'037'508.343, 0.001);
}

TEST(MercatorBox, TouchesNothingBeforeAPointIsAdded) {
  const MercatorBox world{0, 0, 1, 1};
  MercatorBox box;
  EXPECT_TRUE(box.Empty());
  EXPECT_FALSE(box.Touches(world));
  box.Add(MercatorPoint{0.5, 0.25});
  EXPECT_FALSE(box.Empty());
  EXPECT_TRUE(box.Touches(world));
  EXPECT_TRUE(world.Holds(box));
  EXPECT_FALSE(box.Holds(world));
  EXPECT_FALSE(box.Moved(1).Touches(world));
  EXPECT_TRUE(box.Moved(0.5).Touches(world)) << "the borders count";
}

}  // namespace
}  // namespace walrim
