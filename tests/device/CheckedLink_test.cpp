#include <chrono>
#include <gtest/gtest.h>
#include <random>
#include <stdexcept>

#include "device/Garmin.h"
#include "receiver/DemoSerialPort.h"
#include "support/Fakes.h"
#include "support/RecordingTrace.h"
#include "support/ScriptedReceiver.h"

namespace walrim {
namespace {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;
using std::chrono::seconds;

// By hand: 06+02+0A = 12h, checksum EE; the same with a wrong one.
const Bytes AckOfCommand{0x10, 0x06, 0x02, 0x0A, 0x00, 0xEE, 0x10, 0x03};
const Bytes SpoiltAckOfCommand{0x10, 0x06, 0x02, 0x0A, 0x00, 0xEF, 0x10, 0x03};
// 1B+02+05 = 22h, checksum DE.
const Bytes FiveRecords{0x10, 0x1B, 0x02, 0x05, 0x00, 0xDE, 0x10, 0x03};
const Bytes SpoiltFiveRecords{0x10, 0x1B, 0x02, 0x05, 0x00, 0xDF, 0x10, 0x03};
// 15+02+1B = 32h, checksum CE; 15+02+23 = 3Ah, checksum C6.
const Bytes NakOfRecords{0x10, 0x15, 0x02, 0x1B, 0x00, 0xCE, 0x10, 0x03};
const Bytes NakOfWaypoint{0x10, 0x15, 0x02, 0x23, 0x00, 0xC6, 0x10, 0x03};
// The receiver's: 15+02+0A = 21h, checksum DF.
const Bytes NakOfCommand{0x10, 0x15, 0x02, 0x0A, 0x00, 0xDF, 0x10, 0x03};
// Two data bytes 41 42: 23+02+41+42 = A8, checksum 58.
const Bytes ShortWaypoint{0x10, 0x23, 0x02, 0x41, 0x42, 0x58, 0x10, 0x03};
const Bytes SpoiltWaypoint{0x10, 0x23, 0x02, 0x41, 0x43, 0x58, 0x10, 0x03};
// 06+02+23 = 2Bh, checksum D5. 0C+02+07 = 15h, checksum EB.
const Bytes AckOfWaypoint{0x10, 0x06, 0x02, 0x23, 0x00, 0xD5, 0x10, 0x03};
const Bytes EndOfWaypoints{0x10, 0x0C, 0x02, 0x07, 0x00, 0xEB, 0x10, 0x03};
// A transfer command of waypoints: 0A+02+07 = 13h, checksum ED. An ACK of records: 06+02+1B = 23h, checksum DD.
const Bytes WaypointCommand{0x10, 0x0A, 0x02, 0x07, 0x00, 0xED, 0x10, 0x03};
const Bytes AckOfRecords{0x10, 0x06, 0x02, 0x1B, 0x00, 0xDD, 0x10, 0x03};

/// Exchanges on a line whose answers are written down, one list for each packet that is sent.
class CheckedExchangeTest : public ::testing::Test {
 protected:
  using Answers = std::vector<ScriptedPort::Answer>;

  CheckedExchangeTest() {
    EXPECT_TRUE(link.OpenPort("1"));
    port.script = [this](const Bytes&) { return next_answer < answers.size() ? answers[next_answer++] : Answers{}; };
  }

  PacketReply Command() { return link.ExchangeChecked(10, NumberData(7), ExpectedAnswer::AckAndAnswer); }
  PacketReply Record() { return link.ExchangeChecked(35, NumberData(0x4241), ExpectedAnswer::Ack); }
  PacketReply Ack() { return link.ExchangeChecked(PacketId::Ack, NumberData(27), ExpectedAnswer::OneFrame); }

  FakeClock clock;
  ScriptedPort port{clock};
  FakeEventLoop loop;
  StopFlags stop;
  PacketLink link{port, clock, loop, stop};
  std::vector<Answers> answers;
  std::size_t next_answer = 0;
};

TEST_F(CheckedExchangeTest, EndsAtTheLastByteOfTheOneFrameBehindAnAck) {
  answers = {{{milliseconds{40}, ShortWaypoint}}};
  const PacketReply reply = Ack();
  EXPECT_EQ(reply.count, 1);
  EXPECT_EQ(reply.FirstId(), 35);
  EXPECT_EQ(clock.now, milliseconds{40});
  EXPECT_EQ(port.sent, std::vector<Bytes>{AckOfRecords});
}

TEST_F(CheckedExchangeTest, WaitsForTheAnswerBehindACommandsAck) {
  answers = {{{milliseconds{5}, AckOfCommand}, {milliseconds{1200}, FiveRecords}}};
  const PacketReply reply = Command();
  ASSERT_EQ(reply.count, 2);
  EXPECT_EQ(FindAckSlot(reply), 1);
  EXPECT_EQ(reply.Slot(2).Id(), 27);
  EXPECT_EQ(clock.now, milliseconds{1200});
}

TEST_F(CheckedExchangeTest, DribblingBytesAreWaitedFor) {
  Answers bytes;
  for (std::size_t i = 0; i < ShortWaypoint.size(); ++i)
    bytes.push_back({milliseconds{1200} * static_cast<int>(i + 1), {ShortWaypoint[i]}});
  answers = {bytes};
  EXPECT_EQ(Ack().FirstId(), 35);
  EXPECT_EQ(clock.now, milliseconds{1200} * 8);
}

TEST_F(CheckedExchangeTest, ATrickleIsListenedToForTenSecondsInAllAndNotAskedAgain) {
  for (const std::uint8_t byte : Bytes{0x24, 0x10}) {  // noise, and half frames
    port.sent.clear();
    port.ClearInBuffer();
    const auto start = clock.now;
    for (int i = 0; i < 40; ++i)
      port.Queue(milliseconds{500} * (i + 1), {byte, 0x41});
    const PacketReply reply = Ack();
    EXPECT_EQ(reply.count, ReceiveTimeout);
    EXPECT_EQ(reply.why, NoAnswer::Trickle);
    EXPECT_GT(clock.now - start, seconds{9});
    EXPECT_LT(clock.now - start, seconds{11});
    EXPECT_EQ(port.sent.size(), 1U);
    clock.Advance(seconds{20});
  }
}

TEST_F(CheckedExchangeTest, CancelDoesNotWaitOutASilence) {
  loop.on_yield = [this] { stop.cancelled = clock.now > milliseconds{400}; };
  const PacketReply reply = Ack();
  EXPECT_EQ(reply.count, ReceiveTimeout);
  EXPECT_EQ(reply.why, NoAnswer::Cancel);
  EXPECT_LT(clock.now, milliseconds{420});
}

TEST_F(CheckedExchangeTest, WhatKeptAnExchangeFromItsAnswerIsTold) {
  EXPECT_EQ(Ack().why, NoAnswer::Silence);
  answers = std::vector<Answers>(9, {{milliseconds{5}, SpoiltWaypoint}});
  next_answer = 0;
  EXPECT_EQ(Ack().why, NoAnswer::Damage);
  answers = std::vector<Answers>(9, {{milliseconds{5}, NakOfCommand}});
  next_answer = 0;
  EXPECT_EQ(Command().why, NoAnswer::Refusal);
}

TEST_F(CheckedExchangeTest, NoiseBeforeAFrameIsSkipped) {
  answers = {{{milliseconds{5}, Joined({{0x00, 0xFF, 0x5A}, ShortWaypoint})}}};
  EXPECT_EQ(Ack().FirstId(), 35);
  EXPECT_EQ(port.sent.size(), 1U);
}

TEST_F(CheckedExchangeTest, AWrongChecksumIsAnsweredWithNakAndThePacketReceivedAgain) {
  answers = {{{milliseconds{5}, SpoiltWaypoint}}, {{milliseconds{5}, ShortWaypoint}}};
  const PacketReply reply = Ack();
  ASSERT_EQ(reply.count, 1);
  EXPECT_FALSE(reply.Slot(1).damaged);
  EXPECT_EQ(PacketData(reply.Slot(1))[1], 0x42);
  EXPECT_EQ(port.sent, (std::vector<Bytes>{AckOfRecords, NakOfWaypoint}));
}

TEST_F(CheckedExchangeTest, OnlyTheDamagedAnswerBehindACommandIsAskedForAgain) {
  answers = {{{milliseconds{5}, Joined({AckOfCommand, SpoiltFiveRecords})}}, {{milliseconds{5}, FiveRecords}}};
  const PacketReply reply = Command();
  ASSERT_EQ(reply.count, 2);
  EXPECT_EQ(FindAckSlot(reply), 1);
  EXPECT_EQ(port.sent, (std::vector<Bytes>{WaypointCommand, NakOfRecords}));
}

TEST_F(CheckedExchangeTest, ADamagedAckCountsWhenItsAnswerCame) {
  answers = {{{milliseconds{5}, Joined({SpoiltAckOfCommand, FiveRecords})}}};
  const PacketReply reply = Command();
  ASSERT_EQ(reply.count, 2);
  EXPECT_EQ(FindAckSlot(reply), 1);
  EXPECT_EQ(port.sent.size(), 1U);
}

TEST_F(CheckedExchangeTest, ACommandWhoseAckIsBeyondRecognitionIsSentAgain) {
  Bytes unrecognisable = AckOfCommand;
  unrecognisable[1] = 0x46;
  answers = {{{milliseconds{5}, Joined({unrecognisable, FiveRecords})}},
             {{milliseconds{5}, Joined({AckOfCommand, FiveRecords})}}};
  const PacketReply reply = Command();
  ASSERT_EQ(reply.count, 2);
  EXPECT_EQ(FindAckSlot(reply), 1);
  EXPECT_EQ(port.sent, (std::vector<Bytes>{WaypointCommand, WaypointCommand}));
}

TEST_F(CheckedExchangeTest, ANakSendsThePacketAgain) {
  answers = {{{milliseconds{5}, NakOfCommand}}, {{milliseconds{5}, Joined({AckOfCommand, FiveRecords})}}};
  const PacketReply reply = Command();
  EXPECT_EQ(reply.count, 2);
  EXPECT_EQ(port.sent, (std::vector<Bytes>{WaypointCommand, WaypointCommand}));
}

TEST_F(CheckedExchangeTest, AfterThreeNaksTheExchangeHasFailed) {
  answers = std::vector<Answers>(9, {{milliseconds{5}, NakOfCommand}});
  EXPECT_EQ(Command().count, ReceiveTimeout);
  EXPECT_EQ(port.sent, std::vector<Bytes>(3, WaypointCommand));
}

TEST_F(CheckedExchangeTest, AfterThreeDamagedFramesTheExchangeHasFailed) {
  answers = std::vector<Answers>(9, {{milliseconds{5}, SpoiltWaypoint}});
  EXPECT_EQ(Ack().count, ReceiveTimeout);
  EXPECT_EQ(port.sent, (std::vector<Bytes>{AckOfRecords, NakOfWaypoint, NakOfWaypoint}));
}

TEST_F(CheckedExchangeTest, ANakOfANakSendsTheNakAgain) {
  answers = {
      {{milliseconds{5}, SpoiltWaypoint}}, {{milliseconds{5}, NakOfCommand}}, {{milliseconds{5}, ShortWaypoint}}};
  EXPECT_EQ(Ack().FirstId(), 35);
  EXPECT_EQ(port.sent, (std::vector<Bytes>{AckOfRecords, NakOfWaypoint, NakOfWaypoint}));
}

TEST_F(CheckedExchangeTest, HalfAFrameIsAskedForAgainOnceTheLineIsSilent) {
  answers = {{{milliseconds{5}, {0x10, 0x23, 0x02, 0x41}}}, {{milliseconds{5}, ShortWaypoint}}};
  EXPECT_EQ(Ack().FirstId(), 35);
  EXPECT_EQ(port.sent, (std::vector<Bytes>{AckOfRecords, NakOfWaypoint}));
}

TEST_F(CheckedExchangeTest, ASilentDeviceTimesOutAfterOneAndAHalfSecondsAndIsNotAskedAgain) {
  EXPECT_EQ(Ack().count, ReceiveTimeout);
  EXPECT_GT(clock.now, milliseconds{1500});
  EXPECT_LE(clock.now, milliseconds{1510});
  EXPECT_EQ(port.sent.size(), 1U);
}

TEST_F(CheckedExchangeTest, ALostLineIsNotWaitedFor) {
  port.line_lost = true;
  EXPECT_EQ(Ack().count, ReceiveTimeout);
  EXPECT_EQ(clock.now, nanoseconds{});
}

TEST_F(CheckedExchangeTest, FramesBeyondTheAnswerAreLeftOutAndASixthIsAnError) {
  answers = {{{milliseconds{5}, Joined({ShortWaypoint, FiveRecords, FiveRecords, FiveRecords, FiveRecords})}}};
  const PacketReply reply = Ack();
  EXPECT_EQ(reply.count, 1);
  EXPECT_EQ(reply.FirstId(), 35);

  answers.push_back(
      {{milliseconds{5}, Joined({ShortWaypoint, FiveRecords, FiveRecords, FiveRecords, FiveRecords, FiveRecords})}});
  EXPECT_THROW(static_cast<void>(Ack()), std::out_of_range);
}

TEST_F(CheckedExchangeTest, ABurstThatGoesOnBetweenTwoExchangesIsCountedToo) {
  answers = {{{milliseconds{5}, ShortWaypoint}}};
  EXPECT_EQ(Ack().count, 1);
  port.Queue({}, Joined({ShortWaypoint, ShortWaypoint, ShortWaypoint, ShortWaypoint, ShortWaypoint}));
  EXPECT_THROW(static_cast<void>(Ack()), std::out_of_range);
}

TEST_F(CheckedExchangeTest, NoiseLikeAFramesEndIsNotAskedForWhenTheAnswerFollows) {
  answers = {{{milliseconds{5}, {0x10, 0x44, 0x01, 0x10, 0x03}}, {milliseconds{90}, ShortWaypoint}}};
  EXPECT_EQ(Ack().FirstId(), 35);
  EXPECT_EQ(port.sent, std::vector<Bytes>{AckOfRecords});
}

TEST_F(CheckedExchangeTest, WhatComesTwiceBecauseTheNakCrossedItIsDropped) {
  // The receiver takes 300 ms for each frame, so that the damaged one and its repetition lie that far apart.
  answers = {{{milliseconds{300}, SpoiltWaypoint}, {milliseconds{650}, ShortWaypoint}},
             {{milliseconds{300}, ShortWaypoint}},
             {{milliseconds{5}, EndOfWaypoints}}};
  EXPECT_EQ(Ack().FirstId(), 35);
  EXPECT_EQ(Ack().FirstId(), 12);
}

TEST_F(CheckedExchangeTest, ASecondNumberOfRecordsIsNoAnswerToItsAck) {
  answers = {{{milliseconds{5}, FiveRecords}, {milliseconds{9}, ShortWaypoint}}};
  EXPECT_EQ(Ack().FirstId(), 35);
}

// 33+02+41+42 = B8, checksum 48. FD+02+41+42 = 182h, checksum 7E. C8+02+41+42 = 14Dh, checksum B3.
const Bytes Fix{0x10, 0x33, 0x02, 0x41, 0x42, 0x48, 0x10, 0x03};
const Bytes Protocols{0x10, 0xFD, 0x02, 0x41, 0x42, 0x7E, 0x10, 0x03};
const Bytes Unknown{0x10, 0xC8, 0x02, 0x41, 0x42, 0xB3, 0x10, 0x03};
// 06+02+33 = 3Bh, checksum C5. 06+02+FD = 105h, checksum FB. 06+02+C8 = D0h, checksum 30.
const Bytes AckOfFix{0x10, 0x06, 0x02, 0x33, 0x00, 0xC5, 0x10, 0x03};
const Bytes AckOfProtocols{0x10, 0x06, 0x02, 0xFD, 0x00, 0xFB, 0x10, 0x03};
const Bytes AckOfUnknown{0x10, 0x06, 0x02, 0xC8, 0x00, 0x30, 0x10, 0x03};

TEST_F(CheckedExchangeTest, WhatComesUnaskedIsAcknowledgedAndPassedOverAtEveryPlace) {
  answers = {{{milliseconds{5}, Joined({Fix, AckOfCommand, Protocols, Unknown, FiveRecords, Fix})}}};
  const PacketReply reply = Command();
  ASSERT_EQ(reply.count, 2);
  EXPECT_EQ(reply.Slot(1).Id(), PacketId::Ack);
  EXPECT_EQ(reply.Slot(2).Id(), 27);
  EXPECT_EQ(port.sent, (std::vector<Bytes>{WaypointCommand, AckOfFix, AckOfProtocols, AckOfUnknown, AckOfFix}));

  port.sent.clear();
  answers = {{{milliseconds{5}, Joined({Unknown, Fix, ShortWaypoint})}}};
  next_answer = 0;
  EXPECT_EQ(Ack().FirstId(), 35);
  EXPECT_EQ(port.sent, (std::vector<Bytes>{AckOfRecords, AckOfUnknown, AckOfFix}));
}

TEST_F(CheckedExchangeTest, MoreThanFiveUnaskedFramesAreNoError) {
  answers = {{{milliseconds{5}, Joined({Fix, Fix, Fix, Fix, Fix, Fix, Fix, AckOfCommand, FiveRecords})}}};
  EXPECT_EQ(Command().count, 2);
}

TEST_F(CheckedExchangeTest, AFixBetweenTwoExchangesIsAcknowledgedAndDisturbsNeither) {
  answers = {{{milliseconds{5}, ShortWaypoint}}, {}, {{milliseconds{5}, EndOfWaypoints}}};
  EXPECT_EQ(Ack().FirstId(), 35);
  port.Queue({}, Fix);
  EXPECT_EQ(Ack().FirstId(), 12);
  EXPECT_EQ(port.sent, (std::vector<Bytes>{AckOfRecords, AckOfFix, AckOfRecords}));
  EXPECT_LT(clock.now, milliseconds{100});
}

TEST_F(CheckedExchangeTest, ANumberOfRecordsThatComesAgainIsAcknowledgedAgain) {
  answers = {{{milliseconds{900}, FiveRecords}}, {{milliseconds{5}, ShortWaypoint}}};
  EXPECT_EQ(Ack().FirstId(), 35);
  EXPECT_EQ(port.sent, (std::vector<Bytes>{AckOfRecords, AckOfRecords}));
}

TEST_F(CheckedExchangeTest, ASecondRecordOfTheSameBytesIsAnAnswer) {
  answers = {
      {{milliseconds{5}, ShortWaypoint}}, {{milliseconds{5}, ShortWaypoint}}, {{milliseconds{5}, EndOfWaypoints}}};
  EXPECT_EQ(Ack().FirstId(), 35);
  EXPECT_EQ(Ack().FirstId(), 35);
  EXPECT_EQ(Ack().FirstId(), 12);
}

TEST_F(CheckedExchangeTest, AnAckOfAnotherPacketAndOtherFramesAreNoAckOfARecord) {
  answers = {{{milliseconds{5}, Joined({FiveRecords, AckOfCommand, AckOfWaypoint})}}};
  const PacketReply reply = Record();
  ASSERT_EQ(reply.count, 1);
  EXPECT_EQ(reply.FirstId(), PacketId::Ack);
  EXPECT_EQ(PacketData(reply.Slot(1))[0], 35);
}

TEST_F(CheckedExchangeTest, ADamagedAckOfARecordIsAskedForAndCountsWhereItIsNotSentAgain) {
  Bytes spoilt = AckOfWaypoint;
  spoilt[5] = 0x00;
  answers = {{{milliseconds{5}, spoilt}}, {{milliseconds{5}, AckOfWaypoint}}, {{milliseconds{5}, spoilt}}, {}};
  const PacketReply again = Record();
  ASSERT_EQ(again.count, 1);
  EXPECT_FALSE(again.Slot(1).damaged);
  EXPECT_EQ(port.sent.size(), 2U);
  const PacketReply once = Record();
  ASSERT_EQ(once.count, 1);
  EXPECT_EQ(FindAckSlot(once), 1);
  EXPECT_EQ(port.sent.size(), 4U);  // the record itself is not sent again, or it would be there twice
}

// Without its closing DLE the ACK runs into the answer, which starts the frame over.
TEST_F(CheckedExchangeTest, ACommandWhoseAckRanIntoTheAnswerIsSentAgain) {
  answers = {{{milliseconds{5}, Joined({{0x10, 0x06, 0x02, 0x0A, 0x00, 0xEE, 0x03}, FiveRecords})}},
             {{milliseconds{5}, Joined({AckOfCommand, FiveRecords})}}};
  const PacketReply reply = Command();
  ASSERT_EQ(reply.count, 2);
  EXPECT_EQ(FindAckSlot(reply), 1);
  EXPECT_EQ(port.sent, (std::vector<Bytes>{WaypointCommand, WaypointCommand}));
  EXPECT_LT(clock.now, milliseconds{500});
}

TEST_F(CheckedExchangeTest, AnAnswerWhoseAckNeverCameIsAskedForAgain) {
  answers = {{{milliseconds{5}, FiveRecords}}, {{milliseconds{5}, Joined({AckOfCommand, FiveRecords})}}};
  EXPECT_EQ(Command().count, 2);
  EXPECT_EQ(port.sent.size(), 2U);
}

TEST_F(CheckedExchangeTest, AStreamOfDamagedFramesIsAnError) {
  for (int i = 0; i < 600; ++i)
    port.Queue(milliseconds{200} * (i + 1), Joined({{0x10, 0x41}, Bytes(10, 0x33), {0x10, 0x03}}));
  EXPECT_THROW(static_cast<void>(Command()), std::out_of_range);
  EXPECT_LT(clock.now, seconds{2});
}

TEST_F(CheckedExchangeTest, BytesThatKeepComingDoNotKeepACancelledTransferWaiting) {
  for (int i = 0; i < 600; ++i)
    port.Queue(milliseconds{1400} * (i + 1), {0x24});
  loop.on_yield = [this] { stop.aborted = clock.now > seconds{10}; };
  EXPECT_EQ(Ack().count, ReceiveTimeout);
  EXPECT_LT(clock.now, seconds{11});
}

/// A line's bytes, one a millisecond.
std::vector<ScriptedPort::Answer> OneByOne(const Bytes& line) {
  std::vector<ScriptedPort::Answer> bytes;
  for (const std::uint8_t byte : line)
    bytes.push_back({milliseconds{static_cast<int>(bytes.size()) + 1}, {byte}});
  return bytes;
}

// The rest of a burst comes while an ACK of eight bytes is on its way at 9600 baud; the answer follows it.
TEST_F(CheckedExchangeTest, BehindABurstThatGoesOnTheLastFrameIsTheAnswer) {
  answers = {{{milliseconds{5}, ShortWaypoint}}, OneByOne(Joined({ShortWaypoint, EndOfWaypoints}))};
  EXPECT_EQ(Ack().FirstId(), 35);
  EXPECT_EQ(Ack().FirstId(), 12);
}

TEST_F(CheckedExchangeTest, ADamagedFrameAtTheEndOfSuchABurstIsAskedForAgain) {
  answers = {{{milliseconds{5}, ShortWaypoint}},
             OneByOne(Joined({ShortWaypoint, SpoiltWaypoint})),
             {{milliseconds{5}, ShortWaypoint}}};
  EXPECT_EQ(Ack().FirstId(), 35);
  const PacketReply reply = Ack();
  ASSERT_EQ(reply.count, 1);
  EXPECT_FALSE(reply.Slot(1).damaged);
  EXPECT_EQ(port.sent, (std::vector<Bytes>{AckOfRecords, AckOfRecords, NakOfWaypoint}));
}

TEST_F(CheckedExchangeTest, NoiseWithoutEndIsAnError) {
  answers = {{{milliseconds{5}, Bytes(4000, 0x24)}}};
  EXPECT_THROW(static_cast<void>(Ack()), std::out_of_range);
}

TEST_F(CheckedExchangeTest, TheTraceShowsWhatWasSkippedAndWhatWasDamaged) {
  RecordingTrace trace;
  link.SetTrace(&trace);
  answers = {{{milliseconds{5}, Joined({{0x00, 0xFF}, SpoiltWaypoint})}}, {{milliseconds{5}, ShortWaypoint}}};
  EXPECT_EQ(Ack().count, 1);
  EXPECT_EQ(trace.lines, (std::vector<std::string>{
                             "0.000000\tTX\t6\t2\t10 06 02 1B 00 DD 10 03",
                             "0.005000\tRX\t-\t-\t00 FF\t! skipped",
                             "0.005000\tRX\t35\t2\t10 23 02 41 43 58 10 03\t! damaged",
                             "0.107000\tTX\t21\t2\t10 15 02 23 00 C6 10 03",
                             "0.112000\tRX\t35\t2\t10 23 02 41 42 58 10 03",
                         }));
}

/// Whole transfers with the receiver made of software on a line of 9600 baud, in virtual time.
class CheckedTransferTest : public ::testing::Test {
 protected:
  void Start(std::initializer_list<std::string_view> faults, std::optional<HeldContents> contents = {},
             int baud = 9600) {
    DemoReceiverOptions options;
    options.baud = baud;
    options.contents = std::move(contents);
    for (const std::string_view fault : faults)
      ASSERT_EQ(AddFault(options.faults, fault), "");
    port.emplace(std::move(options), clock, [this](nanoseconds time) { clock.Advance(time); });
    garmin.emplace(*port, clock, loop, desktop);
    garmin->SetLinkChoice(LinkChoice::Checked);
    garmin->SetTrace(&trace);
    loop.on_yield = [this] {
      if (loop.yields > 200'000) garmin->Cancel();
    };
  }
  std::int32_t Connect() { return garmin->ConnectDevice("demo").product_id; }
  std::int32_t Download(DataKind kind) { return garmin->Download(data, kind, "demo", TransferMode::Transfer); }
  [[nodiscard]] std::string Ident(int number) const {
    return data.Waypoints().at(static_cast<std::size_t>(number) - 1).ident;
  }

  FakeClock clock;
  FakeEventLoop loop;
  RecordingDesktop desktop;
  RecordingTrace trace;
  DataSet data;
  std::optional<DemoSerialPort> port;
  std::optional<Garmin> garmin;
};

Waypoint WaypointNamed(std::string_view ident) {
  Waypoint waypoint;
  waypoint.ident = ident;
  waypoint.lat_deg = 45;
  waypoint.lon_deg = 135;
  return waypoint;
}

HeldContents NumberedWaypoints(int count) {
  HeldContents contents;
  for (int i = 1; i <= count; ++i) {
    HeldWaypoint waypoint;
    waypoint.ident = "W" + std::to_string(i);
    contents.waypoints.push_back(waypoint);
  }
  return contents;
}

TEST_F(CheckedTransferTest, AWrongChecksumANakNoiseAndSlowBytesLoseNothing) {
  for (const auto& faults : {std::vector<std::string_view>{"bad-checksum=1"},
                             {"bad-checksum=8"},
                             {"nak=1"},
                             {"nak=2"},
                             {"nak=3"},
                             {"garbage"},
                             {"garbage=4"},
                             {"dribble=5"},
                             {"gap=900"},
                             {"overlong=3"},
                             {"bad-checksum=4", "garbage", "nak=3", "dribble=3"}}) {
    data.Clear(DataKind::Waypoint);
    Start({}, NumberedWaypoints(8));
    DemoReceiverOptions options;
    options.contents = NumberedWaypoints(8);
    for (const std::string_view fault : faults)
      ASSERT_EQ(AddFault(options.faults, fault), "");
    port.emplace(std::move(options), clock, [this](nanoseconds time) { clock.Advance(time); });
    SCOPED_TRACE(faults.front());
    ASSERT_GT(Connect(), 0);
    ASSERT_EQ(Download(DataKind::Waypoint), 8);
    for (int i = 1; i <= 8; ++i)
      EXPECT_EQ(Ident(i), "W" + std::to_string(i));
    EXPECT_EQ(garmin->Report().damaged_records, 0);
    EXPECT_FALSE(garmin->Report().data_loss);
    EXPECT_TRUE(desktop.messages.empty());
  }
}

TEST_F(CheckedTransferTest, ARecordThatTheReceiverRefusesIsSentAgain) {
  Start({"nak=4"}, NumberedWaypoints(0));
  for (const auto* ident : {"A", "B", "C"})
    ASSERT_EQ(data.Add(WaypointNamed(ident)), AddResult::Stored);
  ASSERT_GT(Connect(), 0);
  EXPECT_EQ(garmin->Upload(data, DataKind::Waypoint, "demo"), 3);
  EXPECT_EQ(garmin->Report().refused_records, 0);
  data.Clear(DataKind::Waypoint);
  EXPECT_EQ(Download(DataKind::Waypoint), 3);
  EXPECT_EQ(Ident(2), "B");
  EXPECT_EQ(Ident(3), "C");
}

TEST_F(CheckedTransferTest, AReceiverThatRefusesEverythingHasFailedAfterThreeTries) {
  Start({"nak"});
  EXPECT_EQ(Connect(), 0);
  EXPECT_TRUE(garmin->Report().refused);
}

// The frames come faster than an ACK leaves, so that the burst is seen only while the next exchange is under way.
TEST_F(CheckedTransferTest, SixFramesInABurstFailAtTheLinesPaceToo) {
  Start({"burst=6"}, NumberedWaypoints(8));
  ASSERT_GT(Connect(), 0);
  EXPECT_THROW(static_cast<void>(Download(DataKind::Waypoint)), std::out_of_range);
}

TEST_F(CheckedTransferTest, SixFramesInABurstFailOnALineWithoutPace) {
  Start({"burst=6"}, NumberedWaypoints(8), 0);
  ASSERT_GT(Connect(), 0);
  EXPECT_THROW(static_cast<void>(Download(DataKind::Waypoint)), std::out_of_range);
}

TEST_F(CheckedTransferTest, AShorterBurstKeepsTheRecordsInStep) {
  for (const int baud : {9600, 0}) {
    data.Clear(DataKind::Waypoint);
    Start({"burst=4"}, NumberedWaypoints(8), baud);
    ASSERT_GT(Connect(), 0);
    ASSERT_EQ(Download(DataKind::Waypoint), 8) << baud;
    for (int i = 1; i <= 8; ++i)
      EXPECT_EQ(Ident(i), "W" + std::to_string(i)) << baud;
  }
}

// What some receivers send behind their product data: 42 bytes that nobody asked for.
TEST(UnaskedFrames, BehindTheProductDataDisturbNeitherLink) {
  for (const bool checked : {false, true}) {
    for (const int late_ms : {0, 15, 40, 90}) {
      SCOPED_TRACE(late_ms);
      FakeClock clock;
      ScriptedPort port(clock);
      ScriptedReceiver receiver(port);
      FakeEventLoop loop;
      RecordingDesktop desktop;
      DataSet data;
      Garmin garmin(port, clock, loop, desktop);
      garmin.SetLinkChoice(checked ? LinkChoice::Checked : LinkChoice::Plain);
      const auto answer = port.script;
      port.script = [&](const Bytes& wire) {
        auto answers = answer(wire);
        if (wire.at(1) == 254) {
          answers.push_back({answers.back().delay + milliseconds{late_ms}, WireFrame(253, Bytes(42, 0x4C))});
        }
        return answers;
      };
      ASSERT_EQ(data.Add(WaypointNamed("A")), AddResult::Stored);
      ASSERT_EQ(garmin.ConnectDevice("1").product_id, 130);
      EXPECT_EQ(garmin.Upload(data, DataKind::Waypoint, "1"), 1);
      EXPECT_EQ(garmin.Report().refused_records, 0);
      EXPECT_FALSE(garmin.Report().end_refused);
    }
  }
}

TEST_F(CheckedTransferTest, APacketHasLeftWhenItsSendingEnds) {
  Start({});
  const StopFlags stop;
  PacketLink link(*port, clock, loop, stop);
  ASSERT_TRUE(link.OpenPort("demo"));
  link.SendPacket(PacketId::Ack, NumberData(0));
  EXPECT_EQ(port->OutBufferCount(), 0U);
  EXPECT_GE(clock.now, LineByteTime * 8);
  EXPECT_GT(loop.yields, 0);
}

/// Seconds of the frames of a trace on the line, and from the first of them to the port's closing.
struct LineUse {
  double wire_s = 0;
  double taken_s = 0;
};

LineUse UseOf(const std::vector<std::string>& lines) {
  LineUse use;
  double start_s = -1;
  for (const std::string& line : lines) {
    const double time_s = std::stod(line);
    const std::size_t bytes_at = line.rfind('\t') + 1;
    if (line.find("\t--\t") != std::string::npos) {
      if (line.ends_with("port closed")) use.taken_s = time_s - start_s;
      continue;
    }
    if (start_s < 0) start_s = time_s;
    use.wire_s += static_cast<double>((line.size() - bytes_at + 1) / 3) * 10 / 9600;
  }
  return use;
}

TEST_F(CheckedTransferTest, ATransferTakesHardlyLongerThanItsBytesTakeOnTheLine) {
  HeldContents contents;
  contents.track_logs.resize(1);
  contents.track_logs[0].points.resize(1000);
  contents.track_logs[0].points[0].new_trk = true;
  Start({}, contents);
  ASSERT_GT(Connect(), 0);
  trace.lines.clear();
  ASSERT_EQ(Download(DataKind::TrackLog), 1001);
  const LineUse down = UseOf(trace.lines);
  EXPECT_LE(down.taken_s / down.wire_s, 1.02);

  trace.lines.clear();
  ASSERT_EQ(garmin->Upload(data, DataKind::TrackLog, "demo"), 1001);
  const LineUse up = UseOf(trace.lines);
  EXPECT_LE(up.taken_s / up.wire_s, 1.02);
}

}  // namespace
}  // namespace walrim
