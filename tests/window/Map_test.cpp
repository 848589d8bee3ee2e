// The map in the window: beside the tables, in step with them, remembered.
#include <QAction>
#include <QInputDialog>
#include <QNetworkAccessManager>
#include <QRegularExpression>
#include <QSplitter>
#include <QTabWidget>
#include <QTableView>
#include <QToolButton>
#include <fstream>

#include "support/TileServer.h"
#include "window/MapPanel.h"
#include "window/MapTiles.h"
#include "window/MapView.h"
#include "window/Messages.h"
#include "window/ProfileView.h"
#include "window/WayPanel.h"
#include "window/WindowTest.h"

namespace walrim {
namespace {

constexpr const char* Walk = R"(<?xml version="1.0"?><gpx version="1.1" creator="x"
xmlns="http://www.topografix.com/GPX/1/1">
<wpt lat="35.2" lon="139.0"><name>NORTH</name></wpt><wpt lat="34.9" lon="139.2"><name>SOUTH</name></wpt>
<rte><name>HOME</name><rtept lat="35.15" lon="139.2"><name>R1</name></rtept>
<rtept lat="35.15" lon="139.4"><name>R2</name></rtept></rte>
<trk><name>FIRST</name><trkseg><trkpt lat="35" lon="139"><ele>100</ele><time>2026-11-01T00:00:00Z</time></trkpt>
<trkpt lat="35.01" lon="139"><ele>150</ele><time>2026-11-01T00:20:00Z</time></trkpt>
<trkpt lat="35.02" lon="139"><ele>120</ele><time>2026-11-01T00:40:00Z</time></trkpt></trkseg></trk>
<trk><name>SECOND</name><trkseg><trkpt lat="35.05" lon="139.3"/><trkpt lat="35.05" lon="139.35"/></trkseg></trk></gpx>)";

class MapTest : public WindowTest {
 protected:
  MapTest() { ShowMap(true); }

  void ShowMap(bool shown) const {
    auto& action = Get<QAction>("ShowMap");
    if (action.isChecked() != shown) QTest::keyClick(window.get(), Qt::Key_M, Qt::ControlModifier);
    ASSERT_EQ(action.isChecked(), shown);
  }
  void OpenWalk() {
    const std::string path = folder.Path("walk.gpx");
    std::ofstream(path) << Walk;
    window->ImportFiles({path});
  }
  [[nodiscard]] MapView& Map() const { return Get<MapView>("Map"); }
  [[nodiscard]] QPoint On(double lat_deg, double lon_deg) const {
    return Map().Camera().ScreenOf(MercatorOf(lat_deg, lon_deg)).toPoint();
  }
  void ClickMap(double lat_deg, double lon_deg) const {
    QTest::mouseClick(&Map(), Qt::LeftButton, {}, On(lat_deg, lon_deg));
  }
  [[nodiscard]] int Page() const { return Get<QTabWidget>("Records").currentIndex(); }
  void OpenPage(DataKind kind) const { Get<QTabWidget>("Records").setCurrentIndex(static_cast<int>(IndexOf(kind))); }
  /// The texts of the first chosen row, from its second column on.
  [[nodiscard]] std::string ChosenName(const char* table) const {
    const QModelIndexList rows = Get<QTableView>(table).selectionModel()->selectedRows(1);
    return rows.isEmpty() ? "" : rows.front().data().toString().toStdString();
  }
};

TEST_F(MapTest, ShowsTheRecordsThatAFileBrings) {
  EXPECT_TRUE(Map().Scene().waypoints.empty());
  OpenWalk();
  EXPECT_EQ(Map().Scene().waypoints.size(), 2U);
  EXPECT_EQ(Map().Scene().logs.size(), 2U);
  EXPECT_EQ(Map().Scene().routes.size(), 1U);
  EXPECT_TRUE(Map().Camera().Seen().Holds(Map().Scene().box));
}

TEST_F(MapTest, ShowsWhatADownloadBrings) {
  Click("Get_GpsInfo");
  CheckAll("DownCheck");
  Click("GpsDownLoad");
  ASSERT_FALSE(Data().Waypoints().empty());
  EXPECT_EQ(Map().Scene().waypoints.size(), Data().Waypoints().size());
  EXPECT_EQ(Map().Scene().logs.size(), Data().Logs().size());
}

TEST_F(MapTest, FollowsEditsAndUndo) {
  OpenWalk();
  ASSERT_EQ(window->Main().Records().EditCell(DataKind::Waypoint, {0, {}}, EditField::Latitude, "36"), "");
  window->ShowControls();
  OpenPage(DataKind::Waypoint);
  QTest::keyClick(window.get(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_NEAR(LatitudeOfMercator(Map().Scene().waypoints.at(0).at.y), 35.2, 1e-6);
  QTest::keyClick(window.get(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_NEAR(LatitudeOfMercator(Map().Scene().waypoints.at(0).at.y), 36, 1e-6);
}

TEST_F(MapTest, ARowThatIsChosenIsHighlightedAndBroughtIntoView) {
  OpenWalk();
  for (int i = 0; i < 6; ++i)
    QTest::keyClick(&Map(), Qt::Key_Plus);
  ASSERT_FALSE(Map().Camera().Seen().Holds(BoxOf(Map().Scene(), {DataKind::Waypoint, {1, {}}})));
  OpenPage(DataKind::Waypoint);
  auto& table = Get<QTableView>("WaypointTable");
  QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, table.visualRect(table.model()->index(1, 1)).center());
  EXPECT_TRUE(Map().Selection().HasRecord(DataKind::Waypoint, 1));
  EXPECT_TRUE(Map().Camera().Seen().Holds(BoxOf(Map().Scene(), {DataKind::Waypoint, {1, {}}})));
}

TEST_F(MapTest, AClickOnAWaypointChoosesItsRow) {
  OpenWalk();
  OpenPage(DataKind::TrackLog);
  ClickMap(34.9, 139.2);
  EXPECT_EQ(Page(), static_cast<int>(IndexOf(DataKind::Waypoint)));
  EXPECT_EQ(ChosenName("WaypointTable"), "SOUTH");
}

TEST_F(MapTest, AClickOnALogChoosesTheLogAndThePoint) {
  OpenWalk();
  ClickMap(35.05, 139.35);
  EXPECT_EQ(Page(), static_cast<int>(IndexOf(DataKind::TrackLog)));
  EXPECT_EQ(ChosenName("TrackTable"), "SECOND");
  const QModelIndexList points = Get<QTableView>("TrackPointTable").selectionModel()->selectedRows();
  ASSERT_EQ(points.size(), 1);
  EXPECT_EQ(points.front().row(), 1);
}

TEST_F(MapTest, AClickOnARoutesPointChoosesIt) {
  OpenWalk();
  ClickMap(35.15, 139.4);
  EXPECT_EQ(Page(), static_cast<int>(IndexOf(DataKind::Route)));
  EXPECT_EQ(ChosenName("RoutePointTable"), "R2");
}

TEST_F(MapTest, ADoubleClickMakesAWaypointThereThatCanBeUndone) {
  OpenWalk();
  QString lat;
  QTimer::singleShot(0, window.get(), [&] {
    auto& dialog = Get<QWidget>("ClipProAtlas");
    lat = dialog.findChild<QLineEdit*>("ClipLat")->text();
    dialog.findChild<QLineEdit*>("ClipIdent")->setText("NEW");
    QTest::mouseClick(dialog.findChild<QPushButton*>("Ok"), Qt::LeftButton);
  });
  QTest::mouseDClick(&Map(), Qt::LeftButton, {}, On(35.1, 139.1));
  EXPECT_TRUE(lat.startsWith("35.")) << lat.toStdString();
  ASSERT_EQ(Data().Waypoints().size(), 3U) << Messages();
  EXPECT_NEAR(Data().Waypoints()[2].lon_deg, 139.1, 0.01);
  EXPECT_NEAR(Data().Waypoints()[2].lat_deg, 35.1, 0.01);
  EXPECT_EQ(Map().Scene().waypoints.size(), 3U);
  Get<QAction>("Undo").trigger();
  EXPECT_EQ(Data().Waypoints().size(), 2U);
  EXPECT_EQ(Map().Scene().waypoints.size(), 2U);
}

TEST_F(MapTest, RecordsThatAreNotCheckedArePaler) {
  OpenWalk();
  EXPECT_EQ(window->Main().Edits().Choose(DataKind::TrackLog, {0}, false), Outcome::Done);
  Click("Get_GpsInfo");
  EXPECT_FALSE(Map().Scene().logs.at(0).chosen);
  EXPECT_TRUE(Map().Scene().logs.at(1).chosen);
}

TEST_F(MapTest, TheMenuZoomsAndShowsAll) {
  OpenWalk();
  const double zoom = Map().Camera().Zoom();
  Get<QAction>("ZoomIn").trigger();
  EXPECT_GT(Map().Camera().Zoom(), zoom);
  Get<QAction>("ShowAllOnMap").trigger();
  EXPECT_NEAR(Map().Camera().Zoom(), zoom, 1e-9);
  ShowMap(false);
  EXPECT_FALSE(Get<QAction>("ZoomIn").isEnabled());
  EXPECT_FALSE(Map().isVisible());
  ShowMap(true);
  EXPECT_TRUE(Get<QAction>("ZoomIn").isEnabled());
}

TEST_F(MapTest, WhatCameWhileItWasHiddenIsThereWhenItIsShown) {
  ShowMap(false);
  OpenWalk();
  EXPECT_TRUE(Map().Scene().logs.empty());
  ShowMap(true);
  EXPECT_EQ(Map().Scene().logs.size(), 2U);
}

TEST_F(MapTest, TheSmallestWindowDoesNotGrowForIt) {
  OpenWalk();
  QCoreApplication::processEvents();
  ShowMap(false);
  QCoreApplication::processEvents();
  const QSize without = window->minimumSizeHint();
  ShowMap(true);
  QCoreApplication::processEvents();
  const QSize with = window->minimumSizeHint();
  EXPECT_LE(with.width(), without.width());
  EXPECT_LE(with.height(), without.height());
}

TEST_F(MapTest, AScreenReaderSaysWhatThingsAre) {
  OpenWalk();
  ASSERT_TRUE(QTest::qWaitFor([this] { return Map().findChild<QToolButton*>("MapShowAll") != nullptr; }));
  for (const auto& [control, name] :
       {std::pair("Map", "地図"), std::pair("MapZoomIn", "拡大（＋）"), std::pair("Profile", "断面図"),
        std::pair("WayPanel", "断面図と概要"), std::pair("ProfileOverTime", "時間に沿って見ます")}) {
    EXPECT_EQ(Get<QWidget>(control).accessibleName().toStdString(), name);
  }
}

// ---- Profile and figures

TEST_F(MapTest, TheProfileIsThatOfTheChosenLogOrTheFirst) {
  OpenWalk();
  auto& profile = Get<ProfileView>("Profile");
  EXPECT_TRUE(profile.isVisible());
  QTest::mouseMove(&profile, profile.rect().center());
  EXPECT_NE(profile.Headline().toStdString().find("150 m"), std::string::npos) << profile.Headline().toStdString();
  ClickMap(35.05, 139.35);
  EXPECT_EQ(profile.Headline().toStdString().find("150 m"), std::string::npos) << profile.Headline().toStdString();
}

TEST_F(MapTest, TheCursorOfTheProfileIsAPointOnTheMap) {
  OpenWalk();
  auto& profile = Get<ProfileView>("Profile");
  const QImage before = Map().grab().toImage();
  QTest::mouseMove(&profile, profile.rect().center());
  EXPECT_NE(Map().grab().toImage(), before);
  QTest::mouseClick(&profile, Qt::LeftButton, {}, profile.rect().center());
  EXPECT_EQ(ChosenName("TrackTable"), "FIRST");
  const QModelIndexList points = Get<QTableView>("TrackPointTable").selectionModel()->selectedRows();
  ASSERT_EQ(points.size(), 1);
  EXPECT_EQ(points.front().row(), 1);
}

TEST_F(MapTest, ARangeOfTheProfileTellsItsFigures) {
  OpenWalk();
  auto& profile = Get<ProfileView>("Profile");
  const int y = profile.height() / 2;
  QTest::mousePress(&profile, Qt::LeftButton, {}, {0, y});
  QTest::mouseMove(&profile, {profile.width() / 2, y});
  QTest::mouseRelease(&profile, Qt::LeftButton, {}, {profile.width() / 2, y});
  // A hundredth of a degree is 1113.07 m on the sphere; 20 minutes; 50 m up.
  EXPECT_EQ(profile.Headline().toStdString(), "1.11 km   0:20:00   登り 50 m   下り 0 m   平均 3.3 km/h");
}

TEST_F(MapTest, TheFiguresAreThoseOfTheChosenLogAndOfAll) {
  OpenWalk();
  Get<QTabWidget>("WayPanel").setCurrentIndex(1);
  const auto text = [this] {
    QString figures = Get<QLabel>("Figures").text();
    return figures.replace("&nbsp;", "").remove(QRegularExpression("<[^>]*>")).toStdString();
  };
  EXPECT_NE(text().find("点数5"), std::string::npos) << text();
  EXPECT_EQ(text().find("FIRST"), std::string::npos) << text();
  ClickMap(35.01, 139.0);
  // Two hundredths of a degree are 2226 m on the sphere, a twentieth of one at this latitude 4556 m.
  for (const char* figure : {"FIRSTすべて", "距離2.23 km6.78 km", "登り50 m-", "時間0:40:00-", "下り30 m-",
                             "平均速度3.3 km/h-", "最低高度100 m100 m", "最高高度150 m150 m", "点数35", "区間数12"}) {
    EXPECT_NE(text().find(figure), std::string::npos) << figure << " in " << text();
  }
  ClickMap(35.15, 139.4);
  EXPECT_NE(text().find("HOME点数2長さ18.20 kmR1 → R218.20 km"), std::string::npos) << text();
}

TEST_F(MapTest, WithoutLogsAndRoutesThereIsNoProfile) {
  PasteText("WPT\tD\tWGS84\tTAKAO\t35.5\t139.25\t高尾山\r\n");
  EXPECT_EQ(window->findChild<ProfileView*>("Profile"), nullptr);
}

// ---- Backgrounds

class MapBackgroundTest : public MapTest {
 protected:
  /// Chooses tiles of the server, as the dialog asks for their address.
  void ChooseOwn(const QString& address) {
    QTimer::singleShot(0, window.get(), [this, address] {
      auto& dialog = Get<QInputDialog>("TileAddressDialog");
      dialog.setTextValue(address);
      dialog.accept();
    });
    Get<QAction>("Background_own").trigger();
  }
  void StartAgain() {
    ASSERT_TRUE(window->close());
    window.reset();
    store = std::make_unique<QSettings>(QString::fromStdString(folder.Path("walrim.ini")), QSettings::IniFormat);
    Open(*demo_port, clock);
  }

  TileServer server{[](QTcpSocket& connection, const QString&) { TileServer::Send404(connection); }};
};

TEST_F(MapBackgroundTest, WithoutAChoiceNobodyIsAsked) {
  OpenWalk();
  for (int i = 0; i < 10; ++i) {
    QTest::keyClick(&Map(), Qt::Key_Plus);
    Map().repaint();
  }
  EXPECT_TRUE(Get<QAction>("Background_none").isChecked());
  EXPECT_EQ(window->findChild<QNetworkAccessManager*>(), nullptr);
  EXPECT_EQ(window->findChild<MapTiles*>(), nullptr);
}

TEST_F(MapBackgroundTest, TheFirstChoiceIsAskedForWithWhatTheServerLearns) {
  answerer.Answer(QMessageBox::Cancel);
  Get<QAction>("Background_gsi").trigger();
  EXPECT_EQ(Messages(), window_messages::TilesTellWhere("cyberjapandata.gsi.go.jp"));
  EXPECT_TRUE(Get<QAction>("Background_none").isChecked());
  EXPECT_EQ(window->findChild<MapTiles*>(), nullptr);
}

TEST_F(MapBackgroundTest, TilesOfOnesOwnAreFetchedOnceAgreed) {
  OpenWalk();
  answerer.Answer(QMessageBox::Cancel);
  ChooseOwn(server.Address("{z}/{x}/{y}"));
  EXPECT_EQ(window->findChild<MapTiles*>(), nullptr);
  answerer.Answer(QMessageBox::Ok);
  ChooseOwn(server.Address("{z}/{x}/{y}"));
  ASSERT_TRUE(QTest::qWaitFor([&] { return !server.asked.isEmpty(); }));
  EXPECT_TRUE(Get<QAction>("Background_own").isChecked());
  Get<QAction>("Background_none").trigger();
  EXPECT_EQ(window->findChild<MapTiles*>(), nullptr);
  const std::size_t questions = answerer.boxes.size();
  ChooseOwn(server.Address("{z}/{x}/{y}"));
  EXPECT_EQ(answerer.boxes.size(), questions) << "it has been agreed";
}

TEST_F(MapBackgroundTest, AnAddressThatIsNoneIsToldAndChangesNothing) {
  ChooseOwn("example.org");
  EXPECT_EQ(Messages(), window_messages::NoTileAddress);
  EXPECT_TRUE(Get<QAction>("Background_none").isChecked());
}

TEST_F(MapBackgroundTest, TheMapAndItsBackgroundAreRemembered) {
  StartAgain();
  ShowMap(true);
  answerer.Answer(QMessageBox::Ok);
  ChooseOwn(server.Address("{z}/{x}/{y}"));
  StartAgain();
  EXPECT_TRUE(Get<QAction>("ShowMap").isChecked());
  EXPECT_TRUE(Get<QAction>("Background_own").isChecked());
  const qsizetype asked = server.asked.size();
  ASSERT_TRUE(QTest::qWaitFor([&] { return server.asked.size() > asked; }));
  ShowMap(false);
  StartAgain();
  EXPECT_FALSE(Get<QAction>("ShowMap").isChecked());
  EXPECT_EQ(window->findChild<MapTiles*>(), nullptr) << "what is not shown asks nobody";
}

}  // namespace
}  // namespace walrim
