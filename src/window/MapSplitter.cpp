#include "window/MapSplitter.h"

#include "window/MapPanel.h"
#include "window/RecordTables.h"

namespace walrim {
namespace {

constexpr const char* Shown = "shown";
constexpr const char* Split = "split";
/// Narrower ones are better used for the tables.
constexpr int WidthForMap = 960;
constexpr int TablesShare = 5;
constexpr int MapShare = 4;

}  // namespace

MapSplitter::MapSplitter(ProgramState& state, RecordTables* tables, QWidget* parent)
    : QSplitter(Qt::Horizontal, parent), program_state_(state), tables_(tables) {
  setObjectName("MapSplitter");
  addWidget(tables_);
  setCollapsible(0, false);
}

void MapSplitter::Refresh() {
  if (MapShown()) panel_->Refresh(program_state_.Revisions());
}

bool MapSplitter::MapShown() const {
  return panel_ != nullptr && !panel_->isHidden();
}

void MapSplitter::SetMapShown(bool shown) {
  if (shown == MapShown()) return;
  if (panel_ == nullptr) {
    panel_ = new MapPanel(program_state_.Data(), *tables_);
    panel_->Restore(remembered_);
    connect(panel_, &MapPanel::WaypointWanted, this, &MapSplitter::WaypointWanted);
    addWidget(panel_);
    setStretchFactor(0, TablesShare);
    setStretchFactor(1, MapShare);
    setSizes({TablesShare * width(), MapShare * width()});
    restoreState(remembered_.value(Split).toByteArray());
  }
  panel_->setVisible(shown);
  Refresh();
  Q_EMIT MapShownChanged(shown);
}

QVariantMap MapSplitter::State() const {
  QVariantMap state = panel_ != nullptr ? panel_->State() : remembered_;
  state.insert(Shown, MapShown());
  if (MapShown()) state.insert(Split, saveState());
  return state;
}

void MapSplitter::Restore(const QVariantMap& state, int window_width) {
  remembered_ = state;
  SetMapShown(state.value(Shown, window_width >= WidthForMap).toBool());
}

}  // namespace walrim
