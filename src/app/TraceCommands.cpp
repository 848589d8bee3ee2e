#include "app/TraceCommands.h"

#include "app/FileStore.h"
#include "app/Messages.h"

namespace walrim {

Outcome TraceCommands::Save() {
  if (state_.Busy()) return Outcome::Busy;
  if (trace_.Empty()) {
    desktop_.ShowMessage(messages::NothingTraced);
    return Outcome::Refused;
  }
  const BusyGuard guard(state_);
  const auto path = desktop_.SaveFileDialog(messages::TraceFilter);
  if (!path || (FileExists(*path) && !desktop_.AskOkCancel(messages::OverwriteQuestion(*path)))) {
    return Outcome::Refused;
  }
  const Answer hide = desktop_.AskThree(messages::HidePositionsQuestion, messages::HidePositionsAnswers);
  if (hide == Answer::Back) return Outcome::Cancelled;
  FileWriter file(*path);
  file.Add(trace_.Text(hide == Answer::First));
  if (const auto problem = file.Finish()) {
    desktop_.ShowMessage(messages::WriteProblem(*path, problem->detail));
    return Outcome::Refused;
  }
  desktop_.SetStatusCaption(messages::TraceSaved(*path));
  return Outcome::Done;
}

}  // namespace walrim
