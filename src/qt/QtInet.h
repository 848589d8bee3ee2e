// Links read with Qt Network.
#pragma once

#include <QSslConfiguration>
#include <chrono>
#include <cstddef>
#include <optional>

#include "platform/Inet.h"

namespace walrim {

/// What a server is granted.
struct InetLimits {
  std::size_t most_bytes = 32U * 1024U * 1024U;
  std::chrono::milliseconds silence{30'000};  ///< without a byte
  /// Without a byte of the data themselves, whatever else comes: headers, redirects, lengths.
  std::chrono::milliseconds no_progress{60'000};
  int most_redirects = 5;
};

/// Needs a QCoreApplication. Every request is of its own: no cookies, no cache. Follows no redirect from https to http
/// or to another scheme; takes no certificate that the configuration does not trust.
class QtInet final : public Inet {
 public:
  explicit QtInet(InetLimits limits = {}, std::optional<QSslConfiguration> tls = std::nullopt);
  ~QtInet() override;

  [[nodiscard]] InetResult OpenUrl(std::string_view link) override;
  void Cancel() override;

 private:
  class Fetch;

  InetLimits limits_;
  std::optional<QSslConfiguration> tls_;
  Fetch* running_ = nullptr;  ///< lives in OpenUrl
};

}  // namespace walrim
