// Recognising what a text is by its first line.
#pragma once

#include <string_view>

namespace walrim {

enum class FileFormat { Unknown, Standard, WptPlus, MapServerScript };

/// The format of a file's text. Standard and WPT+ are told by the first column of the first line, in any case; a
/// map-server script by a path that ends in "mps", in any case.
[[nodiscard]] FileFormat RecognizeFormat(std::string_view text, std::string_view path);

/// The format of a text without a path: a script begins with its "//Header" line.
[[nodiscard]] FileFormat RecognizeText(std::string_view text);

}  // namespace walrim
