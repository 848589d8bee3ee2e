#include <gtest/gtest.h>

#include "data/InternalData.h"
#include "support.h"

namespace walrim {
namespace {

using enum WaypointField;

class WaypointConversion : public ::testing::Test {
 protected:
  WaypointRecord TextOf(WaypointType type, int slot = 1) {
    WaypointRecord record;
    WaypointToRecord(data_, type, slot, record);
    return record;
  }

  const std::unique_ptr<InternalData> owner_ = std::make_unique<InternalData>();
  InternalData& data_ = *owner_;
};

/// A D108 waypoint with a value of its own in every field.
WaypointRecord FullRecord() {
  WaypointRecord record = Waypoint("Abc", "35.25", "-135.5");
  record[cmnt] = "comment";
  record[smbl] = "8196";
  record[dspl] = "1";
  record[dst] = "12.5";
  record[color] = "3";
  record[wpt_class] = "64";
  record[attr] = "97";
  for (std::size_t i = 0; i < SubclassBytes; ++i)
    record[SubclassField(i)] = std::to_string(i + 1);
  record[alt] = "100.5";
  record[dpth] = "2.5";
  record[dist] = "0.5";
  record[state] = "ca";
  record[cc] = "jp";
  record[facility] = "hut";
  record[city] = "fuji";
  record[addr] = "1-2-3";
  record[cross_road] = "r138";
  return record;
}

TEST_F(WaypointConversion, D103ShowsTheTextsOfTheFieldsThatItLacks) {
  data_.d103[1].ident.Set("AB");
  const WaypointRecord record = TextOf(WaypointType::D103);
  EXPECT_EQ(record[ident], "AB    ");
  EXPECT_EQ(record[cmnt], std::string(40, ' '));
  EXPECT_EQ(record[color], "255");
  EXPECT_EQ(record[wpt_class], "0");
  EXPECT_EQ(record[attr], "96");
  EXPECT_EQ(record[alt], "1E+25");
  EXPECT_EQ(record[dpth], "1E+25");
  EXPECT_EQ(record[dist], "0");
  EXPECT_EQ(record[dst], "");
  for (std::size_t i = 0; i < SubclassBytes; ++i)
    EXPECT_EQ(record[SubclassField(i)], i < 6 ? "0" : "255");
  for (const WaypointField field : {state, cc, idents, comment, facility, city, addr, cross_road}) {
    EXPECT_EQ(record[field], "");
  }
}

TEST_F(WaypointConversion, D104AndD107ShowTheirOwnFields) {
  data_.d104[1].dst_m = 12.5F;
  data_.d104[1].smbl = 8196;
  EXPECT_EQ(TextOf(WaypointType::D104)[dst], "12.5");
  EXPECT_EQ(TextOf(WaypointType::D104)[smbl], "8196");
  EXPECT_EQ(TextOf(WaypointType::D104)[color], "255");
  data_.d107[1].dst_m = 0.1F;
  data_.d107[1].color = 2;
  EXPECT_EQ(TextOf(WaypointType::D107)[dst], "0.1");
  EXPECT_EQ(TextOf(WaypointType::D107)[color], "2");
}

TEST_F(WaypointConversion, ZeroCharactersBecomeBlanksInTheEntryToo) {
  data_.d103[1].ident.Set(std::string("AB\0\0\0\0", 6));
  EXPECT_EQ(TextOf(WaypointType::D103)[ident], "AB    ");
  EXPECT_EQ(data_.d103[1].ident.Padded(), "AB    ");
  data_.d108[1].state.Set(std::string("\0\0", 2));
  EXPECT_EQ(TextOf(WaypointType::D108)[state], "  ");
  EXPECT_EQ(data_.d108[1].state.Bare(), "");
}

TEST_F(WaypointConversion, PositionsAreWrittenWithAllTheirDigits) {
  data_.d108[1].lat_deg = 34.691736111111113;
  EXPECT_EQ(TextOf(WaypointType::D108)[lat], "34.69173611111111");
  EXPECT_EQ(std::stod(TextOf(WaypointType::D108)[lat]), 34.691736111111113);
}

TEST_F(WaypointConversion, D108KeepsEveryField) {
  RecordToWaypoint(data_, WaypointType::D108, 1, FullRecord());
  const D108Entry& entry = data_.d108[1];
  EXPECT_EQ(entry.ident, "Abc") << "the conversion alone keeps the case";
  EXPECT_EQ(entry.cmnt, "COMMENT");
  EXPECT_EQ(entry.wpt_class, 64);
  EXPECT_EQ(entry.color, 3);
  EXPECT_EQ(entry.dspl, 1);
  EXPECT_EQ(entry.attr, 97);
  EXPECT_EQ(entry.smbl, 8196);
  EXPECT_EQ(entry.subclass, (Subclass{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18}));
  EXPECT_EQ(entry.lat_deg, 35.25);
  EXPECT_EQ(entry.lon_deg, -135.5);
  EXPECT_EQ(entry.alt_m, 100.5F);
  EXPECT_EQ(entry.dpth_m, 2.5F);
  EXPECT_EQ(entry.dist_m, 0.5F);
  EXPECT_EQ(entry.state.Padded(), "CA");
  EXPECT_EQ(entry.cc.Padded(), "JP");
  EXPECT_EQ(entry.facility, "HUT");
  EXPECT_EQ(entry.city, "FUJI");
  EXPECT_EQ(entry.addr, "1-2-3");
  EXPECT_EQ(entry.cross_road, "R138");
}

TEST_F(WaypointConversion, EmptyTextsOfARecordAreZero) {
  RecordToWaypoint(data_, WaypointType::D108, 1, Waypoint("A"));
  const D108Entry& entry = data_.d108[1];
  EXPECT_EQ(entry.color, 0);
  EXPECT_EQ(entry.attr, 0);
  EXPECT_EQ(entry.smbl, 0);
  EXPECT_EQ(entry.subclass, Subclass{});
  EXPECT_EQ(entry.alt_m, 0);
  RecordToWaypoint(data_, WaypointType::D104, 1, Waypoint("A"));
  EXPECT_EQ(data_.d104[1].smbl, 18);
}

TEST_F(WaypointConversion, IdentsAndCommentServeWhereIdentAndCmntAreEmpty) {
  WaypointRecord record = Waypoint("");
  record[idents] = "second";
  record[comment] = "also";
  RecordToWaypoint(data_, WaypointType::D108, 1, record);
  EXPECT_EQ(data_.d108[1].ident, "second");
  EXPECT_EQ(data_.d108[1].cmnt, "ALSO");
  record[ident] = "first";
  record[cmnt] = "mine";
  RecordToWaypoint(data_, WaypointType::D108, 1, record);
  EXPECT_EQ(data_.d108[1].ident, "first");
  EXPECT_EQ(data_.d108[1].cmnt, "MINE");
  EXPECT_EQ(TextOf(WaypointType::D108)[idents], "first");
  EXPECT_EQ(TextOf(WaypointType::D108)[comment], "MINE");
}

TEST_F(WaypointConversion, TheOldTypesEndTheirTextsDifferently) {
  WaypointRecord record = Waypoint(" ab ");
  record[cmnt] = " note ";
  for (const auto type : {WaypointType::D103, WaypointType::D104, WaypointType::D107}) {
    RecordToWaypoint(data_, type, 1, record);
  }
  EXPECT_EQ(data_.d103[1].ident.Padded(), std::string("AB\0   ", 6));
  EXPECT_EQ(data_.d104[1].ident.Padded(), std::string("AB\0   ", 6));
  EXPECT_EQ(data_.d107[1].ident.Padded(), " AB   ");
  const std::string ended = std::string("NOTE\0", 5) + std::string(35, ' ');
  EXPECT_EQ(data_.d103[1].cmnt.Padded(), ended);
  EXPECT_EQ(data_.d104[1].cmnt.Padded(), ended);
  EXPECT_EQ(data_.d107[1].cmnt.Padded(), ended);
}

TEST_F(WaypointConversion, AFullFieldHasNoRoomForTheZero) {
  RecordToWaypoint(data_, WaypointType::D103, 1, Waypoint("abcdefgh"));
  EXPECT_EQ(data_.d103[1].ident.Padded(), "ABCDEF");
  RecordToWaypoint(data_, WaypointType::D103, 1, Waypoint("富士山頂"));
  EXPECT_EQ(data_.d103[1].ident.Padded(), "富士山");
  RecordToWaypoint(data_, WaypointType::D107, 1, Waypoint("A富士山"));
  EXPECT_EQ(data_.d107[1].ident.Padded(), "A富士 ");
}

TEST_F(WaypointConversion, NumbersOutsideTheirFieldsAreKeptInRange) {
  WaypointRecord record = Waypoint("A");
  record[smbl] = "70000";
  record[dspl] = "256";
  record[color] = "-1";
  record[attr] = "1E+300";
  record[alt] = "1E+39";
  record[dpth] = "-1E+300";
  record[dist] = "1E+400";
  for (std::size_t i = 0; i < WaypointTypeCount; ++i)
    RecordToWaypoint(data_, static_cast<WaypointType>(i), 1, record);
  EXPECT_EQ(data_.d103[1].smbl, 0);
  EXPECT_EQ(data_.d104[1].smbl, 65535);
  EXPECT_EQ(data_.d107[1].smbl, 70000 & 0xFF);
  EXPECT_EQ(data_.d108[1].smbl, 65535);
  EXPECT_EQ(data_.d108[1].dspl, 255);
  EXPECT_EQ(data_.d108[1].color, 0);
  EXPECT_EQ(data_.d108[1].attr, 255);
  EXPECT_EQ(data_.d108[1].alt_m, UnknownMetres);
  EXPECT_EQ(data_.d108[1].dpth_m, UnknownMetres);
  EXPECT_EQ(data_.d108[1].dist_m, 0);
}

TEST_F(WaypointConversion, ASymbolOfD107IsItsLowByte) {
  for (const auto& [text, low] : {std::pair{"8196", 4}, {"18.9", 18}, {"256", 0}, {"-1", 255}, {"abc", 0}}) {
    WaypointRecord record = Waypoint("A");
    record[smbl] = text;
    RecordToWaypoint(data_, WaypointType::D107, 1, record);
    EXPECT_EQ(data_.d107[1].smbl, low) << text;
  }
}

TEST_F(WaypointConversion, ZerosInTextsThatEndAtAZeroBecomeBlanks) {
  WaypointRecord record = Waypoint(std::string_view("A\0B", 3));
  record[city] = std::string("X\0Y", 3);
  RecordToWaypoint(data_, WaypointType::D108, 1, record);
  EXPECT_EQ(data_.d108[1].ident, "A B");
  EXPECT_EQ(data_.d108[1].city, "X Y");
}

TEST_F(WaypointConversion, DstOfAnAddedWaypointIsKeptBesideD108) {
  WaypointRecord record = FullRecord();
  ASSERT_EQ(data_.AddWaypoint(record), 1);
  EXPECT_EQ(data_.GetWaypoint(1)[dst], "12.5");
  EXPECT_EQ(data_.GetWaypoint(1)[ident], "ABC");
}

TEST_F(WaypointConversion, ADecodedWaypointIsSpreadThroughItsText) {
  D103Entry& decoded = data_.d103[5];
  decoded.ident.Set(std::string("AB\0\0\0\0", 6));
  decoded.cmnt.Set("Lake");
  decoded.lat_deg = 35.123456789;
  decoded.smbl = 10;
  decoded.dspl = 1;
  data_.SpreadWaypoint(5, WaypointType::D103);
  EXPECT_EQ(decoded.ident.Padded(), std::string("AB\0\0\0\0", 6)) << "the decoded entry stays";
  EXPECT_EQ(data_.waypoint_origin[5], WaypointType::D103);
  EXPECT_EQ(data_.d104[5].ident.Padded(), std::string("AB\0   ", 6));
  EXPECT_EQ(data_.d104[5].smbl, 10);
  EXPECT_EQ(data_.d104[5].dst_m, 0);
  EXPECT_EQ(data_.d107[5].ident.Padded(), "AB    ");
  EXPECT_EQ(data_.d107[5].color, 255);
  EXPECT_EQ(data_.d108[5].ident, "AB    ");
  EXPECT_EQ(data_.d108[5].cmnt, "LAKE" + std::string(36, ' '));
  EXPECT_EQ(data_.d108[5].lat_deg, 35.123456789);
  EXPECT_EQ(data_.d108[5].subclass, NoSubclass);
  EXPECT_EQ(data_.d108[5].alt_m, UnknownMetres);
  EXPECT_EQ(data_.d108[5].attr, 96);
  EXPECT_EQ(data_.GetWaypoint(5)[cmnt], "Lake" + std::string(36, ' ')) << "shown as the receiver sent it";
}

TEST_F(WaypointConversion, ADecodedD108WaypointReachesTheOldTypes) {
  D108Entry& decoded = data_.d108[7];
  decoded.ident = "summit";
  decoded.smbl = 8246;
  decoded.lon_deg = 138.5;
  data_.SpreadWaypoint(7, WaypointType::D108);
  EXPECT_EQ(decoded.ident, "summit");
  EXPECT_EQ(data_.d103[7].ident.Padded(), "SUMMIT");
  EXPECT_EQ(data_.d103[7].smbl, 0);
  EXPECT_EQ(data_.d104[7].smbl, 8246);
  EXPECT_EQ(data_.d107[7].smbl, 8246 & 0xFF);
  EXPECT_EQ(data_.d107[7].lon_deg, 138.5);
}

}  // namespace
}  // namespace walrim
