#include "text/Scan.h"

#include <gtest/gtest.h>

namespace walrim {
namespace {

TEST(Scan, UpperCaseChangesAsciiLettersAlone) {
  EXPECT_EQ(UpperCase("abcXYZ09 éａ富"), "ABCXYZ09 éａ富");
}

TEST(Scan, TrimBlanksKeepsEveryOtherSpace) {
  EXPECT_EQ(TrimBlanks("  a b  "), "a b");
  EXPECT_EQ(TrimBlanks("   "), "");
  EXPECT_EQ(TrimBlanks("\ta\t"), "\ta\t");
  EXPECT_EQ(TrimBlanks("　a"), "　a");
}

TEST(Scan, LowerCaseChangesAsciiLettersAlone) {
  EXPECT_EQ(LowerCase("ABCxyz09 ÉＡ富"), "abcxyz09 ÉＡ富");
}

TEST(Scan, TrimSpaceTakesTabsAndLineEndsToo) {
  EXPECT_EQ(TrimSpace("\t a b\r\n"), "a b");
  EXPECT_EQ(TrimSpace(" \r\n"), "");
  EXPECT_EQ(TrimAny("((x))", "()"), "x");
}

TEST(Scan, SameWordLooksPastTheCaseAlone) {
  EXPECT_TRUE(SameWord("GeoRef", "gEOrEF"));
  EXPECT_FALSE(SameWord("GeoRef", "GeoRe"));
  EXPECT_FALSE(SameWord("[", "{")) << "these differ as letters of two cases do";
  EXPECT_TRUE(BeginsWithWord("file://x", "FILE:"));
  EXPECT_FALSE(BeginsWithWord("fil", "FILE:"));
}

TEST(Scan, TakeLeavesWhatIsNotExpected) {
  std::string_view text = "RP:12<a>";
  EXPECT_FALSE(Take(text, "RT"));
  EXPECT_TRUE(Take(text, "RP"));
  EXPECT_TRUE(Take(text, ':'));
  EXPECT_EQ(TakeDigits(text, 1), "1");
  EXPECT_EQ(TakeDigits(text), "2");
  EXPECT_EQ(TakeDigits(text), "");
  EXPECT_EQ(text, "<a>");
  EXPECT_EQ(TakeBytes(text, 99), "<a>");
  EXPECT_FALSE(Take(text, '<'));
}

TEST(Scan, ItemsEndAtTheirDelimiter) {
  std::string_view text = "a,,b";
  EXPECT_EQ(TakeUpTo(text, ','), "a");
  EXPECT_EQ(TakeUpTo(text, ','), "");
  EXPECT_EQ(TakeUpTo(text, ','), "b");
  EXPECT_EQ(TakeUpTo(text, ','), "");
  text = "key = value";
  EXPECT_EQ(TakeUntilAny(text, " ="), "key");
  EXPECT_EQ(text, " = value");
}

}  // namespace
}  // namespace walrim
