#include "walks/LogEdits.h"

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
  const auto [first, second] = CutBefore(log, 1, {log, LogOf("DAY-2", "")});
  EXPECT_EQ(first.trk_ident, "DAY");
  EXPECT_EQ(Written(first.points), "|1");
  EXPECT_EQ(second.trk_ident, "DAY-3");
  EXPECT_EQ(Written(second.points), "|2 3");
}

TEST(CutBefore, WhatIsBehindAHeadlessLogHasAHeader) {
  TrackLog log = LogOf("", "..");
  log.headless = true;
  log.color = 7;
  const auto [first, second] = CutBefore(log, 1, {log});
  EXPECT_TRUE(first.headless);
  EXPECT_FALSE(second.headless);
  EXPECT_EQ(second.trk_ident, "");
  EXPECT_EQ(second.color, 7);
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
