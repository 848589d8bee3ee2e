#include "doctor/UnaskedBytes.h"

#include <gtest/gtest.h>
#include <string>

#include "doctor/Uart.h"

namespace walrim {
namespace {

using Bytes = std::vector<std::uint8_t>;

const std::string Sentences =
    "$GPRMC,124211,A,3537.9382,N,13916.2003,E,000.0,000.0,081202,006.6,W*67\r\n"
    "$GPGGA,124212,3537.9382,N,13916.2003,E,1,05,2.1,190.2,M,39.1,M,,*4C\r\n";

TEST(UnaskedBytes, TheTestsLineReadsItsOwnSpeed) {
  const Bytes read = ReadAtAnotherSpeed(Sentences, 9600, 9600);
  EXPECT_EQ(std::string(read.begin(), read.end()), Sentences);
}

TEST(UnaskedBytes, TextOfASlowerLineLooksAtThatSpeedFirst) {
  for (const int baud : {4800, 2400, 1200}) {
    const Bytes read = ReadAtAnotherSpeed(Sentences, baud, 9600);
    ASSERT_GT(read.size(), 20U) << baud;
    EXPECT_EQ(KindOfUnasked(read), UnaskedKind::SlowerLine) << baud;
    EXPECT_EQ(SpeedsToTry(read).front(), baud);
  }
}

TEST(UnaskedBytes, HalfSpeedTextIsOfSixteenBytes) {
  const Bytes allowed{0x00, 0x06, 0x18, 0x1E, 0x60, 0x66, 0x78, 0x7E, 0x80, 0x86, 0x98, 0x9E, 0xE0, 0xE6, 0xF8, 0xFE};
  for (int byte = 0; byte < 256; ++byte) {
    const Bytes repeated(FewestUnasked, static_cast<std::uint8_t>(byte));
    const bool expected = std::find(allowed.begin(), allowed.end(), byte) != allowed.end();
    EXPECT_EQ(KindOfUnasked(repeated) == UnaskedKind::SlowerLine, expected) << byte;
  }
}

TEST(UnaskedBytes, FasterTextIsTriedAtItsSpeedToo) {
  const Bytes read = ReadAtAnotherSpeed(Sentences, 19200, 9600);
  EXPECT_EQ(SpeedsToTry(read), (std::vector<int>{4800, 19200}));
}

TEST(UnaskedBytes, TellsTextAndCorrectionsApart) {
  EXPECT_EQ(KindOfUnasked(Bytes(Sentences.begin(), Sentences.end())), UnaskedKind::Text);
  EXPECT_EQ(KindOfUnasked(Bytes{0x66, 0x59, 0x7F, 0x40, 0x55, 0x6A, 0x41, 0x5E}), UnaskedKind::Rtcm);
  EXPECT_EQ(KindOfUnasked(Bytes{0x10, 0xFF, 0x03, 0x91, 0xA5, 0x5A, 0x7E, 0x01}), UnaskedKind::Other);
  EXPECT_EQ(KindOfUnasked(Bytes{0x41, 0x42}), UnaskedKind::None);
  EXPECT_TRUE(SpeedsToTry({}).empty());
}

}  // namespace
}  // namespace walrim
