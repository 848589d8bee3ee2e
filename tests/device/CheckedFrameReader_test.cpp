#include "device/CheckedFrameReader.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <optional>
#include <random>
#include <stdexcept>

#include "receiver/LineFrame.h"
#include "support/Fakes.h"

namespace walrim {
namespace {

using Found = CheckedFrameReader::Found;

// Two data bytes 41 42: 23+02+41+42 = A8, checksum 58.
const Bytes ShortWaypoint{0x10, 0x23, 0x02, 0x41, 0x42, 0x58, 0x10, 0x03};

class CheckedFrameReaderTest : public ::testing::Test {
 protected:
  /// Takes bytes; the frames that they end, whole or damaged.
  std::vector<Frame> FramesOf(const Bytes& bytes) {
    std::vector<Frame> frames;
    for (const std::uint8_t byte : bytes) {
      const Found found = reader.Take(byte);
      if (found == Found::Nothing) continue;
      frames.push_back(reader.Last());
      EXPECT_EQ(frames.back().damaged, found == Found::DamagedFrame);
    }
    return frames;
  }
  static Bytes DataOf(const Frame& frame) {
    const auto data = PacketData(frame);
    return {data.begin(), data.end()};
  }
  void ExpectOne(const Bytes& line, int id, const Bytes& data) {
    const auto frames = FramesOf(line);
    ASSERT_EQ(frames.size(), 1U);
    EXPECT_FALSE(frames[0].damaged);
    EXPECT_EQ(frames[0].Id(), id);
    EXPECT_EQ(frames[0].size, static_cast<int>(data.size()) + 6);
    EXPECT_EQ(DataOf(frames[0]), data);
    EXPECT_FALSE(reader.Pending());
  }
  void ExpectDamaged(const Bytes& line, int id) {
    const auto frames = FramesOf(line);
    ASSERT_EQ(frames.size(), 1U);
    EXPECT_TRUE(frames[0].damaged);
    EXPECT_EQ(frames[0].Id(), id);
  }

  CheckedFrameReader reader;
};

TEST_F(CheckedFrameReaderTest, AFrameIsFoundAtItsLastByteAndNotBefore) {
  for (std::size_t i = 0; i + 1 < ShortWaypoint.size(); ++i) {
    EXPECT_EQ(reader.Take(ShortWaypoint[i]), Found::Nothing) << i;
    EXPECT_TRUE(reader.Pending());
  }
  EXPECT_EQ(reader.Take(0x03), Found::WholeFrame);
  EXPECT_EQ(DataOf(reader.Last()), (Bytes{0x41, 0x42}));
}

// 10 03 as data: 23+02+10+03 = 38, checksum C8.
TEST_F(CheckedFrameReaderTest, DataOf10hThen03hDoesNotCutTheFrame) {
  ExpectOne({0x10, 0x23, 0x02, 0x10, 0x10, 0x03, 0xC8, 0x10, 0x03}, 0x23, {0x10, 0x03});
}

// Sixteen zero bytes with id D0: D0+10 = E0, checksum 20; and with id E0: E0+10 = F0, checksum 10.
TEST_F(CheckedFrameReaderTest, ASizeAndAChecksumOf10hAreReadOnce) {
  Bytes size_only{0x10, 0xD0, 0x10, 0x10};
  Bytes both{0x10, 0xE0, 0x10, 0x10};
  for (Bytes* line : {&size_only, &both})
    line->insert(line->end(), 16, 0x00);
  size_only.insert(size_only.end(), {0x20, 0x10, 0x03});
  both.insert(both.end(), {0x10, 0x10, 0x10, 0x03});
  ExpectOne(size_only, 0xD0, Bytes(16, 0));
  ExpectOne(both, 0xE0, Bytes(16, 0));
}

TEST_F(CheckedFrameReaderTest, AnEmptyFrameIsWhole) {
  ExpectOne({0x10, 0x0C, 0x00, 0xF4, 0x10, 0x03}, 0x0C, {});
}

// 255 bytes of 10h: 22h + FFh + FF0h = 1111h, checksum EF.
TEST_F(CheckedFrameReaderTest, TwoHundredFiftyFiveDoubledBytesFit) {
  Bytes line{0x10, 0x22, 0xFF};
  line.insert(line.end(), 510, 0x10);
  line.insert(line.end(), {0xEF, 0x10, 0x03});
  ExpectOne(line, 0x22, Bytes(255, 0x10));
}

TEST_F(CheckedFrameReaderTest, BytesBeforeADleAreSkipped) {
  Bytes line{0x00, 0xFF, 0x5A, 0x03};
  line.insert(line.end(), ShortWaypoint.begin(), ShortWaypoint.end());
  ExpectOne(line, 0x23, {0x41, 0x42});
  EXPECT_EQ(reader.Skipped(), 4U);
  EXPECT_EQ(reader.Raw().size(), line.size());
}

TEST_F(CheckedFrameReaderTest, ADleThatIsNotDoubledStartsTheFrameOver) {
  Bytes line{0x10, 0x42, 0x07, 0x01};
  line.insert(line.end(), ShortWaypoint.begin(), ShortWaypoint.end());
  ExpectOne(line, 0x23, {0x41, 0x42});
  EXPECT_EQ(reader.Skipped(), 4U);
}

TEST_F(CheckedFrameReaderTest, NoiseOfDlesBeforeAFrameIsSkipped) {
  Bytes line{0x10, 0x10, 0x10};
  line.insert(line.end(), ShortWaypoint.begin(), ShortWaypoint.end());
  ExpectOne(line, 0x23, {0x41, 0x42});
}

TEST_F(CheckedFrameReaderTest, AWrongChecksumIsDamage) {
  ExpectDamaged({0x10, 0x23, 0x02, 0x41, 0x42, 0x59, 0x10, 0x03}, 0x23);
}

TEST_F(CheckedFrameReaderTest, ALostOrAnAddedByteIsDamage) {
  ExpectDamaged({0x10, 0x23, 0x02, 0x42, 0x58, 0x10, 0x03}, 0x23);
  ExpectDamaged({0x10, 0x23, 0x02, 0x41, 0x41, 0x42, 0x58, 0x10, 0x03}, 0x23);
}

TEST_F(CheckedFrameReaderTest, AnEndWithoutItsBeginningIsDamage) {
  ExpectDamaged({0x02, 0x41, 0x42, 0x58, 0x10, 0x03}, 0);
}

TEST_F(CheckedFrameReaderTest, AFrameTooLongIsDamageAndTheNextOneIsFound) {
  Bytes line{0x10, 0x23, 0xC8};
  line.insert(line.end(), 900, 0x55);
  line.insert(line.end(), {0x10, 0x03});
  ExpectDamaged(line, 0x23);
  ExpectOne(ShortWaypoint, 0x23, {0x41, 0x42});
}

TEST_F(CheckedFrameReaderTest, EndlessNoiseIsAnError) {
  for (std::size_t i = 0; i < CheckedFrameReader::MostPending; ++i)
    EXPECT_EQ(reader.Take(0xAA), Found::Nothing);
  EXPECT_THROW(static_cast<void>(reader.Take(0xAA)), std::out_of_range);
}

TEST_F(CheckedFrameReaderTest, EveryChangedBitOfAFrameIsNoticed) {
  for (std::size_t i = 1; i + 2 < ShortWaypoint.size(); ++i) {
    for (int bit = 0; bit < 8; ++bit) {
      Bytes line = ShortWaypoint;
      line[i] = static_cast<std::uint8_t>(line[i] ^ (1U << bit));
      line.insert(line.end(), ShortWaypoint.begin(), ShortWaypoint.end());
      reader = {};
      const std::vector<Frame> frames = FramesOf(line);
      ASSERT_GE(frames.size(), 2U) << i << " " << bit;
      EXPECT_FALSE(frames.back().damaged) << i << " " << bit;
      for (std::size_t k = 0; k + 1 < frames.size(); ++k)
        EXPECT_TRUE(frames[k].damaged) << i << " " << bit;
    }
  }
}

// Records of random length and content with 10h and 03h in abundance, written by the receiver's own hand.
TEST_F(CheckedFrameReaderTest, NoneOfAHundredThousandRandomRecordsIsDamaged) {
  constexpr int Records = 100'000;
  std::mt19937 random(20021115);
  const auto any_byte = [&] { return static_cast<std::uint8_t>(random() & 0xFF); };
  const auto likely_byte = [&]() -> std::uint8_t {
    const unsigned choice = random() % 8;
    return choice < 3 ? 0x10 : choice < 6 ? 0x03 : any_byte();
  };
  for (int i = 0; i < Records; ++i) {
    LinePacket packet{static_cast<std::uint8_t>(random() % 2 == 0 ? 35 : 34), Bytes(random() % 256)};
    for (std::uint8_t& byte : packet.data)
      byte = likely_byte();
    std::optional<Frame> found;
    for (const std::uint8_t byte : LineFrameBytes(packet)) {
      ASSERT_FALSE(found) << "record " << i << " ended early";
      const Found now = reader.Take(byte);
      ASSERT_NE(now, Found::DamagedFrame) << "record " << i;
      if (now == Found::WholeFrame) found = reader.Last();
    }
    ASSERT_TRUE(found) << "record " << i << " did not end";
    ASSERT_EQ(found->Id(), packet.id);
    ASSERT_EQ(found->size, static_cast<int>(packet.data.size()) + 6);
    ASSERT_TRUE(std::equal(packet.data.begin(), packet.data.end(), found->bytes.begin() + 3)) << "record " << i;
  }
}

}  // namespace
}  // namespace walrim
