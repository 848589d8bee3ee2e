// Shift-JIS as the receivers and the files of this program use it: Microsoft's code page 932, through iconv.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace walrim {

/// UTF-8 text of bytes in code page 932. Never fails and never loses a byte:
/// a lead byte with a trail byte that is no character of the code page is read as single bytes (so half-width katakana
/// come through unharmed), and a byte that is no character on its own becomes U+F700 + byte, a private character that
/// EncodeCp932 turns back into that byte. Zero bytes are kept as U+0000.
[[nodiscard]] std::string DecodeCp932(std::string_view bytes);
[[nodiscard]] std::string DecodeCp932(std::span<const std::uint8_t> bytes);

/// The first character of a text that code page 932 lacks.
struct UnencodableCharacter {
  std::size_t index = 0;   ///< position in characters from 0
  char32_t character = 0;  ///< its code point
  std::string utf8;        ///< the character itself
};

/// Bytes in code page 932 of a UTF-8 text; nothing when a character has none (then *lacking says which, if given).
/// A character counts as encodable only when it decodes to itself again, or is one of the usual pairs of the same
/// look (U+301C for U+FF5E, U+2016 for U+2225, U+2212 for U+FF0D, U+2014 for U+2015, U+00A2/A3/AC for U+FFE0/E1/E2).
/// A character that would be read as one with a lone lead byte before it is lacking too.
[[nodiscard]] std::optional<std::string> EncodeCp932(std::string_view utf8, UnencodableCharacter* lacking = nullptr);

/// Number of bytes that a UTF-8 text takes in code page 932; a character that it lacks counts as 2.
[[nodiscard]] std::size_t Cp932Width(std::string_view utf8);

/// The longest beginning of a UTF-8 text that takes at most width bytes in code page 932; never cuts a character.
[[nodiscard]] std::string_view CutToCp932Width(std::string_view utf8, std::size_t width);

}  // namespace walrim
