// The output types of export and copy: one row each.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "app/FileFormat.h"

namespace walrim {

struct OutputType {
  std::string_view name;       ///< as OutputTypeOption shows it
  std::string_view extension;  ///< of its files, without the point
  std::string_view filter;     ///< entry of the file dialogs' filter
  FileFormat format;           ///< what its texts are read as
};

/// All output types in the order of OutputTypeOption.
[[nodiscard]] std::span<const OutputType> OutputTypes();
/// The row of a name, or of an extension (any case); the standard type's for any other.
[[nodiscard]] const OutputType& OutputTypeOfName(std::string_view name);
[[nodiscard]] const OutputType& OutputTypeOfExtension(std::string_view extension);

/// The file dialogs' filter while an output type is chosen.
[[nodiscard]] std::string DialogFilter(const OutputType& type);

}  // namespace walrim
