#include "window/MapRecords.h"

#include <QPainter>
#include <QSet>
#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>
#include <utility>

#include "window/MapWays.h"
#include "window/SymbolPictures.h"

namespace walrim {
namespace {

constexpr double LineWidth = 2.4;
constexpr double CasingWidth = 4.6;
constexpr double HighlightWidth = 8;
constexpr double SymbolSize = 16;
constexpr double DotRadius = 3;
constexpr double RingRadius = 11;
constexpr double Reach_px = 9;

/// What has a place on the screen already, so that names do not lie in a heap.
class Taken {
 public:
  [[nodiscard]] bool IsFree(const QRectF& rect) const {
    for (int row = RowOf(rect.top()); row <= RowOf(rect.bottom()); ++row) {
      const auto rects = rows_.constFind(row);
      if (rects == rows_.constEnd()) continue;
      for (const QRectF& other : *rects) {
        if (other.intersects(rect)) return false;
      }
    }
    return true;
  }
  void Take(const QRectF& rect) {
    for (int row = RowOf(rect.top()); row <= RowOf(rect.bottom()); ++row)
      rows_[row].push_back(rect);
  }

 private:
  [[nodiscard]] static int RowOf(double y) { return static_cast<int>(std::floor(y / 32)); }

  QHash<int, std::vector<QRectF>> rows_;
};

struct Painted {
  QPainter& painter;
  const MapCamera& camera;
  const MapStyle& style;
};

// ---- Lines

std::vector<QPolygonF> PiecesOf(const MapWay& way, const MapCamera& camera) {
  std::vector<QPolygonF> pieces;
  ForEachWorld(camera, way.box, [&](double worlds) {
    for (const MapPart& part : way.parts)
      AppendPieces(pieces, part.line, camera, worlds, HighlightWidth);
  });
  return pieces;
}

/// Outlines of wide lines are slow; where the lines are many, hair lines side by side do, at a tenth of the time.
constexpr qsizetype MostOutlined = 1000;

bool AreMany(const std::vector<QPolygonF>& pieces) {
  const auto add = [](qsizetype sum, const QPolygonF& piece) { return sum + piece.size(); };
  return std::accumulate(pieces.begin(), pieces.end(), qsizetype{0}, add) > MostOutlined;
}

void DrawPieces(QPainter& painter, const std::vector<QPolygonF>& pieces) {
  for (const QPolygonF& piece : pieces) {
    if (piece.size() > 1) {
      painter.drawPolyline(piece);
    } else {
      painter.drawPoint(piece.front());
    }
  }
}

void DrawOutlined(QPainter& painter, const std::vector<QPolygonF>& pieces, const QColor& colour, double width) {
  painter.setPen(QPen(colour, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  DrawPieces(painter, pieces);
}

/// As many hair lines as given, around where the line would be.
void DrawAround(QPainter& painter, const std::vector<QPolygonF>& pieces, const QColor& colour, double radius,
                int lines) {
  painter.setPen(QPen(colour, 1));
  for (int i = 0; i < lines; ++i) {
    const double turn = (i + 0.25) * 2 * std::numbers::pi / lines;
    const QPointF away(radius * std::cos(turn), radius * std::sin(turn));
    painter.translate(away);
    DrawPieces(painter, pieces);
    painter.translate(-away);
  }
}

void PaintWay(const Painted& on, const MapWay& way, const QColor& colour, bool highlighted) {
  const std::vector<QPolygonF> pieces = PiecesOf(way, on.camera);
  if (pieces.empty()) return;
  const QColor casing = highlighted ? on.style.highlight : on.style.paper;
  const QColor inside = way.chosen ? colour : on.style.Pale(colour);
  if (AreMany(pieces)) {
    DrawAround(on.painter, pieces, casing, highlighted ? 2.0 : 1.4, 4);
    return DrawAround(on.painter, pieces, inside, 0.6, 3);
  }
  DrawOutlined(on.painter, pieces, casing, highlighted ? HighlightWidth : CasingWidth);
  if (highlighted) DrawOutlined(on.painter, pieces, on.style.ink, CasingWidth - 1);
  DrawOutlined(on.painter, pieces, inside, LineWidth);
}

void PaintWays(const Painted& on, const MapScene& scene, const MapSelection& selection) {
  // What is chosen lies above the rest.
  for (const bool highlighted : {false, true}) {
    for (const MapWay& log : scene.logs) {
      if (selection.HasRecord(DataKind::TrackLog, log.record) != highlighted) continue;
      PaintWay(on, log, on.style.LogColor(log.color), highlighted);
    }
    for (const MapWay& route : scene.routes) {
      if (selection.HasRecord(DataKind::Route, route.record) != highlighted) continue;
      PaintWay(on, route, on.style.route, highlighted);
    }
  }
}

// ---- Points

/// Places on the screen, and no two that cannot be told apart.
class Sparse {
 public:
  explicit Sparse(double apart_px) : apart_px_(apart_px) {}
  [[nodiscard]] bool Add(QPointF at) {
    const auto x = static_cast<qint64>(std::floor(at.x() / apart_px_));
    const auto y = static_cast<qint64>(std::floor(at.y() / apart_px_));
    const qint64 cell = x * (qint64{1} << 32) + y;
    if (cells_.contains(cell)) return false;
    cells_.insert(cell);
    return true;
  }

 private:
  double apart_px_;
  QSet<qint64> cells_;
};

template <typename Call>
void OnScreen(const MapCamera& camera, MercatorPoint at, double margin_px, const Call& call) {
  const QRectF screen = QRectF({0, 0}, camera.Size()).adjusted(-margin_px, -margin_px, margin_px, margin_px);
  for (const double worlds : {0.0, -1.0, 1.0}) {
    const QPointF place = camera.ScreenOf({at.x + worlds, at.y});
    if (screen.contains(place)) call(place);
  }
}

void PaintChosenPoints(const Painted& on, const MapScene& scene, const RecordSelection& points) {
  constexpr std::size_t MostRings = 200;
  constexpr double Apart_px = 4;
  if (!points.of_points || points.kind == DataKind::Waypoint) return;
  const std::vector<MapWay>& ways = scene.Ways(points.kind);
  Sparse sparse(Apart_px);
  std::vector<QPointF> places;
  for (const RecordPlace& place : points.places) {
    if (place.record >= ways.size()) continue;
    const auto at = ways[place.record].At(place.point.value_or(0));
    if (!at) continue;
    OnScreen(on.camera, *at, DotRadius, [&](QPointF screen) {
      if (sparse.Add(screen)) places.push_back(screen);
    });
  }
  on.painter.setPen(QPen(on.style.ink, 1.2));
  on.painter.setBrush(on.style.highlight);
  for (const QPointF& place : places) {
    if (places.size() > MostRings) {
      on.painter.fillRect(QRectF(place - QPointF(2, 2), QSizeF(4, 4)), on.style.highlight);
    } else {
      on.painter.drawEllipse(place, DotRadius + 1.5, DotRadius + 1.5);
    }
  }
}

void PaintPointer(const Painted& on, MercatorPoint at) {
  constexpr double Radius = 6;
  OnScreen(on.camera, at, Radius, [&](QPointF place) {
    on.painter.setBrush(Qt::NoBrush);
    on.painter.setPen(QPen(on.style.paper, 5));
    on.painter.drawEllipse(place, Radius, Radius);
    on.painter.setPen(QPen(on.style.ink, 2));
    on.painter.drawEllipse(place, Radius, Radius);
  });
}

// ---- Marks

const QPixmap& SymbolOf(const Painted& on, const MapMark& mark, MapPictures& pictures) {
  const int key = mark.symbol * 8 + static_cast<int>(mark.type);
  auto picture = pictures.symbols.constFind(key);
  if (picture == pictures.symbols.constEnd()) {
    QPalette palette;
    palette.setColor(QPalette::Text, on.style.ink);
    picture =
        pictures.symbols.insert(key, DrawSymbol(SymbolPictureOf(mark.type, mark.symbol), static_cast<int>(SymbolSize),
                                                on.painter.device()->devicePixelRatioF(), palette));
  }
  return *picture;
}

/// A name with a seam of paper, which reads on any ground.
QPixmap DrawName(const Painted& on, const QString& name) {
  constexpr qreal Seam = 1.25;
  const QFontMetricsF metrics(on.painter.font());
  const QSizeF size(std::ceil(metrics.horizontalAdvance(name)) + 4, std::ceil(metrics.height()) + 2);
  const qreal ratio = on.painter.device()->devicePixelRatioF();
  QPixmap picture((size * ratio).toSize());
  picture.setDevicePixelRatio(ratio);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setFont(on.painter.font());
  const QPointF base(2, 1 + metrics.ascent());
  painter.setPen(on.style.paper);
  for (const QPointF& away : {QPointF(-Seam, 0), QPointF(Seam, 0), QPointF(0, -Seam), QPointF(0, Seam), QPointF(-1, -1),
                              QPointF(1, -1), QPointF(-1, 1), QPointF(1, 1)}) {
    painter.drawText(base + away, name);
  }
  painter.setPen(on.style.ink);
  painter.drawText(base, name);
  return picture;
}

const QPixmap& NameOf(const Painted& on, const QString& name, MapPictures& pictures) {
  constexpr qsizetype MostNames = 2000;
  if (pictures.names.size() > MostNames) pictures.names.clear();
  auto picture = pictures.names.constFind(name);
  if (picture == pictures.names.constEnd()) picture = pictures.names.insert(name, DrawName(on, name));
  return *picture;
}

/// A mark where it is seen.
struct SeenMark {
  const MapMark* mark;
  QPointF at;
  bool highlighted;
};

std::vector<SeenMark> SeenMarks(const std::vector<MapMark>& marks, DataKind kind, const MapSelection& selection,
                                const MapCamera& camera) {
  constexpr double Apart_px = 6;
  std::vector<SeenMark> seen;
  Sparse sparse(Apart_px);
  for (const MapMark& mark : marks) {
    OnScreen(camera, mark.at, SymbolSize, [&](QPointF at) {
      const bool highlighted = selection.HasMark(kind, mark.place);
      if (sparse.Add(at) || highlighted) seen.push_back({&mark, at, highlighted});
    });
  }
  std::stable_partition(seen.begin(), seen.end(), [](const SeenMark& mark) { return mark.highlighted; });
  return seen;
}

void PaintSymbols(const Painted& on, const std::vector<SeenMark>& marks, MapPictures& pictures, Taken& taken) {
  const QPointF corner(SymbolSize / 2, SymbolSize / 2);
  for (auto mark = marks.rbegin(); mark != marks.rend(); ++mark) {
    if (mark->highlighted) {
      on.painter.setPen(QPen(on.style.ink, 1.2));
      on.painter.setBrush(on.style.highlight);
      on.painter.drawEllipse(mark->at, RingRadius, RingRadius);
    }
    on.painter.setOpacity(mark->mark->chosen ? 1 : 0.4);
    on.painter.drawPixmap(mark->at - corner, SymbolOf(on, *mark->mark, pictures));
    taken.Take(QRectF(mark->at - corner, QSizeF(SymbolSize, SymbolSize)));
  }
  on.painter.setOpacity(1);
}

void PaintDots(const Painted& on, const std::vector<SeenMark>& marks, Taken& taken) {
  const QPointF corner(DotRadius, DotRadius);
  for (const SeenMark& mark : marks) {
    const QColor colour = mark.mark->chosen ? on.style.route : on.style.Pale(on.style.route);
    on.painter.setPen(QPen(on.style.paper, 1));
    on.painter.setBrush(mark.highlighted ? on.style.highlight : colour);
    on.painter.drawEllipse(mark.at, DotRadius, DotRadius);
    taken.Take(QRectF(mark.at - corner, 2 * QSizeF(DotRadius, DotRadius)));
  }
}

void PaintNames(const Painted& on, const std::vector<SeenMark>& marks, double radius, MapPictures& pictures,
                Taken& taken) {
  for (const SeenMark& mark : marks) {
    if (mark.mark->name.isEmpty()) continue;
    const QPixmap& name = NameOf(on, mark.mark->name, pictures);
    const QSizeF size = name.deviceIndependentSize();
    const QPointF right = mark.at + QPointF(radius + 1, -size.height() / 2);
    const QPointF left = mark.at - QPointF(radius + 1 + size.width(), size.height() / 2);
    const QPointF below = mark.at + QPointF(-size.width() / 2, radius);
    const QPointF above = mark.at - QPointF(size.width() / 2, radius + size.height());
    for (const QPointF& corner : {right, left, below, above}) {
      const QRectF rect(corner, size);
      if (!taken.IsFree(rect)) continue;
      on.painter.setOpacity(mark.mark->chosen ? 1 : 0.5);
      on.painter.drawPixmap(corner, name);
      taken.Take(rect);
      break;
    }
  }
  on.painter.setOpacity(1);
}

}  // namespace

bool MapSelection::HasRecord(DataKind kind, std::size_t record) const {
  return records.kind == kind && std::ranges::binary_search(records.places, record, {}, &RecordPlace::record);
}

bool MapSelection::HasMark(DataKind kind, const RecordPlace& place) const {
  if (kind == DataKind::Waypoint) return HasRecord(kind, place.record);
  const auto before = [](const RecordPlace& a, const RecordPlace& b) {
    return std::pair(a.record, a.point) < std::pair(b.record, b.point);
  };
  return points.kind == kind && points.of_points && std::ranges::binary_search(points.places, place, before);
}

void PaintRecords(QPainter& painter, const MapContents& contents, const MapCamera& camera, const MapStyle& style,
                  MapPictures& pictures) {
  const Painted on{painter, camera, style};
  const MapScene& scene = contents.scene;
  const MapSelection& selection = contents.selection;
  painter.setRenderHint(QPainter::Antialiasing);
  PaintWays(on, scene, selection);
  PaintChosenPoints(on, scene, selection.points);
  const std::vector<SeenMark> waypoints = SeenMarks(scene.waypoints, DataKind::Waypoint, selection, camera);
  const std::vector<SeenMark> route_points = SeenMarks(scene.route_points, DataKind::Route, selection, camera);
  Taken taken;
  PaintDots(on, route_points, taken);
  PaintSymbols(on, waypoints, pictures, taken);
  PaintNames(on, waypoints, SymbolSize / 2, pictures, taken);
  PaintNames(on, route_points, DotRadius, pictures, taken);
  if (contents.pointer) PaintPointer(on, *contents.pointer);
}

// ---- What lies where

namespace {

double Distance2(QPointF a, QPointF b) {
  return QPointF::dotProduct(a - b, a - b);
}

/// The mark that lies nearest, where one lies near.
const MapMark* MarkAt(const std::vector<MapMark>& marks, const MapCamera& camera, QPointF at) {
  const MapMark* nearest = nullptr;
  double best = Reach_px * Reach_px;
  for (const MapMark& mark : marks) {
    OnScreen(camera, mark.at, Reach_px, [&](QPointF place) {
      if (Distance2(place, at) > best) return;
      best = Distance2(place, at);
      nearest = &mark;
    });
  }
  return nearest;
}

struct NearPoint {
  std::size_t point = 0;
  double distance2 = 0;
};

/// How near a point of the screen the way from one point to the next comes.
double SegmentDistance2(QPointF from, QPointF to, QPointF at) {
  const QPointF way = to - from;
  const double length2 = QPointF::dotProduct(way, way);
  const double t = length2 > 0 ? std::clamp(QPointF::dotProduct(at - from, way) / length2, 0.0, 1.0) : 0;
  return Distance2(from + t * way, at);
}

/// Of the two ends of the nearest segment the nearer one.
std::optional<NearPoint> NearestOf(const MapPart& part, const MapCamera& camera, double worlds, QPointF at,
                                   double best) {
  std::optional<NearPoint> nearest;
  QPointF before;
  for (std::size_t i = 0; i < part.line.Points().size(); ++i) {
    const MercatorPoint point = part.line.Points()[i];
    const QPointF place = camera.ScreenOf({point.x + worlds, point.y});
    const double distance2 = i > 0 ? SegmentDistance2(before, place, at) : Distance2(place, at);
    if (distance2 <= best) {
      best = distance2;
      const bool nearer_before = i > 0 && Distance2(before, at) < Distance2(place, at);
      nearest = NearPoint{part.first_point + i - (nearer_before ? 1 : 0), distance2};
    }
    before = place;
  }
  return nearest;
}

std::optional<NearPoint> NearestOf(const MapWay& way, const MapCamera& camera, QPointF at, double most_px) {
  std::optional<NearPoint> nearest;
  MercatorBox under;
  under.Add(camera.PlaneOf(at - QPointF(most_px, most_px)));
  under.Add(camera.PlaneOf(at + QPointF(most_px, most_px)));
  for (const double worlds : {0.0, -1.0, 1.0}) {
    for (const MapPart& part : way.parts) {
      if (!under.Touches(part.line.Box().Moved(worlds))) continue;
      const double best = nearest ? nearest->distance2 : most_px * most_px;
      if (const auto found = NearestOf(part, camera, worlds, at, best)) nearest = found;
    }
  }
  return nearest;
}

}  // namespace

std::optional<std::size_t> PointNear(const MapWay& way, const MapCamera& camera, QPointF at, double most_px) {
  const auto nearest = NearestOf(way, camera, at, most_px);
  return nearest ? std::optional(nearest->point) : std::nullopt;
}

std::optional<MapItem> ItemAt(const MapScene& scene, const MapCamera& camera, QPointF at) {
  if (const MapMark* mark = MarkAt(scene.waypoints, camera, at)) return MapItem{DataKind::Waypoint, mark->place};
  if (const MapMark* mark = MarkAt(scene.route_points, camera, at)) return MapItem{DataKind::Route, mark->place};
  std::optional<MapItem> item;
  double best = Reach_px;
  for (const DataKind kind : {DataKind::TrackLog, DataKind::Route}) {
    for (const MapWay& way : scene.Ways(kind)) {
      const auto nearest = NearestOf(way, camera, at, best);
      if (!nearest) continue;
      best = std::sqrt(nearest->distance2);
      item = MapItem{kind, {way.record, nearest->point}};
    }
  }
  return item;
}

}  // namespace walrim
