#include "device/ByteBuffer.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <stdexcept>

#include "text/Cp932.h"
#include "text/Utf8.h"

namespace walrim {

namespace {

constexpr double TwoTo31 = 2147483648.0;
constexpr double TwoTo32 = 4294967296.0;

ByteBuffer LittleEndian(std::uint32_t value, std::size_t width) {
  ByteBuffer buffer;
  for (std::size_t k = 0; k < width; ++k)
    buffer[k] = static_cast<std::uint8_t>(value >> (8 * k));
  buffer.Size = static_cast<std::int16_t>(width);
  return buffer;
}

std::uint32_t Unsigned(const ByteBuffer& buffer, std::size_t width) {
  std::uint32_t value = 0;
  for (std::size_t k = 0; k < width; ++k)
    value |= static_cast<std::uint32_t>(buffer[k]) << (8 * k);
  return value;
}

/// Whole number of a value that must lie in low..high.
double Checked(double value, double low, double high) {
  const double whole = std::floor(value);
  if (!(whole >= low && whole <= high)) throw std::overflow_error("value does not fit its field");
  return whole;
}

}  // namespace

void ClearBuffer(ByteBuffer& buffer) {
  buffer.bytes.fill(0);
}

ByteBuffer SubBuffer(const ByteBuffer& buffer, std::size_t start, std::size_t count) {
  if (start > ByteBuffer::Capacity || count > ByteBuffer::Capacity - start) {
    throw std::out_of_range("field beyond the packet buffer");
  }
  ByteBuffer part;
  std::copy_n(buffer.bytes.begin() + static_cast<std::ptrdiff_t>(start), count, part.bytes.begin());
  part.Size = static_cast<std::int16_t>(count);
  return part;
}

void AppendBuffer(ByteBuffer& destination, std::size_t position, const ByteBuffer& source) {
  const auto view = source.View();
  if (position > ByteBuffer::Capacity || view.size() > ByteBuffer::Capacity - position) {
    throw std::out_of_range("field beyond the packet buffer");
  }
  std::copy(view.begin(), view.end(), destination.bytes.begin() + static_cast<std::ptrdiff_t>(position));
  destination.Size = std::max(destination.Size, static_cast<std::int16_t>(position + view.size()));
}

ByteBuffer ByteToBuffer(long value) {
  if (value < 0) throw std::overflow_error("negative byte");
  return LittleEndian(static_cast<std::uint32_t>(value % 256), 1);
}

ByteBuffer BooleanToBuffer(bool value) {
  return LittleEndian(value ? 255 : 0, 1);
}

ByteBuffer IntegerToBuffer(long value) {
  if (value < std::numeric_limits<std::int16_t>::min() || value > std::numeric_limits<std::int16_t>::max()) {
    throw std::overflow_error("value does not fit 16 bits");
  }
  return LittleEndian(static_cast<std::uint32_t>(static_cast<std::int32_t>(value)), 2);
}

ByteBuffer WordToBuffer(double value) {
  if (value >= 65536.0) value = std::fmod(std::floor(value), 65536.0);
  const auto whole = static_cast<std::int32_t>(Checked(value, -TwoTo31, 65535.0));
  return LittleEndian(static_cast<std::uint32_t>(whole), 2);
}

ByteBuffer LongToBuffer(double value) {
  const auto whole = static_cast<std::int32_t>(Checked(value, -TwoTo31, TwoTo31 - 1));
  return LittleEndian(static_cast<std::uint32_t>(whole), 4);
}

ByteBuffer DWordToBuffer(double value) {
  if (value >= TwoTo32) value -= TwoTo32 * std::floor(value / TwoTo32);
  const auto whole = static_cast<std::int64_t>(Checked(value, -TwoTo31, TwoTo32 - 1));
  return LittleEndian(static_cast<std::uint32_t>(whole), 4);
}

ByteBuffer SingleToBuffer(float value) {
  return LittleEndian(std::bit_cast<std::uint32_t>(value), 4);
}

ByteBuffer SemicirclesToBuffer(double degrees) {
  // nearbyint rounds ties to even, as the program never leaves the default rounding mode.
  return LongToBuffer(std::nearbyint(TwoTo31 * degrees / 180.0));
}

ByteBuffer PositionToBuffer(double lat_deg, double lon_deg) {
  ByteBuffer buffer = SemicirclesToBuffer(lat_deg);
  AppendBuffer(buffer, 4, SemicirclesToBuffer(lon_deg));
  return buffer;
}

ByteBuffer StringToBuffer(std::string_view utf8) {
  std::string bytes;
  if (auto encoded = EncodeCp932(utf8)) {
    bytes = std::move(*encoded);
  } else {
    while (!utf8.empty()) {
      const std::string_view before = utf8;
      static_cast<void>(TakeCharacter(utf8));
      bytes += EncodeCp932(before.substr(0, before.size() - utf8.size())).value_or("?");
    }
  }
  if (bytes.size() > ByteBuffer::Capacity) throw std::out_of_range("text beyond the packet buffer");
  ByteBuffer buffer;
  std::transform(bytes.begin(), bytes.end(), buffer.bytes.begin(), [](char c) { return static_cast<std::uint8_t>(c); });
  buffer.Size = static_cast<std::int16_t>(bytes.size());
  return buffer;
}

std::uint8_t ByteFromBytes(const ByteBuffer& buffer) {
  return buffer[0];
}

bool BooleanFromBytes(const ByteBuffer& buffer) {
  return buffer[0] != 0;
}

std::int16_t IntegerFromBytes(const ByteBuffer& buffer) {
  return static_cast<std::int16_t>(static_cast<std::uint16_t>(Unsigned(buffer, 2)));
}

double WordFromBytes(const ByteBuffer& buffer) {
  return Unsigned(buffer, 2);
}

std::int32_t LongFromBytes(const ByteBuffer& buffer) {
  return static_cast<std::int32_t>(Unsigned(buffer, 4));
}

double DWordFromBytes(const ByteBuffer& buffer) {
  return Unsigned(buffer, 4);
}

float SingleFromBytes(const ByteBuffer& buffer) {
  return std::bit_cast<float>(Unsigned(buffer, 4));
}

double SemicirclesFromBytes(const ByteBuffer& buffer) {
  return LongFromBytes(buffer) * 180.0 / TwoTo31;
}

Position PositionFromBytes(const ByteBuffer& buffer) {
  return {SemicirclesFromBytes(buffer), SemicirclesFromBytes(SubBuffer(buffer, 4, 4))};
}

std::string StringFromBytes(const ByteBuffer& buffer) {
  return DecodeCp932(buffer.View());
}

}  // namespace walrim
