#include "text/Utf8.h"

#include <gtest/gtest.h>

namespace walrim {
namespace {

TEST(Utf8, WellFormedTextIsValid) {
  EXPECT_TRUE(IsValidUtf8(""));
  EXPECT_TRUE(IsValidUtf8("plain text of more than eight bytes"));
  EXPECT_TRUE(IsValidUtf8("富士山 ﾌｼﾞ é \U0001F5FB"));
  EXPECT_TRUE(IsValidUtf8("\xF4\x8F\xBF\xBF"));
}

TEST(Utf8, IllFormedBytesAreNot) {
  EXPECT_FALSE(IsValidUtf8("\x80"));              // continuation alone
  EXPECT_FALSE(IsValidUtf8("\xC0\xAF"));          // overlong
  EXPECT_FALSE(IsValidUtf8("\xE0\x80\xAF"));      // overlong
  EXPECT_FALSE(IsValidUtf8("\xF0\x80\x80\xAF"));  // overlong
  EXPECT_FALSE(IsValidUtf8("\xED\xA0\x80"));      // surrogate
  EXPECT_FALSE(IsValidUtf8("\xF4\x90\x80\x80"));  // above U+10FFFF
  EXPECT_FALSE(IsValidUtf8("\xF5\x80\x80\x80"));
  EXPECT_FALSE(IsValidUtf8("abcdefgh\xE5\xAF"));  // cut short
}

TEST(Utf8, CharactersAreTakenAndAppended) {
  std::string_view text = "aé富\U0001F5FB";
  std::string copy;
  for (const char32_t expected : {U'a', U'é', U'富', U'\U0001F5FB'}) {
    const char32_t character = TakeCharacter(text);
    EXPECT_EQ(character, expected);
    AppendCharacter(copy, character);
  }
  EXPECT_TRUE(text.empty());
  EXPECT_EQ(copy, "aé富\U0001F5FB");
}

TEST(Utf8, AnIllFormedByteIsTakenAlone) {
  std::string_view text = "\xE5\x41";
  EXPECT_EQ(TakeCharacter(text), 0xFFFDU);
  EXPECT_EQ(TakeCharacter(text), U'A');
}

TEST(WithoutControlCharacters, BothKindsBecomeBlanks) {
  EXPECT_EQ(WithoutControlCharacters("a\tb\x1f"
                                     "c\x7f"),
            "a b c ");
  EXPECT_EQ(WithoutControlCharacters("\xC2\x80"
                                     "a\xC2\x9B"
                                     "b\xC2\x9F"),
            " a b ");
  EXPECT_EQ(WithoutControlCharacters("\xC2\xA0 ~ 高尾 \xC3\x9B"), "\xC2\xA0 ~ 高尾 \xC3\x9B");
  EXPECT_EQ(WithoutControlCharacters("a\x9B"
                                     "b\xC2"),
            "a\x9B"
            "b\xC2")
      << "bytes that are no characters stay";
}

}  // namespace
}  // namespace walrim
