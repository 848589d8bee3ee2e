#include "window/MapPanel.h"

#include <QSplitter>
#include <QStandardPaths>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "window/MapTiles.h"
#include "window/ProfileView.h"
#include "window/RecordTables.h"
#include "window/WayPanel.h"

namespace walrim {
namespace {

constexpr const char* Parts = "parts";
constexpr const char* OverTime = "overTime";
constexpr const char* BackgroundWord = "background";
constexpr const char* TileAddress = "tileAddress";
constexpr const char* AgreedHosts = "agreed";

bool HasPoints(const DataSet& data, const MapItem& way) {
  const std::size_t record = way.place.record;
  if (way.kind == DataKind::Route) return record < data.Routes().size() && !data.Routes()[record].points.empty();
  return record < data.Logs().size() && !data.Logs()[record].points.empty();
}

bool SameWay(const std::optional<MapItem>& a, const std::optional<MapItem>& b) {
  if (!a || !b) return a.has_value() == b.has_value();
  return a->kind == b->kind && a->place.record == b->place.record;
}

/// The first log that has points, or else the first route.
std::optional<MapItem> FirstWay(const DataSet& data) {
  for (std::size_t log = 0; log < data.Logs().size(); ++log) {
    if (!data.Logs()[log].points.empty()) return MapItem{DataKind::TrackLog, {log, std::nullopt}};
  }
  for (std::size_t route = 0; route < data.Routes().size(); ++route) {
    if (!data.Routes()[route].points.empty()) return MapItem{DataKind::Route, {route, std::nullopt}};
  }
  return std::nullopt;
}

MercatorBox BoxOf(const MapScene& scene, const RecordSelection& selection) {
  MercatorBox box;
  for (const RecordPlace& place : selection.places)
    box.Add(BoxOf(scene, MapItem{selection.kind, place}));
  return box;
}

}  // namespace

MapPanel::MapPanel(const DataSet& data_set, RecordTables& tables, QWidget* parent)
    : QWidget(parent), data_(data_set), tables_(tables), parts_(new QSplitter(Qt::Vertical)), map_(new MapView) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(parts_);
  parts_->setObjectName("MapParts");
  parts_->addWidget(map_);
  parts_->setCollapsible(0, false);
  connect(&tables_, &RecordTables::SelectionMayDiffer, this, &MapPanel::FollowSelection);
  connect(map_, &MapView::PlaceChosen, this, &MapPanel::WaypointWanted);
  connect(map_, &MapView::ItemChosen, this, [this](const MapItem& item) {
    showing_ = true;
    tables_.Show(item.kind, item.place);
    showing_ = false;
  });
  connect(map_, &MapView::PointHovered, this,
          [this](int point) { PointAt(point >= 0 ? std::optional(static_cast<std::size_t>(point)) : std::nullopt); });
}

// ---- What is shown

bool MapPanel::SameRecords(const Revisions& revisions) {
  // While a transfer runs the numbers stay, and records come.
  const decltype(counts_) counts{data_.Waypoints().size(), data_.Routes().size(), data_.Logs().size(),
                                 data_.TrackPointCount()};
  if (built_ && revisions == revisions_ && counts == counts_) return true;
  built_ = true;
  revisions_ = revisions;
  counts_ = counts;
  return false;
}

void MapPanel::Refresh(const Revisions& revisions) {
  if (SameRecords(revisions)) {
    static_cast<void>(map_->TakeChecks(data_));
  } else {
    map_->SetScene(SceneOf(data_));
    if (way_panel_ != nullptr) way_panel_->ForgetFigures();
    way_is_old_ = true;
    BuildWayPanel();
  }
  FollowSelection();
}

void MapPanel::BuildWayPanel() {
  const bool any = FirstWay(data_).has_value();
  if (way_panel_ != nullptr) return way_panel_->setVisible(any);
  if (!any) return;
  way_panel_ = new WayPanel(data_);
  parts_->addWidget(way_panel_);
  parts_->setStretchFactor(0, 1);
  parts_->setStretchFactor(1, 0);
  const int way_height = std::min(2 * height() / 5, way_panel_->sizeHint().height());
  parts_->setSizes({height() - way_height, way_height});
  way_panel_->ForgetFigures();
  way_panel_->Profile().SetAxis(state_.value(OverTime).toBool() ? ProfileAxis::Time : ProfileAxis::Distance);
  parts_->restoreState(state_.value(Parts).toByteArray());
  ProfileView& profile = way_panel_->Profile();
  connect(&profile, &ProfileView::PointHovered, this,
          [this](int point) { PointAt(point >= 0 ? std::optional(static_cast<std::size_t>(point)) : std::nullopt); });
  connect(&profile, &ProfileView::PointChosen, this, [this](std::size_t point) {
    if (way_) tables_.Show(way_->kind, {way_->place.record, point});
  });
}

void MapPanel::FollowSelection() {
  if (!built_ || isHidden()) return;
  MapSelection selection{tables_.ChosenRecords(), tables_.ChosenPoints()};
  const bool same = selection == map_->Selection();
  const RecordSelection& narrowest = selection.points.places.empty() ? selection.records : selection.points;
  if (!same && !showing_) map_->Reveal(BoxOf(map_->Scene(), narrowest));
  if (!same) map_->SetSelection(std::move(selection));
  ShowWay();
}

/// That of the rows that are chosen, or else the one that was shown before, or else the first.
void MapPanel::ShowWay() {
  if (way_panel_ == nullptr) return;
  const RecordSelection& records = map_->Selection().records;
  const RecordSelection& points = map_->Selection().points;
  std::optional<MapItem> way = way_ && HasPoints(data_, *way_) ? way_ : FirstWay(data_);
  const RecordSelection& chosen = points.places.empty() ? records : points;
  if (chosen.kind != DataKind::Waypoint && !chosen.places.empty()) {
    const MapItem item{chosen.kind, {chosen.places.front().record, std::nullopt}};
    if (HasPoints(data_, item)) way = item;
  }
  if (std::exchange(way_is_old_, false) || !SameWay(way, way_)) {
    way_ = way;
    way_panel_->ShowWay(way_);
    map_->SetPointed(way_);
  }
  way_panel_->ShowFigures(records);
  PointAt(std::nullopt);
}

/// A row that is chosen alone is where the cursor rests.
void MapPanel::PointAt(std::optional<std::size_t> point) {
  const RecordSelection& points = map_->Selection().points;
  const bool hovered = point.has_value();
  const bool of_way = way_ && points.kind == way_->kind && points.places.size() == 1 &&
                      points.places.front().record == way_->place.record;
  if (!hovered && of_way) point = points.places.front().point;
  if (way_panel_ != nullptr) way_panel_->Profile().SetCursor(point);
  std::optional<MercatorPoint> at;
  if (hovered && way_) {
    const std::vector<MapWay>& ways = map_->Scene().Ways(way_->kind);
    if (way_->place.record < ways.size()) at = ways[way_->place.record].At(*point);
  }
  map_->SetPointer(at);
}

// ---- What is remembered

QVariantMap MapPanel::State() const {
  QVariantMap state = state_;
  state.insert(BackgroundWord, MapBackgroundWord(background_));
  state.insert(TileAddress, own_address_);
  state.insert(AgreedHosts, agreed_);
  if (way_panel_ == nullptr) return state;
  state.insert(Parts, parts_->saveState());
  state.insert(OverTime, way_panel_->Profile().Axis() == ProfileAxis::Time);
  return state;
}

void MapPanel::Restore(const QVariantMap& state) {
  state_ = state;
  agreed_ = state.value(AgreedHosts).toStringList();
  SetBackground(MapBackgroundOfWord(state.value(BackgroundWord).toString()), state.value(TileAddress).toString());
}

void MapPanel::SetBackground(MapBackground background, const QString& own_address) {
  const auto source = TileSourceOf(background, own_address);
  background_ = source ? background : MapBackground::None;
  own_address_ = own_address;
  map_->SetTiles(nullptr);
  delete std::exchange(tiles_, nullptr);
  if (!source) return;
  const QString cache = QStandardPaths::writableLocation(QStandardPaths::CacheLocation) + QStringLiteral("/tiles");
  tiles_ = new MapTiles(*source, cache, this);
  map_->SetTiles(tiles_);
}

}  // namespace walrim
