// The records of the data set as the rows of a table. The texts of a row are made of its record whenever they are asked
// for; held are the rows' references alone.
#pragma once

#include <QAbstractTableModel>
#include <QIcon>
#include <QString>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "app/CellEdits.h"
#include "dialogs/GeoLink.h"
#include "formats/StandardFile.h"
#include "records/DataSet.h"

namespace walrim {

/// The record that a row shows, by its number (from 1, a headless log 0), and a point of it, from 0.
struct RowRef {
  std::uint16_t record = 0;
  std::uint16_t point = 0;

  friend bool operator==(RowRef, RowRef) = default;
  friend bool operator<(RowRef ref, RowRef other) {
    return ref.record < other.record || (ref.record == other.record && ref.point < other.point);
  }
};

/// What the cells of a column hold; it decides how they are shown, aligned and sorted.
enum class CellKind {
  Number,  ///< heights and lengths too; empty where the receiver did not know one
  Angle,
  Time,
  Truth,
  Text,
  NamedCode  ///< the name of a code; the code itself where it has none
};

/// What the texts of cells depend on.
struct ShownForm {
  AngleNotation notation = AngleNotation::D;
  Datum datum = Datum::Wgs84;
  int utc_offset_hours = 9;
};

struct ColumnHead {
  const char* title;
  CellKind kind;
  std::optional<EditField> field{};  ///< what its cells edit; nothing where they only show
};

/// A waypoint's symbol, by its number among those of a type.
struct ShownSymbol {
  WaypointType type = WaypointType::D108;
  int code = 0;
};

/// Rows that the view knows may lose their record while a transfer runs: they are empty then, until Refresh.
class RecordModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  /// data must outlive the model. It has no rows before Refresh.
  RecordModel(const DataSet& data, QObject* parent) : QAbstractTableModel(parent), data_(data) {}

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  /// Sorts by what the cells show; empty cells come last in either order. Column -1: the order of the data set.
  void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

  /// Takes over what changed in the data and the settings. Rows whose record is still there keep their place in a
  /// selection.
  void Refresh(const ShownForm& form);
  /// Shows only rows with a text in any of their cells, in any case and width of letters; an empty one shows all.
  void SetFilter(const QString& text);
  [[nodiscard]] bool IsFiltered() const { return !filter_.isEmpty(); }
  /// The rows there are without a filter.
  [[nodiscard]] int HeldRowCount() const { return static_cast<int>(HeldRows().size()); }
  /// Whether the cells of a column are empty in all rows that are shown.
  [[nodiscard]] bool IsEmpty(int column) const;
  /// A column's title without the datum.
  [[nodiscard]] QString Title(int column) const;
  /// The records of all rows, shown or not.
  [[nodiscard]] std::vector<int> HeldRecords() const;
  /// Of a table of points: chooses the records, in rising order, whose points are shown; all while none is chosen.
  /// Takes effect with the next Refresh.
  void SetRecords(std::vector<int> records) { records_ = std::move(records); }
  /// The same at once.
  void ShowRecords(std::vector<int> records);

  /// The first column carries the check of a record; cells of a field can be edited.
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
  /// Of checks alone: asks for one by CheckChosen. False where the cell has none.
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  /// Whether the rows have checks. Those of points have none.
  [[nodiscard]] virtual bool HasChecks() const { return false; }
  [[nodiscard]] bool CheckedAt(int row) const;

  [[nodiscard]] std::optional<EditField> FieldOf(int column) const { return Head(column).field; }
  /// Of a row of a waypoint that is held.
  [[nodiscard]] virtual ShownSymbol SymbolAt(int /*row*/) const { return {}; }
  /// The row of a reference; -1 where it is not shown.
  [[nodiscard]] int RowAt(RowRef ref) const;

  [[nodiscard]] RowRef RefOf(int row) const { return rows_.at(static_cast<std::size_t>(row)); }
  /// Appends the row as standard lines, each with CR LF; nothing where its record is gone.
  void AppendCopy(std::string& out, int row) const;
  /// Where the row's record lies, whatever datum is shown; nothing where that is not known.
  [[nodiscard]] std::optional<MapPlace> PlaceAt(int row) const;
  /// The kinds of the lines that AppendCopy appends.
  [[nodiscard]] virtual std::vector<StandardLine> CopiedLines() const = 0;

 Q_SIGNALS:
  /// Records are to be checked or not. Until Refresh they look as before.
  void CheckChosen(const std::vector<int>& records, bool checked);

 protected:
  [[nodiscard]] virtual ColumnHead Head(int column) const = 0;
  /// The rows there are now, in rising order.
  [[nodiscard]] virtual std::vector<RowRef> HeldRows() const = 0;
  [[nodiscard]] virtual bool Holds(RowRef ref) const = 0;
  /// Whether the record was announced by the receiver and never came.
  [[nodiscard]] virtual bool IsMissing(RowRef /*ref*/) const { return false; }
  /// Whether the record is checked; it is held.
  [[nodiscard]] virtual bool IsChecked(RowRef /*ref*/) const { return true; }
  /// Whether something of what the row shows came damaged.
  [[nodiscard]] virtual bool IsDamaged(RowRef ref) const = 0;
  /// Where a record lies, be it off the globe. The record is held.
  [[nodiscard]] virtual std::optional<MapPlace> PlaceOf(RowRef /*ref*/) const { return std::nullopt; }
  /// Text of a cell as it is read. The record is held.
  [[nodiscard]] virtual std::string CellText(RowRef ref, int column) const = 0;
  /// The same as it is edited: with all that the record has.
  [[nodiscard]] virtual std::string CellEditText(RowRef ref, int column) const = 0;
  /// What else a NamedCode is called; may be empty.
  [[nodiscard]] virtual std::string CellOtherName(RowRef ref, int column) const = 0;
  /// What stands beside the text; a null icon for nothing.
  [[nodiscard]] virtual QIcon CellPicture(RowRef ref, int column) const = 0;
  /// What a cell of numbers sorts by; nothing for an empty one.
  [[nodiscard]] virtual std::optional<double> CellNumber(RowRef ref, int column) const = 0;
  /// Appends the lines that are copied for a row, each with CR LF.
  virtual void AppendLines(std::string& out, RowRef ref, const StandardLineWriter& writer) const = 0;
  /// Called when the data may have changed, for what a model has worked out from them.
  virtual void ForgetDerived() {}

  [[nodiscard]] bool Chosen(int record) const;

  const DataSet& data_;
  ShownForm form_;

 private:
  [[nodiscard]] QString ShownText(RowRef ref, int column) const;
  [[nodiscard]] bool Matches(RowRef ref) const;
  [[nodiscard]] std::vector<RowRef> MatchingRows() const;
  [[nodiscard]] QVariant Picture(RowRef ref, int column) const;
  [[nodiscard]] QVariant MissingMark(int role) const;
  [[nodiscard]] QVariant DamageMark(int role) const;
  [[nodiscard]] QVariant CheckMark(RowRef ref, int column, int role) const;
  [[nodiscard]] QVariant CodeTip(RowRef ref, int column) const;
  /// Shows the held rows anew from the top.
  void Reset();
  [[nodiscard]] std::vector<RowRef> Ordered(std::vector<RowRef> rows) const;
  void Reorder();
  [[nodiscard]] bool AddMissing(const std::vector<RowRef>& held);

  std::vector<RowRef> rows_;  ///< in the order they are shown
  std::vector<int> records_;
  QString filter_;  ///< folded
  int sort_column_ = -1;
  Qt::SortOrder sort_order_ = Qt::AscendingOrder;
};

}  // namespace walrim
