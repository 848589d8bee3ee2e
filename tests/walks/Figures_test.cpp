#include "walks/Figures.h"

#include <gtest/gtest.h>
#include <vector>

namespace walrim {
namespace {

/// A thousandth of a degree of latitude on the sphere of the distances, which has Bessel's semi-major axis.
constexpr double Step_m = 6377397.155 * 3.14159265358979 / 180 / 1000;

/// Steps to the north from the equator.
TrackPoint At(double steps, std::optional<GarminSeconds> time = {}, std::optional<float> alt_m = {}) {
  TrackPoint point;
  point.lat_deg = steps / 1000;
  point.time = time;
  point.alt_m = alt_m;
  return point;
}

TrackPoint Beginning(TrackPoint point) {
  point.new_trk = true;
  return point;
}

std::vector<TrackPoint> Heights(const std::vector<std::optional<float>>& heights) {
  std::vector<TrackPoint> points;
  for (const auto& height : heights)
    points.push_back(At(0, {}, height));
  return points;
}

TEST(Figures, DistanceIsSummedInsideSegments) {
  const std::vector points{Beginning(At(0)), At(1), At(3), Beginning(At(10)), At(9)};
  EXPECT_NEAR(FiguresOf(points).distance_m, 4 * Step_m, 0.001);
  EXPECT_EQ(FiguresOf(std::vector{At(5)}).distance_m, 0);
  EXPECT_EQ(FiguresOf({}).distance_m, 0);
}

TEST(Figures, StopsAndGapsDoNotMove) {
  // Moves, stops slower than half a metre a second, pauses for ten seconds, and loses the signal.
  const std::vector points{Beginning(At(0, 100)),  At(1, 200), At(1.01, 300), At(1.01, 310),
                           Beginning(At(5, 1000)), At(6, 1100)};
  const Figures figures = FiguresOf(points);
  EXPECT_EQ(figures.duration_s, 1000);
  EXPECT_EQ(figures.moving_s, 100 + 10 + 100);
  // 111 metres in 223 seconds are a stop, in 222 none.
  EXPECT_EQ(FiguresOf(std::vector{At(0, 100), At(1, 323)}).moving_s, 0);
  EXPECT_EQ(FiguresOf(std::vector{At(0, 100), At(1, 322)}).moving_s, 222);
}

TEST(Figures, TimesThatAreMissingOrRunBackwards) {
  EXPECT_EQ(FiguresOf(std::vector{At(0), At(1)}).duration_s, std::nullopt);
  EXPECT_EQ(FiguresOf(std::vector{At(0), At(1)}).moving_s, std::nullopt);
  EXPECT_EQ(FiguresOf(std::vector{At(0), At(1, 100), At(2, 150), At(3)}).duration_s, 50);
  EXPECT_EQ(FiguresOf(std::vector{At(0, 100), At(1, 99)}).duration_s, std::nullopt);
  const Figures back = FiguresOf(std::vector{At(0, 100), At(1, 90), At(2, 200)});
  EXPECT_EQ(back.duration_s, 100);
  EXPECT_EQ(back.moving_s, 110);
}

TEST(Figures, ClimbsCountFromTenMetresAwayFromTheLastHeightThatCounted) {
  const Figures figures = FiguresOf(Heights({100.0F, 109.0F, 101.0F, 110.0F, 101.0F, 125.0F, 115.0F, 124.0F}));
  EXPECT_EQ(figures.ascent_m, 25);
  EXPECT_EQ(figures.descent_m, 10);
  EXPECT_EQ(FiguresOf(Heights({5.0F})).ascent_m, 0);
}

TEST(Figures, ClimbsNeedAHeightOfNineTenthsOfThePoints) {
  std::vector<std::optional<float>> heights(10, 100.0F);
  heights[9] = 150.0F;
  heights[5].reset();
  EXPECT_EQ(FiguresOf(Heights(heights)).ascent_m, 50);
  EXPECT_EQ(FiguresOf(Heights(heights)).descent_m, 0);
  heights[6].reset();
  EXPECT_EQ(FiguresOf(Heights(heights)).ascent_m, std::nullopt);
  EXPECT_EQ(FiguresOf(Heights(heights)).descent_m, std::nullopt);
  EXPECT_EQ(FiguresOf({}).ascent_m, std::nullopt);
}

TEST(Figures, SegmentsArePartsOfAtLeastOnePoint) {
  EXPECT_EQ(FiguresOf({}).segments, 0U);
  EXPECT_EQ(FiguresOf(std::vector{At(0), At(1)}).segments, 1U);
  const Figures figures = FiguresOf(std::vector{Beginning(At(0)), Beginning(At(1)), At(2), Beginning(At(3))});
  EXPECT_EQ(figures.segments, 3U);
  EXPECT_EQ(figures.points, 4U);
}

TEST(Figures, SpeedsAreOverAllOverMovingAndTheFastestStep) {
  // 100 s for a step, a stop of 100 s, 50 s for a step; then a gap that is crossed in a second.
  const std::vector points{Beginning(At(0, 100)),  At(1, 200), At(1, 300), At(2, 350),
                           Beginning(At(90, 351)), At(90, 352)};
  const Figures figures = FiguresOf(points);
  EXPECT_NEAR(figures.AverageSpeed_m_s().value(), 2 * Step_m / 252, 1e-6);
  EXPECT_NEAR(figures.MovingSpeed_m_s().value(), 2 * Step_m / 151, 1e-6);
  EXPECT_NEAR(figures.fastest_m_s.value(), Step_m / 50, 1e-6);
}

TEST(Figures, WhereNoTimePassesThereIsNoSpeed) {
  for (const auto& points : {std::vector{At(0), At(1)}, std::vector{At(0, 100), At(1, 100)},
                             std::vector{At(0, 100), At(1, 99)}, std::vector{At(0, 100)}}) {
    const Figures figures = FiguresOf(points);
    EXPECT_EQ(figures.AverageSpeed_m_s(), std::nullopt);
    EXPECT_EQ(figures.MovingSpeed_m_s(), std::nullopt);
    EXPECT_EQ(figures.fastest_m_s, std::nullopt);
  }
}

TEST(Figures, LowestAndHighestLeaveUnknownHeightsOut) {
  const Figures figures = FiguresOf(Heights({{}, 120.0F, -3.0F, {}, 80.0F}));
  EXPECT_EQ(figures.lowest_m, -3);
  EXPECT_EQ(figures.highest_m, 120);
  EXPECT_EQ(FiguresOf(Heights({{}, {}})).lowest_m, std::nullopt);
  EXPECT_EQ(FiguresOf(Heights({{}, {}})).highest_m, std::nullopt);
}

// A square of one step a side, walked in 400 s over a hill of 50 m.
TEST(Figures, OfASquareOverAHill) {
  const auto corner = [](double north, double east, GarminSeconds time, float alt_m) {
    TrackPoint point = At(north, time, alt_m);
    point.lon_deg = east / 1000;
    return point;
  };
  const Figures figures =
      FiguresOf(std::vector{Beginning(corner(0, 0, 1000, 10)), corner(1, 0, 1100, 30), corner(1, 1, 1200, 60),
                            corner(0, 1, 1300, 40), corner(0, 0, 1400, 10)});
  EXPECT_NEAR(figures.distance_m, 4 * Step_m, 0.001);
  EXPECT_EQ(figures.duration_s, 400);
  EXPECT_EQ(figures.moving_s, 400);
  EXPECT_EQ(figures.ascent_m, 50);
  EXPECT_EQ(figures.descent_m, 50);
  EXPECT_EQ(figures.lowest_m, 10);
  EXPECT_EQ(figures.highest_m, 60);
  EXPECT_NEAR(figures.AverageSpeed_m_s().value(), Step_m / 100, 1e-6);
}

TEST(Figures, OfSeveralLogsTogether) {
  const Figures one = FiguresOf(std::vector{Beginning(At(0, 100, 10.0F)), At(1, 200, 30.0F)});
  const Figures other =
      FiguresOf(std::vector{Beginning(At(5, 900, 90.0F)), At(8, 1000, 50.0F), Beginning(At(9, 1100, 5.0F))});
  const Figures both = TotalOf(std::vector{one, other});
  EXPECT_EQ(both.points, 5U);
  EXPECT_EQ(both.segments, 3U);
  EXPECT_NEAR(both.distance_m, 4 * Step_m, 0.001);
  EXPECT_EQ(both.duration_s, 300);
  EXPECT_EQ(both.moving_s, 200);
  EXPECT_EQ(both.ascent_m, 20);
  EXPECT_EQ(both.descent_m, 85);
  EXPECT_EQ(both.lowest_m, 5);
  EXPECT_EQ(both.highest_m, 90);
  EXPECT_NEAR(both.fastest_m_s.value(), 3 * Step_m / 100, 1e-6);
  const Figures without = FiguresOf(std::vector{Beginning(At(0)), At(1)});
  const Figures some = TotalOf(std::vector{one, without});
  EXPECT_EQ(some.duration_s, std::nullopt);
  EXPECT_EQ(some.ascent_m, std::nullopt);
  EXPECT_EQ(some.highest_m, 30);
  EXPECT_EQ(TotalOf({}).duration_s, std::nullopt);
}

TEST(Figures, LegsOfARoute) {
  Route route;
  EXPECT_TRUE(LegsOf(route).empty());
  for (const double steps : {0.0, 1.0, 1.0, 4.0}) {
    RoutePoint point;
    point.waypoint.lat_deg = steps / 1000;
    route.points.push_back(point);
  }
  const std::vector<double> legs_m = LegsOf(route);
  ASSERT_EQ(legs_m.size(), 3U);
  EXPECT_NEAR(legs_m[0], Step_m, 0.001);
  EXPECT_EQ(legs_m[1], 0);
  EXPECT_NEAR(legs_m[2], 3 * Step_m, 0.001);
}

}  // namespace
}  // namespace walrim
