// The settings: how data are written, and what follows a command by itself.
#pragma once

#include <QWidget>
#include <vector>

#include "app/UserSettings.h"
#include "window/ControlBinder.h"

class QGroupBox;
class QHBoxLayout;

namespace walrim {

/// The form of what is written: one group of controls in a line.
[[nodiscard]] QGroupBox* MakeOutputGroup(UserSettings& settings, ControlBinder& binder,
                                         std::vector<QWidget*>& tab_order);

/// The actions that follow by themselves: one group of check boxes, one below the other.
[[nodiscard]] QGroupBox* MakeAutoActionGroup(UserSettings& settings, ControlBinder& binder,
                                             std::vector<QWidget*>& tab_order);

}  // namespace walrim
