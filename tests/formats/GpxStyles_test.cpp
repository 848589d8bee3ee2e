// GPX as other programs write it: each text is in the manner of one kind of program, and what it gives is told whole.
#include <gtest/gtest.h>

#include "Support.h"
#include "formats/Messages.h"

namespace walrim {
namespace {

constexpr GarminSeconds Time = 405993912;  ///< 2002-11-12 00:05:12 UTC

Waypoint Point(std::string_view ident, double lat_deg, double lon_deg, std::string_view comment = "") {
  Waypoint waypoint = Named(ident, lat_deg, lon_deg, comment);
  waypoint.symbol_set = SymbolSet::Large;
  return waypoint;
}

template <typename Place>
Place High(Place place, float alt_m) {
  place.alt_m = alt_m;
  return place;
}

Waypoint Pictured(Waypoint waypoint, std::uint16_t smbl) {
  waypoint.smbl = smbl;
  return waypoint;
}

TrackLog Log(std::string_view name, const std::vector<TrackPoint>& points) {
  TrackLog log;
  log.trk_ident = name;
  log.points = points;
  return log;
}

struct Held {
  std::vector<Waypoint> waypoints;
  std::vector<Route> routes;
  std::vector<TrackLog> logs;
};

/// What was left out, or told.
ImportResult ExpectRead(std::string_view bytes, const Held& expected) {
  DataSet data;
  LineSource lines(bytes, EncodingOf(bytes));
  const ImportResult result = FormatOf(FormatId::Gpx).read(lines, data, {9});
  EXPECT_EQ(RecognizeFormat(bytes), &FormatOf(FormatId::Gpx));
  EXPECT_EQ(result.refusal, "");
  EXPECT_EQ(data.Waypoints(), expected.waypoints);
  EXPECT_EQ(data.Routes(), expected.routes);
  EXPECT_EQ(data.Logs(), expected.logs);
  return result;
}

/// The same, and nothing was left out or told.
void ExpectWhole(std::string_view bytes, const Held& expected) {
  const ImportResult result = ExpectRead(bytes, expected);
  EXPECT_EQ(result.skipped.count + result.unread_time.count + result.messages.count, 0);
}

std::string Wide(std::u16string_view text) {
  std::string bytes = "\xFF\xFE";
  for (const char16_t c : text) {
    bytes += static_cast<char>(c & 0xFFU);
    bytes += static_cast<char>(c >> 8U);
  }
  return bytes;
}

TEST(GpxStyles, AReceiverWithAMemoryCard) {
  TrackLog log = Log("ACTIVE LOG", {High(At(35.625, 139.25, Time, true), 599.25F)});
  log.color = 9;
  const ImportResult result = ExpectRead(
      R"(<?xml version="1.0" encoding="UTF-8" standalone="no" ?>
<gpx xmlns="http://www.topografix.com/GPX/1/1" xmlns:gpxx="http://www.garmin.com/xmlschemas/GpxExtensions/v3" xmlns:gpxtpx="http://www.garmin.com/xmlschemas/TrackPointExtension/v1" creator="receiver 62" version="1.1" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xsi:schemaLocation="http://www.topografix.com/GPX/1/1 http://www.topografix.com/GPX/1/1/gpx.xsd">
  <metadata><link href="http://www.example.com"><text>maker</text></link><time>2002-11-12T00:05:12Z</time></metadata>
  <wpt lat="35.625" lon="139.25"><ele>599.25</ele><time>2002-11-12T00:05:12Z</time><name>001</name><cmt>12-NOV-02</cmt><desc>12-NOV-02</desc><sym>Flag, Blue</sym><extensions><gpxx:WaypointExtension><gpxx:Proximity>50</gpxx:Proximity><gpxx:DisplayMode>SymbolAndName</gpxx:DisplayMode></gpxx:WaypointExtension></extensions></wpt>
  <trk><name>ACTIVE LOG</name><extensions><gpxx:TrackExtension><gpxx:DisplayColor>Red</gpxx:DisplayColor></gpxx:TrackExtension></extensions><trkseg><trkpt lat="35.625" lon="139.25"><ele>599.25</ele><time>2002-11-12T00:05:12Z</time><extensions><gpxtpx:TrackPointExtension><gpxtpx:hr>120</gpxtpx:hr></gpxtpx:TrackPointExtension></extensions></trkpt></trkseg></trk>
</gpx>)",
      {{[] {
         Waypoint waypoint = Pictured(High(Point("001", 35.625, 139.25, "12-NOV-02"), 599.25F), 178);
         waypoint.dist_m = 50;
         return waypoint;
       }()},
       {},
       {log}});
  EXPECT_EQ(result.messages.kept, std::vector{format_messages::NearestSymbols("Flag, Blue")});
}

TEST(GpxStyles, APlannerOnTheWeb) {
  ExpectWhole(
      "<?xml version='1.0'?><gpx version='1.1' creator='planner' xmlns='http://www.topografix.com/GPX/1/1'>"
      "<rte><name><![CDATA[To <the> top & back]]></name>"
      "<rtept lon='139.25' lat='35.5'/><rtept lon='139.5' lat='35.75'><ele>120</ele><name> </name></rtept></rte>"
      "<rte><rtept lon='1' lat='2'><name>only</name></rtept></rte></gpx>",
      {{},
       {Numbered(1, "TO <THE> TOP & BACK", {Point("WPT001", 35.5, 139.25), High(Point("WPT002", 35.75, 139.5), 120)}),
        Numbered(2, "", {Point("ONLY", 2, 1)})},
       {}});
}

TEST(GpxStyles, ALoggerOfAPhone) {
  ExpectWhole(
      "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<gpx version=\"1.1\" creator=\"phone\""
      " xmlns=\"http://www.topografix.com/GPX/1/1\">\r\n<trk>\r\n<name>2002-11-12 "
      "朝</name>\r\n<trkseg/>\r\n<trkseg>\r\n"
      "<trkpt lat=\"35.5\" lon=\"139.25\"><ele>12.399999618530273</ele><time>2002-11-12T09:05:12.987+09:00</time>"
      "<hdop>1.5</hdop><extensions><speed>1.2</speed><course>30</course></extensions></trkpt>\r\n"
      "<trkpt lat=\"35.75\" lon=\"139.25\"><time>2002-11-12T00:05:13.001Z</time><src>gps</src></trkpt>\r\n"
      "</trkseg>\r\n<trkseg>\r\n</trkseg>\r\n<trkseg><trkpt lat=\"36\" lon=\"139\"/></trkseg></trk>\r\n</gpx>\r\n",
      {{},
       {},
       {Log("2002-11-12 朝",
            {High(At(35.5, 139.25, Time, true), 12.4F), At(35.75, 139.25, Time + 1), At(36, 139, {}, true)})}});
}

TEST(GpxStyles, ADesktopProgramOfTheFirstYears) {
  const ImportResult result = ExpectRead(
      "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<gpx version=\"1.0\" creator=\"old\""
      " xmlns=\"http://www.topografix.com/GPX/1/0\">\n<time>2002-11-12T00:05:12Z</time>\n"
      "<bounds minlat=\"35\" minlon=\"139\" maxlat=\"36\" maxlon=\"140\"/>\n"
      "<wpt lat=\"47.5\" "
      "lon=\"8.5\">\n<ele>408.000000</ele>\n<name>Z\xFCrich</name>\n<cmt>caf\xE9</cmt>\n<desc>x</desc>\n"
      "<url>http://example.com</url><urlname>n</urlname><sym>Dot</sym>\n</wpt>\n"
      "<rte><name>R</name><number>12</number><rtept lat=\"47\" lon=\"8\"><name>A</name></rtept></rte>\n"
      "<trk><name>T</name><number>1</number><trkseg><trkpt lat=\"47.25\" lon=\"8.25\"><ele>400.5</ele>"
      "<time>2002-11-12T00:05:12Z</time><course>270.5</course><speed>1.5</speed><sat>7</sat></trkpt></trkseg></trk>\n</"
      "gpx>\n",
      {{High(Point("ZüRICH", 47.5, 8.5, "CAFé"), 408)},
       {Numbered(12, "R", {Point("A", 47, 8)})},
       {Log("T", {High(At(47.25, 8.25, Time, true), 400.5F)})}});
  EXPECT_EQ(result.messages.kept, std::vector{format_messages::UnknownSymbols("Dot")});
}

TEST(GpxStyles, AWatchWithPrefixesOfItsOwn) {
  ExpectWhole(
      R"(<?xml version="1.0" encoding="UTF-8"?>
<gpx creator="watch" version="1.1" xsi:schemaLocation="http://www.topografix.com/GPX/1/1 http://www.topografix.com/GPX/11.xsd"
  xmlns:ns3="http://www.garmin.com/xmlschemas/TrackPointExtension/v1" xmlns="http://www.topografix.com/GPX/1/1"
  xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xmlns:ns2="http://www.garmin.com/xmlschemas/GpxExtensions/v3">
  <trk><name>Hiking</name><type>hiking</type><trkseg>
    <trkpt lat="35.60000000149011" lon="139.1999999806284882"><ele>-1.5</ele><time>2002-11-12T00:05:12.000Z</time>
      <extensions><ns3:TrackPointExtension><ns3:atemp>20.0</ns3:atemp></ns3:TrackPointExtension></extensions></trkpt>
  </trkseg></trk>
  <wpt lat="35" lon="139"><name>home</name><extensions><ns2:WaypointExtension><ns2:Depth>2.5</ns2:Depth></ns2:WaypointExtension></extensions></wpt>
</gpx>)",
      {{[] {
         Waypoint waypoint = Point("HOME", 35, 139);
         waypoint.dpth_m = 2.5F;
         return waypoint;
       }()},
       {},
       {Log("HIKING", {High(At(35.60000000149011, 139.1999999806284882, Time, true), -1.5F)})}});
}

TEST(GpxStyles, AJapaneseMapProgramInShiftJis) {
  ExpectWhole(
      "<?xml version=\"1.0\" encoding=\"Shift_JIS\"?>\r\n<gpx version=\"1.1\" creator=\"map\""
      " xmlns=\"http://www.topografix.com/GPX/1/1\">\r\n\t<wpt lat=\"35.625\" "
      "lon=\"139.25\">\r\n\t\t<name>\x8d\x82\x94\xf6"
      "\x8eR</name>\r\n\t\t<desc>\x8eO\x8ap\x93_\r\n\xb1\xb2</desc>\r\n\t\t<sym>SUMMIT</sym>\r\n\t</wpt>\r\n</gpx>\r\n",
      {{Pictured(Point("高尾山", 35.625, 139.25, "三角点 ｱｲ"), 8246)}, {}, {}});
}

TEST(GpxStyles, AMacroThatSavesWideText) {
  ExpectWhole(Wide(u"<?xml version=\"1.0\" encoding=\"UTF-16\"?>\r\n<gpx version=\"1.1\" creator=\"macro\">\r\n\t"
                   u"<wpt lat=\"35.5\" lon=\"139.25\"><name>峠 ①</name></wpt>\r\n</gpx>"),
              {{Point("峠 ①", 35.5, 139.25)}, {}, {}});
}

TEST(GpxStyles, AnXmlToolThatGivesEverythingAPrefix) {
  ExpectWhole(
      R"(<?xml version="1.0"?><?xml-stylesheet type="text/xsl" href="a.xsl"?>
<!-- exported <gpx> & more -->
<g:gpx xmlns:g="http://www.topografix.com/GPX/1/1" version="1.1" creator="x"><!-- a -->
<g:trk><!-- b --><g:trkseg><g:trkpt lon="139.25" lat="35.5"><!-- c --><g:time><!-- d -->2002-11-12T00:05:12Z</g:time></g:trkpt></g:trkseg>
<g:name>be<!-- e -->hind</g:name></g:trk></g:gpx><!-- end -->)",
      {{}, {}, {Log("BEHIND", {At(35.5, 139.25, Time, true)})}});
}

TEST(GpxStyles, AListOfHiddenBoxes) {
  const ImportResult result = ExpectRead(
      R"(<?xml version="1.0" encoding="utf-8"?>
<gpx xmlns:xsd="http://www.w3.org/2001/XMLSchema" version="1.0" creator="list" xmlns="http://www.topografix.com/GPX/1/0">
  <name>Query</name><author>me</author><keywords>cache</keywords>
  <wpt lat="35.5" lon="139.25"><time>2002-11-12T00:00:00</time><name>GC1234</name><desc>Box by &quot;X&quot;, 1/1</desc><type>Box|Traditional</type><sym>Geocache</sym>
    <b:cache id="1" available="True" xmlns:b="http://www.example.com/cache/1/0"><b:name>Name</b:name><b:long_description html="True">&lt;p&gt;text&lt;/p&gt;</b:long_description></b:cache></wpt>
  <wpt lat="36.5" lon="139.25"><name>GC1235</name><sym>Geocache Found</sym>
    <cache xmlns="http://www.example.com/cache/2/0"><name>inner</name><sym>Summit</sym></cache></wpt>
</gpx>)",
      {{Point("GC1234", 35.5, 139.25, "BOX BY \"X\", 1/1"), Point("GC1235", 36.5, 139.25)}, {}, {}});
  EXPECT_EQ(result.skipped.count, 0);
  EXPECT_EQ(result.messages.count, 1) << "both pictures are of later receivers";
}

TEST(GpxStyles, AnExporterOfAGisWithFieldsOfItsOwn) {
  const ImportResult result = ExpectRead(
      R"(<?xml version="1.0"?>
<gpx version="1.1" creator="gis" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xmlns:ogr="http://example.org/fields" xmlns="http://www.topografix.com/GPX/1/1">
<metadata><bounds minlat="35.5" minlon="139.25" maxlat="91.0" maxlon="139.25"/></metadata>
<wpt lat="35.5" lon="139.25"><ele>1.0e2</ele><name>12</name><extensions><ogr:id>12</ogr:id><ogr:name>no</ogr:name></extensions></wpt>
<wpt lat="91.0" lon="139.25"><name>off</name></wpt>
<wpt lat="35,5" lon="139,25"><name>comma</name></wpt>
<trk><extensions><ogr:fid>1</ogr:fid></extensions><trkseg><trkpt lat="35.5" lon="-180"></trkpt></trkseg></trk>
</gpx>)",
      {{High(Point("12", 35.5, 139.25), 100)}, {}, {Log("", {At(35.5, -180, {}, true)})}});
  EXPECT_EQ(result.skipped.count, 2);
  EXPECT_EQ(result.skipped.first_line, 5);
}

TEST(GpxStyles, AConverterThatWritesNumbersForLetters) {
  ExpectWhole(
      "<gpx><wpt\n  lat = ' +35.50 '\n  lon=\"139.250000000\"\n  ><name>&#39640;&#x5C3E;&#x20;A&apos;B</name>"
      "<cmt>1 &lt; 2 &gt; 1&#10;end</cmt><sym> Trail Head </sym></wpt></gpx>",
      {{Pictured(Point("高尾 A'B", 35.5, 139.25, "1 < 2 > 1 END"), 175)}, {}, {}});
}

TEST(GpxStyles, APictureViewerWithTimesOfNoUse) {
  const ImportResult result = ExpectRead(
      "<gpx version=\"1.1\"><trk><name>photos</name><trkseg>"
      "<trkpt lat=\"35\" lon=\"139\"><time>1970-01-01T00:00:00Z</time></trkpt>"
      "<trkpt lat=\"35\" lon=\"139.5\"><time>0000-00-00T00:00:00Z</time></trkpt>"
      "<trkpt lat=\"35\" lon=\"140\"><time/></trkpt></trkseg></trk></gpx>",
      {{}, {}, {Log("PHOTOS", {At(35, 139, {}, true), At(35, 139.5), At(35, 140)})}});
  EXPECT_EQ(result.unread_time.count, 1) << "the one that is no date";
}

}  // namespace
}  // namespace walrim
