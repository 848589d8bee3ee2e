// The last line of the window: the status text, what the last command has done, and how far the running one has come.
#pragma once

#include <QObject>
#include <QString>
#include <cstdint>
#include <string_view>

#include "app/Deed.h"
#include "platform/Clock.h"

class QProgressBar;
class QPushButton;
class QStatusBar;
class QWidget;

namespace walrim {

class ElidedLabel;
class StallOffer;

/// What was done stays told until the next command has done something. The buttons do nothing by themselves.
class StatusLine : public QObject {
 public:
  /// The widgets are the window's, and hidden until FillBar. clock must outlive this object.
  StatusLine(QWidget& window, const Clock& clock);

  /// Puts them into the bar.
  void FillBar(QStatusBar& bar);

  ElidedLabel* const status;
  QPushButton* const open_folder;
  QPushButton* const remove_duplicates;
  /// Stands in the window, where it places it.
  StallOffer* const stall_offer;

  /// The status text.
  void ShowStatus(const QString& text);
  /// Whether it stands there whole.
  [[nodiscard]] bool ShowsWholeStatus() const;
  /// A status text for a while: see ElidedLabel.
  void ShowHint(const QString& hint);
  void EndHint();

  /// What a command has done; nothing keeps what is shown.
  void ShowDeeds(const Deeds& deeds);
  /// Where the file lies that was written last; empty where none was.
  [[nodiscard]] const QString& Folder() const { return folder_; }
  /// What came in and was there already. Nothing once it was taken back, taken out or changed.
  [[nodiscard]] const RecordIndices& AlreadyHeld() const { return already_held_; }
  void ForgetDuplicates();
  /// While a command runs no button can be used.
  void ShowState(bool command_runs);

  // As of Desktop.
  void SetProgress(std::int64_t done, std::int64_t total);
  void BeginPart(std::string_view text, double begin, double end);
  void EndParts();

 private:
  void ShowWhatFits();

  ElidedLabel* told_;
  QProgressBar* progress_;
  QString deeds_;
  QString folder_;
  RecordIndices already_held_{};
  bool in_parts_ = false;
  double part_begin_ = 0;
  double part_end_ = 1;
  std::int64_t done_ = -1;  ///< of the part
};

}  // namespace walrim
