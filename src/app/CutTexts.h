// Texts that a receiver cannot take whole.
#pragma once

#include "data/InternalData.h"
#include "device/DeviceProtocols.h"

namespace walrim {

/// Names, comments and route names of a kind that a receiver's records have no room for.
[[nodiscard]] int CountCutTexts(InternalData& data, DataKind kind, const DeviceProtocols& protocols);

}  // namespace walrim
