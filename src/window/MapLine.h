// A line of a map, ready to be drawn at every zoom: of many points those alone that can be told apart there.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "geo/Mercator.h"

namespace walrim {

/// At zoom 0 the world is so many pixels wide; with each step of zoom twice as many.
inline constexpr double WorldPixels = 256;
/// Finer than any map is drawn.
inline constexpr int FinestZoom = 20;

class MapLine {
 public:
  /// Points one behind the other that are drawn together, and the part of the plane that they lie in.
  struct Stretch {
    MercatorBox box;
    std::uint32_t begin = 0;  ///< among the indices of the level
    std::uint32_t end = 0;    ///< behind the last; the next stretch begins with the last
  };
  struct Level {
    std::vector<std::uint32_t> indices;  ///< of the points that stay, in their order; the first and the last do
    std::vector<Stretch> stretches;
  };

  explicit MapLine(std::vector<MercatorPoint> points);

  [[nodiscard]] const std::vector<MercatorPoint>& Points() const { return points_; }
  [[nodiscard]] const MercatorBox& Box() const { return box_; }
  /// What is drawn at a zoom, and at less than the next smaller one; within half a pixel of all points. Made when it is
  /// first asked for, in time that grows with the number of points, whatever way they go.
  [[nodiscard]] const Level& At(int zoom) const;

 private:
  [[nodiscard]] Level Make(int zoom) const;

  std::vector<MercatorPoint> points_;
  MercatorBox box_;
  mutable std::array<std::unique_ptr<Level>, FinestZoom + 1> levels_;
};

}  // namespace walrim
