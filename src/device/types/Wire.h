// The fields of records on the wire. Each type's layout is written once, as a function template that walks a reader or
// a writer over the fields in their order:
//
//   template <typename Wire, typename Record>
//   void WalkD201(Wire& wire, Record& route) {
//     wire.Byte(route.nmbr);
//     wire.Text(route.cmnt, 20);
//   }
//
// Numbers are little-endian. Texts are UTF-8 here and code page 932 there.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "records/TrackLog.h"
#include "records/Waypoint.h"
#include "text/Cp932.h"

namespace walrim {

/// Stands on the wire for a height and a depth that a receiver does not know.
inline constexpr float UnknownMetres = 1.0e25F;

/// What an encoder had to do to make a record fit.
struct EncodeNotes {
  bool cut = false;       ///< texts were cut so that the packet holds at most LongestSentData bytes
  bool replaced = false;  ///< a symbol or a colour became one that the receiver can show
  int cut_texts = 0;      ///< texts that are longer than their fields of fixed width
  std::optional<UnencodableCharacter> lacking;  ///< the first character that code page 932 lacks; sent as "?"
};

/// Reads fields off the front of a packet's data. What is not there any more reads as 0.
class PacketReader {
 public:
  explicit PacketReader(std::span<const std::uint8_t> data) : data_(data) {}

  void Byte(std::uint8_t& value) { value = static_cast<std::uint8_t>(Unsigned(1)); }
  void Byte(std::optional<std::uint16_t>& value) { value = static_cast<std::uint16_t>(Unsigned(1)); }
  void Word(std::uint16_t& value) { value = static_cast<std::uint16_t>(Unsigned(2)); }
  void Word(std::optional<std::uint16_t>& value) { value = static_cast<std::uint16_t>(Unsigned(2)); }
  void DWord(std::uint32_t& value) { value = Unsigned(4); }
  void Truth(bool& value) { value = Unsigned(1) != 0; }
  void Time(std::optional<GarminSeconds>& time);
  void Angle(double& degrees);
  /// A single that is no number is not known either.
  void Height(std::optional<float>& metres);
  /// A single that is no number becomes UnknownMetres.
  void Distance(float& metres);
  void Distance(std::optional<float>& metres);
  void Bytes(Subclass& bytes);
  /// A text of exactly so many bytes, with its blanks and zero characters.
  void Text(std::string& text, std::size_t width);
  /// The same without the blanks at its end.
  void BareText(std::string& text, std::size_t width);
  /// A text up to a zero byte or the end of the data.
  void ZeroText(std::string& text);

 private:
  std::uint32_t Unsigned(std::size_t width);
  float Single();

  std::span<const std::uint8_t> data_;
};

/// Writes fields one behind the other. The record must stay until Finish.
class PacketWriter {
 public:
  explicit PacketWriter(EncodeNotes& notes) : notes_(notes) { data_.reserve(UsualSize); }

  void Byte(std::uint8_t value) { Append(value, 1); }
  void Byte(const std::optional<std::uint16_t>& value) { Append(value.value_or(0), 1); }
  void Word(std::uint16_t value) { Append(value, 2); }
  void Word(const std::optional<std::uint16_t>& value) { Append(value.value_or(0), 2); }
  void DWord(std::uint32_t value) { Append(value, 4); }
  /// 255 for true.
  void Truth(bool value) { Append(value ? 255 : 0, 1); }
  void Time(const std::optional<GarminSeconds>& time) { Append(time.value_or(0), 4); }
  /// To the nearest semicircle, ties to even. Throws std::overflow_error below -180 degrees and from 180 on.
  void Angle(double degrees);
  void Height(const std::optional<float>& metres) { Distance(metres.value_or(UnknownMetres)); }
  void Distance(float metres);
  void Distance(const std::optional<float>& metres) { Distance(metres.value_or(0.0F)); }
  void Bytes(const Subclass& bytes) { data_.insert(data_.end(), bytes.begin(), bytes.end()); }
  /// A text at exactly this width: cut, never inside a character, or padded with blanks.
  void Text(std::string_view text, std::size_t width);
  void BareText(std::string_view text, std::size_t width) { Text(text, width); }
  /// A text up to its first zero character, and a zero byte. Only such texts may follow.
  void ZeroText(std::string_view text) { zero_texts_.push_back(text.substr(0, text.find('\0'))); }

  /// The packet's data. Zero-ended texts that would make them longer than LongestSentData are cut from the last one
  /// backwards, never inside a character.
  [[nodiscard]] std::vector<std::uint8_t> Finish();

 private:
  void Append(std::uint32_t value, std::size_t width);
  void AppendText(std::string_view text);
  void CutZeroTexts();

  /// Of most records' data.
  static constexpr std::size_t UsualSize = 80;

  EncodeNotes& notes_;
  std::vector<std::uint8_t> data_;
  std::vector<std::string_view> zero_texts_;
};

// What the types with fields of fixed width have in common.

/// Zero characters become blanks, as receivers pad with either.
[[nodiscard]] std::string Blanked(std::string_view text);
/// Counts a text that is wider than its field, blanks around it apart.
void NoteCutText(std::string_view text, std::size_t width, EncodeNotes& notes);

}  // namespace walrim
