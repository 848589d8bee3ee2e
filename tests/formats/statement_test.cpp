#include "formats/Statement.h"

#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace walrim {
namespace {

std::vector<std::string> Statements(const std::string& script) {
  StatementSplitter splitter(script);
  std::vector<std::string> statements;
  for (std::string statement; splitter.Next(statement);)
    statements.push_back(statement);
  return statements;
}

/// Builds a statement, cuts it out of a script and parses it.
Statement ThereAndBack(std::string_view keyword, const std::vector<std::string_view>& values) {
  static std::string script;
  static std::string text;
  script.clear();
  AppendStatement(script, keyword, values);
  StatementSplitter splitter(script.append("\r\n"));
  EXPECT_TRUE(splitter.Next(text)) << script;
  const auto statement = ParseStatement(text);
  EXPECT_TRUE(statement) << text;
  return statement.value_or(Statement{});
}

TEST(BuildStatement, ACommentIsMadeOneUnlessItIs) {
  EXPECT_EQ(BuildStatement("comment", {"abc"}), "//abc;");
  EXPECT_EQ(BuildStatement("comment", {"// x;"}), "// x;");
  EXPECT_EQ(BuildStatement("comment", {"a // b"}), "a // b;");
  EXPECT_EQ(BuildStatement("comment", {""}), "//;");
  EXPECT_EQ(BuildStatement("comment", {"a\r\nb"}), "//a  b;");
}

TEST(BuildStatement, MapServerIsSavableByEveryWordButNo) {
  EXPECT_EQ(BuildStatement("mapserver", {"1.0"}), "mapserver script ver=1.0;");
  EXPECT_EQ(BuildStatement("mapserver", {"1.0", " "}), "mapserver script ver=1.0;");
  EXPECT_EQ(BuildStatement("mapserver", {"1.0", "no"}), "mapserver script ver=1.0 savable=no;");
  EXPECT_EQ(BuildStatement("mapserver", {"1.0", "yes"}), "mapserver script ver=1.0 savable=yes;");
  EXPECT_EQ(BuildStatement("mapserver", {"1.0", "any"}), "mapserver script ver=1.0 savable=yes;");
  EXPECT_EQ(BuildStatement("mapserver", {" end "}), "mapserver end;");
}

TEST(BuildStatement, SingleKeyStatementsStandOnOneLine) {
  EXPECT_EQ(BuildStatement("init", {"a.ini"}), "\t\tinit\tfile=a.ini;");
  EXPECT_EQ(BuildStatement("kanji", {"sjis"}), "\t\tkanji\tcode=sjis;");
  EXPECT_EQ(BuildStatement("georef", {"tokyo"}), "\t\tgeoref\tsystem=tokyo;");
  EXPECT_EQ(BuildStatement("theme", {"t"}), "\t\ttheme\tstr=t;");
}

TEST(BuildStatement, FurtherKeysHaveALineEachAndEmptyOnesNone) {
  EXPECT_EQ(BuildStatement("icon", {"a", "", "bmp"}), "\t\ticon\tname=a\r\n\t\t\t\tformat=bmp;");
  EXPECT_EQ(BuildStatement("message", {"hello"}), "\t\tmessage\tstr=hello;");
  EXPECT_EQ(BuildStatement("area", {}), "\t\tarea\t;");
  EXPECT_EQ(BuildStatement("disp", {"all"}), "\t\tdisp\tall;");
  EXPECT_EQ(BuildStatement("disp", {"pos", "1,2", "5"}), "\t\tdisp\tpos\r\n\t\t\t\tarea=1,2\r\n\t\t\t\tscale=5;");
}

TEST(BuildStatement, ThePointsNumberIsWrittenWithoutAValueToo) {
  EXPECT_EQ(BuildStatement("point", {"", "5131"}), "\t\tpoint\toid=\r\n\t\t\t\tgid=5131;");
  EXPECT_EQ(BuildStatement("line", {}), "\t\tline\t;");
  EXPECT_EQ(BuildStatement("line", {""}), "\t\tline\toid=;");
}

TEST(BuildStatement, TheHeadAndWhatIsNotKnown) {
  EXPECT_EQ(BuildStatement("hedder", {"1.0.8.0", "1.2", "11/15/2002 14:05:12"}),
            "//Header:Prog:1.0.8.0 Templ:1.2 Date:11/15/2002 14:05:12;");
  EXPECT_EQ(BuildStatement("xyz", {"1"}), "// Not Suport [xyz]");
}

TEST(BuildStatement, NothingInAValueIsReplacedTwice) {
  EXPECT_EQ(BuildStatement("theme", {"$STR$ $VER$"}), "\t\ttheme\tstr=$STR$ $VER$;");
  EXPECT_EQ(BuildStatement("message", {"$URL$", "$STR$"}), "\t\tmessage\tstr=$URL$\r\n\t\t\t\turl=$STR$;");
  EXPECT_EQ(BuildStatement("hedder", {"$DATE$", "$PROGRAMVER$", "d"}),
            "//Header:Prog:$DATE$ Templ:$PROGRAMVER$ Date:d;");
}

TEST(BuildStatement, WhatWouldEndAStatementIsWrittenOtherwise) {
  EXPECT_EQ(BuildStatement("message", {"a;b\r\nc\td"}), "\t\tmessage\tstr=a；b  c d;");
  EXPECT_EQ(BuildStatement("xyz;\r\npoint", {}), "// Not Suport [xyz；  point]");
}

TEST(ParseStatement, EveryKeywordComesBackAsItWasBuilt) {
  const std::vector<std::pair<std::string_view, std::size_t>> keywords{
      {"init", 1},    {"kanji", 1}, {"georef", 1}, {"group", 16}, {"icon", 3}, {"theme", 1},
      {"message", 3}, {"point", 8}, {"line", 8},   {"circle", 3}, {"rect", 4}, {"area", 0},
      {"disp", 3},    {"pick", 3},  {"input", 2},  {"addon", 3}};
  const std::vector<std::string> texts{"1",  "0,255,0", "a b ", "c=d", "e", "f", "url=g", "//h",
                                       "i,", "j",       "k",    "l",   "m", "n", "日本",  "p, gid=5"};
  for (const auto& [keyword, count] : keywords) {
    std::vector<std::string_view> values(texts.begin(), texts.begin() + static_cast<std::ptrdiff_t>(count));
    const Statement statement = ThereAndBack(keyword, values);
    EXPECT_EQ(statement.keyword, keyword);
    for (std::size_t i = 0; i < count; ++i)
      EXPECT_EQ(statement.values[i], texts[i] == "i," ? "i" : texts[i]) << keyword << " " << i;
  }
}

TEST(ParseStatement, TheHeadMapServerAndComments) {
  const auto head = ParseStatement("//Header:Prog:1.0.8.0 Templ:1.2 Date:11/15/2002 14:05:12;");
  ASSERT_TRUE(head);
  EXPECT_EQ(head->keyword, "hedder");
  EXPECT_EQ(head->Value("Prog"), "1.0.8.0");
  EXPECT_EQ(head->Value("Templ"), "1.2");
  EXPECT_EQ(head->Value("Date"), "11/15/2002 14:05:12");
  EXPECT_EQ(ParseStatement("mapserver script ver=1.0;")->values[0], "1.0");
  EXPECT_EQ(ParseStatement("mapserver script ver=1.0 savable=no;")->values[1], "no");
  EXPECT_EQ(ParseStatement("mapserver end;")->values[0], "end");
  EXPECT_EQ(ParseStatement("//abc;")->values[0], "abc");
  EXPECT_EQ(ParseStatement("a // b;")->keyword, "comment");
}

TEST(ParseStatement, EmptyValuesStayEmpty) {
  const Statement statement = ThereAndBack("point", {"", "5131", "", "x"});
  EXPECT_EQ(statement.Value("oid"), "");
  EXPECT_EQ(statement.Value("gid"), "5131");
  EXPECT_EQ(statement.Value("pos"), "");
  EXPECT_EQ(statement.Value("str"), "x");
  EXPECT_EQ(statement.Value("nokey"), "");
}

TEST(ParseStatement, AStatementWithItsLineEndsIsReadToo) {
  const std::string text = BuildStatement("point", {"1", "5131", "34/00/00.0,135/00/00.0", "A     ", "right"});
  const auto statement = ParseStatement(text);
  ASSERT_TRUE(statement);
  EXPECT_EQ(statement->Value("pos"), "34/00/00.0,135/00/00.0");
  EXPECT_EQ(statement->Value("str"), "A     ");
  EXPECT_EQ(statement->Value("strformat"), "right");
}

TEST(ParseStatement, ItemsOnOneLineAreReadByTheirCommas) {
  const auto statement = ParseStatement("POINT oid=1, gid=9,pos=34/1/2,135/3/4, str=hut no 3 ,info=a, b;");
  ASSERT_TRUE(statement);
  EXPECT_EQ(statement->keyword, "point");
  EXPECT_EQ(statement->Value("gid"), "9");
  EXPECT_EQ(statement->Value("pos"), "34/1/2,135/3/4");
  EXPECT_EQ(statement->Value("str"), "hut no 3");
  EXPECT_EQ(statement->Value("info"), "a, b");
}

TEST(ParseStatement, IndentedByTabsAStatementOnOneLineIsReadByItsCommasToo) {
  const auto statement = ParseStatement("\t\tpoint\toid=1,gid=9,pos=34/1/2,135/3/4;");
  ASSERT_TRUE(statement);
  EXPECT_EQ(statement->Value("oid"), "1");
  EXPECT_EQ(statement->Value("gid"), "9");
  EXPECT_EQ(statement->Value("pos"), "34/1/2,135/3/4");
  EXPECT_EQ(ThereAndBack("message", {"a, url=b"}).Value("str"), "a, url=b");
}

TEST(ParseStatement, WhatIsNoneGivesNothing) {
  for (const char* text : {"", ";", "xyz a=b;", "comment", "pointoid=1;", "\t\t;", ",,,"})
    EXPECT_FALSE(ParseStatement(text)) << text;
}

TEST(ParseStatement, AKeyIsTakenOnce) {
  const auto statement = ParseStatement("point oid=1,oid=2;");
  ASSERT_TRUE(statement);
  EXPECT_EQ(statement->Value("oid"), "1,oid=2");
}

TEST(ParseStatement, RandomValuesComeBack) {
  constexpr std::array<std::string_view, 12> pieces{"gid=", ",",  "str=", "//", "$STR$", " ",
                                                    "<",    "><", "山",   "=",  "info=", "9"};
  std::mt19937 random(5);
  for (int round = 0; round < 2000; ++round) {
    std::array<std::string, 8> texts;
    std::vector<std::string_view> values;
    for (std::string& text : texts) {
      for (std::size_t i = random() % 5; i > 0; --i)
        text += pieces[random() % pieces.size()];
      text += 'x';
      values.emplace_back(text);
    }
    const Statement statement = ThereAndBack("point", values);
    for (std::size_t i = 0; i < texts.size(); ++i)
      EXPECT_EQ(statement.values[i], texts[i]);
  }
}

TEST(StatementSplitter, LinesAreJoinedUpToTheFirstWithASemicolon) {
  EXPECT_EQ(Statements("point a\r\n b;\nline c,\rd;"), (std::vector<std::string>{"point a, b;", "line c,d;"}));
}

TEST(StatementSplitter, EmptyLinesAndCommentsArePassedOver) {
  EXPECT_EQ(Statements("\r\n//Header;\r\npoint\r\n\r\n// x;\r\n  \r\na;\r\n"), (std::vector<std::string>{"point,a;"}));
}

TEST(StatementSplitter, LinesThatNothingEndsAreToldAndNotGiven) {
  StatementSplitter splitter("point a;\npoint b");
  std::string statement;
  EXPECT_TRUE(splitter.Next(statement));
  EXPECT_FALSE(splitter.Incomplete());
  EXPECT_FALSE(splitter.Next(statement));
  EXPECT_TRUE(splitter.Incomplete());
}

}  // namespace
}  // namespace walrim
