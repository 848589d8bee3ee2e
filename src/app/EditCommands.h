// The commands that change records that are held, and those that take commands back.
#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "app/Outcome.h"
#include "app/ProgramState.h"
#include "platform/Desktop.h"

namespace walrim {

class EditCommands {
 public:
  /// Both must outlive this object.
  EditCommands(ProgramState& state, Desktop& desktop) : state_(state), desktop_(desktop) {}

  /// Takes the last command back; Refused where there is none.
  Outcome Undo();
  /// Does again what was taken back last; Refused where there is nothing.
  Outcome Redo();

  /// Runs an edit as one step: a function that changes the data set with DataSet::Edit and EditHeader, as often as it
  /// likes. Where it returns false all that it did is taken back, and the edit is Refused. Counts, tables and the dates
  /// to be repaired follow. An edit that changes nothing is Done and leaves no step. Steps are kept (KeepSteps).
  Outcome Edit(StepKind kind, const std::function<bool(DataSet&)>& edit);

  /// Takes the waypoints out that a receiver announced and never sent. Refused where there are none.
  Outcome RemoveMissing();

  /// Checks records, by their indices, or takes their checks away: what is not checked is not saved, copied, sent or
  /// deleted. This changes nothing in the records, and there is nothing to be undone.
  Outcome Choose(DataKind kind, const std::vector<std::size_t>& indices, bool chosen);

 private:
  ProgramState& state_;
  Desktop& desktop_;
};

}  // namespace walrim
