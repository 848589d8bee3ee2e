// The records on screen: a page for each kind, with its tables.
#pragma once

#include <QVariantMap>
#include <QWidget>
#include <array>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "app/RecordCommands.h"
#include "dialogs/MapPages.h"
#include "records/DataSet.h"
#include "window/RecordModel.h"

class QAction;
class QStackedWidget;
class QTabWidget;

namespace walrim {

class FilterBar;
class RecordView;

/// The rows that are chosen in the table that the user works with.
struct RecordSelection {
  DataKind kind = DataKind::Waypoint;
  bool of_points = false;  ///< the table shows points
  std::vector<RecordPlace> places;

  /// The records, each once.
  [[nodiscard]] std::vector<std::size_t> Records() const;

  friend bool operator==(const RecordSelection&, const RecordSelection&) = default;
};

class RecordTables : public QWidget {
  Q_OBJECT

 public:
  /// data_set must outlive the tables. They are empty before the first Refresh.
  explicit RecordTables(const DataSet& data_set, QWidget* parent = nullptr);

  /// Shows what changed; to be called after every change of the data or of settings. In between the tables may be used
  /// and painted whatever happens to the data.
  void Refresh(const ShownForm& form);
  /// Takes what is typed into a cell. Why it is not taken; empty where it is.
  using EditCell =
      std::function<std::string(DataKind kind, const RecordPlace& place, EditField field, const std::string& text)>;
  void SetEditCell(EditCell edit_cell) { edit_cell_ = std::move(edit_cell); }
  /// Actions for the menus of the rows of all tables.
  void SetRowActions(QList<QAction*> row_actions) { row_actions_ = std::move(row_actions); }
  [[nodiscard]] RecordSelection Selection() const;
  /// Chooses rows of a table, which comes to the front; nothing of a kind of which nothing is held.
  void Select(const RecordSelection& selection);
  /// The rows that are chosen in the tables of the page, wherever the focus is.
  [[nodiscard]] RecordSelection ChosenRecords() const;
  [[nodiscard]] RecordSelection ChosenPoints() const;
  /// Opens the page of a record, or of a point of it, chooses its row and scrolls to it.
  void Show(DataKind kind, const RecordPlace& place);
  /// Shows the page of a kind and chooses its records from an index on.
  void SelectFrom(DataKind kind, std::size_t first);
  /// The table that the user works with: the one with the focus, else the records of the page; null while the page has
  /// none.
  [[nodiscard]] RecordView* ActiveView() const;

  /// Opens a line in which one types what the rows are to hold. Rows without that are not shown and not chosen; what is
  /// checked of them stays so.
  void OpenFilter();
  void CloseFilter();
  /// Whether columns that are empty in all rows are hidden, but for those that can be edited; on at first.
  [[nodiscard]] QAction* HideEmptyColumns() const { return hide_empty_; }

  /// Title lines in front of copied lines.
  void SetWithHeader(bool on);
  /// The widths that the user has given columns, by the names of the tables. Those of tables that have not been shown
  /// stay as they were set.
  [[nodiscard]] QVariantMap ColumnWidths() const;
  void SetColumnWidths(const QVariantMap& widths);

 Q_SIGNALS:
  /// As of RecordView.
  void MapChosen(const MapPage& page, const MapPlace& place);
  void GeoLinkChosen(const MapPlace& place);
  /// Selection gives another answer, perhaps.
  void SelectionMayDiffer();
  /// Records, by their indices, are to be checked or not.
  void CheckChosen(DataKind kind, const std::vector<std::size_t>& indices, bool checked);

 protected:
  /// Escape closes the filter.
  void keyPressEvent(QKeyEvent* event) override;

 private:
  /// The tables of a kind, made when it first holds records. Waypoints have no points.
  struct Page {
    QString title;
    QStackedWidget* stack = nullptr;  ///< the hint, then the tables
    RecordModel* records = nullptr;
    RecordView* record_view = nullptr;
    RecordModel* points = nullptr;
    RecordView* point_view = nullptr;
  };

  void AddPage(DataKind kind, const QString& title);
  [[nodiscard]] QWidget* NewTables(DataKind kind);
  void BuildTables(DataKind kind);
  Page& PageOf(DataKind kind) { return pages_[IndexOf(kind)]; }
  void ConnectView(DataKind kind, RecordView& view);
  [[nodiscard]] DataKind CurrentKind() const;
  /// The number of the first record of a kind.
  [[nodiscard]] int FirstNumber(DataKind kind) const;
  [[nodiscard]] RecordPlace PlaceOf(DataKind kind, RowRef ref, bool of_points) const;
  [[nodiscard]] RowRef RefOf(DataKind kind, const RecordPlace& place) const;
  [[nodiscard]] RecordSelection ChosenIn(const RecordView* view) const;
  [[nodiscard]] std::vector<std::size_t> IndicesOf(DataKind kind, const std::vector<int>& records) const;
  void ConnectPoints(DataKind kind);
  void ShowPointsOf(DataKind kind);
  void ShowCount(DataKind kind);
  void ApplyFilter(DataKind kind, const QString& text);
  void FilterShownPage();
  void ShowColumns();
  /// Every table that has been made.
  [[nodiscard]] std::vector<RecordView*> Views() const;
  void ShowFirstHeld();

  const DataSet& data_set_;
  QTabWidget* tabs_;
  std::array<Page, DataKindCount> pages_;
  EditCell edit_cell_;
  QList<QAction*> row_actions_;
  QAction* hide_empty_;
  FilterBar* filter_ = nullptr;  ///< made when it is first opened
  bool with_header_ = false;
  bool any_held_ = false;
  QVariantMap widths_;
};

}  // namespace walrim
