// What the program holds, what it is set to, and what it is doing.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/Deed.h"
#include "app/History.h"
#include "app/Notices.h"
#include "app/UserSettings.h"
#include "platform/Desktop.h"
#include "records/DataSet.h"
#include "walks/RollOver.h"

namespace walrim {

/// The data set with its marks, the settings, and the state of the command that runs. The desktop is told of changes.
class ProgramState {
 public:
  /// desktop must outlive this object.
  explicit ProgramState(Desktop& desktop) : desktop_(desktop) {}

  [[nodiscard]] DataSet& Data() { return data_; }
  [[nodiscard]] UserSettings& Settings() { return settings_; }
  /// What the command that ran last had to tell.
  [[nodiscard]] Notices& Told() { return notices_; }
  /// What it has done, until whoever shows that clears it.
  [[nodiscard]] Deeds& Done() { return deeds_; }

  // ---- Counts

  /// Records of a kind that are held, as they are shown: after a download the number of packets. Nothing where none
  /// are.
  [[nodiscard]] std::optional<int> HeldCount(DataKind kind) const { return marks_.counts[IndexOf(kind)]; }
  /// Sets it, and says once when the kind can take no more.
  void SetHeldCount(DataKind kind, int count);
  [[nodiscard]] bool Loaded(DataKind kind) const { return HeldCount(kind).has_value(); }
  [[nodiscard]] bool AnyLoaded() const;
  /// The chosen kinds that are loaded and not without a checked record.
  [[nodiscard]] DataKinds WantedKinds() const;
  /// Whether chosen kinds are loaded and not one record of theirs is checked.
  [[nodiscard]] bool NothingChecked() const;
  /// A kind has reached its limit since it was emptied.
  [[nodiscard]] bool Full(DataKind kind) const { return marks_.full[IndexOf(kind)]; }
  /// Takes a kind's records away, and those of them that are checked.
  void Empty(DataKind kind);
  void EmptyOfChosen(DataKind kind);
  /// Records of a kind that the receiver reported; nothing where it was not asked.
  [[nodiscard]] std::optional<int> ReceiverCount(DataKind kind) const { return in_receiver_[IndexOf(kind)]; }
  void SetReceiverCount(DataKind kind, std::optional<int> count);

  // ---- Dates

  /// The logs among those held whose dates are behind, as they were found when they came.
  [[nodiscard]] const std::vector<DateRepair>& DateRepairs() const { return *marks_.date_repairs; }
  void SetDateRepairs(std::vector<DateRepair> repairs);

  // ---- Steps

  /// From now on commands can be undone. What is held then is the beginning.
  void KeepSteps();
  [[nodiscard]] bool KeepsSteps() const { return keeps_steps_; }
  [[nodiscard]] const History& Steps() const { return history_; }
  /// What is done between the two is one step; so it is with others inside. What changes nothing is none. See UndoStep.
  void BeginStep(StepKind kind);
  void EndStep();
  /// Takes the last step back, or does it again, where there is one. None is open.
  void Undo();
  void Redo();
  /// Takes back what the open step has done until now.
  void TakeBack();
  /// To be called behind an edit in the open step: the counts of what it changed, and the dates to be repaired, follow.
  void HeldChanged();

  /// Whether records of a kind are held that are in no file as they are.
  [[nodiscard]] bool Unsaved(DataKind kind) const;
  [[nodiscard]] DataKinds UnsavedKinds() const;
  /// Kinds that were deleted, or lost in a download, with records that were in no file. Undo brings them back.
  [[nodiscard]] const DataKinds& DroppedKinds() const { return marks_.dropped; }
  /// What is held of a kind lies in a file now.
  void SetSaved(DataKind kind);
  /// Says whether what will be held of a kind at the end of the open step lies in a file: of one that it read.
  void SetInFile(DataKind kind, bool in_file) { in_file_[IndexOf(kind)] = in_file; }
  /// A number for what is held of all kinds: another one where anything differs.
  [[nodiscard]] const std::array<std::uint64_t, DataKindCount>& Revisions() const { return marks_.revisions; }

  // ---- The command that runs

  [[nodiscard]] bool Busy() const { return busy_; }
  void SetBusy(bool busy) { busy_ = busy; }
  /// Whether Cancel can be pressed. Setting it forgets an earlier request.
  [[nodiscard]] bool CancelEnabled() const { return cancel_enabled_; }
  void SetCancelEnabled(bool enabled);
  [[nodiscard]] bool CancelRequested() const { return cancel_requested_; }
  void RequestCancel() { cancel_requested_ = true; }
  /// What the last command wrote or sent is less than what is held: it must not be deleted.
  [[nodiscard]] bool SomethingLost() const { return something_lost_; }
  void SetSomethingLost(bool lost) { something_lost_ = lost; }
  /// What is shown of the receiver.
  [[nodiscard]] const std::string& ReceiverText() const { return receiver_text_; }
  void SetReceiverText(std::string text) { receiver_text_ = std::move(text); }
  /// What the receiver's clock told last; empty where it told nothing.
  [[nodiscard]] const std::string& ReceiverClock() const { return receiver_clock_; }
  void SetReceiverClock(std::string text);

 private:
  void ForgetSteps();
  void Exchange(Step& step);
  void Revise(const ConcernedRecords& concerned);
  void NoteDropped(const HeldMarks& before);
  void ShowHeld();

  Desktop& desktop_;
  DataSet data_;
  UserSettings settings_;
  Notices notices_;
  Deeds deeds_;
  HeldMarks marks_;
  std::array<std::optional<int>, DataKindCount> in_receiver_;
  bool keeps_steps_ = false;
  int open_steps_ = 0;
  Step open_step_;
  DataKinds in_file_{};  ///< of the open step
  History history_;
  std::uint64_t last_revision_ = 0;
  std::array<std::uint64_t, DataKindCount> saved_{};  ///< the revisions that lie in a file
  std::string receiver_text_ = "GPSInfo";
  std::string receiver_clock_;
  bool busy_ = false;
  bool cancel_enabled_ = false;
  bool cancel_requested_ = false;
  bool something_lost_ = false;
};

/// Marks a command as running until it goes.
class BusyGuard {
 public:
  explicit BusyGuard(ProgramState& state) : state_(state) { state_.SetBusy(true); }
  BusyGuard(const BusyGuard&) = delete;
  BusyGuard& operator=(const BusyGuard&) = delete;
  ~BusyGuard() { state_.SetBusy(false); }

 private:
  ProgramState& state_;
};

/// Makes a command, or what a command does in one go, a step until it goes.
class UndoStep {
 public:
  UndoStep(ProgramState& state, StepKind kind) : state_(state) { state_.BeginStep(kind); }
  UndoStep(const UndoStep&) = delete;
  UndoStep& operator=(const UndoStep&) = delete;
  ~UndoStep() { state_.EndStep(); }

 private:
  ProgramState& state_;
};

/// Whether any kind is among some.
[[nodiscard]] bool AnyOf(const DataKinds& kinds);

}  // namespace walrim
