// Lines and areas of a map as polygons on the screen: no more of them than is seen.
#pragma once

#include <QPainterPath>
#include <QPolygonF>
#include <vector>

#include "window/MapCamera.h"
#include "window/MapLine.h"

namespace walrim {

/// Calls with every number of whole worlds that brings a part of the plane into view: 0, and -1 or 1 where the map goes
/// on over 180 degrees.
template <typename Call>
void ForEachWorld(const MapCamera& camera, const MercatorBox& box, const Call& call) {
  const MercatorBox seen = camera.Seen();
  for (const double worlds : {0.0, -1.0, 1.0}) {
    if (seen.Touches(box.Moved(worlds))) call(worlds);
  }
}

/// The zoom that a camera's lines are taken for.
[[nodiscard]] int LineZoom(const MapCamera& camera);

/// Appends what is seen of a line, in pieces of no more than some dozens of points; clipped where it leads far out.
void AppendPieces(std::vector<QPolygonF>& pieces, const MapLine& line, const MapCamera& camera, double worlds,
                  double margin_px);

/// What is seen of the area that a closed line has around it; clipped as well.
[[nodiscard]] QPolygonF AreaOf(const MapLine& line, const MapCamera& camera, double worlds);

}  // namespace walrim
