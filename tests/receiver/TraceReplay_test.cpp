#include "receiver/TraceReplay.h"

#include <gtest/gtest.h>

#include "receiver/ReceiverHost.h"

namespace walrim {
namespace {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;
using std::chrono::seconds;

constexpr std::string_view Identification =
    "# seconds\tdirection\tid\tsize\tbytes\n"
    "0.001000\t--\tport /dev/ttyUSB0 open, 9600,N,8,1\n"
    "1.000000\tTX\t254\t2\t10 FE 02 00 00 00 10 03\n"
    "1.100000\tRX\t6\t2\t10 06 02 FE 00 FA 10 03\n"
    "1.100000\tRX\t255\t6\t10 FF 06 4D 00 D6 00 58 00 80 10 03\n"
    "1.110000\t--\tchecked link\n"
    "1.200000\tTX\t6\t2\t10 06 02 FF 00 F9 10 03\n"
    "1.300000\tTX\t10\t2\t10 0A 02 07 00 ED 10 03\n"
    "1.340000\tRX\t-\t-\t20 20\t! skipped\n"
    "1.350000\tRX\t6\t2\t10 06 02 0A 00 EF 10 03\t! checksum\n";

const Bytes AckOfProductRequest{0x10, 0x06, 0x02, 0xFE, 0x00, 0xFA, 0x10, 0x03};
const Bytes Product{0x10, 0xFF, 0x06, 0x4D, 0x00, 0xD6, 0x00, 0x58, 0x00, 0x80, 0x10, 0x03};
const Bytes AckOfProduct{0x10, 0x06, 0x02, 0xFF, 0x00, 0xF9, 0x10, 0x03};
const Bytes WaypointsCommand{0x10, 0x0A, 0x02, 0x07, 0x00, 0xED, 0x10, 0x03};

TraceReplay Replay(std::string_view trace) {
  TraceReading reading = ReadTrace(trace);
  EXPECT_EQ(reading.problem, "");
  return TraceReplay(std::move(reading.steps));
}

TEST(TraceReplay, ABurstComesHalfWayToWhenItHadSettled) {
  TraceReplay replay = Replay(Identification);
  EXPECT_FALSE(replay.NextDue());
  replay.Receive(ProductRequestFrame, seconds(7));
  EXPECT_EQ(replay.NextDue(), seconds(7) + milliseconds(50));
  EXPECT_TRUE(replay.Send(seconds(7) + milliseconds(49)).empty());
  EXPECT_EQ(replay.Send(seconds(7) + milliseconds(50)), AckOfProductRequest);
  EXPECT_EQ(replay.Send(seconds(7) + milliseconds(100)), Product);
}

TEST(TraceReplay, OnTheCheckedLinkFramesEndWhenTheyDid) {
  TraceReplay replay = Replay(Identification);
  replay.Receive(ProductRequestFrame, seconds(1));
  static_cast<void>(replay.Send(seconds(2)));
  replay.Receive(AckOfProduct, seconds(2));
  EXPECT_FALSE(replay.NextDue());
  replay.Receive(WaypointsCommand, seconds(3));
  // The command's eight bytes take 8.3 ms; the two bytes from there on the rest of 40.
  EXPECT_GT(replay.NextDue(), seconds(3) + milliseconds(24));
  EXPECT_LT(replay.NextDue(), seconds(3) + milliseconds(25));
  EXPECT_EQ(replay.Send(seconds(3) + milliseconds(40)), (Bytes{0x20, 0x20}));
  EXPECT_EQ(replay.Send(seconds(3) + milliseconds(49)).size(), 7U);
  EXPECT_EQ(replay.Send(seconds(3) + milliseconds(50)), Bytes{0x03});
  EXPECT_FALSE(replay.LineClosed());
  EXPECT_EQ(replay.Problem(), "");
}

TEST(TraceReplay, AFrameThatBeganWhileTheHostSentBeginsThen) {
  // At the line's pace its eight bytes began 1.67 ms behind the packet's beginning.
  TraceReplay replay = Replay(
      "0\tTX\t6\t2\t10 06 02 FF 00 F9 10 03\n"
      "0\t--\tchecked link\n"
      "0\t--\tport /dev/ttyUSB0 open, 9600,N,8,1\n"
      "0.010\tRX\t6\t2\t10 06 02 0A 00 EE 10 03\n");
  replay.Receive(AckOfProduct, seconds(1));
  EXPECT_GT(replay.NextDue(), seconds(1) + std::chrono::microseconds(2700));
  EXPECT_LT(replay.NextDue(), seconds(1) + std::chrono::microseconds(2720));
}

TEST(TraceReplay, PacketsMayComeInPiecesAndTogether) {
  TraceReplay replay = Replay(Identification);
  for (const std::uint8_t byte : ProductRequestFrame)
    replay.Receive(Bytes{byte}, seconds(1));
  replay.Receive(AckOfProduct + WaypointsCommand, seconds(1));
  EXPECT_EQ(replay.Problem(), "");
  EXPECT_EQ(replay.Send(seconds(2)).size(), 8U + 12 + 2 + 8);
}

TEST(TraceReplay, TheFirstPacketThatDiffersIsNamed) {
  TraceReplay replay = Replay(Identification);
  replay.Receive(ProductRequestFrame, seconds(1));
  replay.Receive(WaypointsCommand, seconds(2));
  EXPECT_TRUE(replay.LineClosed());
  EXPECT_EQ(replay.Problem(),
            "packet 2 (line 7): expected id 6, 10 06 02 FF 00 F9 10 03; came id 10, 10 0A 02 07 00 ED 10 03");
  EXPECT_TRUE(replay.Send(seconds(3)).empty());
}

TEST(TraceReplay, APacketBehindTheEndOfTheTraceIsNamed) {
  TraceReplay replay = Replay("0\tTX\t6\t2\t10 06 02 FF 00 F9 10 03\r\n");
  replay.Receive(AckOfProduct, seconds(1));
  EXPECT_FALSE(replay.LineClosed());
  replay.Receive(AckOfProduct, seconds(2));
  EXPECT_EQ(replay.Problem(), "packet 2: nothing expected, the trace is over; came id 6, 10 06 02 FF 00 F9 10 03");
}

TEST(TraceReplay, WhatIsNoPacketIsNotWaitedFor) {
  TraceReplay replay = Replay(Identification);
  replay.Receive(Bytes(1000, 0x55), seconds(1));
  EXPECT_NE(replay.Problem().find("packet 1 (line 3)"), std::string::npos) << replay.Problem();
}

TEST(TraceReplay, TheLineGoesWhereItWent) {
  TraceReplay replay = Replay("0\tTX\t6\t2\t10 06 02 FF 00 F9 10 03\n0.5\t--\tline lost\n");
  replay.Receive(AckOfProduct, seconds(1));
  EXPECT_TRUE(replay.Send(seconds(1) + milliseconds(499)).empty());
  EXPECT_FALSE(replay.LineClosed());
  static_cast<void>(replay.Send(seconds(1) + milliseconds(500)));
  EXPECT_TRUE(replay.LineClosed());
  EXPECT_EQ(replay.Problem(), "");
}

TEST(TraceReplay, APortThatWasGoneGoesBehindTheLastFrame) {
  TraceReplay replay = Replay(
      "0\tTX\t6\t2\t10 06 02 FF 00 F9 10 03\n"
      "0.2\tRX\t6\t2\t10 06 02 0A 00 EE 10 03\n"
      "0.5\t--\tport /dev/ttyUSB0 cannot be opened\n");
  replay.Receive(AckOfProduct, seconds(1));
  EXPECT_EQ(replay.NextDue(), seconds(1) + milliseconds(100));
  EXPECT_FALSE(replay.LineClosed());
  EXPECT_EQ(replay.Send(seconds(1) + milliseconds(100)).size(), 8U);
  EXPECT_TRUE(replay.LineClosed());
}

TEST(TraceReplay, MalformedTracesAreRefusedWithTheLine) {
  const std::pair<std::string, std::string> cases[] = {
      {"", "no packet was sent in it"},
      {"# nothing\n\n", "no packet was sent in it"},
      {"0.1\tRX\t6\t2\t10 06 02 FF 00 F9 10 03\n", "no packet was sent in it"},
      {"hello\n", "line 1: no time in front"},
      {"-1\tTX\t6\t2\t10 06 02\n", "line 1: no time in front"},
      {"inf\tTX\t6\t2\t10 06 02\n", "line 1: no time in front"},
      {"1e300\tTX\t6\t2\t10 06 02\n", "line 1: no time in front"},
      {"0.1\n", "line 1: neither TX nor RX nor --"},
      {"#\n0.1\tTY\t6\t2\t10 06 02\n", "line 2: neither TX nor RX nor --"},
      {"0.1\tTX\t6\t2\n", "line 1: no bytes in hexadecimal digits"},
      {"0.1\tTX\t6\t2\t10 6 02\n", "line 1: no bytes in hexadecimal digits"},
      {"0.1\tTX\t6\t2\t10  06\n", "line 1: no bytes in hexadecimal digits"},
      {"0.1\tTX\t6\t2\t10 0G 02\n", "line 1: no bytes in hexadecimal digits"},
      {"0.1\tTX\t6\t2\t10 +6 02\n", "line 1: no bytes in hexadecimal digits"},
      {"0.1\tTX\t7\t2\t10 06 02\n", "line 1: id or size differ from the bytes"},
      {"0.1\tTX\t6\t3\t10 06 02\n", "line 1: id or size differ from the bytes"},
      {"0.1\tTX\t6\t3\t10 06\n", "line 1: id or size differ from the bytes"},
      {"0.1\tTX\t6\t2\t10 06 02\tchecksum\n", "line 1: something behind the bytes that is no mark"}};
  for (const auto& [trace, problem] : cases)
    EXPECT_EQ(ReadTrace(trace).problem, problem) << trace;
}

}  // namespace
}  // namespace walrim
