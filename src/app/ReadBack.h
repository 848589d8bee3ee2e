// Whether what was written gives the data set back. What it lost must not be deleted.
#pragma once

#include <array>
#include <string>

#include "app/FileFormat.h"
#include "data/InternalData.h"

namespace walrim {

/// Whether a text that was written of some kinds gives them back: every record and point in its place, with its texts
/// (the fields that the format has), its time, and the numbers of routes and points; a standard text also its logs.
/// Positions may be rounded as the notations round them. Texts are compared without case, as reading capitalises them.
[[nodiscard]] bool ReadsBack(InternalData& data, const std::array<bool, DataKindCount>& kinds, const std::string& text,
                             FileFormat format, int utc_offset_hours);

}  // namespace walrim
