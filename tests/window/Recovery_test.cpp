// A window that opens where another one did not come to its end.
#include <filesystem>

#include "app/Messages.h"
#include "window/Messages.h"
#include "window/WindowTest.h"

namespace walrim {
namespace {

constexpr std::string_view OneWaypoint = "WPT\tD\tWGS84\t=\"A\"\t35\t139\t=\"\"\r\n";

class RecoveryWindow : public WindowTest {
 protected:
  RecoveryWindow() {
    recovery_folder = folder.Path("state");
    PutFile(folder.Path("a.grc"), OneWaypoint);
    OpenAgain();
  }

  /// The window before, if any, is gone as by a power cut.
  void OpenAgain() {
    window.reset();
    Open(*demo_port, clock);
    window->OfferRecovery();
  }
  [[nodiscard]] std::string Question() const {
    const auto* bar = window->findChild<QWidget*>("RecoveryBar");
    return bar != nullptr && bar->isVisible() ? Get<QLabel>("RecoveryQuestion").text().toStdString() : std::string();
  }
  [[nodiscard]] bool IsKept() const { return std::filesystem::exists(folder.Path("state/recovery-1.txt")); }
};

TEST_F(RecoveryWindow, OffersWhatWasHeld) {
  EXPECT_EQ(Question(), "") << "nothing is left at first";
  PasteText(OneWaypoint);
  EXPECT_TRUE(IsKept());
  OpenAgain();
  EXPECT_NE(Question().find("Waypoint 1件"), std::string::npos) << Question();
  EXPECT_EQ(Messages(), "") << "nobody has to answer";
  Click("RecoveryRestore");
  EXPECT_EQ(Question(), "");
  EXPECT_EQ(Texts("GpsNum"), "1|-|-");
  EXPECT_TRUE(window->isWindowModified());
  window->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
  QTest::keySequence(window.get(), QKeySequence("Ctrl+Z"));
  EXPECT_EQ(Texts("GpsNum"), "-|-|-");
}

TEST_F(RecoveryWindow, OffersItAgainUntilItIsThrownAway) {
  PasteText(OneWaypoint);
  OpenAgain();
  Click("RecoveryLater");
  EXPECT_EQ(Question(), "");
  EXPECT_EQ(Texts("GpsNum"), "-|-|-");
  OpenAgain();
  Click("RecoveryDiscard");
  EXPECT_FALSE(IsKept());
  OpenAgain();
  EXPECT_EQ(Question(), "");
}

TEST_F(RecoveryWindow, EverythingGoesOnWhileItWaits) {
  PasteText(OneWaypoint);
  OpenAgain();
  ASSERT_NE(Question(), "");
  EXPECT_NE(window->RunExternalCommand("GetFile", folder.Path("a.grc"), ""), CommandBusy);
  window->Main().State().Settings().port = "demo";
  window->ShowControls();
  Check("DownCheck_0");
  answerer.Answer(QMessageBox::Yes);
  Click("GpsDownLoad");
  EXPECT_EQ(Texts("GpsNum"), "19|-|-");
  EXPECT_NE(Question(), "");
  EXPECT_TRUE(IsKept());
  answerer.Answer(QMessageBox::No);
  EXPECT_TRUE(window->close());
  EXPECT_TRUE(IsKept()) << "it was not answered";
  OpenAgain();
  EXPECT_NE(Question(), "");
}

TEST_F(RecoveryWindow, OneAfterTheOtherIsAskedAndADamagedOneIsTold) {
  PasteText(OneWaypoint);
  window.reset();
  std::filesystem::copy(folder.Path("state/recovery-1.txt"), folder.Path("state/recovery-2.txt"));
  PutFile(folder.Path("state/recovery-2.txt"), "half");
  OpenAgain();
  ASSERT_NE(Question(), "");
  Click("RecoveryRestore");
  EXPECT_EQ(Question(), messages::RecoveryDamaged(folder.Path("state/recovery-2.txt.damaged-1")));
  EXPECT_FALSE(Get<QPushButton>("RecoveryRestore").isVisible());
  EXPECT_EQ(Get<QPushButton>("RecoveryLater").text().toStdString(), window_messages::Dismiss);
  Click("RecoveryLater");
  EXPECT_EQ(Question(), "");
  EXPECT_EQ(Texts("GpsNum"), "1|-|-");
}

TEST_F(RecoveryWindow, AnEditIsKeptOnceThirtySecondsAreOver) {
  PasteText(OneWaypoint);
  const std::string first = FileContents(folder.Path("state/recovery-1.txt"));
  PasteText(OneWaypoint);
  EXPECT_EQ(FileContents(folder.Path("state/recovery-1.txt")), first);
  clock.Advance(std::chrono::seconds(30));
  Check("DoCheck_0", false);
  Check("DoCheck_1");
  Click("Delete");  // nothing of that kind is held
  EXPECT_NE(FileContents(folder.Path("state/recovery-1.txt")), first);
}

TEST_F(RecoveryWindow, AnEditInATableIsKeptToo) {
  window->ImportFiles({folder.Path("a.grc")});
  const std::string first = FileContents(folder.Path("state/recovery-1.txt"));
  clock.Advance(std::chrono::seconds(30));
  const auto rename = [](DataSet& data) {
    Waypoint waypoint = data.Waypoints()[0];
    waypoint.ident = "B";
    return data.Edit(Replacement(0, waypoint));
  };
  EXPECT_EQ(window->Main().Edits().Edit(StepKind::Edit, rename), Outcome::Done);
  EXPECT_TRUE(QTest::qWaitFor([&] { return FileContents(folder.Path("state/recovery-1.txt")) != first; }));
}

TEST_F(RecoveryWindow, NothingIsLeftByAWindowThatIsClosed) {
  PasteText(OneWaypoint);
  answerer.Answer(QMessageBox::No);
  EXPECT_TRUE(window->close());
  EXPECT_FALSE(IsKept());
  EXPECT_TRUE(std::filesystem::is_empty(folder.Path("state")));
}

}  // namespace
}  // namespace walrim
