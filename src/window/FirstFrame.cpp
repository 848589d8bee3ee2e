#include "window/FirstFrame.h"

#include <QEvent>
#include <QTimer>
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
      QTimer::singleShot(0, this, [this] {
        const std::function<void()> call = std::move(call_);
        deleteLater();
        call();
      });
    }
    return false;
  }

 private:
  std::function<void()> call_;
};

}  // namespace

void CallAfterFirstFrame(QWidget& window, std::function<void()> call) {
  new FirstPaint(window, std::move(call));
}

}  // namespace walrim
