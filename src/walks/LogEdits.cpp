#include "walks/LogEdits.h"

#include <algorithm>
#include <string>

namespace walrim {

namespace {

/// A log without points.
TrackLog HeaderOf(const TrackLog& log) {
  return {log.headless, log.dspl, log.color, log.trk_ident, {}, log.chosen};
}

std::string FreeName(const std::string& name, const std::vector<TrackLog>& logs) {
  if (name.empty()) return name;
  for (int number = 2;; ++number) {
    std::string free = name + "-" + std::to_string(number);
    if (std::ranges::find(logs, free, &TrackLog::trk_ident) == logs.end()) return free;
  }
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

std::pair<TrackLog, TrackLog> CutBefore(const TrackLog& log, std::size_t point, const std::vector<TrackLog>& logs) {
  std::pair<TrackLog, TrackLog> parts{HeaderOf(log), HeaderOf(log)};
  const auto cut = log.points.begin() + static_cast<std::ptrdiff_t>(point);
  parts.first.points.assign(log.points.begin(), cut);
  parts.second.points.assign(cut, log.points.end());
  parts.second.headless = false;
  parts.second.trk_ident = FreeName(log.trk_ident, logs);
  if (!parts.second.points.empty()) parts.second.points.front().new_trk = true;
  return parts;
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
