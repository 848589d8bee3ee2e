#include "window/FirstFrame.h"

#include <QEvent>
#include <QTimerEvent>
#include <QWidget>
#include <utility>

namespace walrim {

namespace {

class FirstPaint : public QObject {
 public:
  FirstPaint(QWidget& window, std::function<void()> call) : QObject(&window), call_(std::move(call)) {
    window.installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint) {
      watched->removeEventFilter(this);
      // The painting itself is done by the time the event loop turns again.
      startTimer(0);
    }
    return false;
  }
  void timerEvent(QTimerEvent* event) override {
    killTimer(event->timerId());
    deleteLater();
    const std::function<void()> call = std::move(call_);
    call();
  }

 private:
  std::function<void()> call_;
};

}  // namespace

void CallAfterFirstFrame(QWidget& window, std::function<void()> call) {
  new FirstPaint(window, std::move(call));
}

}  // namespace walrim
