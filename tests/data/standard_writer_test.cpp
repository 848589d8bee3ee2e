#include <gtest/gtest.h>
#include <stdexcept>

#include "data/GeneralWalrim.h"
#include "geo/GeneralLatLon.h"
#include "support.h"
#include "text/Numbers.h"

namespace walrim {
namespace {

/// "0" six times and "255" twelve times, as lines carry no subclass.
const char* const NoSubclassColumns = "0\t0\t0\t0\t0\t0\t255\t255\t255\t255\t255\t255\t255\t255\t255\t255\t255\t255";

class StandardWriterTest : public ::testing::Test {
 protected:
  std::string LineOf(std::string_view tag, int record, int point = 0, const TextSettings& settings = {}) {
    return StandardWriter(data_, Names(), settings).BuildDataLine(tag, record, point);
  }

  /// A D108 waypoint with a value in every kind of column.
  static D108Entry Summit() {
    D108Entry entry;
    entry.ident = "007";
    entry.cmnt = "SUMMIT";
    entry.lat_deg = 34.69173611111111;
    entry.lon_deg = 135.5;
    entry.smbl = 8196;
    entry.dspl = 1;
    entry.alt_m = 1234.5F;
    entry.cc.Set("JP");
    entry.city = "  FUJI ";
    return entry;
  }

  const std::unique_ptr<InternalData> owner_ = std::make_unique<InternalData>();
  InternalData& data_ = *owner_;
};

TEST_F(StandardWriterTest, HeaderLinesCarryTheTitles) {
  EXPECT_EQ(BuildHeaderLine("WPT"),
            "WPT\tDegreeType\tDatum\tident\tlat\tlon\tcmnt\tsmbl\tsmbl(notes)\tdspl\tdspl(notes)\tdst\tcolor\twpt_class"
            "\tattr\tsubclass(1/18)\tsubclass(2/18)\tsubclass(3/18)\tsubclass(4/18)\tsubclass(5/18)\tsubclass(6/18)"
            "\tsubclass(7/18)\tsubclass(8/18)\tsubclass(9/18)\tsubclass(10/18)\tsubclass(11/18)\tsubclass(12/18)"
            "\tsubclass(13/18)\tsubclass(14/18)\tsubclass(15/18)\tsubclass(16/18)\tsubclass(17/18)\tsubclass(18/18)"
            "\talt\tdpth\tdist\tstate\tcc\tidents\tcomment\tfacility\tcity\taddr\tcross_road");
  EXPECT_EQ(BuildHeaderLine("RTH"), "RTH\tnmbr\tcmnt\trte_wpt_num");
  EXPECT_EQ(BuildHeaderLine("RTP"),
            "RTP\tDegreeType\tDatum\t(wp)ident\t(wp)lat\t(wp)lon\t(wp)cmnt\t(wp)smbl\t(wp)smbl(notes)\t(wp)dspl"
            "\t(wp)dspl(notes)\t(wp)dst\t(wp)color\t(wp)wpt_class\t(wp)attr\t(wp)subclass(1/18)\t(wp)subclass(2/18)"
            "\t(wp)subclass(3/18)\t(wp)subclass(4/18)\t(wp)subclass(5/18)\t(wp)subclass(6/18)\t(wp)subclass(7/18)"
            "\t(wp)subclass(8/18)\t(wp)subclass(9/18)\t(wp)subclass(10/18)\t(wp)subclass(11/18)\t(wp)subclass(12/18)"
            "\t(wp)subclass(13/18)\t(wp)subclass(14/18)\t(wp)subclass(15/18)\t(wp)subclass(16/18)\t(wp)subclass(17/18)"
            "\t(wp)subclass(18/18)\t(wp)alt\t(wp)dpth\t(wp)dist\t(wp)state\t(wp)cc\t(wp)idents\t(wp)comment"
            "\t(wp)facility\t(wp)city\t(wp)addr\t(wp)cross_road\t(link)class\t(link)subclass(1/18)"
            "\t(link)subclass(2/18)\t(link)subclass(3/18)\t(link)subclass(4/18)\t(link)subclass(5/18)"
            "\t(link)subclass(6/18)\t(link)subclass(7/18)\t(link)subclass(8/18)\t(link)subclass(9/18)"
            "\t(link)subclass(10/18)\t(link)subclass(11/18)\t(link)subclass(12/18)\t(link)subclass(13/18)"
            "\t(link)subclass(14/18)\t(link)subclass(15/18)\t(link)subclass(16/18)\t(link)subclass(17/18)"
            "\t(link)subclass(18/18)\t(link)ident");
  EXPECT_EQ(BuildHeaderLine("TRH"), "TRH\ttrk_pnt_num\thdr.dspl\thdr.color\thdr.trk_ident");
  EXPECT_EQ(BuildHeaderLine("TRP"), "TRP\tDegreeType\tDatum\tlat\tlon\ttime\tnew_trk\talt\tdpth\tleg_dist(m)");
  EXPECT_EQ(BuildHeaderLine("XYZ"), "");
  EXPECT_TRUE(ColumnTitles("wpt").empty());
  EXPECT_EQ(ColumnTitles("TRH").size(), 4U);
}

TEST_F(StandardWriterTest, AWaypointLine) {
  data_.d108[1] = Summit();
  data_.d104[1].dst_m = 12.5F;
  EXPECT_EQ(LineOf("WPT", 1),
            std::string("WPT\tD\tWGS84\t=\"007\"\t34.6917361111111\t135.5\t=\"SUMMIT\"\t=\"8196\"\tTracBack (feet) "
                        "symbol\t=\"1\"\tby itself\t12.5\t255\t0\t96\t") +
                NoSubclassColumns +
                "\t1234.5\t1E+25\t0\t=\"  \"\t=\"JP\"\t=\"007\"\t=\"SUMMIT\"\t=\"\"\t=\"FUJI\"\t=\"\"\t=\"\"");
}

TEST_F(StandardWriterTest, ADownloadedOldWaypointKeepsItsPadding) {
  data_.d103[1].ident.Set("AB");
  data_.d103[1].cmnt.Set("LAKE");
  data_.d103[1].smbl = 10;
  data_.SpreadWaypoint(1, WaypointType::D103);
  EXPECT_EQ(LineOf("WPT", 1), std::string("WPT\tD\tWGS84\t=\"AB    \"\t0\t0\t=\"LAKE") + std::string(36, ' ') +
                                  "\"\t=\"10\"\tflag symbol\t=\"0\"\twith waypoint name\t\t255\t0\t96\t" +
                                  NoSubclassColumns +
                                  "\t1E+25\t1E+25\t0\t=\"\"\t=\"\"\t=\"\"\t=\"\"\t=\"\"\t=\"\"\t=\"\"\t=\"\"");
}

TEST_F(StandardWriterTest, ARouteHeaderLine) {
  (void)data_.AddRouteHeader(Route("mountain", "12", "3"));
  EXPECT_EQ(LineOf("RTH", 1), "RTH\t3\t=\"MOUNTAIN\"\t12");
}

TEST_F(StandardWriterTest, ARoutePointLine) {
  const auto slot = static_cast<std::size_t>(RoutePointSlot(2, 3));
  data_.d108[slot] = Summit();
  D210Entry& link = data_.d210[LinkSlot(2, 3)];
  link.link_class = 3;
  link.ident = "PATH";
  EXPECT_EQ(LineOf("RTP", 2, 3),
            std::string("RTP\tD\tWGS84\t=\"007\"\t34.6917361111111\t135.5\t=\"SUMMIT\"\t=\"8196\"\t=\"TracBack (feet) "
                        "symbol\"\t=\"1\"\t=\"white bell symbol\"\t0\t255\t0\t96\t") +
                NoSubclassColumns +
                "\t1234.5\t1E+25\t0\t=\"  \"\t=\"JP\"\t=\"007\"\t=\"SUMMIT\"\t=\"\"\t=\"  FUJI \"\t=\"\"\t=\"\"\t3\t" +
                NoSubclassColumns + "\t=\"PATH\"");
}

TEST_F(StandardWriterTest, TheDisplayOfARoutePointIsNamedFromTheSymbols) {
  WaypointRecord record = Waypoint("P");
  record[WaypointField::dspl] = "1";
  (void)data_.AddRoutePoint({record, {}}, 1, 0);
  const std::string line = LineOf("RTP", 1, 0);
  EXPECT_NE(line.find("\t=\"1\"\t=\"white bell symbol\"\t"), std::string::npos) << line;
  EXPECT_EQ(line.find("by itself"), std::string::npos) << line;
}

TEST_F(StandardWriterTest, PointsOfANumberedRouteHaveEmptyLinkColumns) {
  (void)data_.AddRouteHeader(Route("R", "1"));
  (void)data_.AddRoutePoint({Waypoint("P"), {}}, 1, 0);
  data_.SpreadRouteHeader(1, true);
  const std::string line = LineOf("RTP", 1, 0);
  const std::string end = "\t=\"\"" + std::string(20, '\t') + "=\"\"";
  EXPECT_EQ(line.substr(line.size() - end.size()), end);
}

TEST_F(StandardWriterTest, ATrackHeaderLine) {
  (void)data_.AddTrackHeader(Track("active log", "3", "false"));
  EXPECT_EQ(LineOf("TRH", 1), "TRH\t3\tFALSE\t7\t=\"ACTIVE LOG\"");
}

TEST_F(StandardWriterTest, TrackPointLinesCarryTheLeg) {
  (void)data_.AddTrackHeader(Track("A", "3"));
  TrackPointEntry first = PointAt(0, 135, 354000000, true);
  first.alt_m = 0.5F;
  (void)data_.AddTrackPoint(first, 1, 0);
  (void)data_.AddTrackPoint(PointAt(0, 135.001, 354000030), 1, 1);
  (void)data_.AddTrackPoint(PointAt(0, 136.001, 4294967295.0), 1, 2);
  EXPECT_EQ(LineOf("TRP", 1, 0), "TRP\tD\tWGS84\t0\t135\t2001/03/20 14:20:00\tTRUE\t0.5\t1E+25\t0");
  EXPECT_EQ(LineOf("TRP", 1, 1), "TRP\tD\tWGS84\t0\t135.001\t2001/03/20 14:20:30\tFALSE\t1E+25\t1E+25\t111.3");
  const std::string last = LineOf("TRP", 1, 2);
  EXPECT_EQ(last.substr(0, 52), "TRP\tD\tWGS84\t0\t136.001\t1989/12/31 09:00:00\tFALSE\t1E+2");
  EXPECT_EQ(last.substr(last.rfind('\t') + 1), "111306.6");
}

TEST_F(StandardWriterTest, TheLargestTimeIsTheEpoch) {
  (void)data_.AddTrackHeader(Track("A", "1"));
  (void)data_.AddTrackPoint(PointAt(1, 2, 4294967295.0), 1, 0);
  EXPECT_NE(LineOf("TRP", 1, 0).find("\t1989/12/31 09:00:00\t"), std::string::npos);
  (void)data_.AddTrackPoint(PointAt(1, 2, 2147483647.0), 1, 0);
  EXPECT_NE(LineOf("TRP", 1, 0, {"D", "WGS84", 0}).find("\t2058/01/18 03:14:07\t"), std::string::npos);
}

TEST_F(StandardWriterTest, LegsAreNumbersForAntipodalPoints) {
  (void)data_.AddTrackHeader(Track("A", "2"));
  (void)data_.AddTrackPoint(PointAt(0, 0), 1, 0);
  (void)data_.AddTrackPoint(PointAt(0, 180), 1, 1);
  EXPECT_EQ(LineOf("TRP", 1, 1).find("nan"), std::string::npos);
  EXPECT_EQ(LineOf("TRP", 1, 1).find("inf"), std::string::npos);
}

TEST_F(StandardWriterTest, PositionsInTheOtherNotations) {
  data_.d108[1] = Summit();
  EXPECT_EQ(LineOf("WPT", 1, 0, {"DMS", "WGS84", 9}).substr(0, 41), "WPT\tDMS\tWGS84\t=\"007\"\t34.413025\t135.300000");
  EXPECT_EQ(LineOf("WPT", 1, 0, {"MPS", "WGS84", 9}).substr(0, 44),
            "WPT\tMPS\tWGS84\t=\"007\"\t34/41/30.2\t135/30/00.0\t");
}

TEST_F(StandardWriterTest, TokyoPositionsAreConvertedAndHeightsStay) {
  data_.d108[1] = Summit();
  const GeoPoint tokyo = ConvertDatum({34.69173611111111, 135.5, 0}, "WGS84", "TOKYO");
  const std::string line = LineOf("WPT", 1, 0, {"D", "Tokyo", 9});
  EXPECT_EQ(line.find("WPT\tD\tTokyo\t=\"007\"\t" + GeneralNumber(tokyo.latitude_deg) + "\t" +
                      GeneralNumber(tokyo.longitude_deg) + "\t"),
            0U)
      << line;
  EXPECT_NE(line.find("\t1234.5\t"), std::string::npos);
}

TEST_F(StandardWriterTest, WhatWouldBreakTheFileIsWrittenAsABlank) {
  data_.d108[1].ident = std::string("A\tB\rC\nD\0E", 9);
  EXPECT_NE(LineOf("WPT", 1).find("\t=\"A B C D E\"\t"), std::string::npos);
}

TEST_F(StandardWriterTest, CommasAreWrittenAsTheyAre) {
  data_.d108[1].cmnt = "A,B";
  EXPECT_NE(LineOf("WPT", 1).find("\t=\"A,B\"\t"), std::string::npos);
}

TEST_F(StandardWriterTest, UnknownTagsAppendNothing) {
  EXPECT_EQ(LineOf("XYZ", 1), "");
}

TEST_F(StandardWriterTest, RecordsThatAreNotThereThrow) {
  EXPECT_THROW((void)LineOf("WPT", 10000), std::out_of_range);
  EXPECT_THROW((void)LineOf("RTH", 80), std::out_of_range);
  EXPECT_THROW((void)LineOf("RTP", 1, 100), std::out_of_range);
  EXPECT_THROW((void)LineOf("TRP", 1, 30000), std::out_of_range);
}

TEST_F(StandardWriterTest, EmptyKindsAppendNothing) {
  EXPECT_EQ(Written(data_, {}, true), "");
}

TEST_F(StandardWriterTest, KindsAreWrittenInOrderWithTheirHeaders) {
  (void)data_.AddWaypoint(Waypoint("W"));
  (void)data_.AddRouteHeader(Route("R", "2"));
  (void)data_.AddRoutePoint({Waypoint("P"), {}}, 1, 0);
  (void)data_.AddRoutePoint({Waypoint("Q"), {}}, 1, 1);
  (void)data_.AddTrackHeader(Track("T", "1"));
  (void)data_.AddTrackPoint(PointAt(1, 2), 1, 0);
  const std::string end = "\r\n";
  const std::string expected = BuildHeaderLine("WPT") + end + LineOf("WPT", 1) + end +  //
                               BuildHeaderLine("RTH") + end + BuildHeaderLine("RTP") + end + LineOf("RTH", 1) + end +
                               LineOf("RTP", 1, 0) + end + LineOf("RTP", 1, 1) + end +  //
                               BuildHeaderLine("TRH") + end + BuildHeaderLine("TRP") + end + LineOf("TRH", 1) + end +
                               LineOf("TRP", 1, 0) + end;
  EXPECT_EQ(Written(data_, {}, true), expected);
}

TEST_F(StandardWriterTest, ADownloadedRouteIsNumberedFromOne) {
  data_.routes.RouteCount = 1;
  data_.routes.RoutePointCount[1] = 2;
  data_.routes.first_point[1] = 1;
  data_.MirrorRouteCounters();
  data_.d108[2100].ident = "ZERO";
  data_.d108[2101].ident = "ONE";
  data_.d108[2102].ident = "TWO";
  const std::string text = Written(data_);
  EXPECT_EQ(text.find("ZERO"), std::string::npos);
  EXPECT_LT(text.find("=\"ONE\""), text.find("=\"TWO\""));
  EXPECT_NE(text.find("=\"TWO\""), std::string::npos);
}

TEST_F(StandardWriterTest, PointsBeforeTheFirstLogAreALogOfTheirOwn) {
  data_.track_points[1] = PointAt(1, 1);
  data_.track_points[2] = PointAt(2, 2, 0, true);
  data_.tracks.TrackCount = 1;
  data_.tracks.TrackPointCount[0] = 1;
  data_.tracks.TrackStart[0] = 1;
  data_.tracks.TrackPointCount[1] = 1;
  data_.tracks.TrackStart[1] = 2;
  data_.MirrorTrackCounters();
  EXPECT_EQ(Written(data_),
            "TRH\t1\tTRUE\t255\t=\"\"\r\n"
            "TRP\tD\tWGS84\t1\t1\t1989/12/31 09:00:00\tFALSE\t1E+25\t1E+25\t0\r\n"
            "TRH\t1\tTRUE\t255\t=\"\"\r\n"
            "TRP\tD\tWGS84\t2\t2\t1989/12/31 09:00:00\tTRUE\t1E+25\t1E+25\t0\r\n");
}

TEST_F(StandardWriterTest, CountsAreTakenFromTheMirroredCounters) {
  data_.routes.RouteCount = 5;
  data_.tracks.TrackCount = 5;
  EXPECT_EQ(Written(data_), "");
}

TEST_F(StandardWriterTest, ProgressIsToldBeforeEachRecord) {
  (void)data_.AddTrackHeader(Track("A", "0"));
  (void)data_.AddTrackHeader(Track("B", "0"));
  std::vector<std::array<int, 3>> calls;
  StandardWriter writer(data_, Names(), {});
  std::string text;
  writer.AppendKind(text, DataKind::TrackLog, false, [&calls](DataKind kind, int number, int count) {
    calls.push_back({static_cast<int>(kind), number, count});
  });
  EXPECT_EQ(calls, (std::vector<std::array<int, 3>>{{2, 1, 2}, {2, 2, 2}}));
}

TEST(NameTables, ACodeWithoutARowHasNoName) {
  const NameTables& names = Names()[static_cast<std::size_t>(WaypointType::D108)];
  EXPECT_EQ(NameTables::NameOf(names.SymbolNames, 8196), "TracBack (feet) symbol");
  EXPECT_EQ(NameTables::NameOf(names.SymbolNames, 2), "");
  EXPECT_EQ(NameTables::NameOf(names.SymbolNames, 65535), "");
  EXPECT_EQ(NameTables::NameOf({}, 0), "");
}

}  // namespace
}  // namespace walrim
