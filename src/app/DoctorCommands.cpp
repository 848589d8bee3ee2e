#include "app/DoctorCommands.h"

#include "app/Messages.h"
#include "doctor/Messages.h"

namespace walrim {

Outcome DoctorCommands::Run(std::string headline, const std::function<Outcome()>& command) {
  if (state_.Busy()) return Outcome::Busy;
  const BusyGuard guard(state_);
  lines_.clear();
  report_.reset();
  state_.SetCancelEnabled(true);
  ShowHeadline(std::move(headline));
  const Outcome outcome = command();
  state_.SetCancelEnabled(false);
  return state_.CancelRequested() ? Outcome::Cancelled : outcome;
}

void DoctorCommands::ShowHeadline(std::string headline) {
  headline_ = std::move(headline);
  desktop_.SetStatusCaption(headline_);
  desktop_.ControlsChanged();
}

void DoctorCommands::Tell(std::string line) {
  if (line_told_) line_told_(line);
  lines_.push_back(std::move(line));
  desktop_.ControlsChanged();
}

Outcome DoctorCommands::Examine() {
  const std::string port = state_.Settings().port;
  return Run(doctor_messages::Examining(port), [&] {
    report_ = exam_.Examine(
        port, [this](ExamStep step, const LineReport& so_far) { Tell(doctor_messages::StepLine(step, so_far)); });
    // What is said of the receiver beside the port is no longer true of one that answers.
    if (report_->product_id > 0)
      state_.SetReceiverText(messages::ReceiverText(report_->description, report_->product_id));
    ShowHeadline(doctor_messages::Headline(*report_));
    return report_->Healthy() ? Outcome::Done : Outcome::NoReceiver;
  });
}

Outcome DoctorCommands::FindReceiver() {
  return Run(std::string(doctor_messages::Searching), [this] {
    const auto found = exam_.FindReceiver(
        [this](const PortChoice& port, bool answers) { Tell(doctor_messages::AskedPort(port, answers)); });
    if (found) state_.Settings().port = found->name;
    ShowHeadline(found ? doctor_messages::FoundAt(*found) : std::string(doctor_messages::FoundNowhere));
    return found ? Outcome::Done : Outcome::NoReceiver;
  });
}

}  // namespace walrim
