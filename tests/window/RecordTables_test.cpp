// The records on screen, used as a user does: by clicks on titles and rows, and by keys.
#include "window/RecordTables.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QLabel>
#include <QScrollBar>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "data/support.h"
#include "geo/GeneralLib.h"

namespace walrim {
namespace {

constexpr const char* Hint = "データはありません．情報取得のあと，ダウンロードを押すか，ファイルを取り込んでください．";

WaypointRecord Summit(std::string_view ident, std::string_view alt, std::string_view cmnt = {}) {
  WaypointRecord record = Waypoint(ident);
  record[WaypointField::alt] = alt;
  record[WaypointField::cmnt] = cmnt;
  record[WaypointField::smbl] = "18";
  return record;
}

class RecordTablesTest : public testing::Test {
 protected:
  RecordTablesTest() {
    QGuiApplication::clipboard()->setText("untouched");
    tables_.resize(1000, 500);
    tables_.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&tables_));
  }

  void Refresh() { tables_.Refresh(settings_); }
  QTabWidget& Tabs() { return *tables_.findChild<QTabWidget*>("Records"); }
  QTableView& Table(const char* name) {
    auto* table = tables_.findChild<QTableView*>(name);
    if (table == nullptr) throw std::runtime_error(std::string("no table ") + name);
    return *table;
  }
  [[nodiscard]] bool Shows(const char* name) const {
    const auto* table = tables_.findChild<QTableView*>(name);
    return table != nullptr && table->isVisible();
  }
  void OpenPage(DataKind kind) { Tabs().setCurrentIndex(static_cast<int>(IndexOf(kind))); }

  static std::string Cell(const QTableView& table, int row, const QString& title, int role = Qt::DisplayRole) {
    return table.model()->index(row, ColumnOf(table, title)).data(role).toString().toStdString();
  }
  static std::vector<std::string> Column(const QTableView& table, const QString& title) {
    std::vector<std::string> texts;
    for (int row = 0; row < table.model()->rowCount(); ++row)
      texts.push_back(Cell(table, row, title));
    return texts;
  }
  static int ColumnOf(const QTableView& table, const QString& title) {
    for (int column = 0; column < table.model()->columnCount(); ++column) {
      if (table.model()->headerData(column, Qt::Horizontal).toString() == title) return column;
    }
    ADD_FAILURE() << "no column " << title.toStdString();
    return 0;
  }
  static void ClickTitle(const QTableView& table, const QString& title) {
    const QHeaderView& titles = *table.horizontalHeader();
    const int column = ColumnOf(table, title);
    const QPoint at(titles.sectionViewportPosition(column) + titles.sectionSize(column) / 2, titles.height() / 2);
    QTest::mouseClick(titles.viewport(), Qt::LeftButton, {}, at);
  }
  static void ClickRow(const QTableView& table, int row, Qt::KeyboardModifiers keys = {}) {
    const QPoint at(20, table.rowViewportPosition(row) + table.rowHeight(row) / 2);
    QTest::mouseClick(table.viewport(), Qt::LeftButton, keys, at);
  }
  static std::set<int> ChosenRows(const QTableView& table) {
    std::set<int> rows;
    for (const QModelIndex& index : table.selectionModel()->selectedRows())
      rows.insert(index.row());
    return rows;
  }
  static std::string Copied(QTableView& table) {
    QTest::keyClick(&table, Qt::Key_C, Qt::ControlModifier);
    return QGuiApplication::clipboard()->text().toStdString();
  }
  std::string Line(std::string_view tag, int record, int point = 0) {
    return StandardWriter(data_, Names(), settings_).BuildDataLine(tag, record, point) + "\r\n";
  }

  void AddWaypoints(const std::vector<WaypointRecord>& records) {
    for (const WaypointRecord& record : records)
      ASSERT_NE(data_.AddWaypoint(record), AddRejected);
  }
  void AddRoute(std::string_view comment, const std::vector<std::string>& idents, std::string_view number) {
    const int route = data_.AddRouteHeader(Route(comment, std::to_string(idents.size()), number));
    for (std::size_t point = 0; point < idents.size(); ++point) {
      RoutePoint record;
      record.waypoint = Waypoint(idents[point]);
      record.waypoint[WaypointField::smbl] = "18";
      record.waypoint[WaypointField::dspl] = "1";
      ASSERT_NE(data_.AddRoutePoint(record, route, static_cast<int>(point)), AddRejected);
    }
  }
  void AddLog(std::string_view name, const std::vector<TrackPointEntry>& points) {
    const int log = data_.AddTrackHeader(Track(name, std::to_string(points.size())));
    for (std::size_t point = 0; point < points.size(); ++point)
      ASSERT_NE(data_.AddTrackPoint(points[point], log, static_cast<int>(point)), AddRejected);
  }
  void AddTwoRoutes() {
    AddRoute("NORTH", {"N1", "N2", "N3"}, "4");
    AddRoute("SOUTH", {"S1", "S2"}, "7");
  }
  void AddTwoLogs() {
    AddLog("DAY ONE", {PointAt(35, 139, 1000, true), PointAt(35.01, 139, 1060), PointAt(35.02, 139, 4294967295.0)});
    AddLog("DAY TWO", {PointAt(36, 140, 90000, true), PointAt(36, 140.01, 90060)});
  }

  InternalData data_;
  TextSettings settings_;
  RecordTables tables_{data_, Names()};
};

using Texts = std::vector<std::string>;

TEST_F(RecordTablesTest, AnEmptyKindShowsTheHintInPlaceOfItsTables) {
  Refresh();
  for (const DataKind kind : AllDataKinds) {
    OpenPage(kind);
    const auto* shown = Tabs().currentWidget()->findChild<QLabel*>();
    ASSERT_NE(shown, nullptr);
    EXPECT_TRUE(shown->isVisible());
    EXPECT_EQ(shown->text().toStdString(), Hint);
  }
  EXPECT_EQ(Tabs().tabText(0), "ウェイポイント");
  EXPECT_EQ(Tabs().tabText(1), "ルート");
  EXPECT_EQ(Tabs().tabText(2), "トラックログ");
  EXPECT_FALSE(Shows("WaypointTable"));
}

TEST_F(RecordTablesTest, TabsCountWhatIsHeld) {
  AddWaypoints({Waypoint("A"), Waypoint("B")});
  AddTwoRoutes();
  AddTwoLogs();
  Refresh();
  EXPECT_EQ(Tabs().tabText(0), "ウェイポイント (2)");
  EXPECT_EQ(Tabs().tabText(1), "ルート (2)");
  EXPECT_EQ(Tabs().tabText(2), "トラックログ (2)");
  EXPECT_TRUE(Shows("WaypointTable"));
}

TEST_F(RecordTablesTest, DeletedDataBringTheHintBack) {
  AddWaypoints({Waypoint("A")});
  Refresh();
  data_.Clear(DataKind::Waypoint);
  Refresh();
  EXPECT_EQ(Tabs().tabText(0), "ウェイポイント");
  EXPECT_FALSE(Shows("WaypointTable"));
}

TEST_F(RecordTablesTest, AWaypointShowsTheColumnsOfItsStandardLine) {
  WaypointRecord record = Summit("TAKAO", "599.15", "山頂, 茶屋");
  record[WaypointField::facility] = "  HUT ";
  record[WaypointField::city] = "八王子";
  record[WaypointField::addr] = "TAKAOMACHI";
  record[WaypointField::state] = "TO";
  record[WaypointField::cc] = "JP";
  record[WaypointField::cross_road] = "ROUTE 20";
  record[WaypointField::dspl] = "1";
  AddWaypoints({record});
  Refresh();
  const QTableView& table = Table("WaypointTable");
  EXPECT_EQ(Cell(table, 0, "番号"), "1");
  EXPECT_EQ(Cell(table, 0, "名前"), "TAKAO");
  EXPECT_EQ(Cell(table, 0, "緯度"), "35.5");
  EXPECT_EQ(Cell(table, 0, "経度"), "135.25");
  EXPECT_EQ(Cell(table, 0, "コメント"), "山頂, 茶屋");
  EXPECT_EQ(Cell(table, 0, "シンボル"), "waypoint dot");
  EXPECT_EQ(Cell(table, 0, "シンボル", Qt::ToolTipRole), "コード 18");
  EXPECT_EQ(Cell(table, 0, "表示"), "by itself");
  EXPECT_EQ(Cell(table, 0, "高度 m"), "599.15");
  EXPECT_EQ(Cell(table, 0, "施設"), "HUT");
  EXPECT_EQ(Cell(table, 0, "市"), "八王子");
  EXPECT_EQ(Cell(table, 0, "住所"), "TAKAOMACHI");
  EXPECT_EQ(Cell(table, 0, "州"), "TO");
  EXPECT_EQ(Cell(table, 0, "国"), "JP");
  EXPECT_EQ(Cell(table, 0, "交差点"), "ROUTE 20");
}

TEST_F(RecordTablesTest, TextsThatLookLikeAWrappingStayWhole) {
  AddWaypoints({Summit("A", "1", "=\"X\""), Summit("B", "1", "\""), Summit("C", "1", "TAB\tHERE\nAND THERE")});
  Refresh();
  EXPECT_EQ(Column(Table("WaypointTable"), "コメント"), (Texts{"=\"X\"", "\"", "TAB HERE AND THERE"}));
}

TEST_F(RecordTablesTest, WhatNobodyKnowsIsEmpty) {
  AddWaypoints({Summit("A", "1E+25")});
  AddTwoLogs();
  Refresh();
  EXPECT_EQ(Cell(Table("WaypointTable"), 0, "高度 m"), "");
  const QTableView& points = Table("TrackPointTable");
  EXPECT_EQ(Cell(points, 0, "高度 m"), "");
  EXPECT_EQ(Cell(points, 0, "水深 m"), "");
  EXPECT_EQ(Cell(points, 0, "日時"), "1989/12/31 09:16:40");
  EXPECT_EQ(Cell(points, 2, "日時"), "");
}

TEST_F(RecordTablesTest, ACodeWithoutANameShowsItself) {
  WaypointRecord record = Waypoint("A");
  record[WaypointField::smbl] = "77";
  AddWaypoints({record});
  Refresh();
  EXPECT_EQ(Cell(Table("WaypointTable"), 0, "シンボル"), "77");
}

TEST_F(RecordTablesTest, RoutePointsShowTheirWaypointsWithTheNamesOfDisplayModes) {
  AddTwoRoutes();
  Refresh();
  const QTableView& points = Table("RoutePointTable");
  EXPECT_EQ(Column(points, "番号"), (Texts{"4-1", "4-2", "4-3", "7-1", "7-2"}));
  EXPECT_EQ(Column(points, "名前"), (Texts{"N1", "N2", "N3", "S1", "S2"}));
  EXPECT_EQ(Cell(points, 0, "シンボル"), "waypoint dot");
  EXPECT_EQ(Cell(points, 0, "表示"), "by itself");
}

TEST_F(RecordTablesTest, PointsOfARouteFromAReceiverAreNumberedFromOneToo) {
  AddRoute("R", {"UNUSED", "P1", "P2"}, "1");
  data_.routes.first_point[1] = 1;
  data_.routes.RoutePointCount[1] = 2;
  Refresh();
  EXPECT_EQ(Column(Table("RoutePointTable"), "番号"), (Texts{"1-1", "1-2"}));
  EXPECT_EQ(Column(Table("RoutePointTable"), "名前"), (Texts{"P1", "P2"}));
}

TEST_F(RecordTablesTest, ALogShowsItsTimesAndItsLength) {
  AddTwoLogs();
  Refresh();
  const QTableView& logs = Table("TrackTable");
  EXPECT_EQ(Column(logs, "番号"), (Texts{"1", "2"}));
  EXPECT_EQ(Column(logs, "名前"), (Texts{"DAY ONE", "DAY TWO"}));
  EXPECT_EQ(Column(logs, "点数"), (Texts{"3", "2"}));
  EXPECT_EQ(Cell(logs, 0, "開始"), "1989/12/31 09:16:40");
  EXPECT_EQ(Cell(logs, 0, "終了"), "1989/12/31 09:17:40");
  // Two hundredths of a degree along a meridian of the sphere: 2 * 6377.397155 * pi / 18000.
  EXPECT_EQ(Cell(logs, 0, "距離 km"), "2.23");
  EXPECT_EQ(Cell(logs, 0, "表示"), "○");
  const QTableView& points = Table("TrackPointTable");
  EXPECT_EQ(Column(points, "番号"), (Texts{"1-1", "1-2", "1-3", "2-1", "2-2"}));
  EXPECT_EQ(Column(points, "新区間"), (Texts{"○", "", "", "○", ""}));
  EXPECT_EQ(Cell(points, 0, "区間 m"), "0");
  EXPECT_EQ(Cell(points, 1, "区間 m"), "1113.1");
}

TEST_F(RecordTablesTest, PointsBeforeTheFirstLogAreShownAsLogZero) {
  data_.track_points[0] = PointAt(35, 139, 1000, false);
  data_.tracks.TrackPointCount[0] = 1;
  Refresh();
  EXPECT_EQ(Column(Table("TrackTable"), "番号"), (Texts{"0"}));
  EXPECT_EQ(Column(Table("TrackPointTable"), "番号"), (Texts{"0-1"}));
}

TEST_F(RecordTablesTest, NewSettingsShowTheSameRowsInTheOtherNotationAndDatum) {
  AddWaypoints({Waypoint("A"), Waypoint("B")});
  AddTwoLogs();
  Refresh();
  QTableView& table = Table("WaypointTable");
  ClickTitle(table, "名前");
  ClickTitle(table, "名前");
  ClickRow(table, 1);
  settings_ = {"DMS", "Tokyo", 0};
  Refresh();
  const std::string line = Line("WPT", 1);
  const std::string lat(SplitColumns(line).at(4));
  EXPECT_NE(lat, "35.3");
  EXPECT_EQ(Cell(table, 0, "緯度"), lat);
  EXPECT_EQ(Column(table, "名前"), (Texts{"B", "A"}));
  EXPECT_EQ(ChosenRows(table), (std::set<int>{1}));
  EXPECT_EQ(Cell(Table("TrackPointTable"), 0, "日時"), "1989/12/31 00:16:40");
  EXPECT_EQ(Cell(Table("TrackTable"), 0, "開始"), "1989/12/31 00:16:40");
}

TEST_F(RecordTablesTest, RowsComeUnsortedAndATitleSortsThemUpAndDown) {
  AddWaypoints({Summit("A", "900"), Summit("B", "1E+25"), Summit("C", "-5"), Summit("D", "1250"), Summit("E", "900")});
  Refresh();
  const QTableView& table = Table("WaypointTable");
  EXPECT_EQ(Column(table, "名前"), (Texts{"A", "B", "C", "D", "E"}));
  ClickTitle(table, "高度 m");
  EXPECT_EQ(Column(table, "名前"), (Texts{"C", "A", "E", "D", "B"}));
  ClickTitle(table, "高度 m");
  EXPECT_EQ(Column(table, "名前"), (Texts{"D", "A", "E", "C", "B"}));
}

TEST_F(RecordTablesTest, TextsSortAsPeopleReadThem) {
  AddWaypoints({Waypoint("W10"), Waypoint("W9"), Waypoint("W")});
  Refresh();
  const QTableView& table = Table("WaypointTable");
  ClickTitle(table, "名前");
  EXPECT_EQ(Column(table, "名前"), (Texts{"W", "W9", "W10"}));
}

TEST_F(RecordTablesTest, PositionsSortByDegreesInEveryNotation) {
  settings_.degree_type = "MPS";
  AddWaypoints({Waypoint("A", "35.5", "139"), Waypoint("B", "-4", "10"), Waypoint("C", "9.25", "139.5")});
  AddLog("L", {PointAt(35, 139), PointAt(-4, 10), PointAt(9, 100)});
  Refresh();
  ClickTitle(Table("WaypointTable"), "緯度");
  EXPECT_EQ(Column(Table("WaypointTable"), "名前"), (Texts{"B", "C", "A"}));
  OpenPage(DataKind::TrackLog);
  ClickTitle(Table("TrackPointTable"), "経度");
  EXPECT_EQ(Column(Table("TrackPointTable"), "番号"), (Texts{"1-2", "1-3", "1-1"}));
}

TEST_F(RecordTablesTest, EveryColumnOfTrackPointsSortsAsItsCellsRead) {
  AddLog("L", {PointAt(36, 139, 5000), PointAt(35, 141, 4294967295.0, true), PointAt(35.5, 140, 90)});
  data_.track_points[0].alt_m = 90;
  data_.track_points[1].alt_m = 1000;
  data_.track_points[0].dpth_m = 3;
  data_.track_points[2].dpth_m = -1;
  Refresh();
  OpenPage(DataKind::TrackLog);
  const QTableView& table = Table("TrackPointTable");
  const std::vector<std::pair<const char*, Texts>> expected{
      {"日時", {"1-3", "1-1", "1-2"}},   {"緯度", {"1-2", "1-3", "1-1"}},   {"経度", {"1-1", "1-3", "1-2"}},
      {"高度 m", {"1-1", "1-2", "1-3"}}, {"水深 m", {"1-3", "1-1", "1-2"}}, {"区間 m", {"1-1", "1-3", "1-2"}},
      {"新区間", {"1-2", "1-1", "1-3"}}, {"番号", {"1-1", "1-2", "1-3"}}};
  for (const auto& [title, order] : expected) {
    ClickTitle(table, title);
    EXPECT_EQ(Column(table, "番号"), order) << title;
  }
}

TEST_F(RecordTablesTest, TrackPointsWithoutAHeightComeLastInEitherOrder) {
  AddLog("L", {PointAt(36, 139), PointAt(35, 141), PointAt(35.5, 140)});
  data_.track_points[1].alt_m = 90;
  data_.track_points[2].alt_m = 1000;
  Refresh();
  OpenPage(DataKind::TrackLog);
  const QTableView& table = Table("TrackPointTable");
  ClickTitle(table, "高度 m");
  EXPECT_EQ(Column(table, "番号"), (Texts{"1-2", "1-3", "1-1"}));
  ClickTitle(table, "高度 m");
  EXPECT_EQ(Column(table, "番号"), (Texts{"1-3", "1-2", "1-1"}));
}

TEST_F(RecordTablesTest, ChangedRecordsInTheSameRowsShowAndSortAnew) {
  AddWaypoints({Summit("A", "1")});
  AddTwoLogs();
  Refresh();
  const QTableView& logs = Table("TrackTable");
  OpenPage(DataKind::TrackLog);
  ClickTitle(logs, "距離 km");
  EXPECT_EQ(Column(logs, "名前"), (Texts{"DAY TWO", "DAY ONE"}));
  EXPECT_EQ(Cell(Table("WaypointTable"), 0, "名前"), "A");
  ASSERT_EQ(data_.AddWaypoint(Waypoint("B"), 1), 1);
  ASSERT_EQ(data_.AddTrackPoint(PointAt(37, 140, 90060), 2, 1), 1);
  Refresh();
  EXPECT_EQ(Cell(Table("WaypointTable"), 0, "名前"), "B");
  EXPECT_EQ(Column(logs, "名前"), (Texts{"DAY ONE", "DAY TWO"}));
  EXPECT_EQ(Cell(logs, 1, "距離 km"), "111.31");
}

TEST_F(RecordTablesTest, PointNumbersSortByRouteAndThenByPoint) {
  AddRoute("R", std::vector<std::string>(11, "P"), "10");
  AddRoute("S", {"P"}, "9");
  Refresh();
  OpenPage(DataKind::Route);
  const QTableView& table = Table("RoutePointTable");
  ClickTitle(table, "番号");
  const Texts numbers = Column(table, "番号");
  EXPECT_EQ(numbers.front(), "9-1");
  EXPECT_EQ(numbers[2], "10-2");
  EXPECT_EQ(numbers.back(), "10-11");
}

TEST_F(RecordTablesTest, ASortKeepsTheChosenRecords) {
  AddWaypoints({Summit("A", "3"), Summit("B", "2"), Summit("C", "1")});
  Refresh();
  const QTableView& table = Table("WaypointTable");
  ClickRow(table, 0);
  ClickRow(table, 1, Qt::ControlModifier);
  ClickTitle(table, "高度 m");
  EXPECT_EQ(Column(table, "名前"), (Texts{"C", "B", "A"}));
  EXPECT_EQ(ChosenRows(table), (std::set<int>{1, 2}));
}

TEST_F(RecordTablesTest, AChosenRouteShowsItsPointsAndNoneShowsAll) {
  AddTwoRoutes();
  Refresh();
  OpenPage(DataKind::Route);
  QTableView& routes = Table("RouteTable");
  const QTableView& points = Table("RoutePointTable");
  EXPECT_EQ(Column(routes, "番号"), (Texts{"4", "7"}));
  EXPECT_EQ(Column(routes, "コメント"), (Texts{"NORTH", "SOUTH"}));
  EXPECT_EQ(Column(routes, "点数"), (Texts{"3", "2"}));
  ClickRow(routes, 1);
  EXPECT_EQ(Column(points, "名前"), (Texts{"S1", "S2"}));
  ClickRow(routes, 0, Qt::ControlModifier);
  EXPECT_EQ(points.model()->rowCount(), 5);
  ClickRow(routes, 1, Qt::ControlModifier);
  EXPECT_EQ(Column(points, "名前"), (Texts{"N1", "N2", "N3"}));
  ClickRow(routes, 0, Qt::ControlModifier);
  EXPECT_EQ(points.model()->rowCount(), 5);
}

TEST_F(RecordTablesTest, AChosenLogThatIsGoneLetsAllPointsBeSeen) {
  AddTwoLogs();
  Refresh();
  OpenPage(DataKind::TrackLog);
  ClickRow(Table("TrackTable"), 1);
  EXPECT_EQ(Table("TrackPointTable").model()->rowCount(), 2);
  data_.Clear(DataKind::TrackLog);
  AddLog("ALONE", {PointAt(35, 139, 1000), PointAt(35, 139, 1001), PointAt(35, 139, 1002)});
  Refresh();
  EXPECT_EQ(Column(Table("TrackPointTable"), "番号"), (Texts{"1-1", "1-2", "1-3"}));
}

TEST_F(RecordTablesTest, TheCopyKeyCopiesTheChosenRowsAsStandardLinesInTheShownOrder) {
  AddWaypoints({Summit("A", "3"), Summit("B", "2"), Summit("C", "1")});
  Refresh();
  QTableView& table = Table("WaypointTable");
  EXPECT_EQ(Copied(table), "untouched");
  ClickTitle(table, "高度 m");
  ClickRow(table, 2);
  ClickRow(table, 0, Qt::ControlModifier);
  EXPECT_EQ(Copied(table), Line("WPT", 3) + Line("WPT", 1));
}

TEST_F(RecordTablesTest, CopiedHeadersBringTheirPointsAndTitlesWhenWanted) {
  AddTwoRoutes();
  AddTwoLogs();
  Refresh();
  OpenPage(DataKind::Route);
  ClickRow(Table("RouteTable"), 1);
  const std::string route = Line("RTH", 2) + Line("RTP", 2, 0) + Line("RTP", 2, 1);
  EXPECT_EQ(Copied(Table("RouteTable")), route);
  tables_.SetWithHeader(true);
  EXPECT_EQ(Copied(Table("RouteTable")), BuildHeaderLine("RTH") + "\r\n" + BuildHeaderLine("RTP") + "\r\n" + route);
  ClickRow(Table("RoutePointTable"), 1);
  EXPECT_EQ(Copied(Table("RoutePointTable")), BuildHeaderLine("RTP") + "\r\n" + Line("RTP", 2, 1));
  tables_.SetWithHeader(false);
  OpenPage(DataKind::TrackLog);
  ClickRow(Table("TrackTable"), 1);
  EXPECT_EQ(Copied(Table("TrackTable")), Line("TRH", 2) + Line("TRP", 2, 0) + Line("TRP", 2, 1));
  ClickRow(Table("TrackPointTable"), 0);
  EXPECT_EQ(Copied(Table("TrackPointTable")), Line("TRP", 2, 0));
}

TEST_F(RecordTablesTest, CopiedLinesReadBackAsTheSameRecords) {
  AddTwoRoutes();
  Refresh();
  OpenPage(DataKind::Route);
  QTableView& routes = Table("RouteTable");
  routes.setFocus();
  QTest::keyClick(&routes, Qt::Key_A, Qt::ControlModifier);
  InternalData other;
  StandardReader reader(other, settings_.utc_offset_hours);
  reader.ReadText(Copied(routes));
  EXPECT_EQ(reader.Summary().skipped, 0);
  EXPECT_EQ(Written(other), Written(data_));
}

TEST_F(RecordTablesTest, TheContextMenuOffersTheCopy) {
  AddWaypoints({Waypoint("A")});
  Refresh();
  QTableView& table = Table("WaypointTable");
  ASSERT_EQ(table.contextMenuPolicy(), Qt::ActionsContextMenu);
  ASSERT_EQ(table.actions().size(), 1);
  EXPECT_EQ(table.actions().front()->text(), "行をコピー");
  ClickRow(table, 0);
  table.actions().front()->trigger();
  EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), Line("WPT", 1));
}

TEST_F(RecordTablesTest, TheCopyKeyOfATableIsNotTakenByAShortcutAround) {
  AddWaypoints({Waypoint("A")});
  Refresh();
  QAction around;
  around.setShortcut(QKeySequence::Copy);
  int taken = 0;
  QObject::connect(&around, &QAction::triggered, [&taken] { ++taken; });
  tables_.addAction(&around);
  ClickRow(Table("WaypointTable"), 0);
  EXPECT_EQ(Copied(Table("WaypointTable")), Line("WPT", 1));
  EXPECT_EQ(taken, 0);
}

TEST_F(RecordTablesTest, KeysChooseRowsAndTheTabKeyLeaves) {
  AddTwoRoutes();
  Refresh();
  OpenPage(DataKind::Route);
  QTableView& routes = Table("RouteTable");
  QApplication::setActiveWindow(&tables_);
  ClickRow(routes, 0);
  ASSERT_TRUE(routes.hasFocus());
  QTest::keyClick(&routes, Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(ChosenRows(routes), (std::set<int>{0, 1}));
  QTest::keyClick(&routes, Qt::Key_Up);
  EXPECT_EQ(ChosenRows(routes), (std::set<int>{0}));
  QTest::keyClick(&routes, Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(ChosenRows(routes), (std::set<int>{0, 1}));
  QTest::keyClick(&routes, Qt::Key_Tab);
  EXPECT_FALSE(routes.hasFocus());
  EXPECT_TRUE(Table("RoutePointTable").hasFocus());
}

TEST_F(RecordTablesTest, AddedRowsKeepSelectionScrollAndWidths) {
  for (int i = 0; i < 200; ++i)
    AddWaypoints({Waypoint("W" + std::to_string(i))});
  Refresh();
  QTableView& table = Table("WaypointTable");
  ClickRow(table, 3);
  table.setColumnWidth(ColumnOf(table, "コメント"), 41);
  table.verticalScrollBar()->setValue(50);
  AddWaypoints({Summit("LONGER NAME THAN ANY BEFORE", "1", "and a comment far wider than 41 pixels")});
  Refresh();
  EXPECT_EQ(table.model()->rowCount(), 201);
  EXPECT_EQ(ChosenRows(table), (std::set<int>{3}));
  EXPECT_EQ(table.verticalScrollBar()->value(), 50);
  EXPECT_EQ(table.columnWidth(ColumnOf(table, "コメント")), 41);
}

TEST_F(RecordTablesTest, AddedRowsTakeTheirPlaceInASortedTable) {
  AddWaypoints({Summit("A", "3"), Summit("B", "1")});
  Refresh();
  const QTableView& table = Table("WaypointTable");
  ClickTitle(table, "高度 m");
  ClickRow(table, 1);
  AddWaypoints({Summit("C", "2")});
  Refresh();
  EXPECT_EQ(Column(table, "名前"), (Texts{"B", "C", "A"}));
  EXPECT_EQ(ChosenRows(table), (std::set<int>{2}));
}

TEST_F(RecordTablesTest, FewerRowsKeepTheSortAndTheWidths) {
  AddWaypoints({Summit("A", "3"), Summit("B", "1"), Summit("C", "2")});
  Refresh();
  const QTableView& table = Table("WaypointTable");
  ClickTitle(table, "高度 m");
  const int width = table.columnWidth(ColumnOf(table, "緯度"));
  data_.Clear(DataKind::Waypoint);
  AddWaypoints({Summit("D", "9"), Summit("E", "8")});
  Refresh();
  EXPECT_EQ(Column(table, "名前"), (Texts{"E", "D"}));
  EXPECT_EQ(table.columnWidth(ColumnOf(table, "緯度")), width);
}

TEST_F(RecordTablesTest, ColumnsAreWideEnoughForTheirCellsAndTitles) {
  AddWaypoints({Waypoint("A", "35.6251234567891", "139.243611111111")});
  Refresh();
  const QTableView& table = Table("WaypointTable");
  for (const char* title : {"緯度", "経度", "番号", "高度 m"}) {
    const int column = ColumnOf(table, title);
    const QString text = QString::fromStdString(Cell(table, 0, title));
    EXPECT_GT(table.columnWidth(column), table.fontMetrics().horizontalAdvance(text)) << title;
    EXPECT_GE(table.columnWidth(column), table.horizontalHeader()->sectionSizeHint(column)) << title;
  }
}

TEST_F(RecordTablesTest, NumbersStandAtTheRightAndNamesAtTheLeft) {
  AddWaypoints({Waypoint("A")});
  Refresh();
  const QTableView& table = Table("WaypointTable");
  const auto alignment = [&table](const char* title) {
    return table.model()->index(0, ColumnOf(table, title)).data(Qt::TextAlignmentRole).toInt();
  };
  for (const char* title : {"番号", "緯度", "経度", "高度 m"})
    EXPECT_TRUE(alignment(title) & Qt::AlignRight) << title;
  EXPECT_TRUE(alignment("名前") & Qt::AlignLeft);
}

TEST_F(RecordTablesTest, TablesAreNamedForAssistiveTools) {
  AddWaypoints({Summit("A", "3")});
  AddTwoRoutes();
  AddTwoLogs();
  Refresh();
  for (const char* name : {"WaypointTable", "RouteTable", "RoutePointTable", "TrackTable", "TrackPointTable"})
    EXPECT_EQ(Table(name).accessibleName(), name);
  EXPECT_EQ(Tabs().accessibleName(), "Records");
}

TEST_F(RecordTablesTest, DataThatGoWhileTheTablesAreUsedLeaveEmptyRows) {
  AddWaypoints({Summit("A", "3"), Summit("B", "2")});
  AddTwoRoutes();
  AddTwoLogs();
  Refresh();
  for (const DataKind kind : AllDataKinds)
    data_.Clear(kind);
  // The points first: choosing a route that is gone would show them anew.
  for (const char* name : {"WaypointTable", "RoutePointTable", "RouteTable", "TrackPointTable", "TrackTable"}) {
    QTableView& table = Table(name);
    const int rows = table.model()->rowCount();
    EXPECT_GT(rows, 0) << name;
    for (int column = 0; column < table.model()->columnCount(); ++column) {
      EXPECT_EQ(table.model()->index(0, column).data().toString(), "") << name;
      table.sortByColumn(column, Qt::DescendingOrder);
    }
    EXPECT_EQ(table.model()->rowCount(), rows) << name;
    table.selectAll();
    EXPECT_EQ(Copied(table), "untouched") << name;
    EXPECT_FALSE(table.grab().isNull()) << name;
  }
}

TEST_F(RecordTablesTest, CountersThatPointOutOfTheStoresAreSurvived) {
  AddTwoRoutes();
  AddTwoLogs();
  Refresh();
  data_.routes.RouteCount = 500;
  data_.routes.RoutePointCount.fill(30000);
  data_.routes.first_point.fill(1);
  data_.tracks.TrackCount = 1 << 20;
  data_.tracks.TrackPointCount.fill(1 << 30);
  data_.tracks.TrackStart.fill(MaxTrackPoints - 3);
  data_.tracks.TrackStart[2] = -7;
  data_.WaypointCount = 100000;
  Refresh();
  EXPECT_EQ(Table("WaypointTable").model()->rowCount(), MaxWaypoints);
  EXPECT_EQ(Table("RouteTable").model()->rowCount(), MaxRoutes);
  EXPECT_EQ(Table("RoutePointTable").model()->rowCount(), MaxRoutes * (MaxRoutePoints - 1));
  EXPECT_EQ(Table("TrackTable").model()->rowCount(), MaxTrackLogs + 1);
  for (const char* name : {"WaypointTable", "RouteTable", "RoutePointTable", "TrackTable", "TrackPointTable"}) {
    Table(name).sortByColumn(2, Qt::AscendingOrder);
    EXPECT_FALSE(Table(name).grab().isNull()) << name;
  }
}

TEST_F(RecordTablesTest, AStoreFullOfTrackPointsIsShownWhole) {
  std::vector<TrackPointEntry> points;
  points.reserve(MaxTrackPoints);
  for (int i = 0; i < MaxTrackPoints; ++i)
    points.push_back(PointAt(35 + i * 1e-5, 139, 100000.0 - i));
  AddLog("FULL", points);
  Refresh();
  OpenPage(DataKind::TrackLog);
  QTableView& table = Table("TrackPointTable");
  ASSERT_EQ(table.model()->rowCount(), MaxTrackPoints);
  EXPECT_EQ(Cell(table, MaxTrackPoints - 1, "番号"), "1-30000");
  ClickTitle(table, "日時");
  EXPECT_EQ(Cell(table, 0, "番号"), "1-30000");
  EXPECT_EQ(table.rowHeight(0), table.rowHeight(MaxTrackPoints - 1));
  table.setFocus();
  QTest::keyClick(&table, Qt::Key_A, Qt::ControlModifier);
  const std::string copied = Copied(table);
  EXPECT_EQ(std::count(copied.begin(), copied.end(), '\n'), MaxTrackPoints);
}

}  // namespace
}  // namespace walrim
