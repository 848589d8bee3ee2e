// The escapes of links.
#pragma once

#include <string>
#include <string_view>

namespace walrim {

/// Text with the byte for every "%" that two hexadecimal digits follow; other "%" stay.
[[nodiscard]] std::string DecodePercentEscapes(std::string_view text);

}  // namespace walrim
