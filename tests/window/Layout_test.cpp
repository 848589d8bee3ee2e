// Where things stand in the window, at which sizes, and how the keys get there.
#include <QAccessible>
#include <QFontDatabase>
#include <QProcess>
#include <QScreen>
#include <QSpinBox>
#include <QTableView>
#include <set>

#include "window/WindowTest.h"

namespace walrim {
namespace {

/// With records in all tables, and whatever can be unfolded.
class LayoutTest : public WindowTest {
 protected:
  void Fill() const {
    CheckAll("DownCheck");
    Click("GpsDownLoad");
  }
  [[nodiscard]] std::string Focus() const {
    const QWidget* focus = window->focusWidget();
    return focus == nullptr ? "nothing" : focus->objectName().toStdString();
  }
  /// The names of what has the focus, Tab by Tab, until the first comes again.
  [[nodiscard]] std::vector<std::string> WalkFrom(const char* first, Qt::Key key = Qt::Key_Tab) const {
    Get<QWidget>(first).setFocus();
    std::vector<std::string> walk;
    for (int i = 0; i < 100; ++i) {
      walk.push_back(Focus());
      QTest::keyClick(window->focusWidget(), key);
      if (Focus() == walk.front()) break;
    }
    return walk;
  }
};

using Names = std::vector<std::string>;

// ---- Sizes

constexpr QSize Smallest{910, 480};

TEST_F(LayoutTest, FitsSmallScreensWithAllTheFontsThatAreUsual) {
  const QFont usual = QApplication::font();
  for (const char* family : {"Noto Sans CJK JP", "IPAGothic", "DejaVu Sans"}) {
    ASSERT_TRUE(QFontDatabase::hasFamily(family)) << family;
    for (const int points : {10, 11, 12}) {
      QApplication::setFont(QFont(family, points));
      UseReceiver({});
      Fill();
      for (const bool unfolded : {false, true}) {
        if (unfolded) Unfold();
        for (int i = 0; i < 3; ++i)
          QApplication::processEvents();
        const QSize size = window->minimumSizeHint();
        if (qEnvironmentVariableIsSet("WALRIM_SHOW_SIZES")) {
          std::printf("%s %d pt: %d x %d %d\n", family, points, size.width(), size.height(),
                      Get<QWidget>("SettingsPanel").minimumSizeHint().height());
        }
        EXPECT_LE(size.width(), Smallest.width()) << family << points << unfolded;
        EXPECT_LE(size.height(), Smallest.height()) << family << points << unfolded;
      }
    }
  }
  QApplication::setFont(usual);
}

TEST_F(LayoutTest, FitsSmallScreensAtEveryScale) {
  for (const char* scale : {"1.25", "1.5", "1.75", "2"}) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_SCALE_FACTOR", scale);
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(QCoreApplication::applicationFilePath(),
                  {"--gtest_filter=LayoutTest.FitsSmallScreensWithAllTheFontsThatAreUsual"});
    ASSERT_TRUE(process.waitForFinished(120000)) << scale;
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit) << scale;
    EXPECT_EQ(process.exitCode(), 0) << scale;
  }
}

TEST_F(LayoutTest, TheFirstSizeStaysWithinTheScreensRoom) {
  EXPECT_LE(window->width(), window->screen()->availableSize().width());
  EXPECT_LE(window->height(), window->screen()->availableSize().height());
}

TEST_F(LayoutTest, RoomThatIsLeftGoesToTheTables) {
  Fill();
  window->resize(1000, 600);
  QApplication::processEvents();
  const QSize table = Get<QWidget>("Records").size();
  const int panel = Get<QWidget>("DataPanel").height();
  window->resize(1500, 1000);
  QApplication::processEvents();
  EXPECT_EQ(Get<QWidget>("Records").height(), table.height() + 400);
  EXPECT_EQ(Get<QWidget>("DataPanel").height(), panel);
}

TEST_F(LayoutTest, NoCaptionIsCutAtTheSmallestSize) {
  Unfold();
  window->resize(window->minimumSizeHint());
  QApplication::processEvents();
  int seen = 0;
  for (const QAbstractButton* button : window->findChildren<QAbstractButton*>()) {
    if (!button->isVisible() || button->text().isEmpty()) continue;
    ++seen;
    EXPECT_GE(button->width(), button->minimumSizeHint().width()) << button->text().toStdString();
  }
  for (const QLabel* label : window->findChildren<QLabel*>()) {
    if (!label->isVisible() || label->wordWrap() || label->text().isEmpty()) continue;
    const bool whole = label->width() >= label->fontMetrics().horizontalAdvance(label->text().remove('&'));
    EXPECT_TRUE(whole || label->toolTip().contains(label->text().toHtmlEscaped())) << label->text().toStdString();
  }
  EXPECT_GT(seen, 15);
}

// ---- The kinds

TEST_F(LayoutTest, AClickOnAKindsNameTicksIt) {
  auto& name = Get<QLabel>("DataType_1");
  QTest::mouseClick(&name, Qt::LeftButton);
  EXPECT_TRUE(Get<QCheckBox>("DownCheck_1").isChecked());
  EXPECT_TRUE(Get<QCheckBox>("DoCheck_1").isChecked());
  EXPECT_TRUE(window->Main().State().Settings().download_kinds[1]);
  EXPECT_FALSE(Get<QCheckBox>("DownCheck_0").isChecked());
  QTest::mouseClick(&name, Qt::LeftButton);
  EXPECT_FALSE(Get<QCheckBox>("DownCheck_1").isChecked());
  EXPECT_FALSE(Get<QCheckBox>("DoCheck_1").isChecked());
  Check("DoCheck_1");
  QTest::mouseClick(&name, Qt::LeftButton);
  EXPECT_TRUE(Get<QCheckBox>("DownCheck_1").isChecked()) << "one tick is completed to two";
}

class TicksTest : public WindowTest {
 protected:
  /// "110" of an indexed check box.
  [[nodiscard]] std::string Ticks(const char* control) const {
    std::string ticks;
    for (int kind = 0; kind < 3; ++kind)
      ticks += Get<QCheckBox>(QString("%1_%2").arg(control).arg(kind)).isChecked() ? '1' : '0';
    return ticks;
  }
};

TEST_F(TicksTest, WhatTheReceiverHoldsIsTickedAndWhatCameInIsToBeSaved) {
  EXPECT_EQ(Ticks("DownCheck"), "000");
  Click("Get_GpsInfo");
  EXPECT_EQ(Ticks("DownCheck"), "111");
  EXPECT_EQ(Ticks("DoCheck"), "000");
  Click("GpsDownLoad");
  EXPECT_EQ(Ticks("DoCheck"), "111");
}

TEST_F(TicksTest, AKindThatTheReceiverHasNothingOfIsNotTicked) {
  DemoReceiverOptions empty;
  empty.contents = HeldContents{};
  UseReceiver(empty);
  window->Main().State().Settings().download_kinds.fill(true);
  Click("Get_GpsInfo");
  EXPECT_EQ(Ticks("DownCheck"), "000");
}

TEST_F(TicksTest, TicksOfTheUserStayAsTheyAre) {
  Check("DownCheck_1");
  Click("Get_GpsInfo");
  EXPECT_EQ(Ticks("DownCheck"), "010");
  Click("GpsDownLoad");
  EXPECT_EQ(Ticks("DoCheck"), "000");
}

TEST_F(TicksTest, ATickThatTheUserTookAwayStaysAway) {
  Click("Get_GpsInfo");
  Check("DownCheck_2", false);
  Click("Get_GpsInfo");
  EXPECT_EQ(Ticks("DownCheck"), "110");
}

TEST_F(TicksTest, WhatIsImportedIsToBeSavedUnlessAnotherProgramSaysWhatIs) {
  PutFile(folder.Path("a.grc"), "WPT\tD\tWGS84\t=\"A\"\t35\t139\t=\"\"\r\n");
  EXPECT_EQ(window->RunExternalCommand("GetFile", folder.Path("a.grc"), ""), CommandDone);
  EXPECT_EQ(Ticks("DoCheck"), "000");
  window->ImportFiles({folder.Path("a.grc")});
  EXPECT_EQ(Ticks("DoCheck"), "100");
  EXPECT_EQ(window->RunExternalCommand("SetDoCheck", "0", "0"), CommandDone);
  window->ImportFiles({folder.Path("a.grc")});
  EXPECT_EQ(Ticks("DoCheck"), "000");
}

// ---- The settings

TEST_F(LayoutTest, SettingsAreFoldedAwayUntilTheyAreWanted) {
  EXPECT_FALSE(Get<QComboBox>("Datum").isVisible());
  EXPECT_FALSE(Get<QCheckBox>("AutoSave").isVisible());
  Unfold();
  for (const char* name : {"OutputTypeOption", "DegreeType", "Datum", "UTCOffsetNum", "WithHeader", "AutoFileName",
                           "CheckedLink", "AutoDownload", "AutoSave", "AutoCopy", "AutoUpload", "AutoDelete"})
    EXPECT_TRUE(Get<QWidget>(name).isVisible()) << name;
  Unfold();
  EXPECT_FALSE(Get<QComboBox>("Datum").isVisible());
}

TEST_F(LayoutTest, SettingsUnfoldByKeysAndTakeTheFocus) {
  Get<QToolButton>("Settings").setFocus();
  QTest::keyClick(window->focusWidget(), Qt::Key_Return);
  EXPECT_TRUE(Get<QComboBox>("Datum").isVisible());
  EXPECT_EQ(Focus(), "OutputTypeOption");
}

TEST_F(LayoutTest, SettingsThatWereUnfoldedAreSoAtTheNextStart) {
  store = std::make_unique<QSettings>(QString::fromStdString(folder.Path("walrim.ini")), QSettings::IniFormat);
  UseReceiver({});
  Unfold();
  ASSERT_TRUE(window->close());
  UseReceiver({});
  EXPECT_TRUE(Get<QComboBox>("Datum").isVisible());
  Unfold();
  ASSERT_TRUE(window->close());
  UseReceiver({});
  EXPECT_FALSE(Get<QComboBox>("Datum").isVisible());
}

TEST_F(LayoutTest, AWindowThatClosesBeforeItsSettingsAreMadeKeepsThem) {
  store = std::make_unique<QSettings>(QString::fromStdString(folder.Path("walrim.ini")), QSettings::IniFormat);
  UseReceiver({});
  ChooseLink("する");
  ASSERT_TRUE(window->close());
  window.reset();
  {
    MainWindow fresh({*demo_port,
                      clock,
                      event_loop,
                      inet,
                      [] { return std::vector<NumberedPort>{}; },
                      nullptr,
                      store.get(),
                      {},
                      false},
                     Contents::Later);
    fresh.show();
    fresh.Build();
    EXPECT_EQ(fresh.findChild<QWidget*>("Datum"), nullptr) << "made later";
    ASSERT_TRUE(fresh.close());
  }
  UseReceiver({});
  EXPECT_EQ(window->Main().State().Settings().link, LinkChoice::Checked);
}

// ---- Keys

const Names Above{"CommPort",     "Get_GpsInfo", "GpsInfo",      "GpsDownLoad", "GpsUpLoad",    "DownCheck_0",
                  "GpsDataNum_0", "DownCheck_1", "GpsDataNum_1", "DownCheck_2", "GpsDataNum_2", "FileImport",
                  "Paste",        "Settings",    "DoCheck_0",    "GpsNum_0",    "DoCheck_1",    "GpsNum_1",
                  "DoCheck_2",    "GpsNum_2",    "FileExport",   "Copy",        "Delete"};
const Names InSettings{"OutputTypeOption", "DegreeType",   "Datum",    "UTCOffsetNum", "WithHeader", "AutoFileName",
                       "CheckedLink",      "AutoDownload", "AutoSave", "AutoCopy",     "AutoUpload", "AutoDelete"};

TEST_F(LayoutTest, TabGoesThroughTheControlsInReadingOrder) {
  Unfold();
  Fill();
  Names walk = WalkFrom("CommPort");
  Names expected = Above;
  expected.insert(expected.end(), InSettings.begin(), InSettings.end());
  ASSERT_GT(walk.size(), expected.size());
  EXPECT_EQ(Names(walk.begin(), walk.begin() + static_cast<std::ptrdiff_t>(expected.size())), expected);
  // Behind them the tables, though they were made last, then what became of the download.
  const auto tables = std::ranges::find(walk, "WaypointTable");
  const auto results = std::ranges::find(walk, "DismissResults");
  ASSERT_NE(tables, walk.end());
  ASSERT_NE(results, walk.end());
  EXPECT_LT(tables, results);
  EXPECT_EQ(*(results - 1), "DownloadResults");
  EXPECT_EQ(results + 1, walk.end());

  std::ranges::reverse(walk);
  std::ranges::rotate(walk, walk.end() - 1);
  EXPECT_EQ(WalkFrom("CommPort", Qt::Key_Backtab), walk);
}

TEST_F(LayoutTest, EveryControlIsOnTheWayOfTheTabKey) {
  Unfold();
  Fill();
  const Names walk = WalkFrom("CommPort");
  const std::set<std::string> reached(walk.begin(), walk.end());
  for (const QWidget* widget : window->findChildren<QWidget*>()) {
    const bool can = widget->isVisible() && widget->isEnabled() && widget->focusPolicy() != Qt::NoFocus;
    if (!can || widget->focusProxy() != nullptr || widget->objectName().startsWith("qt_")) continue;
    EXPECT_TRUE(reached.contains(widget->objectName().toStdString()))
        << widget->metaObject()->className() << " " << widget->objectName().toStdString();
  }
}

TEST_F(LayoutTest, F6GoesFromAreaToArea) {
  Unfold();
  Fill();
  Get<QWidget>("CommPort").setFocus();
  Names forward;
  for (int i = 0; i < 5; ++i) {
    QTest::keyClick(window->focusWidget(), Qt::Key_F6);
    forward.push_back(Focus());
  }
  EXPECT_EQ(forward[0], "DownCheck_0");
  EXPECT_EQ(forward[1], "OutputTypeOption");
  EXPECT_TRUE(window->findChild<QWidget*>("Records")->isAncestorOf(&Get<QWidget>(forward[2].c_str()))) << forward[2];
  EXPECT_EQ(forward[3], "DownloadResults");
  EXPECT_EQ(forward[4], "CommPort");
  QTest::keyClick(window->focusWidget(), Qt::Key_F6, Qt::ShiftModifier);
  EXPECT_EQ(Focus(), forward[3]);
}

TEST_F(LayoutTest, CtrlCCopiesWhereTheFocusIs) {
  Fill();
  Get<QWidget>("DownCheck_0").setFocus();
  QTest::keyClick(window->focusWidget(), Qt::Key_Tab);
  ASSERT_EQ(Focus(), "GpsDataNum_0");
  Get<QLineEdit>("GpsNum_2").setFocus(Qt::TabFocusReason);
  QTest::keySequence(window->focusWidget(), QKeySequence::Copy);
  EXPECT_EQ(Clipboard(), "443");
  Get<QLabel>("GpsInfo").setFocus();
  QTest::keySequence(window->focusWidget(), QKeySequence::Copy);
  EXPECT_EQ(Clipboard(), GpsInfo());
  auto& table = Get<QTableView>("WaypointTable");
  table.setFocus();
  table.selectRow(1);
  QTest::keySequence(&table, QKeySequence::Copy);
  EXPECT_TRUE(Clipboard().starts_with("WPT\tD\tWGS84\t")) << Clipboard();
  EXPECT_NE(Clipboard().find("BIWA"), std::string::npos);
}

// ---- What screen readers say

TEST_F(LayoutTest, AccessibleNamesAreTheCaptions) {
  Unfold();
  Click("Get_GpsInfo");
  const std::pair<const char*, const char*> captions[] = {
      {"CommPort", "ポート"},
      {"Get_GpsInfo", "情報取得"},
      {"GpsDownLoad", "ダウンロード"},
      {"GpsUpLoad", "アップロード"},
      {"Cancel", "中止"},
      {"FileImport", "取り込み..."},
      {"Paste", "貼り付け"},
      {"FileExport", "保存..."},
      {"Copy", "コピー"},
      {"Delete", "削除"},
      {"Settings", "設定"},
      {"DataType_0", "Waypoint"},
      {"DownCheck_0", "受信機 Waypoint"},
      {"GpsDataNum_1", "受信機 Route 件数"},
      {"DoCheck_2", "内部データ TrackLog"},
      {"GpsNum_2", "内部データ TrackLog 件数"},
      {"OutputTypeOption", "形式"},
      {"DegreeType", "表記"},
      {"Datum", "測地系"},
      {"UTCOffsetNum", "時差"},
      {"CheckedLink", "誤り検査"},
      {"WithHeader", "見出し行"},
      {"AutoFileName", "AutoFileName(%date%_%time%.)"},
      {"AutoDownload", "自動ダウンロード"},
      {"AutoSave", "自動保存"},
      {"AutoCopy", "自動コピー"},
      {"AutoUpload", "自動アップロード"},
      {"AutoDelete", "自動削除"},
  };
  for (const auto& [name, caption] : captions) {
    const QAccessibleInterface* told = QAccessible::queryAccessibleInterface(&Get<QWidget>(name));
    EXPECT_EQ(told->text(QAccessible::Name).toStdString(), caption) << name;
  }
  const QAccessibleInterface* info = QAccessible::queryAccessibleInterface(&Get<QWidget>("GpsInfo"));
  EXPECT_EQ(info->text(QAccessible::Name).toStdString(), GpsInfo());
}

TEST_F(LayoutTest, NothingThatTakesTheFocusIsNameless) {
  Unfold();
  Fill();
  for (QWidget* widget : window->findChildren<QWidget*>()) {
    if (!widget->isVisible() || (widget->focusPolicy() & Qt::TabFocus) == 0 || widget->focusProxy() != nullptr)
      continue;
    const QAccessibleInterface* told = QAccessible::queryAccessibleInterface(widget);
    ASSERT_NE(told, nullptr);
    if (qobject_cast<QTabBar*>(widget) != nullptr) continue;  // its tabs have names
    EXPECT_FALSE(told->text(QAccessible::Name).isEmpty())
        << widget->metaObject()->className() << " " << widget->objectName().toStdString();
  }
}

}  // namespace
}  // namespace walrim
