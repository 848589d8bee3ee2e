#include "window/PortBox.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <algorithm>

namespace walrim {

QString PortText(int number, const std::vector<NumberedPort>& ports) {
  const QString prefix = QString::number(number) + ": ";
  const auto port = std::find_if(ports.begin(), ports.end(), [&](const auto& each) { return each.number == number; });
  if (port == ports.end()) return prefix + QString::fromUtf8("（ポートなし）");
  QString text = prefix + QString::fromStdString(port->device);
  if (!port->description.empty()) text += " (" + QString::fromStdString(port->description) + ")";
  return text;
}

PortBox::PortBox(Ports ports, QWidget* parent) : QComboBox(parent), ports_(std::move(ports)) {
  setObjectName("CommPort");
  setAccessibleName("CommPort");
  setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  setMinimumContentsLength(14);
  for (int number = 1; number <= MaxPortNumber; ++number)
    addItem(QString::number(number), QString::number(number));
  insertSeparator(count());
  addItem(QString::fromUtf8("デモ受信機（実機不要）"), DemoPortName);
}

std::string PortName(const NumberedPort& port) {
  return port.number > 0 ? std::to_string(port.number) : port.device;
}

void PortBox::Refresh() {
  known_ = ports_();
  for (int number = 1; number <= MaxPortNumber; ++number)
    setItemText(number - 1, PortText(number, known_));
  // Ports without a number stand behind those with one; what is chosen stays, also where its port has gone.
  for (int index = findData(DemoPortName) - 2; index >= MaxPortNumber; --index) {
    if (index != currentIndex()) removeItem(index);
  }
  for (const NumberedPort& port : known_) {
    const QString name = QString::fromStdString(PortName(port));
    if (findData(name) < 0) insertItem(findData(DemoPortName) - 1, QString::fromStdString(port.device), name);
  }
}

void PortBox::showPopup() {
  Refresh();
  // The list shows what the box has no room for.
  view()->setMinimumWidth(view()->sizeHintForColumn(0) + 2 * view()->fontMetrics().averageCharWidth());
  QComboBox::showPopup();
}

/// With the keys the entries change without the list opening.
void PortBox::keyPressEvent(QKeyEvent* event) {
  Refresh();
  QComboBox::keyPressEvent(event);
}

}  // namespace walrim
