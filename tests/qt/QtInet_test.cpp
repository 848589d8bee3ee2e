#include "qt/QtInet.h"

#include <QCoreApplication>
#include <QFile>
#include <QNetworkProxy>
#include <QSslCertificate>
#include <QSslKey>
#include <QSslServer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <string>

#include "qt/Messages.h"

namespace walrim {
namespace {

using std::chrono::milliseconds;

QByteArray ReadFile(const char* name) {
  QFile file(QString(WALRIM_SOURCE_DIR "/tests/qt/") + name);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
  return file.readAll();
}

QSslCertificate LoopbackCertificate() {
  return QSslCertificate(ReadFile("loopback_certificate.pem"));
}

/// A web server on the loopback interface. A page is what is done with the connection once its request has come.
class Server {
 public:
  using Page = std::function<void(QTcpSocket& connection)>;

  explicit Server(bool tls = false) : scheme_(tls ? "https" : "http") {
    if (tls) {
      auto server = std::make_unique<QSslServer>();
      QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
      configuration.setLocalCertificate(LoopbackCertificate());
      configuration.setPrivateKey(QSslKey(ReadFile("loopback_key.pem"), QSsl::Ec));
      server->setSslConfiguration(configuration);
      server_ = std::move(server);
    } else {
      server_ = std::make_unique<QTcpServer>();
    }
    QObject::connect(server_.get(), &QTcpServer::pendingConnectionAvailable, [this] { Accept(); });
    EXPECT_TRUE(server_->listen(QHostAddress::LocalHost));
  }

  [[nodiscard]] std::string Link(const std::string& path) const {
    return scheme_ + "://127.0.0.1:" + std::to_string(server_->serverPort()) + path;
  }

  std::map<std::string, Page> pages;
  std::map<std::string, int> asked;

 private:
  void Accept() {
    QTcpSocket* const connection = server_->nextPendingConnection();
    QObject::connect(connection, &QTcpSocket::disconnected, connection, &QObject::deleteLater);
    QObject::connect(connection, &QTcpSocket::readyRead, connection, [this, connection] { Answer(*connection); });
    if (connection->bytesAvailable() > 0) Answer(*connection);
  }

  void Answer(QTcpSocket& connection) {
    if (!connection.peek(64 * 1024).contains("\r\n\r\n")) return;
    const QByteArray request = connection.readAll();
    const std::string path = request.split(' ').value(1).toStdString();
    ++asked[path];
    if (const auto page = pages.find(path); page != pages.end()) return page->second(connection);
    connection.write("HTTP/1.1 404 Not Found\r\nContent-Length: 4\r\n\r\nnone");
  }

  std::string scheme_;
  std::unique_ptr<QTcpServer> server_;
};

Server::Page Text(QByteArray answer) {
  return [answer](QTcpSocket& connection) { connection.write(answer); };
}

Server::Page Closing(QByteArray answer) {
  return [answer](QTcpSocket& connection) {
    connection.write(answer);
    connection.disconnectFromHost();
  };
}

Server::Page Body(const QByteArray& body) {
  return Text("HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body);
}

Server::Page MovedTo(const std::string& link, int status = 302) {
  return Text("HTTP/1.1 " + QByteArray::number(status) + " Moved\r\nLocation: " + QByteArray::fromStdString(link) +
              "\r\nContent-Length: 0\r\n\r\n");
}

/// Sends for ever.
void SendEndlessly(QTcpSocket& connection) {
  const auto more = [&connection] {
    if (connection.bytesToWrite() < 65536) connection.write(QByteArray(65536, 'x'));
  };
  QObject::connect(&connection, &QTcpSocket::bytesWritten, &connection, more);
  more();
}

/// Sends a first part and then a piece again and again, at most so often; then closes.
Server::Page Trickling(const QByteArray& first, const QByteArray& piece, int interval_ms, int pieces = 400) {
  return [=](QTcpSocket& connection) {
    connection.write(first);
    auto* const timer = new QTimer(&connection);
    QObject::connect(timer, &QTimer::timeout, &connection, [&connection, piece, left = pieces]() mutable {
      connection.write(piece);
      if (--left == 0) connection.disconnectFromHost();
    });
    timer->start(interval_ms);
  };
}

bool Contains(const std::string& text, std::string_view part) {
  return text.find(part) != std::string::npos;
}

class QtInetTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy); }

  void ExpectBytes(const std::string& link, const std::string& bytes) {
    SCOPED_TRACE(link);
    const InetResult result = inet.OpenUrl(link);
    EXPECT_EQ(result.error, "");
    EXPECT_FALSE(result.cancelled);
    EXPECT_TRUE(result.bytes == bytes) << result.bytes.size() << " bytes";
  }

  void ExpectError(const std::string& link, std::string_view part) {
    SCOPED_TRACE(link);
    const InetResult result = inet.OpenUrl(link);
    EXPECT_TRUE(Contains(result.error, part)) << result.error;
    EXPECT_FALSE(result.Ok());
    EXPECT_FALSE(result.cancelled);
    EXPECT_EQ(result.bytes, "");
  }

  Server server;
  QtInet inet;
};

TEST_F(QtInetTest, GivesTheBytesOfALink) {
  QByteArray bytes(300'000, '\0');
  for (qsizetype i = 0; i < bytes.size(); ++i)
    bytes[i] = static_cast<char>(i * 7 % 256);
  server.pages["/a.grc"] = Body(bytes);
  server.pages["/empty"] = Body("");
  ExpectBytes(server.Link("/a.grc"), bytes.toStdString());
  ExpectBytes(server.Link("/empty"), "");
}

TEST_F(QtInetTest, AsksForThePathAndTheQueryEncoded) {
  server.pages["/%E9%AB%98%20a/b.grc?q=%E5%B1%B1&c=d%26"] = Body("WPT");
  server.pages["/"] = Body("root");
  server.pages["/?q"] = Body("query");
  ExpectBytes(server.Link("/高 a/b.grc?q=山&c=d%26#part"), "WPT");
  ExpectBytes(server.Link(""), "root");
  ExpectBytes(server.Link("?q"), "query");
}

TEST_F(QtInetTest, TheSchemeMayBeInAnyCase) {
  server.pages["/A"] = Body("WPT");
  for (const char* scheme : {"HTTP", "Http", "http"})
    ExpectBytes(scheme + server.Link("/A").substr(4), "WPT");
}

TEST_F(QtInetTest, ReadsChunksAndABodyThatEndsWithTheConnection) {
  server.pages["/chunks"] =
      Text("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3\r\nWPT\r\n4\r\n\tABC\r\n0\r\n\r\n");
  server.pages["/close"] = Closing("HTTP/1.1 200 OK\r\nConnection: close\r\n\r\nWPT");
  const QByteArray large(3'000'000, 'x');
  server.pages["/large"] = Closing("HTTP/1.1 200 OK\r\n\r\n" + large);
  ExpectBytes(server.Link("/large"), large.toStdString());
  ExpectBytes(server.Link("/chunks"), "WPT\tABC");
  ExpectBytes(server.Link("/close"), "WPT");
}

TEST_F(QtInetTest, AStatusOtherThan200IsAnErrorThatTellsIt) {
  ExpectError(server.Link("/missing"), qt_messages::RefusedByServer(404, "Not Found"));
  for (const char* status : {"500 Internal Server Error", "403 Forbidden", "401 Unauthorized", "204 No Content",
                             "206 Partial Content", "101 Switching Protocols", "304 Not Modified"}) {
    server.pages["/a"] = Text(QByteArray("HTTP/1.1 ") + status + "\r\nContent-Length: 0\r\n\r\n");
    ExpectError(server.Link("/a"), std::string(status).substr(0, 3));
  }
}

TEST_F(QtInetTest, ABodyCutShortIsAnError) {
  server.pages["/length"] = Closing("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nWPT");
  server.pages["/chunk"] = Closing("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n64\r\nWPT");
  server.pages["/unended"] = Closing("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3\r\nWPT\r\n");
  server.pages["/header"] = Closing("HTTP/1.1 200 OK\r\nContent-Le");
  server.pages["/nothing"] = Closing("");
  for (const char* path : {"/length", "/chunk", "/unended", "/header", "/nothing"})
    ExpectError(server.Link(path), qt_messages::CutShort);
}

TEST_F(QtInetTest, ACompressedBodyIsNotTakenForTheData) {
  server.pages["/a"] = Text("HTTP/1.1 200 OK\r\nContent-Encoding: gzip\r\nContent-Length: 3\r\n\r\nWPT");
  ExpectError(server.Link("/a"), qt_messages::Compressed);
  server.pages["/b"] = Text("HTTP/1.1 200 OK\r\nContent-Encoding: identity\r\nContent-Length: 3\r\n\r\nWPT");
  ExpectBytes(server.Link("/b"), "WPT");
}

TEST_F(QtInetTest, WhatIsNoHttpIsAnError) {
  server.pages["/a"] = Closing("220 ready\r\n\r\nWPT");
  ExpectError(server.Link("/a"), "HTTP");
}

TEST_F(QtInetTest, NoMoreThanTheLimitIsTaken) {
  QtInet small({.most_bytes = 100'000});
  server.pages["/limit"] = Body(QByteArray(100'000, 'x'));
  EXPECT_TRUE(small.OpenUrl(server.Link("/limit")).Ok());
  server.pages["/more"] = Body(QByteArray(100'001, 'x'));
  EXPECT_TRUE(Contains(small.OpenUrl(server.Link("/more")).error, qt_messages::TooLarge(100000)));
  server.pages["/told"] = Text("HTTP/1.1 200 OK\r\nContent-Length: 99999999999\r\n\r\n");
  EXPECT_TRUE(Contains(small.OpenUrl(server.Link("/told")).error, qt_messages::TooLarge(100000)));
  server.pages["/endless"] = [](QTcpSocket& connection) {
    connection.write("HTTP/1.1 200 OK\r\n\r\n");
    SendEndlessly(connection);
  };
  EXPECT_TRUE(Contains(small.OpenUrl(server.Link("/endless")).error, qt_messages::TooLarge(100000)));
}

TEST_F(QtInetTest, ASilentServerIsGivenUp) {
  QtInet impatient({.silence = milliseconds{30}});
  server.pages["/never"] = [](QTcpSocket&) {};
  server.pages["/header"] = Text("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n");
  server.pages["/part"] = Text("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nWPT");
  for (const char* path : {"/never", "/header", "/part"}) {
    const InetResult result = impatient.OpenUrl(server.Link(path));
    EXPECT_EQ(result.error, qt_messages::ServerSilent);
    EXPECT_EQ(result.bytes, "");
  }
}

TEST_F(QtInetTest, EveryByteStartsTheWaitAnew) {
  QtInet patient({.silence = milliseconds{250}});
  server.pages["/slow"] = [](QTcpSocket& connection) {
    connection.write("HTTP/1.1 200 OK\r\nContent-Length: 6\r\n\r\n");
    auto* const timer = new QTimer(&connection);
    QObject::connect(timer, &QTimer::timeout, &connection, [&connection] { connection.write("x"); });
    timer->start(milliseconds{50});
  };
  EXPECT_EQ(patient.OpenUrl(server.Link("/slow")).bytes, "xxxxxx");
}

TEST_F(QtInetTest, FollowsRedirects) {
  server.pages["/a.grc"] = Body("WPT");
  for (const int status : {301, 302, 303, 307, 308}) {
    server.pages["/moved"] = MovedTo(server.Link("/a.grc"), status);
    ExpectBytes(server.Link("/moved"), "WPT");
  }
  server.pages["/folder/relative"] = MovedTo("../a.grc");
  ExpectBytes(server.Link("/folder/relative"), "WPT");
}

TEST_F(QtInetTest, FollowsFiveRedirectsAndNoSixth) {
  for (int i = 0; i < 6; ++i)
    server.pages["/" + std::to_string(i)] = MovedTo("/" + std::to_string(i + 1));
  server.pages["/6"] = Body("WPT");
  ExpectBytes(server.Link("/1"), "WPT");
  server.asked.clear();
  ExpectError(server.Link("/0"), qt_messages::TooManyRedirects);
  EXPECT_EQ(server.asked["/5"], 1);
  EXPECT_EQ(server.asked["/6"], 0);
  server.pages["/circle"] = MovedTo("/circle");
  ExpectError(server.Link("/circle"), qt_messages::TooManyRedirects);
}

TEST_F(QtInetTest, ARedirectMayEndWithTheConnection) {
  server.pages["/a.grc"] = Body("WPT");
  server.pages["/moved"] = Closing("HTTP/1.1 302 Found\r\nLocation: /a.grc\r\n\r\n");
  ExpectBytes(server.Link("/moved"), "WPT");
}

TEST_F(QtInetTest, RedirectsThatLeadNowhereAreErrors) {
  for (const char* link : {"file:///etc/hostname", "ftp://127.0.0.1/a", "http://", "", "data:,WPT", "qrc:/a"}) {
    server.pages["/moved"] = MovedTo(link);
    ExpectError(server.Link("/moved"), qt_messages::BadRedirect);
  }
  server.pages["/unsaid"] = Text("HTTP/1.1 302 Found\r\nContent-Length: 0\r\n\r\n");
  ExpectError(server.Link("/unsaid"), qt_messages::BadRedirect);
}

TEST_F(QtInetTest, TheBodyOfARedirectIsNotWaitedFor) {
  server.pages["/a.grc"] = Body("WPT");
  server.pages["/moved"] = [](QTcpSocket& connection) {
    connection.write("HTTP/1.1 302 Found\r\nLocation: /a.grc\r\n\r\n");
    SendEndlessly(connection);
  };
  ExpectBytes(server.Link("/moved"), "WPT");
}

TEST_F(QtInetTest, ATrickleThatBringsNoDataHasAnEnd) {
  const QByteArray ok = "HTTP/1.1 200 OK\r\n";
  server.pages["/header"] = Trickling(ok + "X: ", "x", 5);
  server.pages["/lines"] = Trickling(ok, "X: y\r\n", 5);
  server.pages["/interim"] = Trickling("", "HTTP/1.1 100 Continue\r\n\r\n", 5);
  server.pages["/length"] = Trickling(ok + "Transfer-Encoding: chunked\r\n\r\n3\r\nWPT\r\n1;", "x", 5);
  for (const char* page : {"/header", "/lines", "/interim", "/length"}) {
    QtInet impatient({.no_progress = milliseconds{100}});
    const InetResult result = impatient.OpenUrl(server.Link(page));
    EXPECT_EQ(result.error, qt_messages::NoProgress) << page;
    EXPECT_EQ(result.bytes, "");
  }
}

TEST_F(QtInetTest, DataThatComeSlowlyAreReadToTheirEnd) {
  server.pages["/slow"] = Trickling("HTTP/1.1 200 OK\r\n\r\n", "W", 60, 20);
  QtInet patient({.no_progress = milliseconds{1000}});
  const InetResult result = patient.OpenUrl(server.Link("/slow"));
  EXPECT_EQ(result.error, "");
  EXPECT_EQ(result.bytes, std::string(20, 'W'));
}

TEST_F(QtInetTest, CancelEndsTheReading) {
  server.pages["/part"] = [this](QTcpSocket& connection) {
    connection.write("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nWPT");
    QTimer::singleShot(0, [this] { inet.Cancel(); });
  };
  for (int i = 0; i < 2; ++i) {
    const InetResult result = inet.OpenUrl(server.Link("/part"));
    EXPECT_TRUE(result.cancelled);
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(result.bytes, "");
  }
  inet.Cancel();
  server.pages["/a"] = Body("WPT");
  ExpectBytes(server.Link("/a"), "WPT");
}

TEST_F(QtInetTest, TheEventLoopRunsMeanwhileAndASecondCallIsRefused) {
  InetResult nested;
  server.pages["/a"] = [&](QTcpSocket& connection) {
    nested = inet.OpenUrl(server.Link("/b"));
    Body("WPT")(connection);
  };
  ExpectBytes(server.Link("/a"), "WPT");
  EXPECT_EQ(nested.error, qt_messages::LinkIsRead);
  EXPECT_EQ(server.asked["/b"], 0);
}

TEST_F(QtInetTest, AProgramThatEndsEndsTheReading) {
  server.pages["/a"] = [](QTcpSocket&) { QCoreApplication::quit(); };
  InetResult result;
  QTimer::singleShot(0, [&] { result = inet.OpenUrl(server.Link("/a")); });
  QCoreApplication::exec();
  EXPECT_TRUE(result.cancelled);
}

TEST_F(QtInetTest, WhatIsNoWebLinkIsRefused) {
  for (const char* link : {"", "a.grc", "file:///etc/hostname", "ftp://127.0.0.1/a", "http://", "http:///a",
                           "http:", "httpx://127.0.0.1/", "javascript:1", "http://[::1", "http://127.0.0.1:99999/"})
    ExpectError(link, qt_messages::NoWebLink);
}

TEST_F(QtInetTest, NoServerIsAnError) {
  std::string link;
  {
    const Server gone;
    link = gone.Link("/a");
  }
  ExpectError(link, qt_messages::NotConnected);
}

class QtInetTlsTest : public QtInetTest {
 protected:
  static QSslConfiguration Trusting() {
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setCaCertificates({LoopbackCertificate()});
    return configuration;
  }

  Server secure{true};
  QtInet trusting{{}, Trusting()};
};

TEST_F(QtInetTlsTest, ReadsFromAServerThatIsTrusted) {
  secure.pages["/a.grc"] = Body("WPT");
  const QByteArray large(3'000'000, 'x');
  secure.pages["/large"] = Body(large);
  secure.pages["/close"] = Closing("HTTP/1.1 200 OK\r\n\r\n" + large);
  const InetResult result = trusting.OpenUrl(secure.Link("/a.grc"));
  EXPECT_EQ(result.error, "");
  EXPECT_EQ(result.bytes, "WPT");
  EXPECT_TRUE(trusting.OpenUrl(secure.Link("/large")).bytes == large.toStdString());
  EXPECT_TRUE(trusting.OpenUrl(secure.Link("/close")).bytes == large.toStdString());
}

TEST_F(QtInetTlsTest, RefusesAServerThatIsNot) {
  secure.pages["/a.grc"] = Body("WPT");
  ExpectError(secure.Link("/a.grc"), qt_messages::NotCertified);
  EXPECT_EQ(secure.asked["/a.grc"], 0);
}

TEST_F(QtInetTlsTest, RefusesAServerThatSpeaksNoTls) {
  const std::string link = "https" + server.Link("/a").substr(4);
  server.pages["/a"] = Body("WPT");
  QtInet impatient({.silence = milliseconds{30}}, Trusting());
  EXPECT_NE(impatient.OpenUrl(link).error, "");
}

TEST_F(QtInetTlsTest, ARedirectMayMakeTheConnectionSafeAndNeverUnsafe) {
  secure.pages["/a.grc"] = Body("WPT");
  server.pages["/a.grc"] = Body("WPT");
  server.pages["/up"] = MovedTo(secure.Link("/a.grc"));
  secure.pages["/down"] = MovedTo(server.Link("/a.grc"));
  EXPECT_EQ(trusting.OpenUrl(server.Link("/up")).bytes, "WPT");
  const InetResult result = trusting.OpenUrl(secure.Link("/down"));
  EXPECT_TRUE(Contains(result.error, qt_messages::UnsafeRedirect)) << result.error;
  EXPECT_EQ(server.asked["/a.grc"], 0);
}

TEST_F(QtInetTlsTest, ABodyCutShortIsAnErrorThereToo) {
  secure.pages["/length"] = Closing("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nWPT");
  EXPECT_TRUE(Contains(trusting.OpenUrl(secure.Link("/length")).error, qt_messages::CutShort));
}

}  // namespace
}  // namespace walrim
