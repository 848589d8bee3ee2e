// A table of records with what a user does to it by hand: sorting by a click on a title, choosing rows, copying them,
// and a menu that leads from a record to a map.
#pragma once

#include <QSet>
#include <QTableView>
#include <QTimer>
#include <QVariantMap>
#include <optional>
#include <vector>

#include "dialogs/MapPages.h"
#include "window/CellDelegate.h"
#include "window/RecordModel.h"

class QMenu;

namespace walrim {

class RecordView : public QTableView {
  Q_OBJECT

 public:
  /// The view takes the model over.
  RecordView(RecordModel* model, const QString& name, QWidget* parent = nullptr);

  /// Title lines in front of copied lines.
  void SetWithHeader(bool on) { with_header_ = on; }
  /// The widths that the user has given columns, in pixels, by their titles.
  [[nodiscard]] QVariantMap UserWidths() const;
  void SetUserWidths(const QVariantMap& widths);
  /// Hides the columns that are empty in all rows and cannot be edited, or shows all.
  void HideEmptyColumns(bool hide);
  /// Copies the chosen rows, in the order they are shown, as standard lines. Without any the clipboard stays.
  void CopyRows() const;
  /// Takes what is typed into cells.
  void SetEditCell(CellDelegate::EditCell edit_cell) { delegate_->SetEditCell(std::move(edit_cell)); }
  /// Opens the editor of the current cell; where that only shows, of the first in its row that can be edited.
  void EditCurrentCell();
  /// What the chosen rows show, in rising order.
  [[nodiscard]] std::vector<RowRef> SelectedRefs() const;
  void SelectRefs(const std::vector<RowRef>& refs);
  /// Chooses a row and scrolls to it, where it is shown.
  void ShowRow(RowRef ref);
  /// Where the current row's record lies, where that is known.
  [[nodiscard]] std::optional<MapPlace> CurrentPlace() const;
  /// The uppermost chosen row; 0 without any.
  [[nodiscard]] int FirstSelectedRow() const;
  /// Chooses a row, or the last one where there are fewer.
  void SelectRowNear(int row);
  /// The records of the chosen rows, each once, in rising order.
  [[nodiscard]] std::vector<int> SelectedRecords() const;

 Q_SIGNALS:
  /// A record's place is to be opened on a map. page outlives the program.
  void MapChosen(const MapPage& page, const MapPlace& place);
  void GeoLinkChosen(const MapPlace& place);
  /// Rows were chosen, or the table got the focus.
  void SelectionMayDiffer();

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void changeEvent(QEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
  /// Whoever goes on to another cell gives a refused text up.
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  /// An editor whose text was refused stays open and says why, unless it is given up.
  void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;

 private:
  void SetUpRows();
  void SetUpTitles();
  void FollowModel();
  void AddCopyAction();
  void AddCheckActions();
  /// refused_at_ is known.
  void TellRefusal();
  void CheckRows(const std::vector<int>& rows, bool checked);
  void CheckAll(bool checked);
  void CheckSelectedOnly();
  void ToggleChecks();
  void ShowMenu(const QModelIndex& index, const QPoint& global_at);
  void ShowMenuAtCurrentRow();
  void AddPlaceActions(QMenu& menu, const std::optional<MapPlace>& place);
  [[nodiscard]] std::vector<int> SelectedRows() const;
  [[nodiscard]] std::vector<int> NeededWidths() const;
  void FitRows();
  void FollowRows();
  void ShowColumns();
  /// Widens the columns to what a sample of the rows needs; those that the user has set stay.
  void FitColumns();

  RecordModel& model_;
  CellDelegate* delegate_;
  bool with_header_ = false;
  bool fitting_ = false;
  bool hides_empty_ = false;
  bool leaving_cell_ = false;
  std::optional<QPoint> refused_at_;  ///< below the cell that was refused since a button went down
  QTimer refusal_timer_;
  std::vector<int> fitted_widths_;
  QSet<int> user_columns_;
};

}  // namespace walrim
