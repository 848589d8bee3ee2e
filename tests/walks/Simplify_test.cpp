#include "walks/Simplify.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <random>

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

/// The distance of a point from the line between two others, by turning the plane so that the line lies flat; in
/// degrees of latitude.
double DistanceFromLine(const TrackPoint& point, const TrackPoint& begin, const TrackPoint& end) {
  const double scale = std::cos((begin.lat_deg + end.lat_deg) / 2 * std::numbers::pi / 180);
  const auto east = [&](const TrackPoint& of) { return (of.lon_deg - begin.lon_deg) * scale; };
  const auto north = [&](const TrackPoint& of) { return of.lat_deg - begin.lat_deg; };
  const double angle = std::atan2(north(end), east(end));
  const double length = std::hypot(east(end), north(end));
  const double along = east(point) * std::cos(angle) + north(point) * std::sin(angle);
  const double across = north(point) * std::cos(angle) - east(point) * std::sin(angle);
  return std::hypot(across, along < 0 ? along : std::max(along - length, 0.0));
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

TEST(Simplify, WhereSegmentsBeginAndEndPointsStay) {
  auto points = Points({{0, 0}, {9, 10}, {0, 20}, {0, 30}, {8, 40}, {0, 50}, {0, 60}});
  points[3].new_trk = points[6].new_trk = true;
  const auto without = [&points](std::initializer_list<std::size_t> gone) {
    auto left = points;
    for (const std::size_t i : gone)
      left.erase(left.begin() + static_cast<std::ptrdiff_t>(i));
    return left;
  };
  EXPECT_EQ(Simplified(points, 6), without({4}));
  EXPECT_EQ(Simplified(points, 5), without({4, 1}));
  points[0].new_trk = true;
  EXPECT_EQ(Simplified(points, 5), without({4, 1}));
}

/// The kept points of a way that is bent at a distance of more than a tolerance from the way between its ends.
void KeepBends(const std::vector<TrackPoint>& points, std::size_t begin, std::size_t end, double tolerance,
               std::vector<std::size_t>& kept) {
  std::size_t farthest = begin;
  double most = tolerance;
  for (std::size_t i = begin + 1; i < end; ++i) {
    const double distance = DistanceFromLine(points[i], points[begin], points[end]);
    if (distance > most) farthest = i;
    most = std::max(most, distance);
  }
  if (farthest == begin) return;
  kept.push_back(farthest);
  KeepBends(points, begin, farthest, tolerance, kept);
  KeepBends(points, farthest, end, tolerance, kept);
}

/// Walks of 400 points at several latitudes, with breaks.
std::vector<TrackPoint> Walk(unsigned seed) {
  std::mt19937 random(seed);
  std::uniform_real_distribution<double> turn(-0.6, 0.6);
  std::vector<TrackPoint> points;
  double heading = 0;
  TrackPoint at;
  at.lat_deg = 2.0 * seed;
  at.lon_deg = 139;
  for (std::uint32_t i = 0; i < 400; ++i) {
    heading += turn(random);
    at.lat_deg += std::sin(heading) * 1e-4;
    at.lon_deg += std::cos(heading) * 1e-4;
    at.new_trk = i % 150 == 149;
    at.time = i;
    points.push_back(at);
  }
  return points;
}

TEST(Simplify, WhatGoesLiesWithinTheToleranceThatTheBendsWhichStayExceed) {
  for (unsigned seed = 0; seed < 40; ++seed) {
    const std::vector<TrackPoint> points = Walk(seed);
    for (const std::size_t most : {10U, 40U, 200U, 399U}) {
      const std::vector<TrackPoint> left = Simplified(points, most);
      ASSERT_EQ(left.size(), most);
      // The times are the places.
      double tolerance = 0;
      for (std::size_t k = 1; k < left.size(); ++k) {
        for (std::size_t i = *left[k - 1].time + 1; i < *left[k].time; ++i)
          tolerance = std::max(tolerance, DistanceFromLine(points[i], left[k - 1], left[k]));
      }
      std::vector<std::size_t> bends{0, 148, 149, 298, 299, 399};
      for (std::size_t segment = 0; segment < 3; ++segment)
        KeepBends(points, bends[2 * segment], bends[2 * segment + 1], tolerance + 1e-12, bends);
      for (const std::size_t bend : bends)
        EXPECT_TRUE(std::ranges::any_of(left, [bend](const TrackPoint& point) { return point.time == bend; })) << bend;
    }
  }
}

TEST(Simplify, ASegmentBeginsWithTheFirstPointOfItThatStaysWhereThereAreTooMany) {
  auto points = Points({{35, 139}, {35, 139.1}, {35, 139.2}, {35.1, 139.3}, {35, 139.4}});
  points[0].new_trk = true;
  points[2].new_trk = true;
  auto expected = Points({{35, 139}, {35.1, 139.3}, {35, 139.4}});
  expected[0].new_trk = true;
  expected[1].new_trk = true;
  EXPECT_EQ(Simplified(points, 3), expected);
}

/// A zigzag that grows: the farthest point is always the last but one, so that each splits off a single point.
TEST(Simplify, AZigzagOfAFullLogIsNoMoreWorkThanAWalkOfManyBends) {
  std::vector<TrackPoint> points(30000);
  for (std::size_t i = 0; i < points.size(); ++i) {
    points[i].lat_deg = (i % 2 == 0 ? 1e-6 : -1e-6) * static_cast<double>(i);
    points[i].lon_deg = 139 + 1e-9 * static_cast<double>(i);
  }
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ(Simplified(points, 29900).size(), 29900U);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(1500));
}

TEST(Simplify, NoMoreStayThanAreWanted) {
  std::vector<TrackPoint> same(100);
  for (std::size_t most = 0; most <= 100; ++most)
    EXPECT_EQ(Simplified(same, most).size(), most);
}

}  // namespace
}  // namespace walrim
