// A window that opens where another one did not come to its end.
#include <filesystem>

#include "app/Messages.h"
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
  [[nodiscard]] bool IsKept() const { return std::filesystem::exists(folder.Path("state/recovery-1.txt")); }
};

TEST_F(RecoveryWindow, OffersWhatWasHeld) {
  EXPECT_EQ(Messages(), "") << "nothing is left at first";
  PasteText(OneWaypoint);
  EXPECT_TRUE(IsKept());
  answerer.Answer(QMessageBox::Yes);
  OpenAgain();
  ASSERT_EQ(answerer.boxes.size(), 1U);
  EXPECT_EQ(answerer.boxes[0].buttons.size(), 3);
  EXPECT_EQ(answerer.boxes[0].default_button.toStdString(), messages::RecoveryAnswers.back);
  EXPECT_EQ(Texts("GpsNum"), "1|-|-");
  EXPECT_TRUE(window->isWindowModified());
  window->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
  QTest::keySequence(window.get(), QKeySequence("Ctrl+Z"));
  EXPECT_EQ(Texts("GpsNum"), "-|-|-");
}

TEST_F(RecoveryWindow, OffersItAgainUntilItIsThrownAway) {
  PasteText(OneWaypoint);
  answerer.Answer(QMessageBox::Cancel);
  OpenAgain();
  EXPECT_EQ(Texts("GpsNum"), "-|-|-");
  answerer.Answer(QMessageBox::No);
  OpenAgain();
  EXPECT_FALSE(IsKept());
  OpenAgain();
  EXPECT_EQ(answerer.boxes.size(), 2U);
}

TEST_F(RecoveryWindow, AnEditIsKeptOnceThirtySecondsAreOver) {
  PasteText(OneWaypoint);
  const std::string first = FileContents(folder.Path("state/recovery-1.txt"));
  PasteText(OneWaypoint);
  EXPECT_EQ(FileContents(folder.Path("state/recovery-1.txt")), first);
  clock.Advance(std::chrono::seconds(30));
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
