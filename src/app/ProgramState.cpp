#include "app/ProgramState.h"

#include <algorithm>

#include "app/Messages.h"
#include "records/Chosen.h"

namespace walrim {

bool AnyOf(const DataKinds& kinds) {
  return std::ranges::any_of(kinds, [](bool chosen) { return chosen; });
}

void ProgramState::SetHeldCount(DataKind kind, int count) {
  const std::size_t k = IndexOf(kind);
  marks_.counts[k] = count;
  // After a download the count is that of the packets; what can be full is the number of waypoints, routes and logs.
  if (!marks_.full[k] && data_.Count(kind) >= LimitOf(kind)) {
    marks_.full[k] = true;
    desktop_.ShowMessage(messages::KindFull(kind));
  }
  ShowHeld();
}

void ProgramState::ShowHeld() {
  desktop_.ControlsChanged();
  desktop_.RecordsChanged();
}

bool ProgramState::AnyLoaded() const {
  return std::ranges::any_of(AllDataKinds, [this](DataKind kind) { return Loaded(kind); });
}

DataKinds ProgramState::WantedKinds() const {
  DataKinds wanted{};
  for (const DataKind kind : AllDataKinds)
    wanted[IndexOf(kind)] = settings_.chosen_kinds[IndexOf(kind)] && Loaded(kind) && !NoneChosen(data_, kind);
  return wanted;
}

bool ProgramState::NothingChecked() const {
  const auto wanted = [this](DataKind kind) { return settings_.chosen_kinds[IndexOf(kind)] && Loaded(kind); };
  return std::ranges::any_of(AllDataKinds, wanted) && !AnyOf(WantedKinds());
}

void ProgramState::Empty(DataKind kind) {
  data_.Clear(kind);
  marks_.counts[IndexOf(kind)] = std::nullopt;
  marks_.full[IndexOf(kind)] = false;
  if (kind == DataKind::TrackLog) marks_.date_repairs = std::make_shared<const std::vector<DateRepair>>();
  ShowHeld();
}

void ProgramState::EmptyOfChosen(DataKind kind) {
  if (AllChosen(data_, kind)) return Empty(kind);
  if (NoneChosen(data_, kind)) return;
  RemoveChosen(data_, kind);
  if (kind == DataKind::TrackLog) SetDateRepairs(RepairsStillDue(data_.Logs(), DateRepairs()));
  marks_.full[IndexOf(kind)] = false;
  SetHeldCount(kind, static_cast<int>(data_.Count(kind)));
}

void ProgramState::SetDateRepairs(std::vector<DateRepair> repairs) {
  marks_.date_repairs = std::make_shared<const std::vector<DateRepair>>(std::move(repairs));
  desktop_.ControlsChanged();
}

void ProgramState::SetReceiverCount(DataKind kind, std::optional<int> count) {
  in_receiver_[IndexOf(kind)] = count;
  desktop_.ControlsChanged();
}

void ProgramState::SetReceiverClock(std::string text) {
  receiver_clock_ = std::move(text);
  desktop_.ControlsChanged();
}

void ProgramState::SetCancelEnabled(bool enabled) {
  cancel_requested_ = false;
  cancel_enabled_ = enabled;
  desktop_.ControlsChanged();
}

// ---- Steps

void ProgramState::KeepSteps() {
  keeps_steps_ = true;
  data_.KeepChanges();
}

/// Of what was changed outside a step nothing is known that could be taken back, nor of what was before it.
void ProgramState::ForgetSteps() {
  const ConcernedRecords concerned = data_.Concerned();
  if (data_.TakeChanges().Empty()) return;
  Revise(concerned);
  history_.Clear();
}

void ProgramState::Revise(const ConcernedRecords& concerned) {
  for (const DataKind kind : AllDataKinds) {
    const bool changed = concerned.records[IndexOf(kind)] > 0 || concerned.points[IndexOf(kind)] > 0;
    if (changed) marks_.revisions[IndexOf(kind)] = ++last_revision_;
  }
}

void ProgramState::BeginStep(StepKind kind) {
  if (!keeps_steps_ || open_steps_++ > 0) return;
  ForgetSteps();
  open_step_.name.kind = kind;
  in_file_ = {};
  open_step_.marks = marks_;
}

void ProgramState::EndStep() {
  if (!keeps_steps_ || --open_steps_ > 0) return;
  open_step_.name.concerned = data_.Concerned();
  open_step_.changes = data_.TakeChanges();
  if (open_step_.changes.Empty()) return;
  NoteDropped(open_step_.marks);
  Revise(open_step_.name.concerned);
  for (const DataKind kind : AllDataKinds) {
    if (in_file_[IndexOf(kind)]) saved_[IndexOf(kind)] = marks_.revisions[IndexOf(kind)];
  }
  history_.Add(std::move(open_step_));
  open_step_ = {};
  desktop_.ControlsChanged();
}

/// Of kinds that are held no more.
void ProgramState::NoteDropped(const HeldMarks& before) {
  for (const DataKind kind : AllDataKinds) {
    const std::size_t k = IndexOf(kind);
    const bool was_unsaved = before.counts[k] && before.revisions[k] != saved_[k];
    if (was_unsaved && !data_.Holds(kind)) marks_.dropped[k] = true;
  }
}

/// What was restored lay in no file but the one that is kept for a crash.
void ProgramState::Undo() {
  ForgetSteps();
  if (history_.NextUndo() == nullptr) return;
  const bool restored = history_.NextUndo()->kind == StepKind::Restore;
  const HeldMarks before = marks_;
  Exchange(history_.Undo());
  if (restored) NoteDropped(before);
}

void ProgramState::Redo() {
  ForgetSteps();
  if (history_.NextRedo() != nullptr) Exchange(history_.Redo());
}

void ProgramState::Exchange(Step& step) {
  data_.Exchange(step.changes);
  std::swap(marks_, step.marks);
  ShowHeld();
}

void ProgramState::TakeBack() {
  DataChanges changes = data_.TakeChanges();
  data_.Exchange(changes);
}

void ProgramState::HeldChanged() {
  const ConcernedRecords concerned = data_.Concerned();
  for (const DataKind kind : AllDataKinds) {
    const std::size_t k = IndexOf(kind);
    if (concerned.records[k] == 0 && concerned.points[k] == 0) continue;
    if (!data_.Holds(kind)) {
      Empty(kind);
      continue;
    }
    marks_.full[k] = marks_.full[k] && data_.Count(kind) >= LimitOf(kind);
    SetHeldCount(kind, static_cast<int>(data_.Count(kind)));
  }
  SetDateRepairs(RepairsStillDue(data_.Logs(), DateRepairs()));
}

bool ProgramState::Unsaved(DataKind kind) const {
  return data_.Holds(kind) && marks_.revisions[IndexOf(kind)] != saved_[IndexOf(kind)];
}

DataKinds ProgramState::UnsavedKinds() const {
  DataKinds unsaved{};
  for (const DataKind kind : AllDataKinds)
    unsaved[IndexOf(kind)] = Unsaved(kind);
  return unsaved;
}

void ProgramState::SetSaved(DataKind kind) {
  saved_[IndexOf(kind)] = marks_.revisions[IndexOf(kind)];
  desktop_.ControlsChanged();
}

}  // namespace walrim
