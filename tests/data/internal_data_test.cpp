#include <gtest/gtest.h>
#include <stdexcept>

#include "data/InternalData.h"
#include "support.h"

namespace walrim {
namespace {

class InternalDataTest : public ::testing::Test {
 protected:
  const std::unique_ptr<InternalData> owner_ = std::make_unique<InternalData>();
  InternalData& data_ = *owner_;
};

TEST_F(InternalDataTest, StartsEmpty) {
  for (const DataKind kind : AllDataKinds)
    EXPECT_EQ(data_.Count(kind), 0);
  EXPECT_EQ(data_.CurrentWaypointType, WaypointType::D108);
  EXPECT_EQ(data_.d104[1].smbl, 18);
  EXPECT_EQ(data_.d108[1].subclass, NoSubclass);
}

TEST_F(InternalDataTest, WaypointsAreAppendedInAllFourLayouts) {
  WaypointRecord record = Waypoint("abc");
  record[WaypointField::smbl] = "10";
  EXPECT_EQ(data_.AddWaypoint(record), 1);
  EXPECT_EQ(data_.AddWaypoint(Waypoint("def")), 2);
  EXPECT_EQ(data_.WaypointCount, 2);
  EXPECT_EQ(data_.WaypointHighWater, 2);
  EXPECT_EQ(data_.d103[1].ident.Padded(), std::string("ABC\0  ", 6));
  EXPECT_EQ(data_.d104[1].ident.Padded(), std::string("ABC\0  ", 6));
  EXPECT_EQ(data_.d107[1].ident.Padded(), "ABC   ");
  EXPECT_EQ(data_.d108[1].ident, "ABC") << "an add puts the ident in upper case";
  EXPECT_EQ(data_.d103[1].lat_deg, 35.5);
  EXPECT_EQ(data_.d104[1].lon_deg, 135.25);
  EXPECT_EQ(data_.d107[1].smbl, 10);
  EXPECT_EQ(data_.d108[1].smbl, 10);
}

TEST_F(InternalDataTest, AnEmptySymbolGivesD104TheDot) {
  EXPECT_EQ(data_.AddWaypoint(Waypoint("A")), 1);
  EXPECT_EQ(data_.d104[1].smbl, 18);
  EXPECT_EQ(data_.d103[1].smbl, 0);
  EXPECT_EQ(data_.d107[1].smbl, 0);
  EXPECT_EQ(data_.d108[1].smbl, 0);
}

TEST_F(InternalDataTest, TheUserAreaEndsAt1999) {
  for (int i = 1; i < MaxWaypoints; ++i)
    ASSERT_EQ(data_.AddWaypoint(Waypoint("W")), i);
  EXPECT_EQ(data_.AddWaypoint(Waypoint("LAST")), 1999);
  EXPECT_EQ(data_.AddWaypoint(Waypoint("MORE")), AddRejected);
  EXPECT_EQ(data_.WaypointCount, 1999);
  EXPECT_EQ(data_.d108[1999].ident, "LAST");
  EXPECT_EQ(data_.d108[2000].ident, "");
}

TEST_F(InternalDataTest, OnlySlotsOfWaypointsAreTaken) {
  for (const int slot : {0, -1, 2000, 10000, -2147483647, 2147483647}) {
    EXPECT_EQ(data_.AddWaypoint(Waypoint("X"), slot), AddRejected) << slot;
  }
  EXPECT_EQ(data_.WaypointCount, 0);
  EXPECT_EQ(data_.AddWaypoint(Waypoint("X"), 2001), 2001);
  EXPECT_EQ(data_.AddWaypoint(Waypoint("X"), 9999), 9999);
}

TEST_F(InternalDataTest, AnAddIntoAnOldSlotKeepsTheCount) {
  for (int i = 0; i < 10; ++i)
    (void)data_.AddWaypoint(Waypoint("W"));
  EXPECT_EQ(data_.AddWaypoint(Waypoint("NEW"), 5), 5);
  EXPECT_EQ(data_.WaypointCount, 10);
  EXPECT_EQ(data_.d108[5].ident, "NEW");
}

TEST_F(InternalDataTest, AnAddIntoAFarSlotRaisesTheCount) {
  EXPECT_EQ(data_.AddWaypoint(Waypoint("W"), 100), 100);
  EXPECT_EQ(data_.WaypointCount, 100);
  EXPECT_EQ(data_.WaypointHighWater, 100);
  EXPECT_EQ(data_.AddWaypoint(Waypoint("W")), 101);
}

TEST_F(InternalDataTest, RoutePointsLeaveTheWaypointCountersAlone) {
  EXPECT_EQ(data_.AddRoutePoint({Waypoint("P"), {}}, 2, 3), 3);
  EXPECT_EQ(data_.AddWaypoint(Waypoint("Q"), 2100), 2100);
  EXPECT_EQ(data_.WaypointCount, 0);
  EXPECT_EQ(data_.WaypointHighWater, 0);
  EXPECT_EQ(data_.d103[2203].ident.Bare(), std::string("P\0", 2));
}

TEST_F(InternalDataTest, RouteHeadersAreAppended) {
  EXPECT_EQ(data_.AddRouteHeader(Route("mountain walk", "12", "3")), 1);
  EXPECT_EQ(data_.routes.RouteCount, 1);
  EXPECT_EQ(data_.routes.RoutePointCount[1], 12);
  EXPECT_EQ(data_.routes.first_point[1], 0);
  EXPECT_EQ(data_.d201[1].nmbr, 3);
  EXPECT_EQ(data_.d201[1].cmnt.Padded(), "MOUNTAIN WALK       ");
  EXPECT_EQ(data_.d202[1].rte_ident, "MOUNTAIN WALK");
  EXPECT_FALSE(data_.route_from_d201[1]);
  EXPECT_EQ(data_.mirrored_routes.RouteCount, 1);
  EXPECT_EQ(data_.mirrored_routes.RoutePointCount[1], 12);
}

TEST_F(InternalDataTest, RouteNumbersAreOneTo79) {
  EXPECT_EQ(data_.AddRouteHeader(Route("A"), 0), AddRejected);
  EXPECT_EQ(data_.AddRouteHeader(Route("A"), -5), AddRejected);
  EXPECT_EQ(data_.AddRouteHeader(Route("A"), 80), AddRejected);
  EXPECT_EQ(data_.mirrored_routes.RouteCount, 0);
  EXPECT_EQ(data_.AddRouteHeader(Route("A"), 79), 79);
  EXPECT_EQ(data_.AddRouteHeader(Route("A")), AddRejected);
  EXPECT_EQ(data_.AddRouteHeader(Route("B"), 4), 4);
  EXPECT_EQ(data_.routes.RouteCount, 79);
}

TEST_F(InternalDataTest, HostileHeaderNumbersAreKeptInRange) {
  EXPECT_EQ(data_.AddRouteHeader(Route("A", "1E+300", "99999")), 1);
  EXPECT_EQ(data_.routes.RoutePointCount[1], 100);
  EXPECT_EQ(data_.d201[1].nmbr, 255);
  EXPECT_EQ(data_.AddRouteHeader(Route("A", "-4", "-1")), 2);
  EXPECT_EQ(data_.routes.RoutePointCount[2], 0);
  EXPECT_EQ(data_.d201[2].nmbr, 0);
  EXPECT_EQ(data_.AddTrackHeader(Track("A", "1E+300")), 1);
  EXPECT_EQ(data_.tracks.TrackPointCount[1], 30000);
  EXPECT_EQ(data_.AddTrackHeader(Track("B", "-1")), 2);
  EXPECT_EQ(data_.tracks.TrackPointCount[2], 0);
}

TEST_F(InternalDataTest, ALongCommentIsCutForTheOldHeaderAlone) {
  EXPECT_EQ(data_.AddRouteHeader(Route("富士山から山中湖まで歩く")), 1);
  EXPECT_EQ(data_.d201[1].cmnt.Padded(), "富士山から山中湖まで");
  EXPECT_EQ(data_.d202[1].rte_ident, "富士山から山中湖まで歩く");
}

TEST_F(InternalDataTest, RoutePointsStayInTheirTable) {
  for (const auto& [route, point] : {std::pair{-1, 0}, {80, 0}, {1, -1}, {1, 100}, {2147483647, 2147483647}}) {
    EXPECT_EQ(data_.AddRoutePoint({Waypoint("X"), {}}, route, point), AddRejected) << route << " " << point;
  }
  EXPECT_EQ(data_.AddRoutePoint({Waypoint("FIRST"), {}}, 0, 0), 0);
  EXPECT_EQ(data_.AddRoutePoint({Waypoint("FINAL"), {}}, 79, 99), 99);
  EXPECT_EQ(data_.d108[2000].ident, "FIRST");
  EXPECT_EQ(data_.d108[9999].ident, "FINAL");
  EXPECT_THROW((void)LinkSlot(80, 0), std::out_of_range);
  EXPECT_THROW((void)LinkSlot(1, 100), std::out_of_range);
  EXPECT_EQ(LinkSlot(79, 99), 7999U);
}

TEST_F(InternalDataTest, LinksTakeTheirDefaultsFromEmptyTexts) {
  RoutePoint point{Waypoint("P"), {}};
  point.link[LinkField::link_class] = "3";
  point.link[LinkSubclassField(0)] = "9";
  point.link[LinkSubclassField(17)] = "8";
  point.link[LinkField::ident] = "path";
  EXPECT_EQ(data_.AddRoutePoint(point, 1, 0), 0);
  const D210Entry& link = data_.d210[LinkSlot(1, 0)];
  EXPECT_EQ(link.link_class, 3);
  EXPECT_EQ(link.subclass, (Subclass{9, 0, 0, 0, 0, 0, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 8}));
  EXPECT_EQ(link.ident, "path");
}

TEST_F(InternalDataTest, TrackLogsFollowEachOther) {
  EXPECT_EQ(data_.AddTrackHeader(Track("one", "3")), 1);
  EXPECT_EQ(data_.AddTrackHeader(Track("two", "4", "false")), 2);
  EXPECT_EQ(data_.AddTrackHeader(Track("three", "5", "")), 3);
  EXPECT_EQ(data_.tracks.TrackStart[1], 0);
  EXPECT_EQ(data_.tracks.TrackStart[2], 3);
  EXPECT_EQ(data_.tracks.TrackStart[3], 7);
  EXPECT_EQ(data_.d310[1].trk_ident, "ONE");
  EXPECT_TRUE(data_.d310[1].dspl);
  EXPECT_FALSE(data_.d310[2].dspl);
  EXPECT_TRUE(data_.d310[3].dspl) << "an empty text shows the log";
  EXPECT_EQ(data_.d310[1].color, 7);
  EXPECT_EQ(data_.mirrored_tracks.TrackCount, 3);
  EXPECT_EQ(data_.mirrored_tracks.TrackStart[3], 7);
}

TEST_F(InternalDataTest, TrackNumbersAreOneTo1536) {
  EXPECT_EQ(data_.AddTrackHeader(Track("A"), 0), AddRejected);
  EXPECT_EQ(data_.AddTrackHeader(Track("A"), 1537), AddRejected);
  EXPECT_EQ(data_.AddTrackHeader(Track("A"), 1536), 1536);
  EXPECT_EQ(data_.AddTrackHeader(Track("A")), AddRejected);
}

TEST_F(InternalDataTest, TrackPointsUseTheSlotsTo29999) {
  ASSERT_EQ(data_.AddTrackHeader(Track("A", "29999")), 1);
  EXPECT_EQ(data_.AddTrackPoint(PointAt(1, 2), 1, 29999), 29999);
  EXPECT_EQ(data_.AddTrackPoint(PointAt(1, 2), 1, 30000), AddRejected);
  ASSERT_EQ(data_.AddTrackHeader(Track("B")), 2);
  EXPECT_EQ(data_.AddTrackPoint(PointAt(3, 4), 2, 0), 0);
  EXPECT_EQ(data_.AddTrackPoint(PointAt(3, 4), 2, 1), AddRejected);
  EXPECT_EQ(data_.track_points[29999].lat_deg, 3);
  for (const int log : {0, -1, 1537, 2147483647})
    EXPECT_EQ(data_.AddTrackPoint(PointAt(1, 2), log, 0), AddRejected);
  EXPECT_EQ(data_.AddTrackPoint(PointAt(1, 2), 1, -1), AddRejected);
  EXPECT_EQ(data_.AddTrackPoint(PointAt(1, 2), 1, 2147483647), AddRejected);
}

TEST_F(InternalDataTest, TrackPointsInTextFormBothWays) {
  ASSERT_EQ(data_.AddTrackHeader(Track("A", "1")), 1);
  TrackPoint point;
  point[TrackPointField::lat] = "35.123456789012345";
  point[TrackPointField::lon] = "-135.5";
  point[TrackPointField::time] = "354000000";
  point[TrackPointField::new_trk] = "true";
  point[TrackPointField::alt] = "123.4";
  point[TrackPointField::dpth] = "1E+25";
  EXPECT_EQ(data_.AddTrackPoint(point, 1, 0), 0);
  TrackPoint read;
  data_.GetTrackPoint(1, 0, read);
  EXPECT_EQ(read[TrackPointField::lat], "35.123456789012344");
  EXPECT_EQ(read[TrackPointField::lon], "-135.5");
  EXPECT_EQ(read[TrackPointField::time], "354000000");
  EXPECT_EQ(read[TrackPointField::new_trk], "TRUE");
  EXPECT_EQ(read[TrackPointField::alt], "123.4");
  EXPECT_EQ(read[TrackPointField::dpth], "1E+25");
  EXPECT_THROW(data_.GetTrackPoint(1, 30000, read), std::out_of_range);
  EXPECT_THROW(data_.GetTrackPoint(1, -1, read), std::out_of_range);
  EXPECT_THROW(data_.GetTrackPoint(1537, 0, read), std::out_of_range);
}

TEST_F(InternalDataTest, ClearingWaypointsKeepsRoutePoints) {
  (void)data_.AddWaypoint(Waypoint("USER"));
  (void)data_.AddRoutePoint({Waypoint("POINT"), {}}, 1, 0);
  data_.ClearAllWaypoints();
  EXPECT_EQ(data_.WaypointCount, 0);
  EXPECT_EQ(data_.WaypointHighWater, 0);
  EXPECT_EQ(data_.d103[1].ident.Padded(), "      ");
  EXPECT_EQ(data_.d103[1].cmnt.Padded(), std::string(40, ' '));
  EXPECT_EQ(data_.d104[1].smbl, 18);
  EXPECT_EQ(data_.d107[1].lat_deg, 0);
  EXPECT_EQ(data_.d108[1].ident, "");
  EXPECT_EQ(data_.d108[2100].ident, "POINT");
  EXPECT_EQ(data_.d107[2100].ident.Bare(), "POINT");
}

TEST_F(InternalDataTest, ClearingOneTypeIsThatTypeAlone) {
  (void)data_.AddWaypoint(Waypoint("A"));
  data_.ClearWaypoints("d104");
  EXPECT_EQ(data_.d104[1].ident.Bare(), "");
  EXPECT_EQ(data_.d108[1].ident, "A");
  EXPECT_EQ(data_.WaypointCount, 0);

  data_.ClearWaypoints();
  EXPECT_EQ(data_.d108[1].ident, "") << "an empty name is the type in force";
}

TEST_F(InternalDataTest, AnUnknownTypeClearsNothing) {
  (void)data_.AddWaypoint(Waypoint("A"));
  data_.ClearWaypoints("D109");
  EXPECT_EQ(data_.WaypointCount, 1);
  EXPECT_EQ(data_.d108[1].ident, "A");
}

TEST_F(InternalDataTest, ClearingRoutesResetsEverythingOfThem) {
  (void)data_.AddWaypoint(Waypoint("USER"));
  (void)data_.AddRouteHeader(Route("R", "1"));
  RoutePoint point{Waypoint("P"), {}};
  point.link[LinkField::ident] = "L";
  (void)data_.AddRoutePoint(point, 1, 0);
  data_.SpreadRouteHeader(1, true);
  data_.Clear(DataKind::Route);
  for (const RouteCounters& counters : {data_.routes, data_.mirrored_routes}) {
    EXPECT_EQ(counters.RouteCount, 0);
    EXPECT_EQ(counters.RoutePointCount[1], 0);
  }
  EXPECT_EQ(data_.d201[1].cmnt.Bare(), "");
  EXPECT_EQ(data_.d202[1].rte_ident, "");
  EXPECT_EQ(data_.d210[LinkSlot(1, 0)].ident, "");
  EXPECT_FALSE(data_.route_from_d201[1]);
  EXPECT_EQ(data_.d103[2100].ident.Bare(), "");
  EXPECT_EQ(data_.d104[2100].ident.Bare(), "");
  EXPECT_EQ(data_.d107[2100].ident.Bare(), "");
  EXPECT_EQ(data_.d108[2100].ident, "");
  EXPECT_EQ(data_.d108[1].ident, "USER");
}

TEST_F(InternalDataTest, ClearingTracksResetsEverythingOfThem) {
  (void)data_.AddTrackHeader(Track("A", "1"));
  (void)data_.AddTrackPoint(PointAt(1, 2), 1, 0);
  data_.Clear(DataKind::TrackLog);
  EXPECT_EQ(data_.tracks.TrackCount, 0);
  EXPECT_EQ(data_.mirrored_tracks.TrackCount, 0);
  EXPECT_EQ(data_.tracks.TrackPointCount[1], 0);
  EXPECT_EQ(data_.d310[1].trk_ident, "");
  EXPECT_EQ(data_.track_points[0].lat_deg, 0);
}

TEST_F(InternalDataTest, IndicesOutsideTheStoresThrow) {
  EXPECT_THROW((void)data_.GetWaypoint(-1), std::out_of_range);
  EXPECT_THROW((void)data_.GetWaypoint(10000), std::out_of_range);
  EXPECT_THROW((void)data_.GetRouteHeader(80), std::out_of_range);
  EXPECT_THROW((void)data_.GetRoutePoint(1, 100), std::out_of_range);
  EXPECT_THROW((void)data_.GetTrackHeader(1537), std::out_of_range);
  EXPECT_THROW(data_.SpreadWaypoint(10000, WaypointType::D103), std::out_of_range);
  EXPECT_THROW(data_.SpreadRouteHeader(80, true), std::out_of_range);
}

TEST_F(InternalDataTest, ANamedPointIsThatOfTheTextForm) {
  WaypointRecord record = Waypoint("ab", "35.1", "-0.25");
  record[WaypointField::cmnt] = "Hut";
  ASSERT_EQ(data_.AddWaypoint(record), 1);
  for (const WaypointType type : {WaypointType::D103, WaypointType::D104, WaypointType::D107, WaypointType::D108}) {
    data_.waypoint_origin[1] = type;
    const NamedPoint point = data_.GetNamedPoint(1);
    record = data_.GetWaypoint(1);
    EXPECT_EQ(point.ident, record[WaypointField::ident]) << WaypointTypeName(type);
    EXPECT_EQ(point.cmnt, record[WaypointField::cmnt]) << WaypointTypeName(type);
    EXPECT_EQ(point.lat_deg, 35.1);
    EXPECT_EQ(point.lon_deg, -0.25);
  }
  EXPECT_EQ(data_.GetNamedPoint(1).ident, "AB");
}

TEST_F(InternalDataTest, ANamedPointLeavesNoZerosInTheEntry) {
  data_.d103[1].ident.Set(std::string_view("A\0B", 3));
  data_.waypoint_origin[1] = WaypointType::D103;
  EXPECT_EQ(data_.GetNamedPoint(1).ident, "A B   ");
  EXPECT_EQ(data_.d103[1].ident.Bare(), "A B");
}

TEST_F(InternalDataTest, NamedPointsOfRoutesLieInTheirSlots) {
  ASSERT_EQ(data_.AddRouteHeader(Route("A")), 1);
  RoutePoint point;
  point.waypoint = Waypoint("stop");
  ASSERT_EQ(data_.AddRoutePoint(point, 1, 7), 7);
  EXPECT_EQ(data_.GetNamedPoint(1, 7).ident, "STOP");
  EXPECT_THROW((void)data_.GetNamedPoint(1, 100), std::out_of_range);
  EXPECT_THROW((void)data_.GetNamedPoint(80, 0), std::out_of_range);
  EXPECT_THROW((void)data_.GetNamedPoint(10000), std::out_of_range);
}

TEST_F(InternalDataTest, RouteHeadersInTextForm) {
  (void)data_.AddRouteHeader(Route("a walk of more than twenty characters", "2", "5"));
  RouteHeader header = data_.GetRouteHeader(1);
  EXPECT_EQ(header[RouteHeaderField::nmbr], "5");
  EXPECT_EQ(header[RouteHeaderField::cmnt], "A WALK OF MORE THAN TWENTY CHARACTERS");
  EXPECT_EQ(header[RouteHeaderField::rte_wpt_num], "2");
}

TEST_F(InternalDataTest, ADownloadedNumberedHeaderShowsItsOwnComment) {
  data_.d201[2].nmbr = 7;
  data_.d201[2].cmnt.Set(std::string("LAKE\0\0", 6));
  data_.SpreadRouteHeader(2, true);
  EXPECT_EQ(data_.d202[2].rte_ident, "LAKE");
  const RouteHeader header = data_.GetRouteHeader(2);
  EXPECT_EQ(header[RouteHeaderField::nmbr], "7");
  EXPECT_EQ(header[RouteHeaderField::cmnt], "LAKE                ");
  EXPECT_EQ(data_.d201[2].cmnt.Bare(), "LAKE") << "zeros became blanks in the entry too";
}

TEST_F(InternalDataTest, ADownloadedNamedHeaderGetsItsNumber) {
  data_.d202[3].rte_ident = "to the Hut and back again, 2001";
  data_.SpreadRouteHeader(3, false);
  EXPECT_EQ(data_.d201[3].nmbr, 3);
  EXPECT_EQ(data_.d201[3].cmnt.Padded(), "TO THE HUT AND BACK ");
  EXPECT_EQ(data_.GetRouteHeader(3)[RouteHeaderField::cmnt], "to the Hut and back again, 2001");
}

TEST_F(InternalDataTest, PointsOfANumberedRouteHaveNoLinks) {
  RoutePoint point{Waypoint("P"), {}};
  point.link[LinkField::ident] = "L";
  (void)data_.AddRouteHeader(Route("R", "1"));
  (void)data_.AddRoutePoint(point, 1, 0);
  EXPECT_EQ(data_.GetRoutePoint(1, 0).link[LinkField::ident], "L");
  EXPECT_EQ(data_.GetRoutePoint(1, 0).link[LinkSubclassField(17)], "255");
  data_.SpreadRouteHeader(1, true);
  EXPECT_EQ(data_.GetRoutePoint(1, 0).link, LinkRecord());
}

TEST(WaypointTypes, AreNamedInAnyCase) {
  EXPECT_EQ(WaypointTypeOfName("d108"), WaypointType::D108);
  EXPECT_EQ(WaypointTypeOfName("D103"), WaypointType::D103);
  EXPECT_FALSE(WaypointTypeOfName("D109"));
  EXPECT_FALSE(WaypointTypeOfName(""));
}

}  // namespace
}  // namespace walrim
