// The profile under a user's hands.
#include "window/ProfileView.h"

#include <QSignalSpy>
#include <QTest>
#include <QToolButton>
#include <cstdlib>
#include <gtest/gtest.h>

#include "window/MapStyle.h"
#include "window/Messages.h"

namespace walrim {
namespace {

/// Ten points a kilometre and ten minutes apart; up to the fifth, then down; no height at the seventh; a gap before the
/// ninth.
std::vector<ProfilePoint> Hill() {
  std::vector<ProfilePoint> profile(10);
  for (int i = 0; i < 10; ++i) {
    ProfilePoint& point = profile[static_cast<std::size_t>(i)];
    point.distance_m = 1000 * i;
    point.time_s = 600 * i;
    point.alt_m = 100 * (i < 5 ? i : 9 - i);
    if (i > 0) point.speed_m_s = 5 / 3.0;
    point.begins = i == 0 || i == 8;
  }
  profile[6].alt_m.reset();
  return profile;
}

class ProfileViewTest : public testing::Test {
 protected:
  ProfileViewTest() {
    view_.resize(700, 240);
    view_.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&view_));
    view_.SetProfile(Hill());
  }

  /// Where a share of the way lies, by what the mouse finds there.
  [[nodiscard]] QPoint On(int point) {
    QSignalSpy hovered(&view_, &ProfileView::PointHovered);
    int first = -1;
    int last = -1;
    for (int x = 0; x < view_.width(); ++x) {
      QMouseEvent event(QEvent::MouseMove, QPointF(x, 20), view_.mapToGlobal(QPointF(x, 20)), Qt::NoButton,
                        Qt::NoButton, Qt::NoModifier);
      QCoreApplication::sendEvent(&view_, &event);
      if (hovered.isEmpty() || hovered.takeLast().at(0).toInt() != point) continue;
      if (first < 0) first = x;
      last = x;
    }
    return {(first + last) / 2, 120};
  }
  [[nodiscard]] std::string Headline() const { return view_.Headline().toStdString(); }
  /// The rows of a column of the picture that have about the colour of the curve of heights.
  [[nodiscard]] int CurveAt(int x) {
    const QColor curve = MapStyleOf(view_.palette()).log;
    const QImage picture = view_.grab().toImage();
    int rows = 0;
    for (int y = 0; y < picture.height(); ++y)
      rows += std::abs(picture.pixelColor(x, y).green() - curve.green()) < 50 &&
                      std::abs(picture.pixelColor(x, y).red() - curve.red()) < 50
                  ? 1
                  : 0;
    return rows;
  }

  ProfileView view_;
};

TEST_F(ProfileViewTest, TheMouseReadsTheCurve) {
  QTest::mouseMove(&view_, On(4));
  EXPECT_EQ(Headline(), "4.00 km   0:40:00   400 m   6.0 km/h");
}

TEST_F(ProfileViewTest, WhatIsNotKnownIsNotTold) {
  QTest::mouseMove(&view_, On(6));
  EXPECT_EQ(Headline(), "6.00 km   1:00:00   6.0 km/h");
  view_.SetProfile(std::vector<ProfilePoint>(2));
  EXPECT_EQ(Headline(), window_messages::NoHeights);
}

TEST_F(ProfileViewTest, GapsAreGaps) {
  const int x2 = On(2).x();
  const int x3 = On(3).x();
  const int x5 = On(5).x();
  const int x7 = On(7).x();
  const int x8 = On(8).x();
  view_.SetCursor(std::nullopt);
  EXPECT_GT(CurveAt((x2 + x3) / 2), 0);
  EXPECT_EQ(CurveAt((x5 + x7) / 2), 0) << "the height between them is not known";
  EXPECT_EQ(CurveAt((x7 + x8) / 2), 0) << "there the signal was lost";
}

TEST_F(ProfileViewTest, AClickChoosesThePoint) {
  QSignalSpy chosen(&view_, &ProfileView::PointChosen);
  QTest::mouseClick(&view_, Qt::LeftButton, {}, On(3));
  ASSERT_EQ(chosen.size(), 1);
  EXPECT_EQ(chosen.first().at(0).value<std::size_t>(), 3U);
}

TEST_F(ProfileViewTest, ADragChoosesARangeInEitherDirection) {
  QSignalSpy chosen(&view_, &ProfileView::PointChosen);
  QSignalSpy range(&view_, &ProfileView::RangeChosen);
  const QPoint from = On(7);
  const QPoint to = On(2);
  QTest::mousePress(&view_, Qt::LeftButton, {}, from);
  QTest::mouseMove(&view_, to);
  QTest::mouseRelease(&view_, Qt::LeftButton, {}, to);
  ASSERT_FALSE(range.isEmpty());
  EXPECT_EQ(range.last().at(0).value<std::size_t>(), 2U);
  EXPECT_EQ(range.last().at(1).value<std::size_t>(), 7U);
  EXPECT_TRUE(chosen.isEmpty());
  view_.SetRangeText("what it comes to");
  EXPECT_EQ(Headline(), "what it comes to");
  QTest::mouseClick(&view_, Qt::LeftButton, {}, from);
  EXPECT_NE(Headline(), "what it comes to") << "a click ends it";
}

TEST_F(ProfileViewTest, KeysMoveTheCursorAndChoose) {
  QSignalSpy chosen(&view_, &ProfileView::PointChosen);
  QSignalSpy range(&view_, &ProfileView::RangeChosen);
  QTest::keyClick(&view_, Qt::Key_Home);
  QTest::keyClick(&view_, Qt::Key_Right);
  QTest::keyClick(&view_, Qt::Key_Right);
  EXPECT_EQ(Headline(), "2.00 km   0:20:00   200 m   6.0 km/h");
  QTest::keyClick(&view_, Qt::Key_Right, Qt::ShiftModifier);
  QTest::keyClick(&view_, Qt::Key_Right, Qt::ShiftModifier);
  EXPECT_EQ(range.last().at(0).value<std::size_t>(), 2U);
  EXPECT_EQ(range.last().at(1).value<std::size_t>(), 4U);
  QTest::keyClick(&view_, Qt::Key_End);
  QTest::keyClick(&view_, Qt::Key_Return);
  ASSERT_EQ(chosen.size(), 1);
  EXPECT_EQ(chosen.first().at(0).value<std::size_t>(), 9U);
}

TEST_F(ProfileViewTest, TheAxisIsSwitched) {
  std::vector<ProfilePoint> profile = Hill();
  for (std::size_t i = 5; i < profile.size(); ++i)
    *profile[i].time_s += 6000;  // a long rest
  view_.SetProfile(profile);
  const int over_distance = On(4).x();
  QTest::mouseClick(view_.findChild<QToolButton*>("ProfileOverTime"), Qt::LeftButton);
  EXPECT_EQ(view_.Axis(), ProfileAxis::Time);
  EXPECT_LT(On(4).x(), over_distance);
  QTest::mouseClick(view_.findChild<QToolButton*>("ProfileOverDistance"), Qt::LeftButton);
  EXPECT_EQ(On(4).x(), over_distance);
}

TEST_F(ProfileViewTest, WithoutTimesThereIsDistanceAlone) {
  view_.SetAxis(ProfileAxis::Time);
  std::vector<ProfilePoint> profile = Hill();
  for (ProfilePoint& point : profile)
    point.time_s.reset();
  view_.SetProfile(profile);
  EXPECT_FALSE(view_.findChild<QToolButton*>("ProfileOverTime")->isEnabled());
  EXPECT_TRUE(view_.findChild<QToolButton*>("ProfileOverDistance")->isChecked());
  QTest::mouseMove(&view_, On(4));
  EXPECT_EQ(Headline(), "4.00 km   400 m   6.0 km/h");
  view_.SetProfile(Hill());
  EXPECT_TRUE(view_.findChild<QToolButton*>("ProfileOverTime")->isChecked()) << "the wish is kept";
}

TEST_F(ProfileViewTest, WithLittleRoomThereIsTheCurveAlone) {
  view_.resize(300, 4 * view_.fontMetrics().height());
  EXPECT_FALSE(view_.findChild<QToolButton*>("ProfileOverTime")->isVisible());
  const int x2 = On(2).x();
  view_.SetCursor(std::nullopt);
  EXPECT_GT(CurveAt(x2 + 4), 0);
  view_.resize(300, 240);
  EXPECT_TRUE(view_.findChild<QToolButton*>("ProfileOverTime")->isVisible());
}

TEST_F(ProfileViewTest, StaysWellWithHeightsThatNobodyCanHave) {
  std::vector<ProfilePoint> profile = Hill();
  profile[3].alt_m = 1e38;
  profile[4].alt_m = -1e38;
  view_.SetProfile(profile);
  EXPECT_FALSE(view_.grab().isNull());
  for (ProfilePoint& point : profile)
    point.alt_m = 1e25;
  view_.SetProfile(profile);
  EXPECT_FALSE(view_.grab().isNull());
  view_.SetProfile({});
  EXPECT_FALSE(view_.grab().isNull());
}

}  // namespace
}  // namespace walrim
