#include "app/SouthAndWest.h"

#include <gtest/gtest.h>

#include "formats/StandardFile.h"

namespace walrim {
namespace {

constexpr DataKinds Every{true, true, true};

int CountOf(std::string_view text, const DataKinds& kinds = Every) {
  DataSet data;
  LineSource lines(text, TextEncoding::Utf8);
  EXPECT_EQ(ReadStandardFile(lines, data, {}).skipped.count, 0);
  return CountSouthAndWest(data, kinds);
}

TEST(SouthAndWest, NorthAndEastIsNotCounted) {
  EXPECT_EQ(CountOf("WPT\tD\tWGS84\tA\t35\t139\n"), 0);
}

TEST(SouthAndWest, EachKindsPositionsAreCounted) {
  const std::string_view text =
      "WPT\tD\tWGS84\tA\t-35\t139\n"
      "RTH\t1\tR\t2\n"
      "RTP\tD\tWGS84\tB\t35\t-70\nRTP\tD\tWGS84\tC\t35\t70\n"
      "TRH\t2\tTRUE\t255\tT\n"
      "TRP\tD\tWGS84\t-1\t-1\t2002/11/15 09:00:00\tTRUE\nTRP\tD\tWGS84\t-2\t1\t2002/11/15 09:00:10\tFALSE\n";
  EXPECT_EQ(CountOf(text), 4);
  EXPECT_EQ(CountOf(text, {true, false, false}), 1);
  EXPECT_EQ(CountOf(text, {false, true, false}), 1);
  EXPECT_EQ(CountOf(text, {false, false, true}), 2);
}

}  // namespace
}  // namespace walrim
