// The records on a map: logs and routes as lines, waypoints with pictures and names.
#pragma once

#include <QHash>
#include <QPixmap>
#include <QString>
#include <optional>

#include "window/MapCamera.h"
#include "window/MapScene.h"
#include "window/MapStyle.h"
#include "window/RecordTables.h"

class QPainter;

namespace walrim {

/// What is highlighted: the rows that are chosen in the tables.
struct MapSelection {
  RecordSelection records;
  RecordSelection points;

  friend bool operator==(const MapSelection&, const MapSelection&) = default;
  [[nodiscard]] bool HasRecord(DataKind kind, std::size_t record) const;
  [[nodiscard]] bool HasMark(DataKind kind, const RecordPlace& place) const;
};

/// Pictures that have been drawn once; for one palette, one font and one screen.
struct MapPictures {
  QHash<int, QPixmap> symbols;
  QHash<QString, QPixmap> names;
};

struct MapContents {
  const MapScene& scene;
  const MapSelection& selection;
  std::optional<MercatorPoint> pointer;  ///< where the profile, or the mouse, points at
};

void PaintRecords(QPainter& painter, const MapContents& contents, const MapCamera& camera, const MapStyle& style,
                  MapPictures& pictures);

/// What lies under a point of the screen: a waypoint rather than a point of a route, that rather than one of a log.
[[nodiscard]] std::optional<MapItem> ItemAt(const MapScene& scene, const MapCamera& camera, QPointF at);
/// The point of a log or route that lies nearest, where one lies near.
[[nodiscard]] std::optional<std::size_t> PointNear(const MapWay& way, const MapCamera& camera, QPointF at,
                                                   double most_px);

}  // namespace walrim
