#include "window/RecordModel.h"

#include <QCollator>
#include <QFont>
#include <QGuiApplication>
#include <QLocale>
#include <QPalette>
#include <algorithm>
#include <iterator>
#include <map>
#include <type_traits>
#include <utility>

#include "text/Scan.h"
#include "text/Utf8.h"
#include "window/Messages.h"
#include "window/Widgets.h"

namespace walrim {
namespace {

/// Rows by key, equal ones in the order of the data set; behind them those without a key. The keys are taken once.
template <typename KeyOf>
std::vector<RowRef> SortedBy(const std::vector<RowRef>& rows, Qt::SortOrder order, KeyOf key_of) {
  std::vector<std::pair<typename std::invoke_result_t<KeyOf, RowRef>::value_type, RowRef>> keyed;
  std::vector<RowRef> empty;
  for (const RowRef ref : rows) {
    auto key = key_of(ref);
    key ? void(keyed.emplace_back(std::move(*key), ref)) : empty.push_back(ref);
  }
  std::stable_sort(keyed.begin(), keyed.end(), [order](const auto& row, const auto& other) {
    return order == Qt::AscendingOrder ? row.first < other.first : other.first < row.first;
  });
  std::vector<RowRef> sorted;
  sorted.reserve(rows.size());
  for (const auto& row : keyed)
    sorted.push_back(row.second);
  sorted.insert(sorted.end(), empty.begin(), empty.end());
  return sorted;
}

bool IsText(CellKind kind) {
  return kind == CellKind::Text || kind == CellKind::NamedCode;
}

Qt::Alignment AlignmentOf(CellKind kind) {
  if (IsText(kind)) return Qt::AlignLeft | Qt::AlignVCenter;
  if (kind == CellKind::Time || kind == CellKind::Truth) return Qt::AlignCenter;
  return Qt::AlignRight | Qt::AlignVCenter;
}

/// The numbers of the records.
constexpr int CheckColumn = 0;

/// What would end a line or a column of a file is shown as the blank that is written for it.
bool EndsColumn(char c) {
  return c == '\t' || c == '\r' || c == '\n' || c == '\0';
}

QString OneLine(std::string text) {
  std::ranges::replace_if(text, EndsColumn, ' ');
  return QString::fromStdString(WithoutControlCharacters(TrimBlanks(text)));
}

/// Letters and kana of either width and case are the same.
QString Folded(const QString& text) {
  return text.normalized(QString::NormalizationForm_KC).toCaseFolded();
}

}  // namespace

int RecordModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant RecordModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const RowRef ref = RefOf(index.row());
  if (role == Qt::TextAlignmentRole) return static_cast<int>(AlignmentOf(Head(index.column()).kind));
  if (!Holds(ref)) return {};
  if (IsMissing(ref)) {
    const QVariant mark = MissingMark(role);
    if (mark.isValid()) return mark;
  }
  if (IsDamaged(ref)) {
    const QVariant mark = DamageMark(role);
    if (mark.isValid()) return mark;
  }
  if (HasChecks()) {
    const QVariant mark = CheckMark(ref, index.column(), role);
    if (mark.isValid()) return mark;
  }
  switch (role) {
    case Qt::DisplayRole:
      return ShownText(ref, index.column());
    case Qt::EditRole:
      return OneLine(CellEditText(ref, index.column()));
    case Qt::DecorationRole:
      return Picture(ref, index.column());
    case Qt::ToolTipRole:
      return CodeTip(ref, index.column());
    default:
      return {};
  }
}

QVariant RecordModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  const ColumnHead head = Head(section);
  switch (role) {
    case Qt::DisplayRole:
      if (head.kind != CellKind::Angle) return Title(section);
      return Title(section) + Translated("（%1）").arg(QLatin1String(DatumName(form_.datum)));
    case Qt::TextAlignmentRole:
      return static_cast<int>(AlignmentOf(head.kind));
    case Qt::ToolTipRole:
      if (head.kind != CellKind::Angle) return {};
      return QString::fromStdString(std::string(DatumName(form_.datum)) + ", " +
                                    std::string(AngleNotationName(form_.notation)));
    default:
      return {};
  }
}

QString RecordModel::ShownText(RowRef ref, int column) const {
  return Holds(ref) ? OneLine(CellText(ref, column)) : QString();
}

QVariant RecordModel::Picture(RowRef ref, int column) const {
  if (Head(column).kind != CellKind::NamedCode || !Holds(ref)) return {};
  const QIcon picture = CellPicture(ref, column);
  return picture.isNull() ? QVariant() : QVariant(picture);
}

/// What stands in the place of a record that never came looks like no record.
QVariant RecordModel::MissingMark(int role) const {
  switch (role) {
    case Qt::FontRole: {
      QFont font = QGuiApplication::font();
      font.setItalic(true);
      return font;
    }
    case Qt::ForegroundRole:
      return QGuiApplication::palette().brush(QPalette::PlaceholderText);
    case Qt::ToolTipRole:
    case Qt::AccessibleDescriptionRole:
      return Translated(window_messages::RecordNeverCame);
    default:
      return {};
  }
}

/// Stands out of the other rows, on light and on dark ground.
QVariant RecordModel::DamageMark(int role) const {
  constexpr QColor Ground(255, 140, 0, 70);
  switch (role) {
    case Qt::BackgroundRole:
      return QBrush(Ground);
    case Qt::ToolTipRole:
    case Qt::AccessibleDescriptionRole:
      return Translated(window_messages::RecordDamaged);
    default:
      return {};
  }
}

/// What is not checked is dimmed, and says so to who cannot see it.
QVariant RecordModel::CheckMark(RowRef ref, int column, int role) const {
  const bool checked = IsChecked(ref);
  if (role == Qt::ForegroundRole && !checked) return QGuiApplication::palette().brush(QPalette::PlaceholderText);
  if (column != CheckColumn) return {};
  switch (role) {
    case Qt::CheckStateRole:
      return static_cast<int>(checked ? Qt::Checked : Qt::Unchecked);
    case Qt::AccessibleTextRole:
      return QString::fromStdString(window_messages::CheckedRow(CellText(ref, column), checked));
    case Qt::ToolTipRole:
      return Translated(window_messages::CheckTip);
    default:
      return {};
  }
}

Qt::ItemFlags RecordModel::flags(const QModelIndex& index) const {
  Qt::ItemFlags flags = QAbstractTableModel::flags(index);
  if (!index.isValid()) return flags;
  flags.setFlag(Qt::ItemIsUserCheckable, HasChecks() && index.column() == CheckColumn);
  flags.setFlag(Qt::ItemIsEditable, FieldOf(index.column()).has_value() && Holds(RefOf(index.row())));
  return flags;
}

bool RecordModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::CheckStateRole || !flags(index).testFlag(Qt::ItemIsUserCheckable)) return false;
  Q_EMIT CheckChosen({RefOf(index.row()).record}, value.toInt() == static_cast<int>(Qt::Checked));
  return true;
}

int RecordModel::RowAt(RowRef ref) const {
  const auto found = std::ranges::find(rows_, ref);
  return found != rows_.end() ? static_cast<int>(found - rows_.begin()) : -1;
}

bool RecordModel::CheckedAt(int row) const {
  const RowRef ref = RefOf(row);
  return Holds(ref) && IsChecked(ref);
}

QVariant RecordModel::CodeTip(RowRef ref, int column) const {
  if (Head(column).kind != CellKind::NamedCode || !Holds(ref)) return {};
  const int code = static_cast<int>(CellNumber(ref, column).value_or(0));
  return QString::fromStdString(window_messages::CodeTip(CellOtherName(ref, column), code));
}

QString RecordModel::Title(int column) const {
  return Translated(Head(column).title);
}

bool RecordModel::IsEmpty(int column) const {
  const bool is_text = IsText(Head(column).kind);
  return std::ranges::all_of(rows_, [&](RowRef ref) {
    if (!Holds(ref)) return true;
    return is_text ? ShownText(ref, column).isEmpty() : !CellNumber(ref, column).has_value();
  });
}

// ---- The filter

void RecordModel::SetFilter(const QString& text) {
  const QString filter = Folded(text.trimmed());
  if (filter == filter_) return;
  filter_ = filter;
  Reset();
}

/// What ends a cell is in no text that is typed.
bool RecordModel::Matches(RowRef ref) const {
  QString all;
  for (int column = 0; column < columnCount(); ++column) {
    all += ShownText(ref, column) + QLatin1Char('\n');
    if (Head(column).kind == CellKind::NamedCode) all += OneLine(CellOtherName(ref, column)) + QLatin1Char('\n');
  }
  return Folded(all).contains(filter_);
}

std::vector<RowRef> RecordModel::MatchingRows() const {
  std::vector<RowRef> rows = HeldRows();
  if (IsFiltered()) std::erase_if(rows, [this](RowRef ref) { return !Matches(ref); });
  return rows;
}

std::vector<int> RecordModel::HeldRecords() const {
  std::vector<int> records;
  for (const RowRef ref : HeldRows()) {
    if (records.empty() || records.back() != ref.record) records.push_back(ref.record);
  }
  return records;
}

bool RecordModel::Chosen(int record) const {
  return records_.empty() || std::ranges::binary_search(records_, record);
}

void RecordModel::ShowRecords(std::vector<int> records) {
  if (records == records_) return;
  records_ = std::move(records);
  Reset();
}

void RecordModel::Refresh(const ShownForm& form) {
  form_ = form;
  ForgetDerived();
  if (!AddMissing(MatchingRows())) return Reset();
  if (rows_.empty()) return;
  Reorder();
  Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
  Q_EMIT headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
}

/// Adds the rows that came at the end. False, with nothing done, when rows are gone.
bool RecordModel::AddMissing(const std::vector<RowRef>& held) {
  std::vector<RowRef> known = rows_;
  std::sort(known.begin(), known.end());
  if (!std::includes(held.begin(), held.end(), known.begin(), known.end())) return false;
  std::vector<RowRef> missing;
  std::set_difference(held.begin(), held.end(), known.begin(), known.end(), std::back_inserter(missing));
  if (missing.empty()) return true;
  beginInsertRows({}, rowCount(), rowCount() + static_cast<int>(missing.size()) - 1);
  rows_.insert(rows_.end(), missing.begin(), missing.end());
  endInsertRows();
  return true;
}

void RecordModel::Reset() {
  beginResetModel();
  rows_ = Ordered(MatchingRows());
  endResetModel();
}

std::optional<MapPlace> RecordModel::PlaceAt(int row) const {
  const RowRef ref = RefOf(row);
  if (!Holds(ref) || IsMissing(ref)) return std::nullopt;
  const auto place = PlaceOf(ref);
  return place && OnGlobe({place->lat_deg, place->lon_deg, 0}) ? place : std::nullopt;
}

void RecordModel::sort(int column, Qt::SortOrder order) {
  sort_column_ = column < columnCount() ? column : -1;
  sort_order_ = order;
  Reorder();
}

void RecordModel::Reorder() {
  std::vector<RowRef> ordered = Ordered(rows_);
  if (ordered == rows_) return;
  Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
  const std::vector<RowRef> before = std::exchange(rows_, std::move(ordered));
  const QModelIndexList from = persistentIndexList();
  QModelIndexList to;
  to.reserve(from.size());
  std::map<RowRef, int> places;
  for (const RowRef ref : rows_)
    places.emplace(ref, static_cast<int>(places.size()));
  for (const QModelIndex& old : from)
    to.append(index(places.at(before.at(static_cast<std::size_t>(old.row()))), old.column()));
  changePersistentIndexList(from, to);
  Q_EMIT layoutChanged({}, VerticalSortHint);
}

std::vector<RowRef> RecordModel::Ordered(std::vector<RowRef> rows) const {
  std::sort(rows.begin(), rows.end());
  if (sort_column_ < 0) return rows;
  if (!IsText(Head(sort_column_).kind)) {
    return SortedBy(rows, sort_order_,
                    [this](RowRef ref) { return Holds(ref) ? CellNumber(ref, sort_column_) : std::nullopt; });
  }
  QCollator collator(QLocale{QLocale::Japanese});
  collator.setNumericMode(true);
  return SortedBy(rows, sort_order_, [&](RowRef ref) {
    const QString text = ShownText(ref, sort_column_);
    return text.isEmpty() ? std::nullopt : std::optional(collator.sortKey(text));
  });
}

void RecordModel::AppendCopy(std::string& out, int row) const {
  const RowRef ref = RefOf(row);
  if (Holds(ref)) AppendLines(out, ref, {form_.notation, form_.datum, form_.utc_offset_hours});
}

}  // namespace walrim
