// Small functions over UTF-8 text.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "text/Scan.h"

namespace walrim {

/// True when the bytes are well-formed UTF-8 (no overlong forms, no surrogates, nothing above U+10FFFF).
[[nodiscard]] bool IsValidUtf8(std::string_view bytes);

/// How many bytes at the front are below 128.
[[nodiscard]] std::size_t AsciiPrefix(std::string_view text);

/// Text with U+FFFD for every ill-formed byte.
[[nodiscard]] std::string WellFormed(std::string_view bytes);

/// Takes one character off the front of text and returns its code point; an ill-formed byte is taken alone and gives
/// U+FFFD. text must not be empty.
[[nodiscard]] char32_t TakeCharacter(std::string_view& text);

/// Appends a code point in UTF-8.
void AppendCharacter(std::string& text, char32_t character);

/// Text with a blank for every control character (below U+0020, and U+007F to U+009F): for what comes from outside and
/// is shown.
[[nodiscard]] std::string WithoutControlCharacters(std::string_view text);

}  // namespace walrim
