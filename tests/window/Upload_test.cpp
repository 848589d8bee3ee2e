// What an upload would lose, before it and after it, in the window.
#include <QAction>
#include <QDialog>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>
#include <filesystem>

#include "app/Messages.h"
#include "window/Messages.h"
#include "window/WindowTest.h"

namespace walrim {
namespace {

class UploadWindowTest : public WindowTest {
 protected:
  UploadWindowTest() { answerer.leaves_proposals = false; }

  void Hold(std::string_view ident, double lat_deg) {
    Waypoint waypoint;
    waypoint.ident = ident;
    waypoint.lat_deg = lat_deg;
    ASSERT_EQ(Data().Add(waypoint), AddResult::Stored);
    window->Main().State().SetHeldCount(DataKind::Waypoint, static_cast<int>(Data().Count(DataKind::Waypoint)));
    window->ShowControls();
  }
  /// Does something while the dialog of a name stands, then and again until it is gone.
  void When(const QString& name, const std::function<void(QDialog&)>& act) {
    QTimer::singleShot(0, window.get(), [this, name, act] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (dialog != nullptr && dialog->objectName() != name) {
        ADD_FAILURE() << dialog->objectName().toStdString();
        dialog->reject();
      }
      if (dialog == nullptr) return When(name, act);
      ++shown;
      act(*dialog);
    });
  }
  static void Press(QDialog& dialog, const char* button) { dialog.findChild<QPushButton*>(button)->click(); }
  static QTableWidget& TableOf(QDialog& dialog) { return *dialog.findChild<QTableWidget*>("UploadFindings"); }
  void Upload() {
    CheckAll("DoCheck");
    Click("GpsUpLoad");
  }
  [[nodiscard]] std::vector<std::string> InReceiver() {
    DataSet held;
    window->Main().Receiver().ClearCancel();
    static_cast<void>(window->Main().Receiver().Download(
        held, DataKind::Waypoint, window->Main().State().Settings().port, TransferMode::Transfer));
    std::vector<std::string> idents;
    for (const Waypoint& waypoint : held.Waypoints())
      idents.push_back(waypoint.ident);
    return idents;
  }

  int shown = 0;
};

using Strings = std::vector<std::string>;

TEST_F(UploadWindowTest, WithoutAFindingNobodyIsAsked) {
  Hold("TAKAO", 35);
  Upload();
  EXPECT_EQ(InReceiver(), Strings{"TAKAO"});
}

TEST_F(UploadWindowTest, ProposalsAreTakenChangedAndLeft) {
  Hold("たかお山", 35);
  Hold("きたほ岳", 36);
  Hold("ﾐﾅﾐ", 37);
  When("UploadCheck", [](QDialog& dialog) {
    QTableWidget& table = TableOf(dialog);
    ASSERT_EQ(table.rowCount(), 3);
    EXPECT_EQ(table.item(0, 2)->text(), "TAKAOS");
    table.item(1, 2)->setText("kita-ho");
    EXPECT_EQ(table.item(1, 2)->text(), "KITAHO");
    table.item(2, 2)->setCheckState(Qt::Unchecked);
    Press(dialog, "Send");
  });
  Upload();
  EXPECT_EQ(shown, 1);
  EXPECT_EQ(InReceiver(), (Strings{"TAKAOS", "KITAHO", "ﾐﾅﾐ"}));
  EXPECT_EQ(Data().Waypoints()[0].ident, "たかお山") << "what is held stays";
}

TEST_F(UploadWindowTest, EachRecordsRowShowsTheNameThatIsSent) {
  Hold("CAMPSITE1", 35);
  Hold("CAMPSITE2", 36);
  When("UploadCheck", [](QDialog& dialog) {
    const QTableWidget& table = TableOf(dialog);
    ASSERT_EQ(table.rowCount(), 2);
    EXPECT_EQ(table.item(0, 2)->text(), "CAMPSI");
    EXPECT_EQ(table.item(1, 2)->text(), "CAMPS2");
    Press(dialog, "Send");
  });
  Upload();
  EXPECT_EQ(InReceiver(), (Strings{"CAMPSI", "CAMPS2"}));
}

TEST_F(UploadWindowTest, ARecordThatGetsAnotherNameForTheSakeOfOneHasARow) {
  Hold("CAMP", 35);
  Hold("CAMP", 36);
  When("UploadCheck", [](QDialog& dialog) {
    QTableWidget& table = TableOf(dialog);
    ASSERT_EQ(table.rowCount(), 2);
    EXPECT_EQ(table.item(0, 2)->text(), "CAMP");
    EXPECT_EQ(table.item(1, 0)->text(), "Waypoint 2「CAMP」");
    EXPECT_EQ(table.item(1, 1)->text().toStdString(), window_messages::SameNameAs("Waypoint 1「CAMP」"));
    EXPECT_EQ(table.item(1, 2)->text(), "CAMP2");
    table.item(0, 2)->setText("HUT");
    table.item(1, 2)->setText("CAMP");
    EXPECT_EQ(table.item(0, 3)->text() + table.item(1, 3)->text(), "");
    Press(dialog, "Send");
  });
  Upload();
  EXPECT_EQ(InReceiver(), (Strings{"HUT", "CAMP"}));
}

TEST_F(UploadWindowTest, ANameThatIsTypedIsExaminedAtOnce) {
  Hold("たかお山", 35);
  Hold("きたほ岳", 36);
  Hold("OK", 37);
  When("UploadCheck", [](QDialog& dialog) {
    QTableWidget& table = TableOf(dialog);
    ASSERT_EQ(table.rowCount(), 2);
    const auto checked = [&table](int row) { return table.item(row, 3)->text().toStdString(); };
    table.item(1, 2)->setText("TAKAOS");
    EXPECT_EQ(checked(0), "Waypoint 2と同じ名前か番号になるため，受信機に残りません");
    EXPECT_EQ(checked(1), window_messages::SameNameAs("Waypoint 1「たかお山」"));
    table.item(1, 2)->setText("OK");
    EXPECT_EQ(checked(0), "");
    EXPECT_EQ(checked(1), "Waypoint 3と同じ名前か番号になるため，受信機に残りません");
    table.item(1, 2)->setText("KITAHODAKE");
    EXPECT_EQ(checked(1), window_messages::FittedFrom("KITAHODAKE", "KITAHO"));
    table.item(1, 2)->setText("高");
    EXPECT_EQ(checked(1), window_messages::NoLettersOf("高"));
    EXPECT_EQ(table.item(1, 2)->text(), "KITAHO");
    table.item(1, 2)->setText("TAKAOS");
    table.item(1, 2)->setCheckState(Qt::Unchecked);
    EXPECT_EQ(checked(0) + checked(1), "") << "it is sent as it is";
    table.item(1, 2)->setCheckState(Qt::Checked);
    EXPECT_NE(checked(0), "") << "a warning forbids nothing";
    Press(dialog, "Send");
  });
  Upload();
  EXPECT_EQ(InReceiver(), (Strings{"TAKAOS", "TAKAOS", "OK"})) << "this one holds any number of a name";
}

TEST_F(UploadWindowTest, BackSendsNothing) {
  const Strings before = InReceiver();
  Hold("たかお山", 35);
  When("UploadCheck", [](QDialog& dialog) { Press(dialog, "Back"); });
  Upload();
  EXPECT_EQ(shown, 1);
  EXPECT_EQ(InReceiver(), before);
}

TEST_F(UploadWindowTest, TheReceiversNamesAreLookedAtOnRequest) {
  const Strings before = InReceiver();
  Hold("たかお山", 35);
  When("UploadCheck", [&](QDialog& dialog) {
    EXPECT_TRUE(dialog.findChild<QPushButton*>("AskReceiver")->isEnabled());
    When("UploadCheck", [](QDialog& again) {
      EXPECT_FALSE(again.findChild<QPushButton*>("AskReceiver")->isEnabled());
      Press(again, "Back");
    });
    Press(dialog, "AskReceiver");
  });
  Upload();
  EXPECT_EQ(shown, 2);
  EXPECT_EQ(InReceiver(), before);
}

TEST_F(UploadWindowTest, SentSafelyItIsBackedUpComparedAndTakenBack) {
  const Strings before = InReceiver();
  ASSERT_FALSE(before.empty());
  Hold("NEWONE", 35);
  CheckAll("DoCheck");
  const auto accept_without_a_difference = [](QDialog& dialog) {
    EXPECT_EQ(dialog.findChild<QListWidget*>("Differences")->count(), 0);
    dialog.accept();
  };
  EXPECT_FALSE(window->findChild<QAction*>("SendBackup")->isEnabled()) << "there is no backup";
  When("UploadDifferences", accept_without_a_difference);
  window->findChild<QAction*>("SendSafely")->trigger();
  EXPECT_EQ(shown, 1);
  EXPECT_EQ(InReceiver(), Strings{"NEWONE"});
  EXPECT_TRUE(window->findChild<QAction*>("SendBackup")->isEnabled());
  When("UploadDifferences", [&](QDialog& dialog) {
    EXPECT_EQ(dialog.findChild<QLabel*>("AboutBackup")->text().toStdString(), messages::BackupSent({}));
    accept_without_a_difference(dialog);
  });
  window->findChild<QAction*>("SendBackup")->trigger();
  EXPECT_EQ(shown, 2);
  EXPECT_EQ(Status(), messages::BackupSent({})) << "this receiver replaces what it holds";
  EXPECT_EQ(InReceiver(), before);
}

TEST_F(UploadWindowTest, ShortNamesAreWrittenToAFileAndReadFromOne) {
  window->Main().Names().Use(folder.Path("data/names.tsv"));
  PutFile(folder.Path("mine.tsv"), "高尾山\tTKSAN\t35.00000 139.00000\t2026-11-22\nnot a pair\n");
  answerer.ChooseFile(QString::fromStdString(folder.Path("mine.tsv")));
  Get<QAction>("ImportNames").trigger();
  EXPECT_EQ(Status(), messages::NamesImported(1));
  EXPECT_EQ(Messages(), messages::NamesLeftOut(folder.Path("mine.tsv")));
  Hold("高尾山", 35);
  When("UploadCheck", [](QDialog& dialog) {
    EXPECT_EQ(TableOf(dialog).item(0, 2)->text(), "TKSAN");
    TableOf(dialog).item(0, 2)->setText("TAKAO");
    Press(dialog, "Send");
  });
  Upload();
  EXPECT_EQ(InReceiver(), Strings{"TAKAO"});
  answerer.ChooseFile(QString::fromStdString(folder.Path("out.tsv")));
  Get<QAction>("ExportNames").trigger();
  const std::string written = FileContents(folder.Path("out.tsv"));
  EXPECT_NE(written.find("高尾山\tTAKAO\t"), std::string::npos) << written;
  EXPECT_EQ(written, FileContents(folder.Path("data/names.tsv")));
}

}  // namespace
}  // namespace walrim
