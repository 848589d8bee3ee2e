#include "app/DeleteCommands.h"

#include <string>

#include "app/Messages.h"

namespace walrim {

/// What an earlier command told of the records that go is no longer true.
Outcome DeleteCommands::Delete() {
  if (state_.Busy()) return Outcome::Busy;
  EmptyChosenKinds();
  if (AnyOf(state_.Settings().chosen_kinds) && !desktop_.StatusCaption().empty()) desktop_.SetStatusCaption("");
  return Outcome::Done;
}

/// The status line has then what it had before.
void DeleteCommands::EmptyChosenKinds() {
  const BusyGuard guard(state_);
  const UndoStep step(state_, StepKind::Delete);
  const std::string before = desktop_.StatusCaption();
  desktop_.SetStatusCaption(messages::Deleting);
  for (const DataKind kind : AllDataKinds) {
    if (state_.Settings().chosen_kinds[IndexOf(kind)]) state_.EmptyOfChosen(kind);
  }
  desktop_.SetStatusCaption(before);
}

void DeleteCommands::DeleteHandled(std::string_view lost) {
  if (!state_.Settings().auto_delete) return;
  if (!state_.SomethingLost()) return EmptyChosenKinds();
  state_.Told().Add(std::string(lost));
  desktop_.SetStatusCaption(state_.Told().Joined());
}

}  // namespace walrim
