// The choice of the window's language, in a menu.
#pragma once

#include <QString>
#include <functional>

class QMenu;

namespace walrim {

/// Adds a menu of the languages to another one. code is the one that is remembered (LanguageOf); choose is called with
/// another one, which holds from the next start on.
void AddLanguageMenu(QMenu& menu, const QString& code, const std::function<void(const QString& code)>& choose);

}  // namespace walrim
