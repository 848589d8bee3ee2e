#include "device/PacketLink.h"

#include <chrono>
#include <gtest/gtest.h>
#include <stdexcept>
#include <utility>

#include "support/Fakes.h"
#include "support/RecordingTrace.h"

namespace walrim {
namespace {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;

// An ACK of packet 254, and of packet 10, by hand: 10 06 02 FE 00 FA 10 03 has 06+02+FE+00+FA = 200h.
const Bytes AckOfProductRequest{0x10, 0x06, 0x02, 0xFE, 0x00, 0xFA, 0x10, 0x03};
// Two data bytes 41 42: 23+02+41+42 = A8, checksum 58.
const Bytes ShortWaypoint{0x10, 0x23, 0x02, 0x41, 0x42, 0x58, 0x10, 0x03};

class PacketLinkTest : public ::testing::Test {
 protected:
  PacketLinkTest() { EXPECT_TRUE(link.OpenPort("1")); }

  /// The frames of the next burst.
  PacketReply Received() {
    PacketReply reply;
    link.ReceiveMore(reply);
    return reply;
  }
  Bytes Sent(int packet_id, const Bytes& data) {
    port.sent.clear();
    link.SendPacket(packet_id, data);
    return port.sent.empty() ? Bytes{} : port.sent.back();
  }

  FakeClock clock;
  ScriptedPort port{clock};
  FakeEventLoop loop;
  StopFlags stop;
  PacketLink link{port, clock, loop, stop};
};

TEST_F(PacketLinkTest, ThePortIsOpenedWithTheReceiversSettings) {
  EXPECT_TRUE(link.OpenPort("2"));
  EXPECT_EQ(port.last_baud, 9600);
  EXPECT_EQ(port.last_name, "2");
}

TEST_F(PacketLinkTest, OpeningDropsWhatCameBefore) {
  port.Queue(nanoseconds{0}, {1, 2, 3});
  EXPECT_TRUE(link.OpenPort("1"));
  EXPECT_EQ(port.InBufferCount(), 0U);
}

TEST_F(PacketLinkTest, ProbeOpensAndClosesOrTellsThatItCannot) {
  link.ClosePort();
  EXPECT_TRUE(link.ProbePort("1"));
  EXPECT_FALSE(port.PortOpen());
  port.open_result.problem = PortProblem::InUse;
  EXPECT_FALSE(link.ProbePort("1"));
  EXPECT_EQ(link.LastPortResult().problem, PortProblem::InUse);
}

TEST_F(PacketLinkTest, EmptyDataMakesASixByteFrame) {
  EXPECT_EQ(Sent(10, {}), (Bytes{0x10, 0x0A, 0x00, 0xF6, 0x10, 0x03}));
}

TEST_F(PacketLinkTest, ProductRequestByHand) {
  EXPECT_EQ(Sent(254, {0, 0}), (Bytes{0x10, 0xFE, 0x02, 0x00, 0x00, 0x00, 0x10, 0x03}));
}

TEST_F(PacketLinkTest, DataBytesOf10hAreDoubled) {
  // 0A+02+10+01 = 1D, checksum E3
  EXPECT_EQ(Sent(10, {0x10, 0x01}), (Bytes{0x10, 0x0A, 0x02, 0x10, 0x10, 0x01, 0xE3, 0x10, 0x03}));
}

TEST_F(PacketLinkTest, ChecksumOf10hIsDoubled) {
  // 0A+01+E5 = F0, checksum 10
  EXPECT_EQ(Sent(10, {0xE5}), (Bytes{0x10, 0x0A, 0x01, 0xE5, 0x10, 0x10, 0x10, 0x03}));
}

TEST_F(PacketLinkTest, SizeOf10hIsDoubledAndThePacketIdIsNot) {
  const Bytes frame = Sent(16, Bytes(16, 0));
  ASSERT_EQ(frame.size(), 3U + 1 + 16 + 1 + 2);
  EXPECT_EQ(Bytes(frame.begin(), frame.begin() + 5), (Bytes{0x10, 0x10, 0x10, 0x10, 0x00}));
  // 10+10 = 20, checksum E0
  EXPECT_EQ(Bytes(frame.end() - 3, frame.end()), (Bytes{0xE0, 0x10, 0x03}));
}

TEST_F(PacketLinkTest, AckAndDataArrivingTogetherAreTwoFrames) {
  port.Queue(milliseconds{5}, Joined({AckOfProductRequest, ShortWaypoint}));
  const PacketReply reply = Received();
  ASSERT_EQ(reply.count, 2);
  EXPECT_EQ(FindAckSlot(reply), 1);
  EXPECT_EQ(reply.Slot(2).Id(), 0x23);
  EXPECT_EQ(reply.Slot(2).size, 2 + 6);
  const auto data = PacketData(reply.Slot(2));
  EXPECT_EQ(Bytes(data.begin(), data.end()), (Bytes{0x41, 0x42}));
}

TEST_F(PacketLinkTest, ASilentDeviceTimesOutAfterOneAndAHalfSeconds) {
  const PacketReply reply = Received();
  EXPECT_EQ(reply.count, ReceiveTimeout);
  EXPECT_GE(clock.now, milliseconds{1500});
  EXPECT_LE(clock.now, milliseconds{1510});
  EXPECT_EQ(FindAckSlot(reply), -1);
}

TEST_F(PacketLinkTest, HalfAFrameTimesOutOneAndAHalfSecondsAfterItsLastByte) {
  port.Queue(milliseconds{1000}, {0x10, 0x23, 0x02});
  EXPECT_EQ(link.ReceivePacket().size, ReceiveTimeout);
  EXPECT_GE(clock.now, milliseconds{2500});
  EXPECT_LE(clock.now, milliseconds{2520});
}

TEST_F(PacketLinkTest, ALostLineIsNotWaitedFor) {
  port.line_lost = true;
  EXPECT_EQ(link.ReceivePacket().size, ReceiveTimeout);
  EXPECT_LT(clock.now, milliseconds{10});
}

TEST_F(PacketLinkTest, ABurstIsTakenWhenItHasSettled) {
  port.Queue(milliseconds{4}, {0x10, 0x23, 0x02, 0x41});
  port.Queue(milliseconds{20}, {0x42, 0x58, 0x10, 0x03});
  const Frame frame = link.ReceivePacket();
  EXPECT_EQ(frame.size, 8);
  EXPECT_FALSE(frame.damaged);
  // The last byte came at 20 ms; 20 ms without another one follow.
  EXPECT_GE(clock.now, milliseconds{40});
  EXPECT_LE(clock.now, milliseconds{43});
}

TEST_F(PacketLinkTest, TheSettleTimeIsAsLongAsTheBurstTookToBegin) {
  port.Queue(milliseconds{100}, ShortWaypoint);
  static_cast<void>(link.ReceivePacket());
  EXPECT_GE(clock.now, milliseconds{200});
  EXPECT_LE(clock.now, milliseconds{204});
}

TEST_F(PacketLinkTest, ThePacingFactorStretchesTheSettleTimeAndZeroCountsAsOne) {
  link.SetPacing(3.0F);
  port.Queue(milliseconds{1}, ShortWaypoint);
  static_cast<void>(link.ReceivePacket());
  EXPECT_GE(clock.now, milliseconds{60});
  link.SetPacing(0.0F);
  const auto before = clock.now;
  port.Queue(milliseconds{1}, ShortWaypoint);
  static_cast<void>(link.ReceivePacket());
  EXPECT_LE(clock.now - before, milliseconds{24});
}

TEST_F(PacketLinkTest, DoubledBytesAreReadOnce) {
  // Data 10 01, checksum of 0A+02+10+01 = E3
  port.Queue(milliseconds{1}, {0x10, 0x0A, 0x02, 0x10, 0x10, 0x01, 0xE3, 0x10, 0x03});
  const Frame frame = link.ReceivePacket();
  EXPECT_FALSE(frame.damaged);
  const auto data = PacketData(frame);
  EXPECT_EQ(Bytes(data.begin(), data.end()), (Bytes{0x10, 0x01}));
}

TEST_F(PacketLinkTest, DataOf10hThen03hCutsTheFrameAndIsNotedAsDamage) {
  // Data 10 03 07, sent as 10 10 03 07: the de-stuffed 10 03 ends the frame. 23+03+10+03+07 = 40, checksum C0.
  port.Queue(milliseconds{1}, {0x10, 0x23, 0x03, 0x10, 0x10, 0x03, 0x07, 0xC0, 0x10, 0x03});
  const Frame frame = link.ReceivePacket();
  EXPECT_EQ(frame.size, 3 + 6);  // the size byte's word, although less came
  EXPECT_TRUE(frame.damaged);
  const auto data = PacketData(frame);
  EXPECT_EQ(Bytes(data.begin(), data.end()), (Bytes{0x10, 0x03, 0x00}));
}

TEST_F(PacketLinkTest, AWrongChecksumIsTakenButNoted) {
  port.Queue(milliseconds{1}, {0x10, 0x23, 0x02, 0x41, 0x42, 0x59, 0x10, 0x03});
  const Frame frame = link.ReceivePacket();
  EXPECT_EQ(frame.size, 8);
  EXPECT_TRUE(frame.damaged);
}

TEST_F(PacketLinkTest, AFrameOf255DataBytesIsReceivedWhole) {
  Bytes frame{0x10, 0x23, 0xFF};
  unsigned sum = 0x23 + 0xFF;
  for (unsigned i = 0; i < 255; ++i) {
    frame.push_back(static_cast<std::uint8_t>(0x41 + i % 20));
    sum += frame.back();
  }
  frame.push_back(static_cast<std::uint8_t>(0x100 - (sum & 0xFF)));
  ASSERT_NE(frame.back(), 0x10);
  frame.insert(frame.end(), {0x10, 0x03});
  port.Queue(milliseconds{1}, frame);
  const Frame received = link.ReceivePacket();
  EXPECT_EQ(received.size, 255 + 6);
  EXPECT_FALSE(received.damaged);
  EXPECT_EQ(PacketData(received)[254], 0x41 + 254 % 20);
}

TEST_F(PacketLinkTest, AFrameBeyondItsBufferIsAnError) {
  Bytes frame{0x10, 0x23, 200};
  frame.insert(frame.end(), 300, 0x55);
  frame.insert(frame.end(), {0x10, 0x03});
  port.Queue(milliseconds{1}, frame);
  EXPECT_THROW(static_cast<void>(link.ReceivePacket()), std::out_of_range);
}

TEST_F(PacketLinkTest, FiveFramesInABurstFitAndASixthIsAnError) {
  const Bytes five = Joined({ShortWaypoint, ShortWaypoint, ShortWaypoint, ShortWaypoint, ShortWaypoint});
  port.Queue(milliseconds{1}, five);
  EXPECT_EQ(Received().count, 5);
  port.Queue(milliseconds{1}, Joined({five, ShortWaypoint}));
  EXPECT_THROW(static_cast<void>(Received()), std::out_of_range);
}

TEST_F(PacketLinkTest, ASlotBeyondTheReplyIsAnError) {
  const PacketReply reply;
  EXPECT_THROW(static_cast<void>(reply.Slot(6)), std::out_of_range);
}

TEST_F(PacketLinkTest, AnExchangeDropsLateBytesOfAnEarlierBurst) {
  port.Queue(nanoseconds{0}, ShortWaypoint);
  port.script = [](const Bytes&) { return std::vector<ScriptedPort::Answer>{{milliseconds{3}, AckOfProductRequest}}; };
  const PacketReply reply = link.ExchangeData(254, Bytes{0, 0}, ExpectedAnswer::AckAndAnswer);
  ASSERT_EQ(reply.count, 1);
  EXPECT_EQ(reply.Slot(1).Id(), PacketId::Ack);
}

// By hand: 33+02+41+42 = B8, checksum 48. C8+02+41+42 = 14Dh, checksum B3. 06+02+33 = 3Bh, checksum C5.
const Bytes Fix{0x10, 0x33, 0x02, 0x41, 0x42, 0x48, 0x10, 0x03};
const Bytes Unknown{0x10, 0xC8, 0x02, 0x41, 0x42, 0xB3, 0x10, 0x03};
const Bytes AckOfFix{0x10, 0x06, 0x02, 0x33, 0x00, 0xC5, 0x10, 0x03};
// 06+02+23 = 2Bh, checksum D5; 06+02+0A = 12h, checksum EE.
const Bytes AckOfWaypoint{0x10, 0x06, 0x02, 0x23, 0x00, 0xD5, 0x10, 0x03};
const Bytes AckOfCommand{0x10, 0x06, 0x02, 0x0A, 0x00, 0xEE, 0x10, 0x03};

class PlainExchangeTest : public PacketLinkTest {
 protected:
  void AnswerOnce(const std::vector<ScriptedPort::Answer>& answers) {
    port.script = [answers, done = false](const Bytes&) mutable {
      return std::exchange(done, true) ? std::vector<ScriptedPort::Answer>{} : answers;
    };
    port.sent.clear();
  }
};

TEST_F(PlainExchangeTest, AnAckOfAnotherPacketIsNotTheAnswer) {
  AnswerOnce({{milliseconds{2}, AckOfCommand}, {milliseconds{400}, AckOfWaypoint}});
  PacketReply reply = link.ExchangeData(35, Bytes{1, 2}, ExpectedAnswer::Ack);
  ASSERT_EQ(reply.count, 1);
  EXPECT_EQ(PacketData(reply.Slot(1))[0], 35);

  AnswerOnce({{milliseconds{2}, Joined({AckOfWaypoint, AckOfCommand, ShortWaypoint})}});
  reply = link.ExchangeData(10, Bytes{7, 0}, ExpectedAnswer::AckAndAnswer);
  ASSERT_EQ(reply.count, 2);
  EXPECT_EQ(PacketData(reply.Slot(1))[0], 10);

  AnswerOnce({{milliseconds{2}, AckOfWaypoint}, {milliseconds{400}, ShortWaypoint}});
  EXPECT_EQ(link.ExchangeData(6, Bytes{35, 0}, ExpectedAnswer::OneFrame).FirstId(), 35);
  EXPECT_EQ(port.sent.size(), 1U);
}

TEST_F(PlainExchangeTest, AcksOfOneByteAndOfNoneCount) {
  // 06+01+23 = 2A, checksum D6; 06+00 = 06, checksum FA.
  for (const Bytes& ack :
       {Bytes{0x10, 0x06, 0x01, 0x23, 0xD6, 0x10, 0x03}, Bytes{0x10, 0x06, 0x00, 0xFA, 0x10, 0x03}}) {
    AnswerOnce({{milliseconds{2}, ack}});
    EXPECT_EQ(FindAckSlot(link.ExchangeData(35, Bytes{1, 2}, ExpectedAnswer::Ack)), 1);
  }
}

TEST_F(PlainExchangeTest, WhatComesUnaskedIsAcknowledgedAndPassedOver) {
  AnswerOnce({{milliseconds{2}, Fix}, {milliseconds{300}, Joined({Fix, AckOfCommand, Fix, ShortWaypoint})}});
  PacketReply reply = link.ExchangeData(10, Bytes{7, 0}, ExpectedAnswer::AckAndAnswer);
  ASSERT_EQ(reply.count, 2);
  EXPECT_EQ(FindAckSlot(reply), 1);
  EXPECT_EQ(reply.Slot(2).Id(), 35);
  ASSERT_EQ(port.sent.size(), 4U);
  EXPECT_EQ(port.sent[1], AckOfFix);

  AnswerOnce({{milliseconds{2}, Fix}, {milliseconds{300}, ShortWaypoint}});
  EXPECT_EQ(link.ExchangeData(6, Bytes{35, 0}, ExpectedAnswer::OneFrame).FirstId(), 35);

  AnswerOnce({{milliseconds{2}, Unknown}, {milliseconds{300}, AckOfWaypoint}});
  EXPECT_EQ(FindAckSlot(link.ExchangeData(35, Bytes{1, 2}, ExpectedAnswer::Ack)), 1);
  EXPECT_EQ(port.sent.size(), 2U);
}

TEST_F(PlainExchangeTest, AFixLateBehindTheAckOfACommandIsPassedOverToo) {
  AnswerOnce({{milliseconds{2}, AckOfCommand}, {milliseconds{300}, Fix}, {milliseconds{700}, ShortWaypoint}});
  PacketReply reply = link.ExchangeData(10, Bytes{7, 0}, ExpectedAnswer::AckAndAnswer);
  ASSERT_EQ(reply.count, 1);
  link.ReceiveMore(reply);
  ASSERT_EQ(reply.count, 2);
  EXPECT_EQ(reply.Slot(2).Id(), 35);
}

// Where a record is due, whatever it is may have been meant as one: neither acknowledged nor skipped.
TEST_F(PlainExchangeTest, AnUnknownPacketInPlaceOfARecordIsTheAnswer) {
  AnswerOnce({{milliseconds{2}, Unknown}, {milliseconds{300}, ShortWaypoint}});
  EXPECT_EQ(link.ExchangeData(6, Bytes{35, 0}, ExpectedAnswer::OneFrame).FirstId(), 200);
  EXPECT_EQ(port.sent.size(), 1U);
}

TEST_F(PlainExchangeTest, ADamagedFrameIsTakenWhateverItSeemsToBe) {
  Bytes spoilt = AckOfCommand;
  spoilt[5] = 0x00;
  AnswerOnce({{milliseconds{2}, spoilt}});
  EXPECT_EQ(FindAckSlot(link.ExchangeData(35, Bytes{1, 2}, ExpectedAnswer::Ack)), 1);
}

TEST_F(PlainExchangeTest, ATrickleIsListenedToForTenSecondsInAll) {
  for (int i = 0; i < 60; ++i)
    port.Queue(milliseconds{500} * (i + 1), {0x24});
  const PacketReply reply = link.ExchangeData(10, Bytes{7, 0}, ExpectedAnswer::AckAndAnswer);
  EXPECT_EQ(reply.count, ReceiveTimeout);
  EXPECT_EQ(reply.why, NoAnswer::Trickle);
  EXPECT_GT(clock.now, std::chrono::seconds{9});
  EXPECT_LT(clock.now, std::chrono::seconds{11});
}

TEST_F(PlainExchangeTest, CancelDoesNotWaitOutASilence) {
  loop.on_yield = [this] { stop.cancelled = clock.now > milliseconds{400}; };
  const PacketReply reply = link.ExchangeData(10, Bytes{7, 0}, ExpectedAnswer::AckAndAnswer);
  EXPECT_EQ(reply.why, NoAnswer::Cancel);
  EXPECT_LT(clock.now, milliseconds{420});
}

TEST_F(PlainExchangeTest, CancelLeavesAnAnswerThatIsComingItsTime) {
  stop.cancelled = true;
  AnswerOnce({{milliseconds{60}, AckOfWaypoint}});
  EXPECT_EQ(FindAckSlot(link.ExchangeData(35, Bytes{1, 2}, ExpectedAnswer::Ack)), 1);
}

TEST_F(PacketLinkTest, ReceivingOnceMoreTakesTheLateFrameBehindTheAck) {
  port.Queue(milliseconds{2}, AckOfProductRequest);
  port.Queue(milliseconds{400}, ShortWaypoint);
  PacketReply reply = Received();
  ASSERT_EQ(reply.count, 1);
  link.ReceiveMore(reply);
  ASSERT_EQ(reply.count, 2);
  EXPECT_EQ(reply.Slot(2).Id(), 0x23);
}

TEST_F(PacketLinkTest, WaitingLetsTheEventLoopRun) {
  static_cast<void>(link.ReceivePacket());
  EXPECT_GE(loop.yields, 100);  // 1.5 s of silence
}

TEST_F(PacketLinkTest, IdlingRestsAlsoWhenUnreadInputLiesThere) {
  port.Queue(nanoseconds{0}, {0x55, 0x66});
  for (int i = 0; i < 10; ++i)
    link.Idle();
  EXPECT_GE(clock.now, milliseconds{100});
}

TEST_F(PacketLinkTest, BytesThatKeepComingDoNotKeepACancelledTransferWaiting) {
  for (int i = 0; i < 600; ++i)
    port.Queue(milliseconds{1400} * (i + 1), {0x24});
  loop.on_yield = [this] { stop.aborted = clock.now > std::chrono::seconds{5}; };
  EXPECT_EQ(Received().count, ReceiveTimeout);
  EXPECT_LT(clock.now, std::chrono::seconds{7});
}

TEST_F(PacketLinkTest, ABurstThatNoAnswerCanBeIsNotWaitedFor) {
  // 400 bytes of text each second, as from a receiver that speaks to itself.
  for (int i = 0; i < 300; ++i)
    port.Queue(milliseconds{950} + std::chrono::seconds{i}, Bytes(400, 0x24));
  EXPECT_THROW(static_cast<void>(Received()), std::out_of_range);
  EXPECT_LT(clock.now, std::chrono::seconds{10});
}

TEST_F(PacketLinkTest, DrainingLetsTheEventLoopRun) {
  link.DrainInput();
  EXPECT_GE(loop.yields, 9);
}

TEST_F(PacketLinkTest, DrainingDropsWhatStillComesAndEnds) {
  port.Queue(milliseconds{30}, ShortWaypoint);
  port.Queue(milliseconds{90}, ShortWaypoint);
  link.DrainInput();
  EXPECT_EQ(port.InBufferCount(), 0U);
  EXPECT_GE(clock.now, milliseconds{190});
  EXPECT_LE(clock.now, milliseconds{200});
}

TEST_F(PacketLinkTest, NoiseBeforeAFrameShiftsIt) {
  Bytes noisy{0x55, 0x66};
  noisy.insert(noisy.end(), AckOfProductRequest.begin(), AckOfProductRequest.end());
  port.Queue(milliseconds{1}, noisy);
  const PacketReply reply = Received();
  EXPECT_EQ(FindAckSlot(reply), -1);
  EXPECT_TRUE(reply.Slot(1).damaged);
}

TEST_F(PacketLinkTest, TheTraceShowsFramesAsTheyWent) {
  RecordingTrace trace;
  link.SetTrace(&trace);
  link.SendPacket(10, Bytes{0x10, 0x01});
  port.Queue(milliseconds{1}, {0x10, 0x0A, 0x02, 0x10, 0x10, 0x01, 0xE4, 0x10, 0x03});
  static_cast<void>(link.ReceivePacket());
  port.Queue(milliseconds{1}, {0x10, 0x23, 0x02});
  static_cast<void>(link.ReceivePacket());
  ASSERT_EQ(trace.lines.size(), 4U);
  EXPECT_EQ(trace.lines[0], "0.000000\tTX\t10\t2\t10 0A 02 10 10 01 E3 10 03");
  EXPECT_EQ(trace.lines[1].substr(8), "\tRX\t10\t2\t10 0A 02 10 10 01 E4 10 03\t! checksum");
  EXPECT_EQ(trace.lines[2].substr(8), "\tRX\t35\t2\t10 23 02\t! cut short");
  EXPECT_EQ(trace.lines[3].substr(8), "\t--\ttime-out");
}

}  // namespace
}  // namespace walrim
