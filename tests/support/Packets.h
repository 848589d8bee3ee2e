// Packets and records as a receiver has them on the wire, put together by hand.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string_view>
#include <vector>

namespace walrim {

using Bytes = std::vector<std::uint8_t>;

inline Bytes Joined(std::initializer_list<Bytes> parts) {
  Bytes all;
  for (const Bytes& part : parts)
    all.insert(all.end(), part.begin(), part.end());
  return all;
}

/// ASCII, padded with blanks to a width.
inline Bytes TextBytes(std::string_view text, std::size_t width = 0) {
  Bytes bytes(text.begin(), text.end());
  if (bytes.size() < width) bytes.resize(width, ' ');
  return bytes;
}

/// The bytes of a frame on the wire.
inline Bytes WireFrame(int id, const Bytes& data) {
  Bytes wire{0x10, static_cast<std::uint8_t>(id)};
  unsigned sum = static_cast<unsigned>(id) + static_cast<unsigned>(data.size());
  const auto put = [&](std::uint8_t byte) {
    wire.push_back(byte);
    if (byte == 0x10) wire.push_back(byte);
  };
  put(static_cast<std::uint8_t>(data.size()));
  for (const std::uint8_t byte : data) {
    put(byte);
    sum += byte;
  }
  put(static_cast<std::uint8_t>(0x100 - (sum & 0xFF)));
  wire.push_back(0x10);
  wire.push_back(0x03);
  return wire;
}

inline Bytes Int16(int value) {
  return {static_cast<std::uint8_t>(value & 0xFF), static_cast<std::uint8_t>((value >> 8) & 0xFF)};
}

/// A frame taken apart: id and data, without doubled bytes.
struct PlainPacket {
  int id = 0;
  Bytes data;
  friend bool operator==(const PlainPacket&, const PlainPacket&) = default;
};

inline PlainPacket Unwrapped(const Bytes& wire) {
  PlainPacket packet{wire.at(1), {}};
  Bytes plain;
  for (std::size_t i = 2; i + 2 < wire.size(); ++i) {
    plain.push_back(wire[i]);
    if (wire[i] == 0x10) ++i;
  }
  packet.data.assign(plain.begin() + 1, plain.end() - 1);  // without size and checksum
  return packet;
}

// Records of receivers, at 0 north and 0 east.

/// D103.
inline PlainPacket WaypointPacket(std::string_view ident, int id = 35) {
  return {id, Joined({TextBytes(ident, 6), Bytes(12, 0), TextBytes("", 40), {0, 0}})};
}
inline PlainPacket RoutePointPacket(std::string_view ident) {
  return WaypointPacket(ident, 30);
}
/// D201.
inline PlainPacket RouteHeaderPacket(int number, std::string_view comment) {
  return {29, Joined({{static_cast<std::uint8_t>(number)}, TextBytes(comment, 20)})};
}
inline PlainPacket TrackPoint300(bool new_trk) {
  Bytes data(13, 0);
  data[12] = new_trk ? 1 : 0;
  return {34, data};
}
inline PlainPacket TrackPoint301(std::uint8_t time, bool new_trk = false) {
  Bytes data(21, 0);
  data[8] = time;
  data[20] = new_trk ? 1 : 0;
  return {34, data};
}

}  // namespace walrim
