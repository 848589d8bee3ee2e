// Texts in an encoding that they name themselves.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace walrim {

/// UTF-8 of bytes in an encoding that is called name, in any case of letters. Nothing where the encoding is not one of
/// those that texts of today and of the receivers' time are in (UTF-16, UTF-32, Japanese, Chinese, Korean, ISO 8859,
/// Windows, KOI8), or where the bytes are no text in it.
[[nodiscard]] std::optional<std::string> DecodeNamed(std::string_view bytes, std::string_view name);

}  // namespace walrim
