// Track logs and their points.
#include <algorithm>
#include <cmath>

#include "geo/GeneralLatLon.h"
#include "text/Dates.h"
#include "text/Numbers.h"
#include "window/RecordModelKinds.h"

namespace walrim {
namespace {

constexpr int At(TrackHeaderField field) {
  return static_cast<int>(field);
}
constexpr int At(TrackPointField field) {
  return static_cast<int>(field);
}

/// Columns of a log that its header line does not have.
enum class LogColumn { Number = -1, FirstTime = -2, LastTime = -3, LengthKm = -4 };
constexpr int At(LogColumn column) {
  return static_cast<int>(column);
}

constexpr std::array TrackModelColumns{RecordColumn{"番号", CellKind::Number, At(LogColumn::Number)},
                                       RecordColumn{"名前", CellKind::Text, At(TrackHeaderField::trk_ident)},
                                       RecordColumn{"点数", CellKind::Number, At(TrackHeaderField::trk_pnt_num)},
                                       RecordColumn{"開始", CellKind::Time, At(LogColumn::FirstTime)},
                                       RecordColumn{"終了", CellKind::Time, At(LogColumn::LastTime)},
                                       RecordColumn{"距離 km", CellKind::Number, At(LogColumn::LengthKm)},
                                       RecordColumn{"表示", CellKind::Truth, At(TrackHeaderField::dspl)}};

constexpr std::array TrackPointModelColumns{RecordColumn{"番号", CellKind::PointNumber},
                                            RecordColumn{"緯度", CellKind::Angle, At(TrackPointField::lat)},
                                            RecordColumn{"経度", CellKind::Angle, At(TrackPointField::lon)},
                                            RecordColumn{"日時", CellKind::Time, At(TrackPointField::time)},
                                            RecordColumn{"高度 m", CellKind::Metres, At(TrackPointField::alt)},
                                            RecordColumn{"水深 m", CellKind::Metres, At(TrackPointField::dpth)},
                                            RecordColumn{"区間 m", CellKind::Number, At(TrackPointField::leg_dist)},
                                            RecordColumn{"新区間", CellKind::Truth, At(TrackPointField::new_trk)}};

RowRef Ref(int log, int point = 0) {
  return {static_cast<std::uint16_t>(log), static_cast<std::uint16_t>(point)};
}

/// Log 0 is one only while it has points.
int FirstLog(const InternalData& data) {
  return data.tracks.TrackPointCount[0] > 0 ? 0 : 1;
}

int LastLog(const InternalData& data) {
  return std::clamp(data.tracks.TrackCount, 0, MaxTrackLogs);
}

bool HoldsLog(const InternalData& data, int log) {
  return log >= FirstLog(data) && log <= LastLog(data);
}

/// Points of a held log, as far as they lie within the store.
int PointsOfLog(const InternalData& data, int log) {
  const auto at = static_cast<std::size_t>(log);
  const int start = data.tracks.TrackStart[at];
  if (start < 0 || start >= MaxTrackPoints) return 0;
  return std::clamp(data.tracks.TrackPointCount[at], 0, MaxTrackPoints - start);
}

/// A time of 0 is what a text without a date leaves.
bool IsKnownTime(double garmin_time) {
  return garmin_time > 0 && garmin_time < UnknownGarminTime;
}

std::optional<double> KnownMetres(float metres) {
  if (metres >= UnknownMetres / 10) return std::nullopt;
  return metres;
}

double LegKm(const InternalData& data, int log, int point) {
  if (point <= 0) return 0;
  const TrackPointEntry& from = data.TrackPointAt(log, point - 1);
  const TrackPointEntry& to = data.TrackPointAt(log, point);
  return SphericalDistance(from.lat_deg, from.lon_deg, to.lat_deg, to.lon_deg);
}

GeoPoint ShownPosition(const TrackPointEntry& entry, const TextSettings& settings) {
  return ConvertDatum({entry.lat_deg, entry.lon_deg, 0}, "WGS84", settings.datum);
}

/// A length with two decimals.
std::string KmText(double km) {
  const auto hundredths = std::llround(km * 100);
  return PadNumber(hundredths / 100, 1) + "." + PadNumber(hundredths % 100, 2);
}

}  // namespace

TrackModel::TrackModel(InternalData& data, const NameTablesByType& names, QObject* parent)
    : RecordModel(data, names, TrackHeaderSection, TrackModelColumns, parent) {}

std::vector<std::string_view> TrackModel::CopyTags() const {
  return {TrackHeaderSection.tag, TrackPointSection.tag};
}

std::vector<RowRef> TrackModel::HeldRows() const {
  std::vector<RowRef> rows;
  for (int log = FirstLog(data_); log <= LastLog(data_); ++log)
    rows.push_back(Ref(log));
  return rows;
}

bool TrackModel::Holds(RowRef ref) const {
  return HoldsLog(data_, ref.record);
}

void TrackModel::AppendShownLine(StandardWriter& writer, std::string& out, RowRef ref) const {
  writer.AppendDataLine(out, TrackHeaderSection.tag, ref.record);
}

void TrackModel::AppendLines(std::string& out, RowRef ref) const {
  AppendLine(out, TrackHeaderSection.tag, ref.record);
  const int count = PointsOfLog(data_, ref.record);
  for (int point = 0; point < count; ++point)
    AppendLine(out, TrackPointSection.tag, ref.record, point);
}

std::string TrackModel::CellText(RowRef ref, const RecordColumn& column) const {
  switch (column.field) {
    case At(LogColumn::Number):
      return std::to_string(ref.record);
    case At(LogColumn::FirstTime):
      return TimeText(SummaryOf(ref.record).first_time);
    case At(LogColumn::LastTime):
      return TimeText(SummaryOf(ref.record).last_time);
    case At(LogColumn::LengthKm):
      return KmText(SummaryOf(ref.record).length_km);
    default:
      return RecordModel::CellText(ref, column);
  }
}

std::string TrackModel::TimeText(const std::optional<double>& garmin_time) const {
  if (!garmin_time) return {};
  return DateTimeText(LocalTimeOfGarminTime(*garmin_time, settings_.utc_offset_hours));
}

void TrackModel::ForgetDerived() {
  summaries_.fill(std::nullopt);
}

/// Kept until the log's points are others or Refresh is called: a log may have 30000 of them.
const TrackModel::Summary& TrackModel::SummaryOf(int log) const {
  const auto at = static_cast<std::size_t>(log);
  std::optional<Summary>& kept = summaries_.at(at);
  const int count = PointsOfLog(data_, log);
  if (!kept || kept->count != count || kept->start != data_.tracks.TrackStart[at]) kept = Summarise(log, count);
  return *kept;
}

TrackModel::Summary TrackModel::Summarise(int log, int count) const {
  Summary summary{data_.tracks.TrackStart[static_cast<std::size_t>(log)], count, {}, {}, 0};
  for (int point = 0; point < count; ++point) {
    summary.length_km += LegKm(data_, log, point);
    const double time = data_.TrackPointAt(log, point).time;
    if (!IsKnownTime(time)) continue;
    if (!summary.first_time) summary.first_time = time;
    summary.last_time = time;
  }
  return summary;
}

TrackPointModel::TrackPointModel(InternalData& data, const NameTablesByType& names, QObject* parent)
    : PointModel(data, names, TrackPointSection, TrackPointModelColumns, parent) {}

std::vector<std::string_view> TrackPointModel::CopyTags() const {
  return {TrackPointSection.tag};
}

std::vector<RowRef> TrackPointModel::HeldRows() const {
  std::vector<RowRef> rows;
  for (int log = FirstLog(data_); log <= LastLog(data_); ++log) {
    const int count = Chosen(log) ? PointsOfLog(data_, log) : 0;
    for (int point = 0; point < count; ++point)
      rows.push_back(Ref(log, point));
  }
  return rows;
}

bool TrackPointModel::Holds(RowRef ref) const {
  return HoldsLog(data_, ref.record) && ref.point < PointsOfLog(data_, ref.record);
}

void TrackPointModel::AppendShownLine(StandardWriter& writer, std::string& out, RowRef ref) const {
  writer.AppendDataLine(out, TrackPointSection.tag, ref.record, ref.point);
}

void TrackPointModel::AppendLines(std::string& out, RowRef ref) const {
  AppendLine(out, TrackPointSection.tag, ref.record, ref.point);
}

std::string TrackPointModel::CellText(RowRef ref, const RecordColumn& column) const {
  if (column.field == OwnColumn) return std::to_string(ref.record) + "-" + std::to_string(ref.point + 1);
  if (column.kind == CellKind::Time && !IsKnownTime(data_.TrackPointAt(ref.record, ref.point).time)) return {};
  return RecordModel::CellText(ref, column);
}

/// The numbers that the cells write, without writing them: there may be 30000 rows.
std::optional<double> TrackPointModel::NumberKey(RowRef ref, const RecordColumn& column) const {
  if (column.field == OwnColumn) return ref.record * 65536.0 + ref.point;
  const TrackPointEntry& entry = data_.TrackPointAt(ref.record, ref.point);
  switch (static_cast<TrackPointField>(column.field)) {
    case TrackPointField::lat:
      return ShownPosition(entry, settings_).latitude_deg;
    case TrackPointField::lon:
      return ShownPosition(entry, settings_).longitude_deg;
    case TrackPointField::time:
      return IsKnownTime(entry.time) ? std::optional(entry.time) : std::nullopt;
    case TrackPointField::new_trk:
      return entry.new_trk ? std::optional(1.0) : std::nullopt;
    case TrackPointField::alt:
      return KnownMetres(entry.alt_m);
    case TrackPointField::dpth:
      return KnownMetres(entry.dpth_m);
    case TrackPointField::leg_dist:
      return LegKm(data_, ref.record, ref.point);
    case TrackPointField::Count:
      break;
  }
  return std::nullopt;
}

}  // namespace walrim
