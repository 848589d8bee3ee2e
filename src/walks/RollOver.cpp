#include "walks/RollOver.h"

#include <algorithm>
#include <span>

#include "text/Dates.h"

namespace walrim {

namespace {

/// Receivers' clocks and time zones may be off by so much.
constexpr std::int64_t Tolerance_s = 2LL * 24 * 3600;
constexpr std::int64_t LargestJump_s = RollOver_s / 2;
constexpr GarminSeconds SavedLogTime = 0x7FFFFFFF;

/// The roll-overs of a log's points in their order, counted from its beginning.
class JumpCounter {
 public:
  /// Takes the next point's time.
  [[nodiscard]] int RollOversAt(GarminSeconds time) {
    const std::int64_t step_s = last_ ? static_cast<std::int64_t>(time) - *last_ : 0;
    if (step_s < -LargestJump_s) ++count_;
    if (step_s > LargestJump_s && count_ > 0) --count_;
    last_ = time;
    return count_;
  }

 private:
  std::optional<GarminSeconds> last_;
  int count_ = 0;
};

bool IsDated(const TrackPoint& point) {
  return point.time && *point.time != SavedLogTime;
}

/// The earliest and the latest times of a log, and what they are with the roll-overs inside it undone.
struct LogTimes {
  std::optional<GarminSeconds> old_first;  ///< nothing where no point has a time
  GarminSeconds old_last = 0;
  std::int64_t new_first = 0;
  std::int64_t new_last = 0;
  int most_jumps = 0;
};

LogTimes TimesOf(std::span<const TrackPoint> points) {
  LogTimes times;
  JumpCounter jumps;
  for (const TrackPoint& point : points) {
    if (!IsDated(point)) continue;
    const int count = jumps.RollOversAt(*point.time);
    const std::int64_t time = *point.time + count * RollOver_s;
    const bool is_first = !times.old_first;
    times.old_first = std::min(*point.time, times.old_first.value_or(*point.time));
    times.new_first = is_first ? time : std::min(times.new_first, time);
    times.old_last = std::max(*point.time, times.old_last);
    times.new_last = std::max(times.new_last, time);
    times.most_jumps = std::max(times.most_jumps, count);
  }
  return times;
}

std::optional<DateRepair> RepairBy(std::size_t log, const LogTimes& times, int roll_overs) {
  const std::int64_t offset_s = roll_overs * RollOver_s;
  if (roll_overs == 0 && times.most_jumps == 0) return std::nullopt;
  if (times.new_last + offset_s >= UnknownGarminTime) return std::nullopt;
  return DateRepair{log,
                    *times.old_first,
                    times.old_last,
                    static_cast<GarminSeconds>(times.new_first + offset_s),
                    static_cast<GarminSeconds>(times.new_last + offset_s),
                    roll_overs};
}

/// Where a log would then end behind the reference, what jumps inside it is no roll-over.
std::optional<DateRepair> RepairOf(std::size_t index, const TrackLog& log, const DateReference& reference) {
  const std::int64_t latest_s = reference.seen_s + Tolerance_s;
  const LogTimes times = TimesOf(log.points);
  if (!times.old_first || times.new_last > latest_s) return std::nullopt;
  std::int64_t roll_overs = (latest_s - times.new_last) / RollOver_s;
  // The clock tells how far behind the receiver is now: behind the log's last jump.
  if (reference.of_clock) roll_overs = std::min<std::int64_t>(roll_overs, *reference.of_clock - times.most_jumps);
  return RepairBy(index, times, static_cast<int>(std::max<std::int64_t>(roll_overs, 0)));
}

template <typename RepairOfLog>
std::vector<DateRepair> RepairsOf(const std::vector<TrackLog>& logs, std::size_t first_log, RepairOfLog repair_of) {
  std::vector<DateRepair> repairs;
  for (std::size_t i = first_log; i < logs.size(); ++i) {
    if (const auto repair = repair_of(i, logs[i])) repairs.push_back(*repair);
  }
  return repairs;
}

}  // namespace

int RollOversOfClock(std::int64_t computer_s, std::int64_t receiver_s) {
  return static_cast<int>(std::max<std::int64_t>(computer_s - receiver_s + RollOver_s / 2, 0) / RollOver_s);
}

std::vector<DateRepair> FindDateRepairs(const std::vector<TrackLog>& logs, std::size_t first_log,
                                        const DateReference& reference) {
  return RepairsOf(logs, first_log, [&](std::size_t i, const TrackLog& log) { return RepairOf(i, log, reference); });
}

std::vector<DateRepair> DateRepairsBy(const std::vector<TrackLog>& logs, std::size_t first_log, int roll_overs) {
  return RepairsOf(logs, first_log, [&](std::size_t i, const TrackLog& log) {
    const LogTimes times = TimesOf(log.points);
    return times.old_first ? RepairBy(i, times, roll_overs) : std::nullopt;
  });
}

std::vector<DateRepair> RepairsStillDue(const std::vector<TrackLog>& logs, const std::vector<DateRepair>& repairs) {
  std::vector<DateRepair> due;
  std::vector<DateRepair> left = repairs;
  for (std::size_t i = 0; i < logs.size() && !left.empty(); ++i) {
    const LogTimes times = TimesOf(logs[i].points);
    const auto found = std::ranges::find_if(left, [&](const DateRepair& repair) {
      return times.old_first == repair.old_first && times.old_last == repair.old_last;
    });
    if (found == left.end()) continue;
    due.push_back(*found);
    due.back().log = i;
    left.erase(found);
  }
  return due;
}

void ApplyDateRepairs(DataSet& data, const std::vector<DateRepair>& repairs) {
  for (const DateRepair& repair : repairs) {
    if (repair.log >= data.Logs().size()) continue;
    const std::vector<TrackPoint>& points = data.Logs()[repair.log].points;
    const LogTimes times = TimesOf(points);
    if (times.old_first != repair.old_first || times.old_last != repair.old_last) continue;
    std::vector<TrackPoint> repaired = points;
    JumpCounter jumps;
    for (TrackPoint& point : repaired) {
      if (!IsDated(point)) continue;
      const std::int64_t roll_overs = repair.roll_overs + jumps.RollOversAt(*point.time);
      point.time = static_cast<GarminSeconds>(*point.time + roll_overs * RollOver_s);
    }
    static_cast<void>(data.Edit(Replacement(0, points.size(), std::move(repaired), repair.log)));
  }
}

}  // namespace walrim
