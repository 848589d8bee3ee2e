#include "text/Columns.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <vector>

namespace walrim {
namespace {

using Columns = std::vector<std::string_view>;

Columns Split(std::string_view line) {
  std::array<std::string_view, MaxColumns> columns;
  const std::size_t count = SplitColumns(line, columns);
  return {columns.begin(), columns.begin() + static_cast<std::ptrdiff_t>(count)};
}

TEST(SplitColumns, CutsAtTabsAndCommas) {
  EXPECT_EQ(Split("WPT\tA , B"), (Columns{"WPT", "A", "B"}));
}

TEST(SplitColumns, AnEmptyLineHasOneEmptyColumn) {
  EXPECT_EQ(Split(""), (Columns{""}));
}

TEST(SplitColumns, ASeparatorAtTheEndClosesAColumnMore) {
  EXPECT_EQ(Split("A,"), (Columns{"A", ""}));
}

TEST(SplitColumns, KnowsNoQuoting) {
  EXPECT_EQ(Split("=\"A,B\"\tC"), (Columns{"=\"A", "B\"", "C"}));
}

TEST(SplitColumns, TrimsBlanksAlone) {
  EXPECT_EQ(Split("  a b  ,\r,  "), (Columns{"a b", "\r", ""}));
}

TEST(SplitColumns, LongLinesAreCutAtTheSamePlaces) {
  for (std::size_t width = 0; width < 40; ++width) {
    const std::string column(width, 'x');
    const std::string line = column + "," + column + "\t" + column + "," + "富" + column;
    const Columns columns = Split(line);
    ASSERT_EQ(columns.size(), 4U);
    EXPECT_EQ(columns[0], column);
    EXPECT_EQ(columns[1], column);
    EXPECT_EQ(columns[2], column);
    EXPECT_EQ(columns[3], "富" + column);
  }
}

TEST(SplitColumns, HasRoomFor256) {
  EXPECT_EQ(Split(std::string(255, ',')).size(), 256U);
  EXPECT_THROW((void)Split(std::string(256, ',')), std::out_of_range);
  EXPECT_THROW((void)Split(std::string(100000, '\t')), std::out_of_range);
}

}  // namespace
}  // namespace walrim
