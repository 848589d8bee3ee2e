#include "window/CellDelegate.h"

#include <QComboBox>
#include <QLineEdit>
#include <algorithm>

#include "window/SymbolBox.h"

namespace walrim {

namespace {

/// What the editor was opened with. One that is handed over as it was changes nothing: the record may hold more digits
/// than are shown.
constexpr const char* OpenedWith = "OpenedWith";

QString TextIn(const QWidget* editor) {
  if (const auto* box = qobject_cast<const SymbolBox*>(editor)) return box->Choice();
  return qobject_cast<const QLineEdit*>(editor)->text();
}

}  // namespace

QWidget* CellDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& /*option*/,
                                    const QModelIndex& index) const {
  if (model_.FieldOf(index.column()) == EditField::Symbol) return NewSymbolBox(parent, index);
  auto* line = new QLineEdit(parent);
  line->setObjectName("CellLine");
  line->setAccessibleName(model_.Title(index.column()));
  line->setAlignment(Qt::Alignment(index.data(Qt::TextAlignmentRole).toInt()));
  return line;
}

QWidget* CellDelegate::NewSymbolBox(QWidget* parent, const QModelIndex& index) const {
  auto* box = new SymbolBox(parent);
  box->OfferAll(model_.SymbolAt(index.row()).type);
  auto* self = const_cast<CellDelegate*>(this);
  connect(box, &SymbolBox::Chosen, self, [self, box] {
    Q_EMIT self->commitData(box);
    Q_EMIT self->closeEditor(box, SubmitModelCache);
  });
  return box;
}

/// Once: what becomes of the record while a text is typed leaves the text.
void CellDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
  if (editor->property(OpenedWith).isValid()) return;
  if (auto* box = qobject_cast<SymbolBox*>(editor)) {
    box->Show(model_.SymbolAt(index.row()).code);
  } else {
    qobject_cast<QLineEdit*>(editor)->setText(index.data(Qt::EditRole).toString());
  }
  editor->setProperty(OpenedWith, TextIn(editor));
}

void CellDelegate::setModelData(QWidget* editor, QAbstractItemModel* /*model*/, const QModelIndex& index) const {
  refused_ = nullptr;
  const QString text = TextIn(editor);
  const auto field = model_.FieldOf(index.column());
  if (!edit_cell_ || !field || text == editor->property(OpenedWith).toString()) return;
  refusal_ = QString::fromStdString(edit_cell_(model_.RefOf(index.row()), *field, text.toStdString()));
  if (!refusal_.isEmpty()) refused_ = editor;
}

/// A list of names is wider than their column.
void CellDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                        const QModelIndex& index) const {
  QStyledItemDelegate::updateEditorGeometry(editor, option, index);
  if (qobject_cast<SymbolBox*>(editor) == nullptr) return;
  QRect rect = option.rect;
  rect.setWidth(std::max(rect.width(), editor->sizeHint().width()));
  const int overhang = rect.right() - editor->parentWidget()->rect().right();
  if (overhang > 0) rect.translate(-std::min(overhang, rect.left()), 0);
  editor->setGeometry(rect);
}

}  // namespace walrim
