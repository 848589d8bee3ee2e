// The commands that take records away.
#pragma once

#include <string_view>

#include "app/Outcome.h"
#include "app/ProgramState.h"
#include "platform/Desktop.h"

namespace walrim {

class DeleteCommands {
 public:
  /// Both must outlive this object.
  DeleteCommands(ProgramState& state, Desktop& desktop) : state_(state), desktop_(desktop) {}

  /// Takes the checked records of the chosen kinds away.
  Outcome Delete();
  /// What AutoDelete does behind a command that did all it was asked for: only what was kept elsewhere as a whole may
  /// go. lost is told where it was not.
  void DeleteHandled(std::string_view lost);

 private:
  void EmptyChosenKinds();

  ProgramState& state_;
  Desktop& desktop_;
};

}  // namespace walrim
