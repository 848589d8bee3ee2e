#include "records/DataChanges.h"

#include <gtest/gtest.h>
#include <memory>

#include "records/DataSet.h"

namespace walrim {
namespace {

Waypoint Named(const std::string& ident) {
  Waypoint waypoint;
  waypoint.ident = ident;
  return waypoint;
}

RoutePoint RoutePointNamed(const std::string& ident) {
  return {Named(ident), {}};
}

TrackPoint At(double lat_deg) {
  TrackPoint point;
  point.lat_deg = lat_deg;
  return point;
}

TrackLog LogNamed(const std::string& name) {
  TrackLog log;
  log.trk_ident = name;
  return log;
}

/// The contents of a data set.
struct Contents {
  explicit Contents(const DataSet& data)
      : waypoints(data.Waypoints()),
        routes(data.Routes()),
        logs(data.Logs()),
        points(data.TrackPointCount()),
        next_route_point(data.NextRoutePoint()),
        next_track_point(data.NextTrackPoint()) {}

  std::vector<Waypoint> waypoints;
  std::vector<Route> routes;
  std::vector<TrackLog> logs;
  std::size_t points;
  AddResult next_route_point;
  AddResult next_track_point;

  friend bool operator==(const Contents&, const Contents&) = default;
};

class DataChangesTest : public testing::Test {
 protected:
  DataChangesTest() {
    for (const char* ident : {"A", "B", "C"})
      Add(Named(ident));
    Begin(Route{RouteHeaderType::D202, 1, "R", {}});
    for (const char* ident : {"P", "Q", "R"})
      Add(RoutePointNamed(ident));
    Begin(LogNamed("ONE"));
    for (const double lat_deg : {1.0, 2.0, 3.0})
      Add(At(lat_deg));
    data.KeepChanges();
  }

  template <typename Record>
  void Add(Record record) {
    ASSERT_EQ(data.Add(std::move(record)), AddResult::Stored);
  }
  template <typename Record>
  void Begin(Record record) {
    ASSERT_EQ(data.Begin(std::move(record)), AddResult::Stored);
  }
  /// What was done since the test began is undone, and redone, twice.
  void ExpectComesBack(const Contents& before) {
    const Contents after(data);
    EXPECT_FALSE(after == before);
    DataChanges changes = data.TakeChanges();
    for (int i = 0; i < 2; ++i) {
      data.Exchange(changes);
      EXPECT_TRUE(Contents(data) == before);
      data.Exchange(changes);
      EXPECT_TRUE(Contents(data) == after);
    }
    EXPECT_TRUE(data.TakeChanges().Empty());
  }

  DataSet data;
};

TEST_F(DataChangesTest, TakesAdditionsBack) {
  const Contents before(data);
  Add(At(4));
  Add(RoutePointNamed("S"));
  Add(Named("D"));
  Begin(Route{RouteHeaderType::D202, 2, "R2", {}});
  Add(RoutePointNamed("T"));
  Begin(LogNamed("TWO"));
  Add(At(5));
  const ConcernedRecords concerned = data.Concerned();
  EXPECT_EQ(concerned.records, (std::array<std::size_t, DataKindCount>{1, 1, 1}));
  ExpectComesBack(before);
}

TEST_F(DataChangesTest, TakesAdditionsToNothingBack) {
  for (const DataKind kind : AllDataKinds)
    data.Clear(kind);
  static_cast<void>(data.TakeChanges());
  const Contents before(data);
  Add(Named("D"));
  Begin(Route{});
  Add(RoutePointNamed("T"));
  Begin(TrackLog{});
  Add(At(5));
  ExpectComesBack(before);
}

TEST_F(DataChangesTest, TakesEditsBack) {
  const Contents before(data);
  EXPECT_TRUE(data.Edit(Replacement(1, Named("NEW"))));
  EXPECT_TRUE(data.Edit(Erasure<Waypoint>({0, 2})));
  EXPECT_TRUE(data.Edit(Move(data.Routes()[0].points, 0, 2)));
  EXPECT_TRUE(data.EditHeader(0, Route{RouteHeaderType::D201, 7, "OTHER", {}}));
  EXPECT_EQ(data.Routes()[0].points.size(), 3U);
  EXPECT_TRUE(data.Edit(Erasure<TrackPoint>({0, 2})));
  EXPECT_EQ(data.TrackPointCount(), 1U);
  EXPECT_TRUE(data.EditHeader(0, LogNamed("OTHER")));
  EXPECT_TRUE(data.Edit(Insertion<TrackLog>(0, {LogNamed("FIRST")})));
  EXPECT_TRUE(data.Edit(Replacement(0, At(9), 1)));
  EXPECT_EQ(data.Logs()[1].points[0].lat_deg, 9);
  ExpectComesBack(before);
}

TEST_F(DataChangesTest, TakesEmptiedAndReplacedKindsBack) {
  const Contents before(data);
  DataSet other;
  ASSERT_EQ(other.Begin(LogNamed("OTHER")), AddResult::Stored);
  ASSERT_EQ(other.Add(At(8)), AddResult::Stored);
  data.Take(DataKind::TrackLog, other);
  EXPECT_EQ(data.TrackPointCount(), 1U);
  EXPECT_EQ(other.TrackPointCount(), 0U);
  data.Clear(DataKind::Waypoint);
  data.Clear(DataKind::Route);
  EXPECT_EQ(data.NextTrackPoint(), AddResult::NoHeader);
  EXPECT_EQ(data.Concerned().records, (std::array<std::size_t, DataKindCount>{3, 1, 1}));
  ExpectComesBack(before);
}

TEST_F(DataChangesTest, TakesMixedChangesBack) {
  const Contents before(data);
  Add(Named("D"));
  EXPECT_TRUE(data.Edit(Erasure<Waypoint>({0, 3})));
  Add(Named("E"));
  Add(At(4));
  data.Clear(DataKind::TrackLog);
  Begin(LogNamed("NEXT"));
  Add(At(5));
  EXPECT_TRUE(data.Edit(Erasure<TrackLog>({0})));
  EXPECT_EQ(data.NextTrackPoint(), AddResult::NoHeader) << "it would go to a log that it does not belong to";
  ExpectComesBack(before);
}

TEST_F(DataChangesTest, RefusesEditsBeyondTheLimits) {
  const Contents before(data);
  EXPECT_FALSE(data.Edit(Replacement(3, Named("X")))) << "there is none";
  EXPECT_FALSE(data.Edit(Insertion<Waypoint>(0, std::vector<Waypoint>(MaxWaypoints - 2))));
  EXPECT_FALSE(data.Edit(Insertion<Route>(0, std::vector<Route>(MaxRoutes))));
  EXPECT_FALSE(data.Edit(Insertion<TrackLog>(0, std::vector<TrackLog>(MaxTrackLogs))));
  EXPECT_FALSE(data.Edit(Insertion<RoutePoint>(0, std::vector<RoutePoint>(MaxRoutePoints - 2))));
  EXPECT_FALSE(data.Edit(Insertion<TrackPoint>(0, std::vector<TrackPoint>(MaxTrackPoints - 2))));
  EXPECT_FALSE(data.Edit(Insertion<RoutePoint>(0, {RoutePointNamed("X")}, 1))) << "no such route";
  EXPECT_FALSE(data.Edit(Insertion<TrackPoint>(0, {At(1)}, 1))) << "no such log";
  EXPECT_FALSE(data.EditHeader(1, Route{}));
  TrackLog headless;
  headless.headless = true;
  EXPECT_FALSE(data.Edit(Insertion<TrackLog>(1, {headless}))) << "only the first may be";
  EXPECT_TRUE(Contents(data) == before);
  EXPECT_TRUE(data.TakeChanges().Empty());
  EXPECT_TRUE(data.Edit(Insertion<Waypoint>(0, std::vector<Waypoint>(MaxWaypoints - 3))));
  EXPECT_TRUE(data.Edit(Insertion<TrackLog>(0, {headless})));
}

TEST_F(DataChangesTest, WhatChangesNothingLeavesNoTrace) {
  EXPECT_TRUE(data.Edit(Replacement(1, Named("B"))));
  EXPECT_TRUE(data.EditHeader(0, LogNamed("ONE")));
  EXPECT_EQ(data.Logs()[0].points.size(), 3U);
  EXPECT_TRUE(data.Edit(Erasure<Waypoint>({})));
  data.Clear(DataKind::Waypoint);
  EXPECT_FALSE(data.TakeChanges().Empty());
  data.Clear(DataKind::Waypoint);
  EXPECT_TRUE(data.TakeChanges().Empty());
}

TEST(DataChanges, ScratchDataSetsKeepNone) {
  DataSet data;
  ASSERT_EQ(data.Add(Named("A")), AddResult::Stored);
  data.Clear(DataKind::Waypoint);
  EXPECT_TRUE(data.TakeChanges().Empty());
}

}  // namespace
}  // namespace walrim
