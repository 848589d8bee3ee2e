// The models of the three kinds: waypoints, routes, track logs, and the points of the latter two.
#pragma once

#include <QIcon>
#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "walks/Figures.h"
#include "window/RecordModel.h"

namespace walrim {

/// A column of rows of a type: how its texts and numbers are got. The number of a NamedCode is its code. Without a text
/// of its own to edit, that which is shown is edited.
template <typename Row>
struct RecordColumn {
  ColumnHead head;
  std::string (*text)(const Row& row, const ShownForm& form);
  std::optional<double> (*number)(const Row& row, const ShownForm& form) = nullptr;
  QIcon (*picture)(const Row& row) = nullptr;
  std::string (*edit_text)(const Row& row, const ShownForm& form) = nullptr;
  std::string (*other_name)(const Row& row) = nullptr;
};

/// A model whose rows are of a type.
template <typename Row>
class ModelOf : public RecordModel {
 public:
  /// columns must outlive the model.
  ModelOf(const DataSet& data, std::span<const RecordColumn<Row>> columns, QObject* parent)
      : RecordModel(data, parent), columns_(columns) {}

  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
  }

 protected:
  /// What a row shows; nothing where its record is gone.
  [[nodiscard]] virtual std::optional<Row> RowOf(RowRef ref) const = 0;

  [[nodiscard]] ColumnHead Head(int column) const override { return ColumnAt(column).head; }
  [[nodiscard]] bool Holds(RowRef ref) const override { return RowOf(ref).has_value(); }
  [[nodiscard]] std::string CellText(RowRef ref, int column) const override {
    return ColumnAt(column).text(*RowOf(ref), form_);
  }
  [[nodiscard]] std::string CellEditText(RowRef ref, int column) const override {
    const auto text = ColumnAt(column).edit_text;
    return text != nullptr ? text(*RowOf(ref), form_) : CellText(ref, column);
  }
  [[nodiscard]] std::string CellOtherName(RowRef ref, int column) const override {
    const auto name = ColumnAt(column).other_name;
    return name != nullptr ? name(*RowOf(ref)) : std::string();
  }
  [[nodiscard]] std::optional<double> CellNumber(RowRef ref, int column) const override {
    const auto number = ColumnAt(column).number;
    return number != nullptr ? number(*RowOf(ref), form_) : std::nullopt;
  }
  [[nodiscard]] QIcon CellPicture(RowRef ref, int column) const override {
    const auto picture = ColumnAt(column).picture;
    return picture != nullptr ? picture(*RowOf(ref)) : QIcon();
  }

 private:
  [[nodiscard]] const RecordColumn<Row>& ColumnAt(int column) const {
    return columns_[static_cast<std::size_t>(column)];
  }

  std::span<const RecordColumn<Row>> columns_;
};

/// A waypoint, or one that is a point of a route.
struct WaypointRow {
  std::string number;
  double place;  ///< what the number sorts by
  const Waypoint& waypoint;
};

struct RouteRow {
  const Route& route;
};

/// What the points of a log make together.
struct LogSummary {
  const TrackPoint* points = nullptr;  ///< of which it was made
  std::size_t count = 0;
  std::optional<GarminSeconds> first_time;
  std::optional<GarminSeconds> last_time;
  Figures figures;
};

struct TrackRow {
  int number;
  const TrackLog& log;
  const LogSummary& summary;
};

struct TrackPointRow {
  int log_number;
  int number;  ///< in the log, from 1
  const TrackPoint& point;
  const TrackPoint* before;  ///< the point before it in its log; null for the first
};

/// Whether the header or a point came damaged.
[[nodiscard]] inline bool AnyDamaged(const Route& route) {
  return route.damaged ||
         std::ranges::any_of(route.points, [](const RoutePoint& point) { return point.waypoint.damaged; });
}
[[nodiscard]] inline bool AnyDamaged(const TrackLog& log) {
  return log.damaged || std::ranges::any_of(log.points, &TrackPoint::damaged);
}

class WaypointModel : public ModelOf<WaypointRow> {
 public:
  WaypointModel(const DataSet& data, QObject* parent);
  [[nodiscard]] std::vector<StandardLine> CopiedLines() const override { return {StandardLine::Waypoint}; }
  [[nodiscard]] bool HasChecks() const override { return true; }
  [[nodiscard]] ShownSymbol SymbolAt(int row) const override;

 protected:
  [[nodiscard]] bool IsDamaged(RowRef ref) const override { return RowOf(ref)->waypoint.damaged; }
  [[nodiscard]] bool IsChecked(RowRef ref) const override { return RowOf(ref)->waypoint.chosen; }
  [[nodiscard]] std::optional<WaypointRow> RowOf(RowRef ref) const override;
  [[nodiscard]] std::vector<RowRef> HeldRows() const override;
  [[nodiscard]] bool IsMissing(RowRef ref) const override { return RowOf(ref)->waypoint.missing; }
  [[nodiscard]] std::optional<MapPlace> PlaceOf(RowRef ref) const override;
  void AppendLines(std::string& out, RowRef ref, const StandardLineWriter& writer) const override;
};

/// Copies a route's header with all its points.
class RouteModel : public ModelOf<RouteRow> {
 public:
  RouteModel(const DataSet& data, QObject* parent);
  [[nodiscard]] std::vector<StandardLine> CopiedLines() const override {
    return {StandardLine::RouteHeader, StandardLine::RoutePoint};
  }
  [[nodiscard]] bool HasChecks() const override { return true; }

 protected:
  [[nodiscard]] bool IsDamaged(RowRef ref) const override { return AnyDamaged(RowOf(ref)->route); }
  [[nodiscard]] bool IsChecked(RowRef ref) const override { return RowOf(ref)->route.chosen; }
  [[nodiscard]] std::optional<RouteRow> RowOf(RowRef ref) const override;
  [[nodiscard]] std::vector<RowRef> HeldRows() const override;
  void AppendLines(std::string& out, RowRef ref, const StandardLineWriter& writer) const override;
};

class RoutePointModel : public ModelOf<WaypointRow> {
 public:
  RoutePointModel(const DataSet& data, QObject* parent);
  [[nodiscard]] std::vector<StandardLine> CopiedLines() const override { return {StandardLine::RoutePoint}; }
  [[nodiscard]] ShownSymbol SymbolAt(int row) const override;

 protected:
  [[nodiscard]] bool IsDamaged(RowRef ref) const override { return RowOf(ref)->waypoint.damaged; }
  [[nodiscard]] std::optional<WaypointRow> RowOf(RowRef ref) const override;
  [[nodiscard]] std::vector<RowRef> HeldRows() const override;
  [[nodiscard]] std::optional<MapPlace> PlaceOf(RowRef ref) const override;
  void AppendLines(std::string& out, RowRef ref, const StandardLineWriter& writer) const override;
};

/// Copies a log's header with all its points.
class TrackModel : public ModelOf<TrackRow> {
 public:
  TrackModel(const DataSet& data, QObject* parent);
  [[nodiscard]] std::vector<StandardLine> CopiedLines() const override {
    return {StandardLine::TrackHeader, StandardLine::TrackPoint};
  }
  [[nodiscard]] bool HasChecks() const override { return true; }

 protected:
  [[nodiscard]] bool IsDamaged(RowRef ref) const override { return AnyDamaged(RowOf(ref)->log); }
  [[nodiscard]] bool IsChecked(RowRef ref) const override { return RowOf(ref)->log.chosen; }
  [[nodiscard]] std::optional<TrackRow> RowOf(RowRef ref) const override;
  [[nodiscard]] std::vector<RowRef> HeldRows() const override;
  void AppendLines(std::string& out, RowRef ref, const StandardLineWriter& writer) const override;
  void ForgetDerived() override { summaries_.fill({}); }

 private:
  [[nodiscard]] const LogSummary& SummaryOf(std::size_t number, const TrackLog& log) const;

  mutable std::array<LogSummary, MaxTrackLogs + 1> summaries_;
};

class TrackPointModel : public ModelOf<TrackPointRow> {
 public:
  TrackPointModel(const DataSet& data, QObject* parent);
  [[nodiscard]] std::vector<StandardLine> CopiedLines() const override { return {StandardLine::TrackPoint}; }

 protected:
  [[nodiscard]] bool IsDamaged(RowRef ref) const override { return RowOf(ref)->point.damaged; }
  [[nodiscard]] std::optional<TrackPointRow> RowOf(RowRef ref) const override;
  [[nodiscard]] std::vector<RowRef> HeldRows() const override;
  [[nodiscard]] std::optional<MapPlace> PlaceOf(RowRef ref) const override;
  void AppendLines(std::string& out, RowRef ref, const StandardLineWriter& writer) const override;
};

}  // namespace walrim
