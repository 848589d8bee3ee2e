#include <gtest/gtest.h>

#include "Support.h"
#include "formats/FieldValues.h"
#include "formats/Messages.h"
#include "formats/StandardFile.h"
#include "text/Scan.h"

namespace walrim {
namespace {

using namespace format_messages;

/// A waypoint line that ends after lon.
std::string ShortWaypoint(const std::string& ident, const std::string& lat = "35.5",
                          const std::string& lon = "135.25") {
  return "WPT\tD\tWGS84\t" + ident + "\t" + lat + "\t" + lon;
}

std::string ShortRoutePoint(const std::string& ident) {
  return "RTP\tD\tWGS84\t" + ident + "\t35.5\t135.25";
}

std::string ShortTrackPoint(const std::string& lat = "35.5") {
  return "TRP\tD\tWGS84\t" + lat + "\t135.25";
}

class StandardReaderTest : public ::testing::Test {
 protected:
  ImportResult ReadText(const std::string& text) { return Read(FormatId::Standard, data_, text); }
  /// Reads the lines as one input.
  ImportResult ReadLines(const std::vector<std::string>& lines) { return ReadText(Lines(lines)); }
  /// Reads one line and expects that it is refused for this reason.
  void ExpectSkipped(const std::string& line, std::string_view why) {
    const ImportResult result = ReadLines({line});
    EXPECT_EQ(result.skipped.count, 1) << line;
    EXPECT_EQ(result.skipped.first_line, 1) << line;
    EXPECT_EQ(result.skipped.first_why, why) << line;
    EXPECT_TRUE(data_.Waypoints().empty()) << line;
  }
  [[nodiscard]] const Waypoint& Held(std::size_t i) const { return data_.Waypoints().at(i); }

  DataSet data_;
};

const std::string SomeRoute = "RTH\t3\t=\"walk\"\t9";
const std::string SomeTrack = "TRH\t9\tTRUE\t4\t=\"log\"";

TEST_F(StandardReaderTest, AWholeWaypointLine) {
  const ImportResult result = ReadLines(
      {"WPT\tD\tWGS84\t=\"a01\"\t35.25\t-135.5\t=\"comment\"\t=\"8196\"\tany name\t=\"1\"\tany "
       "name\t12.5\t3\t64\t97\t1\t2\t3\t4\t5\t6\t7\t8\t9\t10\t11\t12\t13\t14\t15\t16\t17\t18\t100.5\t2.5\t0.5\t=\"ca\""
       "\t=\"jp\"\t=\"x\"\t=\"y\"\t=\"hut\"\t=\"fuji\"\t=\"1-2-3\"\t=\"r138\""});
  EXPECT_EQ(result.stored[IndexOf(DataKind::Waypoint)], 1);
  EXPECT_EQ(result.skipped.count, 0);
  EXPECT_TRUE(result.Received(DataKind::Waypoint));
  EXPECT_FALSE(result.Received(DataKind::Route));
  const Waypoint& waypoint = Held(0);
  EXPECT_EQ(waypoint.type, WaypointType::D108);
  EXPECT_EQ(waypoint.ident, "A01");
  EXPECT_EQ(waypoint.cmnt, "COMMENT");
  EXPECT_EQ(waypoint.lat_deg, 35.25);
  EXPECT_EQ(waypoint.lon_deg, -135.5);
  EXPECT_EQ(waypoint.smbl, 8196);
  EXPECT_EQ(waypoint.dspl, 1);
  EXPECT_EQ(waypoint.color, 3);
  EXPECT_EQ(waypoint.details->wpt_class, 64);
  EXPECT_EQ(waypoint.details->attr, 97);
  EXPECT_EQ(waypoint.details->subclass, (Subclass{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18}));
  EXPECT_EQ(waypoint.alt_m, 100.5F);
  EXPECT_EQ(waypoint.dpth_m, 2.5F);
  EXPECT_EQ(waypoint.dist_m, 0.5F);
  EXPECT_EQ(waypoint.dst_m, 12.5F);
  EXPECT_EQ(waypoint.details->state, "CA");
  EXPECT_EQ(waypoint.details->country, "JP");
  EXPECT_EQ(waypoint.details->facility, "HUT");
  EXPECT_EQ(waypoint.details->city, "FUJI");
  EXPECT_EQ(waypoint.details->addr, "1-2-3");
  EXPECT_EQ(waypoint.details->cross_road, "R138");
}

TEST_F(StandardReaderTest, AnIdentIsReadWithAndWithoutItsWrapping) {
  ReadLines({ShortWaypoint("=\"007\""), ShortWaypoint("007"), ShortWaypoint("\"007\""), ShortWaypoint("0=0\"7")});
  ASSERT_EQ(data_.Waypoints().size(), 4U);
  for (const Waypoint& waypoint : data_.Waypoints())
    EXPECT_EQ(waypoint.ident, "007");
}

TEST_F(StandardReaderTest, AStateIsTwoBytesWithoutBlanksBehind) {
  const std::string line = ShortWaypoint("A") + std::string(31, '\t');
  ReadLines({line + "=\"cal\"\t=\"j \"", line + "=\"山口\"\t=\" j\"", line + "=\"a山\"\t"});
  EXPECT_EQ(Held(0).details->state, "CA");
  EXPECT_EQ(Held(0).details->country, "J");
  EXPECT_EQ(Held(1).details->state, "山");
  EXPECT_EQ(Held(1).details->country, " J");
  EXPECT_EQ(Held(2).details->state, "A");
  EXPECT_EQ(Held(2).details->country, "");
}

TEST_F(StandardReaderTest, TagsAreMatchedInAnyCase) {
  ReadLines({"wpt\tD\tWGS84\tA\t35\t135", "Wpt\tD\tWGS84\tB\t35\t135", "\"WPT\"\tD\tWGS84\tC\t35\t135"});
  EXPECT_EQ(data_.Waypoints().size(), 3U);
}

TEST_F(StandardReaderTest, OtherLinesAreIgnored) {
  const ImportResult result =
      ReadLines({"", "walrim Ver. 1.0", "WALRIM\tVer. 1\t2", "XYZ\tD\tWGS84", "WPTX\tD", std::string(1000, ','), "\t"});
  EXPECT_EQ(result.skipped.count, 0);
  EXPECT_TRUE(data_.Waypoints().empty());
}

TEST_F(StandardReaderTest, HeaderLinesAddNothing) {
  std::vector<std::string> lines;
  for (const StandardLine line : {StandardLine::Waypoint, StandardLine::RouteHeader, StandardLine::RoutePoint,
                                  StandardLine::TrackHeader, StandardLine::TrackPoint}) {
    lines.push_back(StandardHeaderLine(line));
    lines.push_back(UpperCase(StandardHeaderLine(line)));
    lines.push_back(StandardHeaderLine(line) + "\t\t");
  }
  lines.push_back("WPT\t\"DegreeType\"");
  const ImportResult result = ReadLines(lines);
  EXPECT_EQ(result.skipped.count, 0);
  for (const DataKind kind : AllDataKinds) {
    EXPECT_FALSE(data_.Holds(kind));
    EXPECT_FALSE(result.Received(kind));
  }
}

TEST_F(StandardReaderTest, ALineThatEndsEarlyIsFilledWithTheUsualValues) {
  ReadLines({ShortWaypoint("A")});
  Waypoint expected;
  expected.ident = "A";
  expected.lat_deg = 35.5;
  expected.lon_deg = 135.25;
  EXPECT_EQ(Held(0), expected);
  EXPECT_EQ(Held(0).color, 255);
  EXPECT_EQ(Held(0).details->attr, 96);
  EXPECT_EQ(Held(0).smbl, 18);
  EXPECT_EQ(Held(0).details->subclass, NoSubclass);
  EXPECT_EQ(Held(0).alt_m, std::nullopt);
  EXPECT_EQ(Held(0).dst_m, 0);
}

TEST_F(StandardReaderTest, ALineThatEndsInsideTheSubclassKeepsWhatItHas) {
  ReadLines({ShortWaypoint("A") + "\tC\t10\t\t0\t\t0\t7\t0\t96\t1\t2"});
  EXPECT_EQ(Held(0).color, 7);
  EXPECT_EQ(Held(0).details->subclass,
            (Subclass{1, 2, 0, 0, 0, 0, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255}));
}

TEST_F(StandardReaderTest, EmptyColumnsAreZeroButForTheSymbol) {
  ReadLines({ShortWaypoint("A") + std::string(38, '\t')});
  EXPECT_EQ(Held(0).color, 0);
  EXPECT_EQ(Held(0).details->attr, 0);
  EXPECT_EQ(Held(0).smbl, std::nullopt);
  EXPECT_EQ(Held(0).details->subclass, Subclass{});
  EXPECT_EQ(Held(0).alt_m, 0);
}

TEST_F(StandardReaderTest, SymbolsAreKeptWithinTheirSixteenBits) {
  const auto symbol = [&](const std::string& text) {
    data_.Clear(DataKind::Waypoint);
    ReadLines({ShortWaypoint("A") + "\tC\t" + text});
    return Held(0).smbl;
  };
  EXPECT_EQ(symbol("70000"), 65535);
  EXPECT_EQ(symbol("-1"), 0);
  EXPECT_EQ(symbol("=\"18\""), 18);
  EXPECT_EQ(symbol("dot"), 0);
}

TEST_F(StandardReaderTest, HeightsAndDepthsThatNobodyKnowsAreNone) {
  ReadLines({ShortWaypoint("A") + std::string(27, '\t') + "\t1E+25\t1e25\t1E+99", SomeTrack,
             ShortTrackPoint() + "\t\t\t1E+25\t2.5"});
  EXPECT_EQ(Held(0).alt_m, std::nullopt);
  EXPECT_EQ(Held(0).dpth_m, std::nullopt);
  EXPECT_EQ(Held(0).dist_m, UnknownMetres);
  EXPECT_EQ(data_.Logs()[0].points[0].alt_m, std::nullopt);
  EXPECT_EQ(data_.Logs()[0].points[0].dpth_m, 2.5F);
}

TEST_F(StandardReaderTest, IdentsAndCommentServeWhereTheFirstColumnsAreEmpty) {
  std::vector<std::string> columns(44);
  columns[0] = "WPT";
  columns[1] = "D";
  columns[2] = "WGS84";
  columns[4] = "35";
  columns[5] = "135";
  columns[38] = "=\"second\"";
  columns[39] = "=\"also\"";
  std::string line = columns[0];
  for (std::size_t i = 1; i < columns.size(); ++i)
    line += "\t" + columns[i];
  ReadLines({line});
  EXPECT_EQ(Held(0).ident, "SECOND");
  EXPECT_EQ(Held(0).cmnt, "ALSO");
}

TEST_F(StandardReaderTest, NotationAndDatumAreReadInAnyCase) {
  ReadLines({"WPT\t dms \twgs84\tA\t35.40\t135.3000", "WPT\t=\"DM\"\t\"tokyo\"\tB\t35.30\t135",
             "WPT\tpao\tTOKYO\tC\t35/30/30250\t135/0/0"});
  ASSERT_EQ(data_.Waypoints().size(), 3U);
  EXPECT_EQ(Held(0).lat_deg, 35.0 + 2.0 / 3.0);
  EXPECT_EQ(Held(0).lon_deg, 135.5);
  EXPECT_NEAR(Held(1).lat_deg, 35.5, 0.01);
  EXPECT_NE(Held(1).lat_deg, 35.5);
}

TEST_F(StandardReaderTest, NotationAndDatumAreThoseOfEachLine) {
  ReadLines({"WPT\tD\tWGS84\tA\t35.3\t135", "WPT\tDMS\tWGS84\tB\t35.30\t135", "WPT\tD\tTokyo\tC\t35.3\t135",
             "WPT\tXX\tTokyo\tX\t35.3\t135", "WPT\tD\tWGS84\tD\t35.3\t135"});
  ASSERT_EQ(data_.Waypoints().size(), 4U);
  EXPECT_EQ(Held(0).lat_deg, 35.3);
  EXPECT_EQ(Held(1).lat_deg, 35.5);
  EXPECT_NEAR(Held(2).lat_deg, 35.303, 0.001);
  EXPECT_EQ(Held(3).lat_deg, 35.3);
}

TEST_F(StandardReaderTest, AnEmptyDatumIsTheReceiversOwn) {
  EXPECT_EQ(ReadText("WPT\tD\t\tA\t35\t135\r\n").skipped.count, 0);
  EXPECT_EQ(Held(0).lat_deg, 35.0);
}

TEST_F(StandardReaderTest, ACommaInsideATextIsToldAndEmptyColumnsBehindAreNot) {
  const std::string filled = "WPT\tD\tWGS84\tA\t35\t135" + std::string(38, '\t') + "=\"X\"";
  const ImportResult result = ReadText(filled + "\t\t\t\r\n" + filled + ", Y\r\n" + filled + ",Z\r\n");
  EXPECT_EQ(result.stored[0], 3);
  EXPECT_EQ(result.overfull.count, 2);
  EXPECT_EQ(result.overfull.first_line, 2);
}

TEST_F(StandardReaderTest, LinesThatCannotBeMeantAreSkipped) {
  ExpectSkipped("WPT\tXYZ\tWGS84\tA\t35\t135", UnknownNotation);
  ExpectSkipped("WPT\t\t\tA\t35\t135", UnknownNotation);
  ExpectSkipped("WPT", UnknownNotation);
  ExpectSkipped("WPT\tD\tNAD27\tA\t35\t135", UnknownDatum);
  ExpectSkipped("WPT\tD", NoPosition);
  ExpectSkipped("WPT\tD\tWGS84\tA\t\t135", NoPosition);
  ExpectSkipped("WPT\tD\tWGS84\tA\t35\t=\"\"", NoPosition);
  ExpectSkipped("WPT\tD\tWGS84\tA\t35", NoPosition);
  ExpectSkipped("WPT\tD\tWGS84\tA\t90.0001\t135", PositionOutOfRange);
  ExpectSkipped("WPT\tD\tWGS84\tA\t35\t-180.5", PositionOutOfRange);
  ExpectSkipped("WPT\tD\tTokyo\tA\t1E+300\t135", PositionOutOfRange);
  ExpectSkipped("WPT\tMPS\tWGS84\tA\t1/2/3/4\t135", BadAngle);
  ExpectSkipped("WPT" + std::string(256, '\t'), TooManyColumns);
  ExpectSkipped("wpt" + std::string(256, ','), TooManyColumns);
}

TEST_F(StandardReaderTest, AColumnThatIsNoNumberIsZeroAndOneThatBeginsWithANumberIsThat) {
  ReadLines({ShortWaypoint("A", "35", "135x") + "\tC\tsmall\t\t2nd"});
  EXPECT_EQ(Held(0).lon_deg, 135);
  EXPECT_EQ(Held(0).smbl, 0);
  EXPECT_EQ(Held(0).dspl, 2);
}

TEST_F(StandardReaderTest, APositionThatIsNoNumberIsNotTakenForZero) {
  for (const char* lat : {"north", "N35", "1E+400", ".", "-"})
    ExpectSkipped(ShortWaypoint("A", lat, "135"), BadAngle);
}

TEST_F(StandardReaderTest, AnIdentThatAnOwnCommaCutIsNotTakenForAPosition) {
  ExpectSkipped("WPT\tD\tWGS84\tA,B\t35.5\t139.25", BadAngle);
  ExpectSkipped("WPT,D,WGS84,=\"A,B\",35.5,139.25", BadAngle);
  ExpectSkipped("WPT\tD\tWGS84\tA\t=\"35,5\"\t139.25", BadAngle);
}

TEST_F(StandardReaderTest, AWrappedTextKeepsItsCommasQuotesAndEqualsSigns) {
  const ImportResult result = ReadLines({"WPT\tD\tWGS84\t=\"HUT,2\"\t35.5\t135.25\t=\"A, B,\"\t=\"10\"",
                                         "wpt\tD\tWGS84\t=\"\"\"\t35\t135\t=\",\"\"\"",
                                         "WPT\tD\tWGS84\t =\"A=B\" \t35\t135\t=\"SAY \"HI\", X=1\"",
                                         "RTH\t1\t=\"OUT,AND \"BACK\"\"\t1", "TRH\t1\tTRUE\t4\t=\"A,B\""});
  EXPECT_EQ(result.stored, (std::array<int, DataKindCount>{3, 1, 1}));
  EXPECT_EQ(result.skipped.count, 0);
  EXPECT_EQ(result.overfull.count, 0);
  EXPECT_EQ(Held(0).ident, "HUT,2");
  EXPECT_EQ(Held(0).cmnt, "A, B,");
  EXPECT_EQ(Held(0).lat_deg, 35.5);
  EXPECT_EQ(Held(0).smbl, 10);
  EXPECT_EQ(Held(1).ident, "\"");
  EXPECT_EQ(Held(1).cmnt, ",\"\"");
  EXPECT_EQ(Held(2).ident, "A=B");
  EXPECT_EQ(Held(2).cmnt, "SAY \"HI\", X=1");
  EXPECT_EQ(data_.Routes()[0].cmnt, "OUT,AND \"BACK\"");
  EXPECT_EQ(data_.Logs()[0].trk_ident, "A,B");
}

TEST_F(StandardReaderTest, AWrappedTextAtTheEndOfALineKeepsItsCommas) {
  ReadLines({ShortWaypoint("A") + std::string(38, '\t') + "=\"Y,Z\""});
  EXPECT_EQ(Held(0).details->cross_road, "Y,Z");
}

TEST_F(StandardReaderTest, WhatIsNotWrappedAsAWholeIsSplitAtItsCommas) {
  ReadLines({"WPT\tD\tWGS84\t=\"A\",35,135.25,=\"B\", 7", "WPT,D,WGS84,=\"A\",35,135.25,=\"C\"\t=\"8\""});
  EXPECT_EQ(Held(0).lon_deg, 135.25);
  EXPECT_EQ(Held(0).cmnt, "B");
  EXPECT_EQ(Held(0).smbl, 7);
  EXPECT_EQ(Held(1).cmnt, "C");
  EXPECT_EQ(Held(1).smbl, 8);
}

TEST_F(StandardReaderTest, ColumnsAreCountedWithAWrappedTextAsOne) {
  const std::string text = "\t=\"" + std::string(300, ',') + "\"";
  const std::string six = "WPT\tD\tWGS84\tA\t35\t135";
  ExpectSkipped(six + text + std::string(250, '\t'), TooManyColumns);
  ExpectSkipped(six + text + std::string(250, ','), TooManyColumns);
  EXPECT_EQ(ReadLines({six + text + std::string(249, '\t')}).skipped.count, 0);
  EXPECT_EQ(Held(0).cmnt, std::string(300, ','));
}

TEST_F(StandardReaderTest, ZeroIsAPositionLikeOthers) {
  ReadLines(
      {ShortWaypoint("A", "0", "0.0"), "WPT\tMPS\tWGS84\tB\t0/00/01.0\t0/00/00.0", ShortWaypoint("C", "-.5", "0E5")});
  ASSERT_EQ(data_.Waypoints().size(), 3U);
  EXPECT_EQ(Held(2).lat_deg, -0.5);
}

TEST_F(StandardReaderTest, TimesThatAreNoDatesAreTold) {
  const ImportResult result =
      ReadLines({SomeTrack, "TRP\tD\tWGS84\t35\t135\t15/11/2002 09:00:00\tTRUE",
                 "TRP\tD\tWGS84\t35\t135\t1989/12/31 09:00:00\tFALSE", "TRP\tD\tWGS84\t35\t135\t\tFALSE"});
  EXPECT_EQ(result.track_points, 3);
  EXPECT_EQ(result.unread_time.count, 1);
  EXPECT_EQ(result.unread_time.first_line, 2);
}

TEST_F(StandardReaderTest, PositionsAtTheEdgesAreKept) {
  ReadLines(
      {ShortWaypoint("A", "90", "180"), ShortWaypoint("B", "-90", "-180"), ShortWaypoint("C", "=\"35.5\"", "\"1\"")});
  ASSERT_EQ(data_.Waypoints().size(), 3U);
  EXPECT_EQ(Held(2).lat_deg, 35.5);
  EXPECT_EQ(Held(2).lon_deg, 1);
}

TEST_F(StandardReaderTest, TheFirstSkippedLineIsNamed) {
  const ImportResult result = ReadLines({ShortWaypoint("A"), "other", ShortWaypoint("B", ""), "WPT\tQ\tR\tS\tT\tU"});
  EXPECT_EQ(result.skipped.count, 2);
  EXPECT_EQ(result.skipped.first_line, 3);
  EXPECT_EQ(result.skipped.first_why, NoPosition);
  EXPECT_EQ(data_.Waypoints().size(), 1U);
}

TEST_F(StandardReaderTest, AFullStoreSkipsTheRest) {
  for (std::size_t i = 0; i < MaxWaypoints; ++i)
    (void)data_.Add(Named("W"));
  const ImportResult result = ReadLines({ShortWaypoint("A"), ShortWaypoint("B")});
  EXPECT_EQ(result.skipped.count, 2);
  EXPECT_EQ(result.skipped.first_why, StoreFull);
  EXPECT_EQ(data_.Waypoints().size(), MaxWaypoints);
}

TEST_F(StandardReaderTest, ARouteHasThePointsThatFollowItWhateverItsHeaderDeclares) {
  const ImportResult result = ReadLines({SomeRoute, ShortRoutePoint("P"), ShortRoutePoint("Q")});
  EXPECT_EQ(result.stored[IndexOf(DataKind::Route)], 1);
  EXPECT_EQ(result.route_points, 2);
  ASSERT_EQ(data_.Routes().size(), 1U);
  const Route& route = data_.Routes()[0];
  EXPECT_EQ(route.type, RouteHeaderType::D202);
  EXPECT_EQ(route.nmbr, 3);
  EXPECT_EQ(route.cmnt, "WALK");
  ASSERT_EQ(route.points.size(), 2U);
  EXPECT_EQ(route.points[0].waypoint.ident, "P");
  EXPECT_EQ(route.points[1].waypoint.ident, "Q");
}

TEST_F(StandardReaderTest, ARoutePointBringsItsLink) {
  std::string line = ShortRoutePoint("P") + std::string(38, '\t') + "\t3\t9" + std::string(16, '\t');
  ReadLines({SomeRoute, line + "\t8\t=\"path\""});
  const RouteLink& link = *data_.Routes()[0].points[0].link;
  EXPECT_EQ(link.link_class, 3);
  EXPECT_EQ(link.subclass, (Subclass{9, 0, 0, 0, 0, 0, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 8}));
  EXPECT_EQ(link.ident, "path");
}

TEST_F(StandardReaderTest, ALinkDoesNotInheritFromThePointBefore) {
  const std::string full = ShortRoutePoint("P") + std::string(38, '\t') + "\t3\t9" + std::string(17, '\t') + "\tpath";
  ReadLines({SomeRoute, full, ShortRoutePoint("Q")});
  EXPECT_NE(*data_.Routes()[0].points[0].link, RouteLink());
  EXPECT_EQ(*data_.Routes()[0].points[1].link, RouteLink());
}

TEST_F(StandardReaderTest, ARouteTakesAHundredPoints) {
  std::vector<std::string> lines{SomeRoute};
  for (int i = 0; i < 103; ++i)
    lines.push_back(ShortRoutePoint("P"));
  lines.push_back(SomeRoute);
  lines.push_back(ShortRoutePoint("NEXT"));
  EXPECT_EQ(ReadLines(lines).skipped.count, 3);
  EXPECT_EQ(data_.Routes()[0].points.size(), 100U);
  ASSERT_EQ(data_.Routes()[1].points.size(), 1U);
  EXPECT_EQ(data_.Routes()[1].points[0].waypoint.ident, "NEXT");
}

TEST_F(StandardReaderTest, PointsOfARefusedHeaderAreRefusedWithIt) {
  std::vector<std::string> lines;
  for (int i = 0; i < 80; ++i) {
    lines.push_back(SomeRoute);
    lines.push_back(ShortRoutePoint("P" + std::to_string(i)));
  }
  const ImportResult result = ReadLines(lines);
  EXPECT_EQ(result.stored[IndexOf(DataKind::Route)], 79);
  EXPECT_EQ(result.skipped.count, 2);
  EXPECT_EQ(ReadLines({ShortRoutePoint("LATE")}).skipped.first_why, HeaderRefused);
  ASSERT_EQ(data_.Routes().size(), 79U);
  ASSERT_EQ(data_.Routes()[78].points.size(), 1U);
  EXPECT_EQ(data_.Routes()[78].points[0].waypoint.ident, "P78");
}

TEST_F(StandardReaderTest, PointsWithoutAnyHeaderAreRefused) {
  const ImportResult result = ReadLines({ShortRoutePoint("P"), ShortTrackPoint()});
  EXPECT_EQ(result.skipped.count, 2);
  EXPECT_EQ(result.skipped.first_why, NoRouteHeader);
  EXPECT_EQ(ReadLines({ShortTrackPoint("north")}).skipped.first_why, NoTrackHeader);
  EXPECT_EQ(result.route_points, 0);
}

TEST_F(StandardReaderTest, PointsBeforeAHeaderGoToTheRouteOfAnEarlierRead) {
  ReadLines({SomeRoute, ShortRoutePoint("P"), SomeTrack, ShortTrackPoint()});
  const ImportResult result = ReadLines({ShortRoutePoint("Q"), ShortTrackPoint("36")});
  EXPECT_EQ(result.skipped.count, 0);
  EXPECT_TRUE(result.Received(DataKind::Route));
  EXPECT_TRUE(result.Received(DataKind::TrackLog));
  ASSERT_EQ(data_.Routes()[0].points.size(), 2U);
  EXPECT_EQ(data_.Routes()[0].points[1].waypoint.ident, "Q");
  ASSERT_EQ(data_.Logs()[0].points.size(), 2U);
  EXPECT_EQ(data_.Logs()[0].points[1].lat_deg, 36);
}

TEST_F(StandardReaderTest, PointsBehindAClearedKindAreRefused) {
  ReadLines({SomeRoute, ShortRoutePoint("P"), SomeTrack, ShortTrackPoint()});
  data_.Clear(DataKind::Route);
  data_.Clear(DataKind::TrackLog);
  EXPECT_EQ(ReadLines({ShortRoutePoint("Q"), ShortTrackPoint()}).skipped.count, 2);
}

TEST_F(StandardReaderTest, LogsFollowEachOtherWhateverTheirHeadersDeclare) {
  const ImportResult result =
      ReadLines({"TRH\t100\tFALSE\t4\t=\"a\"", ShortTrackPoint("1"), ShortTrackPoint("2"), "TRH\t0\t\t5\tb",
                 ShortTrackPoint("3"), "TRH\t7", "TRH\t30000\ttrue\t\tc", ShortTrackPoint("4")});
  EXPECT_EQ(result.stored[IndexOf(DataKind::TrackLog)], 4);
  EXPECT_EQ(result.track_points, 4);
  ASSERT_EQ(data_.Logs().size(), 4U);
  std::string latitudes;
  for (const TrackLog& log : data_.Logs()) {
    for (const TrackPoint& point : log.points)
      latitudes += std::to_string(static_cast<int>(point.lat_deg));
    latitudes += '|';
  }
  EXPECT_EQ(latitudes, "12|3||4|");
  EXPECT_FALSE(data_.Logs()[0].dspl);
  EXPECT_TRUE(data_.Logs()[1].dspl);
  EXPECT_TRUE(data_.Logs()[2].dspl);
  EXPECT_TRUE(data_.Logs()[3].dspl);
  EXPECT_EQ(data_.Logs()[0].trk_ident, "A");
  EXPECT_EQ(data_.Logs()[0].color, 4);
  EXPECT_EQ(data_.Logs()[2].color, 255) << "the line has ended";
  EXPECT_EQ(data_.Logs()[3].color, 0) << "the column is empty";
}

TEST_F(StandardReaderTest, AWholeTrackPointLine) {
  ReadLines({SomeTrack, "TRP\tD\tWGS84\t35.5\t135.25\t2001/03/20 14:20:30\ttrue\t0.5\t2.5\t99999"});
  const TrackPoint& point = data_.Logs()[0].points[0];
  EXPECT_EQ(point.lat_deg, 35.5);
  EXPECT_EQ(point.lon_deg, 135.25);
  EXPECT_EQ(point.time, 354000030U);
  EXPECT_TRUE(point.new_trk);
  EXPECT_EQ(point.alt_m, 0.5F);
  EXPECT_EQ(point.dpth_m, 2.5F);
}

TEST_F(StandardReaderTest, AShortTrackPointIsFilled) {
  ReadLines({SomeTrack, ShortTrackPoint(), ShortTrackPoint() + "\tno date\tFALSE\t\t"});
  EXPECT_EQ(data_.Logs()[0].points[0], At(35.5, 135.25));
  EXPECT_EQ(data_.Logs()[0].points[1].alt_m, 0) << "an empty column is 0";
}

TEST_F(StandardReaderTest, TheTrackStoreIsFilledToItsLastPlace) {
  std::string text = SomeTrack + "\n";
  for (std::size_t i = 0; i < MaxTrackPoints + 5; ++i)
    text += ShortTrackPoint() + "\n";
  const ImportResult result = ReadText(text);
  EXPECT_EQ(result.track_points, static_cast<int>(MaxTrackPoints));
  EXPECT_EQ(result.skipped.count, 5);
  EXPECT_EQ(data_.Logs()[0].points.size(), MaxTrackPoints);
}

TEST_F(StandardReaderTest, LinesEndWithAnyLineEnd) {
  const ImportResult result =
      ReadText(ShortWaypoint("A") + "\r" + ShortWaypoint("B") + "\n" + ShortWaypoint("C") + "\r\n\r\n\r" +
               ShortWaypoint("D") + "\n\n" + "WPT\tbad\r\n" + ShortWaypoint("E"));
  ASSERT_EQ(data_.Waypoints().size(), 5U);
  EXPECT_EQ(Held(0).ident, "A");
  EXPECT_EQ(Held(0).lon_deg, 135.25);
  EXPECT_EQ(Held(4).ident, "E");
  EXPECT_EQ(result.skipped.first_line, 8);
}

TEST_F(StandardReaderTest, ACommaSplitsAColumn) {
  ReadLines({"WPT,D,WGS84,A,35.5,135.25,X", ShortWaypoint("B") + "\tleft,right\t10"});
  EXPECT_EQ(Held(0).cmnt, "X");
  EXPECT_EQ(Held(1).cmnt, "LEFT");
  EXPECT_EQ(Held(1).smbl, 0);
}

TEST_F(StandardReaderTest, HostileColumnsDoNoHarm) {
  std::string subclass;
  for (int i = 0; i < 18; ++i)
    subclass += "\t1E+300";
  const ImportResult result =
      ReadLines({SomeRoute, "RTH\t-5\t" + std::string(100000, 'x') + "\t99999999999999999999", "TRH\t1E+999\t-\t-1\t",
                 ShortWaypoint(std::string(5000, '"') + "A", "1e-300", "-1e-300") + "\t" + std::string(9000, '=') +
                     "\t-99999\tx\t-1\tx\t1E+99\t1E+99\t1E+99\t1E+99" + subclass + "\t1E+99\t-1E+99\t1E-99",
                 std::string("WPT\tD\tWGS84\tN\0L\t35\t135", 22)});
  EXPECT_EQ(result.skipped.count, 0);
  EXPECT_EQ(Held(0).ident, "A");
  EXPECT_EQ(Held(0).alt_m, std::nullopt);
  EXPECT_EQ(Held(0).details->subclass[17], 255);
  EXPECT_EQ(Held(1).ident, "N L");
  EXPECT_EQ(data_.Routes()[1].nmbr, 0);
}

}  // namespace
}  // namespace walrim
