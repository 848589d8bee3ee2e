// Tiles of a map server, fetched as its owners want it: seldom, few at once, and none twice without need.
#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QObject>
#include <QUrl>
#include <chrono>
#include <functional>

#include "platform/Clock.h"

class QNetworkAccessManager;
class QNetworkReply;

namespace walrim {

/// Needs a QCoreApplication. Nothing is asked of anybody before the first Want. Sends no cookies and follows no
/// redirect to another server. What has come is kept on the disk, up to a bound, and not asked for again for a week.
class TileFetcher : public QObject {
 public:
  static constexpr qsizetype MostRequests = 2;
  static constexpr qint64 MostTileBytes = 512LL * 1024;
  static constexpr qint64 MostCacheBytes = 64LL * 1024 * 1024;
  /// What has failed is not asked for again before that.
  static constexpr std::chrono::seconds FailureRest{60};

  struct Arrival {
    QUrl url;
    QByteArray body;
    bool from_cache = false;
  };
  using Came = std::function<void(const Arrival& arrival)>;

  /// clock must outlive the fetcher. user_agent: as the header has it. came may call every method of the fetcher.
  TileFetcher(const QString& cache_folder, const QByteArray& user_agent, const Clock& clock, Came came,
              QObject* parent = nullptr);
  ~TileFetcher() override;

  /// The tiles that are wanted from now on, the most wanted first. Of the others that were, those under way end.
  void Want(const QList<QUrl>& urls);
  /// What came is no tile: it counts as failed, and is not kept.
  void Refuse(const QUrl& url);

 private:
  void StartMore();
  void Start(const QUrl& url);
  void Finish(const QUrl& url, QNetworkReply& reply);
  [[nodiscard]] bool Rests(const QUrl& url) const;
  [[nodiscard]] bool FreshInCache(const QUrl& url) const;
  [[nodiscard]] QNetworkAccessManager& Network();

  QString cache_folder_;
  QByteArray user_agent_;
  const Clock& clock_;
  Came came_;
  QNetworkAccessManager* network_ = nullptr;  ///< made with the first request
  QList<QUrl> wanted_;
  QHash<QUrl, QNetworkReply*> running_;
  QHash<QUrl, std::chrono::nanoseconds> failed_;
};

}  // namespace walrim
