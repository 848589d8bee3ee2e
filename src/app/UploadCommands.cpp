#include "app/UploadCommands.h"

#include <set>
#include <utility>

#include "app/FileStore.h"
#include "app/Messages.h"
#include "formats/Format.h"
#include "preflight/Sending.h"
#include "records/Chosen.h"
#include "text/Cp932.h"
#include "text/TextOutput.h"

namespace walrim {

namespace {

/// A data set as a standard file, in Shift-JIS: all that came from a receiver has a place in it.
std::string StandardText(const DataSet& data, int utc_offset_hours, const CivilTime& now) {
  WriteSettings settings;
  settings.utc_offset_hours = utc_offset_hours;
  settings.with_header = true;
  settings.now = now;
  std::string text;
  TextOutput out([&text](const std::string& lines) { text += lines; });
  static_cast<void>(FormatOf(FormatId::Standard).write(out, data, settings));
  out.Flush();
  return EncodeCp932(text).value_or(text);
}

bool SameRecords(const DataSet& a, const DataSet& b) {
  return a.Waypoints() == b.Waypoints() && a.Routes() == b.Routes() && a.Logs() == b.Logs();
}

/// Of waypoints that one data set has more than the other.
std::vector<std::string> NamesBeyond(const DataSet& held, const DataSet& known) {
  std::set<std::string> names;
  for (const Waypoint& waypoint : known.Waypoints())
    names.insert(HeldName(waypoint.ident));
  std::vector<std::string> beyond;
  for (const Waypoint& waypoint : held.Waypoints()) {
    if (names.insert(HeldName(waypoint.ident)).second) beyond.push_back(HeldName(waypoint.ident));
  }
  return beyond;
}

}  // namespace

Outcome UploadCommands::Upload(const UploadCare& care) {
  plan_ = {};
  sent_ = {};
  differences_.clear();
  compared_ = false;
  if (!care.check && FileExists(care.backup) && !desktop_.AskOkCancel(messages::OverwriteQuestion(care.backup))) {
    return Outcome::Refused;
  }
  return device_.UploadBy([this, &care] { return Run(care); });
}

Outcome UploadCommands::Run(const UploadCare& care) {
  plan_.data = *ChosenData(state_.Data());
  plan_.kinds = state_.WantedKinds();
  plan_.to = {garmin_.Protocols(), LimitsOf(device_.Identified().description), garmin_.CheckedLinkInUse()};
  if (!care.backup.empty()) {
    const Outcome asked = care.check ? AskReceiver() : SaveBackup(care.backup);
    if (asked != Outcome::Done) return asked;
  }
  FindFindings();
  if (care.check) return Outcome::Done;
  if (const Outcome decided = Decide(care); decided != Outcome::Done) return decided;
  sent_ = std::move(plan_.data);
  plan_.data = *ChosenData(state_.Data());
  names_.Remember(plan_.data, sent_);
  const Outcome outcome = device_.Send(sent_, plan_.kinds);
  if (outcome != Outcome::Done || !care.verify) return outcome;
  DataSet held;
  return CompareWithReceiver(held);
}

void UploadCommands::FindFindings() {
  plan_.findings = FindingsOf(plan_.data, plan_.kinds, plan_.before, plan_.to, Lookup());
}

Outcome UploadCommands::AskReceiver() {
  DataSet held;
  const Outcome outcome = device_.Read(held);
  if (outcome != Outcome::Done) return outcome;
  plan_.before = std::move(held);
  plan_.receiver_asked = true;
  return Outcome::Done;
}

Outcome UploadCommands::Decide(const UploadCare& care) {
  if (care.fit) {
    if (!ProposalsOf(plan_.findings).empty()) state_.SetSomethingLost(true);
    plan_.data = Fitted(plan_.data, plan_.kinds, plan_.before, plan_.to, Lookup());
    return Outcome::Done;
  }
  // Who asked for what the receiver holds is told that nothing would be lost, too.
  bool again = false;
  while (review_ != nullptr && (again || !plan_.findings.empty())) {
    switch (review_->Review(plan_)) {
      case UploadDecision::Send:
        if (!SameRecords(plan_.data, *ChosenData(state_.Data()))) state_.SetSomethingLost(true);
        return Outcome::Done;
      case UploadDecision::Back:
        return Outcome::Cancelled;
      case UploadDecision::AskReceiver:
        break;
    }
    if (const Outcome asked = AskReceiver(); asked != Outcome::Done) return asked;
    FindFindings();
    again = true;
  }
  return Outcome::Done;
}

Outcome UploadCommands::SaveBackup(const std::string& path) {
  if (const Outcome asked = AskReceiver(); asked != Outcome::Done) {
    desktop_.ShowMessage(messages::NoBackup);
    return asked;
  }
  FileWriter file(path);
  file.Add(StandardText(plan_.before, state_.Settings().utc_offset_hours, clock_.LocalTime()));
  if (const auto problem = file.Finish()) {
    desktop_.ShowMessage(messages::WriteProblem(path, problem->detail));
    return Outcome::Refused;
  }
  backup_ = plan_.before;
  has_backup_ = true;
  backup_kinds_ = plan_.kinds;
  for (const DataKind kind : AllDataKinds)
    backup_kinds_[IndexOf(kind)] = backup_kinds_[IndexOf(kind)] && backup_.Holds(kind);
  desktop_.SetStatusCaption(messages::BackupSaved(path));
  return Outcome::Done;
}

Outcome UploadCommands::CompareWithReceiver(DataSet& held) {
  const Outcome outcome = device_.Read(held);
  if (outcome != Outcome::Done) {
    desktop_.ShowMessage(messages::NotCompared);
    return outcome;
  }
  differences_ = Compare(sent_, plan_.kinds, held, plan_.before, plan_.to);
  compared_ = true;
  if (!differences_.empty()) state_.SetSomethingLost(true);
  return Outcome::Done;
}

Outcome UploadCommands::SendBackup() {
  if (!has_backup_) return Outcome::Refused;
  if (state_.Busy()) return Outcome::Busy;
  return device_.RunIdentified([this] { return RunBackup(); });
}

Outcome UploadCommands::RunBackup() {
  plan_ = {};
  plan_.kinds = backup_kinds_;
  plan_.to = {garmin_.Protocols(), LimitsOf(device_.Identified().description), garmin_.CheckedLinkInUse()};
  sent_ = backup_;
  differences_.clear();
  compared_ = false;
  if (const Outcome outcome = device_.Send(sent_, plan_.kinds); outcome != Outcome::Done) return outcome;
  DataSet held;
  if (const Outcome outcome = CompareWithReceiver(held); outcome != Outcome::Done) return outcome;
  beyond_backup_ = NamesBeyond(held, backup_);
  desktop_.SetStatusCaption(messages::BackupSent(beyond_backup_));
  return Outcome::Done;
}

}  // namespace walrim
