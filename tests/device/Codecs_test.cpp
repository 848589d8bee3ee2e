// Every wire layout against bytes written by hand, both ways, together with every shorter prefix.
#include "device/Codecs.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

#include "support/Fakes.h"

namespace walrim {
namespace {

/// A received frame with this data; its checksum does not matter here.
Frame FrameWith(const Bytes& data) {
  Frame frame;
  frame.bytes[0] = 0x10;
  frame.bytes[2] = static_cast<std::uint8_t>(data.size());
  std::copy(data.begin(), data.end(), frame.bytes.begin() + 3);
  frame.Size = static_cast<std::int16_t>(data.size() + 6);
  return frame;
}

Bytes Text(std::string_view text, std::size_t width = 0) {
  Bytes bytes(text.begin(), text.end());
  while (bytes.size() < width)
    bytes.push_back(' ');
  return bytes;
}

Bytes Joined(std::initializer_list<Bytes> parts) {
  Bytes all;
  for (const Bytes& part : parts)
    all.insert(all.end(), part.begin(), part.end());
  return all;
}

Bytes BytesOf(const ByteBuffer& buffer) {
  return {buffer.View().begin(), buffer.View().end()};
}

// 45 degrees north is 2^29 semicircles, 135 degrees east 3 * 2^29, 90 degrees west -2^30.
const Bytes Lat45{0x00, 0x00, 0x00, 0x20};
const Bytes Lon135{0x00, 0x00, 0x00, 0x60};
const Bytes LonMinus90{0x00, 0x00, 0x00, 0xC0};
const Bytes Single12_5{0x00, 0x00, 0x48, 0x41};
const Bytes SingleUnknown{0x51, 0x59, 0x04, 0x69};  // 1.0e25

const Bytes D103Vector =
    Joined({Text("TAKAO", 6), Lat45, Lon135, {0x04, 0x03, 0x02, 0x01}, Text("SUMMIT", 40), {0x0A}, {0x02}});
const Bytes D104Vector =
    Joined({Text("TAKAO", 6), Lat45, LonMinus90, {0, 0, 0, 0}, Text("SUMMIT", 40), Single12_5, {0x36, 0x20}, {0x03}});
const Bytes D107Vector =
    Joined({Text("TAKAO", 6), Lat45, Lon135, {0, 0, 0, 0}, Text("SUMMIT", 40), {0x0F}, {0x01}, Single12_5, {0x02}});
const Bytes NoSubclassBytes{0, 0, 0, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};
const Bytes D108Vector = Joined({{0x01},
                                 {0xFF},
                                 {0x02},
                                 {0x60},
                                 {0x36, 0x20},
                                 NoSubclassBytes,
                                 Lat45,
                                 Lon135,
                                 Single12_5,
                                 SingleUnknown,
                                 {0, 0, 0, 0},
                                 Text("TK"),
                                 Text("JP"),
                                 // 高尾 in Shift-JIS
                                 {0x8D, 0x82, 0x94, 0xF6, 0x00},
                                 Text("SUMMIT"),
                                 {0x00},
                                 Text("F"),
                                 {0x00},
                                 Text("CITY"),
                                 {0x00},
                                 {0x00},
                                 Text("X"),
                                 {0x00}});

class Codecs : public ::testing::Test {
 protected:
  InternalData data;
};

TEST_F(Codecs, D103) {
  ASSERT_EQ(D103Vector.size(), 60U);
  DecodeWaypoint(data, FrameWith(D103Vector), 7, "D103");
  data.SpreadWaypoint(7, WaypointType::D103);
  const D103Entry& entry = data.d103[7];
  EXPECT_EQ(entry.ident.Padded(), "TAKAO ");
  EXPECT_EQ(entry.lat_deg, 45.0);
  EXPECT_EQ(entry.lon_deg, 135.0);
  EXPECT_EQ(entry.unused, 16909060.0);
  EXPECT_EQ(entry.cmnt.Bare(), "SUMMIT");
  EXPECT_EQ(entry.smbl, 10);
  EXPECT_EQ(entry.dspl, 2);
  EXPECT_EQ(BytesOf(EncodeWaypoint(data, 7, "D103")), D103Vector);
}

TEST_F(Codecs, D104) {
  ASSERT_EQ(D104Vector.size(), 65U);
  DecodeWaypoint(data, FrameWith(D104Vector), 7, "D104");
  const D104Entry& entry = data.d104[7];
  EXPECT_EQ(entry.ident.Padded(), "TAKAO ");
  EXPECT_EQ(entry.cmnt.Bare(), "SUMMIT");
  EXPECT_EQ(entry.lat_deg, 45.0);
  EXPECT_EQ(entry.lon_deg, -90.0);
  EXPECT_EQ(entry.unused, 0.0);
  EXPECT_EQ(entry.dst_m, 12.5F);
  EXPECT_EQ(entry.smbl, 8246);
  EXPECT_EQ(entry.dspl, 3);
  EXPECT_EQ(BytesOf(EncodeWaypoint(data, 7, "D104")), D104Vector);
}

TEST_F(Codecs, D107) {
  ASSERT_EQ(D107Vector.size(), 65U);
  DecodeWaypoint(data, FrameWith(D107Vector), 7, "D107");
  data.SpreadWaypoint(7, WaypointType::D107);
  const D107Entry& entry = data.d107[7];
  EXPECT_EQ(entry.ident.Padded(), "TAKAO ");
  EXPECT_EQ(entry.cmnt.Bare(), "SUMMIT");
  EXPECT_EQ(entry.lat_deg, 45.0);
  EXPECT_EQ(entry.lon_deg, 135.0);
  EXPECT_EQ(entry.smbl, 15);
  EXPECT_EQ(entry.dspl, 1);
  EXPECT_EQ(entry.dst_m, 12.5F);
  EXPECT_EQ(entry.color, 2);
  EXPECT_EQ(BytesOf(EncodeWaypoint(data, 7, "D107")), D107Vector);
}

TEST_F(Codecs, D108) {
  DecodeWaypoint(data, FrameWith(D108Vector), 7, "D108");
  const D108Entry& entry = data.d108[7];
  EXPECT_EQ(entry.wpt_class, 1);
  EXPECT_EQ(entry.color, 255);
  EXPECT_EQ(entry.dspl, 2);
  EXPECT_EQ(entry.attr, 96);
  EXPECT_EQ(entry.smbl, 8246);
  EXPECT_EQ(entry.subclass, NoSubclass);
  EXPECT_EQ(entry.lat_deg, 45.0);
  EXPECT_EQ(entry.lon_deg, 135.0);
  EXPECT_EQ(entry.alt_m, 12.5F);
  EXPECT_EQ(entry.dpth_m, UnknownMetres);
  EXPECT_EQ(entry.dist_m, 0.0F);
  EXPECT_EQ(entry.state.Padded(), "TK");
  EXPECT_EQ(entry.cc.Padded(), "JP");
  EXPECT_EQ(entry.ident, "高尾");
  EXPECT_EQ(entry.cmnt, "SUMMIT");
  EXPECT_EQ(entry.facility, "F");
  EXPECT_EQ(entry.city, "CITY");
  EXPECT_EQ(entry.addr, "");
  EXPECT_EQ(entry.cross_road, "X");
  EXPECT_EQ(BytesOf(EncodeWaypoint(data, 7, "D108")), D108Vector);
}

TEST_F(Codecs, EmptyD108IdentLetsTheCommentStartAtOffset49) {
  Bytes vector(48, 0);
  vector.insert(vector.end(), {0x00, 'H', 'I', 0x00, 0x00, 0x00, 0x00, 0x00});
  DecodeWaypoint(data, FrameWith(vector), 1, "D108");
  EXPECT_EQ(data.d108[1].ident, "");
  EXPECT_EQ(data.d108[1].cmnt, "HI");
}

TEST_F(Codecs, D201) {
  const Bytes vector = Joined({{0x05}, Text("TAKAO TO JINBA", 20)});
  DecodeRouteHeader(data, FrameWith(vector), 3, "D201");
  EXPECT_EQ(data.d201[3].nmbr, 5);
  EXPECT_EQ(data.d201[3].cmnt.Bare(), "TAKAO TO JINBA");
  EXPECT_EQ(BytesOf(EncodeRouteHeader(data, 3, "D201")), vector);
}

TEST_F(Codecs, D202AndItsEmptyIdent) {
  const Bytes vector = Joined({Text("JINBA"), {0x00}});
  DecodeRouteHeader(data, FrameWith(vector), 3, "D202");
  EXPECT_EQ(data.d202[3].rte_ident, "JINBA");
  EXPECT_EQ(BytesOf(EncodeRouteHeader(data, 3, "D202")), vector);
  DecodeRouteHeader(data, FrameWith({0x00}), 3, "D202");
  EXPECT_EQ(data.d202[3].rte_ident, "");
  EXPECT_EQ(BytesOf(EncodeRouteHeader(data, 3, "D202")), Bytes{0x00});
}

TEST_F(Codecs, D210) {
  const Bytes vector = Joined({{0x03, 0x01}, NoSubclassBytes, Text("LINK"), {0x00}});
  DecodeRouteLink(data, FrameWith(vector), 2, 3, "D210");
  const D210Entry& link = data.d210[LinkSlot(2, 3)];
  EXPECT_EQ(link.link_class, 259.0);
  EXPECT_EQ(link.subclass, NoSubclass);
  EXPECT_EQ(link.ident, "LINK");
  EXPECT_EQ(BytesOf(EncodeRouteLink(data, 2, 3, "D210")), vector);
}

TEST_F(Codecs, ThirdPointOfRoute2LiesInEntry2203) {
  DecodeRoutePoint(data, FrameWith(D103Vector), 2, 3, "D103");
  data.SpreadWaypoint(2203, WaypointType::D103);
  EXPECT_EQ(data.d103[2203].ident.Bare(), "TAKAO");
  EXPECT_EQ(BytesOf(EncodeRoutePoint(data, 2, 3, "D103")), D103Vector);
}

TEST_F(Codecs, D300) {
  const Bytes vector = Joined({Lat45, Lon135, {0x78, 0x56, 0x34, 0x92}, {0xFF}});
  ASSERT_EQ(vector.size(), 13U);
  EXPECT_TRUE(DecodeTrackPoint(data, FrameWith(vector), 4, "D300"));
  EXPECT_EQ(data.track_points[4].lat_deg, 45.0);
  EXPECT_EQ(data.track_points[4].lon_deg, 135.0);
  EXPECT_EQ(data.track_points[4].time, 2452903544.0);
  EXPECT_TRUE(data.track_points[4].new_trk);
  EXPECT_EQ(data.track_points[4].alt_m, UnknownMetres);
  EXPECT_EQ(BytesOf(EncodeTrackPoint(data, 4, "D300")), vector);
}

TEST_F(Codecs, D301) {
  const Bytes vector = Joined({Lat45, Lon135, {0xFF, 0xFF, 0xFF, 0xFF}, Single12_5, SingleUnknown, {0x00}});
  ASSERT_EQ(vector.size(), 21U);
  EXPECT_FALSE(DecodeTrackPoint(data, FrameWith(vector), 4, "D301"));
  EXPECT_EQ(data.track_points[4].lat_deg, 45.0);
  EXPECT_EQ(data.track_points[4].lon_deg, 135.0);
  EXPECT_EQ(data.track_points[4].time, 4294967295.0);
  EXPECT_EQ(data.track_points[4].alt_m, 12.5F);
  EXPECT_EQ(data.track_points[4].dpth_m, UnknownMetres);
  EXPECT_EQ(BytesOf(EncodeTrackPoint(data, 4, "D301")), vector);
}

TEST_F(Codecs, D310AndItsEmptyIdentOfThreeBytes) {
  const Bytes vector = Joined({{0xFF}, {0x04}, Text("ACTIVE LOG"), {0x00}});
  DecodeTrackHeader(data, FrameWith(vector), 2, "D310");
  EXPECT_TRUE(data.d310[2].dspl);
  EXPECT_EQ(data.d310[2].color, 4);
  EXPECT_EQ(data.d310[2].trk_ident, "ACTIVE LOG");
  EXPECT_EQ(BytesOf(EncodeTrackHeader(data, 2, "D310")), vector);
  data.d310[2].trk_ident.clear();
  EXPECT_EQ(BytesOf(EncodeTrackHeader(data, 2, "D310")), (Bytes{0xFF, 0x04, 0x00}));
}

TEST_F(Codecs, EveryShorterPrefixDecodesWithZerosBehindIt) {
  for (std::size_t length = 0; length <= D108Vector.size(); ++length) {
    DecodeWaypoint(data, FrameWith(Bytes(D108Vector.begin(), D108Vector.begin() + static_cast<long>(length))), 1,
                   "D108");
    EXPECT_EQ(data.d108[1].lat_deg, length >= 28 ? 45.0 : 0.0) << length;
  }
  for (std::size_t length = 0; length <= D103Vector.size(); ++length) {
    DecodeWaypoint(data, FrameWith(Bytes(D103Vector.begin(), D103Vector.begin() + static_cast<long>(length))), 1,
                   "D103");
    EXPECT_EQ(data.d103[1].dspl, length == D103Vector.size() ? 2 : 0) << length;
  }
}

TEST_F(Codecs, AD108TextWithoutItsZeroByteEndsWithTheBuffer) {
  Bytes vector(48, 0);
  vector.resize(255, 'A');
  DecodeWaypoint(data, FrameWith(vector), 1, "D108");
  EXPECT_EQ(data.d108[1].ident, std::string(207, 'A'));
  EXPECT_EQ(data.d108[1].cmnt, "");
}

TEST_F(Codecs, ASingleThatIsNoNumberIsUnknown) {
  Bytes vector = D108Vector;
  const Bytes not_a_number{0x00, 0x00, 0xC0, 0x7F};
  std::copy(not_a_number.begin(), not_a_number.end(), vector.begin() + 32);
  DecodeWaypoint(data, FrameWith(vector), 1, "D108");
  EXPECT_EQ(data.d108[1].alt_m, UnknownMetres);
}

TEST_F(Codecs, ALongRecordIsCutFromItsLastTextBackwards) {
  D108Entry& entry = data.d108[1];
  entry.ident = "IDENT";
  entry.cmnt = std::string(150, 'C');
  entry.facility = "山山山山山山山山山山山山山山山山山山山山山山山山山";  // 50 bytes
  entry.city = "CITY";
  entry.cross_road = "ROAD";
  // 48 + 6 + 151 + 51 + 5 + 1 + 5 = 267 bytes: 17 too many. The road and the city go, and of the facility 9 bytes,
  // that is five characters: none is cut in two.
  EncodeNotes notes;
  const Bytes bytes = BytesOf(EncodeWaypoint(data, 1, "D108", &notes));
  EXPECT_TRUE(notes.cut);
  EXPECT_EQ(bytes.size(), 249U);
  DecodeWaypoint(data, FrameWith(bytes), 2, "D108");
  EXPECT_EQ(data.d108[2].cmnt, entry.cmnt);
  EXPECT_EQ(data.d108[2].facility, "山山山山山山山山山山山山山山山山山山山山");
  EXPECT_EQ(data.d108[2].city, "");
  EXPECT_EQ(data.d108[2].cross_road, "");
}

TEST_F(Codecs, ARecordOfJust250BytesIsSentWhole) {
  data.d202[1].rte_ident = std::string(249, 'R');
  EncodeNotes notes;
  EXPECT_EQ(EncodeRouteHeader(data, 1, "D202", &notes).Size, 250);
  EXPECT_FALSE(notes.cut);
  data.d202[1].rte_ident += 'R';
  EXPECT_EQ(EncodeRouteHeader(data, 1, "D202", &notes).Size, 250);
  EXPECT_TRUE(notes.cut);
}

TEST_F(Codecs, WhatTheCodePageLacksIsNoted) {
  data.d108[1].ident = "CAFé";
  EncodeNotes notes;
  static_cast<void>(EncodeWaypoint(data, 1, "D108", &notes));
  ASSERT_TRUE(notes.lacking);
  EXPECT_EQ(notes.lacking->utf8, "é");
}

TEST_F(Codecs, FixedTextIsExactlyItsWidthAndNeverCutsACharacter) {
  data.d103[1].ident.Set("ABCDE山");  // the character would need bytes 6 and 7
  const Bytes bytes = BytesOf(EncodeWaypoint(data, 1, "D103"));
  ASSERT_EQ(bytes.size(), 60U);
  EXPECT_EQ(Bytes(bytes.begin(), bytes.begin() + 6), Text("ABCDE", 6));
}

TEST_F(Codecs, HalfWidthKatakanaInAFixedFieldComeThrough) {
  Bytes vector = D103Vector;
  const Bytes katakana{0xC0, 0xB6, 0xB5, 0x20, 0x20, 0x20};  // ﾀｶｵ
  std::copy(katakana.begin(), katakana.end(), vector.begin());
  DecodeWaypoint(data, FrameWith(vector), 1, "D103");
  data.SpreadWaypoint(1, WaypointType::D103);
  EXPECT_EQ(data.d103[1].ident.Bare(), "ﾀｶｵ");
  EXPECT_EQ(BytesOf(EncodeWaypoint(data, 1, "D103")), vector);
}

WaypointRecord WithPicture(const char* smbl, const char* color = "255") {
  WaypointRecord record;
  record[WaypointField::ident] = "A";
  record[WaypointField::smbl] = smbl;
  record[WaypointField::color] = color;
  return record;
}

struct Picture {
  const char* smbl;
  int sent;
  bool replaced;
};

// Flag and boat ramp are among the 16; a summit's nearest is the flag, a large city has none.
TEST_F(Codecs, ASymbolThatAReceiverOf16LacksBecomesTheNearest) {
  for (const auto& [smbl, sent, replaced] :
       {Picture{"178", 10, false}, Picture{"150", 5, false}, Picture{"8246", 10, true}, Picture{"8200", 0, true},
        Picture{"255", 0, true}, Picture{"16", 0, true}, Picture{"18", 0, false}, Picture{"15", 15, false},
        Picture{"0", 0, false}}) {
    const int slot = data.AddWaypoint(WithPicture(smbl));
    for (const char* type : {"D103", "D107"}) {
      EncodeNotes notes;
      EXPECT_EQ(EncodeWaypoint(data, slot, type, &notes)[58], sent) << smbl << type;
      EXPECT_EQ(notes.replaced, replaced) << smbl << type;
    }
    EncodeNotes notes;
    EXPECT_EQ(WordFromBytes(SubBuffer(EncodeWaypoint(data, slot, "D108", &notes), 4, 2)), std::stoi(smbl));
    EXPECT_EQ(WordFromBytes(SubBuffer(EncodeWaypoint(data, slot, "D104", &notes), 62, 2)), std::stoi(smbl));
    EXPECT_FALSE(notes.replaced);
  }
}

TEST_F(Codecs, ASymbolThatCameFromAReceiverOf16DoesNotGoBackBeyondThem) {
  Bytes vector = D103Vector;
  vector[58] = 54;
  DecodeWaypoint(data, FrameWith(vector), 1, "D103");
  data.SpreadWaypoint(1, WaypointType::D103);
  EXPECT_EQ(EncodeWaypoint(data, 1, "D103")[58], 0);
}

TEST_F(Codecs, AColourThatD107LacksBecomesTheDefault) {
  for (const auto& [color, sent, replaced] :
       {Picture{"3", 3, false}, Picture{"4", 0, true}, Picture{"255", 0, false}}) {
    const int slot = data.AddWaypoint(WithPicture("0", color));
    EncodeNotes notes;
    EXPECT_EQ(EncodeWaypoint(data, slot, "D107", &notes)[64], sent) << color;
    EXPECT_EQ(notes.replaced, replaced) << color;
    EXPECT_EQ(EncodeWaypoint(data, slot, "D108")[1], std::stoi(color));
  }
}

TEST_F(Codecs, OtherTypeNamesDoNothing) {
  DecodeWaypoint(data, FrameWith(D103Vector), 1, "D109");
  EXPECT_EQ(data.d103[1].lat_deg, 0.0);
  EXPECT_EQ(EncodeWaypoint(data, 1, "D109").Size, 0);
  EXPECT_EQ(EncodeRouteHeader(data, 1, "D200").Size, 0);
  EXPECT_EQ(EncodeTrackPoint(data, 1, "D302").Size, 0);
  EXPECT_EQ(EncodeTrackHeader(data, 1, "").Size, 0);
  EXPECT_FALSE(DecodeTrackPoint(data, FrameWith(D103Vector), 1, "D302"));
}

TEST_F(Codecs, IndicesBeyondTheTablesAreErrors) {
  EXPECT_THROW(DecodeWaypoint(data, FrameWith(D103Vector), 10000, "D103"), std::out_of_range);
  EXPECT_THROW(DecodeRouteHeader(data, FrameWith({0}), 80, "D202"), std::out_of_range);
  EXPECT_THROW(DecodeTrackPoint(data, FrameWith({0}), 30000, "D300"), std::out_of_range);
  EXPECT_THROW(DecodeTrackHeader(data, FrameWith({0}), 1537, "D310"), std::out_of_range);
}

}  // namespace
}  // namespace walrim
