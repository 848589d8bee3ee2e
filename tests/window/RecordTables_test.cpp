// The records on screen, used as a user does: by clicks on titles and rows, and by keys.
#include "window/RecordTables.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
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

#include "window/Messages.h"

namespace walrim {
namespace {

constexpr std::string_view Hint = window_messages::NoRecords;

Waypoint Place(std::string_view ident, double lat_deg = 35.5, double lon_deg = 135.25) {
  Waypoint waypoint;
  waypoint.ident = ident;
  waypoint.lat_deg = lat_deg;
  waypoint.lon_deg = lon_deg;
  return waypoint;
}

Waypoint Summit(std::string_view ident, std::optional<float> alt_m, std::string_view cmnt = {}) {
  Waypoint waypoint = Place(ident);
  waypoint.alt_m = alt_m;
  waypoint.cmnt = cmnt;
  return waypoint;
}

TrackPoint PointAt(double lat_deg, double lon_deg, std::optional<GarminSeconds> time = {}, bool new_trk = false) {
  TrackPoint point;
  point.lat_deg = lat_deg;
  point.lon_deg = lon_deg;
  point.time = time;
  point.new_trk = new_trk;
  return point;
}

TrackPoint PointWith(TrackPoint point, std::optional<float> alt_m, std::optional<float> dpth_m = {}) {
  point.alt_m = alt_m;
  point.dpth_m = dpth_m;
  return point;
}

class RecordTablesTest : public testing::Test {
 protected:
  RecordTablesTest() {
    QGuiApplication::clipboard()->setText("untouched");
    tables_.resize(1000, 500);
    tables_.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&tables_));
  }

  void Refresh() { tables_.Refresh(form_); }
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
      const QString shown = table.model()->headerData(column, Qt::Horizontal).toString();
      if (shown.section(QStringLiteral("（"), 0, 0) == title) return column;
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
  /// The standard line of a record with what else its writing needs.
  template <typename... Record>
  std::string Line(const Record&... record) {
    std::string line;
    StandardLineWriter(form_.notation, form_.datum, form_.utc_offset_hours).Append(line, record...);
    return line + "\r\n";
  }
  std::string WaypointLine(std::size_t number) { return Line(data_.Waypoints().at(number - 1)); }

  void AddWaypoints(const std::vector<Waypoint>& waypoints) {
    for (const Waypoint& waypoint : waypoints)
      ASSERT_EQ(data_.Add(waypoint), AddResult::Stored);
  }
  void AddRoute(std::string_view comment, const std::vector<std::string>& idents, std::uint8_t number) {
    Route route;
    route.nmbr = number;
    route.cmnt = comment;
    ASSERT_EQ(data_.Begin(route), AddResult::Stored);
    for (const std::string& ident : idents) {
      RoutePoint point;
      point.waypoint = Place(ident);
      point.waypoint.dspl = 1;
      ASSERT_EQ(data_.Add(point), AddResult::Stored);
    }
  }
  void AddLog(std::string_view name, const std::vector<TrackPoint>& points) {
    TrackLog log;
    log.trk_ident = name;
    ASSERT_EQ(data_.Begin(log), AddResult::Stored);
    for (const TrackPoint& point : points)
      ASSERT_EQ(data_.Add(point), AddResult::Stored);
  }
  void AddTwoRoutes() {
    AddRoute("NORTH", {"N1", "N2", "N3"}, 4);
    AddRoute("SOUTH", {"S1", "S2"}, 7);
  }
  void AddTwoLogs() {
    AddLog("DAY ONE", {PointAt(35, 139, 1000, true), PointAt(35.01, 139, 1060), PointAt(35.02, 139)});
    AddLog("DAY TWO", {PointAt(36, 140, 90000, true), PointAt(36, 140.01, 90060)});
  }

  DataSet data_;
  ShownForm form_;
  RecordTables tables_{data_};
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
  AddWaypoints({Place("A"), Place("B")});
  AddTwoRoutes();
  AddTwoLogs();
  Refresh();
  EXPECT_EQ(Tabs().tabText(0), "ウェイポイント (2)");
  EXPECT_EQ(Tabs().tabText(1), "ルート (2)");
  EXPECT_EQ(Tabs().tabText(2), "トラックログ (2)");
  EXPECT_TRUE(Shows("WaypointTable"));
}

TEST_F(RecordTablesTest, DeletedDataBringTheHintBack) {
  AddWaypoints({Place("A")});
  Refresh();
  data_.Clear(DataKind::Waypoint);
  Refresh();
  EXPECT_EQ(Tabs().tabText(0), "ウェイポイント");
  EXPECT_FALSE(Shows("WaypointTable"));
}

TEST_F(RecordTablesTest, AWaypointShowsTheColumnsOfItsStandardLine) {
  Waypoint takao = Summit("TAKAO", 599.15F, "山頂, 茶屋");
  takao.details.Set(&WaypointDetails::facility, "  HUT ");
  takao.details.Set(&WaypointDetails::city, "八王子");
  takao.details.Set(&WaypointDetails::addr, "TAKAOMACHI");
  takao.details.Set(&WaypointDetails::state, "TO");
  takao.details.Set(&WaypointDetails::country, "JP");
  takao.details.Set(&WaypointDetails::cross_road, "ROUTE 20");
  takao.dspl = 1;
  AddWaypoints({takao});
  Refresh();
  const QTableView& table = Table("WaypointTable");
  EXPECT_EQ(Cell(table, 0, "番号"), "1");
  EXPECT_EQ(Cell(table, 0, "名前"), "TAKAO");
  EXPECT_EQ(Cell(table, 0, "緯度"), "35.500000");
  EXPECT_EQ(Cell(table, 0, "緯度", Qt::EditRole), "35.5");
  EXPECT_EQ(Cell(table, 0, "経度"), "135.250000");
  EXPECT_EQ(Cell(table, 0, "コメント"), "山頂, 茶屋");
  EXPECT_EQ(Cell(table, 0, "シンボル"), "点");
  EXPECT_EQ(Cell(table, 0, "シンボル", Qt::ToolTipRole), "waypoint dot（コード 18）");
  const auto picture = [&table](const char* title) {
    return table.model()->index(0, ColumnOf(table, title)).data(Qt::DecorationRole);
  };
  EXPECT_FALSE(picture("シンボル").value<QIcon>().isNull());
  EXPECT_FALSE(picture("表示").isValid());
  EXPECT_FALSE(picture("名前").isValid());
  EXPECT_EQ(Cell(table, 0, "表示"), "シンボルだけ");
  EXPECT_EQ(Cell(table, 0, "高度 m"), "599");
  EXPECT_EQ(Cell(table, 0, "高度 m", Qt::EditRole), "599.15");
  EXPECT_EQ(Cell(table, 0, "施設"), "HUT");
  EXPECT_EQ(Cell(table, 0, "市"), "八王子");
  EXPECT_EQ(Cell(table, 0, "住所"), "TAKAOMACHI");
  EXPECT_EQ(Cell(table, 0, "州"), "TO");
  EXPECT_EQ(Cell(table, 0, "国"), "JP");
  EXPECT_EQ(Cell(table, 0, "交差点"), "ROUTE 20");
}

TEST_F(RecordTablesTest, TextsThatLookLikeAWrappingStayWhole) {
  AddWaypoints({Summit("A", 1, "=\"X\""), Summit("B", 1, "\""), Summit("C", 1, "TAB\tHERE\nAND THERE")});
  Refresh();
  EXPECT_EQ(Column(Table("WaypointTable"), "コメント"), (Texts{"=\"X\"", "\"", "TAB HERE AND THERE"}));
}

TEST_F(RecordTablesTest, WhatNobodyKnowsIsEmpty) {
  AddWaypoints({Summit("A", {})});
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
  Waypoint waypoint = Place("A");
  waypoint.smbl = 77;
  AddWaypoints({waypoint});
  Refresh();
  EXPECT_EQ(Cell(Table("WaypointTable"), 0, "シンボル"), "77");
}

TEST_F(RecordTablesTest, RoutePointsShowTheirWaypointsWithTheNamesOfDisplayModes) {
  AddTwoRoutes();
  Refresh();
  const QTableView& points = Table("RoutePointTable");
  EXPECT_EQ(Column(points, "番号"), (Texts{"4-1", "4-2", "4-3", "7-1", "7-2"}));
  EXPECT_EQ(Column(points, "名前"), (Texts{"N1", "N2", "N3", "S1", "S2"}));
  EXPECT_EQ(Cell(points, 0, "シンボル"), "点");
  EXPECT_EQ(Cell(points, 0, "表示"), "シンボルだけ");
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

TEST_F(RecordTablesTest, FiguresOfAWalkAreThoseOfItsPoints) {
  std::vector<TrackPoint> hill;
  for (int i = 0; i <= 4; ++i)
    hill.push_back(
        PointWith(PointAt(35 + 0.01 * i, 139, 1000 + 1800U * static_cast<GarminSeconds>(i), i == 0 || i == 3),
                  i < 3 ? 100.4F * static_cast<float>(i) : 0.0F));
  AddLog("HILL", hill);
  AddLog("FLAT", {PointAt(35, 139)});
  AddRoute("WAY", {"A", "B"}, 1);
  Refresh();
  const QTableView& logs = Table("TrackTable");
  EXPECT_EQ(Column(logs, "時間"), (Texts{"2:00:00", ""}));
  EXPECT_EQ(Column(logs, "距離 km"), (Texts{"3.34", "0.00"})) << "the gap between the segments is no way";
  EXPECT_EQ(Column(logs, "登り m"), (Texts{"201", ""}));
  EXPECT_EQ(Column(Table("RouteTable"), "距離 km"), (Texts{"0.00"}));
}

TEST_F(RecordTablesTest, ColumnsThatAreEmptyAndOnlyShowAreHidden) {
  Waypoint with_city = Place("A");
  with_city.details.Set(&WaypointDetails::city, "八王子");
  AddWaypoints({Place("B"), with_city});
  AddTwoLogs();
  Refresh();
  const auto hidden = [this](const char* table, std::initializer_list<const char*> titles) {
    std::string all;
    for (const char* title : titles)
      all += Table(table).isColumnHidden(ColumnOf(Table(table), title)) ? '-' : '+';
    return all;
  };
  EXPECT_EQ(hidden("WaypointTable", {"名前", "コメント", "高度 m", "施設", "市", "国"}), "+++-+-");
  EXPECT_EQ(hidden("TrackPointTable", {"日時", "高度 m", "水深 m", "新区間"}), "++-+");
  tables_.HideEmptyColumns()->setChecked(false);
  EXPECT_EQ(hidden("WaypointTable", {"施設", "国"}) + hidden("TrackPointTable", {"水深 m"}), "+++");
  tables_.HideEmptyColumns()->setChecked(true);
  const auto to_city = [](Waypoint waypoint, std::string_view city) {
    waypoint.details.Set(&WaypointDetails::city, std::string(city));
    waypoint.details.Set(&WaypointDetails::facility, "HUT");
    return waypoint;
  };
  ASSERT_TRUE(data_.Edit(Replacement(1, to_city(data_.Waypoints()[1], ""))));
  Refresh();
  EXPECT_EQ(hidden("WaypointTable", {"施設", "市"}), "+-");
}

class TheFilter : public RecordTablesTest {
 protected:
  void Filter(const QString& text) {
    tables_.OpenFilter();
    tables_.findChild<QLineEdit*>("FilterText")->setText(text);
  }
  std::string Counts() { return tables_.findChild<QLabel*>("FilterCounts")->text().toStdString(); }
};

TEST_F(TheFilter, LooksInAllColumnsWithoutCaseAndWidth) {
  Waypoint tent = Place("OZE", 36.9);
  tent.smbl = 151;
  AddWaypoints({Place("TAKAO"), Place("キャンプ 1"), tent, Summit("B", 599, "ＡＢＣ")});
  Refresh();
  EXPECT_EQ(tables_.findChild<QLineEdit*>("FilterText"), nullptr) << "it is made when it is wanted";
  const QTableView& table = Table("WaypointTable");
  const std::vector<std::pair<const char*, Texts>> rows{{"takao", {"TAKAO"}},
                                                        {"ｷｬﾝﾌﾟ", {"キャンプ 1", "OZE"}},
                                                        {"Campground", {"OZE"}},
                                                        {"abc", {"B"}},
                                                        {"36.9000", {"OZE"}},
                                                        {"599", {"B"}},
                                                        {" ｔａｋ ", {"TAKAO"}},
                                                        {"nothing", {}},
                                                        {"", {"TAKAO", "キャンプ 1", "OZE", "B"}}};
  for (const auto& [typed, shown] : rows) {
    Filter(QString::fromUtf8(typed));
    EXPECT_EQ(Column(table, "名前"), shown) << typed;
  }
  Filter("takao");
  EXPECT_EQ(Counts(), window_messages::Matching(1, 4));
  EXPECT_EQ(Tabs().tabText(0), "ウェイポイント (4)");
}

TEST_F(TheFilter, EscapeShowsAllRowsAgain) {
  AddWaypoints({Place("Q"), Place("B")});
  AddTwoRoutes();
  Refresh();
  Filter("Q");
  OpenPage(DataKind::Route);
  EXPECT_EQ(Counts(), window_messages::Matching(0, 2) + window_messages::MatchingPoints(0, 5));
  OpenPage(DataKind::Waypoint);
  QTest::keyClick(tables_.findChild<QLineEdit*>("FilterText"), Qt::Key_Escape);
  EXPECT_FALSE(tables_.findChild<QWidget*>("FilterBar")->isVisible());
  EXPECT_EQ(Column(Table("WaypointTable"), "名前"), (Texts{"Q", "B"}));
  EXPECT_EQ(Column(Table("RouteTable"), "コメント"), (Texts{"NORTH", "SOUTH"}));
}

TEST_F(TheFilter, HiddenRowsAreNotChosenAndKeepTheirChecks) {
  AddWaypoints({Place("Q1"), Place("B"), Place("Q2")});
  Refresh();
  QTableView& table = Table("WaypointTable");
  table.selectAll();
  Filter("Q");
  EXPECT_TRUE(tables_.Selection().places.empty()) << "what was chosen before is not chosen unseen";
  table.selectAll();
  EXPECT_EQ(tables_.Selection().Records(), (std::vector<std::size_t>{0, 2}));
  std::vector<std::pair<std::size_t, bool>> asked;
  QObject::connect(&tables_, &RecordTables::CheckChosen, [&](DataKind, const auto& indices, bool checked) {
    for (const std::size_t index : indices)
      asked.emplace_back(index, checked);
  });
  table.setFocus();
  QTest::keyClick(&table, Qt::Key_Space);
  EXPECT_EQ(asked, (std::vector<std::pair<std::size_t, bool>>{{0, false}, {2, false}}));
  asked.clear();
  for (QAction* action : table.actions()) {
    if (action->text() == "選択した行だけ") action->trigger();
  }
  EXPECT_EQ(asked,
            (std::vector<std::pair<std::size_t, bool>>{{0, false}, {1, false}, {2, false}, {0, true}, {2, true}}));
  tables_.Select({DataKind::Waypoint, false, {{1, {}}}});
  EXPECT_EQ(tables_.Selection().Records(), (std::vector<std::size_t>{1})) << "what is looked for is shown";
}

TEST_F(TheFilter, WhatComesLaterIsFilteredToo) {
  AddWaypoints({Place("Q1"), Place("B")});
  Refresh();
  Filter("q");
  AddWaypoints({Place("Q2"), Place("C")});
  Refresh();
  EXPECT_EQ(Column(Table("WaypointTable"), "名前"), (Texts{"Q1", "Q2"}));
  EXPECT_EQ(Counts(), window_messages::Matching(2, 4));
}

TEST_F(RecordTablesTest, PointsBeforeTheFirstLogAreShownAsLogZero) {
  TrackLog headless;
  headless.headless = true;
  ASSERT_EQ(data_.Begin(headless), AddResult::Stored);
  ASSERT_EQ(data_.Add(PointAt(35, 139, 1000)), AddResult::Stored);
  Refresh();
  EXPECT_EQ(Column(Table("TrackTable"), "番号"), (Texts{"0"}));
  EXPECT_EQ(Column(Table("TrackPointTable"), "番号"), (Texts{"0-1"}));
}

TEST_F(RecordTablesTest, NewSettingsShowTheSameRowsInTheOtherNotationAndDatum) {
  AddWaypoints({Place("A"), Place("B")});
  AddTwoLogs();
  Refresh();
  QTableView& table = Table("WaypointTable");
  ClickTitle(table, "名前");
  ClickTitle(table, "名前");
  ClickRow(table, 1);
  EXPECT_EQ(Cell(table, 0, "緯度"), "35.500000");
  form_ = {AngleNotation::DMS, Datum::Tokyo, 0};
  Refresh();
  EXPECT_TRUE(Cell(table, 0, "緯度").starts_with("35°29'")) << "some 11 seconds less: " << Cell(table, 0, "緯度");
  EXPECT_EQ(table.model()->headerData(ColumnOf(table, "緯度"), Qt::Horizontal).toString(), "緯度（Tokyo）");
  const std::string lat = Cell(table, 0, "緯度", Qt::EditRole);
  EXPECT_NE(WaypointLine(1).find("\t" + lat + "\t"), std::string::npos);
  EXPECT_EQ(Column(table, "名前"), (Texts{"B", "A"}));
  EXPECT_EQ(ChosenRows(table), (std::set<int>{1}));
  EXPECT_EQ(Cell(Table("TrackPointTable"), 0, "日時"), "1989/12/31 00:16:40");
  EXPECT_EQ(Cell(Table("TrackTable"), 0, "開始"), "1989/12/31 00:16:40");
}

TEST_F(RecordTablesTest, RowsComeUnsortedAndATitleSortsThemUpAndDown) {
  AddWaypoints({Summit("A", 900), Summit("B", {}), Summit("C", -5), Summit("D", 1250), Summit("E", 900)});
  Refresh();
  const QTableView& table = Table("WaypointTable");
  EXPECT_EQ(Column(table, "名前"), (Texts{"A", "B", "C", "D", "E"}));
  ClickTitle(table, "高度 m");
  EXPECT_EQ(Column(table, "名前"), (Texts{"C", "A", "E", "D", "B"}));
  ClickTitle(table, "高度 m");
  EXPECT_EQ(Column(table, "名前"), (Texts{"D", "A", "E", "C", "B"}));
}

TEST_F(RecordTablesTest, TextsSortAsPeopleReadThem) {
  AddWaypoints({Place("W10"), Place("W9"), Place("W")});
  Refresh();
  const QTableView& table = Table("WaypointTable");
  ClickTitle(table, "名前");
  EXPECT_EQ(Column(table, "名前"), (Texts{"W", "W9", "W10"}));
}

TEST_F(RecordTablesTest, PositionsSortByDegreesInEveryNotation) {
  form_.notation = AngleNotation::MPS;
  AddWaypoints({Place("A", 35.5, 139), Place("B", -4, 10), Place("C", 9.25, 139.5)});
  AddLog("L", {PointAt(35, 139), PointAt(-4, 10), PointAt(9, 100)});
  Refresh();
  ClickTitle(Table("WaypointTable"), "緯度");
  EXPECT_EQ(Column(Table("WaypointTable"), "名前"), (Texts{"B", "C", "A"}));
  OpenPage(DataKind::TrackLog);
  ClickTitle(Table("TrackPointTable"), "経度");
  EXPECT_EQ(Column(Table("TrackPointTable"), "番号"), (Texts{"1-2", "1-3", "1-1"}));
}

TEST_F(RecordTablesTest, EveryColumnOfTrackPointsSortsAsItsCellsRead) {
  AddLog("L", {PointWith(PointAt(36, 139, 5000), 90, 3), PointWith(PointAt(35, 141, {}, true), 1000),
               PointWith(PointAt(35.5, 140, 90), {}, -1)});
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
  AddLog("L", {PointAt(36, 139), PointWith(PointAt(35, 141), 90), PointWith(PointAt(35.5, 140), 1000)});
  Refresh();
  OpenPage(DataKind::TrackLog);
  const QTableView& table = Table("TrackPointTable");
  ClickTitle(table, "高度 m");
  EXPECT_EQ(Column(table, "番号"), (Texts{"1-2", "1-3", "1-1"}));
  ClickTitle(table, "高度 m");
  EXPECT_EQ(Column(table, "番号"), (Texts{"1-3", "1-2", "1-1"}));
}

TEST_F(RecordTablesTest, ChangedRecordsInTheSameRowsShowAndSortAnew) {
  AddWaypoints({Summit("A", 1)});
  AddTwoLogs();
  Refresh();
  const QTableView& logs = Table("TrackTable");
  OpenPage(DataKind::TrackLog);
  ClickTitle(logs, "距離 km");
  EXPECT_EQ(Column(logs, "名前"), (Texts{"DAY TWO", "DAY ONE"}));
  EXPECT_EQ(Cell(Table("WaypointTable"), 0, "名前"), "A");
  data_.Clear(DataKind::Waypoint);
  AddWaypoints({Place("B")});
  const std::vector<TrackPoint> first = data_.Logs().at(0).points;
  data_.Clear(DataKind::TrackLog);
  AddLog("DAY ONE", first);
  AddLog("DAY TWO", {PointAt(36, 140, 90000, true), PointAt(37, 140, 90060)});
  Refresh();
  EXPECT_EQ(Cell(Table("WaypointTable"), 0, "名前"), "B");
  EXPECT_EQ(Column(logs, "名前"), (Texts{"DAY ONE", "DAY TWO"}));
  EXPECT_EQ(Cell(logs, 1, "距離 km"), "111.31");
}

TEST_F(RecordTablesTest, PointNumbersSortByRouteAndThenByPoint) {
  AddRoute("R", std::vector<std::string>(11, "P"), 10);
  AddRoute("S", {"P"}, 9);
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
  AddWaypoints({Summit("A", 3), Summit("B", 2), Summit("C", 1)});
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
  AddWaypoints({Summit("A", 3), Summit("B", 2), Summit("C", 1)});
  Refresh();
  QTableView& table = Table("WaypointTable");
  EXPECT_EQ(Copied(table), "untouched");
  ClickTitle(table, "高度 m");
  ClickRow(table, 2);
  ClickRow(table, 0, Qt::ControlModifier);
  EXPECT_EQ(Copied(table), WaypointLine(3) + WaypointLine(1));
}

TEST_F(RecordTablesTest, CopiedHeadersBringTheirPointsAndTitlesWhenWanted) {
  AddTwoRoutes();
  AddTwoLogs();
  Refresh();
  OpenPage(DataKind::Route);
  ClickRow(Table("RouteTable"), 1);
  const Route& south = data_.Routes().at(1);
  const std::string last_point = Line(south.points.at(1), south.type);
  const std::string route = Line(south) + Line(south.points.at(0), south.type) + last_point;
  const std::string header_title = StandardHeaderLine(StandardLine::RouteHeader) + "\r\n";
  const std::string point_title = StandardHeaderLine(StandardLine::RoutePoint) + "\r\n";
  EXPECT_EQ(Copied(Table("RouteTable")), route);
  tables_.SetWithHeader(true);
  EXPECT_EQ(Copied(Table("RouteTable")), header_title + point_title + route);
  ClickRow(Table("RoutePointTable"), 1);
  EXPECT_EQ(Copied(Table("RoutePointTable")), point_title + last_point);
  tables_.SetWithHeader(false);
  OpenPage(DataKind::TrackLog);
  ClickRow(Table("TrackTable"), 1);
  const TrackLog& log = data_.Logs().at(1);
  const TrackPoint* none = nullptr;
  const std::string first_point = Line(log.points.at(0), none);
  EXPECT_EQ(Copied(Table("TrackTable")), Line(log) + first_point + Line(log.points.at(1), &log.points.at(0)));
  ClickRow(Table("TrackPointTable"), 0);
  EXPECT_EQ(Copied(Table("TrackPointTable")), first_point);
}

TEST_F(RecordTablesTest, CopiedLinesReadBackAsTheSameRecords) {
  AddTwoRoutes();
  Refresh();
  OpenPage(DataKind::Route);
  QTableView& routes = Table("RouteTable");
  routes.setFocus();
  QTest::keyClick(&routes, Qt::Key_A, Qt::ControlModifier);
  DataSet other;
  const std::string copied = Copied(routes);
  LineSource lines(copied, TextEncoding::Utf8);
  EXPECT_EQ(ReadStandardFile(lines, other, {form_.utc_offset_hours}).skipped.count, 0);
  EXPECT_EQ(other.Routes(), data_.Routes());
}

TEST_F(RecordTablesTest, TheCopyKeyOfATableIsNotTakenByAShortcutAround) {
  AddWaypoints({Place("A")});
  Refresh();
  QAction around;
  around.setShortcut(QKeySequence::Copy);
  int taken = 0;
  QObject::connect(&around, &QAction::triggered, [&taken] { ++taken; });
  tables_.addAction(&around);
  ClickRow(Table("WaypointTable"), 0);
  EXPECT_EQ(Copied(Table("WaypointTable")), WaypointLine(1));
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
    AddWaypoints({Place("W" + std::to_string(i))});
  Refresh();
  QTableView& table = Table("WaypointTable");
  ClickRow(table, 3);
  table.setColumnWidth(ColumnOf(table, "コメント"), 41);
  table.verticalScrollBar()->setValue(50);
  AddWaypoints({Summit("LONGER NAME THAN ANY BEFORE", 1, "and a comment far wider than 41 pixels")});
  Refresh();
  EXPECT_EQ(table.model()->rowCount(), 201);
  EXPECT_EQ(ChosenRows(table), (std::set<int>{3}));
  EXPECT_EQ(table.verticalScrollBar()->value(), 50);
  EXPECT_EQ(table.columnWidth(ColumnOf(table, "コメント")), 41);
}

TEST_F(RecordTablesTest, AddedRowsTakeTheirPlaceInASortedTable) {
  AddWaypoints({Summit("A", 3), Summit("B", 1)});
  Refresh();
  const QTableView& table = Table("WaypointTable");
  ClickTitle(table, "高度 m");
  ClickRow(table, 1);
  AddWaypoints({Summit("C", 2)});
  Refresh();
  EXPECT_EQ(Column(table, "名前"), (Texts{"B", "C", "A"}));
  EXPECT_EQ(ChosenRows(table), (std::set<int>{2}));
}

TEST_F(RecordTablesTest, FewerRowsKeepTheSortAndTheWidths) {
  AddWaypoints({Summit("A", 3), Summit("B", 1), Summit("C", 2)});
  Refresh();
  const QTableView& table = Table("WaypointTable");
  ClickTitle(table, "高度 m");
  const int width = table.columnWidth(ColumnOf(table, "緯度"));
  data_.Clear(DataKind::Waypoint);
  AddWaypoints({Summit("D", 9), Summit("E", 8)});
  Refresh();
  EXPECT_EQ(Column(table, "名前"), (Texts{"E", "D"}));
  EXPECT_EQ(table.columnWidth(ColumnOf(table, "緯度")), width);
}

TEST_F(RecordTablesTest, ColumnsAreWideEnoughForTheirCellsAndTitles) {
  AddWaypoints({Place("A", 35.6251234567891, 139.243611111111)});
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
  AddWaypoints({Place("A")});
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
  AddWaypoints({Summit("A", 3)});
  AddTwoRoutes();
  AddTwoLogs();
  Refresh();
  const std::pair<const char*, const char*> captions[] = {{"WaypointTable", "ウェイポイント"},
                                                          {"RouteTable", "ルート"},
                                                          {"RoutePointTable", "ルートのポイント"},
                                                          {"TrackTable", "トラックログ"},
                                                          {"TrackPointTable", "トラックログのポイント"}};
  for (const auto& [name, caption] : captions)
    EXPECT_EQ(Table(name).accessibleName().toStdString(), caption);
  EXPECT_EQ(Tabs().accessibleName().toStdString(), "記録の表");
}

TEST_F(RecordTablesTest, DataThatGoWhileTheTablesAreUsedLeaveEmptyRows) {
  AddWaypoints({Summit("A", 3), Summit("B", 2)});
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

TEST_F(RecordTablesTest, RecordsThatNeverCameAreMarked) {
  Waypoint missing;
  missing.missing = true;
  AddWaypoints({Place("CAME"), missing});
  Refresh();
  const QTableView& table = Table("WaypointTable");
  EXPECT_FALSE(table.model()->index(0, 0).data(Qt::FontRole).isValid());
  EXPECT_TRUE(table.model()->index(1, 0).data(Qt::FontRole).value<QFont>().italic());
  EXPECT_EQ(Cell(table, 1, "番号", Qt::AccessibleDescriptionRole), window_messages::RecordNeverCame);
}

TEST_F(RecordTablesTest, TextsOfReceiversWithFieldsOfFixedWidthAreShownWithoutTheirPadding) {
  Waypoint waypoint = Place(std::string("W1\0\0\0\0", 6));
  waypoint.type = WaypointType::D103;
  waypoint.cmnt = std::string("HUT\0OLD", 7) + std::string(33, ' ');
  AddWaypoints({waypoint});
  Refresh();
  EXPECT_EQ(Cell(Table("WaypointTable"), 0, "名前"), "W1");
  EXPECT_EQ(Cell(Table("WaypointTable"), 0, "コメント"), "HUT OLD");
}

TEST_F(RecordTablesTest, PointsThatGoWhileTheirRecordStaysLeaveEmptyRows) {
  AddTwoRoutes();
  AddTwoLogs();
  Refresh();
  data_.Clear(DataKind::Route);
  data_.Clear(DataKind::TrackLog);
  AddRoute("NORTH", {"N1"}, 4);
  AddLog("DAY ONE", {PointAt(35, 139, 1000, true)});
  for (const char* name : {"RoutePointTable", "TrackPointTable"}) {
    const QTableView& table = Table(name);
    EXPECT_NE(Cell(table, 0, "番号"), "") << name;
    for (int row = 1; row < table.model()->rowCount(); ++row)
      EXPECT_EQ(Cell(table, row, "緯度"), "") << name << row;
  }
}

TEST_F(RecordTablesTest, NumbersOfWaypointsSortToo) {
  AddWaypoints({Place("A"), Place("B"), Place("C")});
  Refresh();
  const QTableView& table = Table("WaypointTable");
  ClickTitle(table, "番号");
  EXPECT_EQ(Column(table, "名前"), (Texts{"A", "B", "C"}));
  ClickTitle(table, "番号");
  EXPECT_EQ(Column(table, "名前"), (Texts{"C", "B", "A"}));
}

TEST_F(RecordTablesTest, AStoreFullOfTrackPointsIsShownWhole) {
  constexpr int Most = MaxTrackPoints;
  std::vector<TrackPoint> points;
  points.reserve(MaxTrackPoints);
  for (int i = 0; i < Most; ++i)
    points.push_back(PointAt(35 + i * 1e-5, 139, static_cast<GarminSeconds>(100000 - i)));
  AddLog("FULL", points);
  Refresh();
  OpenPage(DataKind::TrackLog);
  QTableView& table = Table("TrackPointTable");
  ASSERT_EQ(table.model()->rowCount(), Most);
  EXPECT_EQ(Cell(table, Most - 1, "番号"), "1-30000");
  ClickTitle(table, "日時");
  EXPECT_EQ(Cell(table, 0, "番号"), "1-30000");
  EXPECT_EQ(table.rowHeight(0), table.rowHeight(Most - 1));
  table.setFocus();
  QTest::keyClick(&table, Qt::Key_A, Qt::ControlModifier);
  const std::string copied = Copied(table);
  EXPECT_EQ(std::count(copied.begin(), copied.end(), '\n'), Most);
}

}  // namespace
}  // namespace walrim
