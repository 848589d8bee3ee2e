#include <array>
#include <cmath>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <random>

#include "Support.h"
#include "formats/GpxReader.h"
#include "formats/Messages.h"
#include "records/Symbols.h"

namespace walrim {
namespace {

using namespace std::string_view_literals;

// ---- Writing

const std::string Head =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<gpx version=\"1.1\" creator=\"Walrim 0.1.0\" xmlns=\"http://www.topografix.com/GPX/1/1\""
    " xmlns:gpxx=\"http://www.garmin.com/xmlschemas/GpxExtensions/v3\" xmlns:walrim=\"urn:walrim:record:1\">\n";

std::string Bounds(std::string_view attributes) {
  return "  <metadata>\n    <bounds " + std::string(attributes) + "/>\n  </metadata>\n";
}

/// A waypoint with a value in every field.
Waypoint Full() {
  Waypoint waypoint = Named("TAKAO", 35.625, 139.243611111, "山頂 599M & <三角点>");
  waypoint.smbl = 8246;
  waypoint.dspl = 2;
  waypoint.color = 9;
  waypoint.dst_m = 7.5F;
  waypoint.dist_m = 120.5F;
  waypoint.alt_m = 599.3F;
  waypoint.dpth_m = -0.5F;
  WaypointDetails details;
  details.wpt_class = 64;
  details.attr = 112;
  details.subclass[0] = 1;
  details.subclass[17] = 171;
  details.state = "TK";
  details.country = "JP";
  details.facility = "WC";
  details.city = "八王子";
  details.addr = "高尾町 \"1\"";
  details.cross_road = "R20";
  waypoint.details = details;
  return waypoint;
}

TEST(GpxWriter, AWaypointHasAllThatGpxCanSayAndTheRestInOneElement) {
  DataSet data;
  (void)data.Add(Full());
  EXPECT_EQ(Written(FormatId::Gpx, data, Settings(AngleNotation::DMS, Datum::Tokyo, -5)),
            Head + Bounds(R"(minlat="35.625" minlon="139.243611111" maxlat="35.625" maxlon="139.243611111")") +
                R"(  <wpt lat="35.625" lon="139.243611111">
    <ele>599.3</ele>
    <name>TAKAO</name>
    <cmt>山頂 599M &amp; &lt;三角点&gt;</cmt>
    <sym>Summit</sym>
    <extensions>
      <gpxx:WaypointExtension>
        <gpxx:Proximity>120.5</gpxx:Proximity>
        <gpxx:Depth>-0.5</gpxx:Depth>
        <gpxx:DisplayMode>SymbolAndDescription</gpxx:DisplayMode>
        <gpxx:Address>
          <gpxx:StreetAddress>高尾町 &quot;1&quot;</gpxx:StreetAddress>
          <gpxx:City>八王子</gpxx:City>
          <gpxx:State>TK</gpxx:State>
          <gpxx:Country>JP</gpxx:Country>
        </gpxx:Address>
      </gpxx:WaypointExtension>
      <walrim:waypoint dst="7.5" color="9" wpt_class="64" attr="112" facility="WC" cross_road="R20" subclass="010000000000FFFFFFFFFFFFFFFFFFFFFFAB"/>
    </extensions>
  </wpt>
</gpx>
)");
}

TEST(GpxWriter, AWaypointWithoutOdditiesHasNoElementOfTheProgram) {
  DataSet data;
  (void)data.Add(Named("A", 35, -180, ""));
  EXPECT_EQ(Written(FormatId::Gpx, data), Head + Bounds(R"(minlat="35" minlon="-180" maxlat="35" maxlon="-180")") +
                                              R"(  <wpt lat="35" lon="-180">
    <name>A</name>
    <sym>Waypoint</sym>
    <extensions>
      <gpxx:WaypointExtension>
        <gpxx:DisplayMode>SymbolAndName</gpxx:DisplayMode>
      </gpxx:WaypointExtension>
    </extensions>
  </wpt>
</gpx>
)");
}

TEST(GpxWriter, ARouteAndItsPoints) {
  DataSet data;
  Route route = Numbered(7, "TAKAO-JINBA", {Named("A", 35.5, 180, "C")});
  RouteLink link;
  link.link_class = 3;
  link.subclass[2] = 16;
  link.ident = "r20";
  route.points[0].link = link;
  (void)data.Begin(route);
  EXPECT_EQ(Written(FormatId::Gpx, data), Head + Bounds(R"(minlat="35.5" minlon="-180" maxlat="35.5" maxlon="-180")") +
                                              R"(  <rte>
    <name>TAKAO-JINBA</name>
    <number>7</number>
    <rtept lat="35.5" lon="-180">
      <name>A</name>
      <cmt>C</cmt>
      <sym>Waypoint</sym>
      <extensions>
        <gpxx:WaypointExtension>
          <gpxx:DisplayMode>SymbolAndName</gpxx:DisplayMode>
        </gpxx:WaypointExtension>
        <gpxx:RoutePointExtension>
          <gpxx:Subclass>000010000000FFFFFFFFFFFFFFFFFFFFFFFF</gpxx:Subclass>
        </gpxx:RoutePointExtension>
        <walrim:waypoint lon="180" link_class="3" link_ident="r20"/>
      </extensions>
    </rtept>
  </rte>
</gpx>
)");
}

TEST(GpxWriter, ALogItsSegmentsAndPoints) {
  DataSet data;
  TrackLog log;
  log.dspl = false;
  log.color = 12;
  log.trk_ident = "ACTIVE LOG";
  TrackPoint deep = At(1e-7, -0.0, 1, true);
  deep.alt_m = 1.5F;
  deep.dpth_m = 3.0F;
  AddLog(data, {At(35, 139, 405993912), At(35.5, 139.5), deep}, log);
  AddLog(data, {});
  EXPECT_EQ(Written(FormatId::Gpx, data), Head +
                                              Bounds(R"(minlat="0.0000001" minlon="0" maxlat="35.5" maxlon="139.5")") +
                                              R"(  <trk>
    <name>ACTIVE LOG</name>
    <extensions>
      <gpxx:TrackExtension>
        <gpxx:DisplayColor>Blue</gpxx:DisplayColor>
      </gpxx:TrackExtension>
      <walrim:track hdr.dspl="FALSE"/>
    </extensions>
    <trkseg>
      <trkpt lat="35" lon="139">
        <time>2002-11-12T00:05:12Z</time>
        <extensions>
          <walrim:point new_trk="FALSE"/>
        </extensions>
      </trkpt>
      <trkpt lat="35.5" lon="139.5">
      </trkpt>
    </trkseg>
    <trkseg>
      <trkpt lat="0.0000001" lon="0">
        <ele>1.5</ele>
        <time>1989-12-31T00:00:01Z</time>
        <extensions>
          <gpxx:TrackPointExtension>
            <gpxx:Depth>3</gpxx:Depth>
          </gpxx:TrackPointExtension>
        </extensions>
      </trkpt>
    </trkseg>
  </trk>
  <trk>
    <extensions>
      <walrim:track trk_pnt_num="0"/>
    </extensions>
  </trk>
</gpx>
)");
}

TEST(GpxWriter, OnlyTheWantedKindsAndNothingForNothing) {
  DataSet data;
  (void)data.Add(Named("A", 35, 139));
  AddLog(data, {At(36, 140)});
  WriteSettings settings = Settings();
  settings.kinds = {false, true, true};
  const std::string text = Written(FormatId::Gpx, data, settings);
  EXPECT_EQ(text.find("<wpt"), std::string::npos);
  EXPECT_NE(text.find(R"(<bounds minlat="36" minlon="140" maxlat="36" maxlon="140"/>)"), std::string::npos);
  settings.kinds = {false, true, false};
  EXPECT_EQ(Written(FormatId::Gpx, data, settings), "");
}

TEST(GpxWriter, APositionOffTheGlobeIsSkippedAndCounted) {
  DataSet data;
  (void)data.Add(Named("A", 91, 139));
  (void)data.Add(Named("B", 35, 139));
  const auto [text, report] = WriteText(FormatId::Gpx, data, Settings());
  EXPECT_EQ(report.off_globe, 1);
  EXPECT_EQ(report.skipped, 0);
  EXPECT_EQ(text.find("<name>A<"), std::string::npos);
  EXPECT_NE(text.find("minlat=\"35\""), std::string::npos);
}

/// What a file made of one waypoint says in the element of a name; "" without one.
std::string ElementOf(const Waypoint& waypoint, const std::string& name) {
  DataSet data;
  (void)data.Add(waypoint);
  const std::string text = Written(FormatId::Gpx, data);
  const std::size_t begin = text.find("<" + name);
  if (begin == std::string::npos) return {};
  return text.substr(begin, text.find("\n", begin) - begin);
}

TEST(GpxWriter, ARecordOfAnotherTypeIsWrittenAsWhatItShows) {
  Waypoint small = Named("A01\0  "sv, 35, 139, "hut   ");
  small.type = WaypointType::D103;
  small.smbl = 10;
  small.dst_m.reset();
  EXPECT_EQ(ElementOf(small, "name"), "<name>A01</name>");
  EXPECT_EQ(ElementOf(small, "cmt"), "<cmt>hut</cmt>");
  EXPECT_EQ(ElementOf(small, "sym"), "<sym>Flag</sym>");
  EXPECT_EQ(ElementOf(small, "walrim:"), "");
  small.type = WaypointType::D107;
  small.color = 0;
  small.dst_m = 30.0F;
  EXPECT_EQ(ElementOf(small, "gpxx:Proximity"), "<gpxx:Proximity>30</gpxx:Proximity>");
  EXPECT_EQ(ElementOf(small, "walrim:"), "");
  Waypoint d104 = Named("A", 35, 139);
  d104.type = WaypointType::D104;
  d104.smbl = 10;
  d104.dspl = 5;
  EXPECT_EQ(ElementOf(d104, "sym"), "<sym>Residence</sym>");
  EXPECT_EQ(ElementOf(d104, "gpxx:DisplayMode"), "<gpxx:DisplayMode>SymbolAndDescription</gpxx:DisplayMode>");
  EXPECT_EQ(ElementOf(d104, "walrim:"), "");
}

TEST(GpxWriter, WhatGpxCannotSayIsAnAttribute) {
  Waypoint waypoint = Named("A ", 35, 139);
  EXPECT_EQ(ElementOf(waypoint, "walrim:"), "<walrim:waypoint ident=\"A \"/>");
  waypoint.ident = "A\\\x01\xEF\xBF\xBE";
  EXPECT_EQ(ElementOf(waypoint, "walrim:"), R"(<walrim:waypoint ident="A\\\u0001\uFFFE"/>)");
  EXPECT_EQ(ElementOf(waypoint, "name"), "<name>A\\\xEF\xBF\xBD\xEF\xBF\xBD</name>");
  waypoint.ident = "";
  EXPECT_EQ(ElementOf(waypoint, "walrim:"), "<walrim:waypoint ident=\"\"/>");
  waypoint.ident = "A";
  waypoint.smbl = 12345;
  EXPECT_EQ(ElementOf(waypoint, "sym"), "");
  EXPECT_EQ(ElementOf(waypoint, "walrim:"), "<walrim:waypoint smbl=\"12345\"/>");
  waypoint.smbl = 7680 + 511;
  EXPECT_EQ(ElementOf(waypoint, "sym"), "<sym>Custom 511</sym>");
  EXPECT_EQ(ElementOf(waypoint, "walrim:"), "<walrim:waypoint smbl=\"8191\"/>");
  waypoint.smbl = 18;
  waypoint.dspl = 3;
  EXPECT_EQ(ElementOf(waypoint, "gpxx:"), "");
  EXPECT_EQ(ElementOf(waypoint, "walrim:"), "<walrim:waypoint dspl=\"3\"/>");
  waypoint.dspl = 0;
  waypoint.alt_m = 1e30F;
  EXPECT_EQ(ElementOf(waypoint, "ele"), "");
  EXPECT_EQ(ElementOf(waypoint, "walrim:"), "<walrim:waypoint alt=\"1E+30\"/>");
  waypoint.alt_m.reset();
  waypoint.lat_deg = 1e-300;
  EXPECT_EQ(ElementOf(waypoint, "wpt"), "<wpt lat=\"0.000000000000000\" lon=\"139\">");
  EXPECT_EQ(ElementOf(waypoint, "walrim:"), "<walrim:waypoint lat=\"1E-300\"/>");
}

// ---- Reading

std::string Gpx(std::string_view contents) {
  return R"(<gpx version="1.1" creator="x" xmlns="http://www.topografix.com/GPX/1/1">)" + std::string(contents) +
         "</gpx>";
}

struct ReadData {
  DataSet data;
  ImportResult result;
};

ReadData ReadBytes(std::string_view bytes) {
  ReadData read;
  LineSource lines(bytes, EncodingOf(bytes));
  read.result = ReadGpx(lines, read.data, {9});
  return read;
}
ReadData ReadContents(std::string_view contents) {
  return ReadBytes(Gpx(contents));
}
Waypoint FirstOf(const ReadData& read) {
  return read.data.Waypoints().empty() ? Waypoint{} : read.data.Waypoints().front();
}
/// A waypoint as GPX gives it: its symbol is surely one of D108's.
Waypoint Point(std::string_view ident, double lat_deg, double lon_deg, std::string_view comment = "") {
  Waypoint waypoint = Named(ident, lat_deg, lon_deg, comment);
  waypoint.symbol_set = SymbolSet::Large;
  return waypoint;
}

TEST(GpxReader, AWaypointWithAllThatGpxCanSay) {
  const auto read = ReadBytes(R"(<?xml version="1.0"?>
<gpx version="1.1" creator="x" xmlns="http://www.topografix.com/GPX/1/1" xmlns:g="http://www.garmin.com/xmlschemas/GpxExtensions/v3">
 <metadata><name>ignored</name></metadata>
 <wpt lat="35.625" lon="139.25">
  <extensions><unknown xmlns="urn:x"><name>no</name></unknown><g:WaypointExtension><g:Proximity>120.5</g:Proximity>
   <g:Depth>-0.5</g:Depth><g:DisplayMode>SymbolOnly</g:DisplayMode>
   <g:Address><g:StreetAddress>takao 1</g:StreetAddress><g:StreetAddress>2</g:StreetAddress><g:City>Hachioji</g:City>
   <g:State>Tokyo</g:State><g:Country>jp</g:Country></g:Address></g:WaypointExtension></extensions>
  <sym>suMMit</sym><name>
   Takao &amp; &#x5c71; <![CDATA[<x>&amp;]]></name><time>2002-11-12T00:05:12Z</time><desc>no</desc><cmt>line
next</cmt><ele>+599.30</ele>
 </wpt></gpx>)");
  EXPECT_EQ(read.result.refusal, "");
  Waypoint expected = Point("TAKAO & 山 <X>&AMP;", 35.625, 139.25, "LINE NEXT");
  expected.smbl = 8246;
  expected.dspl = 1;
  expected.alt_m = 599.3F;
  expected.dpth_m = -0.5F;
  expected.dist_m = 120.5F;
  WaypointDetails details;
  details.addr = "TAKAO 1";
  details.city = "HACHIOJI";
  details.state = "TO";
  details.country = "JP";
  expected.details = details;
  EXPECT_EQ(FirstOf(read), expected);
  EXPECT_EQ(read.result.stored[0], 1);
  EXPECT_EQ(read.result.messages.count, 0);
}

TEST(GpxReader, WhatIsNotThereIsUnknown) {
  const auto read =
      ReadContents("<wpt lat='1' lon='2'/><wpt lat='3' lon='4'><ele>abc</ele><desc>d</desc><name/></wpt>");
  ASSERT_EQ(read.data.Waypoints().size(), 2U);
  EXPECT_EQ(read.data.Waypoints()[0], Point("WPT001", 1, 2));
  EXPECT_EQ(read.data.Waypoints()[1], Point("WPT002", 3, 4, "D"));
}

TEST(GpxReader, Gpx10AnyPrefixAndNoNamespace) {
  for (
      const std::string_view text :
      {R"(<gpx version="1.0" xmlns="http://www.topografix.com/GPX/1/0"><time>x</time><wpt lat="1" lon="2"><name>a</name><course>3</course></wpt></gpx>)"sv,
       R"(<p:gpx xmlns:p="http://www.topografix.com/GPX/1/1"><p:wpt lat="1" lon="2"><p:name>a</p:name><name>b</name></p:wpt></p:gpx>)"sv,
       R"(<gpx><wpt lat="1" lon="2"><name>a</name><q:name xmlns:q="urn:q">b</q:name></wpt></gpx>)"sv,
       R"(<gpx><q:wpt xmlns:q="urn:q" lat="5" lon="6"/><wpt lat="1" lon="2"><q:name>b</q:name><name>a</name></wpt></gpx>)"sv}) {
    const auto read = ReadBytes(text);
    ASSERT_EQ(read.data.Waypoints().size(), 1U) << text;
    EXPECT_EQ(FirstOf(read), Point("A", 1, 2)) << text;
  }
}

std::string Utf16(std::u16string_view text, bool big_endian, bool mark) {
  std::string bytes;
  for (const char16_t c : (mark ? u"\xFEFF" : u"") + std::u16string(text)) {
    const auto high = static_cast<char>(c >> 8U);
    const auto low = static_cast<char>(c & 0xFFU);
    bytes += big_endian ? high : low;
    bytes += big_endian ? low : high;
  }
  return bytes;
}

TEST(GpxReader, TextsInTheirEncodings) {
  const std::u16string wide =
      u"<?xml version='1.0' encoding='UTF-16'?><gpx><wpt lat='1' lon='2'><name>高尾𠮷</name></wpt></gpx>";
  for (const bool big_endian : {false, true}) {
    for (const bool mark : {false, true})
      EXPECT_EQ(FirstOf(ReadBytes(Utf16(wide, big_endian, mark))).ident, "高尾𠮷") << big_endian << mark;
  }
  const auto named = [](std::string_view encoding, std::string_view name) {
    return "<?xml version='1.0' encoding='" + std::string(encoding) + "'?><gpx><wpt lat='1' lon='2'><name>" +
           std::string(name) + "</name></wpt></gpx>";
  };
  const auto ident_of = [&](std::string_view encoding, std::string_view name) {
    return FirstOf(ReadBytes(named(encoding, name))).ident;
  };
  EXPECT_EQ(ident_of("Shift_JIS", "\x8d\x82\x94\xf6"), "高尾");
  EXPECT_EQ(ident_of("shift_jis", "\xb1\xb2"), "ｱｲ");
  EXPECT_EQ(ident_of("EUC-JP", "\xb9\xe2\xc8\xf8"), "高尾");
  EXPECT_EQ(ident_of("ISO-8859-1", "K\xf6ln"), "KöLN");
  EXPECT_EQ(ident_of("windows-1252", "\x80"), "€");
  EXPECT_EQ(ident_of("UTF-8", "高尾"), "高尾");
  EXPECT_EQ(ident_of("UTF-8", "\xc3\xa9"), "é");
  // A text that was copied keeps its declaration, and is UTF-8 nevertheless.
  EXPECT_EQ(ident_of("Shift_JIS", "高尾"), "高尾");
  for (const auto& [encoding, name] : {std::pair("UTF-8", "\x8d\x82"), std::pair("nothing-known", "\xff"),
                                       std::pair("EUC-JP", "\xff\xff"), std::pair("UTF-7//IGNORE", "\xff")}) {
    const auto read = ReadBytes(named(encoding, name));
    EXPECT_EQ(read.result.refusal, format_messages::UnreadEncoding) << encoding;
    EXPECT_TRUE(read.data.Waypoints().empty());
  }
  EXPECT_EQ(ReadBytes("\xEF\xBB\xBF" + named("UTF-8", "\xff")).result.refusal, format_messages::UnreadEncoding);
}

TEST(GpxReader, WhatIsNoXmlIsRefusedAsAWholeWithItsPlace) {
  using namespace format_messages;
  const auto refusal_of = [](std::string_view text) {
    const auto read = ReadBytes(text);
    EXPECT_EQ(read.data.Holds(DataKind::Waypoint), read.result.refusal.empty()) << text;
    return read.result.refusal;
  };
  const std::string point = "<wpt lat='1' lon='2'/>";
  EXPECT_EQ(refusal_of("<gpx>\n 高" + point + "<a></b></gpx>"), AtPlace(NotWellFormed, 2, 28));
  EXPECT_EQ(refusal_of("<gpx>" + point + "<a></gpx>"), AtPlace(NotWellFormed, 1, 37));
  EXPECT_EQ(refusal_of("<gpx>" + point), AtPlace(NotWellFormed, 1, 28));
  EXPECT_EQ(refusal_of("<gpx>" + point + "</gpx>\n<gpx/>"), AtPlace(NotWellFormed, 2, 1));
  EXPECT_EQ(refusal_of("<gpx>" + point + "</gpx>\nx"), AtPlace(NotWellFormed, 2, 1));
  EXPECT_EQ(refusal_of("<gpx>" + point + "<a b='1' b='2'/></gpx>"), AtPlace(NotWellFormed, 1, 28));
  EXPECT_EQ(refusal_of("<gpx>" + point + "<a b='<'/></gpx>"), AtPlace(NotWellFormed, 1, 28));
  EXPECT_EQ(refusal_of("<gpx>" + point + "<a b=1/></gpx>"), AtPlace(NotWellFormed, 1, 28));
  EXPECT_EQ(refusal_of("<gpx>" + point + "<a b='1'c='2'/></gpx>"), AtPlace(NotWellFormed, 1, 28));
  EXPECT_EQ(refusal_of("<gpx>" + point + "a & b</gpx>"), AtPlace(UnknownEntity, 1, 30));
  EXPECT_EQ(refusal_of("<gpx>" + point + "&nbsp;</gpx>"), AtPlace(UnknownEntity, 1, 28));
  EXPECT_EQ(refusal_of("<gpx>" + point + "&#0;</gpx>"), AtPlace(UnknownEntity, 1, 28));
  EXPECT_EQ(refusal_of("<gpx>" + point + "<a b='&x;'/></gpx>"), AtPlace(UnknownEntity, 1, 34));
  EXPECT_EQ(refusal_of("<gpx>" + point + "\x01</gpx>"), AtPlace(NoXmlCharacter, 1, 28));
  EXPECT_EQ(refusal_of("<gpx>" + point + std::string("\0", 1) + "</gpx>"), AtPlace(NoXmlCharacter, 1, 28));
  EXPECT_EQ(refusal_of("<gpx>" + point + "<!-- </gpx>"), AtPlace(NotWellFormed, 1, 28));
  EXPECT_EQ(refusal_of("<gpx>" + point + "<![CDATA[ </gpx>"), AtPlace(NotWellFormed, 1, 28));
  EXPECT_EQ(refusal_of("<!DOCTYPE gpx [<!ENTITY a 'b'>]><gpx>" + point + "</gpx>"), AtPlace(EntityDeclared, 1, 1));
  EXPECT_EQ(refusal_of("<!DOCTYPE gpx [<!ENTITY a SYSTEM 'file:///etc/passwd'>]><gpx>" + point + "</gpx>"),
            AtPlace(EntityDeclared, 1, 1));
  // Tags that do not match, at every level: the root's, its elements', and those within.
  EXPECT_EQ(refusal_of("<gpx>" + point + "</gpy>"), AtPlace(NotWellFormed, 1, 28));
  EXPECT_EQ(refusal_of("<gpx>" + point + "<wpt lat='3' lon='4'></wpx></gpx>"), AtPlace(NotWellFormed, 1, 49));
  EXPECT_EQ(refusal_of("<gpx>" + point + "<a><b></a></b></gpx>"), AtPlace(NotWellFormed, 1, 34));
  EXPECT_EQ(refusal_of("<gpx>" + point + "<a><b><c></b></c></a></gpx>"), AtPlace(NotWellFormed, 1, 37));
  EXPECT_EQ(refusal_of("<gpx>" + point + "<a><b><c></c></a></gpx>"), AtPlace(NotWellFormed, 1, 51));
  EXPECT_EQ(refusal_of("<gpx>" + point + "<a><b><c></c</b></a></gpx>"), AtPlace(NotWellFormed, 1, 40));
  EXPECT_EQ(refusal_of("<gpx>" + point + "<a><?1?></a></gpx>"), AtPlace(NotWellFormed, 1, 31));
  EXPECT_EQ(refusal_of("<kml>" + point + "</kml>"), NoGpx);
  EXPECT_EQ(refusal_of("<gpx>" + point + "</gpx>"), "");
}

TEST(GpxReader, ADoctypeWithoutEntitiesAndCommentsArePassedOver) {
  const auto read = ReadBytes(
      "<!DOCTYPE gpx [<!ELEMENT gpx ANY>]><!-- & <gpx> --><?x & <?><gpx><!-- & --><wpt lat='1' "
      "lon='2'><name>A<!-- x -->B</name></wpt></gpx>");
  EXPECT_EQ(read.result.refusal, "");
  EXPECT_EQ(FirstOf(read).ident, "AB");
}

TEST(GpxReader, LevelsUpToAHundred) {
  const auto nested = [](int levels) {
    std::string text;
    for (int i = 1; i < levels; ++i)
      text += "<a>";
    for (int i = 1; i < levels; ++i)
      text += "</a>";
    return ReadBytes("<gpx>" + text + "</gpx>").result.refusal;
  };
  EXPECT_EQ(nested(100), "");
  EXPECT_TRUE(nested(101).starts_with(format_messages::TooDeep));
  EXPECT_TRUE(nested(100000).starts_with(format_messages::TooDeep));
}

TEST(GpxReader, AHundredAttributesOfAnElement) {
  const auto with = [](int count) {
    std::string text;
    for (int i = 0; i < count; ++i)
      text += " a" + std::to_string(i) + "=''";
    return ReadBytes("<gpx" + text + "/>").result.refusal;
  };
  EXPECT_EQ(with(100), "");
  EXPECT_EQ(with(101), format_messages::AtPlace(format_messages::TooManyAttributes, 1, 1));
}

TEST(GpxReader, AnAttributeOf64Kilobytes) {
  const auto with = [](std::size_t bytes) {
    return ReadBytes("<gpx><a b='" + std::string(bytes, 'x') + "'/></gpx>").result.refusal;
  };
  EXPECT_EQ(with(65536), "");
  EXPECT_EQ(with(65537), format_messages::AtPlace(format_messages::TooLongAttribute, 1, 6));
}

TEST(GpxReader, ATextOfMoreThan64MegabytesIsRefused) {
  std::string text = Gpx("<wpt lat='1' lon='2'/>");
  text.append(MostGpxBytes - text.size(), '\n');
  EXPECT_EQ(ReadBytes(text).data.Waypoints().size(), 1U);
  text += '\n';
  EXPECT_EQ(ReadBytes(text).result.refusal, format_messages::TooLarge);
}

TEST(GpxReader, APointWithoutAUsablePositionIsSkippedAndCounted) {
  const auto read = ReadContents(R"(
<wpt lat="1"/>
<wpt lat="91" lon="2"/>
<wpt lat="35,5" lon="2"/>
<wpt lat="nan" lon="2"/>
<wpt lat=" 35.5 " lon="2"><name>B</name></wpt>
<rte><rtept lon="3"/><rtept lat="3" lon="4"/></rte>
<trk><trkseg><trkpt/><trkpt lat="5" lon="6"/></trkseg></trk>)");
  EXPECT_EQ(read.result.skipped.count, 6);
  EXPECT_EQ(read.result.skipped.first_line, 2);
  EXPECT_EQ(read.result.skipped.first_why, format_messages::NoPosition);
  EXPECT_EQ(FirstOf(read), Point("B", 35.5, 2));
  ASSERT_EQ(read.data.Routes().size(), 1U);
  EXPECT_EQ(read.data.Routes()[0], Numbered(1, "", {Point("WPT007", 3, 4)}));
  ASSERT_EQ(read.data.Logs().size(), 1U);
  EXPECT_EQ(read.data.Logs()[0].points, std::vector{At(5, 6, {}, true)});
  EXPECT_EQ(ReadContents("<wpt lat='91' lon='2'/>").result.skipped.first_why, format_messages::PositionOutOfRange);
  EXPECT_EQ(ReadContents("<wpt lat='a' lon='2'/>").result.skipped.first_why, format_messages::BadAngle);
}

TEST(GpxReader, SymbolsByNameAndTheUnknownOnesToldOnceEach) {
  std::string contents;
  for (const char* name :
       {"Flag", "HOUSE", "Geocache", "Custom 7", "Custom 512", "moon", "moon", "Mars", "", "Geocache"})
    contents += "<wpt lat='1' lon='2'><sym>" + std::string(name) + "</sym></wpt>";
  const auto read = ReadContents(contents);
  std::vector<int> numbers;
  for (const Waypoint& waypoint : read.data.Waypoints())
    numbers.push_back(waypoint.smbl.value_or(65535));
  EXPECT_EQ(numbers, (std::vector{178, 10, 18, 18, 18, 18, 18, 18, 18, 18}));
  EXPECT_EQ(read.result.messages.kept, (std::vector{format_messages::UnknownSymbols("Custom 512，moon，Mars"),
                                                    format_messages::NearestSymbols("Geocache，Custom 7")}));
}

TEST(GpxReader, RoutesWithoutANumberGetTheNextFreeOne) {
  const auto read = ReadContents(
      "<rte/><rte><number>1</number></rte><rte><name>n</name></rte><rte><number>-2</number></rte>"
      "<rte><number> 255 </number></rte><rte><number>256</number></rte>");
  std::vector<int> numbers;
  for (const Route& route : read.data.Routes())
    numbers.push_back(route.nmbr);
  EXPECT_EQ(numbers, (std::vector{2, 1, 3, 4, 255, 5}));
  EXPECT_EQ(read.data.Routes()[2].cmnt, "N");
}

std::string RoutePoints(int count) {
  std::string contents;
  for (int i = 1; i <= count; ++i)
    contents += "<rtept lat='1' lon='" + std::to_string(i / 2.0) + "'/>";
  return contents;
}

TEST(GpxReader, ARouteOfMoreThan99PointsGoesOnWithItsLastPoint) {
  const auto read = ReadContents("<rte><name>long</name><number>4</number>" + RoutePoints(200) + "</rte><rte>" +
                                 RoutePoints(99) + "</rte>");
  const auto& routes = read.data.Routes();
  ASSERT_EQ(routes.size(), 4U);
  EXPECT_EQ(routes[0].points.size(), 99U);
  EXPECT_EQ(routes[1].points.size(), 99U);
  EXPECT_EQ(routes[2].points.size(), 4U);
  EXPECT_EQ(routes[3].points.size(), 99U);
  EXPECT_EQ(routes[1].points.front(), routes[0].points.back());
  EXPECT_EQ(routes[1].points[1].waypoint.lon_deg, 50);
  EXPECT_EQ(routes[1].cmnt, "LONG");
  EXPECT_EQ(routes[1].nmbr, 1);
  EXPECT_EQ(routes[2].nmbr, 2);
  EXPECT_EQ(read.result.messages.kept, std::vector{format_messages::SplitRoutes(1)});
}

TEST(GpxReader, ALogBeginsWithItsFirstPointAndEachSegmentWithNewTrk) {
  const auto read = ReadContents(
      "<trk><name>empty</name></trk><trk><trkseg/></trk><trk><name>a</name>"
      "<extensions><TrackExtension xmlns='http://www.garmin.com/xmlschemas/GpxExtensions/v3'>"
      "<DisplayColor>DarkBlue</DisplayColor></TrackExtension></extensions>"
      "<trkseg><trkpt lat='1' lon='2'><ele>3</ele></trkpt><trkpt lat='3' lon='4'/></trkseg><trkseg/>"
      "<trkseg><trkpt lat='5' lon='6'/></trkseg></trk>");
  ASSERT_EQ(read.data.Logs().size(), 1U);
  TrackLog expected;
  expected.trk_ident = "A";
  expected.color = 4;
  expected.points = {At(1, 2, {}, true), At(3, 4), At(5, 6, {}, true)};
  expected.points[0].alt_m = 3.0F;
  EXPECT_EQ(read.data.Logs()[0], expected);
  EXPECT_EQ(read.result.track_points, 3);
}

TEST(GpxReader, TimesWithFractionsAndZones) {
  constexpr GarminSeconds At0512 = 405993912;
  const auto read_time = [](std::string_view text) {
    return ReadContents("<trk><trkseg><trkpt lat='1' lon='2'><time>" + std::string(text) +
                        "</time></trkpt></trkseg></trk>");
  };
  for (const std::string_view text :
       {"2002-11-12T00:05:12Z", "2002-11-12T00:05:12.999Z", "2002-11-12T09:05:12+09:00", "2002-11-11T20:35:12-0330",
        " 2002-11-12T00:05:12\n", "2002-11-12T09:05:12.5+09", "2002-11-12t00:05:12z", "2002-11-12 00:05:12"}) {
    EXPECT_EQ(read_time(text).data.Logs()[0].points[0].time, At0512) << text;
  }
  for (const std::string_view text :
       {"1989-12-31T00:00:00Z", "1970-01-01T00:00:00Z", "1989-12-31T08:59:59+09:00", ""}) {
    const auto read = read_time(text);
    EXPECT_EQ(read.data.Logs()[0].points[0].time, std::nullopt) << text;
    EXPECT_EQ(read.result.unread_time.count, 0) << text;
  }
  EXPECT_EQ(read_time("1989-12-31T00:00:01Z").data.Logs()[0].points[0].time, 1U);
  for (const std::string_view text : {"yesterday", "2002-02-30T00:00:00Z", "2002-11-12T00:05:12+9",
                                      "2002-11-12T00:05:12+99:00", "2002-11-12T00:05:12+09:60"}) {
    const auto read = read_time(text);
    EXPECT_EQ(read.data.Logs()[0].points[0].time, std::nullopt) << text;
    EXPECT_EQ(read.result.unread_time.count, 1) << text;
  }
}

TEST(GpxReader, AFurtherFileGoesOnInTheSameDataSet) {
  DataSet data;
  (void)Read(FormatId::Gpx, data, Gpx("<rte><number>1</number></rte><wpt lat='1' lon='2'/>"));
  (void)Read(FormatId::Gpx, data, Gpx("<rte/><wpt lat='1' lon='2'/>"));
  EXPECT_EQ(data.Routes()[1].nmbr, 2);
  EXPECT_EQ(data.Waypoints().size(), 2U);
}

// ---- There and back

/// A standard file of a data set, with header lines.
std::string Standard(const DataSet& data) {
  WriteSettings settings = Settings();
  settings.with_header = true;
  return Written(FormatId::Standard, data, settings);
}

void ExpectSameFile(const DataSet& data, std::string_view what) {
  const std::string file = Standard(data);
  DataSet from_file;
  (void)Read(FormatId::Standard, from_file, file);
  const std::string gpx = Written(FormatId::Gpx, from_file);
  ASSERT_EQ(gpx.empty(), file.empty()) << what;
  if (gpx.empty()) return;
  DataSet back;
  const ImportResult result = Read(FormatId::Gpx, back, gpx);
  EXPECT_EQ(result.refusal, "") << what;
  EXPECT_EQ(result.skipped.count + result.messages.count, 0) << what;
  EXPECT_EQ(Standard(back), Standard(from_file)) << what;
  // The same bytes for the same data.
  EXPECT_EQ(Written(FormatId::Gpx, back), gpx) << what;
}

std::string FileBytes(const std::string& name) {
  std::ifstream in(std::string(WALRIM_SOURCE_DIR) + "/tests/pinned/inputs/" + name, std::ios::binary);
  EXPECT_TRUE(in.is_open()) << name;
  return {std::istreambuf_iterator<char>(in), {}};
}

TEST(GpxRoundTrip, OfEveryKindOfStandardFile) {
  for (const char* name : {"full.grc", "full-utf8.grc", "binary.grc", "cut.grc", "halfkana.grc", "newlines.grc",
                           "nul.grc", "notations.grc", "toomany.grc", "standard-absurd-numbers.grc",
                           "standard-all-kinds-sjis.grc", "standard-bad-lines.grc", "standard-short-lines.grc",
                           "standard-wrapped-commas.grc", "standard-zero-and-quotes.grc"}) {
    const std::string bytes = FileBytes(name);
    LineSource lines(bytes, EncodingOf(bytes));
    DataSet data;
    (void)FormatOf(FormatId::Standard).read(lines, data, {9});
    ExpectSameFile(data, name);
  }
}

TEST(GpxRoundTrip, OfEverySymbolDisplayModeAndColour) {
  DataSet data;
  for (const WaypointType type : {WaypointType::D103, WaypointType::D108}) {
    for (const NamedCode& symbol : SymbolNames(type)) {
      Waypoint waypoint = Named("A");
      waypoint.smbl = static_cast<std::uint16_t>(symbol.code);
      waypoint.dspl = static_cast<std::uint8_t>(symbol.code % 7);
      waypoint.color = static_cast<std::uint8_t>(symbol.code);
      (void)data.Add(waypoint);
      TrackLog log;
      log.color = static_cast<std::uint8_t>(symbol.code);
      (void)data.Begin(log);
    }
  }
  for (const int code : {7680, 8191, 180, 8255, 8363, 65535}) {
    Waypoint waypoint = Named("A");
    waypoint.smbl = static_cast<std::uint16_t>(code);
    (void)data.Add(waypoint);
  }
  ExpectSameFile(data, "symbols");
}

/// Their notes in the standard file have a comma, and stand there without a wrapping.
TEST(GpxRoundTrip, SymbolsWhoseNamesHaveAComma) {
  for (const int code : {8230, 8231, 8232}) {
    const std::string note(NameOf(SymbolNames(WaypointType::D108), code));
    ASSERT_NE(note.find(','), std::string::npos);
    DataSet data;
    const ImportResult read = Read(FormatId::Standard, data,
                                   "WPT\tD\tWGS84\t=\"A\"\t35\t139\t=\"KEEP\"\t=\"" + std::to_string(code) + "\"\t" +
                                       note + "\t=\"0\"\t\t0\t7\r\n");
    ASSERT_EQ(data.Waypoints().size(), 1U);
    EXPECT_EQ(data.Waypoints().front().smbl, code);
    EXPECT_EQ(data.Waypoints().front().color, 7);
    EXPECT_EQ(read.overfull.count, 0);
    ExpectSameFile(data, note);
  }
}

TEST(GpxRoundTrip, APictureOfThe16IsShownAndKeepsItsNumberInAFile) {
  const auto file_with = [](std::string_view notes) {
    return "WPT\tD\tWGS84\t=\"A\"\t35\t139\t=\"\"\t=\"10\"\t" + std::string(notes) + "\t=\"0\"\r\n";
  };
  const auto sym_of = [&](std::string_view notes) {
    DataSet data;
    (void)Read(FormatId::Standard, data, file_with(notes));
    ExpectSameFile(data, notes);
    DataSet back;
    (void)Read(FormatId::Gpx, back, Written(FormatId::Gpx, data));
    // A number that a file told alone does not become one of D108 on the way.
    const bool told = ElementOf(data.Waypoints()[0], "walrim:").empty();
    EXPECT_EQ(back.Waypoints()[0].symbol_set, told ? SymbolSet::Large : SymbolSet::Untold) << notes;
    return ElementOf(data.Waypoints()[0], "sym") + ElementOf(data.Waypoints()[0], "walrim:");
  };
  EXPECT_EQ(sym_of("flag symbol"), "<sym>Flag</sym><walrim:waypoint smbl=\"10\"/>");
  EXPECT_EQ(sym_of("white house symbol"), "<sym>Residence</sym>");
  EXPECT_EQ(sym_of(""), "<sym>Residence</sym>");
}

TEST(GpxRoundTrip, OfAFullRouteOfAFileAndOfNone) {
  DataSet data;
  (void)data.Begin(Numbered(0, "", std::vector<Waypoint>(MaxRoutePoints, Named("A"))));
  (void)data.Begin(Numbered(255, " X ", {}));
  ExpectSameFile(data, "routes");
}

TEST(GpxRoundTrip, OfRandomRecords) {
  std::mt19937 random(20021112);
  const auto below = [&random](std::uint32_t limit) { return static_cast<std::uint32_t>(random() % limit); };
  constexpr std::array<std::string_view, 16> texts{"",    "A",    " A",      "A ",          "高尾 山", "<&>\"'",
                                                   "]]>", "\\",   "\\u0041", "\x01",        "\x7F",    "\xC2\x85",
                                                   "　",  "A  B", "&amp;",   "\xEF\xBF\xBF"};
  const auto text = [&] { return std::string(texts[below(texts.size())]) + std::string(texts[below(texts.size())]); };
  const auto metres = [&]() -> std::optional<float> {
    if (below(3) == 0) return std::nullopt;
    return std::ldexp(static_cast<float>(random()), static_cast<int>(below(120)) - 60) * (below(2) == 0 ? 1.0F : -1.0F);
  };
  const auto degrees = [&](double most) {
    if (below(5) == 0) return most;
    return (static_cast<double>(random()) / 4294967296.0 * 2 - 1) * most;
  };
  const auto byte = [&] { return static_cast<std::uint8_t>(below(256)); };
  const auto waypoint = [&] {
    Waypoint point = Named(text(), degrees(90), degrees(180), text());
    if (below(4) == 0) point.smbl = static_cast<std::uint16_t>(below(65536));
    point.dspl = static_cast<std::uint8_t>(below(4));
    if (below(4) == 0) point.color = byte();
    point.dist_m = metres().value_or(0);
    point.dst_m = metres().value_or(0);
    point.alt_m = metres();
    point.dpth_m = metres();
    if (below(2) == 0) return point;
    WaypointDetails details{byte(), byte(), NoSubclass, text(), text(), text(), text(), text(), text()};
    details.subclass[below(18)] = byte();
    point.details = details;
    return point;
  };
  for (int run = 0; run < 40; ++run) {
    DataSet data;
    for (int i = 0; i < 10; ++i)
      (void)data.Add(waypoint());
    for (int i = 0; i < 3; ++i) {
      (void)data.Begin(Numbered(byte(), text()));
      for (std::uint32_t k = below(4); k > 0; --k) {
        RouteLink link{static_cast<std::uint16_t>(below(65536)), NoSubclass, text()};
        link.subclass[below(18)] = byte();
        RoutePoint point{waypoint(), {}};
        if (below(2) == 0) point.link = link;
        (void)data.Add(point);
      }
    }
    for (int i = 0; i < 3; ++i) {
      TrackLog log;
      log.dspl = below(2) == 0;
      log.color = byte();
      log.trk_ident = text();
      (void)data.Begin(log);
      for (std::uint32_t k = below(6); k > 0; --k) {
        TrackPoint point = At(degrees(90), degrees(180), below(4294967290U), below(3) == 0);
        point.alt_m = metres();
        point.dpth_m = metres();
        (void)data.Add(point);
      }
    }
    ExpectSameFile(data, std::to_string(run));
  }
}

}  // namespace
}  // namespace walrim
