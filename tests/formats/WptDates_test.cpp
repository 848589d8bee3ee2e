#include "formats/WptDates.h"

#include <array>
#include <gtest/gtest.h>
#include <utility>

#include "text/Scan.h"

namespace walrim {
namespace {

TEST(WptDates, FieldsHaveTheirDigits) {
  std::string text;
  AppendWptMoment(text, {2002, 1, 2, 3, 4, 5}, ',');
  EXPECT_EQ(text, "01/02/2002,03:04:05");
}

TEST(WptDates, AStampIsRebuiltInTheStandardFilesForm) {
  EXPECT_EQ(StandardMoment("11/15/2002", "14:05:12"), "2002/11/15 14:05:12");
  EXPECT_EQ(StandardMoment("1/2/2002", "1:02"), "2002/1/2 1:02");
  EXPECT_EQ(StandardMoment("2002/11/15", "14:05:12"), "2002/11/15 14:05:12");
  EXPECT_EQ(StandardMoment("", ""), " ");
  EXPECT_FALSE(ParseWptMoment("13/45/2002", "14:05:12"));
  EXPECT_FALSE(ParseWptMoment("", ""));
  EXPECT_EQ(ParseWptMoment("02/29/2004", "23:59:59"), (CivilTime{2004, 2, 29, 23, 59, 59}));
}

TEST(WptDates, TheEpochOfAnyZoneIsNoTime) {
  const auto somewhere = [](const CivilTime& local) { return IsEpochSomewhere(SecondsSinceGarminEpoch(local)); };
  EXPECT_TRUE(somewhere({1989, 12, 31, 0, 0, 0}));
  EXPECT_TRUE(somewhere({1989, 12, 31, 9, 0, 0}));
  EXPECT_TRUE(somewhere({1989, 12, 30, 19, 0, 0}));
  EXPECT_FALSE(somewhere({1989, 12, 31, 9, 0, 1}));
  EXPECT_FALSE(somewhere({1990, 1, 2, 0, 0, 0}));
}

TEST(CreationStamp, IsWrittenWithAnEnglishMonth) {
  EXPECT_EQ(CreationStamp({2002, 11, 15, 14, 5, 12}), "CRTD 14:05 15-Nov-02");
  EXPECT_EQ(CreationStamp({1999, 4, 1, 0, 9, 0}), "CRTD 00:09 01-Apr-99");
}

TEST(CreationStamp, IsReadByItsFixedPlaces) {
  const auto stamp = FindCreationStamp("summit CRTD 14:05 15-NOV-02 hut");
  ASSERT_TRUE(stamp);
  EXPECT_EQ(stamp->at, 7U);
  EXPECT_EQ(stamp->moment, (CivilTime{2002, 11, 15, 14, 5, 0}));
}

TEST(CreationStamp, YearsBelowFiftyAreOfThisCentury) {
  EXPECT_EQ(FindCreationStamp("CRTD 14:05 15-NOV-49")->moment.year, 2049);
  EXPECT_EQ(FindCreationStamp("CRTD 14:05 15-NOV-50")->moment.year, 1950);
}

TEST(CreationStamp, MonthsAreReadByTheTableAndAsOurOwnStampsWriteThem) {
  constexpr std::array<std::pair<const char*, int>, 15> months{{{"JAN", 1},
                                                                {"FEB", 2},
                                                                {"MAR", 3},
                                                                {"APL", 4},
                                                                {"APR", 4},
                                                                {"MAY", 5},
                                                                {"JUN", 6},
                                                                {"JLY", 7},
                                                                {"JUL", 7},
                                                                {"AUG", 8},
                                                                {"SEP", 9},
                                                                {"OCT", 10},
                                                                {"NOV", 11},
                                                                {"DEC", 12},
                                                                {"Dec", 12}}};
  for (const auto& [name, month] : months) {
    const auto stamp = FindCreationStamp("CRTD 14:05 15-" + std::string(name) + "-02");
    ASSERT_TRUE(stamp) << name;
    EXPECT_EQ(stamp->moment.month, month) << name;
  }
}

TEST(CreationStamp, EveryMonthThatIsWrittenIsRead) {
  for (int month = 1; month <= 12; ++month) {
    const CivilTime moment{2003, month, 9, 23, 59, 0};
    EXPECT_EQ(FindCreationStamp(CreationStamp(moment))->moment, moment);
    EXPECT_EQ(FindCreationStamp(UpperCase(CreationStamp(moment)))->moment, moment);
  }
}

TEST(CreationStamp, WhatIsNoneIsNotRead) {
  for (const char* comment :
       {"", "CRTD", "CRTD 14:05 15-NOV-0", "CRTD 14:05 15-ANF-02", "CRTD 14:05 31-FEB-02", "CRTD 24:05 15-NOV-02",
        "CRTD 1x:05 15-NOV-02", "CRTE 14:05 15-NOV-02", "CRTD 14:05 15-\xE6\x9C\x88-02"}) {
    EXPECT_FALSE(FindCreationStamp(comment)) << comment;
    EXPECT_EQ(WithShiftedStamp(comment, 5), comment);
  }
}

TEST(CreationStamp, IsShiftedAndPutInCapitalsWhereItStands) {
  EXPECT_EQ(WithShiftedStamp("a CRTD 23:05 31-Dec-99 b", 9), "a CRTD 08:05 01-JAN-00 b");
  EXPECT_EQ(WithShiftedStamp("a CRTD 23:05 31-Dec-99 b", 0), "a CRTD 23:05 31-DEC-99 b");
}

}  // namespace
}  // namespace walrim
