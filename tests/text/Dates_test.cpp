#include "text/Dates.h"

#include <gtest/gtest.h>

namespace walrim {
namespace {

TEST(Dates, TheEpochIsZero) {
  EXPECT_EQ(SecondsSinceGarminEpoch({1989, 12, 31, 0, 0, 0}), 0);
  EXPECT_EQ(SecondsSinceGarminEpoch({1990, 1, 1, 0, 0, 1}), 86401);
  EXPECT_EQ(SecondsSinceGarminEpoch({1989, 12, 30, 23, 59, 59}), -1);
  EXPECT_EQ(SecondsSinceGarminEpoch({2000, 3, 1, 0, 0, 0}), 3713LL * 86400);
}

TEST(Dates, EveryDayOfFourCenturiesReadsBack) {
  for (std::int64_t day = -150000; day < 150000; ++day) {
    const CivilTime time = CivilFromGarminSeconds(day * 86400 + 3723);
    ASSERT_EQ(SecondsSinceGarminEpoch(time), day * 86400 + 3723);
    ASSERT_EQ(ParseDateTime(DateTimeText(time)), time);
  }
}

TEST(Dates, TextHasFixedWidths) {
  EXPECT_EQ(DateTimeText({2001, 2, 3, 4, 5, 6}), "2001/02/03 04:05:06");
  EXPECT_EQ(DateTimeText({12345, 2, 3, 4, 5, 6}), "12345/02/03 04:05:06");
}

TEST(Dates, LocalTimeIsAheadByTheOffset) {
  EXPECT_EQ(DateTimeText(LocalTimeOfGarminTime(0, 9)), "1989/12/31 09:00:00");
  EXPECT_EQ(DateTimeText(LocalTimeOfGarminTime(0, -5)), "1989/12/30 19:00:00");
  EXPECT_EQ(DateTimeText(LocalTimeOfGarminTime(2147483647, 0)), "2058/01/18 03:14:07");
}

TEST(Dates, UnknownTimesAreTheEpoch) {
  EXPECT_EQ(DateTimeText(LocalTimeOfGarminTime(std::nullopt, 9)), "1989/12/31 09:00:00");
  EXPECT_EQ(DateTimeText(LocalTimeOfGarminTime(4294967289, 0)), "2126/02/06 06:28:09");
}

TEST(KnownGarminTime, LeavesOutWhatSaysThatItIsNotKnown) {
  EXPECT_EQ(KnownGarminTime(1), 1U);
  EXPECT_EQ(KnownGarminTime(4294967289), 4294967289U);
  for (const std::int64_t unknown : {-1LL, 0LL, 4294967290LL, 4294967295LL, 1LL << 40})
    EXPECT_EQ(KnownGarminTime(unknown), std::nullopt) << unknown;
}

TEST(ParseDateTime, ReadsWhatSpreadsheetsRewrite) {
  EXPECT_EQ(ParseDateTime("2001/2/3 4:05"), (CivilTime{2001, 2, 3, 4, 5, 0}));
  EXPECT_EQ(ParseDateTime("2001-02-03 04:05:06"), (CivilTime{2001, 2, 3, 4, 5, 6}));
  EXPECT_EQ(ParseDateTime("  2001/12/31  "), (CivilTime{2001, 12, 31, 0, 0, 0}));
  EXPECT_EQ(ParseDateTime("2001/1/1  1:2:3"), (CivilTime{2001, 1, 1, 1, 2, 3}));
  double fraction = 0;
  EXPECT_EQ(ParseDateTime("2001/01/01 00:00:01.75", &fraction), (CivilTime{2001, 1, 1, 0, 0, 1}));
  EXPECT_EQ(fraction, 0.75);
}

TEST(ParseDateTime, RefusesWhatIsNoDate) {
  for (const char* text : {"",
                           " ",
                           "abc",
                           "2001",
                           "2001/2",
                           "2001/13/1",
                           "2001/0/1",
                           "2001/2/29",
                           "1900/2/29",
                           "2001/4/31",
                           "2001/1/0",
                           "01/02/03",
                           "12001/1/1",
                           "0000/1/1",
                           "2001/1-1",
                           "2001/1/1x",
                           "2001/1/1 24:00",
                           "2001/1/1 1",
                           "2001/1/1 1:60",
                           "2001/1/1 1:00:60",
                           "2001/1/1 1:00:00.",
                           "2001/1/1 1:00:",
                           "2001/1/1 1:00:00 x",
                           "2001/123/1",
                           "2001.1.1"}) {
    EXPECT_FALSE(ParseDateTime(text)) << text;
  }
  EXPECT_TRUE(ParseDateTime("2000/2/29"));
}

TEST(GarminTimeOfText, ShiftsTheEpochByTheOffset) {
  EXPECT_EQ(GarminTimeOfText("1989/12/31 09:00:00", 9), std::nullopt) << "the epoch is what no time is written as";
  EXPECT_EQ(GarminTimeOfText("1989/12/31 09:00:01", 9), 1U);
  EXPECT_EQ(GarminTimeOfText("1989/12/30 19:00:02", -5), 2U);
  EXPECT_EQ(GarminTimeOfText("2126/02/06 06:28:09", 0), 4294967289U);
}

TEST(GarminTimeOfText, RoundsHalfUp) {
  EXPECT_EQ(GarminTimeOfText("1990/01/01 00:00:00.5", 0), 86401U);
  EXPECT_EQ(GarminTimeOfText("1990/01/01 00:00:00.49", 0), 86400U);
}

TEST(GarminTimeOfText, StaysWithinTheReceiversRange) {
  EXPECT_EQ(GarminTimeOfText("1950/01/01", 0), std::nullopt);
  EXPECT_EQ(GarminTimeOfText("9999/12/31", 0), std::nullopt);
  EXPECT_EQ(GarminTimeOfText("no date", 9), std::nullopt);
}

TEST(GarminTimeOfText, ReadsBackWhatWasWritten) {
  for (std::int64_t seconds = 1; seconds < UnknownGarminTime; seconds += 12345677) {
    const auto time = static_cast<std::uint32_t>(seconds);
    for (const int offset : {-12, 0, 9, 14}) {
      ASSERT_EQ(GarminTimeOfText(DateTimeText(LocalTimeOfGarminTime(time, offset)), offset), time);
    }
  }
}

}  // namespace
}  // namespace walrim
