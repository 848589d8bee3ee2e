// The window's input widgets, each bound to one value of the controls.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "device/DeviceSession.h"

class QCheckBox;
class QComboBox;
class QSpinBox;

namespace walrim {

/// Writes what the user chooses into the bound values, and shows values that the program changed. The values must
/// outlive the widgets.
class ControlBinder {
 public:
  /// Called after the user has changed a value.
  explicit ControlBinder(std::function<void()> changed) : changed_(std::move(changed)) {}

  void Bind(QCheckBox& box, bool& value);
  void Bind(QSpinBox& box, int& value);
  /// value is the data (a text) of the entry that is chosen.
  void Bind(QComboBox& box, std::string& value);
  /// value is the data (its number) of the entry that is chosen.
  void Bind(QComboBox& box, LinkChoice& value);

  /// Shows every bound value.
  void Show() const;

 private:
  std::function<void()> changed_;
  std::vector<std::function<void()>> show_;
};

}  // namespace walrim
