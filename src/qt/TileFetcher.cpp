#include "qt/TileFetcher.h"

#include <QDateTime>
#include <QLocale>
#include <QNetworkAccessManager>
#include <QNetworkDiskCache>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <algorithm>
#include <utility>

namespace walrim {
namespace {

constexpr int Patience_ms = 20'000;  ///< without a byte
constexpr qint64 FreshFor_s = 7LL * 24 * 3600;
constexpr int StatusOk = 200;
constexpr const char* HttpDate = "ddd, dd MMM yyyy hh:mm:ss 'GMT'";

QByteArray HeaderOf(const QNetworkCacheMetaData& data, const QByteArray& name) {
  for (const auto& [key, value] : data.rawHeaders()) {
    if (key.compare(name, Qt::CaseInsensitive) == 0) return value;
  }
  return {};
}

QNetworkRequest RequestFor(const QUrl& url, const QByteArray& user_agent, bool from_cache) {
  QNetworkRequest request(url);
  request.setHeader(QNetworkRequest::UserAgentHeader, user_agent);
  request.setAttribute(QNetworkRequest::CacheLoadControlAttribute,
                       from_cache ? QNetworkRequest::AlwaysCache : QNetworkRequest::PreferNetwork);
  request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
  request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
  request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::SameOriginRedirectPolicy);
  request.setTransferTimeout(Patience_ms);
  return request;
}

}  // namespace

TileFetcher::TileFetcher(const QString& cache_folder, const QByteArray& user_agent, const Clock& clock, Came came,
                         QObject* parent)
    : QObject(parent), cache_folder_(cache_folder), user_agent_(user_agent), clock_(clock), came_(std::move(came)) {}

TileFetcher::~TileFetcher() {
  wanted_.clear();
  for (QNetworkReply* reply : std::exchange(running_, {}))
    reply->disconnect(this);
}

QNetworkAccessManager& TileFetcher::Network() {
  if (network_ != nullptr) return *network_;
  network_ = new QNetworkAccessManager(this);
  auto* cache = new QNetworkDiskCache(network_);
  cache->setCacheDirectory(cache_folder_);
  cache->setMaximumCacheSize(MostCacheBytes);
  network_->setCache(cache);
  return *network_;
}

bool TileFetcher::Rests(const QUrl& url) const {
  const auto failed = failed_.constFind(url);
  return failed != failed_.constEnd() && clock_.Monotonic() - *failed < FailureRest;
}

bool TileFetcher::FreshInCache(const QUrl& url) const {
  const QNetworkCacheMetaData data = network_->cache()->metaData(url);
  if (!data.isValid()) return false;
  QDateTime date = QLocale::c().toDateTime(QString::fromLatin1(HeaderOf(data, "Date")), QString::fromLatin1(HttpDate));
  date.setTimeSpec(Qt::UTC);
  const qint64 age_s = date.secsTo(QDateTime::currentDateTimeUtc());
  return date.isValid() && age_s >= 0 && age_s < FreshFor_s;
}

void TileFetcher::Want(const QList<QUrl>& urls) {
  wanted_ = urls;
  for (const QUrl& url : running_.keys()) {
    if (!wanted_.contains(url)) running_.take(url)->abort();
  }
  StartMore();
}

void TileFetcher::StartMore() {
  while (running_.size() < MostRequests) {
    const auto next =
        std::ranges::find_if(wanted_, [this](const QUrl& url) { return !running_.contains(url) && !Rests(url); });
    if (next == wanted_.end()) return;
    Start(*next);
  }
}

void TileFetcher::Start(const QUrl& url) {
  QNetworkAccessManager& network = Network();
  QNetworkReply* reply = network.get(RequestFor(url, user_agent_, FreshInCache(url)));
  running_.insert(url, reply);
  const auto end_if_large = [reply] {
    const qint64 announced = reply->header(QNetworkRequest::ContentLengthHeader).toLongLong();
    if (std::max(announced, reply->bytesAvailable()) > MostTileBytes) reply->abort();
  };
  connect(reply, &QNetworkReply::metaDataChanged, reply, end_if_large);
  connect(reply, &QNetworkReply::readyRead, reply, end_if_large);
  connect(reply, &QNetworkReply::finished, this, [this, url, reply] { Finish(url, *reply); });
}

void TileFetcher::Finish(const QUrl& url, QNetworkReply& reply) {
  reply.deleteLater();
  if (running_.value(url) != &reply) return;  // it is no longer wanted
  running_.remove(url);
  const QByteArray body = reply.readAll();
  const bool whole = reply.error() == QNetworkReply::NoError &&
                     reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt() == StatusOk && !body.isEmpty() &&
                     body.size() <= MostTileBytes;
  if (whole) {
    wanted_.removeAll(url);
    failed_.remove(url);
    came_({url, body, reply.attribute(QNetworkRequest::SourceIsFromCacheAttribute).toBool()});
  } else {
    failed_.insert(url, clock_.Monotonic());
  }
  StartMore();
}

void TileFetcher::Refuse(const QUrl& url) {
  failed_.insert(url, clock_.Monotonic());
  if (network_ != nullptr) network_->cache()->remove(url);
}

}  // namespace walrim
