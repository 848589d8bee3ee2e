#include "records/DataSet.h"

#include <utility>

namespace walrim {

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
  waypoints_.push_back(std::move(waypoint));
  return AddResult::Stored;
}

AddResult DataSet::Begin(Route route) {
  const bool full = routes_.size() >= MaxRoutes;
  route_header_ = full ? Header::Refused : Header::Open;
  if (full) return AddResult::Full;
  if (!routes_.empty()) routes_.back().points.shrink_to_fit();
  routes_.push_back(std::move(route));
  return AddResult::Stored;
}

AddResult DataSet::NextRoutePoint() const {
  if (route_header_ == Header::Refused) return AddResult::HeaderRefused;
  if (route_header_ == Header::None) return AddResult::NoHeader;
  return routes_.back().points.size() >= MaxRoutePoints ? AddResult::Full : AddResult::Stored;
}

AddResult DataSet::Add(RoutePoint point) {
  const AddResult result = NextRoutePoint();
  if (result == AddResult::Stored) routes_.back().points.push_back(std::move(point));
  return result;
}

AddResult DataSet::Begin(TrackLog log) {
  const bool full = log.headless ? !logs_.empty() : Count(DataKind::TrackLog) >= MaxTrackLogs;
  log_header_ = full ? Header::Refused : Header::Open;
  if (full) return AddResult::Full;
  // Of more than a thousand logs, the room for points that did not come is a third of all memory.
  if (!logs_.empty()) logs_.back().points.shrink_to_fit();
  logs_.push_back(std::move(log));
  return AddResult::Stored;
}

AddResult DataSet::NextTrackPoint() const {
  if (log_header_ == Header::Refused) return AddResult::HeaderRefused;
  if (log_header_ == Header::None) return AddResult::NoHeader;
  return track_point_count_ >= MaxTrackPoints ? AddResult::Full : AddResult::Stored;
}

AddResult DataSet::Add(const TrackPoint& point) {
  const AddResult result = NextTrackPoint();
  if (result != AddResult::Stored) return result;
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

void DataSet::Clear(DataKind kind) {
  switch (kind) {
    case DataKind::Waypoint:
      waypoints_ = {};
      return;
    case DataKind::Route:
      routes_ = {};
      route_header_ = Header::None;
      return;
    case DataKind::TrackLog:
      logs_ = {};
      track_point_count_ = 0;
      log_header_ = Header::None;
      return;
  }
}

void DataSet::Take(DataKind kind, DataSet& other) {
  Clear(kind);
  switch (kind) {
    case DataKind::Waypoint:
      waypoints_ = std::move(other.waypoints_);
      break;
    case DataKind::Route:
      routes_ = std::move(other.routes_);
      break;
    case DataKind::TrackLog:
      logs_ = std::move(other.logs_);
      track_point_count_ = other.track_point_count_;
      break;
  }
  other.Clear(kind);
}

}  // namespace walrim
