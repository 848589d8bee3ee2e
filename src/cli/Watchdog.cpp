#include "cli/Watchdog.h"

#include <csignal>
#include <unistd.h>
#include <utility>

namespace walrim {

namespace {

volatile std::sig_atomic_t signal_came = 0;

void NoteSignal(int) {
  signal_came = 1;
}

void Exit(int) {
  ::_exit(1);
}

/// A signal that is ignored stays so: whoever started the program wants it to outlive a terminal, or a Ctrl-C.
void Handle(void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  action.sa_flags = static_cast<int>(SA_RESETHAND);  // once only: a second signal is not caught
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction before {};
    if (sigaction(number, nullptr, &before) == 0 && before.sa_handler == SIG_IGN) continue;
    sigaction(number, &action, nullptr);
  }
}

}  // namespace

bool Interrupted() {
  return signal_came != 0;
}

void IgnoreBrokenPipes() {
  std::signal(SIGPIPE, SIG_IGN);
}

void ExitOnSignals() {
  Handle(Exit);
}

void CatchSignals() {
  Handle(NoteSignal);
}

Watchdog::Watchdog(const Clock& clock, std::function<bool()> interrupted)
    : clock_(clock), interrupted_(std::move(interrupted)) {}

void Watchdog::Watch(Progress progress, std::function<void()> cancel) {
  progress_ = std::move(progress);
  cancel_ = std::move(cancel);
  last_progress_ = progress_();
  progress_at_ = clock_.Monotonic();
}

void Watchdog::Yield() {
  if (!progress_) return;
  if (interrupted_()) cancel_();
  const std::int64_t progress = progress_();
  const auto now = clock_.Monotonic();
  if (progress != last_progress_) {
    last_progress_ = progress;
    progress_at_ = now;
  } else if (!stalled_ && now - progress_at_ > StallTime) {
    stalled_ = true;
    cancel_();
  }
}

}  // namespace walrim
