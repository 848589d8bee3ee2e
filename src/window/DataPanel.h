// The grid of the three kinds: what the receiver holds, what is held here, and the ways between.
#pragma once

#include <QGroupBox>
#include <array>
#include <vector>

#include "app/ProgramState.h"
#include "window/ControlBinder.h"

class QCheckBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace walrim {

/// One row a kind, read from left to right: the receiver's records, download and upload, the records held here, what
/// can be done with them. The buttons do nothing by themselves.
class DataPanel : public QGroupBox {
 public:
  DataPanel(ProgramState& state, ControlBinder& binder);

  QPushButton* const down_load;
  QPushButton* const up_load;
  QPushButton* const cancel;
  QPushButton* const file_export;
  QPushButton* const copy;
  QPushButton* const remove;
  QPushButton* const file_import;
  QPushButton* const paste;

  /// Shows counts, backgrounds and whether Cancel is enabled. While a command runs nothing but Cancel can be used.
  void ShowState(bool command_runs);
  /// The panel's widgets in reading order.
  [[nodiscard]] std::vector<QWidget*> TabOrder() const;

 private:
  struct Row {
    QCheckBox* down_check = nullptr;
    QLabel* data_type = nullptr;
    QLineEdit* receiver_count = nullptr;
    QCheckBox* do_check = nullptr;
    QLineEdit* held_count = nullptr;
  };

  void BuildHeadings(QGridLayout& grid);
  void BuildRow(QGridLayout& grid, DataKind kind, ControlBinder& binder);
  void ShowRow(DataKind kind, bool command_runs);

  ProgramState& state_;
  std::array<Row, DataKindCount> rows_;
};

}  // namespace walrim
