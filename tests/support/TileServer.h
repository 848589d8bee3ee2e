// A map server on the loopback interface that answers as it is told, and keeps what it was asked.
#pragma once

#include <QDateTime>
#include <QHostAddress>
#include <QList>
#include <QLocale>
#include <QString>
#include <QTcpServer>
#include <QTcpSocket>
#include <functional>
#include <gtest/gtest.h>

namespace walrim {

class TileServer {
 public:
  using Page = std::function<void(QTcpSocket& connection, const QString& path)>;

  /// page answers every request.
  explicit TileServer(Page page) : page_(std::move(page)) {
    QObject::connect(&server_, &QTcpServer::newConnection, [this] {
      while (QTcpSocket* connection = server_.nextPendingConnection())
        QObject::connect(connection, &QTcpSocket::readyRead, connection, [this, connection] { Answer(*connection); });
    });
    EXPECT_TRUE(server_.listen(QHostAddress::LocalHost));
  }

  [[nodiscard]] QString Address(const QString& path) const {
    return QStringLiteral("http://127.0.0.1:%1/%2").arg(server_.serverPort()).arg(path);
  }
  void SetPage(Page page) { page_ = std::move(page); }

  /// A whole answer.
  static void Send(QTcpSocket& connection, const QByteArray& body, const QByteArray& headers = {}) {
    const QString now = QLocale::c().toString(QDateTime::currentDateTimeUtc(), "ddd, dd MMM yyyy hh:mm:ss");
    connection.write("HTTP/1.1 200 OK\r\nDate: " + now.toLatin1() + " GMT\r\n" + headers +
                     "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body);
  }
  static void Send404(QTcpSocket& connection) {
    connection.write("HTTP/1.1 404 Not Found\r\nContent-Length: 4\r\n\r\nnone");
  }

  QList<QString> asked;        ///< paths, in their order
  QList<QByteArray> requests;  ///< whole
  qsizetype open = 0;          ///< asked and not answered: pages that answer later count themselves
  qsizetype most_open = 0;

 private:
  void Answer(QTcpSocket& connection) {
    if (!connection.peek(64LL * 1024).contains("\r\n\r\n")) return;
    const QByteArray request = connection.readAll();
    requests.append(request);
    asked.append(QString::fromLatin1(request.split(' ').value(1)));
    page_(connection, asked.last());
  }

  Page page_;
  QTcpServer server_;
};

}  // namespace walrim
