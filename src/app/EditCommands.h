// The commands that change single records by hand.
#pragma once

#include <cstddef>
#include <vector>

#include "app/Outcome.h"
#include "app/ProgramState.h"

namespace walrim {

class EditCommands {
 public:
  /// state must outlive this object.
  explicit EditCommands(ProgramState& state) : state_(state) {}

  /// Checks records, by their indices, or takes their checks away: what is not checked is not saved, copied, sent or
  /// deleted. This changes nothing in the records, and there is nothing to be undone.
  Outcome Choose(DataKind kind, const std::vector<std::size_t>& indices, bool chosen);

 private:
  ProgramState& state_;
};

}  // namespace walrim
