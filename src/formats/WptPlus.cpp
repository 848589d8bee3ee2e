#include "formats/WptPlus.h"

#include <utility>

#include "formats/FieldValues.h"
#include "formats/Messages.h"
#include "formats/PositionReader.h"
#include "formats/RecordIntake.h"
#include "formats/WptDates.h"
#include "formats/WptLine.h"
#include "text/Numbers.h"
#include "text/Scan.h"

namespace walrim {
namespace {

class WptReader {
 public:
  WptReader(DataSet& data, int utc_offset_hours) : intake_(data), utc_offset_hours_(utc_offset_hours) {}

  void ReadLine(std::string_view text, int number);
  [[nodiscard]] const ImportResult& Result() { return intake_.Account(); }

 private:
  [[nodiscard]] bool ReadPosition(std::string_view form, std::string_view lat, std::string_view lon, double& lat_deg,
                                  double& lon_deg);
  [[nodiscard]] bool ReadPoint(const WptLine& line, Waypoint& waypoint);
  void StoreWaypoint(const WptLine& line);
  void StoreRoute(const WptLine& line);
  void StoreRoutePoint(const WptLine& line);
  void StoreTrackPoint(const WptLine& line);
  [[nodiscard]] std::optional<GarminSeconds> ReadTime(std::string_view date, std::string_view time);

  RecordIntake intake_;
  int utc_offset_hours_;
  PositionReader positions_;
  std::string datum_;
  bool log_begun_ = false;
  std::string scratch_;
};

void WptReader::ReadLine(std::string_view text, int number) {
  if (WithoutWptBlanks(text).empty()) return;
  intake_.SetLine(number);
  const WptLine line = ReadWptLine(text);
  if (line.overfull) intake_.Account().overfull.Add(number);
  switch (line.command) {
    case WptCommand::Waypoint:
      return StoreWaypoint(line);
    case WptCommand::Route:
      return StoreRoute(line);
    case WptCommand::RoutePoint:
      return StoreRoutePoint(line);
    case WptCommand::TrackPoint:
      return StoreTrackPoint(line);
    case WptCommand::Datum:
      datum_ = DatumOfField(line.fields[0]);
      return;
    case WptCommand::Unknown:
      return intake_.Account().messages.Add(format_messages::UnknownCommand(line.fields[0]));
  }
}

bool WptReader::ReadPosition(std::string_view form, std::string_view lat, std::string_view lon, double& lat_deg,
                             double& lon_deg) {
  GeoPoint point;
  const std::string_view why = positions_.Read({form, datum_, lat, lon}, point);
  lat_deg = point.latitude_deg;
  lon_deg = point.longitude_deg;
  if (!why.empty()) intake_.Skip(why);
  return why.empty();
}

bool WptReader::ReadPoint(const WptLine& line, Waypoint& waypoint) {
  const auto& [form, ident, lat, lon, date, time, comment] = line.fields;
  waypoint.ident = CapitalText(PlainText(ident, scratch_));
  waypoint.cmnt = CapitalText(PlainText(comment, scratch_));
  return ReadPosition(form, lat, lon, waypoint.lat_deg, waypoint.lon_deg);
}

void WptReader::StoreWaypoint(const WptLine& line) {
  Waypoint waypoint;
  if (ReadPoint(line, waypoint)) intake_.Store(std::move(waypoint));
}

void WptReader::StoreRoute(const WptLine& line) {
  Route route;
  route.nmbr = ByteOf(PlainText(line.fields[0], scratch_));
  route.cmnt = CapitalText(PlainText(line.fields[1], scratch_));
  intake_.Begin(std::move(route));
}

void WptReader::StoreRoutePoint(const WptLine& line) {
  RoutePoint point;
  if (intake_.TakesRoutePoint() && ReadPoint(line, point.waypoint)) intake_.Store(std::move(point));
}

void WptReader::StoreTrackPoint(const WptLine& line) {
  const auto& [form, lat, lon, date, time, flag, none] = line.fields;
  TrackPoint point;
  point.new_trk = flag == "1";
  if (point.new_trk || !log_begun_) intake_.Begin(TrackLog());
  log_begun_ = true;
  if (!intake_.TakesTrackPoint() || !ReadPosition(form, lat, lon, point.lat_deg, point.lon_deg)) return;
  point.time = ReadTime(date, time);
  intake_.Store(point);
}

std::optional<GarminSeconds> WptReader::ReadTime(std::string_view date, std::string_view time) {
  if (date == NoDate && time == NoTime) return std::nullopt;
  const std::string moment = StandardMoment(date, time);
  const std::string_view text = PlainText(moment, scratch_);
  const auto seconds = GarminTimeOfText(text, utc_offset_hours_);
  if (!seconds && !TrimBlanks(text).empty() && !ParseDateTime(text)) {
    intake_.Account().unread_time.Add(intake_.Line());
  }
  return seconds;
}

class WptWriter {
 public:
  WptWriter(TextOutput& out, const WriteSettings& settings)
      : out_(out), settings_(settings), stamp_(CreationStamp(settings.now)) {
    AppendWptMoment(moment_, settings.now, ',');
  }

  void Write(const std::vector<Waypoint>& waypoints) {
    int number = 0;
    for (const Waypoint& waypoint : waypoints) {
      Tell(DataKind::Waypoint, ++number, waypoints.size());
      WritePoint("WP,", waypoint);
    }
  }

  void Write(const std::vector<Route>& routes) {
    int number = 0;
    for (const Route& route : routes) {
      Tell(DataKind::Route, ++number, routes.size());
      WriteHeader(route);
      for (const RoutePoint& point : route.points)
        WritePoint("RP,", point.waypoint);
    }
  }

  void Write(const std::vector<TrackLog>& logs) {
    int number = 0;
    for (const TrackLog& log : logs) {
      Tell(DataKind::TrackLog, ++number, logs.size());
      for (const TrackPoint& point : log.points)
        WritePoint(point);
    }
  }

  [[nodiscard]] const WriteReport& Report() const { return report_; }

 private:
  void Tell(DataKind kind, int number, std::size_t count) const {
    if (settings_.progress) settings_.progress(kind, number, static_cast<int>(count));
  }

  /// The beginning of a line; the first one stands behind the Datum line.
  [[nodiscard]] std::string& BeginLine() {
    if (out_.Empty()) {
      out_.Line().append(DatumLine(settings_.datum));
      out_.EndLine();
    }
    return out_.Line();
  }

  void WriteHeader(const Route& route) {
    std::string& line = BeginLine();
    const std::string comment = WptText(route.cmnt);
    line.append("RN,");
    AppendInteger(line, route.nmbr);
    line.append(",").append(comment);
    if (BreaksWptLine(comment)) ++report_.broken_texts;
    out_.EndLine();
  }

  void WritePoint(std::string_view command, const Waypoint& waypoint) {
    std::string& line = BeginLine();
    const std::string ident = WptText(waypoint.ident);
    const std::string comment = WptText(waypoint.cmnt);
    line.append(command).append(AngleNotationName(settings_.notation)).append(",").append(ident);
    AppendPosition(line, waypoint.lat_deg, waypoint.lon_deg);
    line.append(",").append(moment_).append(",").append(comment.empty() ? stamp_ : comment);
    if (BreaksWptLine(ident) || BreaksWptLine(comment)) ++report_.broken_texts;
    out_.EndLine();
  }

  void WritePoint(const TrackPoint& point) {
    std::string& line = BeginLine();
    line.append("TP,").append(AngleNotationName(settings_.notation));
    AppendPosition(line, point.lat_deg, point.lon_deg);
    line += ',';
    AppendWptMoment(line, LocalTimeOfGarminTime(point.time, settings_.utc_offset_hours), ',');
    line.append(point.new_trk ? ",1" : ",0");
    out_.EndLine();
  }

  void AppendPosition(std::string& line, double lat_deg, double lon_deg) const {
    const GeoPoint point = ConvertDatum({lat_deg, lon_deg, 0}, Datum::Wgs84, settings_.datum);
    line += ',';
    AppendAngle(line, point.latitude_deg, settings_.notation);
    line += ',';
    AppendAngle(line, point.longitude_deg, settings_.notation);
  }

  TextOutput& out_;
  const WriteSettings& settings_;
  WriteReport report_;
  std::string stamp_;
  std::string moment_;  ///< date and time fields of now
};

}  // namespace

ImportResult ReadWptPlus(LineSource& lines, DataSet& data, const ReadSettings& settings) {
  WptReader reader(data, settings.utc_offset_hours);
  for (std::string_view line; lines.Next(line);)
    reader.ReadLine(line, lines.LineNumber());
  return reader.Result();
}

WriteReport WriteWptPlus(TextOutput& out, const DataSet& data, const WriteSettings& settings) {
  WptWriter writer(out, settings);
  if (settings.kinds[IndexOf(DataKind::Waypoint)]) writer.Write(data.Waypoints());
  if (settings.kinds[IndexOf(DataKind::Route)]) writer.Write(data.Routes());
  if (settings.kinds[IndexOf(DataKind::TrackLog)]) writer.Write(data.Logs());
  return writer.Report();
}

}  // namespace walrim
