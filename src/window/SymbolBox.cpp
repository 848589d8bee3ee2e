#include "window/SymbolBox.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QKeyEvent>
#include <QLineEdit>
#include <QStyledItemDelegate>
#include <QTimer>

#include "window/SymbolPictures.h"
#include "window/Widgets.h"

namespace walrim {

namespace {

constexpr int ShownEntries = 14;
constexpr const char* NameSeparator = " / ";
constexpr int NamesRole = Qt::UserRole + 1;     ///< all names, for the search
constexpr int ListTextRole = Qt::UserRole + 2;  ///< what a list shows

QString ToQString(std::string_view text) {
  return Translated(text);
}

QString NamesOf(WaypointType type, int code) {
  const bool small = SymbolNames(type).size() <= LargestSmallSymbol + 1;
  const int large = small ? LargeSymbolFor(code) : code;
  return QStringList{ToQString(JapaneseSymbolName(type, code)), ToQString(NameOf(SymbolNames(type), code)),
                     QString::fromStdString(GpxSymbolName(large))}
      .join(NameSeparator);
}

/// Searches all names; what is chosen then reads as its entry does.
class NamesCompleter : public QCompleter {
 public:
  NamesCompleter(QAbstractItemModel* model, QObject* parent) : QCompleter(model, parent) {
    setCompletionRole(NamesRole);
    setFilterMode(Qt::MatchContains);
    setCompletionMode(PopupCompletion);
    setCaseSensitivity(Qt::CaseInsensitive);
    setMaxVisibleItems(ShownEntries);
  }
  [[nodiscard]] QString pathFromIndex(const QModelIndex& index) const override {
    return index.data(Qt::DisplayRole).toString();
  }
};

class ListDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    option->text = index.data(ListTextRole).toString();
  }
};

}  // namespace

SymbolBox::SymbolBox(QWidget* parent) : QComboBox(parent) {
  setObjectName("SymbolBox");
  setAccessibleName(Translated("シンボル"));
  setEditable(true);
  setInsertPolicy(NoInsert);
  setMaxVisibleItems(ShownEntries);
  setSizeAdjustPolicy(AdjustToContents);
  SetUpCompleter();
  view()->setItemDelegate(new ListDelegate(view()));
  connect(this, &QComboBox::activated, this, &SymbolBox::Chosen);
}

void SymbolBox::SetUpCompleter() {
  auto* names = new NamesCompleter(model(), this);
  setCompleter(names);
  names->popup()->setObjectName("SymbolList");
  names->popup()->setItemDelegate(new ListDelegate(names->popup()));
}

void SymbolBox::OfferAll(WaypointType type) {
  for (const NamedCode& symbol : SymbolNames(type)) {
    const QString names = NamesOf(type, symbol.code);
    Offer(type, symbol.code, names);
    setItemData(count() - 1, names, ListTextRole);
  }
}

void SymbolBox::Offer(WaypointType type, int code, const QString& text) {
  addItem(SymbolIcon(type, code), text, code);
  setItemData(count() - 1, NamesOf(type, code), NamesRole);
  setItemData(count() - 1, text + Translated("　") + ToQString(JapaneseSymbolName(type, code)), ListTextRole);
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

std::optional<int> SymbolBox::Code() const {
  const QString typed = currentText().trimmed();
  int index = findText(typed, Qt::MatchFixedString);
  if (index < 0 && !typed.isEmpty()) {
    const QModelIndexList found = model()->match(model()->index(0, 0), NamesRole, typed, -1, Qt::MatchContains);
    for (const QModelIndex& entry : found) {
      const QStringList names = entry.data(NamesRole).toString().split(NameSeparator);
      if (found.size() == 1 || names.contains(typed, Qt::CaseInsensitive)) index = entry.row();
    }
  }
  return index >= 0 ? std::optional(itemData(index).toInt()) : std::nullopt;
}

QString SymbolBox::Choice() const {
  const auto code = Code();
  return code ? QString::number(*code) : currentText();
}

void SymbolBox::keyPressEvent(QKeyEvent* event) {
  const bool to_end = event->key() == Qt::Key_End;
  const bool untouched = currentText() == itemText(currentIndex()) && event->modifiers() == Qt::NoModifier;
  if (!untouched || (!to_end && event->key() != Qt::Key_Home)) return QComboBox::keyPressEvent(event);
  setCurrentIndex(to_end ? count() - 1 : 0);
  lineEdit()->selectAll();
}

}  // namespace walrim
