// The menu of a record: by mouse and by keys, to maps and to the clipboard.
#include "window/RecordView.h"

#include <QDesktopServices>
#include <QMenu>
#include <QTabWidget>

#include "app/Messages.h"
#include "window/WindowTest.h"

namespace walrim {
namespace {

/// Stands in the place of the browser.
class Browser : public QObject {
  Q_OBJECT

 public:
  Browser() { QDesktopServices::setUrlHandler("https", this, "Open"); }
  Browser(const Browser&) = delete;
  Browser& operator=(const Browser&) = delete;
  ~Browser() override { QDesktopServices::unsetUrlHandler("https"); }
  Q_INVOKABLE void Open(const QUrl& url) { links.push_back(url.toString(QUrl::FullyEncoded).toStdString()); }

  std::vector<std::string> links;
};

constexpr const char* OnGsi = "地理院地図で開く";
constexpr const char* OnOsm = "OpenStreetMapで開く";
constexpr const char* OnGoogle = "Google マップで開く";
constexpr const char* CopyLink = "geo: リンクをコピー";

class RecordMenuTest : public WindowTest {
 protected:
  RecordMenuTest() {
    QGuiApplication::clipboard()->setText("untouched");
    PutFile(folder.Path("a.grc"),
            "WPT\tD\tWGS84\t=\"TAKAO\"\t35.6252\t139.2437\r\nWPT\tD\tWGS84\t=\"SOUTH\"\t-33.5\t-70.25\r\n"
            "RTH\t1\t=\"R\"\t1\r\nRTP\tD\tWGS84\t=\"P1\"\t35.1\t139.1\r\nRTP\tD\tWGS84\t=\"P2\"\t35.2\t139.2\r\n"
            "TRH\t1\t=\"T\"\t1\t1\r\nTRP\tD\tWGS84\t36.1\t140.1\t2002/11/16 09:00:00\t1\t599.5\r\n"
            "TRP\tD\tWGS84\t36.2\t140.2\t2002/11/16 09:01:00\t0\r\n");
    window->ImportFiles({folder.Path("a.grc")});
  }

  RecordView& Table(const char* name, DataKind kind) const {
    Get<QTabWidget>("Records").setCurrentIndex(static_cast<int>(IndexOf(kind)));
    return Get<RecordView>(name);
  }
  RecordView& Waypoints() const { return Table("WaypointTable", DataKind::Waypoint); }

  /// The menu that a click with the right button on a row brings.
  QMenu& RightClick(const RecordView& table, int row) const {
    return RightClick(table, QPoint(30, table.rowViewportPosition(row) + table.rowHeight(row) / 2));
  }
  QMenu& RightClick(const RecordView& table, const QPoint& at) const {
    QTest::mouseClick(window->windowHandle(), Qt::RightButton, {}, table.viewport()->mapTo(window.get(), at));
    return OpenMenu();
  }
  static QMenu& OpenMenu() {
    QCoreApplication::processEvents();
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (menu == nullptr) throw std::runtime_error("no menu is open");
    return *menu;
  }
  static QAction& Entry(const QMenu& menu, const char* text) {
    for (QAction* action : menu.actions()) {
      if (action->text() == text) return *action;
    }
    throw std::runtime_error(std::string("no entry ") + text);
  }
  static void Choose(QMenu& menu, const char* text) {
    QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(&Entry(menu, text)).center());
    QCoreApplication::processEvents();
  }
  /// The entries of a menu that can be chosen; closes it.
  static QStringList Offered(QMenu& menu) {
    QStringList texts;
    for (const QAction* action : menu.actions()) {
      if (!action->isSeparator() && action->isEnabled()) texts.append(action->text());
    }
    Close(menu);
    return texts;
  }
  static void Close(QMenu& menu) {
    QTest::keyClick(&menu, Qt::Key_Escape);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  }
  /// Opens the menu of the chosen row with Shift and F10, goes down to an entry and presses Return.
  void ChooseByKeys(RecordView& table, const char* text) const {
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    table.setFocus();
    QTest::keyClick(window->windowHandle(), Qt::Key_F10, Qt::ShiftModifier);
    QMenu& menu = OpenMenu();
    for (int steps = 0; menu.activeAction() != &Entry(menu, text) && steps < 20; ++steps)
      QTest::keyClick(&menu, Qt::Key_Down);
    QTest::keyClick(&menu, Qt::Key_Return);
    QCoreApplication::processEvents();
  }

  using Strings = std::vector<std::string>;
  /// Whatever the rows are; with a row chosen; with one whose points have an order.
  const QStringList without_row{"行をコピー", "すべて選ぶ", "すべて外す", "選択した行だけ",
                                "新しいウェイポイント(&N)..."};
  const QStringList without_place = without_row + QStringList{"セルを編集(&I)", "選んだ行を削除(&L)"};
  const QStringList of_ways = without_place + QStringList{"逆順にする(&B)"};
  Browser browser;
};

TEST_F(RecordMenuTest, AClickOpensTheRecordOnTheMapThatIsNamed) {
  Choose(RightClick(Waypoints(), 0), OnGsi);
  Choose(RightClick(Waypoints(), 0), OnOsm);
  Choose(RightClick(Waypoints(), 1), OnGoogle);
  EXPECT_EQ(browser.links, (Strings{"https://maps.gsi.go.jp/#15/35.6252/139.2437/",
                                    "https://www.openstreetmap.org/?mlat=35.6252&mlon=139.2437#map=15/35.6252/139.2437",
                                    "https://www.google.com/maps/search/?api=1&query=-33.5,-70.25"}));
  EXPECT_EQ(Clipboard(), "untouched");
  EXPECT_EQ(Messages(), "");
}

TEST_F(RecordMenuTest, NothingIsSentBeforeAnEntryIsChosen) {
  Close(RightClick(Waypoints(), 0));
  Choose(RightClick(Waypoints(), 0), CopyLink);
  EXPECT_EQ(browser.links, Strings{});
  EXPECT_EQ(Clipboard(), "geo:35.6252,139.2437");
}

TEST_F(RecordMenuTest, PointsOfRoutesAndLogsHaveItToo) {
  Choose(RightClick(Table("RoutePointTable", DataKind::Route), 1), OnGsi);
  Choose(RightClick(Table("TrackPointTable", DataKind::TrackLog), 1), OnGsi);
  EXPECT_EQ(browser.links,
            (Strings{"https://maps.gsi.go.jp/#15/35.2/139.2/", "https://maps.gsi.go.jp/#15/36.2/140.2/"}));
  Choose(RightClick(Table("TrackPointTable", DataKind::TrackLog), 0), CopyLink);
  EXPECT_EQ(Clipboard(), "geo:36.1,140.1,599.5");
}

TEST_F(RecordMenuTest, TheLinkIsOnWgs84WhateverTheTableShows) {
  auto& datum = Get<QComboBox>("Datum");
  datum.setFocus();
  QTest::keyClick(&datum, Qt::Key_Down);
  const RecordView& table = Waypoints();
  ASSERT_NE(table.model()->index(0, 2).data().toString().toStdString(), "35.6252");
  Choose(RightClick(table, 0), CopyLink);
  EXPECT_EQ(Clipboard(), "geo:35.6252,139.2437");
}

TEST_F(RecordMenuTest, KeysDoTheSame) {
  RecordView& table = Waypoints();
  table.setCurrentIndex(table.model()->index(1, 0));
  ChooseByKeys(table, OnGoogle);
  EXPECT_EQ(browser.links, Strings{"https://www.google.com/maps/search/?api=1&query=-33.5,-70.25"});
  ChooseByKeys(table, CopyLink);
  EXPECT_EQ(Clipboard(), "geo:-33.5,-70.25");
}

TEST_F(RecordMenuTest, TheMenuKeyOpensOneMenuAtTheChosenRow) {
  RecordView& table = Waypoints();
  table.setCurrentIndex(table.model()->index(1, 0));
  QTest::keyClick(&table, Qt::Key_Menu);
  QMenu& menu = OpenMenu();
  EXPECT_EQ(menu.pos(), table.viewport()->mapToGlobal(table.visualRect(table.currentIndex()).bottomLeft()));
  // The platform may ask for the menu as well.
  QContextMenuEvent wish(QContextMenuEvent::Keyboard, {}, {});
  QApplication::sendEvent(&table, &wish);
  EXPECT_EQ(&OpenMenu(), &menu);
  Close(menu);
  QApplication::sendEvent(&table, &wish);
  Choose(OpenMenu(), CopyLink);
  EXPECT_EQ(Clipboard(), "geo:-33.5,-70.25");
}

TEST_F(RecordMenuTest, WhereNoPlaceIsKnownOnlyTheCopyOfRowsIsOffered) {
  EXPECT_EQ(Offered(RightClick(Waypoints(), 0)), without_place + (QStringList{OnGsi, OnOsm, OnGoogle, CopyLink}));
  Waypoint missing;
  missing.missing = true;
  Waypoint nowhere;
  nowhere.lat_deg = 180;
  nowhere.lon_deg = 180;
  static_cast<void>(Data().Add(missing));
  static_cast<void>(Data().Add(nowhere));
  Click("Copy");
  EXPECT_EQ(Offered(RightClick(Waypoints(), 2)), without_place);
  EXPECT_EQ(Offered(RightClick(Waypoints(), 3)), without_place);
}

TEST_F(RecordMenuTest, RoutesAndLogsAreNoPlaceNorIsWhatLiesBesideTheRows) {
  EXPECT_EQ(Offered(RightClick(Table("RouteTable", DataKind::Route), 0)), of_ways);
  const QStringList of_logs{"トラックログを日ごとに分ける(&Y)", "トラックログを時間の空きで分ける(&G)...",
                            "外れ値を選ぶ(&O)", "ポイントを間引く(&M)..."};
  EXPECT_EQ(Offered(RightClick(Table("TrackTable", DataKind::TrackLog), 0)), of_ways + of_logs);
  const QPoint below = Waypoints().viewport()->rect().bottomLeft() + QPoint(5, -5);
  EXPECT_EQ(Offered(RightClick(Waypoints(), below)), without_row);
}

TEST_F(RecordMenuTest, TheMenuCopiesTheChosenRowsAsTheKeyDoes) {
  const RecordView& table = Waypoints();
  Choose(RightClick(table, 0), "行をコピー");
  EXPECT_TRUE(Clipboard().starts_with("WPT\tD\tWGS84\t=\"TAKAO\"\t")) << Clipboard();
}

}  // namespace
}  // namespace walrim

#include "RecordView_test.moc"
