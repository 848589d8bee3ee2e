// Reading GPX 1.1 and 1.0.
//
// The text is taken as the bytes that it is, since XML says itself how it is encoded: the lines are not read one by
// one. A text that was found to be UTF-8 is that whatever it declares, as one that was copied keeps its declaration.
#pragma once

#include "formats/Format.h"

namespace walrim {

/// A text is refused as a whole where it is not well-formed, is no GPX, or is longer than MostGpxBytes; then nothing of
/// it is stored. Elements of other namespaces are passed over.
[[nodiscard]] ImportResult ReadGpx(LineSource& lines, DataSet& data, const ReadSettings& settings);
inline constexpr std::size_t MostGpxBytes = std::size_t{64} * 1024 * 1024;

/// Whether a text begins as GPX does.
[[nodiscard]] bool IsGpx(std::string_view beginning);

}  // namespace walrim
