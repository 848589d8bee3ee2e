// The commands of the map, in the menu of the window.
#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "window/MapBackgrounds.h"

class QAction;
class QActionGroup;
class QKeySequence;
class QMenu;

namespace walrim {

class MapSplitter;
class MapView;

class MapMenu : public QObject {
 public:
  /// Asks the user a question.
  using Ask = std::function<bool(const std::string& question)>;

  /// split must outlive the menu, which owns this object.
  MapMenu(QMenu& menu, MapSplitter& split, Ask ask);

 private:
  QAction* Add(QMenu& menu, const char* name, const char* text, const QKeySequence& keys,
               const std::function<void(MapView& map)>& command);
  void AddBackgrounds(QMenu& menu);
  void ChooseBackground(MapBackground background);
  /// As it was typed; nothing where the user gave up.
  [[nodiscard]] std::optional<QString> TypedAddress(const QString& address) const;
  void ShowState();

  MapSplitter& split_;
  Ask ask_;
  QAction* shown_;
  QActionGroup* backgrounds_;
  std::vector<QAction*> of_map_;  ///< what needs one
};

}  // namespace walrim
