// Appends the fields of a record to its bytes, in wire order, little-endian.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace walrim {

/// Bytes in code page 932 of a UTF-8 text of any content: at most width of them, never half a character. A character
/// that the code page lacks, and a zero character, become "?".
[[nodiscard]] std::string ReceiverText(std::string_view utf8, std::size_t width);

class WireBytes {
 public:
  void U8(std::uint8_t value) { bytes_.push_back(value); }
  void U16(std::uint16_t value);
  void U32(std::uint32_t value);
  void Float(float value);
  void Double(double value);
  /// 255 for true, 0 for false.
  void Boolean(bool value) { U8(value ? 255 : 0); }
  void Bytes(std::span<const std::uint8_t> values) { bytes_.insert(bytes_.end(), values.begin(), values.end()); }
  /// Latitude and longitude in degrees, each as a signed 32-bit number of semicircles.
  void Position(double lat_deg, double lon_deg);
  /// Exactly width bytes, padded with blanks.
  void FixedText(std::string_view utf8, std::size_t width);
  /// At most width bytes and a zero byte.
  void EndedText(std::string_view utf8, std::size_t width);

  [[nodiscard]] std::size_t Size() const { return bytes_.size(); }
  [[nodiscard]] std::vector<std::uint8_t> Take() { return std::move(bytes_); }

 private:
  std::vector<std::uint8_t> bytes_;
};

}  // namespace walrim
