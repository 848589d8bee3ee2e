#include "doctor/UnaskedBytes.h"

#include <algorithm>

namespace walrim {

namespace {

/// A line of 9600 / n bits a second holds each bit for n of ours. With n = 2 a byte read from a start bit on has its
/// lowest bit from the start bit's second half, then the halves of three bits, and one half of a fourth: 0,
/// s0 s0, s1 s1, s2 s2, s3. So all that can be read are sums of 06, 18, 60 and 80 (hexadecimal); with n = 4 of 78
/// and 80; with n = 8 of 80 alone.
constexpr std::uint8_t HalfSpeedBits[] = {0x06, 0x18, 0x60, 0x80};
constexpr std::uint8_t QuarterSpeedBits[] = {0x78, 0x80};
constexpr std::uint8_t EighthSpeedBits[] = {0x80};

bool IsSum(std::uint8_t byte, std::span<const std::uint8_t> parts) {
  for (const std::uint8_t part : parts) {
    if ((byte & part) == part) byte = static_cast<std::uint8_t>(byte & ~part);
  }
  return byte == 0;
}

bool AllSums(std::span<const std::uint8_t> bytes, std::span<const std::uint8_t> parts) {
  return std::ranges::all_of(bytes, [&](std::uint8_t byte) { return IsSum(byte, parts); });
}

bool IsTextByte(std::uint8_t byte) {
  return (byte >= 0x20 && byte < 0x7F) || byte == '\r' || byte == '\n';
}

/// A byte of RTCM SC-104 as it comes over a serial line: six bits of data below "01".
bool IsRtcmByte(std::uint8_t byte) {
  return (byte & 0xC0) == 0x40;
}

}  // namespace

UnaskedKind KindOfUnasked(std::span<const std::uint8_t> bytes) {
  if (bytes.size() < FewestUnasked) return UnaskedKind::None;
  if (AllSums(bytes, HalfSpeedBits)) return UnaskedKind::SlowerLine;
  if (std::ranges::all_of(bytes, IsRtcmByte)) return UnaskedKind::Rtcm;
  const auto text = std::ranges::count_if(bytes, IsTextByte);
  // The first of them may be the rest of a byte that was under way.
  return static_cast<std::size_t>(text) + 2 >= bytes.size() ? UnaskedKind::Text : UnaskedKind::Other;
}

std::vector<int> SpeedsToTry(std::span<const std::uint8_t> bytes) {
  if (bytes.empty()) return {};
  if (AllSums(bytes, EighthSpeedBits)) return {1200, 2400, 4800};
  if (AllSums(bytes, QuarterSpeedBits)) return {2400, 4800};
  if (AllSums(bytes, HalfSpeedBits)) return {4800, 2400};
  return {4800, 19200};
}

}  // namespace walrim
