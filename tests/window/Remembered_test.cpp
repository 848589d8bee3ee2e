// What the window remembers between two starts.
#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QHeaderView>
#include <QMenu>
#include <QScreen>
#include <QSpinBox>
#include <QTableView>
#include <fstream>

#include "window/WindowTest.h"

namespace walrim {
namespace {

constexpr const char* WaypointLine =
    "WPT\tD\tWGS84\t=\"BIWA\"\t35.6295999605209\t139.257800029591\t=\"WATER\"\t=\"161\"\tscenic area "
    "symbol\t=\"0\"\t\r\n";

class Remembered : public WindowTest {
 protected:
  Remembered() { StartAgain(); }

  [[nodiscard]] std::string StorePath() const { return folder.Path("walrim.ini"); }

  /// Closes the window, and opens another one that knows only the file.
  void StartAgain() {
    if (window != nullptr) {
      const bool asks = AnyOf(window->Main().State().UnsavedKinds());
      if (asks) answerer.Answer(QMessageBox::No);
      ASSERT_TRUE(window->close());
    }
    window.reset();
    store = std::make_unique<QSettings>(QString::fromStdString(StorePath()), QSettings::IniFormat);
    Open(*demo_port, clock);
    window->LookAtPorts();
  }

  void ChoosePort(const char* name) const {
    auto& box = Get<QComboBox>("CommPort");
    box.setCurrentIndex(box.findData(QString(name)));
  }
  [[nodiscard]] std::string Port() const { return window->Main().State().Settings().port; }

  std::string WaypointFile(const std::string& name) const {
    const std::string path = folder.Path(name);
    std::ofstream(path) << WaypointLine;
    return path;
  }
  [[nodiscard]] QStringList RecentFiles() const {
    auto& menu = Get<QMenu>("RecentFiles");
    Q_EMIT menu.aboutToShow();
    QStringList names;
    for (const QAction* action : menu.actions())
      if (!action->toolTip().isEmpty() && action->objectName().isEmpty() && !action->isSeparator())
        names.append(QFileInfo(action->toolTip()).fileName());
    return names;
  }
};

TEST_F(Remembered, TheSizeOfTheWindow) {
  const int wide = window->minimumSizeHint().width();
  window->resize(wide, 702);
  StartAgain();
  EXPECT_EQ(window->height(), 702);
  window->resize(wide, 755);
  StartAgain();
  EXPECT_EQ(window->height(), 755);
}

TEST_F(Remembered, AWindowLargerThanTheScreenIsBroughtBackIntoIt) {
  window->resize(9000, 7000);
  StartAgain();
  const QSize room = window->screen()->availableSize().expandedTo(window->minimumSizeHint());
  EXPECT_LE(window->width(), room.width());
  EXPECT_LE(window->height(), room.height());
}

TEST_F(Remembered, WidthsThatTheUserGaveColumns) {
  const auto show_records = [this] {
    window->Main().State().Settings().port = DemoPortName;
    Check("DownCheck_0");
    Click("GpsDownLoad");
  };
  show_records();
  auto& table = Get<QTableView>("WaypointTable");
  const int given = table.columnWidth(1) + 37;
  const int fitted = table.columnWidth(2);
  table.setColumnWidth(1, given);
  StartAgain();
  show_records();
  EXPECT_EQ(Get<QTableView>("WaypointTable").columnWidth(1), given);
  EXPECT_EQ(Get<QTableView>("WaypointTable").columnWidth(2), fitted);
  StartAgain();  // without the table being shown
  StartAgain();
  show_records();
  EXPECT_EQ(Get<QTableView>("WaypointTable").columnWidth(1), given);
}

TEST_F(Remembered, TheLinkChoiceButNoSettingOfTheData) {
  ChooseLink("する");
  auto& datum = Get<QComboBox>("Datum");
  datum.setCurrentIndex(1);
  Check("AutoSave");
  StartAgain();
  EXPECT_EQ(window->Main().State().Settings().link, LinkChoice::Checked);
  EXPECT_EQ(window->Main().State().Settings().datum, Datum::Wgs84);
  EXPECT_FALSE(window->Main().State().Settings().auto_save);
}

TEST_F(Remembered, SettingsOfTheDataOnceThatIsTicked) {
  Get<QComboBox>("Datum").setCurrentIndex(1);
  Get<QSpinBox>("UTCOffsetNum").setValue(-3);
  Check("AutoSave");
  window->Main().State().Settings().script.origin_name = "家";
  Get<QAction>("KeepSettings").trigger();
  StartAgain();
  EXPECT_TRUE(Get<QAction>("KeepSettings").isChecked());
  UserSettings& settings = window->Main().State().Settings();
  EXPECT_EQ(settings.datum, Datum::Tokyo);
  EXPECT_EQ(settings.utc_offset_hours, -3);
  EXPECT_TRUE(settings.auto_save);
  EXPECT_EQ(settings.script.origin_name, "家");
  Get<QAction>("KeepSettings").trigger();
  EXPECT_FALSE(store->contains("settings/values"));
  StartAgain();
  EXPECT_EQ(window->Main().State().Settings().datum, Datum::Wgs84);
}

TEST_F(Remembered, ValuesThatNoControlHasArePassedOver) {
  window->close();
  store->setValue("settings/keep", true);
  store->setValue("settings/values", QVariantMap{{"Datum", "77"}, {"UTCOffsetNum", 4711}, {"DegreeType", "x"}});
  store->setValue("window/geometry", QByteArray("nonsense"));
  store->setValue("port/checked_link", "9");
  store->sync();
  window.reset();
  Open(*demo_port, clock);
  const UserSettings& settings = window->Main().State().Settings();
  EXPECT_EQ(settings.datum, Datum::Wgs84);
  EXPECT_EQ(settings.utc_offset_hours, 9);
  EXPECT_EQ(settings.notation, AngleNotation::D);
  EXPECT_EQ(settings.link, LinkChoice::Automatic);
}

TEST_F(Remembered, ThePortByTheSerialNumberOfItsAdapter) {
  ports = {{1, "/dev/ttyUSB0", "FT232R", "A1"}, {2, "/dev/ttyUSB1", "PL2303", "B2"}};
  window->LookAtPorts();
  ChoosePort("2");
  ports = {{1, "/dev/ttyS0", "", ""}, {2, "/dev/ttyUSB0", "PL2303", "C3"}, {3, "/dev/ttyUSB1", "PL2303", "B2"}};
  StartAgain();
  EXPECT_EQ(Port(), "3");
  ports = {{1, "/dev/ttyS0", "", ""}, {2, "/dev/ttyUSB1", "another adapter", "D4"}};
  StartAgain();
  EXPECT_EQ(Port(), "1");
}

TEST_F(Remembered, ThePortByItsDeviceWhereThereIsNoSerialNumber) {
  ports = {{1, "/dev/ttyUSB0", "", ""}, {2, "/dev/ttyS0", "", ""}};
  window->LookAtPorts();
  ChoosePort("2");
  ports = {{1, "/dev/ttyUSB0", "", ""}, {2, "/dev/ttyUSB1", "", ""}, {3, "/dev/ttyS0", "", ""}};
  StartAgain();
  EXPECT_EQ(Port(), "3");
}

TEST_F(Remembered, TheDemonstrationReceiverButNoPortThatTheStartNamed) {
  ChoosePort("demo");
  StartAgain();
  EXPECT_EQ(Port(), "demo");
  port_given = true;
  StartAgain();
  EXPECT_EQ(Port(), "1");
  port_given = false;
  StartAgain();
  EXPECT_EQ(Port(), "demo");
}

TEST_F(Remembered, APortThatWasTyped) {
  auto& box = Get<QComboBox>("CommPort");
  box.setFocus();
  box.lineEdit()->selectAll();
  QTest::keyClicks(&box, "/dev/rfcomm0");
  ports = {{1, "/dev/ttyUSB0", "FT232R", "A1"}};
  StartAgain();
  EXPECT_EQ(Port(), "/dev/rfcomm0");
  ChoosePort("1");
  StartAgain();
  EXPECT_EQ(Port(), "1");
}

TEST_F(Remembered, FilesThatWereUsedTheLastOneFirst) {
  const std::string one = WaypointFile("one.grc");
  const std::string two = WaypointFile("R&B.grc");
  EXPECT_FALSE(Get<QMenu>("RecentFiles").menuAction()->isVisible());
  window->ImportFiles({one});
  window->ImportFiles({two});
  StartAgain();
  EXPECT_EQ(RecentFiles(), QStringList({"R&B.grc", "one.grc"}));
  EXPECT_EQ(Get<QMenu>("RecentFiles").actions()[0]->text(), "&1 R&&B.grc");
  Get<QMenu>("RecentFiles").actions()[1]->trigger();
  EXPECT_EQ(Data().Waypoints().size(), 1U);
  EXPECT_EQ(RecentFiles(), QStringList({"one.grc", "R&B.grc"}));
  Get<QAction>("ForgetFiles").trigger();
  StartAgain();
  EXPECT_FALSE(Get<QMenu>("RecentFiles").menuAction()->isVisible());
}

TEST_F(Remembered, AtMostTenFilesAndNoneThatWasRefused) {
  for (int i = 1; i <= 12; ++i)
    window->ImportFiles({WaypointFile(std::to_string(i) + ".grc")});
  window->ImportFiles({folder.Path("none.grc")});
  EXPECT_EQ(RecentFiles().size(), MostRecentFiles);
  EXPECT_EQ(RecentFiles().first(), "12.grc");
}

TEST_F(Remembered, AFileThatWasSaved) {
  window->ImportFiles({WaypointFile("one.grc")});
  CheckAll("DoCheck");
  answerer.ChooseFile(QString::fromStdString(folder.Path("saved.grc")));
  Click("FileExport");
  EXPECT_EQ(RecentFiles().first(), "saved.grc");
}

TEST_F(Remembered, TheFoldersOfTheDialogs) {
  const QString reading = QString::fromStdString(folder.Path("reading"));
  const QString writing = QString::fromStdString(folder.Path("writing"));
  QDir().mkpath(reading);
  QDir().mkpath(writing);
  window->ImportFiles({WaypointFile("one.grc")});
  std::ofstream((reading + "/a.grc").toStdString()) << WaypointLine;
  answerer.ChooseFile(reading + "/a.grc");
  Click("FileImport");
  CheckAll("DoCheck");
  answerer.ChooseFile(writing + "/b.grc");
  Click("FileExport");
  StartAgain();
  EXPECT_EQ(store->value("folders/open").toString(), reading);
  EXPECT_EQ(store->value("folders/save").toString(), writing);
  answerer.ChooseFile("");
  Click("FileImport");
  EXPECT_EQ(answerer.folder, reading);
}

}  // namespace
}  // namespace walrim
