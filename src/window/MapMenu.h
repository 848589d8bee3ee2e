// The commands of the map, in the menu of the window.
#pragma once

#include <QObject>
#include <functional>
#include <vector>

class QAction;
class QKeySequence;
class QMenu;

namespace walrim {

class MapSplitter;
class MapView;

class MapMenu : public QObject {
 public:
  /// split must outlive the menu, which owns this object.
  MapMenu(QMenu& menu, MapSplitter& split);

 private:
  QAction* Add(QMenu& menu, const char* name, const char* text, const QKeySequence& keys,
               const std::function<void(MapView& map)>& command);
  void ShowState();

  MapSplitter& split_;
  QAction* shown_;
  std::vector<QAction*> of_map_;  ///< what needs one
};

}  // namespace walrim
