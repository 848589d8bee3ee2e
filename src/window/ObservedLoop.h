// An event loop with a look at every turn.
#pragma once

#include <functional>
#include <utility>

#include "platform/EventLoop.h"

namespace walrim {

class ObservedLoop : public EventLoop {
 public:
  /// inner must outlive this object. look is called behind each turn.
  ObservedLoop(EventLoop& inner, std::function<void()> look) : inner_(inner), look_(std::move(look)) {}

  void Yield() override {
    inner_.Yield();
    look_();
  }

 private:
  EventLoop& inner_;
  std::function<void()> look_;
};

}  // namespace walrim
