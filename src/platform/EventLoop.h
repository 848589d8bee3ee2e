// The event loop that long operations yield to.
#pragma once

namespace walrim {

class EventLoop {
 public:
  virtual ~EventLoop() = default;

  /// Handles what is pending (clicks, timers, signals) and returns; never waits.
  virtual void Yield() = 0;
};

}  // namespace walrim
