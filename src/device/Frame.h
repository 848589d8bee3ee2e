// Frames of link protocol L001:
//
//   frame = DLE id size data*size checksum DLE ETX        DLE 10h, ETX 03h
//
// Size, data and checksum bytes of 10h are sent twice. The checksum makes the sum of id, size, data and checksum 0
// modulo 256.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace walrim {

inline constexpr std::uint8_t DLE = 16;
inline constexpr std::uint8_t ETX = 3;
/// Most data bytes that are sent: a receiver's buffer holds 256 bytes, six of them framing.
inline constexpr std::size_t LongestSentData = 250;

/// A received frame without its doubled bytes, from DLE to ETX.
struct Frame {
  /// Bytes that any frame may take; a frame whose size byte promises 251 to 255 data bytes may be that much longer.
  static constexpr std::size_t Capacity = 256;
  static constexpr std::size_t LongestCapacity = 255 + 6;

  std::array<std::uint8_t, LongestCapacity> bytes{};
  std::int16_t size = 0;  ///< size byte + 6, or ReceiveTimeout
  bool damaged = false;   ///< its length does not fit its size byte, or its checksum is wrong

  [[nodiscard]] int Id() const { return bytes[1]; }
  friend bool operator==(const Frame&, const Frame&) = default;
};

/// Data of a received frame, which must outlive the result: as many bytes as its size byte says (those that never came
/// are 0).
[[nodiscard]] inline std::span<const std::uint8_t> PacketData(const Frame& frame) {
  return std::span(frame.bytes).subspan(3, frame.bytes[2]);
}
std::span<const std::uint8_t> PacketData(Frame&&) = delete;

/// The checksum byte behind an id, a size and data.
[[nodiscard]] std::uint8_t FrameChecksum(std::span<const std::uint8_t> id_size_data);

/// A packet's bytes on the wire, with the doubled ones; at most 255 bytes of data.
[[nodiscard]] std::vector<std::uint8_t> FrameOnWire(int packet_id, std::span<const std::uint8_t> data);

/// The data of packets that carry one number: 16 bits, the low byte first.
[[nodiscard]] constexpr std::array<std::uint8_t, 2> NumberData(int value) {
  return {static_cast<std::uint8_t>(value & 0xFF), static_cast<std::uint8_t>(value >> 8 & 0xFF)};
}
/// The signed number that data begin with; bytes that are not there are 0.
[[nodiscard]] std::int16_t NumberOf(std::span<const std::uint8_t> data);

}  // namespace walrim
