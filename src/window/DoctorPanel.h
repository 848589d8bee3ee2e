// What the connection assistant has found, in the place of the tables.
#pragma once

#include <QWidget>
#include <string>
#include <vector>

#include "doctor/LineReport.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace walrim {

class DoctorCommands;

/// The finding in one line, what to do next, a command to copy where one helps, and what was looked at. The buttons do
/// nothing by themselves.
class DoctorPanel : public QWidget {
 public:
  explicit DoctorPanel(QWidget* parent = nullptr);

  QPushButton* const again;
  QPushButton* const find_receiver;
  QPushButton* const save_trace;
  QPushButton* const back;

  /// Shows how far the assistant has come. While a command runs the buttons cannot be used.
  void ShowState(const DoctorCommands& doctor, bool command_runs);

 private:
  void ShowCommand(const std::string& command);

  QLabel* headline_;
  QLabel* advice_;
  QWidget* command_row_;
  QLineEdit* command_;
  QLabel* steps_;
};

}  // namespace walrim
