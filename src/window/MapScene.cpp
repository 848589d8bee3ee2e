#include "window/MapScene.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "geo/Datum.h"
#include "text/Scan.h"
#include "text/Utf8.h"

namespace walrim {
namespace {

template <typename Position>
std::optional<MercatorPoint> PlaneOf(const Position& position) {
  if (!OnGlobe({position.lat_deg, position.lon_deg, 0})) return std::nullopt;
  return MercatorOf(position.lat_deg, position.lon_deg);
}

std::optional<MercatorPoint> PlaneOf(const Waypoint& waypoint) {
  return waypoint.missing ? std::nullopt : PlaneOf<Waypoint>(waypoint);
}

std::optional<MercatorPoint> PlaneOf(const RoutePoint& point) {
  return PlaneOf(point.waypoint);
}

bool BeginsPart(const TrackPoint& point) {
  return point.new_trk;
}

bool BeginsPart(const RoutePoint& /*point*/) {
  return false;
}

/// The way between two points is the short one, over 180 degrees too.
MercatorPoint Beside(MercatorPoint point, MercatorPoint before) {
  return {point.x - std::round(point.x - before.x), point.y};
}

template <typename Point>
void AddParts(MapWay& way, const std::vector<Point>& points) {
  std::vector<MercatorPoint> part;
  std::size_t first = 0;
  const auto end_part = [&] {
    if (part.empty()) return;
    way.parts.push_back({first, MapLine(std::exchange(part, {}))});
    way.box.Add(way.parts.back().line.Box());
  };
  for (std::size_t i = 0; i < points.size(); ++i) {
    const auto at = PlaneOf(points[i]);
    if (!at || BeginsPart(points[i])) end_part();
    if (!at) continue;
    if (part.empty()) first = i;
    part.push_back(part.empty() ? *at : Beside(*at, part.back()));
  }
  end_part();
}

template <typename Record>
MapWay WayOf(const Record& record, std::size_t index) {
  MapWay way;
  way.record = index;
  way.chosen = record.chosen;
  AddParts(way, record.points);
  return way;
}

/// Zero characters pad names as blanks do.
QString NameOf(const Waypoint& waypoint) {
  std::string name = waypoint.ident;
  std::ranges::replace(name, '\0', ' ');
  return QString::fromStdString(WithoutControlCharacters(TrimBlanks(name)));
}

void AddMark(std::vector<MapMark>& marks, const Waypoint& waypoint, const RecordPlace& place, bool chosen) {
  const auto at = PlaneOf(waypoint);
  if (!at) return;
  marks.push_back({*at, place, NameOf(waypoint), waypoint.type, waypoint.smbl.value_or(0), chosen});
}

MercatorBox BoxOfWay(const MapWay& way, const std::optional<std::size_t>& point) {
  if (!point) return way.box;
  MercatorBox box;
  if (const auto at = way.At(*point)) box.Add(*at);
  return box;
}

}  // namespace

std::optional<MercatorPoint> MapWay::At(std::size_t point) const {
  const auto behind = std::ranges::upper_bound(parts, point, {}, [](const MapPart& part) { return part.first_point; });
  if (behind == parts.begin()) return std::nullopt;
  const MapPart& part = *std::prev(behind);
  const std::size_t at = point - part.first_point;
  return at < part.line.Points().size() ? std::optional(part.line.Points()[at]) : std::nullopt;
}

MapScene SceneOf(const DataSet& data) {
  MapScene scene;
  for (std::size_t i = 0; i < data.Waypoints().size(); ++i)
    AddMark(scene.waypoints, data.Waypoints()[i], {i, std::nullopt}, data.Waypoints()[i].chosen);
  for (std::size_t i = 0; i < data.Routes().size(); ++i) {
    const Route& route = data.Routes()[i];
    scene.routes.push_back(WayOf(route, i));
    for (std::size_t point = 0; point < route.points.size(); ++point)
      AddMark(scene.route_points, route.points[point].waypoint, {i, point}, route.chosen);
  }
  for (std::size_t i = 0; i < data.Logs().size(); ++i) {
    scene.logs.push_back(WayOf(data.Logs()[i], i));
    scene.logs.back().color = data.Logs()[i].color;
  }
  for (const MapMark& mark : scene.waypoints)
    scene.box.Add(mark.at);
  for (const auto* ways : {&scene.routes, &scene.logs}) {
    for (const MapWay& way : *ways)
      scene.box.Add(way.box);
  }
  return scene;
}

bool TakeChecks(MapScene& scene, const DataSet& data) {
  bool differs = false;
  const auto take = [&](bool& chosen, bool now) { differs |= std::exchange(chosen, now) != now; };
  for (MapMark& mark : scene.waypoints)
    take(mark.chosen, data.Waypoints()[mark.place.record].chosen);
  for (MapMark& mark : scene.route_points)
    take(mark.chosen, data.Routes()[mark.place.record].chosen);
  for (MapWay& way : scene.routes)
    take(way.chosen, data.Routes()[way.record].chosen);
  for (MapWay& way : scene.logs)
    take(way.chosen, data.Logs()[way.record].chosen);
  return differs;
}

MercatorBox BoxOf(const MapScene& scene, const MapItem& item) {
  if (item.kind != DataKind::Waypoint) {
    const std::vector<MapWay>& ways = scene.Ways(item.kind);
    return item.place.record < ways.size() ? BoxOfWay(ways[item.place.record], item.place.point) : MercatorBox{};
  }
  MercatorBox box;
  const auto mark = std::ranges::lower_bound(scene.waypoints, item.place.record, {},
                                             [](const MapMark& each) { return each.place.record; });
  if (mark != scene.waypoints.end() && mark->place.record == item.place.record) box.Add(mark->at);
  return box;
}

}  // namespace walrim
