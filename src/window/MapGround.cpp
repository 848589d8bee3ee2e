#include "window/MapGround.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

#include "window/MapWays.h"

namespace walrim {
namespace {

constexpr int SecondsPerDegree = 3600;
constexpr int SecondsPerMinute = 60;
constexpr double GridLeast_px = 96;
constexpr double ScaleMost_px = 120;
constexpr double Margin_px = 6;
constexpr double MetresPerKilometre = 1000;

constexpr std::array<int, 18> GridSteps_s{1,   2,    5,    10,   20,   30,    60,    120,   300,
                                          600, 1200, 1800, 3600, 7200, 18000, 36000, 72000, 108000};

/// Land that is cut off where the world ends has no shore there.
bool AlongTheEdge(QPointF from, QPointF to, const QRectF& world) {
  const auto on = [](double a, double b, double edge) { return std::abs(a - edge) < 1 && std::abs(b - edge) < 1; };
  return on(from.x(), to.x(), world.left()) || on(from.x(), to.x(), world.right()) ||
         on(from.y(), to.y(), world.bottom());
}

void PaintShore(QPainter& painter, const std::vector<QPolygonF>& pieces, const QRectF& world) {
  for (const QPolygonF& piece : pieces) {
    qsizetype begin = 0;
    for (qsizetype i = 1; i <= piece.size(); ++i) {
      if (i < piece.size() && !AlongTheEdge(piece[i - 1], piece[i], world)) continue;
      if (i - begin > 1) painter.drawPolyline(piece.constData() + begin, static_cast<int>(i - begin));
      begin = i;
    }
  }
}

void PaintLandOf(QPainter& painter, const std::vector<MapLine>& coast, const MapCamera& camera, double worlds) {
  const MercatorBox seen = camera.Seen().Moved(-worlds);
  const double least = 1 / camera.PixelsOfWorld();
  QPainterPath land;
  std::vector<QPolygonF> shore;
  for (const MapLine& ring : coast) {
    const MercatorBox& box = ring.Box();
    if (!seen.Touches(box) || std::max(box.east - box.west, box.south - box.north) < least) continue;
    land.addPolygon(AreaOf(ring, camera, worlds));
    AppendPieces(shore, ring, camera, worlds, 2);
  }
  painter.fillPath(land, painter.brush());
  PaintShore(painter, shore, QRectF(camera.ScreenOf({worlds, 0}), camera.ScreenOf({worlds + 1, 1})));
}

/// Calls with the screen's coordinate and the seconds of every line that is seen.
template <typename OnScreen, typename Call>
void ForEachLine(double from_deg, double to_deg, int step_s, const OnScreen& on_screen, const Call& call) {
  const int first = static_cast<int>(std::ceil(from_deg * SecondsPerDegree / step_s));
  const int last = static_cast<int>(std::floor(to_deg * SecondsPerDegree / step_s));
  for (int i = first; i <= last; ++i)
    call(on_screen(i * static_cast<double>(step_s) / SecondsPerDegree), i * step_s);
}

/// From -180 to 180.
int WithinWorld(int lon_s) {
  constexpr int HalfTurn_s = 180 * SecondsPerDegree;
  return ((lon_s + HalfTurn_s) % (2 * HalfTurn_s) + 2 * HalfTurn_s) % (2 * HalfTurn_s) - HalfTurn_s;
}

}  // namespace

void PaintLand(QPainter& painter, const std::vector<MapLine>& coast, const MapCamera& camera, const MapStyle& style) {
  painter.setBrush(style.land);
  painter.setPen(QPen(style.shore, 1));
  ForEachWorld(camera, {0, 0, 1, 1}, [&](double worlds) { PaintLandOf(painter, coast, camera, worlds); });
}

int GridStep(double pixels_per_second, double least_px) {
  const auto* step = std::ranges::find_if(GridSteps_s, [&](int each) { return each * pixels_per_second >= least_px; });
  return step != GridSteps_s.end() ? *step : GridSteps_s.back();
}

QString GridText(int seconds, int step_s, bool is_longitude) {
  const int all = std::abs(seconds);
  QString text = QStringLiteral("%1°").arg(all / SecondsPerDegree);
  if (step_s % SecondsPerDegree != 0)
    text += QStringLiteral("%1'").arg(all / SecondsPerMinute % SecondsPerMinute, 2, 10, QLatin1Char('0'));
  if (step_s % SecondsPerMinute != 0)
    text += QStringLiteral("%1\"").arg(all % SecondsPerMinute, 2, 10, QLatin1Char('0'));
  if (seconds == 0) return text;
  const char* sides = is_longitude ? "EW" : "NS";
  return text + QLatin1Char(sides[seconds < 0 ? 1 : 0]);
}

void PaintGrid(QPainter& painter, const MapCamera& camera, const MapStyle& style) {
  const MercatorBox seen = camera.Seen();
  const double pixels_per_second = camera.PixelsOfWorld() / 360 / SecondsPerDegree;
  const int step_s = GridStep(pixels_per_second, GridLeast_px);
  const QSizeF size = camera.Size();
  painter.setPen(QPen(style.grid, 1));
  const auto x_of = [&](double lon_deg) { return std::round(camera.ScreenOf({(lon_deg + 180) / 360, 0}).x()) + 0.5; };
  const auto y_of = [&](double lat_deg) { return std::round(camera.ScreenOf(MercatorOf(lat_deg, 0)).y()) + 0.5; };
  const auto lines = [&](const auto& on_meridian, const auto& on_parallel) {
    ForEachLine(seen.west * 360 - 180, seen.east * 360 - 180, step_s, x_of, on_meridian);
    ForEachLine(LatitudeOfMercator(seen.south), LatitudeOfMercator(seen.north), step_s, y_of, on_parallel);
  };
  lines([&](double x, int) { painter.drawLine(QPointF(x, 0), QPointF(x, size.height())); },
        [&](double y, int) { painter.drawLine(QPointF(0, y), QPointF(size.width(), y)); });
  const double corner = CaptionSize(painter, QStringLiteral("0")).height() + Margin_px;
  lines(
      [&](double x, int lon_s) {
        const QString text = GridText(WithinWorld(lon_s), step_s, true);
        const QSizeF room = CaptionSize(painter, text);
        const QRectF rect({x - room.width() / 2, 0}, room);
        if (rect.left() > corner && rect.right() < size.width()) PaintCaption(painter, rect, text, style);
      },
      [&](double y, int lat_s) {
        const QString text = GridText(lat_s, step_s, false);
        const QSizeF room = CaptionSize(painter, text);
        if (y > 2 * corner && y < size.height() - 2 * corner)
          PaintCaption(painter, QRectF({0, y - room.height() / 2}, room), text, style);
      });
}

QString MapScaleBar::Text() const {
  return metres < MetresPerKilometre ? QStringLiteral("%1 m").arg(metres)
                                     : QStringLiteral("%1 km").arg(metres / MetresPerKilometre);
}

MapScaleBar ScaleBarOf(const MapCamera& camera, double most_px) {
  const double metres_per_px = MetresOfMercator(LatitudeOfMercator(camera.Middle().y)) / camera.PixelsOfWorld();
  const double most_m = most_px * metres_per_px;
  const double power = std::pow(10, std::floor(std::log10(most_m)));
  double metres = power;
  for (const double factor : {2.0, 5.0}) {
    if (factor * power <= most_m) metres = factor * power;
  }
  return {metres, metres / metres_per_px};
}

void PaintScaleBar(QPainter& painter, const MapCamera& camera, const MapStyle& style) {
  constexpr double Tick_px = 5;
  const MapScaleBar bar = ScaleBarOf(camera, std::min(ScaleMost_px, camera.Size().width() / 3));
  const QSizeF text_room = CaptionSize(painter, bar.Text());
  const QSizeF room(std::max(bar.pixels, text_room.width()) + 2 * Margin_px, text_room.height() + Tick_px + 4);
  const QRectF rect({Margin_px, camera.Size().height() - room.height() - Margin_px}, room);
  PaintCaption(painter, rect, {}, style);
  painter.setPen(style.ink);
  painter.drawText(rect.adjusted(Margin_px, 0, 0, -Tick_px - 2), Qt::AlignLeft | Qt::AlignVCenter, bar.Text());
  const double left = std::round(rect.left() + Margin_px) + 0.5;
  const double right = std::round(left + bar.pixels) + 0.5;
  const double bottom = std::round(rect.bottom() - 4) + 0.5;
  const std::array<QPointF, 4> line{QPointF(left, bottom - Tick_px), QPointF(left, bottom), QPointF(right, bottom),
                                    QPointF(right, bottom - Tick_px)};
  painter.setPen(QPen(style.ink, 1.5));
  painter.drawPolyline(line.data(), static_cast<int>(line.size()));
}

QSizeF CaptionSize(const QPainter& painter, const QString& text) {
  const QFontMetricsF metrics(painter.font());
  return {std::ceil(metrics.horizontalAdvance(text)) + Margin_px, std::ceil(metrics.height()) + 2};
}

void PaintCaption(QPainter& painter, const QRectF& rect, const QString& text, const MapStyle& style) {
  constexpr int Alpha = 190;
  QColor paper = style.paper;
  paper.setAlpha(Alpha);
  painter.fillRect(rect, paper);
  const QPen pen = painter.pen();
  painter.setPen(style.ink);
  painter.drawText(rect, Qt::AlignCenter, text);
  painter.setPen(pen);
}

}  // namespace walrim
