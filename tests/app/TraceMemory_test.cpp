#include "app/TraceMemory.h"

#include <gtest/gtest.h>

#include "device/Frame.h"

namespace walrim {
namespace {

using std::chrono::milliseconds;

TEST(TraceMemory, KeepsFramesMarksAndNotesInOrder) {
  TraceMemory memory;
  EXPECT_TRUE(memory.Empty());
  memory.Note(milliseconds(1), "port closed");
  EXPECT_FALSE(memory.Empty());
  memory.Frame({FrameDirection::Received, milliseconds(2), std::vector<std::uint8_t>{0x20}, SkippedMark});
  memory.Frame({FrameDirection::Sent, milliseconds(3), FrameOnWire(6, NumberData(255)), {}});
  EXPECT_EQ(memory.Text(false),
            "# seconds\tdirection\tid\tsize\tbytes\n"
            "0.001000\t--\tport closed\n"
            "0.002000\tRX\t-\t-\t20\t! skipped\n"
            "0.003000\tTX\t6\t2\t10 06 02 FF 00 F9 10 03\n");
}

TEST(TraceMemory, HidesPositionsWhereWanted) {
  TraceMemory memory;
  memory.Frame({FrameDirection::Received, {}, FrameOnWire(34, std::vector<std::uint8_t>{1, 2, 3, 4, 5, 6, 7, 8}), {}});
  EXPECT_NE(memory.Text(false).find("01 02 03 04 05 06 07 08"), std::string::npos);
  EXPECT_NE(memory.Text(true).find("\tRX\t34\t8\t10 22 08 00 00 00 00 00 00 00 00 D6 10 03\n"), std::string::npos)
      << memory.Text(true);
}

TEST(TraceMemory, TheOldestGoWhereTheyBecomeTooMany) {
  TraceMemory memory;
  memory.Note(milliseconds(1), "the first");
  const std::vector<std::uint8_t> bytes(TraceMemory::MostBytes / 8);
  for (int i = 0; i < 20; ++i)
    memory.Frame({FrameDirection::Received, milliseconds(i), bytes, {}});
  const std::string text = memory.Text(false);
  EXPECT_EQ(text.find("the first"), std::string::npos);
  EXPECT_NE(text.find("0.019000\tRX"), std::string::npos);
  // Seven of an eighth each; three characters a byte.
  EXPECT_LT(text.size(), 8 * 3 * bytes.size());
  EXPECT_GT(text.size(), 6 * 3 * bytes.size());
}

}  // namespace
}  // namespace walrim
