// A table of records with what a user does to it by hand: sorting by a click on a title, choosing rows, copying them,
// and a menu that leads from a record to a map.
#pragma once

#include <QSet>
#include <QTableView>
#include <QVariantMap>
#include <optional>
#include <vector>

#include "dialogs/MapPages.h"
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
  /// Copies the chosen rows, in the order they are shown, as standard lines. Without any the clipboard stays.
  void CopyRows() const;
  /// The records of the chosen rows, each once, in rising order.
  [[nodiscard]] std::vector<int> SelectedRecords() const;

 Q_SIGNALS:
  /// A record's place is to be opened on a map. page outlives the program.
  void MapChosen(const MapPage& page, const MapPlace& place);
  void GeoLinkChosen(const MapPlace& place);

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void changeEvent(QEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void SetUpRows();
  void SetUpTitles();
  void FollowModel();
  void AddCopyAction();
  void AddCheckActions();
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
  /// Widens the columns to what a sample of the rows needs; those that the user has set stay.
  void FitColumns();

  RecordModel& model_;
  bool with_header_ = false;
  bool fitting_ = false;
  std::vector<int> fitted_widths_;
  QSet<int> user_columns_;
};

}  // namespace walrim
