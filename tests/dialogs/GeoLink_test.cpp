#include "dialogs/GeoLink.h"

#include <gtest/gtest.h>
#include <limits>

namespace walrim {
namespace {

TEST(GeoLink, IsThePositionInDecimalDegrees) {
  EXPECT_EQ(GeoLink({35.6252, 139.2437, {}}), "geo:35.6252,139.2437");
  EXPECT_EQ(GeoLink({-33.5, -70.25, {}}), "geo:-33.5,-70.25");
  EXPECT_EQ(GeoLink({35, 140, {}}), "geo:35,140");
  EXPECT_EQ(GeoLink({90, -180, {}}), "geo:90,-180");
}

TEST(GeoLink, HasNoExponentNoUselessDigitsAndNoNegativeZero) {
  EXPECT_EQ(GeoLink({0.00001, -0.00001, {}}), "geo:0.00001,-0.00001");
  EXPECT_EQ(GeoLink({1e-12, -1e-12, {}}), "geo:0,0");
  EXPECT_EQ(GeoLink({35 + 1.0 / 3, 139 + 2.0 / 3, {}}), "geo:35.33333333,139.66666667");
}

TEST(GeoLink, HasTheHeightWhereItIsKnownAndOneThatCanBe) {
  EXPECT_EQ(GeoLink({35.6252, 139.2437, 599.0}), "geo:35.6252,139.2437,599");
  EXPECT_EQ(GeoLink({35.6252, 139.2437, -4.25}), "geo:35.6252,139.2437,-4.2");
  EXPECT_EQ(GeoLink({35.6252, 139.2437, 0.0}), "geo:35.6252,139.2437,0");
  EXPECT_EQ(GeoLink({35.6252, 139.2437, 1e25}), "geo:35.6252,139.2437");
  EXPECT_EQ(GeoLink({35.6252, 139.2437, 50000.5}), "geo:35.6252,139.2437");
  EXPECT_EQ(GeoLink({35.6252, 139.2437, -12001.0}), "geo:35.6252,139.2437");
  EXPECT_EQ(GeoLink({35.6252, 139.2437, std::numeric_limits<double>::quiet_NaN()}), "geo:35.6252,139.2437");
}

}  // namespace
}  // namespace walrim
