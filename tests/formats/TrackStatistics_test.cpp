#include "formats/TrackStatistics.h"

#include <gtest/gtest.h>
#include <vector>

namespace walrim {
namespace {

TEST(ThousandthsText, HasUpToThreeDecimalsAndNoNeedlessZeros) {
  EXPECT_EQ(ThousandthsText(0), "0");
  EXPECT_EQ(ThousandthsText(0.0004), "0");
  EXPECT_EQ(ThousandthsText(0.0005), ".001");
  EXPECT_EQ(ThousandthsText(0.5), ".5");
  EXPECT_EQ(ThousandthsText(4), "4");
  EXPECT_EQ(ThousandthsText(1234.0625), "1234.063");
  EXPECT_EQ(ThousandthsText(10.01), "10.01");
}

TEST(LogStatistics, LongWalksHaveMoreThanTwoDigitsOfHours) {
  const std::vector<LoggedPoint> points{{0, 0}, {100 * 3600 + 61, 200}};
  EXPECT_EQ(LogStatistics(points),
            " Start[12/31/1989 00:00:00] End[01/04/1990 04:01:01] Total:100:01:01 2tps 200km 2km/hr");
}

TEST(LogStatistics, WithoutTimeThatPassedThereIsNoSpeed) {
  EXPECT_EQ(LogStatistics(std::vector<LoggedPoint>{{3600, 0}, {3600, 1.5}}),
            " Start[12/31/1989 01:00:00] End[12/31/1989 01:00:00] Total:00:00:00 2tps 1.5km ");
  EXPECT_EQ(LogStatistics(std::vector<LoggedPoint>{{3600, 0}}),
            " Start[12/31/1989 01:00:00] End[12/31/1989 01:00:00] Total:00:00:00 1tps 0km ");
}

TEST(LogStatistics, TimeThatRunsBackwardsIsNoElapsedTime) {
  EXPECT_EQ(LogStatistics(std::vector<LoggedPoint>{{3600, 0}, {3599, 1.5}}),
            " Start[12/31/1989 01:00:00] End[12/31/1989 00:59:59] Total:2tps 1.5km ");
}

TEST(IntervalText, HasWhatItsTimesAllow) {
  EXPECT_EQ(IntervalText({3600, 0}, {3630, 0.5}), " Intv. 00:00:30 .5km 60km/hr");
  EXPECT_EQ(IntervalText({3600, 0}, {3600, 0.5}), " Intv. 00:00:00 .5km ");
  EXPECT_EQ(IntervalText({3600, 0}, {3599, 0.5}), " Intv. .5km ");
  EXPECT_EQ(IntervalText({3600, 0}, {std::nullopt, 0.5}), " Intv. .5km ");
  EXPECT_EQ(IntervalText({std::nullopt, 0}, {3600, 0.5}), " Intv. .5km ");
}

TEST(LogStatistics, EndsWithoutATimeAreLeftOut) {
  const std::vector<LoggedPoint> points{{std::nullopt, 0}, {3600, 1.5}};
  EXPECT_EQ(LogStatistics(points), " End[12/31/1989 01:00:00] Total:2tps 1.5km ");
  EXPECT_EQ(LogStatistics({}), "");
}

}  // namespace
}  // namespace walrim
