#include <algorithm>
#include <gtest/gtest.h>
#include <map>

#include "receiver/ReceiverHost.h"
#include "receiver/ReceiverMemory.h"
#include "receiver/WireBytes.h"

namespace walrim {
namespace {

// 35 and 135 degrees in semicircles: 417566265 and 1610612736.
const Bytes PositionBytes{0x39, 0x8E, 0xE3, 0x18, 0x00, 0x00, 0x00, 0x60};
const Bytes Blanks18 = BytesOf("                  ");
const Bytes NoSubclassBytes{0, 0, 0, 0, 0, 0, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255};
// "高尾山 600m" in code page 932.
const Bytes TakaoBytes{0x8D, 0x82, 0x94, 0xF6, 0x8E, 0x52, 0x20, 0x36, 0x30, 0x30, 0x6D};

HeldWaypoint Takao() {
  HeldWaypoint waypoint;
  waypoint.ident = "tk1";
  waypoint.lat_deg = 35;
  waypoint.lon_deg = 135;
  waypoint.cmnt = "高尾山 600m";
  waypoint.smbl = 10;
  waypoint.dspl = 1;
  waypoint.dst_m = 1.5F;
  waypoint.color = 2;
  return waypoint;
}

LinePacket OnlyWaypoint(const HeldWaypoint& waypoint, std::string_view model) {
  HeldContents contents;
  contents.waypoints.push_back(waypoint);
  const ReceiverMemory memory = EncodeMemory(contents, *FindReceiverModel(model));
  EXPECT_EQ(memory.waypoints.size(), 1U);
  EXPECT_TRUE(memory.routes.empty());
  EXPECT_TRUE(memory.tracks.empty());
  return memory.waypoints.at(0);
}

// ident, position, unused word and cmnt[40] of Takao().
Bytes CommonBytes() {
  return BytesOf("TK1   ") + PositionBytes + Bytes{0, 0, 0, 0} + TakaoBytes + BytesOf("           ") + Blanks18;
}

TEST(ReceiverRecords, D103) {
  const LinePacket expected{35, CommonBytes() + Bytes{10, 1}};
  ASSERT_EQ(expected.data.size(), 60U);
  for (const auto* model : {"GPS 12", "GPS 12XL", "GPS 48", "GPS II+"}) {
    EXPECT_EQ(OnlyWaypoint(Takao(), model), expected) << model;
  }
}

TEST(ReceiverRecords, D104) {
  HeldWaypoint waypoint = Takao();
  waypoint.smbl = 8246;
  const LinePacket expected{35, CommonBytes() + Bytes{0x00, 0x00, 0xC0, 0x3F, 0x36, 0x20, 0x01}};
  ASSERT_EQ(expected.data.size(), 65U);
  for (const auto* model : {"GPS III", "GPS III+"})
    EXPECT_EQ(OnlyWaypoint(waypoint, model), expected) << model;
}

TEST(ReceiverRecords, D107) {
  const LinePacket expected{35, CommonBytes() + Bytes{10, 1, 0x00, 0x00, 0xC0, 0x3F, 2}};
  ASSERT_EQ(expected.data.size(), 65U);
  EXPECT_EQ(OnlyWaypoint(Takao(), "GPS 12CX"), expected);
}

TEST(ReceiverRecords, D108) {
  HeldWaypoint waypoint = Takao();
  waypoint.ident = "takao";
  waypoint.smbl = 8246;
  waypoint.alt_m = 599.5F;
  waypoint.dist_m = 2;
  waypoint.state = "13";
  waypoint.country = "J";
  waypoint.facility = "F";
  waypoint.city = "八王子";
  waypoint.cross_road = "X";
  const LinePacket expected{35, Bytes{0, 2, 1, 96, 0x36, 0x20} + NoSubclassBytes + PositionBytes +
                                    Bytes{0x00, 0xE0, 0x15, 0x44} + Bytes{0x51, 0x59, 0x04, 0x69} +
                                    Bytes{0, 0, 0, 0x40} + BytesOf("13J ") + BytesOf("TAKAO") + Bytes{0} + TakaoBytes +
                                    Bytes{0, 'F', 0} + Bytes{0x94, 0xAA, 0x89, 0xA4, 0x8E, 0x71, 0} + Bytes{0, 'X', 0}};
  for (const auto* model : {"eMap", "eTrex"})
    EXPECT_EQ(OnlyWaypoint(waypoint, model), expected) << model;
}

TEST(ReceiverRecords, DefaultsOfAPlainWaypoint) {
  const HeldWaypoint plain;
  const LinePacket d108 = OnlyWaypoint(plain, "eTrex");
  const Bytes unknown{0x51, 0x59, 0x04, 0x69};
  EXPECT_EQ(d108.data, (Bytes{0, 255, 0, 96, 18, 0} + NoSubclassBytes + Bytes(8, 0) + unknown + unknown + Bytes(4, 0) +
                        BytesOf("    ") + Bytes(6, 0)));
  EXPECT_EQ(OnlyWaypoint(plain, "GPS III").data.at(62), 18);
  EXPECT_EQ(OnlyWaypoint(plain, "GPS 12").data.at(58), 0);
  EXPECT_EQ(OnlyWaypoint(plain, "GPS 12CX").data.at(64), 0);
}

TEST(ReceiverRecords, ASymbolThatOneByteCannotHoldIsADot) {
  HeldWaypoint waypoint = Takao();
  waypoint.smbl = 8246;
  EXPECT_EQ(OnlyWaypoint(waypoint, "GPS 12").data.at(58), 0);
  EXPECT_EQ(OnlyWaypoint(waypoint, "GPS 12CX").data.at(58), 0);
  waypoint.smbl = 255;
  EXPECT_EQ(OnlyWaypoint(waypoint, "GPS 12").data.at(58), 255);
}

TEST(ReceiverRecords, FixedTextsAreNeverCutInsideACharacter) {
  HeldWaypoint waypoint = Takao();
  waypoint.ident = "a高尾山";  // seven bytes
  const LinePacket packet = OnlyWaypoint(waypoint, "GPS 12");
  EXPECT_EQ(Bytes(packet.data.begin(), packet.data.begin() + 6), (Bytes{'A', 0x8D, 0x82, 0x94, 0xF6, ' '}));
  EXPECT_EQ(packet.data.size(), 60U);
}

TEST(ReceiverRecords, D108TextsAreCutFromTheLastBackwards) {
  HeldWaypoint waypoint = Takao();
  waypoint.ident = "TAKAO";
  waypoint.cmnt = std::string(100, 'C');
  waypoint.facility = std::string(60, 'F');
  waypoint.city = std::string(40, 'T');
  waypoint.addr = "ADDR";
  waypoint.cross_road = "ROAD";
  const LinePacket packet = OnlyWaypoint(waypoint, "eTrex");
  ASSERT_EQ(packet.data.size(), 255U);
  // 201 bytes of text: 5 + 100 + 60 leave 36 for the city and nothing for what follows.
  EXPECT_EQ(
      Bytes(packet.data.begin() + 48, packet.data.end()),
      BytesOf("TAKAO") + Bytes(1) + Bytes(100, 'C') + Bytes(1) + Bytes(60, 'F') + Bytes(1) + Bytes(36, 'T') + Bytes(3));
}

TEST(ReceiverRecords, ADoubleByteCharacterAtTheEndOfAPacketIsNotCut) {
  HeldWaypoint waypoint = Takao();
  waypoint.ident.clear();
  waypoint.cmnt = std::string(200, 'C') + "高";
  const LinePacket packet = OnlyWaypoint(waypoint, "eTrex");
  ASSERT_EQ(packet.data.size(), 254U);
  EXPECT_EQ(packet.data[248], 'C');
  EXPECT_EQ(packet.data[249], 0);
}

TEST(ReceiverRecords, ACharacterThatTheCodePageLacksIsAQuestionMark) {
  EXPECT_EQ(ReceiverText("A\xF0\x9F\x98\x80"
                         "B",
                         10),
            "A?B");
  EXPECT_EQ(ReceiverText(std::string("A\0B", 3), 10), "A?B");
}

HeldContents OneRoute() {
  HeldContents contents;
  HeldRoute& route = contents.routes.emplace_back();
  route.nmbr = 7;
  route.cmnt = "高尾";
  for (int i = 0; i < 2; ++i)
    route.points.emplace_back().waypoint = Takao();
  route.points[1].link_class = 0x0103;
  route.points[1].link_subclass[0] = 9;
  route.points[1].link_ident = "尾根";
  return contents;
}

TEST(ReceiverRecords, A200RouteIsD201AndItsPoints) {
  const ReceiverMemory memory = EncodeMemory(OneRoute(), *FindReceiverModel("GPS 12"));
  ASSERT_EQ(memory.routes.size(), 3U);
  EXPECT_EQ(memory.routes[0], (LinePacket{29, Bytes{7, 0x8D, 0x82, 0x94, 0xF6} + BytesOf("                ")}));
  EXPECT_EQ(memory.routes[0].data.size(), 21U);
  EXPECT_EQ(memory.routes[1], (LinePacket{30, CommonBytes() + Bytes{10, 1}}));
  EXPECT_EQ(memory.routes[2], memory.routes[1]);
}

TEST(ReceiverRecords, A201RouteIsD202AndALinkAfterEachPoint) {
  const ReceiverMemory memory = EncodeMemory(OneRoute(), *FindReceiverModel("eTrex"));
  ASSERT_EQ(memory.routes.size(), 5U);
  EXPECT_EQ(memory.routes[0], (LinePacket{29, {0x8D, 0x82, 0x94, 0xF6, 0}}));
  EXPECT_EQ(memory.routes[1].id, 30);
  EXPECT_EQ(memory.routes[1].data, OnlyWaypoint(Takao(), "eTrex").data);
  EXPECT_EQ(memory.routes[2], (LinePacket{98, Bytes{0, 0} + NoSubclassBytes + Bytes{0}}));
  EXPECT_EQ(memory.routes[3].id, 30);
  Bytes subclass = NoSubclassBytes;
  subclass[0] = 9;
  EXPECT_EQ(memory.routes[4], (LinePacket{98, Bytes{0x03, 0x01} + subclass + Bytes{0x94, 0xF6, 0x8D, 0xAA, 0}}));
}

HeldContents OneTrackLog() {
  HeldContents contents;
  HeldTrackLog& log = contents.track_logs.emplace_back();
  log.dspl = true;
  log.color = 4;
  log.trk_ident = "山";
  log.points.push_back({35, 135, 0x12345678, true, 599.5F, UnknownHeight});
  log.points.push_back({35, 135, 0x12345679, false, 0, 1.5F});
  return contents;
}

TEST(ReceiverRecords, A300TrackIsD300PointsAlone) {
  const ReceiverMemory memory = EncodeMemory(OneTrackLog(), *FindReceiverModel("GPS III+"));
  ASSERT_EQ(memory.tracks.size(), 2U);
  EXPECT_EQ(memory.tracks[0], (LinePacket{34, PositionBytes + Bytes{0x78, 0x56, 0x34, 0x12, 255}}));
  EXPECT_EQ(memory.tracks[1], (LinePacket{34, PositionBytes + Bytes{0x79, 0x56, 0x34, 0x12, 0}}));
  EXPECT_EQ(memory.tracks[0].data.size(), 13U);
}

TEST(ReceiverRecords, A301TrackIsD310AndD301Points) {
  const ReceiverMemory memory = EncodeMemory(OneTrackLog(), *FindReceiverModel("eMap"));
  ASSERT_EQ(memory.tracks.size(), 3U);
  EXPECT_EQ(memory.tracks[0], (LinePacket{99, {255, 4, 0x8E, 0x52, 0}}));
  EXPECT_EQ(memory.tracks[1], (LinePacket{34, PositionBytes + Bytes{0x78, 0x56, 0x34, 0x12, 0x00, 0xE0, 0x15, 0x44,
                                                                    0x51, 0x59, 0x04, 0x69, 255}}));
  EXPECT_EQ(memory.tracks[2],
            (LinePacket{34, PositionBytes + Bytes{0x79, 0x56, 0x34, 0x12, 0, 0, 0, 0, 0, 0, 0xC0, 0x3F, 0}}));
  EXPECT_EQ(memory.tracks[1].data.size(), 21U);
}

TEST(ReceiverRecords, EmptyTrackIdentIsThreeBytes) {
  HeldContents contents = OneTrackLog();
  contents.track_logs[0].trk_ident.clear();
  contents.track_logs[0].dspl = false;
  EXPECT_EQ(EncodeMemory(contents, *FindReceiverModel("eTrex")).tracks.at(0), (LinePacket{99, {0, 4, 0}}));
}

TEST(ReceiverRecords, PositionsAtTheEdges) {
  WireBytes bytes;
  bytes.Position(90, 180);
  bytes.Position(-90, -180);
  EXPECT_EQ(bytes.Take(), (Bytes{0, 0, 0, 0x40, 0, 0, 0, 0x80, 0, 0, 0, 0xC0, 0, 0, 0, 0x80}));
}

TEST(ReceiverRecords, EveryModelIdentifiesItself) {
  ASSERT_EQ(ReceiverModels().size(), 9U);
  for (const auto* name :
       {"GPS 12", "GPS 12XL", "GPS 12CX", "GPS 48", "GPS II+", "GPS III", "GPS III+", "eMap", "eTrex"}) {
    const ReceiverModel* model = FindReceiverModel(name);
    ASSERT_NE(model, nullptr) << name;
    const LinePacket packet = ProductDataPacket(*model);
    EXPECT_EQ(packet.id, 255);
    ASSERT_GT(packet.data.size(), 6U);
    EXPECT_GT(packet.data[0] + 256 * packet.data[1], 0);
    EXPECT_LT(packet.data[1], 128) << "positive as a signed number";
    const std::string texts(packet.data.begin() + 4, packet.data.end());
    EXPECT_TRUE(texts.starts_with(std::string(name) + " ")) << texts;
    EXPECT_EQ(std::count(texts.begin(), texts.end(), '\0'), 2);
    EXPECT_EQ(texts.back(), '\0');
    // Nothing else that a host looks for may be in it.
    for (const ReceiverModel& other : ReceiverModels()) {
      const bool found = texts.find(std::string(other.name) + " ") != std::string::npos;
      EXPECT_EQ(found, other.name == name) << texts;
    }
  }
  EXPECT_EQ(FindReceiverModel("etrex"), nullptr);
}

TEST(ReceiverRecords, ProductIdsFollowThePublishedList) {
  const std::map<std::string, std::pair<int, int>> least_and_version{
      {"GPS 12", {77, 301}}, {"GPS 12XL", {96, 0}},  {"GPS 48", {96, 0}}, {"GPS II+", {73, 0}},
      {"GPS III", {72, 0}},  {"GPS III+", {119, 0}}, {"eMap", {111, 0}},  {"eTrex", {130, 0}}};
  for (const auto& [name, id] : least_and_version) {
    const Bytes data = ProductDataPacket(*FindReceiverModel(name)).data;
    EXPECT_EQ(data.at(0) + 256 * data.at(1), id.first) << name;
    EXPECT_GE(data.at(2) + 256 * data.at(3), id.second) << name;
  }
}

TEST(ReceiverRecords, AProtocolListLeavesOutWhatIsNone) {
  EXPECT_EQ(ProtocolListPacket("A100  x1 D A1x 100 A70000 D65535"),
            (LinePacket{253, Bytes{'A', 100, 0, 'D', 255, 255}}));
  std::string many;
  for (int i = 0; i < 100; ++i)
    many += "A1 ";
  EXPECT_EQ(ProtocolListPacket(many).data.size(), 255U);
  EXPECT_TRUE(ProtocolListPacket("").data.empty());
}

TEST(ReceiverRecords, ProductDataByHand) {
  EXPECT_EQ(ProductDataPacket(*FindReceiverModel("eTrex")),
            (LinePacket{255, Bytes{130, 0, 214, 0} + BytesOf("eTrex Software Version 2.14") + Bytes{0} +
                                 BytesOf("Personal Navigator") + Bytes{0}}));
}

}  // namespace
}  // namespace walrim
