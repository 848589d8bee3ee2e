#include "window/RecordModelKinds.h"

#include <cmath>
#include <numeric>

#include "geo/Distance.h"
#include "records/Symbols.h"
#include "text/Dates.h"
#include "text/Numbers.h"
#include "text/Phrase.h"
#include "window/CellTexts.h"
#include "window/SymbolPictures.h"

namespace walrim {
namespace {

/// Numbers of points come behind those of their records.
constexpr double PlacesPerRecord = 65536;

RowRef Ref(std::size_t record, std::size_t point = 0) {
  return {static_cast<std::uint16_t>(record), static_cast<std::uint16_t>(point)};
}

void EndLine(std::string& out) {
  out += "\r\n";
}

// ---- Values of cells

template <typename Position>
GeoPoint Shown(const Position& position, const ShownForm& form) {
  return ConvertDatum({position.lat_deg, position.lon_deg, 0}, Datum::Wgs84, form.datum);
}

std::string AngleText(double degrees, const ShownForm& form) {
  std::string text;
  AppendAngle(text, degrees, form.notation);
  return text;
}

/// With all digits.
std::string MetresText(const std::optional<float>& metres) {
  return metres ? ShortestNumber(*metres) : std::string();
}

std::string TimeText(const std::optional<GarminSeconds>& time, const ShownForm& form) {
  return time ? DateTimeText(LocalTimeOfGarminTime(time, form.utc_offset_hours)) : std::string();
}

std::string TruthText(bool truth) {
  return truth ? "○" : "";
}

std::optional<double> TruthNumber(bool truth) {
  return truth ? std::optional(1.0) : std::nullopt;
}

/// The name of a code, or the code itself.
std::string CodeText(std::string_view name, int code) {
  return name.empty() ? std::to_string(code) : std::string(name);
}

/// Tenths of a metre.
std::string LegText(double km) {
  const auto tenths = std::llround(km * 10000);
  return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10);
}

double LegKm(const TrackPoint& point, const TrackPoint* before) {
  if (before == nullptr) return 0;
  return SphericalDistance(before->lat_deg, before->lon_deg, point.lat_deg, point.lon_deg);
}

template <typename Position>
MapPlace PlaceOfPosition(const Position& position) {
  return {position.lat_deg, position.lon_deg, position.alt_m};
}

// ---- Waypoints

using W = const WaypointRow&;
using F = const ShownForm&;
using Number = std::optional<double>;

int SymbolOf(W row) {
  return row.waypoint.smbl.value_or(0);
}

constexpr RecordColumn<WaypointRow> WaypointColumns[] = {
    {{"番号", CellKind::Number}, [](W row, F) { return row.number; }, [](W row, F) { return Number(row.place); }},
    {{"名前", CellKind::Text, EditField::Name}, [](W row, F) { return row.waypoint.ident; }},
    {{"緯度", CellKind::Angle, EditField::Latitude},
     [](W row, F form) { return ShownAngle(Shown(row.waypoint, form).latitude_deg, form.notation); },
     [](W row, F form) { return Number(Shown(row.waypoint, form).latitude_deg); },
     nullptr,
     [](W row, F form) { return AngleText(Shown(row.waypoint, form).latitude_deg, form); }},
    {{"経度", CellKind::Angle, EditField::Longitude},
     [](W row, F form) { return ShownAngle(Shown(row.waypoint, form).longitude_deg, form.notation); },
     [](W row, F form) { return Number(Shown(row.waypoint, form).longitude_deg); },
     nullptr,
     [](W row, F form) { return AngleText(Shown(row.waypoint, form).longitude_deg, form); }},
    {{"高度 m", CellKind::Number, EditField::Height},
     [](W row, F) { return ShownMetres(row.waypoint.alt_m); },
     [](W row, F) { return Number(row.waypoint.alt_m); },
     nullptr,
     [](W row, F) { return MetresText(row.waypoint.alt_m); }},
    {{"コメント", CellKind::Text, EditField::Comment}, [](W row, F) { return row.waypoint.cmnt; }},
    {{"シンボル", CellKind::NamedCode, EditField::Symbol},
     [](W row, F) { return CodeText(Phrase(JapaneseSymbolName(row.waypoint.type, SymbolOf(row))), SymbolOf(row)); },
     [](W row, F) { return Number(SymbolOf(row)); },
     [](W row) { return SymbolIcon(row.waypoint.type, SymbolOf(row)); },
     nullptr,
     [](W row) { return std::string(NameOf(SymbolNames(row.waypoint.type), SymbolOf(row))); }},
    {{"表示", CellKind::NamedCode},
     [](W row, F) {
       return CodeText(Phrase(JapaneseDisplayName(row.waypoint.type, row.waypoint.dspl)), row.waypoint.dspl);
     },
     [](W row, F) { return Number(row.waypoint.dspl); },
     nullptr,
     nullptr,
     [](W row) { return std::string(NameOf(DisplayNames(row.waypoint.type), row.waypoint.dspl)); }},
    {{"施設", CellKind::Text}, [](W row, F) { return row.waypoint.details->facility; }},
    {{"市", CellKind::Text}, [](W row, F) { return row.waypoint.details->city; }},
    {{"住所", CellKind::Text}, [](W row, F) { return row.waypoint.details->addr; }},
    {{"州", CellKind::Text}, [](W row, F) { return row.waypoint.details->state; }},
    {{"国", CellKind::Text}, [](W row, F) { return row.waypoint.details->country; }},
    {{"交差点", CellKind::Text}, [](W row, F) { return row.waypoint.details->cross_road; }}};

// ---- Routes

using R = const RouteRow&;

double LengthOf(const Route& route) {
  const std::vector<double> legs = LegsOf(route);
  return std::accumulate(legs.begin(), legs.end(), 0.0);
}

constexpr RecordColumn<RouteRow> RouteColumns[] = {
    {{"番号", CellKind::Number},
     [](R row, F) { return std::to_string(row.route.nmbr); },
     [](R row, F) { return Number(row.route.nmbr); }},
    {{"コメント", CellKind::Text, EditField::Comment}, [](R row, F) { return row.route.cmnt; }},
    {{"点数", CellKind::Number},
     [](R row, F) { return std::to_string(row.route.points.size()); },
     [](R row, F) { return Number(row.route.points.size()); }},
    {{"距離 km", CellKind::Number},
     [](R row, F) { return ShownKilometres(LengthOf(row.route)); },
     [](R row, F) { return Number(LengthOf(row.route)); }}};

// ---- Track logs

using T = const TrackRow&;

constexpr RecordColumn<TrackRow> TrackColumns[] = {
    {{"番号", CellKind::Number},
     [](T row, F) { return std::to_string(row.number); },
     [](T row, F) { return Number(row.number); }},
    {{"名前", CellKind::Text, EditField::Name}, [](T row, F) { return row.log.trk_ident; }},
    {{"点数", CellKind::Number},
     [](T row, F) { return std::to_string(row.log.points.size()); },
     [](T row, F) { return Number(row.log.points.size()); }},
    {{"開始", CellKind::Time},
     [](T row, F form) { return TimeText(row.summary.first_time, form); },
     [](T row, F) { return Number(row.summary.first_time); }},
    {{"終了", CellKind::Time},
     [](T row, F form) { return TimeText(row.summary.last_time, form); },
     [](T row, F) { return Number(row.summary.last_time); }},
    {{"時間", CellKind::Number},
     [](T row, F) { return ShownDuration(row.summary.figures.duration_s); },
     [](T row, F) { return Number(row.summary.figures.duration_s); }},
    {{"距離 km", CellKind::Number},
     [](T row, F) { return ShownKilometres(row.summary.figures.distance_m); },
     [](T row, F) { return Number(row.summary.figures.distance_m); }},
    {{"登り m", CellKind::Number},
     [](T row, F) { return ShownMetres(row.summary.figures.ascent_m); },
     [](T row, F) { return row.summary.figures.ascent_m; }},
    {{"表示", CellKind::Truth},
     [](T row, F) { return TruthText(row.log.dspl); },
     [](T row, F) { return TruthNumber(row.log.dspl); }}};

// ---- Track points

using P = const TrackPointRow&;

constexpr RecordColumn<TrackPointRow> TrackPointColumns[] = {
    {{"番号", CellKind::Number},
     [](P row, F) { return std::to_string(row.log_number) + "-" + std::to_string(row.number); },
     [](P row, F) { return Number(row.log_number * PlacesPerRecord + row.number); }},
    {{"緯度", CellKind::Angle, EditField::Latitude},
     [](P row, F form) { return ShownAngle(Shown(row.point, form).latitude_deg, form.notation); },
     [](P row, F form) { return Number(Shown(row.point, form).latitude_deg); },
     nullptr,
     [](P row, F form) { return AngleText(Shown(row.point, form).latitude_deg, form); }},
    {{"経度", CellKind::Angle, EditField::Longitude},
     [](P row, F form) { return ShownAngle(Shown(row.point, form).longitude_deg, form.notation); },
     [](P row, F form) { return Number(Shown(row.point, form).longitude_deg); },
     nullptr,
     [](P row, F form) { return AngleText(Shown(row.point, form).longitude_deg, form); }},
    {{"日時", CellKind::Time},
     [](P row, F form) { return TimeText(row.point.time, form); },
     [](P row, F) { return Number(row.point.time); }},
    {{"高度 m", CellKind::Number, EditField::Height},
     [](P row, F) { return ShownMetres(row.point.alt_m); },
     [](P row, F) { return Number(row.point.alt_m); },
     nullptr,
     [](P row, F) { return MetresText(row.point.alt_m); }},
    {{"水深 m", CellKind::Number},
     [](P row, F) { return ShownMetres(row.point.dpth_m); },
     [](P row, F) { return Number(row.point.dpth_m); }},
    {{"区間 m", CellKind::Number},
     [](P row, F) { return row.before == nullptr ? "0" : LegText(LegKm(row.point, row.before)); },
     [](P row, F) { return Number(LegKm(row.point, row.before)); }},
    {{"新区間", CellKind::Truth},
     [](P row, F) { return TruthText(row.point.new_trk); },
     [](P row, F) { return TruthNumber(row.point.new_trk); }}};

ShownSymbol SymbolOfRow(const std::optional<WaypointRow>& row) {
  return row ? ShownSymbol{row->waypoint.type, SymbolOf(*row)} : ShownSymbol{};
}

/// A row for each record of a vector whose first one has a number.
template <typename Record>
std::vector<RowRef> RowsOf(const std::vector<Record>& records, int first_number) {
  std::vector<RowRef> rows;
  rows.reserve(records.size());
  for (std::size_t i = 0; i < records.size(); ++i)
    rows.push_back(Ref(static_cast<std::size_t>(first_number) + i));
  return rows;
}

/// A row for each point of those records that are wanted by their numbers.
template <typename Record, typename Wanted>
std::vector<RowRef> RowsOfPoints(const std::vector<Record>& records, int number, Wanted wanted) {
  std::vector<RowRef> rows;
  for (const Record& record : records) {
    const std::size_t points = wanted(number) ? record.points.size() : 0;
    for (std::size_t point = 0; point < points; ++point)
      rows.push_back(Ref(static_cast<std::size_t>(number), point));
    ++number;
  }
  return rows;
}

/// The record with a number in a vector whose first one has another; null where there is none.
template <typename Record>
const Record* At(const std::vector<Record>& records, int first_number, int number) {
  const auto index = static_cast<std::size_t>(number - first_number);
  return number >= first_number && index < records.size() ? &records[index] : nullptr;
}

LogSummary Summarise(const TrackLog& log) {
  LogSummary summary{log.points.data(), log.points.size(), {}, {}, FiguresOf(log.points)};
  for (const TrackPoint& point : log.points) {
    if (!point.time) continue;
    if (!summary.first_time) summary.first_time = point.time;
    summary.last_time = point.time;
  }
  return summary;
}

void AppendPoint(std::string& out, const TrackLog& log, std::size_t point, const StandardLineWriter& writer) {
  writer.Append(out, log.points[point], point > 0 ? &log.points[point - 1] : nullptr);
  EndLine(out);
}

}  // namespace

WaypointModel::WaypointModel(const DataSet& data, QObject* parent) : ModelOf(data, WaypointColumns, parent) {}

std::vector<RowRef> WaypointModel::HeldRows() const {
  return RowsOf(data_.Waypoints(), 1);
}

std::optional<WaypointRow> WaypointModel::RowOf(RowRef ref) const {
  const Waypoint* waypoint = At(data_.Waypoints(), 1, ref.record);
  if (waypoint == nullptr) return std::nullopt;
  return WaypointRow{std::to_string(ref.record), double(ref.record), *waypoint};
}

ShownSymbol WaypointModel::SymbolAt(int row) const {
  return SymbolOfRow(RowOf(RefOf(row)));
}

std::optional<MapPlace> WaypointModel::PlaceOf(RowRef ref) const {
  return PlaceOfPosition(RowOf(ref)->waypoint);
}

void WaypointModel::AppendLines(std::string& out, RowRef ref, const StandardLineWriter& writer) const {
  writer.Append(out, RowOf(ref)->waypoint);
  EndLine(out);
}

RouteModel::RouteModel(const DataSet& data, QObject* parent) : ModelOf(data, RouteColumns, parent) {}

std::vector<RowRef> RouteModel::HeldRows() const {
  return RowsOf(data_.Routes(), 1);
}

std::optional<RouteRow> RouteModel::RowOf(RowRef ref) const {
  const Route* route = At(data_.Routes(), 1, ref.record);
  return route != nullptr ? std::optional(RouteRow{*route}) : std::nullopt;
}

void RouteModel::AppendLines(std::string& out, RowRef ref, const StandardLineWriter& writer) const {
  const Route& route = RowOf(ref)->route;
  writer.Append(out, route);
  EndLine(out);
  for (const RoutePoint& point : route.points) {
    writer.Append(out, point, route.type);
    EndLine(out);
  }
}

RoutePointModel::RoutePointModel(const DataSet& data, QObject* parent) : ModelOf(data, WaypointColumns, parent) {}

std::vector<RowRef> RoutePointModel::HeldRows() const {
  return RowsOfPoints(data_.Routes(), 1, [this](int number) { return Chosen(number); });
}

std::optional<WaypointRow> RoutePointModel::RowOf(RowRef ref) const {
  const Route* route = At(data_.Routes(), 1, ref.record);
  if (route == nullptr || ref.point >= route->points.size()) return std::nullopt;
  const int number = ref.point + 1;
  return WaypointRow{std::to_string(route->nmbr) + "-" + std::to_string(number), route->nmbr * PlacesPerRecord + number,
                     route->points[ref.point].waypoint};
}

ShownSymbol RoutePointModel::SymbolAt(int row) const {
  return SymbolOfRow(RowOf(RefOf(row)));
}

std::optional<MapPlace> RoutePointModel::PlaceOf(RowRef ref) const {
  return PlaceOfPosition(RowOf(ref)->waypoint);
}

void RoutePointModel::AppendLines(std::string& out, RowRef ref, const StandardLineWriter& writer) const {
  const Route& route = *At(data_.Routes(), 1, ref.record);
  writer.Append(out, route.points[ref.point], route.type);
  EndLine(out);
}

TrackModel::TrackModel(const DataSet& data, QObject* parent) : ModelOf(data, TrackColumns, parent) {}

std::vector<RowRef> TrackModel::HeldRows() const {
  return RowsOf(data_.Logs(), data_.FirstLogNumber());
}

std::optional<TrackRow> TrackModel::RowOf(RowRef ref) const {
  const TrackLog* log = At(data_.Logs(), data_.FirstLogNumber(), ref.record);
  if (log == nullptr) return std::nullopt;
  return TrackRow{ref.record, *log, SummaryOf(ref.record, *log)};
}

/// Kept until the log's points are others or Refresh is called: a log may have 30000 of them.
const LogSummary& TrackModel::SummaryOf(std::size_t number, const TrackLog& log) const {
  LogSummary& kept = summaries_.at(number);
  if (kept.points != log.points.data() || kept.count != log.points.size()) kept = Summarise(log);
  return kept;
}

void TrackModel::AppendLines(std::string& out, RowRef ref, const StandardLineWriter& writer) const {
  const TrackLog& log = RowOf(ref)->log;
  writer.Append(out, log);
  EndLine(out);
  for (std::size_t point = 0; point < log.points.size(); ++point)
    AppendPoint(out, log, point, writer);
}

TrackPointModel::TrackPointModel(const DataSet& data, QObject* parent) : ModelOf(data, TrackPointColumns, parent) {}

std::vector<RowRef> TrackPointModel::HeldRows() const {
  return RowsOfPoints(data_.Logs(), data_.FirstLogNumber(), [this](int number) { return Chosen(number); });
}

std::optional<TrackPointRow> TrackPointModel::RowOf(RowRef ref) const {
  const TrackLog* log = At(data_.Logs(), data_.FirstLogNumber(), ref.record);
  if (log == nullptr || ref.point >= log->points.size()) return std::nullopt;
  const TrackPoint& point = log->points[ref.point];
  return TrackPointRow{ref.record, ref.point + 1, point, ref.point > 0 ? &point - 1 : nullptr};
}

std::optional<MapPlace> TrackPointModel::PlaceOf(RowRef ref) const {
  return PlaceOfPosition(RowOf(ref)->point);
}

void TrackPointModel::AppendLines(std::string& out, RowRef ref, const StandardLineWriter& writer) const {
  AppendPoint(out, *At(data_.Logs(), data_.FirstLogNumber(), ref.record), ref.point, writer);
}

}  // namespace walrim
