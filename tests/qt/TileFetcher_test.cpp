// Tiles from a server that is well, slow, wrong or gone.
#include "qt/TileFetcher.h"

#include <QCoreApplication>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTemporaryDir>
#include <QTest>
#include <algorithm>
#include <gtest/gtest.h>
#include <memory>

#include "support/Fakes.h"
#include "support/TileServer.h"

namespace walrim {
namespace {

class TileFetcherTest : public testing::Test {
 protected:
  TileFetcherTest() { MakeFetcher(); }

  void MakeFetcher() {
    fetcher_ = std::make_unique<TileFetcher>(folder_.path(), "Walrim/1.2.3", clock_,
                                             [this](const TileFetcher::Arrival& arrival) { came_.append(arrival); });
  }
  [[nodiscard]] QUrl Tile(int number) const { return QUrl(server_.Address(QString::number(number))); }
  [[nodiscard]] QList<QUrl> Tiles(int from, int to) const {
    QList<QUrl> urls;
    for (int number = from; number <= to; ++number)
      urls.append(Tile(number));
    return urls;
  }
  [[nodiscard]] bool WaitForArrivals(qsizetype count) {
    return QTest::qWaitFor([&] { return came_.size() >= count; });
  }
  [[nodiscard]] bool WaitForRequests(qsizetype count) {
    return QTest::qWaitFor([&] { return server_.asked.size() >= count; });
  }
  /// Waits until nothing is under way.
  [[nodiscard]] bool WaitForEnd() {
    return QTest::qWaitFor([&] { return fetcher_->findChild<QNetworkReply*>() == nullptr; });
  }
  /// Wants another tile alone, and waits for that.
  void Settle() {
    server_.SetPage([](QTcpSocket& connection, const QString& path) { TileServer::Send(connection, path.toUtf8()); });
    const qsizetype before = came_.size();
    fetcher_->Want({Tile(9999)});
    ASSERT_TRUE(WaitForArrivals(before + 1));
  }

  QTemporaryDir folder_;
  FakeClock clock_;
  TileServer server_{[](QTcpSocket& connection, const QString& path) { TileServer::Send(connection, path.toUtf8()); }};
  QList<TileFetcher::Arrival> came_;
  std::unique_ptr<TileFetcher> fetcher_;
};

TEST_F(TileFetcherTest, FetchesWhatIsWantedInItsOrder) {
  fetcher_->Want(Tiles(1, 5));
  ASSERT_TRUE(WaitForArrivals(5));
  EXPECT_EQ(server_.asked.size(), 5);
  EXPECT_EQ(server_.asked.first(), "/1");
  EXPECT_EQ(came_.first().body, came_.first().url.path().toUtf8());
  EXPECT_FALSE(came_.first().from_cache);
}

TEST_F(TileFetcherTest, NothingIsMadeBeforeSomethingIsWanted) {
  fetcher_->Want({});
  EXPECT_EQ(fetcher_->findChild<QNetworkAccessManager*>(), nullptr);
}

TEST_F(TileFetcherTest, SaysWhoItIsAndSendsNoCookies) {
  server_.SetPage(
      [](QTcpSocket& connection, const QString&) { TileServer::Send(connection, "tile", "Set-Cookie: who=you\r\n"); });
  fetcher_->Want({Tile(1)});
  ASSERT_TRUE(WaitForArrivals(1));
  fetcher_->Want({Tile(2)});
  ASSERT_TRUE(WaitForArrivals(2));
  EXPECT_TRUE(server_.requests.last().contains("User-Agent: Walrim/1.2.3\r\n"));
  EXPECT_FALSE(server_.requests.last().toLower().contains("cookie"));
}

TEST_F(TileFetcherTest, AsksForNoMoreThanTwoAtOnce) {
  QList<QTcpSocket*> waiting;
  server_.SetPage([&](QTcpSocket& connection, const QString&) { waiting.append(&connection); });
  fetcher_->Want(Tiles(1, 6));
  ASSERT_TRUE(WaitForRequests(2));
  while (came_.size() < 6) {
    EXPECT_LE(server_.asked.size() - came_.size(), 2);
    ASSERT_FALSE(waiting.isEmpty());
    TileServer::Send(*waiting.takeFirst(), "tile");
    const qsizetype before = came_.size();
    ASSERT_TRUE(WaitForArrivals(before + 1));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !waiting.isEmpty() || came_.size() == 6; }));
  }
  EXPECT_EQ(server_.asked.size(), 6);
}

TEST_F(TileFetcherTest, WhatIsNoLongerWantedEnds) {
  QList<QTcpSocket*> waiting;
  server_.SetPage([&](QTcpSocket& connection, const QString&) { waiting.append(&connection); });
  fetcher_->Want(Tiles(1, 6));
  ASSERT_TRUE(WaitForRequests(2));
  bool gone = false;
  QObject::connect(waiting.first(), &QTcpSocket::disconnected, [&] { gone = true; });
  Settle();
  EXPECT_TRUE(QTest::qWaitFor([&] { return gone; }));
  EXPECT_EQ(server_.asked.size(), 3) << "3 to 6 were never asked for";
  EXPECT_EQ(came_.size(), 1);
}

TEST_F(TileFetcherTest, WhatFailedRestsForAMinute) {
  server_.SetPage([](QTcpSocket& connection, const QString&) { TileServer::Send404(connection); });
  fetcher_->Want({Tile(1)});
  ASSERT_TRUE(WaitForRequests(1) && WaitForEnd());
  fetcher_->Want({Tile(1)});
  Settle();
  EXPECT_EQ(server_.asked.count("/1"), 1);
  clock_.Advance(TileFetcher::FailureRest);
  fetcher_->Want({Tile(1)});
  ASSERT_TRUE(QTest::qWaitFor([&] { return server_.asked.count("/1") == 2; }));
}

TEST_F(TileFetcherTest, WhatIsCutOffIsNoTile) {
  server_.SetPage([](QTcpSocket& connection, const QString&) {
    connection.write("HTTP/1.1 200 OK\r\nContent-Length: 400\r\n\r\npart");
    connection.disconnectFromHost();
  });
  fetcher_->Want({Tile(1)});
  ASSERT_TRUE(WaitForRequests(1) && WaitForEnd());
  Settle();
  EXPECT_EQ(came_.size(), 1);
  EXPECT_EQ(came_.first().url, Tile(9999));
}

TEST_F(TileFetcherTest, WhatIsLargerThanATileEnds) {
  server_.SetPage([](QTcpSocket& connection, const QString& path) {
    const QByteArray body(static_cast<qsizetype>(TileFetcher::MostTileBytes) + 1, 'x');
    if (path == "/1") return TileServer::Send(connection, body);
    connection.write("HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n" + body);  // without a length, or an end
  });
  fetcher_->Want(Tiles(1, 2));
  ASSERT_TRUE(WaitForRequests(2) && WaitForEnd());
  Settle();
  EXPECT_EQ(came_.size(), 1);
}

TEST_F(TileFetcherTest, IsLedToNoOtherServer) {
  TileServer other([](QTcpSocket& connection, const QString&) { TileServer::Send(connection, "tile"); });
  server_.SetPage([&](QTcpSocket& connection, const QString&) {
    connection.write("HTTP/1.1 302 Found\r\nLocation: " + other.Address("x").toLatin1() +
                     "\r\nContent-Length: 0\r\n\r\n");
  });
  fetcher_->Want({Tile(1)});
  ASSERT_TRUE(WaitForRequests(1) && WaitForEnd());
  Settle();
  EXPECT_TRUE(other.asked.isEmpty());
  EXPECT_EQ(came_.size(), 1);
}

TEST_F(TileFetcherTest, WhatHasComeIsNotAskedForAgainNextTime) {
  fetcher_->Want({Tile(1)});
  ASSERT_TRUE(WaitForArrivals(1));
  MakeFetcher();
  fetcher_->Want({Tile(1)});
  ASSERT_TRUE(WaitForArrivals(2));
  EXPECT_TRUE(came_.last().from_cache);
  EXPECT_EQ(came_.last().body, "/1");
  EXPECT_EQ(server_.asked.size(), 1);
}

TEST_F(TileFetcherTest, WhatWasRefusedIsNotKept) {
  fetcher_->Want({Tile(1)});
  ASSERT_TRUE(WaitForArrivals(1));
  fetcher_->Refuse(Tile(1));
  fetcher_->Want({Tile(1)});
  Settle();
  EXPECT_EQ(server_.asked.count("/1"), 1) << "it rests";
  MakeFetcher();
  fetcher_->Want({Tile(1)});
  ASSERT_TRUE(WaitForArrivals(3));
  EXPECT_EQ(server_.asked.count("/1"), 2) << "it was not kept";
}

TEST_F(TileFetcherTest, MayGoWhileTilesAreUnderWay) {
  server_.SetPage([](QTcpSocket&, const QString&) {});
  fetcher_->Want(Tiles(1, 2));
  ASSERT_TRUE(WaitForRequests(2));
  fetcher_.reset();
  EXPECT_TRUE(came_.isEmpty());
}

}  // namespace
}  // namespace walrim
