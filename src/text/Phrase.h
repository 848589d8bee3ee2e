// Texts in the user's language.
//
// Texts are written in Japanese where they are made, and that text is their key: a phrase book has them in another
// language. Its language is the process's, as its locale is. A program that sets none speaks Japanese.
#pragma once

#include <concepts>
#include <initializer_list>
#include <locale>
#include <optional>
#include <string>
#include <string_view>

namespace walrim {

/// A facet of the global locale, which a program sets once, before it makes a text.
class PhraseBook : public std::locale::facet {
 public:
  static std::locale::id id;

  /// A text in the book's language; nothing for one that the book lacks.
  [[nodiscard]] virtual std::optional<std::string> Find(std::string_view text) const = 0;
};

/// A text in the language of the process, UTF-8, with "%1" to "%9" replaced by the parts. What a part holds stays as it
/// is.
[[nodiscard]] std::string PhraseOf(std::string_view text, std::initializer_list<std::string_view> parts);

namespace phrase_part {

[[nodiscard]] inline std::string_view Text(std::string_view part) {
  return part;
}
[[nodiscard]] std::string Text(std::integral auto number) {
  return std::to_string(number);
}

}  // namespace phrase_part

/// The same of texts and numbers.
template <typename... Parts>
[[nodiscard]] std::string Phrase(std::string_view text, const Parts&... parts) {
  return PhraseOf(text, {std::string_view(phrase_part::Text(parts))...});
}

}  // namespace walrim
