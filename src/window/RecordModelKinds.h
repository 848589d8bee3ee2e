// The models of the three kinds: waypoints, routes, track logs, and the points of the latter two.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "window/RecordModel.h"

namespace walrim {

class WaypointModel : public RecordModel {
  Q_OBJECT

 public:
  WaypointModel(InternalData& data, const NameTablesByType& names, QObject* parent);
  [[nodiscard]] std::vector<std::string_view> CopyTags() const override;

 protected:
  [[nodiscard]] std::vector<RowRef> HeldRows() const override;
  [[nodiscard]] bool Holds(RowRef ref) const override;
  [[nodiscard]] bool IsMissing(RowRef ref) const override { return data_.IsMissingWaypoint(ref.record); }
  void AppendShownLine(StandardWriter& writer, std::string& out, RowRef ref) const override;
  void AppendLines(std::string& out, RowRef ref) const override;
  [[nodiscard]] std::string CellText(RowRef ref, const RecordColumn& column) const override;
};

/// Copies a route's header with all its points.
class RouteModel : public RecordModel {
  Q_OBJECT

 public:
  RouteModel(InternalData& data, const NameTablesByType& names, QObject* parent);
  [[nodiscard]] std::vector<std::string_view> CopyTags() const override;

 protected:
  [[nodiscard]] std::vector<RowRef> HeldRows() const override;
  [[nodiscard]] bool Holds(RowRef ref) const override;
  void AppendShownLine(StandardWriter& writer, std::string& out, RowRef ref) const override;
  void AppendLines(std::string& out, RowRef ref) const override;
};

/// Copies a log's header with all its points.
class TrackModel : public RecordModel {
  Q_OBJECT

 public:
  TrackModel(InternalData& data, const NameTablesByType& names, QObject* parent);
  [[nodiscard]] std::vector<std::string_view> CopyTags() const override;

 protected:
  [[nodiscard]] std::vector<RowRef> HeldRows() const override;
  [[nodiscard]] bool Holds(RowRef ref) const override;
  void AppendShownLine(StandardWriter& writer, std::string& out, RowRef ref) const override;
  void AppendLines(std::string& out, RowRef ref) const override;
  [[nodiscard]] std::string CellText(RowRef ref, const RecordColumn& column) const override;
  void ForgetDerived() override;

 private:
  /// What the points of a log make together.
  struct Summary {
    int start = 0;
    int count = 0;
    std::optional<double> first_time;
    std::optional<double> last_time;
    double length_km = 0;
  };
  [[nodiscard]] const Summary& SummaryOf(int log) const;
  [[nodiscard]] Summary Summarise(int log, int count) const;
  [[nodiscard]] std::string TimeText(const std::optional<double>& garmin_time) const;

  mutable std::array<std::optional<Summary>, MaxTrackLogs + 1> summaries_;
};

/// Points of the chosen routes or logs; of all while none is chosen.
class PointModel : public RecordModel {
  Q_OBJECT

 public:
  using RecordModel::RecordModel;
  /// Chooses the routes or logs, in rising order; takes effect with the next Refresh.
  void SetRecords(std::vector<int> records) { records_ = std::move(records); }
  /// The same at once.
  void ShowRecords(std::vector<int> records);

 protected:
  [[nodiscard]] bool Chosen(int record) const;

 private:
  std::vector<int> records_;
};

class RoutePointModel : public PointModel {
  Q_OBJECT

 public:
  RoutePointModel(InternalData& data, const NameTablesByType& names, QObject* parent);
  [[nodiscard]] std::vector<std::string_view> CopyTags() const override;

 protected:
  [[nodiscard]] std::vector<RowRef> HeldRows() const override;
  [[nodiscard]] bool Holds(RowRef ref) const override;
  void AppendShownLine(StandardWriter& writer, std::string& out, RowRef ref) const override;
  void AppendLines(std::string& out, RowRef ref) const override;
  [[nodiscard]] std::string CellText(RowRef ref, const RecordColumn& column) const override;
};

class TrackPointModel : public PointModel {
  Q_OBJECT

 public:
  TrackPointModel(InternalData& data, const NameTablesByType& names, QObject* parent);
  [[nodiscard]] std::vector<std::string_view> CopyTags() const override;

 protected:
  [[nodiscard]] std::vector<RowRef> HeldRows() const override;
  [[nodiscard]] bool Holds(RowRef ref) const override;
  void AppendShownLine(StandardWriter& writer, std::string& out, RowRef ref) const override;
  void AppendLines(std::string& out, RowRef ref) const override;
  [[nodiscard]] std::string CellText(RowRef ref, const RecordColumn& column) const override;
  [[nodiscard]] std::optional<double> NumberKey(RowRef ref, const RecordColumn& column) const override;
};

}  // namespace walrim
