// Dates that are 1024 weeks behind: receivers count weeks with ten bits, and the firmware of old ones falls back.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "records/DataSet.h"
#include "records/TrackLog.h"

namespace walrim {

inline constexpr std::int64_t RollOver_s = 1024LL * 7 * 24 * 3600;

/// What the dates of logs are held against.
struct DateReference {
  /// When the logs were there for certain, in seconds since 1989/12/31 00:00:00 UTC: now for a download, a file's own
  /// date for a file. No log is moved to more than two days behind it.
  std::int64_t seen_s = 0;
  /// How many roll-overs the receiver's clock is behind, where it has told; else each log tells for itself.
  std::optional<int> of_clock;
};

/// A log whose dates are behind: its earliest and latest times as they are, and as they would be.
struct DateRepair {
  std::size_t log = 0;  ///< index among the logs
  GarminSeconds old_first = 0;
  GarminSeconds old_last = 0;
  GarminSeconds new_first = 0;
  GarminSeconds new_last = 0;
  int roll_overs = 0;  ///< of the log's beginning; one more behind a jump back

  friend bool operator==(const DateRepair&, const DateRepair&) = default;
};

/// How many roll-overs a receiver's clock is behind the computer's: to the nearest, and never before 0. Both in seconds
/// since 1989/12/31 00:00:00 UTC.
[[nodiscard]] int RollOversOfClock(std::int64_t computer_s, std::int64_t receiver_s);

/// The repairs of the logs from one on, in their order. A jump of more than half a roll-over back inside a log is one
/// more from there on, and a jump forth ends it. What has no time (nor 7FFFFFFFh, which says the same) stays so, and a
/// log that would leave the receivers' 32 bits stays whole.
[[nodiscard]] std::vector<DateRepair> FindDateRepairs(const std::vector<TrackLog>& logs, std::size_t first_log,
                                                      const DateReference& reference);
/// The same where the user says how many roll-overs the logs begin behind.
[[nodiscard]] std::vector<DateRepair> DateRepairsBy(const std::vector<TrackLog>& logs, std::size_t first_log,
                                                    int roll_overs);

/// Those of some repairs whose logs are still there as they were found, with the places that the logs have now.
[[nodiscard]] std::vector<DateRepair> RepairsStillDue(const std::vector<TrackLog>& logs,
                                                      const std::vector<DateRepair>& repairs);

/// Repairs the dates. A log whose first or last time is no longer as it was found stays as it is.
void ApplyDateRepairs(DataSet& data, const std::vector<DateRepair>& repairs);

}  // namespace walrim
