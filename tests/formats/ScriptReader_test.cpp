#include "formats/ScriptReader.h"

#include <cmath>
#include <cstdio>
#include <gtest/gtest.h>

#include "Support.h"
#include "formats/Messages.h"
#include "formats/StatementBuilder.h"

namespace walrim {
namespace {

std::string Built(StatementKeyword keyword, std::initializer_list<std::string_view> values) {
  std::string text;
  AppendStatement(text, keyword, values);
  return text + "\r\n";
}

/// A position on the Tokyo datum, which nearly all scripts are on.
std::string Place(double lat_deg, double lon_deg) {
  const GeoPoint point = ConvertDatum({lat_deg, lon_deg, 0}, Datum::Wgs84, Datum::Tokyo);
  char text[40];
  (void)std::snprintf(text, sizeof text, " %.4f %.4f ", point.latitude_deg, point.longitude_deg);
  return text;
}

std::string Described(const Waypoint& waypoint) {
  return waypoint.ident + Place(waypoint.lat_deg, waypoint.lon_deg) + waypoint.cmnt + "|";
}

/// A log's points, with the hours and minutes of their times and a star where a segment begins.
std::string Described(const TrackLog& log) {
  std::string text = "log";
  for (const TrackPoint& point : log.points) {
    text += Place(point.lat_deg, point.lon_deg);
    text += point.time ? std::to_string(*point.time) : "no time";
    if (point.new_trk) text += "*";
  }
  return text + "|";
}

std::string Described(const DataSet& data) {
  std::string text;
  for (const Waypoint& waypoint : data.Waypoints())
    text += Described(waypoint);
  for (const Route& route : data.Routes()) {
    text += "route " + std::to_string(route.nmbr) + " " + route.cmnt + "|";
    for (const RoutePoint& point : route.points)
      text += Described(point.waypoint);
  }
  for (const TrackLog& log : data.Logs())
    text += Described(log);
  return text;
}

class ScriptReaderTest : public ::testing::Test {
 protected:
  /// What a script brings. Times are taken as UTC.
  std::string Back(const std::string& script) {
    data_ = {};
    result_ = Read(FormatId::Script, data_, script, 0);
    return Described(data_);
  }

  DataSet data_;
  ImportResult result_;
};

/// 2002/11/16 09:00:00 UTC.
constexpr GarminSeconds Nine = 406371600;

/// The script of a data set on Tokyo, with times in UTC.
std::string ScriptOf(const DataSet& data, const ScriptOptions& options = {}) {
  WriteSettings settings = Settings(AngleNotation::D, Datum::Tokyo, 0);
  settings.script = options;
  return Written(FormatId::Script, data, settings);
}

DataSet SomeRecords() {
  DataSet data;
  (void)data.Add(Named("ABC", 34.5, 135.25, "SUMMIT"));
  (void)data.Begin(
      Numbered(7, "RIDGE", {Named("A", 34.5, 135.25, "C"), Named("B", 34.5, 135.5, "CRTD 14:05 15-NOV-02")}));
  AddLog(data, {At(34.5, 135.25, Nine, true), At(34.5, 135.5, Nine + 30), At(34.5, 135.75)});
  return data;
}

TEST_F(ScriptReaderTest, WhatIsNoScriptBringsNothing) {
  EXPECT_EQ(Back(""), "");
  EXPECT_EQ(Back("nothing of a script"), "");
  EXPECT_EQ(result_.statements.count, 1);
  EXPECT_EQ(result_.statements.first_why, format_messages::OpenStatement);
}

TEST_F(ScriptReaderTest, OurPointsComeBackAsWhatTheyWere) {
  EXPECT_EQ(Back(ScriptOf(SomeRecords())),
            "ABC 34.4967 135.2528 SUMMIT|"
            "route 7 RIDGE|A 34.4967 135.2528 C|B 34.4967 135.5028 CRTD 14:05 15-NOV-02|"
            "log 34.4967 135.2528 406371600* 34.4967 135.5028 406371630 34.4967 135.7528 no time|");
  EXPECT_EQ(result_.stored, (std::array<int, DataKindCount>{1, 1, 1}));
  EXPECT_EQ(result_.route_points, 2);
  EXPECT_EQ(result_.track_points, 3);
  EXPECT_EQ(result_.skipped.count + result_.overfull.count + result_.statements.count, 0);
}

TEST_F(ScriptReaderTest, TheOptionsChangeNothingOfWhatComesBack) {
  const std::string plain = Back(ScriptOf(SomeRecords()));
  EXPECT_EQ(Back(ScriptOf(SomeRecords(), {-11, "START", "GOAL", true, 1})), plain);
}

TEST_F(ScriptReaderTest, TimesAreInTheZoneOfTheReader) {
  Read(FormatId::Script, data_, ScriptOf(SomeRecords()), 9);
  EXPECT_EQ(data_.Logs()[0].points[0].time, Nine - 9 * 3600);
  EXPECT_EQ(data_.Logs()[0].points[2].time, std::nullopt);
}

TEST_F(ScriptReaderTest, AStepLosesTimesButNoPoint) {
  DataSet data;
  AddLog(data, {At(34.5, 135.25, Nine, true), At(34.5, 135.5, Nine + 30), At(34.5, 135.75, Nine + 60)});
  EXPECT_EQ(Back(ScriptOf(data, {0, "", "", false, 5})),
            "log 34.4967 135.2528 406371600* 34.4967 135.5028 no time 34.4967 135.7528 406371660|");
}

TEST_F(ScriptReaderTest, PositionsOfAThemeOnWgs84AreOnIt) {
  const std::string head = "theme str=Walrim Datum:WGS84 UTCOffset:0;\n";
  Back(head + "point oid=1,pos=34/30/0,135/15/0,str=a;\n");
  EXPECT_EQ(data_.Waypoints()[0].lat_deg, 34.5);
  EXPECT_EQ(data_.Waypoints()[0].lon_deg, 135.25);
  // Near its edge a way through the other datum would leave the globe.
  Back(head + "point oid=1,pos=34/30/0,180/0/0,str=a;\n");
  ASSERT_EQ(data_.Waypoints().size(), 1U);
  EXPECT_EQ(data_.Waypoints()[0].lon_deg, 180);
}

TEST_F(ScriptReaderTest, AThemeBehindThePointsHoldsForThemToo) {
  Back("point oid=1,pos=34/30/0,135/15/0,str=a;\ntheme str=WGS84;\npoint oid=1,pos=34/30/0,135/15/0,str=a;\n");
  ASSERT_EQ(data_.Waypoints().size(), 2U);
  EXPECT_NEAR(data_.Waypoints()[0].lat_deg, 34.5, 1e-5);
  EXPECT_EQ(data_.Waypoints()[0], data_.Waypoints()[1]);
}

TEST_F(ScriptReaderTest, TheDatumIsWhatTheGeorefOrTheThemeSaysFirst) {
  const std::string point = "point oid=1,pos=34/30/0,135/15/0,str=a;\n";
  const auto on_wgs84 = [&](const std::string& script) {
    Back(script);
    return std::abs(data_.Waypoints().at(0).lat_deg - 34.5) < 1e-5;
  };
  for (const std::string& says : {std::string("georef system=WGS84;\n"), std::string("GEOREF SYSTEM=wgs84;\n"),
                                  std::string("\t\tgeoref\tsystem=JGD2000;\n"), std::string("theme str=on WGS84;\n"),
                                  std::string("theme str=my huts;\ngeoref system=WGS84;\n"),
                                  std::string("georef system=WGS84;\ntheme str=Tokyo;\n")}) {
    EXPECT_TRUE(on_wgs84(says + point)) << says;
    EXPECT_TRUE(on_wgs84(point + says)) << says;
  }
  for (const std::string& says : {std::string(), std::string("georef system=TOKYO;\n"),
                                  std::string("theme str=my huts;\n"), std::string("georef system=unknown;\n"),
                                  std::string("theme str=Walrim Datum:Tokyo UTCOffset:0;\ngeoref system=WGS84;\n")}) {
    EXPECT_FALSE(on_wgs84(says + point)) << says;
    EXPECT_FALSE(on_wgs84(point + says)) << says;
  }
}

TEST_F(ScriptReaderTest, TheHoursOfTheThemeHoldWhateverTheGeorefSays) {
  const std::string theme = "theme str=Walrim Datum:WGS84 UTCOffset:9;\n";
  const std::string point = "point oid=1,gid=5131,pos=34/30/0,135/15/0,info=[WP]<A><CRTD 14:05 15-NOV-02>;\n";
  for (const std::string& script :
       {"georef system=WGS84;\n" + theme + point, point + theme + "georef system=WGS84;\n"}) {
    Back(script);
    EXPECT_EQ(data_.Waypoints().at(0).cmnt, "CRTD 05:05 15-NOV-02");
  }
}

TEST_F(ScriptReaderTest, AScriptFromElsewhereGivesItsPoints) {
  EXPECT_EQ(Back("mapserver script ver=1.0;\r\n"
                 "\t\ttheme\tstr=my huts;\r\n"
                 "\t\tpoint\toid=4\r\n\t\t\t\tgid=9\r\n\t\t\t\tpos=34/30/00.0,135/15/00.0\r\n"
                 "\t\t\t\tstr=hut, \"old\"\r\n\t\t\t\tinfo=open in summer;\r\n"
                 "\t\tline\toid=5\r\n\t\t\t\tpos=34/30/00.0,135/15/00.0,34/31/00.0,135/15/00.0\r\n\t\t\t\tstr=path;\r\n"
                 "POINT OID=6 GID=5131 POS=34/30/0,135/30/0;\n"
                 "point oid=7,gid=5133,pos=34/30/0,135/30/0,str=x,info=RP:1<A><c>;\n"
                 "point oid=8,gid=5135,pos=34/30/0,135/30/0,str=y,info=[TR]#1 TP:1 11/16/2002 09:00:00;\n"),
            "HUT   OLD 34.5000 135.2500 OPEN IN SUMMER|6 34.5000 135.5000 |X 34.5000 135.5000 RP:1<A><C>|"
            "Y 34.5000 135.5000 [TR]#1 TP:1 11/16/2002 09:00:00|");
}

TEST_F(ScriptReaderTest, ACommentIsCutAsItWouldBeInAWptPlusLine) {
  EXPECT_EQ(Back("point oid=1,gid=9,pos=34/30/0,135/30/0,str=a=b,info=hut, closed;\n"
                 "point oid=2,gid=9,pos=34/30/0,135/30/0,str=c,info=\"d, e\";\n"),
            "AB 34.5000 135.5000 HUT|C 34.5000 135.5000 D, E|");
  EXPECT_EQ(result_.overfull.count, 1);
  EXPECT_EQ(result_.overfull.first_line, 2) << "behind the Datum line that would stand there";
}

TEST_F(ScriptReaderTest, ALogEndsWhereAnythingElseBegins) {
  const std::string log = Built(StatementKeyword::Line, {"1", "5134", "34/30/0,135/15/0", "[TR]#1"});
  const std::string time = Built(StatementKeyword::Point,
                                 {"2", "5135", "34/30/0,135/15/0", "", "", "", "", "[TR]#1 TP:1 11/16/2002 09:00:00"});
  EXPECT_EQ(Back(log + time + Built(StatementKeyword::Point, {"3", "9", "34/30/0,135/15/0", "x"}) + log),
            "X 34.5000 135.2500 |log 34.5000 135.2500 406371600*|log 34.5000 135.2500 no time*|");
}

TEST_F(ScriptReaderTest, APointOfALogThatHasNoSuchOneIsAWaypoint) {
  for (const char* info :
       {"[TR]#1 TP:0 x", "[TR]#1 TP:2 x", "[TR]#2 TP:1 x", "[TR]#1 TP:99999999999999999999 x", "[TR]#1"}) {
    const std::string text =
        Back(Built(StatementKeyword::Line, {"1", "5134", "34/30/00.0,135/15/00.0", "[TR]#1"}) +
             Built(StatementKeyword::Point, {"2", "5135", "34/30/00.0,135/15/00.0", "p", "", "", "", info}));
    EXPECT_TRUE(text.starts_with("P 34.5000")) << info;
    EXPECT_NE(text.find("log 34.5000"), std::string::npos) << info;
  }
}

TEST_F(ScriptReaderTest, StatementsThatGiveNothingAreCounted) {
  EXPECT_EQ(Back("point oid=1,pos=34/30/0;\n"
                 "point oid=2,pos=x,135/0/0;\n"
                 "point oid=3,pos=1/2/3/4,135/0/0;\n"
                 "\t\tline\toid=4\r\n\t\t\t\tgid=5134\r\n\t\t\t\tpos=34/0/0,135/0/0,99/0/0,135/0/0,34/1/0\r\n\t\t\t\t"
                 "str=[TR]#1;\n"
                 "point oid=5,pos=34/0/0,135/0/0\n"),
            "log 34.0000 135.0000 no time*|");
  EXPECT_EQ(result_.statements.count, 6);
  EXPECT_EQ(result_.statements.first_why, format_messages::UnreadPosition);
}

TEST_F(ScriptReaderTest, WhatStandsBehindAStatementOnItsLineIsCountedButNotARemark) {
  Back(
      "point oid=1,pos=34/0/0,135/0/0;point oid=2,pos=34/0/0,135/0/0; line oid=3;\n"
      "point oid=4,pos=34/0/0,135/0/0; // hut;\n"
      "point oid=5,\npos=34/0/0,135/0/0;\t\n"
      "theme str=a;b\n");
  EXPECT_EQ(result_.statements.count, 2);
  EXPECT_EQ(result_.statements.first_why, format_messages::StatementTail);
  EXPECT_EQ(data_.Waypoints().size(), 3U);
}

TEST_F(ScriptReaderTest, APointIndentedByTabsMayHaveItsKeysBehindCommas) {
  const std::string point = "HUT 34.5000 135.2500 OPEN|";
  EXPECT_EQ(Back("\t\tpoint\toid=4, gid=9,pos=34/30/0,135/15/0,str=hut,info=open;\r\n"), point);
  EXPECT_EQ(Back("\t\tpoint\toid=4\r\n    gid=9\r\n    pos=34/30/0,135/15/0\r\n    str=hut\r\n    info=open;\r\n"),
            point);
}

TEST_F(ScriptReaderTest, ALogGivesNoMorePointsThanCanBeStored) {
  std::string pos;
  for (std::size_t i = 0; i < MaxTrackPoints + 10; ++i)
    pos += i == 0 ? "1,1" : ",1,1";
  const std::string line = Built(StatementKeyword::Line, {"1", "5134", pos, "[TR]#1"});
  Back(line + line);
  EXPECT_EQ(result_.track_points, static_cast<int>(MaxTrackPoints));
  EXPECT_EQ(result_.statements.count, 2);
  EXPECT_EQ(result_.statements.first_why, format_messages::TooManyLogPoints);
}

TEST_F(ScriptReaderTest, PointsOfARouteThatDidNotFitAreCountedByTheirLines) {
  std::string script;
  for (int i = 0; i < 80; ++i)
    script += "line oid=1,gid=5132,str=RtNo:1 RpNum:0,info=[RT]<r>;\n";
  Back(script + "point oid=1,gid=5133,pos=34/0/0,135/0/0,str=x,info=RP:1<A><c>;\n");
  EXPECT_EQ(data_.Routes().size(), 79U);
  EXPECT_EQ(result_.skipped.count, 2);
  EXPECT_EQ(result_.skipped.first_line, 81);
  EXPECT_EQ(result_.skipped.first_why, format_messages::StoreFull);
}

}  // namespace
}  // namespace walrim
