#include "device/Frame.h"

namespace walrim {

std::int16_t NumberOf(std::span<const std::uint8_t> data) {
  unsigned value = data.empty() ? 0U : data[0];
  if (data.size() > 1) value |= static_cast<unsigned>(data[1]) << 8U;
  return static_cast<std::int16_t>(value);
}

/// The leading DLE is summed up too, and added again behind the complement.
std::uint8_t FrameChecksum(std::span<const std::uint8_t> id_size_data) {
  unsigned sum = DLE;
  for (const std::uint8_t byte : id_size_data)
    sum += byte;
  return static_cast<std::uint8_t>(((~sum & 255U) + 1 + DLE) & 255U);
}

std::vector<std::uint8_t> FrameOnWire(int packet_id, std::span<const std::uint8_t> data) {
  std::vector<std::uint8_t> plain{DLE, static_cast<std::uint8_t>(packet_id), static_cast<std::uint8_t>(data.size())};
  plain.insert(plain.end(), data.begin(), data.end());
  plain.push_back(FrameChecksum(std::span(plain).subspan(1)));

  std::vector<std::uint8_t> wire;
  wire.reserve(2 * plain.size() + 2);
  for (std::size_t offset = 0; offset < plain.size(); ++offset) {
    wire.push_back(plain[offset]);
    if (offset >= 2 && plain[offset] == DLE) wire.push_back(DLE);
  }
  wire.push_back(DLE);
  wire.push_back(ETX);
  return wire;
}

}  // namespace walrim
