#include <gtest/gtest.h>
#include <random>
#include <string>

#include "formats/AngleField.h"
#include "geo/GeneralLib.h"
#include "text/Numbers.h"

namespace walrim {
namespace {

TEST(AngleField, TheShortWayGivesWhatTheConversionGives) {
  std::mt19937 random(3);
  for (int i = 0; i < 20000; ++i) {
    const std::string text = std::to_string(random() % 181) + "." + PadNumber(static_cast<int>(random() % 100), 2) +
                             PadNumber(static_cast<int>(random() % 10000), 4);
    EXPECT_EQ(*DegreesOfField(text, "DMS"), DegreesOfAngle(text, "DMS")) << text;
    std::string mps;
    AppendMpsAngle(mps, text, "DMS");
    EXPECT_EQ(mps, ConvertAngle(text, "DMS", "MPS")) << text;
  }
}

TEST(AngleField, OtherFormsGoThroughTheConversion) {
  for (const char* text : {"-136.300000", "034.413025", "34.41302", "34.4130255", "+34.413025", "34", "1000.000000"}) {
    EXPECT_EQ(*DegreesOfField(text, "DMS"), DegreesOfAngle(text, "DMS")) << text;
    std::string mps;
    AppendMpsAngle(mps, text, "DMS");
    EXPECT_EQ(mps, ConvertAngle(text, "DMS", "MPS")) << text;
  }
}

TEST(AngleField, WhatIsNoAngleIsNone) {
  for (const char* text : {"", "x", "-", ".", "1/2/3/4", "  "})
    EXPECT_FALSE(DegreesOfField(text, "MPS")) << text;
  EXPECT_TRUE(DegreesOfField(" -.5", "D"));
  EXPECT_FALSE(PointOfFields("90.1", "0", "D"));
  EXPECT_FALSE(PointOfFields("0", "-180.1", "D"));
  EXPECT_TRUE(PointOfFields("-90", "180", "D"));
}

TEST(AngleField, NotationsAreNamedInAnyCase) {
  EXPECT_EQ(NotationOfName("dms"), "DMS");
  EXPECT_EQ(NotationOfName("D"), "D");
  EXPECT_EQ(NotationOfName("X"), "");
  EXPECT_EQ(NotationOfName(""), "");
}

}  // namespace
}  // namespace walrim
