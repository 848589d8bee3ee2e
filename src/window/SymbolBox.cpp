#include "window/SymbolBox.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QLineEdit>
#include <QTimer>

#include "window/SymbolPictures.h"

namespace walrim {

namespace {

constexpr int ShownEntries = 14;

QString ToQString(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString EntryText(WaypointType type, const NamedCode& symbol) {
  const bool small = SymbolNames(type).size() <= LargestSmallSymbol + 1;
  const int large = small ? LargeSymbolFor(symbol.code) : symbol.code;
  return ToQString(JapaneseSymbolName(type, symbol.code)) + " / " + ToQString(symbol.name) + " / " +
         QString::fromStdString(GpxSymbolName(large));
}

}  // namespace

SymbolBox::SymbolBox(WaypointType type, QWidget* parent) : QComboBox(parent) {
  setObjectName("SymbolBox");
  setAccessibleName(QStringLiteral("シンボル"));
  setEditable(true);
  setInsertPolicy(NoInsert);
  setMaxVisibleItems(ShownEntries);
  setSizeAdjustPolicy(AdjustToContents);
  for (const NamedCode& symbol : SymbolNames(type))
    addItem(SymbolIcon(type, symbol.code), EntryText(type, symbol), symbol.code);
  completer()->setFilterMode(Qt::MatchContains);
  completer()->setCompletionMode(QCompleter::PopupCompletion);
  completer()->setCaseSensitivity(Qt::CaseInsensitive);
  completer()->setMaxVisibleItems(ShownEntries);
  completer()->popup()->setObjectName("SymbolList");
  connect(this, &QComboBox::activated, this, &SymbolBox::Chosen);
}

void SymbolBox::Show(int code) {
  setCurrentIndex(findData(code));
  lineEdit()->selectAll();
  // Once the box stands in its place; typing goes on in it while the list is unfolded.
  auto* soon = new QTimer(this);
  soon->setSingleShot(true);
  connect(soon, &QTimer::timeout, this, [this] {
    completer()->setCompletionPrefix({});
    completer()->complete();
  });
  soon->start();
}

QString SymbolBox::Choice() const {
  const QString typed = currentText();
  int index = findText(typed, Qt::MatchFixedString);
  if (index < 0 && !typed.isEmpty()) {
    const QModelIndexList found = model()->match(model()->index(0, 0), Qt::DisplayRole, typed, 2, Qt::MatchContains);
    if (found.size() == 1) index = found.front().row();
  }
  return index >= 0 ? itemData(index).toString() : typed;
}

}  // namespace walrim
