// The three kinds: what the receiver holds, what is held here, and what can be done with that.
#pragma once

#include <QWidget>
#include <array>
#include <vector>

#include "app/ProgramState.h"
#include "window/ControlBinder.h"

class QCheckBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QToolButton;

namespace walrim {

/// A column a kind, under its name: the receiver's records above those held here. Beside them the commands, and what
/// unfolds the settings. The buttons do nothing by themselves.
class DataPanel : public QWidget {
  Q_OBJECT

 public:
  DataPanel(ProgramState& state, ControlBinder& binder);

  QPushButton* const file_import;
  QPushButton* const paste;
  QToolButton* const settings;
  QPushButton* const file_export;
  QPushButton* const copy;
  QPushButton* const remove;

  /// Shows counts and backgrounds. While a command runs nothing can be used.
  void ShowState(bool command_runs);
  /// The panel's widgets in reading order.
  [[nodiscard]] std::vector<QWidget*> TabOrder() const;

 Q_SIGNALS:
  /// The user has ticked a kind, or taken a tick away.
  void Ticked();

 protected:
  /// A click on a kind's name ticks both its boxes, or takes both ticks away where there are two.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Column {
    QLabel* data_type = nullptr;
    QCheckBox* down_check = nullptr;
    QLineEdit* receiver_count = nullptr;
    QCheckBox* do_check = nullptr;
    QLineEdit* held_count = nullptr;
  };

  void BuildKind(QGridLayout& grid, DataKind kind, ControlBinder& binder);
  void BuildButtons(QGridLayout& grid);
  void ShowKind(DataKind kind, bool command_runs);

  ProgramState& state_;
  std::array<Column, DataKindCount> columns_;
};

}  // namespace walrim
