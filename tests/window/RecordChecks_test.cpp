// The checks of records: by clicks, by keys and by the menus of rows and titles.
#include <QHeaderView>
#include <QMenu>
#include <QStyle>
#include <QStyleOptionViewItem>
#include <QTabWidget>

#include "app/Messages.h"
#include "window/RecordView.h"
#include "window/WindowTest.h"

namespace walrim {
namespace {

class RecordChecksTest : public WindowTest {
 protected:
  RecordChecksTest() {
    PutFile(folder.Path("a.grc"),
            "WPT\tD\tWGS84\t=\"A\"\t35\t139\r\nWPT\tD\tWGS84\t=\"B\"\t36\t139\r\n"
            "WPT\tD\tWGS84\t=\"C\"\t37\t139\r\n"
            "RTH\t1\t=\"R\"\t1\r\nRTP\tD\tWGS84\t=\"P1\"\t35.1\t139.1\r\n"
            "TRH\t1\t=\"T\"\t1\t1\r\nTRP\tD\tWGS84\t36.1\t140.1\t2002/11/16 09:00:00\t1\t599.5\r\n"
            "TRH\t1\t=\"U\"\t1\t1\r\nTRP\tD\tWGS84\t36.1\t140.1\t2002/11/16 09:00:00\t1\t599.5\r\n");
    window->ImportFiles({folder.Path("a.grc")});
  }

  RecordView& Table(const char* name, DataKind kind) const {
    Get<QTabWidget>("Records").setCurrentIndex(static_cast<int>(IndexOf(kind)));
    return Get<RecordView>(name);
  }
  RecordView& Waypoints() const { return Table("WaypointTable", DataKind::Waypoint); }
  static void ClickCheck(const RecordView& table, int row) {
    QStyleOptionViewItem option;
    option.initFrom(&table);
    option.rect = table.visualRect(table.model()->index(row, 0));
    option.features = QStyleOptionViewItem::HasCheckIndicator;
    const QRect box = table.style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, &table);
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, box.center());
  }
  static void Select(RecordView& table, std::initializer_list<int> rows) {
    table.clearSelection();
    for (const int row : rows)
      table.selectionModel()->select(table.model()->index(row, 0),
                                     QItemSelectionModel::Select | QItemSelectionModel::Rows);
  }
  /// "+-+": the checks in the order that is shown.
  static std::string Checks(const RecordView& table) {
    std::string checks;
    for (int row = 0; row < table.model()->rowCount(); ++row)
      checks += table.model()->index(row, 0).data(Qt::CheckStateRole).toInt() == Qt::Checked ? '+' : '-';
    return checks;
  }
  static void Choose(QWidget& menu_owner, const QString& text) {
    for (QAction* action : menu_owner.actions()) {
      if (action->text() == text) return action->trigger();
    }
    FAIL() << text.toStdString();
  }
  std::string TabText(int tab) const { return Get<QTabWidget>("Records").tabText(tab).toStdString(); }
};

TEST_F(RecordChecksTest, AreAllOnAtFirstAndTheCountsAreAsEver) {
  EXPECT_EQ(Checks(Waypoints()), "+++");
  EXPECT_EQ(Texts("GpsNum"), "3|1|2");
  EXPECT_EQ(TabText(0), "ウェイポイント (3)");
}

TEST_F(RecordChecksTest, AClickTakesOneAwayAndTheCountsSaySo) {
  ClickCheck(Waypoints(), 1);
  EXPECT_EQ(Checks(Waypoints()), "+-+");
  EXPECT_EQ(Texts("GpsNum"), "2 / 3|1|2");
  EXPECT_EQ(TabText(0), "ウェイポイント (2 / 3)");
  ClickCheck(Waypoints(), 1);
  EXPECT_EQ(Checks(Waypoints()), "+++");
  EXPECT_EQ(Texts("GpsNum"), "3|1|2");
}

TEST_F(RecordChecksTest, SpaceTogglesAllChosenRows) {
  RecordView& table = Waypoints();
  table.setCurrentIndex(table.model()->index(0, 1));
  Select(table, {0, 2});
  QTest::keyClick(&table, Qt::Key_Space);
  EXPECT_EQ(Checks(table), "-+-");
  // All get what the current one lacks.
  table.setCurrentIndex(table.model()->index(1, 1));
  Select(table, {0, 1});
  QTest::keyClick(&table, Qt::Key_Space);
  EXPECT_EQ(Checks(table), "---");
  QTest::keyClick(&table, Qt::Key_Space);
  EXPECT_EQ(Checks(table), "++-");
}

TEST_F(RecordChecksTest, TheMenusOfTitlesAndRowsCheckManyAtOnce) {
  RecordView& table = Waypoints();
  Choose(*table.horizontalHeader(), "すべて外す");
  EXPECT_EQ(Checks(table), "---");
  EXPECT_EQ(Texts("GpsNum"), "0 / 3|1|2");
  Choose(table, "すべて選ぶ");
  EXPECT_EQ(Checks(table), "+++");
  Select(table, {1});
  Choose(table, "選択した行だけ");
  EXPECT_EQ(Checks(table), "-+-");
}

TEST_F(RecordChecksTest, TravelWithTheirRecordsThroughSortingAndDeleting) {
  RecordView& table = Waypoints();
  ClickCheck(table, 0);
  table.sortByColumn(1, Qt::DescendingOrder);
  EXPECT_EQ(Checks(table), "++-");
  CheckAll("DoCheck");
  Click("Delete");
  EXPECT_EQ(Checks(Waypoints()), "-");
  EXPECT_EQ(Data().Waypoints().at(0).ident, "A");
  EXPECT_EQ(Texts("GpsNum"), "0 / 1|-|-");
}

TEST_F(RecordChecksTest, RowsWithoutOneAreDimmedAndSaySo) {
  RecordView& table = Waypoints();
  ClickCheck(table, 1);
  const auto colour = [&table](int row) {
    return table.model()->index(row, 1).data(Qt::ForegroundRole).value<QBrush>();
  };
  EXPECT_EQ(colour(1).color(), QApplication::palette().color(QPalette::PlaceholderText));
  EXPECT_EQ(colour(0).style(), Qt::NoBrush);
  const auto spoken = [&table](int row) {
    return table.model()->index(row, 0).data(Qt::AccessibleTextRole).toString();
  };
  EXPECT_EQ(spoken(0), "1 チェックあり");
  EXPECT_EQ(spoken(1), "2 チェックなし");
}

TEST_F(RecordChecksTest, RoutesAndLogsHaveThemAndTheirPointsHaveNone) {
  ClickCheck(Table("RouteTable", DataKind::Route), 0);
  ClickCheck(Table("TrackTable", DataKind::TrackLog), 1);
  EXPECT_EQ(Texts("GpsNum"), "3|0 / 1|1 / 2");
  EXPECT_FALSE(Table("RoutePointTable", DataKind::Route).model()->index(0, 0).data(Qt::CheckStateRole).isValid());
  EXPECT_FALSE(Table("TrackPointTable", DataKind::TrackLog).model()->index(0, 0).data(Qt::CheckStateRole).isValid());
}

TEST_F(RecordChecksTest, WhatIsSavedIsWhatIsChecked) {
  ClickCheck(Waypoints(), 1);
  Check("DoCheck_0");
  Click("Copy");
  EXPECT_NE(Clipboard().find("\"A\""), std::string::npos);
  EXPECT_EQ(Clipboard().find("\"B\""), std::string::npos);
}

TEST_F(RecordChecksTest, ATransferSendsTheCheckedAndLeavesTheChecksAlone) {
  ClickCheck(Waypoints(), 1);
  Check("DoCheck_0");
  int refused = 0;
  event_loop.on_yield = [&] {
    ClickCheck(Waypoints(), 0);
    refused += Checks(Waypoints()) == "+-+" ? 1 : 0;
  };
  Click("GpsUpLoad");
  event_loop.on_yield = {};
  EXPECT_GT(refused, 0);
  EXPECT_EQ(Checks(Waypoints()), "+-+");
  EXPECT_EQ(Get<QLineEdit>("GpsDataNum_0").text(), "2");
}

}  // namespace
}  // namespace walrim
