// The records of the data set as the rows of a table. The texts of a row are taken from its standard line whenever they
// are asked for; held are the rows' references and the line that was asked for last.
#pragma once

#include <QAbstractTableModel>
#include <QString>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "data/GeneralWalrim.h"
#include "data/InternalData.h"
#include "data/StandardSections.h"

namespace walrim {

/// The record that a row shows: a waypoint's slot, or a route's or log's number with the number of a point in it.
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
  Number,
  PointNumber,  ///< "2-15": point 15 of record 2
  Angle,
  Metres,  ///< empty where the receiver did not know it
  Time,
  Truth,
  Text,
  NamedCode  ///< the name of a code; the code itself where it has none
};

inline constexpr int OwnColumn = -1;

struct RecordColumn {
  const char* title;
  CellKind kind;
  int field = OwnColumn;       ///< the standard line's column, counted from the record's first field
  int code_field = OwnColumn;  ///< of a NamedCode: the column with the code
};

/// Rows that the view knows may lose their record while a transfer runs: they are empty then, until Refresh.
class RecordModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  /// data, names and columns must outlive the model. It has no rows before Refresh.
  RecordModel(InternalData& data, const NameTablesByType& names, const Section& section,
              std::span<const RecordColumn> columns, QObject* parent);

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  /// Sorts by what the cells show; empty cells come last in either order. Column -1: the order of the data set.
  void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

  /// Takes over what changed in the data and the settings. Rows whose record is still there keep their place in a
  /// selection.
  void Refresh(const TextSettings& settings);

  [[nodiscard]] RowRef RefOf(int row) const { return rows_.at(static_cast<std::size_t>(row)); }
  /// Appends the row as standard lines, each with CR LF; nothing where its record is gone.
  void AppendCopy(std::string& out, int row) const;
  /// The tags of the lines that AppendCopy appends.
  [[nodiscard]] virtual std::vector<std::string_view> CopyTags() const = 0;

 protected:
  /// The rows there are now, in rising order.
  [[nodiscard]] virtual std::vector<RowRef> HeldRows() const = 0;
  [[nodiscard]] virtual bool Holds(RowRef ref) const = 0;
  /// Whether the record was announced by the receiver and never came.
  [[nodiscard]] virtual bool IsMissing(RowRef /*ref*/) const { return false; }
  /// The standard line whose columns the row shows, and the lines that are copied for it.
  virtual void AppendShownLine(StandardWriter& writer, std::string& out, RowRef ref) const = 0;
  virtual void AppendLines(std::string& out, RowRef ref) const = 0;
  /// Text of a cell as the record has it, blanks at its ends included.
  [[nodiscard]] virtual std::string CellText(RowRef ref, const RecordColumn& column) const;
  /// What a cell of numbers sorts by; nothing for an empty one.
  [[nodiscard]] virtual std::optional<double> NumberKey(RowRef ref, const RecordColumn& column) const;
  /// Called when the data may have changed, for what a model has worked out from them.
  virtual void ForgetDerived() {}

  /// Shows the held rows anew from the top.
  void Reset();
  /// A column of the row's standard line without its wrapping. Valid until the next call.
  [[nodiscard]] std::string_view Field(RowRef ref, int field) const;
  /// One standard line with CR LF; nothing where the record is gone.
  void AppendLine(std::string& out, std::string_view tag, int record, int point = 0) const;

  InternalData& data_;
  TextSettings settings_;

 private:
  [[nodiscard]] QString ShownText(RowRef ref, const RecordColumn& column) const;
  [[nodiscard]] QVariant MissingMark(int role) const;
  [[nodiscard]] QVariant CodeTip(RowRef ref, const RecordColumn& column) const;
  void Fetch(RowRef ref) const;
  [[nodiscard]] std::vector<RowRef> Ordered(std::vector<RowRef> rows) const;
  [[nodiscard]] std::vector<RowRef> OrderedByNumber(const std::vector<RowRef>& rows) const;
  [[nodiscard]] std::vector<RowRef> OrderedByText(const std::vector<RowRef>& rows) const;
  void Reorder();
  [[nodiscard]] bool AddMissing(const std::vector<RowRef>& held);

  const NameTablesByType& names_;
  const Section& section_;
  std::span<const RecordColumn> columns_;
  std::vector<RowRef> rows_;  ///< in the order they are shown
  int sort_column_ = -1;
  Qt::SortOrder sort_order_ = Qt::AscendingOrder;
  // The line asked for last, and where its columns lie in it.
  mutable std::optional<StandardWriter> writer_;
  mutable std::optional<RowRef> fetched_;
  mutable std::string line_;
  mutable std::vector<std::string_view> line_columns_;
};

}  // namespace walrim
