// The tiles of a map server under the records: which are needed, and what is drawn while they are not there.
#pragma once

#include <QCache>
#include <QImage>
#include <QList>
#include <QObject>
#include <QPixmap>
#include <QTimer>
#include <optional>

#include "qt/QtClock.h"
#include "qt/TileFetcher.h"
#include "window/MapBackgrounds.h"
#include "window/MapCamera.h"

class QPainter;

namespace walrim {

[[nodiscard]] size_t qHash(const TileNumber& tile, size_t seed = 0);

/// The picture of a tile's bytes: PNG or JPEG, 256 or 512 pixels wide and high. Nothing of anything else, of which no
/// more than the head is looked at.
[[nodiscard]] std::optional<QImage> DecodeTile(const QByteArray& body);

class MapTiles : public QObject {
  Q_OBJECT

 public:
  MapTiles(TileSource source, const QString& cache_folder, QObject* parent = nullptr);

  [[nodiscard]] const QString& Attribution() const { return source_.attribution; }
  /// Whether nothing is seen behind the tiles that are there.
  [[nodiscard]] bool CoverAll(const MapCamera& camera) const;
  /// Draws those that are there; in the place of the others, where there is one, the part of a coarser one. What lacks
  /// is fetched once the map rests.
  void Paint(QPainter& painter, const MapCamera& camera);

  /// The tiles that a map shows, those in the middle first; none where that is too coarse for the server.
  [[nodiscard]] QList<TileNumber> SeenBy(const MapCamera& camera) const;

 Q_SIGNALS:
  /// A tile has come.
  void Changed();

 private:
  void Take(const TileFetcher::Arrival& arrival);
  void FetchLacking();
  /// The tile itself, or the coarser one that shows it.
  [[nodiscard]] std::optional<TileNumber> Shown(const TileNumber& tile) const;

  TileSource source_;
  QtClock clock_;
  TileFetcher fetcher_;
  QCache<TileNumber, QPixmap> pictures_;
  QList<TileNumber> seen_;  ///< by the map as it was painted last
  QTimer rest_;
};

}  // namespace walrim
