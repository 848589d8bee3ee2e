// Small helpers for building the window.
#pragma once

#include <QComboBox>
#include <QString>
#include <initializer_list>
#include <string_view>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QWidget;

namespace walrim {

/// A text of the program's own in the language of the window. What is none, such as a name, stays as it is.
[[nodiscard]] QString Translated(std::string_view text);

/// A name with a kind's number: "DownCheck_0".
[[nodiscard]] QString IndexedName(const char* control, std::size_t index);

/// Gives a widget a control's name. What a screen reader says of it is its caption.
void NameControl(QWidget& widget, const QString& control);

[[nodiscard]] QPushButton* MakeButton(const char* control, const char* caption, const char* tool_tip);
[[nodiscard]] QCheckBox* MakeCheckBox(const QString& control, const char* caption, const char* tool_tip);
[[nodiscard]] QComboBox* MakeComboBox(const char* control, const char* tool_tip);
[[nodiscard]] QLineEdit* MakeLine(const QString& control, const char* tool_tip);
/// A text box that shows a number of records and is not typed into.
[[nodiscard]] QLineEdit* MakeCountBox(const QString& control, const char* tool_tip);
/// A list of a few values, which are the data of its entries.
template <typename Choice>
struct ChoiceEntry {
  Choice value;
  const char* text;
};
template <typename Choice>
[[nodiscard]] QComboBox* MakeChoice(const char* control, const char* tool_tip,
                                    std::initializer_list<ChoiceEntry<Choice>> entries) {
  QComboBox* box = MakeComboBox(control, tool_tip);
  for (const ChoiceEntry<Choice>& entry : entries)
    box->addItem(Translated(entry.text), static_cast<int>(entry.value));
  return box;
}
/// Tells that an input cannot be used; plain text, OK alone.
void ShowWarning(QWidget& parent, const QString& text);
/// A caption whose mnemonic leads to a widget, and which is the widget's accessible name.
[[nodiscard]] QLabel* MakeCaption(const char* caption, QWidget& buddy);

}  // namespace walrim
