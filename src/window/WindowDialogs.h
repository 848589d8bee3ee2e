// The program's own dialogs in front of its window.
#pragma once

#include "app/Dialogs.h"

class QWidget;

namespace walrim {

class WindowDialogs : public Dialogs {
 public:
  explicit WindowDialogs(QWidget& window) : window_(window) {}

  [[nodiscard]] bool ShowScriptOptions(ScriptOptions& options) override;
  [[nodiscard]] std::optional<ClipWaypoint> ShowClipProAtlas(ClipProAtlas& clip) override;
  [[nodiscard]] bool ShowDateRepairs(const DataSet& data, const std::vector<DateRepair>& repairs,
                                     int utc_offset_hours) override;

 private:
  QWidget& window_;
};

}  // namespace walrim
