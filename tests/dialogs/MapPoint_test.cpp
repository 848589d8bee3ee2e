#include "dialogs/MapPoint.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "formats/Format.h"

namespace walrim {
namespace {

constexpr double TakaoLat = 35 + (37 * 60 + 30.7) / 3600;
constexpr double TakaoLon = 139 + (14 * 60 + 37.3) / 3600;
constexpr double OneUlp = 1e-12;

void ExpectPoint(const std::string& text, double lat_deg, double lon_deg, Datum datum = Datum::Wgs84) {
  SCOPED_TRACE(text);
  const auto point = RecognizeMapPoint(text);
  ASSERT_TRUE(point);
  EXPECT_NEAR(point->lat_deg, lat_deg, OneUlp);
  EXPECT_NEAR(point->lon_deg, lon_deg, OneUlp);
  EXPECT_EQ(point->datum, datum);
}

void ExpectNone(const std::string& text) {
  EXPECT_FALSE(RecognizeMapPoint(text)) << text;
}

const std::string Point = "point\toid=1\r\n\t\t\t\tgid=5131\r\n\t\t\t\tpos=35/37/30.7,139/14/37.3";

TEST(MapPointPair, DecimalDegrees) {
  ExpectPoint("35.6252, 139.2437", 35.6252, 139.2437);
  ExpectPoint("35.6252,139.2437", 35.6252, 139.2437);
  ExpectPoint("35.6252 139.2437", 35.6252, 139.2437);
  ExpectPoint("  \t(35.6252, 139.2437)\r\n", 35.6252, 139.2437);
  ExpectPoint("35.6252\r\n139.2437\r\n", 35.6252, 139.2437);
  ExpectPoint("35.6252°, 139.2437°", 35.6252, 139.2437);
  ExpectPoint("35.6252°N 139.2437°E", 35.6252, 139.2437);
  ExpectPoint("35.6252 N, 139.2437 E", 35.6252, 139.2437);
  ExpectPoint("35N 139E", 35, 139);
}

TEST(MapPointPair, DegreesMinutesAndSeconds) {
  ExpectPoint("35°37'30.7\"N 139°14'37.3\"E", TakaoLat, TakaoLon);
  ExpectPoint("35°37′30.7″N 139°14′37.3″E", TakaoLat, TakaoLon);
  ExpectPoint("35°37’30.7”N, 139°14’37.3”E", TakaoLat, TakaoLon);
  ExpectPoint("35° 37' 30.7'' 139° 14' 37.3''", TakaoLat, TakaoLon);
  ExpectPoint("35°37′30.7′′139°14′37.3′′", TakaoLat, TakaoLon);
  ExpectPoint("N 35°37.5' E 139°14.25'", 35.625, 139.2375);
  ExpectPoint("35°30'N, 139°E", 35.5, 139);
}

TEST(MapPointPair, DottedParts) {
  ExpectPoint("N35.37.30.7 E139.14.37.3", TakaoLat, TakaoLon);
  ExpectPoint("n35.37.30.7e139.14.37.3", TakaoLat, TakaoLon);
  ExpectPoint("N35.37.30, E139.14.37", 35 + (37 * 60 + 30) / 3600.0, 139 + (14 * 60 + 37) / 3600.0);
}

TEST(MapPointPair, Japanese) {
  ExpectPoint("北緯35度37分30.7秒 東経139度14分37.3秒", TakaoLat, TakaoLon);
  ExpectPoint("北緯35度37分30.7秒、東経139度14分37.3秒", TakaoLat, TakaoLon);
  ExpectPoint("北緯35度37分30.7秒東経139度14分37.3秒", TakaoLat, TakaoLon);
  ExpectPoint("北緯３５度３７分３０．７秒　東経１３９度１４分３７．３秒", TakaoLat, TakaoLon);
  ExpectPoint("３５．６２５２，１３９．２４３７", 35.6252, 139.2437);
  ExpectPoint("南緯33度30分 西経70度15分", -33.5, -70.25);
  ExpectPoint("東経139度14分37.3秒 北緯35度37分30.7秒", TakaoLat, TakaoLon);
}

TEST(MapPointPair, SouthAndWest) {
  ExpectPoint("-33.5, -70.25", -33.5, -70.25);
  ExpectPoint("−33.5, −70.25", -33.5, -70.25);
  ExpectPoint("33.5S 70.25W", -33.5, -70.25);
  ExpectPoint("S33.30.00 W70.15.00", -33.5, -70.25);
  ExpectPoint("-33°30'00\", -70°15'00\"", -33.5, -70.25);
  ExpectPoint("+33.5, -0.25", 33.5, -0.25);
  ExpectPoint("W70.5 S33.5", -33.5, -70.5);
}

TEST(MapPointPair, TheLimitsAreInside) {
  ExpectPoint("90.0, 180.0", 90, 180);
  ExpectPoint("-90.0, -180.0", -90, -180);
  ExpectNone("90.0001, 139.0");
  ExpectNone("35.0, 180.0001");
  ExpectNone("139.2437, 35.6252 N");
  ExpectNone("139.2437, 35.6252");
  ExpectNone("35°60'00\"N 139°14'37\"E");
  ExpectNone("35°37'60\"N 139°14'37\"E");
  ExpectNone("N35.61.00 E139.14.37");
}

TEST(MapPointPair, TheDatumIsWhatTheTextSays) {
  ExpectPoint("35.6252, 139.2437 (日本測地系)", 35.6252, 139.2437, Datum::Tokyo);
  ExpectPoint("日本測地系：35.6252, 139.2437", 35.6252, 139.2437, Datum::Tokyo);
  ExpectPoint("Tokyo 35.6252, 139.2437", 35.6252, 139.2437, Datum::Tokyo);
  ExpectPoint("35.6252, 139.2437 世界測地系", 35.6252, 139.2437, Datum::Wgs84);
  ExpectPoint("35.6252, 139.2437 (日本測地系2011)", 35.6252, 139.2437, Datum::Wgs84);
  ExpectPoint("[wgs84] 35°37'30.7\"N 139°14'37.3\"E", TakaoLat, TakaoLon, Datum::Wgs84);
  ExpectNone("35.6252, 139.2437 NAD27");
  ExpectNone("Tokyo");
  ExpectNone("WGS84");
}

TEST(MapPointPair, ALoneAngleIsNoPoint) {
  ExpectPoint("35.6252 139.5", 35.6252, 139.5);
  for (const char* text : {"35.6252", "35°37.5", "35° 37.5", "35°37'30.7", "35°37' 30.7", "35°37'30.7\"",
                           "35°37'30.7\"N", "N35.37.30.7", "35.6 N", "35°37", "北緯35度37分30.7秒"})
    ExpectNone(text);
}

TEST(MapPointPair, WhatCouldBeAnythingIsNoPoint) {
  ExpectPoint("12.0, 34.0", 12, 34);
  for (const char* text : {"", " ", "12, 34", "12 34", "1.2.3.4 5.6.7.8", "10.0.0.1, 10.0.0.2", "35.6252, 139",
                           "35.6252-139.2437", "35,6252, 139,2437", "N35.6252", "hello", "高尾山", ",", "()", "N E",
                           "2002/11/15 14:25:30", "35/37/30.7,139/14/37.3"})
    ExpectNone(text);
}

TEST(MapPointPair, AnythingMoreIsRefused) {
  ExpectPoint("35.6252, 139.2437", 35.6252, 139.2437);
  for (const char* text : {"35.6252, 139.2437, 599.0",
                           "35.6252, 139.2437 35.6252, 139.2437",
                           "35.6252, 139.2437\n35.7, 139.3",
                           "at 35.6252, 139.2437",
                           "35.6252, 139.2437 x",
                           "35.6252,, 139.2437",
                           "N35.6252 139.2437",
                           "35.6252 139.2437E",
                           "N35.6252N E139.2437",
                           "N-35.6252 E139.2437",
                           "-35.6252S 139.2437E",
                           "N35.6 N139.2",
                           "E35.6 E139.2",
                           "35.5°30'N 139°E",
                           "35°30.5'30\"N 139°E",
                           "35.6252e0, 139.2437",
                           "0x23.5, 139.5",
                           "35.6252; 139.2437",
                           "--35.6252, 139.2437",
                           "35.6252°, 139.2437"})
    ExpectNone(text);
}

TEST(MapPointLink, GeoLinks) {
  ExpectPoint("geo:35.6252,139.2437", 35.6252, 139.2437);
  ExpectPoint("GEO:-33.5,-70.25,599", -33.5, -70.25);
  ExpectPoint("geo:35,139,-4.5;crs=WGS84;u=35", 35, 139);
  ExpectPoint("geo:35,139;u=35;unknown;other=%20", 35, 139);
  ExpectPoint("geo:35.6252,139.2437?z=17", 35.6252, 139.2437);
  ExpectPoint("geo:90,180", 90, 180);
  ExpectPoint(" geo:35.6252,139.2437\r\n", 35.6252, 139.2437);
  ExpectPoint("geo:35.6252,139.2437;crs=tokyo", 35.6252, 139.2437, Datum::Tokyo);
}

TEST(MapPointLink, TheLabelIsTheIdent) {
  const auto ident = [](const std::string& text) {
    const auto point = RecognizeMapPoint(text);
    return point ? point->ident : "no point";
  };
  EXPECT_EQ(ident("geo:35.6252,139.2437"), "");
  EXPECT_EQ(ident("geo:35.6252,139.2437?q=Takao"), "Takao");
  EXPECT_EQ(ident("geo:35.6252,139.2437?z=12&q=Mt+Takao%21"), "Mt Takao!");
  EXPECT_EQ(ident("geo:35.6252,139.2437?q=%E9%AB%98%E5%B0%BE%E5%B1%B1"), "高尾山");
  EXPECT_EQ(ident("geo:35.6252,139.2437?q=a%09b%00c"), "a b c");
  EXPECT_EQ(ident("geo:35.6252,139.2437?q=100%"), "100%");
  EXPECT_EQ(ident("geo:35.6252,139.2437?q=%E9%AB"), "no point") << "no UTF-8";
  EXPECT_EQ(ident("geo:35.6252,139.2437?q=35.6252,139.2437(Takao)"), "Takao");
  EXPECT_EQ(ident("geo:0,0?q=35.6252,139.2437(Takao)"), "Takao");
  EXPECT_EQ(ident("geo:0,0?q=35.6252,139.2437"), "");
}

TEST(MapPointLink, APlaceholderTakesThePositionOfTheLabel) {
  ExpectPoint("geo:0,0?q=35.6252,139.2437(Takao)", 35.6252, 139.2437);
  ExpectPoint("geo:0,0", 0, 0);
  ExpectNone("geo:0,0?q=Mt+Takao");
  ExpectNone("geo:0,0?q=95,139(nowhere)");
}

TEST(MapPointLink, OtherLinksAreRefused) {
  ExpectPoint("geo:35,139", 35, 139);
  for (const char* text : {"geo:", "geo:35", "geo:35,", "geo:,139", "geo:35,139,", "geo:35,139,1,2", "geo:91,139",
                           "geo:35,181", "geo:a,b", "geo:35,139;crs=moon-2011", "geo:35,139 x",
                           "geo:35,139\ngeo:36,140", "geo:35.6252,139.2437?q=36,140(elsewhere)", "geo://35,139",
                           "geo:35e0,139", "geo:+35,139", "x geo:35,139", "https://example.com/@35.6252,139.2437"})
    ExpectNone(text);
  ExpectNone("geo:1" + std::string(400, '0') + ",139");
}

TEST(MapPointScript, APointStatement) {
  ExpectPoint("\t\t" + Point + ";", TakaoLat, TakaoLon, Datum::Tokyo);
  ExpectPoint("point oid=1 gid=5131 pos=35/37/30.7,139/14/37.3;", TakaoLat, TakaoLon, Datum::Tokyo);
  ExpectPoint("POINT POS= 35/37/30.7 , 139/14/37.3 ;", TakaoLat, TakaoLon, Datum::Tokyo);
  ExpectPoint("point oid=1,gid=5131, pos=35/37/30.7,139/14/37.3, str=A, info=B;", TakaoLat, TakaoLon, Datum::Tokyo);
  ExpectPoint("point pos=35/37/30.7,139/14/37.3", TakaoLat, TakaoLon, Datum::Tokyo);
}

TEST(MapPointScript, StrIsTheIdentAndInfoTheComment) {
  const auto point =
      RecognizeMapPoint(Point +
                        "\r\n\t\t\t\tstr=TAKAO 1  \r\n\t\t\t\tstrformat=right\r\n\t\t\t\turl=\r\n\t\t\t\t"
                        "info=[WP] 高尾山, 599m;");
  ASSERT_TRUE(point);
  EXPECT_EQ(point->ident, "TAKAO 1");
  EXPECT_EQ(point->cmnt, "高尾山, 599m");
  const auto commas = RecognizeMapPoint("point pos=35/37/30.7,139/14/37.3, str=A B, info=x, y,;");
  ASSERT_TRUE(commas);
  EXPECT_EQ(commas->ident, "A B");
  EXPECT_EQ(commas->cmnt, "x, y,");
}

TEST(MapPointScript, AnInfoHoldsTheWholeIdentAndTheComment) {
  const std::string head = Point + "\r\n\t\t\t\tstr=ABCDEF\r\n\t\t\t\tstrformat=right\r\n\t\t\t\tinfo=";
  const auto texts = [&](const std::string& info) {
    const auto point = RecognizeMapPoint(head + info + ";");
    return point ? point->ident + "|" + point->cmnt : "no point";
  };
  EXPECT_EQ(texts("[WP]<ABCDEFGH><高尾山 str=1, <599m>>"), "ABCDEFGH|高尾山 str=1, <599m>");
  EXPECT_EQ(texts("[WP]<><>"), "|");
  EXPECT_EQ(texts("[WP]<A>"), "ABCDEF|<A>");
  EXPECT_EQ(texts("[WP]><"), "ABCDEF|><");
  EXPECT_EQ(texts("[WP]"), "ABCDEF|");
  EXPECT_EQ(texts("<A><B>"), "ABCDEF|<A><B>");
}

TEST(MapPointScript, AWholeScriptWithOnePoint) {
  const std::string head =
      "//Header:Prog:1.0.8.0 Templ:1.2 Date:2002/11/15 14:25:30;\r\nmapserver script ver=1.0;\r\n"
      "\t\tmessage\tstr=Walrim;\r\n\t\ttheme\tstr=Walrim;\r\n\t\tgroup\tgid=5131\r\n\t\t\t\tgname=Waypoint;\r\n";
  const std::string tail = "\r\n\t\tdisp\tall;\r\nmapserver end;\r\n";
  ExpectPoint(head + "\t\t" + Point + ";" + tail, TakaoLat, TakaoLon, Datum::Tokyo);
  ExpectNone(head + tail);
  ExpectNone(head + "\t\t" + Point + ";\r\n\t\t" + Point + ";" + tail);
  ExpectNone(head + "\t\t" + Point + ";\r\nline oid=2 pos=35/0/0,139/0/0,35/1/0,139/1/0;" + tail);
  ExpectNone(head + "\t\t" + Point + ";\r\nwhat is this;" + tail);
}

TEST(MapPointScript, TheGeorefOrTheThemeNamesTheDatum) {
  ExpectPoint("georef system=WGS84;" + Point + ";", TakaoLat, TakaoLon, Datum::Wgs84);
  ExpectPoint(Point + ";\r\ngeoref system=jgd2000;", TakaoLat, TakaoLon, Datum::Wgs84);
  ExpectPoint("theme\tstr=Walrim Datum:WGS84 UTCOffset:9;" + Point + ";", TakaoLat, TakaoLon, Datum::Wgs84);
  ExpectPoint("theme\tstr=Walrim Datum:Tokyo UTCOffset:9;" + Point + ";", TakaoLat, TakaoLon, Datum::Tokyo);
  ExpectPoint("georef system=tokyo;" + Point + ";", TakaoLat, TakaoLon, Datum::Tokyo);
}

TEST(MapPointScript, SecondsMayBeRoundedUpTo60AndDegreesAreRoundedDown) {
  ExpectPoint("point pos=34/59/60.0,139/00/00.0;", 35, 139, Datum::Tokyo);
  ExpectPoint("point pos=-34/30/00.0,-1/45/00.0;", -33.5, -0.25, Datum::Tokyo);
}

/// The waypoint of a script that is a file.
std::optional<Waypoint> WaypointOfFile(const std::string& script) {
  DataSet data;
  LineSource lines(script, TextEncoding::Utf8);
  static_cast<void>(FormatOf(FormatId::Script).read(lines, data, {}));
  return data.Waypoints().empty() ? std::nullopt : std::optional(data.Waypoints().front());
}

TEST(MapPointScript, APositionIsReadAsInAFile) {
  struct Written {
    std::string pos;
    double lat_deg;
    double lon_deg;
  };
  constexpr double Second = 1.0 / 3600;
  for (const auto& [pos, lat_deg, lon_deg] : std::vector<Written>{{"35/37/30.7,139/14/37.3", TakaoLat, TakaoLon},
                                                                  {"35/37,139/14", 35 + 37 / 60.0, 139 + 14 / 60.0},
                                                                  {"35/60/0,139/0/0", 36, 139},
                                                                  {"35/0/60.1,139/0/0", 35 + 60.1 * Second, 139},
                                                                  {"35/0/0,139/0/0,1", 35, 139},
                                                                  {"35/0/0,139/0/0,36/0/0,140/0/0", 35, 139},
                                                                  {"35.5/0/0,139/0/0", 35.5, 139},
                                                                  {"35/30/0N,139/30/0E", 35.5, 139.5},
                                                                  {"+35/30/0,139/30/0", 35.5, 139.5}}) {
    const std::string script = "georef system=WGS84;point oid=1,pos=" + pos + ",str=A;";
    ExpectPoint(script, lat_deg, lon_deg, Datum::Wgs84);
    const auto waypoint = WaypointOfFile("georef system=WGS84;\npoint oid=1,pos=" + pos + ",str=A;\n");
    ASSERT_TRUE(waypoint) << pos;
    EXPECT_NEAR(waypoint->lat_deg, lat_deg, OneUlp) << pos;
    EXPECT_NEAR(waypoint->lon_deg, lon_deg, OneUlp) << pos;
  }
}

TEST(MapPointScript, PositionsThatAreNoneAreRefused) {
  ExpectPoint("point oid=1 pos=35/37/30.7,139/14/37.3;", TakaoLat, TakaoLon, Datum::Tokyo);
  for (const std::string& pos :
       {std::string(), std::string("35/37/30.7"), std::string("35/37/30.7, "), std::string(",139/14/37.3"),
        std::string("91/0/0,139/0/0"), std::string("35/0/0,181/0/0"), std::string("90/0/0.1,139/0/0"),
        std::string("35/37/30.7/1,139/14/37.3"), std::string("a/b/c,d/e/f"), std::string("--35/0/0,139/0/0"),
        "1" + std::string(400, '0') + "/0/0,139/0/0"}) {
    ExpectNone("point oid=1 pos=" + pos + ";");
    EXPECT_FALSE(WaypointOfFile("point oid=1 pos=" + pos + ";\n")) << pos;
  }
  ExpectNone("point oid=1 pos=35/37/30.7;139/14/37.3;");
  ExpectNone("point;");
  ExpectNone("point oid=1;");
  ExpectNone("point 35/37/30.7,139/14/37.3;");
  ExpectNone("point pos=35/0/0,139/0/0 pos=36/0/0,140/0/0;");
  ExpectNone("points pos=35/0/0,139/0/0;");
}

TEST(MapPoint, BytesThatAreNoUtf8AreNoPoint) {
  ExpectPoint("35.6252, 139.2437", 35.6252, 139.2437);
  ExpectNone("35.6252, 139.2437\xFF");
  ExpectNone(std::string("35.6252, 139.2437\0", 18));
  ExpectPoint("point pos=35/0/0,139/0/0 str=\u8868;", 35, 139, Datum::Tokyo);
  ExpectNone("point pos=35/0/0,139/0/0 str=\x83\x5C;");
}

TEST(MapPoint, HugeTextsAreNoPoint) {
  const std::string pair = "35.6252, 139.2437";
  ExpectPoint(std::string(LongestMapPointText - pair.size(), ' ') + pair, 35.6252, 139.2437);
  ExpectNone(std::string(LongestMapPointText - pair.size() + 1, ' ') + pair);
  ExpectPoint("35.6252, 139.24370" + std::string(20, '0'), 35.6252, 139.2437);
  ExpectNone("35.6252, 139.2437" + std::string(1000, '0'));
  ExpectNone(std::string(1000000, '1'));
  for (const char* piece : {"//", "point ", "\" ", "pos= ", "N", "geo:", "35°", ";", " ", "mapserver;"}) {
    std::string text;
    while (text.size() + 20 < LongestMapPointText)
      text += piece;
    ExpectNone(text);
    ExpectNone("point str=" + text);
  }
  const std::string blanks(LongestMapPointText / 2, ' ');
  ExpectPoint("point str=A" + blanks + "pos=35/0/0,139/0/0" + blanks.substr(100), 35, 139, Datum::Tokyo);
}

TEST(MapPoint, EveryShorterTextIsReadOrRefused) {
  // A text, and at how many of its lengths below the whole it is a point already.
  struct Growing {
    std::string text;
    int points;
  };
  for (const auto& [text, points] : std::vector<Growing>{
           {"北緯35度37分30.7秒 東経139度14分37.3秒 (日本測地系)", 6},
           {"geo:35.6252,139.2437,5;crs=wgs84;u=5?q=a%20b", 24},
           {Point + "\r\n\t\t\t\tstr=TAKAO\r\n\t\t\t\tinfo=[WP]<TAKAO><x>; georef system=WGS84;", 67}}) {
    EXPECT_TRUE(RecognizeMapPoint(text)) << text;
    int found = 0;
    for (std::size_t size = 0; size < text.size(); ++size) {
      const auto point = RecognizeMapPoint(std::string_view(text).substr(0, size));
      if (!point) continue;
      ++found;
      EXPECT_EQ(static_cast<int>(point->lat_deg), 35) << text.substr(0, size);
    }
    EXPECT_EQ(found, points) << text;
  }
}

}  // namespace
}  // namespace walrim
