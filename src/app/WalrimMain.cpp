#include "app/WalrimMain.h"

namespace walrim {

namespace {

class UnknownPortFacts : public PortFacts {
 public:
  [[nodiscard]] std::vector<PortChoice> Ports() const override { return {}; }
  [[nodiscard]] std::vector<PortHolder> Holders(std::string_view) const override { return {}; }
  [[nodiscard]] PortAdapter Adapter(std::string_view) const override { return {}; }
  [[nodiscard]] bool VanishedLately(std::string_view) const override { return false; }
};

const UnknownPortFacts NoFacts;

}  // namespace

WalrimMain::WalrimMain(SerialPort& port, const Clock& clock, EventLoop& event_loop, Desktop& desktop, Dialogs* dialogs,
                       Inet* inet, const PortFacts* facts)
    : state_(desktop),
      garmin_(port, clock, event_loop, desktop),
      deletes_(state_, desktop),
      edits_(state_, desktop),
      records_(state_, edits_, desktop),
      dates_(state_, garmin_, clock, desktop, dialogs),
      imports_(state_, garmin_, dates_, desktop, dialogs, inet),
      exports_(state_, deletes_, clock, event_loop, desktop, dialogs),
      names_(state_, clock, desktop),
      device_(state_, garmin_, deletes_, exports_, dates_, names_, desktop),
      uploads_(state_, garmin_, device_, names_, clock, desktop),
      external_(state_, deletes_, imports_, device_, desktop),
      doctor_(state_, LineExam(port, clock, event_loop, facts != nullptr ? *facts : NoFacts), desktop),
      traces_(state_, trace_, desktop),
      recovery_(state_, dates_, clock, desktop) {
  garmin_.SetTrace(&trace_);
}

void WalrimMain::Cancel() {
  state_.RequestCancel();
  device_.Cancel();
  imports_.Cancel();
  doctor_.Cancel();
}

}  // namespace walrim
