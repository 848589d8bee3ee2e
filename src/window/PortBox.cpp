#include "window/PortBox.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QStandardItemModel>
#include <QStyle>
#include <QStyleOptionFrame>
#include <algorithm>

#include "window/Widgets.h"

namespace walrim {

namespace {

constexpr int ShownLetters = 14;

/// While nobody types in it, a text that is too long ends in "…".
class PortEdit : public QLineEdit {
 protected:
  void paintEvent(QPaintEvent* event) override {
    const QRect room = rect().adjusted(2, 0, -2, 0);
    const bool fits = fontMetrics().horizontalAdvance(text()) <= room.width();
    if (fits || parentWidget()->hasFocus()) return QLineEdit::paintEvent(event);
    QPainter painter(this);
    QStyleOptionFrame panel;
    initStyleOption(&panel);
    style()->drawPrimitive(QStyle::PE_PanelLineEdit, &panel, &painter, this);
    style()->drawItemText(&painter, room, static_cast<int>(Qt::AlignVCenter | Qt::AlignLeft), palette(), isEnabled(),
                          fontMetrics().elidedText(text(), Qt::ElideRight, room.width()), QPalette::Text);
  }
};

}  // namespace

QString PortText(int number, const std::vector<NumberedPort>& ports) {
  const auto port = std::find_if(ports.begin(), ports.end(), [&](const auto& each) { return each.number == number; });
  if (port == ports.end()) return {};
  QString text = QString::number(number) + ": " + QString::fromStdString(port->device);
  if (!port->description.empty()) text += " (" + QString::fromStdString(port->description) + ")";
  return text;
}

PortBox::PortBox(Ports ports, QWidget* parent) : QComboBox(parent), ports_(std::move(ports)) {
  setObjectName(Name);
  setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  setMinimumContentsLength(ShownLetters);
  setLineEdit(new PortEdit);
  lineEdit()->setAcceptDrops(false);
  setInsertPolicy(QComboBox::NoInsert);
  setCompleter(nullptr);
  lineEdit()->setPlaceholderText(Translated("ポートなし"));
  for (int number = 1; number <= MaxPortNumber; ++number) {
    addItem(QString(), QString::number(number));
    Show(number - 1, {});
  }
  insertSeparator(count());
  addItem(Translated("デモ受信機（実機不要）"), DemoPortName);
  connect(lineEdit(), &QLineEdit::textEdited, this, [this](const QString& text) {
    const int cursor = lineEdit()->cursorPosition();
    if (IsPortPath(text.toStdString())) ChoosePath(text);
    lineEdit()->setCursorPosition(cursor);
  });
  connect(lineEdit(), &QLineEdit::editingFinished, this, [this] { TakeTyped(); });
  connect(lineEdit(), &QLineEdit::textChanged, this, [this] { ShowWholeText(); });
  ShowWholeText();
}

std::string PortName(const NumberedPort& port) {
  return port.number > 0 ? std::to_string(port.number) : port.device;
}

void PortBox::Show(int index, const QString& text) {
  // What is being typed would go with a text that is set once more.
  if (itemText(index) != text) setItemText(index, text);
  qobject_cast<QStandardItemModel*>(model())->item(index)->setEnabled(!text.isEmpty());
}

void PortBox::Refresh() {
  known_ = ports_();
  for (int number = 1; number <= MaxPortNumber; ++number)
    Show(number - 1, PortText(number, known_));
  // Ports without a number stand behind those with one; what is chosen stays, also where its port has gone.
  for (int index = findData(DemoPortName) - 2; index >= MaxPortNumber; --index) {
    if (index != currentIndex()) removeItem(index);
  }
  for (const NumberedPort& port : known_) {
    const QString name = QString::fromStdString(PortName(port));
    if (findData(name) < 0) insertItem(findData(DemoPortName) - 1, QString::fromStdString(port.device), name);
  }
}

/// As far as it has been typed: a key that begins a command must not find another port.
void PortBox::ChoosePath(const QString& path) {
  int index = findData(path);
  if (index < 0) {
    index = path_.isEmpty() ? -1 : findData(path_);
    if (index < 0 || index != currentIndex()) {
      index = findData(DemoPortName) - 1;
      insertItem(index, path);
    }
    setItemText(index, path);
    path_ = path;
    // The binding reads the data of an entry that becomes the choice.
    setItemData(index, path);
    if (index == currentIndex()) Q_EMIT currentIndexChanged(index);
  }
  setCurrentIndex(index);
}

/// What is neither a path nor what an entry says is given up.
void PortBox::TakeTyped() {
  const QString text = lineEdit()->text().trimmed();
  if (text == currentText() && text == itemText(currentIndex())) return;
  const int named = std::max(findText(text), findData(text));
  if (named >= 0 && !text.isEmpty()) setCurrentIndex(named);
  lineEdit()->setText(itemText(currentIndex()));
}

void PortBox::ShowWholeText() {
  const QString hint =
      Translated("受信機をつないだシリアルポート．一覧にないポートは，/dev/で始まるパスを入力して選べます");
  const QString text = lineEdit()->text();
  setToolTip(text.isEmpty() ? hint : text.toHtmlEscaped() + "<br>" + hint);
  if (!hasFocus()) lineEdit()->setCursorPosition(0);
}

void PortBox::showPopup() {
  Refresh();
  auto* list = qobject_cast<QListView*>(view());
  for (int number = 1; number <= MaxPortNumber; ++number)
    list->setRowHidden(number - 1, itemText(number - 1).isEmpty());
  // The list shows what the box has no room for.
  list->setMinimumWidth(list->sizeHintForColumn(0) + 2 * list->fontMetrics().averageCharWidth());
  QComboBox::showPopup();
}

/// With these keys the entries change without the list opening.
void PortBox::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      Refresh();
      break;
    default:
      break;
  }
  QComboBox::keyPressEvent(event);
}

}  // namespace walrim
