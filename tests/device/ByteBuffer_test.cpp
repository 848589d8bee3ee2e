#include "device/ByteBuffer.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <vector>

namespace walrim {
namespace {

std::vector<int> BytesOf(const ByteBuffer& buffer) {
  return {buffer.View().begin(), buffer.View().end()};
}

ByteBuffer Made(std::initializer_list<int> bytes) {
  ByteBuffer buffer;
  for (const int byte : bytes)
    buffer[static_cast<std::size_t>(buffer.Size++)] = static_cast<std::uint8_t>(byte);
  return buffer;
}

TEST(ByteBuffer, IntegerMinusOneIsTwoBytesFF) {
  EXPECT_EQ(BytesOf(IntegerToBuffer(-1)), (std::vector<int>{0xFF, 0xFF}));
  EXPECT_EQ(IntegerFromBytes(Made({0xFF, 0xFF})), -1);
}

TEST(ByteBuffer, IntegersAreLowByteFirst) {
  EXPECT_EQ(BytesOf(IntegerToBuffer(0x1234)), (std::vector<int>{0x34, 0x12}));
  EXPECT_EQ(IntegerFromBytes(Made({0x00, 0x80})), -32768);
  EXPECT_THROW(static_cast<void>(IntegerToBuffer(32768)), std::overflow_error);
  EXPECT_THROW(static_cast<void>(IntegerToBuffer(-32769)), std::overflow_error);
}

TEST(ByteBuffer, DWordOfFourFFIsTheLargestUnsigned) {
  EXPECT_EQ(DWordFromBytes(Made({0xFF, 0xFF, 0xFF, 0xFF})), 4294967295.0);
  EXPECT_EQ(BytesOf(DWordToBuffer(4294967295.0)), (std::vector<int>{0xFF, 0xFF, 0xFF, 0xFF}));
}

TEST(ByteBuffer, PositionIsTwoSemicircleValues) {
  // 35.0 * 2^31 / 180 = 417566264.88..., 135.0 * 2^31 / 180 = 1610612736
  EXPECT_EQ(BytesOf(PositionToBuffer(35.0, 135.0)), (std::vector<int>{0x39, 0x8E, 0xE3, 0x18, 0x00, 0x00, 0x00, 0x60}));
  EXPECT_EQ(LongFromBytes(PositionToBuffer(35.0, 135.0)), 417566265);
}

TEST(ByteBuffer, PositionsDecodeExactly) {
  const Position position = PositionFromBytes(Made({0, 0, 0, 0x40, 0, 0, 0, 0x80}));
  EXPECT_EQ(position.lat_deg, 90.0);    // 2^30 semicircles
  EXPECT_EQ(position.lon_deg, -180.0);  // -2^31 semicircles
}

TEST(ByteBuffer, PlusOneHundredAndEightyDegreesDoNotFit) {
  EXPECT_THROW(static_cast<void>(PositionToBuffer(0, 180.0)), std::overflow_error);
  EXPECT_EQ(LongFromBytes(SemicirclesToBuffer(-180.0)), -2147483647 - 1);
}

TEST(ByteBuffer, SemicirclesRoundTiesToEven) {
  const double half = 180.0 / 4294967296.0;  // half a semicircle
  EXPECT_EQ(LongFromBytes(SemicirclesToBuffer(half)), 0);
  EXPECT_EQ(LongFromBytes(SemicirclesToBuffer(3 * half)), 2);
  EXPECT_EQ(LongFromBytes(SemicirclesToBuffer(-half)), 0);
}

TEST(ByteBuffer, StringKeepsZeroCharacters) {
  EXPECT_EQ(StringFromBytes(Made({0x41, 0x00})), std::string("A\0", 2));
}

TEST(ByteBuffer, StringOfDoubleByteCharacterIsLeadThenTrail) {
  EXPECT_EQ(BytesOf(StringToBuffer("山A")), (std::vector<int>{0x8E, 0x52, 0x41}));
  EXPECT_EQ(StringFromBytes(Made({0x8E, 0x52, 0x41})), "山A");
}

TEST(ByteBuffer, StringReplacesWhatTheCodePageLacks) {
  EXPECT_EQ(BytesOf(StringToBuffer("é!")), (std::vector<int>{'?', '!'}));
}

TEST(ByteBuffer, BytesAreReducedModulo256AndNeverNegative) {
  EXPECT_EQ(BytesOf(ByteToBuffer(256 + 7)), std::vector<int>{7});
  EXPECT_THROW(static_cast<void>(ByteToBuffer(-1)), std::overflow_error);
}

TEST(ByteBuffer, BooleansAre255And0AndReadAsNonZero) {
  EXPECT_EQ(BytesOf(BooleanToBuffer(true)), std::vector<int>{255});
  EXPECT_EQ(BytesOf(BooleanToBuffer(false)), std::vector<int>{0});
  EXPECT_TRUE(BooleanFromBytes(Made({1})));
  EXPECT_FALSE(BooleanFromBytes(Made({0})));
}

TEST(ByteBuffer, WordsAndDWordsAreReducedModuloTheirRange) {
  EXPECT_EQ(BytesOf(WordToBuffer(65536.0 + 0x0102)), (std::vector<int>{0x02, 0x01}));
  EXPECT_EQ(BytesOf(DWordToBuffer(4294967296.0 + 1)), (std::vector<int>{1, 0, 0, 0}));
  EXPECT_EQ(WordFromBytes(Made({0xFF, 0xFF})), 65535.0);
}

TEST(ByteBuffer, NegativeWordsAndDWordsComeOutInTwosComplement) {
  EXPECT_EQ(BytesOf(WordToBuffer(-1)), (std::vector<int>{0xFF, 0xFF}));
  EXPECT_EQ(BytesOf(WordToBuffer(-256)), (std::vector<int>{0x00, 0xFF}));
  EXPECT_EQ(BytesOf(DWordToBuffer(-2)), (std::vector<int>{0xFE, 0xFF, 0xFF, 0xFF}));
  EXPECT_THROW(static_cast<void>(DWordToBuffer(-3e9)), std::overflow_error);
}

TEST(ByteBuffer, LongsAreTwosComplementOfTheFloor) {
  EXPECT_EQ(BytesOf(LongToBuffer(-2)), (std::vector<int>{0xFE, 0xFF, 0xFF, 0xFF}));
  EXPECT_EQ(LongFromBytes(LongToBuffer(-1.5)), -2);
  EXPECT_THROW(static_cast<void>(LongToBuffer(2147483648.0)), std::overflow_error);
}

TEST(ByteBuffer, SinglesAreIeeeBytes) {
  EXPECT_EQ(BytesOf(SingleToBuffer(1.0F)), (std::vector<int>{0x00, 0x00, 0x80, 0x3F}));
  EXPECT_EQ(BytesOf(SingleToBuffer(1.0e25F)), (std::vector<int>{0x51, 0x59, 0x04, 0x69}));
  EXPECT_EQ(SingleFromBytes(Made({0x00, 0x00, 0x00, 0xC0})), -2.0F);
}

TEST(ByteBuffer, SubAndAppendKeepWithinTheBuffer) {
  ByteBuffer buffer = Made({1, 2, 3});
  AppendBuffer(buffer, 5, Made({9}));
  EXPECT_EQ(BytesOf(buffer), (std::vector<int>{1, 2, 3, 0, 0, 9}));
  AppendBuffer(buffer, 0, Made({7}));  // inside: the size stays
  EXPECT_EQ(buffer.Size, 6);
  EXPECT_EQ(BytesOf(SubBuffer(buffer, 1, 2)), (std::vector<int>{2, 3}));
  EXPECT_THROW(static_cast<void>(SubBuffer(buffer, 255, 2)), std::out_of_range);
  EXPECT_THROW(AppendBuffer(buffer, 256, Made({1})), std::out_of_range);
  EXPECT_THROW(static_cast<void>(buffer[256]), std::out_of_range);
}

TEST(ByteBuffer, ClearLeavesTheSize) {
  ByteBuffer buffer = Made({1, 2});
  ClearBuffer(buffer);
  EXPECT_EQ(BytesOf(buffer), (std::vector<int>{0, 0}));
}

}  // namespace
}  // namespace walrim
