#include "text/Cp932.h"

#include <array>
#include <gtest/gtest.h>
#include <iconv.h>
#include <string>

#include "text/Utf8.h"

namespace walrim {
namespace {

std::string Character(char32_t character) {
  std::string text;
  AppendCharacter(text, character);
  return text;
}

TEST(Cp932, JapaneseTextBothWays) {
  const std::string bytes = "\x95\x78\x8E\x6D\x8E\x52 \xCC\xBC\xDE A";
  EXPECT_EQ(DecodeCp932(bytes), "富士山 ﾌｼﾞ A");
  EXPECT_EQ(EncodeCp932("富士山 ﾌｼﾞ A"), bytes);
}

TEST(Cp932, BackslashAndTildeStayWhatTheyAre) {
  EXPECT_EQ(DecodeCp932("\\~"), "\\~");
  EXPECT_EQ(EncodeCp932("\\~"), "\\~");
}

TEST(Cp932, VendorCharactersAreKnown) {
  EXPECT_EQ(DecodeCp932("\x87\x40"), "①");
  EXPECT_EQ(EncodeCp932("①"), "\x87\x40");
  EXPECT_EQ(DecodeCp932("\xFB\xFC"), "髙");
  EXPECT_EQ(EncodeCp932("髙"), "\xFB\xFC");
}

TEST(Cp932, DuplicatesAreWrittenAtTheirFirstCode) {
  EXPECT_EQ(DecodeCp932("\xEE\xE0"), "髙");
  EXPECT_EQ(DecodeCp932("\xFA\x4A"), "Ⅰ");
  EXPECT_EQ(EncodeCp932("Ⅰ"), "\x87\x54");
  EXPECT_EQ(EncodeCp932("∵"), "\x81\xE6");
  EXPECT_EQ(EncodeCp932("￢"), "\x81\xCA");
}

TEST(Cp932, EveryPairOfBytesSurvivesDecodingAndEncoding) {
  for (unsigned first = 0; first < 256; ++first) {
    for (unsigned second = 0; second < 256; ++second) {
      const std::string bytes{static_cast<char>(first), static_cast<char>(second)};
      const std::string text = DecodeCp932(bytes);
      ASSERT_TRUE(IsValidUtf8(text));
      ASSERT_EQ(Cp932Width(text), 2U) << first << " " << second;
      const auto encoded = EncodeCp932(text);
      ASSERT_TRUE(encoded) << first << " " << second;
      if (*encoded == bytes) continue;
      ASSERT_EQ(DecodeCp932(*encoded), text) << first << " " << second;
      ASSERT_TRUE(first == 0x81 || first == 0x87 || first >= 0xED) << "only the duplicates change: " << first;
    }
  }
}

TEST(Cp932, AgreesWithIconvAboutEveryCharacter) {
  const iconv_t converter = iconv_open("CP932", "UTF-8");
  ASSERT_NE(converter, reinterpret_cast<iconv_t>(-1));
  int known_characters = 0;
  for (char32_t c = 0x100; c < 0xD800; ++c) {
    std::string in = Character(c);
    std::array<char, 8> out{};
    char* in_at = in.data();
    char* out_at = out.data();
    std::size_t in_left = in.size();
    std::size_t out_left = out.size();
    iconv(converter, nullptr, nullptr, nullptr, nullptr);
    const bool known = iconv(converter, &in_at, &in_left, &out_at, &out_left) == 0;
    const auto encoded = EncodeCp932(in);
    // iconv writes an overline as the tilde, which reads back as another character.
    const bool overline = c == 0x203E;
    // These look as characters of the code page do; iconv leaves them out.
    const bool same_look = c == 0x301C || c == 0x2016 || c == 0x2212 || c == 0x2014;
    EXPECT_EQ(encoded.has_value(), (known && !overline) || same_look) << static_cast<unsigned>(c);
    if (!encoded || !known) continue;
    EXPECT_EQ(*encoded, std::string(out.data(), out.size() - out_left)) << static_cast<unsigned>(c);
    ++known_characters;
  }
  iconv_close(converter);
  EXPECT_GT(known_characters, 7000);
}

TEST(Cp932, BytesThatAreNoCharacterAreKept) {
  EXPECT_EQ(DecodeCp932("\x80"), Character(0xF780));
  EXPECT_EQ(DecodeCp932("\xA0\xFD\xFF"), Character(0xF7A0) + Character(0xF7FD) + Character(0xF7FF));
  EXPECT_EQ(EncodeCp932(Character(0xF780)), "\x80");
  EXPECT_FALSE(EncodeCp932(Character(0xF7B1))) << "that byte is a character, the private one never comes from it";
}

TEST(Cp932, ALeadByteAtTheEndIsKept) {
  EXPECT_EQ(DecodeCp932("A\x82"), "A" + Character(0xF782));
  EXPECT_EQ(EncodeCp932("A" + Character(0xF782)), "A\x82");
}

TEST(Cp932, KatakanaAfterALoneLeadByteComesThrough) {
  EXPECT_EQ(DecodeCp932("\x85\xB1"), Character(0xF785) + "ｱ");
  EXPECT_EQ(DecodeCp932("\x82\x0A"), Character(0xF782) + "\n");
}

TEST(Cp932, ALoneLeadByteDoesNotSwallowWhatFollows) {
  // 87 81 is a character: behind a lone 87 the character of the codes 81 CA, FA 54 and EE F9 takes the second.
  const std::string bytes = "\x87\xEE\xF9";
  EXPECT_EQ(DecodeCp932(bytes), Character(0xF787) + "￢");
  EXPECT_EQ(EncodeCp932(DecodeCp932(bytes)), "\x87\xFA\x54");
  UnencodableCharacter lacking;
  EXPECT_FALSE(EncodeCp932(Character(0xF781) + "A", &lacking));
  EXPECT_EQ(lacking.index, 1U);
  EXPECT_EQ(lacking.utf8, "A");
  EXPECT_FALSE(EncodeCp932(Character(0xF782) + Character(0xF7A0)));
  EXPECT_EQ(EncodeCp932(Character(0xF782) + " A"), "\x82 A");
}

TEST(Cp932, ZeroBytesAreKept) {
  const std::string bytes("A\0B", 3);
  EXPECT_EQ(DecodeCp932(bytes), bytes);
  EXPECT_EQ(EncodeCp932(bytes), bytes);
}

TEST(Cp932, BytesOfTheWireAreTheSame) {
  const std::array<std::uint8_t, 3> bytes{0x41, 0x95, 0x78};
  EXPECT_EQ(DecodeCp932(bytes), "A富");
}

TEST(Cp932, LackingCharactersAreNamed) {
  UnencodableCharacter lacking;
  EXPECT_FALSE(EncodeCp932("富士é", &lacking));
  EXPECT_EQ(lacking.index, 2U);
  EXPECT_EQ(lacking.character, U'é');
  EXPECT_EQ(lacking.utf8, "é");
  EXPECT_FALSE(EncodeCp932("abc\U0001F5FB", &lacking));
  EXPECT_EQ(lacking.index, 3U);
  EXPECT_EQ(lacking.utf8, "\U0001F5FB");
  EXPECT_FALSE(EncodeCp932("\x80", &lacking));
}

TEST(Cp932, CharactersOfTheSameLookAreEncoded) {
  EXPECT_EQ(EncodeCp932("〜～"), "\x81\x60\x81\x60");
  EXPECT_EQ(EncodeCp932("‖−—¢£¬"), "\x81\x61\x81\x7C\x81\x5C\x81\x91\x81\x92\x81\xCA");
}

TEST(Cp932, WidthCountsBytes) {
  EXPECT_EQ(Cp932Width(""), 0U);
  EXPECT_EQ(Cp932Width("AB富ｱ"), 5U);
  EXPECT_EQ(Cp932Width("é"), 2U) << "what the code page lacks counts as 2";
}

TEST(Cp932, CutNeverHalvesACharacter) {
  EXPECT_EQ(CutToCp932Width("富士山", 6), "富士山");
  EXPECT_EQ(CutToCp932Width("富士山", 5), "富士");
  EXPECT_EQ(CutToCp932Width("A富士", 2), "A");
  EXPECT_EQ(CutToCp932Width("ABCDEFG", 6), "ABCDEF");
  EXPECT_EQ(CutToCp932Width("ｱｲｳｴ", 3), "ｱｲｳ");
  EXPECT_EQ(CutToCp932Width("富", 1), "");
  EXPECT_EQ(CutToCp932Width("A", 0), "");
}

}  // namespace
}  // namespace walrim
