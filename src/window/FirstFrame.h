// When a window has been seen for the first time.
#pragma once

#include <functional>

class QWidget;

namespace walrim {

/// Calls once the window has been painted for the first time, from the event loop. Nothing is called for a window that
/// goes before.
void CallAfterFirstFrame(QWidget& window, std::function<void()> call);

}  // namespace walrim
