#include "text/Cp932.h"

#include <array>
#include <iconv.h>
#include <stdexcept>
#include <utility>
#include <vector>

#include "text/Utf8.h"

namespace walrim {
namespace {

/// Stands for a byte that is no character: this plus the byte.
constexpr char32_t LoneByteBase = 0xF700;

constexpr bool IsLead(std::uint8_t byte) {
  return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}
constexpr bool IsTrail(std::uint8_t byte) {
  return byte >= 0x40 && byte <= 0xFC && byte != 0x7F;
}
constexpr bool IsHalfWidthKatakana(std::uint8_t byte) {
  return byte >= 0xA1 && byte <= 0xDF;
}
constexpr bool IsHalfWidthKatakana(char32_t character) {
  return character >= 0xFF61 && character <= 0xFF9F;
}
constexpr bool IsLoneByte(char32_t character) {
  return character >= LoneByteBase + 0x80 && character <= LoneByteBase + 0xFF &&
         !IsHalfWidthKatakana(static_cast<std::uint8_t>(character & 0xFF));
}

/// Characters that look the same as one of the code page, and are usual for it.
constexpr std::array<std::array<char32_t, 2>, 7> SameLook{{{0x301C, 0xFF5E},
                                                           {0x2016, 0x2225},
                                                           {0x2212, 0xFF0D},
                                                           {0x2014, 0x2015},
                                                           {0x00A2, 0xFFE0},
                                                           {0x00A3, 0xFFE1},
                                                           {0x00AC, 0xFFE2}}};

/// The double-byte characters both ways, asked from iconv once. 0 stands for none.
class CodePage {
 public:
  CodePage() {
    const iconv_t converter = iconv_open("UTF-16LE", "CP932");
    if (converter == reinterpret_cast<iconv_t>(-1)) throw std::runtime_error("iconv does not know CP932");
    for (unsigned lead = 0x81; lead <= 0xFC; ++lead) {
      if (IsLead(static_cast<std::uint8_t>(lead))) FillRow(converter, lead);
    }
    iconv_close(converter);
    // Some characters have several codes. The lowest is written, and the rows 0xED and 0xEE, which repeat others, last.
    for (unsigned code = 0x8100; code < 0xFD00; ++code) {
      if (code >> 8 != 0xED && code >> 8 != 0xEE) Learn(code);
    }
    for (unsigned code = 0xED00; code < 0xEF00; ++code)
      Learn(code);
    for (const auto& [same, character] : SameLook) {
      if (code_of_[same] == 0) code_of_[same] = code_of_[character];
    }
  }

  /// 0 for a code that does not begin with a lead byte, too.
  [[nodiscard]] char32_t CharacterOf(unsigned code) const {
    return IsLead(static_cast<std::uint8_t>(code >> 8)) ? character_of_[Place(code)] : 0U;
  }
  [[nodiscard]] unsigned CodeOf(char32_t character) const {
    return character < code_of_.size() ? code_of_[character] : 0U;
  }
  /// True when a lead byte and a byte behind it are one character.
  [[nodiscard]] bool ArePair(unsigned lead, unsigned byte) const { return CharacterOf(lead << 8 | byte) != 0; }
  /// A code of a character whose first byte is no pair with a lone lead byte before it; 0 where there is none.
  [[nodiscard]] unsigned CodeBehind(unsigned lead, char32_t character) const {
    const unsigned usual = CodeOf(character);
    if (usual == 0 || !ArePair(lead, usual >> 8)) return usual;
    for (const auto& [other, code] : more_codes_) {
      if (other == character && !ArePair(lead, code >> 8)) return code;
    }
    return 0;
  }

 private:
  static constexpr unsigned LeadCount = 60;

  /// Where the character of a code stands: the lead bytes lie in two runs.
  static constexpr std::size_t Place(unsigned code) {
    const unsigned lead = code >> 8;
    return static_cast<std::size_t>(lead - (lead < 0xA0 ? 0x81 : 0xC1)) << 8 | (code & 0xFF);
  }

  void FillRow(iconv_t converter, unsigned lead) {
    for (unsigned trail = 0x40; trail <= 0xFC; ++trail) {
      std::array<char, 2> pair{static_cast<char>(lead), static_cast<char>(trail)};
      std::array<char, 8> utf16{};
      char* in = pair.data();
      char* out = utf16.data();
      std::size_t in_left = pair.size();
      std::size_t out_left = utf16.size();
      iconv(converter, nullptr, nullptr, nullptr, nullptr);
      if (!IsTrail(static_cast<std::uint8_t>(trail))) continue;
      if (iconv(converter, &in, &in_left, &out, &out_left) != 0 || in_left != 0 || out_left != utf16.size() - 2)
        continue;
      character_of_[Place(lead << 8 | trail)] =
          static_cast<std::uint16_t>(static_cast<std::uint8_t>(utf16[0]) | static_cast<std::uint8_t>(utf16[1]) << 8);
    }
  }
  void Learn(unsigned code) {
    const auto character = static_cast<std::uint16_t>(CharacterOf(code));
    if (character == 0) return;
    if (code_of_[character] == 0) {
      code_of_[character] = static_cast<std::uint16_t>(code);
    } else {
      more_codes_.emplace_back(character, code);
    }
  }

  std::vector<std::uint16_t> character_of_ = std::vector<std::uint16_t>(LeadCount << 8);
  std::vector<std::uint16_t> code_of_ = std::vector<std::uint16_t>(0x10000);
  std::vector<std::pair<char32_t, unsigned>> more_codes_;
};

const CodePage& Codes() {
  static const CodePage codes;
  return codes;
}

std::size_t WidthOf(char32_t character) {
  return character < 0x80 || IsHalfWidthKatakana(character) || IsLoneByte(character) ? 1 : 2;
}

/// Takes one character off the front of bytes, which is not empty.
char32_t TakeCode(std::string_view& bytes) {
  const auto byte = static_cast<std::uint8_t>(bytes.front());
  if (byte >= 0x80 && IsLead(byte) && bytes.size() > 1) {
    const auto trail = static_cast<std::uint8_t>(bytes[1]);
    const char32_t character = Codes().CharacterOf(static_cast<unsigned>(byte) << 8 | trail);
    if (character != 0) {
      bytes.remove_prefix(2);
      return character;
    }
  }
  bytes.remove_prefix(1);
  if (byte < 0x80) return byte;
  return IsHalfWidthKatakana(byte) ? 0xFF61 + (byte - 0xA1U) : LoneByteBase + byte;
}

/// Appends characters as bytes, one after the other.
class Encoder {
 public:
  explicit Encoder(std::string& bytes) : bytes_(bytes) {}

  /// False, with nothing appended, when the character has no bytes here: a lone lead byte must not swallow the first
  /// byte of what follows it.
  bool Append(char32_t character) {
    if (character < 0x80) return AppendByte(character);
    if (IsHalfWidthKatakana(character)) return AppendByte(0xA1 + (character - 0xFF61));
    if (IsLoneByte(character)) {
      const unsigned byte = character & 0xFF;
      if (!AppendByte(byte)) return false;
      lone_lead_ = IsLead(static_cast<std::uint8_t>(byte)) ? byte : 0;
      return true;
    }
    const unsigned code = lone_lead_ == 0 ? Codes().CodeOf(character) : Codes().CodeBehind(lone_lead_, character);
    if (code == 0) return false;
    return AppendByte(code >> 8) && AppendByte(code & 0xFF);
  }
  /// Appends the longest beginning of text that needs no look; returns its length.
  std::size_t AppendAscii(std::string_view text) {
    if (lone_lead_ != 0) return 0;
    const std::size_t length = AsciiPrefix(text);
    bytes_.append(text.substr(0, length));
    return length;
  }

 private:
  bool AppendByte(unsigned byte) {
    if (lone_lead_ != 0 && Codes().ArePair(lone_lead_, byte)) return false;
    bytes_ += static_cast<char>(static_cast<std::uint8_t>(byte));
    lone_lead_ = 0;
    return true;
  }

  std::string& bytes_;
  unsigned lone_lead_ = 0;  ///< the byte appended last, where it is a lead byte alone
};

}  // namespace

std::string DecodeCp932(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size() + bytes.size() / 2);
  while (!bytes.empty()) {
    const std::size_t ascii = AsciiPrefix(bytes);
    text.append(bytes.substr(0, ascii));
    bytes.remove_prefix(ascii);
    if (!bytes.empty()) AppendCharacter(text, TakeCode(bytes));
  }
  return text;
}

std::string DecodeCp932(std::span<const std::uint8_t> bytes) {
  return DecodeCp932(std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
}

std::optional<std::string> EncodeCp932(std::string_view utf8, UnencodableCharacter* lacking) {
  std::string bytes;
  bytes.reserve(utf8.size());
  Encoder encoder(bytes);
  std::size_t index = 0;
  while (!utf8.empty()) {
    const std::size_t ascii = encoder.AppendAscii(utf8);
    utf8.remove_prefix(ascii);
    index += ascii;
    if (utf8.empty()) break;
    const std::string_view before = utf8;
    const char32_t character = TakeCharacter(utf8);
    if (!encoder.Append(character)) {
      if (lacking != nullptr) {
        *lacking = {index, character, std::string(before.substr(0, before.size() - utf8.size()))};
      }
      return std::nullopt;
    }
    ++index;
  }
  return bytes;
}

std::size_t Cp932Width(std::string_view utf8) {
  std::size_t width = 0;
  while (!utf8.empty()) {
    const std::size_t ascii = AsciiPrefix(utf8);
    width += ascii;
    utf8.remove_prefix(ascii);
    if (!utf8.empty()) width += WidthOf(TakeCharacter(utf8));
  }
  return width;
}

std::string_view CutToCp932Width(std::string_view utf8, std::size_t width) {
  const std::size_t ascii = AsciiPrefix(utf8.substr(0, width));
  if (ascii == utf8.size()) return utf8;
  std::string_view rest = utf8.substr(ascii);
  std::size_t taken = ascii;
  while (!rest.empty()) {
    std::string_view next = rest;
    taken += WidthOf(TakeCharacter(next));
    if (taken > width) break;
    rest = next;
  }
  return utf8.substr(0, utf8.size() - rest.size());
}

}  // namespace walrim
