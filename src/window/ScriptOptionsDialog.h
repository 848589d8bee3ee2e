// The settings of a map-server script, for adjusting.
#pragma once

#include <QDialog>

#include "dialogs/ScriptOptionsDialog.h"

class QCheckBox;
class QLineEdit;
class QVBoxLayout;

namespace walrim {

/// OptMpsWptUpdate stores what stands there, OptMpsWptOk does so and closes. A number that no setting holds is told,
/// and nothing is stored.
class ScriptOptionsDialog : public QDialog {
 public:
  /// options must outlive the dialog.
  ScriptOptionsDialog(ScriptOptions& options, QWidget* parent);

 private:
  void BuildButtons(QVBoxLayout& column);
  void Show(const ScriptOptionControls& controls);
  [[nodiscard]] ScriptOptionControls Controls() const;
  bool Update();

  ScriptOptions& options_;
  QLineEdit* utc_offset_;
  QLineEdit* origin_name_;
  QLineEdit* destination_name_;
  QCheckBox* numbering_down_;
  QLineEdit* track_log_step_;
};

}  // namespace walrim
