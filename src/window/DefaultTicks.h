// The ticks of the kinds, as long as the user sets none himself.
#pragma once

#include "app/ProgramState.h"

namespace walrim {

class DefaultTicks {
 public:
  /// state must outlive this object.
  explicit DefaultTicks(ProgramState& state) : state_(state) {}

  /// From now on ticks stay as they are.
  void Leave() { left_ = true; }
  /// The receiver has told its counts: what it holds something of is to be downloaded, and nothing else.
  void ReceiverCounted();
  /// Records of some kinds have come in: they are to be saved.
  void CameIn(const DataKinds& kinds);

 private:
  ProgramState& state_;
  bool left_ = false;
};

}  // namespace walrim
