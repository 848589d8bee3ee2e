// The window's input widgets, each bound to one value of the controls.
#pragma once

#include <QVariantMap>
#include <functional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

class QCheckBox;
class QComboBox;
class QSpinBox;
class QWidget;

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
  /// value's number is the data of the entry that is chosen.
  template <typename Choice>
  requires std::is_enum_v<Choice>
  void Bind(QComboBox& box, Choice& value) {
    BindNumber(
        box, [&value] { return static_cast<int>(value); },
        [&value](int number) { value = static_cast<Choice>(number); });
  }

  /// Shows every bound value.
  void Show() const;

  /// What the controls show, by their names.
  [[nodiscard]] QVariantMap Values() const;
  /// Chooses values as the user would; what a control cannot have is passed over.
  void Choose(const QVariantMap& values) const;

 private:
  void BindNumber(QComboBox& box, std::function<int()> get, std::function<void(int)> set);

  std::function<void()> changed_;
  std::vector<std::function<void()>> show_;
  std::vector<QWidget*> controls_;
};

}  // namespace walrim
