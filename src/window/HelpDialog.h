// The page that explains the program.
#pragma once

#include <QString>

class QWidget;

namespace walrim {

/// The page as Markdown: keys, cables, the models that are known, and where data are kept.
[[nodiscard]] QString HelpPage();

/// Shows it beside the window until it is closed; where it is open already it comes to the front.
void ShowHelp(QWidget& window);

}  // namespace walrim
