#include "window/Widgets.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

namespace walrim {

namespace {

/// Digits that a count box has room for, with some air.
constexpr int CountDigits = 8;

}  // namespace

QString IndexedName(const char* control, std::size_t index) {
  return QString("%1_%2").arg(control).arg(index);
}

void NameControl(QWidget& widget, const QString& control) {
  widget.setObjectName(control);
  widget.setAccessibleName(control);
}

QPushButton* MakeButton(const char* control, const char* caption, const char* tool_tip) {
  auto* button = new QPushButton(QString::fromUtf8(caption));
  NameControl(*button, control);
  button->setToolTip(QString::fromUtf8(tool_tip));
  button->setAutoDefault(true);
  return button;
}

QCheckBox* MakeCheckBox(const QString& control, const char* caption, const char* tool_tip) {
  auto* box = new QCheckBox(QString::fromUtf8(caption));
  NameControl(*box, control);
  box->setToolTip(QString::fromUtf8(tool_tip));
  return box;
}

QComboBox* MakeComboBox(const char* control, const char* tool_tip) {
  auto* box = new QComboBox;
  NameControl(*box, control);
  box->setToolTip(QString::fromUtf8(tool_tip));
  return box;
}

QLineEdit* MakeLine(const QString& control, const char* tool_tip) {
  auto* line = new QLineEdit;
  NameControl(*line, control);
  line->setToolTip(QString::fromUtf8(tool_tip));
  return line;
}

QLineEdit* MakeCountBox(const QString& control, const char* tool_tip) {
  QLineEdit* box = MakeLine(control, tool_tip);
  box->setReadOnly(true);
  box->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  box->setFocusPolicy(Qt::ClickFocus);
  box->setMaximumWidth(box->fontMetrics().horizontalAdvance('0') * CountDigits + box->sizeHint().height());
  return box;
}

void ShowWarning(QWidget& parent, const QString& text) {
  QMessageBox box(&parent);
  box.setObjectName("MessageBox");
  box.setWindowTitle("Walrim");
  box.setIcon(QMessageBox::Warning);
  box.setTextFormat(Qt::PlainText);
  box.setText(text);
  box.setStandardButtons(QMessageBox::Ok);
  box.button(QMessageBox::Ok)->setText("OK");
  box.setDefaultButton(QMessageBox::Ok);
  box.exec();
}

QLabel* MakeCaption(const char* caption, QWidget& buddy) {
  auto* label = new QLabel(QString::fromUtf8(caption));
  label->setBuddy(&buddy);
  return label;
}

}  // namespace walrim
