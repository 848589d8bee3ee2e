// Records that come twice, over a scripted line: those whose ACK was lost are stored once, those that are there twice
// twice.
#include <chrono>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "device/Garmin.h"
#include "support/Fakes.h"
#include "support/ScriptedReceiver.h"

namespace walrim {
namespace {

using std::chrono::milliseconds;

class RepeatedRecords : public ::testing::Test {
 protected:
  RepeatedRecords() {
    garmin.SetDefaultProtocols();
    ChooseProtocols("GPS 12 Software", garmin.session.protocols);
    garmin.session.checked_link = true;
  }
  static PlainPacket Waypoint(std::string_view ident) {
    Bytes data(ident.begin(), ident.end());
    data.resize(6, ' ');
    data.resize(18, 0);
    data.resize(58, ' ');
    data.resize(60, 0);
    return {35, data};
  }
  void Hold(std::initializer_list<std::string_view> idents) {
    for (const std::string_view ident : idents)
      receiver.packets.push_back(Waypoint(ident));
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
    const std::int32_t count = garmin.Download(DataKind::Waypoint, "1", TransferMode::Transfer);
    std::vector<std::string> idents;
    for (int slot = 1; slot <= count; ++slot) {
      const std::string ident = data.d103[static_cast<std::size_t>(slot)].ident.Bare();
      idents.push_back(ident.substr(0, ident.find(' ')));
    }
    return idents;
  }
  using Idents = std::vector<std::string>;

  FakeClock clock;
  ScriptedPort port{clock};
  ScriptedReceiver receiver{port};
  FakeEventLoop loop;
  RecordingDesktop desktop;
  InternalData data;
  Garmin garmin{data, port, clock, loop, desktop};
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
    return of_record ? std::vector<ScriptedPort::Answer>{{milliseconds{2}, WireFrame(35, Waypoint("B").data)}}
                     : answer(wire);
  };
  EXPECT_EQ(Downloaded().size(), 3U);
  EXPECT_EQ(desktop.messages.size(), 1U);
}

}  // namespace
}  // namespace walrim
