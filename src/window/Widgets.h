// Small helpers for building the window.
#pragma once

#include <QString>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QWidget;

namespace walrim {

/// A name with a kind's number: "DownCheck_0".
[[nodiscard]] QString IndexedName(const char* control, std::size_t index);

/// Gives a widget a control's name, which is its accessible name too.
void NameControl(QWidget& widget, const QString& control);

[[nodiscard]] QPushButton* MakeButton(const char* control, const char* caption, const char* tool_tip);
[[nodiscard]] QCheckBox* MakeCheckBox(const QString& control, const char* caption, const char* tool_tip);
[[nodiscard]] QComboBox* MakeComboBox(const char* control, const char* tool_tip);
/// A text box that shows a number of records and is not typed into.
[[nodiscard]] QLineEdit* MakeCountBox(const QString& control, const char* tool_tip);
/// Tells that an input cannot be used; plain text, OK alone.
void ShowWarning(QWidget& parent, const QString& text);
/// A caption whose mnemonic leads to a widget.
[[nodiscard]] QLabel* MakeCaption(const char* caption, QWidget& buddy);

}  // namespace walrim
