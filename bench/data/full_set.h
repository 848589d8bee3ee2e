// A data set of a wanted size, for measuring.
#pragma once

#include <string>

#include "formats/Format.h"

namespace walrim {

/// 1/divisor of the records that a data set can hold. The same every time.
[[nodiscard]] DataSet FullDataSet(int divisor);

/// A text of such a data set, in UTF-8, with header lines where the format has them.
[[nodiscard]] std::string TextOf(FormatId format, const DataSet& data, const WriteSettings& settings = {});
[[nodiscard]] std::string StandardFile(int divisor);

}  // namespace walrim
