// Escapes in any text, against a reader of one character after the other; and any bytes come back from their escapes.
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "text/PercentEscapes.h"

using namespace walrim;

namespace {

bool IsHex(char c) {
  return std::isxdigit(static_cast<unsigned char>(c)) != 0;
}

std::string PlainlyDecoded(const std::string& text) {
  std::string decoded;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool escape = text[i] == '%' && i + 2 < text.size() && IsHex(text[i + 1]) && IsHex(text[i + 2]);
    decoded += escape ? static_cast<char>(std::stoi(text.substr(i + 1, 2), nullptr, 16)) : text[i];
    i += escape ? 2U : 0U;
  }
  return decoded;
}

std::string Escaped(std::string_view text, std::string_view digits) {
  std::string escaped;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    escaped.append(1, '%').append(1, digits[byte / 16U]).append(1, digits[byte % 16U]);
  }
  return escaped;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(bytes), size);
  if (DecodePercentEscapes(text) != PlainlyDecoded(text)) std::abort();
  for (const std::string_view digits : {"0123456789ABCDEF", "0123456789abcdef"}) {
    if (DecodePercentEscapes(Escaped(text, digits)) != text) std::abort();
  }
  return 0;
}
