#include "walks/LogEdits.h"

#include <algorithm>
#include <chrono>
#include <optional>
#include <set>
#include <string>

namespace walrim {

namespace {

/// A log without points.
TrackLog HeaderOf(const TrackLog& log) {
  return {log.headless, log.dspl, log.color, log.trk_ident, {}, log.chosen, log.damaged};
}

std::string FreeName(const std::string& name, const std::set<std::string>& names) {
  if (name.empty()) return name;
  for (int number = 2;; ++number) {
    std::string free = name + "-" + std::to_string(number);
    if (!names.contains(free)) return free;
  }
}

/// The points with a time that is_break tells from the time before.
template <typename IsBreak>
std::vector<std::size_t> Breaks(std::span<const TrackPoint> points, IsBreak is_break) {
  std::vector<std::size_t> breaks;
  std::optional<GarminSeconds> before;
  for (std::size_t i = 0; i < points.size(); ++i) {
    if (!points[i].time) continue;
    if (before && is_break(*before, *points[i].time)) breaks.push_back(i);
    before = points[i].time;
  }
  return breaks;
}

}  // namespace

TrackLog Joined(std::span<const TrackLog* const> logs) {
  const auto headed = std::ranges::find_if(logs, [](const TrackLog* log) { return !log->headless; });
  TrackLog joined = HeaderOf(headed != logs.end() ? **headed : *logs.front());
  for (const TrackLog* log : logs) {
    const std::size_t begin = joined.points.size();
    joined.points.insert(joined.points.end(), log->points.begin(), log->points.end());
    if (begin < joined.points.size()) joined.points[begin].new_trk = true;
  }
  return joined;
}

std::vector<TrackLog> CutBefore(const TrackLog& log, std::span<const std::size_t> points,
                                const std::vector<TrackLog>& logs) {
  std::set<std::string> names;
  for (const TrackLog& other : logs)
    names.insert(other.trk_ident);
  std::vector<TrackLog> parts;
  for (std::size_t part = 0; part <= points.size(); ++part) {
    const std::size_t begin = part == 0 ? 0 : points[part - 1];
    const std::size_t end = part == points.size() ? log.points.size() : points[part];
    parts.push_back(HeaderOf(log));
    TrackLog& made = parts.back();
    made.points.assign(log.points.begin() + static_cast<std::ptrdiff_t>(begin),
                       log.points.begin() + static_cast<std::ptrdiff_t>(end));
    if (part == 0) continue;
    made.headless = false;
    made.trk_ident = FreeName(log.trk_ident, names);
    names.insert(made.trk_ident);
    if (!made.points.empty()) made.points.front().new_trk = true;
  }
  return parts;
}

std::vector<std::size_t> DayBreaks(std::span<const TrackPoint> points, int utc_offset_hours) {
  const auto day = [utc_offset_hours](GarminSeconds time) {
    return std::chrono::floor<std::chrono::days>(std::chrono::seconds(time) + std::chrono::hours(utc_offset_hours));
  };
  return Breaks(points, [day](GarminSeconds before, GarminSeconds time) { return day(before) != day(time); });
}

std::vector<std::size_t> GapBreaks(std::span<const TrackPoint> points, std::int64_t seconds) {
  return Breaks(points, [seconds](GarminSeconds before, GarminSeconds time) {
    return static_cast<std::int64_t>(time) - static_cast<std::int64_t>(before) >= seconds;
  });
}

std::vector<TrackPoint> Reversed(std::span<const TrackPoint> points) {
  std::vector<TrackPoint> reversed(points.rbegin(), points.rend());
  for (std::size_t i = 0; i < reversed.size(); ++i) {
    const std::size_t behind = points.size() - i;  // what stood behind it
    reversed[i].new_trk = behind < points.size() ? points[behind].new_trk : points.front().new_trk;
  }
  return reversed;
}

std::vector<RoutePoint> Reversed(std::span<const RoutePoint> points) {
  std::vector<RoutePoint> reversed(points.rbegin(), points.rend());
  for (std::size_t i = 0; i + 1 < reversed.size(); ++i)
    reversed[i].link = points[points.size() - i - 2].link;
  if (!reversed.empty()) reversed.back().link = points.back().link;
  return reversed;
}

}  // namespace walrim
