// Uploads that are looked after: what they would lose is found out before, and what became of them after.
#pragma once

#include <string>
#include <vector>

#include "app/DeviceCommands.h"
#include "app/NameCommands.h"
#include "app/Outcome.h"
#include "app/ProgramState.h"
#include "app/UploadReview.h"
#include "device/Garmin.h"
#include "platform/Clock.h"
#include "platform/Desktop.h"
#include "preflight/Comparison.h"
#include "preflight/Findings.h"

namespace walrim {

/// How an upload is looked after. Backup and reading back are told by their captions.
struct UploadCare {
  bool check = false;   ///< nothing is sent, and no backup written
  bool fit = false;     ///< all proposals are taken, and nobody is asked
  bool verify = false;  ///< what was sent is downloaded and compared
  std::string backup;   ///< the file that what the receiver holds is saved to first; empty: it is not
};

class UploadCommands {
 public:
  /// All must outlive this object.
  UploadCommands(ProgramState& state, Garmin& garmin, DeviceCommands& device, NameCommands& names, const Clock& clock,
                 Desktop& desktop)
      : state_(state), garmin_(garmin), device_(device), names_(names), clock_(clock), desktop_(desktop) {}

  /// Who is asked; nullptr: nobody. Must outlive this object or be taken away.
  void SetReview(UploadReview* review) { review_ = review; }

  /// Uploads the checked records of the chosen kinds. A backup that fails ends it before the first record is sent.
  /// AutoDelete follows where all is in the receiver as it is held here.
  Outcome Upload(const UploadCare& care = {});
  /// Sends what the receiver held when the last backup was made, of the kinds that were uploaded then, reads it back
  /// and compares. Records that have come since stay, and are told.
  Outcome SendBackup();
  [[nodiscard]] bool HasBackup() const { return has_backup_; }
  /// Waypoints that the receiver held beside those of the backup when that was sent last.
  [[nodiscard]] const std::vector<std::string>& NamesBeyondBackup() const { return beyond_backup_; }

  // Of the last upload.

  /// What was to be sent, and what of it would be lost. Findings are of these data.
  [[nodiscard]] const UploadPlan& Plan() const { return plan_; }
  /// What was sent, and what of it the receiver does not hold.
  [[nodiscard]] const DataSet& Sent() const { return sent_; }
  [[nodiscard]] const std::vector<Difference>& Differences() const { return differences_; }
  [[nodiscard]] bool Compared() const { return compared_; }

 private:
  Outcome Run(const UploadCare& care);
  [[nodiscard]] Outcome AskReceiver();
  [[nodiscard]] Outcome Decide(const UploadCare& care);
  [[nodiscard]] Outcome SaveBackup(const std::string& path);
  [[nodiscard]] Outcome CompareWithReceiver(DataSet& held);
  [[nodiscard]] Outcome RunBackup();
  void FindFindings();
  [[nodiscard]] NameLookup Lookup() {
    return [this](std::string_view long_name) { return names_.ShortOf(long_name); };
  }

  ProgramState& state_;
  Garmin& garmin_;
  DeviceCommands& device_;
  NameCommands& names_;
  const Clock& clock_;
  Desktop& desktop_;
  UploadReview* review_ = nullptr;
  UploadPlan plan_;
  DataSet sent_;
  std::vector<Difference> differences_;
  bool compared_ = false;
  DataSet backup_;
  DataKinds backup_kinds_{};
  bool has_backup_ = false;
  std::vector<std::string> beyond_backup_;
};

}  // namespace walrim
