#include "formats/FieldValues.h"

#include <gtest/gtest.h>

namespace walrim {
namespace {

std::string Plain(std::string_view column) {
  std::string scratch;
  return std::string(PlainText(column, scratch));
}

TEST(PlainText, LosesEveryQuoteAndEqualsSign) {
  EXPECT_EQ(Plain("A=B\"C"), "ABC");
  EXPECT_EQ(Plain("\"=\""), "");
  EXPECT_EQ(Plain(" A "), " A ");
  EXPECT_EQ(Plain("=\""), "");
}

TEST(PlainText, OfAWrappedTextIsWhatStandsInside) {
  EXPECT_EQ(Plain("=\"ABC\""), "ABC");
  EXPECT_EQ(Plain("=\"A=\"B\""), "A=\"B");
  EXPECT_EQ(Plain("=\"\""), "");
}

TEST(SaysWord, InAnyCaseAndWrapping) {
  for (const char* column : {"WPT", "wpt", "\"WPT\"", "=\"Wpt\"", "W=PT"})
    EXPECT_TRUE(SaysWord(column, "WPT")) << column;
  for (const char* column : {"", "WP", "WPTX", "=\"WPT \"", "X"})
    EXPECT_FALSE(SaysWord(column, "WPT")) << column;
}

TEST(FieldNumbers, AreKeptWithinWhatTheirFieldsHold) {
  EXPECT_EQ(ByteOf("256"), 255);
  EXPECT_EQ(ByteOf("-1"), 0);
  EXPECT_EQ(ByteOf("7.9"), 7);
  EXPECT_EQ(WordOf("70000"), 65535);
  EXPECT_EQ(WordOf("300"), 300);
  EXPECT_EQ(SingleOf("12.5"), 12.5F);
  EXPECT_EQ(SingleOf("1E+39"), UnknownMetres);
}

TEST(Metres, ThatNobodyKnowsAreOneNumber) {
  EXPECT_EQ(MetresOf("1E+25"), std::nullopt);
  EXPECT_EQ(MetresOf("1e25"), std::nullopt);
  EXPECT_EQ(MetresOf("1E+99"), std::nullopt);
  EXPECT_EQ(MetresOf(""), 0.0F);
  EXPECT_EQ(MetresOf("-3.5"), -3.5F);
  std::string text;
  AppendMetres(text, std::nullopt);
  text += ' ';
  AppendMetres(text, -3.5F);
  EXPECT_EQ(text, "1E+25 -3.5");
}

TEST(Truth, IsOneWord) {
  EXPECT_TRUE(TruthOf("TRUE"));
  EXPECT_TRUE(TruthOf(" true "));
  EXPECT_FALSE(TruthOf("FALSE"));
  EXPECT_FALSE(TruthOf("1"));
  EXPECT_FALSE(TruthOf(""));
}

TEST(FieldTexts, HoldNoZeros) {
  using namespace std::string_view_literals;
  EXPECT_EQ(LineText("a\0b"sv), "a b");
  EXPECT_EQ(CapitalText("a\0b高"sv), "A B高");
  EXPECT_EQ(StateText("a\0"sv), "A");
}

}  // namespace
}  // namespace walrim
