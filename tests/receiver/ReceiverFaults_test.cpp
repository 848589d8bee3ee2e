#include "receiver/ReceiverFaults.h"

#include <gtest/gtest.h>
#include <memory>

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

TEST(ReceiverFaults, RefuseRefusesOnePacketForEver) {
  FaultyReceiver faulty({"refuse=2"});
  EXPECT_EQ(faulty.host->Exchange(27, {2, 0}), (std::vector{Sound(6, {27, 0})}));
  for (int i = 0; i < 5; ++i)
    EXPECT_EQ(faulty.host->Exchange(35, {9}), (std::vector{Sound(21, {35, 0})}));
  EXPECT_EQ(faulty.host->Exchange(35, {8}), (std::vector{Sound(6, {35, 0})}));
  EXPECT_EQ(faulty.host->Exchange(35, {9}), (std::vector{Sound(21, {35, 0})}));
  EXPECT_EQ(faulty.host->Command(0), (std::vector{Sound(6, {10, 0})}));
}

TEST(ReceiverFaults, ShortAndEmptyAcks) {
  FaultyReceiver one({"short-ack"});
  EXPECT_EQ(one.host->Command(7), (std::vector{Sound(6, {10}), Sound(27, {5, 0})}));
  FaultyReceiver none({"empty-ack"});
  EXPECT_EQ(none.host->Command(7), (std::vector{Sound(6, {}), Sound(27, {5, 0})}));
  EXPECT_EQ(none.host->ExchangeBytes(HostFrame(10, {0, 0})), (Bytes{0x10, 0x06, 0x00, 0xFA, 0x10, 0x03}));
}

TEST(ReceiverFaults, LateAckComesLaterAndItsAnswerBehindIt) {
  FaultyReceiver faulty({"late-ack=3000"});
  const nanoseconds start = faulty.host->now;
  faulty.receiver->Receive(HostFrame(10, {7, 0}), start);
  const nanoseconds ack_start = start + 8 * ByteTime + milliseconds(3000);
  EXPECT_EQ(faulty.receiver->NextDue(), ack_start + ByteTime);
  EXPECT_EQ(FramesIn(faulty.receiver->Send(ack_start + 8 * ByteTime)), std::vector{Sound(6, {10, 0})});
  EXPECT_EQ(faulty.receiver->NextDue(), ack_start + 9 * ByteTime);
  static_cast<void>(faulty.host->ExchangeBytes({}));
  const nanoseconds before_ack = faulty.host->now;
  EXPECT_EQ(faulty.host->Ack(27).size(), 1U);
  EXPECT_LT(faulty.host->now - before_ack, milliseconds(100)) << "a record follows no ACK of the receiver";
}

TEST(ReceiverFaults, OtherAckNamesAnotherPacketBeforeTheRightOne) {
  FaultyReceiver one({"other-ack=2"});
  EXPECT_EQ(one.host->Exchange(27, {2, 0}), (std::vector{Sound(6, {27, 0})}));
  EXPECT_EQ(one.host->Exchange(35, {9}), (std::vector{Sound(6, {27, 0}), Sound(6, {35, 0})}));
  EXPECT_EQ(one.host->Exchange(35, {9}), (std::vector{Sound(6, {35, 0})}));
  FaultyReceiver all({"other-ack"});
  EXPECT_EQ(all.host->Exchange(27, {2, 0}), (std::vector{Sound(6, {10, 0}), Sound(6, {27, 0})}));
  EXPECT_EQ(all.host->Exchange(35, {9}), (std::vector{Sound(6, {27, 0}), Sound(6, {35, 0})}));
}

TEST(ReceiverFaults, TwoAcksEndAnUpload) {
  FaultyReceiver faulty({"two-acks=700"});
  EXPECT_EQ(faulty.host->Exchange(27, {1, 0}), (std::vector{Sound(6, {27, 0})}));
  EXPECT_EQ(faulty.host->Exchange(35, {9}), (std::vector{Sound(6, {35, 0})}));
  faulty.receiver->Receive(HostFrame(12, {7, 0}), faulty.host->now);
  const nanoseconds first_end = faulty.host->now + 16 * ByteTime;
  EXPECT_EQ(FramesIn(faulty.receiver->Send(first_end)), std::vector{Sound(6, {12, 0})});
  EXPECT_EQ(faulty.receiver->NextDue(), first_end + milliseconds(700) + ByteTime);
  EXPECT_EQ(faulty.host->Command(0), (std::vector{Sound(6, {12, 0}), Sound(6, {10, 0})}));
  EXPECT_EQ(faulty.receiver->Memory().waypoints, (std::vector<LinePacket>{{35, {9}}}));
}

TEST(ReceiverFaults, AckOnceIsNotRepeatedOnANak) {
  FaultyReceiver faulty({"ack-once"});
  EXPECT_EQ(faulty.host->Exchange(27, {1, 0}), (std::vector{Sound(6, {27, 0})}));
  EXPECT_TRUE(faulty.host->Nak(6).empty());
  EXPECT_EQ(faulty.host->Command(7).size(), 2U);
  EXPECT_EQ(faulty.host->Nak(27), std::vector{Sound(27, {5, 0})}) << "what awaits its ACK comes again";
}

TEST(ReceiverFaults, RepeatSendsAPacketAgainUntilItIsAcknowledged) {
  FaultyReceiver faulty({"repeat"});
  const auto number = faulty.host->Tell(10, {7, 0}, milliseconds(3500));
  EXPECT_EQ(number, (std::vector{Sound(6, {10, 0}), Sound(27, {5, 0}), Sound(27, {5, 0}), Sound(27, {5, 0}),
                                 Sound(27, {5, 0})}));
  EXPECT_EQ(faulty.host->Tell(6, {27, 0}, milliseconds(900)), std::vector{Sound(35, {1})});
  EXPECT_EQ(faulty.host->Listen(milliseconds(1000)), std::vector{Sound(35, {1})});
  EXPECT_EQ(faulty.host->Tell(6, {35, 0}, milliseconds(900)), std::vector{Sound(35, {2})});
  EXPECT_EQ(faulty.host->Tell(10, {0, 0}, milliseconds(5000)), std::vector{Sound(6, {10, 0})});
}

TEST(ReceiverFaults, RepeatBeginsWhenThePacketHasPassed) {
  FaultyReceiver faulty({"repeat=2000"});
  static_cast<void>(faulty.host->Tell(10, {7, 0}, 24 * ByteTime));
  EXPECT_EQ(faulty.receiver->NextDue(), faulty.host->now + milliseconds(2000));
  EXPECT_EQ(faulty.host->Listen(milliseconds(2000) + 8 * ByteTime), std::vector{Sound(27, {5, 0})});
  EXPECT_EQ(faulty.receiver->NextDue(), faulty.host->now + milliseconds(2000));
}

TEST(ReceiverFaults, RepeatEndsWithTheLastAck) {
  FaultyReceiver faulty({"repeat=100"});
  static_cast<void>(faulty.host->Tell(10, {6, 0}, milliseconds(90)));
  static_cast<void>(faulty.host->Tell(6, {27, 0}, milliseconds(90)));
  static_cast<void>(faulty.host->Tell(6, {99, 0}, milliseconds(90)));
  EXPECT_EQ(faulty.host->Tell(6, {34, 0}, milliseconds(90)), (std::vector{Sound(12, {6, 0})}));
  EXPECT_TRUE(faulty.host->Tell(6, {12, 0}, std::chrono::seconds(10)).empty());
  EXPECT_FALSE(faulty.receiver->NextDue());
}

TEST(ReceiverFaults, RepeatSendsASpoiltRecordWholeTheSecondTime) {
  FaultyReceiver faulty({"repeat=500", "bad-checksum=1"});
  static_cast<void>(faulty.host->Tell(10, {7, 0}, milliseconds(400)));
  const auto records = faulty.host->Tell(6, {27, 0}, milliseconds(900));
  ASSERT_EQ(records.size(), 2U);
  EXPECT_FALSE(records[0].sound);
  EXPECT_EQ(records[1], Sound(35, {1}));
}

TEST(ReceiverFaults, PvtComesUnaskedEverySecond) {
  FaultyReceiver faulty({"pvt"});
  EXPECT_TRUE(faulty.host->Listen(milliseconds(999)).empty());
  const auto fixes = faulty.host->Listen(milliseconds(2900));
  ASSERT_EQ(fixes.size(), 3U);
  for (const SeenFrame& fix : fixes) {
    EXPECT_EQ(fix.id, 51);
    EXPECT_TRUE(fix.sound);
    EXPECT_EQ(fix.data.size(), 64U);
  }
  EXPECT_TRUE(faulty.host->Tell(6, {51, 0}, milliseconds(50)).empty());
  EXPECT_EQ(faulty.host->Listen(milliseconds(1000)).size(), 1U) << "with its ACK as without";
}

TEST(ReceiverFaults, PvtFourTimesASecondStandsBetweenAnswersAndDisturbsNone) {
  FaultyReceiver faulty({"pvt=4"});
  static_cast<void>(faulty.host->Listen(milliseconds(100)));
  EXPECT_EQ(faulty.host->Listen(milliseconds(10000)).size(), 40U);
  Bytes came;
  const auto tell = [&](std::uint8_t id, const Bytes& data) {
    faulty.receiver->Receive(HostFrame(id, data), faulty.host->now);
    came = came + faulty.host->ListenBytes(milliseconds(400));
  };
  tell(10, {7, 0});
  for (const std::uint8_t id : Bytes{27, 35, 35})
    tell(6, {id, 0});
  std::vector<SeenFrame> asked;
  int fixes = 0;
  for (const SeenFrame& frame : FramesIn(came)) {
    EXPECT_TRUE(frame.sound && frame.noise.empty());
    if (frame.id == 51) ++fixes;
    if (frame.id != 51) asked.push_back(frame);
  }
  EXPECT_EQ(asked, (std::vector{Sound(6, {10, 0}), Sound(27, {5, 0}), Sound(35, {1}), Sound(35, {2}), Sound(35, {3})}));
  EXPECT_GE(fixes, 6);
}

TEST(ReceiverFaults, WhatIsUnaskedComesBeforeALaterQuestionsAnswer) {
  FaultyReceiver faulty({"pvt"});
  static_cast<void>(faulty.host->Listen(milliseconds(10)));
  faulty.host->now += milliseconds(1500);
  const auto frames = faulty.host->Tell(10, {0, 0}, milliseconds(100));
  ASSERT_EQ(frames.size(), 2U);
  EXPECT_EQ(frames[0].id, 51);
  EXPECT_EQ(frames[1], Sound(6, {10, 0}));
}

TEST(ReceiverFaults, PvtByHand) {
  // 2002/12/08 03:00:01 UTC is second 10814 of its week in GPS time; the week began on day 4725, a Sunday.
  const Bytes expected =
      Bytes{0x00, 0x00, 0x65, 0x43} + Bytes{0x00, 0x00, 0x70, 0x41} + Bytes{0x00, 0x00, 0x10, 0x41} +
      Bytes{0x00, 0x00, 0x40, 0x41} + Bytes{3, 0} + Bytes{0x00, 0x00, 0x00, 0x00, 0x00, 0x1F, 0xC5, 0x40} +
      Bytes{0xDF, 0x75, 0xEA, 0xD4, 0x9C, 0xE6, 0xE3, 0x3F} + Bytes{0x07, 0x2B, 0x6A, 0x5A, 0x1D, 0x72, 0x03, 0x40} +
      Bytes(12, 0) + Bytes{0x00, 0x00, 0x1C, 0xC2} + Bytes{13, 0} + Bytes{0x75, 0x12, 0, 0};
  FaultyReceiver faulty({"pvt"});
  faulty.receiver->SetClock(DemoUtcSeconds(), faulty.host->now);
  static_cast<void>(faulty.host->Listen(milliseconds(10)));
  EXPECT_EQ(faulty.host->Listen(milliseconds(1500)), std::vector{Sound(51, expected)});
}

TEST(ReceiverFaults, PvtOfASilentReceiverIsSilent) {
  FaultyReceiver faulty({"pvt", "silent"});
  EXPECT_TRUE(faulty.host->Listen(milliseconds(5000)).empty());
  EXPECT_FALSE(faulty.receiver->NextDue());
}

TEST(ReceiverFaults, ProductFramesStandBehindTheProductData) {
  FaultyReceiver faulty({"product-frames"});
  const auto frames = FramesIn(faulty.host->ExchangeBytes(ProductRequestFrame));
  ASSERT_EQ(frames.size(), 6U);
  EXPECT_EQ(frames[1].id, 255);
  EXPECT_EQ(frames[2], Sound(248, BytesOf("Product Text 1") + Bytes{0}));
  EXPECT_EQ(frames[4].id, 248);
  EXPECT_EQ(frames[5], Sound(247, {1, 2, 3, 4}));
  EXPECT_TRUE(faulty.host->Ack(248).empty());
  EXPECT_EQ(faulty.host->Ack(255).at(0).id, 253);
  EXPECT_EQ(faulty.host->Command(7).size(), 2U);
}

TEST(ReceiverFaults, ProductTextsAreOneTwoOrThree) {
  const auto texts = [](std::initializer_list<std::string_view> faults) {
    FaultyReceiver faulty(faults);
    const Bytes data = FramesIn(faulty.host->ExchangeBytes(ProductRequestFrame)).at(1).data;
    return std::string(data.begin() + 4, data.end());
  };
  const std::string one("eTrex Software Version 2.14\0", 28);
  const std::string two = one + std::string("Personal Navigator\0", 19);
  EXPECT_EQ(texts({"product-texts=1"}), one);
  EXPECT_EQ(texts({"product-texts=2"}), two);
  EXPECT_EQ(texts({}), two);
  EXPECT_EQ(texts({"product-texts=3"}), two + std::string("Boot Version 1.00\0", 18));
}

TEST(ReceiverFaults, LinksBetweenLeavesOutTheLinkBehindEachLastPoint) {
  FaultyReceiver faulty({"links-between"});
  static_cast<void>(faulty.host->Exchange(27, {9, 0}));
  for (const std::uint8_t id : Bytes{29, 30, 98, 30, 98, 29, 30, 98, 29})
    static_cast<void>(faulty.host->Exchange(id, {id}));
  static_cast<void>(faulty.host->Exchange(12, {4, 0}));
  EXPECT_EQ(faulty.host->Download(4),
            (std::vector{Sound(27, {7, 0}), Sound(29, {29}), Sound(30, {30}), Sound(98, {98}), Sound(30, {30}),
                         Sound(29, {29}), Sound(30, {30}), Sound(29, {29}), Sound(12, {4, 0})}));
  EXPECT_EQ(faulty.receiver->Memory().routes.size(), 9U);
  EXPECT_EQ(faulty.host->Download(7).size(), 7U);
}

Bytes PointOf301(std::uint8_t mark, std::uint8_t new_trk) {
  Bytes data(21, mark);
  data[20] = new_trk;
  return data;
}

TEST(ReceiverFaults, TwoSegmentsOfTheFirstLogStandUnderOneHeader) {
  FaultyReceiver faulty({"two-segments"});
  const std::vector<LinePacket> held{{99, {1, 2, 0}},          {34, PointOf301(1, 255)}, {34, PointOf301(2, 0)},
                                     {34, PointOf301(3, 0)},   {34, PointOf301(4, 255)}, {99, {1, 3, 0}},
                                     {34, PointOf301(5, 255)}, {34, PointOf301(6, 0)}};
  static_cast<void>(faulty.host->Exchange(27, {8, 0}));
  for (const LinePacket& packet : held)
    static_cast<void>(faulty.host->Exchange(packet.id, packet.data));
  static_cast<void>(faulty.host->Exchange(12, {6, 0}));
  std::vector<SeenFrame> expected{Sound(27, {8, 0})};
  for (const LinePacket& packet : held)
    expected.push_back(Sound(packet.id, packet.data));
  expected[4].data[20] = 255;
  expected[5].data[20] = 0;
  expected.push_back(Sound(12, {6, 0}));
  EXPECT_EQ(faulty.host->Download(6), expected);
}

TEST(ReceiverFaults, TwoSegmentsNeedAHeaderAndTwoPoints) {
  const std::vector<LinePacket> plain{{34, PointOf301(1, 255)}, {34, PointOf301(2, 0)}};
  EXPECT_EQ(WithTwoSegments(plain), plain);
  const std::vector<LinePacket> one{{99, {1, 2, 0}}, {34, PointOf301(1, 0)}, {99, {1, 2, 0}}};
  EXPECT_EQ(WithTwoSegments(one), one);
  EXPECT_TRUE(WithTwoSegments({}).empty());
  const std::vector<LinePacket> odd{{99, {}}, {34, {}}, {34, {}}};
  EXPECT_EQ(WithTwoSegments(odd), odd) << "points that are none stay as they are";
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
  EXPECT_EQ(forms,
            (std::vector<std::string>{"silent",          "silent-after=N", "early-complete=N", "unknown-first",
                                      "short-count=N",   "gap=N",          "dribble=N",        "garbage[=N]",
                                      "overlong[=N]",    "burst=N",        "bad-checksum=N",   "bad-ack=N",
                                      "unplug-after=N",  "nak[=N]",        "refuse=N",         "short-ack",
                                      "empty-ack",       "late-ack=N",     "other-ack[=N]",    "two-acks[=N]",
                                      "ack-once",        "repeat[=N]",     "pvt[=N]",          "product-frames[=N]",
                                      "product-texts=N", "links-between",  "two-segments"}));
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
  EXPECT_NE(AddFault(faults, "late-ack=3001"), "");
  EXPECT_NE(AddFault(faults, "pvt=5"), "");
  EXPECT_NE(AddFault(faults, "product-texts=0"), "");
  EXPECT_NE(AddFault(faults, "product-texts=4"), "");
}

}  // namespace
}  // namespace walrim
