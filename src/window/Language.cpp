#include "window/Language.h"

#include <QFile>
#include <QXmlStreamReader>
#include <locale>
#include <memory>
#include <stdexcept>
#include <utility>

#include "records/Symbols.h"
#include "window/Resources.h"

namespace walrim {

namespace {

struct Message {
  std::string source;
  std::string translation;
  bool finished = false;
};

/// From behind the begin of its element to its end.
Message ReadMessage(QXmlStreamReader& xml) {
  Message message;
  while (xml.readNextStartElement()) {
    if (xml.name() == QLatin1String("source")) {
      message.source = xml.readElementText().toStdString();
    } else if (xml.name() == QLatin1String("translation")) {
      message.finished = !xml.attributes().hasAttribute(QLatin1String("type"));
      message.translation = xml.readElementText().toStdString();
    } else {
      xml.skipCurrentElement();
    }
  }
  return message;
}

}  // namespace

QString LanguageCode(Language language) {
  switch (language) {
    case Language::Japanese:
      return QStringLiteral("ja");
    case Language::English:
      return QStringLiteral("en");
  }
  return {};
}

Language LanguageOf(const QString& code, const QLocale& locale) {
  for (const Language language : {Language::Japanese, Language::English}) {
    if (code == LanguageCode(language)) return language;
  }
  const bool japanese = locale.language() == QLocale::Japanese || locale.language() == QLocale::C;
  return japanese ? Language::Japanese : Language::English;
}

TranslatedTexts::TranslatedTexts(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("no translation");
  QXmlStreamReader xml(&file);
  while (!xml.atEnd()) {
    if (xml.readNext() != QXmlStreamReader::StartElement || xml.name() != QLatin1String("message")) continue;
    Message message = ReadMessage(xml);
    if (message.finished) texts_.insert_or_assign(std::move(message.source), std::move(message.translation));
  }
  if (xml.hasError()) throw std::runtime_error(xml.errorString().toStdString());
}

void TranslatedTexts::AddSymbols() {
  for (const WaypointType type : {WaypointType::D103, WaypointType::D104, WaypointType::D108}) {
    for (const NamedCode& symbol : SymbolNames(type))
      texts_.emplace(JapaneseSymbolName(type, symbol.code), symbol.name);
    for (const NamedCode& mode : DisplayNames(type))
      texts_.emplace(JapaneseDisplayName(type, mode.code), mode.name);
  }
}

std::optional<std::string> TranslatedTexts::Find(std::string_view text) const {
  const auto found = texts_.find(std::string(text));
  if (found == texts_.end()) return std::nullopt;
  return found->second;
}

void Speak(Language language) {
  if (language == Language::Japanese) return;
  CallInResources();
  auto texts = std::make_unique<TranslatedTexts>(QStringLiteral(":/walrim_en.ts"));
  texts->AddSymbols();
  // The locale owns the facet.
  std::locale::global(std::locale(std::locale(), texts.release()));
}

}  // namespace walrim
