#include "formats/KmlWriter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "formats/Messages.h"
#include "formats/XmlLines.h"
#include "formats/XmlValues.h"
#include "text/Numbers.h"
#include "walks/Figures.h"

namespace walrim {
namespace {

using namespace format_messages;

constexpr std::string_view Namespaces =
    " xmlns=\"http://www.opengis.net/kml/2.2\" xmlns:gx=\"http://www.google.com/kml/ext/2.2\"";
constexpr std::string_view OnGround = "clampToGround";
constexpr std::string_view LineWidth = "3";

/// By the colour of a log: opacity, blue, green, red.
constexpr std::array<std::string_view, 16> Colours{
    "ff000000", "ff000080", "ff008000", "ff008080", "ff800000", "ff800080", "ff808000", "ffc0c0c0",
    "ff808080", "ff0000ff", "ff00ff00", "ff00ffff", "ffff0000", "ffff00ff", "ffffff00", "ffffffff"};

template <typename Position>
bool HasPlace(const Position& position) {
  return OnGlobe({position.lat_deg, position.lon_deg, 0});
}

/// Longitude, latitude and the height where it is known.
template <typename Position>
std::string Coordinates(const Position& position) {
  std::string text;
  AppendXmlAngle(text, position.lon_deg);
  AppendXmlAngle(text += ',', position.lat_deg);
  if (position.alt_m) AppendXmlMetres(text += ',', *position.alt_m);
  return text;
}

/// The same in a track, where the height has to stand.
std::string TrackCoordinates(const TrackPoint& point) {
  std::string text;
  AppendXmlAngle(text, point.lon_deg);
  AppendXmlAngle(text += ' ', point.lat_deg);
  AppendXmlMetres(text += ' ', point.alt_m.value_or(0));
  return text;
}

std::string KilometresText(double metres) {
  const auto hundredths = std::llround(metres / 10);
  return std::to_string(hundredths / 100) + "." + PadNumber(hundredths % 100, 2);
}

std::string HoursText(std::int64_t seconds) {
  return std::to_string(seconds / 3600) + ":" + PadNumber(seconds / 60 % 60, 2) + ":" + PadNumber(seconds % 60, 2);
}

std::string WalkText(std::span<const TrackPoint> points) {
  const Figures figures = FiguresOf(points);
  std::string text = WalkDistance(KilometresText(figures.distance_m));
  if (figures.duration_s && figures.moving_s) {
    text += WalkTimes(HoursText(*figures.duration_s), HoursText(*figures.moving_s));
  }
  if (figures.ascent_m && figures.descent_m) {
    text += WalkClimbs(std::lround(*figures.ascent_m), std::lround(*figures.descent_m),
                       static_cast<int>(AscentThreshold_m));
  }
  return text;
}

/// The points that have a place. A segment whose first point has none begins with the next one.
std::vector<TrackPoint> PlacedPoints(const TrackLog& log) {
  std::vector<TrackPoint> placed;
  bool begins = true;
  for (const TrackPoint& point : log.points) {
    begins = begins || point.new_trk;
    if (!HasPlace(point)) continue;
    placed.push_back(point);
    placed.back().new_trk = begins;
    begins = false;
  }
  return placed;
}

std::vector<std::span<const TrackPoint>> SegmentsOf(std::span<const TrackPoint> points) {
  std::vector<std::span<const TrackPoint>> segments;
  while (!points.empty()) {
    const auto end =
        std::find_if(points.begin() + 1, points.end(), [](const TrackPoint& point) { return point.new_trk; });
    segments.push_back(points.first(static_cast<std::size_t>(end - points.begin())));
    points = points.subspan(segments.back().size());
  }
  return segments;
}

class KmlWriter {
 public:
  KmlWriter(TextOutput& out, const DataSet& data, const WriteSettings& settings)
      : xml_(out), data_(data), settings_(settings) {}

  WriteReport Run() {
    const bool waypoints = AnyShown(DataKind::Waypoint, data_.Waypoints());
    const bool routes = AnyShown(DataKind::Route, data_.Routes());
    const bool logs = AnyShown(DataKind::TrackLog, data_.Logs());
    if (!waypoints && !routes && !logs) return report_;
    xml_.BeginText("kml", Namespaces);
    xml_.Begin("Document");
    xml_.Text("name", XmlText(settings_.name));
    if (waypoints) WriteFolder(DataKind::Waypoint, WaypointFolder, data_.Waypoints());
    if (routes) WriteFolder(DataKind::Route, RouteFolder, data_.Routes());
    if (logs) WriteFolder(DataKind::TrackLog, TrackLogFolder, data_.Logs());
    xml_.End("Document");
    xml_.End("kml");
    return report_;
  }

 private:
  /// Whether records of a kind are wanted and have points with a place; those without one are counted.
  template <typename Record>
  bool AnyShown(DataKind kind, const std::vector<Record>& records) {
    if (!settings_.kinds[IndexOf(kind)]) return false;
    bool any = false;
    for (const Record& record : records) {
      const std::vector<bool> placed = Places(record);
      any = any || std::ranges::count(placed, true) > 0;
      report_.off_globe += static_cast<int>(std::ranges::count(placed, false));
    }
    return any;
  }

  /// Whether each of a record's points has a place.
  static std::vector<bool> Places(const Waypoint& waypoint) { return {HasPlace(waypoint)}; }
  static std::vector<bool> Places(const Route& route) {
    std::vector<bool> placed;
    for (const RoutePoint& point : route.points)
      placed.push_back(HasPlace(point.waypoint));
    return placed;
  }
  static std::vector<bool> Places(const TrackLog& log) {
    std::vector<bool> placed;
    for (const TrackPoint& point : log.points)
      placed.push_back(HasPlace(point));
    return placed;
  }

  template <typename Record>
  void WriteFolder(DataKind kind, std::string_view name, const std::vector<Record>& records) {
    xml_.Begin("Folder");
    xml_.Text("name", name);
    int number = 0;
    for (const Record& record : records) {
      ++number;
      if (settings_.progress) settings_.progress(kind, number, static_cast<int>(records.size()));
      Write(record);
    }
    xml_.End("Folder");
  }

  template <typename Position>
  void WritePoint(const Position& position) {
    xml_.Begin("Point");
    xml_.Text("altitudeMode", OnGround);
    xml_.Text("coordinates", Coordinates(position));
    xml_.End("Point");
  }

  void Write(const Waypoint& waypoint) {
    if (!HasPlace(waypoint)) return;
    xml_.Begin("Placemark");
    xml_.Text("name", XmlText(waypoint.ident));
    xml_.Text("description", XmlText(waypoint.cmnt));
    WritePoint(waypoint);
    xml_.End("Placemark");
  }

  /// One line of coordinates a point. A line needs two of them.
  void WriteLine(const std::vector<std::string>& coordinates) {
    xml_.Begin("LineString");
    xml_.Text("tessellate", "1");
    xml_.Text("altitudeMode", OnGround);
    xml_.Begin("coordinates");
    for (const std::string& line : coordinates)
      xml_.Line(line);
    xml_.End("coordinates");
    xml_.End("LineString");
  }

  void Write(const Route& route) {
    std::vector<std::string> coordinates;
    for (const RoutePoint& point : route.points) {
      if (HasPlace(point.waypoint)) coordinates.push_back(Coordinates(point.waypoint));
    }
    if (coordinates.size() > 1) {
      xml_.Begin("Placemark");
      xml_.Text("name", XmlText(route.cmnt));
      WriteLine(coordinates);
      xml_.End("Placemark");
    }
    if (coordinates.empty()) return;
    xml_.Begin("Folder");
    xml_.Text("name", XmlText(route.cmnt));
    for (const RoutePoint& point : route.points)
      Write(point.waypoint);
    xml_.End("Folder");
  }

  void Write(const TrackLog& log) {
    const std::vector<TrackPoint> points = PlacedPoints(log);
    if (points.empty()) return;
    xml_.Begin("Placemark");
    xml_.Text("name", XmlText(log.trk_ident));
    xml_.Text("description", WalkText(points));
    WriteStyle(log.color);
    const bool timed = std::ranges::all_of(points, [](const TrackPoint& point) { return point.time.has_value(); });
    timed ? WriteTracks(SegmentsOf(points)) : WriteLines(SegmentsOf(points));
    xml_.End("Placemark");
  }

  void WriteStyle(std::size_t color) {
    if (color >= Colours.size()) return;
    xml_.Begin("Style");
    xml_.Begin("LineStyle");
    xml_.Text("color", Colours.at(color));
    xml_.Text("width", LineWidth);
    xml_.End("LineStyle");
    xml_.End("Style");
  }

  void WriteTracks(const std::vector<std::span<const TrackPoint>>& segments) {
    if (segments.size() == 1) return WriteTrack(segments.front());
    xml_.Begin("gx:MultiTrack");
    xml_.Text("altitudeMode", OnGround);
    xml_.Text("gx:interpolate", "0");
    for (const auto& segment : segments)
      WriteTrack(segment);
    xml_.End("gx:MultiTrack");
  }

  void WriteTrack(std::span<const TrackPoint> points) {
    xml_.Begin("gx:Track");
    xml_.Text("altitudeMode", OnGround);
    std::string when;
    for (const TrackPoint& point : points) {
      when.clear();
      AppendXmlTime(when, *point.time);
      xml_.Text("when", when);
    }
    for (const TrackPoint& point : points)
      xml_.Text("gx:coord", TrackCoordinates(point));
    xml_.End("gx:Track");
  }

  void WriteLines(const std::vector<std::span<const TrackPoint>>& segments) {
    xml_.Begin("MultiGeometry");
    for (const auto& segment : segments) {
      std::vector<std::string> coordinates;
      for (const TrackPoint& point : segment)
        coordinates.push_back(Coordinates(point));
      coordinates.size() > 1 ? WriteLine(coordinates) : WritePoint(segment.front());
    }
    xml_.End("MultiGeometry");
  }

  XmlLines xml_;
  const DataSet& data_;
  const WriteSettings& settings_;
  WriteReport report_;
};

}  // namespace

WriteReport WriteKml(TextOutput& out, const DataSet& data, const WriteSettings& settings) {
  return KmlWriter(out, data, settings).Run();
}

}  // namespace walrim
