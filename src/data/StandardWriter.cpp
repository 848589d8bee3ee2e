#include <algorithm>
#include <cmath>
#include <tuple>
#include <utility>

#include "data/FieldValues.h"
#include "data/GeneralWalrim.h"
#include "data/StandardSections.h"
#include "geo/GeneralLatLon.h"
#include "geo/GeneralLib.h"
#include "text/Dates.h"
#include "text/Numbers.h"
#include "text/Utf8.h"

namespace walrim {
namespace {

bool EndsColumn(char c) {
  return static_cast<unsigned char>(c) <= '\r' && (c == '\t' || c == '\r' || c == '\n' || c == '\0');
}

/// Appends a text; what would end a column or a line becomes a blank.
void AppendText(std::string& out, std::string_view text) {
  const auto begin = static_cast<std::ptrdiff_t>(out.size());
  out.append(text);
  std::replace_if(out.begin() + begin, out.end(), EndsColumn, ' ');
}

void AppendColumn(std::string& out, ColumnForm form, std::string_view text) {
  out += '\t';
  if (form == ColumnForm::Bare) return AppendText(out, text);
  out += "=\"";
  AppendText(out, form == ColumnForm::WrappedTrimmed ? TrimBlanks(text) : text);
  out += '"';
}

void AppendColumns(std::string& out, std::span<const Column> columns, std::span<const std::string> texts) {
  for (std::size_t i = 0; i < texts.size(); ++i)
    AppendColumn(out, columns[i].form, texts[i]);
}

void AppendLead(std::string& out, const Section& section, const TextSettings& settings) {
  out.append(section.tag);
  if (!section.positioned) return;
  AppendColumn(out, ColumnForm::Bare, settings.degree_type);
  AppendColumn(out, ColumnForm::Bare, settings.datum);
}

std::string AngleText(double degrees, const TextSettings& settings) {
  if (settings.degree_type == "D") return GeneralNumber(degrees);
  return ConvertAngle(ShortestNumber(degrees), "D", settings.degree_type);
}

/// The texts of a position on WGS84, as the settings want it written. Its height is taken as 0: the heights of the
/// records stay as they are.
std::pair<std::string, std::string> PositionTexts(double lat_deg, double lon_deg, const TextSettings& settings) {
  const GeoPoint point = ConvertDatum({lat_deg, lon_deg, 0}, "WGS84", settings.datum);
  return {AngleText(point.latitude_deg, settings), AngleText(point.longitude_deg, settings)};
}

void PutPosition(WaypointRecord& record, const TextSettings& settings) {
  using enum WaypointField;
  std::tie(record[lat], record[lon]) = PositionTexts(LeadingNumber(record[lat]), LeadingNumber(record[lon]), settings);
}

int CodeOf(std::string_view text) {
  return static_cast<int>(LeadingInteger(text, 0, 65535));
}

std::string LegText(const InternalData& data, int log, int point) {
  if (point <= 0) return "0";
  const TrackPointEntry& from = data.TrackPointAt(log, point - 1);
  const TrackPointEntry& to = data.TrackPointAt(log, point);
  const double leg_m = SphericalDistance(from.lat_deg, from.lon_deg, to.lat_deg, to.lon_deg) * 1000;
  const auto tenths = static_cast<long long>(std::round(leg_m * 10));
  return PadNumber(tenths / 10, 1) + "." + PadNumber(tenths % 10, 1);
}

void AppendHeaderLines(std::string& out, std::string_view first_tag, std::string_view second_tag) {
  out.append(BuildHeaderLine(first_tag)).append("\r\n");
  if (!second_tag.empty()) out.append(BuildHeaderLine(second_tag)).append("\r\n");
}

}  // namespace

std::string_view NameTables::NameOf(std::span<const NamedCode> names, int code) {
  const auto row = std::lower_bound(names.begin(), names.end(), code,
                                    [](const NamedCode& named, int wanted) { return named.code < wanted; });
  return row != names.end() && row->code == code ? row->name : std::string_view();
}

StandardWriter::StandardWriter(InternalData& data, const NameTablesByType& names, TextSettings settings)
    : data_(data), names_(names), settings_(std::move(settings)) {}

std::string StandardWriter::BuildDataLine(std::string_view tag, int record, int point) {
  std::string line;
  AppendDataLine(line, tag, record, point);
  return line;
}

void StandardWriter::AppendDataLine(std::string& out, std::string_view tag, int record, int point) {
  if (tag == WaypointSection.tag) {
    AppendWaypoint(out, record);
  } else if (tag == RouteHeaderSection.tag) {
    const RouteHeader header = data_.GetRouteHeader(record);
    AppendLead(out, RouteHeaderSection, settings_);
    AppendColumns(out, RouteHeaderSection.columns, header.text);
  } else if (tag == RoutePointSection.tag) {
    AppendRoutePoint(out, record, point);
  } else if (tag == TrackHeaderSection.tag) {
    const TrackHeader header = data_.GetTrackHeader(record);
    AppendLead(out, TrackHeaderSection, settings_);
    AppendColumns(out, TrackHeaderSection.columns, header.text);
  } else if (tag == TrackPointSection.tag) {
    AppendTrackPoint(out, record, point);
  }
}

const NameTables& StandardWriter::NamesOfSlot(int slot) const {
  return names_[static_cast<std::size_t>(data_.waypoint_origin.at(static_cast<std::size_t>(slot)))];
}

void StandardWriter::AppendWaypoint(std::string& out, int slot) {
  using enum WaypointField;
  data_.GetWaypoint(slot, waypoint_);
  PutPosition(waypoint_, settings_);
  const NameTables& names = NamesOfSlot(slot);
  waypoint_[smbl_notes] = NameTables::NameOf(names.SymbolNames, CodeOf(waypoint_[smbl]));
  waypoint_[dspl_notes] = NameTables::NameOf(names.DisplayNames, CodeOf(waypoint_[dspl]));
  AppendLead(out, WaypointSection, settings_);
  AppendColumns(out, WaypointSection.columns, waypoint_.text);
}

void StandardWriter::AppendRoutePoint(std::string& out, int route, int point) {
  using enum WaypointField;
  data_.GetRoutePoint(route, point, route_point_);
  WaypointRecord& waypoint = route_point_.waypoint;
  PutPosition(waypoint, settings_);
  // The display code of a route point has always been named from the symbols.
  const NameTables& names = NamesOfSlot(RoutePointSlot(route, point));
  waypoint[smbl_notes] = NameTables::NameOf(names.SymbolNames, CodeOf(waypoint[smbl]));
  waypoint[dspl_notes] = NameTables::NameOf(names.SymbolNames, CodeOf(waypoint[dspl]));
  AppendLead(out, RoutePointSection, settings_);
  AppendColumns(out, RoutePointSection.columns, waypoint.text);
  AppendColumns(out, RoutePointSection.columns.subspan(WaypointRecord::FieldCount), route_point_.link.text);
}

void StandardWriter::AppendTrackPoint(std::string& out, int log, int point) {
  using enum TrackPointField;
  const TrackPointEntry& entry = data_.TrackPointAt(log, point);
  std::tie(track_point_[lat], track_point_[lon]) = PositionTexts(entry.lat_deg, entry.lon_deg, settings_);
  track_point_[time] = DateTimeText(LocalTimeOfGarminTime(entry.time, settings_.utc_offset_hours));
  track_point_[new_trk] = TruthText(entry.new_trk);
  track_point_[alt] = MetresText(entry.alt_m);
  track_point_[dpth] = MetresText(entry.dpth_m);
  track_point_[leg_dist] = LegText(data_, log, point);
  AppendLead(out, TrackPointSection, settings_);
  AppendColumns(out, TrackPointSection.columns, track_point_.text);
}

void StandardWriter::AppendLine(std::string& out, std::string_view tag, int record, int point) {
  AppendDataLine(out, tag, record, point);
  out.append("\r\n");
}

void StandardWriter::AppendKind(std::string& out, DataKind kind, bool with_header, const Progress& progress) {
  switch (kind) {
    case DataKind::Waypoint:
      return AppendWaypoints(out, with_header, progress);
    case DataKind::Route:
      return AppendRoutes(out, with_header, progress);
    case DataKind::TrackLog:
      return AppendTracks(out, with_header, progress);
  }
}

void StandardWriter::AppendWaypoints(std::string& out, bool with_header, const Progress& progress) {
  const int count = data_.WaypointCount;
  if (count <= 0) return;
  if (with_header) AppendHeaderLines(out, WaypointSection.tag, {});
  for (int slot = 1; slot <= count; ++slot) {
    if (progress) progress(DataKind::Waypoint, slot, count);
    AppendLine(out, WaypointSection.tag, slot);
  }
}

void StandardWriter::AppendRoutes(std::string& out, bool with_header, const Progress& progress) {
  const int count = data_.mirrored_routes.RouteCount;
  if (count <= 0) return;
  if (with_header) AppendHeaderLines(out, RouteHeaderSection.tag, RoutePointSection.tag);
  for (int route = 1; route <= count; ++route) {
    if (progress) progress(DataKind::Route, route, count);
    AppendLine(out, RouteHeaderSection.tag, route);
    const auto at = static_cast<std::size_t>(route);
    const int first = data_.mirrored_routes.first_point.at(at);
    const int end = first + data_.mirrored_routes.RoutePointCount.at(at);
    for (int point = first; point < end; ++point)
      AppendLine(out, RoutePointSection.tag, route, point);
  }
}

void StandardWriter::AppendTracks(std::string& out, bool with_header, const Progress& progress) {
  const int first = data_.mirrored_tracks.TrackPointCount[0] > 0 ? 0 : 1;
  const int count = data_.mirrored_tracks.TrackCount + 1 - first;
  if (count <= 0) return;
  if (with_header) AppendHeaderLines(out, TrackHeaderSection.tag, TrackPointSection.tag);
  for (int log = first; log < first + count; ++log) {
    if (progress) progress(DataKind::TrackLog, log + 1 - first, count);
    AppendLine(out, TrackHeaderSection.tag, log);
    const int points = data_.mirrored_tracks.TrackPointCount.at(static_cast<std::size_t>(log));
    for (int point = 0; point < points; ++point)
      AppendLine(out, TrackPointSection.tag, log, point);
  }
}

}  // namespace walrim
