#include "records/DataSet.h"

#include <algorithm>
#include <iterator>
#include <type_traits>
#include <utility>

namespace walrim {

namespace {

/// Exchanges what a list has from an end on with what it had there before or had then.
template <typename Record>
void ExchangeTail(std::vector<Record>& list, std::size_t end, std::vector<Record>& absent) {
  if (end == 0) return list.swap(absent);
  const auto tail = list.begin() + static_cast<std::ptrdiff_t>(end);
  std::vector<Record> gone(std::make_move_iterator(tail), std::make_move_iterator(list.end()));
  list.erase(tail, list.end());
  list.insert(list.end(), std::make_move_iterator(absent.begin()), std::make_move_iterator(absent.end()));
  absent = std::move(gone);
}

template <typename Record>
constexpr DataKind KindOf = std::is_same_v<Record, Waypoint>                                      ? DataKind::Waypoint
                            : std::is_same_v<Record, Route> || std::is_same_v<Record, RoutePoint> ? DataKind::Route
                                                                                                  : DataKind::TrackLog;
template <typename Record>
constexpr bool IsPoint = std::is_same_v<Record, RoutePoint> || std::is_same_v<Record, TrackPoint>;

/// The points of a list's last record; 0 of an empty list.
template <typename Record>
std::size_t LastPoints(const std::vector<Record>& list) {
  return list.empty() ? 0 : list.back().points.size();
}

/// Counts what a change concerns.
class Concern {
 public:
  explicit Concern(const DataSet& data) : data_(data) {}

  void operator()(const AddedRecords& added) {
    concerned_.records[IndexOf(DataKind::Waypoint)] += data_.Waypoints().size() - added.waypoints;
    Add(DataKind::Route, data_.Routes(), added.routes, added.route_points);
    Add(DataKind::TrackLog, data_.Logs(), added.logs, added.track_points);
  }
  template <typename Record>
  void operator()(const Splice<Record>& splice) {
    const std::size_t count = splice.Going() > 0 ? splice.Going() : splice.absent.size();
    (IsPoint<Record> ? concerned_.points : concerned_.records)[IndexOf(KindOf<Record>)] += count;
  }
  template <typename Record>
  void operator()(const HeaderExchange<Record>& /*exchange*/) {
    ++concerned_.records[IndexOf(KindOf<Record>)];
  }
  [[nodiscard]] const ConcernedRecords& Concerned() const { return concerned_; }

 private:
  template <typename Record>
  void Add(DataKind kind, const std::vector<Record>& list, std::size_t end, std::size_t points) {
    concerned_.records[IndexOf(kind)] += list.size() - std::min(end, list.size());
    if (end > 0 && end <= list.size()) {
      const std::size_t now = list[end - 1].points.size();
      concerned_.points[IndexOf(kind)] += now - std::min(points, now);
    }
  }

  const DataSet& data_;
  ConcernedRecords concerned_;
};

}  // namespace

std::size_t DataSet::Count(DataKind kind) const {
  switch (kind) {
    case DataKind::Waypoint:
      return waypoints_.size();
    case DataKind::Route:
      return routes_.size();
    case DataKind::TrackLog:
      return logs_.size() - (FirstLogNumber() == 0 ? 1 : 0);
  }
  return 0;
}

bool DataSet::Holds(DataKind kind) const {
  return kind == DataKind::TrackLog ? !logs_.empty() : Count(kind) > 0;
}

AddResult DataSet::Add(Waypoint waypoint) {
  if (waypoints_.size() >= MaxWaypoints) return AddResult::Full;
  NoteAdditions();
  waypoints_.push_back(std::move(waypoint));
  return AddResult::Stored;
}

AddResult DataSet::Begin(Route route) {
  const bool full = routes_.size() >= MaxRoutes;
  headers_.route = full ? Header::Refused : Header::Open;
  if (full) return AddResult::Full;
  NoteAdditions();
  if (!routes_.empty()) routes_.back().points.shrink_to_fit();
  routes_.push_back(std::move(route));
  return AddResult::Stored;
}

AddResult DataSet::NextRoutePoint() const {
  if (headers_.route == Header::Refused) return AddResult::HeaderRefused;
  if (headers_.route == Header::None) return AddResult::NoHeader;
  return routes_.back().points.size() >= MaxRoutePoints ? AddResult::Full : AddResult::Stored;
}

AddResult DataSet::Add(RoutePoint point) {
  const AddResult result = NextRoutePoint();
  if (result != AddResult::Stored) return result;
  NoteAdditions();
  routes_.back().points.push_back(std::move(point));
  return result;
}

AddResult DataSet::Begin(TrackLog log) {
  const bool full = log.headless ? !logs_.empty() : Count(DataKind::TrackLog) >= MaxTrackLogs;
  headers_.log = full ? Header::Refused : Header::Open;
  if (full) return AddResult::Full;
  NoteAdditions();
  // Of more than a thousand logs, the room for points that did not come is a third of all memory.
  if (!logs_.empty()) logs_.back().points.shrink_to_fit();
  logs_.push_back(std::move(log));
  return AddResult::Stored;
}

AddResult DataSet::NextTrackPoint() const {
  if (headers_.log == Header::Refused) return AddResult::HeaderRefused;
  if (headers_.log == Header::None) return AddResult::NoHeader;
  return track_point_count_ >= MaxTrackPoints ? AddResult::Full : AddResult::Stored;
}

AddResult DataSet::Add(const TrackPoint& point) {
  const AddResult result = NextTrackPoint();
  if (result != AddResult::Stored) return result;
  NoteAdditions();
  logs_.back().points.push_back(point);
  ++track_point_count_;
  return result;
}

void DataSet::SetChosen(DataKind kind, std::size_t index, bool chosen) {
  switch (kind) {
    case DataKind::Waypoint:
      waypoints_[index].chosen = chosen;
      return;
    case DataKind::Route:
      routes_[index].chosen = chosen;
      return;
    case DataKind::TrackLog:
      logs_[index].chosen = chosen;
      return;
  }
}

// ---- Whole kinds

void DataSet::Clear(DataKind kind) {
  DataSet empty;
  Take(kind, empty);
}

void DataSet::Take(DataKind kind, DataSet& other) {
  const auto replace = [this](auto& list, auto& others) {
    if (list.empty() && others.empty()) return;
    static_cast<void>(Make(Replacement(0, list.size(), std::exchange(others, {})), list));
  };
  switch (kind) {
    case DataKind::Waypoint:
      replace(waypoints_, other.waypoints_);
      break;
    case DataKind::Route:
      replace(routes_, other.routes_);
      headers_.route = other.headers_.route = Header::None;
      break;
    case DataKind::TrackLog:
      replace(logs_, other.logs_);
      headers_.log = other.headers_.log = Header::None;
      other.CountTrackPoints();
      break;
  }
}

// ---- Edits

bool DataSet::Edit(Splice<Waypoint> splice) {
  return Make(std::move(splice), waypoints_);
}

bool DataSet::Edit(Splice<Route> splice) {
  if (!Make(std::move(splice), routes_)) return false;
  headers_.route = Header::None;
  return true;
}

bool DataSet::Edit(Splice<RoutePoint> splice) {
  if (splice.owner >= routes_.size()) return false;
  std::vector<RoutePoint>& points = routes_[splice.owner].points;
  return Make(std::move(splice), points);
}

bool DataSet::Edit(Splice<TrackLog> splice) {
  if (!Make(std::move(splice), logs_)) return false;
  headers_.log = Header::None;
  return true;
}

bool DataSet::Edit(Splice<TrackPoint> splice) {
  if (splice.owner >= logs_.size()) return false;
  std::vector<TrackPoint>& points = logs_[splice.owner].points;
  return Make(std::move(splice), points);
}

template <typename Record>
bool DataSet::Make(Splice<Record> splice, std::vector<Record>& list) {
  if (!splice.FitsInto(list.size())) return false;
  if (splice.Changes(list)) return ExchangeNoted(std::move(splice), list);
  return true;
}

/// Notes an exchange; takes it back where the data set does not fit its limits then.
template <typename Exchanged, typename Record>
bool DataSet::ExchangeNoted(Exchanged exchange, std::vector<Record>& list) {
  exchange.Exchange(list);
  CountTrackPoints();
  const bool fits = Fits();
  if (fits) {
    Note(std::move(exchange));
  } else {
    exchange.Exchange(list);
    CountTrackPoints();
  }
  return fits;
}

template <typename Record>
bool DataSet::MakeHeader(std::size_t at, Record header, std::vector<Record>& list) {
  if (at >= list.size()) return false;
  header.points = {};
  std::vector points = std::exchange(list[at].points, {});
  const bool same = list[at] == header;
  list[at].points = std::move(points);
  return same || ExchangeNoted(HeaderExchange<Record>{at, std::move(header)}, list);
}

bool DataSet::EditHeader(std::size_t at, Route header) {
  return MakeHeader(at, std::move(header), routes_);
}

bool DataSet::EditHeader(std::size_t at, TrackLog header) {
  return MakeHeader(at, std::move(header), logs_);
}

bool DataSet::Fits() const {
  const bool points_fit =
      std::ranges::all_of(routes_, [](const Route& route) { return route.points.size() <= MaxRoutePoints; });
  const auto headless = std::ranges::count_if(logs_, [](const TrackLog& log) { return log.headless; });
  const bool records_fit =
      std::ranges::all_of(AllDataKinds, [this](DataKind kind) { return Count(kind) <= LimitOf(kind); });
  return records_fit && points_fit && headless == (FirstLogNumber() == 0 ? 1 : 0) &&
         track_point_count_ <= MaxTrackPoints;
}

void DataSet::CountTrackPoints() {
  track_point_count_ = 0;
  for (const TrackLog& log : logs_)
    track_point_count_ += log.points.size();
}

// ---- What was done

void DataSet::KeepChanges() {
  keeps_changes_ = true;
  static_cast<void>(TakeChanges());
}

DataChanges DataSet::TakeChanges() {
  additions_noted_ = !keeps_changes_;
  DataChanges changes = std::exchange(kept_, {});
  kept_.headers_ = headers_;
  return changes;
}

void DataSet::Note(DataChanges::Change change) {
  if (!keeps_changes_) return;
  kept_.changes_.push_back(std::move(change));
  additions_noted_ = false;
}

void DataSet::NoteFirstAddition() {
  AddedRecords added;
  added.waypoints = waypoints_.size();
  added.routes = routes_.size();
  added.route_points = LastPoints(routes_);
  added.logs = logs_.size();
  added.track_points = LastPoints(logs_);
  Note(std::move(added));
  additions_noted_ = true;
}

void DataSet::ExchangeIn(AddedRecords& added) {
  ExchangeTail(waypoints_, added.waypoints, added.absent_waypoints);
  ExchangeTail(routes_, added.routes, added.absent_routes);
  ExchangeTail(logs_, added.logs, added.absent_logs);
  if (added.routes > 0) ExchangeTail(routes_[added.routes - 1].points, added.route_points, added.absent_route_points);
  if (added.logs > 0) ExchangeTail(logs_[added.logs - 1].points, added.track_points, added.absent_track_points);
}

void DataSet::Exchange(DataChanges& changes) {
  for (auto change = changes.changes_.rbegin(); change != changes.changes_.rend(); ++change)
    std::visit([this](auto& one) { ExchangeIn(one); }, *change);
  std::ranges::reverse(changes.changes_);
  std::swap(headers_, changes.headers_);
  CountTrackPoints();
  static_cast<void>(TakeChanges());
}

ConcernedRecords DataSet::Concerned() const {
  Concern concern(*this);
  for (const DataChanges::Change& change : kept_.changes_)
    std::visit(concern, change);
  return concern.Concerned();
}

}  // namespace walrim
