#include "full_set.h"

#include <array>
#include <random>
#include <utility>

#include "text/Numbers.h"

namespace walrim {
namespace {

constexpr std::array<std::uint16_t, 3> Symbols{18, 8198, 8246};
constexpr std::array<std::string_view, 4> Comments{"25-MAR-01 11:32", "山頂の三角点", "NORTH RIDGE, HUT", ""};

class Filler {
 public:
  explicit Filler(DataSet& data) : data_(data) {}

  void AddWaypoints(int count) {
    for (int i = 1; i <= count; ++i)
      (void)data_.Add(NewWaypoint(i));
  }

  void AddRoute(int number, int points) {
    Route route;
    route.nmbr = static_cast<std::uint8_t>(number);
    route.cmnt = "ROUTE " + std::to_string(number);
    for (int point = 0; point < points; ++point)
      route.points.push_back({NewWaypoint(number * 100 + point), {}});
    (void)data_.Begin(std::move(route));
  }

  void AddLog(int number, int points) {
    TrackLog log;
    log.trk_ident = "ACTIVE LOG " + std::to_string(number);
    (void)data_.Begin(std::move(log));
    for (int i = 0; i < points; ++i) {
      TrackPoint point;
      point.lat_deg = Degrees(34);
      point.lon_deg = Degrees(138);
      point.time = time_ += 30;
      point.new_trk = i == 0;
      point.alt_m = static_cast<float>(random_() % 30000) / 10;
      (void)data_.Add(point);
    }
  }

 private:
  /// A position as receivers send it: a whole number of semicircles.
  double Degrees(int from) { return from + static_cast<double>(random_() % 11930465) * 180 / 2147483648.0; }

  Waypoint NewWaypoint(int number) {
    Waypoint waypoint;
    waypoint.ident = "W" + PadNumber(number, 5);
    waypoint.lat_deg = Degrees(34);
    waypoint.lon_deg = Degrees(138);
    waypoint.cmnt = Comments[random_() % Comments.size()];
    waypoint.smbl = Symbols[random_() % Symbols.size()];
    waypoint.dspl = static_cast<std::uint8_t>(random_() % 3);
    waypoint.alt_m = static_cast<float>(random_() % 30000) / 10;
    waypoint.details.Set(&WaypointDetails::country, "JP");
    return waypoint;
  }

  DataSet& data_;
  std::mt19937 random_{20010325};
  GarminSeconds time_ = 354000000;
};

}  // namespace

DataSet FullDataSet(int divisor) {
  DataSet data;
  Filler filler(data);
  const auto share = [divisor](std::size_t most) { return static_cast<int>(most) / divisor; };
  filler.AddWaypoints(share(MaxWaypoints));
  for (int i = 1; i <= share(MaxRoutes); ++i)
    filler.AddRoute(i, MaxRoutePoints - 1);
  const int logs = share(MaxTrackLogs);
  const int points = share(MaxTrackPoints);
  for (int i = 0; i < logs; ++i)
    filler.AddLog(i + 1, points / logs + (i < points % logs ? 1 : 0));
  return data;
}

std::string TextOf(FormatId format, const DataSet& data, const WriteSettings& settings) {
  std::string text;
  TextOutput out([&text](const std::string& lines) { text += lines; });
  (void)FormatOf(format).write(out, data, settings);
  out.Flush();
  return text;
}

std::string StandardFile(int divisor) {
  WriteSettings settings;
  settings.with_header = true;
  return TextOf(FormatId::Standard, FullDataSet(divisor), settings);
}

}  // namespace walrim
