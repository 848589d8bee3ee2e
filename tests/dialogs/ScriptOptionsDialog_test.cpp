#include "dialogs/ScriptOptionsDialog.h"

#include <gtest/gtest.h>

namespace walrim {
namespace {

ScriptOptionControls Numbers(const std::string& utc_offset, const std::string& step) {
  return {utc_offset, "", "", false, step};
}

TEST(ScriptOptionsDialog, TheControlsShowTheSettings) {
  EXPECT_EQ(ShowScriptOptions({}), (ScriptOptionControls{"0", "", "", false, "1"}));
  EXPECT_EQ(ShowScriptOptions({-9, "START", "終点", true, 10}),
            (ScriptOptionControls{"-9", "START", "終点", true, "10"}));
}

TEST(ScriptOptionsDialog, WhatIsShownIsStoredBack) {
  const ScriptOptions options{-9, "START", " 終点 ", true, 10};
  ScriptOptions stored;
  EXPECT_EQ(ApplyScriptOptions(ShowScriptOptions(options), stored), ScriptOptionProblem::None);
  EXPECT_EQ(stored, options);
}

TEST(ScriptOptionsDialog, NumbersAreTheLeadingNumberRounded) {
  const auto stored = [](const std::string& text) {
    ScriptOptions options;
    EXPECT_EQ(ApplyScriptOptions(Numbers(text, text), options), ScriptOptionProblem::None) << text;
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

TEST(ScriptOptionsDialog, ANumberBeyondSixteenBitsIsAProblemAndNothingIsStored) {
  const ScriptOptions before{1, "A", "B", true, 2};
  for (const std::string& text : {std::string("32768"), std::string("-32769"), std::string("32767.5"),
                                  std::string("1e999"), std::string("-1e999"), std::string(400, '9')}) {
    ScriptOptions options = before;
    EXPECT_EQ(ApplyScriptOptions(Numbers(text, "3"), options), ScriptOptionProblem::UtcOffsetOverflow) << text;
    EXPECT_EQ(ApplyScriptOptions(Numbers("3", text), options), ScriptOptionProblem::TrackLogStepOverflow) << text;
    EXPECT_EQ(options, before) << text;
  }
}

}  // namespace
}  // namespace walrim
