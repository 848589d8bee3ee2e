// Where things of the world are on the screen, and what zooming and moving leave in place.
#include "window/MapCamera.h"

#include <gtest/gtest.h>

#include "window/MapLine.h"

namespace walrim {
namespace {

constexpr MercatorPoint Tokyo{0.888, 0.394};

MapCamera Camera(double zoom, MercatorPoint middle = Tokyo) {
  MapCamera camera;
  camera.SetSize({800, 600});
  camera.Show(middle, zoom);
  return camera;
}

void ExpectAt(QPointF at, double x, double y) {
  EXPECT_NEAR(at.x(), x, 1e-6);
  EXPECT_NEAR(at.y(), y, 1e-6);
}

TEST(MapCamera, TheMiddleIsInTheMiddle) {
  ExpectAt(Camera(10).ScreenOf(Tokyo), 400, 300);
}

TEST(MapCamera, AStepOfZoomDoublesTheWorld) {
  EXPECT_DOUBLE_EQ(Camera(10).PixelsOfWorld(), 256 * 1024);
  EXPECT_DOUBLE_EQ(Camera(11).PixelsOfWorld(), 256 * 2048);
}

TEST(MapCamera, TheScreenLeadsBackToThePlane) {
  const MapCamera camera = Camera(12.5);
  const MercatorPoint at = camera.PlaneOf({13, 570});
  ExpectAt(camera.ScreenOf(at), 13, 570);
}

TEST(MapCamera, ZoomingLeavesInPlaceWhatLiesUnderThePointer) {
  MapCamera camera = Camera(8);
  const MercatorPoint under = camera.PlaneOf({700, 50});
  camera.ZoomTo(13, {700, 50});
  ExpectAt(camera.ScreenOf(under), 700, 50);
  EXPECT_EQ(camera.Zoom(), 13);
}

TEST(MapCamera, MovingTakesTheMapAlong) {
  MapCamera camera = Camera(10);
  camera.Move({30, -20});
  ExpectAt(camera.ScreenOf(Tokyo), 430, 280);
}

TEST(MapCamera, TheWorldAlwaysFillsTheScreen) {
  MapCamera camera = Camera(10);
  camera.ZoomTo(-5, {0, 0});
  EXPECT_NEAR(camera.PixelsOfWorld(), 800, 1e-6);
  camera.Move({0, 1e9});
  EXPECT_GE(camera.Seen().north, -1e-9);
  camera.Move({0, -1e9});
  EXPECT_LE(camera.Seen().south, 1 + 1e-9);
}

TEST(MapCamera, ZoomEndsAtTheFinest) {
  MapCamera camera = Camera(10);
  camera.ZoomTo(99, {0, 0});
  EXPECT_EQ(camera.Zoom(), FinestZoom);
}

TEST(MapCamera, FitsABoxWithRoomAround) {
  MapCamera camera = Camera(3);
  const MercatorBox box{0.880, 0.390, 0.882, 0.391};
  camera.Fit(box, 18);
  EXPECT_TRUE(camera.Seen(-30).Holds(box));
  EXPECT_FALSE(camera.Seen(-100).Holds(box)) << "no smaller than needed";
}

TEST(MapCamera, ASinglePlaceIsShownAtTheZoomThatIsAskedFor) {
  MapCamera camera = Camera(3);
  MercatorBox box;
  box.Add(Tokyo);
  camera.Fit(box, 15);
  EXPECT_EQ(camera.Zoom(), 15);
  ExpectAt(camera.ScreenOf(Tokyo), 400, 300);
}

TEST(MapCamera, NothingToFitChangesNothing) {
  MapCamera camera = Camera(9);
  camera.Fit({}, 15);
  EXPECT_EQ(camera.Zoom(), 9);
}

TEST(MapCamera, GoesOnOverTheEndOfTheWorld) {
  MapCamera camera = Camera(6, {0.999, 0.5});
  camera.Move({-200, 0});
  EXPECT_LT(camera.Middle().x, 0.1);
  EXPECT_GE(camera.Middle().x, 0);
}

TEST(MapCamera, AnotherSizeKeepsTheMiddle) {
  MapCamera camera = Camera(10);
  camera.SetSize({300, 900});
  ExpectAt(camera.ScreenOf(Tokyo), 150, 450);
}

}  // namespace
}  // namespace walrim
