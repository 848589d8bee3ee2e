#include "formats/RecordIntake.h"

#include <utility>

#include "formats/Messages.h"

namespace walrim {

using namespace format_messages;

bool RecordIntake::Takes(AddResult next, DataKind kind) {
  if (next == AddResult::HeaderRefused) Skip(HeaderRefused);
  if (next == AddResult::NoHeader) Skip(kind == DataKind::Route ? NoRouteHeader : NoTrackHeader);
  return next != AddResult::HeaderRefused && next != AddResult::NoHeader;
}

void RecordIntake::Note(AddResult result, int& stored) {
  if (result != AddResult::Stored) return Skip(StoreFull);
  ++stored;
}

void RecordIntake::Store(Waypoint waypoint) {
  Note(data_.Add(std::move(waypoint)), account_.stored[IndexOf(DataKind::Waypoint)]);
}

void RecordIntake::Begin(Route route) {
  Note(data_.Begin(std::move(route)), account_.stored[IndexOf(DataKind::Route)]);
}

void RecordIntake::Store(RoutePoint point) {
  Note(data_.Add(std::move(point)), account_.route_points);
}

void RecordIntake::Begin(TrackLog log) {
  Note(data_.Begin(std::move(log)), account_.stored[IndexOf(DataKind::TrackLog)]);
}

void RecordIntake::Store(const TrackPoint& point) {
  Note(data_.Add(point), account_.track_points);
}

}  // namespace walrim
