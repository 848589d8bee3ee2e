// Data sets with everything in them that an upload may lose.
#pragma once

#include <array>
#include <random>
#include <string>

#include "records/DataSet.h"

namespace walrim {

class RandomData {
 public:
  explicit RandomData(unsigned seed) : random_(seed) {}

  [[nodiscard]] std::size_t Below(std::size_t limit) { return random_() % limit; }

  [[nodiscard]] DataSet Make() {
    DataSet data;
    AddWaypoints(data);
    AddRoutes(data);
    AddLogs(data);
    return data;
  }

 private:
  template <typename Array>
  const auto& OneOf(const Array& array) {
    return array[Below(std::size(array))];
  }
  bool Seldom(std::size_t one_of) { return Below(one_of) == 0; }

  std::string Name() {
    static const std::array<std::string, 18> names{
        "TAKAO",  "takao", "LONGNAMEONE", "LONGNAMETWO", "高尾山",   "ﾀｶｵ",   "きたほ", "CAMP", "CAMP 1",
        "CAMP-1", "",      "北穂高岳",    "A",           "ヴァレー", "8合目", "GOAL ",  "X",    "東京A"};
    std::string name = OneOf(names);
    if (Seldom(2)) name += std::to_string(Below(8));
    return name;
  }
  std::string Text(std::size_t longest) {
    static const std::array<std::string, 4> pieces{"a", "B ", "山", "ｶ"};
    std::string text;
    for (std::size_t i = Below(longest); i > 0; --i)
      text += OneOf(pieces);
    return text;
  }

  Waypoint Point(const DataSet& data) {
    static const std::array<WaypointType, 6> types{WaypointType::D108, WaypointType::D108, WaypointType::D108,
                                                   WaypointType::D103, WaypointType::D104, WaypointType::D107};
    if (!data.Waypoints().empty() && Seldom(3)) return OneOf(data.Waypoints());
    Waypoint point;
    point.type = OneOf(types);
    point.ident = Name();
    point.cmnt = Seldom(12) ? Text(70) : Text(12);
    point.lat_deg = 35 + 0.1 * static_cast<double>(Below(6));
    point.lon_deg = 139 - (Seldom(20) ? 318 : 0);
    point.smbl = static_cast<std::uint16_t>(Seldom(2) ? 18 : Below(200));
    if (Seldom(4)) point.color = static_cast<std::uint8_t>(Below(16));
    if (point.type == WaypointType::D108 && Seldom(3)) point.alt_m = 599.5F;
    if (Seldom(5)) point.dist_m = 12.5F;
    if (point.type == WaypointType::D108 && Seldom(6)) {
      WaypointDetails details;
      details.facility = Seldom(20) ? Text(40) : Text(10);
      details.city = Text(10);
      details.addr = Text(10);
      details.state = "TK";
      point.details = details;
    }
    if (Seldom(400)) point.cmnt = "\xF0\x9F\x97\xBB";  // a mountain that code page 932 lacks
    return point;
  }

  void AddWaypoints(DataSet& data) {
    for (std::size_t count = Seldom(10) ? 600 : Below(30); count > 0; --count) {
      Waypoint point = Point(data);
      if (Seldom(2)) point.ident = "W" + std::to_string(Below(2000));
      static_cast<void>(data.Add(std::move(point)));
    }
  }

  void AddRoutes(DataSet& data) {
    for (std::size_t count = Below(Seldom(5) ? 30 : 6); count > 0; --count) {
      Route route;
      route.type = Seldom(3) ? RouteHeaderType::D201 : RouteHeaderType::D202;
      route.nmbr = static_cast<std::uint8_t>(Below(12));
      route.cmnt = Seldom(4) ? std::string() : "Route " + Text(Seldom(20) ? 60 : 20);
      for (std::size_t points = Below(Seldom(3) ? 100 : 12); points > 0; --points)
        route.points.push_back({Point(data), {}});
      if (!route.points.empty() && Seldom(10)) {
        RouteLink link;
        link.ident = Text(Seldom(5) ? 60 : 10);
        route.points.front().link = link;
      }
      static_cast<void>(data.Begin(std::move(route)));
    }
  }

  void AddLogs(DataSet& data) {
    for (std::size_t count = Below(4); count > 0; --count) {
      TrackLog log;
      log.trk_ident = Seldom(3) ? std::string() : Seldom(3) ? "ACTIVE LOG" : Text(Seldom(20) ? 60 : 10);
      static_cast<void>(data.Begin(std::move(log)));
      for (std::size_t points = Below(Seldom(3) ? 1500 : 60); points > 0; --points) {
        TrackPoint point;
        point.lat_deg = 35 + 1e-4 * static_cast<double>(Below(1000));
        point.lon_deg = 139 + 1e-4 * static_cast<double>(Below(1000));
        if (!Seldom(5)) point.time = 900'000'000 + static_cast<GarminSeconds>(Below(100'000));
        if (!Seldom(5)) point.alt_m = 100.0F;
        point.new_trk = Seldom(30);
        static_cast<void>(data.Add(point));
      }
    }
  }

  std::mt19937 random_;
};

}  // namespace walrim
