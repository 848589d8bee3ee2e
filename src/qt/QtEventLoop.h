// The event loop of the running QCoreApplication.
#pragma once

#include "platform/EventLoop.h"

namespace walrim {

/// Yields to the QCoreApplication of the calling thread; without one there is nothing to yield to.
class QtEventLoop : public EventLoop {
 public:
  void Yield() override;
};

}  // namespace walrim
