#include "window/MapMenu.h"

#include <QAction>
#include <QActionGroup>
#include <QInputDialog>
#include <QKeySequence>
#include <QMenu>
#include <utility>

#include "window/MapPanel.h"
#include "window/MapSplitter.h"
#include "window/Messages.h"
#include "window/Widgets.h"

namespace walrim {
namespace {

QString BackgroundCaption(MapBackground background) {
  switch (background) {
    case MapBackground::None:
      return Translated("なし（海岸線だけ）(&N)");
    case MapBackground::Gsi:
      return Translated("地理院地図(&G)");
    case MapBackground::OpenStreetMap:
      return QStringLiteral("OpenStreetMap(&O)");
    case MapBackground::Own:
      return Translated("ほかのタイル(&T)...");
  }
  return {};
}

}  // namespace

MapMenu::MapMenu(QMenu& menu, MapSplitter& split, Ask ask)
    : QObject(&menu), split_(split), ask_(std::move(ask)), backgrounds_(new QActionGroup(this)) {
  constexpr double Steps = 2;
  shown_ = menu.addAction(Translated("地図(&M)"));
  shown_->setObjectName("ShowMap");
  shown_->setCheckable(true);
  shown_->setShortcut(QKeySequence("Ctrl+M"));
  connect(shown_, &QAction::toggled, this, [this](bool shown) { split_.SetMapShown(shown); });
  connect(&split_, &MapSplitter::MapShownChanged, this, [this] { ShowState(); });
  Add(menu, "ShowAllOnMap", "全体を表示(&A)", QKeySequence("Ctrl+0"), [](MapView& map) { map.ShowAll(); });
  Add(menu, "ZoomIn", "拡大(&I)", QKeySequence::ZoomIn, [](MapView& map) { map.ZoomBy(Steps); });
  Add(menu, "ZoomOut", "縮小(&O)", QKeySequence::ZoomOut, [](MapView& map) { map.ZoomBy(-Steps); });
  AddBackgrounds(menu);
  ShowState();
}

void MapMenu::AddBackgrounds(QMenu& menu) {
  QMenu* backgrounds = menu.addMenu(Translated("地図の背景(&B)"));
  of_map_.push_back(backgrounds->menuAction());
  for (const MapBackground background : AllMapBackgrounds) {
    QAction* action = backgrounds->addAction(BackgroundCaption(background));
    action->setObjectName("Background_" + MapBackgroundWord(background));
    action->setCheckable(true);
    action->setData(static_cast<int>(background));
    backgrounds_->addAction(action);
    connect(action, &QAction::triggered, this, [this, background] { ChooseBackground(background); });
  }
}

void MapMenu::ChooseBackground(MapBackground background) {
  MapPanel& panel = *split_.Panel();
  QString address = panel.OwnAddress();
  if (background == MapBackground::Own) {
    const auto typed = TypedAddress(address);
    if (!typed) return ShowState();
    address = *typed;
  }
  const auto source = TileSourceOf(background, address);
  const QString host = source ? source->UrlOf({}).host() : QString();
  const bool may = !source || panel.Agreed(host) || ask_(window_messages::TilesTellWhere(host.toStdString()));
  if (!may) return ShowState();
  if (source && !panel.Agreed(host)) panel.SetAgreed(host);
  panel.SetBackground(background, address);
  ShowState();
}

std::optional<QString> MapMenu::TypedAddress(const QString& address) const {
  QInputDialog dialog(split_.window());
  dialog.setObjectName("TileAddressDialog");
  dialog.setWindowTitle(Translated("タイルのアドレス"));
  dialog.setLabelText(Translated("地図のタイルのアドレス（{z}，{x}，{y}を含むもの）"));
  dialog.setOkButtonText("OK");
  dialog.setCancelButtonText(Translated("キャンセル"));
  dialog.setTextValue(address);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  const QString typed = dialog.textValue().trimmed();
  if (IsTileAddress(typed)) return typed;
  ShowWarning(*split_.window(), Translated(window_messages::NoTileAddress));
  return std::nullopt;
}

QAction* MapMenu::Add(QMenu& menu, const char* name, const char* text, const QKeySequence& keys,
                      const std::function<void(MapView& map)>& command) {
  QAction* action = menu.addAction(Translated(text), this, [this, command] { command(split_.Panel()->Map()); });
  action->setObjectName(name);
  action->setShortcut(keys);
  of_map_.push_back(action);
  return action;
}

void MapMenu::ShowState() {
  shown_->setChecked(split_.MapShown());
  for (QAction* action : of_map_)
    action->setEnabled(split_.MapShown());
  if (split_.Panel() == nullptr) return;
  const int background = static_cast<int>(split_.Panel()->Background());
  for (QAction* action : backgrounds_->actions())
    action->setChecked(action->data().toInt() == background);
}

}  // namespace walrim
