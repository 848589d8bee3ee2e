// Walks whose distances are computed by hand: a thousandth of a degree of latitude is 111.307 m on the sphere.
#include "walks/Profile.h"

#include <gtest/gtest.h>
#include <limits>

#include "walks/Figures.h"

namespace walrim {
namespace {

constexpr double Step_m = 6377397.155 * 3.1415926 / 180 / 1000;

TrackPoint North(int steps, std::optional<GarminSeconds> time, std::optional<float> alt_m, bool begins = false) {
  TrackPoint point;
  point.lat_deg = 35 + steps / 1000.0;
  point.lon_deg = 139;
  point.time = time;
  point.alt_m = alt_m;
  point.new_trk = begins;
  return point;
}

TEST(Profile, DistanceTimeHeightAndSpeedGoOnFromPointToPoint) {
  const std::vector<TrackPoint> points{North(0, 1000, 100.0F), North(1, 1100, 150.0F), North(3, 1150, 90.0F)};
  const std::vector<ProfilePoint> profile = ProfileOf(points);
  ASSERT_EQ(profile.size(), 3U);
  EXPECT_EQ(profile[0].distance_m, 0);
  EXPECT_NEAR(profile[1].distance_m, Step_m, 0.01);
  EXPECT_NEAR(profile[2].distance_m, 3 * Step_m, 0.01);
  EXPECT_EQ(profile[0].time_s, 0);
  EXPECT_EQ(profile[1].time_s, 100);
  EXPECT_EQ(profile[2].time_s, 150);
  EXPECT_EQ(profile[2].alt_m, 90);
  EXPECT_FALSE(profile[0].speed_m_s);
  EXPECT_NEAR(profile[1].speed_m_s.value(), Step_m / 100, 1e-4);
  EXPECT_NEAR(profile[2].speed_m_s.value(), 2 * Step_m / 50, 1e-4);
}

TEST(Profile, AGapIsNoWayButTimePasses) {
  const std::vector<TrackPoint> points{North(0, 0, 1.0F), North(1, 100, 1.0F), North(50, 4000, 1.0F, true),
                                       North(51, 4100, 1.0F)};
  const std::vector<ProfilePoint> profile = ProfileOf(points);
  EXPECT_TRUE(profile[2].begins);
  EXPECT_EQ(profile[2].distance_m, profile[1].distance_m);
  EXPECT_FALSE(profile[2].speed_m_s);
  EXPECT_EQ(profile[2].time_s, 4000);
  EXPECT_NEAR(profile[3].distance_m, FiguresOf(points).distance_m, 1e-9);
}

TEST(Profile, WhatIsNotKnownIsNotZero) {
  const std::vector<TrackPoint> points{North(0, {}, {}), North(1, 500, {}), North(2, 400, 7.0F), North(3, 700, {})};
  const std::vector<ProfilePoint> profile = ProfileOf(points);
  EXPECT_FALSE(profile[0].time_s);
  EXPECT_EQ(profile[1].time_s, 0);
  EXPECT_FALSE(profile[2].time_s) << "time runs backwards";
  EXPECT_EQ(profile[3].time_s, 200);
  EXPECT_FALSE(profile[1].alt_m);
  EXPECT_EQ(profile[2].alt_m, 7);
  EXPECT_FALSE(profile[1].speed_m_s);
  EXPECT_FALSE(profile[2].speed_m_s);
}

TEST(Profile, ARouteHasDistancesAndHeights) {
  Route route;
  for (int i = 0; i < 3; ++i) {
    RoutePoint point;
    point.waypoint.lat_deg = 35 + i / 1000.0;
    point.waypoint.lon_deg = 139;
    if (i != 1) point.waypoint.alt_m = 10.0F * static_cast<float>(i);
    route.points.push_back(point);
  }
  const std::vector<ProfilePoint> profile = ProfileOf(route);
  ASSERT_EQ(profile.size(), 3U);
  EXPECT_NEAR(profile[2].distance_m, 2 * Step_m, 0.01);
  EXPECT_FALSE(profile[1].alt_m);
  EXPECT_EQ(profile[2].alt_m, 20);
  EXPECT_FALSE(profile[2].time_s);
}

TEST(Profile, AHeightThatIsNoNumberIsNotKnown) {
  const std::vector<TrackPoint> points{North(0, 0, std::numeric_limits<float>::quiet_NaN()),
                                       North(1, 1, std::numeric_limits<float>::infinity())};
  EXPECT_FALSE(ProfileOf(points)[0].alt_m);
  EXPECT_FALSE(ProfileOf(points)[1].alt_m);
}

TEST(Profile, NothingHasNone) {
  EXPECT_TRUE(ProfileOf(std::span<const TrackPoint>()).empty());
  EXPECT_TRUE(ProfileOf(Route{}).empty());
}

}  // namespace
}  // namespace walrim
