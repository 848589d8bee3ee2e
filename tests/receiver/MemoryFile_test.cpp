#include "receiver/MemoryFile.h"

#include <cmath>
#include <cstdio>
#include <fstream>
#include <gtest/gtest.h>

#include "receiver/ReceiverDatum.h"
#include "receiver/ReceiverMemory.h"

namespace walrim {
namespace {

// A line with a position and nothing else known.
std::string WaypointLine(const std::string& tag, const std::string& position) {
  return tag + "\t" + position + std::string(38, '\t');
}

HeldContents Parsed(std::string_view bytes, int utc_offset_hours = 9) {
  const MemoryFileResult result = ParseMemoryFile(bytes, utc_offset_hours);
  EXPECT_EQ(result.problem, "");
  return result.contents.value_or(HeldContents{});
}

constexpr std::string_view FullWaypoint =
    "WPT\tD\tWGS84\t=\"高尾\"\t35.5\t139.25\t=\"山頂 599m\"\t8246\tsummit symbol\t2\tnotes\t1.5\t3\t1\t97\t"
    "1\t2\t3\t4\t5\t6\t7\t8\t9\t10\t11\t12\t13\t14\t15\t16\t17\t18\t599.1\t2.5\t0.5\t=\"13\"\t=\"JP\"\t"
    "=\"idents\"\t=\"comment\"\t=\"F\"\t=\"C\"\t=\"A\"\t=\"X\"\r\n";

TEST(MemoryFile, ReadsEveryColumnOfAWaypoint) {
  const HeldContents contents = Parsed(FullWaypoint);
  ASSERT_EQ(contents.waypoints.size(), 1U);
  const HeldWaypoint& waypoint = contents.waypoints[0];
  EXPECT_EQ(waypoint.ident, "高尾");
  EXPECT_EQ(waypoint.lat_deg, 35.5);
  EXPECT_EQ(waypoint.lon_deg, 139.25);
  EXPECT_EQ(waypoint.cmnt, "山頂 599m");
  EXPECT_EQ(waypoint.smbl, 8246);
  EXPECT_EQ(waypoint.dspl, 2);
  EXPECT_EQ(waypoint.dst_m, 1.5F);
  EXPECT_EQ(waypoint.color, 3);
  EXPECT_EQ(waypoint.wpt_class, 1);
  EXPECT_EQ(waypoint.attr, 97);
  for (std::size_t i = 0; i < 18; ++i)
    EXPECT_EQ(waypoint.subclass[i], i + 1);
  EXPECT_EQ(waypoint.alt_m, 599.1F);
  EXPECT_EQ(waypoint.dpth_m, 2.5F);
  EXPECT_EQ(waypoint.dist_m, 0.5F);
  EXPECT_EQ(waypoint.state, "13");
  EXPECT_EQ(waypoint.country, "JP");
  EXPECT_EQ(waypoint.facility, "F");
  EXPECT_EQ(waypoint.city, "C");
  EXPECT_EQ(waypoint.addr, "A");
  EXPECT_EQ(waypoint.cross_road, "X");
}

TEST(MemoryFile, EmptyColumnsHaveTheirDefaults) {
  const HeldContents contents = Parsed(WaypointLine("WPT", "D\tWGS84\tA\t35.5\t139.25"));
  ASSERT_EQ(contents.waypoints.size(), 1U);
  const HeldWaypoint& waypoint = contents.waypoints[0];
  EXPECT_FALSE(waypoint.smbl);
  EXPECT_FALSE(waypoint.color);
  EXPECT_EQ(waypoint.dspl, 0);
  EXPECT_EQ(waypoint.attr, 96);
  EXPECT_EQ(waypoint.subclass, NoHeldSubclass);
  EXPECT_EQ(waypoint.alt_m, 1.0e25F);
  EXPECT_EQ(waypoint.dpth_m, 1.0e25F);
  EXPECT_EQ(waypoint.dist_m, 0);
  EXPECT_EQ(waypoint.dst_m, 0);
}

TEST(MemoryFile, ALineMayEndAfterItsPosition) {
  const HeldContents contents = Parsed("WPT\tD\tWGS84\tA\t35.5\t139.25");
  ASSERT_EQ(contents.waypoints.size(), 1U);
  EXPECT_EQ(contents.waypoints[0].attr, 96);
  EXPECT_EQ(contents.waypoints[0].cross_road, "");
}

TEST(MemoryFile, ReadsCodePage932AsWellAsUtf8) {
  const HeldContents sjis = Parsed("WPT\tD\tWGS84\t=\"\x8D\x82\x94\xF6\"\t35.5\t139.25\t=\"\x8E\x52\"\r\n");
  ASSERT_EQ(sjis.waypoints.size(), 1U);
  EXPECT_EQ(sjis.waypoints[0].ident, "高尾");
  EXPECT_EQ(sjis.waypoints[0].cmnt, "山");
  const HeldContents marked = Parsed("\xEF\xBB\xBFWPT\tD\tWGS84\t高尾\t35.5\t139.25\n");
  ASSERT_EQ(marked.waypoints.size(), 1U);
  EXPECT_EQ(marked.waypoints[0].ident, "高尾");
}

TEST(MemoryFile, ReadsRoutesWithTheirPointsAndLinks) {
  std::string link = "\t3";
  for (int i = 1; i <= 18; ++i)
    link += i == 7 ? "\t" : "\t" + std::to_string(i);
  const std::string point = "RTP" + std::string(FullWaypoint.substr(3, FullWaypoint.size() - 5));
  const HeldContents contents = Parsed("RTH\t5\t=\"縦走\"\t2\r\n" + point + link + "\t=\"L\"\r\n" +
                                       WaypointLine("rtp", "D\tWGS84\tB\t36\t140") + "\r\nRTH\t\t=\"\"\t0\r\n");
  ASSERT_EQ(contents.routes.size(), 2U);
  const HeldRoute& route = contents.routes[0];
  EXPECT_EQ(route.nmbr, 5);
  EXPECT_EQ(route.cmnt, "縦走");
  ASSERT_EQ(route.points.size(), 2U);
  EXPECT_EQ(route.points[0].waypoint.ident, "高尾");
  EXPECT_EQ(route.points[0].waypoint.cross_road, "X");
  EXPECT_EQ(route.points[0].link_class, 3);
  EXPECT_EQ(route.points[0].link_subclass[0], 1);
  EXPECT_EQ(route.points[0].link_subclass[6], 255) << "empty";
  EXPECT_EQ(route.points[0].link_subclass[17], 18);
  EXPECT_EQ(route.points[0].link_ident, "L");
  EXPECT_EQ(route.points[1].waypoint.ident, "B");
  EXPECT_EQ(route.points[1].link_class, 0);
  EXPECT_EQ(route.points[1].link_subclass, NoHeldSubclass);
  EXPECT_TRUE(contents.routes[1].points.empty());
}

TEST(MemoryFile, ReadsTrackLogsWithLocalTimes) {
  const std::string text =
      "TRH\t2\tFALSE\t7\t=\"LOG\"\r\n"
      "TRP\tD\tWGS84\t35.5\t139.25\t1989/12/31 09:00:10\tTRUE\t599.5\t1E+25\t0\r\n"
      "TRP\tD\tWGS84\t35.6\t139.26\t1990/01/01 09:00:00\tFALSE\t\t\t12.5\r\n"
      "TRH\t0\t\t\t\r\n";
  const HeldContents contents = Parsed(text);
  ASSERT_EQ(contents.track_logs.size(), 2U);
  const HeldTrackLog& log = contents.track_logs[0];
  EXPECT_FALSE(log.dspl);
  EXPECT_EQ(log.color, 7);
  EXPECT_EQ(log.trk_ident, "LOG");
  ASSERT_EQ(log.points.size(), 2U);
  EXPECT_EQ(log.points[0].time_s, 10U);
  EXPECT_TRUE(log.points[0].new_trk);
  EXPECT_EQ(log.points[0].alt_m, 599.5F);
  EXPECT_EQ(log.points[0].dpth_m, 1.0e25F);
  EXPECT_EQ(log.points[1].time_s, 86400U);
  EXPECT_FALSE(log.points[1].new_trk);
  EXPECT_EQ(log.points[1].alt_m, 1.0e25F);
  EXPECT_TRUE(contents.track_logs[1].dspl) << "an empty column shows the log";
  EXPECT_EQ(Parsed(text, 0).track_logs.at(0).points.at(0).time_s, 9U * 3600 + 10);
}

TEST(MemoryFile, SkipsBadLinesAndKeepsTheOthers) {
  const HeldContents contents = Parsed(
      "Walrim\tVer. 1.0\r\n"
      "WPT\tDegreeType\tDatum\tident\tlat\tlon\r\n"
      "RTH\tnmbr\tcmnt\trte_wpt_num\r\n"
      "TRH\ttrk_pnt_num\thdr.dspl\thdr.color\thdr.trk_ident\r\n"
      "RTP\tD\tWGS84\tEARLY\t35\t139\r\n"
      "TRP\tD\tWGS84\t35\t139\t2002/11/15 10:00:00\tTRUE\r\n"
      "WPT\tX\tWGS84\tNOTATION\t35\t139\r\n"
      "WPT\tD\tMOON\tDATUM\t35\t139\r\n"
      "WPT\tD\tWGS84\tNOLAT\t\t139\r\n"
      "WPT\tD\tWGS84\tTEXT\tabc\t139\r\n"
      "WPT\tD\tWGS84\tNORTH\t90.1\t139\r\n"
      "WPT\tD\tWGS84\tEAST\t35\t180.5\r\n"
      "WPT\r\n"
      "\r\n\r\n"
      "XYZ\tD\tWGS84\tTAG\t35\t139\r\n"
      "WPT\tMPS\tWGS84\tPARTS\t35/1/2/3\t139/0/0\r\n"
      "WPT\tD\tWGS84\tGOOD\t35\t139\r\n");
  ASSERT_EQ(contents.waypoints.size(), 1U);
  EXPECT_EQ(contents.waypoints[0].ident, "GOOD");
  EXPECT_TRUE(contents.routes.empty());
  EXPECT_TRUE(contents.track_logs.empty());
}

TEST(MemoryFile, NumbersOutOfRangeStayInTheirFields) {
  const HeldContents contents = Parsed("WPT\tD\tWGS84\tA\t35\t139\t\t70000\t\t300\t\t1E300\t-5\tx\r\n");
  ASSERT_EQ(contents.waypoints.size(), 1U);
  EXPECT_EQ(contents.waypoints[0].smbl, 65535);
  EXPECT_EQ(contents.waypoints[0].dspl, 255);
  EXPECT_TRUE(std::isfinite(contents.waypoints[0].dst_m));
  EXPECT_EQ(contents.waypoints[0].color, 0);
  EXPECT_EQ(contents.waypoints[0].wpt_class, 0);
}

TEST(MemoryFile, ReadsEveryNotation) {
  // 34 degrees 41 minutes 30.25 seconds
  const double expected = 34 + 41 / 60.0 + 30.25 / 3600;
  EXPECT_NEAR(DegreesOfNotation("34.6917361111111", "D").value(), expected, 1e-12);
  EXPECT_NEAR(DegreesOfNotation("34.4150416667", "DM").value(), expected, 1e-9);
  EXPECT_NEAR(DegreesOfNotation("34.413025", "DMS").value(), expected, 1e-12);
  EXPECT_NEAR(DegreesOfNotation("34/41/30.25", "MPS").value(), expected, 1e-12);
  EXPECT_NEAR(DegreesOfNotation("34/41/30250", "PAO").value(), expected, 1e-12);
  EXPECT_FALSE(DegreesOfNotation("34.5", "dms"));
  EXPECT_FALSE(DegreesOfNotation("", "D"));
}

TEST(MemoryFile, PackedDigitsDoNotSlipToTheNumberBelow) {
  EXPECT_NEAR(DegreesOfNotation("34.41", "DMS").value(), 34 + 41 / 60.0, 1e-12);
  EXPECT_NEAR(DegreesOfNotation("34.29", "DM").value(), 34 + 29 / 60.0, 1e-12);
  EXPECT_NEAR(DegreesOfNotation("139", "DMS").value(), 139, 1e-12);
  for (int minutes = 0; minutes < 60; ++minutes) {
    for (int seconds = 0; seconds < 60; ++seconds) {
      char text[32];
      std::snprintf(text, sizeof text, "35.%02d%02d00", minutes, seconds);
      EXPECT_NEAR(DegreesOfNotation(text, "DMS").value(), 35 + minutes / 60.0 + seconds / 3600.0, 1e-11) << text;
    }
  }
}

TEST(MemoryFile, ReadsPositionsOnTheTokyoDatum) {
  // The origin of Japan's surveys on the old datum and on the new one, which a plain shift meets within ten metres.
  const HeldContents contents = Parsed("WPT\tMPS\tTokyo\tORIGIN\t35/39/17.5148\t139/44/40.5020\r\n");
  ASSERT_EQ(contents.waypoints.size(), 1U);
  EXPECT_NEAR(contents.waypoints[0].lat_deg, 35 + 39 / 60.0 + 29.1572 / 3600, 0.4 / 3600);
  EXPECT_NEAR(contents.waypoints[0].lon_deg, 139 + 44 / 60.0 + 28.8759 / 3600, 0.4 / 3600);
}

TEST(MemoryFile, TheDatumShiftsByWhatTheFilesReckon) {
  // Reckoned apart from this program.
  const DatumPosition wgs84 = PositionOnWgs84({35, 135});
  EXPECT_NEAR(wgs84.lat_deg, 35.0032392839773, 1e-11);
  EXPECT_NEAR(wgs84.lon_deg, 134.9972687315233, 1e-11);
}

TEST(MemoryFile, WithoutAnyRecordItIsRefused) {
  for (const std::string_view bytes : {"", "hello\r\n", "WPT\tDegreeType\tDatum\tident\tlat\tlon\r\n"}) {
    const MemoryFileResult result = ParseMemoryFile(bytes, 9);
    EXPECT_FALSE(result.contents);
    EXPECT_NE(result.problem, "");
  }
}

TEST(MemoryFile, MoreThanOneTransferCanAnnounceIsRefused) {
  std::string bytes;
  for (int i = 0; i < 32767; ++i)
    bytes += "WPT\tD\tWGS84\tA\t35\t139\n";
  EXPECT_TRUE(ParseMemoryFile(bytes, 9).contents);
  const MemoryFileResult result = ParseMemoryFile(bytes + "WPT\tD\tWGS84\tA\t35\t139\n", 9);
  EXPECT_FALSE(result.contents);
  EXPECT_NE(result.problem.find("32767"), std::string::npos);
}

TEST(MemoryFile, AMissingFileIsNamed) {
  const MemoryFileResult missing = LoadMemoryFile("/nonexistent/memory.grc", 9);
  EXPECT_FALSE(missing.contents);
  EXPECT_NE(missing.problem.find("/nonexistent/memory.grc"), std::string::npos);
  const MemoryFileResult directory = LoadMemoryFile(testing::TempDir(), 9);
  EXPECT_FALSE(directory.contents);
}

TEST(MemoryFile, LoadsAFile) {
  const std::string path = testing::TempDir() + "receiver_memory.grc";
  std::ofstream(path, std::ios::binary) << FullWaypoint;
  const MemoryFileResult result = LoadMemoryFile(path, 9);
  std::remove(path.c_str());
  ASSERT_TRUE(result.contents);
  EXPECT_EQ(result.contents->waypoints.size(), 1U);
}

TEST(MemoryFile, HeadersAndFlagsAreSentAsTheFileHasThem) {
  const MemoryFileResult result = ParseMemoryFile(
      "TRH\t3\tTRUE\t255\t=\"ACTIVE LOG\"\r\n"
      "TRP\tD\tWGS84\t35\t139\t\tTRUE\r\n"
      "TRP\tD\tWGS84\t35\t139\t\tFALSE\r\n"
      "TRP\tD\tWGS84\t35\t139\t\tTRUE\r\n"
      "TRH\t2\tTRUE\t255\t=\"SAVED\"\r\n"
      "TRP\tD\tWGS84\t35\t139\t\tFALSE\r\n"
      "TRP\tD\tWGS84\t35\t139\t\tTRUE\r\n",
      9);
  ASSERT_TRUE(result.contents);
  std::string order;
  for (const LinePacket& packet : EncodeMemory(*result.contents, *FindReceiverModel("eTrex")).tracks) {
    if (packet.id == 99) order += "H";
    if (packet.id == 34) order += packet.data.at(20) == 255 ? "F" : ".";
  }
  EXPECT_EQ(order, "HF.FH.F");
}

}  // namespace
}  // namespace walrim
