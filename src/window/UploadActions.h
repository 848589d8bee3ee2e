// What the window does around an upload: looking at it before, backing up, comparing after.
#pragma once

#include <string>

#include "app/WalrimMain.h"
#include "platform/Clock.h"
#include "text/Dates.h"
#include "window/UploadDialog.h"

class QWidget;

namespace walrim {

class UploadActions {
 public:
  /// All must outlive this object. The review is the window's own from now on.
  UploadActions(WalrimMain& main, const Clock& clock, QWidget& window);

  /// The upload button. Programs that give commands are not asked.
  Outcome Upload();
  /// Saves what the receiver holds, uploads, reads back, and shows what differs.
  Outcome SendSafely();
  /// Sends what was saved last.
  Outcome SendBackup();

 private:
  void ShowDifferences(const std::string& about_backup);

  WalrimMain& main_;
  const Clock& clock_;
  QWidget& window_;
  WindowReview review_;
};

/// A new file for a backup in the user's state folder, which is made, named by the local time.
[[nodiscard]] std::string BackupPath(const CivilTime& now);

}  // namespace walrim
