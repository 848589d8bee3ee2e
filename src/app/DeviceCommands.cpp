#include "app/DeviceCommands.h"

#include <exception>
#include <optional>
#include <utility>
#include <vector>

#include "app/Messages.h"
#include "records/Chosen.h"
#include "text/Utf8.h"

namespace walrim {

namespace {

/// A port that was there when the receiver was identified, and is no more: the adapter was pulled between two kinds.
bool PortIsGone(const PortResult& result) {
  return result.problem == PortProblem::Missing || result.problem == PortProblem::Other;
}

}  // namespace

DeviceCommands::DeviceCommands(ProgramState& state, Garmin& garmin, DeleteCommands& deletes, ExportCommands& exports,
                               DateCommands& dates, NameCommands& names, Desktop& desktop)
    : state_(state),
      garmin_(garmin),
      deletes_(deletes),
      exports_(exports),
      dates_(dates),
      names_(names),
      desktop_(desktop) {}

// ---- Identification

Outcome DeviceCommands::RunIdentified(const std::function<Outcome()>& command) {
  const BusyGuard guard(state_);
  state_.SetCancelEnabled(true);
  const Outcome outcome = Identify() ? command() : OutcomeWithoutReceiver();
  state_.SetCancelEnabled(false);
  return outcome;
}

bool DeviceCommands::Identify() {
  desktop_.SetStatusCaption(messages::Initializing);
  garmin_.SetLinkChoice(state_.Settings().link);
  garmin_.ClearCancel();
  damaged_records_came_ = false;
  state_.SetReceiverClock("");
  try {
    identified_ = garmin_.ConnectDevice(state_.Settings().port);
  } catch (const std::exception&) {
    identified_ = {};
    desktop_.ShowMessage(messages::BadData);
  }
  desktop_.SetStatusCaption("");
  // Of a receiver that was not waited for nothing is said.
  if (!garmin_.Report().cancelled) {
    state_.SetReceiverText(messages::ReceiverText(IdentityText(), identified_.product_id));
  }
  desktop_.ControlsChanged();
  if (identified_.product_id <= 0) return false;
  const bool automatic = state_.Settings().link == LinkChoice::Automatic;
  desktop_.SetStatusCaption(messages::LinkInUse(garmin_.CheckedLinkInUse(), automatic));
  return true;
}

std::string DeviceCommands::IdentityText() const {
  if (identified_.product_id >= -1 && (identified_.product_id != 0 || !garmin_.LastPortResult().Ok())) {
    return WithoutControlCharacters(identified_.description);
  }
  return std::string(garmin_.Report().refused ? messages::NotAcknowledged : messages::NotIdentified);
}

Outcome DeviceCommands::OutcomeWithoutReceiver() const {
  if (state_.CancelRequested()) return Outcome::Cancelled;
  return garmin_.LastPortResult().Ok() ? Outcome::NoReceiver : Outcome::Refused;
}

// ---- Transfers

DeviceCommands::TransferEnd DeviceCommands::Run(const std::function<std::int32_t()>& transfer) {
  garmin_.ClearCancel();
  try {
    return {transfer(), false};
  } catch (const std::exception&) {
    desktop_.ShowMessage(messages::BadData);
    return {TransferGivenUp, true};
  }
}

void DeviceCommands::NoteReport(DataKind kind) {
  const TransferReport& report = garmin_.Report();
  Notices& told = state_.Told();
  if (report.damaged_records > 0) {
    damaged_records_came_ = true;
    told.Add(messages::DamagedRecords(kind, report.damaged_records));
  }
  if (report.missing_records > 0) {
    told.Add(messages::MissingRecords(kind, garmin_.RecordsAnnounced(), report.missing_records));
  }
  if (report.refused_records > 0) told.Add(messages::RefusedRecords(kind, report.refused_records));
  NoteChangedRecords(kind);
}

/// What was sent is less than what is held: it must not be deleted.
void DeviceCommands::NoteChangedRecords(DataKind kind) {
  const TransferReport& report = garmin_.Report();
  Notices& told = state_.Told();
  const bool changed = !report.replaced_records.empty() || !report.cut_records.empty() || report.cut_texts > 0;
  if (changed) state_.SetSomethingLost(true);
  if (!report.replaced_records.empty()) told.Add(messages::ReplacedRecords(kind, report.replaced_records));
  if (!report.unsendable.empty()) desktop_.ShowMessage(report.unsendable);
  if (!report.cut_records.empty()) desktop_.ShowMessage(messages::CutRecords(kind, report.cut_records));
  if (report.cut_texts > 0) told.Add(messages::CutTexts(kind, report.cut_texts));
}

/// The status line is left empty, or tells what went wrong without a message.
void DeviceCommands::ShowNotices() {
  desktop_.SetStatusCaption(state_.Told().Joined());
}

/// A result of 0 may be an empty receiver, or one that did not take the first packet.
DeviceCommands::KindEnd DeviceCommands::EndWithoutRecords() {
  const TransferReport& report = garmin_.Report();
  if (report.port_failed && !PortIsGone(garmin_.LastPortResult())) return {false, Outcome::Refused};
  if (report.no_answer || report.port_failed) {
    desktop_.ShowMessage(messages::LinkLost);
    return {false, Outcome::LinkLost};
  }
  if (report.not_acknowledged) {
    desktop_.ShowMessage(messages::NotAcknowledged);
    return {false, Outcome::NoReceiver};
  }
  return {};
}

/// Whether the receiver refused a packet of the checked link to the end; then that is told.
bool DeviceCommands::TellRefusal() {
  const bool refused = garmin_.Report().refused;
  if (refused) desktop_.ShowMessage(messages::NotAcknowledged);
  return refused;
}

// ---- Info

Outcome DeviceCommands::GetInfo() {
  if (state_.Busy()) return Outcome::Busy;
  const Outcome outcome = RunIdentified([this] { return AskCounts(); });
  if (outcome != Outcome::Done || !state_.Settings().auto_download) return outcome;
  state_.Settings().download_kinds.fill(true);
  desktop_.ControlsChanged();
  return Download();
}

Outcome DeviceCommands::AskCounts() {
  for (const DataKind kind : AllDataKinds)
    state_.SetReceiverCount(kind, std::nullopt);
  Outcome outcome = Outcome::Done;
  for (const DataKind kind : AllDataKinds) {
    if (state_.CancelRequested()) break;
    desktop_.SetStatusCaption(messages::Counting(kind));
    outcome = AskCount(kind);
    if (outcome != Outcome::Done) break;
  }
  desktop_.SetStatusCaption("");
  return state_.CancelRequested() ? Outcome::Cancelled : outcome;
}

Outcome DeviceCommands::AskCount(DataKind kind) {
  const TransferEnd end =
      Run([&] { return garmin_.Download(state_.Data(), kind, state_.Settings().port, TransferMode::CountOnly); });
  if (end.result <= 0) state_.SetReceiverCount(kind, std::nullopt);
  if (end.result == TransferTimedOut) {
    desktop_.ShowMessage(messages::LinkLost);
    return Outcome::LinkLost;
  }
  if (end.result < 0) {
    if (!end.broken_off && garmin_.Report().bad_answer) desktop_.ShowMessage(messages::BadAnswer);
    if (TellRefusal()) return Outcome::NoReceiver;
    return state_.CancelRequested() ? Outcome::Cancelled : Outcome::Refused;
  }
  if (garmin_.Report().cancelled && end.result == 0) return Outcome::Cancelled;
  const KindEnd without = EndWithoutRecords();
  if (without.go_on) state_.SetReceiverCount(kind, end.result);
  return without.outcome;
}

// ---- Download

Outcome DeviceCommands::Download() {
  if (state_.Busy()) return Outcome::Busy;
  if (!AnyOf(state_.Settings().download_kinds)) {
    desktop_.ShowMessage(messages::NothingToDownload);
    return Outcome::Refused;
  }
  state_.Told().Clear();
  download_results_.clear();
  const Outcome outcome = RunIdentified([this] { return DownloadSelected(); });
  if (outcome == Outcome::Done && names_.FindLongNames()) ShowNotices();
  if (outcome == Outcome::Done) RunAutoSaveAndCopy();
  return outcome;
}

/// By the receiver's counts, where all are known.
TransferShares DeviceCommands::SharesToDownload() const {
  TransferShares shares{};
  bool all_known = true;
  for (const DataKind kind : AllDataKinds) {
    if (!state_.Settings().download_kinds[IndexOf(kind)]) continue;
    shares[IndexOf(kind)] = state_.ReceiverCount(kind).value_or(1);
    all_known = all_known && state_.ReceiverCount(kind);
  }
  if (all_known) return shares;
  for (double& share : shares)
    share = share > 0 ? 1 : 0;
  return shares;
}

Outcome DeviceCommands::DownloadSelected() {
  const UndoStep step(state_, StepKind::Download);
  TransferParts parts(desktop_, TransferWay::FromReceiver, SharesToDownload());
  Outcome outcome = Outcome::Done;
  for (const DataKind kind : AllDataKinds) {
    if (state_.CancelRequested()) break;
    if (!state_.Settings().download_kinds[IndexOf(kind)] || state_.ReceiverCount(kind) == 0) continue;
    if (state_.Loaded(kind) && !desktop_.AskYesNo(messages::OverwriteHeldQuestion(kind))) continue;
    parts.Begin(kind);
    const KindEnd end = DownloadKind(kind);
    if (end.outcome != Outcome::Done) outcome = end.outcome;
    if (!end.go_on) break;
  }
  ShowNotices();
  return state_.CancelRequested() ? Outcome::Cancelled : outcome;
}

void DeviceCommands::NoteDownload(DataKind kind, std::int32_t result, bool replaced) {
  if (result == 0) return;
  const TransferReport& report = garmin_.Report();
  download_results_.push_back(
      {kind, garmin_.RecordsAnnounced(), report.missing_records, report.damaged_records, result > 0, replaced});
}

Outcome DeviceCommands::DownloadChecked() {
  state_.Settings().link = LinkChoice::Checked;
  desktop_.ControlsChanged();
  return Download();
}

DeviceCommands::KindEnd DeviceCommands::DownloadKind(DataKind kind) {
  const bool replaced = state_.Loaded(kind);
  desktop_.SetStatusCaption(messages::Downloading(kind));
  const TransferEnd end =
      Run([&] { return garmin_.Download(state_.Data(), kind, state_.Settings().port, TransferMode::Transfer); });
  NoteReport(kind);
  NoteDownload(kind, end.result, replaced);
  if (end.result > 0) {
    state_.SetHeldCount(kind, end.result);
    if (kind == DataKind::TrackLog && !state_.CancelRequested()) ExamineDates();
    return {};
  }
  if (end.result == 0) return EndWithoutRecords();
  const bool lost = end.result == TransferTimedOut;
  if (lost) desktop_.ShowMessage(messages::LinkLost);
  if (!end.broken_off && garmin_.Report().bad_answer) desktop_.ShowMessage(messages::BadAnswer);
  const bool refused = TellRefusal();
  state_.Empty(kind);
  // Who has stopped answering, or answers nonsense, is not asked for the next kind.
  if (refused) return {false, Outcome::NoReceiver};
  return {false, lost ? Outcome::LinkLost : Outcome::Refused};
}

Outcome DeviceCommands::Read(DataSet& data) {
  TransferParts parts(desktop_, TransferWay::FromReceiver, {1, 1, 1});
  Outcome outcome = Outcome::Done;
  for (const DataKind kind : AllDataKinds) {
    if (state_.CancelRequested()) break;
    desktop_.SetStatusCaption(messages::Downloading(kind));
    parts.Begin(kind);
    const KindEnd end = ReadKind(data, kind);
    desktop_.SetStatusCaption("");
    if (end.outcome != Outcome::Done) outcome = end.outcome;
    if (!end.go_on) break;
  }
  return state_.CancelRequested() ? Outcome::Cancelled : outcome;
}

/// What came damaged or not at all is no whole copy of what the receiver holds.
DeviceCommands::KindEnd DeviceCommands::ReadKind(DataSet& data, DataKind kind) {
  const TransferEnd end =
      Run([&] { return garmin_.Download(data, kind, state_.Settings().port, TransferMode::Transfer); });
  NoteReport(kind);
  const TransferReport& report = garmin_.Report();
  if (end.result == 0) return EndWithoutRecords();
  if (end.result > 0) {
    const bool whole = report.damaged_records == 0 && report.missing_records == 0 && !report.data_loss;
    return {whole, whole ? Outcome::Done : Outcome::Refused};
  }
  if (end.result == TransferTimedOut) {
    desktop_.ShowMessage(messages::LinkLost);
    return {false, Outcome::LinkLost};
  }
  if (!end.broken_off && report.bad_answer) desktop_.ShowMessage(messages::BadAnswer);
  return {false, TellRefusal() ? Outcome::NoReceiver : Outcome::Refused};
}

/// Whoever repairs dates on the way tells of them.
void DeviceCommands::ExamineDates() {
  dates_.ExamineDownload();
  if (state_.Settings().date_fixing != DateFixing::ByHand || state_.DateRepairs().empty()) return;
  state_.Told().Add(messages::DatesBehind(state_.DateRepairs(), state_.Settings().utc_offset_hours));
  state_.Told().Add(std::string(messages::FixDatesByMenu));
}

/// The kinds that were saved are still there to be copied; they are deleted when all that was wanted has been done.
/// What the download had to tell stays told.
void DeviceCommands::RunAutoSaveAndCopy() {
  UserSettings& settings = state_.Settings();
  if (!settings.auto_save && !settings.auto_copy) return;
  const std::vector<std::string> of_download = state_.Told().Texts();
  settings.chosen_kinds = settings.download_kinds;
  desktop_.ControlsChanged();
  bool all_done = true;
  bool lost = false;
  if (settings.auto_save) {
    all_done = exports_.ExportSelected() == Outcome::Done;
    lost = state_.SomethingLost();
  }
  if (settings.auto_copy) {
    all_done = exports_.CopySelected() == Outcome::Done && all_done;
    lost = lost || state_.SomethingLost();
  }
  state_.SetSomethingLost(lost);
  if (all_done) deletes_.DeleteHandled(messages::NotReadBack);
  if (of_download.empty()) return;
  state_.Told().Prepend(of_download);
  ShowNotices();
}

// ---- The clock

Outcome DeviceCommands::SetClock() {
  return state_.Busy() ? Outcome::Busy : RunIdentified([this] { return dates_.SetReceiverClock(); });
}

// ---- Upload

Outcome DeviceCommands::Upload() {
  return UploadBy([this] { return Send(*ChosenData(state_.Data()), state_.WantedKinds()); });
}

Outcome DeviceCommands::UploadBy(const std::function<Outcome()>& send) {
  if (state_.Busy()) return Outcome::Busy;
  const bool chosen = AnyOf(state_.Settings().chosen_kinds);
  if (!chosen || !state_.AnyLoaded()) {
    desktop_.ShowMessage(chosen ? messages::NothingHeld : messages::NothingToUpload);
    return Outcome::Refused;
  }
  if (state_.NothingChecked()) {
    desktop_.ShowMessage(messages::NothingToUpload);
    return Outcome::Refused;
  }
  state_.Told().Clear();
  state_.SetSomethingLost(false);
  const Outcome outcome = RunIdentified(send);
  if (outcome == Outcome::Done) deletes_.DeleteHandled(messages::CutNotDeleted);
  return outcome;
}

Outcome DeviceCommands::Send(const DataSet& data, const DataKinds& kinds) {
  TransferParts parts(desktop_, TransferWay::ToReceiver, SharesOf(data, kinds));
  Deed deed{Deed::Kind::Sent, 0, {}, {}, {}};
  Outcome outcome = Outcome::Done;
  for (const DataKind kind : AllDataKinds) {
    if (state_.CancelRequested()) break;
    if (!kinds[IndexOf(kind)]) continue;
    desktop_.SetStatusCaption(messages::Uploading(kind));
    parts.Begin(kind);
    const KindEnd end = UploadKind(data, kind);
    desktop_.SetStatusCaption("");
    if (end.outcome != Outcome::Done) outcome = end.outcome;
    if (end.outcome == Outcome::Done) deed.records += RecordCount(data, kind);
    if (!end.go_on) break;
  }
  if (deed.records > 0) state_.Done().Add(std::move(deed));
  ShowNotices();
  return state_.CancelRequested() ? Outcome::Cancelled : outcome;
}

DeviceCommands::KindEnd DeviceCommands::UploadKind(const DataSet& data, DataKind kind) {
  const TransferEnd end = Run([&] { return garmin_.Upload(data, kind, state_.Settings().port); });
  NoteReport(kind);
  return EndOfUpload(kind, end);
}

DeviceCommands::KindEnd DeviceCommands::EndOfUpload(DataKind kind, const TransferEnd& end) {
  const TransferReport report = garmin_.Report();
  if (end.result == TransferTimedOut) {
    desktop_.ShowMessage(messages::LinkLost);
    return {false, Outcome::LinkLost};
  }
  if (end.result == TransferGivenUp && TellRefusal()) return {false, Outcome::NoReceiver};
  // Who has not answered Cancel is not asked how much it holds now.
  if (end.broken_off || report.cancelled) {
    state_.SetReceiverCount(kind, std::nullopt);  // nobody knows what the receiver has taken
    return {false, Outcome::Refused};
  }
  // A record that cannot be sent stops its own kind alone: the receiver was not even asked.
  if (!report.unsendable.empty()) return {true, Outcome::Refused};
  if (end.result == 0) {
    if (const KindEnd without = EndWithoutRecords(); !without.go_on) return without;
  }
  return AskAfterUpload(kind, end.result, report);
}

DeviceCommands::KindEnd DeviceCommands::AskAfterUpload(DataKind kind, std::int32_t result,
                                                       const TransferReport& upload) {
  const Outcome asked = AskCount(kind);
  // Where the link is lost, that has been said.
  if (upload.end_refused && asked != Outcome::LinkLost) state_.Told().Add(messages::EndRefused(kind));
  if (asked != Outcome::Done) return {false, asked};
  const bool all_taken = upload.refused_records == 0 && !upload.end_refused;
  return {result >= 0, result >= 0 && all_taken ? Outcome::Done : Outcome::Refused};
}

}  // namespace walrim
