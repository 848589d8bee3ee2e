#include "window/DefaultTicks.h"

namespace walrim {

void DefaultTicks::ReceiverCounted() {
  // Where all is downloaded by itself, all kinds are ticked.
  if (left_ || state_.Settings().auto_download) return;
  for (const DataKind kind : AllDataKinds)
    state_.Settings().download_kinds[IndexOf(kind)] = state_.ReceiverCount(kind).value_or(0) > 0;
}

void DefaultTicks::CameIn(const DataKinds& kinds) {
  if (left_) return;
  for (const DataKind kind : AllDataKinds) {
    if (kinds[IndexOf(kind)]) state_.Settings().chosen_kinds[IndexOf(kind)] = true;
  }
}

}  // namespace walrim
