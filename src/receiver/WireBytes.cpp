#include "receiver/WireBytes.h"

#include <bit>
#include <cmath>

#include "text/Cp932.h"
#include "text/Utf8.h"

namespace walrim {

namespace {

std::uint32_t Semicircles(double degrees) {
  // 180 degrees is the same meridian as -180 and wraps to it.
  return static_cast<std::uint32_t>(static_cast<std::int64_t>(std::nearbyint(degrees / 180.0 * 2147483648.0)));
}

}  // namespace

std::string ReceiverText(std::string_view utf8, std::size_t width) {
  std::string bytes;
  while (!utf8.empty()) {
    std::string_view rest = utf8;
    const char32_t character = TakeCharacter(rest);
    const std::string_view whole = utf8.substr(0, utf8.size() - rest.size());
    const std::string encoded = character == 0 ? "?" : EncodeCp932(whole).value_or("?");
    if (bytes.size() + encoded.size() > width) break;
    bytes += encoded;
    utf8 = rest;
  }
  return bytes;
}

void WireBytes::U16(std::uint16_t value) {
  U8(static_cast<std::uint8_t>(value & 0xFF));
  U8(static_cast<std::uint8_t>(value >> 8));
}

void WireBytes::U32(std::uint32_t value) {
  U16(static_cast<std::uint16_t>(value & 0xFFFF));
  U16(static_cast<std::uint16_t>(value >> 16));
}

void WireBytes::Float(float value) {
  U32(std::bit_cast<std::uint32_t>(value));
}

void WireBytes::Double(double value) {
  const auto bits = std::bit_cast<std::uint64_t>(value);
  U32(static_cast<std::uint32_t>(bits & 0xFFFFFFFF));
  U32(static_cast<std::uint32_t>(bits >> 32));
}

void WireBytes::Position(double lat_deg, double lon_deg) {
  U32(Semicircles(lat_deg));
  U32(Semicircles(lon_deg));
}

void WireBytes::FixedText(std::string_view utf8, std::size_t width) {
  std::string text = ReceiverText(utf8, width);
  text.resize(width, ' ');
  bytes_.insert(bytes_.end(), text.begin(), text.end());
}

void WireBytes::EndedText(std::string_view utf8, std::size_t width) {
  const std::string text = ReceiverText(utf8, width);
  bytes_.insert(bytes_.end(), text.begin(), text.end());
  U8(0);
}

}  // namespace walrim
