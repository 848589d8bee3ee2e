#include "text/PercentEscapes.h"

#include <gtest/gtest.h>

namespace walrim {
namespace {

TEST(PercentEscapes, AreDecodedOnce) {
  EXPECT_EQ(DecodePercentEscapes("a%20b%2Fc%2fd"), "a b/c/d");
  EXPECT_EQ(DecodePercentEscapes("%E9%AB%98"), "高");
  EXPECT_EQ(DecodePercentEscapes("%2520"), "%20");
  EXPECT_EQ(DecodePercentEscapes("%00"), std::string(1, '\0'));
  EXPECT_EQ(DecodePercentEscapes(""), "");
}

TEST(PercentEscapes, WhatIsNoneStays) {
  EXPECT_EQ(DecodePercentEscapes("100%"), "100%");
  EXPECT_EQ(DecodePercentEscapes("%4"), "%4");
  EXPECT_EQ(DecodePercentEscapes("%G0%0G%%41"), "%G0%0G%A");
  EXPECT_EQ(DecodePercentEscapes("a+b"), "a+b");
}

}  // namespace
}  // namespace walrim
