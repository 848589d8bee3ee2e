#include "records/PlainForm.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace walrim {
namespace {

/// A value other than the usual one in every field.
Waypoint OddWaypoint() {
  Waypoint waypoint;
  waypoint.type = WaypointType::D104;
  waypoint.missing = true;
  waypoint.chosen = false;
  waypoint.dspl = 2;
  waypoint.color = 3;
  waypoint.smbl = 65535;
  waypoint.symbol_set = SymbolSet::Large;
  waypoint.damaged = true;
  waypoint.unused = 0xFEDCBA98;
  waypoint.dist_m = 0.1F;
  waypoint.dst_m = 1e25F;
  waypoint.alt_m = -12.5F;
  waypoint.dpth_m = 3.25F;
  waypoint.lat_deg = 35.123456789012345;
  waypoint.lon_deg = -1.0 / 3;
  waypoint.ident = std::string("A\0B", 3) + "\t\r\n%41 高尾山\x7F";
  waypoint.cmnt = "comment";
  WaypointDetails details;
  details.wpt_class = 1;
  details.attr = 2;
  details.subclass[17] = 200;
  details.state = "TK";
  details.country = "JP";
  details.facility = "f";
  details.city = "c";
  details.addr = "a";
  details.cross_road = "x";
  waypoint.details = details;
  return waypoint;
}

Waypoint UnknownWaypoint() {
  Waypoint waypoint;
  waypoint.smbl.reset();
  waypoint.dst_m.reset();
  return waypoint;
}

TrackPoint OddPoint() {
  TrackPoint point;
  point.lat_deg = 90;
  point.lon_deg = 179.99999999999997;
  point.time = 0xFFFFFFFF;
  point.alt_m = 3776.24F;
  point.dpth_m = 0.5F;
  point.new_trk = true;
  point.damaged = true;
  return point;
}

template <typename Record>
void Store(DataSet& data, Record record) {
  ASSERT_EQ(data.Add(std::move(record)), AddResult::Stored);
}

DataSet OddData() {
  DataSet data;
  Store(data, OddWaypoint());
  Store(data, UnknownWaypoint());
  EXPECT_EQ(data.Begin(Route{RouteHeaderType::D201, 200, "道\n", {}, false, true}), AddResult::Stored);
  RouteLink link;
  link.link_class = 65535;
  link.subclass[0] = 9;
  link.ident = "link";
  RoutePoint point{OddWaypoint(), {}};
  point.link = link;
  Store(data, point);
  Store(data, RoutePoint{UnknownWaypoint(), {}});
  EXPECT_EQ(data.Begin(Route{}), AddResult::Stored);
  EXPECT_EQ(data.Begin(TrackLog{true, false, 7, "headless", {}, false, true}), AddResult::Stored);
  Store(data, OddPoint());
  Store(data, TrackPoint{});
  EXPECT_EQ(data.Begin(TrackLog{}), AddResult::Stored);
  return data;
}

TEST(PlainForm, HoldsEveryFieldOfEveryRecord) {
  const DataSet data = OddData();
  const auto back = ReadPlainForm(PlainFormOf(data));
  ASSERT_TRUE(back);
  EXPECT_EQ(back->Waypoints(), data.Waypoints());
  EXPECT_EQ(back->Routes(), data.Routes());
  EXPECT_EQ(back->Logs(), data.Logs());
}

TEST(PlainForm, HoldsNumbersThatAreNone) {
  DataSet data;
  Waypoint waypoint;
  waypoint.lat_deg = std::numeric_limits<double>::quiet_NaN();
  waypoint.lon_deg = -std::numeric_limits<double>::infinity();
  waypoint.alt_m = std::numeric_limits<float>::infinity();
  Store(data, waypoint);
  const auto back = ReadPlainForm(PlainFormOf(data));
  ASSERT_TRUE(back);
  EXPECT_TRUE(std::isnan(back->Waypoints()[0].lat_deg));
  EXPECT_EQ(back->Waypoints()[0].lon_deg, waypoint.lon_deg);
  EXPECT_EQ(back->Waypoints()[0].alt_m, waypoint.alt_m);
}

TEST(PlainForm, StandsSo) {
  DataSet data;
  EXPECT_EQ(data.Begin(TrackLog{false, true, 255, "A%B", {}, true}), AddResult::Stored);
  TrackPoint point;
  point.lat_deg = 35.5;
  point.time = 1000;
  Store(data, point);
  const std::string text = PlainFormOf(data);
  EXPECT_EQ(text.substr(0, text.find("\nE\t")),
            "Walrim records 1\nL\t0\t1\t255\tA%25B\t1\t0\nT\t35.5\t0\t1000\t\t\t0\t0");
}

TEST(PlainForm, AnEmptyDataSetIsWholeToo) {
  ASSERT_TRUE(ReadPlainForm(PlainFormOf({})));
}

TEST(PlainForm, NoPartOfATextIsTakenForTheWhole) {
  const std::string text = PlainFormOf(OddData());
  for (std::size_t size = 0; size < text.size(); ++size)
    ASSERT_FALSE(ReadPlainForm(std::string_view(text).substr(0, size))) << size;
  EXPECT_FALSE(ReadPlainForm(text + "\n"));
}

TEST(PlainForm, AnyOtherByteIsSeen) {
  const std::string text = PlainFormOf(OddData());
  for (std::size_t i = 0; i < text.size(); ++i) {
    std::string damaged = text;
    damaged[i] = static_cast<char>(damaged[i] ^ 1);
    ASSERT_FALSE(ReadPlainForm(damaged)) << i;
  }
}

TEST(PlainForm, RefusesLinesThatAreNone) {
  const std::string point = "T\t35.5\t0\t1000\t\t\t0\t0\n";
  const std::string log = "L\t0\t1\t255\tA\t1\t0\n";
  EXPECT_TRUE(ReadPlainForm(SealedPlainForm(log + point)));
  for (const std::string& lines :
       {point, log + "\n", log + "X\t1\n", log + "T\t35.5\t0\t1000\t\t\t0\t0\t\n", log + "T\t35.5\t0\t1000\t\t\t0\n",
        log + "T\t35.5\t0\t-1\t\t\t0\t0\n", log + "T\t35.5x\t0\t\t\t\t0\t0\n", log + "T\t\t0\t\t\t\t0\t0\n",
        log + "T\t35.5\t0\t\t\t\t2\t0\n", std::string("L\t0\t1\t256\tA\t1\t0\n"), std::string("R\t2\t1\tA\t1\t0\n"),
        log + "L\t1\t1\t255\tA\t1\t0\n"}) {
    EXPECT_FALSE(ReadPlainForm(SealedPlainForm(lines))) << lines;
  }
}

}  // namespace
}  // namespace walrim
