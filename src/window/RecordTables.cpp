#include "window/RecordTables.h"

#include <QAction>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLabel>
#include <QSplitter>
#include <QStackedWidget>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "records/Chosen.h"
#include "window/ChosenCount.h"
#include "window/FilterBar.h"
#include "window/Messages.h"
#include "window/RecordModelKinds.h"
#include "window/RecordView.h"
#include "window/Widgets.h"

namespace walrim {
namespace {

QLabel* NewHint() {
  auto* hint = new QLabel(Translated(window_messages::NoRecords));
  hint->setAlignment(Qt::AlignCenter);
  hint->setWordWrap(true);
  hint->setMargin(12);
  hint->setForegroundRole(QPalette::PlaceholderText);
  return hint;
}

/// Records and their points; the points have share times the room of the records.
QSplitter* NewSplitter(Qt::Orientation orientation, int share, QWidget* records, QWidget* points) {
  auto* splitter = new QSplitter(orientation);
  splitter->addWidget(records);
  splitter->addWidget(points);
  splitter->setStretchFactor(0, 1);
  splitter->setStretchFactor(1, share);
  splitter->setChildrenCollapsible(false);
  return splitter;
}

}  // namespace

RecordTables::RecordTables(const DataSet& data_set, QWidget* parent)
    : QWidget(parent),
      data_set_(data_set),
      tabs_(new QTabWidget),
      hide_empty_(new QAction(Translated("空の列を隠す(&E)"), this)) {
  hide_empty_->setObjectName("HideEmptyColumns");
  hide_empty_->setCheckable(true);
  hide_empty_->setChecked(true);
  connect(hide_empty_, &QAction::toggled, this, &RecordTables::ShowColumns);
  tabs_->setObjectName(QStringLiteral("Records"));
  tabs_->setAccessibleName(Translated("記録の表"));
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(tabs_);
  connect(tabs_, &QTabWidget::currentChanged, this, [this] {
    FilterShownPage();
    Q_EMIT SelectionMayDiffer();
  });

  AddPage(DataKind::Waypoint, Translated("ウェイポイント"));
  AddPage(DataKind::Route, Translated("ルート"));
  AddPage(DataKind::TrackLog, Translated("トラックログ"));
}

void RecordTables::AddPage(DataKind kind, const QString& title) {
  Page& page = PageOf(kind);
  page.title = title;
  page.stack = new QStackedWidget;
  page.stack->addWidget(NewHint());
  tabs_->addTab(page.stack, title);
}

QWidget* RecordTables::NewTables(DataKind kind) {
  Page& page = PageOf(kind);
  switch (kind) {
    case DataKind::Waypoint:
      page.records = new WaypointModel(data_set_, this);
      page.record_view = new RecordView(page.records, QStringLiteral("WaypointTable"));
      return page.record_view;
    case DataKind::Route:
      page.records = new RouteModel(data_set_, this);
      page.record_view = new RecordView(page.records, QStringLiteral("RouteTable"));
      page.points = new RoutePointModel(data_set_, this);
      page.point_view = new RecordView(page.points, QStringLiteral("RoutePointTable"));
      return NewSplitter(Qt::Horizontal, 3, page.record_view, page.point_view);
    case DataKind::TrackLog:
      break;
  }
  page.records = new TrackModel(data_set_, this);
  page.record_view = new RecordView(page.records, QStringLiteral("TrackTable"));
  page.points = new TrackPointModel(data_set_, this);
  page.point_view = new RecordView(page.points, QStringLiteral("TrackPointTable"));
  return NewSplitter(Qt::Vertical, 2, page.record_view, page.point_view);
}

/// Most of the time to the window's first frame would go into tables that are still empty.
void RecordTables::BuildTables(DataKind kind) {
  Page& page = PageOf(kind);
  page.stack->addWidget(NewTables(kind));
  if (page.points != nullptr) ConnectPoints(kind);
  for (RecordView* view : {page.record_view, page.point_view}) {
    if (view == nullptr) continue;
    ConnectView(kind, *view);
  }
  connect(page.records, &RecordModel::CheckChosen, this, [this, kind](const std::vector<int>& records, bool checked) {
    Q_EMIT CheckChosen(kind, IndicesOf(kind, records), checked);
  });
}

void RecordTables::ConnectView(DataKind kind, RecordView& view) {
  const bool of_points = &view == PageOf(kind).point_view;
  view.SetWithHeader(with_header_);
  view.SetUserWidths(widths_.value(view.objectName()).toMap());
  view.setAccessibleName(PageOf(kind).title + (of_points ? Translated("のポイント") : QString()));
  view.setMinimumHeight(view.horizontalHeader()->sizeHint().height() + view.verticalHeader()->defaultSectionSize());
  view.addActions(row_actions_);
  view.horizontalHeader()->addAction(hide_empty_);
  view.horizontalHeader()->setContextMenuPolicy(Qt::ActionsContextMenu);
  view.HideEmptyColumns(hide_empty_->isChecked());
  view.SetEditCell([this, kind, of_points](RowRef ref, EditField field, const std::string& text) {
    return edit_cell_ ? edit_cell_(kind, PlaceOf(kind, ref, of_points), field, text) : std::string();
  });
  connect(&view, &RecordView::MapChosen, this, &RecordTables::MapChosen);
  connect(&view, &RecordView::GeoLinkChosen, this, &RecordTables::GeoLinkChosen);
  connect(&view, &RecordView::SelectionMayDiffer, this, &RecordTables::SelectionMayDiffer);
}

// ---- What is chosen

std::vector<std::size_t> RecordSelection::Records() const {
  std::vector<std::size_t> records(places.size());
  std::ranges::transform(places, records.begin(), &RecordPlace::record);
  records.erase(std::unique(records.begin(), records.end()), records.end());
  return records;
}

DataKind RecordTables::CurrentKind() const {
  return AllDataKinds.at(static_cast<std::size_t>(tabs_->currentIndex()));
}

int RecordTables::FirstNumber(DataKind kind) const {
  return kind == DataKind::TrackLog ? data_set_.FirstLogNumber() : 1;
}

RecordPlace RecordTables::PlaceOf(DataKind kind, RowRef ref, bool of_points) const {
  const auto record = static_cast<std::size_t>(ref.record - FirstNumber(kind));
  return {record, of_points ? std::optional<std::size_t>(ref.point) : std::nullopt};
}

RecordView* RecordTables::ActiveView() const {
  const Page& page = pages_.at(IndexOf(CurrentKind()));
  const QWidget* focus = window()->focusWidget();
  const bool in_points = page.point_view != nullptr && focus != nullptr &&
                         (page.point_view == focus || page.point_view->isAncestorOf(focus));
  return in_points ? page.point_view : page.record_view;
}

RowRef RecordTables::RefOf(DataKind kind, const RecordPlace& place) const {
  const auto record = place.record + static_cast<std::size_t>(FirstNumber(kind));
  return {static_cast<std::uint16_t>(record), static_cast<std::uint16_t>(place.point.value_or(0))};
}

RecordSelection RecordTables::ChosenIn(const RecordView* view) const {
  RecordSelection selection{CurrentKind(), false, {}};
  if (view == nullptr) return selection;
  selection.of_points = view == pages_.at(IndexOf(selection.kind)).point_view;
  const std::vector<RowRef> refs = view->SelectedRefs();
  selection.places.resize(refs.size());
  std::ranges::transform(refs, selection.places.begin(),
                         [&](RowRef ref) { return PlaceOf(selection.kind, ref, selection.of_points); });
  return selection;
}

RecordSelection RecordTables::Selection() const {
  return ChosenIn(ActiveView());
}

RecordSelection RecordTables::ChosenRecords() const {
  return ChosenIn(pages_.at(IndexOf(CurrentKind())).record_view);
}

RecordSelection RecordTables::ChosenPoints() const {
  return ChosenIn(pages_.at(IndexOf(CurrentKind())).point_view);
}

/// Points are in their table where their records are chosen, or none is.
void RecordTables::Select(const RecordSelection& selection) {
  const Page& page = PageOf(selection.kind);
  RecordView* view = selection.of_points ? page.point_view : page.record_view;
  if (view == nullptr) return;
  CloseFilter();
  tabs_->setCurrentIndex(static_cast<int>(IndexOf(selection.kind)));
  std::vector<RowRef> refs;
  for (const RecordPlace& place : selection.places)
    refs.push_back(RefOf(selection.kind, place));
  const auto is_hidden = [&page](RowRef ref) { return page.points->RowAt(ref) < 0; };
  if (selection.of_points && std::ranges::any_of(refs, is_hidden)) {
    std::vector<RowRef> records;
    for (const std::size_t record : selection.Records())
      records.push_back(RefOf(selection.kind, {record, std::nullopt}));
    page.record_view->SelectRefs(records);
  }
  view->SelectRefs(refs);
  view->setFocus();
}

void RecordTables::Show(DataKind kind, const RecordPlace& place) {
  const Page& page = PageOf(kind);
  if (page.record_view == nullptr) return;
  CloseFilter();
  tabs_->setCurrentIndex(static_cast<int>(IndexOf(kind)));
  page.record_view->ShowRow(RefOf(kind, {place.record, std::nullopt}));
  if (place.point && page.point_view != nullptr) page.point_view->ShowRow(RefOf(kind, place));
}

void RecordTables::SelectFrom(DataKind kind, std::size_t first) {
  tabs_->setCurrentIndex(static_cast<int>(IndexOf(kind)));
  const Page& page = PageOf(kind);
  if (page.record_view == nullptr) return;
  std::vector<RowRef> refs;
  for (std::size_t record = first; record < RecordCount(data_set_, kind); ++record)
    refs.push_back({static_cast<std::uint16_t>(record + static_cast<std::size_t>(FirstNumber(kind))), 0});
  page.record_view->SelectRefs(refs);
  page.record_view->scrollTo(page.record_view->currentIndex());
}

// ---- Points and counts

void RecordTables::ConnectPoints(DataKind kind) {
  connect(PageOf(kind).record_view->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          [this, kind] { ShowPointsOf(kind); });
}

void RecordTables::ShowPointsOf(DataKind kind) {
  Page& page = PageOf(kind);
  page.points->ShowRecords(page.record_view->SelectedRecords());
  page.point_view->scrollToTop();
}

std::vector<std::size_t> RecordTables::IndicesOf(DataKind kind, const std::vector<int>& records) const {
  const int first = FirstNumber(kind);
  std::vector<std::size_t> indices(records.size());
  std::ranges::transform(records, indices.begin(),
                         [first](int record) { return static_cast<std::size_t>(record - first); });
  return indices;
}

void RecordTables::Refresh(const ShownForm& form) {
  for (const DataKind kind : AllDataKinds) {
    if (PageOf(kind).records == nullptr && data_set_.Holds(kind)) BuildTables(kind);
  }
  for (const DataKind kind : AllDataKinds) {
    const Page& page = PageOf(kind);
    if (page.records == nullptr) continue;
    page.records->Refresh(form);
    if (page.points != nullptr) {
      // A reset has taken the selection back without a word.
      page.points->SetRecords(page.record_view->SelectedRecords());
      page.points->Refresh(form);
    }
    ShowCount(kind);
  }
  FilterShownPage();
  ShowFirstHeld();
  Q_EMIT SelectionMayDiffer();
}

/// What comes first is shown, whatever page was there to wait for it.
void RecordTables::ShowFirstHeld() {
  const bool held_before = any_held_;
  any_held_ = false;
  for (const DataKind kind : AllDataKinds) {
    if (!data_set_.Holds(kind)) continue;
    if (!held_before && !any_held_) tabs_->setCurrentIndex(static_cast<int>(IndexOf(kind)));
    any_held_ = true;
  }
}

void RecordTables::ShowCount(DataKind kind) {
  const Page& page = PageOf(kind);
  const int count = page.records->HeldRowCount();
  const QString counts = ChosenCountText(data_set_, kind, QString::number(count));
  const QString title = count > 0 ? QStringLiteral("%1 (%2)").arg(page.title, counts) : page.title;
  tabs_->setTabText(static_cast<int>(IndexOf(kind)), title);
  page.stack->setCurrentIndex(count > 0 ? 1 : 0);
}

// ---- What of them is shown

std::vector<RecordView*> RecordTables::Views() const {
  std::vector<RecordView*> views;
  for (const Page& page : pages_) {
    for (RecordView* view : {page.record_view, page.point_view}) {
      if (view != nullptr) views.push_back(view);
    }
  }
  return views;
}

void RecordTables::SetWithHeader(bool on) {
  with_header_ = on;
  for (RecordView* view : Views())
    view->SetWithHeader(on);
}

void RecordTables::ShowColumns() {
  for (RecordView* view : Views())
    view->HideEmptyColumns(hide_empty_->isChecked());
}

void RecordTables::OpenFilter() {
  if (filter_ == nullptr) {
    filter_ = new FilterBar(this);
    qobject_cast<QVBoxLayout*>(layout())->insertWidget(0, filter_);
    connect(filter_, &FilterBar::TextChanged, this, &RecordTables::FilterShownPage);
  }
  filter_->Open();
  FilterShownPage();
}

void RecordTables::CloseFilter() {
  if (filter_ == nullptr) return;
  filter_->Close();
  for (const DataKind kind : AllDataKinds)
    ApplyFilter(kind, {});
}

void RecordTables::keyPressEvent(QKeyEvent* event) {
  const bool closes = event->key() == Qt::Key_Escape && filter_ != nullptr && filter_->isVisible();
  if (!closes) return QWidget::keyPressEvent(event);
  CloseFilter();
  if (RecordView* view = ActiveView()) view->setFocus();
}

void RecordTables::ApplyFilter(DataKind kind, const QString& text) {
  const Page& page = PageOf(kind);
  if (page.records != nullptr) page.records->SetFilter(text);
  if (page.points != nullptr) page.points->SetFilter(text);
}

/// The pages behind follow when they come forward: a log may have 30000 points.
void RecordTables::FilterShownPage() {
  if (filter_ == nullptr) return;
  const Page& page = PageOf(CurrentKind());
  if (page.records == nullptr) return filter_->ShowCounts({});
  ApplyFilter(CurrentKind(), filter_->Text());
  std::string counts = window_messages::Matching(page.records->rowCount(), page.records->HeldRowCount());
  if (page.points != nullptr) {
    counts += window_messages::MatchingPoints(page.points->rowCount(), page.points->HeldRowCount());
  }
  filter_->ShowCounts(page.records->IsFiltered() ? QString::fromStdString(counts) : QString());
}

QVariantMap RecordTables::ColumnWidths() const {
  QVariantMap widths = widths_;
  for (const Page& page : pages_) {
    for (const RecordView* view : {page.record_view, page.point_view}) {
      if (view != nullptr) widths.insert(view->objectName(), view->UserWidths());
    }
  }
  return widths;
}

void RecordTables::SetColumnWidths(const QVariantMap& widths) {
  widths_ = widths;
}

}  // namespace walrim
