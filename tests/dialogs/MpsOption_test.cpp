#include "dialogs/MpsOption.h"

#include <gtest/gtest.h>

namespace walrim {
namespace {

MpsOptionControls Numbers(const std::string& utc_offset, const std::string& step) {
  return {utc_offset, "", "", false, step};
}

TEST(MpsOption, TheControlsShowTheSettings) {
  EXPECT_EQ(ShowMpsOptions({}), (MpsOptionControls{"0", "", "", false, "1"}));
  EXPECT_EQ(ShowMpsOptions({-9, "START", "終点", 1, 10}), (MpsOptionControls{"-9", "START", "終点", true, "10"}));
}

TEST(MpsOption, OnlyOneSwitchesTheDirectionOn) {
  EXPECT_FALSE(ShowMpsOptions({0, "", "", 2, 1}).OptMpsWptRPnumberingDown);
  EXPECT_FALSE(ShowMpsOptions({0, "", "", -1, 1}).OptMpsWptRPnumberingDown);
}

TEST(MpsOption, WhatIsShownIsStoredBack) {
  const MpsOptions options{-9, "START", " 終点 ", 1, 10};
  MpsOptions stored;
  EXPECT_EQ(ApplyMpsOptions(ShowMpsOptions(options), stored), MpsOptionProblem::None);
  EXPECT_EQ(stored, options);
}

TEST(MpsOption, NumbersAreTheLeadingNumberRounded) {
  const auto stored = [](const std::string& text) {
    MpsOptions options;
    EXPECT_EQ(ApplyMpsOptions(Numbers(text, text), options), MpsOptionProblem::None) << text;
    EXPECT_EQ(options.utc_offset_hours, options.track_log_step);
    return options.utc_offset_hours;
  };
  EXPECT_EQ(stored("9h"), 9);
  EXPECT_EQ(stored("abc"), 0);
  EXPECT_EQ(stored(""), 0);
  EXPECT_EQ(stored(" -5"), -5);
  EXPECT_EQ(stored("2.4"), 2);
  EXPECT_EQ(stored("2.5"), 3);
  EXPECT_EQ(stored("-2.5"), -3);
  EXPECT_EQ(stored("1e2"), 100);
  EXPECT_EQ(stored("1e-999"), 0);
  EXPECT_EQ(stored("0e999"), 0);
  EXPECT_EQ(stored("32767.4"), 32767);
  EXPECT_EQ(stored("-32768"), -32768);
}

TEST(MpsOption, ANumberBeyondSixteenBitsIsAProblemAndNothingIsStored) {
  const MpsOptions before{1, "A", "B", 1, 2};
  for (const std::string& text : {std::string("32768"), std::string("-32769"), std::string("32767.5"),
                                  std::string("1e999"), std::string("-1e999"), std::string(400, '9')}) {
    MpsOptions options = before;
    EXPECT_EQ(ApplyMpsOptions(Numbers(text, "3"), options), MpsOptionProblem::UtcOffsetOverflow) << text;
    EXPECT_EQ(ApplyMpsOptions(Numbers("3", text), options), MpsOptionProblem::TrackLogStepOverflow) << text;
    EXPECT_EQ(options, before) << text;
  }
}

}  // namespace
}  // namespace walrim
