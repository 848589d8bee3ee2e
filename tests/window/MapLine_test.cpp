// Lines of maps: whatever zoom they are prepared for, they go where all their points go.
#include "window/MapLine.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace walrim {
namespace {

using Points = std::vector<MercatorPoint>;

/// Many small steps with sharp turns, within a part of the world.
Points Scribble(std::size_t count) {
  std::mt19937 random(5);
  std::normal_distribution<double> step(0, 1e-6);
  Points points{{0.88, 0.39}};
  while (points.size() < count)
    points.push_back({points.back().x + step(random), points.back().y + step(random)});
  return points;
}

double DistanceTo(MercatorPoint point, MercatorPoint from, MercatorPoint to) {
  const double dx = to.x - from.x;
  const double dy = to.y - from.y;
  const double length2 = dx * dx + dy * dy;
  const double t =
      length2 > 0 ? std::clamp(((point.x - from.x) * dx + (point.y - from.y) * dy) / length2, 0.0, 1.0) : 0;
  return std::hypot(point.x - from.x - t * dx, point.y - from.y - t * dy);
}

/// How far any point lies from the prepared line between its neighbours there, in pixels of the zoom.
double WorstPixels(const MapLine& line, int zoom) {
  const MapLine::Level& level = line.At(zoom);
  double worst = 0;
  for (std::size_t i = 1; i < level.indices.size(); ++i) {
    for (std::uint32_t point = level.indices[i - 1]; point <= level.indices[i]; ++point) {
      worst = std::max(worst, DistanceTo(line.Points()[point], line.Points()[level.indices[i - 1]],
                                         line.Points()[level.indices[i]]));
    }
  }
  return worst * std::ldexp(WorldPixels, zoom);
}

TEST(MapLine, StaysWithinAPixelAndAQuarterOfAllItsPointsAtEveryZoom) {
  const MapLine line(Scribble(3000));
  for (int zoom = 0; zoom <= FinestZoom; ++zoom)
    EXPECT_LE(WorstPixels(line, zoom), 1.25) << zoom;
}

TEST(MapLine, HasNoMorePointsThanItsZoomCanShow) {
  const MapLine line(Scribble(3000));
  EXPECT_LE(line.At(0).indices.size(), 2U);
  for (int zoom = 1; zoom <= FinestZoom; ++zoom)
    EXPECT_GE(line.At(zoom).indices.size(), line.At(zoom - 1).indices.size()) << zoom;
  EXPECT_GT(line.At(FinestZoom).indices.size(), 2900U);
}

TEST(MapLine, StraightWaysAreTheirEnds) {
  Points points;
  for (int i = 0; i <= 50; ++i)
    points.push_back({0.5 + i / 1000.0, 0.25});
  EXPECT_EQ(MapLine(points).At(FinestZoom).indices, (std::vector<std::uint32_t>{0, 50}));
}

TEST(MapLine, BeginsAndEndsWhereItsPointsDo) {
  const MapLine line(Scribble(500));
  for (int zoom = 0; zoom <= FinestZoom; zoom += 5) {
    EXPECT_EQ(line.At(zoom).indices.front(), 0U);
    EXPECT_EQ(line.At(zoom).indices.back(), 499U);
  }
}

TEST(MapLine, StretchesHangTogetherAndLieInTheirBoxes) {
  const MapLine line(Scribble(3000));
  const MapLine::Level& level = line.At(18);
  ASSERT_GT(level.stretches.size(), 10U);
  EXPECT_EQ(level.stretches.front().begin, 0U);
  EXPECT_EQ(level.stretches.back().end, level.indices.size());
  for (std::size_t i = 0; i < level.stretches.size(); ++i) {
    const MapLine::Stretch& stretch = level.stretches[i];
    if (i > 0) {
      EXPECT_EQ(stretch.begin, level.stretches[i - 1].end - 1);
    }
    for (std::uint32_t at = stretch.begin; at < stretch.end; ++at) {
      MercatorBox point;
      point.Add(line.Points()[level.indices[at]]);
      EXPECT_TRUE(stretch.box.Holds(point));
    }
  }
}

TEST(MapLine, OnePointIsALineOfOne) {
  const MapLine line({{0.5, 0.5}});
  EXPECT_EQ(line.At(10).indices.size(), 1U);
  EXPECT_EQ(line.At(10).stretches.size(), 1U);
}

TEST(MapLine, NoPointIsNone) {
  const MapLine line({});
  EXPECT_TRUE(line.At(10).stretches.empty());
  EXPECT_TRUE(line.Box().Empty());
}

TEST(MapLine, AZoomBeyondTheFinestIsTheFinest) {
  const MapLine line(Scribble(100));
  EXPECT_EQ(&line.At(FinestZoom + 7), &line.At(FinestZoom));
}

}  // namespace
}  // namespace walrim
