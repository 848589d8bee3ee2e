#include "receiver/DemoSerialPort.h"

#include <gtest/gtest.h>

#include "receiver/ReceiverHost.h"

namespace walrim {
namespace {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;

class HandClock : public Clock {
 public:
  nanoseconds Monotonic() const override { return now; }
  std::int64_t UtcSeconds() const override { return 0; }
  CivilTime LocalTime() const override { return {}; }

  nanoseconds now{std::chrono::seconds(1)};
};

class DemoSerialPortTest : public testing::Test {
 protected:
  DemoSerialPort Port(std::string_view fault = {}, int baud = 9600) {
    DemoReceiverOptions options;
    options.baud = baud;
    if (!fault.empty()) {
      EXPECT_EQ(AddFault(options.faults, fault), "");
    }
    return {options, clock, [this](nanoseconds time) {
              ++sleeps;
              clock.now += time;
            }};
  }

  // Sends bytes and takes what comes within a second.
  std::vector<SeenFrame> Exchange(DemoSerialPort& port, const Bytes& bytes) {
    for (const std::uint8_t byte : bytes)
      port.Output(byte);
    Bytes came;
    for (const nanoseconds end = clock.now + std::chrono::seconds(1); clock.now < end;) {
      port.Wait(milliseconds(2));
      while (port.InBufferCount() > 0)
        came.push_back(port.Input().value());
    }
    return FramesIn(came);
  }

  HandClock clock;
  int sleeps = 0;
};

TEST_F(DemoSerialPortTest, OpensByItsNames) {
  DemoSerialPort port = Port();
  EXPECT_FALSE(port.PortOpen());
  EXPECT_TRUE(port.Open("demo", 9600).Ok());
  EXPECT_TRUE(port.PortOpen());
  EXPECT_EQ(DemoModelNames().size(), 9U);
  for (const std::string& name : DemoModelNames()) {
    ASSERT_TRUE(port.Open("demo:" + name, 9600).Ok()) << name;
    const auto frames = Exchange(port, ProductRequestFrame);
    ASSERT_EQ(frames.size(), 2U);
    const std::string texts(frames[1].data.begin() + 4, frames[1].data.end());
    EXPECT_TRUE(texts.starts_with(name + " ")) << texts;
  }
  port.Close();
  EXPECT_FALSE(port.PortOpen());
}

TEST_F(DemoSerialPortTest, OtherNamesAreMissingPorts) {
  DemoSerialPort port = Port();
  for (const auto* name : {"1", "demo:", "demo:GPS 99", "demos", "DEMO", "/dev/ttyUSB0", ""}) {
    EXPECT_EQ(port.Open(name, 9600).problem, PortProblem::Missing) << name;
    EXPECT_FALSE(port.PortOpen());
  }
}

TEST_F(DemoSerialPortTest, AFailedOpenLeavesThePortClosed) {
  DemoSerialPort port = Port();
  ASSERT_TRUE(port.Open("demo", 9600).Ok());
  EXPECT_FALSE(port.Open("demo:nothing", 9600).Ok());
  EXPECT_FALSE(port.PortOpen());
}

TEST_F(DemoSerialPortTest, TellsWhatAReceiverHoldsOnceItsPortWasOpened) {
  DemoSerialPort port = Port();
  EXPECT_EQ(port.MemoryOf("GPS 48"), nullptr);
  ASSERT_TRUE(port.Open("demo:GPS 48", 9600).Ok());
  ASSERT_NE(port.MemoryOf("GPS 48"), nullptr);
  EXPECT_EQ(port.MemoryOf("GPS 48")->waypoints.size(), 19U);
  EXPECT_EQ(port.MemoryOf("eTrex"), nullptr);
}

TEST_F(DemoSerialPortTest, AClosedPortIsSilentAndWaitsOutItsTime) {
  DemoSerialPort port = Port();
  port.Output(0x10);
  EXPECT_EQ(port.InBufferCount(), 0U);
  EXPECT_EQ(port.OutBufferCount(), 0U);
  EXPECT_FALSE(port.Input());
  EXPECT_FALSE(port.LineLost());
  const nanoseconds start = clock.now;
  port.Wait(milliseconds(5));
  EXPECT_EQ(clock.now - start, milliseconds(5));
}

TEST_F(DemoSerialPortTest, BytesLeaveAtTheLinesPace) {
  DemoSerialPort port = Port();
  ASSERT_TRUE(port.Open("demo", 9600).Ok());
  const nanoseconds start = clock.now;
  for (const std::uint8_t byte : ProductRequestFrame)
    port.Output(byte);
  EXPECT_EQ(port.OutBufferCount(), 8U);
  port.Wait(milliseconds(2));
  EXPECT_EQ(port.OutBufferCount(), 7U);
  EXPECT_EQ(clock.now - start, nanoseconds(1041666));
  while (port.OutBufferCount() > 0)
    port.Wait(milliseconds(2));
  EXPECT_EQ(clock.now - start, 8 * nanoseconds(1041666));
  EXPECT_EQ(port.InBufferCount(), 0U);
  port.Wait(milliseconds(2));
  EXPECT_EQ(port.InBufferCount(), 1U);
  EXPECT_EQ(clock.now - start, 9 * nanoseconds(1041666));
}

TEST_F(DemoSerialPortTest, ClearOutBufferDropsWhatHasNotLeft) {
  DemoSerialPort port = Port();
  ASSERT_TRUE(port.Open("demo", 9600).Ok());
  for (const std::uint8_t byte : ProductRequestFrame)
    port.Output(byte);
  port.ClearOutBuffer();
  EXPECT_EQ(port.OutBufferCount(), 1U) << "the byte on the line";
  EXPECT_TRUE(Exchange(port, {}).empty());
  EXPECT_EQ(Exchange(port, ProductRequestFrame).size(), 2U);
}

TEST_F(DemoSerialPortTest, ClearInBufferDropsWhatHasCome) {
  DemoSerialPort port = Port({}, 0);
  ASSERT_TRUE(port.Open("demo", 9600).Ok());
  for (const std::uint8_t byte : ProductRequestFrame)
    port.Output(byte);
  EXPECT_GT(port.InBufferCount(), 20U);
  port.ClearInBuffer();
  EXPECT_EQ(port.InBufferCount(), 0U);
  EXPECT_FALSE(port.Input());
}

TEST_F(DemoSerialPortTest, WaitReturnsAtOnceWhenMoreHasComeThanWasTold) {
  DemoSerialPort port = Port({}, 0);
  ASSERT_TRUE(port.Open("demo", 9600).Ok());
  for (const std::uint8_t byte : ProductRequestFrame)
    port.Output(byte);
  const nanoseconds start = clock.now;
  port.Wait(milliseconds(100));
  EXPECT_EQ(clock.now, start);
  EXPECT_GT(port.InBufferCount(), 0U);
  port.Wait(milliseconds(100));
  EXPECT_EQ(clock.now, start + milliseconds(100));
}

TEST_F(DemoSerialPortTest, WaitingDoesNotSpin) {
  DemoSerialPort port = Port();
  ASSERT_TRUE(port.Open("demo", 9600).Ok());
  port.Wait(milliseconds(1000));
  EXPECT_EQ(sleeps, 1);
}

TEST_F(DemoSerialPortTest, KeepsItsMemoryWhenClosed) {
  DemoSerialPort port = Port({}, 0);
  ASSERT_TRUE(port.Open("demo:eMap", 9600).Ok());
  for (const Bytes& frame : {HostFrame(27, {1, 0}), HostFrame(35, {1, 2, 3}), HostFrame(12, {7, 0})}) {
    EXPECT_EQ(Exchange(port, frame).size(), 1U);
  }
  ASSERT_TRUE(port.Open("demo:eTrex", 9600).Ok());
  EXPECT_NE(Exchange(port, HostFrame(10, {7, 0})).at(1), Sound(27, {1, 0})) << "another receiver";
  port.Close();
  ASSERT_TRUE(port.Open("demo:eMap", 9600).Ok());
  EXPECT_EQ(Exchange(port, HostFrame(10, {7, 0})).at(1), Sound(27, {1, 0}));
  EXPECT_EQ(Exchange(port, HostFrame(6, {27, 0})).at(0), Sound(35, {1, 2, 3}));
}

TEST_F(DemoSerialPortTest, WhatComesWhileClosedIsLost) {
  DemoSerialPort port = Port();
  ASSERT_TRUE(port.Open("demo", 9600).Ok());
  for (const std::uint8_t byte : ProductRequestFrame)
    port.Output(byte);
  while (port.OutBufferCount() > 0)
    port.Wait(milliseconds(2));
  port.Close();
  clock.now += std::chrono::seconds(1);
  ASSERT_TRUE(port.Open("demo", 9600).Ok());
  EXPECT_EQ(port.InBufferCount(), 0U);
}

TEST_F(DemoSerialPortTest, HoldsTheGivenContents) {
  DemoReceiverOptions options;
  options.contents = HeldContents{};
  options.contents->waypoints.resize(2);
  options.model = "GPS 48";
  DemoSerialPort port(options, clock, [this](nanoseconds time) { clock.now += time; });
  ASSERT_TRUE(port.Open("demo", 9600).Ok());
  EXPECT_EQ(Exchange(port, HostFrame(10, {7, 0})).at(1), Sound(27, {2, 0}));
}

TEST_F(DemoSerialPortTest, APulledCableLosesTheLine) {
  DemoSerialPort port = Port("unplug-after=1");
  ASSERT_TRUE(port.Open("demo", 9600).Ok());
  EXPECT_FALSE(port.LineLost());
  EXPECT_EQ(Exchange(port, ProductRequestFrame).size(), 1U);
  EXPECT_TRUE(port.LineLost());
  EXPECT_EQ(port.OutBufferCount(), 0U);
  EXPECT_TRUE(Exchange(port, ProductRequestFrame).empty());
  EXPECT_EQ(port.OutBufferCount(), 0U) << "a lost line swallows what is written";
  EXPECT_EQ(port.Open("demo", 9600).problem, PortProblem::Missing);
}

TEST_F(DemoSerialPortTest, AClockThatStandsStillIsNotWaitedForForEver) {
  DemoSerialPort port({}, clock, [](nanoseconds) {});
  ASSERT_TRUE(port.Open("demo", 9600).Ok());
  port.Wait(milliseconds(10));
  EXPECT_EQ(port.InBufferCount(), 0U);
}

}  // namespace
}  // namespace walrim
