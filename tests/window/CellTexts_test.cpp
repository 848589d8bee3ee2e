#include "window/CellTexts.h"

#include <gtest/gtest.h>

namespace walrim {
namespace {

TEST(CellTexts, PositionsHaveTheDigitsThatSayWhereThatIs) {
  EXPECT_EQ(ShownAngle(35.6323000229895, AngleNotation::D), "35.632300");
  EXPECT_EQ(ShownAngle(-0.00000001, AngleNotation::D), "0.000000");
  EXPECT_EQ(ShownAngle(-70.25, AngleNotation::D), "-70.250000");
  EXPECT_EQ(ShownAngle(35.6323000229895, AngleNotation::DMS), "35°37'56.3\"");
  EXPECT_EQ(ShownAngle(139.0, AngleNotation::DMS), "139°00'00.0\"");
  EXPECT_EQ(ShownAngle(59.9999999, AngleNotation::DMS), "60°00'00.0\"");
  EXPECT_EQ(ShownAngle(-33.505, AngleNotation::DMS), "-33°30'18.0\"");
  EXPECT_EQ(ShownAngle(-0.0000001, AngleNotation::DMS), "0°00'00.0\"");
  EXPECT_EQ(ShownAngle(35.6252, AngleNotation::MPS), "35/37/30.7");
  EXPECT_EQ(ShownAngle(1e300, AngleNotation::DMS).find("°"), std::string::npos);
}

TEST(CellTexts, HeightsWaysAndTimesAreShort) {
  EXPECT_EQ(ShownMetres(599.15), "599");
  EXPECT_EQ(ShownMetres(-0.2), "0");
  EXPECT_EQ(ShownMetres(std::nullopt), "");
  EXPECT_EQ(ShownKilometres(12345.6), "12.35");
  EXPECT_EQ(ShownDuration(3723), "1:02:03");
  EXPECT_EQ(ShownDuration(360000), "100:00:00");
  EXPECT_EQ(ShownDuration(std::nullopt), "");
}

}  // namespace
}  // namespace walrim
