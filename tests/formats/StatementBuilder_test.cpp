#include "formats/StatementBuilder.h"

#include <gtest/gtest.h>

namespace walrim {
namespace {

using enum StatementKeyword;

std::string Built(StatementKeyword keyword, std::initializer_list<std::string_view> values) {
  std::string text;
  AppendStatement(text, keyword, values);
  return text;
}

TEST(StatementBuilder, ASingleKeyStandsOnTheKeywordsLine) {
  EXPECT_EQ(Built(Init, {"a.ini"}), "\t\tinit\tfile=a.ini;");
  EXPECT_EQ(Built(Kanji, {"sjis"}), "\t\tkanji\tcode=sjis;");
  EXPECT_EQ(Built(Georef, {"tokyo"}), "\t\tgeoref\tsystem=tokyo;");
  EXPECT_EQ(Built(Theme, {"t"}), "\t\ttheme\tstr=t;");
}

TEST(StatementBuilder, FurtherKeysHaveALineEachAndEmptyOnesNone) {
  EXPECT_EQ(Built(Icon, {"a", "", "bmp"}), "\t\ticon\tname=a\r\n\t\t\t\tformat=bmp;");
  EXPECT_EQ(Built(Message, {"hello"}), "\t\tmessage\tstr=hello;");
  EXPECT_EQ(Built(Area, {}), "\t\tarea\t;");
  EXPECT_EQ(Built(Disp, {"all"}), "\t\tdisp\tall;");
  EXPECT_EQ(Built(Disp, {"pos", "1,2", "5"}), "\t\tdisp\tpos\r\n\t\t\t\tarea=1,2\r\n\t\t\t\tscale=5;");
}

TEST(StatementBuilder, ThePointsNumberIsWrittenWithoutAValueToo) {
  EXPECT_EQ(Built(Point, {"", "5131"}), "\t\tpoint\toid=\r\n\t\t\t\tgid=5131;");
  EXPECT_EQ(Built(Line, {""}), "\t\tline\toid=;");
  EXPECT_EQ(Built(Line, {}), "\t\tline\toid=;");
  EXPECT_EQ(Built(Theme, {}), "\t\ttheme\tstr=;");
}

TEST(StatementBuilder, WhatWouldEndAStatementIsWrittenOtherwise) {
  EXPECT_EQ(Built(Message, {"a;b\r\nc\td"}), "\t\tmessage\tstr=a；b  c d;");
}

TEST(StatementBuilder, NothingElseInAValueIsReplaced) {
  EXPECT_EQ(Built(Theme, {"$STR$ // =,"}), "\t\ttheme\tstr=$STR$ // =,;");
}

}  // namespace
}  // namespace walrim
