// The window's flows, messages and refusals, by clicks and keys.
#include <QAction>
#include <QListView>
#include <QMenuBar>
#include <QSpinBox>
#include <QTableView>
#include <filesystem>

#include "app/Messages.h"
#include "app/ProgramName.h"
#include "window/Messages.h"
#include "window/WindowTest.h"

namespace walrim {
namespace {

std::string Twice(std::string_view message) {
  return std::string(message).append("|").append(message);
}

// ---- How it looks at the start

TEST_F(WindowTest, StartsEmptyWithTheSettingsOfTheProgram) {
  EXPECT_EQ(window->windowTitle().toStdString(), WindowTitle() + "[*]");
  EXPECT_FALSE(window->isWindowModified());
  EXPECT_EQ(Texts("GpsNum"), "-|-|-");
  EXPECT_EQ(Texts("GpsDataNum"), "||");
  EXPECT_EQ(GpsInfo(), "GPSInfo");
  EXPECT_EQ(Get<QSpinBox>("UTCOffsetNum").value(), 9);
  EXPECT_EQ(Get<QComboBox>("Datum").currentText(), "WGS84");
  EXPECT_EQ(Get<QComboBox>("DegreeType").currentText(), "D（度）");
  EXPECT_EQ(Get<QComboBox>("OutputTypeOption").currentText(), QString::fromUtf8("標準"));
  for (const char* box : {"AutoDownload", "AutoSave", "AutoCopy", "AutoDelete", "AutoUpload", "AutoFileName"})
    EXPECT_FALSE(Get<QCheckBox>(box).isChecked()) << box;
  EXPECT_FALSE(Get<QPushButton>("Cancel").isEnabled());
  EXPECT_FALSE(Get<QProgressBar>("Progress").isVisible());
}

TEST_F(WindowTest, ThePortAtTheStartIsTheFirst) {
  const MainWindow fresh(
      {*demo_port, clock, event_loop, inet, [] { return std::vector<NumberedPort>{}; }, nullptr, nullptr, {}, false});
  EXPECT_EQ(fresh.findChild<QComboBox*>("CommPort")->currentData().toString(), "1");
}

TEST_F(WindowTest, EveryControlIsThereByItsName) {
  for (const char* name :
       {"Get_GpsInfo", "GpsDownLoad",  "GpsUpLoad",    "Cancel",       "FileExport",       "Copy",
        "Delete",      "FileImport",   "Paste",        "CommPort",     "OutputTypeOption", "DegreeType",
        "Datum",       "UTCOffsetNum", "WithHeader",   "AutoFileName", "AutoDownload",     "AutoSave",
        "AutoCopy",    "AutoDelete",   "AutoUpload",   "GpsInfo",      "DownCheck_0",      "DownCheck_1",
        "DownCheck_2", "DoCheck_0",    "DoCheck_1",    "DoCheck_2",    "DataType_0",       "DataType_1",
        "DataType_2",  "CopyOption",   "GpsDataNum_0", "GpsDataNum_1", "GpsDataNum_2",     "GpsNum_0",
        "GpsNum_1",    "GpsNum_2",     "CheckedLink"}) {
    EXPECT_NE(window->findChild<QWidget*>(name), nullptr) << name;
  }
}

TEST_F(WindowTest, TheWindowFitsASmallScreen) {
  EXPECT_LE(window->width(), 1024);
  EXPECT_LE(window->height(), 700);
}

TEST_F(WindowTest, MnemonicsAreNotGivenTwice) {
  QStringList seen;
  for (const QAction* action : window->menuBar()->actions())
    seen.append(QKeySequence::mnemonic(action->text()).toString());
  for (const QLabel* label : window->findChildren<QLabel*>()) {
    if (label->buddy() != nullptr) seen.append(QKeySequence::mnemonic(label->text()).toString());
  }
  for (const QAbstractButton* button : window->findChildren<QAbstractButton*>()) {
    const QString key = QKeySequence::mnemonic(button->text()).toString();
    if (!key.isEmpty()) seen.append(key);
  }
  EXPECT_GT(seen.size(), 15);
  EXPECT_EQ(seen.removeDuplicates(), 0) << seen.join(' ').toStdString();
}

// ---- Get GPS info

TEST_F(WindowTest, GetGpsInfoShowsTheReceiverAndItsCounts) {
  Click("Get_GpsInfo");
  EXPECT_TRUE(GpsInfo().starts_with("eTrex")) << GpsInfo();
  EXPECT_TRUE(GpsInfo().find(" (Pid:") != std::string::npos) << GpsInfo();
  for (int kind = 0; kind < 3; ++kind)
    EXPECT_GT(Get<QLineEdit>(QString("GpsDataNum_%1").arg(kind)).text().toInt(), 0) << kind;
  EXPECT_EQ(Texts("GpsNum"), "-|-|-");
  EXPECT_EQ(Messages(), "");
}

TEST_F(WindowTest, OldCountsGoBeforeTheReceiverIsAskedAgain) {
  Click("Get_GpsInfo");
  std::string counts;
  event_loop.on_yield = [&] {
    if (counts.empty() && Status() == "Get Data Num of Waypoint") counts = Texts("GpsDataNum");
  };
  UseReceiver({}, 9600);
  int number = 0;
  for (const DataKind kind : AllDataKinds)
    window->Main().State().SetReceiverCount(kind, ++number);
  window->ShowControls();
  Click("Get_GpsInfo");
  EXPECT_EQ(counts, "||");
}

TEST_F(WindowTest, CaptionsAreTheSystemsOwn) {
  EXPECT_EQ(Get<QCheckBox>("AutoFileName").text(), "AutoFileName(%date%_%time%.)");
  EXPECT_TRUE(Get<QPushButton>("Get_GpsInfo").text().startsWith(QString::fromUtf8("情報取得")));
  EXPECT_TRUE(Get<QPushButton>("FileImport").text().startsWith(QString::fromUtf8("取り込み")));
  EXPECT_TRUE(Get<QPushButton>("Paste").text().startsWith(QString::fromUtf8("貼り付け")));
  EXPECT_EQ(Get<QLabel>("DataType_2").text(), "TrackLog");
}

TEST_F(WindowTest, GetGpsInfoByKeyboardAlone) {
  QTest::keyClick(window.get(), Qt::Key_F5);
  EXPECT_TRUE(GpsInfo().starts_with("eTrex"));
}

TEST_F(WindowTest, ReturnPressesTheButtonWithTheFocus) {
  Get<QPushButton>("Get_GpsInfo").setFocus();
  QTest::keyClick(window->focusWidget(), Qt::Key_Return);
  EXPECT_TRUE(GpsInfo().starts_with("eTrex"));
}

TEST_F(WindowTest, ASilentReceiverShowsTheEmptyIdentificationAndNothingElse) {
  DemoReceiverOptions options;
  options.faults.silent = 1;
  UseReceiver(options);
  Click("Get_GpsInfo");
  EXPECT_TRUE(GpsInfo().ends_with(" (Pid:-1)")) << GpsInfo();
  EXPECT_EQ(Texts("GpsDataNum"), "||");
  EXPECT_EQ(Messages(), "");
  EXPECT_TRUE(Get<QPushButton>("Get_GpsInfo").isEnabled());
}

// ---- Download

TEST_F(WindowTest, DownloadWithoutASelectionIsRefused) {
  Click("GpsDownLoad");
  EXPECT_EQ(Messages(), std::string(messages::NothingToDownload));
  EXPECT_EQ(answerer.boxes[0].buttons, QStringList{"OK"});
}

TEST_F(WindowTest, DownloadFillsTheTickedKindsAndAsksNothingWhileTheyAreEmpty) {
  Check("DownCheck_0");
  Check("DownCheck_2");
  Click("GpsDownLoad");
  EXPECT_GT(Data().Count(DataKind::Waypoint), 0U);
  EXPECT_EQ(Data().Count(DataKind::Route), 0U);
  EXPECT_GT(Data().Count(DataKind::TrackLog), 0U);
  EXPECT_EQ(Get<QLineEdit>("GpsNum_1").text(), "-");
  EXPECT_EQ(Get<QLineEdit>("GpsNum_0").text().toUInt(), Data().Count(DataKind::Waypoint));
  EXPECT_EQ(Messages(), "");
}

TEST_F(WindowTest, AnOverwriteAsksOnceAKindWithNoAsTheSafeButton) {
  CheckAll("DownCheck");
  Click("GpsDownLoad");
  ASSERT_EQ(Messages(), "");
  for (int kind = 0; kind < 3; ++kind)
    answerer.Answer(QMessageBox::Yes);
  Click("GpsDownLoad");
  EXPECT_EQ(Messages(), messages::OverwriteHeldQuestion(DataKind::Waypoint) + "|" +
                            messages::OverwriteHeldQuestion(DataKind::Route) + "|" +
                            messages::OverwriteHeldQuestion(DataKind::TrackLog));
  EXPECT_EQ(answerer.boxes[0].default_button, QString::fromUtf8("いいえ(&N)"));
  EXPECT_EQ(answerer.boxes[0].buttons.size(), 2);
}

TEST_F(WindowTest, NoKeepsTheKindAndTheOthersStillCome) {
  Check("DownCheck_0");
  Click("GpsDownLoad");
  Data().Clear(DataKind::Waypoint);
  Waypoint mine;
  mine.cmnt = "MINE";
  ASSERT_EQ(Data().Add(mine), AddResult::Stored);
  CheckAll("DownCheck");
  answerer.Answer(QMessageBox::No);
  Click("GpsDownLoad");
  EXPECT_EQ(Data().Waypoints().at(0).cmnt, "MINE");
  EXPECT_GT(Data().Count(DataKind::Route), 0U);
  EXPECT_GT(Data().Count(DataKind::TrackLog), 0U);
}

TEST_F(WindowTest, AKindThatTheReceiverHasNoneOfIsSkippedSilently) {
  Click("Get_GpsInfo");
  CheckAll("DownCheck");
  window->Main().State().SetReceiverCount(DataKind::Route, 0);
  window->ShowControls();
  Click("GpsDownLoad");
  EXPECT_EQ(Data().Count(DataKind::Route), 0U);
  EXPECT_EQ(Get<QLineEdit>("GpsNum_1").text(), "-");
  EXPECT_GT(Data().Count(DataKind::TrackLog), 0U);
  EXPECT_EQ(Messages(), "");
}

TEST_F(WindowTest, DuringATransferProgressIsShownAndOnlyCancelCanBePressed) {
  CheckAll("DownCheck");
  bool seen = false;
  std::string status;
  event_loop.on_yield = [&] {
    if (!Get<QProgressBar>("Progress").isVisible() || seen) return;
    seen = true;
    status = Status();
    EXPECT_TRUE(Get<QPushButton>("Cancel").isEnabled());
    for (const char* name : {"Get_GpsInfo", "GpsDownLoad", "GpsUpLoad", "FileExport", "Copy", "Delete", "FileImport",
                             "Paste", "CommPort", "CheckedLink", "DownCheck_0", "DoCheck_0", "Datum", "AutoSave"}) {
      EXPECT_FALSE(Get<QWidget>(name).isEnabled()) << name;
    }
    Click("GpsDownLoad");
    QTest::keyClick(window.get(), Qt::Key_F5);
  };
  Click("GpsDownLoad");
  EXPECT_TRUE(seen);
  EXPECT_TRUE(status.starts_with("DownLoading : Waypoint [")) << status;
  EXPECT_FALSE(Get<QProgressBar>("Progress").isVisible());
  EXPECT_TRUE(Get<QPushButton>("GpsDownLoad").isEnabled());
  EXPECT_FALSE(Get<QPushButton>("Cancel").isEnabled());
  EXPECT_EQ(Messages(), "");
}

TEST_F(WindowTest, TheFocusIsBackWhereItWasAfterACommand) {
  Check("DownCheck_0");
  Get<QPushButton>("GpsDownLoad").setFocus();
  QTest::keyClick(window->focusWidget(), Qt::Key_Space);
  EXPECT_GT(Data().Count(DataKind::Waypoint), 0U);
  EXPECT_EQ(window->focusWidget()->objectName(), "GpsDownLoad");
}

// ---- Cancel and close

class CancelTest : public WindowTest {
 protected:
  /// Does something once, in the middle of the routes.
  void AmidTheRoutes(std::function<void()> act) {
    event_loop.on_yield = [this, act = std::move(act)] {
      if (done_ || !Status().starts_with("DownLoading : Route [1")) return;
      done_ = true;
      act();
    };
  }

 private:
  bool done_ = false;
};

TEST_F(CancelTest, ACancelAmidTheRoutesKeepsTheWaypointsAndSkipsTracksAndAutoActions) {
  CheckAll("DownCheck");
  Check("AutoSave");
  Check("AutoFileName");
  Check("AutoCopy");
  AmidTheRoutes([this] { Click("Cancel"); });
  Click("GpsDownLoad");
  EXPECT_GT(Data().Count(DataKind::Waypoint), 0U);
  EXPECT_EQ(Data().Count(DataKind::Route), 0U);
  EXPECT_EQ(Data().Count(DataKind::TrackLog), 0U);
  EXPECT_EQ(Get<QLineEdit>("GpsNum_1").text(), "-");
  EXPECT_EQ(Messages(), "");
  EXPECT_EQ(answerer.file_dialogs, 0);
  EXPECT_FALSE(demo_port->PortOpen());
}

TEST_F(CancelTest, EscapeIsCancelDuringATransfer) {
  CheckAll("DownCheck");
  AmidTheRoutes([this] { QTest::keyClick(window->focusWidget(), Qt::Key_Escape); });
  Click("GpsDownLoad");
  EXPECT_GT(Data().Count(DataKind::Waypoint), 0U);
  EXPECT_EQ(Data().Count(DataKind::TrackLog), 0U);
}

TEST_F(CancelTest, ACancelIsSeenAtOnce) {
  CheckAll("DownCheck");
  std::string status;
  AmidTheRoutes([&] {
    Click("Cancel");
    status = Status();
    EXPECT_FALSE(Get<QPushButton>("Cancel").isEnabled());
  });
  Click("GpsDownLoad");
  EXPECT_EQ(status, window_messages::Cancelling);
}

TEST_F(CancelTest, ClosingAmidATransferAsksOfWhatCameOnceTheReceiverWasTold) {
  CheckAll("DownCheck");
  answerer.Answer(QMessageBox::No);
  bool was_open = false;
  AmidTheRoutes([&] {
    EXPECT_FALSE(window->close());
    was_open = window->isVisible();
  });
  Click("GpsDownLoad");
  EXPECT_TRUE(was_open) << "it stays until the transfer has ended";
  EXPECT_FALSE(window->isVisible());
  EXPECT_FALSE(demo_port->PortOpen());
  EXPECT_EQ(Messages(), messages::UnsavedQuestion({true, false, false}));
}

TEST_F(CancelTest, ClosingAmidAFailingTransferShowsNoMessageEither) {
  DemoReceiverOptions options;
  options.faults.silent_after = 20;
  UseReceiver(options);
  CheckAll("DownCheck");
  bool asked = false;
  event_loop.on_yield = [&] {
    if (asked || !Get<QProgressBar>("Progress").isVisible()) return;
    asked = true;
    window->close();
  };
  Click("GpsDownLoad");
  EXPECT_TRUE(asked);
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(Messages(), "");
}

TEST_F(CancelTest, ClosingWhileTheReceiverIsIdentifiedBringsNothing) {
  CheckAll("DownCheck");
  Check("AutoCopy");
  QGuiApplication::clipboard()->setText("mine");
  bool closed = false;
  event_loop.on_yield = [&] {
    if (closed || Status() != "Initializing Device") return;
    closed = true;
    window->close();
  };
  UseReceiver({}, 9600);
  CheckAll("DownCheck");
  Check("AutoCopy");
  Click("GpsDownLoad");
  EXPECT_TRUE(closed);
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(Data().Count(DataKind::Waypoint), 0U);
  EXPECT_EQ(Clipboard(), "mine");
}

TEST_F(WindowTest, AnIdleWindowClosesAtOnce) {
  EXPECT_TRUE(window->close());
  EXPECT_FALSE(window->isVisible());
}

TEST_F(WindowTest, ExitEndsTheProgram) {
  window->findChild<QAction*>("Exit")->trigger();
  EXPECT_FALSE(window->isVisible());
}

// ---- A receiver that stops answering

TEST_F(WindowTest, AReceiverThatStopsAnsweringEmptiesTheKindAndKeepsTheOnesBefore) {
  Check("DownCheck_0");
  Click("GpsDownLoad");
  DemoReceiverOptions options;
  options.faults.silent_after = 40;  // inside the routes
  UseReceiver(options);
  CheckAll("DownCheck");
  Click("GpsDownLoad");
  EXPECT_EQ(Messages(), std::string(messages::LinkLost));
  EXPECT_EQ(Texts("GpsNum"), "19|-|-");
  EXPECT_EQ(Data().Count(DataKind::Waypoint), 19U);
  EXPECT_EQ(Data().Count(DataKind::Route), 0U);
  EXPECT_FALSE(demo_port->PortOpen());
  EXPECT_TRUE(Get<QPushButton>("GpsDownLoad").isEnabled());
}

// ---- Upload

TEST_F(WindowTest, UploadWithoutASelectionIsRefused) {
  Click("GpsUpLoad");
  EXPECT_EQ(Messages(), std::string(messages::NothingToUpload));
}

TEST_F(WindowTest, UploadWithoutDataIsRefused) {
  CheckAll("DoCheck");
  Click("GpsUpLoad");
  EXPECT_EQ(Messages(), std::string(messages::NothingHeld));
}

TEST_F(WindowTest, AfterAnUploadTheReceiversNewCountIsShown) {
  PutFile(folder.Path("two.grc"), "WPT\tD\tWGS84\t=\"A\"\t35\t139\t=\"\"\r\nWPT\tD\tWGS84\t=\"B\"\t36\t140\t=\"\"\r\n");
  window->ImportFiles({folder.Path("two.grc")});
  Check("DoCheck_0");
  Click("GpsUpLoad");
  EXPECT_EQ(Get<QLineEdit>("GpsDataNum_0").text(), "2");
  EXPECT_EQ(Get<QLineEdit>("GpsNum_0").text(), "2");
  EXPECT_EQ(Messages(), "");
}

TEST_F(WindowTest, AutoDeleteEmptiesTheUploadedKinds) {
  Check("DownCheck_0");
  Click("GpsDownLoad");
  Check("DoCheck_0");
  Check("AutoDelete");
  Click("GpsUpLoad");
  EXPECT_EQ(Texts("GpsNum"), "-|-|-");
  EXPECT_EQ(Data().Count(DataKind::Waypoint), 0U);
}

// ---- Delete, capacity

TEST_F(WindowTest, DeleteEmptiesTheCheckedKindsWithoutAQuestion) {
  CheckAll("DownCheck");
  Click("GpsDownLoad");
  const QString routes = Get<QLineEdit>("GpsNum_1").text();
  Check("DoCheck_0");
  Check("DoCheck_2");
  Click("Delete");
  EXPECT_EQ(Texts("GpsNum"), "-|" + routes.toStdString() + "|-");
  EXPECT_EQ(Messages(), "");
}

TEST_F(WindowTest, DeleteWithNothingCheckedChangesNothing) {
  Check("DownCheck_0");
  Click("GpsDownLoad");
  const std::string before = Texts("GpsNum");
  Click("Delete");
  EXPECT_EQ(Texts("GpsNum"), before);
}

TEST_F(WindowTest, TheCapacityMessageIsShownOnceUntilTheKindIsDeleted) {
  std::string routes;
  for (int route = 1; route <= 79; ++route) {
    routes += "RTH\t" + std::to_string(route) + "\t=\"R\"\t1\r\nRTP\tD\tWGS84\t=\"A\"\t35\t139\t=\"\"\r\n";
  }
  PutFile(folder.Path("full.grc"), routes);
  PutFile(folder.Path("one.grc"), "RTH\t1\t=\"R\"\t1\r\nRTP\tD\tWGS84\t=\"A\"\t35\t139\t=\"\"\r\n");
  const QColor normal = Get<QLabel>("DataType_1").palette().color(Get<QLabel>("DataType_1").backgroundRole());
  window->ImportFiles({folder.Path("full.grc")});
  EXPECT_EQ(Messages(), messages::KindFull(DataKind::Route));
  EXPECT_EQ(answerer.boxes[0].buttons, QStringList{"OK"});
  EXPECT_EQ(Get<QLabel>("DataType_1").backgroundRole(), QPalette::Button);
  window->ImportFiles({folder.Path("one.grc")});
  EXPECT_EQ(answerer.boxes.size(), 1U) << "once";
  Check("DoCheck_1");
  Click("Delete");
  EXPECT_EQ(Get<QLabel>("DataType_1").palette().color(Get<QLabel>("DataType_1").backgroundRole()), normal);
  window->ImportFiles({folder.Path("full.grc")});
  EXPECT_EQ(answerer.boxes.size(), 2U);
}

// ---- Export, copy

class ExportTest : public WindowTest {
 protected:
  void Load() {
    Check("DownCheck_0");
    Click("GpsDownLoad");
    Check("DoCheck_0");
  }
};

TEST_F(ExportTest, ExportAndCopyWithoutDataAreRefused) {
  Click("FileExport");
  Click("Copy");
  EXPECT_EQ(Messages(), Twice(messages::NothingDownloaded));
}

TEST_F(ExportTest, ExportAndCopyWithoutASelectionAreRefused) {
  Check("DownCheck_0");
  Click("GpsDownLoad");
  Click("FileExport");
  Click("Copy");
  EXPECT_EQ(Messages(), Twice(messages::NothingChosen));
}

TEST_F(ExportTest, ASelectionThatHoldsNothingIsSaidTwice) {
  Check("DownCheck_0");
  Click("GpsDownLoad");
  Check("DoCheck_1");
  answerer.ChooseFile(QString::fromStdString(folder.Path("out.grc")));
  Click("FileExport");
  EXPECT_EQ(Messages(), std::string(messages::NothingToSave).append("|").append(messages::NothingWritten));
  EXPECT_FALSE(std::filesystem::exists(folder.Path("out.grc")));
}

TEST_F(ExportTest, TheSaveDialogHasTheTypesFilterAndAddsTheExtension) {
  Load();
  answerer.ChooseFile(QString::fromStdString(folder.Path("walk")));
  Click("FileExport");
  EXPECT_TRUE(answerer.save_dialog);
  EXPECT_EQ(answerer.name_filters,
            (QStringList{QString::fromUtf8("すべてのファイル (*)"), QString::fromUtf8("標準ファイル (*.grc)")}));
  EXPECT_EQ(answerer.chosen_filter, QString::fromUtf8("標準ファイル (*.grc)"));
  EXPECT_TRUE(FileContents(folder.Path("walk.grc")).starts_with("WPT\tD\tWGS84\t"));
  EXPECT_EQ(Messages(), "");
}

TEST_F(ExportTest, ACancelledDialogWritesNothingAndDeletesNothing) {
  Load();
  Check("AutoDelete");
  Click("FileExport");
  EXPECT_EQ(answerer.file_dialogs, 1);
  EXPECT_GT(Data().Count(DataKind::Waypoint), 0U);
}

TEST_F(ExportTest, AnExistingFileIsReplacedOnlyWithOkAndCancelIsTheSafeButton) {
  Load();
  const std::string path = folder.Path("old.grc");
  PutFile(path, "precious");
  answerer.ChooseFile(QString::fromStdString(path));
  answerer.Answer(QMessageBox::Cancel);
  Click("FileExport");
  EXPECT_EQ(Messages(), messages::OverwriteQuestion(path));
  EXPECT_EQ(answerer.boxes[0].default_button, QString::fromUtf8("キャンセル"));
  EXPECT_EQ(FileContents(path), "precious");
  answerer.Answer(QMessageBox::Ok);
  Click("FileExport");
  EXPECT_TRUE(FileContents(path).starts_with("WPT\t"));
}

TEST_F(ExportTest, AutoDeleteEmptiesWhatWasWritten) {
  Load();
  Check("AutoDelete");
  answerer.ChooseFile(QString::fromStdString(folder.Path("out.grc")));
  Click("FileExport");
  EXPECT_EQ(Texts("GpsNum"), "-|-|-");
  EXPECT_TRUE(std::filesystem::exists(folder.Path("out.grc")));
}

TEST_F(ExportTest, CopyFillsTheClipboardWithHeaderLinesWhereWanted) {
  Load();
  Check("WithHeader");
  Click("Copy");
  EXPECT_TRUE(Clipboard().starts_with("WPT\tDegreeType\tDatum\tident\t")) << Clipboard().substr(0, 80);
  EXPECT_EQ(Messages(), "");
}

TEST_F(ExportTest, NotationAndDatumAreTheChosenOnes) {
  Load();
  auto& degree = Get<QComboBox>("DegreeType");
  degree.setFocus();
  QTest::keyClick(&degree, Qt::Key_Down);
  auto& datum = Get<QComboBox>("Datum");
  datum.setFocus();
  QTest::keyClick(&datum, Qt::Key_Down);
  Click("Copy");
  EXPECT_TRUE(Clipboard().starts_with("WPT\tDMS\tTokyo\t")) << Clipboard().substr(0, 80);
}

TEST_F(ExportTest, ACharacterThatShiftJisLacksOffersUtf8BeforeAnythingIsWritten) {
  PutFile(folder.Path("in.grc"), "WPT\tD\tWGS84\t=\"A\"\t35\t139\t=\"ni\xc5\xa0\"\r\n");
  window->ImportFiles({folder.Path("in.grc")});
  Check("DoCheck_0");
  const std::string path = folder.Path("out.grc");
  answerer.ChooseFile(QString::fromStdString(path));
  answerer.Answer(QMessageBox::No);
  Click("FileExport");
  ASSERT_EQ(answerer.boxes.size(), 1U);
  EXPECT_EQ(Messages(), messages::Utf8Question("1行目のWPT「A」", "Š"));
  EXPECT_FALSE(std::filesystem::exists(path));
  answerer.Answer(QMessageBox::Yes);
  Click("FileExport");
  EXPECT_NE(FileContents(path).find("NI\xc5\xa0"), std::string::npos);
}

TEST_F(ExportTest, TwoExportsWithinASecondAskBeforeTheSecondOverwrites) {
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(folder.Path("."));
  Load();
  Check("AutoFileName");
  Click("FileExport");
  Click("FileExport");
  std::filesystem::current_path(before);
  EXPECT_EQ(answerer.file_dialogs, 0);
  ASSERT_EQ(answerer.boxes.size(), 1U) << Messages();
  EXPECT_TRUE(answerer.boxes[0].text.endsWith(QString::fromUtf8("20021115_142530.grc)は存在します．上書きしますか？")));
}

// ---- Import

TEST_F(WindowTest, TheOpenDialogReadsAFileAndTheStatusLineTellsWhatCameIn) {
  PutFile(folder.Path("in.grc"), "WPT\tD\tWGS84\t=\"A\"\t35\t139\t=\"\"\r\nWPT\tD\tWGS84\t=\"B\"\tx\t139\t=\"\"\r\n");
  answerer.ChooseFile(QString::fromStdString(folder.Path("in.grc")));
  Click("FileImport");
  EXPECT_FALSE(answerer.save_dialog);
  EXPECT_EQ(Texts("GpsNum"), "1|-|-");
  EXPECT_TRUE(Status().starts_with("取り込み：Waypoint 1，Route 0，TrackLog 0．1行を読み飛ばしました")) << Status();
}

TEST_F(WindowTest, TheOpenDialogBeginsWithTheFilesThatCanBeRead) {
  Click("FileImport");
  EXPECT_EQ(answerer.name_filters,
            (QStringList{"対応ファイル (*.grc *.txt *.mps *.gpx)", "WPT+ファイル (*.txt)", "MPSファイル (*.mps)",
                         "GPXファイル (*.gpx)", "すべてのファイル (*)", "標準ファイル (*.grc)"}));
  EXPECT_EQ(answerer.chosen_filter, answerer.name_filters.constFirst());
}

TEST_F(WindowTest, ACancelledOpenDialogShowsNothing) {
  Click("FileImport");
  EXPECT_EQ(answerer.file_dialogs, 1);
  EXPECT_EQ(Messages(), "");
  EXPECT_EQ(Texts("GpsNum"), "-|-|-");
}

TEST_F(WindowTest, AFileOfAnotherKindIsRefused) {
  PutFile(folder.Path("in.grc"), "hello\r\n");
  window->ImportFiles({folder.Path("in.grc")});
  EXPECT_EQ(Messages(), messages::UnsupportedFile(folder.Path("in.grc")));
}

// ---- Auto-actions

TEST_F(WindowTest, AutoDownloadSelectsAllKindsWhateverWasSelected) {
  Check("AutoDownload");
  Check("DownCheck_1");
  Click("Get_GpsInfo");
  for (int kind = 0; kind < 3; ++kind)
    EXPECT_TRUE(Get<QCheckBox>(QString("DownCheck_%1").arg(kind)).isChecked());
  EXPECT_GT(Data().Count(DataKind::Waypoint), 0U);
  EXPECT_GT(Data().Count(DataKind::TrackLog), 0U);
}

TEST_F(WindowTest, AutoSaveAndAutoCopyHandOnTheDownloadedKinds) {
  Check("AutoSave");
  Check("AutoCopy");
  Check("DownCheck_1");
  Check("DoCheck_0");
  answerer.ChooseFile(QString::fromStdString(folder.Path("auto.grc")));
  Click("GpsDownLoad");
  EXPECT_TRUE(FileContents(folder.Path("auto.grc")).starts_with("RTH\t"));
  EXPECT_TRUE(Clipboard().starts_with("RTH\t"));
  EXPECT_FALSE(Get<QCheckBox>("DoCheck_0").isChecked());
  EXPECT_TRUE(Get<QCheckBox>("DoCheck_1").isChecked());
}

TEST_F(WindowTest, WhatADownloadHadToTellStaysToldBehindAnAutoSave) {
  DemoReceiverOptions options;
  options.faults.bad_checksum = 2;
  UseReceiver(options);
  ChooseLink("しない");
  Check("AutoSave");
  Check("DownCheck_0");
  answerer.ChooseFile(QString::fromStdString(folder.Path("auto.grc")));
  Click("GpsDownLoad");
  EXPECT_TRUE(FileContents(folder.Path("auto.grc")).starts_with("WPT\t"));
  EXPECT_NE(Status().find(messages::DamagedRecords(DataKind::Waypoint, 1)), std::string::npos) << Status();
}

// The names in the waypoints' table; none while it is not there.
std::vector<std::string> ShownNames(const MainWindow& window) {
  std::vector<std::string> names;
  const auto* table = window.findChild<QTableView*>("WaypointTable");
  for (int row = 0; table != nullptr && row < table->model()->rowCount(); ++row)
    names.push_back(table->model()->index(row, 1).data().toString().toStdString());
  return names;
}

TEST_F(WindowTest, DuringADownloadTheTablesShowWhatIsHeldAndEachKindAsItEnds) {
  CheckAll("DownCheck");
  bool shown_behind_its_kind = false;
  event_loop.on_yield = [&] {
    if (!Status().starts_with("DownLoading : Route")) return;
    shown_behind_its_kind = ShownNames(*window).size() == 19 && !ShownNames(*window).front().empty();
  };
  Click("GpsDownLoad");
  EXPECT_TRUE(shown_behind_its_kind);

  const auto held = ShownNames(*window);
  answerer.Answer(QMessageBox::Yes);
  int turns = 0;
  event_loop.on_yield = [&] {
    if (!Status().starts_with("DownLoading : Waypoint")) return;
    ++turns;
    EXPECT_EQ(ShownNames(*window), held);
  };
  Check("DownCheck_1", false);
  Check("DownCheck_2", false);
  Click("GpsDownLoad");
  EXPECT_GT(turns, 0);
}

TEST_F(WindowTest, RecordsThatNeverCameAreToldUntilTheNextCommandAndMarked) {
  DemoReceiverOptions options;
  options.faults.early_complete = 5;
  UseReceiver(options);
  Check("DownCheck_0");
  Click("GpsDownLoad");
  EXPECT_EQ(Status(), messages::MissingRecords(DataKind::Waypoint, 19, 14));
  EXPECT_FALSE(Get<QLabel>("Notices").isVisible()) << "it is not said twice";
  const QAbstractItemModel& rows = *window->findChild<QTableView*>("WaypointTable")->model();
  const auto tip = [&](int row) { return rows.index(row, 1).data(Qt::ToolTipRole).toString().toStdString(); };
  EXPECT_EQ(tip(4), "");
  EXPECT_EQ(tip(5), window_messages::RecordNeverCame);
  EXPECT_EQ(tip(18), window_messages::RecordNeverCame);
  EXPECT_TRUE(rows.index(5, 1).data(Qt::FontRole).value<QFont>().italic());
  Check("DoCheck_0");
  Click("Copy");
  EXPECT_EQ(Status(), "");
}

// The status line has no room for it.
TEST_F(WindowTest, ADamageMessageIsShownWhole) {
  DemoReceiverOptions options;
  options.faults.bad_checksum = 2;
  UseReceiver(options);
  ChooseLink("しない");
  CheckAll("DownCheck");
  window->resize(window->minimumSizeHint());
  Click("GpsDownLoad");
  const auto& notices = Get<QLabel>("Notices");
  EXPECT_EQ(notices.text().remove('\n').toStdString(), Status());
  EXPECT_TRUE(Status().find("(CheckedLink)") == std::string::npos);
  EXPECT_TRUE(notices.isVisible());
  QApplication::processEvents();
  EXPECT_GE(notices.height(), notices.heightForWidth(notices.width()));
  Check("DoCheck_0");
  Click("Copy");
  EXPECT_FALSE(notices.isVisible());
}

TEST_F(WindowTest, TheLinkIsChosenByTheReceiverUnlessTheUserDoesIt) {
  auto& box = Get<QComboBox>("CheckedLink");
  QStringList entries;
  for (int i = 0; i < box.count(); ++i)
    entries.append(box.itemText(i));
  EXPECT_EQ(entries.join(' ').toStdString(), "自動 する しない");
  EXPECT_EQ(box.currentText().toStdString(), "自動");
  EXPECT_EQ(window->Main().State().Settings().link, LinkChoice::Automatic);
  QTest::keyClick(&box, Qt::Key_Down);
  EXPECT_EQ(window->Main().State().Settings().link, LinkChoice::Checked);
  QTest::keyClick(&box, Qt::Key_Down);
  EXPECT_EQ(window->Main().State().Settings().link, LinkChoice::Plain);
  window->Main().State().Settings().link = LinkChoice::Automatic;
  window->ShowControls();
  EXPECT_EQ(box.currentText().toStdString(), "自動");
}

TEST_F(WindowTest, AltKLeadsToTheChoiceOfTheLink) {
  const auto captions = window->findChildren<QLabel*>();
  const auto caption = std::find_if(captions.begin(), captions.end(), [&](const QLabel* label) {
    return label->buddy() == &Get<QComboBox>("CheckedLink");
  });
  ASSERT_NE(caption, captions.end());
  EXPECT_EQ((*caption)->text().toStdString(), "誤り検査(&K)");
}

TEST_F(WindowTest, ADamagedRecordComesWholeWhereTheLinkIsChosenByItself) {
  DemoReceiverOptions options;
  options.faults.bad_checksum = 2;
  UseReceiver(options);
  Check("DownCheck_0");
  Click("GpsDownLoad");
  EXPECT_EQ(Status(), "");
  EXPECT_EQ(Get<QLineEdit>("GpsNum_0").text(), "19");
}

TEST_F(WindowTest, DamagedRecordsNameTheBoxThatHelpsAndWithItTheyComeWhole) {
  DemoReceiverOptions options;
  options.faults.bad_checksum = 2;
  UseReceiver(options);
  Check("DownCheck_0");
  ChooseLink("しない");
  Click("GpsDownLoad");
  EXPECT_NE(Status().find("「誤り検査」を「する」にして"), std::string::npos) << Status();

  UseReceiver(options);
  Check("DownCheck_0");
  ChooseLink("する");
  EXPECT_EQ(window->Main().State().Settings().link, LinkChoice::Checked);
  Click("GpsDownLoad");
  EXPECT_EQ(Status(), "");
  EXPECT_EQ(Get<QLineEdit>("GpsNum_0").text(), "19");
}

TEST_F(WindowTest, AutoDeleteWaitsUntilTheDownloadedKindsWereSavedAndCopied) {
  for (const char* box : {"AutoSave", "AutoCopy", "AutoDelete"})
    Check(box);
  Check("DownCheck_0");
  answerer.ChooseFile(QString::fromStdString(folder.Path("auto.grc")));
  Click("GpsDownLoad");
  EXPECT_TRUE(FileContents(folder.Path("auto.grc")).starts_with("WPT\t"));
  EXPECT_TRUE(Clipboard().starts_with("WPT\t"));
  EXPECT_EQ(Texts("GpsNum"), "-|-|-");
  EXPECT_EQ(Messages(), "");
}

TEST_F(WindowTest, AnAutoSaveThatIsCancelledDeletesNothing) {
  for (const char* box : {"AutoSave", "AutoCopy", "AutoDelete"})
    Check(box);
  Check("DownCheck_0");
  Click("GpsDownLoad");
  EXPECT_EQ(answerer.file_dialogs, 1);
  EXPECT_TRUE(Clipboard().starts_with("WPT\t"));
  EXPECT_GT(Data().Count(DataKind::Waypoint), 0U);
}

// ---- Ports

TEST_F(WindowTest, ThePortListTellsInWordsWhatIsBehindANumber) {
  ports = {{1, "/dev/ttyUSB0", "FT232R"}, {3, "/dev/ttyS0", ""}};
  auto& box = Get<QComboBox>("CommPort");
  box.showPopup();
  box.hidePopup();
  EXPECT_EQ(box.itemText(0), "1: /dev/ttyUSB0 (FT232R)");
  EXPECT_EQ(box.itemText(1), "") << "there is no such port to choose";
  EXPECT_TRUE(qobject_cast<QListView*>(box.view())->isRowHidden(1));
  EXPECT_EQ(box.itemText(2), "3: /dev/ttyS0");
  EXPECT_EQ(box.itemData(box.count() - 1).toString(), "demo");
  EXPECT_TRUE(box.itemText(box.count() - 1).contains(QString::fromUtf8("デモ")));
}

TEST_F(WindowTest, ThePortListIsLookedUpAnewWheneverItOpens) {
  auto& box = Get<QComboBox>("CommPort");
  box.showPopup();
  box.hidePopup();
  ASSERT_EQ(box.itemText(3), "");
  ports = {{4, "/dev/ttyUSB7", ""}};
  box.showPopup();
  box.hidePopup();
  EXPECT_EQ(box.itemText(3), "4: /dev/ttyUSB7");
}

TEST_F(WindowTest, ThePlaceholderSaysThatThereIsNoPort) {
  auto& box = Get<QComboBox>("CommPort");
  box.setCurrentIndex(0);
  window->LookAtPorts();
  EXPECT_EQ(box.currentData().toString(), "1");
  EXPECT_EQ(box.lineEdit()->text(), "");
  EXPECT_EQ(box.lineEdit()->placeholderText().toStdString(), "ポートなし");
}

TEST_F(WindowTest, KeysPassOverNumbersWithoutAPort) {
  ports = {{1, "/dev/ttyUSB0", "", ""}, {4, "/dev/ttyUSB1", "", ""}};
  auto& box = Get<QComboBox>("CommPort");
  window->LookAtPorts();
  box.setCurrentIndex(0);
  QTest::keyClick(&box, Qt::Key_Down);
  EXPECT_EQ(window->Main().State().Settings().port, "4");
}

TEST_F(WindowTest, APathThatIsTypedIsThePort) {
  auto& box = Get<QComboBox>("CommPort");
  box.setFocus();
  box.lineEdit()->selectAll();
  QTest::keyClicks(&box, "/dev/rfcomm0");
  EXPECT_EQ(window->Main().State().Settings().port, "/dev/rfcomm0");
  window->LookAtPorts();
  EXPECT_EQ(box.lineEdit()->text(), "/dev/rfcomm0");
  QTest::keyClick(window.get(), Qt::Key_F5);
  ASSERT_EQ(answerer.boxes.size(), 1U);
  EXPECT_TRUE(Messages().ends_with("がありません．\nSerial Port [ /dev/rfcomm0 ] は既に使われています"))
      << "the reason comes first: " << Messages();
  EXPECT_TRUE(Get<QPushButton>("Get_GpsInfo").isEnabled());
  box.setCurrentIndex(box.findData(DemoPortName));
  Click("Get_GpsInfo");
  EXPECT_TRUE(GpsInfo().starts_with("eTrex"));
}

TEST_F(WindowTest, WhatIsTypedAndIsNoPortIsGivenUp) {
  auto& box = Get<QComboBox>("CommPort");
  box.setFocus();
  box.lineEdit()->selectAll();
  QTest::keyClicks(&box, "nonsense");
  Get<QPushButton>("Get_GpsInfo").setFocus();
  EXPECT_EQ(window->Main().State().Settings().port, "demo");
  EXPECT_EQ(box.lineEdit()->text(), box.itemText(box.count() - 1));
  box.setFocus();
  box.lineEdit()->selectAll();
  QTest::keyClicks(&box, "3");
  QTest::keyClick(&box, Qt::Key_Return);
  EXPECT_EQ(window->Main().State().Settings().port, "3");
}

}  // namespace
}  // namespace walrim
