// Saving what went over the line.
#pragma once

#include "app/Outcome.h"
#include "app/ProgramState.h"
#include "app/TraceMemory.h"
#include "platform/Desktop.h"

namespace walrim {

class TraceCommands {
 public:
  /// All must outlive this object.
  TraceCommands(ProgramState& state, const TraceMemory& trace, Desktop& desktop)
      : state_(state), trace_(trace), desktop_(desktop) {}

  /// Asks for a file, and whether positions are to be hidden, and writes the trace.
  Outcome Save();

 private:
  ProgramState& state_;
  const TraceMemory& trace_;
  Desktop& desktop_;
};

}  // namespace walrim
