// Records that come twice, over a scripted line: those whose ACK was lost are stored once, those that are there twice
// twice.
#include <chrono>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/DeviceWorld.h"
#include "text/Scan.h"

namespace walrim {
namespace {

using std::chrono::milliseconds;

class RepeatedRecords : public ::testing::Test, protected DeviceWorld {
 protected:
  RepeatedRecords() { Meet("GPS 12 Software", LinkChoice::Checked); }
  void Hold(std::initializer_list<std::string_view> idents) {
    for (const std::string_view ident : idents)
      receiver.packets.push_back(WaypointPacket(ident));
  }
  /// The ACK of the record with this number, from 1, gets lost: the record comes again this much later.
  void LoseAckOf(std::size_t number, milliseconds later) {
    const auto answer = port.script;
    const Bytes record = WireFrame(35, receiver.packets.at(number - 1).data);
    port.script = [=, acks = std::size_t{0}](const Bytes& wire) mutable -> std::vector<ScriptedPort::Answer> {
      const bool of_record = wire.at(1) == 6 && wire.at(3) == 35;
      if (of_record && ++acks == number) return {{later, record}};
      return answer(wire);
    };
  }
  std::vector<std::string> Downloaded() {
    EXPECT_EQ(Download(),
              static_cast<std::int32_t>(receiver.announced.value_or(static_cast<int>(receiver.packets.size()))));
    std::vector<std::string> idents;
    for (const Waypoint& waypoint : data.Waypoints())
      idents.emplace_back(TrimBlanks(waypoint.ident));
    return idents;
  }
  using Idents = std::vector<std::string>;
};

TEST_F(RepeatedRecords, ARecordWhoseAckWasLostIsAcknowledgedAndStoredOnce) {
  Hold({"A", "B", "C", "D"});
  const auto answer = port.script;
  for (std::size_t number = 1; number <= 4; ++number) {
    for (const int later_ms : {5, 1000}) {
      SCOPED_TRACE(std::to_string(number) + " " + std::to_string(later_ms));
      port.script = answer;
      LoseAckOf(number, milliseconds{later_ms});
      port.sent.clear();
      EXPECT_EQ(Downloaded(), (Idents{"A", "B", "C", "D"}));
      EXPECT_EQ(desktop.messages, Idents{});
      // The command, the ACK of the number, five of records, the abort.
      EXPECT_EQ(port.sent.size(), 8U);
    }
  }
}

TEST_F(RepeatedRecords, RecordsOfTheSameBytesAreStoredAsOftenAsTheyAreThere) {
  Hold({"A", "A", "A", "B", "C", "C"});
  EXPECT_EQ(Downloaded(), (Idents{"A", "A", "A", "B", "C", "C"}));
  EXPECT_EQ(desktop.messages, Idents{});
}

TEST_F(RepeatedRecords, AmongRecordsOfTheSameBytesTheOneThatTookLongestWasRepeated) {
  Hold({"A", "A", "B", "C", "D"});
  LoseAckOf(4, milliseconds{900});
  EXPECT_EQ(Downloaded(), (Idents{"A", "A", "B", "C", "D"}));
  EXPECT_EQ(desktop.messages, Idents{});
}

TEST_F(RepeatedRecords, AReceiverWithMoreThanItAnnouncedIsToldAsEver) {
  Hold({"A", "B", "C"});
  receiver.announced = 2;
  EXPECT_EQ(Downloaded(), (Idents{"A", "B"}));
  EXPECT_EQ(desktop.messages.size(), 1U);
}

TEST_F(RepeatedRecords, ARecordThatComesForEverEndsTheTransfer) {
  Hold({"A", "B", "C"});
  port.script = [answer = port.script](const Bytes& wire) {
    const bool of_record = wire.at(1) == 6 && wire.at(3) == 35;
    return of_record ? std::vector<ScriptedPort::Answer>{{milliseconds{2}, WireFrame(35, WaypointPacket("B").data)}}
                     : answer(wire);
  };
  EXPECT_EQ(Downloaded().size(), 3U);
  EXPECT_EQ(desktop.messages.size(), 1U);
}

}  // namespace
}  // namespace walrim
