#include "app/Deed.h"

#include <utility>

namespace walrim {

void Deeds::Add(Deed deed) {
  const bool goes_on = !deeds_.empty() && deeds_.back().kind == Deed::Kind::Imported;
  if (deed.kind != Deed::Kind::Imported || !goes_on) {
    deeds_.push_back(std::move(deed));
    return;
  }
  Deed& sum = deeds_.back();
  sum.records += deed.records;
  for (std::size_t kind = 0; kind < DataKindCount; ++kind) {
    sum.kinds[kind] = sum.kinds[kind] || deed.kinds[kind];
    sum.already_held[kind].insert(sum.already_held[kind].end(), deed.already_held[kind].begin(),
                                  deed.already_held[kind].end());
  }
}

}  // namespace walrim
