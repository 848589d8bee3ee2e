#include "text/Utf8.h"

#include <cstdint>
#include <cstring>

#include "text/Cp932.h"

namespace walrim {
namespace {

constexpr std::string_view Utf8Mark = "\xEF\xBB\xBF";
constexpr char32_t ReplacementCharacter = 0xFFFD;

/// Length of the well-formed character at the front of text, 0 where there is none; its code point in character.
std::size_t WellFormedLength(std::string_view text, char32_t& character) {
  const auto byte = [text](std::size_t i) { return static_cast<std::uint8_t>(text[i]); };
  const std::uint8_t lead = byte(0);
  if (lead < 0x80) {
    character = lead;
    return 1;
  }
  // A continuation byte and the lead bytes of overlong and too large forms begin nothing.
  if (lead < 0xC2 || lead > 0xF4) return 0;
  const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  if (text.size() < length) return 0;
  character = lead & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0U) != 0x80U) return 0;
    character = (character << 6) | (byte(i) & 0x3FU);
  }
  if (length == 3 && (character < 0x800 || (character >= 0xD800 && character <= 0xDFFF))) return 0;
  if (length == 4 && (character < 0x10000 || character > 0x10FFFF)) return 0;
  return length;
}

/// Skips the eight-byte blocks at the front that are ASCII alone.
void SkipAsciiBlocks(std::string_view& text) {
  while (text.size() >= 8) {
    std::uint64_t block = 0;
    std::memcpy(&block, text.data(), sizeof block);
    if ((block & 0x8080808080808080ULL) != 0) return;
    text.remove_prefix(8);
  }
}

/// Ill-formed bytes become U+FFFD.
std::string WellFormed(std::string_view bytes) {
  if (IsValidUtf8(bytes)) return std::string(bytes);
  std::string text;
  text.reserve(bytes.size());
  while (!bytes.empty())
    AppendCharacter(text, TakeCharacter(bytes));
  return text;
}

}  // namespace

bool IsValidUtf8(std::string_view bytes) {
  for (;;) {
    SkipAsciiBlocks(bytes);
    if (bytes.empty()) return true;
    char32_t character = 0;
    const std::size_t length = WellFormedLength(bytes, character);
    if (length == 0) return false;
    bytes.remove_prefix(length);
  }
}

char32_t TakeCharacter(std::string_view& text) {
  char32_t character = 0;
  const std::size_t length = WellFormedLength(text, character);
  if (length == 0) character = ReplacementCharacter;
  text.remove_prefix(length == 0 ? 1 : length);
  return character;
}

void AppendCharacter(std::string& text, char32_t character) {
  const auto add = [&text](char32_t bits) { text += static_cast<char>(static_cast<std::uint8_t>(bits)); };
  if (character < 0x80) {
    add(character);
  } else if (character < 0x800) {
    add(0xC0 | (character >> 6));
    add(0x80 | (character & 0x3F));
  } else if (character < 0x10000) {
    add(0xE0 | (character >> 12));
    add(0x80 | ((character >> 6) & 0x3F));
    add(0x80 | (character & 0x3F));
  } else {
    add(0xF0 | (character >> 18));
    add(0x80 | ((character >> 12) & 0x3F));
    add(0x80 | ((character >> 6) & 0x3F));
    add(0x80 | (character & 0x3F));
  }
}

std::string UpperCase(std::string_view text) {
  std::string upper(text);
  for (char& c : upper) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - ('a' - 'A'));
  }
  return upper;
}

std::string_view TrimBlanks(std::string_view text) {
  while (!text.empty() && text.front() == ' ')
    text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ')
    text.remove_suffix(1);
  return text;
}

std::string DecodeText(std::string_view bytes) {
  if (bytes.substr(0, Utf8Mark.size()) == Utf8Mark) return WellFormed(bytes.substr(Utf8Mark.size()));
  if (IsValidUtf8(bytes)) return std::string(bytes);
  return DecodeCp932(bytes);
}

std::string DecodeOwnedText(std::string bytes) {
  if (bytes.compare(0, Utf8Mark.size(), Utf8Mark) != 0 && IsValidUtf8(bytes)) return bytes;
  return DecodeText(bytes);
}

std::string WithoutControlCharacters(std::string_view text) {
  std::string shown;
  shown.reserve(text.size());
  while (!text.empty()) {
    const std::string_view before = text;
    const char32_t character = TakeCharacter(text);
    const bool is_control = character < 0x20 || (character >= 0x7F && character < 0xA0);
    shown.append(is_control ? " " : before.substr(0, before.size() - text.size()));
  }
  return shown;
}

}  // namespace walrim
