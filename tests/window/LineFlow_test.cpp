// The window in front of walrim-receiver on a pseudo-terminal, as a person with a cable has it.
#include <QListWidget>
#include <QTableWidget>
#include <QTimer>
#include <set>

#include "app/Messages.h"
#include "qt/QtClock.h"
#include "qt/QtSerialPort.h"
#include "text/Scan.h"
#include "window/WindowTest.h"

namespace walrim {
namespace {

constexpr std::string_view Memory =
    "WPT\tD\tWGS84\t=\"TAKAO\"\t35.6252\t139.2437\t=\"SUMMIT\"\r\n"
    "WPT\tD\tWGS84\t=\"JIMBA\"\t35.6522\t139.1666\t=\"\"\r\n"
    "RTH\t1\t=\"FIRST\"\t3\r\n"
    "RTP\tD\tWGS84\t=\"A\"\t35.62\t139.24\t=\"\"\r\n"
    "RTP\tD\tWGS84\t=\"B\"\t35.63\t139.2\t=\"\"\r\n"
    "RTP\tD\tWGS84\t=\"C\"\t35.65\t139.16\t=\"\"\r\n"
    "RTH\t2\t=\"SECOND\"\t1\r\n"
    "RTP\tD\tWGS84\t=\"D\"\t35.7\t139.1\t=\"\"\r\n"
    "TRH\t2\tTRUE\t4\t=\"AUTUMN\"\r\n"
    "TRP\tD\tWGS84\t35.6252\t139.2437\t2002/11/15 09:00:00\tTRUE\t599.5\t1E+25\t0\r\n"
    "TRP\tD\tWGS84\t35.6262\t139.2427\t2002/11/15 09:01:10\tFALSE\t605\t1E+25\t0\r\n";

class LineFlow : public WindowTestBase {
 protected:
  /// A receiver with a memory, and the window on its line.
  void Plug(std::vector<std::string> options = {}, std::string_view memory = Memory) {
    PutFile(folder.Path("memory.grc"), memory);
    std::vector<std::string> words{WALRIM_RECEIVER, "--baud", "0", "--memory", folder.Path("memory.grc")};
    words.insert(words.end(), options.begin(), options.end());
    receiver_ = std::make_unique<Process>(words);
    ASSERT_TRUE(receiver_->ReadUntil("\n")) << receiver_->Err();
    if (window == nullptr) Open(port, clock);
    window->Main().State().Settings().port = receiver_->Out().substr(0, receiver_->Out().find('\n'));
    // The line has no pace of its own, so that bursts need less time to settle.
    window->Main().Receiver().SetPacing(0.1F);
  }

  QtClock clock;
  QtSerialPort port;

 private:
  std::unique_ptr<Process> receiver_;
};

TEST_F(LineFlow, GetGpsInfoAndADownloadOfAllKinds) {
  Plug();
  Click("Get_GpsInfo");
  EXPECT_TRUE(GpsInfo().starts_with("eTrex")) << GpsInfo();
  CheckAll("DownCheck");
  Click("GpsDownLoad");
  EXPECT_EQ(Messages(), "");
  EXPECT_EQ(Data().Count(DataKind::Waypoint), 2U);
  EXPECT_EQ(Data().Count(DataKind::Route), 2U);
  EXPECT_EQ(Data().Count(DataKind::TrackLog), 1U);
  EXPECT_FALSE(port.PortOpen());
}

TEST_F(LineFlow, TheOverwriteQuestionAnsweredNoAndYes) {
  Plug();
  Check("DownCheck_0");
  Click("GpsDownLoad");
  ASSERT_EQ(Data().Count(DataKind::Waypoint), 2U);
  Plug({}, "WPT\tD\tWGS84\t=\"OTHER\"\t35\t139\t=\"\"\r\n");
  answerer.Answer(QMessageBox::No);
  Click("GpsDownLoad");
  EXPECT_EQ(Data().Count(DataKind::Waypoint), 2U);
  answerer.Answer(QMessageBox::Yes);
  Click("GpsDownLoad");
  EXPECT_EQ(Data().Count(DataKind::Waypoint), 1U);
  EXPECT_EQ(answerer.boxes.size(), 2U);
}

TEST_F(LineFlow, ACancelInTheMiddleOfTheRoutes) {
  Plug();
  CheckAll("DownCheck");
  event_loop.on_yield = [&] {
    if (Status().starts_with("DownLoading : Route [") && Get<QPushButton>("Cancel").isEnabled()) Click("Cancel");
  };
  Click("GpsDownLoad");
  EXPECT_EQ(Data().Count(DataKind::Waypoint), 2U);
  EXPECT_EQ(Texts("GpsNum"), "2|-|-");
  EXPECT_EQ(Messages(), "");
  event_loop.on_yield = {};
  answerer.Answer(QMessageBox::No);
  Click("GpsDownLoad");
  EXPECT_EQ(Data().Count(DataKind::Route), 2U) << "the receiver was told to stop and goes on";
}

TEST_F(LineFlow, APulledCableEmptiesTheKindThatCameAndKeepsTheOneBefore) {
  Plug({"--fault", "unplug-after=12"});
  CheckAll("DownCheck");
  Click("GpsDownLoad");
  EXPECT_EQ(Messages(), std::string(messages::LinkLost));
  EXPECT_EQ(Texts("GpsNum"), "2|-|-");
  EXPECT_FALSE(port.PortOpen());
  Plug();
  answerer.Answer(QMessageBox::Yes);
  Click("GpsDownLoad");
  EXPECT_EQ(Data().Count(DataKind::TrackLog), 1U) << "with the cable back everything works again";
}

TEST_F(LineFlow, AnUploadReplacesWhatTheReceiverHolds) {
  Plug();
  PutFile(folder.Path("new.grc"), "WPT\tD\tWGS84\t=\"NEW\"\t35\t139\t=\"\"\r\n");
  window->ImportFiles({folder.Path("new.grc")});
  Check("DoCheck_0");
  Click("GpsUpLoad");
  EXPECT_EQ(Get<QLineEdit>("GpsDataNum_0").text(), "1");
  Check("DownCheck_0");
  Click("GpsDownLoad");
  EXPECT_EQ(Data().Waypoints().at(0).ident.substr(0, 3), "NEW");
}

TEST_F(LineFlow, AllAutoActionsInARow) {
  Plug();
  for (const char* box : {"AutoDownload", "AutoSave", "AutoCopy", "AutoFileName"})
    Check(box);
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(folder.Path("."));
  Click("Get_GpsInfo");
  std::filesystem::current_path(before);
  EXPECT_EQ(Messages(), "");
  EXPECT_TRUE(Clipboard().starts_with("WPT\t"));
  std::string saved;
  for (const std::string& name : folder.Names()) {
    if (name != "memory.grc") saved = FileContents(folder.Path(name));
  }
  EXPECT_TRUE(saved.starts_with("WPT\t")) << "a file named by date and time";
  EXPECT_EQ(Data().Count(DataKind::TrackLog), 1U);

  PutFile(folder.Path("up.grc"), "RTH\t9\t=\"UP\"\t1\r\nRTP\tD\tWGS84\t=\"A\"\t35\t139\t=\"\"\r\n");
  Check("AutoUpload");
  Check("AutoDelete");
  EXPECT_EQ(window->RunExternalCommand("GetFile", folder.Path("up.grc"), ""), CommandDone);
  EXPECT_EQ(Messages(), "");
  EXPECT_EQ(Get<QLineEdit>("GpsNum_0").text(), "2");
  EXPECT_EQ(Get<QLineEdit>("GpsNum_1").text(), "-") << "what was uploaded was deleted here";
}

TEST_F(LineFlow, TheCapacityMessageComesOnceWithADownload) {
  std::string full;
  for (int route = 1; route <= 79; ++route) {
    full += "RTH\t" + std::to_string(route) + "\t=\"R" + std::to_string(route) +
            "\"\t1\r\nRTP\tD\tWGS84\t=\"A\"\t35\t139\t=\"\"\r\n";
  }
  Plug({}, full);
  Check("DownCheck_1");
  Click("GpsDownLoad");
  EXPECT_EQ(Messages(), messages::KindFull(DataKind::Route));
  answerer.Answer(QMessageBox::Yes);
  Click("GpsDownLoad");
  EXPECT_EQ(answerer.boxes.size(), 2U) << "the question alone";
}

class UploadToEveryModel : public LineFlow, public testing::WithParamInterface<const char*> {
 protected:
  UploadToEveryModel() { answerer.leaves_proposals = false; }

  /// Does something in the dialog of a name as soon as it stands.
  void When(const QString& name, const std::function<void(QDialog&)>& act) {
    QTimer::singleShot(0, window.get(), [this, name, act] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr || dialog->objectName() != name) return When(name, act);
      act(*dialog);
    });
  }
};

/// The names that the page shows are those that the receiver holds then.
TEST_P(UploadToEveryModel, WhatThePageShowsIsWhatIsHeld) {
  qputenv("XDG_STATE_HOME", folder.Path("state").c_str());
  Plug({"--strict", "--model", GetParam()});
  PutFile(folder.Path("walk.grc"),
          "WPT\tD\tWGS84\t=\"CAMPSITE NUMBER 1\"\t35\t139\t=\"\"\r\n"
          "WPT\tD\tWGS84\t=\"CAMPSITE NUMBER 2\"\t35.1\t139\t=\"\"\r\n"
          "WPT\tD\tWGS84\t=\"たかお山\"\t35.2\t139\t=\"\"\r\n"
          "WPT\tD\tWGS84\t=\"HUT\"\t35.3\t139\t=\"\"\r\n"
          "WPT\tD\tWGS84\t=\"HUT\"\t35.4\t139\t=\"\"\r\n");
  window->ImportFiles({folder.Path("walk.grc")});
  Check("DoCheck_0");
  std::vector<std::string> shown;
  When("UploadCheck", [&](QDialog& dialog) {
    const auto& table = *dialog.findChild<QTableWidget*>("UploadFindings");
    for (int row = 0; row < table.rowCount(); ++row) {
      if (!table.item(row, 0)->text().startsWith("Waypoint ")) continue;
      EXPECT_EQ(table.item(row, 3)->text(), "");
      shown.push_back(table.item(row, 2)->text().toStdString());
    }
    dialog.findChild<QPushButton*>("Send")->click();
  });
  std::vector<std::string> differ;
  When("UploadDifferences", [&](QDialog& dialog) {
    const auto& list = *dialog.findChild<QListWidget*>("Differences");
    for (int row = 0; row < list.count(); ++row)
      differ.push_back(list.item(row)->text().toStdString());
    dialog.accept();
  });
  Get<QAction>("SendSafely").trigger();
  EXPECT_EQ(Messages(), "");
  for (const std::string& difference : differ)
    EXPECT_EQ(difference.find("名前"), std::string::npos) << difference;
  std::set<std::string> held;
  DataSet in_receiver;
  window->Main().Receiver().ClearCancel();
  static_cast<void>(window->Main().Receiver().Download(in_receiver, DataKind::Waypoint,
                                                       window->Main().State().Settings().port, TransferMode::Transfer));
  for (const Waypoint& waypoint : in_receiver.Waypoints())
    held.insert(std::string(TrimBlanks(waypoint.ident)));
  EXPECT_GE(shown.size(), 4U);
  for (const std::string& name : shown)
    EXPECT_TRUE(held.contains(name)) << name;
  EXPECT_TRUE(held.contains("HUT") && held.contains("HUT2"));
}

INSTANTIATE_TEST_SUITE_P(Models, UploadToEveryModel,
                         testing::Values("GPS 12", "GPS 12XL", "GPS 12CX", "GPS 48", "GPS II+", "GPS III", "GPS III+",
                                         "eMap", "eTrex"));

}  // namespace
}  // namespace walrim
