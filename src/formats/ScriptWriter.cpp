#include "formats/ScriptWriter.h"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

#include "formats/ScriptHead.h"
#include "formats/ScriptLabels.h"
#include "formats/StatementBuilder.h"
#include "formats/TrackStatistics.h"
#include "formats/WptDates.h"
#include "formats/WptLine.h"
#include "geo/Distance.h"
#include "text/Numbers.h"

namespace walrim {
namespace {

/// Positions one behind the other as a line's pos lists them.
class PositionList {
 public:
  void Add(std::string_view position) {
    if (!ends_.empty()) text_ += ',';
    text_.append(position);
    ends_.push_back(text_.size());
  }
  void Clear() {
    text_.clear();
    ends_.clear();
  }
  [[nodiscard]] std::string_view All() const { return text_; }
  [[nodiscard]] std::string_view At(std::size_t i) const {
    const std::size_t begin = i == 0 ? 0 : ends_[i - 1] + 1;
    return std::string_view(text_).substr(begin, ends_[i] - begin);
  }

 private:
  std::string text_;
  std::vector<std::size_t> ends_;
};

struct PointFields {
  std::string ident;
  std::string comment;
};

class ScriptWriter {
 public:
  ScriptWriter(TextOutput& out, const WriteSettings& settings)
      : out_(out), settings_(settings), stamp_(CreationStamp(settings.now)) {
    AppendWptMoment(moment_, settings.now, ',');
  }

  [[nodiscard]] WriteReport Write(const DataSet& data);

 private:
  [[nodiscard]] bool Wants(DataKind kind) const { return settings_.kinds[IndexOf(kind)]; }
  void Tell(DataKind kind, int number, std::size_t count) const {
    if (settings_.progress) settings_.progress(kind, number, static_cast<int>(count));
  }

  [[nodiscard]] std::size_t CountWaypoints(const std::vector<Waypoint>& waypoints);
  [[nodiscard]] std::size_t CountLogs(const std::vector<TrackLog>& logs);
  /// The position in position_, as pos writes it; nothing where it is off the globe on the datum of the script.
  [[nodiscard]] std::optional<GeoPoint> Place(double lat_deg, double lon_deg);
  [[nodiscard]] std::optional<GeoPoint> PlaceTexts(std::string_view lat, std::string_view lon);
  /// A waypoint's texts, and its position in position_; false where it has none.
  [[nodiscard]] bool ReadPoint(const Waypoint& waypoint, PointFields& fields);
  [[nodiscard]] bool ReadBrokenPoint(PointFields& fields);
  /// ReadPoint, with what it meets counted.
  [[nodiscard]] bool TakePoint(const Waypoint& waypoint, PointFields& fields);
  /// A point's local time as the script tells it; nothing where it has none.
  [[nodiscard]] std::optional<std::int64_t> SecondsOf(const TrackPoint& point) const;

  void Draw(const std::vector<Waypoint>& waypoints);
  void Draw(const std::vector<Route>& routes);
  void Draw(const std::vector<TrackLog>& logs);
  void DrawRoute(const Route& route);
  void DrawStop(std::size_t i);
  void TakeTrackPoint(const TrackPoint& point);
  void CloseLog();
  void DrawLogPoints();
  /// interval tells of the way from the point drawn before.
  void DrawLogPoint(std::size_t i, std::string_view interval);
  void WriteObject(StatementKeyword keyword, std::string_view gid, std::string_view pos, std::string_view str,
                   std::string_view info);

  TextOutput& out_;
  const WriteSettings& settings_;
  WriteReport report_;
  std::string stamp_;
  std::string moment_;  ///< date and time fields of now
  std::size_t objects_ = 0;
  std::string lat_;
  std::string lon_;
  std::string position_;

  std::vector<PointFields> stops_;
  PositionList stop_positions_;

  std::size_t logs_ = 0;
  std::vector<LoggedPoint> log_;
  GeoPoint last_point_;
  PositionList log_positions_;
};

WriteReport ScriptWriter::Write(const DataSet& data) {
  const bool draws = (Wants(DataKind::Waypoint) && data.Holds(DataKind::Waypoint)) ||
                     (Wants(DataKind::Route) && data.Holds(DataKind::Route)) ||
                     (Wants(DataKind::TrackLog) && data.TrackPointCount() > 0);
  if (!draws) return report_;
  ScriptContents contents;
  if (Wants(DataKind::Waypoint)) contents.waypoints = CountWaypoints(data.Waypoints());
  if (Wants(DataKind::Route)) contents.routes = data.Routes().size();
  if (Wants(DataKind::TrackLog)) contents.logs = CountLogs(data.Logs());
  WriteScriptHead(out_, contents, {settings_.datum, settings_.script.utc_offset_hours}, settings_.now);
  if (Wants(DataKind::Waypoint)) Draw(data.Waypoints());
  if (Wants(DataKind::Route)) Draw(data.Routes());
  if (Wants(DataKind::TrackLog)) Draw(data.Logs());
  WriteScriptEnd(out_);
  return report_;
}

std::size_t ScriptWriter::CountWaypoints(const std::vector<Waypoint>& waypoints) {
  PointFields fields;
  return static_cast<std::size_t>(
      std::count_if(waypoints.begin(), waypoints.end(), [&](const Waypoint& each) { return ReadPoint(each, fields); }));
}

std::size_t ScriptWriter::CountLogs(const std::vector<TrackLog>& logs) {
  std::size_t count = 0;
  bool open = false;
  for (const TrackLog& log : logs) {
    for (const TrackPoint& point : log.points) {
      if (point.new_trk) open = false;
      if (open || !Place(point.lat_deg, point.lon_deg)) continue;
      open = true;
      ++count;
    }
  }
  return count;
}

std::optional<GeoPoint> ScriptWriter::Place(double lat_deg, double lon_deg) {
  const GeoPoint point = ConvertDatum({lat_deg, lon_deg, 0}, Datum::Wgs84, settings_.datum);
  lat_.clear();
  lon_.clear();
  // Through the notation that a WPT+ text would have them in, whose digits are those that pos rounds.
  AppendAngle(lat_, point.latitude_deg, AngleNotation::DMS);
  AppendAngle(lon_, point.longitude_deg, AngleNotation::DMS);
  return PlaceTexts(lat_, lon_);
}

std::optional<GeoPoint> ScriptWriter::PlaceTexts(std::string_view lat, std::string_view lon) {
  const auto point = ReadPosition(lat, lon, AngleNotation::DMS);
  if (!point) return std::nullopt;
  position_.clear();
  AppendConvertedAngle(position_, lat, AngleNotation::DMS, AngleNotation::MPS);
  position_ += ',';
  AppendConvertedAngle(position_, lon, AngleNotation::DMS, AngleNotation::MPS);
  return point;
}

bool ScriptWriter::ReadPoint(const Waypoint& waypoint, PointFields& fields) {
  fields.ident = WptText(waypoint.ident);
  fields.comment = WptText(waypoint.cmnt);
  if (fields.comment.empty()) fields.comment = stamp_;
  const bool placed = Place(waypoint.lat_deg, waypoint.lon_deg).has_value();
  const bool breaks = BreaksWptLine(fields.ident) || BreaksWptLine(fields.comment);
  return breaks ? ReadBrokenPoint(fields) : placed;
}

bool ScriptWriter::ReadBrokenPoint(PointFields& fields) {
  const std::string text = "WP,DMS," + fields.ident + "," + lat_ + "," + lon_ + "," + moment_ + "," + fields.comment;
  const WptLine line = ReadWptLine(text);
  const auto& [form, ident, lat, lon, date, time, comment] = line.fields;
  fields = {std::string(ident), std::string(comment)};
  return PlaceTexts(lat, lon).has_value();
}

void ScriptWriter::Draw(const std::vector<Waypoint>& waypoints) {
  int number = 0;
  PointFields fields;
  for (const Waypoint& waypoint : waypoints) {
    Tell(DataKind::Waypoint, ++number, waypoints.size());
    if (!TakePoint(waypoint, fields)) continue;
    const std::string info =
        WaypointInfo(fields.ident, WithShiftedStamp(fields.comment, settings_.script.utc_offset_hours));
    WriteObject(StatementKeyword::Point, ScriptGroup::Waypoint, position_, IdentField(fields.ident), info);
  }
}

bool ScriptWriter::TakePoint(const Waypoint& waypoint, PointFields& fields) {
  if (BreaksWptLine(waypoint.ident) || BreaksWptLine(waypoint.cmnt)) ++report_.broken_texts;
  const bool placed = ReadPoint(waypoint, fields);
  if (!placed) ++report_.skipped;
  return placed;
}

void ScriptWriter::Draw(const std::vector<Route>& routes) {
  int number = 0;
  for (const Route& route : routes) {
    Tell(DataKind::Route, ++number, routes.size());
    DrawRoute(route);
  }
}

void ScriptWriter::DrawRoute(const Route& route) {
  for (const RoutePoint& point : route.points) {
    PointFields fields;
    if (!TakePoint(point.waypoint, fields)) continue;
    fields.comment = WithShiftedStamp(fields.comment, settings_.script.utc_offset_hours);
    stops_.push_back(std::move(fields));
    stop_positions_.Add(position_);
  }
  const std::string text = WptText(route.cmnt);
  if (BreaksWptLine(text)) ++report_.broken_texts;
  std::string_view comment = text;
  WriteObject(StatementKeyword::Line, ScriptGroup::Route, stop_positions_.All(),
              RouteLabel(std::to_string(route.nmbr), stops_.size()), RouteInfo(TakeWptItem(comment)));
  for (std::size_t i = 0; i < stops_.size(); ++i)
    DrawStop(i);
  stops_.clear();
  stop_positions_.Clear();
}

void ScriptWriter::DrawStop(std::size_t i) {
  const PointFields& stop = stops_[i];
  const std::size_t last = stops_.size() - 1;
  std::string_view gid = ScriptGroup::RoutePoint;
  std::string_view name;
  if (i == 0) {
    gid = ScriptGroup::RoutePointOrigin;
    name = settings_.script.origin_name;
  } else if (i == last) {
    gid = ScriptGroup::RoutePointDestination;
    name = settings_.script.destination_name;
  }
  const std::size_t number = settings_.script.numbering_down ? stops_.size() - i : i + 1;
  WriteObject(StatementKeyword::Point, gid, stop_positions_.At(i), IdentField(name.empty() ? stop.ident : name),
              RoutePointInfo(number, stop.ident, stop.comment));
}

void ScriptWriter::Draw(const std::vector<TrackLog>& logs) {
  int number = 0;
  for (const TrackLog& log : logs) {
    Tell(DataKind::TrackLog, ++number, logs.size());
    for (const TrackPoint& point : log.points)
      TakeTrackPoint(point);
  }
  CloseLog();
}

void ScriptWriter::TakeTrackPoint(const TrackPoint& point) {
  if (point.new_trk) CloseLog();
  const auto placed = Place(point.lat_deg, point.lon_deg);
  if (!placed) {
    ++report_.skipped;
    return;
  }
  LoggedPoint logged{SecondsOf(point), 0};
  if (!log_.empty()) {
    logged.leg_km = SphericalDistance(last_point_.latitude_deg, last_point_.longitude_deg, placed->latitude_deg,
                                      placed->longitude_deg);
  }
  log_.push_back(logged);
  log_positions_.Add(position_);
  last_point_ = *placed;
}

std::optional<std::int64_t> ScriptWriter::SecondsOf(const TrackPoint& point) const {
  constexpr std::int64_t Hour = 3600;
  const std::int64_t local = std::int64_t{point.time.value_or(0)} + settings_.utc_offset_hours * Hour;
  if (IsEpochSomewhere(local)) return std::nullopt;
  return local + settings_.script.utc_offset_hours * Hour;
}

void ScriptWriter::CloseLog() {
  if (log_.empty()) return;
  const std::string label = LogLabel(++logs_);
  WriteObject(StatementKeyword::Line, ScriptGroup::TrackLog, log_positions_.All(), label, label + LogStatistics(log_));
  DrawLogPoints();
  log_.clear();
  log_positions_.Clear();
}

void ScriptWriter::DrawLogPoints() {
  const auto step = static_cast<std::size_t>(std::max<int>(settings_.script.track_log_step, 1));
  const LoggedPoint* drawn = nullptr;
  double way_km = 0;
  for (std::size_t i = 0; i < log_.size(); ++i) {
    way_km += log_[i].leg_km;
    if (i % step != 0 && i + 1 != log_.size()) continue;
    DrawLogPoint(i, drawn == nullptr ? std::string() : IntervalText(*drawn, {log_[i].seconds, way_km}));
    drawn = &log_[i];
    way_km = 0;
  }
}

void ScriptWriter::DrawLogPoint(std::size_t i, std::string_view interval) {
  const LoggedPoint& point = log_[i];
  const std::string time = PointTime(point);
  WriteObject(StatementKeyword::Point, ScriptGroup::TrackPoint, log_positions_.At(i),
              point.seconds ? std::string_view(time) : std::string_view(),
              TrackPointInfo(logs_, i + 1, time).append(interval));
}

void ScriptWriter::WriteObject(StatementKeyword keyword, std::string_view gid, std::string_view pos,
                               std::string_view str, std::string_view info) {
  const std::string oid = std::to_string(++objects_);
  AppendStatement(out_.Line(), keyword, {oid, gid, pos, str, "right", "", "", info});
  out_.EndLine();
}

}  // namespace

WriteReport WriteScript(TextOutput& out, const DataSet& data, const WriteSettings& settings) {
  return ScriptWriter(out, settings).Write(data);
}

}  // namespace walrim
