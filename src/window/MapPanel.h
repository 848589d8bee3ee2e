// The map beside the tables, what is under it, and what they tell each other.
#pragma once

#include <QStringList>
#include <QVariantMap>
#include <QWidget>
#include <array>
#include <cstdint>
#include <optional>

#include "dialogs/GeoLink.h"
#include "records/DataSet.h"
#include "window/MapBackgrounds.h"
#include "window/MapView.h"

class QSplitter;

namespace walrim {

class MapTiles;
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

  /// Nothing is asked of a server before one is set, and none other than that.
  void SetBackground(MapBackground background, const QString& own_address);
  [[nodiscard]] MapBackground Background() const { return background_; }
  /// What was set last.
  [[nodiscard]] const QString& OwnAddress() const { return own_address_; }
  /// Whether the user knows what a server learns, by its name.
  [[nodiscard]] bool Agreed(const QString& host) const { return agreed_.contains(host); }
  void SetAgreed(const QString& host) { agreed_.append(host); }

  /// How the parts share the room, what the profile shows, and the background.
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
  MapBackground background_ = MapBackground::None;
  QString own_address_;
  QStringList agreed_;
  MapTiles* tiles_ = nullptr;
  RecordTables& tables_;
  QSplitter* parts_;
  MapView* map_;
  WayPanel* way_panel_ = nullptr;  ///< made when there is first a way to show
  std::optional<MapItem> way_;     ///< the log or route that is looked at
  bool way_is_old_ = false;        ///< its points may be others than those that are shown
  QVariantMap state_;
  Revisions revisions_{};
  std::array<std::size_t, DataKindCount + 1> counts_{};
  bool built_ = false;
  bool showing_ = false;  ///< a row that was pressed on the map: it is in view
};

}  // namespace walrim
