#include "window/Widgets.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

#include "text/Phrase.h"

namespace walrim {

namespace {

/// What a count box has room for.
const QString WidestCount = QStringLiteral("1998 / 1999");

/// "保存(&S)..." is "保存...", "&OK" is "OK".
QString WithoutMnemonic(QString caption) {
  const qsizetype bracket = caption.indexOf(QLatin1String("(&"));
  if (bracket >= 0 && caption.indexOf(QLatin1Char(')'), bracket) == bracket + 3) caption.remove(bracket, 4);
  return caption.remove(QLatin1Char('&'));
}

}  // namespace

QString Translated(std::string_view text) {
  return QString::fromStdString(Phrase(text));
}

QString IndexedName(const char* control, std::size_t index) {
  return QString("%1_%2").arg(control).arg(index);
}

void NameControl(QWidget& widget, const QString& control) {
  widget.setObjectName(control);
}

QPushButton* MakeButton(const char* control, const char* caption, const char* tool_tip) {
  auto* button = new QPushButton(Translated(caption));
  NameControl(*button, control);
  button->setAccessibleName(WithoutMnemonic(button->text()));
  button->setToolTip(Translated(tool_tip));
  button->setAutoDefault(true);
  return button;
}

QCheckBox* MakeCheckBox(const QString& control, const char* caption, const char* tool_tip) {
  auto* box = new QCheckBox(Translated(caption));
  NameControl(*box, control);
  box->setAccessibleName(WithoutMnemonic(box->text()));
  box->setToolTip(Translated(tool_tip));
  return box;
}

QComboBox* MakeComboBox(const char* control, const char* tool_tip) {
  auto* box = new QComboBox;
  NameControl(*box, control);
  box->setToolTip(Translated(tool_tip));
  return box;
}

QLineEdit* MakeLine(const QString& control, const char* tool_tip) {
  auto* line = new QLineEdit;
  NameControl(*line, control);
  line->setToolTip(Translated(tool_tip));
  return line;
}

QLineEdit* MakeCountBox(const QString& control, const char* tool_tip) {
  QLineEdit* box = MakeLine(control, tool_tip);
  box->setReadOnly(true);
  box->setFrame(false);
  QPalette seen_through;
  seen_through.setColor(QPalette::Base, Qt::transparent);
  box->setPalette(seen_through);
  box->setMinimumWidth(box->fontMetrics().horizontalAdvance(WidestCount) + box->fontMetrics().averageCharWidth());
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
  auto* label = new QLabel(Translated(caption));
  label->setBuddy(&buddy);
  buddy.setAccessibleName(WithoutMnemonic(label->text()));
  return label;
}

}  // namespace walrim
