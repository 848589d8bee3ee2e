#include "receiver/DemoContents.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <set>

#include "receiver/ReceiverMemory.h"
#include "receiver/WireBytes.h"
#include "text/Cp932.h"
#include "text/Dates.h"
#include "text/Utf8.h"

namespace walrim {
namespace {

double DistanceM(double lat1, double lon1, double lat2, double lon2) {
  const double radians = std::numbers::pi / 180;
  const double east = (lon2 - lon1) * std::cos((lat1 + lat2) / 2 * radians);
  return std::hypot(lat2 - lat1, east) * radians * 6371000;
}

class DemoContentsTest : public testing::TestWithParam<const char*> {
 protected:
  const ReceiverModel& model = *FindReceiverModel(GetParam());
  const HeldContents contents = DemoContents(model);
  const bool small_symbols =
      model.waypoint_layout == WaypointLayout::D103 || model.waypoint_layout == WaypointLayout::D107;
};

TEST_P(DemoContentsTest, HoldsWaypointsTwoRoutesAndThreeTrackLogs) {
  EXPECT_GE(contents.waypoints.size(), 15U);
  ASSERT_EQ(contents.routes.size(), 2U);
  EXPECT_EQ(contents.routes[0].points.size(), 10U);
  EXPECT_EQ(contents.routes[1].points.size(), 7U);
  // A receiver's texts come back in upper case after an upload.
  for (const HeldWaypoint& waypoint : contents.waypoints) {
    EXPECT_EQ(waypoint.ident, UpperCase(waypoint.ident));
    EXPECT_EQ(waypoint.cmnt, UpperCase(waypoint.cmnt));
  }
  ASSERT_EQ(contents.routes.size(), 2U);
  for (const HeldRoute& route : contents.routes) {
    EXPECT_GE(route.points.size(), 7U) << route.cmnt;
    EXPECT_LE(route.points.size(), 10U) << route.cmnt;
  }
  ASSERT_EQ(contents.track_logs.size(), 3U);
  for (const HeldTrackLog& log : contents.track_logs) {
    EXPECT_GE(log.points.size(), 120U);
    EXPECT_LE(log.points.size(), 200U);
  }
}

TEST_P(DemoContentsTest, NamesFitAndStayApartWhenCut) {
  std::set<std::string> whole;
  std::set<std::string> cut;
  for (const HeldWaypoint& waypoint : contents.waypoints) {
    EXPECT_TRUE(EncodeCp932(waypoint.ident)) << waypoint.ident;
    EXPECT_TRUE(EncodeCp932(waypoint.cmnt)) << waypoint.cmnt;
    EXPECT_LE(Cp932Width(waypoint.cmnt), 40U) << waypoint.cmnt;
    whole.insert(waypoint.ident);
    cut.insert(ReceiverText(waypoint.ident, 6));
  }
  EXPECT_EQ(whole.size(), contents.waypoints.size());
  EXPECT_EQ(cut.size(), contents.waypoints.size());
  for (const HeldRoute& route : contents.routes)
    EXPECT_LE(Cp932Width(route.cmnt), 20U) << route.cmnt;
}

TEST_P(DemoContentsTest, SymbolsAndDisplayCodesAreTheModels) {
  for (const HeldWaypoint& waypoint : contents.waypoints) {
    ASSERT_TRUE(waypoint.smbl);
    EXPECT_LE(*waypoint.smbl, small_symbols ? 15 : 16402);
    EXPECT_EQ(waypoint.dspl, model.waypoint_layout == WaypointLayout::D104 ? 3 : 0);
  }
}

TEST_P(DemoContentsTest, RoutesRunAlongTheWaypoints) {
  for (const HeldRoute& route : contents.routes) {
    for (const HeldRoutePoint& point : route.points) {
      const bool known =
          std::any_of(contents.waypoints.begin(), contents.waypoints.end(), [&point](const HeldWaypoint& waypoint) {
            return waypoint.ident == point.waypoint.ident && waypoint.lat_deg == point.waypoint.lat_deg;
          });
      EXPECT_TRUE(known) << point.waypoint.ident;
    }
  }
}

TEST_P(DemoContentsTest, TrackLogsAreWalks) {
  for (const HeldTrackLog& log : contents.track_logs) {
    for (std::size_t i = 1; i < log.points.size(); ++i) {
      const HeldTrackPoint& from = log.points[i - 1];
      const HeldTrackPoint& to = log.points[i];
      ASSERT_GT(to.time_s, from.time_s) << log.trk_ident << " " << i;
      const double metres = DistanceM(from.lat_deg, from.lon_deg, to.lat_deg, to.lon_deg);
      const double km_per_hour = metres / (to.time_s - from.time_s) * 3.6;
      EXPECT_GT(km_per_hour, 1.9) << log.trk_ident << " " << i;
      EXPECT_LT(km_per_hour, 5.2) << log.trk_ident << " " << i;
      EXPECT_LT(std::abs(to.alt_m - from.alt_m) / metres, 0.5) << log.trk_ident << " " << i;
    }
  }
}

TEST_P(DemoContentsTest, WalksAreInDaylightOnThreeDays) {
  std::set<int> days;
  for (const HeldTrackLog& log : contents.track_logs) {
    const CivilTime start = LocalTimeOfGarminTime(log.points.front().time_s, 9);
    const CivilTime end = LocalTimeOfGarminTime(log.points.back().time_s, 9);
    EXPECT_EQ(start.year, 2002);
    EXPECT_EQ(start.day, end.day);
    EXPECT_GE(start.hour, 8);
    EXPECT_LT(start.hour, 12) << "starts in the morning";
    EXPECT_GE(end.hour, 12) << "ends in the afternoon";
    EXPECT_LT(end.hour, 16);
    days.insert(start.month * 100 + start.day);
  }
  EXPECT_EQ(days.size(), 3U);
  EXPECT_TRUE(days.contains(1115));
}

TEST_P(DemoContentsTest, LogsPassTheSummitsAtTheirHeight) {
  const auto height_at = [this](std::size_t log, double lat, double lon) {
    double nearest = 1e9;
    float height = 0;
    for (const HeldTrackPoint& point : contents.track_logs[log].points) {
      const double metres = DistanceM(point.lat_deg, point.lon_deg, lat, lon);
      if (metres < nearest) {
        nearest = metres;
        height = point.alt_m;
      }
    }
    EXPECT_LT(nearest, 100);
    return height;
  };
  const auto expect_height = [&](std::string_view ident, std::size_t log, double height_m) {
    const auto summit = std::find_if(contents.waypoints.begin(), contents.waypoints.end(),
                                     [ident](const HeldWaypoint& waypoint) { return waypoint.ident == ident; });
    ASSERT_NE(summit, contents.waypoints.end()) << ident;
    EXPECT_NEAR(height_at(log, summit->lat_deg, summit->lon_deg), height_m, 20) << ident << " " << log;
  };
  expect_height("TAKAO", 0, 599);
  expect_height("TAKAO", 2, 599);
  expect_height("JINBA", 0, 855);
  expect_height("JINBA", 1, 855);
}

TEST_P(DemoContentsTest, EncodesToWholeRecords) {
  const ReceiverMemory memory = EncodeMemory(contents, model);
  EXPECT_EQ(memory.waypoints.size(), contents.waypoints.size());
  std::size_t points = 0;
  for (const HeldTrackLog& log : contents.track_logs)
    points += log.points.size();
  EXPECT_EQ(memory.tracks.size(), points + (model.has_links_and_track_headers ? 3 : 0));
  std::size_t route_points = 0;
  for (const HeldRoute& route : contents.routes)
    route_points += route.points.size();
  EXPECT_EQ(memory.routes.size(), 2 + route_points * (model.has_links_and_track_headers ? 2 : 1));
}

TEST_P(DemoContentsTest, TheFirstLogHasTwoSegmentsAndTheOthersOne) {
  ASSERT_EQ(contents.track_logs.size(), 3U);
  for (std::size_t log = 0; log < 3; ++log) {
    const std::vector<HeldTrackPoint>& points = contents.track_logs[log].points;
    for (std::size_t i = 0; i < points.size(); ++i)
      EXPECT_EQ(points[i].new_trk, i == 0 || (log == 0 && i == 125)) << log << " " << i;
  }
}

TEST(DemoContents, ASegmentBeginsByItsFlagAloneAndASavedLogByItsHeader) {
  std::string order;
  for (const LinePacket& packet :
       EncodeMemory(DemoContents(*FindReceiverModel("eTrex")), *FindReceiverModel("eTrex")).tracks) {
    const std::string mark = packet.id == 99 ? "H" : packet.data.at(20) == 255 ? "F" : ".";
    if (mark != "." || !order.ends_with('.')) order += mark;
  }
  EXPECT_EQ(order, "HF.F.HF.HF.");
}

INSTANTIATE_TEST_SUITE_P(Models, DemoContentsTest,
                         testing::Values("GPS 12", "GPS 12XL", "GPS 12CX", "GPS 48", "GPS II+", "GPS III", "GPS III+",
                                         "eMap", "eTrex"));

TEST(DemoContents, AJapaneseNameInASmallReceiverIsItsFirstThreeCharacters) {
  const ReceiverMemory memory = EncodeMemory(DemoContents(*FindReceiverModel("GPS 12")), *FindReceiverModel("GPS 12"));
  const std::vector<std::uint8_t>& data = memory.waypoints.at(0).data;
  EXPECT_EQ(std::vector<std::uint8_t>(data.begin(), data.begin() + 6),
            (std::vector<std::uint8_t>{0x8D, 0x82, 0x94, 0xF6, 0x8E, 0x52}));
}

}  // namespace
}  // namespace walrim
