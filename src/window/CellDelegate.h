// Typing into the cells of a table.
#pragma once

#include <QPointer>
#include <QString>
#include <QStyledItemDelegate>
#include <functional>
#include <string>

#include "window/RecordModel.h"

namespace walrim {

/// Opens a line to type in, or the list of symbols. A text that is not taken leaves the editor as it is, and says why.
class CellDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  /// Takes a text for a row's field. Why it is not taken; empty where it is.
  using EditCell = std::function<std::string(RowRef ref, EditField field, const std::string& text)>;

  /// model must outlive the delegate.
  CellDelegate(RecordModel& model, QObject* parent) : QStyledItemDelegate(parent), model_(model) {}

  void SetEditCell(EditCell edit_cell) { edit_cell_ = std::move(edit_cell); }
  /// Whether what stands in an editor was refused the last time it was handed over.
  [[nodiscard]] bool IsRefused(const QWidget* editor) const { return refused_ == editor && editor != nullptr; }
  /// Why that was.
  [[nodiscard]] const QString& Refusal() const { return refusal_; }

  [[nodiscard]] QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                      const QModelIndex& index) const override;
  void setEditorData(QWidget* editor, const QModelIndex& index) const override;
  void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
  void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const override;

 private:
  [[nodiscard]] QWidget* NewSymbolBox(QWidget* parent, const QModelIndex& index) const;

  RecordModel& model_;
  EditCell edit_cell_;
  mutable QPointer<QWidget> refused_;
  mutable QString refusal_;
};

}  // namespace walrim
