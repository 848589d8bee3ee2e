// Export, copy and auto-save as WPT+ text and as map-server script.
#include <signal.h>
#include <stdexcept>
#include <sys/resource.h>

#include "app/AppTest.h"
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

constexpr std::string_view Converting = "Converting (WPT+)to(MPS)";
constexpr std::string_view NothingSelected = "保存するデータがありません．";
constexpr std::string_view NothingDownloaded = "DatasetがDownLoadされていません．";
constexpr std::string_view QuoteNotice =
    "コンマか引用符を含む文字列が1件あります．このファイルを読み込むと，そこで切れます．";

/// A log so long that the conversion lets the event loop turn.
std::string LongLog() {
  std::string text = "TRH\t0\tTRUE\t0\tLONG\r\n";
  for (int i = 0; i < 600; ++i) {
    text += "TRP\tD\tWGS84\t35." + std::to_string(1000 + i) + "\t139\t2002/11/15 09:00:00\t" +
            (i == 0 ? "TRUE" : "FALSE") + "\r\n";
  }
  return text;
}

class OutputTypesFlow : public AppTest {
 protected:
  void Choose(const char* type, std::string_view name = "out") {
    main.controls.OutputTypeOption = type;
    desktop.save_path = Path(name);
  }
  [[nodiscard]] std::string Written(std::string_view name = "out") const { return FileContents(Path(name)); }
  /// Turns of the event loop while a script's temporary text lies there, with what is to be seen then.
  template <typename Look>
  void WhileConverting(Look look) {
    loop.on_yield = [this, look] {
      for (const std::string& name : scratch.Names()) {
        const fs::path temporary = scratch.Path(name);
        if (fs::exists(temporary / "Temp.txt")) look(temporary);
      }
    };
  }
};

// ---- WPT+

TEST_F(OutputTypesFlow, WptPlusIsWrittenLineByLineWithItsStatusTexts) {
  Hold(Standard);
  Choose("WPT+");
  EXPECT_EQ(main.FileExport_Click(), Outcome::Done);
  EXPECT_EQ(Written(), WptPlus);
  EXPECT_EQ(desktop.captions,
            (Strings{"Export to " + Path("out"), "Export Wpt[1/1]", "Export Rte[1/1]", "Export Trk[1/1]", "", ""}));
  EXPECT_EQ(desktop.messages, Strings{});
  EXPECT_EQ(dialogs.mps_shown, 0);
}

TEST_F(OutputTypesFlow, WptPlusIsInTheChosenNotation) {
  Hold("WPT\tD\tWGS84\tTAKAO\t35.5\t139.25\tSUMMIT\r\n");
  Choose("WPT+");
  main.controls.DegreeType = "DMS";
  ASSERT_EQ(main.FileExport_Click(), Outcome::Done);
  EXPECT_EQ(Written(),
            "Datum,WGS84,WGS84,0,0,0,0,0\r\nWP,DMS,TAKAO,35.300000,139.150000,11/15/2002,14:25:30,SUMMIT\r\n");
}

TEST_F(OutputTypesFlow, WptPlusIsOnTheChosenDatum) {
  Hold("WPT\tD\tWGS84\tTAKAO\t35.5\t139.25\tSUMMIT\r\n");
  Choose("WPT+");
  main.controls.Datum = "Tokyo";
  ASSERT_EQ(main.FileExport_Click(), Outcome::Done);
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
  main.controls.WithHeader = true;
  main.controls.OutputTypeOption = "WPT+";
  ASSERT_EQ(main.Copy_Click(), Outcome::Done);
  EXPECT_EQ(desktop.clipboard, WptPlus);
}

TEST_F(OutputTypesFlow, OnlyTheTickedKindsAreWritten) {
  Hold(Standard);
  main.controls.DoCheck = {false, true, false};
  main.controls.OutputTypeOption = "WPT+";
  ASSERT_EQ(main.Copy_Click(), Outcome::Done);
  EXPECT_EQ(desktop.clipboard,
            "Datum,WGS84,WGS84,0,0,0,0,0\r\nRN,3,RIDGE\r\n"
            "RP,D,START,35.5,139.25,11/15/2002,14:25:30,FIRST\r\n"
            "RP,D,GOAL,35.75,139.125,11/15/2002,14:25:30,LAST\r\n");
}

// ---- Map-server scripts

TEST_F(OutputTypesFlow, AScriptIsMadeInTwoStepsBehindItsDialog) {
  Hold(Standard);
  Choose("MPS");
  Strings before_dialog;
  dialogs.on_mps = [&](MpsOptions&) {
    before_dialog = desktop.captions;
    EXPECT_TRUE(main.Busy());
    return true;
  };
  EXPECT_EQ(main.FileExport_Click(), Outcome::Done);
  EXPECT_EQ(before_dialog, (Strings{"Export to " + Path("out"), std::string(Converting)}));
  EXPECT_EQ(desktop.captions, (Strings{"Export to " + Path("out"), std::string(Converting), "Export Wpt[1/1]",
                                       "Export Rte[1/1]", "Export Trk[1/1]", std::string(Converting), "", ""}));
  EXPECT_EQ(dialogs.mps_shown, 1);
  EXPECT_EQ(desktop.messages, Strings{});
}

TEST_F(OutputTypesFlow, AScriptHoldsItsHeadItsThemeAndItsObjects) {
  Hold(Standard);
  Choose("MPS");
  ASSERT_EQ(main.FileExport_Click(), Outcome::Done);
  const std::string script = Written();
  EXPECT_TRUE(script.starts_with("//Header:Prog:1.0.8.0 Templ:1.2 Date:11/15/2002 14:25:30;\r\n")) << script;
  EXPECT_TRUE(script.ends_with("\t\tdisp\tall;\r\nmapserver end;\r\n")) << script;
  EXPECT_NE(script.find("\t\ttheme\tstr=Walrim Datum:WGS84 UTCOffset:0;\r\n"), std::string::npos);
  EXPECT_NE(script.find("gid=5131\r\n\t\t\t\tpos=35/30/00.0,139/15/00.0\r\n\t\t\t\tstr=TAKAO \r\n"), std::string::npos);
  EXPECT_NE(script.find("gid=5132\r\n\t\t\t\tpos=35/30/00.0,139/15/00.0,35/45/00.0,139/07/30.0\r\n"),
            std::string::npos);
}

TEST_F(OutputTypesFlow, TheTemporaryTextOfAScriptIsInDmsAndForNobodyElse) {
  Hold(LongLog());
  Choose("MPS");
  main.controls.DegreeType = "D";
  main.controls.Datum = "Tokyo";
  std::string text;
  fs::perms rights = fs::perms::unknown;
  WhileConverting([&](const fs::path& temporary) {
    text = FileContents((temporary / "Temp.txt").string());
    rights = fs::status(temporary).permissions();
  });
  ASSERT_EQ(main.FileExport_Click(), Outcome::Done);
  EXPECT_EQ(rights, fs::perms::owner_all);
  EXPECT_TRUE(text.starts_with("Datum,Tokyo mean,Bessel 1841,739.845,0.10037483,-128,481,664\r\nTP,DMS,35.0"))
      << text.substr(0, 100);
  EXPECT_EQ(text.find("TP,D,"), std::string::npos);
  EXPECT_EQ(main.controls.DegreeType, "D");
  EXPECT_EQ(scratch.Names(), Strings{});
}

TEST_F(OutputTypesFlow, AScriptOnTokyoSaysSo) {
  Hold(Standard);
  Choose("MPS");
  main.controls.Datum = "Tokyo";
  ASSERT_EQ(main.FileExport_Click(), Outcome::Done);
  EXPECT_NE(Written().find("\t\ttheme\tstr=Walrim Datum:Tokyo UTCOffset:0;\r\n"), std::string::npos);
  EXPECT_EQ(Written().find("pos=35/30/00.0"), std::string::npos);
}

TEST_F(OutputTypesFlow, WhatTheDialogSetShapesTheScriptAndStays) {
  Hold(Standard);
  Choose("MPS");
  const MpsOptions chosen{-9, "HOME", "SUMMIT", 1, 5};
  dialogs.on_mps = [&](MpsOptions& options) {
    EXPECT_EQ(options, MpsOptions{});
    options = chosen;
    return true;
  };
  ASSERT_EQ(main.FileExport_Click(), Outcome::Done);
  const std::string script = Written();
  EXPECT_NE(script.find("str=HOME  \r\n"), std::string::npos);
  EXPECT_NE(script.find("str=SUMMIT\r\n"), std::string::npos);
  EXPECT_NE(script.find("info=RP:2<START><FIRST>;"), std::string::npos) << script;
  EXPECT_NE(script.find("UTCOffset:-9;"), std::string::npos);
  EXPECT_EQ(main.controls.MpsOption, chosen);
}

TEST_F(OutputTypesFlow, WithoutDialogsTheSettingsShapeTheScript) {
  WalrimMain plain(port, clock, loop, desktop);
  ASSERT_EQ(plain.ImportFile(Put("in.grc", Standard)), Outcome::Done);
  plain.controls.DoCheck.fill(true);
  plain.controls.OutputTypeOption = "MPS";
  plain.controls.MpsOption.origin_name = "HOME";
  EXPECT_EQ(plain.Copy_Click(), Outcome::Done);
  EXPECT_NE(desktop.clipboard.find("str=HOME  \r\n"), std::string::npos);
}

TEST_F(OutputTypesFlow, ARefusedDialogWritesNothingSaysNothingAndDeletesNothing) {
  Hold(Standard);
  Choose("MPS");
  main.controls.AutoDelete = true;
  desktop.clipboard = "before";
  dialogs.on_mps = [](MpsOptions&) { return false; };
  EXPECT_EQ(main.FileExport_Click(), Outcome::Refused);
  EXPECT_EQ(main.Copy_Click(), Outcome::Refused);
  EXPECT_EQ(dialogs.mps_shown, 2);
  EXPECT_EQ(folder.Names(), Strings{});
  EXPECT_EQ(desktop.clipboard, "before");
  EXPECT_EQ(desktop.messages, Strings{});
  EXPECT_EQ(desktop.caption, "");
  EXPECT_FALSE(desktop.Showed("Export Wpt[1/1]"));
  EXPECT_EQ(main.Data().WaypointCount, 1);
  EXPECT_FALSE(main.Busy());
}

TEST_F(OutputTypesFlow, ARefusedOverwriteShowsNoDialog) {
  Hold(Standard);
  Choose("MPS");
  PutFile(Path("out"), "old");
  desktop.ok = false;
  EXPECT_EQ(main.FileExport_Click(), Outcome::Refused);
  EXPECT_EQ(dialogs.mps_shown, 0);
  EXPECT_EQ(Written(), "old");
}

TEST_F(OutputTypesFlow, TheProgressOfAScriptEndsWithIt) {
  Hold(LongLog());
  Choose("MPS");
  ASSERT_EQ(main.FileExport_Click(), Outcome::Done);
  ASSERT_GT(desktop.progress.size(), 2U);
  EXPECT_EQ(desktop.progress.back(), (std::pair<std::int64_t, std::int64_t>{0, 0}));
}

// ---- Temporary files

TEST_F(OutputTypesFlow, TemporaryFilesGoAlsoWhenTheConversionBreaksOff) {
  Hold(LongLog());
  Choose("MPS");
  int looks = 0;
  WhileConverting([&](const fs::path&) {
    ++looks;
    throw std::runtime_error("broken off");
  });
  EXPECT_THROW(main.FileExport_Click(), std::runtime_error);
  EXPECT_EQ(looks, 1);
  EXPECT_EQ(scratch.Names(), Strings{});
  EXPECT_EQ(folder.Names(), Strings{});
  EXPECT_FALSE(main.Busy());
}

TEST_F(OutputTypesFlow, WithoutAFolderForTemporaryFilesAScriptIsRefusedWithTheReasonAlone) {
  Hold(Standard);
  Choose("MPS");
  const EnvironmentVariable missing("TMPDIR", Path("missing"));
  EXPECT_EQ(main.FileExport_Click(), Outcome::Refused);
  ASSERT_EQ(desktop.messages.size(), 1U);
  EXPECT_TRUE(desktop.messages[0].starts_with("ファイルに書き込めません：Temp.txt（")) << desktop.messages[0];
  EXPECT_EQ(folder.Names(), Strings{});
}

TEST_F(OutputTypesFlow, AFullDiskLeavesNoTemporaryFilesAndTheOldScript) {
  Hold(Standard);
  Choose("MPS");
  PutFile(Path("out"), "old");
  // Under a file size limit a write fails as on a full disk.
  const auto export_under_limit = [this](rlim_t bytes) {
    ::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    limit.rlim_cur = bytes;
    limit.rlim_max = bytes;
    ::setrlimit(RLIMIT_FSIZE, &limit);
    const bool refused = main.FileExport_Click() == Outcome::Refused && desktop.messages.size() == 1;
    std::_Exit(refused && scratch.Names().empty() && Written() == "old" && folder.Names().size() == 1 ? 0 : 1);
  };
  EXPECT_EXIT(export_under_limit(100), ::testing::ExitedWithCode(0), "");   // too little for the text
  EXPECT_EXIT(export_under_limit(1000), ::testing::ExitedWithCode(0), "");  // enough for it, too little for the script
}

// ---- Nothing to write

TEST_F(OutputTypesFlow, WithoutDataOrSelectionNoDialogIsShown) {
  main.controls.OutputTypeOption = "MPS";
  EXPECT_EQ(main.FileExport_Click(), Outcome::Refused);
  Hold("WPT\tD\tWGS84\tA\t35\t139\r\n");
  main.controls.DoCheck.fill(false);
  EXPECT_EQ(main.Copy_Click(), Outcome::Refused);
  EXPECT_EQ(desktop.messages, Strings{"DataSetが選択されていません．"});
  EXPECT_EQ(dialogs.mps_shown, 0);
}

TEST_F(OutputTypesFlow, SelectedKindsWithoutRecordsShowBothMessages) {
  Hold("WPT\tD\tWGS84\tA\t35\t139\r\n");
  main.controls.DoCheck = {false, true, true};
  for (const char* type : {"WPT+", "MPS"}) {
    Forget();
    Choose(type);
    EXPECT_EQ(main.FileExport_Click(), Outcome::Refused);
    EXPECT_EQ(desktop.messages, (Strings{std::string(NothingSelected), std::string(NothingDownloaded)})) << type;
    EXPECT_EQ(main.Copy_Click(), Outcome::Refused);
    EXPECT_EQ(desktop.messages.size(), 4U) << type;
    EXPECT_EQ(folder.Names(), Strings{});
    EXPECT_EQ(desktop.clipboard, "");
  }
}

// ---- Encoding

TEST_F(OutputTypesFlow, ACharacterThatShiftJisLacksIsNamedInAWptLine) {
  Hold("WPT\tD\tWGS84\tTAKAO\t35.5\t139.25\tX\r\nWPT\tD\tWGS84\tCAFé\t35.5\t139.25\tX\r\n");
  Choose("WPT+");
  desktop.yes = false;
  EXPECT_EQ(main.FileExport_Click(), Outcome::Refused);
  EXPECT_EQ(desktop.questions,
            Strings{"3行目の「WP,D,CAFé,35.5,139.25,11/15/2002,14:25:3」の文字「é」はShift-JISでは表せ"
                    "ません．UTF-8で保存しますか？"});
  EXPECT_EQ(folder.Names(), Strings{});
  desktop.yes = true;
  EXPECT_EQ(main.FileExport_Click(), Outcome::Done);
  EXPECT_NE(Written().find("WP,D,CAFé,"), std::string::npos);
}

TEST_F(OutputTypesFlow, ACharacterThatShiftJisLacksIsNamedInAStatement) {
  Hold("WPT\tD\tWGS84\tCAFé\t35.5\t139.25\tX\r\n");
  Choose("MPS");
  desktop.yes = false;
  EXPECT_EQ(main.FileExport_Click(), Outcome::Refused);
  ASSERT_EQ(desktop.questions.size(), 1U);
  EXPECT_NE(desktop.questions[0].find("行目の「str=CAFé  」の文字「é」は"), std::string::npos) << desktop.questions[0];
  EXPECT_EQ(folder.Names(), Strings{});
}

TEST_F(OutputTypesFlow, BothTypesAreShiftJisByDefaultAndUtf8OnRequest) {
  Hold("WPT\tD\tWGS84\t高尾\t35.5\t139.25\t山頂\r\n");
  for (const char* type : {"WPT+", "MPS"}) {
    Choose(type);
    main.controls.Encoding = TextEncoding::ShiftJis;
    ASSERT_EQ(main.FileExport_Click(), Outcome::Done);
    EXPECT_NE(Written().find("\x8d\x82\x94\xf6"), std::string::npos) << type;
    main.controls.Encoding = TextEncoding::Utf8;
    ASSERT_EQ(main.FileExport_Click(), Outcome::Done);
    EXPECT_NE(Written().find("高尾"), std::string::npos) << type;
  }
}

// ---- Commas

TEST_F(OutputTypesFlow, ATextWithACommaIsToldInTheTypesThatCutItThere) {
  Hold(Standard);
  WaypointRecord record;
  record[WaypointField::ident] = "COMMA";
  record[WaypointField::lat] = "35";
  record[WaypointField::lon] = "139";
  record[WaypointField::cmnt] = "HUT,CLOSED";
  ASSERT_GT(main.Data().AddWaypoint(record), 0);
  for (const char* type : {"標準", "WPT+", "MPS"}) {
    const std::string notice(std::string_view(type) == "標準" ? "" : QuoteNotice);
    Choose(type, type);
    EXPECT_EQ(main.FileExport_Click(), Outcome::Done);
    EXPECT_EQ(desktop.caption, notice) << type;
    EXPECT_EQ(main.TakeNotices(), notice.empty() ? Strings{} : Strings{notice}) << type;
    EXPECT_EQ(main.Copy_Click(), Outcome::Done);
    EXPECT_EQ(desktop.caption, notice) << type;
  }
}

TEST_F(OutputTypesFlow, ACommaInAStandardFileComesBack) {
  WaypointRecord record;
  record[WaypointField::ident] = "HUT,2";
  record[WaypointField::lat] = "35.5";
  record[WaypointField::lon] = "139.25";
  record[WaypointField::cmnt] = "OPEN, \"NO\" WATER";
  ASSERT_GT(main.Data().AddWaypoint(record), 0);
  main.SetGpsNum(DataKind::Waypoint, "1");
  main.controls.DoCheck.fill(true);
  Choose("標準");
  ASSERT_EQ(main.FileExport_Click(), Outcome::Done);
  main.Delete_Click();
  ASSERT_EQ(main.ImportFrom(Path("out")), Outcome::Done);
  EXPECT_EQ(desktop.caption, "取り込み：Waypoint 1，Route 0，TrackLog 0．");
  EXPECT_EQ(Idents(), Strings{"HUT,2"});
  EXPECT_EQ(HeldValue(1, WaypointField::cmnt), "OPEN, \"NO\" WATER");
  EXPECT_EQ(HeldValue(1, WaypointField::lat), "35.5");
}

TEST_F(OutputTypesFlow, AQuoteThatCostsARecordItsPlaceInAScriptIsTold) {
  Hold(Standard);
  WaypointRecord record;
  record[WaypointField::ident] = "\"X";
  record[WaypointField::lat] = "35";
  record[WaypointField::lon] = "139";
  ASSERT_GT(main.Data().AddWaypoint(record), 0);
  Choose("MPS", "MPS");
  EXPECT_EQ(main.FileExport_Click(), Outcome::Done);
  EXPECT_EQ(main.TakeNotices(),
            (Strings{std::string(QuoteNotice), "1件の記録は，文字列の中の記号のためスクリプトに書けませんでした．"}));
}

TEST_F(OutputTypesFlow, PositionsThatDmsCannotCarryAreToldWhereItIsWritten) {
  Hold(
      "WPT\tD\tWGS84\tA\t-33.5\t139.25\tX\r\nWPT\tD\tWGS84\tB\t33.5\t-70.25\tX\r\n"
      "WPT\tD\tWGS84\tC\t33.5\t139.25\tX\r\n");
  const std::string notice = "南緯・西経の位置が2件あります．DMSの表記では正しく読み戻せません．";
  for (const char* type : {"標準", "WPT+", "MPS"}) {
    for (const char* degree_type : {"D", "DMS"}) {
      const bool lossy = type == std::string_view("MPS") || degree_type == std::string_view("DMS");
      Choose(type, type);
      main.controls.DegreeType = degree_type;
      EXPECT_EQ(main.FileExport_Click(), Outcome::Done);
      EXPECT_EQ(main.TakeNotices(), lossy ? Strings{notice} : Strings{}) << type << degree_type;
      EXPECT_EQ(desktop.caption, lossy ? notice : "") << type << degree_type;
    }
  }
}

TEST_F(OutputTypesFlow, ARefusedOverwriteLeavesNoStatus) {
  Hold(Standard);
  PutFile(Path("out"), "old");
  desktop.ok = false;
  EXPECT_EQ(main.ExportTo(Path("out")), Outcome::Refused);
  EXPECT_EQ(desktop.captions, (Strings{"Export to " + Path("out"), ""}));
  EXPECT_EQ(Written(), "old");
}

TEST_F(OutputTypesFlow, TheCommasOfALineAreNoneOfAText) {
  Hold(Standard);
  for (const char* type : {"標準", "WPT+", "MPS"}) {
    Choose(type, type);
    EXPECT_EQ(main.FileExport_Click(), Outcome::Done);
    EXPECT_EQ(desktop.caption, "") << type;
    EXPECT_EQ(main.TakeNotices(), Strings{}) << type;
  }
}

// ---- What a script and a text keep

TEST_F(OutputTypesFlow, BothTypesComeBackFromTheirFiles) {
  for (const char* datum : {"WGS84", "Tokyo"}) {
    for (const char* type : {"WPT+", "MPS"}) {
      SCOPED_TRACE(std::string(type) + " " + datum);
      Hold(Standard);
      main.controls.Datum = datum;
      const std::string name = type == std::string_view("MPS") ? "out.mps" : "out.txt";
      Choose(type, name);
      ASSERT_EQ(main.FileExport_Click(), Outcome::Done);
      ASSERT_EQ(main.Delete_Click(), Outcome::Done);
      ASSERT_EQ(main.ImportFile(Path(name)), Outcome::Done);
      EXPECT_EQ(main.controls.GpsNum, (std::array<std::string, 3>{"1", "1", "1"}));
      EXPECT_EQ(Idents(), Strings{"TAKAO"});
      // A tenth of a second is the finest that a script's position says.
      EXPECT_NEAR(LeadingNumber(HeldValue(1, WaypointField::lat)), 35.5, 0.00002);
      EXPECT_NEAR(LeadingNumber(HeldValue(1, WaypointField::lon)), 139.25, 0.00002);
      EXPECT_EQ(main.Data().GetRoutePoint(1, 1).waypoint[WaypointField::ident], "GOAL");
      EXPECT_NEAR(main.Data().TrackPointAt(1, 1).lat_deg, 35.75, 0.00002);
      EXPECT_EQ(main.Data().TrackPointAt(1, 1).time - main.Data().TrackPointAt(1, 0).time, 5400);
      ASSERT_EQ(main.Delete_Click(), Outcome::Done);
    }
  }
}

// ---- After a download

class AutoSaveFlow : public OutputTypesFlow {
 protected:
  AutoSaveFlow() {
    constexpr int WaypointCommand = 7;
    receiver.description = "GPS 12 Software";
    receiver.packets_of[WaypointCommand] = {Waypoint("W1"), Waypoint("W2")};
    main.controls.DownCheck = {true, false, false};
    main.controls.AutoSave = true;
    main.controls.AutoCopy = true;
    main.controls.AutoFileName = true;
  }
  static PlainPacket Waypoint(std::string_view ident) {
    Bytes data(ident.begin(), ident.end());
    data.resize(6, ' ');
    data.resize(18, 0);
    data.resize(58, ' ');
    data.resize(60, 0);
    return {35, data};
  }
};

TEST_F(AutoSaveFlow, SavesBeforeItCopies) {
  main.controls.AutoFileName = false;
  Choose("標準");
  ASSERT_EQ(main.GpsDownLoad_Click(), Outcome::Done);
  const auto saved = std::find(desktop.captions.begin(), desktop.captions.end(), "Export to " + Path("out"));
  ASSERT_NE(saved, desktop.captions.end());
  EXPECT_EQ(std::count(desktop.captions.begin(), saved, "Export Wpt[1/2]"), 0);
  EXPECT_EQ(std::count(saved, desktop.captions.end(), "Export Wpt[1/2]"), 2);
}

TEST_F(AutoSaveFlow, WritesAndCopiesWptPlus) {
  main.controls.OutputTypeOption = "WPT+";
  ASSERT_EQ(main.GpsDownLoad_Click(), Outcome::Done);
  const std::string text = Written("20021115_142530.txt");
  EXPECT_EQ(text,
            "Datum,WGS84,WGS84,0,0,0,0,0\r\n"
            "WP,D,W1,0,0,11/15/2002,14:25:30,CRTD 14:25 15-Nov-02\r\n"
            "WP,D,W2,0,0,11/15/2002,14:25:30,CRTD 14:25 15-Nov-02\r\n");
  EXPECT_EQ(desktop.clipboard, text);
  EXPECT_EQ(main.controls.DoCheck, (Checks{true, false, false}));
}

TEST_F(AutoSaveFlow, WritesAndCopiesAScriptBehindADialogEach) {
  main.controls.OutputTypeOption = "MPS";
  ASSERT_EQ(main.GpsDownLoad_Click(), Outcome::Done);
  EXPECT_EQ(dialogs.mps_shown, 2);
  EXPECT_NE(Written("20021115_142530.mps").find("str=W2    \r\n"), std::string::npos);
  EXPECT_EQ(desktop.clipboard, Written("20021115_142530.mps"));
}

TEST_F(AutoSaveFlow, ARefusedDialogKeepsWhatWasDownloaded) {
  main.controls.OutputTypeOption = "MPS";
  main.controls.AutoDelete = true;
  dialogs.on_mps = [](MpsOptions&) { return false; };
  ASSERT_EQ(main.GpsDownLoad_Click(), Outcome::Done);
  EXPECT_EQ(folder.Names(), Strings{});
  EXPECT_EQ(main.controls.GpsNum[0], "2");
  EXPECT_EQ(desktop.messages, Strings{});
}

}  // namespace
}  // namespace walrim
