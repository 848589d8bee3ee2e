// The commands of the tables: records are edited, taken out, and made of others. Each is one step that can be undone.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/CellEdits.h"
#include "app/Duplicates.h"
#include "app/EditCommands.h"
#include "app/Outcome.h"
#include "app/ProgramState.h"
#include "platform/Desktop.h"

namespace walrim {

/// A record of a kind, by its index, or a point of it.
struct RecordPlace {
  std::size_t record = 0;
  std::optional<std::size_t> point;

  friend bool operator==(const RecordPlace&, const RecordPlace&) = default;
};

class RecordCommands {
 public:
  /// All must outlive this object.
  RecordCommands(ProgramState& state, EditCommands& edits, Desktop& desktop)
      : state_(state), edits_(edits), desktop_(desktop) {}

  /// Gives a field what was typed; positions in the notation and on the datum that are set. Why it is not taken, with
  /// nothing changed; empty where it is.
  [[nodiscard]] std::string EditCell(DataKind kind, const RecordPlace& place, EditField field, std::string_view text);

  // Places and indices are in rising order. Refused: there is nothing to be done, or too much comes of it, which is
  // told.

  /// Takes records out, or points.
  Outcome Delete(DataKind kind, const std::vector<RecordPlace>& places);
  /// Takes records of all kinds out, in one step.
  Outcome DeleteRecords(const RecordIndices& records);
  /// Moves points of a route one place to its begin, or to its end.
  Outcome MovePoints(std::size_t route, const std::vector<std::size_t>& points, bool to_begin);
  /// Makes one log of two or more, in the place of the first.
  Outcome JoinLogs(const std::vector<std::size_t>& logs);
  /// Makes two logs of one; the second begins with a point that is not the first.
  Outcome CutLog(std::size_t log, std::size_t point);
  /// Makes of logs one for each day of the zone that is set.
  Outcome SplitByDay(const std::vector<std::size_t>& logs);
  /// Cuts logs where at least so much time passed between two points.
  Outcome SplitByGap(const std::vector<std::size_t>& logs, std::chrono::seconds gap);
  /// Points of logs that no walk can have come by (Outliers.h). Nothing changes; how many there are is told.
  [[nodiscard]] std::vector<RecordPlace> FindOutliers(const std::vector<std::size_t>& logs);
  /// Turns routes or logs round.
  Outcome Reverse(DataKind kind, const std::vector<std::size_t>& indices);
  /// Leaves at most so many points of each log (Simplify.h).
  Outcome ShortenLogs(const std::vector<std::size_t>& logs, std::size_t most);

 private:
  [[nodiscard]] std::string EditWaypointAt(const RecordPlace& place, EditField field, std::string_view text);
  [[nodiscard]] std::string EditRouteAt(const RecordPlace& place, EditField field, std::string_view text);
  [[nodiscard]] std::string EditLogAt(const RecordPlace& place, EditField field, std::string_view text);
  [[nodiscard]] PositionForm Form() const;
  Outcome Split(const std::vector<std::size_t>& logs,
                const std::function<std::vector<std::size_t>(const TrackLog&)>& breaks_of);
  /// Runs an edit that may bring more than a data set holds.
  Outcome Run(StepKind step, DataKind kind, const std::function<bool(DataSet&)>& edit);

  ProgramState& state_;
  EditCommands& edits_;
  Desktop& desktop_;
};

}  // namespace walrim
