// What a map takes of a data set.
#include "window/MapScene.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace walrim {
namespace {

TrackPoint At(double lat_deg, double lon_deg, bool begins = false) {
  TrackPoint point;
  point.lat_deg = lat_deg;
  point.lon_deg = lon_deg;
  point.new_trk = begins;
  return point;
}

Waypoint Place(const std::string& ident, double lat_deg, double lon_deg) {
  Waypoint waypoint;
  waypoint.ident = ident;
  waypoint.lat_deg = lat_deg;
  waypoint.lon_deg = lon_deg;
  return waypoint;
}

DataSet LogOf(const std::vector<TrackPoint>& points) {
  DataSet data;
  EXPECT_EQ(data.Begin(TrackLog{}), AddResult::Stored);
  for (const TrackPoint& point : points)
    EXPECT_EQ(data.Add(point), AddResult::Stored);
  return data;
}

TEST(MapScene, ALogIsItsSegments) {
  const MapScene scene = SceneOf(LogOf({At(35, 139, true), At(35.1, 139), At(36, 139, true), At(36.1, 139)}));
  ASSERT_EQ(scene.logs.size(), 1U);
  ASSERT_EQ(scene.logs[0].parts.size(), 2U);
  EXPECT_EQ(scene.logs[0].parts[1].first_point, 2U);
  EXPECT_EQ(scene.logs[0].parts[1].line.Points(), (std::vector{MercatorOf(36, 139), MercatorOf(36.1, 139)}));
}

TEST(MapScene, APositionThatIsNoneIsNotDrawnAndNoLineLeadsOverIt) {
  const double none = std::numeric_limits<double>::quiet_NaN();
  const MapScene scene = SceneOf(LogOf({At(35, 139), At(180, 180), At(35.2, 139), At(none, 139), At(35.3, 139)}));
  ASSERT_EQ(scene.logs[0].parts.size(), 3U);
  EXPECT_EQ(scene.logs[0].At(0), MercatorOf(35, 139));
  EXPECT_FALSE(scene.logs[0].At(1));
  EXPECT_EQ(scene.logs[0].At(2), MercatorOf(35.2, 139));
  EXPECT_FALSE(scene.logs[0].At(3));
  EXPECT_EQ(scene.logs[0].At(4), MercatorOf(35.3, 139));
  EXPECT_FALSE(scene.logs[0].At(5));
}

TEST(MapScene, AWayOverTheDateLineIsTheShortOne) {
  const MapScene scene = SceneOf(LogOf({At(10, 179.5), At(10, -179.5)}));
  const std::vector<MercatorPoint>& points = scene.logs[0].parts.at(0).line.Points();
  EXPECT_NEAR(points.at(1).x - points.at(0).x, 1.0 / 360, 1e-12);
}

TEST(MapScene, WaypointsThatNeverCameOrLieNowhereAreLeftOut) {
  DataSet data;
  Waypoint missing = Place("GONE", 35, 139);
  missing.missing = true;
  for (const Waypoint& waypoint : {missing, Place("OFF", 91, 139),
                                   Place("HERE\0\0"
                                         "  ",
                                         35, 139)})
    ASSERT_EQ(data.Add(waypoint), AddResult::Stored);
  const MapScene scene = SceneOf(data);
  ASSERT_EQ(scene.waypoints.size(), 1U);
  EXPECT_EQ(scene.waypoints[0].place.record, 2U);
  EXPECT_EQ(scene.waypoints[0].name, "HERE");
}

TEST(MapScene, NamesArePaddedWithZeroCharactersToo) {
  DataSet data;
  ASSERT_EQ(data.Add(Place(std::string("HUT\0\0\0", 6), 35, 139)), AddResult::Stored);
  EXPECT_EQ(SceneOf(data).waypoints.at(0).name, "HUT");
}

TEST(MapScene, RoutesHaveALineAndMarks) {
  DataSet data;
  ASSERT_EQ(data.Begin(Route{}), AddResult::Stored);
  for (const char* name : {"A", "B"}) {
    RoutePoint point;
    point.waypoint = Place(name, 35, 139);
    ASSERT_EQ(data.Add(point), AddResult::Stored);
  }
  const MapScene scene = SceneOf(data);
  EXPECT_EQ(scene.routes.at(0).parts.at(0).line.Points().size(), 2U);
  ASSERT_EQ(scene.route_points.size(), 2U);
  EXPECT_EQ(scene.route_points[1].place, (RecordPlace{0, 1}));
}

TEST(MapScene, BoxesHoldWhatTheyAreOf) {
  DataSet data = LogOf({At(35, 139), At(36, 140)});
  ASSERT_EQ(data.Add(Place("FAR", -35, -70)), AddResult::Stored);
  const MapScene scene = SceneOf(data);
  EXPECT_TRUE(scene.box.Holds(BoxOf(scene, {DataKind::Waypoint, {0, {}}})));
  EXPECT_TRUE(scene.box.Holds(BoxOf(scene, {DataKind::TrackLog, {0, {}}})));
  EXPECT_EQ(BoxOf(scene, {DataKind::TrackLog, {0, 1}}).west, MercatorOf(36, 140).x);
  EXPECT_TRUE(BoxOf(scene, {DataKind::TrackLog, {0, 2}}).Empty());
  EXPECT_TRUE(BoxOf(scene, {DataKind::TrackLog, {1, {}}}).Empty());
  EXPECT_TRUE(BoxOf(scene, {DataKind::Waypoint, {1, {}}}).Empty());
}

TEST(MapScene, ChecksAreTakenOverAlone) {
  DataSet data = LogOf({At(35, 139)});
  ASSERT_EQ(data.Add(Place("A", 35, 139)), AddResult::Stored);
  MapScene scene = SceneOf(data);
  EXPECT_FALSE(TakeChecks(scene, data));
  data.SetChosen(DataKind::TrackLog, 0, false);
  EXPECT_TRUE(TakeChecks(scene, data));
  EXPECT_FALSE(scene.logs[0].chosen);
  EXPECT_TRUE(scene.waypoints[0].chosen);
  EXPECT_FALSE(TakeChecks(scene, data));
}

}  // namespace
}  // namespace walrim
