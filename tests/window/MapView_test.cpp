// The map under a user's hands: wheel, drag, keys, clicks.
#include "window/MapView.h"

#include <QSignalSpy>
#include <QTest>
#include <QToolButton>
#include <QWheelEvent>
#include <gtest/gtest.h>
#include <optional>

namespace walrim {
namespace {

TrackPoint At(double lat_deg, double lon_deg, bool begins = false) {
  TrackPoint point;
  point.lat_deg = lat_deg;
  point.lon_deg = lon_deg;
  point.new_trk = begins;
  return point;
}

Waypoint Place(const char* ident, double lat_deg, double lon_deg) {
  Waypoint waypoint;
  waypoint.ident = ident;
  waypoint.lat_deg = lat_deg;
  waypoint.lon_deg = lon_deg;
  return waypoint;
}

/// A red log around a square of a tenth of a degree, and a waypoint beyond each of two of its corners.
DataSet SquareWalk() {
  DataSet data;
  TrackLog log;
  log.color = 9;
  EXPECT_EQ(data.Begin(log), AddResult::Stored);
  for (const TrackPoint& point : {At(35, 139), At(35.1, 139), At(35.1, 139.1), At(35, 139.1)})
    EXPECT_EQ(data.Add(point), AddResult::Stored);
  EXPECT_EQ(data.Add(Place("WEST", 35.05, 138.9)), AddResult::Stored);
  EXPECT_EQ(data.Add(Place("EAST", 35.05, 139.2)), AddResult::Stored);
  return data;
}

class MapViewTest : public testing::Test {
 protected:
  MapViewTest() {
    map_.resize(600, 400);
    map_.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&map_));
    map_.SetScene(SceneOf(SquareWalk()));
  }

  [[nodiscard]] QPoint On(double lat_deg, double lon_deg) const {
    return map_.Camera().ScreenOf(MercatorOf(lat_deg, lon_deg)).toPoint();
  }
  [[nodiscard]] QImage Picture() { return map_.grab().toImage(); }
  void Wheel(QPoint at, int notches) {
    QWheelEvent event(at, map_.mapToGlobal(at), {}, {0, 120 * notches}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                      false);
    QCoreApplication::sendEvent(&map_, &event);
  }
  void Drag(QPoint from, QPoint to, Qt::KeyboardModifiers keys = {}) {
    QTest::mousePress(&map_, Qt::LeftButton, keys, from);
    QTest::mouseMove(&map_, (from + to) / 2);
    QTest::mouseMove(&map_, to);
    QTest::mouseRelease(&map_, Qt::LeftButton, keys, to);
  }
  /// Whether a colour is near a place of the picture.
  static bool HasColour(const QImage& picture, QPoint at, QColor colour, int reach = 3) {
    for (int y = at.y() - reach; y <= at.y() + reach; ++y) {
      for (int x = at.x() - reach; x <= at.x() + reach; ++x) {
        if (picture.valid(x, y) && picture.pixelColor(x, y) == colour) return true;
      }
    }
    return false;
  }

  MapView map_;
};

TEST_F(MapViewTest, ShowsAllThatIsHeldAtFirst) {
  EXPECT_TRUE(map_.Camera().Seen().Holds(map_.Scene().box));
  EXPECT_FALSE(map_.Camera().Seen(-100).Holds(map_.Scene().box));
}

TEST_F(MapViewTest, DrawsALogInItsOwnColour) {
  const QColor red = MapStyleOf(map_.palette()).LogColor(9);
  const QImage picture = Picture();
  EXPECT_TRUE(HasColour(picture, On(35.05, 139), red));
  EXPECT_TRUE(HasColour(picture, On(35.1, 139.05), red));
  EXPECT_FALSE(HasColour(picture, On(35.05, 139.05), red)) << "inside the square";
  EXPECT_FALSE(HasColour(picture, On(35, 139.05), red)) << "it is not closed";
}

TEST_F(MapViewTest, BreaksALogWhereASegmentBegins) {
  DataSet data;
  ASSERT_EQ(data.Begin(TrackLog{}), AddResult::Stored);
  for (const TrackPoint& point : {At(35, 139), At(35, 139.1), At(35, 139.2, true), At(35, 139.3)})
    ASSERT_EQ(data.Add(point), AddResult::Stored);
  map_.SetScene(SceneOf(data));
  const QColor colour = MapStyleOf(map_.palette()).LogColor(255);
  const QImage picture = Picture();
  EXPECT_TRUE(HasColour(picture, On(35, 139.05), colour));
  EXPECT_FALSE(HasColour(picture, On(35, 139.15), colour));
  EXPECT_TRUE(HasColour(picture, On(35, 139.25), colour));
}

TEST_F(MapViewTest, DrawsLongLogsToo) {
  DataSet data;
  ASSERT_EQ(data.Begin(TrackLog{}), AddResult::Stored);
  for (int i = 0; i < 5000; ++i)
    ASSERT_EQ(data.Add(At(35 + (i % 2) * 0.1, 139 + i / 50'000.0)), AddResult::Stored);
  map_.SetScene(SceneOf(data));
  const QColor colour = MapStyleOf(map_.palette()).LogColor(255);
  EXPECT_TRUE(HasColour(Picture(), On(35.05, 139.05), colour));
}

TEST_F(MapViewTest, TheWheelZoomsAtThePointer) {
  const QPoint at = On(35.1, 139.1);
  const double before = map_.Camera().Zoom();
  Wheel(at, 4);
  EXPECT_GT(map_.Camera().Zoom(), before + 1);
  EXPECT_LE((On(35.1, 139.1) - at).manhattanLength(), 1);
  Wheel(at, -4);
  EXPECT_NEAR(map_.Camera().Zoom(), before, 1e-9);
}

TEST_F(MapViewTest, PlusAndMinusZoomArrowsMoveAndZeroShowsAll) {
  const MercatorPoint middle = map_.Camera().Middle();
  const double before = map_.Camera().Zoom();
  QTest::keyClick(&map_, Qt::Key_Plus);
  EXPECT_GT(map_.Camera().Zoom(), before);
  QTest::keyClick(&map_, Qt::Key_Minus);
  EXPECT_NEAR(map_.Camera().Zoom(), before, 1e-9);
  QTest::keyClick(&map_, Qt::Key_Right);
  EXPECT_GT(map_.Camera().Middle().x, middle.x);
  QTest::keyClick(&map_, Qt::Key_Left);
  QTest::keyClick(&map_, Qt::Key_Up);
  EXPECT_LT(map_.Camera().Middle().y, middle.y);
  QTest::keyClick(&map_, Qt::Key_Down);
  QTest::keyClick(&map_, Qt::Key_Down);
  EXPECT_GT(map_.Camera().Middle().y, middle.y);
  QTest::keyClick(&map_, Qt::Key_0);
  EXPECT_NEAR(map_.Camera().Middle().x, middle.x, 1e-12);
  EXPECT_NEAR(map_.Camera().Zoom(), before, 1e-9);
}

TEST_F(MapViewTest, ADragMovesTheMapAndChoosesNothing) {
  QSignalSpy chosen(&map_, &MapView::ItemChosen);
  const QPoint before = On(35.05, 139);
  Drag(before, before + QPoint(60, -40));
  EXPECT_LE((On(35.05, 139) - before - QPoint(60, -40)).manhattanLength(), 1);
  EXPECT_TRUE(chosen.isEmpty());
}

TEST_F(MapViewTest, ADragWithShiftZoomsIntoAFrame) {
  const MercatorPoint corner = MercatorOf(35.1, 139.0);
  Drag(On(35.12, 138.98), On(35.08, 139.02), Qt::ShiftModifier);
  MercatorBox box;
  box.Add(corner);
  EXPECT_TRUE(map_.Camera().Seen().Holds(box));
  EXPECT_LT(map_.Camera().Seen().east - map_.Camera().Seen().west, 0.2 / 360);
}

TEST_F(MapViewTest, TheButtonsZoomAndShowAll) {
  ASSERT_TRUE(QTest::qWaitFor([this] { return map_.findChild<QToolButton*>("MapShowAll") != nullptr; }));
  const double before = map_.Camera().Zoom();
  QTest::mouseClick(map_.findChild<QToolButton*>("MapZoomIn"), Qt::LeftButton);
  EXPECT_GT(map_.Camera().Zoom(), before);
  QTest::mouseClick(map_.findChild<QToolButton*>("MapZoomOut"), Qt::LeftButton);
  QTest::mouseClick(map_.findChild<QToolButton*>("MapZoomOut"), Qt::LeftButton);
  EXPECT_LT(map_.Camera().Zoom(), before);
  QTest::mouseClick(map_.findChild<QToolButton*>("MapShowAll"), Qt::LeftButton);
  EXPECT_NEAR(map_.Camera().Zoom(), before, 1e-9);
}

TEST_F(MapViewTest, AClickChoosesTheRecordUnderIt) {
  std::optional<MapItem> item;
  QObject::connect(&map_, &MapView::ItemChosen, &map_, [&](const MapItem& chosen) { item = chosen; });
  QTest::mouseClick(&map_, Qt::LeftButton, {}, On(35.05, 139.2) + QPoint(3, -2));
  ASSERT_TRUE(item);
  EXPECT_EQ(item->kind, DataKind::Waypoint);
  EXPECT_EQ(item->place, (RecordPlace{1, std::nullopt}));
  QTest::mouseClick(&map_, Qt::LeftButton, {}, On(35.09, 139) + QPoint(4, 0));
  EXPECT_EQ(item->kind, DataKind::TrackLog);
  EXPECT_EQ(item->place, (RecordPlace{0, 1})) << "the nearer end of the segment";
  item.reset();
  QTest::mouseClick(&map_, Qt::LeftButton, {}, On(35.05, 139.05));
  EXPECT_FALSE(item) << "nothing lies there";
}

TEST_F(MapViewTest, ADoubleClickOnNothingAsksForAWaypointThere) {
  std::optional<MapPlace> place;
  QObject::connect(&map_, &MapView::PlaceChosen, &map_, [&](const MapPlace& chosen) { place = chosen; });
  QTest::mouseDClick(&map_, Qt::LeftButton, {}, On(35.05, 139.2));
  EXPECT_FALSE(place) << "a waypoint lies there";
  QTest::mouseDClick(&map_, Qt::LeftButton, {}, On(35.05, 139.05));
  ASSERT_TRUE(place);
  EXPECT_NEAR(place->lat_deg, 35.05, 0.001);
  EXPECT_NEAR(place->lon_deg, 139.05, 0.001);
}

TEST_F(MapViewTest, HighlightsWhatIsChosen) {
  const QColor highlight = MapStyleOf(map_.palette()).highlight;
  EXPECT_FALSE(HasColour(Picture(), On(35.05, 139), highlight, 5));
  map_.SetSelection({{DataKind::TrackLog, false, {{0, std::nullopt}}}, {DataKind::TrackLog, true, {}}});
  EXPECT_TRUE(HasColour(Picture(), On(35.05, 139), highlight, 5));
  EXPECT_FALSE(HasColour(Picture(), On(35.05, 139.2), highlight, 12));
  map_.SetSelection({{DataKind::Waypoint, false, {{1, std::nullopt}}}, {DataKind::Waypoint, false, {}}});
  EXPECT_FALSE(HasColour(Picture(), On(35.05, 139), highlight, 5));
  EXPECT_TRUE(HasColour(Picture(), On(35.05, 139.2), highlight, 12));
}

TEST_F(MapViewTest, BringsIntoViewOnlyWhatIsNotSeen) {
  const MercatorPoint middle = map_.Camera().Middle();
  map_.Reveal(BoxOf(map_.Scene(), {DataKind::Waypoint, {0, {}}}));
  EXPECT_EQ(map_.Camera().Middle(), middle) << "it is seen";
  for (int i = 0; i < 12; ++i)
    QTest::keyClick(&map_, Qt::Key_Right);
  const double zoom = map_.Camera().Zoom();
  map_.Reveal(BoxOf(map_.Scene(), {DataKind::Waypoint, {0, {}}}));
  EXPECT_TRUE(map_.Camera().Seen().Holds(BoxOf(map_.Scene(), {DataKind::Waypoint, {0, {}}})));
  EXPECT_NEAR(map_.Camera().Zoom(), zoom, 1e-9) << "moved, not zoomed";
}

TEST_F(MapViewTest, FollowsTheRecordsUntilTheUserMovesIt) {
  DataSet data = SquareWalk();
  ASSERT_EQ(data.Add(Place("FAR", 43, 141)), AddResult::Stored);
  map_.SetScene(SceneOf(data));
  EXPECT_TRUE(map_.Camera().Seen().Holds(map_.Scene().box));
  QTest::keyClick(&map_, Qt::Key_Plus);
  const MercatorPoint middle = map_.Camera().Middle();
  ASSERT_EQ(data.Add(Place("SOUTH", -30, 141)), AddResult::Stored);
  map_.SetScene(SceneOf(data));
  EXPECT_EQ(map_.Camera().Middle(), middle);
}

TEST_F(MapViewTest, TellsWhichPointOfTheWayTheMouseIsOver) {
  map_.SetPointed(MapItem{DataKind::TrackLog, {0, {}}});
  QSignalSpy hovered(&map_, &MapView::PointHovered);
  QTest::mouseMove(&map_, On(35.1, 139.1));
  ASSERT_FALSE(hovered.isEmpty());
  EXPECT_EQ(hovered.last().at(0).toInt(), 2);
  QTest::mouseMove(&map_, On(35.05, 139.05));
  EXPECT_EQ(hovered.last().at(0).toInt(), -1);
}

TEST_F(MapViewTest, ReadsInDarkPalettesToo) {
  QPalette dark;
  dark.setColor(QPalette::Base, Qt::black);
  dark.setColor(QPalette::Text, Qt::white);
  map_.setPalette(dark);
  const MapStyle style = MapStyleOf(dark);
  EXPECT_TRUE(style.dark);
  EXPECT_LT(style.land.lightness(), 100);
  EXPECT_GT(style.ink.lightness(), 200);
  EXPECT_TRUE(HasColour(Picture(), On(35.05, 139), style.LogColor(9)));
}

}  // namespace
}  // namespace walrim
