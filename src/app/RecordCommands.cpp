#include "app/RecordCommands.h"

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <utility>

#include "app/Messages.h"
#include "walks/LogEdits.h"
#include "walks/Outliers.h"
#include "walks/Simplify.h"

namespace walrim {

namespace {

using Indices = std::vector<std::size_t>;

std::string RefusalOf(Outcome outcome) {
  switch (outcome) {
    case Outcome::Done:
      return {};
    case Outcome::Busy:
      return std::string(messages::BusyWithCommand);
    case Outcome::Refused:
    case Outcome::Cancelled:
    case Outcome::NoReceiver:
    case Outcome::LinkLost:
      break;
  }
  return std::string(messages::RecordIsGone);
}

/// The points by their records.
std::map<std::size_t, Indices> PointsByRecord(const std::vector<RecordPlace>& places) {
  std::map<std::size_t, Indices> points;
  for (const RecordPlace& place : places)
    points[place.record].push_back(*place.point);
  return points;
}

Indices RecordsOf(const std::vector<RecordPlace>& places) {
  Indices indices(places.size());
  std::ranges::transform(places, indices.begin(), &RecordPlace::record);
  return indices;
}

bool DeleteAt(DataSet& data, DataKind kind, const Indices& indices) {
  switch (kind) {
    case DataKind::Waypoint:
      return data.Edit(Erasure<Waypoint>(indices));
    case DataKind::Route:
      return data.Edit(Erasure<Route>(indices));
    case DataKind::TrackLog:
      return data.Edit(Erasure<TrackLog>(indices));
  }
  return false;
}

/// Where the first point of a segment goes, the next one that stays begins it.
bool DeleteTrackPoints(DataSet& data, std::size_t log, const Indices& points) {
  if (log >= data.Logs().size() || points.back() >= data.Logs()[log].points.size()) return false;
  Indices begins;
  bool begins_segment = false;
  std::size_t gone = 0;
  const std::vector<TrackPoint>& held = data.Logs()[log].points;
  for (std::size_t i = points.front(); i < held.size() && (gone < points.size() || begins_segment); ++i) {
    begins_segment = begins_segment || held[i].new_trk;
    if (gone < points.size() && points[gone] == i) {
      ++gone;
      continue;
    }
    if (begins_segment && !held[i].new_trk) begins.push_back(i - gone);
    begins_segment = false;
  }
  if (!data.Edit(Erasure<TrackPoint>(points, log))) return false;
  return std::ranges::all_of(begins, [&](std::size_t i) {
    TrackPoint point = data.Logs()[log].points[i];
    point.new_trk = true;
    return data.Edit(Replacement(i, point, log));
  });
}

bool DeletePoints(DataSet& data, DataKind kind, const std::vector<RecordPlace>& places) {
  return std::ranges::all_of(PointsByRecord(places), [&](const auto& of_record) {
    const auto& [record, points] = of_record;
    if (kind == DataKind::Route) return data.Edit(Erasure<RoutePoint>(points, record));
    return DeleteTrackPoints(data, record, points);
  });
}

bool JoinIn(DataSet& data, const Indices& logs) {
  if (logs.back() >= data.Logs().size()) return false;
  std::vector<const TrackLog*> parts(logs.size());
  std::ranges::transform(logs, parts.begin(), [&data](std::size_t log) { return &data.Logs()[log]; });
  Splice<TrackLog> splice = Erasure<TrackLog>(logs);
  splice.absent.push_back(Joined(parts));
  splice.runs.front().absent = 1;
  return data.Edit(std::move(splice));
}

bool ReverseIn(DataSet& data, DataKind kind, std::size_t index) {
  if (kind == DataKind::Route) {
    if (index >= data.Routes().size()) return false;
    const std::vector<RoutePoint>& points = data.Routes()[index].points;
    return data.Edit(Replacement(0, points.size(), Reversed(points), index));
  }
  if (index >= data.Logs().size()) return false;
  const std::vector<TrackPoint>& points = data.Logs()[index].points;
  return data.Edit(Replacement(0, points.size(), Reversed(points), index));
}

}  // namespace

PositionForm RecordCommands::Form() const {
  return {state_.Settings().notation, state_.Settings().datum};
}

Outcome RecordCommands::Run(StepKind step, DataKind kind, const std::function<bool(DataSet&)>& edit) {
  const Outcome outcome = edits_.Edit(step, edit);
  if (outcome == Outcome::Refused) desktop_.ShowMessage(messages::KindFull(kind));
  return outcome;
}

// ---- Cells

std::string RecordCommands::EditCell(DataKind kind, const RecordPlace& place, EditField field, std::string_view text) {
  switch (kind) {
    case DataKind::Waypoint:
      return EditWaypointAt(place, field, text);
    case DataKind::Route:
      return EditRouteAt(place, field, text);
    case DataKind::TrackLog:
      return EditLogAt(place, field, text);
  }
  return {};
}

std::string RecordCommands::EditWaypointAt(const RecordPlace& place, EditField field, std::string_view text) {
  const std::vector<Waypoint>& waypoints = state_.Data().Waypoints();
  if (place.record >= waypoints.size()) return std::string(messages::RecordIsGone);
  const CellEdit<Waypoint> edit = EditWaypoint(waypoints[place.record], field, text, Form());
  if (!edit.record) return edit.refusal;
  return RefusalOf(
      edits_.Edit(StepKind::Edit, [&](DataSet& data) { return data.Edit(Replacement(place.record, *edit.record)); }));
}

std::string RecordCommands::EditRouteAt(const RecordPlace& place, EditField field, std::string_view text) {
  const std::vector<Route>& routes = state_.Data().Routes();
  if (place.record >= routes.size()) return std::string(messages::RecordIsGone);
  const Route& route = routes[place.record];
  if (!place.point) {
    const CellEdit<Route> edit = EditRoute(route, text);
    if (!edit.record) return edit.refusal;
    return RefusalOf(
        edits_.Edit(StepKind::Edit, [&](DataSet& data) { return data.EditHeader(place.record, *edit.record); }));
  }
  if (*place.point >= route.points.size()) return std::string(messages::RecordIsGone);
  RoutePoint point = route.points[*place.point];
  CellEdit<Waypoint> edit = EditWaypoint(point.waypoint, field, text, Form());
  if (!edit.record) return edit.refusal;
  point.waypoint = std::move(*edit.record);
  return RefusalOf(edits_.Edit(
      StepKind::Edit, [&](DataSet& data) { return data.Edit(Replacement(*place.point, point, place.record)); }));
}

std::string RecordCommands::EditLogAt(const RecordPlace& place, EditField field, std::string_view text) {
  const std::vector<TrackLog>& logs = state_.Data().Logs();
  if (place.record >= logs.size()) return std::string(messages::RecordIsGone);
  const TrackLog& log = logs[place.record];
  if (!place.point) {
    const CellEdit<TrackLog> edit = EditLog(log, text);
    if (!edit.record) return edit.refusal;
    return RefusalOf(
        edits_.Edit(StepKind::Edit, [&](DataSet& data) { return data.EditHeader(place.record, *edit.record); }));
  }
  if (*place.point >= log.points.size()) return std::string(messages::RecordIsGone);
  const CellEdit<TrackPoint> edit = EditTrackPoint(log.points[*place.point], field, text, Form());
  if (!edit.record) return edit.refusal;
  return RefusalOf(edits_.Edit(
      StepKind::Edit, [&](DataSet& data) { return data.Edit(Replacement(*place.point, *edit.record, place.record)); }));
}

// ---- Records and points

Outcome RecordCommands::Delete(DataKind kind, const std::vector<RecordPlace>& places) {
  if (places.empty()) return Outcome::Refused;
  const bool points = places.front().point.has_value();
  return edits_.Edit(StepKind::Delete, [&](DataSet& data) {
    return points ? DeletePoints(data, kind, places) : DeleteAt(data, kind, RecordsOf(places));
  });
}

Outcome RecordCommands::DeleteRecords(const RecordIndices& records) {
  if (CountOf(records) == 0) return Outcome::Refused;
  return edits_.Edit(StepKind::Delete, [&records](DataSet& data) {
    return std::ranges::all_of(AllDataKinds, [&](DataKind kind) {
      const Indices& of_kind = records[IndexOf(kind)];
      return of_kind.empty() || DeleteAt(data, kind, of_kind);
    });
  });
}

/// Of the points nothing is replaced but those that change places.
Outcome RecordCommands::MovePoints(std::size_t route, const Indices& points, bool to_begin) {
  const std::vector<Route>& routes = state_.Data().Routes();
  if (points.empty() || route >= routes.size()) return Outcome::Refused;
  const std::vector<RoutePoint>& held = routes[route].points;
  if (to_begin ? points.front() == 0 : points.back() + 1 >= held.size()) return Outcome::Refused;
  const std::size_t begin = to_begin ? points.front() - 1 : points.front();
  const std::size_t end = to_begin ? points.back() + 1 : points.back() + 2;
  std::vector<RoutePoint> moved(held.begin() + static_cast<std::ptrdiff_t>(begin),
                                held.begin() + static_cast<std::ptrdiff_t>(end));
  const auto swap = [&](std::size_t point, std::size_t with) { std::swap(moved[point - begin], moved[with - begin]); };
  for (std::size_t i = 0; i < points.size(); ++i) {
    const std::size_t point = to_begin ? points[i] : points[points.size() - 1 - i];
    swap(point, to_begin ? point - 1 : point + 1);
  }
  return edits_.Edit(StepKind::Reorder, [&](DataSet& data) {
    return data.Edit(Replacement(begin, end - begin, std::move(moved), route));
  });
}

// ---- Logs made of logs

Outcome RecordCommands::JoinLogs(const Indices& logs) {
  if (logs.size() < 2) return Outcome::Refused;
  return Run(StepKind::Join, DataKind::TrackLog, [&](DataSet& data) { return JoinIn(data, logs); });
}

Outcome RecordCommands::CutLog(std::size_t log, std::size_t point) {
  const std::vector<TrackLog>& logs = state_.Data().Logs();
  if (log >= logs.size() || point == 0 || point >= logs[log].points.size()) return Outcome::Refused;
  return Run(StepKind::Cut, DataKind::TrackLog, [&](DataSet& data) {
    return data.Edit(Replacement(log, 1, CutBefore(data.Logs()[log], std::array{point}, data.Logs())));
  });
}

Outcome RecordCommands::SplitByDay(const Indices& logs) {
  const int utc_offset_hours = state_.Settings().utc_offset_hours;
  return Split(logs, [utc_offset_hours](const TrackLog& log) { return DayBreaks(log.points, utc_offset_hours); });
}

Outcome RecordCommands::SplitByGap(const Indices& logs, std::chrono::seconds gap) {
  return Split(logs, [gap](const TrackLog& log) { return GapBreaks(log.points, gap.count()); });
}

/// From the last log to the first, so that the indices of those that are still to be split stay.
Outcome RecordCommands::Split(const Indices& logs, const std::function<Indices(const TrackLog&)>& breaks_of) {
  const std::vector<TrackLog>& held = state_.Data().Logs();
  std::size_t parts = 0;
  for (const std::size_t log : logs)
    parts += log < held.size() ? breaks_of(held[log]).size() : 0;
  if (parts == 0) {
    desktop_.SetStatusCaption(messages::NothingToSplit);
    return Outcome::Refused;
  }
  const Outcome outcome = Run(StepKind::Cut, DataKind::TrackLog, [&](DataSet& data) {
    return std::ranges::all_of(logs.rbegin(), logs.rend(), [&](std::size_t log) {
      const Indices breaks = breaks_of(data.Logs()[log]);
      return breaks.empty() || data.Edit(Replacement(log, 1, CutBefore(data.Logs()[log], breaks, data.Logs())));
    });
  });
  if (outcome == Outcome::Done) desktop_.SetStatusCaption(messages::SplitInto(logs.size(), logs.size() + parts));
  return outcome;
}

std::vector<RecordPlace> RecordCommands::FindOutliers(const Indices& logs) {
  std::vector<RecordPlace> places;
  for (const std::size_t log : logs) {
    if (log >= state_.Data().Logs().size()) continue;
    for (const std::size_t point : OutliersOf(state_.Data().Logs()[log].points))
      places.push_back({log, point});
  }
  desktop_.SetStatusCaption(messages::OutliersFound(places.size()));
  return places;
}

Outcome RecordCommands::Reverse(DataKind kind, const Indices& indices) {
  if (indices.empty() || kind == DataKind::Waypoint) return Outcome::Refused;
  return edits_.Edit(StepKind::Reverse, [&](DataSet& data) {
    return std::ranges::all_of(indices, [&](std::size_t index) { return ReverseIn(data, kind, index); });
  });
}

Outcome RecordCommands::ShortenLogs(const Indices& logs, std::size_t most) {
  std::size_t before = 0;
  std::size_t after = 0;
  const auto shorten = [&](DataSet& data, std::size_t log) {
    if (log >= data.Logs().size()) return false;
    const std::vector<TrackPoint>& points = data.Logs()[log].points;
    std::vector<TrackPoint> left = Simplified(points, most);
    before += points.size();
    after += left.size();
    return left.size() == points.size() || data.Edit(Replacement(0, points.size(), std::move(left), log));
  };
  const Outcome outcome = edits_.Edit(StepKind::Shorten, [&](DataSet& data) {
    return std::ranges::all_of(logs, [&](std::size_t log) { return shorten(data, log); });
  });
  if (outcome == Outcome::Done) desktop_.SetStatusCaption(messages::Shortened(before, after));
  return outcome;
}

}  // namespace walrim
