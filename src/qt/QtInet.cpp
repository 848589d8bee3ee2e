#include "qt/QtInet.h"

#include <QEventLoop>
#include <QSslSocket>
#include <QTimer>
#include <QUrl>
#include <memory>
#include <utility>

#include "qt/Messages.h"
#include "text/HttpAnswer.h"
#include "text/Scan.h"
#include "text/Utf8.h"

namespace walrim {

namespace {

using State = HttpAnswer::State;

/// Bytes that Qt holds before they are taken.
constexpr qint64 ReadAheadBytes = 256 * 1024;
constexpr quint16 HttpPort = 80;
constexpr quint16 HttpsPort = 443;

InetResult Failed(std::string_view why) {
  return {{}, std::string(why), false};
}

bool IsWebLink(const QUrl& url) {
  return url.isValid() && !url.host().isEmpty() && (url.scheme() == "http" || url.scheme() == "https");
}

bool IsSafe(const QUrl& url) {
  return url.scheme() == "https";
}

bool IsRedirect(int status) {
  return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

QString Host(const QUrl& url) {
  return url.host(QUrl::FullyEncoded);
}

/// The host as a request names it, with its port where that is not the usual one.
QString HostHeader(const QUrl& url) {
  QString host = Host(url);
  if (host.contains(':')) host = "[" + host + "]";
  if (url.port() >= 0) host += ":" + QString::number(url.port());
  return host;
}

QByteArray RequestText(const QUrl& url) {
  QString target = url.path(QUrl::FullyEncoded);
  if (target.isEmpty()) target = "/";
  if (url.hasQuery()) target += "?" + url.query(QUrl::FullyEncoded);
  return ("GET " + target + " HTTP/1.1\r\nHost: " + HostHeader(url) +
          "\r\nUser-Agent: Walrim\r\nAccept: */*\r\nAccept-Encoding: identity\r\nConnection: close\r\n\r\n")
      .toLatin1();
}

std::string ProblemText(const QSslSocket& socket, const QUrl& url) {
  using namespace qt_messages;
  const std::string host = url.host().toStdString();
  switch (socket.error()) {
    case QAbstractSocket::HostNotFoundError:
      return OfServer(host, NotFound);
    case QAbstractSocket::ConnectionRefusedError:
      return OfServer(host, NotConnected);
    case QAbstractSocket::SslHandshakeFailedError:
      return OfServer(host, socket.sslHandshakeErrors().isEmpty() ? NotSecured : NotCertified);
    default:
      return OfServer(host, NotReadFrom(socket.errorString().toStdString()));
  }
}

}  // namespace

/// One link from its first request to its end.
class QtInet::Fetch {
 public:
  Fetch(const InetLimits& limits, const std::optional<QSslConfiguration>& tls) : limits_(limits), tls_(tls) {
    silence_.setSingleShot(true);
    silence_.setInterval(limits.silence);
    QObject::connect(&silence_, &QTimer::timeout, [this] { Finish(Failed(qt_messages::ServerSilent)); });
    no_progress_.setSingleShot(true);
    no_progress_.setInterval(limits.no_progress);
    QObject::connect(&no_progress_, &QTimer::timeout, [this] { Finish(Failed(qt_messages::NoProgress)); });
  }

  InetResult Run(const QUrl& url) {
    no_progress_.start();
    Request(url);
    if (!done_) loop_.exec();
    // A program that ends leaves all its event loops.
    if (!done_) result_.cancelled = true;
    return std::move(result_);
  }

  void Cancel() { Finish({{}, {}, true}); }

 private:
  struct LaterDeleter {
    /// The socket may be the one whose signal is being handled.
    void operator()(QSslSocket* socket) const {
      socket->disconnect();
      socket->abort();
      socket->deleteLater();
    }
  };

  void Finish(InetResult result) {
    if (std::exchange(done_, true)) return;
    result_ = std::move(result);
    silence_.stop();
    no_progress_.stop();
    socket_.reset();
    loop_.quit();
  }

  void Request(const QUrl& url) {
    url_ = url;
    answer_ = HttpAnswer(limits_.most_bytes);
    silence_.start();
    socket_.reset(new QSslSocket);
    socket_->setReadBufferSize(ReadAheadBytes);
    if (tls_) socket_->setSslConfiguration(*tls_);
    const auto connected = IsSafe(url) ? &QSslSocket::encrypted : &QSslSocket::connected;
    QObject::connect(socket_.get(), connected, [this] { Send(); });
    QObject::connect(socket_.get(), &QSslSocket::readyRead, [this] { BytesCame(); });
    QObject::connect(socket_.get(), &QSslSocket::disconnected, [this] { ConnectionEnded(); });
    QObject::connect(socket_.get(), &QSslSocket::errorOccurred, [this] { ProblemCame(); });
    Connect();
  }

  void Connect() {
    const auto port = static_cast<quint16>(url_.port(IsSafe(url_) ? HttpsPort : HttpPort));
    if (IsSafe(url_)) {
      socket_->connectToHostEncrypted(Host(url_), port);
    } else {
      socket_->connectToHost(Host(url_), port);
    }
  }

  void Send() {
    silence_.start();
    socket_->write(RequestText(url_));
  }

  void BytesCame() {
    silence_.start();
    const QByteArray bytes = socket_->readAll();
    const std::size_t had = answer_.body.size();
    answer_.Take({bytes.constData(), static_cast<std::size_t>(bytes.size())});
    if (answer_.body.size() > had) no_progress_.start();
    AnswerGrew();
  }

  void ConnectionEnded() {
    const QSslSocket* const ended = socket_.get();
    if (socket_->bytesAvailable() > 0) BytesCame();
    // What came last may have finished the reading or led to another server.
    if (socket_.get() != ended) return;
    answer_.End();
    AnswerGrew();
  }

  /// A server that has sent all may close at any time; the answer tells whether it has.
  void ProblemCame() {
    if (socket_->error() == QAbstractSocket::RemoteHostClosedError) return;
    Finish(Failed(ProblemText(*socket_, url_)));
  }

  void AnswerGrew() {
    switch (answer_.Now()) {
      case State::Header:
        return;
      case State::TooLarge:
        return Finish(Failed(qt_messages::TooLarge(static_cast<long long>(limits_.most_bytes))));
      case State::CutShort:
        return Finish(Failed(qt_messages::CutShort));
      case State::Broken:
        return Finish(Failed(qt_messages::NoHttp));
      case State::Body:
      case State::Complete:
        return HeaderStands();
    }
  }

  /// The body of a redirect or a refusal is of no use.
  void HeaderStands() {
    if (IsRedirect(answer_.Status())) return Redirect();
    if (answer_.Status() != 200) return Finish(Refused());
    const std::string coding = UpperCase(answer_.Header("content-encoding"));
    if (!coding.empty() && coding != "IDENTITY") return Finish(Failed(qt_messages::Compressed));
    if (answer_.Now() == State::Complete) Finish({std::move(answer_.body), {}, false});
  }

  [[nodiscard]] InetResult Refused() const {
    return Failed(qt_messages::RefusedByServer(answer_.Status(), WithoutControlCharacters(answer_.Reason())));
  }

  void Redirect() {
    const std::string_view location = answer_.Header("location");
    const QByteArray target(location.data(), static_cast<qsizetype>(location.size()));
    const QUrl to = url_.resolved(QUrl::fromEncoded(target));
    if (location.empty() || !IsWebLink(to)) return Finish(Failed(qt_messages::BadRedirect));
    if (IsSafe(url_) && !IsSafe(to)) return Finish(Failed(qt_messages::UnsafeRedirect));
    if (++redirects_ > limits_.most_redirects) return Finish(Failed(qt_messages::TooManyRedirects));
    Request(to);
  }

  const InetLimits& limits_;
  const std::optional<QSslConfiguration>& tls_;
  QEventLoop loop_;
  QTimer silence_;
  QTimer no_progress_;
  std::unique_ptr<QSslSocket, LaterDeleter> socket_;
  QUrl url_;
  HttpAnswer answer_{0};
  InetResult result_;
  int redirects_ = 0;
  bool done_ = false;
};

QtInet::QtInet(InetLimits limits, std::optional<QSslConfiguration> tls) : limits_(limits), tls_(std::move(tls)) {}

QtInet::~QtInet() = default;

InetResult QtInet::OpenUrl(std::string_view link) {
  if (running_ != nullptr) return Failed(qt_messages::LinkIsRead);
  const QUrl url(QString::fromUtf8(link.data(), static_cast<qsizetype>(link.size())).trimmed());
  if (!IsWebLink(url)) return Failed(qt_messages::NoWebLink);
  Fetch fetch(limits_, tls_);
  running_ = &fetch;
  InetResult result = fetch.Run(url);
  running_ = nullptr;
  return result;
}

void QtInet::Cancel() {
  if (running_ != nullptr) running_->Cancel();
}

}  // namespace walrim
