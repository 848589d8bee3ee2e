// A data set as a text that loses nothing of it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "records/DataSet.h"

namespace walrim {

/// A line each for waypoints (W), routes (R) and their points (P), logs (L) and their points (T), with every field,
/// separated by TABs; what is unknown is empty, and control characters and "%" are percent escapes. Positions are on
/// WGS84, times are the receivers' seconds. The last line tells whether the text is whole.
[[nodiscard]] std::string PlainFormOf(const DataSet& data);

/// The data set of such a text; nothing where the text is not whole, or not one.
[[nodiscard]] std::optional<DataSet> ReadPlainForm(std::string_view text);

/// Lines with the first and the last line of a whole text around them.
[[nodiscard]] std::string SealedPlainForm(std::string_view lines);

}  // namespace walrim
