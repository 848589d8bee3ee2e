#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

#include "geo/GeneralLib.h"

namespace walrim {
namespace {

using Columns = std::vector<std::string_view>;

TEST(SplitColumns, CutsAtTabsAndCommas) {
  EXPECT_EQ(SplitColumns("WPT\tA , B"), (Columns{"WPT", "A", "B"}));
}

TEST(SplitColumns, AnEmptyLineHasOneEmptyColumn) {
  EXPECT_EQ(SplitColumns(""), (Columns{""}));
}

TEST(SplitColumns, ASeparatorAtTheEndClosesAColumnMore) {
  EXPECT_EQ(SplitColumns("A,"), (Columns{"A", ""}));
}

TEST(SplitColumns, KnowsNoQuoting) {
  EXPECT_EQ(SplitColumns("=\"A,B\"\tC"), (Columns{"=\"A", "B\"", "C"}));
}

TEST(SplitColumns, TrimsBlanksAlone) {
  EXPECT_EQ(SplitColumns("  a b  ,\r,  "), (Columns{"a b", "\r", ""}));
}

TEST(SplitColumns, LongLinesAreCutAtTheSamePlaces) {
  for (std::size_t width = 0; width < 40; ++width) {
    const std::string column(width, 'x');
    const std::string line = column + "," + column + "\t" + column + "," + "富" + column;
    const Columns columns = SplitColumns(line);
    ASSERT_EQ(columns.size(), 4U);
    EXPECT_EQ(columns[0], column);
    EXPECT_EQ(columns[1], column);
    EXPECT_EQ(columns[2], column);
    EXPECT_EQ(columns[3], "富" + column);
  }
}

TEST(SplitColumns, HasRoomFor256) {
  EXPECT_EQ(SplitColumns(std::string(255, ',')).size(), 256U);
  EXPECT_THROW((void)SplitColumns(std::string(256, ',')), std::out_of_range);
  EXPECT_THROW((void)SplitColumns(std::string(100000, '\t')), std::out_of_range);
}

ListPair Pair(std::string_view list, std::size_t k) {
  ListPair pair{"old key", "old value", -1};
  GetListPair(list, k, pair);
  return pair;
}

TEST(GetListPair, PicksThePair) {
  const ListPair pair = Pair("a,1,b,2,c,3", 2);
  EXPECT_EQ(pair.key, "b");
  EXPECT_EQ(pair.value, "2");
  EXPECT_EQ(pair.count, 3);
}

TEST(GetListPair, AnEmptyListLeavesThePair) {
  const ListPair pair = Pair("", 1);
  EXPECT_EQ(pair.key, "old key");
  EXPECT_EQ(pair.value, "old value");
  EXPECT_EQ(pair.count, 0);
}

TEST(GetListPair, AnOddListHasAFraction) {
  const ListPair pair = Pair("a,1,b", 2);
  EXPECT_EQ(pair.key, "b");
  EXPECT_EQ(pair.value, "old value");
  EXPECT_EQ(pair.count, 1.5);
}

TEST(GetListPair, ItemsThatAreNotThereLeaveThePair) {
  for (const std::size_t k : {std::size_t{0}, std::size_t{3}, ~std::size_t{0}, (~std::size_t{0} >> 1) + 2}) {
    const ListPair pair = Pair("a,1,b,2", k);
    EXPECT_EQ(pair.key, "old key") << k;
    EXPECT_EQ(pair.value, "old value") << k;
    EXPECT_EQ(pair.count, 2) << k;
  }
}

TEST(GetListPair, LineFeedsAreSkippedAndMarksKept) {
  const ListPair pair = Pair("a\nb,c&d!", 1);
  EXPECT_EQ(pair.key, "ab");
  EXPECT_EQ(pair.value, "&cd!");
  EXPECT_EQ(Pair("x&y&,1", 1).key, "&&xy");
}

TEST(GetListPair, HasRoomFor5120Items) {
  EXPECT_EQ(Pair(std::string(5119, ','), 1).count, 2560);
  ListPair pair{"old key", "old value", -1};
  EXPECT_THROW(GetListPair(std::string(5120, ','), 1, pair), std::out_of_range);
  EXPECT_EQ(pair.key, "old key");
  EXPECT_EQ(pair.count, -1);
}

}  // namespace
}  // namespace walrim
