#include "formats/StatementParser.h"

#include <gtest/gtest.h>
#include <random>
#include <vector>

#include "formats/StatementBuilder.h"

namespace walrim {
namespace {

using enum StatementKeyword;

std::vector<std::string> Statements(const std::string& script) {
  LineSource lines(script, TextEncoding::Utf8);
  StatementSplitter splitter(lines);
  std::vector<std::string> statements;
  for (std::string statement; splitter.Next(statement);)
    statements.push_back(statement);
  return statements;
}

/// Cuts a statement out of a script and parses it.
Statement Parsed(const std::string& script) {
  static std::string text;
  const auto statements = Statements(script + "\r\n");
  EXPECT_EQ(statements.size(), 1U) << script;
  text = statements.empty() ? std::string() : statements.front();
  const auto statement = ParseStatement(text);
  EXPECT_TRUE(statement) << text;
  return statement.value_or(Statement{});
}

Statement ThereAndBack(StatementKeyword keyword, const std::vector<std::string_view>& values) {
  std::string script;
  AppendStatement(script, keyword, values);
  return Parsed(script);
}

std::vector<std::string_view> ValuesOf(const Statement& statement, std::size_t count) {
  return {statement.values.begin(), statement.values.begin() + static_cast<std::ptrdiff_t>(count)};
}

TEST(StatementParser, EveryKeywordIsReadAsItIsSpelled) {
  struct Spelling {
    StatementKeyword keyword;
    std::string_view text;
    std::vector<std::string_view> values;
  };
  const std::vector<std::string_view> eight{"1", "2", "3", "4", "5", "6", "7", "8"};
  const std::vector<std::string_view> sixteen{"1", "2",  "3",  "4",  "5",  "6",  "7",  "8",
                                              "9", "10", "11", "12", "13", "14", "15", "16"};
  const std::vector<Spelling> spellings{
      {Point, "point oid=1,gid=2,pos=3,str=4,strformat=5,url=6,urltype=7,info=8;", eight},
      {Line, "line oid=1,gid=2,pos=3,str=4,strformat=5,url=6,urltype=7,info=8;", eight},
      {Group,
       "group gid=1,gname=2,textrgb=3,linergb=4,areargb=5,bodrrgb=6,textstyle=7,linestyle=8,areastyle=9,pointstyle=10,"
       "bodrstyle=11,iconsize=12,linewidth=13,bodrwidth=14,textsize=15,textoff=16;",
       sixteen},
      {MapServer, "mapserver script ver=1.0;", {}},
      {Init, "init file=1;", {"1"}},
      {Kanji, "kanji code=1;", {"1"}},
      {Georef, "georef system=1;", {"1"}},
      {Theme, "theme str=1;", {"1"}},
      {Icon, "icon name=1,file=2,format=3;", {"1", "2", "3"}},
      {Message, "message str=1,url=2,urltype=3;", {"1", "2", "3"}},
      {Circle, "circle r=1,rmax=2,strpos=3;", {"1", "2", "3"}},
      {Rect, "rect width=1,height=2,widthmax=3,heightmax=4;", {"1", "2", "3", "4"}},
      {Area, "area ;", {}},
      {Disp, "disp 1,area=2,scale=3;", {"1", "2", "3"}},
      {Pick, "pick cgi=1,param=2,method=3;", {"1", "2", "3"}},
      {Input, "input type=1,precision=2;", {"1", "2"}},
      {Addon, "addon title=1,author=2,updatable=3;", {"1", "2", "3"}},
  };
  for (const auto& [keyword, text, values] : spellings) {
    const auto statement = ParseStatement(text);
    ASSERT_TRUE(statement) << text;
    EXPECT_EQ(statement->keyword, keyword) << text;
    EXPECT_EQ(ValuesOf(*statement, values.size()), values) << text;
  }
}

TEST(StatementParser, WhatIsBuiltComesBack) {
  const std::vector<std::string> texts{"1",  "0,255,0", "a b ", "c=d", "e", "f", "url=g", "//h",
                                       "i,", "j",       "k",    "l",   "m", "n", "日本",  "p, gid=5"};
  const std::vector<std::pair<StatementKeyword, std::size_t>> keywords{{Point, 8}, {Group, 16}, {Theme, 1},
                                                                       {Disp, 3},  {Area, 0},   {Message, 3}};
  for (const auto& [keyword, count] : keywords) {
    std::vector<std::string_view> values(texts.begin(), texts.begin() + static_cast<std::ptrdiff_t>(count));
    const Statement statement = ThereAndBack(keyword, values);
    EXPECT_EQ(statement.keyword, keyword);
    for (std::size_t i = 0; i < count; ++i)
      EXPECT_EQ(statement.values[i], texts[i] == "i," ? "i" : texts[i]) << i;
  }
}

TEST(StatementParser, RemarksAreComments) {
  for (const char* text : {"//abc;", "  // x;", "a // b;", "//Header:Prog:1;"})
    EXPECT_EQ(ParseStatement(text).value_or(Statement{Point, {}}).keyword, Comment) << text;
}

TEST(StatementParser, EmptyValuesStayEmpty) {
  const Statement statement = ThereAndBack(Point, {"", "5131", "", "x"});
  EXPECT_EQ(ValuesOf(statement, 4), (std::vector<std::string_view>{"", "5131", "", "x"}));
}

TEST(StatementParser, ABlankAtTheEndOfAValueStaysWhereTheStatementIsLaidOutByTabs) {
  EXPECT_EQ(ThereAndBack(Point, {"1", "5131", "34/00/00.0,135/00/00.0", "A     ", "right"}).values[ObjectKey::Str],
            "A     ");
}

TEST(StatementParser, ItemsOnOneLineAreReadByTheirCommas) {
  const auto statement = ParseStatement("POINT oid=1, gid=9,pos=34/1/2,135/3/4, str=hut no 3 ,info=a, b;");
  ASSERT_TRUE(statement);
  EXPECT_EQ(statement->keyword, Point);
  EXPECT_EQ(ValuesOf(*statement, 4), (std::vector<std::string_view>{"1", "9", "34/1/2,135/3/4", "hut no 3"}));
  EXPECT_EQ(statement->values[ObjectKey::Info], "a, b");
}

TEST(StatementParser, ItemsOnOneLineMayStandBehindBlanksToo) {
  const auto statement = ParseStatement("point oid=1 gid=9  pos= 34/1/2 , 135/3/4 str=hut no 3 , info=a, b,;");
  ASSERT_TRUE(statement);
  EXPECT_EQ(ValuesOf(*statement, 4), (std::vector<std::string_view>{"1", "9", "34/1/2 , 135/3/4", "hut no 3"}));
  EXPECT_EQ(statement->values[ObjectKey::Info], "a, b,");
}

TEST(StatementParser, KeysAreReadInAnyCase) {
  for (const char* text : {"POINT OID=1,Gid=9;", "\t\tPoint\tOid=1,\t\t\t\tGID=9;", "GROUP GID=1 GNAME=9;"}) {
    const auto statement = ParseStatement(text);
    ASSERT_TRUE(statement) << text;
    EXPECT_EQ(ValuesOf(*statement, 2), (std::vector<std::string_view>{"1", "9"})) << text;
  }
}

TEST(StatementParser, AStatementLaidOutByTabsMayLackThoseInFront) {
  const auto statement = ParseStatement("point\toid=1,\t\t\t\tstr=a gid=5, pos=6,\t\t\t\tinfo=b;");
  ASSERT_TRUE(statement);
  EXPECT_EQ(ValuesOf(*statement, 4), (std::vector<std::string_view>{"1", "", "", "a gid=5, pos=6"}));
  EXPECT_EQ(statement->values[ObjectKey::Info], "b");
}

TEST(StatementParser, IndentedByTabsAStatementOnOneLineIsReadByItsCommasToo) {
  const auto statement = ParseStatement("\t\tpoint\toid=1,gid=9,pos=34/1/2,135/3/4;");
  ASSERT_TRUE(statement);
  EXPECT_EQ(ValuesOf(*statement, 3), (std::vector<std::string_view>{"1", "9", "34/1/2,135/3/4"}));
  EXPECT_EQ(ThereAndBack(Message, {"a, url=b"}).values[0], "a, url=b");
}

TEST(StatementParser, WhatIsNoneGivesNothing) {
  for (const char* text : {"", ";", "xyz a=b;", "comment", "pointoid=1;", "\t\t;", ",,,"})
    EXPECT_FALSE(ParseStatement(text)) << text;
}

TEST(StatementParser, AKeyIsTakenOnce) {
  const auto statement = ParseStatement("point oid=1,oid=2;");
  ASSERT_TRUE(statement);
  EXPECT_EQ(statement->values[ObjectKey::Oid], "1,oid=2");
}

TEST(StatementParser, RandomValuesComeBack) {
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
    const Statement statement = ThereAndBack(Point, values);
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
  LineSource lines("point a;\npoint b", TextEncoding::Utf8);
  StatementSplitter splitter(lines);
  std::string statement;
  EXPECT_TRUE(splitter.Next(statement));
  EXPECT_FALSE(splitter.Incomplete());
  EXPECT_FALSE(splitter.Next(statement));
  EXPECT_TRUE(splitter.Incomplete());
}

}  // namespace
}  // namespace walrim
