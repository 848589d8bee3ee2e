#include "data/PagedTable.h"

#include <gtest/gtest.h>
#include <utility>

namespace walrim {
namespace {

struct Entry {
  int value = 7;
};

TEST(PagedTable, AnEntryIsWhatItWasAtFirstUntilItIsWritten) {
  PagedTable<Entry> table(250);
  EXPECT_EQ(std::as_const(table)[249].value, 7);
  table[120].value = 1;
  EXPECT_EQ(std::as_const(table)[120].value, 1);
  EXPECT_EQ(std::as_const(table)[121].value, 7);
}

TEST(PagedTable, ResetTakesTheEntriesNamedAndNoOther) {
  PagedTable<Entry> table(250);
  for (std::size_t i = 0; i < table.size(); ++i)
    table[i].value = 1;
  table.Reset(50, 220);
  EXPECT_EQ(table[49].value, 1);
  EXPECT_EQ(table[50].value, 7);
  EXPECT_EQ(table[150].value, 7);
  EXPECT_EQ(table[219].value, 7);
  EXPECT_EQ(table[220].value, 1);
  table.Reset();
  EXPECT_EQ(table[0].value, 7);
  EXPECT_EQ(table[249].value, 7);
}

TEST(PagedTable, TakeMovesTheEntriesNamedAndNoOther) {
  PagedTable<Entry> from(250);
  PagedTable<Entry> to(250);
  from[49].value = 1;
  from[60].value = 2;
  from[150].value = 3;
  to[49].value = 4;
  to[70].value = 5;
  to[151].value = 6;
  to.Take(from, 50, 220);
  EXPECT_EQ(to[49].value, 4);
  EXPECT_EQ(to[60].value, 2);
  EXPECT_EQ(to[70].value, 7);
  EXPECT_EQ(to[150].value, 3);
  EXPECT_EQ(to[151].value, 7);
  EXPECT_EQ(from[49].value, 1);
  EXPECT_EQ(from[60].value, 7);
  EXPECT_EQ(from[150].value, 7);
}

TEST(PagedTable, AnIndexBeyondItsSizeIsAnError) {
  PagedTable<Entry> table(250);
  EXPECT_THROW(static_cast<void>(table[250]), std::out_of_range);
  EXPECT_THROW(static_cast<void>(std::as_const(table).at(250)), std::out_of_range);
}

}  // namespace
}  // namespace walrim
