// Positions that one of the notations cannot carry.
#pragma once

#include <array>

#include "data/InternalData.h"

namespace walrim {

/// Positions of some kinds that lie south of the equator or west of Greenwich. Degrees, minutes and seconds in one
/// number ("DMS") are rounded towards the south and the west, and such a position reads back elsewhere.
[[nodiscard]] int CountSouthAndWest(const InternalData& data, const std::array<bool, DataKindCount>& kinds);

}  // namespace walrim
