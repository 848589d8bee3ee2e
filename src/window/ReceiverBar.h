// The line of the receiver: where it is connected, what it is, and the ways between it and the data held here.
#pragma once

#include <QString>
#include <QWidget>
#include <string>
#include <vector>

#include "window/PortBox.h"

class QPushButton;

namespace walrim {

class ElidedLabel;

/// The buttons do nothing by themselves.
class ReceiverBar : public QWidget {
 public:
  explicit ReceiverBar(PortBox::Ports ports, QWidget* parent = nullptr);

  PortBox* const port;
  QPushButton* const get_info;
  QPushButton* const down_load;
  QPushButton* const up_load;
  QPushButton* const cancel;

  /// What is known of the receiver; clock, of what its clock tells, stands in the tool tip and may be empty.
  void ShowReceiver(const std::string& text, const std::string& clock);
  /// While a command runs nothing but Cancel can be used, and that where it would end something.
  void ShowState(bool command_runs, bool cancel_enabled);
  /// The widgets in reading order.
  [[nodiscard]] std::vector<QWidget*> TabOrder() const;

 private:
  ElidedLabel* info_;
};

}  // namespace walrim
