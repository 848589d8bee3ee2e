#include "house/IncludeRules.h"

#include <gtest/gtest.h>

namespace walrim {
namespace {

const LayerTable Table{
    {"text", {}}, {"geo", {"text"}}, {"records", {"geo", "text"}}, {"qt", {"text", "Qt"}}, {"receiver", {"text"}}};

std::string Check(const std::string& path, const std::string& text) {
  return Report(CheckIncludes(Table, IncludesOf(SourceFile{path, text})));
}

TEST(ParseLayerTable, ReadsTheRowsOfAPage) {
  const LayerTable table = ParseLayerTable(
      "# Page\n"
      "| folder | holds | may include |\n"
      "|---|---|---|\n"
      "| `src/text/` | UTF-8, `Cp932` | nothing |\n"
      "| `src/geo/` | a \\| b | `text` |\n"
      "|`src/qt/`|x|`geo`, `text`; `Qt`|\n"
      "| `tests/` | y | `text` |\n"
      "Use `src/nowhere/` | not | `text` |\n");
  EXPECT_EQ(table, (LayerTable{{"text", {}}, {"geo", {"text"}}, {"qt", {"geo", "text", "Qt"}}}));
}

TEST(IncludesOf, FindsEveryFormOfTheDirective) {
  const auto includes = IncludesOf(SourceFile{"src/geo/A.cpp",
                                              "#include \"text/Utf8.h\"\n"
                                              "// #include \"text/Not.h\"\n"
                                              "  #  include <vector>  // kept\n"
                                              "#include NAME\n"
                                              "#include_next <stdio.h>\n"
                                              "int includes = 0;\n"});
  ASSERT_EQ(includes.size(), 4U);
  EXPECT_EQ(includes[0].target, "text/Utf8.h");
  EXPECT_TRUE(includes[0].quoted);
  EXPECT_EQ(includes[0].line, 1);
  EXPECT_EQ(includes[1].target, "vector");
  EXPECT_FALSE(includes[1].quoted);
  EXPECT_EQ(includes[1].line, 3);
  EXPECT_EQ(includes[2].target, "");
  EXPECT_EQ(includes[3].target, "stdio.h");
}

TEST(CheckIncludes, AcceptsWhatTheTableAllows) {
  EXPECT_EQ(Check("src/records/A.cpp", "#include \"records/A.h\"\n#include \"geo/B.h\"\n#include <vector>\n"), "");
  EXPECT_EQ(Check("src/qt/A.cpp", "#include <QSerialPort>\n#include <poll.h>\n#include \"text/Utf8.h\"\n"), "");
}

TEST(CheckIncludes, NamesFileAndLineOfAFolderThatIsNotAllowed) {
  EXPECT_EQ(Check("src/geo/A.h", "#pragma once\n\n#include \"records/Route.h\"\n"),
            "src/geo/A.h:3: geo may not include records (records/Route.h)\n");
  EXPECT_EQ(Check("src/receiver/A.h", "#include \"records/Route.h\"\n#include \"device/Garmin.h\"\n"),
            "src/receiver/A.h:1: receiver may not include records (records/Route.h)\n"
            "src/receiver/A.h:2: receiver may not include device (device/Garmin.h)\n");
}

TEST(CheckIncludes, RefusesQtOutsideItsFolders) {
  for (const char* header : {"<QString>", "<QtCore/QString>", "<QtGlobal>", "<qglobal.h>", "\"QString\""}) {
    EXPECT_NE(Check("src/text/A.cpp", std::string("#include ") + header + "\n"), "") << header;
  }
}

TEST(CheckIncludes, RefusesPathsThatAreNotRootedAtTheSources) {
  EXPECT_EQ(Check("src/geo/A.cpp", "#include \"A.h\"\n"), "src/geo/A.cpp:1: \"A.h\" is not rooted at src/\n");
  EXPECT_NE(Check("src/geo/A.cpp", "#include \"../records/Route.h\"\n"), "");
  EXPECT_NE(Check("src/geo/A.cpp", "#include \"geo/../records/Route.h\"\n"), "");
}

TEST(CheckIncludes, RefusesAnIncludeThatNamesNoFile) {
  EXPECT_NE(Check("src/geo/A.cpp", "#include HEADER\n"), "");
}

TEST(CheckIncludes, RefusesAFolderWithoutARow) {
  EXPECT_NE(Check("src/novel/A.cpp", "#include <vector>\n"), "");
  EXPECT_NE(Check("src/A.cpp", "#include <vector>\n"), "");
}

TEST(CheckLinkLines, RefusesLibrariesThatAreNotInTheRow) {
  EXPECT_EQ(Report(CheckLinkLines(Table, {{"src/geo/CMakeLists.txt", "walrim_library(geo LINK walrim_text)\n"}})), "");
  EXPECT_EQ(Report(CheckLinkLines(Table, {{"src/geo/CMakeLists.txt", "walrim_library(geo LINK\n  walrim_records)\n"}})),
            "src/geo/CMakeLists.txt:2: geo may not link records\n");
  EXPECT_EQ(Report(CheckLinkLines(Table, {{"src/geo/CMakeLists.txt", "walrim_library(geo LINK Qt6::Core)\n"}})),
            "src/geo/CMakeLists.txt:1: geo may not link Qt\n");
  EXPECT_NE(Report(CheckLinkLines(Table, {{"src/novel/CMakeLists.txt", ""}})), "");
}

TEST(FileCircles, NamesTheWholeCircleAndTheLineThatClosesIt) {
  const auto includes = IncludesOf(std::vector<SourceFile>{{"src/geo/A.h", "#include \"geo/B.h\"\n"},
                                                           {"src/geo/B.h", "\n#include \"geo/C.h\"\n"},
                                                           {"src/geo/C.h", "\n\n#include \"geo/A.h\"\n"}});
  EXPECT_EQ(Report(FileCircles(includes)),
            "src/geo/C.h:3: a circle: src/geo/A.h -> src/geo/B.h -> src/geo/C.h -> src/geo/A.h\n");
}

TEST(FileCircles, SeesAFileThatIncludesItself) {
  EXPECT_NE(Report(FileCircles(IncludesOf(SourceFile{"src/geo/A.h", "#include \"geo/A.h\"\n"}))), "");
}

TEST(FileCircles, TwoWaysToOneFileAreNone) {
  const auto includes = IncludesOf(std::vector<SourceFile>{
      {"src/geo/A.h", "#include \"geo/B.h\"\n#include \"geo/C.h\"\n"}, {"src/geo/B.h", "#include \"geo/C.h\"\n"}});
  EXPECT_EQ(Report(FileCircles(includes)), "");
}

TEST(FolderCircles, SeesRowsThatNeedEachOther) {
  EXPECT_EQ(Report(FolderCircles(Table)), "");
  EXPECT_NE(Report(FolderCircles({{"geo", {"records"}}, {"records", {"geo"}}})), "");
}

}  // namespace
}  // namespace walrim
