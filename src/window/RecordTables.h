// The records on screen: a page for each kind, with its tables.
#pragma once

#include <QVariantMap>
#include <QWidget>
#include <array>

#include "dialogs/MapPages.h"
#include "records/DataSet.h"
#include "window/RecordModel.h"

class QStackedWidget;
class QTabWidget;

namespace walrim {

class RecordView;

class RecordTables : public QWidget {
  Q_OBJECT

 public:
  /// data_set must outlive the tables. They are empty before the first Refresh.
  explicit RecordTables(const DataSet& data_set, QWidget* parent = nullptr);

  /// Shows what changed; to be called after every change of the data or of settings. In between the tables may be used
  /// and painted whatever happens to the data.
  void Refresh(const ShownForm& form);
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
  /// Records, by their indices, are to be checked or not.
  void CheckChosen(DataKind kind, const std::vector<std::size_t>& indices, bool checked);

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
  [[nodiscard]] std::vector<std::size_t> IndicesOf(DataKind kind, const std::vector<int>& records) const;
  void ConnectPoints(DataKind kind);
  void ShowPointsOf(DataKind kind);
  void ShowCount(DataKind kind);
  void ShowFirstHeld();

  const DataSet& data_set_;
  QTabWidget* tabs_;
  std::array<Page, DataKindCount> pages_;
  bool with_header_ = false;
  bool any_held_ = false;
  QVariantMap widths_;
};

}  // namespace walrim
