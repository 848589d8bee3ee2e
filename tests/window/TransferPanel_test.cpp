// What the window tells of a download that has ended.
#include <QAction>
#include <QTableView>
#include <fstream>

#include "app/Messages.h"
#include "window/Messages.h"
#include "window/WindowTest.h"

namespace walrim {
namespace {

class TransferPanelTest : public WindowTest {
 protected:
  void Download(const ReceiverFaults& faults) {
    DemoReceiverOptions options;
    options.faults = faults;
    UseReceiver(options);
    Check("DownCheck_0");
    Click("GpsDownLoad");
  }
  [[nodiscard]] std::string Results() const {
    const auto& text = Get<QLabel>("DownloadResults");
    return text.isVisible() ? text.text().toStdString() : std::string();
  }
  [[nodiscard]] bool Shown(const char* button) const { return Get<QPushButton>(button).isVisible(); }
  [[nodiscard]] QVariant Cell(int row, int role) const {
    return Get<QTableView>("WaypointTable").model()->index(row, 1).data(role);
  }
};

TEST_F(TransferPanelTest, TellsWhatCameOfAllKindsAndStaysUntilItIsTakenAway) {
  CheckAll("DownCheck");
  EXPECT_EQ(Results(), "");
  Click("GpsDownLoad");
  EXPECT_EQ(Results(),
            "Waypoint：19件すべてが届きました． Route：36件すべてが届きました． "
            "TrackLog：443件すべてが届きました．");
  EXPECT_FALSE(Shown("DownloadAgain"));
  EXPECT_FALSE(Shown("RemoveMissing"));
  CheckAll("DoCheck");
  Click("Copy");
  EXPECT_NE(Results(), "");
  Click("DismissResults");
  EXPECT_EQ(Results(), "");
  Click("Copy");
  EXPECT_EQ(Results(), "");
}

TEST_F(TransferPanelTest, MarksWhatCameDamagedAndGetsItWholeOverTheCheckedLink) {
  ReceiverFaults faults;
  faults.bad_checksum = 2;
  DemoReceiverOptions options;
  options.faults = faults;
  UseReceiver(options);
  ChooseLink("しない");
  Check("DownCheck_0");
  Click("GpsDownLoad");
  EXPECT_EQ(Results(), "Waypoint：19件が届きました．1件は破損しています．");
  EXPECT_FALSE(Cell(0, Qt::BackgroundRole).isValid());
  EXPECT_TRUE(Cell(1, Qt::BackgroundRole).isValid());
  EXPECT_EQ(Cell(1, Qt::ToolTipRole).toString().toStdString(), window_messages::RecordDamaged);
  EXPECT_FALSE(Shown("RemoveMissing"));
  answerer.Answer(QMessageBox::Yes);
  Click("DownloadAgain");
  EXPECT_EQ(Get<QComboBox>("CheckedLink").currentText().toStdString(), "する");
  EXPECT_EQ(Results(), "Waypoint：19件すべてが届きました．");
  EXPECT_FALSE(Cell(1, Qt::BackgroundRole).isValid());
}

TEST_F(TransferPanelTest, TakesOutWhatNeverCameWithOnePress) {
  ReceiverFaults faults;
  faults.early_complete = 5;
  Download(faults);
  EXPECT_EQ(Results(), "Waypoint：19件のうち5件が届き，14件は届きませんでした．");
  EXPECT_TRUE(Shown("DownloadAgain"));
  ASSERT_TRUE(Shown("RemoveMissing"));
  Click("RemoveMissing");
  EXPECT_EQ(Data().Waypoints().size(), 5U);
  EXPECT_FALSE(Shown("RemoveMissing"));
  EXPECT_NE(Results(), "") << "what came is still told";
}

TEST_F(TransferPanelTest, SaysWhereWhatWasHeldHasGone) {
  DemoReceiverOptions options;
  options.faults.silent_after = 12;
  UseReceiver(options);
  std::ofstream(folder.Path("a.grc")) << "WPT\tD\tWGS84\t=\"BIWA\"\t35.5\t139.25\t=\"\"\t=\"161\"\t\t=\"0\"\t\r\n";
  window->ImportFiles({folder.Path("a.grc")});
  Check("DownCheck_0");
  answerer.Answer(QMessageBox::Yes);
  Click("GpsDownLoad");
  EXPECT_EQ(Results(), "Waypoint：受け取れませんでした．\n前の内部データには，「編集」の「元に戻す」で戻せます．");
}

TEST_F(TransferPanelTest, GoesWithWhatItTellsOf) {
  const auto download = [this] {
    Download({});
    ASSERT_NE(Results(), "");
  };
  download();
  Get<QAction>("Undo").trigger();
  EXPECT_EQ(Results(), "") << "it is undone";
  download();
  answerer.Answer(QMessageBox::Yes);
  Click("GpsDownLoad");
  ASSERT_NE(Results(), "");
  Get<QAction>("Undo").trigger();
  EXPECT_EQ(Results(), "") << "there are as many, and they are others";
  download();
  Check("DoCheck_0");
  Click("Delete");
  EXPECT_EQ(Results(), "") << "they are deleted";
  download();
  Check("DoCheck_0");
  Click("GpsUpLoad");
  EXPECT_EQ(Results(), "") << "something else was done with the receiver";
}

TEST_F(TransferPanelTest, StaysWhileWhatItTellsOfIsHeld) {
  Download({});
  const auto rename = [](DataSet& data) {
    Waypoint waypoint = data.Waypoints()[0];
    waypoint.ident = "B";
    return data.Edit(Replacement(0, waypoint));
  };
  EXPECT_EQ(window->Main().Edits().Edit(StepKind::Edit, rename), Outcome::Done);
  PasteText("WPT\tD\tWGS84\t=\"A\"\t35\t139\t=\"\"\r\n");
  Get<QAction>("Undo").trigger();
  Get<QAction>("Undo").trigger();
  EXPECT_NE(Results(), "");
}

TEST_F(TransferPanelTest, APageThatHoldsSomethingComesForwardWhenTheFirstRecordsCome) {
  Check("DownCheck_2");
  Click("GpsDownLoad");
  EXPECT_TRUE(Get<QTableView>("TrackTable").isVisible());
}

}  // namespace
}  // namespace walrim
