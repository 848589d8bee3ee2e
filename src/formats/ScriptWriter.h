// Writing a map-server script.
#pragma once

#include "formats/Format.h"

namespace walrim {

/// The script that draws the records. Its positions are on the datum of the settings, which the theme names. Texts that
/// would cut a WPT+ line are cut as they would be there; a record that has no position then is skipped. Nothing where
/// the wanted kinds hold nothing that a script could draw.
[[nodiscard]] WriteReport WriteScript(TextOutput& out, const DataSet& data, const WriteSettings& settings);

}  // namespace walrim
