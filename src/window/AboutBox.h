// The program's face: its icon and what it says of itself.
#pragma once

#include <QIcon>

class QWidget;

namespace walrim {

[[nodiscard]] QIcon ProgramIcon();

/// Shows name, version, purpose and licence until it is closed.
void ShowAboutBox(QWidget& window);

}  // namespace walrim
