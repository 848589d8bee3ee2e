// The program's own dialogs, as whoever runs it shows them.
#pragma once

#include <optional>
#include <vector>

#include "dialogs/ClipProAtlas.h"
#include "formats/ScriptOptions.h"
#include "records/DataSet.h"
#include "walks/RollOver.h"

namespace walrim {

/// Both are modal.
class Dialogs {
 public:
  virtual ~Dialogs() = default;

  /// Lets the user adjust the settings of a script. False when the script is not wanted after all; what was stored
  /// until then stays stored.
  [[nodiscard]] virtual bool ShowScriptOptions(ScriptOptions& options) = 0;

  /// Lets the user complete a point that the dialog was opened for; nothing when it was cancelled.
  [[nodiscard]] virtual std::optional<ClipWaypoint> ShowClipProAtlas(ClipProAtlas& clip) = 0;

  /// Shows what is to be repaired in the dates of logs, old beside new in local time; false when it is not
  /// wanted.
  [[nodiscard]] virtual bool ShowDateRepairs(const DataSet& data, const std::vector<DateRepair>& repairs,
                                             int utc_offset_hours) = 0;
};

}  // namespace walrim
