// Taking texts apart: blanks, digits, words, letters without regard to case. All of it works on bytes; letters and
// digits are ASCII's, and all other bytes stay as they are.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace walrim {

[[nodiscard]] constexpr bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}
[[nodiscard]] constexpr bool IsHexDigit(char c) {
  return IsDigit(c) || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}
/// Whether a text is digits and nothing else; false for an empty one.
[[nodiscard]] constexpr bool AllDigits(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), IsDigit);
}
[[nodiscard]] constexpr bool IsLetter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}
/// A blank, a TAB or a line end.
[[nodiscard]] constexpr bool IsSpace(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}
[[nodiscard]] constexpr char UpperCase(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}
[[nodiscard]] constexpr char LowerCase(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}
[[nodiscard]] std::string UpperCase(std::string_view text);
[[nodiscard]] std::string LowerCase(std::string_view text);

/// Whether two texts are the same but for the case of letters.
[[nodiscard]] constexpr bool SameWord(std::string_view a, std::string_view b) {
  return a.size() == b.size() &&
         std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) { return UpperCase(x) == UpperCase(y); });
}
[[nodiscard]] constexpr bool BeginsWithWord(std::string_view text, std::string_view word) {
  return SameWord(text.substr(0, word.size()), word);
}

/// Text without the characters that are in set around it.
[[nodiscard]] constexpr std::string_view TrimAny(std::string_view text, std::string_view set) {
  const std::size_t first = text.find_first_not_of(set);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(set) - first + 1);
}
/// Without blanks around it; TABs stay.
[[nodiscard]] constexpr std::string_view TrimBlanks(std::string_view text) {
  while (!text.empty() && text.front() == ' ')
    text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ')
    text.remove_suffix(1);
  return text;
}
/// Without blanks, TABs and line ends around it.
[[nodiscard]] constexpr std::string_view TrimSpace(std::string_view text) {
  while (!text.empty() && IsSpace(text.front()))
    text.remove_prefix(1);
  while (!text.empty() && IsSpace(text.back()))
    text.remove_suffix(1);
  return text;
}

/// Takes what is expected off the front of a text; false, with the text as it is, where something else stands there.
constexpr bool Take(std::string_view& text, std::string_view expected) {
  if (!text.starts_with(expected)) return false;
  text.remove_prefix(expected.size());
  return true;
}
constexpr bool Take(std::string_view& text, char expected) {
  if (text.empty() || text.front() != expected) return false;
  text.remove_prefix(1);
  return true;
}
/// Takes count bytes off the front, or all there are.
constexpr std::string_view TakeBytes(std::string_view& text, std::size_t count) {
  const std::string_view taken = text.substr(0, count);
  text.remove_prefix(taken.size());
  return taken;
}
/// Takes the digits at the front, at most a number of them. There may be none.
constexpr std::string_view TakeDigits(std::string_view& text, std::size_t most = std::string_view::npos) {
  const auto* const end = text.begin() + static_cast<std::ptrdiff_t>(std::min(text.size(), most));
  const auto* const behind = std::find_if_not(text.begin(), end, IsDigit);
  return TakeBytes(text, static_cast<std::size_t>(behind - text.begin()));
}
/// Takes everything up to a delimiter, and the delimiter; without one, everything.
constexpr std::string_view TakeUpTo(std::string_view& text, char delimiter) {
  const std::string_view item = TakeBytes(text, text.find(delimiter));
  text.remove_prefix(text.empty() ? 0 : 1);
  return item;
}
/// Takes everything up to the first of some delimiters, which stays.
constexpr std::string_view TakeUntilAny(std::string_view& text, std::string_view delimiters) {
  return TakeBytes(text, text.find_first_of(delimiters));
}

}  // namespace walrim
