#include "text/NamedEncoding.h"

#include <gtest/gtest.h>

namespace walrim {
namespace {

using namespace std::string_view_literals;

TEST(DecodeNamed, TextsOfKnownEncodingsInAnyCase) {
  EXPECT_EQ(DecodeNamed("\x8d\x82\x94\xf6", "Shift_JIS"), "高尾");
  EXPECT_EQ(DecodeNamed("\x87\x40", "x-sjis"), "①");
  EXPECT_EQ(DecodeNamed("\xb9\xe2", "euc-jp"), "高");
  EXPECT_EQ(DecodeNamed("A\0\xd8\x9a"sv, "UTF-16LE"), "A高");
  EXPECT_EQ(DecodeNamed("\0A\x9a\xd8"sv, "utf-16be"), "A高");
  EXPECT_EQ(DecodeNamed("\xe9", "iso-8859-1"), "é");
  EXPECT_EQ(DecodeNamed("", "KOI8-R"), "");
  const std::string longer(100000, '\xe9');
  EXPECT_EQ(DecodeNamed(longer, "WINDOWS-1252")->size(), 2 * longer.size());
}

TEST(DecodeNamed, NothingForWhatIsNoTextOrNotKnown) {
  EXPECT_EQ(DecodeNamed("\xff\xff", "EUC-JP"), std::nullopt);
  EXPECT_EQ(DecodeNamed("\x00\xd8"sv, "UTF-16LE"), std::nullopt);
  EXPECT_EQ(DecodeNamed("A\0B"sv, "UTF-16LE"), std::nullopt);
  EXPECT_EQ(DecodeNamed("\x80", "US-ASCII"), std::nullopt);
  EXPECT_EQ(DecodeNamed("A", "UTF-7"), std::nullopt);
  EXPECT_EQ(DecodeNamed("A", "UTF-16LE//IGNORE"), std::nullopt);
  EXPECT_EQ(DecodeNamed("A", ""), std::nullopt);
}

}  // namespace
}  // namespace walrim
