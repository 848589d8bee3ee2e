#include "window/MapLine.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace walrim {
namespace {

/// Together half a pixel.
constexpr double NearPixels = 0.75;
constexpr double BendPixels = 0.5;
/// A line that winds takes as many steps as these have points, times all: no more.
constexpr std::uint32_t StretchPoints = 64;

using Indices = std::vector<std::uint32_t>;

/// Those that are some way from the one before them that stays.
Indices FarEnough(const std::vector<MercatorPoint>& points, double near) {
  Indices kept;
  for (std::uint32_t i = 0; i < points.size(); ++i) {
    if (i > 0 && i + 1 < points.size()) {
      const MercatorPoint& last = points[kept.back()];
      const double dx = points[i].x - last.x;
      const double dy = points[i].y - last.y;
      if (dx * dx + dy * dy < near * near) continue;
    }
    kept.push_back(i);
  }
  return kept;
}

/// The square of the way from a point to the stretch between two others.
double Away2(MercatorPoint point, MercatorPoint from, MercatorPoint to) {
  const double dx = to.x - from.x;
  const double dy = to.y - from.y;
  const double px = point.x - from.x;
  const double py = point.y - from.y;
  const double length2 = dx * dx + dy * dy;
  const double t = length2 > 0 ? std::clamp((px * dx + py * dy) / length2, 0.0, 1.0) : 0;
  const double ax = px - t * dx;
  const double ay = py - t * dy;
  return ax * ax + ay * ay;
}

/// Appends those between two places that the line bends at (Douglas-Peucker), and the second of the two.
void AppendBends(Indices& out, const std::vector<MercatorPoint>& points, const Indices& some, std::size_t begin,
                 std::size_t end, double bend) {
  std::vector<std::pair<std::size_t, std::size_t>> open{{begin, end}};
  while (!open.empty()) {
    const auto [from, to] = open.back();
    double most = bend * bend;
    std::size_t at = to;
    for (std::size_t i = from + 1; i < to; ++i) {
      const double away2 = Away2(points[some[i]], points[some[from]], points[some[to]]);
      if (away2 > most) {
        most = away2;
        at = i;
      }
    }
    open.pop_back();
    if (at == to) {
      out.push_back(some[to]);
      continue;
    }
    open.emplace_back(at, to);
    open.emplace_back(from, at);
  }
}

}  // namespace

MapLine::MapLine(std::vector<MercatorPoint> points) : points_(std::move(points)) {
  for (const MercatorPoint& point : points_)
    box_.Add(point);
}

const MapLine::Level& MapLine::At(int zoom) const {
  std::unique_ptr<Level>& level = levels_.at(static_cast<std::size_t>(std::clamp(zoom, 0, FinestZoom)));
  if (!level) level = std::make_unique<Level>(Make(zoom));
  return *level;
}

MapLine::Level MapLine::Make(int zoom) const {
  const double pixel = 1 / std::ldexp(WorldPixels, zoom);
  const Indices some = FarEnough(points_, NearPixels * pixel);
  Level level;
  if (some.empty()) return level;
  level.indices.push_back(some.front());
  for (std::size_t at = 0; at + 1 < some.size() || level.stretches.empty();) {
    const std::size_t end = std::min(at + StretchPoints, some.size() - 1);
    Stretch stretch{{}, static_cast<std::uint32_t>(level.indices.size() - 1), 0};
    if (end > at) AppendBends(level.indices, points_, some, at, end, BendPixels * pixel);
    stretch.end = static_cast<std::uint32_t>(level.indices.size());
    for (std::uint32_t i = stretch.begin; i < stretch.end; ++i)
      stretch.box.Add(points_[level.indices[i]]);
    level.stretches.push_back(stretch);
    at = end;
  }
  return level;
}

}  // namespace walrim
