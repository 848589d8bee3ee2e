// A map on tiles from a server of the test's own, which is well, wrong, broken or gone.
#include "window/MapTiles.h"

#include <QBuffer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <cmath>
#include <gtest/gtest.h>
#include <memory>
#include <set>

#include "support/TileServer.h"
#include "window/MapView.h"

namespace walrim {
namespace {

QByteArray Encoded(QSize size, QColor colour, const char* format = "PNG") {
  QImage image(size, QImage::Format_RGB32);
  image.fill(colour);
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  EXPECT_TRUE(image.save(&buffer, format));
  return bytes;
}

QByteArray Tile(QColor colour) {
  return Encoded({256, 256}, colour);
}

// ---- What is a tile

TEST(DecodeTile, TakesPicturesOfTheTwoSizes) {
  EXPECT_EQ(DecodeTile(Tile(Qt::red))->size(), QSize(256, 256));
  EXPECT_EQ(DecodeTile(Encoded({512, 512}, Qt::red))->size(), QSize(512, 512));
  EXPECT_EQ(DecodeTile(Encoded({256, 256}, Qt::red, "JPEG"))->size(), QSize(256, 256));
}

TEST(DecodeTile, RefusesOtherSizes) {
  for (const QSize size : {QSize(1, 1), QSize(255, 256), QSize(256, 512), QSize(1024, 1024)})
    EXPECT_FALSE(DecodeTile(Encoded(size, Qt::red))) << size.width();
}

TEST(DecodeTile, RefusesOtherFormatsAndNoPictures) {
  EXPECT_FALSE(DecodeTile(Encoded({256, 256}, Qt::red, "BMP")));
  EXPECT_FALSE(DecodeTile("<html>not found</html>"));
  EXPECT_FALSE(DecodeTile("<svg xmlns='http://www.w3.org/2000/svg' width='256' height='256'/>"));
  EXPECT_FALSE(DecodeTile({}));
}

TEST(DecodeTile, RefusesWhatIsCutOff) {
  const QByteArray whole = Tile(Qt::red);
  EXPECT_FALSE(DecodeTile(whole.first(whole.size() / 2)));
}

TEST(DecodeTile, RefusesASizeThatOnlyTheHeadClaims) {
  QByteArray tile = Tile(Qt::red);
  tile.replace(16, 8, QByteArray::fromHex("0000ea600000ea60"));  // 60000 x 60000
  EXPECT_FALSE(DecodeTile(tile));
}

// ---- Addresses

TEST(MapBackgrounds, TheServersAreAskedForTheNumbersOfTheTile) {
  EXPECT_EQ(TileSourceOf(MapBackground::Gsi, {})->UrlOf({14, 14505, 6469}).toString(),
            "https://cyberjapandata.gsi.go.jp/xyz/std/14/14505/6469.png");
  EXPECT_EQ(TileSourceOf(MapBackground::OpenStreetMap, {})->UrlOf({3, 7, 2}).toString(),
            "https://tile.openstreetmap.org/3/7/2.png");
  EXPECT_EQ(
      TileSourceOf(MapBackground::Own, "https://tiles.example.org/{y}-{x}.jpg?z={z}")->UrlOf({1, 2, 3}).toString(),
      "https://tiles.example.org/3-2.jpg?z=1");
  EXPECT_FALSE(TileSourceOf(MapBackground::None, "https://tiles.example.org/{z}/{x}/{y}"));
}

TEST(MapBackgrounds, EachSaysWhoseItIs) {
  EXPECT_EQ(TileSourceOf(MapBackground::Gsi, {})->attribution, "国土地理院");
  EXPECT_EQ(TileSourceOf(MapBackground::OpenStreetMap, {})->attribution, "© OpenStreetMap contributors");
  EXPECT_EQ(TileSourceOf(MapBackground::Own, "https://tiles.example.org/{z}/{x}/{y}")->attribution,
            "tiles.example.org");
}

TEST(MapBackgrounds, AnAddressNeedsAServerAndThreeNumbers) {
  EXPECT_TRUE(IsTileAddress("http://127.0.0.1:8080/{z}/{x}/{y}.png"));
  for (const char* text : {"", "tiles", "https://example.org/{z}/{x}.png", "file:///tmp/{z}/{x}/{y}.png",
                           "ftp://example.org/{z}/{x}/{y}", "https:///{z}/{x}/{y}"}) {
    EXPECT_FALSE(IsTileAddress(text)) << text;
  }
}

TEST(MapBackgrounds, AreRememberedByAWord) {
  for (const MapBackground background : AllMapBackgrounds)
    EXPECT_EQ(MapBackgroundOfWord(MapBackgroundWord(background)), background);
  EXPECT_EQ(MapBackgroundOfWord("mars"), MapBackground::None);
}

// ---- On the map

class MapTilesTest : public testing::Test {
 protected:
  MapTilesTest() {
    map_.resize(500, 400);
    map_.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&map_));
  }

  /// Shows tiles from the server around a place at a zoom.
  void Open(double zoom, int least_zoom = 0) {
    TileSource source{server_.Address("{z}/{x}/{y}"), "whose it is", least_zoom, 19};
    tiles_ = std::make_unique<MapTiles>(source, folder_.path());
    map_.SetScene({});
    MercatorBox box;
    box.Add(MercatorOf(35.6, 139.2));
    map_.Reveal(box);
    map_.SetTiles(tiles_.get());
    while (map_.Camera().Zoom() < zoom)
      QTest::keyClick(&map_, Qt::Key_Plus);
    while (map_.Camera().Zoom() > zoom)
      QTest::keyClick(&map_, Qt::Key_Minus);
  }
  ~MapTilesTest() override { map_.SetTiles(nullptr); }

  [[nodiscard]] QColor ColourAt(QPoint at) { return map_.grab().toImage().pixelColor(at); }
  [[nodiscard]] bool WaitForColour(QColor colour, QPoint at = {120, 120}) {
    return QTest::qWaitFor([&] { return ColourAt(at) == colour; });
  }
  [[nodiscard]] std::set<QString> PathsSeen() const {
    std::set<QString> paths;
    for (const TileNumber& tile : tiles_->SeenBy(map_.Camera()))
      paths.insert(QStringLiteral("/%1/%2/%3").arg(tile.zoom).arg(tile.x).arg(tile.y));
    return paths;
  }

  QTemporaryDir folder_;
  TileServer server_{[](QTcpSocket& connection, const QString&) { TileServer::Send(connection, Tile(Qt::red)); }};
  MapView map_;
  std::unique_ptr<MapTiles> tiles_;
};

TEST_F(MapTilesTest, ShowsTheTilesThatAreSeenAndAsksForNoOthers) {
  Open(10);
  ASSERT_TRUE(WaitForColour(Qt::red));
  ASSERT_TRUE(QTest::qWaitFor([&] { return static_cast<std::size_t>(server_.asked.size()) == PathsSeen().size(); }));
  EXPECT_EQ(std::set<QString>(server_.asked.begin(), server_.asked.end()), PathsSeen());
}

TEST_F(MapTilesTest, ASecondLookAsksForNothing) {
  Open(10);
  ASSERT_TRUE(QTest::qWaitFor([&] { return tiles_->CoverAll(map_.Camera()); }));
  const qsizetype asked = server_.asked.size();
  QTest::keyClick(&map_, Qt::Key_Right);
  QTest::keyClick(&map_, Qt::Key_Left);
  QSignalSpy changed(tiles_.get(), &MapTiles::Changed);
  QTest::keyClick(&map_, Qt::Key_Plus);
  ASSERT_TRUE(changed.wait());
  EXPECT_EQ(std::ranges::count_if(server_.asked, [](const QString& path) { return path.startsWith("/10/"); }), asked);
}

TEST_F(MapTilesTest, WhatTheMapOnlyPassesIsNotAskedFor) {
  Open(10);
  for (int i = 0; i < 30; ++i) {
    QTest::keyClick(&map_, Qt::Key_Right);
    map_.repaint();
  }
  ASSERT_TRUE(WaitForColour(Qt::red));
  for (const QString& path : server_.asked)
    EXPECT_TRUE(PathsSeen().contains(path)) << path.toStdString();
}

TEST_F(MapTilesTest, AFailedTileLeavesTheCoarserOne) {
  Open(10);
  ASSERT_TRUE(QTest::qWaitFor([&] { return tiles_->CoverAll(map_.Camera()); }));
  server_.SetPage([](QTcpSocket& connection, const QString&) { TileServer::Send404(connection); });
  QTest::keyClick(&map_, Qt::Key_Plus);
  EXPECT_EQ(ColourAt({120, 120}), QColor(Qt::red));
  ASSERT_TRUE(QTest::qWaitFor([&] { return server_.asked.last().startsWith("/11/"); }));
  EXPECT_EQ(ColourAt({120, 120}), QColor(Qt::red));
}

TEST_F(MapTilesTest, WhatIsNoPictureIsAFailedTile) {
  server_.SetPage([](QTcpSocket& connection, const QString&) { TileServer::Send(connection, "<html></html>"); });
  Open(10);
  ASSERT_TRUE(QTest::qWaitFor([&] { return static_cast<std::size_t>(server_.asked.size()) == PathsSeen().size(); }));
  EXPECT_NE(ColourAt({120, 120}), QColor(Qt::red));
  QTest::keyClick(&map_, Qt::Key_Right);
  QTest::keyClick(&map_, Qt::Key_Right);
  QTest::keyClick(&map_, Qt::Key_Right);
  server_.SetPage([](QTcpSocket& connection, const QString&) { TileServer::Send(connection, Tile(Qt::red)); });
  QSignalSpy changed(tiles_.get(), &MapTiles::Changed);
  ASSERT_TRUE(changed.wait());
  EXPECT_EQ(std::set<QString>(server_.asked.begin(), server_.asked.end()).size(),
            static_cast<std::size_t>(server_.asked.size()))
      << "none twice";
}

TEST_F(MapTilesTest, ATileThatIsHostilelyLargeIsNotShown) {
  server_.SetPage([](QTcpSocket& connection, const QString&) {
    TileServer::Send(connection, Encoded({2048, 2048}, Qt::red));
  });
  Open(10);
  ASSERT_TRUE(QTest::qWaitFor([&] { return server_.asked.size() >= 3; }));
  EXPECT_NE(ColourAt({120, 120}), QColor(Qt::red));
}

TEST_F(MapTilesTest, ASlowServerHoldsNothingUp) {
  server_.SetPage([](QTcpSocket&, const QString&) {});
  Open(10);
  ASSERT_TRUE(QTest::qWaitFor([&] { return !server_.asked.isEmpty(); }));
  const double zoom = map_.Camera().Zoom();
  QTest::keyClick(&map_, Qt::Key_Minus);
  EXPECT_LT(map_.Camera().Zoom(), zoom);
  EXPECT_LE(server_.asked.size(), 2);
}

TEST_F(MapTilesTest, WhereTheServerHasNothingSoCoarseNothingIsAsked) {
  Open(2, 8);
  EXPECT_TRUE(tiles_->SeenBy(map_.Camera()).isEmpty());
  Open(8, 8);
  ASSERT_TRUE(WaitForColour(Qt::red));
  EXPECT_TRUE(std::ranges::all_of(server_.asked, [](const QString& path) { return path.startsWith("/8/"); }));
}

TEST_F(MapTilesTest, SaysWhoseItIsAllTheTime) {
  Open(10);
  const QImage with = map_.grab().toImage();
  int written = 0;
  const MapStyle style = MapStyleOf(QPalette(Qt::white));
  for (int y = map_.height() - 12; y < map_.height(); ++y) {
    for (int x = map_.width() - 60; x < map_.width(); ++x)
      written += with.pixelColor(x, y).lightness() < style.ink.lightness() + 40 ? 1 : 0;
  }
  EXPECT_GT(written, 20);
}

TEST_F(MapTilesTest, AllRecordsAreSeenAtAZoomOfTheTiles) {
  Open(10);
  DataSet data;
  for (const double lat_deg : {35.0, 35.3}) {
    Waypoint waypoint;
    waypoint.lat_deg = lat_deg;
    waypoint.lon_deg = 139;
    ASSERT_EQ(data.Add(waypoint), AddResult::Stored);
  }
  map_.SetScene(SceneOf(data));
  QTest::keyClick(&map_, Qt::Key_0);
  EXPECT_NEAR(map_.Camera().Zoom(), std::round(map_.Camera().Zoom()), 1e-9);
  EXPECT_TRUE(map_.Camera().Seen().Holds(map_.Scene().box));
}

TEST_F(MapTilesTest, TheWheelStopsAtTheTilesOwnZooms) {
  Open(10);
  const QPoint at(250, 200);
  for (const int delta : {60, 60, 120}) {
    QWheelEvent event(at, map_.mapToGlobal(at), {}, {0, delta}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&map_, &event);
  }
  EXPECT_NEAR(map_.Camera().Zoom(), 12, 1e-9);
}

}  // namespace
}  // namespace walrim
