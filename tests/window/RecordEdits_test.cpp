// Records edited in the tables, by clicks and by keys.
#include <QAbstractItemView>
#include <QCompleter>
#include <QInputDialog>
#include <QMenu>
#include <QTabWidget>
#include <QToolTip>

#include "app/Messages.h"
#include "dialogs/Messages.h"
#include "window/DialogPlans.h"
#include "window/RecordView.h"
#include "window/SymbolBox.h"
#include "window/WindowTest.h"

namespace walrim {
namespace {

constexpr DataKind WaypointPage = DataKind::Waypoint;
constexpr DataKind RoutePage = DataKind::Route;
constexpr DataKind LogPage = DataKind::TrackLog;
enum Columns { Number, Name, Latitude, Longitude, Height, Comment, Symbol };

class RecordEditsTest : public WindowTest {
 protected:
  RecordEditsTest() {
    PutFile(folder.Path("a.grc"),
            "WPT\tD\tWGS84\t=\"A\"\t35.5\t139.25\r\nWPT\tD\tWGS84\t=\"B\"\t36\t140\r\n"
            "WPT\tD\tWGS84\t=\"C\"\t37\t141\r\nRTH\t1\t=\"R\"\t1\r\n"
            "RTP\tD\tWGS84\t=\"P1\"\t35.1\t139.1\r\nRTP\tD\tWGS84\t=\"P2\"\t35.2\t139.2\r\n"
            "RTP\tD\tWGS84\t=\"P3\"\t35.3\t139.3\r\n"
            "TRH\t1\tTRUE\t255\t=\"T\"\r\nTRP\tD\tWGS84\t36.1\t140.1\t2002/11/16 09:00:00\tTRUE\t599.5\r\n"
            "TRP\tD\tWGS84\t36.2\t140.1\t2002/11/16 09:01:00\tFALSE\r\n"
            "TRP\tD\tWGS84\t36.3\t140.1\t2002/11/16 09:02:00\tFALSE\r\n"
            "TRH\t1\tTRUE\t255\t=\"U\"\r\nTRP\tD\tWGS84\t37.1\t140.1\t2002/11/17 09:00:00\tTRUE\t599.5\r\n");
    window->ImportFiles({folder.Path("a.grc")});
    window->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
  }

  RecordView& Table(const char* name, DataKind kind) const {
    Get<QTabWidget>("Records").setCurrentIndex(static_cast<int>(IndexOf(kind)));
    auto& table = Get<RecordView>(name);
    table.setFocus();
    return table;
  }
  RecordView& Waypoints() const { return Table("WaypointTable", WaypointPage); }
  RecordView& RoutePoints() const { return Table("RoutePointTable", RoutePage); }
  RecordView& Logs() const { return Table("TrackTable", LogPage); }
  RecordView& LogPoints() const { return Table("TrackPointTable", LogPage); }

  /// Goes to a cell and opens its editor with a key.
  template <typename Editor = QLineEdit>
  Editor& Open(RecordView& table, int row, int column) const {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    table.setCurrentIndex(table.model()->index(row, column));
    QTest::keyClick(&table, Qt::Key_F2);
    return EditorOf<Editor>(table);
  }
  template <typename Editor = QLineEdit>
  static Editor& EditorOf(const RecordView& table) {
    auto* editor = table.viewport()->findChild<Editor*>();
    if (editor == nullptr) throw std::runtime_error("no editor is open");
    return *editor;
  }
  static bool IsEditing(const RecordView& table) {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return table.viewport()->findChild<QLineEdit*>() != nullptr;
  }
  static void Type(QLineEdit& line, const QString& text) {
    line.selectAll();
    QInputMethodEvent event;
    event.setCommitString(text);
    QApplication::sendEvent(&line, &event);
  }
  static void Press(QWidget& widget, Qt::Key key) {
    QTest::keyClick(&widget, key);
    QCoreApplication::processEvents();  // the editor's text is handed over when the key has been dealt with
  }
  /// Types over a cell and presses Return.
  void Edit(RecordView& table, int row, int column, const QString& text) const {
    QLineEdit& line = Open(table, row, column);
    Type(line, text);
    Press(line, Qt::Key_Return);
  }
  void Undo() const { Get<QAction>("Undo").trigger(); }
  void Trigger(const char* action) const {
    QAction& chosen = Get<QAction>(action);
    ASSERT_TRUE(chosen.isEnabled()) << action;
    chosen.trigger();
  }
  static void Select(RecordView& table, std::initializer_list<int> rows) {
    table.clearSelection();
    for (const int row : rows) {
      table.selectionModel()->setCurrentIndex(table.model()->index(row, 1),
                                              QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
  }
  [[nodiscard]] std::string Idents() const {
    std::string idents;
    for (const Waypoint& waypoint : Data().Waypoints())
      idents += waypoint.ident;
    return idents;
  }
  [[nodiscard]] std::string RouteIdents() const {
    std::string idents;
    for (const RoutePoint& point : Data().Routes().at(0).points)
      idents += point.waypoint.ident;
    return idents;
  }
  /// "T3U1"
  [[nodiscard]] std::string LogSizes() const {
    std::string sizes;
    for (const TrackLog& log : Data().Logs())
      sizes += log.trk_ident + std::to_string(log.points.size());
    return sizes;
  }

  DialogPlans plans;
};

TEST_F(RecordEditsTest, ACellIsEditedWithF2AndReturn) {
  Edit(Waypoints(), 1, Name, "takao");
  EXPECT_EQ(Idents(), "ATAKAOC");
  EXPECT_EQ(Waypoints().model()->index(1, Name).data().toString(), "TAKAO");
  EXPECT_FALSE(IsEditing(Waypoints()));
  Undo();
  EXPECT_EQ(Idents(), "ABC");
}

TEST_F(RecordEditsTest, ADoubleClickOpensTheEditorWithWhatIsShown) {
  RecordView& table = Waypoints();
  const QPoint at = table.visualRect(table.model()->index(0, Latitude)).center();
  QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, at);
  QTest::mouseDClick(table.viewport(), Qt::LeftButton, {}, at);
  QLineEdit& line = EditorOf(table);
  EXPECT_EQ(line.text(), "35.5");
  EXPECT_EQ(line.accessibleName(), "緯度");
  Type(line, "N36°07'30\"");
  Press(line, Qt::Key_Return);
  EXPECT_EQ(Data().Waypoints()[0].lat_deg, 36.125);
}

TEST_F(RecordEditsTest, WhatOnlyShowsIsNotEdited) {
  RecordView& table = Logs();
  const QPoint at = table.visualRect(table.model()->index(0, 3)).center();
  QTest::mouseDClick(table.viewport(), Qt::LeftButton, {}, at);
  EXPECT_FALSE(IsEditing(table));
  // The key goes to the cell of the row that can be.
  EXPECT_EQ(Open(table, 0, 3).text(), "T");
}

TEST_F(RecordEditsTest, ARefusedTextStaysAndSaysWhy) {
  RecordView& table = Waypoints();
  QLineEdit& line = Open(table, 0, Height);
  Type(line, "high");
  Press(line, Qt::Key_Return);
  ASSERT_TRUE(IsEditing(table));
  EXPECT_EQ(line.text(), "high");
  EXPECT_EQ(QToolTip::text().toStdString(), messages::NoHeight("high"));
  EXPECT_EQ(Data().Waypoints()[0].alt_m, std::nullopt);
  Type(line, "599");
  Press(line, Qt::Key_Return);
  EXPECT_FALSE(IsEditing(table));
  EXPECT_EQ(Data().Waypoints()[0].alt_m, 599.0F);
}

TEST_F(RecordEditsTest, ARefusedTextIsGivenUpWithEscape) {
  RecordView& table = Waypoints();
  QLineEdit& line = Open(table, 0, Longitude);
  Type(line, "200");
  Press(line, Qt::Key_Return);
  EXPECT_EQ(QToolTip::text().toStdString(), dialog_messages::OutOfRange("経度", "200", 180));
  Press(line, Qt::Key_Escape);
  EXPECT_FALSE(IsEditing(table));
  EXPECT_EQ(Data().Waypoints()[0].lon_deg, 139.25);
  EXPECT_FALSE(Get<QAction>("Undo").text().contains("編集"));
}

TEST_F(RecordEditsTest, ATextThatIsLeftIsTakenAndARefusedOneStays) {
  RecordView& table = Waypoints();
  QLineEdit& line = Open(table, 0, Height);
  Type(line, "x");
  Get<QPushButton>("Get_GpsInfo").setFocus();
  QCoreApplication::processEvents();
  ASSERT_TRUE(IsEditing(table));
  EXPECT_EQ(line.text(), "x");
  line.setFocus();
  Type(line, "12");
  Get<QPushButton>("Get_GpsInfo").setFocus();
  QCoreApplication::processEvents();
  EXPECT_FALSE(IsEditing(table));
  EXPECT_EQ(Data().Waypoints()[0].alt_m, 12.0F);
}

TEST_F(RecordEditsTest, WhatIsHandedOverUnchangedIsNoEdit) {
  // On another datum, what is shown read back is another place by some centimetres.
  auto& datum = Get<QComboBox>("Datum");
  datum.setFocus();
  QTest::keyClick(&datum, Qt::Key_Down);
  QLineEdit& line = Open(Waypoints(), 0, Latitude);
  ASSERT_NE(line.text(), "35.5");
  Press(line, Qt::Key_Return);
  EXPECT_FALSE(IsEditing(Waypoints()));
  EXPECT_EQ(Data().Waypoints()[0].lat_deg, 35.5);
  EXPECT_FALSE(Get<QAction>("Undo").text().contains("編集"));
}

TEST_F(RecordEditsTest, AMapLinkInACellReplacesThePosition) {
  Edit(Waypoints(), 0, Longitude, "geo:36.125,140.5");
  EXPECT_EQ(Data().Waypoints()[0].lat_deg, 36.125);
  EXPECT_EQ(Data().Waypoints()[0].lon_deg, 140.5);
}

TEST_F(RecordEditsTest, AMapLinkIsPastedIntoACell) {
  QGuiApplication::clipboard()->setText("https://maps.gsi.go.jp/#15/36.125/140.5/");
  QLineEdit& line = Open(Waypoints(), 0, Latitude);
  line.selectAll();
  QTest::keyClick(&line, Qt::Key_V, Qt::ControlModifier);
  Press(line, Qt::Key_Return);
  EXPECT_EQ(Data().Waypoints()[0].lat_deg, 36.125);
  EXPECT_EQ(Data().Waypoints()[0].lon_deg, 140.5);
  EXPECT_EQ(Texts("GpsNum"), "3|1|2") << "it makes no waypoint of its own";
}

TEST_F(RecordEditsTest, ACellThatIsOpenedAndClosedKeepsAllDigits) {
  static_cast<void>(Data().Edit(Replacement(0, [this] {
    Waypoint waypoint = Data().Waypoints()[0];
    waypoint.lat_deg = 35.123456789012345;
    waypoint.alt_m = 599.15F;
    return waypoint;
  }())));
  for (const int column : {Latitude, Height}) {
    QLineEdit& line = Open(Waypoints(), 0, column);
    Press(line, Qt::Key_Return);
    EXPECT_FALSE(IsEditing(Waypoints()));
  }
  EXPECT_EQ(Open(Waypoints(), 0, Height).text(), "599.15");
  EXPECT_EQ(Data().Waypoints()[0].lat_deg, 35.123456789012345);
  EXPECT_EQ(Data().Waypoints()[0].alt_m, 599.15F);
}

TEST_F(RecordEditsTest, RoutesLogsAndTheirPointsAreEditedToo) {
  Edit(Table("RouteTable", RoutePage), 0, 1, "way home");
  Edit(RoutePoints(), 1, Name, "mid");
  Edit(Logs(), 0, 1, "day one");
  Edit(LogPoints(), 1, 4, "77");
  EXPECT_EQ(Data().Routes()[0].cmnt, "WAY HOME");
  EXPECT_EQ(RouteIdents(), "P1MIDP3");
  EXPECT_EQ(LogSizes(), "DAY ONE3U1");
  EXPECT_EQ(Data().Logs()[0].points[1].alt_m, 77.0F);
  for (int i = 0; i < 4; ++i)
    Undo();
  EXPECT_EQ(LogSizes() + RouteIdents() + Data().Routes()[0].cmnt, "T3U1P1P2P3R");
}

TEST_F(RecordEditsTest, ASortedTableEditsTheRecordThatIsShown) {
  Waypoints().sortByColumn(Name, Qt::DescendingOrder);
  Edit(Waypoints(), 0, Comment, "last");
  EXPECT_EQ(Data().Waypoints()[2].cmnt, "LAST");
}

// ---- Symbols

TEST_F(RecordEditsTest, ASymbolIsFoundByAnyOfItsNames) {
  const auto choose = [this](const QString& typed) {
    auto& box = Open<SymbolBox>(Waypoints(), 0, Symbol);
    Type(*box.lineEdit(), typed);
    Press(box, Qt::Key_Return);
    return int{Data().Waypoints()[0].smbl.value_or(0)};
  };
  EXPECT_EQ(choose("山頂"), 8246);
  EXPECT_EQ(choose("campground"), 151);
  EXPECT_EQ(choose("Skull and Cross"), 14);
  EXPECT_EQ(choose("178"), 178);
  EXPECT_EQ(Data().Waypoints()[0].symbol_set, SymbolSet::Large);
  EXPECT_EQ(Waypoints().model()->index(0, Symbol).data().toString(), "旗");
}

TEST_F(RecordEditsTest, ASymbolThatIsNotOneAloneIsRefused) {
  auto& box = Open<SymbolBox>(Waypoints(), 0, Symbol);
  Type(*box.lineEdit(), "航路標識");
  Press(box, Qt::Key_Return);
  EXPECT_EQ(QToolTip::text().toStdString(), messages::NoSuchSymbol);
  EXPECT_EQ(box.currentText(), "航路標識");
  EXPECT_EQ(Data().Waypoints()[0].smbl, 18);
  Press(box, Qt::Key_Escape);
}

TEST_F(RecordEditsTest, ARefusedTextIsGivenUpForAnotherCell) {
  RecordView& table = Waypoints();
  const auto click = [&table](int row, int column) {
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {},
                      table.visualRect(table.model()->index(row, column)).center());
    QCoreApplication::processEvents();
  };
  auto& box = Open<SymbolBox>(table, 0, Symbol);
  Type(*box.lineEdit(), "航路標識");
  Press(box, Qt::Key_Return);
  ASSERT_TRUE(IsEditing(table));
  QToolTip::hideText();
  click(1, Name);
  EXPECT_FALSE(IsEditing(table));
  EXPECT_TRUE(QTest::qWaitFor([] { return QToolTip::text().toStdString() == messages::NoSuchSymbol; }));
  EXPECT_EQ(Data().Waypoints()[0].smbl, 18);
  EXPECT_EQ(Open(table, 1, Name).text(), "B");
  Press(EditorOf(table), Qt::Key_Escape);
  // The same by keys: whatever was open, the next cell opens.
  Type(Open(table, 0, Height), "x");
  Press(EditorOf(table), Qt::Key_Return);
  table.setCurrentIndex(table.model()->index(2, Name));
  EXPECT_FALSE(IsEditing(table));
  EXPECT_EQ(Open(table, 2, Name).text(), "C");
}

TEST_F(RecordEditsTest, ABlankForAnOpenEditorUnchecksNothing) {
  RecordView& table = Waypoints();
  auto& box = Open<SymbolBox>(table, 0, Symbol);
  table.selectAll();
  for (const char* typed : {"航路 標識", " "}) {
    Type(*box.lineEdit(), typed);
    Press(box, Qt::Key_Return);
    QTest::keyClick(&table, Qt::Key_Space);
    QTest::keyClick(table.viewport(), Qt::Key_Space);
    QTest::keyClick(&box, Qt::Key_Space);
  }
  EXPECT_TRUE(std::ranges::all_of(Data().Waypoints(), &Waypoint::chosen));
  ASSERT_TRUE(IsEditing(table));
  QTest::keyClick(&table, Qt::Key_F2);
  EXPECT_EQ(QApplication::focusWidget(), &box) << "the key goes to the cell that is open";
  Press(box, Qt::Key_Escape);
  EXPECT_FALSE(IsEditing(table));
}

TEST_F(RecordEditsTest, TheListOfSymbolsShowsPicturesAndFilters) {
  RecordView& table = Waypoints();
  auto& box = Open<SymbolBox>(table, 0, Symbol);
  EXPECT_EQ(box.count(), 141);
  EXPECT_GT(box.width(), table.columnWidth(Symbol));
  EXPECT_EQ(box.currentText(), "点 / waypoint dot / Waypoint");
  EXPECT_FALSE(box.itemIcon(box.currentIndex()).isNull());
  QCoreApplication::processEvents();
  EXPECT_TRUE(box.completer()->popup()->isVisible());
  box.completer()->setCompletionPrefix("キャンプ");
  EXPECT_EQ(box.completer()->completionCount(), 2);
  QCoreApplication::processEvents();
  box.completer()->complete();
  QAbstractItemView& list = *box.completer()->popup();
  QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(list.model()->index(0, 0)).center());
  QCoreApplication::processEvents();
  EXPECT_EQ(Data().Waypoints()[0].smbl, 151);
  EXPECT_FALSE(IsEditing(table));
}

// ---- Rows

TEST_F(RecordEditsTest, DeleteTakesTheChosenRowsAndGoesOnBehindThem) {
  RecordView& table = Waypoints();
  Select(table, {0, 1});
  Press(table, Qt::Key_Delete);
  EXPECT_EQ(Idents(), "C");
  EXPECT_EQ(Texts("GpsNum"), "1|1|2");
  EXPECT_EQ(table.SelectedRefs().size(), 1U);
  Press(table, Qt::Key_Delete);
  EXPECT_EQ(Idents(), "");
  Undo();
  Undo();
  EXPECT_EQ(Idents(), "ABC");
}

TEST_F(RecordEditsTest, DeleteInATableOfPointsTakesPoints) {
  Select(RoutePoints(), {1});
  Press(RoutePoints(), Qt::Key_Delete);
  EXPECT_EQ(RouteIdents(), "P1P3");
  EXPECT_EQ(Data().Routes().size(), 1U);
  Select(LogPoints(), {0});
  Press(LogPoints(), Qt::Key_Delete);
  EXPECT_EQ(LogSizes(), "T2U1");
  EXPECT_TRUE(Data().Logs()[0].points[0].new_trk);
}

TEST_F(RecordEditsTest, DeleteInAnEditorTakesALetter) {
  RecordView& table = Waypoints();
  Select(table, {0});
  QLineEdit& line = Open(table, 0, Name);
  Type(line, "XY");
  line.setCursorPosition(0);
  QTest::keyClick(&line, Qt::Key_Delete);
  Press(line, Qt::Key_Return);
  EXPECT_EQ(Idents(), "YBC");
}

TEST_F(RecordEditsTest, PointsOfARouteMoveWithAltAndArrows) {
  RecordView& table = RoutePoints();
  Select(table, {0});
  QTest::keyClick(&table, Qt::Key_Down, Qt::AltModifier);
  EXPECT_EQ(RouteIdents(), "P2P1P3");
  QTest::keyClick(&table, Qt::Key_Down, Qt::AltModifier);
  EXPECT_EQ(RouteIdents(), "P2P3P1");
  QTest::keyClick(&table, Qt::Key_Down, Qt::AltModifier);
  EXPECT_EQ(RouteIdents(), "P2P3P1");
  QTest::keyClick(&table, Qt::Key_Up, Qt::AltModifier);
  EXPECT_EQ(RouteIdents(), "P2P1P3");
  EXPECT_EQ(table.SelectedRefs(), std::vector<RowRef>({RowRef{1, 1}}));
}

TEST_F(RecordEditsTest, LogsAreJoinedCutTurnedAndShortenedFromTheMenu) {
  Select(Logs(), {0, 1});
  Trigger("JoinLogs");
  EXPECT_EQ(LogSizes(), "T4");
  Undo();
  Select(LogPoints(), {2});
  Trigger("CutLog");
  EXPECT_EQ(LogSizes(), "T2T-21U1");
  Undo();
  Select(Logs(), {0});
  Trigger("ReverseRows");
  EXPECT_EQ(Data().Logs()[0].points[0].lat_deg, 36.3);
  Undo();
  plans.Next("ShortenDialog", [](QDialog& dialog) {
    qobject_cast<QInputDialog*>(&dialog)->setIntValue(2);
    dialog.accept();
  });
  Select(Logs(), {0});
  Trigger("ShortenLogs");
  EXPECT_EQ(LogSizes(), "T2U1");
  EXPECT_EQ(Status(), messages::Shortened(3, 2));
  EXPECT_EQ(Messages(), "");
}

TEST_F(RecordEditsTest, LogsAreSplitByDayAndByGap) {
  for (std::size_t i = 0; i < 3; ++i) {
    TrackPoint point = Data().Logs()[0].points[i];
    point.time = static_cast<GarminSeconds>(100'000 + i * 50'000);
    ASSERT_TRUE(Data().Edit(Replacement(i, point, 0)));
  }
  Select(Logs(), {0});
  Trigger("SplitByDay");
  EXPECT_EQ(LogSizes(), "T1T-22U1");
  Undo();
  plans.Next("SplitDialog", [](QDialog& dialog) {
    qobject_cast<QInputDialog*>(&dialog)->setDoubleValue(13.9);
    dialog.accept();
  });
  Select(Logs(), {0});
  Trigger("SplitByGap");
  EXPECT_EQ(Status(), messages::NothingToSplit) << "50000 s are 13.889 h";
  plans.Next("SplitDialog", [](QDialog& dialog) { dialog.reject(); });
  Trigger("SplitByGap");
  EXPECT_EQ(LogSizes(), "T3U1");
}

TEST_F(RecordEditsTest, OutliersAreChosenInTheTableOfThePointsAndDeleted) {
  std::vector<TrackPoint> points;
  for (int i = 0; i < 12; ++i) {
    TrackPoint point;
    point.lat_deg = i == 7 ? 36 : 35;
    point.lon_deg = 139 + i * 0.0001 + (i % 3) * 0.00001;
    point.time = static_cast<GarminSeconds>(1000 + i * 10);
    points.push_back(point);
  }
  ASSERT_TRUE(Data().Edit(Replacement(0, 3, points, 0)));
  window->ShowControls();
  Select(Logs(), {0});
  Trigger("FindOutliers");
  EXPECT_EQ(Status(), messages::OutliersFound(1));
  EXPECT_EQ(LogPoints().SelectedRefs(), std::vector<RowRef>({RowRef{1, 7}}));
  Press(LogPoints(), Qt::Key_Delete);
  EXPECT_EQ(LogSizes(), "T11U1");
  Trigger("FindOutliers");
  EXPECT_EQ(Status(), messages::OutliersFound(0));
}

TEST_F(RecordEditsTest, WhatCannotBeDoneWithTheRowsIsOutOfReach) {
  const auto enabled = [this](std::initializer_list<const char*> actions) {
    std::string all;
    for (const char* action : actions)
      all += Get<QAction>(action).isEnabled() ? '+' : '-';
    return all;
  };
  const auto rows = {"EditCell",    "DeleteRows", "MoveUp", "MoveDown",
                     "ReverseRows", "JoinLogs",   "CutLog", "ShortenLogs"};
  Waypoints().clearSelection();
  EXPECT_EQ(enabled(rows), "--------");
  Select(Waypoints(), {0});
  EXPECT_EQ(enabled(rows), "++------");
  Select(RoutePoints(), {1});
  EXPECT_EQ(enabled(rows), "++++----");
  Select(Logs(), {0});
  EXPECT_EQ(enabled(rows), "++--+--+");
  Select(LogPoints(), {0});
  EXPECT_EQ(enabled(rows), "++------");
  Select(LogPoints(), {1});
  EXPECT_EQ(enabled(rows), "++----+-");
}

// ---- New waypoints

TEST_F(RecordEditsTest, ANewWaypointBeginsWhereTheChosenOneLies) {
  Waypoints().setCurrentIndex(Waypoints().model()->index(1, Name));
  plans.Next("ClipProAtlas", [](QDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "新しいウェイポイント");
    EXPECT_EQ(dialog.findChild<QLineEdit*>("ClipLat")->text(), "36");
    EXPECT_EQ(FocusOf(dialog), "ClipIdent");
    walrim::Type(dialog, "new");
    TabTo(dialog, "Ok");
    walrim::Press(dialog, Qt::Key_Return);
  });
  QTest::keyClick(window.get(), Qt::Key_N, Qt::ControlModifier);
  EXPECT_EQ(Idents(), "ABCNEW");
  EXPECT_EQ(Data().Waypoints()[3].lon_deg, 140);
  EXPECT_EQ(Texts("GpsNum"), "4|1|2");
  EXPECT_TRUE(Get<QAction>("Undo").text().startsWith("元に戻す：追加（Waypoint 1件）"));
}

TEST_F(RecordEditsTest, ANewWaypointOfNowhereBeginsWithoutAPosition) {
  Waypoints().setCurrentIndex({});
  plans.Next("ClipProAtlas", [](QDialog& dialog) {
    EXPECT_EQ(dialog.findChild<QLineEdit*>("ClipLat")->text(), "");
    EXPECT_EQ(FocusOf(dialog), "ClipLat");
    dialog.reject();
  });
  Trigger("NewWaypoint");
  EXPECT_EQ(Idents(), "ABC");
}

}  // namespace
}  // namespace walrim
