#include <gtest/gtest.h>

#include "Support.h"

namespace walrim {
namespace {

std::string Document(std::string_view contents) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<kml xmlns=\"http://www.opengis.net/kml/2.2\" xmlns:gx=\"http://www.google.com/kml/ext/2.2\">\n"
         "  <Document>\n" +
         std::string(contents) + "  </Document>\n</kml>\n";
}

Waypoint High(Waypoint waypoint, float alt_m) {
  waypoint.alt_m = alt_m;
  return waypoint;
}
TrackPoint High(TrackPoint point, float alt_m) {
  point.alt_m = alt_m;
  return point;
}

TEST(KmlWriter, WaypointsInTheirFolderUnderTheNameOfTheFile) {
  DataSet data;
  (void)data.Add(High(Named("TAKAO ", 35.625, 139.25, "山頂 <三角点> & \"茶屋\""), 599.5F));
  (void)data.Add(Named("", -35.5, 180));
  WriteSettings settings = Settings(AngleNotation::DMS, Datum::Tokyo, -5);
  settings.name = "高尾&山";
  EXPECT_EQ(Written(FormatId::Kml, data, settings), Document(R"(    <name>高尾&amp;山</name>
    <Folder>
      <name>ウェイポイント</name>
      <Placemark>
        <name>TAKAO</name>
        <description>山頂 &lt;三角点&gt; &amp; &quot;茶屋&quot;</description>
        <Point>
          <altitudeMode>clampToGround</altitudeMode>
          <coordinates>139.25,35.625,599.5</coordinates>
        </Point>
      </Placemark>
      <Placemark>
        <Point>
          <altitudeMode>clampToGround</altitudeMode>
          <coordinates>-180,-35.5</coordinates>
        </Point>
      </Placemark>
    </Folder>
)"));
}

TEST(KmlWriter, ARouteIsALineAndItsPointsInAFolder) {
  DataSet data;
  (void)data.Begin(Numbered(7, "TAKAO-JINBA", {High(Named("A", 35.5, 139.25, "C"), 190), Named("B", 36, 139)}));
  (void)data.Begin(Numbered(8, "ONE", {Named("D", 35, 138)}));
  (void)data.Begin(Numbered(9, "NONE"));
  EXPECT_EQ(Written(FormatId::Kml, data), Document(R"(    <Folder>
      <name>ルート</name>
      <Placemark>
        <name>TAKAO-JINBA</name>
        <LineString>
          <tessellate>1</tessellate>
          <altitudeMode>clampToGround</altitudeMode>
          <coordinates>
            139.25,35.5,190
            139,36
          </coordinates>
        </LineString>
      </Placemark>
      <Folder>
        <name>TAKAO-JINBA</name>
        <Placemark>
          <name>A</name>
          <description>C</description>
          <Point>
            <altitudeMode>clampToGround</altitudeMode>
            <coordinates>139.25,35.5,190</coordinates>
          </Point>
        </Placemark>
        <Placemark>
          <name>B</name>
          <Point>
            <altitudeMode>clampToGround</altitudeMode>
            <coordinates>139,36</coordinates>
          </Point>
        </Placemark>
      </Folder>
      <Folder>
        <name>ONE</name>
        <Placemark>
          <name>D</name>
          <Point>
            <altitudeMode>clampToGround</altitudeMode>
            <coordinates>138,35</coordinates>
          </Point>
        </Placemark>
      </Folder>
    </Folder>
)"));
}

TEST(KmlWriter, ALogWithTimesIsATrackWithItsFigures) {
  DataSet data;
  TrackLog log;
  log.trk_ident = "ACTIVE LOG";
  log.color = 1;
  // A thousandth of a degree of latitude is 111 m.
  AddLog(data,
         {High(At(35, 139, 405993912, true), 100), High(At(35.01, 139, 405994912), 150),
          High(At(35.01, 139, 405997512), 130)},
         log);
  AddLog(data, {});
  EXPECT_EQ(Written(FormatId::Kml, data), Document(R"(    <Folder>
      <name>トラックログ</name>
      <Placemark>
        <name>ACTIVE LOG</name>
        <description>距離 1.11 km，時間 1:00:00（移動 0:16:40），登り 50 m，下り 20 m（10 m以上の高低差）</description>
        <Style>
          <LineStyle>
            <color>ff000080</color>
            <width>3</width>
          </LineStyle>
        </Style>
        <gx:Track>
          <altitudeMode>clampToGround</altitudeMode>
          <when>2002-11-12T00:05:12Z</when>
          <when>2002-11-12T00:21:52Z</when>
          <when>2002-11-12T01:05:12Z</when>
          <gx:coord>139 35 100</gx:coord>
          <gx:coord>139 35.01 150</gx:coord>
          <gx:coord>139 35.01 130</gx:coord>
        </gx:Track>
      </Placemark>
    </Folder>
)"));
}

TEST(KmlWriter, SegmentsWithTimesAreTracksThatAreNotJoined) {
  DataSet data;
  AddLog(data, {At(35, 139, 1, true), At(35, 138, 2, true)});
  EXPECT_EQ(Written(FormatId::Kml, data), Document(R"(    <Folder>
      <name>トラックログ</name>
      <Placemark>
        <description>距離 0.00 km，時間 0:00:01（移動 0:00:00）</description>
        <gx:MultiTrack>
          <altitudeMode>clampToGround</altitudeMode>
          <gx:interpolate>0</gx:interpolate>
          <gx:Track>
            <altitudeMode>clampToGround</altitudeMode>
            <when>1989-12-31T00:00:01Z</when>
            <gx:coord>139 35 0</gx:coord>
          </gx:Track>
          <gx:Track>
            <altitudeMode>clampToGround</altitudeMode>
            <when>1989-12-31T00:00:02Z</when>
            <gx:coord>138 35 0</gx:coord>
          </gx:Track>
        </gx:MultiTrack>
      </Placemark>
    </Folder>
)"));
}

TEST(KmlWriter, ALogThatLacksATimeIsLinesOfItsSegments) {
  DataSet data;
  AddLog(data, {At(35, 139, 1, true), High(At(35, 138), 5), At(36, 137, 2, true)});
  EXPECT_EQ(Written(FormatId::Kml, data), Document(R"(    <Folder>
      <name>トラックログ</name>
      <Placemark>
        <description>距離 91.18 km，時間 0:00:01（移動 0:00:00）</description>
        <MultiGeometry>
          <LineString>
            <tessellate>1</tessellate>
            <altitudeMode>clampToGround</altitudeMode>
            <coordinates>
              139,35
              138,35,5
            </coordinates>
          </LineString>
          <Point>
            <altitudeMode>clampToGround</altitudeMode>
            <coordinates>137,36</coordinates>
          </Point>
        </MultiGeometry>
      </Placemark>
    </Folder>
)"));
}

TEST(KmlWriter, WhatHasNoPlaceIsLeftOutAndCounted) {
  DataSet data;
  (void)data.Add(Named("A", 91, 139));
  (void)data.Begin(Numbered(1, "R", {Named("B", 91, 139)}));
  AddLog(data, {At(91, 139, 1, true), At(35, 138, 2), At(35, 138, 3)});
  const auto [text, report] = WriteText(FormatId::Kml, data, Settings());
  EXPECT_EQ(report.off_globe, 3);
  EXPECT_EQ(text.find(">A<"), std::string::npos);
  EXPECT_EQ(text.find("ルート"), text.npos);
  EXPECT_NE(text.find("<gx:Track>"), std::string::npos) << "the segment begins with its second point";
  EXPECT_EQ(text.find("91"), std::string::npos);
}

TEST(KmlWriter, OnlyTheWantedKindsAndNothingForNothing) {
  DataSet data;
  (void)data.Add(Named("A", 35, 139));
  AddLog(data, {At(36, 140, 1)});
  WriteSettings settings = Settings();
  settings.kinds = {false, true, true};
  const std::string text = Written(FormatId::Kml, data, settings);
  EXPECT_EQ(text.find("ウェイポイント"), std::string::npos);
  EXPECT_NE(text.find("トラックログ"), std::string::npos);
  settings.kinds = {false, true, false};
  EXPECT_EQ(Written(FormatId::Kml, data, settings), "");
}

TEST(KmlWriter, TheColoursOfLogs) {
  const auto colour_of = [](std::uint8_t color) {
    DataSet data;
    TrackLog log;
    log.color = color;
    AddLog(data, {At(36, 140, 1)}, log);
    const std::string text = Written(FormatId::Kml, data);
    const std::size_t at = text.find("<color>");
    return at == std::string::npos ? std::string() : text.substr(at + 7, 8);
  };
  EXPECT_EQ(colour_of(0), "ff000000");
  EXPECT_EQ(colour_of(3), "ff008080") << "dark yellow";
  EXPECT_EQ(colour_of(4), "ff800000") << "dark blue";
  EXPECT_EQ(colour_of(9), "ff0000ff") << "red";
  EXPECT_EQ(colour_of(11), "ff00ffff") << "yellow";
  EXPECT_EQ(colour_of(12), "ffff0000") << "blue";
  EXPECT_EQ(colour_of(14), "ffffff00") << "cyan";
  EXPECT_EQ(colour_of(15), "ffffffff");
  EXPECT_EQ(colour_of(16), "");
  EXPECT_EQ(colour_of(255), "");
}

}  // namespace
}  // namespace walrim
