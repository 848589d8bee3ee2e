#include <gtest/gtest.h>

#include "data/GeneralWalrim.h"
#include "support.h"
#include "text/Utf8.h"

namespace walrim {
namespace {

class StandardReaderTest : public ::testing::Test {
 protected:
  /// Reads the lines as one input.
  ImportSummary ReadLines(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines)
      text += line + "\r\n";
    return Read(data_, text);
  }
  /// Reads one line and expects that it is refused for this reason.
  void ExpectSkipped(const std::string& line, std::string_view why) {
    const ImportSummary summary = ReadLines({line});
    EXPECT_EQ(summary.skipped, 1) << line;
    EXPECT_EQ(summary.first_skipped_line, 1) << line;
    EXPECT_EQ(summary.first_skipped_why, why) << line;
    EXPECT_EQ(data_.WaypointCount, 0) << line;
  }

  const std::unique_ptr<InternalData> owner_ = std::make_unique<InternalData>();
  InternalData& data_ = *owner_;
};

const std::string SomeRoute = "RTH\t3\t=\"walk\"\t9";
const std::string SomeTrack = "TRH\t9\tTRUE\t4\t=\"log\"";

TEST(StripValue, RemovesEveryQuoteAndEqualsSign) {
  EXPECT_EQ(StripValue("=\"ABC\""), "ABC");
  EXPECT_EQ(StripValue("A=B\"C"), "ABC");
  EXPECT_EQ(StripValue("\"=\""), "");
  EXPECT_EQ(StripValue(" A "), " A ");
}

TEST_F(StandardReaderTest, AWholeWaypointLine) {
  const ImportSummary summary = ReadLines(
      {"WPT\tD\tWGS84\t=\"a01\"\t35.25\t-135.5\t=\"comment\"\t=\"8196\"\tany name\t=\"1\"\tany "
       "name\t12.5\t3\t64\t97\t1\t2\t3\t4\t5\t6\t7\t8\t9\t10\t11\t12\t13\t14\t15\t16\t17\t18\t100.5\t2.5\t0.5\t=\"ca\""
       "\t=\"jp\"\t=\"x\"\t=\"y\"\t=\"hut\"\t=\"fuji\"\t=\"1-2-3\"\t=\"r138\""});
  EXPECT_EQ(summary.stored[IndexOf(DataKind::Waypoint)], 1);
  EXPECT_EQ(summary.skipped, 0);
  EXPECT_TRUE(summary.Received(DataKind::Waypoint));
  EXPECT_FALSE(summary.Received(DataKind::Route));
  const D108Entry& entry = data_.d108[1];
  EXPECT_EQ(entry.ident, "A01");
  EXPECT_EQ(entry.cmnt, "COMMENT");
  EXPECT_EQ(entry.lat_deg, 35.25);
  EXPECT_EQ(entry.lon_deg, -135.5);
  EXPECT_EQ(entry.smbl, 8196);
  EXPECT_EQ(entry.dspl, 1);
  EXPECT_EQ(entry.color, 3);
  EXPECT_EQ(entry.wpt_class, 64);
  EXPECT_EQ(entry.attr, 97);
  EXPECT_EQ(entry.subclass, (Subclass{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18}));
  EXPECT_EQ(entry.alt_m, 100.5F);
  EXPECT_EQ(entry.dpth_m, 2.5F);
  EXPECT_EQ(entry.dist_m, 0.5F);
  EXPECT_EQ(entry.state.Bare(), "CA");
  EXPECT_EQ(entry.cc.Bare(), "JP");
  EXPECT_EQ(entry.facility, "HUT");
  EXPECT_EQ(entry.city, "FUJI");
  EXPECT_EQ(entry.addr, "1-2-3");
  EXPECT_EQ(entry.cross_road, "R138");
  EXPECT_EQ(data_.d104[1].dst_m, 12.5F);
  EXPECT_EQ(data_.d103[1].ident.Padded(), std::string("A01\0  ", 6));
}

TEST_F(StandardReaderTest, AnIdentIsReadWithAndWithoutItsWrapping) {
  ReadLines({ShortWaypoint("=\"007\""), ShortWaypoint("007"), ShortWaypoint("\"007\""), ShortWaypoint("0=0\"7")});
  ASSERT_EQ(data_.WaypointCount, 4);
  for (std::size_t slot = 1; slot <= 4; ++slot)
    EXPECT_EQ(data_.d108[slot].ident, "007") << slot;
}

TEST_F(StandardReaderTest, TagsAreMatchedInAnyCase) {
  ReadLines({"wpt\tD\tWGS84\tA\t35\t135", "Wpt\tD\tWGS84\tB\t35\t135", "\"WPT\"\tD\tWGS84\tC\t35\t135"});
  EXPECT_EQ(data_.WaypointCount, 3);
}

TEST_F(StandardReaderTest, OtherLinesAreIgnored) {
  const ImportSummary summary =
      ReadLines({"", "walrim Ver. 1.0", "WALRIM\tVer. 1\t2", "XYZ\tD\tWGS84", "WPTX\tD", std::string(1000, ','), "\t"});
  EXPECT_EQ(summary.skipped, 0);
  EXPECT_EQ(data_.WaypointCount, 0);
}

TEST_F(StandardReaderTest, HeaderLinesAddNothing) {
  std::vector<std::string> lines;
  for (const char* tag : {"WPT", "RTH", "RTP", "TRH", "TRP"}) {
    lines.push_back(BuildHeaderLine(tag));
    lines.push_back(UpperCase(BuildHeaderLine(tag)));
    lines.push_back(BuildHeaderLine(tag) + "\t\t");
  }
  lines.push_back("WPT\t\"DegreeType\"");
  const ImportSummary summary = ReadLines(lines);
  EXPECT_EQ(summary.skipped, 0);
  for (const DataKind kind : AllDataKinds) {
    EXPECT_EQ(data_.Count(kind), 0);
    EXPECT_FALSE(summary.Received(kind));
  }
}

TEST_F(StandardReaderTest, ALineThatEndsEarlyIsFilledWithTheClearedValues) {
  ReadLines({ShortWaypoint("A")});
  const D108Entry& entry = data_.d108[1];
  EXPECT_EQ(entry.color, 255);
  EXPECT_EQ(entry.attr, 96);
  EXPECT_EQ(entry.smbl, 18);
  EXPECT_EQ(entry.wpt_class, 0);
  EXPECT_EQ(entry.dspl, 0);
  EXPECT_EQ(entry.subclass, NoSubclass);
  EXPECT_EQ(entry.alt_m, UnknownMetres);
  EXPECT_EQ(entry.dpth_m, UnknownMetres);
  EXPECT_EQ(entry.dist_m, 0);
  EXPECT_EQ(data_.d104[1].smbl, 18);
  EXPECT_EQ(data_.d104[1].dst_m, 0);
  EXPECT_EQ(data_.d103[1].smbl, 18);
}

TEST_F(StandardReaderTest, ALineThatEndsInsideTheSubclassKeepsWhatItHas) {
  ReadLines({ShortWaypoint("A") + "\tC\t10\t\t0\t\t0\t7\t0\t96\t1\t2"});
  EXPECT_EQ(data_.d108[1].color, 7);
  EXPECT_EQ(data_.d108[1].subclass,
            (Subclass{1, 2, 0, 0, 0, 0, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255}));
}

TEST_F(StandardReaderTest, EmptyColumnsAreZero) {
  ReadLines({ShortWaypoint("A") + std::string(38, '\t')});
  const D108Entry& entry = data_.d108[1];
  EXPECT_EQ(entry.color, 0);
  EXPECT_EQ(entry.attr, 0);
  EXPECT_EQ(entry.smbl, 0);
  EXPECT_EQ(entry.subclass, Subclass{});
  EXPECT_EQ(entry.alt_m, 0);
  EXPECT_EQ(data_.d104[1].smbl, 18) << "an empty symbol is D104's dot";
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
  EXPECT_EQ(data_.d108[1].ident, "SECOND");
  EXPECT_EQ(data_.d108[1].cmnt, "ALSO");
}

TEST_F(StandardReaderTest, ADmsTokyoLineReadsBackWithinItsRounding) {
  (void)data_.AddWaypoint(Waypoint("A", "35.681382", "139.766084"));
  const std::string text = Written(data_, {"DMS", "Tokyo", 9});
  const auto other = std::make_unique<InternalData>();
  Read(*other, text);
  ASSERT_EQ(other->WaypointCount, 1);
  // Half of a hundredth of a second, and the metre that the datum loses on the way back.
  EXPECT_NEAR(other->d108[1].lat_deg, 35.681382, 0.005 / 3600 + 1 / 111000.0);
  EXPECT_NEAR(other->d108[1].lon_deg, 139.766084, 0.005 / 3600 + 1 / 90000.0);
}

TEST_F(StandardReaderTest, NotationAndDatumAreReadInAnyCase) {
  ReadLines({"WPT\t dms \twgs84\tA\t35.40\t135.3000", "WPT\t=\"DM\"\t\"tokyo\"\tB\t35.30\t135",
             "WPT\tpao\tTOKYO\tC\t35/30/30250\t135/0/0"});
  ASSERT_EQ(data_.WaypointCount, 3);
  EXPECT_EQ(data_.d108[1].lat_deg, 35.0 + 2.0 / 3.0);
  EXPECT_EQ(data_.d108[1].lon_deg, 135.5);
  EXPECT_NEAR(data_.d108[2].lat_deg, 35.5, 0.01);
  EXPECT_NE(data_.d108[2].lat_deg, 35.5);
}

TEST_F(StandardReaderTest, AnEmptyDatumIsTheReceiversOwn) {
  StandardReader reader(data_, 9);
  reader.ReadText("WPT\tD\t\tA\t35\t135\r\n");
  EXPECT_EQ(reader.Summary().skipped, 0);
  EXPECT_EQ(data_.d108[1].lat_deg, 35.0);
}

TEST_F(StandardReaderTest, ACommaInsideATextIsToldAndEmptyColumnsBehindAreNot) {
  const std::string filled = "WPT\tD\tWGS84\tA\t35\t135" + std::string(38, '\t') + "=\"X\"";
  StandardReader reader(data_, 9);
  reader.ReadText(filled + "\t\t\t\r\n" + filled + ", Y\r\n" + filled + ",Z\r\n");
  EXPECT_EQ(reader.Summary().stored[0], 3);
  EXPECT_EQ(reader.Summary().overfull, 2);
  EXPECT_EQ(reader.Summary().first_overfull_line, 2);
}

TEST_F(StandardReaderTest, LinesThatCannotBeMeantAreSkipped) {
  ExpectSkipped("WPT\tXYZ\tWGS84\tA\t35\t135", "角度の表記が不明です");
  ExpectSkipped("WPT\t\t\tA\t35\t135", "角度の表記が不明です");
  ExpectSkipped("WPT", "角度の表記が不明です");
  ExpectSkipped("WPT\tD\tNAD27\tA\t35\t135", "測地系が不明です");
  ExpectSkipped("WPT\tD", "緯度または経度がありません");
  ExpectSkipped("WPT\tD\tWGS84\tA\t\t135", "緯度または経度がありません");
  ExpectSkipped("WPT\tD\tWGS84\tA\t35\t=\"\"", "緯度または経度がありません");
  ExpectSkipped("WPT\tD\tWGS84\tA\t35", "緯度または経度がありません");
  ExpectSkipped("WPT\tD\tWGS84\tA\t90.0001\t135", "緯度または経度が範囲外です");
  ExpectSkipped("WPT\tD\tWGS84\tA\t35\t-180.5", "緯度または経度が範囲外です");
  ExpectSkipped("WPT\tD\tTokyo\tA\t1E+300\t135", "緯度または経度が範囲外です");
  ExpectSkipped("WPT\tMPS\tWGS84\tA\t1/2/3/4\t135", "緯度または経度の書き方が不正です");
  ExpectSkipped("WPT" + std::string(256, '\t'), "列が多すぎます");
  ExpectSkipped("wpt" + std::string(256, ','), "列が多すぎます");
}

TEST_F(StandardReaderTest, AColumnThatIsNoNumberIsZeroAndOneThatBeginsWithANumberIsThat) {
  ReadLines({ShortWaypoint("A", "35", "135x") + "\tC\tsmall\t\t2nd"});
  EXPECT_EQ(data_.d108[1].lon_deg, 135);
  EXPECT_EQ(data_.d108[1].smbl, 0);
  EXPECT_EQ(data_.d108[1].dspl, 2);
}

TEST_F(StandardReaderTest, APositionThatIsNoNumberIsNotTakenForZero) {
  for (const char* lat : {"north", "N35", "1E+400", ".", "-"}) {
    ExpectSkipped(ShortWaypoint("A", lat, "135"), "緯度または経度の書き方が不正です");
  }
}

TEST_F(StandardReaderTest, AnIdentThatAnOwnCommaCutIsNotTakenForAPosition) {
  ExpectSkipped("WPT\tD\tWGS84\tA,B\t35.5\t139.25", "緯度または経度の書き方が不正です");
  ExpectSkipped("WPT,D,WGS84,=\"A,B\",35.5,139.25", "緯度または経度の書き方が不正です");
  ExpectSkipped("WPT\tD\tWGS84\tA\t=\"35,5\"\t139.25", "緯度または経度の書き方が不正です");
}

TEST_F(StandardReaderTest, AWrappedTextKeepsItsCommasQuotesAndEqualsSigns) {
  const ImportSummary summary = ReadLines({"WPT\tD\tWGS84\t=\"HUT,2\"\t35.5\t135.25\t=\"A, B,\"\t=\"10\"",
                                           "wpt\tD\tWGS84\t=\"\"\"\t35\t135\t=\",\"\"\"",
                                           "WPT\tD\tWGS84\t =\"A=B\" \t35\t135\t=\"SAY \"HI\", X=1\"",
                                           "RTH\t1\t=\"OUT,AND \"BACK\"\"\t1", "TRH\t1\tTRUE\t4\t=\"A,B\""});
  EXPECT_EQ(summary.stored, (std::array<int, DataKindCount>{3, 1, 1}));
  EXPECT_EQ(summary.skipped, 0);
  EXPECT_EQ(summary.overfull, 0);
  EXPECT_EQ(data_.d108[1].ident, "HUT,2");
  EXPECT_EQ(data_.d108[1].cmnt, "A, B,");
  EXPECT_EQ(data_.d108[1].lat_deg, 35.5);
  EXPECT_EQ(data_.d108[1].smbl, 10);
  EXPECT_EQ(data_.d108[2].ident, "\"");
  EXPECT_EQ(data_.d108[2].cmnt, ",\"\"");
  EXPECT_EQ(data_.d108[3].ident, "A=B");
  EXPECT_EQ(data_.d108[3].cmnt, "SAY \"HI\", X=1");
  EXPECT_EQ(data_.d202[1].rte_ident, "OUT,AND \"BACK\"");
  EXPECT_EQ(data_.d310[1].trk_ident, "A,B");
}

TEST_F(StandardReaderTest, AWrappedTextAtTheEndOfALineKeepsItsCommas) {
  ReadLines({ShortWaypoint("A") + std::string(38, '\t') + "=\"Y,Z\""});
  const WaypointRecord record = data_.GetWaypoint(1);
  EXPECT_NE(std::count(record.text.begin(), record.text.end(), "Y,Z"), 0);
}

TEST_F(StandardReaderTest, WhatIsNotWrappedAsAWholeIsSplitAsBefore) {
  ReadLines({"WPT\tD\tWGS84\t=\"A\",35,135.25,=\"B\", 7", "WPT,D,WGS84,=\"A\",35,135.25,=\"C\"\t=\"8\""});
  EXPECT_EQ(data_.d108[1].lon_deg, 135.25);
  EXPECT_EQ(data_.d108[1].cmnt, "B");
  EXPECT_EQ(data_.d108[1].smbl, 7);
  EXPECT_EQ(data_.d108[2].cmnt, "C");
  EXPECT_EQ(data_.d108[2].smbl, 8);
}

TEST_F(StandardReaderTest, ColumnsAreCountedWithAWrappedTextAsOne) {
  const std::string text = "\t=\"" + std::string(300, ',') + "\"";
  const std::string six = "WPT\tD\tWGS84\tA\t35\t135";
  ExpectSkipped(six + text + std::string(250, '\t'), "列が多すぎます");
  ExpectSkipped(six + text + std::string(250, ','), "列が多すぎます");
  EXPECT_EQ(ReadLines({six + text + std::string(249, '\t')}).skipped, 0);
  EXPECT_EQ(data_.d108[1].cmnt, std::string(300, ','));
}

TEST_F(StandardReaderTest, ZeroIsAPositionLikeOthers) {
  ReadLines(
      {ShortWaypoint("A", "0", "0.0"), "WPT\tMPS\tWGS84\tB\t0/00/01.0\t0/00/00.0", ShortWaypoint("C", "-.5", "0E5")});
  EXPECT_EQ(data_.WaypointCount, 3);
  EXPECT_EQ(data_.d108[3].lat_deg, -0.5);
}

TEST_F(StandardReaderTest, TimesThatAreNoDatesAreTold) {
  const ImportSummary summary =
      ReadLines({SomeTrack, "TRP\tD\tWGS84\t35\t135\t15/11/2002 09:00:00\tTRUE",
                 "TRP\tD\tWGS84\t35\t135\t1989/12/31 09:00:00\tFALSE", "TRP\tD\tWGS84\t35\t135\t\tFALSE"});
  EXPECT_EQ(summary.track_points, 3);
  EXPECT_EQ(summary.unread_times, 1);
  EXPECT_EQ(summary.first_unread_time_line, 2);
}

TEST_F(StandardReaderTest, PositionsAtTheEdgesAreKept) {
  ReadLines(
      {ShortWaypoint("A", "90", "180"), ShortWaypoint("B", "-90", "-180"), ShortWaypoint("C", "=\"35.5\"", "\"1\"")});
  EXPECT_EQ(data_.WaypointCount, 3);
  EXPECT_EQ(data_.d108[3].lat_deg, 35.5);
  EXPECT_EQ(data_.d108[3].lon_deg, 1);
}

TEST_F(StandardReaderTest, TheFirstSkippedLineIsNamed) {
  const ImportSummary summary = ReadLines({ShortWaypoint("A"), "other", ShortWaypoint("B", ""), "WPT\tQ\tR\tS\tT\tU"});
  EXPECT_EQ(summary.skipped, 2);
  EXPECT_EQ(summary.first_skipped_line, 3);
  EXPECT_EQ(summary.first_skipped_why, "緯度または経度がありません");
  EXPECT_EQ(data_.WaypointCount, 1);
}

TEST_F(StandardReaderTest, AFullStoreSkipsTheRest) {
  for (int i = 0; i < MaxWaypoints; ++i)
    (void)data_.AddWaypoint(Waypoint("W"));
  const ImportSummary summary = ReadLines({ShortWaypoint("A"), ShortWaypoint("B")});
  EXPECT_EQ(summary.skipped, 2);
  EXPECT_EQ(summary.first_skipped_why, "内部データ容量の限界です");
  EXPECT_EQ(data_.WaypointCount, MaxWaypoints);
}

TEST_F(StandardReaderTest, TheFirstPointAfterAHeaderIsPointZero) {
  const ImportSummary summary = ReadLines({SomeRoute, ShortRoutePoint("P"), ShortRoutePoint("Q")});
  EXPECT_EQ(data_.d108[2100].ident, "P");
  EXPECT_EQ(data_.d108[2101].ident, "Q");
  EXPECT_EQ(summary.stored[IndexOf(DataKind::Route)], 1);
  EXPECT_EQ(summary.route_points, 2);
  EXPECT_EQ(data_.routes.RoutePointCount[1], 2) << "what was stored, not what the header declared";
  EXPECT_EQ(data_.mirrored_routes.RoutePointCount[1], 2);
  EXPECT_EQ(data_.d201[1].nmbr, 3);
  EXPECT_EQ(data_.d202[1].rte_ident, "WALK");
}

TEST_F(StandardReaderTest, ARoutePointBringsItsLink) {
  std::string line = ShortRoutePoint("P") + std::string(38, '\t') + "\t3\t9";
  for (int i = 0; i < 16; ++i)
    line += "\t";
  ReadLines({SomeRoute, line + "\t8\t=\"path\""});
  const D210Entry& link = data_.d210[LinkSlot(1, 0)];
  EXPECT_EQ(link.link_class, 3);
  EXPECT_EQ(link.subclass, (Subclass{9, 0, 0, 0, 0, 0, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 8}));
  EXPECT_EQ(link.ident, "path");
}

TEST_F(StandardReaderTest, ALinkDoesNotInheritFromThePointBefore) {
  const std::string full = ShortRoutePoint("P") + std::string(38, '\t') + "\t3\t9" + std::string(17, '\t') + "\tpath";
  ReadLines({SomeRoute, full, ShortRoutePoint("Q")});
  const D210Entry& link = data_.d210[LinkSlot(1, 1)];
  EXPECT_EQ(link.link_class, 0);
  EXPECT_EQ(link.subclass, NoSubclass);
  EXPECT_EQ(link.ident, "");
}

TEST_F(StandardReaderTest, ARouteTakesAHundredPoints) {
  std::vector<std::string> lines{SomeRoute};
  for (int i = 0; i < 103; ++i)
    lines.push_back(ShortRoutePoint("P"));
  lines.push_back(SomeRoute);
  lines.push_back(ShortRoutePoint("NEXT"));
  const ImportSummary summary = ReadLines(lines);
  EXPECT_EQ(summary.skipped, 3);
  EXPECT_EQ(data_.routes.RoutePointCount[1], 100);
  EXPECT_EQ(data_.routes.RoutePointCount[2], 1);
  EXPECT_EQ(data_.d108[2200].ident, "NEXT");
}

TEST_F(StandardReaderTest, PointsOfARefusedHeaderAreRefusedWithIt) {
  std::vector<std::string> lines;
  for (int i = 0; i < 80; ++i) {
    lines.push_back(SomeRoute);
    lines.push_back(ShortRoutePoint("P" + std::to_string(i)));
  }
  const ImportSummary summary = ReadLines(lines);
  EXPECT_EQ(summary.stored[IndexOf(DataKind::Route)], 79);
  EXPECT_EQ(summary.skipped, 2);
  EXPECT_EQ(data_.import_cursor.route, AddRejected);
  EXPECT_EQ(ReadLines({ShortRoutePoint("LATE")}).first_skipped_why,
            "ヘッダ行を格納できなかったため，この点も格納できません");
  EXPECT_EQ(data_.routes.RoutePointCount[79], 1);
  EXPECT_EQ(data_.d108[9900].ident, "P78");
  EXPECT_EQ(data_.d108[9901].ident, "");
}

TEST_F(StandardReaderTest, PointsWithoutAnyHeaderAreRefused) {
  const ImportSummary summary = ReadLines({ShortRoutePoint("P"), ShortTrackPoint()});
  EXPECT_EQ(summary.skipped, 2);
  EXPECT_EQ(summary.first_skipped_why, "前にルートのヘッダ行(RTH)がありません");
  EXPECT_EQ(ReadLines({ShortTrackPoint()}).first_skipped_why, "前にトラックログのヘッダ行(TRH)がありません");
  EXPECT_EQ(summary.route_points, 0);
  EXPECT_EQ(data_.d108[2000].ident, "");
}

TEST_F(StandardReaderTest, PointsBeforeAHeaderGoToTheRouteOfAnEarlierRead) {
  ReadLines({SomeRoute, ShortRoutePoint("P"), SomeTrack, ShortTrackPoint()});
  const ImportSummary summary = ReadLines({ShortRoutePoint("Q"), ShortTrackPoint("36")});
  EXPECT_EQ(summary.skipped, 0);
  EXPECT_TRUE(summary.Received(DataKind::Route));
  EXPECT_TRUE(summary.Received(DataKind::TrackLog));
  EXPECT_EQ(data_.d108[2101].ident, "Q");
  EXPECT_EQ(data_.routes.RoutePointCount[1], 2);
  EXPECT_EQ(data_.mirrored_routes.RoutePointCount[1], 2);
  EXPECT_EQ(data_.track_points[1].lat_deg, 36);
  EXPECT_EQ(data_.mirrored_tracks.TrackPointCount[1], 2);
}

TEST_F(StandardReaderTest, ClearingAKindForgetsItsCursor) {
  ReadLines({SomeRoute, ShortRoutePoint("P"), SomeTrack, ShortTrackPoint()});
  data_.Clear(DataKind::Route);
  data_.Clear(DataKind::TrackLog);
  const ImportSummary summary = ReadLines({ShortRoutePoint("Q"), ShortTrackPoint()});
  EXPECT_EQ(summary.skipped, 2);
  EXPECT_EQ(data_.d108[2101].ident, "");
}

TEST_F(StandardReaderTest, AnInputWithoutRoutesLeavesTheirCounts) {
  (void)data_.AddRouteHeader(Route("R", "5"));
  (void)data_.AddTrackHeader(Track("T", "5"));
  data_.import_cursor = {1, 0, 1, 0};
  ReadLines({ShortWaypoint("A")});
  EXPECT_EQ(data_.routes.RoutePointCount[1], 5);
  EXPECT_EQ(data_.tracks.TrackPointCount[1], 5);
}

TEST_F(StandardReaderTest, LogsFollowEachOtherWhateverTheirHeadersDeclare) {
  const ImportSummary summary =
      ReadLines({"TRH\t100\tFALSE\t4\t=\"a\"", ShortTrackPoint("1"), ShortTrackPoint("2"), "TRH\t0\t\t5\tb",
                 ShortTrackPoint("3"), "TRH\t7", "TRH\t30000\ttrue\t6\tc", ShortTrackPoint("4")});
  EXPECT_EQ(summary.stored[IndexOf(DataKind::TrackLog)], 4);
  EXPECT_EQ(summary.track_points, 4);
  EXPECT_EQ(data_.tracks.TrackPointCount[1], 2);
  EXPECT_EQ(data_.tracks.TrackStart[2], 2);
  EXPECT_EQ(data_.tracks.TrackPointCount[2], 1);
  EXPECT_EQ(data_.tracks.TrackPointCount[3], 0);
  EXPECT_EQ(data_.tracks.TrackStart[4], 3);
  EXPECT_EQ(data_.mirrored_tracks.TrackPointCount[4], 1);
  for (std::size_t i = 0; i < 4; ++i)
    EXPECT_EQ(data_.track_points[i].lat_deg, static_cast<double>(i + 1));
  EXPECT_FALSE(data_.d310[1].dspl);
  EXPECT_TRUE(data_.d310[2].dspl);
  EXPECT_TRUE(data_.d310[4].dspl);
  EXPECT_EQ(data_.d310[1].trk_ident, "A");
  EXPECT_EQ(data_.d310[1].color, 4);
}

TEST_F(StandardReaderTest, PointsNeverLandInAnotherLog) {
  ReadLines({SomeTrack, ShortTrackPoint("1"), SomeTrack, ShortTrackPoint("2")});
  data_.import_cursor.track_log = 1;
  data_.import_cursor.track_points = 1;
  const ImportSummary summary = ReadLines({ShortTrackPoint("9")});
  EXPECT_EQ(summary.skipped, 1);
  EXPECT_EQ(data_.track_points[1].lat_deg, 2);
}

TEST_F(StandardReaderTest, AWholeTrackPointLine) {
  ReadLines({SomeTrack, "TRP\tD\tWGS84\t35.5\t135.25\t2001/03/20 14:20:30\ttrue\t0.5\t2.5\t99999"});
  const TrackPointEntry& entry = data_.track_points[0];
  EXPECT_EQ(entry.lat_deg, 35.5);
  EXPECT_EQ(entry.lon_deg, 135.25);
  EXPECT_EQ(entry.time, 354000030);
  EXPECT_TRUE(entry.new_trk);
  EXPECT_EQ(entry.alt_m, 0.5F);
  EXPECT_EQ(entry.dpth_m, 2.5F);
}

TEST_F(StandardReaderTest, AShortTrackPointIsFilled) {
  ReadLines({SomeTrack, ShortTrackPoint(), ShortTrackPoint() + "\tno date\tFALSE\t\t"});
  EXPECT_EQ(data_.track_points[0].time, 0);
  EXPECT_FALSE(data_.track_points[0].new_trk);
  EXPECT_EQ(data_.track_points[0].alt_m, UnknownMetres);
  EXPECT_EQ(data_.track_points[0].dpth_m, UnknownMetres);
  EXPECT_EQ(data_.track_points[1].alt_m, 0) << "an empty column is 0";
}

TEST_F(StandardReaderTest, TheTrackStoreIsFilledToItsLastSlot) {
  std::string text = SomeTrack + "\n";
  for (int i = 0; i < MaxTrackPoints + 5; ++i)
    text += ShortTrackPoint() + "\n";
  const ImportSummary summary = Read(data_, text);
  EXPECT_EQ(summary.track_points, MaxTrackPoints);
  EXPECT_EQ(summary.skipped, 5);
  EXPECT_EQ(data_.tracks.TrackPointCount[1], MaxTrackPoints);
}

TEST_F(StandardReaderTest, LinesEndWithAnyLineEnd) {
  const ImportSummary summary =
      Read(data_, ShortWaypoint("A") + "\r" + ShortWaypoint("B") + "\n" + ShortWaypoint("C") + "\r\n\r\n\r" +
                      ShortWaypoint("D") + "\n\n" + "WPT\tbad\r\n" + ShortWaypoint("E"));
  EXPECT_EQ(data_.WaypointCount, 5);
  EXPECT_EQ(data_.d108[1].ident, "A");
  EXPECT_EQ(data_.d108[1].lon_deg, 135.25);
  EXPECT_EQ(data_.d108[5].ident, "E");
  EXPECT_EQ(summary.first_skipped_line, 8);
}

TEST_F(StandardReaderTest, ACommaSplitsAColumn) {
  ReadLines({"WPT,D,WGS84,A,35.5,135.25,X", ShortWaypoint("B") + "\tleft,right\t10"});
  EXPECT_EQ(data_.d108[1].cmnt, "X");
  EXPECT_EQ(data_.d108[2].cmnt, "LEFT");
  EXPECT_EQ(data_.d108[2].smbl, 0);
}

TEST_F(StandardReaderTest, SplitColumnsAreStoredLikeALine) {
  StandardReader reader(data_, 9);
  const std::vector<std::string> texts{"TRH", "1", "TRUE", "4", "log"};
  const std::vector<std::string> point{"TRP", "D", "WGS84", "35.5", "135.25", "1989/12/31 09:00:05"};
  const std::vector<std::string> bad{"TRP", "D", "WGS84", "", ""};
  for (const auto& line : {texts, point, bad}) {
    const std::vector<std::string_view> columns(line.begin(), line.end());
    reader.SetLineNumber(42);
    reader.StoreLine(columns);
  }
  reader.StoreLine({});
  reader.Finish();
  EXPECT_EQ(data_.track_points[0].time, 5);
  EXPECT_EQ(data_.tracks.TrackPointCount[1], 1);
  EXPECT_EQ(reader.Summary().first_skipped_line, 42);
}

TEST_F(StandardReaderTest, HostileColumnsDoNoHarm) {
  std::string subclass;
  for (int i = 0; i < 18; ++i)
    subclass += "\t1E+300";
  const ImportSummary summary =
      ReadLines({SomeRoute, "RTH\t-5\t" + std::string(100000, 'x') + "\t99999999999999999999", "TRH\t1E+999\t-\t-1\t",
                 ShortWaypoint(std::string(5000, '"') + "A", "1e-300", "-1e-300") + "\t" + std::string(9000, '=') +
                     "\t-99999\tx\t-1\tx\t1E+99\t1E+99\t1E+99\t1E+99" + subclass + "\t1E+99\t-1E+99\t1E-99",
                 std::string("WPT\tD\tWGS84\tN\0L\t35\t135", 22)});
  EXPECT_EQ(summary.skipped, 0);
  EXPECT_EQ(data_.d108[1].ident, "A");
  EXPECT_EQ(data_.d108[1].alt_m, UnknownMetres);
  EXPECT_EQ(data_.d108[1].subclass[17], 255);
  EXPECT_EQ(data_.d108[2].ident, "N L");
}

}  // namespace
}  // namespace walrim
