// The demonstration data: autumn walks between Mt. Takao and Mt. Jinba, west of Tokyo.
#pragma once

#include "receiver/HeldContents.h"
#include "receiver/ReceiverModel.h"

namespace walrim {

/// Waypoints, two routes and three track logs, the first of them in two segments, with the symbols and display codes
/// that the model has.
[[nodiscard]] HeldContents DemoContents(const ReceiverModel& model);

}  // namespace walrim
