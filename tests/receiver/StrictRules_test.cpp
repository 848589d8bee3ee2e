#include "receiver/StrictRules.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "receiver/ReceiverHost.h"

namespace walrim {
namespace {

using std::chrono::milliseconds;

const ReceiverModel& Model(std::string_view name) {
  return *FindReceiverModel(name);
}

Bytes Padded(std::string_view text, std::size_t size) {
  Bytes bytes = BytesOf(text);
  bytes.resize(size, ' ');
  return bytes;
}

// ident, then the rest of a D103.
LinePacket Waypoint103(std::string_view ident, std::uint8_t mark = 0) {
  return {35, Padded(ident, 6) + Bytes(52, mark) + Bytes{0, 0}};
}
LinePacket Waypoint108(std::string_view ident, std::uint8_t mark = 0) {
  return {35, Bytes(48, mark) + BytesOf(ident) + Bytes(6, 0)};
}
LinePacket Point103(std::string_view ident) {
  return {30, Waypoint103(ident).data};
}
LinePacket Point108(std::string_view ident) {
  return {30, Waypoint108(ident).data};
}
LinePacket Link(std::string_view text) {
  return {98, Bytes(20, 0) + BytesOf(text) + Bytes{0}};
}
LinePacket Header201(std::uint8_t number, std::string_view cmnt) {
  return {29, Bytes{number} + Padded(cmnt, 20)};
}
LinePacket Header202(std::string_view text) {
  return {29, BytesOf(text) + Bytes{0}};
}
LinePacket Header310(std::string_view text) {
  return {99, Bytes{255, 255} + BytesOf(text) + Bytes{0}};
}
LinePacket Point301(std::uint8_t mark, std::uint8_t new_trk = 0) {
  return {34, Bytes(20, mark) + Bytes{new_trk}};
}

using Packets = std::vector<LinePacket>;

TEST(StrictRules, EveryPacketHasItsSize) {
  for (const std::uint8_t id : Bytes{10, 12, 27}) {
    EXPECT_TRUE(WellFormed({id, {7, 0}}, Model("eTrex")));
    EXPECT_FALSE(WellFormed({id, {7}}, Model("eTrex")));
    EXPECT_FALSE(WellFormed({id, {7, 0, 0}}, Model("eTrex")));
  }
  const auto exact = [](std::uint8_t id, std::string_view model, std::size_t size) {
    for (std::size_t other = 0; other < 256; ++other)
      EXPECT_EQ(WellFormed({id, Bytes(other, 'A')}, Model(model)), other == size) << model << " " << int{id};
  };
  for (const std::uint8_t id : Bytes{35, 30}) {
    exact(id, "GPS 12", 60);
    exact(id, "GPS 12CX", 65);
    exact(id, "GPS III", 65);
  }
  exact(29, "GPS 12", 21);
  exact(34, "GPS 12", 13);
  exact(34, "eMap", 21);
  EXPECT_TRUE(WellFormed({254, {}}, Model("eTrex")));
  EXPECT_TRUE(WellFormed({254, {0, 0}}, Model("eTrex")));
  EXPECT_TRUE(WellFormed({200, {1}}, Model("eTrex")));
}

TEST(StrictRules, AD108HasSixTextsNoLongerThanTheirs) {
  const std::array<std::size_t, 6> most{50, 50, 30, 24, 50, 50};
  const auto with = [](const std::array<std::size_t, 6>& lengths) {
    Bytes data(48, 1);
    for (const std::size_t length : lengths)
      data = data + Bytes(length, 'X') + Bytes{0};
    return LinePacket{35, data};
  };
  EXPECT_TRUE(WellFormed(with({0, 0, 0, 0, 0, 0}), Model("eTrex")));
  for (std::size_t i = 0; i < most.size(); ++i) {
    std::array<std::size_t, 6> lengths{};
    lengths[i] = most[i];
    EXPECT_TRUE(WellFormed(with(lengths), Model("eTrex"))) << i;
    ++lengths[i];
    EXPECT_FALSE(WellFormed(with(lengths), Model("eTrex"))) << i;
  }
  LinePacket packet = with({1, 2, 3, 4, 5, 6});
  for (Bytes data = packet.data; !data.empty(); data.pop_back())
    EXPECT_EQ(WellFormed({35, data}, Model("eTrex")), data.size() == packet.data.size()) << data.size();
  packet.data.push_back(0);
  EXPECT_FALSE(WellFormed(packet, Model("eTrex")));
}

TEST(StrictRules, TextsBehindFixedFieldsAreEnded) {
  const auto check = [](std::uint8_t id, std::size_t offset) {
    EXPECT_TRUE(WellFormed({id, Bytes(offset, 1) + Bytes{0}}, Model("eTrex")));
    EXPECT_TRUE(WellFormed({id, Bytes(offset, 1) + Bytes(50, 'X') + Bytes{0}}, Model("eTrex")));
    EXPECT_FALSE(WellFormed({id, Bytes(offset, 1) + Bytes(51, 'X') + Bytes{0}}, Model("eTrex")));
    EXPECT_FALSE(WellFormed({id, Bytes(offset, 1)}, Model("eTrex")));
    EXPECT_FALSE(WellFormed({id, Bytes(offset, 1) + Bytes{'X'}}, Model("eTrex")));
    EXPECT_FALSE(WellFormed({id, Bytes(offset, 1) + Bytes{'X', 0, 'Y'}}, Model("eTrex")));
  };
  check(29, 0);
  check(98, 20);
  check(99, 2);
  EXPECT_FALSE(WellFormed(Link("X"), Model("GPS 12"))) << "a model without links";
  EXPECT_FALSE(WellFormed(Header310("X"), Model("GPS 12"))) << "a model without track headers";
}

TEST(StrictRules, AWaypointOfTheSameNameIsOverwritten) {
  ReceiverMemory memory;
  memory.waypoints = {Waypoint103("A"), Waypoint103("B"), Waypoint103("C")};
  StoreUpload(memory, {Waypoint103("B", 9), Waypoint103("D", 9)}, Model("GPS 12"));
  EXPECT_EQ(memory.waypoints, (Packets{Waypoint103("A"), Waypoint103("B", 9), Waypoint103("C"), Waypoint103("D", 9)}));
  memory.waypoints = {Waypoint108("AB"), Waypoint108("A")};
  StoreUpload(memory, {Waypoint108("A", 9), Waypoint108("ABC", 9)}, Model("eMap"));
  EXPECT_EQ(memory.waypoints, (Packets{Waypoint108("AB"), Waypoint108("A", 9), Waypoint108("ABC", 9)}));
}

TEST(StrictRules, NamesKeepTheLettersAndTheLengthOfTheModel) {
  const auto kept108 = [](std::string_view name, std::string_view model) {
    ReceiverMemory memory;
    StoreUpload(memory, {Waypoint108(name, 7)}, Model(model));
    return memory.waypoints;
  };
  EXPECT_EQ(kept108("takao-san 1", "eMap"), Packets{Waypoint108("TAKAO-SAN", 7)}) << "the blank at the end is none";
  EXPECT_EQ(kept108("takao-san 1", "eTrex"), Packets{Waypoint108("TAKAO-", 7)});
  EXPECT_EQ(kept108("A.B_C/", "eMap"), Packets{Waypoint108("ABC", 7)});
  EXPECT_EQ(kept108("\x8D\x82\x83\x41Z", "eMap"), Packets{Waypoint108("Z", 7)}) << "a second byte is no letter";
  EXPECT_TRUE(kept108("\x8D\x82", "eMap").empty());
  EXPECT_TRUE(kept108("", "eMap").empty());
  ReceiverMemory memory;
  StoreUpload(memory, {Waypoint103("a-b c", 7)}, Model("GPS 12"));
  EXPECT_EQ(memory.waypoints, Packets{Waypoint103("ABC", 7)});
}

TEST(StrictRules, WaypointsThatHaveNoRoomAreDropped) {
  const auto full = [](std::size_t count) {
    ReceiverMemory memory;
    for (std::size_t i = 0; i < count; ++i)
      memory.waypoints.push_back(Waypoint103(std::to_string(i)));
    return memory;
  };
  ReceiverMemory memory = full(499);
  StoreUpload(memory, {Waypoint103("X", 9), Waypoint103("Y", 9), Waypoint103("7", 9)}, Model("GPS 12"));
  ASSERT_EQ(memory.waypoints.size(), 500U);
  EXPECT_EQ(memory.waypoints.back(), Waypoint103("X", 9));
  EXPECT_EQ(memory.waypoints[7], Waypoint103("7", 9)) << "what is overwritten needs no room";
  memory = full(999);
  StoreUpload(memory, {Waypoint103("X", 9), Waypoint103("Y", 9)}, Model("GPS 12CX"));
  EXPECT_EQ(memory.waypoints.size(), 1000U);
}

TEST(StrictRules, ARouteOfTheSameNumberIsOverwritten) {
  ReceiverMemory memory;
  memory.routes = {Header201(1, "ONE"), Point103("A"),         Header201(2, "TWO"),
                   Point103("B"),       Header201(3, "THREE"), Point103("C")};
  StoreUpload(memory, {Header201(2, "NEW"), Point103("D"), Point103("E"), Header201(4, "FOUR"), Point103("F")},
              Model("GPS 12"));
  EXPECT_EQ(memory.routes,
            (Packets{Header201(1, "ONE"), Point103("A"), Header201(2, "NEW"), Point103("D"), Point103("E"),
                     Header201(3, "THREE"), Point103("C"), Header201(4, "FOUR"), Point103("F")}));
}

TEST(StrictRules, ARouteOfTheSameNameIsOverwrittenWhereItHasNoNumber) {
  ReceiverMemory memory;
  memory.routes = {Header202("ONE"), Point108("A"), Link("X")};
  StoreUpload(memory, {Header202("ONE"), Point108("B"), Link("Y"), Point108("C"), Header202("ONE MORE"), Point108("D")},
              Model("eTrex"));
  EXPECT_EQ(memory.routes,
            (Packets{Header202("ONE"), Point108("B"), Link("Y"), Point108("C"), Header202("ONE MORE"), Point108("D")}));
}

TEST(StrictRules, RoutesAndTheirPointsThatHaveNoRoomAreDropped) {
  ReceiverMemory memory;
  for (std::uint8_t i = 1; i < 20; ++i)
    memory.routes.push_back(Header201(i, "HELD"));
  Packets upload{Header201(20, "LONG")};
  for (int i = 0; i < 31; ++i)
    upload.push_back(Point103(std::to_string(i)));
  upload.push_back(Header201(21, "TOO MANY"));
  upload.push_back(Point103("A"));
  upload.push_back(Header201(3, "AGAIN"));
  upload.push_back(Point103("Z"));
  StoreUpload(memory, upload, Model("GPS 12"));
  ASSERT_EQ(memory.routes.size(), 20U + 30U + 1U);
  EXPECT_EQ(memory.routes[2], Header201(3, "AGAIN"));
  EXPECT_EQ(memory.routes[3], Point103("Z")) << "each route has room of its own";
  EXPECT_EQ(memory.routes[20], Header201(20, "LONG"));
  EXPECT_EQ(memory.routes.back(), Point103("29"));
}

TEST(StrictRules, ARoutePointThatIsDroppedTakesItsLinkAlong) {
  ReceiverMemory memory;
  StoreUpload(memory,
              {Point108("EARLY"), Link("E"), Header202("R"), Link("H"), Point108("a"), Link("1"), Point108("\x8D\x82"),
               Link("2"), Point108("B"), Link("3"), Header202("S"), Link("4")},
              Model("eTrex"));
  EXPECT_EQ(memory.routes,
            (Packets{Header202("R"), Point108("A"), Link("1"), Point108("B"), Link("3"), Header202("S")}));
}

TEST(StrictRules, TracksGoToTheEndOfTheActiveLog) {
  ReceiverMemory memory;
  memory.tracks = {Header310("MINE"), Point301(1, 255), Header310("SAVED"), Point301(2, 255)};
  StoreUpload(memory, {Header310("X"), Point301(3, 0), Point301(4, 0), Header310("Y"), Point301(5, 0)}, Model("eTrex"));
  EXPECT_EQ(memory.tracks, (Packets{Header310("MINE"), Point301(1, 255), Point301(3, 255), Point301(4, 0),
                                    Point301(5, 255), Header310("SAVED"), Point301(2, 255)}));
}

TEST(StrictRules, AnActiveLogThatWasNotThereHasItsName) {
  ReceiverMemory memory;
  StoreUpload(memory, {Header310("X"), Point301(3, 255)}, Model("eTrex"));
  EXPECT_EQ(memory.tracks, (Packets{Header310("ACTIVE LOG"), Point301(3, 255)}));
  ReceiverMemory plain;
  StoreUpload(plain, {{34, Bytes(13, 3)}}, Model("GPS 12"));
  EXPECT_EQ(plain.tracks, (Packets{{34, Bytes(13, 3)}}));
  ReceiverMemory untouched;
  StoreUpload(untouched, {Header310("X")}, Model("eTrex"));
  EXPECT_TRUE(untouched.tracks.empty());
}

TEST(StrictRules, ALogThatHasNoRoomIsCut) {
  ReceiverMemory memory;
  memory.tracks = Packets(1000, {34, Bytes(13, 1)});
  StoreUpload(memory, Packets(100, {34, Bytes(13, 2)}), Model("GPS 12"));
  ASSERT_EQ(memory.tracks.size(), 1024U);
  EXPECT_EQ(memory.tracks[999].data[0], 1);
  EXPECT_EQ(memory.tracks[1000].data[0], 2);
  StoreUpload(memory, Packets(1, {34, Bytes(13, 3)}), Model("GPS 12"));
  EXPECT_EQ(memory.tracks.size(), 1024U);
  memory.tracks = Packets(2000, {34, Bytes(13, 1)});
  StoreUpload(memory, Packets(1, {34, Bytes(13, 3)}), Model("GPS 12"));
  EXPECT_EQ(memory.tracks.size(), 2000U) << "what a file filled in stays";
  ReceiverMemory etrex;
  StoreUpload(etrex, Packets(2000, Point301(1)), Model("eTrex"));
  EXPECT_EQ(etrex.tracks.size(), 1U + 1535U);
}

class StrictReceiverTest : public testing::Test {
 protected:
  static ReceiverMemory Held() {
    ReceiverMemory memory;
    memory.waypoints = {Waypoint103("A"), Waypoint103("B")};
    memory.routes = {Header201(1, "ONE"), Point103("A")};
    return memory;
  }

  std::vector<SeenFrame> Tell(const LinePacket& packet) { return host.Tell(packet.id, packet.data, milliseconds(500)); }

  SoftReceiver receiver{Model("GPS 12"), Held(), 9600, {}, ReceiverTemper::Strict};
  ReceiverHost host{receiver};
};

TEST_F(StrictReceiverTest, RefusesIllFormedPacketsAndGoesOn) {
  EXPECT_EQ(Tell({10, {7}}), std::vector{Sound(21, {10, 0})});
  EXPECT_EQ(Tell({27, {1, 0}}), std::vector{Sound(6, {27, 0})});
  EXPECT_EQ(Tell({35, Bytes(59, 0)}), std::vector{Sound(21, {35, 0})});
  EXPECT_EQ(Tell(Waypoint103("C")), std::vector{Sound(6, {35, 0})});
  EXPECT_EQ(Tell({12, {}}), std::vector{Sound(21, {12, 0})});
  EXPECT_EQ(Tell({12, {7, 0}}), std::vector{Sound(6, {12, 0})});
  EXPECT_EQ(receiver.Memory().waypoints, (Packets{Waypoint103("A"), Waypoint103("B"), Waypoint103("C")}));
}

TEST_F(StrictReceiverTest, RefusesRecordsThatWereNotAnnounced) {
  EXPECT_EQ(Tell(Waypoint103("C")), std::vector{Sound(21, {35, 0})});
  EXPECT_EQ(Tell({27, {1, 0}}), std::vector{Sound(6, {27, 0})});
  EXPECT_EQ(Tell(Waypoint103("C")), std::vector{Sound(6, {35, 0})});
  EXPECT_EQ(Tell(Waypoint103("D")), std::vector{Sound(21, {35, 0})});
  EXPECT_EQ(Tell(Waypoint103("C")), std::vector{Sound(6, {35, 0})}) << "its ACK may have been lost";
  EXPECT_EQ(Tell({12, {7, 0}}), std::vector{Sound(6, {12, 0})});
  EXPECT_EQ(receiver.Memory().waypoints.size(), 3U);
}

TEST_F(StrictReceiverTest, AnUploadOfNothingLeavesItsMemoryAlone) {
  static_cast<void>(Tell({27, {0, 0}}));
  static_cast<void>(Tell({12, {7, 0}}));
  EXPECT_EQ(receiver.Memory().waypoints, Held().waypoints);
  EXPECT_EQ(receiver.Memory().routes, Held().routes);
}

TEST_F(StrictReceiverTest, SendsAgainEverySecondWhatWasNotAcknowledged) {
  EXPECT_EQ(host.Tell(10, {7, 0}, milliseconds(2500)),
            (std::vector{Sound(6, {10, 0}), Sound(27, {2, 0}), Sound(27, {2, 0}), Sound(27, {2, 0})}));
  EXPECT_EQ(Tell({6, {27, 0}}), (std::vector{Sound(35, Waypoint103("A").data)}));
  EXPECT_EQ(Tell({10, {0, 0}}), std::vector{Sound(6, {10, 0})});
  EXPECT_TRUE(host.Listen(milliseconds(5000)).empty());
}

TEST(StrictReceiver, AnOrdinaryOneTakesAllOfThis) {
  SoftReceiver receiver(Model("GPS 12"), {}, 9600, {});
  ReceiverHost host(receiver);
  EXPECT_EQ(host.Exchange(35, {1}), std::vector{Sound(6, {35, 0})});
  EXPECT_EQ(host.Exchange(10, {7}).size(), 2U);
  EXPECT_FALSE(receiver.NextDue());
}

}  // namespace
}  // namespace walrim
