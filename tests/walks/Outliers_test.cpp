#include "walks/Outliers.h"

#include <gtest/gtest.h>
#include <map>

namespace walrim {
namespace {

/// A metre to the north or the east, at the equator.
constexpr double Metre_deg = 360 / (2 * 3.14159265358979 * 6377397);

struct At {
  double east_m;
  double north_m;
};

/// A point every 10 s.
std::vector<TrackPoint> Walk(const std::vector<At>& way) {
  std::vector<TrackPoint> points;
  for (const At& at : way) {
    TrackPoint point;
    point.lon_deg = at.east_m * Metre_deg;
    point.lat_deg = at.north_m * Metre_deg;
    point.time = static_cast<GarminSeconds>(1000 + 10 * points.size());
    points.push_back(point);
  }
  return points;
}

using Indices = std::vector<std::size_t>;

/// To the east, a step of 14 m every 10 s, one to the left or to the right at most, for twenty points.
std::vector<At> ToTheEast() {
  std::vector<At> way;
  for (int i = 0; i < 20; ++i)
    way.push_back({14.0 * i + i % 3, i % 2 == 0 ? 1.0 : -1.0});
  return way;
}

std::vector<TrackPoint> WithSpikes(const std::map<std::size_t, double>& spikes_m) {
  std::vector<At> way = ToTheEast();
  for (const auto& [point, north_m] : spikes_m)
    way[point].north_m = north_m;
  return Walk(way);
}

TEST(Outliers, ASpikeIsOneAndItsNeighboursAreNone) {
  EXPECT_EQ(OutliersOf(WithSpikes({{4, 90}})), Indices{4});
  EXPECT_EQ(OutliersOf(WithSpikes({{1, 90}})), Indices{1});
}

TEST(Outliers, TwoSpikesAreTwo) {
  EXPECT_EQ(OutliersOf(WithSpikes({{4, 90}, {11, -60}})), (Indices{4, 11}));
  EXPECT_EQ(OutliersOf(WithSpikes({{4, 90}, {5, -60}})), (Indices{4, 5}));
}

TEST(Outliers, WhatIsOffByTheErrorOfAReceiverIsNone) {
  EXPECT_EQ(OutliersOf(WithSpikes({{4, 18}})), Indices{}) << "the way over it is 20 m longer, the turn may be walked";
  EXPECT_EQ(OutliersOf(WithSpikes({})), Indices{});
}

TEST(Outliers, AWalkThatTurnsRoundHasNone) {
  std::vector<At> way = ToTheEast();
  const std::vector<At> there = way;
  way.insert(way.end(), there.rbegin() + 1, there.rend());
  EXPECT_EQ(OutliersOf(Walk(way)), Indices{});
}

TEST(Outliers, OneInAWalkAsEvenAsCanBeIsOne) {
  std::vector<At> way;
  for (int i = 0; i < 20; ++i)
    way.push_back({10.0 * i, 0});
  EXPECT_EQ(OutliersOf(Walk(way)), Indices{});
  way[3].north_m = 50;
  EXPECT_EQ(OutliersOf(Walk(way)), Indices{3});
}

TEST(Outliers, AreNotLookedForWhereTimeOrWayIsNotKnown) {
  std::vector<TrackPoint> points = WithSpikes({{4, 90}});
  points[4].new_trk = true;
  EXPECT_EQ(OutliersOf(points), Indices{}) << "the gap in front of it may be a way";
  points = WithSpikes({{4, 90}});
  points[5].new_trk = true;
  EXPECT_EQ(OutliersOf(points), Indices{});
  points = WithSpikes({{4, 90}});
  points[4].time.reset();
  EXPECT_EQ(OutliersOf(points), Indices{});
  points[4].time = points[3].time;
  EXPECT_EQ(OutliersOf(points), Indices{});
  EXPECT_EQ(OutliersOf({}), Indices{});
  EXPECT_EQ(OutliersOf(std::span(points).first(2)), Indices{});
}

TEST(Outliers, TheOtherSideOfTheDateLineIsNear) {
  std::vector<TrackPoint> points = WithSpikes({{4, 90}});
  const double shift_deg = 180 - points[10].lon_deg;
  for (TrackPoint& point : points) {
    point.lon_deg += shift_deg;
    if (point.lon_deg > 180) point.lon_deg -= 360;
  }
  EXPECT_EQ(OutliersOf(points), Indices{4});
}

}  // namespace
}  // namespace walrim
