#include "text/Phrase.h"

#include <cstddef>

namespace walrim {

std::locale::id PhraseBook::id;

namespace {

std::string InLanguage(std::string_view text) {
  const std::locale language;
  if (std::has_facet<PhraseBook>(language)) {
    if (auto found = std::use_facet<PhraseBook>(language).Find(text)) return *std::move(found);
  }
  return std::string(text);
}

}  // namespace

std::string PhraseOf(std::string_view text, std::initializer_list<std::string_view> parts) {
  const std::string pattern = InLanguage(text);
  if (parts.size() == 0) return pattern;
  std::string phrase;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    const char next = i + 1 < pattern.size() ? pattern[i + 1] : ' ';
    const auto part = static_cast<std::size_t>(next - '1');
    if (pattern[i] == '%' && next >= '1' && part < parts.size()) {
      phrase += parts.begin()[part];
      ++i;
    } else {
      phrase += pattern[i];
    }
  }
  return phrase;
}

}  // namespace walrim
