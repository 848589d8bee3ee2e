#include "walks/RollOver.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <vector>

#include "text/Dates.h"

namespace walrim {
namespace {

constexpr std::int64_t Day_s = 86400;
const std::int64_t Now = SecondsSinceGarminEpoch({2026, 11, 22, 9, 0, 0});
constexpr std::int64_t Year_s = 365 * Day_s;

GarminSeconds At(int year, int month, int day, int hour = 0) {
  return static_cast<GarminSeconds>(SecondsSinceGarminEpoch({year, month, day, hour, 0, 0}));
}

TrackLog LogOf(const std::vector<std::optional<GarminSeconds>>& times) {
  TrackLog log;
  for (const auto& time : times) {
    TrackPoint point;
    point.time = time;
    log.points.push_back(point);
  }
  return log;
}

std::vector<DateRepair> Find(const TrackLog& log, const DateReference& reference) {
  return FindDateRepairs({log}, 0, reference);
}

/// The data of one log with its repairs applied.
std::vector<TrackPoint> Repaired(const TrackLog& log, const std::vector<DateRepair>& repairs) {
  DataSet data;
  EXPECT_EQ(data.Begin(log), AddResult::Stored);
  ApplyDateRepairs(data, repairs);
  return data.Logs()[0].points;
}

TEST(RollOver, ADateThatIsPublishedFor2026) {
  const TrackLog log = LogOf({At(2007, 4, 7)});
  const auto repairs = Find(log, {Now, {}});
  ASSERT_EQ(repairs.size(), 1U);
  EXPECT_EQ(repairs[0], (DateRepair{0, At(2007, 4, 7), At(2007, 4, 7), At(2026, 11, 21), At(2026, 11, 21), 1}));
  EXPECT_EQ(Repaired(log, repairs), LogOf({At(2026, 11, 21)}).points);
}

TEST(RollOver, ALogWithAJumpIsToldByItsEarliestAndLatestTimes) {
  const TrackLog log = LogOf({At(2019, 4, 6, 23), At(1999, 8, 22), At(2019, 4, 7, 1)});
  const auto repairs = Find(log, {At(2019, 4, 8), {}});
  ASSERT_EQ(repairs.size(), 1U);
  EXPECT_EQ(repairs[0], (DateRepair{0, At(1999, 8, 22), At(2019, 4, 7, 1), At(2019, 4, 6, 23), At(2019, 4, 7, 1), 0}));
  EXPECT_EQ(Repaired(log, repairs), LogOf({At(2019, 4, 6, 23), At(2019, 4, 7), At(2019, 4, 7, 1)}).points);
}

TEST(RollOver, ATrueLogStaysInAFileOfItsTime) {
  const TrackLog log = LogOf({At(2003, 5, 3), At(2003, 5, 4)});
  EXPECT_TRUE(Find(log, {At(2003, 5, 4), {}}).empty());
  EXPECT_TRUE(Find(log, {At(2022, 12, 15), {}}).empty());
  EXPECT_FALSE(Find(log, {Now, {}}).empty());
}

TEST(RollOver, AReceiverWhoseClockIsRightHasRightLogs) {
  EXPECT_TRUE(Find(LogOf({At(2003, 5, 3)}), {Now, 0}).empty());
}

TEST(RollOver, TheReferenceIsGoodToTwoDays) {
  const std::int64_t newest = Now - RollOver_s;
  const auto repairs_of = [&](std::int64_t time) { return Find(LogOf({static_cast<GarminSeconds>(time)}), {Now, {}}); };
  EXPECT_EQ(repairs_of(newest + 2 * Day_s).size(), 1U);
  EXPECT_TRUE(repairs_of(newest + 2 * Day_s + 1).empty());
}

TEST(RollOver, OnlyTheLogsFromOneOnAreExamined) {
  const std::vector<TrackLog> logs{LogOf({At(2003, 5, 3)}), LogOf({At(2003, 5, 3)}), LogOf({At(2026, 5, 3)})};
  const auto repairs = FindDateRepairs(logs, 1, {Now, {}});
  ASSERT_EQ(repairs.size(), 1U);
  EXPECT_EQ(repairs[0].log, 1U);
}

TEST(RollOver, PointsWithoutTimesStay) {
  const TrackLog log = LogOf({std::nullopt, At(2007, 4, 7), 0x7FFFFFFF, std::nullopt, At(2007, 4, 8)});
  const auto repairs = Find(log, {Now + Day_s, {}});
  ASSERT_EQ(repairs.size(), 1U);
  EXPECT_EQ(Repaired(log, repairs),
            LogOf({std::nullopt, At(2026, 11, 21), 0x7FFFFFFF, std::nullopt, At(2026, 11, 22)}).points);
  EXPECT_TRUE(Find(LogOf({}), {Now, {}}).empty());
  EXPECT_TRUE(Find(LogOf({std::nullopt, 0x7FFFFFFF}), {Now, 1}).empty());
  EXPECT_TRUE(DateRepairsBy({LogOf({std::nullopt, 0x7FFFFFFF})}, 0, 2).empty());
}

TEST(RollOver, AJumpInsideALog) {
  const TrackLog log = LogOf({At(2026, 11, 20), At(2007, 4, 7), std::nullopt, At(2007, 4, 8)});
  const auto expected = LogOf({At(2026, 11, 20), At(2026, 11, 21), std::nullopt, At(2026, 11, 22)}).points;
  for (const std::optional<int> clock : {std::optional<int>(), std::optional<int>(0), std::optional<int>(1)}) {
    const auto repairs = Find(log, {Now, clock});
    ASSERT_EQ(repairs.size(), 1U);
    EXPECT_EQ(repairs[0].roll_overs, 0);
    EXPECT_EQ(repairs[0].new_first, At(2026, 11, 20));
    EXPECT_EQ(repairs[0].new_last, At(2026, 11, 22));
    EXPECT_EQ(Repaired(log, repairs), expected);
  }
  // Half a roll-over is no jump.
  const auto half = static_cast<GarminSeconds>(RollOver_s / 2);
  EXPECT_TRUE(Find(LogOf({At(2015, 1, 1), At(2015, 1, 1) - half}), {Now, 0}).empty());
  EXPECT_FALSE(Find(LogOf({At(2015, 1, 1), At(2015, 1, 1) - half - 1}), {Now, 0}).empty());
  // Nor is what would land behind the reference.
  EXPECT_TRUE(Find(LogOf({At(2009, 1, 1), At(1995, 1, 1)}), {At(2010, 1, 1), {}}).empty());
}

/// The clock tells where the receiver is behind the log's last jump.
TEST(RollOver, TheClockCountsTheJumpToo) {
  const GarminSeconds first = 2'000'000'000;
  const auto fallen = static_cast<GarminSeconds>(first + Day_s - RollOver_s);
  const std::int64_t seen = first + RollOver_s * 3 / 2;
  const auto repairs = Find(LogOf({first, fallen}), {seen, 1});
  ASSERT_EQ(repairs.size(), 1U);
  EXPECT_EQ(repairs[0].roll_overs, 0);
  EXPECT_EQ(repairs[0].new_last, first + Day_s);
}

TEST(RollOver, ACuredReceiverGoesOnInItsLog) {
  const TrackLog log = LogOf({At(2026, 11, 20), At(2007, 4, 7), At(2026, 11, 22)});
  const auto repairs = Find(log, {Now, {}});
  ASSERT_EQ(repairs.size(), 1U);
  EXPECT_EQ(Repaired(log, repairs), LogOf({At(2026, 11, 20), At(2026, 11, 21), At(2026, 11, 22)}).points);
}

TEST(RollOver, TheUserSaysHowMany) {
  const TrackLog log = LogOf({At(1990, 1, 1)});
  EXPECT_TRUE(DateRepairsBy({log}, 0, 0).empty());
  const auto repairs = DateRepairsBy({log}, 0, 2);
  ASSERT_EQ(repairs.size(), 1U);
  EXPECT_EQ(repairs[0].new_first, At(1990, 1, 1) + 2 * RollOver_s);
}

TEST(RollOver, TimesStayInTheReceiversRange) {
  const std::int64_t end = 0xFFFFFFFA;
  const auto last = static_cast<GarminSeconds>(end - 1 - RollOver_s);
  EXPECT_EQ(DateRepairsBy({LogOf({last})}, 0, 1).size(), 1U);
  EXPECT_TRUE(DateRepairsBy({LogOf({last + 1})}, 0, 1).empty());
  EXPECT_TRUE(DateRepairsBy({LogOf({At(1990, 1, 1), last + 1})}, 0, 1).empty());
  EXPECT_TRUE(Find(LogOf({last + 1}), {end + RollOver_s, {}}).empty());
}

TEST(RollOver, TheClockTellsTheNearest) {
  EXPECT_EQ(RollOversOfClock(Now, Now), 0);
  EXPECT_EQ(RollOversOfClock(Now, Now - RollOver_s / 2 + 1), 0);
  EXPECT_EQ(RollOversOfClock(Now, Now - RollOver_s / 2), 1);
  EXPECT_EQ(RollOversOfClock(Now, Now - 2 * RollOver_s + 3600), 2);
  EXPECT_EQ(RollOversOfClock(Now, Now + 30 * Year_s), 0);
}

TEST(RollOver, ALogThatHasChangedSinceStays) {
  const TrackLog log = LogOf({At(2003, 5, 3), At(2003, 5, 4)});
  const auto repairs = Find(log, {Now, {}});
  TrackLog longer = log;
  longer.points.push_back(LogOf({At(2026, 1, 1)}).points[0]);
  EXPECT_EQ(Repaired(longer, repairs), longer.points);
  DataSet empty;
  ApplyDateRepairs(empty, repairs);
  EXPECT_TRUE(empty.Logs().empty());
}

/// A receiver of chance: when its firmware fell back, how often by then, what it recorded.
class RandomReceiver {
 public:
  explicit RandomReceiver(unsigned seed) : random_(seed) {}

  std::int64_t Between(std::int64_t low, std::int64_t high) {
    return std::uniform_int_distribution<std::int64_t>(low, high)(random_);
  }

  /// True times of a walk of at most a month that ends at a moment.
  std::vector<std::int64_t> WalkUntil(std::int64_t end) {
    std::vector<std::int64_t> times(static_cast<std::size_t>(Between(1, 8)));
    for (std::int64_t& time : times)
      time = end - Between(0, 30 * Day_s);
    std::ranges::sort(times);
    times.back() = end;
    return times;
  }

  /// As the receiver wrote it: roll_overs behind, from a point on by one more; here and there without a time.
  TrackLog Recorded(const std::vector<std::int64_t>& times, int roll_overs, std::size_t falls_back_at) {
    std::vector<std::optional<GarminSeconds>> written;
    for (std::size_t i = 0; i < times.size(); ++i) {
      if (i > 0 && i != falls_back_at && Between(0, 5) == 0) written.emplace_back();
      written.emplace_back(static_cast<GarminSeconds>(times[i] - (roll_overs + (i >= falls_back_at)) * RollOver_s));
    }
    return LogOf(written);
  }

 private:
  std::mt19937 random_;
};

std::vector<std::int64_t> TimesOf(const std::vector<TrackPoint>& points) {
  std::vector<std::int64_t> times;
  for (const TrackPoint& point : points)
    if (point.time) times.push_back(*point.time);
  return times;
}

TEST(RollOver, RandomReceiversGetTheirTrueDates) {
  int changed = 0;
  for (unsigned seed = 0; seed < 5000; ++seed) {
    SCOPED_TRACE(seed);
    RandomReceiver receiver(seed);
    const auto roll_overs = static_cast<int>(receiver.Between(0, 3));
    // Far enough from the epoch that what it writes is a time; the walk is within a roll-over of when it was read.
    const std::int64_t seen = receiver.Between((roll_overs + 2) * RollOver_s, 6 * RollOver_s);
    const auto truth = receiver.WalkUntil(seen - receiver.Between(0, RollOver_s - 33 * Day_s));
    const bool falls_back = receiver.Between(0, 2) == 0;
    const auto at = static_cast<std::size_t>(receiver.Between(1, 8));
    const std::size_t falls_back_at = falls_back && at < truth.size() ? at : truth.size();
    const int jumps = falls_back_at < truth.size() ? 1 : 0;
    const TrackLog log = receiver.Recorded(truth, roll_overs, falls_back_at);
    // Clocks are off by minutes or by years, but not by half a roll-over.
    const std::int64_t clock = seen - (roll_overs + jumps) * RollOver_s + receiver.Between(-9 * Year_s, 9 * Year_s);
    for (const std::optional<int> of_clock : {std::optional<int>(), std::optional(RollOversOfClock(seen, clock))}) {
      const auto repairs = Find(log, {seen, of_clock});
      EXPECT_EQ(repairs.empty(), roll_overs + jumps == 0);
      for (const DateRepair& repair : repairs)
        EXPECT_EQ(repair.roll_overs, roll_overs);
      const auto repaired = Repaired(log, repairs);
      EXPECT_EQ(TimesOf(repaired), truth);
      EXPECT_TRUE(Find(LogOf({repaired.back().time}), {seen, of_clock ? std::optional(0) : of_clock}).empty());
      changed += repairs.empty() ? 0 : 1;
    }
  }
  EXPECT_GT(changed, 5000);
}

/// With the clock a log may be older than a roll-over.
TEST(RollOver, RandomReceiversTellTheirOldLogsToo) {
  for (unsigned seed = 0; seed < 5000; ++seed) {
    SCOPED_TRACE(seed);
    RandomReceiver receiver(seed);
    const auto roll_overs = static_cast<int>(receiver.Between(0, 3));
    const std::int64_t seen = receiver.Between((roll_overs + 2) * RollOver_s, 6 * RollOver_s);
    const auto truth = receiver.WalkUntil(receiver.Between((roll_overs + 1) * RollOver_s, seen));
    const TrackLog log = receiver.Recorded(truth, roll_overs, truth.size());
    const auto repairs = Find(log, {seen, roll_overs});
    EXPECT_EQ(repairs.empty(), roll_overs == 0);
    EXPECT_EQ(TimesOf(Repaired(log, repairs)), truth);
  }
}

/// Whatever the receiver's clock says, what was right until its firmware fell back stays.
TEST(RollOver, RandomLogsFromBeforeTheFallStay) {
  for (unsigned seed = 0; seed < 5000; ++seed) {
    SCOPED_TRACE(seed);
    RandomReceiver receiver(seed);
    const std::int64_t seen = receiver.Between(2 * RollOver_s, 6 * RollOver_s);
    const auto truth = receiver.WalkUntil(seen - receiver.Between(0, RollOver_s - 33 * Day_s));
    const TrackLog log = receiver.Recorded(truth, 0, truth.size());
    for (int of_clock = 0; of_clock <= 3; ++of_clock)
      EXPECT_TRUE(Find(log, {seen, of_clock}).empty());
    EXPECT_TRUE(Find(log, {seen, {}}).empty());
  }
}

}  // namespace
}  // namespace walrim
