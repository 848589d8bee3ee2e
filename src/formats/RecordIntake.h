// What the readers of all formats do with the records that they find.
#pragma once

#include <string_view>

#include "formats/ImportResult.h"
#include "records/DataSet.h"

namespace walrim {

/// Hands records to a data set and keeps the account of them.
class RecordIntake {
 public:
  explicit RecordIntake(DataSet& data) : data_(data) {}

  /// The account so far; lines are counted from 1.
  [[nodiscard]] ImportResult& Account() { return account_; }
  void SetLine(int line) { line_ = line; }
  [[nodiscard]] int Line() const { return line_; }
  /// Counts the line as one that was not stored.
  void Skip(std::string_view why) { account_.skipped.Add(line_, why); }
  /// Whether a point has a header to go to; else its line is counted.
  [[nodiscard]] bool TakesRoutePoint() { return Takes(data_.NextRoutePoint(), DataKind::Route); }
  [[nodiscard]] bool TakesTrackPoint() { return Takes(data_.NextTrackPoint(), DataKind::TrackLog); }

  // What finds no room is counted as a line that was not stored.
  void Store(Waypoint waypoint);
  void Begin(Route route);
  void Store(RoutePoint point);
  void Begin(TrackLog log);
  void Store(const TrackPoint& point);

 private:
  [[nodiscard]] bool Takes(AddResult next, DataKind kind);
  void Note(AddResult result, int& stored);

  DataSet& data_;
  ImportResult account_;
  int line_ = 0;
};

}  // namespace walrim
