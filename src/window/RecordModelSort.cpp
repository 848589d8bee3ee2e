// The order of a model's rows: the keys of all rows are taken once, then sorted.
#include <QCollator>
#include <QLocale>
#include <algorithm>
#include <utility>

#include "window/RecordModel.h"

namespace walrim {
namespace {

/// Rows by key, equal ones in the order of the data set; behind them those without a key.
template <typename Key>
class KeyedRows {
 public:
  explicit KeyedRows(std::size_t count) { keyed_.reserve(count); }

  void Add(RowRef ref, Key key) { keyed_.emplace_back(std::move(key), ref); }
  void AddEmpty(RowRef ref) { empty_.push_back(ref); }

  [[nodiscard]] std::vector<RowRef> InOrder(Qt::SortOrder order) {
    const bool rising = order == Qt::AscendingOrder;
    std::stable_sort(keyed_.begin(), keyed_.end(), [rising](const auto& row, const auto& other) {
      return rising ? row.first < other.first : other.first < row.first;
    });
    std::vector<RowRef> rows;
    rows.reserve(keyed_.size() + empty_.size());
    for (const auto& row : keyed_)
      rows.push_back(row.second);
    rows.insert(rows.end(), empty_.begin(), empty_.end());
    return rows;
  }

 private:
  std::vector<std::pair<Key, RowRef>> keyed_;
  std::vector<RowRef> empty_;
};

/// Finds where a row went.
class Places {
 public:
  explicit Places(const std::vector<RowRef>& rows) {
    places_.reserve(rows.size());
    for (const RowRef ref : rows)
      places_.emplace_back(ref, static_cast<int>(places_.size()));
    std::sort(places_.begin(), places_.end());
  }

  [[nodiscard]] int Of(RowRef ref) const {
    return std::lower_bound(places_.begin(), places_.end(), std::pair(ref, 0))->second;
  }

 private:
  std::vector<std::pair<RowRef, int>> places_;
};

}  // namespace

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
  const Places places(rows_);
  for (const QModelIndex& old : from)
    to.append(index(places.Of(before.at(static_cast<std::size_t>(old.row()))), old.column()));
  changePersistentIndexList(from, to);
  Q_EMIT layoutChanged({}, VerticalSortHint);
}

std::vector<RowRef> RecordModel::Ordered(std::vector<RowRef> rows) const {
  std::sort(rows.begin(), rows.end());
  if (sort_column_ < 0) return rows;
  const CellKind kind = Head(sort_column_).kind;
  return kind == CellKind::Text || kind == CellKind::NamedCode ? OrderedByText(rows) : OrderedByNumber(rows);
}

std::vector<RowRef> RecordModel::OrderedByNumber(const std::vector<RowRef>& rows) const {
  KeyedRows<double> keyed(rows.size());
  for (const RowRef ref : rows) {
    const auto key = Holds(ref) ? CellNumber(ref, sort_column_) : std::nullopt;
    key ? keyed.Add(ref, *key) : keyed.AddEmpty(ref);
  }
  return keyed.InOrder(sort_order_);
}

std::vector<RowRef> RecordModel::OrderedByText(const std::vector<RowRef>& rows) const {
  QCollator collator(QLocale{QLocale::Japanese});
  collator.setNumericMode(true);
  KeyedRows<QCollatorSortKey> keyed(rows.size());
  for (const RowRef ref : rows) {
    const QString text = ShownText(ref, sort_column_);
    text.isEmpty() ? keyed.AddEmpty(ref) : keyed.Add(ref, collator.sortKey(text));
  }
  return keyed.InOrder(sort_order_);
}

}  // namespace walrim
