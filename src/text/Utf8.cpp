#include "text/Utf8.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace walrim {
namespace {

constexpr char32_t ReplacementCharacter = 0xFFFD;

/// Whether a code point is a character that takes so many bytes, and no fewer.
bool Takes(char32_t character, std::size_t length) {
  if (length == 3) return character >= 0x800 && (character < 0xD800 || character > 0xDFFF);
  return length != 4 || (character >= 0x10000 && character <= 0x10FFFF);
}

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
  return Takes(character, length) ? length : 0;
}

}  // namespace

bool IsValidUtf8(std::string_view bytes) {
  for (;;) {
    bytes.remove_prefix(AsciiPrefix(bytes));
    if (bytes.empty()) return true;
    char32_t character = 0;
    const std::size_t length = WellFormedLength(bytes, character);
    if (length == 0) return false;
    bytes.remove_prefix(length);
  }
}

std::size_t AsciiPrefix(std::string_view text) {
  constexpr std::uint64_t HighBits = 0x8080808080808080U;
  std::size_t length = 0;
  for (std::uint64_t block = 0; text.size() - length >= sizeof block; length += sizeof block) {
    std::memcpy(&block, text.data() + length, sizeof block);
    if ((block & HighBits) != 0) break;
  }
  while (length < text.size() && static_cast<std::uint8_t>(text[length]) < 0x80)
    ++length;
  return length;
}

std::string WellFormed(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size());
  while (!bytes.empty())
    AppendCharacter(text, TakeCharacter(bytes));
  return text;
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

std::string WithoutControlCharacters(std::string_view text) {
  const auto is_plain = [](char c) { return c >= 0x20 && c < 0x7F; };
  if (std::all_of(text.begin(), text.end(), is_plain)) return std::string(text);
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
