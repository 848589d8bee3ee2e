#include "window/RecordView.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QStyle>
#include <QToolTip>
#include <algorithm>
#include <numeric>
#include <string>
#include <utility>

#include "text/Phrase.h"
#include "window/Widgets.h"

namespace walrim {
namespace {

constexpr int SampledRows = 64;
constexpr int WidestColumn = 28;  ///< in widths of a full character
constexpr int RowMargin = 6;
constexpr int RefusalShown_ms = 15000;
constexpr int RefusalSettles_ms = 50;

bool IsCopyKey(const QEvent* event) {
  return static_cast<const QKeyEvent*>(event)->matches(QKeySequence::Copy);
}

/// Not every platform makes a wish for a menu of them.
bool IsMenuKey(const QKeyEvent& event) {
  const bool shift_f10 = event.key() == Qt::Key_F10 && event.modifiers() == Qt::ShiftModifier;
  return event.key() == Qt::Key_Menu || shift_f10;
}

}  // namespace

RecordView::RecordView(RecordModel* model, const QString& name, QWidget* parent)
    : QTableView(parent),
      model_(*model),
      delegate_(new CellDelegate(*model, this)),
      fitted_widths_(static_cast<std::size_t>(model->columnCount())) {
  model->setParent(this);
  setObjectName(name);
  SetUpRows();
  SetUpTitles();
  setModel(model);
  setItemDelegate(delegate_);
  setEditTriggers(DoubleClicked | EditKeyPressed);
  refusal_timer_.setSingleShot(true);
  connect(&refusal_timer_, &QTimer::timeout, this, &RecordView::TellRefusal);
  FollowModel();
  AddCopyAction();
  if (model_.HasChecks()) AddCheckActions();
  FitRows();
  FitColumns();
}

void RecordView::SetUpRows() {
  setSelectionBehavior(SelectRows);
  setSelectionMode(ExtendedSelection);
  setTabKeyNavigation(false);
  setAlternatingRowColors(true);
  setWordWrap(false);
  setHorizontalScrollMode(ScrollPerPixel);
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
}

void RecordView::SetUpTitles() {
  QHeaderView* titles = horizontalHeader();
  titles->setHighlightSections(false);
  // No title is pressed yet: the rows come in the order of the data set.
  titles->setSortIndicator(-1, Qt::AscendingOrder);
  setSortingEnabled(true);
  connect(titles, &QHeaderView::sectionResized, this, [this](int column) {
    if (!fitting_) user_columns_.insert(column);
  });
}

void RecordView::FollowModel() {
  connect(&model_, &QAbstractItemModel::modelReset, this, &RecordView::FollowRows);
  connect(&model_, &QAbstractItemModel::rowsInserted, this, &RecordView::FollowRows);
  connect(&model_, &QAbstractItemModel::dataChanged, this, &RecordView::FollowRows);
}

void RecordView::AddCopyAction() {
  auto* copy = new QAction(Translated("行をコピー"), this);
  copy->setShortcut(QKeySequence::Copy);
  copy->setShortcutContext(Qt::WidgetShortcut);
  connect(copy, &QAction::triggered, this, &RecordView::CopyRows);
  addAction(copy);
}

// ---- Editing

void RecordView::EditCurrentCell() {
  QModelIndex index = currentIndex();
  if (QWidget* open = state() == EditingState ? indexWidget(index) : nullptr) return open->setFocus();
  for (int column = 0; index.isValid() && column < model_.columnCount(); ++column) {
    if (index.flags().testFlag(Qt::ItemIsEditable)) break;
    index = index.siblingAtColumn(column);
  }
  if (!index.flags().testFlag(Qt::ItemIsEditable)) return;
  setCurrentIndex(index);
  edit(index);
}

void RecordView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  leaving_cell_ = true;
  QTableView::currentChanged(current, previous);
  leaving_cell_ = false;
}

void RecordView::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
  const bool given_up = hint == QAbstractItemDelegate::RevertModelCache;
  if (given_up || !delegate_->IsRefused(editor)) return QTableView::closeEditor(editor, hint);
  refused_at_ = editor->mapToGlobal(editor->rect().bottomLeft());
  if (leaving_cell_) QTableView::closeEditor(editor, QAbstractItemDelegate::RevertModelCache);
  TellRefusal();
}

void RecordView::TellRefusal() {
  QToolTip::showText(*refused_at_, delegate_->Refusal(), this, {}, RefusalShown_ms);
}

void RecordView::mousePressEvent(QMouseEvent* event) {
  refused_at_.reset();
  QTableView::mousePressEvent(event);
}

/// The button that led to another cell, and the focus that followed, took away what was told of the one before.
void RecordView::mouseReleaseEvent(QMouseEvent* event) {
  QTableView::mouseReleaseEvent(event);
  if (refused_at_) refusal_timer_.start(RefusalSettles_ms);
}

void RecordView::focusInEvent(QFocusEvent* event) {
  QTableView::focusInEvent(event);
  Q_EMIT SelectionMayDiffer();
}

void RecordView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
  QTableView::selectionChanged(selected, deselected);
  Q_EMIT SelectionMayDiffer();
}

std::vector<RowRef> RecordView::SelectedRefs() const {
  const std::vector<int> rows = SelectedRows();
  std::vector<RowRef> refs(rows.size());
  std::ranges::transform(rows, refs.begin(), [this](int row) { return model_.RefOf(row); });
  std::sort(refs.begin(), refs.end());
  return refs;
}

void RecordView::SelectRefs(const std::vector<RowRef>& refs) {
  QItemSelection selection;
  for (const RowRef ref : refs) {
    const int row = model_.RowAt(ref);
    if (row >= 0) selection.select(model_.index(row, 0), model_.index(row, model_.columnCount() - 1));
  }
  if (selection.isEmpty()) return;
  const QModelIndex current = selection.indexes().front();
  selectionModel()->setCurrentIndex(current.siblingAtColumn(std::max(currentIndex().column(), 0)),
                                    QItemSelectionModel::NoUpdate);
  selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
}

void RecordView::ShowRow(RowRef ref) {
  const int row = model_.RowAt(ref);
  if (row < 0) return;
  const QModelIndex index = model_.index(row, std::max(currentIndex().column(), 0));
  selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  scrollTo(index);
}

std::optional<MapPlace> RecordView::CurrentPlace() const {
  return currentIndex().isValid() ? model_.PlaceAt(currentIndex().row()) : std::nullopt;
}

int RecordView::FirstSelectedRow() const {
  const std::vector<int> rows = SelectedRows();
  return rows.empty() ? 0 : rows.front();
}

void RecordView::SelectRowNear(int row) {
  if (model_.rowCount() > 0) selectRow(std::clamp(row, 0, model_.rowCount() - 1));
}

// ---- Checks

/// In the menus of the rows and of the titles.
void RecordView::AddCheckActions() {
  auto* check_all = new QAction(Translated("すべて選ぶ"), this);
  auto* check_none = new QAction(Translated("すべて外す"), this);
  auto* check_selected = new QAction(Translated("選択した行だけ"), this);
  connect(check_all, &QAction::triggered, this, [this] { CheckAll(true); });
  connect(check_none, &QAction::triggered, this, [this] { CheckAll(false); });
  connect(check_selected, &QAction::triggered, this, &RecordView::CheckSelectedOnly);
  horizontalHeader()->setContextMenuPolicy(Qt::ActionsContextMenu);
  for (QAction* action : {check_all, check_none, check_selected}) {
    addAction(action);
    horizontalHeader()->addAction(action);
  }
}

void RecordView::CheckRows(const std::vector<int>& rows, bool checked) {
  std::vector<int> records(rows.size());
  std::ranges::transform(rows, records.begin(), [this](int row) { return int{model_.RefOf(row).record}; });
  Q_EMIT model_.CheckChosen(records, checked);
}

void RecordView::CheckAll(bool checked) {
  std::vector<int> rows(static_cast<std::size_t>(model_.rowCount()));
  std::iota(rows.begin(), rows.end(), 0);
  CheckRows(rows, checked);
}

void RecordView::CheckSelectedOnly() {
  const std::vector<int> rows = SelectedRows();
  if (rows.empty()) return;
  // Those that a filter hides as well.
  Q_EMIT model_.CheckChosen(model_.HeldRecords(), false);
  CheckRows(rows, true);
}

/// All get what the current one has not.
void RecordView::ToggleChecks() {
  std::vector<int> rows = SelectedRows();
  const int current = currentIndex().row();
  if (rows.empty() && current >= 0) rows.push_back(current);
  if (rows.empty()) return;
  const bool leads = std::binary_search(rows.begin(), rows.end(), current);
  CheckRows(rows, !model_.CheckedAt(leads ? current : rows.front()));
}

/// The menu speaks of the row as it is now: what a transfer brings while it is open changes nothing of it.
void RecordView::ShowMenu(const QModelIndex& index, const QPoint& global_at) {
  if (QApplication::activePopupWidget() != nullptr) return;
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  for (QAction* action : actions()) {
    if (action->isEnabled()) menu->addAction(action);
  }
  menu->addSeparator();
  AddPlaceActions(*menu, index.isValid() ? model_.PlaceAt(index.row()) : std::nullopt);
  menu->popup(global_at);
}

void RecordView::ShowMenuAtCurrentRow() {
  const QModelIndex index = currentIndex();
  if (index.isValid()) scrollTo(index);
  ShowMenu(index, viewport()->mapToGlobal(visualRect(index).bottomLeft()));
}

void RecordView::AddPlaceActions(QMenu& menu, const std::optional<MapPlace>& place) {
  const MapPlace at = place.value_or(MapPlace{});
  for (const MapPage& page : MapPages()) {
    if (page.write == nullptr) continue;
    QAction* open = menu.addAction(QString::fromStdString(Phrase("%1で開く", Phrase(page.name))));
    connect(open, &QAction::triggered, this, [this, &page, at] { Q_EMIT MapChosen(page, at); });
    open->setEnabled(place.has_value());
  }
  QAction* copy = menu.addAction(Translated("geo: リンクをコピー"));
  connect(copy, &QAction::triggered, this, [this, at] { Q_EMIT GeoLinkChosen(at); });
  copy->setEnabled(place.has_value());
}

void RecordView::contextMenuEvent(QContextMenuEvent* event) {
  if (event->reason() == QContextMenuEvent::Keyboard) return ShowMenuAtCurrentRow();
  ShowMenu(indexAt(viewport()->mapFromGlobal(event->globalPos())), event->globalPos());
}

/// Takes the copy key before a shortcut of the window around can.
bool RecordView::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride && IsCopyKey(event)) {
    event->accept();
    return true;
  }
  return QTableView::event(event);
}

void RecordView::keyPressEvent(QKeyEvent* event) {
  const bool checks = model_.HasChecks() && state() != EditingState && event->key() == Qt::Key_Space &&
                      event->modifiers() == Qt::NoModifier;
  if (!checks && !IsCopyKey(event) && !IsMenuKey(*event)) return QTableView::keyPressEvent(event);
  if (checks) {
    ToggleChecks();
  } else if (IsCopyKey(event)) {
    CopyRows();
  } else {
    ShowMenuAtCurrentRow();
  }
  event->accept();
}

void RecordView::changeEvent(QEvent* event) {
  QTableView::changeEvent(event);
  if (event->type() != QEvent::FontChange && event->type() != QEvent::StyleChange) return;
  FitRows();
  FitColumns();
}

void RecordView::showEvent(QShowEvent* event) {
  FitRows();
  FitColumns();
  QTableView::showEvent(event);
}

std::vector<int> RecordView::SelectedRows() const {
  std::vector<int> rows;
  for (const QItemSelectionRange& range : selectionModel()->selection()) {
    for (int row = range.top(); row <= range.bottom(); ++row)
      rows.push_back(row);
  }
  std::sort(rows.begin(), rows.end());
  rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
  return rows;
}

std::vector<int> RecordView::SelectedRecords() const {
  std::vector<int> records;
  for (const int row : SelectedRows())
    records.push_back(model_.RefOf(row).record);
  std::sort(records.begin(), records.end());
  records.erase(std::unique(records.begin(), records.end()), records.end());
  return records;
}

void RecordView::CopyRows() const {
  std::string lines;
  for (const int row : SelectedRows())
    model_.AppendCopy(lines, row);
  if (lines.empty()) return;
  std::string titles;
  for (const StandardLine line : model_.CopiedLines()) {
    if (with_header_) titles.append(StandardHeaderLine(line)).append("\r\n");
  }
  QGuiApplication::clipboard()->setText(QString::fromStdString(titles + lines));
}

void RecordView::FitRows() {
  const int height = fontMetrics().height() + RowMargin;
  verticalHeader()->setMinimumSectionSize(height);
  verticalHeader()->setDefaultSectionSize(height);
}

std::vector<int> RecordView::NeededWidths() const {
  const int margin = 2 * (style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 1) + 8;
  const int check = style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, this) + margin;
  const int widest = WidestColumn * fontMetrics().horizontalAdvance(Translated("国"));
  std::vector<int> widths = fitted_widths_;
  const int rows = model_.rowCount();
  const int sampled = std::min(rows, SampledRows);
  // Row by row: a row's texts are made together.
  for (int i = 0; i < sampled; ++i) {
    const int row = static_cast<int>(static_cast<long long>(i) * rows / sampled);
    for (int column = 0; column < model_.columnCount(); ++column) {
      int& width = widths[static_cast<std::size_t>(column)];
      const QString text = model_.index(row, column).data().toString();
      const bool pictured = model_.index(row, column).data(Qt::DecorationRole).isValid();
      const int mark = pictured || (column == 0 && model_.HasChecks()) ? check : 0;
      width = std::max(width, std::min(fontMetrics().horizontalAdvance(text) + margin, widest) + mark);
    }
  }
  return widths;
}

void RecordView::FollowRows() {
  ShowColumns();
  FitColumns();
}

void RecordView::HideEmptyColumns(bool hide) {
  hides_empty_ = hide;
  ShowColumns();
}

/// Columns do not come and go while one types what is to be shown.
void RecordView::ShowColumns() {
  if (model_.IsFiltered() || model_.rowCount() == 0) return;
  for (int column = 0; column < model_.columnCount(); ++column)
    setColumnHidden(column, hides_empty_ && !model_.FieldOf(column) && model_.IsEmpty(column));
}

void RecordView::FitColumns() {
  fitted_widths_ = NeededWidths();
  fitting_ = true;
  for (int column = 0; column < model_.columnCount(); ++column) {
    if (user_columns_.contains(column)) continue;
    int& width = fitted_widths_[static_cast<std::size_t>(column)];
    width = std::max(width, horizontalHeader()->sectionSizeHint(column));
    setColumnWidth(column, width);
  }
  fitting_ = false;
}

QVariantMap RecordView::UserWidths() const {
  QVariantMap widths;
  for (const int column : user_columns_)
    widths.insert(model_.Title(column), columnWidth(column));
  return widths;
}

void RecordView::SetUserWidths(const QVariantMap& widths) {
  for (int column = 0; column < model_.columnCount(); ++column) {
    const auto width = widths.constFind(model_.Title(column));
    if (width == widths.constEnd() || width->toInt() <= 0) continue;
    setColumnWidth(column, width->toInt());
    user_columns_.insert(column);
  }
}

}  // namespace walrim
