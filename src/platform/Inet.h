// Reading links.
#pragma once

#include <string>
#include <string_view>

namespace walrim {

/// What a link gave: its bytes, or why there are none.
struct InetResult {
  std::string bytes;
  std::string error;       ///< in Japanese; empty on success and when it was cancelled
  bool cancelled = false;  ///< Cancel ended it, or the program is ending

  [[nodiscard]] bool Ok() const { return error.empty() && !cancelled; }
};

class Inet {
 public:
  virtual ~Inet() = default;

  /// Reads a link of the schemes http and https to its end. Lets the event loop run meanwhile, so that a window stays
  /// usable; a call during another one is refused.
  [[nodiscard]] virtual InetResult OpenUrl(std::string_view link) = 0;

  /// Ends the OpenUrl that is running, if any.
  virtual void Cancel() = 0;
};

}  // namespace walrim
