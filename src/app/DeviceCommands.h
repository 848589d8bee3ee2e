// The commands that talk to the receiver.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "app/DateCommands.h"
#include "app/DeleteCommands.h"
#include "app/DownloadResult.h"
#include "app/ExportCommands.h"
#include "app/NameCommands.h"
#include "app/Outcome.h"
#include "app/ProgramState.h"
#include "app/TransferParts.h"
#include "device/Garmin.h"
#include "platform/Desktop.h"

namespace walrim {

class DeviceCommands {
 public:
  /// All must outlive this object.
  DeviceCommands(ProgramState& state, Garmin& garmin, DeleteCommands& deletes, ExportCommands& exports,
                 DateCommands& dates, NameCommands& names, Desktop& desktop);

  /// Identifies the receiver and asks how much it holds. With AutoDownload everything is then downloaded.
  Outcome GetInfo();
  /// Downloads the kinds to download. AutoSave and AutoCopy follow.
  Outcome Download();
  /// The same once more over the checked link, which is chosen from now on.
  Outcome DownloadChecked();
  /// What became of each kind of the last download, in the order they came; of those that a receiver holds nothing of
  /// nothing.
  [[nodiscard]] std::vector<DownloadResult> TakeDownloadResults() { return std::exchange(download_results_, {}); }
  /// Uploads the checked records of the chosen kinds. AutoDelete follows.
  Outcome Upload();
  /// The same where send decides, once the receiver has been identified, what goes: see Send.
  Outcome UploadBy(const std::function<Outcome()>& send);
  /// Runs what needs a receiver, once that has been identified, with Cancel in reach.
  Outcome RunIdentified(const std::function<Outcome()>& command);
  /// Uploads kinds of some data to the receiver that has been identified.
  Outcome Send(const DataSet& data, const DataKinds& kinds);
  /// Downloads all that the receiver that has been identified holds into another data set than the user's.
  Outcome Read(DataSet& data);
  /// Shows the receiver's date beside the computer's, and sets it when the user agrees.
  Outcome SetClock();
  /// Asks the running transfer to end after its exchange.
  void Cancel() { garmin_.Cancel(); }

  [[nodiscard]] const ProductInfo& Identified() const { return identified_; }
  /// The receiver's description, or why there is none; empty where the port could not be used.
  [[nodiscard]] std::string IdentityText() const;
  /// The last command found no receiver: the port could not be used, or nobody there is known. False where the user
  /// cancelled it.
  [[nodiscard]] bool IdentificationFailed() const { return identified_.product_id <= 0 && !garmin_.Report().cancelled; }
  /// Whether damaged records came in the last command; a checked link has none.
  [[nodiscard]] bool DamagedRecordsCame() const { return damaged_records_came_; }

 private:
  /// What a kind's transfer means for the rest of the command.
  struct KindEnd {
    bool go_on = true;
    Outcome outcome = Outcome::Done;
  };
  /// What a transfer returned; broken off by an exception it was given up.
  struct TransferEnd {
    std::int32_t result = 0;
    bool broken_off = false;
  };

  [[nodiscard]] bool Identify();
  [[nodiscard]] Outcome OutcomeWithoutReceiver() const;
  [[nodiscard]] TransferEnd Run(const std::function<std::int32_t()>& transfer);
  Outcome AskCounts();
  Outcome AskCount(DataKind kind);
  Outcome DownloadSelected();
  [[nodiscard]] TransferShares SharesToDownload() const;
  KindEnd DownloadKind(DataKind kind);
  void NoteDownload(DataKind kind, std::int32_t result, bool replaced);
  KindEnd UploadKind(const DataSet& data, DataKind kind);
  KindEnd ReadKind(DataSet& data, DataKind kind);
  KindEnd EndOfUpload(DataKind kind, const TransferEnd& end);
  KindEnd AskAfterUpload(DataKind kind, std::int32_t result, const TransferReport& upload);
  KindEnd EndWithoutRecords();
  [[nodiscard]] bool TellRefusal();
  void ExamineDates();
  void NoteReport(DataKind kind);
  void NoteChangedRecords(DataKind kind);
  void RunAutoSaveAndCopy();
  void ShowNotices();

  ProgramState& state_;
  Garmin& garmin_;
  DeleteCommands& deletes_;
  ExportCommands& exports_;
  DateCommands& dates_;
  NameCommands& names_;
  Desktop& desktop_;
  ProductInfo identified_;
  std::vector<DownloadResult> download_results_;
  bool damaged_records_came_ = false;
};

}  // namespace walrim
