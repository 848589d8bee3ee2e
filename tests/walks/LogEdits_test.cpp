#include "walks/LogEdits.h"

#include <array>
#include <gtest/gtest.h>

namespace walrim {
namespace {

/// A log of points at the times 1, 2, 3 .. of a pattern: "|" begins a segment at the next "." .
TrackLog LogOf(const std::string& name, std::string_view pattern, GarminSeconds first = 1) {
  TrackLog log;
  log.trk_ident = name;
  bool begins = false;
  for (const char c : pattern) {
    begins = begins || c == '|';
    if (c != '.') continue;
    TrackPoint point;
    point.time = first++;
    point.new_trk = std::exchange(begins, false);
    log.points.push_back(point);
  }
  return log;
}

/// "|1 2 |3": the times, and where segments begin.
std::string Written(std::span<const TrackPoint> points) {
  std::string text;
  for (const TrackPoint& point : points)
    text += (text.empty() ? "" : " ") + std::string(point.new_trk ? "|" : "") + std::to_string(*point.time);
  return text;
}

TEST(Joined, PutsLogsOneBehindTheOtherAsSegments) {
  const TrackLog first = LogOf("A", "|..|.");
  const TrackLog second = LogOf("B", "..", 10);
  const TrackLog* const logs[] = {&first, &second};
  const TrackLog joined = Joined(logs);
  EXPECT_EQ(joined.trk_ident, "A");
  EXPECT_EQ(Written(joined.points), "|1 2 |3 |10 11");
}

TEST(Joined, HasTheHeaderOfTheFirstThatHasOne) {
  TrackLog headless = LogOf("", "..");
  headless.headless = true;
  const TrackLog empty = LogOf("EMPTY", "");
  const TrackLog* const logs[] = {&headless, &empty};
  const TrackLog joined = Joined(logs);
  EXPECT_FALSE(joined.headless);
  EXPECT_EQ(joined.trk_ident, "EMPTY");
  EXPECT_EQ(Written(joined.points), "|1 2");
}

TEST(CutBefore, MakesTwoLogsOfOneWithNamesOfTheirOwn) {
  const TrackLog log = LogOf("DAY", "|...");
  const std::vector<TrackLog> parts = CutBefore(log, std::array<std::size_t, 1>{1}, {log, LogOf("DAY-2", "")});
  ASSERT_EQ(parts.size(), 2U);
  EXPECT_EQ(parts[0].trk_ident, "DAY");
  EXPECT_EQ(Written(parts[0].points), "|1");
  EXPECT_EQ(parts[1].trk_ident, "DAY-3");
  EXPECT_EQ(Written(parts[1].points), "|2 3");
}

TEST(CutBefore, MakesAsManyLogsAsThereArePartsEachWithItsName) {
  const TrackLog log = LogOf("DAY", "|..|...");
  const std::vector<TrackLog> parts = CutBefore(log, std::array<std::size_t, 2>{1, 3}, {log, LogOf("DAY-2", "")});
  ASSERT_EQ(parts.size(), 3U);
  EXPECT_EQ(Written(parts[1].points), "|2 |3");
  EXPECT_EQ(Written(parts[2].points), "|4 5");
  EXPECT_EQ(parts[1].trk_ident + parts[2].trk_ident, "DAY-3DAY-4");
  EXPECT_EQ(CutBefore(log, {}, {log}), std::vector<TrackLog>{log});
}

using Breaks = std::vector<std::size_t>;

TrackLog LogAt(std::initializer_list<std::optional<GarminSeconds>> times) {
  TrackLog log;
  for (const auto& time : times) {
    log.points.emplace_back();
    log.points.back().time = time;
  }
  return log;
}

TEST(DayBreaks, AreAtMidnightOfTheZone) {
  // 1990/01/01 14:59:59 UTC is a second before midnight in Japan; 15:00:00 is midnight there.
  const GarminSeconds midnight = 86400 + 15 * 3600;
  const TrackLog log =
      LogAt({midnight - 7200, midnight - 1, std::nullopt, midnight, midnight + 86399, midnight + 86400});
  EXPECT_EQ(DayBreaks(log.points, 9), (Breaks{3, 5}));
  EXPECT_EQ(DayBreaks(log.points, 0), (Breaks{4})) << "there 1990/01/02 begins nine hours later";
  EXPECT_EQ(DayBreaks(log.points, -12), (Breaks{4}));
  EXPECT_EQ(DayBreaks({}, 9), Breaks{});
  EXPECT_EQ(DayBreaks(LogAt({10, std::nullopt, 20}).points, -12), Breaks{}) << "the epoch's day before";
}

TEST(GapBreaks, AreWhereSoMuchTimePassed) {
  const TrackLog log = LogAt({1000, 1059, std::nullopt, 1119, 1118, 9999});
  EXPECT_EQ(GapBreaks(log.points, 60), (Breaks{3, 5}));
  EXPECT_EQ(GapBreaks(log.points, 61), (Breaks{5}));
  EXPECT_EQ(GapBreaks(log.points, 8882), Breaks{});
}

TEST(CutBefore, WhatIsBehindAHeadlessLogHasAHeader) {
  TrackLog log = LogOf("", "..");
  log.headless = true;
  log.color = 7;
  const std::vector<TrackLog> parts = CutBefore(log, std::array<std::size_t, 1>{1}, {log});
  ASSERT_EQ(parts.size(), 2U);
  EXPECT_TRUE(parts[0].headless);
  EXPECT_FALSE(parts[1].headless);
  EXPECT_EQ(parts[1].trk_ident, "");
  EXPECT_EQ(parts[1].color, 7);
}

TEST(Reversed, SegmentsStaySegments) {
  EXPECT_EQ(Written(Reversed(LogOf("", "|...|..").points)), "|5 4 |3 2 1");
  EXPECT_EQ(Written(Reversed(LogOf("", "..|.").points)), "3 |2 1");
  EXPECT_EQ(Written(Reversed(Reversed(LogOf("", "|..|.|..").points))), "|1 2 |3 |4 5");
  EXPECT_TRUE(Reversed(std::span<const TrackPoint>()).empty());
}

TEST(Reversed, WaysStayBetweenTheirPoints) {
  std::vector<RoutePoint> points(3);
  for (std::size_t i = 0; i < points.size(); ++i) {
    points[i].waypoint.ident = std::string(1, static_cast<char>('A' + i));
    points[i].link.Set(&RouteLink::ident, std::string(1, static_cast<char>('1' + i)));
  }
  std::string text;
  for (const RoutePoint& point : Reversed(points))
    text += point.waypoint.ident + point.link->ident;
  EXPECT_EQ(text, "C2B1A3");
  EXPECT_TRUE(Reversed(std::span<const RoutePoint>()).empty());
}

}  // namespace
}  // namespace walrim
