#include "window/WindowDialogs.h"

#include "window/ClipDialog.h"
#include "window/DateRepairsDialog.h"
#include "window/ScriptOptionsDialog.h"

namespace walrim {

bool WindowDialogs::ShowScriptOptions(ScriptOptions& options) {
  ScriptOptionsDialog dialog(options, &window_);
  return dialog.exec() == QDialog::Accepted;
}

std::optional<ClipWaypoint> WindowDialogs::ShowClipProAtlas(ClipProAtlas& clip) {
  ClipDialog dialog(clip, &window_);
  dialog.exec();
  return dialog.Waypoint();
}

bool WindowDialogs::ShowDateRepairs(const DataSet& data, const std::vector<DateRepair>& repairs, int utc_offset_hours) {
  DateRepairsDialog dialog(data, repairs, utc_offset_hours, &window_);
  return dialog.exec() == QDialog::Accepted;
}

}  // namespace walrim
