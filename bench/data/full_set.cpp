#include "full_set.h"

#include <array>
#include <random>

#include "data/GeneralWalrim.h"
#include "text/Numbers.h"

namespace walrim {
namespace {

constexpr std::array<NamedCode, 3> Symbols{
    {{18, "waypoint dot"}, {8198, "small city symbol"}, {8246, "summit symbol"}}};
constexpr std::array<NamedCode, 3> Displays{
    {{0, "Display symbol with waypoint name"}, {1, "Display symbol by itself"}, {2, "Display symbol with comment"}}};
constexpr std::array<std::string_view, 4> Comments{"25-MAR-01 11:32", "山頂の三角点", "NORTH RIDGE, HUT", ""};

class Filler {
 public:
  explicit Filler(InternalData& data) : data_(data) {}

  void AddWaypoints(int count) {
    for (int i = 1; i <= count; ++i) {
      FillWaypoint(route_point_.waypoint, i);
      (void)data_.AddWaypoint(route_point_.waypoint);
    }
  }

  void AddRoute(int points) {
    RouteHeader header;
    header[RouteHeaderField::nmbr] = std::to_string(data_.routes.RouteCount + 1);
    header[RouteHeaderField::cmnt] = "ROUTE " + std::to_string(data_.routes.RouteCount + 1);
    header[RouteHeaderField::rte_wpt_num] = std::to_string(points);
    const int route = data_.AddRouteHeader(header);
    for (int point = 0; point < points; ++point) {
      FillWaypoint(route_point_.waypoint, route * 100 + point);
      route_point_.link[LinkField::link_class] = "0";
      (void)data_.AddRoutePoint(route_point_, route, point);
    }
  }

  void AddLog(int points) {
    TrackHeader header;
    header[TrackHeaderField::trk_pnt_num] = std::to_string(points);
    header[TrackHeaderField::color] = "255";
    header[TrackHeaderField::trk_ident] = "ACTIVE LOG " + std::to_string(data_.tracks.TrackCount + 1);
    const int log = data_.AddTrackHeader(header);
    for (int point = 0; point < points; ++point) {
      TrackPointEntry entry;
      entry.lat_deg = Degrees(34);
      entry.lon_deg = Degrees(138);
      entry.time = time_ += 30;
      entry.new_trk = point == 0;
      entry.alt_m = static_cast<float>(random_() % 30000) / 10;
      (void)data_.AddTrackPoint(entry, log, point);
    }
  }

 private:
  /// A position as receivers send it: a whole number of semicircles.
  double Degrees(int from) { return from + static_cast<double>(random_() % 11930465) * 180 / 2147483648.0; }

  void FillWaypoint(WaypointRecord& record, int number) {
    using enum WaypointField;
    record[ident] = "W" + PadNumber(number, 5);
    record[lat] = ShortestNumber(Degrees(34));
    record[lon] = ShortestNumber(Degrees(138));
    record[cmnt] = Comments[random_() % Comments.size()];
    record[smbl] = std::to_string(Symbols[random_() % Symbols.size()].code);
    record[dspl] = std::to_string(random_() % 3);
    record[color] = "255";
    record[wpt_class] = "0";
    record[attr] = "96";
    for (std::size_t i = 0; i < SubclassBytes; ++i)
      record[SubclassField(i)] = i < 6 ? "0" : "255";
    record[alt] = ShortestNumber(static_cast<float>(random_() % 30000) / 10);
    record[dpth] = "1E+25";
    record[cc] = "JP";
  }

  InternalData& data_;
  std::mt19937 random_{20010325};
  double time_ = 354000000;
  RoutePoint route_point_;
};

}  // namespace

void FillDataSet(InternalData& data, int divisor) {
  Filler filler(data);
  filler.AddWaypoints(MaxWaypoints / divisor);
  for (int i = 0; i < MaxRoutes / divisor; ++i)
    filler.AddRoute(MaxRoutePoints - 1);
  const int logs = MaxTrackLogs / divisor;
  const int points = MaxTrackPoints / divisor;
  for (int i = 0; i < logs; ++i)
    filler.AddLog(points / logs + (i < points % logs ? 1 : 0));
}

std::string StandardFile(int divisor) {
  InternalData data;
  FillDataSet(data, divisor);
  NameTablesByType names;
  names.fill({Symbols, Displays, {}});
  StandardWriter writer(data, names, {});
  std::string text;
  for (const DataKind kind : AllDataKinds)
    writer.AppendKind(text, kind, true);
  return text;
}

}  // namespace walrim
