#include "window/MapMenu.h"

#include <QAction>
#include <QKeySequence>
#include <QMenu>

#include "window/MapPanel.h"
#include "window/MapSplitter.h"

namespace walrim {

MapMenu::MapMenu(QMenu& menu, MapSplitter& split) : QObject(&menu), split_(split) {
  constexpr double Steps = 2;
  shown_ = menu.addAction(QString::fromUtf8("地図(&M)"));
  shown_->setObjectName("ShowMap");
  shown_->setCheckable(true);
  shown_->setShortcut(QKeySequence("Ctrl+M"));
  connect(shown_, &QAction::toggled, this, [this](bool shown) { split_.SetMapShown(shown); });
  connect(&split_, &MapSplitter::MapShownChanged, this, [this] { ShowState(); });
  Add(menu, "ShowAllOnMap", "全体を表示(&A)", QKeySequence("Ctrl+0"), [](MapView& map) { map.ShowAll(); });
  Add(menu, "ZoomIn", "拡大(&I)", QKeySequence::ZoomIn, [](MapView& map) { map.ZoomBy(Steps); });
  Add(menu, "ZoomOut", "縮小(&O)", QKeySequence::ZoomOut, [](MapView& map) { map.ZoomBy(-Steps); });
  ShowState();
}

QAction* MapMenu::Add(QMenu& menu, const char* name, const char* text, const QKeySequence& keys,
                      const std::function<void(MapView& map)>& command) {
  QAction* action = menu.addAction(QString::fromUtf8(text), this, [this, command] { command(split_.Panel()->Map()); });
  action->setObjectName(name);
  action->setShortcut(keys);
  of_map_.push_back(action);
  return action;
}

void MapMenu::ShowState() {
  shown_->setChecked(split_.MapShown());
  for (QAction* action : of_map_)
    action->setEnabled(split_.MapShown());
}

}  // namespace walrim
