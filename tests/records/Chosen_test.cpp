#include "records/Chosen.h"

#include <gtest/gtest.h>
#include <string>

namespace walrim {
namespace {

constexpr DataKind Kinds[] = {DataKind::Waypoint, DataKind::Route, DataKind::TrackLog};

/// Three records of each kind, A to C; the routes and logs have 1 to 3 points. In front of the logs is a headless one.
DataSet Threes() {
  DataSet data;
  EXPECT_EQ(data.Begin(TrackLog{true, true, 255, "", {}}), AddResult::Stored);
  EXPECT_EQ(data.Add(TrackPoint{}), AddResult::Stored);
  std::size_t points = 0;
  for (const char* name : {"A", "B", "C"}) {
    Waypoint waypoint;
    waypoint.ident = name;
    EXPECT_EQ(data.Add(waypoint), AddResult::Stored);
    EXPECT_EQ(data.Begin(Route{RouteHeaderType::D202, 1, name, {}}), AddResult::Stored);
    EXPECT_EQ(data.Begin(TrackLog{false, true, 255, name, {}}), AddResult::Stored);
    ++points;
    for (std::size_t i = 0; i < points; ++i) {
      EXPECT_EQ(data.Add(RoutePoint{}), AddResult::Stored);
      EXPECT_EQ(data.Add(TrackPoint{}), AddResult::Stored);
    }
  }
  return data;
}

/// "ABC A1B2C3 -1A1B2C3": names, and numbers of points.
std::string Held(const DataSet& data) {
  std::string text;
  for (const Waypoint& waypoint : data.Waypoints())
    text += waypoint.ident;
  text += ' ';
  for (const Route& route : data.Routes())
    text += route.cmnt + std::to_string(route.points.size());
  text += ' ';
  for (const TrackLog& log : data.Logs())
    text += (log.headless ? "-" : log.trk_ident) + std::to_string(log.points.size());
  return text;
}

TEST(Chosen, EveryRecordIsAtFirst) {
  const DataSet data = Threes();
  for (const DataKind kind : Kinds) {
    EXPECT_TRUE(AllChosen(data, kind));
    EXPECT_FALSE(NoneChosen(data, kind));
  }
  EXPECT_EQ(RecordCount(data, DataKind::Waypoint), 3U);
  EXPECT_EQ(ChosenCount(data, DataKind::TrackLog), 4U);
}

TEST(Chosen, WithEverythingCheckedNothingIsCopied) {
  const DataSet data = Threes();
  const ChosenData chosen(data);
  EXPECT_EQ(&*chosen, &data);
}

TEST(Chosen, APartHasTheCheckedRecordsInTheirOrder) {
  DataSet data = Threes();
  data.SetChosen(DataKind::Waypoint, 1, false);
  data.SetChosen(DataKind::Route, 0, false);
  data.SetChosen(DataKind::TrackLog, 2, false);
  EXPECT_EQ(Held(*ChosenData(data)), "AC B2C3 -1A1C3");
  EXPECT_EQ((*ChosenData(data)).TrackPointCount(), 5U);
  EXPECT_EQ(ChosenIndices(data, DataKind::TrackLog), (std::vector<std::size_t>{0, 1, 3}));
  EXPECT_EQ(Held(data), "ABC A1B2C3 -1A1B2C3");
}

TEST(Chosen, WhatIsTakenAwayIsWhatWasChecked) {
  DataSet data = Threes();
  data.SetChosen(DataKind::Waypoint, 1, false);
  data.SetChosen(DataKind::Route, 0, false);
  data.SetChosen(DataKind::TrackLog, 2, false);
  for (const DataKind kind : Kinds)
    RemoveChosen(data, kind);
  EXPECT_EQ(Held(data), "B A1 B2");
  EXPECT_EQ(data.TrackPointCount(), 2U);
  for (const DataKind kind : Kinds)
    EXPECT_TRUE(NoneChosen(data, kind));
  EXPECT_EQ(data.NextTrackPoint(), AddResult::NoHeader);
}

TEST(Chosen, AnEmptyKindIsBothAllAndNotNone) {
  const DataSet data;
  EXPECT_TRUE(AllChosen(data, DataKind::Route));
  EXPECT_FALSE(NoneChosen(data, DataKind::Route));
}

TEST(Chosen, AllCanBeCheckedAndUnchecked) {
  DataSet data = Threes();
  SetAllChosen(data, DataKind::TrackLog, false);
  EXPECT_TRUE(NoneChosen(data, DataKind::TrackLog));
  EXPECT_TRUE(AllChosen(data, DataKind::Route));
  SetAllChosen(data, DataKind::TrackLog, true);
  EXPECT_TRUE(AllChosen(data, DataKind::TrackLog));
}

}  // namespace
}  // namespace walrim
