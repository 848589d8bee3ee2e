// Export, copy and auto-save in every format.
#include <cstring>
#include <fcntl.h>
#include <signal.h>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/stat.h>

#include "app/AppTest.h"
#include "app/Messages.h"
#include "text/Numbers.h"

namespace walrim {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view Standard =
    "WPT\tD\tWGS84\tTAKAO\t35.5\t139.25\t\r\n"
    "RTH\t3\tRIDGE\t2\r\n"
    "RTP\tD\tWGS84\tSTART\t35.5\t139.25\tFIRST\r\n"
    "RTP\tD\tWGS84\tGOAL\t35.75\t139.125\tLAST\r\n"
    "TRH\t2\tTRUE\t4\tLOG\r\n"
    "TRP\tD\tWGS84\t35.5\t139.25\t2002/11/15 09:00:00\tTRUE\t599\t1E+25\t0\r\n"
    "TRP\tD\tWGS84\t35.75\t139.125\t2002/11/15 10:30:00\tFALSE\t700\t1E+25\t0\r\n";

constexpr std::string_view WptPlus =
    "Datum,WGS84,WGS84,0,0,0,0,0\r\n"
    "WP,D,TAKAO,35.5,139.25,11/15/2002,14:25:30,CRTD 14:25 15-Nov-02\r\n"
    "RN,3,RIDGE\r\n"
    "RP,D,START,35.5,139.25,11/15/2002,14:25:30,FIRST\r\n"
    "RP,D,GOAL,35.75,139.125,11/15/2002,14:25:30,LAST\r\n"
    "TP,D,35.5,139.25,11/15/2002,09:00:00,1\r\n"
    "TP,D,35.75,139.125,11/15/2002,10:30:00,0\r\n";

const std::string Converting(messages::Converting);
const std::string QuoteNotice = messages::BrokenTexts(1);

/// A log so long that its export lets the event loop turn in the middle of it.
std::string LongLog() {
  std::string text = "TRH\t0\tTRUE\t0\tLONG\r\n";
  for (int i = 0; i < 3000; ++i) {
    text += "TRP\tD\tWGS84\t35." + std::to_string(10000 + i) + "\t139\t2002/11/15 09:00:00\t" +
            (i == 0 ? "TRUE" : "FALSE") + "\r\n";
  }
  return text;
}

class OutputTypesFlow : public AppTest {
 protected:
  void Choose(FormatId format, std::string_view name = "out") {
    main.State().Settings().format = format;
    desktop.save_path = Path(name);
  }
  [[nodiscard]] std::string Written(std::string_view name = "out") const { return FileContents(Path(name)); }
  [[nodiscard]] static std::string_view NameOf(FormatId format) { return FormatOf(format).name; }
};

// ---- Standard files

class StandardFileFlow : public AppTest {
 protected:
  void SetUp() override { main.State().Settings().chosen_kinds.fill(false); }
  /// Holds one waypoint and ticks its kind alone.
  void HoldWaypoint(std::string_view ident = "TAKAO") {
    AppTest::HoldWaypoint(ident);
    main.State().Settings().chosen_kinds = {true, false, false};
  }
};

TEST_F(StandardFileFlow, ExportWithoutDataOrSelectionIsRefused) {
  EXPECT_EQ(main.Exports().Export(), Outcome::Refused);
  EXPECT_EQ(desktop.messages, Strings{std::string(messages::NothingDownloaded)});
  HoldWaypoint();
  main.State().Settings().chosen_kinds.fill(false);
  EXPECT_EQ(main.Exports().Export(), Outcome::Refused);
  EXPECT_EQ(desktop.messages, Strings{std::string(messages::NothingChosen)});
}

TEST_F(StandardFileFlow, ExportAsksForAPathWithTheTypesFilter) {
  HoldWaypoint();
  desktop.save_path = Path("a.grc");
  EXPECT_EQ(main.Exports().Export(), Outcome::Done);
  EXPECT_EQ(desktop.filters, Strings{"すべてのファイル (*.*)|*.*|標準ファイル (*.grc)|*.grc|"});
  EXPECT_EQ(FileContents(Path("a.grc")).substr(0, 30), "WPT\tD\tWGS84\t=\"TAKAO\"\t35.5\t139.");
  EXPECT_TRUE(desktop.Showed("Export to " + Path("a.grc")));
  EXPECT_TRUE(desktop.Showed("Export Wpt[1/1]"));
  EXPECT_EQ(desktop.caption, "");
}

TEST_F(StandardFileFlow, ACancelledSaveDialogWritesNothing) {
  HoldWaypoint();
  main.State().Settings().auto_delete = true;
  EXPECT_EQ(main.Exports().Export(), Outcome::Refused);
  EXPECT_EQ(folder.Names().size(), 0U);
  EXPECT_EQ(Data().Count(DataKind::Waypoint), 1U);
}

TEST_F(StandardFileFlow, AutoFileNameIsMadeOfDateAndTime) {
  HoldWaypoint();
  main.State().Settings().auto_file_name = true;
  EXPECT_EQ(main.Exports().Export(), Outcome::Done);
  EXPECT_TRUE(fs::exists(Path("20021115_142530.grc")));
  EXPECT_TRUE(desktop.filters.empty());
}

TEST_F(StandardFileFlow, ASecondExportWithinTheSameSecondAsksFirst) {
  HoldWaypoint();
  main.State().Settings().auto_file_name = true;
  ASSERT_EQ(main.Exports().Export(), Outcome::Done);
  const std::string first = FileContents(Path("20021115_142530.grc"));
  HoldWaypoint("JINBA");
  desktop.ok = false;
  EXPECT_EQ(main.Exports().Export(), Outcome::Refused);
  const std::string path = (fs::current_path() / "20021115_142530.grc").string();
  EXPECT_EQ(desktop.questions, Strings{messages::OverwriteQuestion(path)});
  EXPECT_EQ(FileContents(Path("20021115_142530.grc")), first);
  desktop.ok = true;
  EXPECT_EQ(main.Exports().Export(), Outcome::Done);
  EXPECT_GT(FileContents(Path("20021115_142530.grc")).size(), first.size());
}

TEST_F(StandardFileFlow, AutoDeleteEmptiesTheExportedKinds) {
  HoldWaypoint();
  main.State().Settings().auto_delete = true;
  desktop.save_path = Path("a.grc");
  EXPECT_EQ(main.Exports().Export(), Outcome::Done);
  EXPECT_EQ(Held()[0], std::nullopt);
  EXPECT_EQ(Data().Count(DataKind::Waypoint), 0U);
}

TEST_F(StandardFileFlow, AutoDeleteKeepsWhatCouldNotBeWritten) {
  HoldWaypoint();
  main.State().Settings().auto_delete = true;
  desktop.save_path = Path("missing/a.grc");
  EXPECT_EQ(main.Exports().Export(), Outcome::Refused);
  EXPECT_EQ(desktop.messages, Strings{messages::WriteProblem(Path("missing/a.grc"), std::strerror(ENOENT))});
  EXPECT_EQ(Data().Count(DataKind::Waypoint), 1U);
}

TEST_F(StandardFileFlow, SelectedKindsWithoutRecordsShowBothMessages) {
  HoldWaypoint();
  main.State().Settings().chosen_kinds = {false, true, false};
  desktop.save_path = Path("a.grc");
  EXPECT_EQ(main.Exports().Export(), Outcome::Refused);
  EXPECT_EQ(desktop.messages, (Strings{std::string(messages::NothingToSave), std::string(messages::NothingWritten)}));
  EXPECT_EQ(folder.Names().size(), 0U);
}

TEST_F(StandardFileFlow, FilesAreShiftJisByDefaultAndUtf8OnRequest) {
  HoldWaypoint("高尾");
  desktop.save_path = Path("a.grc");
  ASSERT_EQ(main.Exports().Export(), Outcome::Done);
  EXPECT_NE(FileContents(Path("a.grc")).find("=\"\x8d\x82\x94\xf6\""), std::string::npos);
  main.State().Settings().encoding = TextEncoding::Utf8;
  ASSERT_EQ(main.Exports().Export(), Outcome::Done);
  EXPECT_NE(FileContents(Path("a.grc")).find("=\"高尾\""), std::string::npos);
}

TEST_F(StandardFileFlow, ACharacterThatShiftJisLacksIsNamedAndNothingIsWrittenUnasked) {
  HoldWaypoint("TAKAO");
  HoldWaypoint("CAFé");
  desktop.save_path = Path("a.grc");
  desktop.yes = false;
  EXPECT_EQ(main.Exports().Export(), Outcome::Refused);
  EXPECT_EQ(desktop.questions, Strings{messages::Utf8Question("2行目のWPT「CAFé」", "é")});
  EXPECT_EQ(folder.Names().size(), 0U);
  desktop.yes = true;
  EXPECT_EQ(main.Exports().Export(), Outcome::Done);
  EXPECT_NE(FileContents(Path("a.grc")).find("=\"CAFé\""), std::string::npos);
}

TEST_F(StandardFileFlow, HeaderLinesComeWhereWanted) {
  HoldWaypoint();
  main.State().Settings().with_header = true;
  EXPECT_EQ(main.Exports().Copy(), Outcome::Done);
  EXPECT_EQ(desktop.clipboard.substr(0, 32), "WPT\tDegreeType\tDatum\tident\tlat\tl");
}

TEST_F(StandardFileFlow, CopyPutsStandardLinesOnTheClipboardAndAutoDeleteFollows) {
  EXPECT_EQ(main.Exports().Copy(), Outcome::Refused);
  EXPECT_EQ(desktop.messages, Strings{std::string(messages::NothingDownloaded)});
  HoldWaypoint();
  main.State().Settings().auto_delete = true;
  EXPECT_EQ(main.Exports().Copy(), Outcome::Done);
  EXPECT_EQ(desktop.clipboard.substr(0, 4), "WPT\t");
  EXPECT_EQ(Data().Count(DataKind::Waypoint), 0U);
}

// ---- WPT+

TEST_F(OutputTypesFlow, WptPlusIsWrittenLineByLineWithItsStatusTexts) {
  Hold(Standard);
  Choose(FormatId::WptPlus);
  EXPECT_EQ(main.Exports().Export(), Outcome::Done);
  EXPECT_EQ(Written(), WptPlus);
  EXPECT_EQ(desktop.captions,
            (Strings{"Export to " + Path("out"), "Export Wpt[1/1]", "Export Rte[1/1]", "Export Trk[1/1]", "", ""}));
  EXPECT_EQ(desktop.messages, Strings{});
  EXPECT_EQ(dialogs.mps_shown, 0);
}

TEST_F(OutputTypesFlow, WptPlusIsInTheChosenNotation) {
  Hold("WPT\tD\tWGS84\tTAKAO\t35.5\t139.25\tSUMMIT\r\n");
  Choose(FormatId::WptPlus);
  main.State().Settings().notation = AngleNotation::DMS;
  ASSERT_EQ(main.Exports().Export(), Outcome::Done);
  EXPECT_EQ(Written(),
            "Datum,WGS84,WGS84,0,0,0,0,0\r\nWP,DMS,TAKAO,35.300000,139.150000,11/15/2002,14:25:30,SUMMIT\r\n");
}

TEST_F(OutputTypesFlow, WptPlusIsOnTheChosenDatum) {
  Hold("WPT\tD\tWGS84\tTAKAO\t35.5\t139.25\tSUMMIT\r\n");
  Choose(FormatId::WptPlus);
  main.State().Settings().datum = Datum::Tokyo;
  ASSERT_EQ(main.Exports().Export(), Outcome::Done);
  const std::string text = Written();
  const std::string beginning = "Datum,Tokyo mean,Bessel 1841,739.845,0.10037483,-128,481,664\r\nWP,D,TAKAO,";
  ASSERT_EQ(text.substr(0, beginning.size()), beginning);
  // In this corner of Japan Tokyo latitudes are some 0.00324 degrees smaller, longitudes 0.00316 larger.
  const double lat = LeadingNumber(text.substr(beginning.size()));
  const double lon = LeadingNumber(text.substr(text.find(',', beginning.size()) + 1));
  EXPECT_NEAR(lat, 35.5 - 0.00324, 0.0001);
  EXPECT_NEAR(lon, 139.25 + 0.00316, 0.0001);
}

TEST_F(OutputTypesFlow, HeaderLinesBelongToTheStandardTypeAlone) {
  Hold(Standard);
  main.State().Settings().with_header = true;
  main.State().Settings().format = FormatId::WptPlus;
  ASSERT_EQ(main.Exports().Copy(), Outcome::Done);
  EXPECT_EQ(desktop.clipboard, WptPlus);
}

TEST_F(OutputTypesFlow, OnlyTheTickedKindsAreWritten) {
  Hold(Standard);
  main.State().Settings().chosen_kinds = {false, true, false};
  main.State().Settings().format = FormatId::WptPlus;
  ASSERT_EQ(main.Exports().Copy(), Outcome::Done);
  EXPECT_EQ(desktop.clipboard,
            "Datum,WGS84,WGS84,0,0,0,0,0\r\nRN,3,RIDGE\r\n"
            "RP,D,START,35.5,139.25,11/15/2002,14:25:30,FIRST\r\n"
            "RP,D,GOAL,35.75,139.125,11/15/2002,14:25:30,LAST\r\n");
}

// ---- Map-server scripts

TEST_F(OutputTypesFlow, AScriptIsMadeBehindItsDialog) {
  Hold(Standard);
  Choose(FormatId::Script);
  Strings before_dialog;
  dialogs.on_mps = [&](ScriptOptions&) {
    before_dialog = desktop.captions;
    EXPECT_TRUE(main.State().Busy());
    return true;
  };
  EXPECT_EQ(main.Exports().Export(), Outcome::Done);
  EXPECT_EQ(before_dialog, (Strings{"Export to " + Path("out"), Converting}));
  EXPECT_EQ(desktop.captions, (Strings{"Export to " + Path("out"), Converting, "Export Wpt[1/1]", "Export Rte[1/1]",
                                       "Export Trk[1/1]", "", ""}));
  EXPECT_EQ(dialogs.mps_shown, 1);
  EXPECT_EQ(desktop.messages, Strings{});
}

TEST_F(OutputTypesFlow, AScriptHoldsItsHeadItsThemeAndItsObjects) {
  Hold(Standard);
  Choose(FormatId::Script);
  ASSERT_EQ(main.Exports().Export(), Outcome::Done);
  const std::string script = Written();
  EXPECT_TRUE(script.starts_with("//Header:Prog:1.0.8.0 Templ:1.2 Date:11/15/2002 14:25:30;\r\n")) << script;
  EXPECT_TRUE(script.ends_with("\t\tdisp\tall;\r\nmapserver end;\r\n")) << script;
  EXPECT_NE(script.find("\t\ttheme\tstr=Walrim Datum:WGS84 UTCOffset:0;\r\n"), std::string::npos);
  EXPECT_NE(script.find("gid=5131\r\n\t\t\t\tpos=35/30/00.0,139/15/00.0\r\n\t\t\t\tstr=TAKAO \r\n"), std::string::npos);
  EXPECT_NE(script.find("gid=5132\r\n\t\t\t\tpos=35/30/00.0,139/15/00.0,35/45/00.0,139/07/30.0\r\n"),
            std::string::npos);
}

TEST_F(OutputTypesFlow, AScriptOnTokyoSaysSo) {
  Hold(Standard);
  Choose(FormatId::Script);
  main.State().Settings().datum = Datum::Tokyo;
  ASSERT_EQ(main.Exports().Export(), Outcome::Done);
  EXPECT_NE(Written().find("\t\ttheme\tstr=Walrim Datum:Tokyo UTCOffset:0;\r\n"), std::string::npos);
  EXPECT_EQ(Written().find("pos=35/30/00.0"), std::string::npos);
}

TEST_F(OutputTypesFlow, WhatTheDialogSetShapesTheScriptAndStays) {
  Hold(Standard);
  Choose(FormatId::Script);
  const ScriptOptions chosen{-9, "HOME", "SUMMIT", true, 5};
  dialogs.on_mps = [&](ScriptOptions& options) {
    EXPECT_EQ(options, ScriptOptions{});
    options = chosen;
    return true;
  };
  ASSERT_EQ(main.Exports().Export(), Outcome::Done);
  const std::string script = Written();
  EXPECT_NE(script.find("str=HOME  \r\n"), std::string::npos);
  EXPECT_NE(script.find("str=SUMMIT\r\n"), std::string::npos);
  EXPECT_NE(script.find("info=RP:2<START><FIRST>;"), std::string::npos) << script;
  EXPECT_NE(script.find("UTCOffset:-9;"), std::string::npos);
  EXPECT_EQ(main.State().Settings().script, chosen);
}

TEST_F(OutputTypesFlow, WithoutDialogsTheSettingsShapeTheScript) {
  WalrimMain plain(port, clock, loop, desktop);
  ASSERT_EQ(plain.Imports().ImportFile(Put("in.grc", Standard)), Outcome::Done);
  plain.State().Settings().chosen_kinds.fill(true);
  plain.State().Settings().format = FormatId::Script;
  plain.State().Settings().script.origin_name = "HOME";
  EXPECT_EQ(plain.Exports().Copy(), Outcome::Done);
  EXPECT_NE(desktop.clipboard.find("str=HOME  \r\n"), std::string::npos);
}

TEST_F(OutputTypesFlow, ARefusedDialogWritesNothingSaysNothingAndDeletesNothing) {
  Hold(Standard);
  Choose(FormatId::Script);
  main.State().Settings().auto_delete = true;
  desktop.clipboard = "before";
  dialogs.on_mps = [](ScriptOptions&) { return false; };
  EXPECT_EQ(main.Exports().Export(), Outcome::Refused);
  EXPECT_EQ(main.Exports().Copy(), Outcome::Refused);
  EXPECT_EQ(dialogs.mps_shown, 2);
  EXPECT_EQ(folder.Names(), Strings{});
  EXPECT_EQ(desktop.clipboard, "before");
  EXPECT_EQ(desktop.messages, Strings{});
  EXPECT_EQ(desktop.caption, "");
  EXPECT_FALSE(desktop.Showed("Export Wpt[1/1]"));
  EXPECT_EQ(Data().Count(DataKind::Waypoint), 1U);
  EXPECT_FALSE(main.State().Busy());
}

TEST_F(OutputTypesFlow, ARefusedOverwriteShowsNoDialog) {
  Hold(Standard);
  Choose(FormatId::Script);
  PutFile(Path("out"), "old");
  desktop.ok = false;
  EXPECT_EQ(main.Exports().Export(), Outcome::Refused);
  EXPECT_EQ(dialogs.mps_shown, 0);
  EXPECT_EQ(Written(), "old");
}

TEST_F(OutputTypesFlow, TheProgressOfAScriptEndsWithIt) {
  Hold(LongLog());
  Choose(FormatId::Script);
  ASSERT_EQ(main.Exports().Export(), Outcome::Done);
  ASSERT_GE(desktop.progress.size(), 2U);
  EXPECT_EQ(desktop.progress.back(), (std::pair<std::int64_t, std::int64_t>{0, 0}));
}

// ---- What is left behind

TEST_F(OutputTypesFlow, AnExportThatBreaksOffLeavesNothing) {
  Hold(LongLog());
  for (const FormatId type : {FormatId::Standard, FormatId::WptPlus, FormatId::Script}) {
    Choose(type);
    int turns = 0;
    loop.on_yield = [&] {
      if (++turns > 1) throw std::runtime_error("broken off");
    };
    EXPECT_THROW(main.Exports().Export(), std::runtime_error);
    EXPECT_EQ(turns, 2);
    EXPECT_EQ(folder.Names(), Strings{});
    EXPECT_FALSE(main.State().Busy());
  }
}

TEST_F(OutputTypesFlow, AFolderForTemporaryFilesThatIsMissingOrFullDoesNotMatter) {
  Hold(LongLog());
  for (const char* temporary : {"/dev/full", "/proc/missing"}) {
    const EnvironmentVariable missing("TMPDIR", temporary);
    for (const FormatId type : {FormatId::Standard, FormatId::WptPlus, FormatId::Script}) {
      Choose(type, NameOf(type));
      EXPECT_EQ(main.Exports().Export(), Outcome::Done) << NameOf(type);
      EXPECT_EQ(main.Exports().Copy(), Outcome::Done) << NameOf(type);
    }
  }
  EXPECT_EQ(desktop.messages, Strings{});
  EXPECT_EQ(folder.Names().size(), 3U);
}

TEST_F(OutputTypesFlow, AFullDiskLeavesTheOldScript) {
  Hold(Standard);
  Choose(FormatId::Script);
  PutFile(Path("out"), "old");
  // Under a file size limit a write fails as on a full disk.
  const auto export_under_limit = [this](rlim_t bytes) {
    ::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    limit.rlim_cur = bytes;
    limit.rlim_max = bytes;
    ::setrlimit(RLIMIT_FSIZE, &limit);
    const bool refused = main.Exports().Export() == Outcome::Refused && desktop.messages.size() == 1;
    std::_Exit(refused && scratch.Names().empty() && Written() == "old" && folder.Names().size() == 1 ? 0 : 1);
  };
  EXPECT_EXIT(export_under_limit(100), ::testing::ExitedWithCode(0), "");
  EXPECT_EXIT(export_under_limit(1000), ::testing::ExitedWithCode(0), "");
}

// ---- Nothing to write

TEST_F(OutputTypesFlow, WithoutDataOrSelectionNoDialogIsShown) {
  main.State().Settings().format = FormatId::Script;
  EXPECT_EQ(main.Exports().Export(), Outcome::Refused);
  Hold("WPT\tD\tWGS84\tA\t35\t139\r\n");
  main.State().Settings().chosen_kinds.fill(false);
  EXPECT_EQ(main.Exports().Copy(), Outcome::Refused);
  EXPECT_EQ(desktop.messages, Strings{std::string(messages::NothingChosen)});
  EXPECT_EQ(dialogs.mps_shown, 0);
}

TEST_F(OutputTypesFlow, SelectedKindsWithoutRecordsShowBothMessages) {
  Hold("WPT\tD\tWGS84\tA\t35\t139\r\n");
  main.State().Settings().chosen_kinds = {false, true, true};
  for (const FormatId type : {FormatId::WptPlus, FormatId::Script}) {
    Forget();
    Choose(type);
    EXPECT_EQ(main.Exports().Export(), Outcome::Refused);
    EXPECT_EQ(desktop.messages, (Strings{std::string(messages::NothingToSave), std::string(messages::NothingWritten)}))
        << NameOf(type);
    EXPECT_EQ(main.Exports().Copy(), Outcome::Refused);
    EXPECT_EQ(desktop.messages.size(), 4U) << NameOf(type);
    EXPECT_EQ(folder.Names(), Strings{});
    EXPECT_EQ(desktop.clipboard, "");
  }
}

// ---- Encoding

TEST_F(OutputTypesFlow, ACharacterThatShiftJisLacksIsNamedInAWptLine) {
  HoldWaypoint("TAKAO", "X");
  HoldWaypoint("CAFé", "X");
  Choose(FormatId::WptPlus);
  desktop.yes = false;
  EXPECT_EQ(main.Exports().Export(), Outcome::Refused);
  EXPECT_EQ(desktop.questions, Strings{messages::Utf8Question(
                                   messages::RecordInLine(3, "WP,D,CAFé,35.5,139.25,11/15/2002,14:25:30"), "é")});
  EXPECT_EQ(folder.Names(), Strings{});
  desktop.yes = true;
  EXPECT_EQ(main.Exports().Export(), Outcome::Done);
  EXPECT_NE(Written().find("WP,D,CAFé,"), std::string::npos);
}

TEST_F(OutputTypesFlow, ACharacterThatShiftJisLacksIsNamedInAStatement) {
  HoldWaypoint("CAFé", "X");
  Choose(FormatId::Script);
  desktop.yes = false;
  EXPECT_EQ(main.Exports().Export(), Outcome::Refused);
  ASSERT_EQ(desktop.questions.size(), 1U);
  EXPECT_NE(desktop.questions[0].find("行目の「str=CAFé  」の文字「é」は"), std::string::npos) << desktop.questions[0];
  EXPECT_EQ(folder.Names(), Strings{});
}

TEST_F(OutputTypesFlow, ACharacterFarBehindTheFirstPieceIsNamedByItsLineAndNothingIsLeftOrSentOnNo) {
  Hold(LongLog());
  TrackLog last;
  last.trk_ident = "CAFé";
  ASSERT_EQ(Data().Begin(last), AddResult::Stored);
  Choose(FormatId::Standard);
  desktop.yes = false;
  EXPECT_EQ(main.Exports().Export(), Outcome::Refused);
  EXPECT_EQ(desktop.questions, Strings{messages::Utf8Question("3002行目のTRH「CAFé」", "é")});
  EXPECT_EQ(folder.Names(), Strings{});
  // A pipe gets all or nothing too.
  ASSERT_EQ(::mkfifo(Path("pipe").c_str(), 0600), 0);
  const int pipe = ::open(Path("pipe").c_str(), O_RDWR | O_NONBLOCK);
  desktop.save_path = Path("pipe");
  EXPECT_EQ(main.Exports().Export(), Outcome::Refused);
  char byte = 0;
  EXPECT_LT(::read(pipe, &byte, 1), 0);
  ::close(pipe);
}

TEST_F(OutputTypesFlow, AfterYesTheWholeFileIsUtf8) {
  HoldWaypoint("NIŠ");
  Hold(LongLog());
  ASSERT_EQ(Data().Begin(TrackLog{false, true, 255, "高尾", {}}), AddResult::Stored);
  ASSERT_EQ(Data().Begin(TrackLog{false, true, 255, "CAFé", {}}), AddResult::Stored);
  Choose(FormatId::Standard);
  ASSERT_EQ(main.Exports().Export(), Outcome::Done);
  const std::string after_yes = Written();
  EXPECT_EQ(desktop.questions, Strings{messages::Utf8Question("1行目のWPT「NIŠ」", "Š")})
      << "the first one is asked for";
  main.State().Settings().encoding = TextEncoding::Utf8;
  ASSERT_EQ(main.Exports().Export(), Outcome::Done);
  EXPECT_TRUE(after_yes == Written());
  EXPECT_NE(after_yes.find("高尾"), std::string::npos);
}

TEST_F(OutputTypesFlow, Utf8ThatWouldBeTakenForKatakanaSaysWhatItIs) {
  HoldWaypoint("CAFé");
  Choose(FormatId::Standard);
  ASSERT_EQ(main.Exports().Export(), Outcome::Done);
  const std::string after_yes = Written();
  EXPECT_EQ(after_yes.find("\xEF\xBB\xBF"
                           "WPT\t"),
            0U);
  main.State().Settings().encoding = TextEncoding::Utf8;
  ASSERT_EQ(main.Exports().Export(), Outcome::Done);
  EXPECT_EQ(Written(), after_yes);
  ASSERT_EQ(main.Imports().ImportFrom(Path("out")), Outcome::Done);
  EXPECT_EQ(Data().Waypoints().back().ident, "CAFé");
  // Other texts need no mark.
  HoldWaypoint("高尾");
  ASSERT_EQ(main.Exports().Export(), Outcome::Done);
  EXPECT_EQ(Written().find("WPT\t"), 0U);
}

TEST_F(OutputTypesFlow, BothTypesAreShiftJisByDefaultAndUtf8OnRequest) {
  Hold("WPT\tD\tWGS84\t高尾\t35.5\t139.25\t山頂\r\n");
  for (const FormatId type : {FormatId::WptPlus, FormatId::Script}) {
    Choose(type);
    main.State().Settings().encoding = TextEncoding::ShiftJis;
    ASSERT_EQ(main.Exports().Export(), Outcome::Done);
    EXPECT_NE(Written().find("\x8d\x82\x94\xf6"), std::string::npos) << NameOf(type);
    main.State().Settings().encoding = TextEncoding::Utf8;
    ASSERT_EQ(main.Exports().Export(), Outcome::Done);
    EXPECT_NE(Written().find("高尾"), std::string::npos) << NameOf(type);
  }
}

// ---- Commas

TEST_F(OutputTypesFlow, ATextWithACommaIsToldInTheTypesThatCutItThere) {
  Hold(Standard);
  HoldWaypoint("COMMA", "HUT,CLOSED");
  for (const FormatId type : {FormatId::Standard, FormatId::WptPlus, FormatId::Script}) {
    const std::string notice(type == FormatId::Standard ? "" : QuoteNotice);
    Choose(type, NameOf(type));
    EXPECT_EQ(main.Exports().Export(), Outcome::Done);
    EXPECT_EQ(desktop.caption, notice) << NameOf(type);
    EXPECT_EQ(main.State().Told().Take(), notice.empty() ? Strings{} : Strings{notice}) << NameOf(type);
    EXPECT_EQ(main.Exports().Copy(), Outcome::Done);
    EXPECT_EQ(desktop.caption, notice) << NameOf(type);
  }
}

TEST_F(OutputTypesFlow, ACommaInAStandardFileComesBack) {
  HoldWaypoint("HUT,2", "OPEN, \"NO\" WATER");
  Choose(FormatId::Standard);
  ASSERT_EQ(main.Exports().Export(), Outcome::Done);
  main.Deletes().Delete();
  ASSERT_EQ(main.Imports().ImportFrom(Path("out")), Outcome::Done);
  EXPECT_EQ(desktop.caption, "取り込み：Waypoint 1，Route 0，TrackLog 0．");
  EXPECT_EQ(Idents(), Strings{"HUT,2"});
  EXPECT_EQ(Data().Waypoints().at(0).cmnt, "OPEN, \"NO\" WATER");
  EXPECT_EQ(Data().Waypoints().at(0).lat_deg, 35.5);
}

TEST_F(OutputTypesFlow, APointThatIsNotOnTheGlobeIsTold) {
  Hold(Standard);
  HoldWaypoint("X", "", 100);
  for (const FormatId type : {FormatId::Gpx, FormatId::Kml}) {
    Choose(type);
    desktop.ok = true;
    EXPECT_EQ(main.Exports().Export(), Outcome::Done);
    EXPECT_EQ(main.State().Told().Take(), Strings{messages::PointsOffGlobe(1)});
  }
}

TEST_F(OutputTypesFlow, AQuoteThatCostsARecordItsPlaceInAScriptIsTold) {
  Hold(Standard);
  HoldWaypoint("\"X");
  Choose(FormatId::Script, "MPS");
  EXPECT_EQ(main.Exports().Export(), Outcome::Done);
  EXPECT_EQ(main.State().Told().Take(), (Strings{std::string(QuoteNotice), messages::SkippedRecords(1)}));
}

TEST_F(OutputTypesFlow, PositionsThatDmsCannotCarryAreToldWhereItIsWritten) {
  Hold(
      "WPT\tD\tWGS84\tA\t-33.5\t139.25\tX\r\nWPT\tD\tWGS84\tB\t33.5\t-70.25\tX\r\n"
      "WPT\tD\tWGS84\tC\t33.5\t139.25\tX\r\n");
  const std::string notice = messages::SouthAndWest(2);
  for (const FormatId type : {FormatId::Standard, FormatId::WptPlus, FormatId::Script}) {
    for (const AngleNotation notation : {AngleNotation::D, AngleNotation::DMS}) {
      const bool lossy = type == FormatId::Script || notation == AngleNotation::DMS;
      Choose(type, NameOf(type));
      main.State().Settings().notation = notation;
      EXPECT_EQ(main.Exports().Export(), Outcome::Done);
      EXPECT_EQ(main.State().Told().Take(), lossy ? Strings{notice} : Strings{})
          << NameOf(type) << AngleNotationName(notation);
      EXPECT_EQ(desktop.caption, lossy ? notice : "") << NameOf(type) << AngleNotationName(notation);
    }
  }
}

TEST_F(OutputTypesFlow, ARefusedOverwriteLeavesNoStatus) {
  Hold(Standard);
  PutFile(Path("out"), "old");
  desktop.ok = false;
  EXPECT_EQ(main.Exports().ExportTo(Path("out")), Outcome::Refused);
  EXPECT_EQ(desktop.captions, (Strings{"Export to " + Path("out"), ""}));
  EXPECT_EQ(Written(), "old");
}

TEST_F(OutputTypesFlow, TheCommasOfALineAreNoneOfAText) {
  Hold(Standard);
  for (const FormatId type : {FormatId::Standard, FormatId::WptPlus, FormatId::Script}) {
    Choose(type, NameOf(type));
    EXPECT_EQ(main.Exports().Export(), Outcome::Done);
    EXPECT_EQ(desktop.caption, "") << NameOf(type);
    EXPECT_EQ(main.State().Told().Take(), Strings{}) << NameOf(type);
  }
}

// ---- What a script and a text keep

TEST_F(OutputTypesFlow, BothTypesComeBackFromTheirFiles) {
  for (const Datum datum : {Datum::Wgs84, Datum::Tokyo}) {
    for (const FormatId type : {FormatId::WptPlus, FormatId::Script}) {
      SCOPED_TRACE(std::string(NameOf(type)) + " " + std::string(DatumName(datum)));
      Hold(Standard);
      main.State().Settings().datum = datum;
      const std::string name = type == FormatId::Script ? "out.mps" : "out.txt";
      Choose(type, name);
      ASSERT_EQ(main.Exports().Export(), Outcome::Done);
      ASSERT_EQ(main.Deletes().Delete(), Outcome::Done);
      ASSERT_EQ(main.Imports().ImportFile(Path(name)), Outcome::Done);
      EXPECT_EQ(Held(), (Counts{1, 1, 1}));
      EXPECT_EQ(Idents(), Strings{"TAKAO"});
      // A tenth of a second is the finest that a script's position says.
      EXPECT_NEAR(Data().Waypoints().at(0).lat_deg, 35.5, 0.00002);
      EXPECT_NEAR(Data().Waypoints().at(0).lon_deg, 139.25, 0.00002);
      EXPECT_EQ(Data().Routes().at(0).points.at(1).waypoint.ident, "GOAL");
      const std::vector<TrackPoint>& points = Data().Logs().at(0).points;
      EXPECT_NEAR(points.at(1).lat_deg, 35.75, 0.00002);
      EXPECT_EQ(points.at(1).time.value() - points.at(0).time.value(), 5400U);
      ASSERT_EQ(main.Deletes().Delete(), Outcome::Done);
    }
  }
}

// ---- After a download

class AutoSaveFlow : public OutputTypesFlow {
 protected:
  AutoSaveFlow() {
    constexpr int WaypointCommand = 7;
    receiver.description = "GPS 12 Software";
    receiver.packets_of[WaypointCommand] = {WaypointPacket("W1"), WaypointPacket("W2")};
    main.State().Settings().download_kinds = {true, false, false};
    main.State().Settings().auto_save = true;
    main.State().Settings().auto_copy = true;
    main.State().Settings().auto_file_name = true;
  }
};

TEST_F(AutoSaveFlow, SavesBeforeItCopies) {
  main.State().Settings().auto_file_name = false;
  Choose(FormatId::Standard);
  ASSERT_EQ(main.Device().Download(), Outcome::Done);
  const auto saved = std::find(desktop.captions.begin(), desktop.captions.end(), "Export to " + Path("out"));
  ASSERT_NE(saved, desktop.captions.end());
  EXPECT_EQ(std::count(desktop.captions.begin(), saved, "Export Wpt[1/2]"), 0);
  EXPECT_EQ(std::count(saved, desktop.captions.end(), "Export Wpt[1/2]"), 2);
}

TEST_F(AutoSaveFlow, WritesAndCopiesWptPlus) {
  main.State().Settings().format = FormatId::WptPlus;
  ASSERT_EQ(main.Device().Download(), Outcome::Done);
  const std::string text = Written("20021115_142530.txt");
  EXPECT_EQ(text,
            "Datum,WGS84,WGS84,0,0,0,0,0\r\n"
            "WP,D,W1,0,0,11/15/2002,14:25:30,CRTD 14:25 15-Nov-02\r\n"
            "WP,D,W2,0,0,11/15/2002,14:25:30,CRTD 14:25 15-Nov-02\r\n");
  EXPECT_EQ(desktop.clipboard, text);
  EXPECT_EQ(main.State().Settings().chosen_kinds, (Checks{true, false, false}));
}

TEST_F(AutoSaveFlow, WritesAndCopiesAScriptBehindADialogEach) {
  main.State().Settings().format = FormatId::Script;
  ASSERT_EQ(main.Device().Download(), Outcome::Done);
  EXPECT_EQ(dialogs.mps_shown, 2);
  EXPECT_NE(Written("20021115_142530.mps").find("str=W2    \r\n"), std::string::npos);
  EXPECT_EQ(desktop.clipboard, Written("20021115_142530.mps"));
}

TEST_F(AutoSaveFlow, ARefusedDialogKeepsWhatWasDownloaded) {
  main.State().Settings().format = FormatId::Script;
  main.State().Settings().auto_delete = true;
  dialogs.on_mps = [](ScriptOptions&) { return false; };
  ASSERT_EQ(main.Device().Download(), Outcome::Done);
  EXPECT_EQ(folder.Names(), Strings{});
  EXPECT_EQ(Held()[0], 2);
  EXPECT_EQ(desktop.messages, Strings{});
}

}  // namespace
}  // namespace walrim
