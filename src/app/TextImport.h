// A text of any format, read into a data set.
#pragma once

#include <string>

#include "app/FileFormat.h"
#include "app/ImportReport.h"
#include "data/InternalData.h"

namespace walrim {

/// Reads a text behind what a data set holds. An unknown format is read as a script.
ImportResult ReadTextInto(InternalData& data, const std::string& text, FileFormat format, int utc_offset_hours);

}  // namespace walrim
