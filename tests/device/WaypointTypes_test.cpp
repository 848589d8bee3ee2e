// Waypoints against bytes written by hand, both ways, and what each type makes of one of another.
#include "device/types/WaypointTypes.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <string_view>

#include "support/Packets.h"

namespace walrim {
namespace {

using enum WaypointType;

// 45 degrees north is 2^29 semicircles, 135 degrees east 3 * 2^29, 90 degrees west -2^30.
const Bytes Lat45{0x00, 0x00, 0x00, 0x20};
const Bytes Lon135{0x00, 0x00, 0x00, 0x60};
const Bytes LonMinus90{0x00, 0x00, 0x00, 0xC0};
const Bytes Single12_5{0x00, 0x00, 0x48, 0x41};
const Bytes SingleUnknown{0x51, 0x59, 0x04, 0x69};  // 1.0e25
const Bytes Summit = TextBytes("SUMMIT", 40);

const Bytes D103Vector =
    Joined({TextBytes("TAKAO", 6), Lat45, Lon135, {0x04, 0x03, 0x02, 0x01}, Summit, {0x0A}, {0x02}});
const Bytes D104Vector =
    Joined({TextBytes("TAKAO", 6), Lat45, LonMinus90, {0, 0, 0, 0}, Summit, Single12_5, {0x36, 0x20}, {0x03}});
const Bytes D107Vector =
    Joined({TextBytes("TAKAO", 6), Lat45, Lon135, {0, 0, 0, 0}, Summit, {0x0F}, {0x01}, Single12_5, {0x02}});
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
                                 TextBytes("TK"),
                                 TextBytes("JP"),
                                 // 高尾 in Shift-JIS
                                 {0x8D, 0x82, 0x94, 0xF6, 0x00},
                                 TextBytes("SUMMIT"),
                                 {0x00},
                                 TextBytes("F"),
                                 {0x00},
                                 TextBytes("CITY"),
                                 {0x00},
                                 {0x00},
                                 TextBytes("X"),
                                 {0x00}});

Bytes Encoded(const Waypoint& waypoint, WaypointType type) {
  EncodeNotes notes;
  return EncodeWaypoint(waypoint, type, notes);
}
EncodeNotes NotesOf(const Waypoint& waypoint, WaypointType type) {
  EncodeNotes notes;
  static_cast<void>(EncodeWaypoint(waypoint, type, notes));
  return notes;
}
Bytes Part(const Bytes& bytes, std::size_t from, std::size_t size) {
  const auto begin = bytes.begin() + static_cast<std::ptrdiff_t>(from);
  return {begin, begin + static_cast<std::ptrdiff_t>(size)};
}
Bytes IdentOf(const Waypoint& waypoint, WaypointType type) {
  return Part(Encoded(waypoint, type), 0, 6);
}
Bytes CommentOf(const Waypoint& waypoint, WaypointType type) {
  return Part(Encoded(waypoint, type), 18, 40);
}
/// One as a file brings it.
Waypoint Named(std::string_view ident, std::string_view cmnt = {}) {
  Waypoint waypoint;
  waypoint.ident = ident;
  waypoint.cmnt = cmnt;
  return waypoint;
}

TEST(WaypointTypes, D103) {
  ASSERT_EQ(D103Vector.size(), 60U);
  const Waypoint waypoint = DecodeWaypoint(D103Vector, D103);
  EXPECT_EQ(waypoint.type, D103);
  EXPECT_EQ(waypoint.ident, "TAKAO ");
  EXPECT_EQ(waypoint.lat_deg, 45.0);
  EXPECT_EQ(waypoint.lon_deg, 135.0);
  EXPECT_EQ(waypoint.unused, 16909060U);
  EXPECT_EQ(waypoint.cmnt, "SUMMIT" + std::string(34, ' '));
  EXPECT_EQ(waypoint.smbl, 10);
  EXPECT_EQ(waypoint.dspl, 2);
  EXPECT_EQ(waypoint.color, 255);
  EXPECT_EQ(waypoint.dst_m, std::nullopt);
  EXPECT_EQ(waypoint.alt_m, std::nullopt);
  EXPECT_FALSE(waypoint.missing);
  EXPECT_EQ(Encoded(waypoint, D103), D103Vector);
}

TEST(WaypointTypes, D104) {
  ASSERT_EQ(D104Vector.size(), 65U);
  const Waypoint waypoint = DecodeWaypoint(D104Vector, D104);
  EXPECT_EQ(waypoint.type, D104);
  EXPECT_EQ(waypoint.ident, "TAKAO ");
  EXPECT_EQ(waypoint.cmnt, "SUMMIT" + std::string(34, ' '));
  EXPECT_EQ(waypoint.lat_deg, 45.0);
  EXPECT_EQ(waypoint.lon_deg, -90.0);
  EXPECT_EQ(waypoint.unused, 0U);
  EXPECT_EQ(waypoint.dst_m, 12.5F);
  EXPECT_EQ(waypoint.smbl, 8246);
  EXPECT_EQ(waypoint.dspl, 3);
  EXPECT_EQ(Encoded(waypoint, D104), D104Vector);
}

TEST(WaypointTypes, D107) {
  ASSERT_EQ(D107Vector.size(), 65U);
  const Waypoint waypoint = DecodeWaypoint(D107Vector, D107);
  EXPECT_EQ(waypoint.type, D107);
  EXPECT_EQ(waypoint.ident, "TAKAO ");
  EXPECT_EQ(waypoint.cmnt, "SUMMIT" + std::string(34, ' '));
  EXPECT_EQ(waypoint.lat_deg, 45.0);
  EXPECT_EQ(waypoint.lon_deg, 135.0);
  EXPECT_EQ(waypoint.smbl, 15);
  EXPECT_EQ(waypoint.dspl, 1);
  EXPECT_EQ(waypoint.dst_m, 12.5F);
  EXPECT_EQ(waypoint.color, 2);
  EXPECT_EQ(Encoded(waypoint, D107), D107Vector);
}

TEST(WaypointTypes, D108) {
  const Waypoint waypoint = DecodeWaypoint(D108Vector, D108);
  EXPECT_EQ(waypoint.type, D108);
  EXPECT_EQ(waypoint.details->wpt_class, 1);
  EXPECT_EQ(waypoint.color, 255);
  EXPECT_EQ(waypoint.dspl, 2);
  EXPECT_EQ(waypoint.details->attr, 96);
  EXPECT_EQ(waypoint.smbl, 8246);
  EXPECT_EQ(waypoint.details->subclass, NoSubclass);
  EXPECT_EQ(waypoint.lat_deg, 45.0);
  EXPECT_EQ(waypoint.lon_deg, 135.0);
  EXPECT_EQ(waypoint.alt_m, 12.5F);
  EXPECT_EQ(waypoint.dpth_m, std::nullopt);
  EXPECT_EQ(waypoint.dist_m, 0.0F);
  EXPECT_EQ(waypoint.dst_m, 0.0F);
  EXPECT_EQ(waypoint.details->state, "TK");
  EXPECT_EQ(waypoint.details->country, "JP");
  EXPECT_EQ(waypoint.ident, "高尾");
  EXPECT_EQ(waypoint.cmnt, "SUMMIT");
  EXPECT_EQ(waypoint.details->facility, "F");
  EXPECT_EQ(waypoint.details->city, "CITY");
  EXPECT_EQ(waypoint.details->addr, "");
  EXPECT_EQ(waypoint.details->cross_road, "X");
  EXPECT_EQ(Encoded(waypoint, D108), D108Vector);
}

TEST(WaypointTypes, EmptyD108IdentLetsTheCommentStartAtOffset49) {
  Bytes vector(48, 0);
  vector.insert(vector.end(), {0x00, 'H', 'I', 0x00, 0x00, 0x00, 0x00, 0x00});
  const Waypoint waypoint = DecodeWaypoint(vector, D108);
  EXPECT_EQ(waypoint.ident, "");
  EXPECT_EQ(waypoint.cmnt, "HI");
}

TEST(WaypointTypes, BlanksForAStateAreNoDetail) {
  Bytes vector = D108Vector;
  for (std::size_t i = 44; i < 48; ++i)
    vector[i] = ' ';
  const Waypoint waypoint = DecodeWaypoint(vector, D108);
  EXPECT_EQ(waypoint.details->state, "");
  EXPECT_EQ(Encoded(waypoint, D108), vector);
}

TEST(WaypointTypes, EveryShorterPrefixDecodesWithZerosBehindIt) {
  for (std::size_t length = 0; length <= D108Vector.size(); ++length)
    EXPECT_EQ(DecodeWaypoint(Part(D108Vector, 0, length), D108).lat_deg, length >= 28 ? 45.0 : 0.0) << length;
  for (std::size_t length = 0; length <= D103Vector.size(); ++length)
    EXPECT_EQ(DecodeWaypoint(Part(D103Vector, 0, length), D103).dspl, length == D103Vector.size() ? 2 : 0) << length;
}

TEST(WaypointTypes, AD108TextWithoutItsZeroByteEndsWithTheData) {
  Bytes vector(48, 0);
  vector.resize(255, 'A');
  const Waypoint waypoint = DecodeWaypoint(vector, D108);
  EXPECT_EQ(waypoint.ident, std::string(207, 'A'));
  EXPECT_EQ(waypoint.cmnt, "");
}

TEST(WaypointTypes, APositionOffTheGlobeDoesNotFit) {
  Waypoint waypoint = Named("A");
  waypoint.lon_deg = 180.0;
  for (const WaypointType type : {D103, D104, D107, D108})
    EXPECT_THROW(static_cast<void>(Encoded(waypoint, type)), std::overflow_error);
}

TEST(WaypointTypes, ALongRecordIsCutFromItsLastTextBackwards) {
  Waypoint waypoint = Named("IDENT", std::string(150, 'C'));
  // 50 bytes.
  waypoint.details.Set(&WaypointDetails::facility, "山山山山山山山山山山山山山山山山山山山山山山山山山");
  waypoint.details.Set(&WaypointDetails::city, "CITY");
  waypoint.details.Set(&WaypointDetails::cross_road, "ROAD");
  // 48 + 6 + 151 + 51 + 5 + 1 + 5 = 267 bytes: 17 too many. The road and the city go, and of the facility 9 bytes,
  // that is five characters: none is cut in two.
  EXPECT_TRUE(NotesOf(waypoint, D108).cut);
  const Bytes bytes = Encoded(waypoint, D108);
  EXPECT_EQ(bytes.size(), 249U);
  const Waypoint back = DecodeWaypoint(bytes, D108);
  EXPECT_EQ(back.cmnt, waypoint.cmnt);
  EXPECT_EQ(back.details->facility, "山山山山山山山山山山山山山山山山山山山山");
  EXPECT_EQ(back.details->city, "");
  EXPECT_EQ(back.details->cross_road, "");
}

TEST(WaypointTypes, WhatTheCodePageLacksIsNoted) {
  const EncodeNotes notes = NotesOf(Named("CAFé"), D108);
  ASSERT_TRUE(notes.lacking);
  EXPECT_EQ(notes.lacking->utf8, "é");
}

// ---- Texts of the types with fields of fixed width

TEST(WaypointTypes, AFixedWidthTextGoesBackWithTheZerosThatItCameWith) {
  Bytes vector = D103Vector;
  const Bytes ident{'a', 'b', 0, 0, ' ', 0};
  std::copy(ident.begin(), ident.end(), vector.begin());
  const Waypoint waypoint = DecodeWaypoint(vector, D103);
  EXPECT_EQ(waypoint.ident, std::string("ab\0\0 \0", 6));
  EXPECT_EQ(Encoded(waypoint, D103), vector);
}

TEST(WaypointTypes, TheOldTypesEndTheTextsOfOthersDifferently) {
  const Waypoint waypoint = Named(" ab ", " note ");
  const Bytes zero_ended = Joined({TextBytes("AB"), {0}, TextBytes("", 3)});
  EXPECT_EQ(IdentOf(waypoint, D103), zero_ended);
  EXPECT_EQ(IdentOf(waypoint, D104), zero_ended);
  EXPECT_EQ(IdentOf(waypoint, D107), TextBytes(" AB ", 6));
  const Bytes note = Joined({TextBytes("NOTE"), {0}, TextBytes("", 35)});
  for (const WaypointType type : {D103, D104, D107})
    EXPECT_EQ(CommentOf(waypoint, type), note);
}

TEST(WaypointTypes, AFullFieldHasNoRoomForTheZero) {
  EXPECT_EQ(IdentOf(Named("ABCDEFGH"), D103), TextBytes("ABCDEF"));
  const Bytes fuji_san{0x95, 0x78, 0x8E, 0x6D, 0x8E, 0x52};
  EXPECT_EQ(IdentOf(Named("富士山頂"), D103), fuji_san);
}

TEST(WaypointTypes, ACutTextNeverEndsInHalfACharacter) {
  EXPECT_EQ(IdentOf(Named("ABCDE山"), D103), TextBytes("ABCDE", 6));
  EXPECT_EQ(IdentOf(Named("A富士山"), D107), (Bytes{'A', 0x95, 0x78, 0x8E, 0x6D, ' '}));
}

TEST(WaypointTypes, HalfWidthKatakanaInAFixedFieldComeThrough) {
  Bytes vector = D103Vector;
  const Bytes katakana{0xC0, 0xB6, 0xB5, 0x20, 0x20, 0x20};
  std::copy(katakana.begin(), katakana.end(), vector.begin());
  const Waypoint waypoint = DecodeWaypoint(vector, D103);
  EXPECT_EQ(waypoint.ident, "ﾀｶｵ   ");
  EXPECT_EQ(Encoded(waypoint, D103), vector);
}

TEST(WaypointTypes, NamesAndCommentsThatAreCutAreCounted) {
  const Waypoint waypoint = Named("ABCDEFG", std::string(41, 'C'));
  for (const WaypointType type : {D103, D104, D107})
    EXPECT_EQ(NotesOf(waypoint, type).cut_texts, 2);
  EXPECT_EQ(NotesOf(waypoint, D108).cut_texts, 0);
  EXPECT_EQ(NotesOf(Named("  ABCDEF  ", std::string(40, 'C')), D107).cut_texts, 0);
}

TEST(WaypointTypes, AD103WaypointReachesTheOthers) {
  Bytes vector = D103Vector;
  const Bytes ident{'a', 'B', 0, 0, 0, 0};
  std::copy(ident.begin(), ident.end(), vector.begin());
  vector[18] = 'l';  // lUMMIT
  const Waypoint waypoint = DecodeWaypoint(vector, D103);

  // The flag is 10 of the 16 and 178 of all.
  const Bytes lummit = Joined({TextBytes("LUMMIT"), {0}, TextBytes("", 33)});
  EXPECT_EQ(
      Encoded(waypoint, D104),
      Joined({{'A', 'B', 0, ' ', ' ', ' '}, Lat45, Lon135, {0, 0, 0, 0}, lummit, {0, 0, 0, 0}, {0xB2, 0x00}, {0x02}}));
  EXPECT_EQ(Encoded(waypoint, D107),
            Joined({TextBytes("AB", 6), Lat45, Lon135, {0, 0, 0, 0}, lummit, {0x0A}, {0x02}, {0, 0, 0, 0}, {0}}));
  EXPECT_EQ(Encoded(waypoint, D108), Joined({{0x00},
                                             {0xFF},
                                             {0x02},
                                             {0x60},
                                             {0xB2, 0x00},
                                             NoSubclassBytes,
                                             Lat45,
                                             Lon135,
                                             SingleUnknown,
                                             SingleUnknown,
                                             {0, 0, 0, 0},
                                             TextBytes("", 4),
                                             TextBytes("aB", 6),
                                             {0x00},
                                             TextBytes("LUMMIT", 40),
                                             {0x00, 0x00, 0x00, 0x00, 0x00}}));
}

TEST(WaypointTypes, ASymbolGoesByTheSetThatItIsOf) {
  Waypoint waypoint = Named("A", "");
  waypoint.smbl = 10;
  const auto sent = [&waypoint](WaypointType type) {
    return int{DecodeWaypoint(Encoded(waypoint, type), type).smbl.value_or(65535)};
  };
  const auto sent_to_all = [&] { return std::vector{sent(D103), sent(D104), sent(D107), sent(D108)}; };
  // A file's number is sent as it stands where the file does not tell which picture it means.
  EXPECT_EQ(sent_to_all(), (std::vector{10, 10, 10, 10}));
  waypoint.symbol_set = SymbolSet::Small;
  EXPECT_EQ(sent_to_all(), (std::vector{10, 178, 10, 178}));
  waypoint.symbol_set = SymbolSet::Large;
  EXPECT_EQ(sent_to_all(), (std::vector{1, 10, 1, 10}));
  waypoint.smbl = 1;
  EXPECT_EQ(sent_to_all(), (std::vector{0, 1, 0, 1}));
}

TEST(WaypointTypes, AD108WaypointReachesTheOldTypes) {
  const Waypoint waypoint = DecodeWaypoint(D108Vector, D108);
  const Bytes ident = Joined({{0x8D, 0x82, 0x94, 0xF6}, {0}, {' '}});
  const Bytes comment = Joined({TextBytes("SUMMIT"), {0}, TextBytes("", 33)});
  EXPECT_EQ(Encoded(waypoint, D103), Joined({ident, Lat45, Lon135, {0, 0, 0, 0}, comment, {10}, {0x02}}));
  EXPECT_EQ(Encoded(waypoint, D104),
            Joined({ident, Lat45, Lon135, {0, 0, 0, 0}, comment, {0, 0, 0, 0}, {0x36, 0x20}, {0x02}}));
}

// ---- Symbols and colours

struct Picture {
  int number;
  int sent;
  bool replaced;
};

// Flag and boat ramp are among the 16; a summit's nearest is the flag, a large city has none.
TEST(WaypointTypes, ASymbolThatAReceiverOf16LacksBecomesTheNearest) {
  for (const auto& [smbl, sent, replaced] :
       {Picture{178, 10, false}, Picture{150, 5, false}, Picture{8246, 10, true}, Picture{8200, 0, true},
        Picture{255, 0, true}, Picture{16, 0, true}, Picture{18, 0, false}, Picture{15, 15, false},
        Picture{0, 0, false}, Picture{65535, 0, true}}) {
    Waypoint waypoint = Named("A");
    waypoint.smbl = static_cast<std::uint16_t>(smbl);
    for (const WaypointType type : {D103, D107}) {
      EXPECT_EQ(Encoded(waypoint, type)[58], sent) << smbl;
      EXPECT_EQ(NotesOf(waypoint, type).replaced, replaced) << smbl;
    }
    const Bytes word{static_cast<std::uint8_t>(smbl & 0xFF), static_cast<std::uint8_t>(smbl >> 8)};
    EXPECT_EQ(Part(Encoded(waypoint, D108), 4, 2), word);
    EXPECT_EQ(Part(Encoded(waypoint, D104), 62, 2), word);
    EXPECT_FALSE(NotesOf(waypoint, D108).replaced);
    EXPECT_FALSE(NotesOf(waypoint, D104).replaced);
  }
}

TEST(WaypointTypes, ASymbolThatNoTextGaveIsTheDot) {
  Waypoint waypoint = Named("A");
  waypoint.smbl.reset();
  EXPECT_EQ(Encoded(waypoint, D103)[58], 0);
  EXPECT_EQ(Encoded(waypoint, D107)[58], 0);
  EXPECT_EQ(Part(Encoded(waypoint, D104), 62, 2), (Bytes{18, 0}));
  EXPECT_EQ(Part(Encoded(waypoint, D108), 4, 2), (Bytes{0, 0}));
}

TEST(WaypointTypes, ASymbolThatCameFromAReceiverOf16DoesNotGoBackBeyondThem) {
  Bytes vector = D103Vector;
  vector[58] = 54;
  EXPECT_EQ(Encoded(DecodeWaypoint(vector, D103), D103)[58], 0);
}

TEST(WaypointTypes, AColourThatD107LacksBecomesTheDefault) {
  for (const auto& [color, sent, replaced] : {Picture{3, 3, false}, Picture{4, 0, true}, Picture{255, 0, false}}) {
    Waypoint waypoint = Named("A");
    waypoint.smbl = 0;
    waypoint.color = static_cast<std::uint8_t>(color);
    EXPECT_EQ(Encoded(waypoint, D107)[64], sent) << color;
    EXPECT_EQ(NotesOf(waypoint, D107).replaced, replaced) << color;
    EXPECT_EQ(Encoded(waypoint, D108)[1], color);
  }
}

TEST(WaypointTypes, TheProximityDistanceOfD108IsThatOfTheOthersWhereTheyHaveNone) {
  const auto dst_of = [](float dist_m, std::optional<float> dst_m) {
    Waypoint waypoint = Named("A");
    waypoint.dist_m = dist_m;
    waypoint.dst_m = dst_m;
    EXPECT_EQ(Part(Encoded(waypoint, D107), 60, 4), Part(Encoded(waypoint, D104), 58, 4));
    return Part(Encoded(waypoint, D104), 58, 4);
  };
  const Bytes of_12_5{0, 0, 0x48, 0x41};
  EXPECT_EQ(dst_of(12.5F, 0.0F), of_12_5);
  EXPECT_EQ(dst_of(12.5F, std::nullopt), of_12_5);
  EXPECT_EQ(dst_of(7, 12.5F), of_12_5);
  EXPECT_EQ(dst_of(0, 0.0F), Bytes(4, 0));
  EXPECT_EQ(dst_of(-1, 0.0F), Bytes(4, 0));
  EXPECT_EQ(dst_of(1.0e25F, 0.0F), Bytes(4, 0)) << "not known";
}

// ---- Announced and never come

TEST(WaypointTypes, AMissingWaypointIsItsTypesDefault) {
  const auto blank = [](WaypointType type) { return Encoded(MissingWaypoint(type), type); };
  const Bytes texts = Joined({TextBytes("", 6), Bytes(12, 0), TextBytes("", 40)});
  EXPECT_EQ(blank(D103), Joined({texts, {0, 0}}));
  EXPECT_EQ(blank(D104), Joined({texts, {0, 0, 0, 0}, {18, 0}, {0}}));
  EXPECT_EQ(blank(D107), Joined({texts, Bytes(7, 0)}));
  EXPECT_EQ(Part(blank(D108), 0, 6), (Bytes{0, 255, 0, 96, 18, 0}));
  for (const WaypointType type : {D103, D104, D107, D108}) {
    EXPECT_TRUE(MissingWaypoint(type).missing);
    EXPECT_EQ(MissingWaypoint(type).type, type);
  }
  EXPECT_EQ(MissingWaypoint(D103).dst_m, std::nullopt);
  EXPECT_EQ(MissingWaypoint(D104).dst_m, 0.0F);
  EXPECT_EQ(MissingWaypoint(D107).color, 0);
}

}  // namespace
}  // namespace walrim
