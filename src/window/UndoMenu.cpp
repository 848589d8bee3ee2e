#include "window/UndoMenu.h"

#include <QAction>
#include <QKeySequence>
#include <QMenu>

#include "app/Messages.h"

namespace walrim {

UndoMenu::UndoMenu(QMenu& menu, WalrimMain& main, const Run& run)
    : QObject(&menu), main_(main), undo_(menu.addAction(QString())), redo_(menu.addAction(QString())) {
  undo_->setObjectName("Undo");
  undo_->setShortcut(QKeySequence("Ctrl+Z"));
  redo_->setObjectName("Redo");
  redo_->setShortcuts({QKeySequence("Ctrl+Shift+Z"), QKeySequence("Ctrl+Y")});
  connect(undo_, &QAction::triggered, this, [this, run] { run([this] { main_.Edits().Undo(); }); });
  connect(redo_, &QAction::triggered, this, [this, run] { run([this] { main_.Edits().Redo(); }); });
  menu.addSeparator();
}

void UndoMenu::ShowState(bool command_runs) {
  const History& steps = main_.State().Steps();
  undo_->setText(QString::fromStdString(messages::UndoCaption(steps.NextUndo()) + "(&Z)"));
  redo_->setText(QString::fromStdString(messages::RedoCaption(steps.NextRedo()) + "(&R)"));
  undo_->setEnabled(!command_runs && steps.NextUndo() != nullptr);
  redo_->setEnabled(!command_runs && steps.NextRedo() != nullptr);
}

}  // namespace walrim
