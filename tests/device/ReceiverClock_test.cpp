// The receiver's clock against bytes written by hand, both ways, and what asking for it says on the wire.
#include "device/ReceiverClock.h"

#include <gtest/gtest.h>

#include "device/types/DateTime.h"
#include "support/DeviceWorld.h"

namespace walrim {
namespace {

// 2026/11/22 17:45:59: 2026 is 07EAh.
const CivilTime Moment{2026, 11, 22, 17, 45, 59};
const Bytes MomentBytes{0x0B, 0x16, 0xEA, 0x07, 0x11, 0x00, 0x2D, 0x3B};

// 0A+02+05 = 11h, checksum EF. 0E+08+0B+16+EA+07+11+00+2D+3B = 1A1h, checksum 5F.
const Bytes TransferTime{0x10, 0x0A, 0x02, 0x05, 0x00, 0xEF, 0x10, 0x03};
const Bytes MomentFrame{0x10, 0x0E, 0x08, 0x0B, 0x16, 0xEA, 0x07, 0x11, 0x00, 0x2D, 0x3B, 0x5F, 0x10, 0x03};
// 06+02+0E = 16h, checksum EA.
const Bytes AckOfMoment{0x10, 0x06, 0x02, 0x0E, 0x00, 0xEA, 0x10, 0x03};

TEST(DateTime, BothWays) {
  EXPECT_EQ(DecodeDateTime(MomentBytes), Moment);
  EXPECT_EQ(EncodeDateTime(Moment), MomentBytes);
}

TEST(DateTime, OnlyDatesThatThereAre) {
  const auto with = [](std::size_t at, std::uint8_t value) {
    Bytes bytes = MomentBytes;
    bytes[at] = value;
    return DecodeDateTime(bytes);
  };
  EXPECT_FALSE(DecodeDateTime(std::span(MomentBytes).first(7)));
  EXPECT_FALSE(DecodeDateTime({}));
  EXPECT_FALSE(with(0, 0));
  EXPECT_FALSE(with(0, 13));
  EXPECT_FALSE(with(1, 31));  // of November
  EXPECT_FALSE(with(4, 24));
  EXPECT_FALSE(with(6, 60));
  EXPECT_FALSE(with(7, 60));
  EXPECT_EQ(with(1, 30)->day, 30);
}

class ReceiverClockTest : public ::testing::TestWithParam<LinkChoice> {
 protected:
  ReceiverClockTest() { world.Meet("eTrex Software Version 2.14", GetParam()); }

  DeviceWorld world;
};

TEST_P(ReceiverClockTest, IsAsked) {
  world.receiver.clock = MomentBytes;
  EXPECT_EQ(world.garmin.AskClock("1"), Moment);
  EXPECT_EQ(world.port.sent, (std::vector<Bytes>{TransferTime, AckOfMoment}));
  EXPECT_FALSE(world.port.PortOpen());
}

TEST_P(ReceiverClockTest, IsNotWaitedForLongerThanTwoSeconds) {
  for (const bool acknowledges : {true, false}) {
    world.receiver.tells_clock = false;
    world.receiver.delay = std::chrono::milliseconds(acknowledges ? 1400 : 5000);
    const auto before = world.clock.now;
    EXPECT_EQ(world.garmin.AskClock("1"), std::nullopt);
    EXPECT_LE(world.clock.now - before, std::chrono::milliseconds(2100));
    EXPECT_TRUE(world.desktop.messages.empty());
  }
}

TEST_P(ReceiverClockTest, OfAPortThatIsGoneNothingIsSaid) {
  world.port.open_result.problem = PortProblem::Missing;
  EXPECT_EQ(world.garmin.AskClock("1"), std::nullopt);
  EXPECT_TRUE(world.desktop.messages.empty());
}

TEST_P(ReceiverClockTest, ADateThatThereIsNotIsNone) {
  world.receiver.clock = Bytes(8, 0);
  EXPECT_EQ(world.garmin.AskClock("1"), std::nullopt);
}

TEST_P(ReceiverClockTest, IsSet) {
  EXPECT_TRUE(world.garmin.SetClock("1", Moment));
  EXPECT_EQ(world.port.sent, std::vector<Bytes>{MomentFrame});
  world.receiver.acknowledges = false;
  EXPECT_FALSE(world.garmin.SetClock("1", Moment));
}

INSTANTIATE_TEST_SUITE_P(Links, ReceiverClockTest, ::testing::Values(LinkChoice::Plain, LinkChoice::Checked));

}  // namespace
}  // namespace walrim
