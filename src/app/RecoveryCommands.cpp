#include "app/RecoveryCommands.h"

#include <algorithm>
#include <string>
#include <utility>

#include "app/Messages.h"
#include "records/PlainForm.h"
#include "text/Dates.h"

namespace walrim {

namespace {

/// Puts all of a data set behind what another one holds, or nothing.
bool Append(DataSet& data, const DataSet& more) {
  return data.Edit(Insertion(data.Waypoints().size(), more.Waypoints())) &&
         data.Edit(Insertion(data.Routes().size(), more.Routes())) &&
         data.Edit(Insertion(data.Logs().size(), more.Logs()));
}

/// A moment as the tables show it.
std::string LocalTimeText(std::int64_t unix_s, int utc_offset_hours) {
  constexpr int SecondsOfHour = 3600;
  return DateTimeText(CivilFromGarminSeconds(GarminSecondsOfUnix(unix_s) + utc_offset_hours * SecondsOfHour));
}

ConcernedRecords RecordsOf(const DataSet& data) {
  ConcernedRecords held;
  for (const DataKind kind : AllDataKinds)
    held.records[IndexOf(kind)] = data.Count(kind);
  held.points[IndexOf(DataKind::TrackLog)] = data.TrackPointCount();
  return held;
}

}  // namespace

// ---- While the program runs

bool RecoveryCommands::Differs() const {
  return files_ && AnyOf(state_.UnsavedKinds()) && written_ != state_.Revisions();
}

std::optional<std::chrono::nanoseconds> RecoveryCommands::DueIn() const {
  if (!Differs()) return std::nullopt;
  if (!last_write_) return std::chrono::nanoseconds{0};
  return std::max(*last_write_ + Interval - clock_.Monotonic(), std::chrono::nanoseconds{0});
}

void RecoveryCommands::Keep() {
  if (!files_) return;
  if (!AnyOf(state_.UnsavedKinds())) {
    // What was deleted without having been saved stays where it was written last, for as long as the program runs.
    if (!AnyOf(state_.DroppedKinds())) End();
    return;
  }
  const auto due = DueIn();
  if (due && due->count() == 0) Write();
}

void RecoveryCommands::Write() {
  last_write_ = clock_.Monotonic();
  const auto problem = files_->Keep(PlainFormOf(state_.Data()));
  if (!problem) {
    written_ = state_.Revisions();
  } else if (!std::exchange(problem_told_, true)) {
    desktop_.SetStatusCaption(messages::RecoveryNotWritten(problem->detail));
  }
}

void RecoveryCommands::End() {
  if (files_) files_->Remove();
  written_.reset();
}

// ---- At the start

void RecoveryCommands::FindLeft() {
  if (!files_) return;
  for (LeftRecovery& left : files_->Left()) {
    LeftQuestion question = QuestionOf(left);
    offers_.push_back({std::move(left), std::move(question)});
  }
}

RecoveryCommands::LeftQuestion RecoveryCommands::QuestionOf(LeftRecovery& left) {
  const std::optional<DataSet> data = ReadPlainForm(left.Text());
  if (!data) return {messages::RecoveryDamaged(left.SetAside().string()), true};
  const std::string time = LocalTimeText(left.Written().value_or(0), state_.Settings().utc_offset_hours);
  return {messages::RecoveryQuestion(time, RecordsOf(*data)), false};
}

std::optional<RecoveryCommands::LeftQuestion> RecoveryCommands::Question() const {
  return offers_.empty() ? std::nullopt : std::optional(offers_.front().question);
}

Outcome RecoveryCommands::AnswerLeft(Answer answer) {
  if (state_.Busy()) return Outcome::Busy;
  if (offers_.empty()) return Outcome::Refused;
  const BusyGuard guard(state_);
  Offer& offer = offers_.front();
  if (!offer.question.damaged) {
    switch (answer) {
      case Answer::First:
        RestoreFrom(offer.file);
        break;
      case Answer::Second:
        offer.file.Discard();
        break;
      case Answer::Back:
        break;
    }
  }
  offers_.pop_front();
  return Outcome::Done;
}

void RecoveryCommands::RestoreFrom(LeftRecovery& left) {
  const std::optional<DataSet> data = ReadPlainForm(left.Text());
  if (!data || !Restore(*data, left.Written())) return desktop_.ShowMessage(messages::RecoveryTooMuch);
  // What was left goes once this program has its own file of it.
  Write();
  if (written_ == state_.Revisions()) left.Discard();
}

bool RecoveryCommands::Restore(const DataSet& data, std::optional<std::int64_t> written) {
  const UndoStep step(state_, StepKind::Restore);
  const std::size_t first_log = state_.Data().Logs().size();
  if (!Append(state_.Data(), data)) {
    state_.TakeBack();
    return false;
  }
  state_.HeldChanged();
  dates_.ExamineFile(first_log, written);
  return true;
}

}  // namespace walrim
