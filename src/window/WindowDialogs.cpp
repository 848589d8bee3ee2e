#include "window/WindowDialogs.h"

#include "window/ClipDialog.h"
#include "window/MpsOptionDialog.h"

namespace walrim {

bool WindowDialogs::ShowMpsOption(MpsOptions& options) {
  MpsOptionDialog dialog(options, &window_);
  return dialog.exec() == QDialog::Accepted;
}

std::optional<ClipWaypoint> WindowDialogs::ShowClipProAtlas(ClipProAtlas& clip) {
  ClipDialog dialog(clip, &window_);
  dialog.exec();
  return dialog.Waypoint();
}

}  // namespace walrim
