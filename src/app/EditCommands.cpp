#include "app/EditCommands.h"

#include <utility>

#include "app/Messages.h"
#include "records/Chosen.h"

namespace walrim {

Outcome EditCommands::Undo() {
  if (state_.Busy()) return Outcome::Busy;
  const StepName* next = state_.Steps().NextUndo();
  if (next == nullptr) return Outcome::Refused;
  const std::string told = messages::Undone(*next);
  const BusyGuard guard(state_);
  state_.Undo();
  desktop_.SetStatusCaption(told);
  return Outcome::Done;
}

Outcome EditCommands::Redo() {
  if (state_.Busy()) return Outcome::Busy;
  const StepName* next = state_.Steps().NextRedo();
  if (next == nullptr) return Outcome::Refused;
  const std::string told = messages::Redone(*next);
  const BusyGuard guard(state_);
  state_.Redo();
  desktop_.SetStatusCaption(told);
  return Outcome::Done;
}

Outcome EditCommands::Edit(StepKind kind, const std::function<bool(DataSet&)>& edit) {
  if (state_.Busy()) return Outcome::Busy;
  const BusyGuard guard(state_);
  const UndoStep step(state_, kind);
  const bool done = edit(state_.Data());
  done ? state_.HeldChanged() : state_.TakeBack();
  return done ? Outcome::Done : Outcome::Refused;
}

Outcome EditCommands::RemoveMissing() {
  return Edit(StepKind::Delete, [](DataSet& data) {
    Splice<Waypoint> missing;
    for (std::size_t at = 0; at < data.Waypoints().size(); ++at) {
      if (data.Waypoints()[at].missing) missing.runs.push_back({at, 1, 0});
    }
    return !missing.runs.empty() && data.Edit(std::move(missing));
  });
}

Outcome EditCommands::Choose(DataKind kind, const std::vector<std::size_t>& indices, bool chosen) {
  if (state_.Busy()) return Outcome::Busy;
  for (const std::size_t index : indices) {
    if (index < RecordCount(state_.Data(), kind)) state_.Data().SetChosen(kind, index, chosen);
  }
  return Outcome::Done;
}

}  // namespace walrim
