#include "text/PercentEscapes.h"

#include <optional>

#include "text/Scan.h"

namespace walrim {

namespace {

std::optional<char> HexByte(std::string_view digits) {
  constexpr std::string_view Hex = "0123456789ABCDEF";
  const std::string upper = UpperCase(digits);
  if (upper.size() != 2) return std::nullopt;
  const std::size_t high = Hex.find(upper[0]);
  const std::size_t low = Hex.find(upper[1]);
  if (high == std::string_view::npos || low == std::string_view::npos) return std::nullopt;
  return static_cast<char>(static_cast<unsigned char>(high * 16 + low));
}

}  // namespace

std::string DecodePercentEscapes(std::string_view text) {
  std::string decoded;
  decoded.reserve(text.size());
  while (!text.empty()) {
    const auto byte = text.front() == '%' ? HexByte(text.substr(1, 2)) : std::nullopt;
    decoded += byte.value_or(text.front());
    text.remove_prefix(byte ? 3 : 1);
  }
  return decoded;
}

}  // namespace walrim
