// What a map shows of a data set: a copy of its own, which may be painted whatever happens to the data.
#pragma once

#include <QString>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "app/RecordCommands.h"
#include "geo/Mercator.h"
#include "records/DataSet.h"
#include "window/MapLine.h"

namespace walrim {

/// A record, or a point of a route or log.
struct MapItem {
  DataKind kind = DataKind::Waypoint;
  RecordPlace place;
};

/// A waypoint, or a point of a route.
struct MapMark {
  MercatorPoint at;
  RecordPlace place;
  QString name;
  WaypointType type = WaypointType::D108;
  int symbol = 0;
  bool chosen = true;
};

/// Points one behind the other.
struct MapPart {
  std::size_t first_point = 0;
  MapLine line;
};

/// A log in its segments, or a route. It ends, and begins again, where a position is not known.
struct MapWay {
  std::size_t record = 0;
  std::uint8_t color = 255;
  bool chosen = true;
  MercatorBox box;
  std::vector<MapPart> parts;

  /// Of a point by its index; nothing where its position is not known.
  [[nodiscard]] std::optional<MercatorPoint> At(std::size_t point) const;
};

struct MapScene {
  std::vector<MapMark> waypoints;  ///< those whose position is known
  std::vector<MapMark> route_points;
  std::vector<MapWay> routes;  ///< by their indices
  std::vector<MapWay> logs;    ///< likewise
  MercatorBox box;

  [[nodiscard]] const std::vector<MapWay>& Ways(DataKind kind) const { return kind == DataKind::Route ? routes : logs; }
};

[[nodiscard]] MapScene SceneOf(const DataSet& data);

/// Takes over which records are checked, of the data that a scene was made of. False where nothing differs.
[[nodiscard]] bool TakeChecks(MapScene& scene, const DataSet& data);

/// Where something lies; empty where that is not known, or it is not there.
[[nodiscard]] MercatorBox BoxOf(const MapScene& scene, const MapItem& item);

}  // namespace walrim
