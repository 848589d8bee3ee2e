// What ends a transfer when there is nobody to press Cancel: a signal, or a receiver that makes no progress.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>

#include "platform/Clock.h"
#include "platform/EventLoop.h"

namespace walrim {

/// A transfer without a received byte for this long is cancelled.
inline constexpr std::chrono::seconds StallTime{30};

/// Whether SIGINT, SIGTERM or SIGHUP has come since CatchSignals.
[[nodiscard]] bool Interrupted();
/// Lets these signals end the program at once with exit status 1: for times when nothing has to be put in order.
void ExitOnSignals();
/// Lets writing to a pipe that nobody reads any more be an error like others, instead of the program's end.
void IgnoreBrokenPipes();
/// Notes these signals from now on, but for those that the program's starter let it ignore. A second SIGINT ends the
/// program the hard way.
void CatchSignals();

/// The event loop of the terminal: looks after the signals and the progress whenever a transfer yields.
class Watchdog : public EventLoop {
 public:
  using Progress = std::function<std::int64_t()>;

  /// interrupted is asked at every turn.
  Watchdog(const Clock& clock, std::function<bool()> interrupted);

  /// From now on: progress tells a number that grows, cancel ends the transfer.
  void Watch(Progress progress, std::function<void()> cancel);
  void Yield() override;

  /// True once a transfer was cancelled because nothing moved.
  [[nodiscard]] bool Stalled() const { return stalled_; }

 private:
  const Clock& clock_;
  std::function<bool()> interrupted_;
  Progress progress_;
  std::function<void()> cancel_;
  std::int64_t last_progress_ = 0;
  std::chrono::nanoseconds progress_at_{};
  bool stalled_ = false;
};

}  // namespace walrim
