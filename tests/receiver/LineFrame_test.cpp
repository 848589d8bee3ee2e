#include "receiver/LineFrame.h"

#include <gtest/gtest.h>

#include "receiver/ReceiverHost.h"

namespace walrim {
namespace {

std::vector<ReceivedFrame> Read(const Bytes& bytes) {
  LineFrameReader reader;
  std::vector<ReceivedFrame> frames;
  for (const std::uint8_t byte : bytes) {
    if (const auto frame = reader.Take(byte)) frames.push_back(*frame);
  }
  return frames;
}

TEST(LineFrame, ProductRequestByHand) {
  EXPECT_EQ(LineFrameBytes({254, {0, 0}}), (Bytes{0x10, 0xFE, 0x02, 0x00, 0x00, 0x00, 0x10, 0x03}));
}

TEST(LineFrame, EmptyDataIsSixBytes) {
  EXPECT_EQ(LineFrameBytes({50, {}}), (Bytes{0x10, 0x32, 0x00, 0xCE, 0x10, 0x03}));
}

TEST(LineFrame, DoublesDleInData) {
  EXPECT_EQ(LineFrameBytes({6, {0x10, 0x03}}), (Bytes{0x10, 0x06, 0x02, 0x10, 0x10, 0x03, 0xE5, 0x10, 0x03}));
}

TEST(LineFrame, DoublesDleAsSize) {
  const Bytes zeros(16, 0);
  EXPECT_EQ(LineFrameBytes({35, zeros}), (Bytes{0x10, 0x23, 0x10, 0x10} + zeros + Bytes{0xCD, 0x10, 0x03}));
}

TEST(LineFrame, DoublesDleAsChecksum) {
  EXPECT_EQ(LineFrameBytes({6, {0xE8, 0x00}}), (Bytes{0x10, 0x06, 0x02, 0xE8, 0x00, 0x10, 0x10, 0x10, 0x03}));
}

TEST(LineFrame, ReadsStuffedSizeDataAndChecksum) {
  const Bytes zeros(16, 0);
  const auto frames = Read(Bytes{0x10, 0x23, 0x10, 0x10} + zeros + Bytes{0xCD, 0x10, 0x03} +
                           Bytes{0x10, 0x06, 0x02, 0x10, 0x10, 0x03, 0xE5, 0x10, 0x03} +
                           Bytes{0x10, 0x06, 0x02, 0xE8, 0x00, 0x10, 0x10, 0x10, 0x03});
  ASSERT_EQ(frames.size(), 3U);
  for (const ReceivedFrame& frame : frames)
    EXPECT_TRUE(frame.intact);
  EXPECT_EQ(frames[0].packet, (LinePacket{35, zeros}));
  EXPECT_EQ(frames[1].packet, (LinePacket{6, {0x10, 0x03}}));
  EXPECT_EQ(frames[2].packet, (LinePacket{6, {0xE8, 0x00}}));
}

TEST(LineFrame, WrongChecksumIsNotIntact) {
  const auto frames = Read({0x10, 0x0A, 0x02, 0x07, 0x00, 0xEE, 0x10, 0x03});
  ASSERT_EQ(frames.size(), 1U);
  EXPECT_FALSE(frames[0].intact);
  EXPECT_EQ(frames[0].packet.id, 10);
}

TEST(LineFrame, WrongSizeIsNotIntact) {
  // The sum holds, but a byte of data is missing.
  const auto frames = Read({0x10, 0x0A, 0x03, 0x07, 0x00, 0xEC, 0x10, 0x03});
  ASSERT_EQ(frames.size(), 1U);
  EXPECT_FALSE(frames[0].intact);
}

TEST(LineFrame, FrameWithoutSizeOrChecksumIsNotIntact) {
  const auto frames = Read({0x10, 0x0A, 0x10, 0x03, 0x10, 0x0A, 0x00, 0x10, 0x03});
  ASSERT_EQ(frames.size(), 2U);
  EXPECT_FALSE(frames[0].intact);
  EXPECT_FALSE(frames[1].intact);
}

TEST(LineFrame, SkipsGarbageBeforeAFrame) {
  const auto frames = Read(Bytes{0x00, 0xFF, 0x41, 0x03} + ProductRequestFrame);
  ASSERT_EQ(frames.size(), 1U);
  EXPECT_TRUE(frames[0].intact);
  EXPECT_EQ(frames[0].packet, (LinePacket{254, {0, 0}}));
}

TEST(LineFrame, SkipsTheTailOfAFrameWhoseBeginningWasMissed) {
  const auto frames = Read(Bytes{0x07, 0x00, 0xED, 0x10, 0x03} + ProductRequestFrame);
  ASSERT_EQ(frames.size(), 1U);
  EXPECT_TRUE(frames[0].intact);
}

TEST(LineFrame, ACutFrameGivesWayToTheNext) {
  const auto frames = Read(Bytes{0x10, 0x0A, 0x02, 0x07} + ProductRequestFrame);
  ASSERT_EQ(frames.size(), 1U);
  EXPECT_TRUE(frames[0].intact);
  EXPECT_EQ(frames[0].packet.id, 254);
}

TEST(LineFrame, OfSeveralDleTheLastBeginsTheFrame) {
  const auto frames = Read(Bytes{0x10, 0x10} + ProductRequestFrame);
  ASSERT_EQ(frames.size(), 1U);
  EXPECT_TRUE(frames[0].intact);
}

TEST(LineFrame, ReadsTheLongestFrameAndRefusesALongerOne) {
  const Bytes data(255, 0x41);
  const auto frames = Read(LineFrameBytes({35, data}));
  ASSERT_EQ(frames.size(), 1U);
  EXPECT_TRUE(frames[0].intact);
  EXPECT_EQ(frames[0].packet.data, data);

  const auto longer = Read(Bytes{0x10, 0x23, 0xC8} + Bytes(100000, 0x41) + Bytes{0x10, 0x03} + ProductRequestFrame);
  ASSERT_EQ(longer.size(), 2U);
  EXPECT_FALSE(longer[0].intact);
  EXPECT_TRUE(longer[1].intact);
}

TEST(LineFrame, EveryByteSpoiledIsNoticedOrNoFrame) {
  const Bytes good{0x10, 0x0A, 0x02, 0x07, 0x00, 0xED, 0x10, 0x03};
  for (std::size_t i = 1; i + 2 < good.size(); ++i) {
    Bytes bad = good;
    bad[i] = static_cast<std::uint8_t>(bad[i] ^ 0x40);
    for (const ReceivedFrame& frame : Read(bad))
      EXPECT_FALSE(frame.intact) << "byte " << i;
  }
}

TEST(LineFrame, SpoiledChecksumOnRequest) {
  EXPECT_EQ(LineFrameBytes({10, {7, 0}}, 1), (Bytes{0x10, 0x0A, 0x02, 0x07, 0x00, 0xEE, 0x10, 0x03}));
}

}  // namespace
}  // namespace walrim
