// Record layouts as data: one table of fields a type, walked by one encoder and one decoder.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "data/DeviceEntries.h"
#include "device/ByteBuffer.h"
#include "text/Cp932.h"

namespace walrim {

/// How a field's bytes are read.
enum class FieldKind : std::uint8_t {
  Byte,       ///< unsigned 8-bit
  Word,       ///< unsigned 16-bit
  DWord,      ///< unsigned 32-bit
  Angle,      ///< signed 32-bit semicircles
  Single,     ///< IEEE single
  Boolean,    ///< 0 false, else true; written as 255
  Bytes,      ///< single bytes
  FixedText,  ///< text of exactly the field's width, padded with blanks
  ZeroText    ///< text up to a zero byte; such fields follow each other from the first one's offset on
};

template <typename Entry>
using FieldMember = std::variant<bool Entry::*, std::uint8_t Entry::*, std::uint16_t Entry::*, float Entry::*,
                                 double Entry::*, Subclass Entry::*, FixedText<2> Entry::*, FixedText<6> Entry::*,
                                 FixedText<20> Entry::*, FixedText<40> Entry::*, std::string Entry::*>;

template <typename Entry>
struct Field {
  std::string_view name;
  std::size_t offset;  ///< within the packet data; of ZeroText, where the first of them begins
  std::size_t width;   ///< bytes; 0 for ZeroText
  FieldKind kind;
  FieldMember<Entry> member;
};

template <typename Entry>
using Layout = std::span<const Field<Entry>>;

extern const Layout<D103Entry> D103Layout;
extern const Layout<D104Entry> D104Layout;
extern const Layout<D107Entry> D107Layout;
extern const Layout<D108Entry> D108Layout;
extern const Layout<D201Entry> D201Layout;
extern const Layout<D202Entry> D202Layout;
extern const Layout<D210Entry> D210Layout;
extern const Layout<TrackPointEntry> D300Layout;
extern const Layout<TrackPointEntry> D301Layout;
extern const Layout<D310Entry> D310Layout;

/// What an encoder had to do to make a record fit.
struct EncodeNotes {
  bool cut = false;                             ///< texts were cut so that the packet holds at most 250 bytes
  bool replaced = false;                        ///< a symbol or a colour became one that the receiver can show
  std::optional<UnencodableCharacter> lacking;  ///< the first character that code page 932 lacks; sent as "?"
};

/// Fills an entry from packet data. Bytes beyond data.Size read as 0; a ZeroText without its zero byte ends with the
/// buffer. A single that is no number becomes UnknownMetres.
template <typename Entry>
void DecodeFields(const ByteBuffer& data, Layout<Entry> layout, Entry& entry);

/// Packet data of an entry. Texts of a record longer than 250 bytes are cut from the last one backwards, never inside a
/// character. Throws std::overflow_error for a number that does not fit its field.
template <typename Entry>
[[nodiscard]] ByteBuffer EncodeFields(const Entry& entry, Layout<Entry> layout, EncodeNotes* notes = nullptr);

}  // namespace walrim
