// The records of any WPT+ text as a script. Once texts are written as a script can hold them, they come back from a
// script of ours as they were. Only quotes bring a comma into a text, which then cuts it. The first script has a start,
// a goal and numbers.
#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "format_texts.h"

using namespace walrim;

namespace {

DataSet ThereAndBack(const DataSet& data, const ScriptOptions& options = {}) {
  WriteSettings settings = InForm(AngleNotation::D, Datum::Wgs84);
  settings.script = options;
  const std::string script = WriteText(FormatId::Script, data, settings);
  DataSet back;
  if (ReadText(FormatId::Script, script, back).statements.count > 1) std::abort();
  return back;
}

/// Whether no position may leave the globe on the way, which takes its record with it.
bool AllInside(const DataSet& data) {
  const auto inside = [](const auto& place) { return std::abs(place.lat_deg) < 89 && std::abs(place.lon_deg) < 179; };
  const auto route_inside = [&](const Route& route) {
    return std::all_of(route.points.begin(), route.points.end(),
                       [&](const RoutePoint& point) { return inside(point.waypoint); });
  };
  const auto log_inside = [&](const TrackLog& log) {
    return std::all_of(log.points.begin(), log.points.end(), inside);
  };
  return std::all_of(data.Waypoints().begin(), data.Waypoints().end(), inside) &&
         std::all_of(data.Routes().begin(), data.Routes().end(), route_inside) &&
         std::all_of(data.Logs().begin(), data.Logs().end(), log_inside);
}

/// What a script holds of the records but their positions, which move by half a metre on the way.
std::string Texts(const DataSet& data) {
  std::string text;
  for (const Waypoint& waypoint : data.Waypoints())
    text += waypoint.ident + "|" + waypoint.cmnt + "\n";
  for (const Route& route : data.Routes()) {
    text += std::to_string(route.nmbr) + "|" + route.cmnt + "\n";
    for (const RoutePoint& point : route.points)
      text += point.waypoint.ident + "|" + point.waypoint.cmnt + "\n";
  }
  for (const TrackLog& log : data.Logs()) {
    for (const TrackPoint& point : log.points)
      text += std::to_string(point.time.value_or(0)) + (point.new_trk ? "*\n" : "\n");
  }
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  DataSet data;
  const std::string text = DecodedInput(bytes, size);
  (void)ReadText(FormatId::WptPlus, text, data);
  const DataSet first = ThereAndBack(data, {9, "START", "GOAL", true, 3});
  if (text.find('"') != std::string::npos) return 0;
  const DataSet settled = ThereAndBack(first);
  if (AllInside(settled) && Texts(ThereAndBack(settled)) != Texts(settled)) std::abort();
  return 0;
}
