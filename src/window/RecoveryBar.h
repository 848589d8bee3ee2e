// Asks what becomes of records that were left, and waits.
#pragma once

#include <QFrame>
#include <functional>

#include "app/RecoveryCommands.h"

class QLabel;
class QPushButton;

namespace walrim {

/// Everything else goes on beside it. Gone once all has been answered.
class RecoveryBar : public QFrame {
 public:
  /// run runs an answer as a command. commands must outlive the bar.
  RecoveryBar(RecoveryCommands& commands, const std::function<void(const std::function<void()>&)>& run);

  /// Shows the question that comes next, where there is one. While a command runs there is no answering.
  void ShowState(bool command_runs);

 private:
  RecoveryCommands& commands_;
  QLabel* text_;
  QPushButton* restore_;
  QPushButton* discard_;
  QPushButton* later_;
};

}  // namespace walrim
