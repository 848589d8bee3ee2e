// The language of the window: Japanese, or another one from a translation.
#pragma once

#include <QLocale>
#include <QString>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "text/Phrase.h"

namespace walrim {

enum class Language : std::uint8_t { Japanese, English };

/// "ja" or "en", as it is remembered.
[[nodiscard]] QString LanguageCode(Language language);
/// The language that is remembered; where none is, that of the desktop. Desktops that speak neither, or say nothing,
/// are spoken to in English, and in Japanese.
[[nodiscard]] Language LanguageOf(const QString& code, const QLocale& locale);

/// Texts by their Japanese ones, of a translation in Qt Linguist's form. Texts that have no finished translation are
/// missing.
class TranslatedTexts : public PhraseBook {
 public:
  /// Throws std::runtime_error for a file that is no translation.
  explicit TranslatedTexts(const QString& path);

  /// Adds the English names of symbols and display modes, which have rows of their own.
  void AddSymbols();

  [[nodiscard]] std::optional<std::string> Find(std::string_view text) const override;
  [[nodiscard]] const std::unordered_map<std::string, std::string>& Texts() const { return texts_; }

 private:
  std::unordered_map<std::string, std::string> texts_;
};

/// Lets the process speak a language. To be called before a text is made.
void Speak(Language language);

}  // namespace walrim
