#include "window/LanguageMenu.h"

#include <QAction>
#include <QLocale>
#include <QMenu>

#include "window/Language.h"
#include "window/Widgets.h"

namespace walrim {

namespace {

/// A language by its own name: who looks for it does not read the others.
QString NameOf(Language language) {
  switch (language) {
    case Language::Japanese:
      return Translated("日本語");
    case Language::English:
      return QStringLiteral("English");
  }
  return {};
}

}  // namespace

void AddLanguageMenu(QMenu& menu, const QString& code, const std::function<void(const QString& code)>& choose) {
  QMenu* languages = menu.addMenu(Translated("Language（言語）(&L)"));
  languages->setObjectName("Languages");
  for (const Language language : {Language::Japanese, Language::English}) {
    QAction* action = languages->addAction(NameOf(language));
    action->setObjectName("Language_" + LanguageCode(language));
    action->setCheckable(true);
    action->setChecked(language == LanguageOf(code, QLocale()));
    QObject::connect(action, &QAction::triggered, languages, [languages, action, choose, language] {
      for (QAction* other : languages->actions())
        other->setChecked(other == action);
      choose(LanguageCode(language));
    });
  }
}

}  // namespace walrim
