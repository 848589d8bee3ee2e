// The tables, and the map beside them when it is wanted.
#pragma once

#include <QSplitter>
#include <QVariantMap>

#include "app/ProgramState.h"
#include "dialogs/GeoLink.h"

namespace walrim {

class MapPanel;
class RecordTables;

class MapSplitter : public QSplitter {
  Q_OBJECT

 public:
  /// state must outlive the splitter, which takes the tables over.
  MapSplitter(ProgramState& state, RecordTables* tables, QWidget* parent = nullptr);

  /// Shows what changed, as the tables do; costs nothing while the map is hidden.
  void Refresh();

  /// The map is made when it is first shown.
  void SetMapShown(bool shown);
  [[nodiscard]] bool MapShown() const;
  /// Null before the map was shown.
  [[nodiscard]] MapPanel* Panel() { return panel_; }

  /// What is remembered of the map.
  [[nodiscard]] QVariantMap State() const;
  /// Shows the map as it was, or at first where a window of this width has room for it.
  void Restore(const QVariantMap& state, int window_width);

 Q_SIGNALS:
  void MapShownChanged(bool shown);
  /// A waypoint is wanted at a place.
  void WaypointWanted(const MapPlace& place);

 private:
  ProgramState& program_state_;
  RecordTables* tables_;
  MapPanel* panel_ = nullptr;
  QVariantMap remembered_;
};

}  // namespace walrim
