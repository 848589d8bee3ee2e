#include "walks/Simplify.h"

#include <gtest/gtest.h>

namespace walrim {
namespace {

std::vector<TrackPoint> Points(std::initializer_list<std::pair<double, double>> places) {
  std::vector<TrackPoint> points;
  for (const auto& [lat_deg, lon_deg] : places) {
    points.emplace_back();
    points.back().lat_deg = lat_deg;
    points.back().lon_deg = lon_deg;
  }
  return points;
}

TEST(Simplify, WhatIsShortEnoughStaysWhole) {
  const auto points = Points({{35, 139}, {35.1, 139}, {35.2, 139}});
  EXPECT_EQ(Simplified(points, 3), points);
  EXPECT_EQ(Simplified(points, 100), points);
  EXPECT_TRUE(Simplified({}, 0).empty());
}

TEST(Simplify, TheSharpestBendsStay) {
  // East along a parallel, with a bend of 0.02 degrees at the third point and one of 0.01 at the fifth.
  const auto points =
      Points({{35, 139}, {35.0001, 139.1}, {35.02, 139.2}, {35.0001, 139.3}, {34.99, 139.4}, {35, 139.5}});
  EXPECT_EQ(Simplified(points, 2), Points({{35, 139}, {35, 139.5}}));
  EXPECT_EQ(Simplified(points, 3), Points({{35, 139}, {35.02, 139.2}, {35, 139.5}}));
  EXPECT_EQ(Simplified(points, 4), Points({{35, 139}, {35.02, 139.2}, {34.99, 139.4}, {35, 139.5}}));
}

TEST(Simplify, ALoopKeepsItsFarSide) {
  const auto points = Points({{35, 139}, {35.1, 139.1}, {35.2, 139}, {35.1, 138.9}, {35, 139}});
  EXPECT_EQ(Simplified(points, 3), Points({{35, 139}, {35.2, 139}, {35, 139}}));
}

TEST(Simplify, AWayAcrossTheDateLineIsNoWayAroundTheGlobe) {
  const auto points = Points({{0, 179}, {0.001, 179.9}, {0.5, -179.5}, {0, -179}});
  EXPECT_EQ(Simplified(points, 3), Points({{0, 179}, {0.5, -179.5}, {0, -179}}));
}

TEST(Simplify, ASegmentBeginsWithTheFirstPointOfItThatStays) {
  auto points = Points({{35, 139}, {35, 139.1}, {35, 139.2}, {35.1, 139.3}, {35, 139.4}});
  points[0].new_trk = true;
  points[2].new_trk = true;
  auto expected = Points({{35, 139}, {35.1, 139.3}, {35, 139.4}});
  expected[0].new_trk = true;
  expected[1].new_trk = true;
  EXPECT_EQ(Simplified(points, 3), expected);
}

TEST(Simplify, NoMoreStayThanAreWanted) {
  std::vector<TrackPoint> same(100);
  for (std::size_t most = 0; most <= 100; ++most)
    EXPECT_EQ(Simplified(same, most).size(), most);
}

}  // namespace
}  // namespace walrim
