#include "qt/QtEventLoop.h"

#include <QCoreApplication>

namespace walrim {

void QtEventLoop::Yield() {
  QCoreApplication::processEvents();
}

}  // namespace walrim
