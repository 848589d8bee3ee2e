// The map beside the tables, what is under it, and what they tell each other.
#pragma once

#include <QVariantMap>
#include <QWidget>
#include <array>
#include <cstdint>
#include <optional>

#include "dialogs/GeoLink.h"
#include "records/DataSet.h"
#include "window/MapView.h"

class QSplitter;

namespace walrim {

class RecordTables;
class WayPanel;

class MapPanel : public QWidget {
  Q_OBJECT

 public:
  /// Numbers that are others where records of a kind are.
  using Revisions = std::array<std::uint64_t, DataKindCount>;

  /// Both must outlive the panel. Nothing is shown before the first Refresh.
  MapPanel(const DataSet& data_set, RecordTables& tables, QWidget* parent = nullptr);

  /// Takes over what has changed.
  void Refresh(const Revisions& revisions);
  [[nodiscard]] MapView& Map() { return *map_; }

  /// How the parts share the room, and what the profile shows.
  [[nodiscard]] QVariantMap State() const;
  void Restore(const QVariantMap& state);

  [[nodiscard]] QSize minimumSizeHint() const override { return {64, 48}; }

 Q_SIGNALS:
  /// A waypoint is wanted at a place.
  void WaypointWanted(const MapPlace& place);

 private:
  void FollowSelection();
  void ShowWay();
  void PointAt(std::optional<std::size_t> point);
  void BuildWayPanel();
  [[nodiscard]] bool SameRecords(const Revisions& revisions);

  const DataSet& data_;
  RecordTables& tables_;
  QSplitter* parts_;
  MapView* map_;
  WayPanel* way_panel_ = nullptr;  ///< made when there is first a way to show
  std::optional<MapItem> way_;     ///< the log or route that is looked at
  QVariantMap state_;
  Revisions revisions_{};
  std::array<std::size_t, DataKindCount + 1> counts_{};
  bool built_ = false;
  bool showing_ = false;  ///< a row that was pressed on the map: it is in view
};

}  // namespace walrim
