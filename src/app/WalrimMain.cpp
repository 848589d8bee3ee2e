#include "app/WalrimMain.h"

namespace walrim {

WalrimMain::WalrimMain(SerialPort& port, const Clock& clock, EventLoop& event_loop, Desktop& desktop, Dialogs* dialogs,
                       Inet* inet)
    : state_(desktop),
      garmin_(state_.Data(), port, clock, event_loop, desktop),
      deletes_(state_, desktop),
      imports_(state_, garmin_, desktop, dialogs, inet),
      exports_(state_, deletes_, clock, event_loop, desktop, dialogs),
      device_(state_, garmin_, deletes_, exports_, desktop),
      external_(state_, deletes_, imports_, device_, desktop) {}

void WalrimMain::Cancel() {
  state_.RequestCancel();
  device_.Cancel();
  imports_.Cancel();
}

}  // namespace walrim
