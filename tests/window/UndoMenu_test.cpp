// Commands taken back from the menu and by keys, and what is asked before unsaved records go.
#include "window/UndoMenu.h"

#include <QAction>

#include "app/Messages.h"
#include "app/ProgramName.h"
#include "window/Messages.h"
#include "window/WindowTest.h"

namespace walrim {
namespace {

constexpr std::string_view OneWaypoint = "WPT\tD\tWGS84\t=\"A\"\t35\t139\t=\"\"\r\n";
constexpr std::string_view OneRoute = "RTH\t1\t=\"R\"\t1\r\nRTP\tD\tWGS84\t=\"A\"\t35\t139\t=\"\"\r\n";

class UndoMenuTest : public WindowTest {
 protected:
  UndoMenuTest() {
    PutFile(folder.Path("a.grc"), OneWaypoint);
    PutFile(folder.Path("b.grc"), OneRoute);
  }

  void Press(const char* keys) const {
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    QTest::keySequence(window.get(), QKeySequence(keys));
  }
  [[nodiscard]] std::string Caption(const char* name) const { return Get<QAction>(name).text().toStdString(); }
  [[nodiscard]] bool Enabled(const char* name) const { return Get<QAction>(name).isEnabled(); }
  void Import(const char* name) const { window->ImportFiles({folder.Path(name)}); }
};

TEST_F(UndoMenuTest, TakesTheDeletionOfADownloadBack) {
  EXPECT_FALSE(Enabled("Undo"));
  EXPECT_EQ(Caption("Undo"), "元に戻す(&Z)");
  EXPECT_EQ(Caption("Redo"), "やり直し(&R)");
  CheckAll("DownCheck");
  Click("GpsDownLoad");
  const std::string held = Texts("GpsNum");
  const std::size_t points = Data().TrackPointCount();
  CheckAll("DoCheck");
  Click("Delete");
  EXPECT_EQ(Texts("GpsNum"), "-|-|-");
  const std::string deleted = Caption("Undo");
  EXPECT_EQ(deleted.find("元に戻す：削除（Waypoint "), 0U) << deleted;
  Press("Ctrl+Z");
  EXPECT_EQ(Texts("GpsNum"), held);
  EXPECT_EQ(Data().TrackPointCount(), points);
  EXPECT_EQ(Caption("Undo").find("元に戻す：ダウンロード（Waypoint "), 0U);
  EXPECT_EQ(Caption("Redo").find("やり直し：削除（Waypoint "), 0U);
  EXPECT_EQ(Status().find("元に戻しました：削除（"), 0U) << Status();
  Press("Ctrl+Z");
  EXPECT_EQ(Texts("GpsNum"), "-|-|-");
  EXPECT_FALSE(Enabled("Undo"));
  Press("Ctrl+Shift+Z");
  EXPECT_EQ(Texts("GpsNum"), held);
  Press("Ctrl+Y");
  EXPECT_EQ(Texts("GpsNum"), "-|-|-");
  EXPECT_FALSE(Enabled("Redo"));
}

TEST_F(UndoMenuTest, BringsBackWhatADownloadThatBrokeOffHasTaken) {
  DemoReceiverOptions options;
  options.faults.silent_after = 20;
  options.baud = 0;
  const auto broken =
      std::make_unique<DemoSerialPort>(options, clock, [this](std::chrono::nanoseconds time) { clock.Advance(time); });
  Open(*broken, clock);
  window->Main().State().Settings().port = "demo";
  Import("a.grc");
  Check("DownCheck_0");
  answerer.Answer(QMessageBox::Yes);
  Click("GpsDownLoad");
  EXPECT_EQ(Texts("GpsNum"), "-|-|-") << "what was held is gone";
  Press("Ctrl+Z");
  EXPECT_EQ(Texts("GpsNum"), "1|-|-");
  window.reset();
}

TEST_F(UndoMenuTest, FilesOfOneDropAreOneStep) {
  window->ImportFiles({folder.Path("a.grc"), folder.Path("b.grc")});
  EXPECT_EQ(Caption("Undo"), "元に戻す：取り込み（Waypoint 1件，Route 1件）(&Z)");
  Press("Ctrl+Z");
  EXPECT_EQ(Texts("GpsNum"), "-|-|-");
}

TEST_F(UndoMenuTest, IsOutOfReachWhileACommandRuns) {
  Import("a.grc");
  CheckAll("DownCheck");
  bool looked = false;
  event_loop.on_yield = [&] {
    if (std::exchange(looked, true)) return;
    EXPECT_FALSE(Enabled("Undo"));
    Press("Ctrl+Z");
    EXPECT_EQ(Texts("GpsNum"), "1|-|-");
  };
  Click("Get_GpsInfo");
  EXPECT_TRUE(looked);
  EXPECT_TRUE(Enabled("Undo"));
}

TEST_F(UndoMenuTest, PastedTextIsAStep) {
  QGuiApplication::clipboard()->setText(QString::fromUtf8(OneWaypoint.data(), OneWaypoint.size()));
  Click("Paste");
  EXPECT_EQ(Caption("Undo"), "元に戻す：貼り付け（Waypoint 1件）(&Z)");
}

// ---- What is not saved

class ClosingTest : public UndoMenuTest {
 protected:
  ClosingTest() {
    PasteText(OneWaypoint);
    PasteText(OneRoute);
  }
  [[nodiscard]] std::string Question() const { return messages::UnsavedQuestion({true, true, false}); }
};

TEST_F(ClosingTest, WhatIsUnsavedIsMarked) {
  EXPECT_TRUE(window->isWindowModified());
  EXPECT_EQ(Get<QLineEdit>("GpsNum_0").toolTip().toStdString(), window_messages::UnsavedCount);
  EXPECT_EQ(Get<QLineEdit>("GpsNum_2").toolTip().toStdString(), window_messages::HeldCount);
  Check("DoCheck_1", false);
  answerer.ChooseFile(folder.Path("out.grc").c_str());
  Click("FileExport");
  EXPECT_TRUE(window->isWindowModified()) << "the route is in no file";
  EXPECT_EQ(Get<QLineEdit>("GpsNum_0").toolTip().toStdString(), window_messages::HeldCount);
  Press("Ctrl+Z");  // the route
  EXPECT_FALSE(window->isWindowModified());
  Press("Ctrl+Z");
  EXPECT_FALSE(window->isWindowModified()) << "nothing is held";
  Press("Ctrl+Y");
  EXPECT_FALSE(window->isWindowModified()) << "it is as it was saved";
}

TEST_F(UndoMenuTest, WhatAFileAloneBroughtIsSaved) {
  Import("a.grc");
  Import("b.grc");
  EXPECT_FALSE(window->isWindowModified());
  Import("a.grc");
  EXPECT_TRUE(window->isWindowModified()) << "both waypoints are in no file";
  Press("Ctrl+Z");
  EXPECT_FALSE(window->isWindowModified());
  window->ImportFiles({folder.Path("a.grc"), folder.Path("a.grc")});
  EXPECT_TRUE(window->isWindowModified());
  Press("Ctrl+Z");
  Press("Ctrl+Z");
  Press("Ctrl+Z");
  window->ImportFiles({folder.Path("a.grc"), folder.Path("a.grc")});
  EXPECT_TRUE(window->isWindowModified()) << "they came in one step";
}

TEST_F(ClosingTest, BackStays) {
  answerer.Answer(QMessageBox::Cancel);
  EXPECT_FALSE(window->close());
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(Messages(), Question());
  EXPECT_EQ(answerer.boxes.front().buttons.size(), 3);
  EXPECT_EQ(answerer.boxes.front().default_button.toStdString(), "戻る");
  Import("a.grc");
  EXPECT_EQ(Texts("GpsNum"), "2|1|-") << "all works as before";
}

TEST_F(ClosingTest, WhatWasDeletedWithoutASaveIsAskedFor) {
  CheckAll("DoCheck");
  Click("Delete");
  answerer.Answer(QMessageBox::Cancel);
  EXPECT_FALSE(window->close());
  EXPECT_EQ(Messages(), messages::DroppedQuestion({true, true, false}));
  Press("Ctrl+Z");
  Check("DoCheck_2");
  answerer.Answer(QMessageBox::Yes);
  answerer.ChooseFile(folder.Path("out.grc").c_str());
  EXPECT_TRUE(window->close()) << "what was deleted is back, and saved";
  EXPECT_EQ(answerer.boxes.size(), 2U);
}

TEST_F(UndoMenuTest, WhatWasSavedAndDeletedIsNotAskedFor) {
  Import("a.grc");
  CheckAll("DoCheck");
  Click("Delete");
  EXPECT_TRUE(window->close());
  EXPECT_TRUE(answerer.boxes.empty());
}

TEST_F(ClosingTest, NotSavingCloses) {
  answerer.Answer(QMessageBox::No);
  EXPECT_TRUE(window->close());
  EXPECT_EQ(answerer.file_dialogs, 0);
}

TEST_F(ClosingTest, SavingSavesAllThatIsUnsavedAndCloses) {
  Check("DoCheck_0", false);
  Check("DoCheck_2");
  answerer.Answer(QMessageBox::Yes);
  answerer.ChooseFile(folder.Path("out.grc").c_str());
  EXPECT_TRUE(window->close());
  EXPECT_EQ(Messages(), Question());
  const std::string saved = FileContents(folder.Path("out.grc"));
  EXPECT_NE(saved.find("WPT\t"), std::string::npos);
  EXPECT_NE(saved.find("RTH\t"), std::string::npos);
  EXPECT_TRUE(window->Main().State().Settings().chosen_kinds[2]) << "what was chosen stays so";
  EXPECT_FALSE(window->Main().State().Settings().chosen_kinds[0]);
}

TEST_F(ClosingTest, ASaveThatIsCancelledStays) {
  answerer.Answer(QMessageBox::Yes);
  EXPECT_FALSE(window->close());
  EXPECT_EQ(answerer.file_dialogs, 1);
  EXPECT_TRUE(window->isVisible());
}

TEST_F(ClosingTest, WhatAFormatDoesNotHoldIsAskedForAgain) {
  window->Main().State().Settings().format = FormatId::Kml;
  answerer.Answer(QMessageBox::Yes);
  answerer.Answer(QMessageBox::No);
  answerer.ChooseFile(folder.Path("out.kml").c_str());
  EXPECT_TRUE(window->close());
  EXPECT_EQ(Messages(), Question() + "|" + Question());
}

TEST_F(ClosingTest, AWindowThatHoldsWhatIsSavedAsksNothing) {
  CheckAll("DoCheck");
  answerer.ChooseFile(folder.Path("out.grc").c_str());
  Click("FileExport");
  EXPECT_TRUE(window->close());
  EXPECT_EQ(Messages(), "");
}

}  // namespace
}  // namespace walrim
