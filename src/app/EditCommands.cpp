#include "app/EditCommands.h"

#include "records/Chosen.h"

namespace walrim {

Outcome EditCommands::Choose(DataKind kind, const std::vector<std::size_t>& indices, bool chosen) {
  if (state_.Busy()) return Outcome::Busy;
  for (const std::size_t index : indices) {
    if (index < RecordCount(state_.Data(), kind)) state_.Data().SetChosen(kind, index, chosen);
  }
  return Outcome::Done;
}

}  // namespace walrim
