// A data set of a wanted size, for measuring.
#pragma once

#include <string>

#include "data/InternalData.h"

namespace walrim {

/// Fills data with 1/divisor of the records that it can hold. The same every time.
void FillDataSet(InternalData& data, int divisor);

/// The standard file of such a data set, in UTF-8 with header lines.
[[nodiscard]] std::string StandardFile(int divisor);

}  // namespace walrim
