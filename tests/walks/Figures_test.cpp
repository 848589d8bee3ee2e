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

}  // namespace
}  // namespace walrim
