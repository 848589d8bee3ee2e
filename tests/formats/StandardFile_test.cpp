#include "formats/StandardFile.h"

#include <array>
#include <gtest/gtest.h>
#include <random>
#include <utility>

#include "Support.h"
#include "text/Cp932.h"
#include "text/Numbers.h"

namespace walrim {
namespace {

/// "0" six times and "255" twelve times, as lines carry no subclass.
const std::string NoSubclassColumns = "0\t0\t0\t0\t0\t0\t255\t255\t255\t255\t255\t255\t255\t255\t255\t255\t255\t255";

template <typename... Parts>
std::string LineOf(const StandardLineWriter& writer, const Parts&... parts) {
  std::string line;
  writer.Append(line, parts...);
  return line;
}

template <typename... Parts>
std::string LineOf(const Parts&... parts) {
  return LineOf(StandardLineWriter(AngleNotation::D, Datum::Wgs84, 9), parts...);
}

/// A waypoint with a value in every kind of column.
Waypoint Summit() {
  Waypoint waypoint = Named("007", 34.69173611111111, 135.5, "SUMMIT");
  waypoint.smbl = 8246;
  waypoint.dspl = 1;
  waypoint.alt_m = 1234.5F;
  waypoint.dst_m = 12.5F;
  waypoint.details.Set(&WaypointDetails::country, "JP");
  waypoint.details.Set(&WaypointDetails::city, "  FUJI ");
  return waypoint;
}

TEST(StandardHeaderLine, CarriesTheTitles) {
  EXPECT_EQ(StandardHeaderLine(StandardLine::Waypoint),
            "WPT\tDegreeType\tDatum\tident\tlat\tlon\tcmnt\tsmbl\tsmbl(notes)\tdspl\tdspl(notes)\tdst\tcolor\twpt_class"
            "\tattr\tsubclass(1/18)\tsubclass(2/18)\tsubclass(3/18)\tsubclass(4/18)\tsubclass(5/18)\tsubclass(6/18)"
            "\tsubclass(7/18)\tsubclass(8/18)\tsubclass(9/18)\tsubclass(10/18)\tsubclass(11/18)\tsubclass(12/18)"
            "\tsubclass(13/18)\tsubclass(14/18)\tsubclass(15/18)\tsubclass(16/18)\tsubclass(17/18)\tsubclass(18/18)"
            "\talt\tdpth\tdist\tstate\tcc\tidents\tcomment\tfacility\tcity\taddr\tcross_road");
  EXPECT_EQ(StandardHeaderLine(StandardLine::RouteHeader), "RTH\tnmbr\tcmnt\trte_wpt_num");
  EXPECT_EQ(StandardHeaderLine(StandardLine::RoutePoint),
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
  EXPECT_EQ(StandardHeaderLine(StandardLine::TrackHeader), "TRH\ttrk_pnt_num\thdr.dspl\thdr.color\thdr.trk_ident");
  EXPECT_EQ(StandardHeaderLine(StandardLine::TrackPoint),
            "TRP\tDegreeType\tDatum\tlat\tlon\ttime\tnew_trk\talt\tdpth\tleg_dist(m)");
}

TEST(StandardLineWriter, AWaypointLine) {
  EXPECT_EQ(LineOf(Summit()),
            "WPT\tD\tWGS84\t=\"007\"\t34.6917361111111\t135.5\t=\"SUMMIT\"\t=\"8246\"\tsummit symbol\t=\"1\"\tDisplay "
            "symbol by itself\t12.5\t255\t0\t96\t" +
                NoSubclassColumns +
                "\t1234.5\t1E+25\t0\t=\"  \"\t=\"JP\"\t=\"007\"\t=\"SUMMIT\"\t=\"\"\t=\"FUJI\"\t=\"\"\t=\"\"");
}

TEST(StandardLineWriter, AWaypointOfAFixedWidthTypeKeepsItsPadding) {
  Waypoint waypoint = Named(std::string("AB\0   ", 6), 0, 0, "LAKE" + std::string(36, ' '));
  waypoint.type = WaypointType::D103;
  waypoint.smbl = 10;
  waypoint.dst_m = std::nullopt;
  EXPECT_EQ(LineOf(waypoint),
            "WPT\tD\tWGS84\t=\"AB    \"\t0\t0\t=\"LAKE" + std::string(36, ' ') +
                "\"\t=\"10\"\tflag symbol\t=\"0\"\tDisplay symbol with waypoint name\t\t255\t0\t96\t" +
                NoSubclassColumns + "\t1E+25\t1E+25\t0\t=\"\"\t=\"\"\t=\"\"\t=\"\"\t=\"\"\t=\"\"\t=\"\"\t=\"\"");
}

TEST(StandardLineWriter, CodesAreNamedByTheTypeThatAWaypointCameAs) {
  Waypoint waypoint = Named("A");
  waypoint.smbl = 1;
  const auto notes = [&](WaypointType type) {
    waypoint.type = type;
    const std::string line = LineOf(waypoint);
    const std::size_t at = line.find("=\"1\"\t") + 5;
    return line.substr(at, line.find('\t', at) - at);
  };
  EXPECT_EQ(notes(WaypointType::D103), "house symbol");
  EXPECT_EQ(notes(WaypointType::D108), "white bell symbol");
  waypoint.smbl = 65000;
  EXPECT_NE(LineOf(waypoint).find("\t=\"65000\"\t\t"), std::string::npos);
}

TEST(StandardLineWriter, ASymbolThatNobodyGaveIsZero) {
  Waypoint waypoint = Named("A");
  waypoint.smbl = std::nullopt;
  EXPECT_NE(LineOf(waypoint).find("\t=\"0\"\twhite anchor symbol\t"), std::string::npos);
}

TEST(StandardLineWriter, ARouteHeaderLine) {
  EXPECT_EQ(LineOf(Numbered(3, "MOUNTAIN", {Named("A"), Named("B")})), "RTH\t3\t=\"MOUNTAIN\"\t2");
}

TEST(StandardLineWriter, ARoutePointLine) {
  RoutePoint point{Summit(), {}};
  point.link.Set(&RouteLink::link_class, std::uint16_t{3});
  point.link.Set(&RouteLink::ident, "PATH");
  EXPECT_EQ(LineOf(point, RouteHeaderType::D202),
            "RTP\tD\tWGS84\t=\"007\"\t34.6917361111111\t135.5\t=\"SUMMIT\"\t=\"8246\"\t=\"summit symbol\"\t=\"1\""
            "\t=\"white bell symbol\"\t12.5\t255\t0\t96\t" +
                NoSubclassColumns +
                "\t1234.5\t1E+25\t0\t=\"  \"\t=\"JP\"\t=\"007\"\t=\"SUMMIT\"\t=\"\"\t=\"  FUJI \"\t=\"\"\t=\"\"\t3\t" +
                NoSubclassColumns + "\t=\"PATH\"");
}

TEST(StandardLineWriter, AddressesLoseTheirBlanksInWaypointsAndKeepThemInRoutePoints) {
  Waypoint waypoint = Named("A");
  waypoint.details.Set(&WaypointDetails::facility, " F ");
  waypoint.details.Set(&WaypointDetails::city, " C ");
  waypoint.details.Set(&WaypointDetails::addr, " A ");
  waypoint.details.Set(&WaypointDetails::cross_road, " X ");
  const std::string line = LineOf(waypoint);
  EXPECT_TRUE(line.ends_with("\t=\"A\"\t=\"\"\t=\"F\"\t=\"C\"\t=\"A\"\t=\"X\"")) << line;
  const std::string point = LineOf(RoutePoint{waypoint, {}}, RouteHeaderType::D202);
  EXPECT_NE(point.find("\t=\" F \"\t=\" C \"\t=\" A \"\t=\" X \"\t0\t"), std::string::npos) << point;
}

TEST(StandardLineWriter, PointsOfANumberedRouteHaveEmptyLinkColumns) {
  RoutePoint point{Named("P"), {}};
  point.link.Set(&RouteLink::link_class, std::uint16_t{3});
  const std::string line = LineOf(point, RouteHeaderType::D201);
  EXPECT_TRUE(line.ends_with("\t=\"\"" + std::string(20, '\t') + "=\"\"")) << line;
}

TEST(StandardLineWriter, ATrackHeaderLine) {
  TrackLog log;
  log.dspl = false;
  log.color = 7;
  log.trk_ident = "ACTIVE LOG";
  log.points.resize(3);
  EXPECT_EQ(LineOf(log), "TRH\t3\tFALSE\t7\t=\"ACTIVE LOG\"");
}

TEST(StandardLineWriter, TrackPointLinesCarryTheLeg) {
  TrackPoint first = At(0, 135, 354000000, true);
  first.alt_m = 0.5F;
  const TrackPoint second = At(0, 135.001, 354000030);
  const TrackPoint third = At(0, 136.001);
  const TrackPoint* const none = nullptr;
  EXPECT_EQ(LineOf(first, none), "TRP\tD\tWGS84\t0\t135\t2001/03/20 14:20:00\tTRUE\t0.5\t1E+25\t0");
  EXPECT_EQ(LineOf(second, &first), "TRP\tD\tWGS84\t0\t135.001\t2001/03/20 14:20:30\tFALSE\t1E+25\t1E+25\t111.3");
  EXPECT_EQ(LineOf(third, &second), "TRP\tD\tWGS84\t0\t136.001\t1989/12/31 09:00:00\tFALSE\t1E+25\t1E+25\t111306.6");
}

TEST(StandardLineWriter, TheLegOfAntipodalPointsIsHalfTheSphere) {
  for (const auto& [from, to] : {std::pair(At(0, 0), At(0, 180)), std::pair(At(-90, -180), At(90, 0))}) {
    const std::string line = LineOf(to, &from);
    EXPECT_EQ(line.substr(line.rfind('\t') + 1), "20035183.7");
  }
}

TEST(StandardLineWriter, TimesAreInTheZone) {
  const TrackPoint* const none = nullptr;
  const StandardLineWriter writer(AngleNotation::D, Datum::Wgs84, 0);
  EXPECT_NE(LineOf(writer, At(1, 2, 2147483647), none).find("\t2058/01/18 03:14:07\t"), std::string::npos);
  EXPECT_NE(LineOf(writer, At(1, 2), none).find("\t1989/12/31 00:00:00\t"), std::string::npos);
}

TEST(StandardLineWriter, PositionsInTheOtherNotations) {
  const StandardLineWriter dms(AngleNotation::DMS, Datum::Wgs84, 9);
  const StandardLineWriter mps(AngleNotation::MPS, Datum::Wgs84, 9);
  EXPECT_TRUE(LineOf(dms, Summit()).starts_with("WPT\tDMS\tWGS84\t=\"007\"\t34.413025\t135.300000\t"));
  EXPECT_TRUE(LineOf(mps, Summit()).starts_with("WPT\tMPS\tWGS84\t=\"007\"\t34/41/30.2\t135/30/00.0\t"));
}

TEST(StandardLineWriter, TokyoPositionsAreConvertedAndHeightsStay) {
  const GeoPoint tokyo = ConvertDatum({34.69173611111111, 135.5, 0}, Datum::Wgs84, Datum::Tokyo);
  const std::string line = LineOf(StandardLineWriter(AngleNotation::D, Datum::Tokyo, 9), Summit());
  std::string beginning = "WPT\tD\tTokyo\t=\"007\"\t";
  AppendGeneralNumber(beginning, tokyo.latitude_deg);
  AppendGeneralNumber(beginning += '\t', tokyo.longitude_deg);
  EXPECT_TRUE(line.starts_with(beginning + "\t")) << line;
  EXPECT_NE(line.find("\t1234.5\t"), std::string::npos);
}

TEST(StandardLineWriter, WhatWouldBreakTheFileIsWrittenAsABlankAndACommaAsItIs) {
  EXPECT_NE(LineOf(Named(std::string("A\tB\rC\nD\0E", 9))).find("\t=\"A B C D E\"\t"), std::string::npos);
  EXPECT_NE(LineOf(Named("A", 1, 2, "A,B")).find("\t=\"A,B\"\t"), std::string::npos);
}

class StandardFileTest : public ::testing::Test {
 protected:
  DataSet data_;
};

TEST_F(StandardFileTest, EmptyKindsGiveNothing) {
  WriteSettings settings = Settings();
  settings.with_header = true;
  EXPECT_EQ(Written(FormatId::Standard, data_, settings), "");
}

TEST_F(StandardFileTest, KindsAreWrittenInOrderWithTheirHeaders) {
  (void)data_.Add(Named("W"));
  (void)data_.Begin(Numbered(1, "R", {Named("P"), Named("Q")}));
  AddLog(data_, {At(1, 2), At(3, 4)});
  const Route& route = data_.Routes()[0];
  const TrackLog& log = data_.Logs()[0];
  const TrackPoint* const none = nullptr;
  WriteSettings settings = Settings();
  settings.with_header = true;
  EXPECT_EQ(Written(FormatId::Standard, data_, settings),
            Lines({StandardHeaderLine(StandardLine::Waypoint), LineOf(data_.Waypoints()[0]),
                   StandardHeaderLine(StandardLine::RouteHeader), StandardHeaderLine(StandardLine::RoutePoint),
                   LineOf(route), LineOf(route.points[0], route.type), LineOf(route.points[1], route.type),
                   StandardHeaderLine(StandardLine::TrackHeader), StandardHeaderLine(StandardLine::TrackPoint),
                   LineOf(log), LineOf(log.points[0], none), LineOf(log.points[1], &log.points[0])}));
}

TEST_F(StandardFileTest, OnlyTheWantedKindsAreWritten) {
  (void)data_.Add(Named("W"));
  (void)data_.Begin(Numbered(1, "R"));
  WriteSettings settings = Settings();
  settings.kinds = {false, true, false};
  EXPECT_EQ(Written(FormatId::Standard, data_, settings), Lines({LineOf(data_.Routes()[0])}));
}

TEST_F(StandardFileTest, PointsBeforeTheFirstLogAreALogOfTheirOwn) {
  TrackLog headless;
  headless.headless = true;
  AddLog(data_, {At(1, 1)}, headless);
  AddLog(data_, {At(2, 2, {}, true)});
  EXPECT_EQ(Written(FormatId::Standard, data_),
            "TRH\t1\tTRUE\t255\t=\"\"\r\n"
            "TRP\tD\tWGS84\t1\t1\t1989/12/31 09:00:00\tFALSE\t1E+25\t1E+25\t0\r\n"
            "TRH\t1\tTRUE\t255\t=\"\"\r\n"
            "TRP\tD\tWGS84\t2\t2\t1989/12/31 09:00:00\tTRUE\t1E+25\t1E+25\t0\r\n");
}

TEST_F(StandardFileTest, ProgressIsToldBeforeEachRecord) {
  AddLog(data_, {});
  AddLog(data_, {});
  std::vector<std::array<int, 3>> calls;
  WriteSettings settings = Settings();
  settings.progress = [&calls](DataKind kind, int number, int count) {
    calls.push_back({static_cast<int>(kind), number, count});
  };
  (void)Written(FormatId::Standard, data_, settings);
  EXPECT_EQ(calls, (std::vector<std::array<int, 3>>{{2, 1, 2}, {2, 2, 2}}));
}

// ---- There and back

/// All kinds, every value from a fixed random sequence.
DataSet RandomData() {
  DataSet data;
  std::mt19937 random(11);
  std::uniform_real_distribution<double> lat(24, 46);
  std::uniform_real_distribution<double> lon(123, 146);
  const auto waypoint = [&](int i) {
    Waypoint point = Named("W" + PadNumber(i, 4), lat(random), lon(random));
    point.cmnt = i % 2 == 0 ? "山小屋" : "HUT NO " + std::to_string(i);
    point.smbl = static_cast<std::uint16_t>(random() % 16403);
    point.dspl = static_cast<std::uint8_t>(random() % 3);
    point.dst_m = static_cast<float>(random() % 100) / 10;
    point.alt_m = static_cast<float>(random() % 40000) / 10;
    Subclass subclass;
    for (auto& byte : subclass)
      byte = static_cast<std::uint8_t>(random() % 256);
    point.details.Set(&WaypointDetails::subclass, subclass);
    return point;
  };
  for (int i = 0; i < 50; ++i)
    (void)data.Add(waypoint(i));
  for (int number = 1; number <= 4; ++number) {
    Route route = Numbered(number, "ROUTE " + std::to_string(number));
    for (int i = 0; i < number * 3; ++i) {
      route.points.push_back({waypoint(i), {}});
      route.points.back().link.Set(&RouteLink::link_class, static_cast<std::uint16_t>(random() % 65536));
      route.points.back().link.Set(&RouteLink::ident, "link");
    }
    (void)data.Begin(route);
  }
  for (int number = 1; number <= 5; ++number) {
    TrackLog log;
    log.trk_ident = "LOG " + std::to_string(number);
    log.dspl = number % 2 != 0;
    std::vector<TrackPoint> points;
    for (int i = 0; i < number * 7; ++i)
      points.push_back(At(lat(random), lon(random), 354000000 + static_cast<GarminSeconds>(i), i == 0));
    AddLog(data, points, log);
  }
  return data;
}

TEST_F(StandardFileTest, EveryPrintableCharacterComesBack) {
  for (char c = ' ' + 1; c < 0x7F; ++c) {
    if (c >= 'a' && c <= 'z') continue;  // idents and comments are held in capitals
    const std::string text = std::string(1, c) + "A" + c + ",B" + c;
    Waypoint waypoint = Named(text, 35.5, 135.25, text);
    waypoint.details.Set(&WaypointDetails::facility, text);
    ASSERT_EQ(data_.Add(waypoint), AddResult::Stored);
    (void)data_.Begin(Numbered(1, text, {waypoint}));
    TrackLog log;
    log.trk_ident = text;
    AddLog(data_, {}, log);
  }
  DataSet back;
  const std::string text = Written(FormatId::Standard, data_);
  const ImportResult result = Read(FormatId::Standard, back, text);
  EXPECT_EQ(result.skipped.count, 0);
  EXPECT_EQ(result.overfull.count, 0);
  EXPECT_EQ(back.Waypoints(), data_.Waypoints());
  EXPECT_EQ(back.Routes(), data_.Routes());
  EXPECT_EQ(back.Logs(), data_.Logs());
  EXPECT_EQ(Written(FormatId::Standard, back), text);
}

struct Form {
  AngleNotation notation;
  Datum datum;
  int utc_offset_hours;
};
class StandardRoundTrip : public ::testing::TestWithParam<Form> {};

/// A waypoint with the position of another, which has to lie near.
void ExpectNear(Waypoint got, const Waypoint& expected) {
  EXPECT_NEAR(got.lat_deg, expected.lat_deg, 2e-5);
  EXPECT_NEAR(got.lon_deg, expected.lon_deg, 2e-5);
  got.lat_deg = expected.lat_deg;
  got.lon_deg = expected.lon_deg;
  EXPECT_EQ(got, expected);
}

TEST_P(StandardRoundTrip, AFileReadsBackAsTheSameRecords) {
  const auto [notation, datum, hours] = GetParam();
  WriteSettings settings = Settings(notation, datum, hours);
  settings.with_header = true;
  const DataSet first = RandomData();
  DataSet second;
  const std::string text = Written(FormatId::Standard, first, settings);
  EXPECT_EQ(Read(FormatId::Standard, second, text, hours).skipped.count, 0);
  ASSERT_EQ(second.Waypoints().size(), first.Waypoints().size());
  for (std::size_t i = 0; i < first.Waypoints().size(); ++i)
    ExpectNear(second.Waypoints()[i], first.Waypoints()[i]);
  ASSERT_EQ(second.Routes().size(), first.Routes().size());
  for (std::size_t r = 0; r < first.Routes().size(); ++r) {
    const Route& route = first.Routes()[r];
    EXPECT_EQ(second.Routes()[r].cmnt, route.cmnt);
    EXPECT_EQ(second.Routes()[r].nmbr, route.nmbr);
    ASSERT_EQ(second.Routes()[r].points.size(), route.points.size());
    for (std::size_t i = 0; i < route.points.size(); ++i) {
      ExpectNear(second.Routes()[r].points[i].waypoint, route.points[i].waypoint);
      EXPECT_EQ(second.Routes()[r].points[i].link, route.points[i].link);
    }
  }
  ASSERT_EQ(second.Logs().size(), first.Logs().size());
  for (std::size_t k = 0; k < first.Logs().size(); ++k) {
    const TrackLog& log = first.Logs()[k];
    EXPECT_EQ(second.Logs()[k].trk_ident, log.trk_ident);
    EXPECT_EQ(second.Logs()[k].dspl, log.dspl);
    ASSERT_EQ(second.Logs()[k].points.size(), log.points.size());
    for (std::size_t i = 0; i < log.points.size(); ++i) {
      EXPECT_EQ(second.Logs()[k].points[i].time, log.points[i].time);
      EXPECT_EQ(second.Logs()[k].points[i].new_trk, log.points[i].new_trk);
      EXPECT_NEAR(second.Logs()[k].points[i].lat_deg, log.points[i].lat_deg, 2e-5);
    }
  }
  if (datum != Datum::Wgs84 || notation != AngleNotation::D) return;
  // 15 digits of a position settle after the first writing.
  DataSet third;
  const std::string again = Written(FormatId::Standard, second, settings);
  Read(FormatId::Standard, third, again, hours);
  EXPECT_EQ(Written(FormatId::Standard, third, settings), again);
}

INSTANTIATE_TEST_SUITE_P(
    AllForms, StandardRoundTrip,
    ::testing::Values(Form{AngleNotation::D, Datum::Wgs84, 9}, Form{AngleNotation::DMS, Datum::Wgs84, 0},
                      Form{AngleNotation::MPS, Datum::Wgs84, -5}, Form{AngleNotation::D, Datum::Tokyo, 9},
                      Form{AngleNotation::DMS, Datum::Tokyo, 9}, Form{AngleNotation::MPS, Datum::Tokyo, 14}));

TEST_F(StandardFileTest, AShiftJisFileReadsLikeAUtf8One) {
  const std::string text = Written(FormatId::Standard, RandomData());
  const auto encoded = EncodeCp932(text);
  ASSERT_TRUE(encoded);
  ASSERT_NE(*encoded, text);
  DataSet utf8;
  Read(FormatId::Standard, utf8, text);
  LineSource lines(*encoded, TextEncoding::ShiftJis);
  (void)ReadStandardFile(lines, data_, {});
  EXPECT_EQ(data_.Waypoints(), utf8.Waypoints());
  EXPECT_EQ(data_.Routes(), utf8.Routes());
  EXPECT_EQ(data_.Logs(), utf8.Logs());
}

}  // namespace
}  // namespace walrim
