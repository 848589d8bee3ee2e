#include <utility>

#include "formats/MpsWpt.h"
#include "formats/WptDates.h"
#include "geo/GeneralLatLon.h"
#include "geo/GeneralLib.h"
#include "text/Numbers.h"
#include "text/Utf8.h"

namespace walrim {
namespace {

/// The text without the blanks around it; what would end a line becomes a blank.
std::string FieldText(std::string_view text) {
  std::string cleaned(text);
  for (char& c : cleaned) {
    if (c == '\t' || c == '\r' || c == '\n' || c == '\0') c = ' ';
  }
  return std::string(TrimBlanks(cleaned));
}

std::string AngleText(double degrees, const std::string& degree_type) {
  if (degree_type == "D") return GeneralNumber(degrees);
  return ConvertAngle(ShortestNumber(degrees), "D", degree_type);
}

}  // namespace

WptWriter::WptWriter(InternalData& data, WptSettings settings)
    : data_(data), settings_(std::move(settings)), stamp_(CreationStamp(settings_.now)) {
  if (settings_.output_type == "MPS") settings_.text.degree_type = "DMS";
  AppendWptMoment(moment_, settings_.now, ',');
}

std::string WptWriter::FormatLine(std::string_view tag, int record, int point) {
  std::string line;
  AppendRecord(line, tag, record, point);
  return line;
}

void WptWriter::AppendRecord(std::string& out, std::string_view tag, int record, int point) {
  if (tag == "WPT") {
    AppendPoint(out, "WP", data_.GetNamedPoint(record));
  } else if (tag == "RTH") {
    const RouteHeader header = data_.GetRouteHeader(record);
    out.append("RN,").append(FieldText(header[RouteHeaderField::nmbr])).append(",");
    out.append(FieldText(header[RouteHeaderField::cmnt]));
  } else if (tag == "RTP") {
    AppendPoint(out, "RP", data_.GetNamedPoint(record, point));
  } else if (tag == "TRP") {
    AppendTrackPoint(out, data_.TrackPointAt(record, point));
  }
}

void WptWriter::AppendPoint(std::string& out, std::string_view command, const NamedPoint& point) {
  out.append(command).append(",").append(settings_.text.degree_type).append(",").append(FieldText(point.ident));
  AppendPosition(out, point.lat_deg, point.lon_deg);
  const std::string shown = FieldText(point.cmnt);
  out.append(",").append(moment_).append(",").append(shown.empty() ? stamp_ : shown);
}

void WptWriter::AppendTrackPoint(std::string& out, const TrackPointEntry& entry) {
  out.append("TP,").append(settings_.text.degree_type);
  AppendPosition(out, entry.lat_deg, entry.lon_deg);
  out += ',';
  AppendWptMoment(out, LocalTimeOfGarminTime(entry.time, settings_.text.utc_offset_hours), ',');
  out.append(entry.new_trk ? ",1" : ",0");
}

void WptWriter::AppendPosition(std::string& out, double lat_deg, double lon_deg) const {
  const GeoPoint point = ConvertDatum({lat_deg, lon_deg, 0}, "WGS84", settings_.text.datum);
  out.append(",").append(AngleText(point.latitude_deg, settings_.text.degree_type));
  out.append(",").append(AngleText(point.longitude_deg, settings_.text.degree_type));
}

void WptWriter::AppendLine(std::string& out, std::string_view tag, int record, int point) {
  if (out.empty()) out.append(DatumLine(settings_.text.datum)).append("\r\n");
  AppendRecord(out, tag, record, point);
  out.append("\r\n");
}

void WptWriter::AppendKind(std::string& out, DataKind kind, const Progress& progress) {
  switch (kind) {
    case DataKind::Waypoint:
      return AppendWaypoints(out, progress);
    case DataKind::Route:
      return AppendRoutes(out, progress);
    case DataKind::TrackLog:
      return AppendTracks(out, progress);
  }
}

void WptWriter::AppendWaypoints(std::string& out, const Progress& progress) {
  const int count = data_.WaypointCount;
  for (int slot = 1; slot <= count; ++slot) {
    if (progress) progress(DataKind::Waypoint, slot, count);
    AppendLine(out, "WPT", slot);
  }
}

void WptWriter::AppendRoutes(std::string& out, const Progress& progress) {
  const RouteCounters& counters = data_.mirrored_routes;
  for (int route = 1; route <= counters.RouteCount; ++route) {
    if (progress) progress(DataKind::Route, route, counters.RouteCount);
    AppendLine(out, "RTH", route);
    const auto at = static_cast<std::size_t>(route);
    const int first = counters.first_point.at(at);
    const int end = first + counters.RoutePointCount.at(at);
    for (int point = first; point < end; ++point)
      AppendLine(out, "RTP", route, point);
  }
}

void WptWriter::AppendTracks(std::string& out, const Progress& progress) {
  const TrackCounters& counters = data_.mirrored_tracks;
  const int first = counters.TrackPointCount[0] > 0 ? 0 : 1;
  for (int log = first; log <= counters.TrackCount; ++log) {
    if (progress) progress(DataKind::TrackLog, log + 1 - first, counters.TrackCount + 1 - first);
    const int points = counters.TrackPointCount.at(static_cast<std::size_t>(log));
    for (int point = 0; point < points; ++point)
      AppendLine(out, "TRP", log, point);
  }
}

std::string BuildWptText(InternalData& data, const std::array<bool, DataKindCount>& wanted, const WptSettings& settings,
                         const WptWriter::Progress& progress) {
  WptWriter writer(data, settings);
  std::string text;
  for (const DataKind kind : AllDataKinds) {
    if (wanted[IndexOf(kind)]) writer.AppendKind(text, kind, progress);
  }
  return text;
}

}  // namespace walrim
