// From a WPT+ text to a script.
#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "formats/AngleField.h"
#include "formats/ProAtlas.h"
#include "formats/ScriptHead.h"
#include "formats/ScriptLabels.h"
#include "formats/TrackStatistics.h"
#include "formats/WptDates.h"
#include "geo/GeneralLatLon.h"
#include "text/Numbers.h"

namespace walrim {
namespace {

constexpr int LinesPerProgress = 256;

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
  [[nodiscard]] std::size_t Count() const { return ends_.size(); }

 private:
  std::string text_;
  std::vector<std::size_t> ends_;
};

struct RouteStop {
  std::string ident;
  std::string comment;
};

/// Makes the statements of WPT+ lines.
class ScriptWriter {
 public:
  ScriptWriter(const MpsOptions& options, Conversion& result) : options_(options), result_(result) {}

  void TakeLine(const WptLine& line);
  void Finish();
  /// All before the statements of the lines.
  [[nodiscard]] std::string Head(const CivilTime& now) const;

 private:
  /// The line's position, in position_ as pos writes it; nothing, and counted, where it has none.
  [[nodiscard]] std::optional<GeoPoint> Place(std::string_view form, std::string_view lat, std::string_view lon);
  void PutPosition(std::string_view lat, std::string_view lon, std::string_view notation);
  void TakeWaypoint(const WptLine& line);
  void TakeRoutePoint(const WptLine& line);
  void TakeTrackPoint(const WptLine& line);
  [[nodiscard]] std::optional<std::int64_t> SecondsOf(std::string_view date, std::string_view time) const;
  void CloseRoute();
  void CloseLog();
  void AppendStop(std::size_t i);
  void AppendLogPoint(std::size_t i);
  void AppendObject(std::string_view keyword, std::string_view gid, std::string_view pos, std::string_view str,
                    std::string_view info);

  const MpsOptions& options_;
  Conversion& result_;
  std::string datum_ = "WGS84";              ///< of the lines that follow
  std::optional<std::string> script_datum_;  ///< that of the first position
  std::string position_;
  std::size_t objects_ = 0;
  std::size_t waypoints_ = 0;
  std::size_t routes_ = 0;

  bool route_open_ = false;
  std::string route_number_;
  std::string route_comment_;
  std::vector<RouteStop> stops_;
  PositionList stop_positions_;

  std::size_t logs_ = 0;
  std::vector<LoggedPoint> log_;
  GeoPoint last_point_;
  PositionList log_positions_;
};

void ScriptWriter::TakeLine(const WptLine& line) {
  if (line.overfull) ++result_.cut;
  if (line.command.empty()) return result_.messages.Add(line.fields[0]);
  if (line.command == "Datum") {
    datum_ = DatumOfField(line.fields[0]);
    return;
  }
  if (line.command == "TP") {
    CloseRoute();
    return TakeTrackPoint(line);
  }
  CloseLog();
  if (line.command == "RP") return TakeRoutePoint(line);
  CloseRoute();
  if (line.command == "WP") return TakeWaypoint(line);
  route_open_ = true;
  route_number_ = line.fields[0];
  route_comment_ = line.fields[1];
}

void ScriptWriter::Finish() {
  CloseRoute();
  CloseLog();
}

std::optional<GeoPoint> ScriptWriter::Place(std::string_view form, std::string_view lat, std::string_view lon) {
  const std::string_view notation = NotationOfName(form);
  const bool datum_known = datum_ == "WGS84" || datum_ == "Tokyo";
  auto point = notation.empty() || !datum_known ? std::nullopt : PointOfFields(lat, lon, notation);
  if (!point) {
    result_.Skip("位置か測地系が読めません");
    return std::nullopt;
  }
  if (!script_datum_) script_datum_ = datum_;
  if (datum_ == *script_datum_) {
    PutPosition(lat, lon, notation);
  } else {
    point = ConvertDatum(*point, datum_, *script_datum_);
    PutPosition(ShortestNumber(point->latitude_deg), ShortestNumber(point->longitude_deg), "D");
  }
  return point;
}

void ScriptWriter::PutPosition(std::string_view lat, std::string_view lon, std::string_view notation) {
  position_.clear();
  AppendMpsAngle(position_, lat, notation);
  position_ += ',';
  AppendMpsAngle(position_, lon, notation);
}

void ScriptWriter::TakeWaypoint(const WptLine& line) {
  const auto& [form, ident, lat, lon, date, time, comment] = line.fields;
  if (!Place(form, lat, lon)) return;
  ++waypoints_;
  const std::string info = WaypointInfo(ident, WithShiftedStamp(comment, options_.utc_offset_hours));
  AppendObject("point", ScriptGroup::Waypoint, position_, IdentField(ident), info);
}

void ScriptWriter::TakeRoutePoint(const WptLine& line) {
  const auto& [form, ident, lat, lon, date, time, comment] = line.fields;
  if (!Place(form, lat, lon)) return;
  // A route that another line interrupted goes on under its old number.
  route_open_ = true;
  stops_.push_back({std::string(ident), WithShiftedStamp(comment, options_.utc_offset_hours)});
  stop_positions_.Add(position_);
}

void ScriptWriter::TakeTrackPoint(const WptLine& line) {
  const auto& [form, lat, lon, date, time, flag, none] = line.fields;
  if (flag == "1") CloseLog();
  const auto point = Place(form, lat, lon);
  if (!point) return;
  LoggedPoint logged{SecondsOf(date, time), 0};
  if (!log_.empty()) {
    logged.leg_km =
        LegKilometres(last_point_.latitude_deg, last_point_.longitude_deg, point->latitude_deg, point->longitude_deg);
  }
  log_.push_back(logged);
  log_positions_.Add(position_);
  last_point_ = *point;
}

std::optional<std::int64_t> ScriptWriter::SecondsOf(std::string_view date, std::string_view time) const {
  const auto moment = ParseWptMoment(date, time);
  if (!moment || IsEpochSomewhere(*moment)) return std::nullopt;
  return SecondsSinceGarminEpoch(*moment) + std::int64_t{options_.utc_offset_hours} * 3600;
}

void ScriptWriter::CloseRoute() {
  if (!route_open_) return;
  route_open_ = false;
  ++routes_;
  AppendObject("line", ScriptGroup::Route, stop_positions_.All(), RouteLabel(route_number_, stops_.size()),
               RouteInfo(route_comment_));
  for (std::size_t i = 0; i < stops_.size(); ++i)
    AppendStop(i);
  stops_.clear();
  stop_positions_.Clear();
}

void ScriptWriter::AppendStop(std::size_t i) {
  const RouteStop& stop = stops_[i];
  const std::size_t last = stops_.size() - 1;
  std::string_view gid = ScriptGroup::RoutePoint;
  std::string_view name;
  if (i == 0) {
    gid = ScriptGroup::RoutePointOrigin;
    name = options_.origin_name;
  } else if (i == last) {
    gid = ScriptGroup::RoutePointDestination;
    name = options_.destination_name;
  }
  const std::size_t number = options_.numbering_down == 1 ? stops_.size() - i : i + 1;
  AppendObject("point", gid, stop_positions_.At(i), IdentField(name.empty() ? stop.ident : name),
               RoutePointInfo(number, stop.ident, stop.comment));
}

void ScriptWriter::CloseLog() {
  if (log_.empty()) return;
  const std::string label = LogLabel(++logs_);
  AppendObject("line", ScriptGroup::TrackLog, log_positions_.All(), label, label + LogStatistics(log_));
  const auto step = static_cast<std::size_t>(std::max<int>(options_.track_log_step, 1));
  for (std::size_t i = 0; i < log_.size(); ++i) {
    if (i % step == 0 || i + 1 == log_.size()) AppendLogPoint(i);
  }
  log_.clear();
  log_positions_.Clear();
}

void ScriptWriter::AppendLogPoint(std::size_t i) {
  const LoggedPoint& point = log_[i];
  const std::string time = PointTime(point);
  std::string info = TrackPointInfo(logs_, i + 1, time);
  if (i > 0) info += IntervalText(log_[i - 1], point);
  AppendObject("point", ScriptGroup::TrackPoint, log_positions_.At(i),
               point.seconds ? std::string_view(time) : std::string_view(), info);
}

void ScriptWriter::AppendObject(std::string_view keyword, std::string_view gid, std::string_view pos,
                                std::string_view str, std::string_view info) {
  const std::string oid = std::to_string(++objects_);
  AppendStatementLine(result_.text, keyword, {oid, gid, pos, str, "right", "", "", info});
}

std::string ScriptWriter::Head(const CivilTime& now) const {
  return ScriptHead({waypoints_, routes_, logs_}, {script_datum_.value_or(datum_), options_.utc_offset_hours}, now);
}

}  // namespace

Conversion ConvertWptToScript(std::string_view wpt, const MpsOptions& options, const CivilTime& now,
                              const ConversionProgress& progress) {
  // About what a script takes whose points are all drawn.
  constexpr std::size_t Growth = 5;
  Conversion result;
  result.text.reserve(wpt.size() * Growth);
  ScriptWriter writer(options, result);
  WptLineReader lines(wpt);
  int count = 0;
  for (WptLine line = lines.Read(); line.command != WptEnd; line = lines.Read()) {
    writer.TakeLine(line);
    lines.SkipLine();
    if (progress && ++count % LinesPerProgress == 0) progress(lines.Offset(), wpt.size());
  }
  writer.Finish();
  AppendScriptEnd(result.text);
  result.text.insert(0, writer.Head(now));
  return result;
}

}  // namespace walrim
