#include <gtest/gtest.h>
#include <memory>

#include "receiver/ReceiverFaults.h"
#include "receiver/ReceiverHost.h"

namespace walrim {
namespace {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;

constexpr nanoseconds ByteTime{1041666};

ReceiverMemory FiveWaypoints() {
  ReceiverMemory memory;
  for (std::uint8_t i = 1; i <= 5; ++i)
    memory.waypoints.push_back({35, {i}});
  memory.tracks = {{99, {1, 2, 0}}, {34, {5}}};
  return memory;
}

/// A receiver with faults, and its host.
struct FaultyReceiver {
  explicit FaultyReceiver(std::initializer_list<std::string_view> texts) {
    ReceiverFaults faults;
    for (const std::string_view text : texts)
      EXPECT_EQ(AddFault(faults, text), "");
    receiver = std::make_unique<SoftReceiver>(*FindReceiverModel("eTrex"), FiveWaypoints(), 9600, faults);
    host = std::make_unique<ReceiverHost>(*receiver);
  }

  std::unique_ptr<SoftReceiver> receiver;
  std::unique_ptr<ReceiverHost> host;
};

TEST(ReceiverFaults, SilentNeverAnswers) {
  FaultyReceiver faulty({"silent"});
  EXPECT_TRUE(faulty.host->ExchangeBytes(ProductRequestFrame).empty());
  EXPECT_TRUE(faulty.host->Command(7).empty());
}

TEST(ReceiverFaults, SilentAfterSendsSoManyFramesAndNoMore) {
  FaultyReceiver faulty({"silent-after=3"});
  EXPECT_EQ(faulty.host->Command(7).size(), 2U);
  EXPECT_EQ(faulty.host->Ack(27).size(), 1U);
  EXPECT_TRUE(faulty.host->Ack(35).empty());
  EXPECT_TRUE(faulty.host->Command(0).empty());
  EXPECT_FALSE(faulty.receiver->LineClosed());
}

TEST(ReceiverFaults, EarlyCompleteEndsATransferAfterSoManyRecords) {
  FaultyReceiver faulty({"early-complete=2"});
  EXPECT_EQ(faulty.host->Download(7),
            (std::vector{Sound(27, {5, 0}), Sound(35, {1}), Sound(35, {2}), Sound(12, {7, 0})}));
  EXPECT_EQ(faulty.host->Download(6).size(), 4U) << "a transfer without more records ends as ever";
}

TEST(ReceiverFaults, EarlyCompleteZeroSendsNoRecord) {
  FaultyReceiver faulty({"early-complete=0"});
  EXPECT_EQ(faulty.host->Download(7), (std::vector{Sound(27, {5, 0}), Sound(12, {7, 0})}));
}

TEST(ReceiverFaults, UnknownFirstGivesTheFirstRecordOfEachTransferAnIdThatMeansNothing) {
  FaultyReceiver faulty({"unknown-first"});
  EXPECT_EQ(faulty.host->Command(7).size(), 2U);
  EXPECT_EQ(faulty.host->Ack(27), std::vector{Sound(200, {1})});
  EXPECT_TRUE(faulty.host->Ack(35).empty());
  EXPECT_EQ(faulty.host->Command(0).size(), 1U);
  EXPECT_EQ(faulty.host->Download(6),
            (std::vector{Sound(27, {2, 0}), Sound(200, {1, 2, 0}), Sound(34, {5}), Sound(12, {6, 0})}));
}

TEST(ReceiverFaults, ShortCountAnnouncesFewerThanItSends) {
  FaultyReceiver faulty({"short-count=3"});
  const auto frames = faulty.host->Download(7);
  ASSERT_EQ(frames.size(), 7U);
  EXPECT_EQ(frames[0], Sound(27, {2, 0}));
  EXPECT_EQ(faulty.host->Command(6).at(1), Sound(27, {0, 0})) << "never fewer than none";
}

TEST(ReceiverFaults, GapStandsBetweenAnAckAndThePacketThatFollowsIt) {
  FaultyReceiver faulty({"gap=300"});
  const nanoseconds start = faulty.host->now;
  faulty.receiver->Receive(HostFrame(10, {7, 0}), start);
  const nanoseconds ack_end = start + 16 * ByteTime;
  EXPECT_EQ(FramesIn(faulty.receiver->Send(ack_end)), std::vector{Sound(6, {10, 0})});
  EXPECT_EQ(faulty.receiver->NextDue(), ack_end + milliseconds(300) + ByteTime);
  EXPECT_EQ(FramesIn(faulty.host->ExchangeBytes({})), std::vector{Sound(27, {5, 0})});
  const nanoseconds before_ack = faulty.host->now;
  EXPECT_EQ(faulty.host->Ack(27).size(), 1U);
  EXPECT_LT(faulty.host->now - before_ack, milliseconds(100)) << "a record follows no ACK of the receiver";
}

TEST(ReceiverFaults, DribbleSendsAByteAtATime) {
  FaultyReceiver faulty({"dribble=40"});
  const nanoseconds start = faulty.host->now;
  faulty.receiver->Receive(HostFrame(10, {0, 0}), start);
  const nanoseconds heard = start + 8 * ByteTime;
  for (int i = 1; i <= 8; ++i) {
    EXPECT_EQ(faulty.receiver->NextDue(), heard + i * milliseconds(40));
    EXPECT_EQ(faulty.receiver->Send(heard + i * milliseconds(40)).size(), 1U);
  }
  EXPECT_FALSE(faulty.receiver->NextDue());
}

TEST(ReceiverFaults, GarbageStandsBeforeEveryFrame) {
  FaultyReceiver faulty({"garbage"});
  const auto frames = faulty.host->Command(7);
  ASSERT_EQ(frames.size(), 2U);
  for (const SeenFrame& frame : frames) {
    EXPECT_TRUE(frame.sound);
    EXPECT_FALSE(frame.noise.empty());
    for (const std::uint8_t byte : frame.noise)
      EXPECT_TRUE(byte != 16 && byte != 3);
  }
}

TEST(ReceiverFaults, GarbageBeforeOneFrame) {
  FaultyReceiver faulty({"garbage=2"});
  const auto frames = faulty.host->Command(7);
  ASSERT_EQ(frames.size(), 2U);
  EXPECT_TRUE(frames[0].noise.empty());
  EXPECT_FALSE(frames[1].noise.empty());
  EXPECT_TRUE(faulty.host->Ack(27).at(0).noise.empty());
}

void ExpectOverlong(const Bytes& bytes) {
  ASSERT_GT(bytes.size(), 264U);
  EXPECT_EQ(Bytes(bytes.begin(), bytes.begin() + 3), (Bytes{0x10, 35, 200}));
  EXPECT_EQ(Bytes(bytes.end() - 2, bytes.end()), (Bytes{0x10, 0x03}));
  for (std::size_t i = 3; i + 2 < bytes.size(); ++i)
    EXPECT_TRUE(bytes[i] != 16 && bytes[i] != 3) << i;
}

TEST(ReceiverFaults, OverlongStandsInPlaceOfTheFirstRecord) {
  FaultyReceiver faulty({"overlong"});
  static_cast<void>(faulty.host->Command(7));
  ExpectOverlong(faulty.host->ExchangeBytes(HostFrame(6, {27, 0})));
  EXPECT_EQ(faulty.host->Ack(35), std::vector{Sound(35, {2})});
}

TEST(ReceiverFaults, OverlongStandsInPlaceOfAnotherRecord) {
  FaultyReceiver faulty({"overlong=2"});
  static_cast<void>(faulty.host->Command(7));
  EXPECT_EQ(faulty.host->Ack(27), std::vector{Sound(35, {1})});
  ExpectOverlong(faulty.host->ExchangeBytes(HostFrame(6, {35, 0})));
  EXPECT_EQ(faulty.host->Ack(35), std::vector{Sound(35, {3})});
}

TEST(ReceiverFaults, BurstSendsSoManyFramesAtOnce) {
  FaultyReceiver faulty({"burst=6"});
  static_cast<void>(faulty.host->Command(7));
  EXPECT_EQ(faulty.host->Ack(27), (std::vector{Sound(35, {1}), Sound(35, {2}), Sound(35, {3}), Sound(35, {4}),
                                               Sound(35, {5}), Sound(35, {5})}));
  EXPECT_EQ(faulty.host->Ack(35), std::vector{Sound(35, {2})}) << "the first frame alone waits for an ACK";
}

TEST(ReceiverFaults, BadChecksumSpoilsOneRecordOfEachTransferOnce) {
  FaultyReceiver faulty({"bad-checksum=2"});
  for (int transfer = 0; transfer < 2; ++transfer) {
    static_cast<void>(faulty.host->Command(7));
    EXPECT_TRUE(faulty.host->Ack(27).at(0).sound);
    const auto spoiled = faulty.host->Ack(35);
    ASSERT_EQ(spoiled.size(), 1U);
    EXPECT_FALSE(spoiled[0].sound);
    EXPECT_EQ(spoiled[0].data, Bytes{2});
    EXPECT_EQ(faulty.host->Nak(35), std::vector{Sound(35, {2})});
    EXPECT_EQ(faulty.host->Ack(35), std::vector{Sound(35, {3})});
  }
}

TEST(ReceiverFaults, BadAckSpoilsOneAckOfTheRunOnce) {
  FaultyReceiver faulty({"bad-ack=2"});
  EXPECT_EQ(faulty.host->Exchange(27, {1, 0}), (std::vector{Sound(6, {27, 0})}));
  const auto spoiled = faulty.host->Exchange(35, {9});
  ASSERT_EQ(spoiled.size(), 1U);
  EXPECT_EQ(spoiled[0].id, 6);
  EXPECT_FALSE(spoiled[0].sound);
  EXPECT_EQ(spoiled[0].data, (Bytes{35, 0}));
  EXPECT_EQ(faulty.host->Nak(6), (std::vector{Sound(6, {35, 0})})) << "the same ACK again, as it ought to be";
  EXPECT_EQ(faulty.host->Exchange(12, {7, 0}), (std::vector{Sound(6, {12, 0})}));
  EXPECT_EQ(faulty.receiver->Memory().waypoints, (std::vector<LinePacket>{{35, {9}}}));
  for (const SeenFrame& frame : faulty.host->Command(7))
    EXPECT_TRUE(frame.sound);
}

TEST(ReceiverFaults, BadAckCountsNeitherNaksNorRepeatedAcks) {
  FaultyReceiver faulty({"bad-ack=2", "nak=2"});
  EXPECT_EQ(faulty.host->Exchange(27, {1, 0}), (std::vector{Sound(6, {27, 0})}));
  EXPECT_EQ(faulty.host->Nak(6), (std::vector{Sound(6, {27, 0})}));
  EXPECT_EQ(faulty.host->Exchange(35, {9}), (std::vector{Sound(21, {35, 0})}));
  EXPECT_FALSE(faulty.host->Exchange(35, {9}).at(0).sound);
}

TEST(ReceiverFaults, BadAckLeavesTheAnswerBehindItSound) {
  FaultyReceiver faulty({"bad-ack=1"});
  const auto frames = faulty.host->Command(7);
  ASSERT_EQ(frames.size(), 2U);
  EXPECT_FALSE(frames[0].sound);
  EXPECT_EQ(frames[1], Sound(27, {5, 0}));
  EXPECT_EQ(faulty.host->Nak(27), std::vector{Sound(27, {5, 0})}) << "what awaits its ACK comes again, not the ACK";
}

TEST(ReceiverFaults, UnplugAfterClosesTheLineWhenTheLastFrameHasPassed) {
  FaultyReceiver faulty({"unplug-after=3"});
  static_cast<void>(faulty.host->Command(7));
  faulty.receiver->Receive(HostFrame(6, {27, 0}), faulty.host->now);
  EXPECT_FALSE(faulty.receiver->LineClosed());
  EXPECT_EQ(FramesIn(faulty.host->ExchangeBytes({})), std::vector{Sound(35, {1})});
  EXPECT_TRUE(faulty.receiver->LineClosed());
  EXPECT_TRUE(faulty.host->Ack(35).empty());
}

TEST(ReceiverFaults, NakRefusesEveryPacket) {
  FaultyReceiver faulty({"nak"});
  EXPECT_EQ(FramesIn(faulty.host->ExchangeBytes(ProductRequestFrame)), (std::vector{Sound(21, {254, 0})}));
  EXPECT_EQ(faulty.host->Command(7), (std::vector{Sound(21, {10, 0})}));
}

TEST(ReceiverFaults, NakRefusesOnePacket) {
  FaultyReceiver faulty({"nak=2"});
  EXPECT_EQ(faulty.host->Exchange(27, {1, 0}), (std::vector{Sound(6, {27, 0})}));
  EXPECT_EQ(faulty.host->Exchange(35, {9}), (std::vector{Sound(21, {35, 0})}));
  EXPECT_EQ(faulty.host->Exchange(35, {9}), (std::vector{Sound(6, {35, 0})}));
  EXPECT_EQ(faulty.host->Exchange(12, {7, 0}), (std::vector{Sound(6, {12, 0})}));
  EXPECT_EQ(faulty.receiver->Memory().waypoints, (std::vector<LinePacket>{{35, {9}}}));
}

TEST(ReceiverFaults, FaultsAddUp) {
  FaultyReceiver faulty({"early-complete=1", "garbage=1"});
  const auto frames = faulty.host->Command(7);
  ASSERT_EQ(frames.size(), 2U);
  EXPECT_FALSE(frames[0].noise.empty());
  EXPECT_EQ(faulty.host->Ack(27), std::vector{Sound(35, {1})});
  EXPECT_EQ(faulty.host->Ack(35), (std::vector{Sound(12, {7, 0})}));
}

TEST(ReceiverFaults, EveryKindIsReadWithItsNumber) {
  const std::vector<std::string> forms = FaultForms();
  EXPECT_EQ(forms, (std::vector<std::string>{"silent", "silent-after=N", "early-complete=N", "unknown-first",
                                             "short-count=N", "gap=N", "dribble=N", "garbage[=N]", "overlong[=N]",
                                             "burst=N", "bad-checksum=N", "bad-ack=N", "unplug-after=N", "nak[=N]"}));
  for (const std::string& form : forms) {
    ReceiverFaults faults;
    const std::string kind = form.substr(0, form.find_first_of("[="));
    const bool takes_number = form.find("=N") != std::string::npos;
    const bool needs_number = takes_number && form.find('[') == std::string::npos;
    EXPECT_EQ(AddFault(faults, kind).empty(), !needs_number) << form;
    EXPECT_EQ(AddFault(faults, kind + "=3").empty(), takes_number) << form;
  }
}

TEST(ReceiverFaults, WrongTextsAreToldAndChangeNothing) {
  ReceiverFaults faults;
  ASSERT_EQ(AddFault(faults, "gap=7"), "");
  for (const auto* text : {"gap=", "gap=x", "gap=1x", "gap=-1", "gap=99999999999", "gap", "gap=600001"}) {
    EXPECT_NE(AddFault(faults, text).find("gap"), std::string::npos) << text;
    EXPECT_EQ(faults.gap, 7) << text;
  }
  EXPECT_NE(AddFault(faults, "nonsense=1").find("nonsense"), std::string::npos);
  EXPECT_NE(AddFault(faults, ""), "");
  EXPECT_NE(AddFault(faults, "silent=1"), "");
  EXPECT_FALSE(faults.silent);
  EXPECT_NE(AddFault(faults, "burst=1"), "");
  EXPECT_NE(AddFault(faults, "unplug-after=0"), "");
  EXPECT_NE(AddFault(faults, "bad-ack=0"), "");
}

}  // namespace
}  // namespace walrim
