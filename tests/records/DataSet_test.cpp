#include "records/DataSet.h"

#include <gtest/gtest.h>

namespace walrim {
namespace {

Waypoint Named(const std::string& ident) {
  Waypoint waypoint;
  waypoint.ident = ident;
  return waypoint;
}

TrackLog HeadlessLog() {
  TrackLog log;
  log.headless = true;
  return log;
}

TEST(DataSet, StartsEmpty) {
  const DataSet data;
  for (const DataKind kind : AllDataKinds) {
    EXPECT_EQ(data.Count(kind), 0U);
    EXPECT_FALSE(data.Holds(kind));
  }
}

TEST(DataSet, TakesWaypointsUpToTheLimit) {
  DataSet data;
  for (std::size_t i = 1; i <= MaxWaypoints; ++i)
    ASSERT_EQ(data.Add(Named(std::to_string(i))), AddResult::Stored);
  EXPECT_EQ(data.Add(Named("MORE")), AddResult::Full);
  EXPECT_EQ(data.Count(DataKind::Waypoint), 1999U);
  EXPECT_EQ(data.Waypoints().back().ident, "1999");
}

TEST(DataSet, TakesRoutesAndTheirPointsUpToTheLimits) {
  DataSet data;
  for (std::size_t i = 0; i < MaxRoutes; ++i)
    ASSERT_EQ(data.Begin(Route{}), AddResult::Stored);
  for (std::size_t i = 0; i < MaxRoutePoints; ++i)
    ASSERT_EQ(data.Add(RoutePoint{}), AddResult::Stored);
  EXPECT_EQ(data.Add(RoutePoint{}), AddResult::Full);
  EXPECT_EQ(data.Begin(Route{}), AddResult::Full);
  EXPECT_EQ(data.Add(RoutePoint{}), AddResult::HeaderRefused) << "it is not the last route's";
  EXPECT_EQ(data.Count(DataKind::Route), 79U);
  EXPECT_EQ(data.Routes().back().points.size(), 100U);
}

TEST(DataSet, TakesLogsAndTheirPointsUpToTheLimits) {
  DataSet data;
  for (std::size_t i = 0; i < MaxTrackLogs; ++i)
    ASSERT_EQ(data.Begin(TrackLog{}), AddResult::Stored);
  for (std::size_t i = 0; i < MaxTrackPoints; ++i)
    ASSERT_EQ(data.Add(TrackPoint{}), AddResult::Stored);
  EXPECT_EQ(data.Add(TrackPoint{}), AddResult::Full);
  EXPECT_EQ(data.Begin(TrackLog{}), AddResult::Full);
  EXPECT_EQ(data.Add(TrackPoint{}), AddResult::HeaderRefused);
  EXPECT_EQ(data.Count(DataKind::TrackLog), 1536U);
  EXPECT_EQ(data.TrackPointCount(), 30000U);
}

TEST(DataSet, PointsBehindEachOtherGoOnInTheSameLog) {
  DataSet data;
  EXPECT_EQ(data.Add(TrackPoint{}), AddResult::NoHeader);
  EXPECT_EQ(data.Add(RoutePoint{}), AddResult::NoHeader);
  ASSERT_EQ(data.Begin(TrackLog{}), AddResult::Stored);
  ASSERT_EQ(data.Add(TrackPoint{}), AddResult::Stored);
  ASSERT_EQ(data.Begin(TrackLog{}), AddResult::Stored);
  ASSERT_EQ(data.Add(TrackPoint{}), AddResult::Stored);
  ASSERT_EQ(data.Add(TrackPoint{}), AddResult::Stored);
  EXPECT_EQ(data.Logs()[0].points.size(), 1U);
  EXPECT_EQ(data.Logs()[1].points.size(), 2U);
}

TEST(DataSet, AHeadlessLogIsFirstAndNotCounted) {
  DataSet data;
  EXPECT_EQ(data.FirstLogNumber(), 1);
  ASSERT_EQ(data.Begin(HeadlessLog()), AddResult::Stored);
  EXPECT_EQ(data.FirstLogNumber(), 0);
  EXPECT_EQ(data.Count(DataKind::TrackLog), 0U);
  EXPECT_TRUE(data.Holds(DataKind::TrackLog));
  for (std::size_t i = 0; i < MaxTrackLogs; ++i)
    ASSERT_EQ(data.Begin(TrackLog{}), AddResult::Stored);
  EXPECT_EQ(data.Begin(TrackLog{}), AddResult::Full);
  EXPECT_EQ(data.Begin(HeadlessLog()), AddResult::Full);
  EXPECT_EQ(data.Count(DataKind::TrackLog), 1536U);
}

TEST(DataSet, ClearEmptiesAKindAndLeavesTheOthers) {
  DataSet data;
  ASSERT_EQ(data.Add(Named("A")), AddResult::Stored);
  ASSERT_EQ(data.Begin(Route{}), AddResult::Stored);
  ASSERT_EQ(data.Begin(TrackLog{}), AddResult::Stored);
  ASSERT_EQ(data.Add(TrackPoint{}), AddResult::Stored);
  data.Clear(DataKind::TrackLog);
  EXPECT_FALSE(data.Holds(DataKind::TrackLog));
  EXPECT_EQ(data.TrackPointCount(), 0U);
  EXPECT_EQ(data.Add(TrackPoint{}), AddResult::NoHeader);
  data.Clear(DataKind::Route);
  EXPECT_EQ(data.Add(RoutePoint{}), AddResult::NoHeader);
  EXPECT_EQ(data.Count(DataKind::Waypoint), 1U);
  data.Clear(DataKind::Waypoint);
  EXPECT_FALSE(data.Holds(DataKind::Waypoint));
}

TEST(DataSet, TakeReplacesAKindAndLeavesTheOtherSetWithoutIt) {
  DataSet data;
  ASSERT_EQ(data.Add(Named("OLD")), AddResult::Stored);
  ASSERT_EQ(data.Begin(TrackLog{}), AddResult::Stored);
  DataSet other;
  ASSERT_EQ(other.Add(Named("NEW")), AddResult::Stored);
  ASSERT_EQ(other.Begin(TrackLog{}), AddResult::Stored);
  ASSERT_EQ(other.Add(TrackPoint{}), AddResult::Stored);
  data.Take(DataKind::Waypoint, other);
  EXPECT_EQ(data.Waypoints().front().ident, "NEW");
  EXPECT_FALSE(other.Holds(DataKind::Waypoint));
  EXPECT_TRUE(other.Holds(DataKind::TrackLog));
  data.Take(DataKind::TrackLog, other);
  EXPECT_EQ(data.TrackPointCount(), 1U);
  EXPECT_EQ(other.TrackPointCount(), 0U);
  EXPECT_EQ(data.Add(TrackPoint{}), AddResult::NoHeader) << "a file's points do not go on in a receiver's log";
}

TEST(Rare, TakesMemoryOnlyForWhatIsUnusual) {
  Rare<WaypointDetails> details;
  details.Set(&WaypointDetails::attr, std::uint8_t{96});
  details.Set(&WaypointDetails::city, std::string());
  EXPECT_EQ(&*details, &*Rare<WaypointDetails>()) << "both are the one usual value";
  details.Set(&WaypointDetails::city, std::string("高尾"));
  EXPECT_EQ(details->city, "高尾");
  EXPECT_EQ(details->attr, 96);
}

TEST(Rare, CopiesAndComparesAsItsValue) {
  Rare<WaypointDetails> details;
  details.Set(&WaypointDetails::city, std::string("A"));
  Rare<WaypointDetails> copy = details;
  EXPECT_EQ(copy, details);
  copy.Set(&WaypointDetails::city, std::string("B"));
  EXPECT_EQ(details->city, "A");
  EXPECT_NE(copy, details);
  copy.Set(&WaypointDetails::city, std::string());
  EXPECT_EQ(copy, Rare<WaypointDetails>());
}

}  // namespace
}  // namespace walrim
