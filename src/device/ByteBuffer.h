// Bytes of a packet, and the conversions between the fields of Garmin records and bytes. Little-endian throughout.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace walrim {

/// 256 bytes and how many of them count. Encoded fields and packet data are ByteBuffers.
struct ByteBuffer {
  static constexpr std::size_t Capacity = 256;

  std::array<std::uint8_t, Capacity> bytes{};
  std::int16_t Size = 0;

  /// Byte at an index; throws std::out_of_range beyond 255.
  std::uint8_t& operator[](std::size_t index) { return bytes.at(index); }
  const std::uint8_t& operator[](std::size_t index) const { return bytes.at(index); }
  /// The bytes that count.
  [[nodiscard]] std::span<const std::uint8_t> View() const {
    return std::span(bytes).first(Size > 0 ? static_cast<std::size_t>(Size) : 0);
  }
};

/// Sets all bytes to 0; Size is left as it is.
void ClearBuffer(ByteBuffer& buffer);
/// count bytes from start on. Throws std::out_of_range beyond byte 255.
[[nodiscard]] ByteBuffer SubBuffer(const ByteBuffer& buffer, std::size_t start, std::size_t count);
/// Copies source to destination from position on and grows its Size to the end of the copy where that is larger.
/// Throws std::out_of_range beyond byte 255.
void AppendBuffer(ByteBuffer& destination, std::size_t position, const ByteBuffer& source);

// Encoders. A value that does not fit, and is not reduced as said, throws std::overflow_error.

/// 1 byte; 256 and above modulo 256.
[[nodiscard]] ByteBuffer ByteToBuffer(long value);
/// 1 byte: 255 for true, 0 for false.
[[nodiscard]] ByteBuffer BooleanToBuffer(bool value);
/// 2 bytes, two's complement, -32768..32767.
[[nodiscard]] ByteBuffer IntegerToBuffer(long value);
/// 2 bytes, unsigned; 65536 and above modulo 65536, negative values in two's complement.
[[nodiscard]] ByteBuffer WordToBuffer(double value);
/// 4 bytes, two's complement, -2^31..2^31 - 1.
[[nodiscard]] ByteBuffer LongToBuffer(double value);
/// 4 bytes, unsigned; 2^32 and above modulo 2^32, negative values from -2^31 in two's complement.
[[nodiscard]] ByteBuffer DWordToBuffer(double value);
/// 4 bytes: an IEEE single.
[[nodiscard]] ByteBuffer SingleToBuffer(float value);
/// 4 bytes: one angle in semicircles, round(2^31 * degrees / 180) with ties to even. -180 <= degrees < 180.
[[nodiscard]] ByteBuffer SemicirclesToBuffer(double degrees);
/// 8 bytes: latitude, then longitude.
[[nodiscard]] ByteBuffer PositionToBuffer(double lat_deg, double lon_deg);
/// The text in code page 932, without a terminator; a character that the code page lacks becomes "?".
/// Throws std::out_of_range above 256 bytes.
[[nodiscard]] ByteBuffer StringToBuffer(std::string_view utf8);

// Decoders, from the first bytes of a buffer.

[[nodiscard]] std::uint8_t ByteFromBytes(const ByteBuffer& buffer);
[[nodiscard]] bool BooleanFromBytes(const ByteBuffer& buffer);
[[nodiscard]] std::int16_t IntegerFromBytes(const ByteBuffer& buffer);
[[nodiscard]] double WordFromBytes(const ByteBuffer& buffer);
[[nodiscard]] std::int32_t LongFromBytes(const ByteBuffer& buffer);
[[nodiscard]] double DWordFromBytes(const ByteBuffer& buffer);
[[nodiscard]] float SingleFromBytes(const ByteBuffer& buffer);
/// Degrees of one angle in semicircles.
[[nodiscard]] double SemicirclesFromBytes(const ByteBuffer& buffer);

struct Position {
  double lat_deg = 0;
  double lon_deg = 0;
};
[[nodiscard]] Position PositionFromBytes(const ByteBuffer& buffer);
/// UTF-8 text of Size bytes in code page 932. Zero bytes are kept as characters.
[[nodiscard]] std::string StringFromBytes(const ByteBuffer& buffer);

}  // namespace walrim
