#include "device/Layout.h"

#include <algorithm>
#include <cmath>
#include <type_traits>
#include <utility>
#include <vector>

#include "device/PacketLink.h"

namespace walrim {

namespace {

constexpr Field<D103Entry> D103Fields[] = {
    {"ident", 0, 6, FieldKind::FixedText, &D103Entry::ident}, {"lat", 6, 4, FieldKind::Angle, &D103Entry::lat_deg},
    {"lon", 10, 4, FieldKind::Angle, &D103Entry::lon_deg},    {"unused", 14, 4, FieldKind::DWord, &D103Entry::unused},
    {"cmnt", 18, 40, FieldKind::FixedText, &D103Entry::cmnt}, {"smbl", 58, 1, FieldKind::Byte, &D103Entry::smbl},
    {"dspl", 59, 1, FieldKind::Byte, &D103Entry::dspl},
};

constexpr Field<D104Entry> D104Fields[] = {
    {"ident", 0, 6, FieldKind::FixedText, &D104Entry::ident}, {"lat", 6, 4, FieldKind::Angle, &D104Entry::lat_deg},
    {"lon", 10, 4, FieldKind::Angle, &D104Entry::lon_deg},    {"unused", 14, 4, FieldKind::DWord, &D104Entry::unused},
    {"cmnt", 18, 40, FieldKind::FixedText, &D104Entry::cmnt}, {"dst", 58, 4, FieldKind::Single, &D104Entry::dst_m},
    {"smbl", 62, 2, FieldKind::Word, &D104Entry::smbl},       {"dspl", 64, 1, FieldKind::Byte, &D104Entry::dspl},
};

constexpr Field<D107Entry> D107Fields[] = {
    {"ident", 0, 6, FieldKind::FixedText, &D107Entry::ident}, {"lat", 6, 4, FieldKind::Angle, &D107Entry::lat_deg},
    {"lon", 10, 4, FieldKind::Angle, &D107Entry::lon_deg},    {"unused", 14, 4, FieldKind::DWord, &D107Entry::unused},
    {"cmnt", 18, 40, FieldKind::FixedText, &D107Entry::cmnt}, {"smbl", 58, 1, FieldKind::Byte, &D107Entry::smbl},
    {"dspl", 59, 1, FieldKind::Byte, &D107Entry::dspl},       {"dst", 60, 4, FieldKind::Single, &D107Entry::dst_m},
    {"color", 64, 1, FieldKind::Byte, &D107Entry::color},
};

constexpr Field<D108Entry> D108Fields[] = {
    {"wpt_class", 0, 1, FieldKind::Byte, &D108Entry::wpt_class},
    {"color", 1, 1, FieldKind::Byte, &D108Entry::color},
    {"dspl", 2, 1, FieldKind::Byte, &D108Entry::dspl},
    {"attr", 3, 1, FieldKind::Byte, &D108Entry::attr},
    {"smbl", 4, 2, FieldKind::Word, &D108Entry::smbl},
    {"subclass", 6, 18, FieldKind::Bytes, &D108Entry::subclass},
    {"lat", 24, 4, FieldKind::Angle, &D108Entry::lat_deg},
    {"lon", 28, 4, FieldKind::Angle, &D108Entry::lon_deg},
    {"alt", 32, 4, FieldKind::Single, &D108Entry::alt_m},
    {"dpth", 36, 4, FieldKind::Single, &D108Entry::dpth_m},
    {"dist", 40, 4, FieldKind::Single, &D108Entry::dist_m},
    {"state", 44, 2, FieldKind::FixedText, &D108Entry::state},
    {"cc", 46, 2, FieldKind::FixedText, &D108Entry::cc},
    {"ident", 48, 0, FieldKind::ZeroText, &D108Entry::ident},
    {"cmnt", 48, 0, FieldKind::ZeroText, &D108Entry::cmnt},
    {"facility", 48, 0, FieldKind::ZeroText, &D108Entry::facility},
    {"city", 48, 0, FieldKind::ZeroText, &D108Entry::city},
    {"addr", 48, 0, FieldKind::ZeroText, &D108Entry::addr},
    {"cross_road", 48, 0, FieldKind::ZeroText, &D108Entry::cross_road},
};

constexpr Field<D201Entry> D201Fields[] = {
    {"nmbr", 0, 1, FieldKind::Byte, &D201Entry::nmbr},
    {"cmnt", 1, 20, FieldKind::FixedText, &D201Entry::cmnt},
};

constexpr Field<D202Entry> D202Fields[] = {
    {"rte_ident", 0, 0, FieldKind::ZeroText, &D202Entry::rte_ident},
};

constexpr Field<D210Entry> D210Fields[] = {
    {"class", 0, 2, FieldKind::Word, &D210Entry::link_class},
    {"subclass", 2, 18, FieldKind::Bytes, &D210Entry::subclass},
    {"ident", 20, 0, FieldKind::ZeroText, &D210Entry::ident},
};

constexpr Field<TrackPointEntry> D300Fields[] = {
    {"lat", 0, 4, FieldKind::Angle, &TrackPointEntry::lat_deg},
    {"lon", 4, 4, FieldKind::Angle, &TrackPointEntry::lon_deg},
    {"time", 8, 4, FieldKind::DWord, &TrackPointEntry::time},
    {"new_trk", 12, 1, FieldKind::Boolean, &TrackPointEntry::new_trk},
};

constexpr Field<TrackPointEntry> D301Fields[] = {
    {"lat", 0, 4, FieldKind::Angle, &TrackPointEntry::lat_deg},
    {"lon", 4, 4, FieldKind::Angle, &TrackPointEntry::lon_deg},
    {"time", 8, 4, FieldKind::DWord, &TrackPointEntry::time},
    {"alt", 12, 4, FieldKind::Single, &TrackPointEntry::alt_m},
    {"dpth", 16, 4, FieldKind::Single, &TrackPointEntry::dpth_m},
    {"new_trk", 20, 1, FieldKind::Boolean, &TrackPointEntry::new_trk},
};

constexpr Field<D310Entry> D310Fields[] = {
    {"dspl", 0, 1, FieldKind::Boolean, &D310Entry::dspl},
    {"color", 1, 1, FieldKind::Byte, &D310Entry::color},
    {"trk_ident", 2, 0, FieldKind::ZeroText, &D310Entry::trk_ident},
};

template <typename T>
constexpr bool IsFixedText = false;
template <std::size_t Width>
constexpr bool IsFixedText<FixedText<Width>> = true;

/// A number of a field as a double; every field's range fits one exactly.
double DecodeNumber(const ByteBuffer& bytes, FieldKind kind) {
  switch (kind) {
    case FieldKind::Byte:
      return ByteFromBytes(bytes);
    case FieldKind::Word:
      return WordFromBytes(bytes);
    case FieldKind::DWord:
      return DWordFromBytes(bytes);
    case FieldKind::Angle:
      return SemicirclesFromBytes(bytes);
    default:
      return 0;
  }
}

ByteBuffer EncodeNumber(double value, FieldKind kind) {
  switch (kind) {
    case FieldKind::Byte:
      return ByteToBuffer(static_cast<long>(value));
    case FieldKind::Word:
      return WordToBuffer(value);
    case FieldKind::DWord:
      return DWordToBuffer(value);
    case FieldKind::Angle:
      return SemicirclesToBuffer(value);
    default:
      return {};
  }
}

template <typename T>
void DecodeValue(const ByteBuffer& bytes, FieldKind kind, T& value) {
  if constexpr (std::is_same_v<T, bool>) {
    value = BooleanFromBytes(bytes);
  } else if constexpr (std::is_same_v<T, float>) {
    const float single = SingleFromBytes(bytes);
    value = std::isfinite(single) ? single : UnknownMetres;
  } else if constexpr (std::is_arithmetic_v<T>) {
    value = static_cast<T>(DecodeNumber(bytes, kind));
  } else if constexpr (std::is_same_v<T, Subclass>) {
    std::copy_n(bytes.bytes.begin(), value.size(), value.begin());
  } else if constexpr (IsFixedText<T>) {
    value.Set(StringFromBytes(bytes));
  } else {
    value = StringFromBytes(bytes);
  }
}

void NoteLacking(std::string_view text, EncodeNotes* notes) {
  if (notes == nullptr || notes->lacking) return;
  UnencodableCharacter lacking;
  if (!EncodeCp932(text, &lacking)) notes->lacking = lacking;
}

/// Bytes of a text padded to width, cut where characters that had to be replaced changed its length.
ByteBuffer EncodeFixedText(std::string_view padded, std::size_t width, EncodeNotes* notes) {
  NoteLacking(padded, notes);
  ByteBuffer bytes = StringToBuffer(padded);
  while (static_cast<std::size_t>(bytes.Size) < width)
    bytes[static_cast<std::size_t>(bytes.Size++)] = ' ';
  return SubBuffer(bytes, 0, width);
}

template <typename T>
ByteBuffer EncodeValue(const T& value, FieldKind kind, std::size_t width, EncodeNotes* notes) {
  if constexpr (std::is_same_v<T, bool>) {
    return BooleanToBuffer(value);
  } else if constexpr (std::is_same_v<T, float>) {
    return SingleToBuffer(value);
  } else if constexpr (std::is_arithmetic_v<T>) {
    return EncodeNumber(value, kind);
  } else if constexpr (std::is_same_v<T, Subclass>) {
    ByteBuffer bytes;
    std::copy(value.begin(), value.end(), bytes.bytes.begin());
    bytes.Size = static_cast<std::int16_t>(value.size());
    return bytes;
  } else if constexpr (IsFixedText<T>) {
    return EncodeFixedText(value.Padded(), width, notes);
  } else {
    return {};  // texts that end in a zero byte are laid out together
  }
}

/// The texts of a layout's ZeroText fields, cut so that they and their zero bytes take at most room bytes.
template <typename Entry>
std::vector<std::string_view> FittingTexts(const Entry& entry, Layout<Entry> layout, std::size_t room,
                                           EncodeNotes* notes) {
  std::vector<std::string_view> texts;
  std::size_t taken = 0;
  for (const Field<Entry>& field : layout) {
    if (field.kind != FieldKind::ZeroText) continue;
    // A zero byte inside would end the text on the other side.
    std::string_view text = entry.*std::get<std::string Entry::*>(field.member);
    text = text.substr(0, text.find('\0'));
    texts.push_back(text);
    taken += Cp932Width(text) + 1;
  }
  for (std::size_t i = texts.size(); i-- > 0 && taken > room;) {
    const std::size_t width = Cp932Width(texts[i]);
    const std::size_t excess = taken - room;
    texts[i] = CutToCp932Width(texts[i], width > excess ? width - excess : 0);
    taken -= width - Cp932Width(texts[i]);
    if (notes != nullptr) notes->cut = true;
  }
  return texts;
}

}  // namespace

const Layout<D103Entry> D103Layout{D103Fields};
const Layout<D104Entry> D104Layout{D104Fields};
const Layout<D107Entry> D107Layout{D107Fields};
const Layout<D108Entry> D108Layout{D108Fields};
const Layout<D201Entry> D201Layout{D201Fields};
const Layout<D202Entry> D202Layout{D202Fields};
const Layout<D210Entry> D210Layout{D210Fields};
const Layout<TrackPointEntry> D300Layout{D300Fields};
const Layout<TrackPointEntry> D301Layout{D301Fields};
const Layout<D310Entry> D310Layout{D310Fields};

template <typename Entry>
void DecodeFields(const ByteBuffer& data, Layout<Entry> layout, Entry& entry) {
  std::optional<std::size_t> text_start;
  for (const Field<Entry>& field : layout) {
    std::size_t start = field.offset;
    std::size_t width = field.width;
    if (field.kind == FieldKind::ZeroText) {
      start = text_start.value_or(field.offset);
      const auto begin = data.bytes.begin() + static_cast<std::ptrdiff_t>(start);
      width = static_cast<std::size_t>(std::find(begin, data.bytes.end(), 0) - begin);
      text_start = std::min(start + width + 1, ByteBuffer::Capacity);
    }
    const ByteBuffer bytes = SubBuffer(data, start, width);
    std::visit([&](auto member) { DecodeValue(bytes, field.kind, entry.*member); }, field.member);
  }
}

template <typename Entry>
ByteBuffer EncodeFields(const Entry& entry, Layout<Entry> layout, EncodeNotes* notes) {
  ByteBuffer data;
  std::size_t text_start = 0;
  for (const Field<Entry>& field : layout) {
    if (field.kind == FieldKind::ZeroText) {
      text_start = field.offset;
      continue;
    }
    AppendBuffer(data, field.offset,
                 std::visit([&](auto member) { return EncodeValue(entry.*member, field.kind, field.width, notes); },
                            field.member));
  }
  for (const std::string_view text : FittingTexts(entry, layout, LongestSentData - text_start, notes)) {
    NoteLacking(text, notes);
    AppendBuffer(data, text_start, StringToBuffer(text));
    text_start = static_cast<std::size_t>(data.Size);
    AppendBuffer(data, text_start, ByteToBuffer(0));
    ++text_start;
  }
  return data;
}

template void DecodeFields(const ByteBuffer&, Layout<D103Entry>, D103Entry&);
template ByteBuffer EncodeFields(const D103Entry&, Layout<D103Entry>, EncodeNotes*);
template void DecodeFields(const ByteBuffer&, Layout<D104Entry>, D104Entry&);
template ByteBuffer EncodeFields(const D104Entry&, Layout<D104Entry>, EncodeNotes*);
template void DecodeFields(const ByteBuffer&, Layout<D107Entry>, D107Entry&);
template ByteBuffer EncodeFields(const D107Entry&, Layout<D107Entry>, EncodeNotes*);
template void DecodeFields(const ByteBuffer&, Layout<D108Entry>, D108Entry&);
template ByteBuffer EncodeFields(const D108Entry&, Layout<D108Entry>, EncodeNotes*);
template void DecodeFields(const ByteBuffer&, Layout<D201Entry>, D201Entry&);
template ByteBuffer EncodeFields(const D201Entry&, Layout<D201Entry>, EncodeNotes*);
template void DecodeFields(const ByteBuffer&, Layout<D202Entry>, D202Entry&);
template ByteBuffer EncodeFields(const D202Entry&, Layout<D202Entry>, EncodeNotes*);
template void DecodeFields(const ByteBuffer&, Layout<D210Entry>, D210Entry&);
template ByteBuffer EncodeFields(const D210Entry&, Layout<D210Entry>, EncodeNotes*);
template void DecodeFields(const ByteBuffer&, Layout<TrackPointEntry>, TrackPointEntry&);
template ByteBuffer EncodeFields(const TrackPointEntry&, Layout<TrackPointEntry>, EncodeNotes*);
template void DecodeFields(const ByteBuffer&, Layout<D310Entry>, D310Entry&);
template ByteBuffer EncodeFields(const D310Entry&, Layout<D310Entry>, EncodeNotes*);

}  // namespace walrim
