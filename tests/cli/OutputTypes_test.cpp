// walrim-cli between the output types, as scripts call it.
#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

#include "app/Messages.h"
#include "support/Processes.h"

namespace walrim {
namespace {

constexpr std::string_view Everything =
    "WPT\tD\tWGS84\t=\"高尾\"\t35.5\t139.25\t=\"山頂\"\r\n"
    "WPT\tD\tWGS84\t=\"JINBA\"\t35.75\t139.125\t=\"HUT\"\r\n"
    "RTH\t3\t=\"高尾から陣馬\"\t3\r\n"
    "RTP\tD\tWGS84\t=\"START\"\t35.5\t139.25\t=\"FIRST\"\r\n"
    "RTP\tD\tWGS84\t=\"MIDDLE\"\t35.625\t139.1875\t=\"SECOND\"\r\n"
    "RTP\tD\tWGS84\t=\"GOAL\"\t35.75\t139.125\t=\"THIRD\"\r\n"
    "TRH\t5\tTRUE\t255\t=\"\"\r\n"
    "TRP\tD\tWGS84\t35.5\t139.25\t2002/11/15 09:00:00\tTRUE\t1E+25\t1E+25\t0\r\n"
    "TRP\tD\tWGS84\t35.5625\t139.25\t2002/11/15 09:10:00\tFALSE\t1E+25\t1E+25\t0\r\n"
    "TRP\tD\tWGS84\t35.625\t139.25\t2002/11/15 09:20:00\tFALSE\t1E+25\t1E+25\t0\r\n"
    "TRP\tD\tWGS84\t35.6875\t139.25\t2002/11/15 09:30:00\tFALSE\t1E+25\t1E+25\t0\r\n"
    "TRP\tD\tWGS84\t35.75\t139.25\t2002/11/15 09:40:00\tFALSE\t1E+25\t1E+25\t0\r\n";

std::size_t CountOf(std::string_view text, std::string_view part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string_view::npos; at = text.find(part, at + part.size()))
    ++count;
  return count;
}

std::vector<std::string> Split(const std::string& text, char at) {
  std::vector<std::string> parts;
  std::istringstream in(text);
  for (std::string part; std::getline(in, part, at);)
    parts.push_back(part);
  return parts;
}

/// Two standard texts that say the same, but for what a tenth of a second makes of positions and the distances between
/// them.
void ExpectSameButForRounding(const std::string& text, const std::string& expected) {
  const auto lines = Split(text, '\n');
  const auto expected_lines = Split(expected, '\n');
  ASSERT_EQ(lines.size(), expected_lines.size()) << text;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const auto columns = Split(lines[i], '\t');
    const auto expected_columns = Split(expected_lines[i], '\t');
    ASSERT_EQ(columns.size(), expected_columns.size()) << lines[i];
    for (std::size_t k = 0; k < columns.size(); ++k) {
      if (columns[k] == expected_columns[k]) continue;
      const bool is_distance = k == 9 && columns[0] == "TRP";
      EXPECT_NEAR(std::atof(columns[k].c_str()), std::atof(expected_columns[k].c_str()), is_distance ? 5 : 0.00003)
          << lines[i];
      EXPECT_TRUE(is_distance || k == 3 || k == 4 || k == 5) << lines[i];
    }
  }
}

/// A script without its head, which tells the time of day.
std::string BehindHead(const std::string& script) {
  return script.substr(script.find('\n'));
}

class OutputTypesCli : public ::testing::Test {
 protected:
  struct Result {
    int status = -1;
    std::string out;
    std::string err;
    [[nodiscard]] bool Said(std::string_view text) const {
      return !text.empty() && err.find(text) != std::string::npos;
    }
  };

  OutputTypesCli() { PutFile(Path("in.grc"), Everything); }

  static Result Run(std::vector<std::string> words, std::string_view standard_input = {}) {
    words.insert(words.begin(), WALRIM_CLI);
    return RunProgram(words, standard_input);
  }
  static Result RunProgram(const std::vector<std::string>& words, std::string_view standard_input = {}) {
    Process process(words, standard_input);
    Result result;
    result.status = process.Wait();
    result.out = process.Out();
    result.err = process.Err();
    return result;
  }
  /// Converts quietly into standard output as UTF-8.
  static Result Convert(const std::string& from, std::vector<std::string> more, std::string_view standard_input = {}) {
    more.insert(more.begin(), {"convert", from, "-o", "-", "--encoding", "utf8", "--quiet"});
    return Run(std::move(more), standard_input);
  }
  [[nodiscard]] std::string Script(std::vector<std::string> options = {}) const {
    options.insert(options.begin(), {"--type", "mps"});
    const Result result = Convert(Path("in.grc"), std::move(options));
    EXPECT_EQ(result.status, 0) << result.err;
    return result.out;
  }
  [[nodiscard]] std::string Path(std::string_view name) const { return folder.Path(name); }

  TemporaryFolder folder;
};

// ---- There and back

TEST_F(OutputTypesCli, StandardToWptPlusAndBackKeepsWhatWptPlusCarries) {
  const Result there = Run({"convert", Path("in.grc"), "-o", Path("a.txt")});
  ASSERT_EQ(there.status, 0) << there.err;
  const std::string text = FileContents(Path("a.txt"));
  EXPECT_TRUE(text.starts_with("Datum,WGS84,WGS84,0,0,0,0,0\r\nWP,D,\x8d\x82\x94\xf6,35.5,139.25,")) << text;
  EXPECT_NE(text.find("\r\nTP,D,35.5625,139.25,11/15/2002,09:10:00,0\r\n"), std::string::npos);
  const Result back = Run({"convert", Path("a.txt"), "-o", Path("b.grc")});
  ASSERT_EQ(back.status, 0) << back.err;
  const Result once = Run({"convert", Path("in.grc"), "-o", Path("c.grc")});
  ASSERT_EQ(once.status, 0) << once.err;
  EXPECT_EQ(FileContents(Path("b.grc")), FileContents(Path("c.grc")));
}

TEST_F(OutputTypesCli, StandardToAScriptAndBackKeepsWhatAScriptCarries) {
  const std::string once = Convert(Path("in.grc"), {}).out;
  for (const char* datum : {"WGS84", "Tokyo"}) {
    SCOPED_TRACE(datum);
    ASSERT_EQ(Run({"convert", Path("in.grc"), "-o", Path("a.mps"), "--datum", datum, "--force"}).status, 0);
    const std::string script = FileContents(Path("a.mps"));
    EXPECT_TRUE(script.starts_with("//Header:Prog:1.0.8.0 Templ:1.2 Date:"));
    EXPECT_NE(script.find(std::string("str=Walrim Datum:") + datum + " UTCOffset:0;"), std::string::npos);
    const Result back = Convert(Path("a.mps"), {});
    ASSERT_EQ(back.status, 0) << back.err;
    ExpectSameButForRounding(back.out, once);
  }
}

TEST_F(OutputTypesCli, AScriptComesBackWithItsTimesWhateverOffsetItWasWrittenWith) {
  PutFile(Path("a.mps"), Script({"--mps-utc-offset", "-9", "--mps-descending"}));
  EXPECT_NE(FileContents(Path("a.mps")).find("11/15/2002 00:10:00"), std::string::npos);
  const Result back = Convert(Path("a.mps"), {"--degree", "MPS"});
  EXPECT_EQ(back.out, Convert(Path("in.grc"), {"--degree", "MPS"}).out);
}

// ---- The options of the script

TEST_F(OutputTypesCli, TheScriptsOptionsHaveTheirStartValues) {
  const std::string script = Script();
  EXPECT_NE(script.find("UTCOffset:0;"), std::string::npos);
  EXPECT_NE(script.find("str=START \r\n"), std::string::npos);
  EXPECT_NE(script.find("str=GOAL  \r\n"), std::string::npos);
  EXPECT_NE(script.find("info=RP:1<START><FIRST>;"), std::string::npos);
  EXPECT_EQ(CountOf(script, "gid=5135\r\n\t\t\t\tpos="), 5U);
  EXPECT_EQ(
      BehindHead(script),
      BehindHead(Script({"--mps-utc-offset", "0", "--mps-origin", "", "--mps-destination", "", "--mps-step", "1"})));
}

TEST_F(OutputTypesCli, MpsUtcOffsetIsAddedToTheTimesOfTheText) {
  const std::string script = Script({"--mps-utc-offset", "-10"});
  EXPECT_NE(script.find("UTCOffset:-10;"), std::string::npos);
  EXPECT_NE(script.find("11/14/2002 23:40:00"), std::string::npos);
  EXPECT_EQ(script.find("11/15/2002 09:40:00"), std::string::npos);
}

TEST_F(OutputTypesCli, MpsOriginAndDestinationAreTheLabelsOfARoutesEnds) {
  const std::string script = Script({"--mps-origin", "駅", "--mps-destination", "HOME"});
  EXPECT_NE(script.find("gid=5133.1\r\n\t\t\t\tpos=35/30/00.0,139/15/00.0\r\n\t\t\t\tstr=駅     \r\n"),
            std::string::npos);
  EXPECT_NE(script.find("gid=5133.2\r\n\t\t\t\tpos=35/45/00.0,139/07/30.0\r\n\t\t\t\tstr=HOME  \r\n"),
            std::string::npos);
  EXPECT_NE(script.find("str=MIDDLE\r\n"), std::string::npos);
  EXPECT_EQ(script.find("str=START"), std::string::npos);
}

TEST_F(OutputTypesCli, MpsDescendingNumbersRoutePointsDownToOne) {
  const std::string script = Script({"--mps-descending"});
  EXPECT_NE(script.find("info=RP:3<START><FIRST>;"), std::string::npos);
  EXPECT_NE(script.find("info=RP:2<MIDDLE><SECOND>;"), std::string::npos);
  EXPECT_NE(script.find("info=RP:1<GOAL><THIRD>;"), std::string::npos);
}

TEST_F(OutputTypesCli, MpsStepLeavesTrackPointsOutButNeverTheEnds) {
  for (const auto& [step, points] : {std::pair{"2", 3U}, {"3", 3U}, {"4", 2U}, {"100", 2U}, {"0", 5U}, {"-7", 5U}}) {
    const std::string script = Script({"--mps-step", step});
    EXPECT_EQ(CountOf(script, "gid=5135\r\n\t\t\t\tpos="), points) << step;
    EXPECT_NE(script.find("gid=5134\r\n\t\t\t\tpos=35/30/00.0,139/15/00.0,35/33/45.0,139/15/00.0,35/37/30.0"),
              std::string::npos)
        << step;
    EXPECT_NE(script.find("11/15/2002 09:40:00"), std::string::npos) << step;
  }
}

TEST_F(OutputTypesCli, WrongScriptOptionsExitWithTwo) {
  const std::vector<std::vector<std::string>> wrong{{"--mps-utc-offset", "nine"},   {"--mps-utc-offset", "32768"},
                                                    {"--mps-step", "99999999999"},  {"--mps-step", "two"},
                                                    {"--mps-descending", "--type"}, {"--type", "doc"}};
  for (const auto& options : wrong) {
    std::vector<std::string> words{"convert", Path("in.grc"), "-o", Path("a.mps")};
    words.insert(words.end(), options.begin(), options.end());
    const Result result = Run(words);
    EXPECT_EQ(result.status, 2) << options[0] << " " << options[1];
    EXPECT_EQ(result.out, "");
  }
  EXPECT_EQ(folder.Names().size(), 1U);
}

TEST_F(OutputTypesCli, DownloadWritesTheTypesToo) {
  const Result download = Run({"download", "--port", "demo", "--pacing", "0", "--quiet", "--kinds", "waypoint",
                               "--encoding", "utf8", "-o", Path("a.mps"), "--mps-utc-offset", "3"});
  EXPECT_EQ(download.status, 0) << download.err;
  const std::string script = FileContents(Path("a.mps"));
  EXPECT_NE(script.find("UTCOffset:3;"), std::string::npos);
  EXPECT_NE(script.find("gid=5131\r\n\t\t\t\tpos=35/"), std::string::npos);
}

// ---- Which type it is

TEST_F(OutputTypesCli, TheTypeIsTheExtensionsInAnyCase) {
  ASSERT_EQ(Run({"convert", Path("in.grc"), "-o", Path("a.TXT")}).status, 0);
  EXPECT_TRUE(FileContents(Path("a.TXT")).starts_with("Datum,"));
  ASSERT_EQ(Run({"convert", Path("in.grc"), "-o", Path("a.Mps")}).status, 0);
  EXPECT_TRUE(FileContents(Path("a.Mps")).starts_with("//Header:"));
  ASSERT_EQ(Run({"convert", Path("in.grc"), "-o", Path("a.other")}).status, 0);
  EXPECT_TRUE(FileContents(Path("a.other")).starts_with("WPT\t"));
}

TEST_F(OutputTypesCli, ATypeThatIsGivenGoesBeforeTheExtension) {
  ASSERT_EQ(Run({"convert", Path("in.grc"), "-o", Path("a.grc"), "--type", "txt"}).status, 0);
  EXPECT_TRUE(FileContents(Path("a.grc")).starts_with("Datum,"));
  ASSERT_EQ(Run({"convert", Path("in.grc"), "-o", Path("a.txt"), "--type", "MPS"}).status, 0);
  EXPECT_TRUE(FileContents(Path("a.txt")).starts_with("//Header:"));
  ASSERT_EQ(Run({"convert", Path("in.grc"), "-o", Path("a.mps"), "--type", "grc"}).status, 0);
  EXPECT_TRUE(FileContents(Path("a.mps")).starts_with("WPT\t"));
}

TEST_F(OutputTypesCli, StandardOutputIsStandardUnlessATypeIsGiven) {
  EXPECT_TRUE(Convert(Path("in.grc"), {}).out.starts_with("WPT\t"));
  EXPECT_TRUE(Convert(Path("in.grc"), {"--type", "txt"}).out.starts_with("Datum,"));
  EXPECT_TRUE(Convert(Path("in.grc"), {"--type", "mps"}).out.starts_with("//Header:"));
}

TEST_F(OutputTypesCli, DatumAndNotationApplyToWptPlusAndTheDatumAloneToScripts) {
  const std::string text = Convert(Path("in.grc"), {"--type", "txt", "--datum", "Tokyo", "--degree", "DMS"}).out;
  EXPECT_TRUE(text.starts_with("Datum,Tokyo mean,Bessel 1841,739.845,0.10037483,-128,481,664\r\nWP,DMS,高尾,35.2948"))
      << text.substr(0, 120);
  EXPECT_EQ(CountOf(text, ",D,"), 0U);
  EXPECT_EQ(BehindHead(Script({"--degree", "D"})), BehindHead(Script({"--degree", "DMS"})));
}

// ---- Standard input

TEST_F(OutputTypesCli, StandardInputOfEveryTypeIsRecognised) {
  const std::string expected = Convert(Path("in.grc"), {"--degree", "MPS"}).out;
  for (const char* type : {"grc", "txt", "mps"}) {
    const Result written = Convert(Path("in.grc"), {"--type", type});
    ASSERT_EQ(written.status, 0) << written.err;
    const Result back = Convert("-", {"--degree", "MPS"}, written.out);
    EXPECT_EQ(back.status, 0) << type << back.err;
    EXPECT_EQ(back.out, expected) << type;
  }
}

TEST_F(OutputTypesCli, AScriptOnStandardInputIsKnownByItsTitleInAnyCase) {
  const std::string point = "\n\t\tpoint\toid=1\n\t\t\t\tpos=35/30/00.0,139/15/00.0\n\t\t\t\tstr=A;\n";
  for (const char* title : {"//Header:Prog:X;", "//HEADER", "//header : other"})
    EXPECT_EQ(Convert("-", {}, title + point).status, 0) << title;
  for (const char* title : {"// Header", "//Head", ""}) {
    const Result refused = Convert("-", {}, title + point);
    EXPECT_EQ(refused.status, 1) << title;
    EXPECT_TRUE(refused.Said(messages::UnsupportedFile(messages::StandardInput))) << title;
  }
}

TEST_F(OutputTypesCli, AFileIsAScriptByItsNameAndNotByItsTitle) {
  PutFile(Path("a.mps"), Script());
  PutFile(Path("a.txt"), Script());
  EXPECT_EQ(Convert(Path("a.mps"), {}).status, 0);
  EXPECT_EQ(Convert(Path("a.txt"), {}).status, 1);
}

// ---- Messages and exit statuses

TEST_F(OutputTypesCli, UnknownCommandsAreToldALineEachAndStillExitWithZero) {
  std::string text = "WP,D,A,35,139,11/15/2002,10:00:00,X\r\n";
  for (int i = 1; i <= 23; ++i)
    text += "X" + std::to_string(i) + ",1,2\r\n";
  PutFile(Path("a.txt"), text);
  const Result result = Convert(Path("a.txt"), {});
  EXPECT_EQ(result.status, 0);
  EXPECT_TRUE(result.Said(Path("a.txt") + "：command [X1] is not suppoted\n")) << result.err;
  EXPECT_TRUE(result.Said("command [X20] is not suppoted\n"));
  EXPECT_FALSE(result.Said("[X21]"));
  EXPECT_TRUE(result.Said("ほかに3行，分からない命令があります．\n"));
  EXPECT_TRUE(result.out.starts_with("WPT\tD\tWGS84\t=\"A"));
}

TEST_F(OutputTypesCli, ATextWithACommaIsToldAndStillExitsWithZero) {
  // A comment in quotes may hold a comma on reading; it is written as it is.
  const Result result = Convert("-", {"--type", "txt"}, "WP,D,A,35,139,11/15/2002,10:00:00,\"HUT, CLOSED\"\r\n");
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_NE(result.out.find(",HUT, CLOSED\r\n"), std::string::npos) << result.out;
  EXPECT_TRUE(result.Said(messages::BrokenTexts(1)));
}

TEST_F(OutputTypesCli, NothingToWriteExitsWithOneAndLeavesNoFile) {
  PutFile(Path("way.grc"), "WPT\tD\tWGS84\tA\t35\t139\r\n");
  for (const char* name : {"a.txt", "a.mps"}) {
    const Result result = Run({"convert", Path("way.grc"), "-o", Path(name), "--kinds", "track"});
    EXPECT_EQ(result.status, 1) << result.err;
    EXPECT_EQ(result.out, "");
  }
  EXPECT_EQ(folder.Names().size(), 2U);
}

TEST_F(OutputTypesCli, AnExistingFileIsReplacedOnlyByForce) {
  for (const char* name : {"a.txt", "a.mps"}) {
    PutFile(Path(name), "old");
    EXPECT_EQ(Run({"convert", Path("in.grc"), "-o", Path(name)}).status, 1);
    EXPECT_EQ(FileContents(Path(name)), "old");
    EXPECT_EQ(Run({"convert", Path("in.grc"), "-o", Path(name), "--force"}).status, 0);
    EXPECT_GT(FileContents(Path(name)).size(), 100U);
  }
}

TEST_F(OutputTypesCli, ACharacterThatShiftJisLacksIsNamedInBothTypes) {
  PutFile(Path("cafe.grc"), "WPT\tD\tWGS84\tNIŠ\t35\t139\tX\r\n");
  for (const char* name : {"a.txt", "a.mps"}) {
    const Result result = Run({"convert", Path("cafe.grc"), "-o", Path(name)});
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.Said("文字「Š」はShift-JISでは表せません．")) << result.err;
    EXPECT_TRUE(result.Said("NIŠ"));
    EXPECT_TRUE(result.Said("--encoding utf8"));
  }
  EXPECT_EQ(folder.Names().size(), 2U);
}

TEST_F(OutputTypesCli, KmlIsNamedAfterItsFileAndIsNotRead) {
  ASSERT_EQ(Run({"convert", Path("in.grc"), "-o", Path("walk.day.kml")}).status, 0);
  const std::string kml = FileContents(Path("walk.day.kml"));
  EXPECT_NE(kml.find("  <Document>\n    <name>walk.day</name>\n    <Folder>\n"), std::string::npos) << kml;
  const Result plain = Run({"convert", Path("in.grc"), "--type", "kml", "-o", "-"});
  EXPECT_NE(plain.out.find("  <Document>\n    <Folder>\n"), std::string::npos) << plain.out;
  const Result back = Run({"convert", Path("walk.day.kml"), "-o", Path("a.grc")});
  EXPECT_EQ(back.status, 1);
  EXPECT_TRUE(back.Said("MPS形式（mps），GPX形式（gpx）のファイルを取り込めます．")) << back.err;
}

TEST_F(OutputTypesCli, AFolderForTemporaryFilesDoesNotMatter) {
  const auto with_temporary = [this](std::string_view where, const std::string& output) {
    return RunProgram({"/usr/bin/env", "TMPDIR=" + Path(where), WALRIM_CLI, "convert", Path("in.grc"), "-o", output});
  };
  const Result result = with_temporary("", Path("a.mps"));
  const Result without = with_temporary("missing", Path("b.mps"));
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(without.status, 0) << without.err;
  std::vector<std::string> names = folder.Names();
  std::sort(names.begin(), names.end());
  EXPECT_EQ(names, (std::vector<std::string>{"a.mps", "b.mps", "in.grc"}));
}

TEST_F(OutputTypesCli, AScriptShowsItsStatusTextsUnlessQuiet) {
  const Result loud = Run({"convert", Path("in.grc"), "-o", Path("a.mps")});
  EXPECT_TRUE(loud.Said("Converting (WPT+)to(MPS)\n")) << loud.err;
  EXPECT_TRUE(loud.Said("Export Wpt[")) << loud.err;
  const Result quiet = Run({"convert", Path("in.grc"), "-o", Path("b.mps"), "--quiet", "--fix-dates", "0"});
  EXPECT_EQ(quiet.err, "");
}

}  // namespace
}  // namespace walrim
