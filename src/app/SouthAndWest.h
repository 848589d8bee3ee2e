// Positions that one of the notations cannot carry.
#pragma once

#include "records/DataSet.h"

namespace walrim {

/// Positions of some kinds that lie south of the equator or west of Greenwich. Degrees, minutes and seconds in one
/// number ("DMS") are rounded towards the south and the west, and such a position reads back elsewhere.
[[nodiscard]] int CountSouthAndWest(const DataSet& data, const DataKinds& kinds);

}  // namespace walrim
