// Records that were held already when they came in once more.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "records/DataSet.h"

namespace walrim {

/// Records of each kind, by their indices in rising order.
using RecordIndices = std::array<std::vector<std::size_t>, DataKindCount>;

[[nodiscard]] std::size_t CountOf(const RecordIndices& indices);

/// How many records of each kind are held.
using RecordCounts = std::array<std::size_t, DataKindCount>;
[[nodiscard]] RecordCounts CountsOf(const DataSet& data);

/// Those behind the first held_before of each kind that are the same as one in front of them: texts, symbols, positions
/// as the coarsest notation rounds them, and times. Whether they are checked says nothing.
[[nodiscard]] RecordIndices DuplicatesBehind(const DataSet& data, const RecordCounts& held_before);

}  // namespace walrim
