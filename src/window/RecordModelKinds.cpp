#include "window/RecordModelKinds.h"

#include <algorithm>
#include <utility>

namespace walrim {
namespace {

constexpr int At(WaypointField field) {
  return static_cast<int>(field);
}
constexpr int At(RouteHeaderField field) {
  return static_cast<int>(field);
}

/// The columns of a waypoint, behind a first one for its number.
constexpr auto WaypointColumnsAfter(CellKind number) {
  using enum WaypointField;
  return std::array{RecordColumn{"番号", number},
                    RecordColumn{"名前", CellKind::Text, At(ident)},
                    RecordColumn{"緯度", CellKind::Angle, At(lat)},
                    RecordColumn{"経度", CellKind::Angle, At(lon)},
                    RecordColumn{"高度 m", CellKind::Metres, At(alt)},
                    RecordColumn{"コメント", CellKind::Text, At(cmnt)},
                    RecordColumn{"シンボル", CellKind::NamedCode, At(smbl_notes), At(smbl)},
                    RecordColumn{"表示", CellKind::NamedCode, At(dspl_notes), At(dspl)},
                    RecordColumn{"施設", CellKind::Text, At(facility)},
                    RecordColumn{"市", CellKind::Text, At(city)},
                    RecordColumn{"住所", CellKind::Text, At(addr)},
                    RecordColumn{"州", CellKind::Text, At(state)},
                    RecordColumn{"国", CellKind::Text, At(cc)},
                    RecordColumn{"交差点", CellKind::Text, At(cross_road)}};
}
constexpr auto WaypointModelColumns = WaypointColumnsAfter(CellKind::Number);
constexpr auto RoutePointModelColumns = WaypointColumnsAfter(CellKind::PointNumber);

constexpr std::array RouteModelColumns{RecordColumn{"番号", CellKind::Number, At(RouteHeaderField::nmbr)},
                                       RecordColumn{"コメント", CellKind::Text, At(RouteHeaderField::cmnt)},
                                       RecordColumn{"点数", CellKind::Number, At(RouteHeaderField::rte_wpt_num)}};

RowRef Ref(int record, int point = 0) {
  return {static_cast<std::uint16_t>(record), static_cast<std::uint16_t>(point)};
}

int HeldWaypoints(const InternalData& data) {
  return std::clamp(data.WaypointCount, 0, MaxWaypoints);
}

int HeldRoutes(const InternalData& data) {
  return std::clamp(data.routes.RouteCount, 0, MaxRoutes);
}

struct PointRange {
  int first;
  int end;
};

/// The numbers of a held route's points.
PointRange PointsOfRoute(const InternalData& data, int route) {
  const auto at = static_cast<std::size_t>(route);
  const int first = std::clamp(data.routes.first_point[at], 0, 1);
  const int count = std::clamp(data.routes.RoutePointCount[at], 0, MaxRoutePoints - first);
  return {first, first + count};
}

bool HoldsRoute(const InternalData& data, int route) {
  return route >= 1 && route <= HeldRoutes(data);
}

}  // namespace

WaypointModel::WaypointModel(InternalData& data, const NameTablesByType& names, QObject* parent)
    : RecordModel(data, names, WaypointSection, WaypointModelColumns, parent) {}

std::vector<std::string_view> WaypointModel::CopyTags() const {
  return {WaypointSection.tag};
}

std::vector<RowRef> WaypointModel::HeldRows() const {
  std::vector<RowRef> rows;
  for (int slot = 1; slot <= HeldWaypoints(data_); ++slot)
    rows.push_back(Ref(slot));
  return rows;
}

bool WaypointModel::Holds(RowRef ref) const {
  return ref.record >= 1 && ref.record <= HeldWaypoints(data_);
}

void WaypointModel::AppendShownLine(StandardWriter& writer, std::string& out, RowRef ref) const {
  writer.AppendDataLine(out, WaypointSection.tag, ref.record);
}

void WaypointModel::AppendLines(std::string& out, RowRef ref) const {
  AppendLine(out, WaypointSection.tag, ref.record);
}

std::string WaypointModel::CellText(RowRef ref, const RecordColumn& column) const {
  return column.field == OwnColumn ? std::to_string(ref.record) : RecordModel::CellText(ref, column);
}

RouteModel::RouteModel(InternalData& data, const NameTablesByType& names, QObject* parent)
    : RecordModel(data, names, RouteHeaderSection, RouteModelColumns, parent) {}

std::vector<std::string_view> RouteModel::CopyTags() const {
  return {RouteHeaderSection.tag, RoutePointSection.tag};
}

std::vector<RowRef> RouteModel::HeldRows() const {
  std::vector<RowRef> rows;
  for (int route = 1; route <= HeldRoutes(data_); ++route)
    rows.push_back(Ref(route));
  return rows;
}

bool RouteModel::Holds(RowRef ref) const {
  return HoldsRoute(data_, ref.record);
}

void RouteModel::AppendShownLine(StandardWriter& writer, std::string& out, RowRef ref) const {
  writer.AppendDataLine(out, RouteHeaderSection.tag, ref.record);
}

void RouteModel::AppendLines(std::string& out, RowRef ref) const {
  AppendLine(out, RouteHeaderSection.tag, ref.record);
  const PointRange points = PointsOfRoute(data_, ref.record);
  for (int point = points.first; point < points.end; ++point)
    AppendLine(out, RoutePointSection.tag, ref.record, point);
}

void PointModel::ShowRecords(std::vector<int> records) {
  if (records == records_) return;
  records_ = std::move(records);
  Reset();
}

bool PointModel::Chosen(int record) const {
  return records_.empty() || std::binary_search(records_.begin(), records_.end(), record);
}

RoutePointModel::RoutePointModel(InternalData& data, const NameTablesByType& names, QObject* parent)
    : PointModel(data, names, WaypointSection, RoutePointModelColumns, parent) {}

std::vector<std::string_view> RoutePointModel::CopyTags() const {
  return {RoutePointSection.tag};
}

std::vector<RowRef> RoutePointModel::HeldRows() const {
  std::vector<RowRef> rows;
  for (int route = 1; route <= HeldRoutes(data_); ++route) {
    if (!Chosen(route)) continue;
    const PointRange points = PointsOfRoute(data_, route);
    for (int point = points.first; point < points.end; ++point)
      rows.push_back(Ref(route, point));
  }
  return rows;
}

bool RoutePointModel::Holds(RowRef ref) const {
  if (!HoldsRoute(data_, ref.record)) return false;
  const PointRange points = PointsOfRoute(data_, ref.record);
  return ref.point >= points.first && ref.point < points.end;
}

/// The line of the waypoint that makes up the point: its columns are named and trimmed as any waypoint's.
void RoutePointModel::AppendShownLine(StandardWriter& writer, std::string& out, RowRef ref) const {
  writer.AppendDataLine(out, WaypointSection.tag, RoutePointSlot(ref.record, ref.point));
}

void RoutePointModel::AppendLines(std::string& out, RowRef ref) const {
  AppendLine(out, RoutePointSection.tag, ref.record, ref.point);
}

std::string RoutePointModel::CellText(RowRef ref, const RecordColumn& column) const {
  if (column.field != OwnColumn) return RecordModel::CellText(ref, column);
  const int number = ref.point - PointsOfRoute(data_, ref.record).first + 1;
  return std::to_string(data_.d201.at(ref.record).nmbr) + "-" + std::to_string(number);
}

}  // namespace walrim
