// The connection assistant in the window.
#include "window/DoctorPanel.h"

#include <QAction>
#include <QMenu>

#include "app/Messages.h"
#include "device/Messages.h"
#include "doctor/Messages.h"
#include "window/WindowTest.h"

namespace walrim {
namespace {

/// In front of a line that the test scripts.
class DoctorPanelTest : public WindowTestBase {
 protected:
  DoctorPanelTest() {
    port.open_result.device = "/dev/ttyUSB0";
    Open(port, clock);
  }
  [[nodiscard]] bool PanelShown() const { return Get<QPushButton>("DoctorAgain").isVisible(); }
  [[nodiscard]] std::string Label(const char* name) const { return Get<QLabel>(name).text().toStdString(); }

  FakeClock clock;
  ScriptedPort port{clock};
};

TEST_F(DoctorPanelTest, StandsInTheTablesPlaceOnceNobodyAnswers) {
  EXPECT_FALSE(PanelShown());
  Click("Get_GpsInfo");
  EXPECT_TRUE(PanelShown());
  EXPECT_EQ(GpsInfo(), messages::ReceiverText(device_messages::SilentReceiver, -1));
  EXPECT_EQ(Label("DoctorHeadline"), "受信機から何も届きません．");
  EXPECT_NE(Label("DoctorAdvice").find("GARMIN"), std::string::npos);
  EXPECT_NE(Label("DoctorSteps").find("応えません"), std::string::npos);
  EXPECT_FALSE(Get<QLineEdit>("DoctorCommand").isVisible());
  EXPECT_TRUE(Get<QPushButton>("DoctorAgain").isEnabled());
}

TEST_F(DoctorPanelTest, GoesWithTheButtonAndComesWithTheMenu) {
  Click("Get_GpsInfo");
  Click("DoctorBack");
  EXPECT_FALSE(PanelShown());
  QTest::keyClick(window.get(), Qt::Key_F5, Qt::ControlModifier);
  EXPECT_TRUE(PanelShown());
}

TEST_F(DoctorPanelTest, ACommandThatHelpsCanBeCopied) {
  port.open_result.problem = PortProblem::NotPermitted;
  port.open_result.group = "dialout";
  Click("Get_GpsInfo");
  EXPECT_EQ(Get<QLineEdit>("DoctorCommand").text(), "sudo usermod -aG dialout $USER");
  Click("DoctorCopy");
  EXPECT_EQ(Clipboard(), "sudo usermod -aG dialout $USER");
}

TEST_F(DoctorPanelTest, WhoKeepsThePortIsNamed) {
  port.open_result.problem = PortProblem::InUse;
  facts.holders["/dev/ttyUSB0"] = {{PortHolder::Kind::Process, "minicom", 4711}};
  Click("Get_GpsInfo");
  EXPECT_NE(Label("DoctorAdvice").find("minicom（プロセス4711）"), std::string::npos) << Label("DoctorAdvice");
}

TEST_F(DoctorPanelTest, CancelEndsTheIdentificationWithoutAnExamination) {
  event_loop.on_yield = [&] {
    if (Get<QPushButton>("Cancel").isEnabled()) Click("Cancel");
  };
  Click("Get_GpsInfo");
  EXPECT_FALSE(PanelShown());
}

TEST_F(DoctorPanelTest, CancelEndsTheExamination) {
  event_loop.on_yield = [&] {
    if (PanelShown() && Get<QPushButton>("Cancel").isEnabled()) Click("Cancel");
  };
  Click("Get_GpsInfo");
  EXPECT_TRUE(PanelShown());
  EXPECT_EQ(Label("DoctorHeadline"), "中止しました．");
}

TEST_F(DoctorPanelTest, SavesWhatWentOverTheLineWithItsPositions) {
  Click("Get_GpsInfo");
  answerer.ChooseFile(QString::fromStdString(folder.Path("trace.txt")));
  answerer.Answer(QMessageBox::No);
  Click("SaveTrace");
  EXPECT_EQ(Messages(), messages::HidePositionsQuestion);
  EXPECT_TRUE(answerer.save_dialog);
  EXPECT_EQ(Status(), messages::TraceSaved(folder.Path("trace.txt")));
  EXPECT_NE(FileContents(folder.Path("trace.txt")).find("\tTX\t254\t2\t10 FE 02 00 00 00 10 03\n"), std::string::npos);
  EXPECT_TRUE(PanelShown());
}

class DoctorWindowTest : public WindowTest {
 protected:
  void ClickSaveInTheMenu() const {
    auto* action = window->findChild<QAction*>("SaveTraceAction");
    auto* menu = qobject_cast<QMenu*>(action->parent());
    ASSERT_NE(menu, nullptr);
    menu->popup(window->pos());
    ASSERT_TRUE(QTest::qWaitForWindowExposed(menu));
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
  }
  [[nodiscard]] bool PanelShown() const { return Get<QPushButton>("DoctorAgain").isVisible(); }
};

TEST_F(DoctorWindowTest, AHealthyLineNamesItsReceiver) {
  QTest::keyClick(window.get(), Qt::Key_F5, Qt::ControlModifier);
  EXPECT_TRUE(PanelShown());
  EXPECT_EQ(Get<QLabel>("DoctorAdvice").text().toStdString().find("eTrex Software Version"), 0U);
}

TEST_F(DoctorWindowTest, TheMenuSavesATraceWithHiddenPositions) {
  ClickSaveInTheMenu();
  EXPECT_EQ(Messages(), messages::NothingTraced);
  EXPECT_EQ(answerer.file_dialogs, 0);
  CheckAll("DownCheck");
  Click("GpsDownLoad");
  answerer.boxes.clear();
  answerer.ChooseFile(QString::fromStdString(folder.Path("trace.txt")));
  answerer.Answer(QMessageBox::Yes);
  ClickSaveInTheMenu();
  EXPECT_EQ(Messages(), messages::HidePositionsQuestion);
  const std::string trace = FileContents(folder.Path("trace.txt"));
  // The first waypoint lies at 0, 0.
  const std::size_t first = trace.find("\tRX\t35\t");
  ASSERT_NE(first, std::string::npos);
  EXPECT_EQ(trace.substr(trace.find("\t10 23 ", first) + 1 + 3 * (3 + 24), 23), "00 00 00 00 00 00 00 00");
}

TEST_F(DoctorWindowTest, ThePanelGoesWhenAReceiverAnswers) {
  auto& settings = window->Main().State().Settings();
  settings.port = "1";
  Click("Get_GpsInfo");
  ASSERT_TRUE(PanelShown());
  settings.port = "demo";
  Click("Get_GpsInfo");
  EXPECT_FALSE(PanelShown());
}

TEST_F(DoctorWindowTest, AllPortsAreAskedAndTheOneThatAnswersIsChosen) {
  facts.ports = {{"1", "/dev/ttyUSB0"}, {"demo", "/dev/receiver"}};
  window->Main().State().Settings().port = "1";
  Click("Get_GpsInfo");
  Click("DoctorFind");
  EXPECT_EQ(window->Main().State().Settings().port, "demo");
  EXPECT_EQ(Get<QComboBox>("CommPort").currentData().toString(), "demo");
  EXPECT_EQ(Get<QLabel>("DoctorSteps").text().toStdString(),
            "/dev/ttyUSB0：応答がありません\n/dev/receiver：受信機が応えました");
}

TEST_F(DoctorWindowTest, APortThatAppearsIsOffered) {
  auto& settings = window->Main().State().Settings();
  settings.port = "1";
  window->LookAtPorts();
  EXPECT_EQ(Status(), "");
  ports = {{2, "/dev/ttyUSB0", "FT232R"}};
  window->LookAtPorts();
  EXPECT_EQ(settings.port, "2");
  EXPECT_EQ(Status(), doctor_messages::PortAppeared("/dev/ttyUSB0", "FT232R"));
  ports.push_back({0, "/dev/ttyS9", ""});
  window->LookAtPorts();
  EXPECT_EQ(settings.port, "2");
  EXPECT_GE(Get<QComboBox>("CommPort").findData("/dev/ttyS9"), 0);
  ports.pop_back();
  window->LookAtPorts();
  EXPECT_LT(Get<QComboBox>("CommPort").findData("/dev/ttyS9"), 0);
}

TEST_F(DoctorWindowTest, TheDemonstrationReceiverStaysChosenWhenAPortAppears) {
  window->LookAtPorts();
  ports = {{1, "/dev/ttyUSB0", ""}};
  window->LookAtPorts();
  EXPECT_EQ(window->Main().State().Settings().port, "demo");
}

}  // namespace
}  // namespace walrim
