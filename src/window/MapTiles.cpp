#include "window/MapTiles.h"

#include <QBuffer>
#include <QHash>
#include <QImageReader>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <string>

#include "app/ProgramName.h"
#include "window/MapLine.h"

namespace walrim {
namespace {

constexpr int Rest_ms = 150;
constexpr int CoarserZooms = 8;
constexpr qsizetype LeastPictures = 96;

/// As the servers' owners want it: who it is, and in which version.
QByteArray UserAgent() {
  const std::string text = std::string(ProgramName).append("/").append(ProgramVersion());
  return QByteArray::fromStdString(text);
}

TileNumber Coarser(const TileNumber& tile, int zooms) {
  return {tile.zoom - zooms, tile.x >> zooms, tile.y >> zooms};
}

/// Where a tile lies; x may be beyond the world. Whole pixels, so that no seam is seen.
QRect ScreenRect(const MapCamera& camera, int zoom, int x, int y) {
  const double tiles = std::ldexp(1, zoom);
  const QPoint corner = camera.ScreenOf({x / tiles, y / tiles}).toPoint();
  const QPoint other = camera.ScreenOf({(x + 1) / tiles, (y + 1) / tiles}).toPoint();
  return {corner, other - QPoint(1, 1)};
}

int WithinWorld(int x, int tiles) {
  return ((x % tiles) + tiles) % tiles;
}

/// Calls with every tile of a zoom that is seen, and where.
template <typename Call>
void ForEachSeen(const MapCamera& camera, int zoom, const Call& call) {
  const int tiles = 1 << zoom;
  const MercatorBox seen = camera.Seen();
  const auto number = [tiles](double at) { return static_cast<int>(std::floor(at * tiles)); };
  for (int y = std::max(number(seen.north), 0); y <= std::min(number(seen.south), tiles - 1); ++y) {
    for (int x = number(seen.west); x <= number(seen.east); ++x)
      call(TileNumber{zoom, WithinWorld(x, tiles), y}, ScreenRect(camera, zoom, x, y));
  }
}

/// The zoom whose tiles are nearest to their own size; nothing where the server's coarsest would be far smaller.
std::optional<int> ZoomFor(const MapCamera& camera, const TileSource& source) {
  const int zoom = static_cast<int>(std::lround(camera.Zoom()));
  if (zoom + 1 < source.least_zoom) return std::nullopt;
  return std::clamp(zoom, source.least_zoom, source.most_zoom);
}

}  // namespace

size_t qHash(const TileNumber& tile, size_t seed) {
  return qHashMulti(seed, tile.zoom, tile.x, tile.y);
}

std::optional<QImage> DecodeTile(const QByteArray& body) {
  QBuffer buffer;
  buffer.setData(body);
  QImageReader reader(&buffer);
  reader.setDecideFormatFromContent(true);
  const QByteArray format = reader.format();
  if (format != "png" && format != "jpeg") return std::nullopt;
  const QSize size = reader.size();
  if (size != QSize(256, 256) && size != QSize(512, 512)) return std::nullopt;
  const QImage image = reader.read();
  return image.isNull() ? std::nullopt : std::optional(image);
}

MapTiles::MapTiles(TileSource source, const QString& cache_folder, QObject* parent)
    : QObject(parent),
      source_(std::move(source)),
      fetcher_(cache_folder, UserAgent(), clock_, [this](const TileFetcher::Arrival& arrival) { Take(arrival); }),
      pictures_(LeastPictures) {
  rest_.setSingleShot(true);
  rest_.setInterval(Rest_ms);
  connect(&rest_, &QTimer::timeout, this, &MapTiles::FetchLacking);
}

QList<TileNumber> MapTiles::SeenBy(const MapCamera& camera) const {
  const auto zoom = ZoomFor(camera, source_);
  QList<TileNumber> tiles;
  QList<double> away;
  if (!zoom) return tiles;
  const QPointF middle(camera.Size().width() / 2, camera.Size().height() / 2);
  std::vector<std::pair<double, TileNumber>> near;
  ForEachSeen(camera, *zoom, [&](const TileNumber& tile, const QRect& rect) {
    const QPointF way = QPointF(rect.center()) - middle;
    near.emplace_back(QPointF::dotProduct(way, way), tile);
  });
  std::ranges::stable_sort(near, {}, [](const auto& each) { return each.first; });
  for (const auto& [distance, tile] : near) {
    if (!tiles.contains(tile)) tiles.append(tile);
  }
  return tiles;
}

std::optional<TileNumber> MapTiles::Shown(const TileNumber& tile) const {
  for (int zooms = 0; zooms <= std::min(CoarserZooms, tile.zoom); ++zooms) {
    const TileNumber coarser = Coarser(tile, zooms);
    if (pictures_.contains(coarser)) return coarser;
  }
  return std::nullopt;
}

bool MapTiles::CoverAll(const MapCamera& camera) const {
  const QList<TileNumber> tiles = SeenBy(camera);
  return !tiles.isEmpty() &&
         std::ranges::all_of(tiles, [this](const TileNumber& tile) { return Shown(tile).has_value(); });
}

void MapTiles::Paint(QPainter& painter, const MapCamera& camera) {
  const QList<TileNumber> seen = SeenBy(camera);
  pictures_.setMaxCost(std::max(LeastPictures, 2 * seen.size()));
  if (seen != seen_) {
    seen_ = seen;
    rest_.start();
  }
  if (seen.isEmpty()) return;
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  ForEachSeen(camera, seen.front().zoom, [&](const TileNumber& tile, const QRect& rect) {
    const auto shown = Shown(tile);
    if (!shown) return;
    const QPixmap& picture = *pictures_.object(*shown);
    const int zooms = tile.zoom - shown->zoom;
    const double part = std::ldexp(picture.width(), -zooms);
    const int mask = (1 << zooms) - 1;
    painter.drawPixmap(QRectF(rect), picture, QRectF((tile.x & mask) * part, (tile.y & mask) * part, part, part));
  });
  painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
}

/// Not before the map rests: what it only passes is not asked for.
void MapTiles::FetchLacking() {
  QList<QUrl> urls;
  for (const TileNumber& tile : seen_) {
    if (!pictures_.contains(tile)) urls.append(source_.UrlOf(tile));
  }
  fetcher_.Want(urls);
}

void MapTiles::Take(const TileFetcher::Arrival& arrival) {
  const auto tile =
      std::ranges::find_if(seen_, [&](const TileNumber& each) { return source_.UrlOf(each) == arrival.url; });
  const auto image = DecodeTile(arrival.body);
  if (!image) return fetcher_.Refuse(arrival.url);
  if (tile == seen_.end()) return;
  pictures_.insert(*tile, new QPixmap(QPixmap::fromImage(*image)));
  Q_EMIT Changed();
}

}  // namespace walrim
