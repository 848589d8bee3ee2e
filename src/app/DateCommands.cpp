#include "app/DateCommands.h"

#include <algorithm>
#include <cstdlib>
#include <utility>
#include <vector>

#include "app/Messages.h"
#include "walks/RollOver.h"

namespace walrim {

namespace {

/// A clock that was set tells the moment to so many seconds.
constexpr std::int64_t ClockTolerance_s = 60;

}  // namespace

// ---- Logs

void DateCommands::ExamineDownload() {
  const UserSettings& settings = state_.Settings();
  const std::vector<TrackLog>& logs = state_.Data().Logs();
  DateReference reference{clock_.UtcSeconds(), {}};
  std::vector<DateRepair> repairs = settings.date_fixing == DateFixing::ByNumber
                                        ? DateRepairsBy(logs, 0, settings.roll_overs)
                                        : FindDateRepairs(logs, 0, reference);
  const bool asks = settings.date_fixing != DateFixing::Never && settings.date_fixing != DateFixing::ByNumber;
  if (!repairs.empty() && asks) {
    // The clock only takes repairs away: without any it need not be asked.
    if (const auto clock_s = AskReceiver()) {
      reference.of_clock = RollOversOfClock(clock_.UtcSeconds(), *clock_s);
      repairs = FindDateRepairs(logs, 0, reference);
    }
  }
  state_.SetDateRepairs(std::move(repairs));
}

void DateCommands::ExamineFile(std::size_t first_log, std::optional<std::int64_t> written) {
  const UserSettings& settings = state_.Settings();
  const std::vector<TrackLog>& logs = state_.Data().Logs();
  std::vector<DateRepair> repairs;
  if (settings.date_fixing == DateFixing::ByNumber) {
    repairs = DateRepairsBy(logs, first_log, settings.roll_overs);
  } else if (written) {
    const std::int64_t seen_s = std::min(GarminSecondsOfUnix(*written), clock_.UtcSeconds());
    repairs = FindDateRepairs(logs, first_log, {seen_s, {}});
  }
  if (repairs.empty()) return;
  const std::vector<DateRepair>& earlier = state_.DateRepairs();
  repairs.insert(repairs.begin(), earlier.begin(), earlier.end());
  state_.SetDateRepairs(std::move(repairs));
}

Outcome DateCommands::FixDates() {
  if (state_.Busy()) return Outcome::Busy;
  const BusyGuard guard(state_);
  if (state_.DateRepairs().empty()) return Outcome::Refused;
  const UndoStep step(state_, StepKind::FixDates);
  const std::vector<DateRepair>& repairs = state_.DateRepairs();
  const int utc_offset_hours = state_.Settings().utc_offset_hours;
  if (dialogs_ != nullptr && !dialogs_->ShowDateRepairs(state_.Data(), repairs, utc_offset_hours)) {
    return Outcome::Cancelled;
  }
  ApplyDateRepairs(state_.Data(), repairs);
  desktop_.SetStatusCaption(messages::DatesFixed(repairs));
  state_.SetDateRepairs({});
  desktop_.RecordsChanged();
  return Outcome::Done;
}

// ---- The receiver's clock

std::optional<std::int64_t> DateCommands::AskReceiver() {
  const auto told = garmin_.AskClock(state_.Settings().port);
  if (!told) return std::nullopt;
  return SecondsSinceGarminEpoch(*told);
}

void DateCommands::TellReceiverClock() {
  if (state_.Busy()) return;
  const BusyGuard guard(state_);
  const auto told_s = AskReceiver();
  state_.SetReceiverClock(told_s ? messages::ReceiverClock(*told_s) : "");
  // What the command before has told stays.
  if (told_s && desktop_.StatusCaption().empty()) desktop_.SetStatusCaption(state_.ReceiverClock());
}

Outcome DateCommands::SetReceiverClock() {
  const auto told_s = AskReceiver();
  if (state_.CancelRequested()) return Outcome::Cancelled;
  if (!told_s) {
    desktop_.ShowMessage(messages::NoReceiverClock);
    return Outcome::NoReceiver;
  }
  if (!desktop_.AskYesNo(messages::SetClockQuestion(*told_s, clock_.UtcSeconds()))) return Outcome::Refused;
  if (state_.CancelRequested()) return Outcome::Cancelled;
  const bool taken = garmin_.SetClock(state_.Settings().port, CivilFromGarminSeconds(clock_.UtcSeconds()));
  const auto now_s = taken ? AskReceiver() : std::nullopt;
  if (!now_s) {
    desktop_.ShowMessage(messages::NotAcknowledged);
    return Outcome::NoReceiver;
  }
  state_.SetReceiverClock(messages::ReceiverClock(*now_s));
  if (std::abs(clock_.UtcSeconds() - *now_s) > ClockTolerance_s) {
    desktop_.ShowMessage(messages::ClockNotTaken(*now_s));
    return Outcome::Refused;
  }
  desktop_.SetStatusCaption(messages::ClockSet(*now_s));
  return Outcome::Done;
}

}  // namespace walrim
