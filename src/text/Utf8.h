// Small functions over UTF-8 text.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace walrim {

/// True when the bytes are well-formed UTF-8 (no overlong forms, no surrogates, nothing above U+10FFFF).
[[nodiscard]] bool IsValidUtf8(std::string_view bytes);

/// Takes one character off the front of text and returns its code point; an ill-formed byte is taken alone and gives
/// U+FFFD. text must not be empty.
[[nodiscard]] char32_t TakeCharacter(std::string_view& text);

/// Appends a code point in UTF-8.
void AppendCharacter(std::string& text, char32_t character);

/// Letters a to z become A to Z; every other character is left as it is.
[[nodiscard]] std::string UpperCase(std::string_view text);

/// Text without leading and trailing blanks (the character 0x20 alone).
[[nodiscard]] std::string_view TrimBlanks(std::string_view text);

/// Text with a blank for every control character (below U+0020, and U+007F to U+009F): for what comes from outside and
/// is shown.
[[nodiscard]] std::string WithoutControlCharacters(std::string_view text);

/// Text of a file's or the clipboard's bytes: bytes that begin with the UTF-8 mark (dropped) or are valid UTF-8 are
/// taken as UTF-8, all others as code page 932.
[[nodiscard]] std::string DecodeText(std::string_view bytes);
/// The same for bytes that are not needed any more; what is UTF-8 already is not copied.
[[nodiscard]] std::string DecodeOwnedText(std::string bytes);

}  // namespace walrim
