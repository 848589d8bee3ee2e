// The settings: how data are written, how the line is used, and what follows a command by itself.
#pragma once

#include <QWidget>
#include <vector>

#include "app/UserSettings.h"
#include "window/ControlBinder.h"

class QHBoxLayout;

namespace walrim {

/// Folded away most of the time. A line for how data are written, one for the line and the names of files, and one for
/// the actions that follow by themselves.
class SettingsPanel : public QWidget {
 public:
  /// The choice of the checked link.
  static constexpr const char* LinkName = "CheckedLink";

  SettingsPanel(UserSettings& settings, ControlBinder& binder, QWidget* parent = nullptr);

  /// The widgets in reading order.
  [[nodiscard]] const std::vector<QWidget*>& TabOrder() const { return tab_order_; }

 private:
  void BuildOutput(QHBoxLayout& line, UserSettings& settings, ControlBinder& binder);
  void BuildLink(QHBoxLayout& line, UserSettings& settings, ControlBinder& binder);
  void BuildAutoActions(QHBoxLayout& line, UserSettings& settings, ControlBinder& binder);
  void Append(QHBoxLayout& line, const char* caption, QWidget* widget);

  std::vector<QWidget*> tab_order_;
};

}  // namespace walrim
