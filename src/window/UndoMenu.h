// Taking commands back, in the menu.
#pragma once

#include <QObject>
#include <functional>

#include "app/WalrimMain.h"

class QAction;
class QMenu;

namespace walrim {

/// The two commands at the head of a menu. Their captions name the steps that they would take back or do again.
class UndoMenu : public QObject {
 public:
  /// Runs a command with the others out of reach.
  using Run = std::function<void(const std::function<void()>& command)>;

  /// main must outlive the menu, which owns this object.
  UndoMenu(QMenu& menu, WalrimMain& main, const Run& run);

  void ShowState(bool command_runs);

 private:
  WalrimMain& main_;
  QAction* undo_;
  QAction* redo_;
};

}  // namespace walrim
