#include "window/MapWays.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <utility>

namespace walrim {
namespace {

/// What is clipped lies so far out that neither its ends nor its corners are seen.
constexpr double ClipMargin_px = 64;

QRectF ClipRect(const MapCamera& camera) {
  return QRectF({0, 0}, camera.Size()).adjusted(-ClipMargin_px, -ClipMargin_px, ClipMargin_px, ClipMargin_px);
}

/// From the plane to the screen, for many points.
struct Scale {
  Scale(const MapCamera& camera, double worlds)
      : pixels(camera.PixelsOfWorld()), origin(camera.ScreenOf({worlds, 0})) {}

  [[nodiscard]] QPointF operator()(MercatorPoint point) const {
    return {origin.x() + point.x * pixels, origin.y() + point.y * pixels};
  }

  double pixels;
  QPointF origin;
};

/// The part of a segment inside a rectangle, as shares of its way (Liang and Barsky).
std::optional<std::pair<double, double>> InsideShares(const QRectF& rect, QPointF from, QPointF to) {
  const QPointF way = to - from;
  double begin = 0;
  double end = 1;
  const std::array<std::pair<double, double>, 4> borders{{{-way.x(), from.x() - rect.left()},
                                                          {way.x(), rect.right() - from.x()},
                                                          {-way.y(), from.y() - rect.top()},
                                                          {way.y(), rect.bottom() - from.y()}}};
  for (const auto& [speed, room] : borders) {
    if (speed == 0 && room < 0) return std::nullopt;
    if (speed < 0) begin = std::max(begin, room / speed);
    if (speed > 0) end = std::min(end, room / speed);
  }
  if (begin > end) return std::nullopt;
  return std::pair(begin, end);
}

void AppendClipped(std::vector<QPolygonF>& pieces, const QPolygonF& piece, const QRectF& rect) {
  QPolygonF open;
  const auto close = [&] {
    if (!open.isEmpty()) pieces.push_back(std::exchange(open, {}));
  };
  for (qsizetype i = 1; i < piece.size(); ++i) {
    const QPointF way = piece[i] - piece[i - 1];
    const auto shares = InsideShares(rect, piece[i - 1], piece[i]);
    if (!shares || shares->first > 0) close();
    if (!shares) continue;
    if (open.isEmpty()) open.append(piece[i - 1] + shares->first * way);
    open.append(piece[i - 1] + shares->second * way);
    if (shares->second < 1) close();
  }
  close();
}

/// The part of an area on one side of a straight border (Sutherland and Hodgman).
template <typename Inside, typename Cross>
QPolygonF Cut(const QPolygonF& area, const Inside& inside, const Cross& cross) {
  QPolygonF cut;
  for (qsizetype i = 0; i < area.size(); ++i) {
    const QPointF& from = area[i > 0 ? i - 1 : area.size() - 1];
    const QPointF& to = area[i];
    if (inside(from) != inside(to)) cut.append(cross(from, to));
    if (inside(to)) cut.append(to);
  }
  return cut;
}

QPolygonF Clipped(QPolygonF area, const QRectF& rect) {
  const auto at_x = [](double x) {
    return [x](QPointF from, QPointF to) {
      return QPointF(x, from.y() + (to.y() - from.y()) * (x - from.x()) / (to.x() - from.x()));
    };
  };
  const auto at_y = [](double y) {
    return [y](QPointF from, QPointF to) {
      return QPointF(from.x() + (to.x() - from.x()) * (y - from.y()) / (to.y() - from.y()), y);
    };
  };
  area = Cut(
      area, [&](QPointF at) { return at.x() >= rect.left(); }, at_x(rect.left()));
  area = Cut(
      area, [&](QPointF at) { return at.x() <= rect.right(); }, at_x(rect.right()));
  area = Cut(
      area, [&](QPointF at) { return at.y() >= rect.top(); }, at_y(rect.top()));
  return Cut(
      area, [&](QPointF at) { return at.y() <= rect.bottom(); }, at_y(rect.bottom()));
}

}  // namespace

int LineZoom(const MapCamera& camera) {
  return static_cast<int>(std::ceil(camera.Zoom()));
}

void AppendPieces(std::vector<QPolygonF>& pieces, const MapLine& line, const MapCamera& camera, double worlds,
                  double margin_px) {
  const Scale scale(camera, worlds);
  const MercatorBox seen = camera.Seen(margin_px).Moved(-worlds);
  const MercatorBox unclipped = camera.Seen(ClipMargin_px).Moved(-worlds);
  const MapLine::Level& level = line.At(LineZoom(camera));
  for (const MapLine::Stretch& stretch : level.stretches) {
    if (!seen.Touches(stretch.box)) continue;
    QPolygonF piece;
    piece.reserve(stretch.end - stretch.begin);
    for (std::uint32_t i = stretch.begin; i < stretch.end; ++i)
      piece.append(scale(line.Points()[level.indices[i]]));
    if (unclipped.Holds(stretch.box)) {
      pieces.push_back(std::move(piece));
    } else {
      AppendClipped(pieces, piece, ClipRect(camera));
    }
  }
}

QPolygonF AreaOf(const MapLine& line, const MapCamera& camera, double worlds) {
  const Scale scale(camera, worlds);
  const MapLine::Level& level = line.At(LineZoom(camera));
  QPolygonF area;
  area.reserve(static_cast<qsizetype>(level.indices.size()));
  for (const std::uint32_t index : level.indices)
    area.append(scale(line.Points()[index]));
  const bool whole = camera.Seen(ClipMargin_px).Moved(-worlds).Holds(line.Box());
  return whole ? area : Clipped(std::move(area), ClipRect(camera));
}

}  // namespace walrim
