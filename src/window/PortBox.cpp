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
  addItem(QString::fromUtf8("デモ受信機（実機不要）"), "demo");
}

void PortBox::Refresh() {
  const std::vector<NumberedPort> ports = ports_();
  for (int number = 1; number <= MaxPortNumber; ++number)
    setItemText(number - 1, PortText(number, ports));
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
