// The dialog that completes a point from a map into a waypoint.
#pragma once

#include <QDialog>
#include <optional>

#include "dialogs/ClipProAtlas.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace walrim {

class SymbolBox;

/// The widgets of a ClipProAtlas. Enter goes from field to field, and at the last one is Ok.
class ClipDialog : public QDialog {
 public:
  /// clip must outlive the dialog.
  ClipDialog(ClipProAtlas& clip, QWidget* parent);

  /// The finished waypoint, once the dialog was accepted.
  [[nodiscard]] const std::optional<ClipWaypoint>& Waypoint() const { return waypoint_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Build();
  void ShowClip();
  void ShowPosition();
  void ReadControls();
  void SwitchNotation();
  void Finish();
  /// Does what Enter does in a widget; false for one that Enter means nothing special in.
  bool Enter(const QObject* widget);

  ClipProAtlas& clip_;
  std::optional<ClipWaypoint> waypoint_;
  QLineEdit* lat_;
  QLineEdit* lon_;
  QLabel* form_;  ///< says which notation lat and lon are in
  QPushButton* notation_;
  QLineEdit* ident_;
  QLineEdit* cmnt_;
  SymbolBox* smbl_;
  QComboBox* dspl_;
};

}  // namespace walrim
