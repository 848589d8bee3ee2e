#include "app/ImportCommands.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <utility>

#include "app/ImportLink.h"
#include "app/Messages.h"
#include "dialogs/MapPoint.h"
#include "text/Scan.h"

namespace walrim {

namespace {

/// The path in a link, by whose ending scripts are known; without what follows "?" or "#".
std::string_view PathOfLink(std::string_view link) {
  return link.substr(0, link.find_first_of("?#"));
}

bool HoldsPosition(std::string_view link) {
  return RecognizeMapPoint(link) || LeadsOffGlobe(link);
}

}  // namespace

ImportCommands::ImportCommands(ProgramState& state, const Garmin& garmin, DateCommands& dates, Desktop& desktop,
                               Dialogs* dialogs, Inet* inet)
    : state_(state), garmin_(garmin), dates_(dates), desktop_(desktop), dialogs_(dialogs), inet_(inet) {}

void ImportCommands::Cancel() {
  if (inet_ != nullptr) inet_->Cancel();
}

// ---- Files

Outcome ImportCommands::ImportChosen() {
  if (state_.Busy()) return Outcome::Busy;
  const auto path = desktop_.OpenFileDialog(OpenDialogFilter(FormatOf(state_.Settings().format)));
  return path ? ImportFrom(*path) : Outcome::Refused;
}

Outcome ImportCommands::ImportFrom(const std::string& path) {
  if (state_.Busy()) return Outcome::Busy;
  desktop_.SetStatusCaption(std::string(messages::ImportFrom) + path);
  return ShowResult(ImportFile(path));
}

Outcome ImportCommands::ImportFiles(const std::vector<std::string>& paths) {
  const UndoStep step(state_, StepKind::Import);
  Outcome outcome = Outcome::Done;
  ImportResult sum;
  for (const std::string& path : paths) {
    const Outcome one = ImportFrom(path);
    if (one != Outcome::Done) outcome = one;
    if (one == Outcome::Busy) return one;
    sum.Add(last_import_);
  }
  last_import_ = sum;
  if (paths.size() > 1) desktop_.SetStatusCaption(ReportText(sum));
  return outcome;
}

Outcome ImportCommands::ImportFile(const std::string& path) {
  if (state_.Busy()) return Outcome::Busy;
  const BusyGuard guard(state_);
  const UndoStep step(state_, StepKind::Import);
  last_import_ = {};
  if (path.empty()) return Outcome::Done;
  ImportText text = ImportText::OfFile(path);
  if (text.Problem()) return Refuse(messages::ReadProblem(path, text.Problem()->detail));
  // Standard input has no name that could tell a script.
  const bool has_name = path != StandardStream;
  const Format* format = RecognizeFormat(text.Beginning(), has_name ? std::string_view(path) : std::string_view());
  const Outcome outcome = Read(std::move(text), format, has_name ? std::string_view(path) : messages::StandardInput);
  if (outcome == Outcome::Done && has_name) desktop_.FileUsed(path);
  return outcome;
}

/// A file that breaks off the second time it is read leaves what came until then.
Outcome ImportCommands::Read(ImportText text, const Format* format, std::string_view shown_name) {
  if (format == nullptr) return Refuse(messages::UnsupportedFile(shown_name));
  LineSource lines = text.Lines();
  const RecordCounts held_before = CountsOf(state_.Data());
  DataKinds held{};
  for (const DataKind kind : AllDataKinds)
    held[IndexOf(kind)] = state_.Data().Holds(kind);
  last_import_ = format->read(lines, state_.Data(), {state_.Settings().utc_offset_hours});
  if (!last_import_.refusal.empty()) return Refuse(messages::RefusedFile(shown_name, last_import_.refusal));
  dates_.ExamineFile(held_before[IndexOf(DataKind::TrackLog)], text.Modified());
  const bool in_file = text.Modified() && !text.Problem();
  for (const DataKind kind : AllDataKinds) {
    if (!last_import_.Received(kind)) continue;
    state_.SetHeldCount(kind, static_cast<int>(state_.Data().Count(kind)));
    state_.SetInFile(kind, in_file && !held[IndexOf(kind)]);
  }
  NoteDeed(held_before);
  return text.Problem() ? Refuse(messages::ReadProblem(shown_name, text.Problem()->detail)) : Outcome::Done;
}

void ImportCommands::NoteDeed(const RecordCounts& held_before) {
  Deed deed;
  for (const DataKind kind : AllDataKinds) {
    deed.records += static_cast<std::size_t>(last_import_.stored[IndexOf(kind)]);
    deed.kinds[IndexOf(kind)] = last_import_.Received(kind);
  }
  deed.held_before = held_before;
  if (state_.KeepsSteps()) deed.already_held = DuplicatesBehind(state_.Data(), held_before);
  if (deed.records > 0) state_.Done().Add(std::move(deed));
}

/// With the dates that are behind, where they are repaired by a command of its own.
std::string ImportCommands::ReportText(const ImportResult& result) const {
  const std::string text = messages::ImportReport(result);
  const bool logs = result.stored[IndexOf(DataKind::TrackLog)] > 0;
  if (!logs || state_.DateRepairs().empty()) return text;
  return text + messages::DatesBehind(state_.DateRepairs(), state_.Settings().utc_offset_hours) +
         std::string(messages::FixDatesByMenu);
}

Outcome ImportCommands::ShowResult(Outcome outcome) {
  desktop_.SetStatusCaption(outcome == Outcome::Done ? ReportText(last_import_) : "");
  return outcome;
}

Outcome ImportCommands::Refuse(std::string_view message) {
  desktop_.ShowMessage(message);
  return Outcome::Refused;
}

// ---- Texts and links

Outcome ImportCommands::Paste() {
  if (state_.Busy()) return Outcome::Busy;
  const UndoStep step(state_, StepKind::Paste);
  const std::string text = desktop_.ClipboardText();
  if (!TrimSpace(text).empty()) return ImportTextOrLink(text, messages::ClipFrom);
  if (!desktop_.StatusCaption().empty()) desktop_.SetStatusCaption("");
  return Refuse(messages::EmptyClipboard);
}

Outcome ImportCommands::ImportTyped(const std::string& text) {
  if (state_.Busy()) return Outcome::Busy;
  const UndoStep step(state_, StepKind::Import);
  return ImportTextOrLink(text, messages::ImportFrom);
}

Outcome ImportCommands::ImportTextOrLink(const std::string& text, std::string_view link_status) {
  const ImportLink link = LinkOf(text);
  switch (link.scheme) {
    case LinkScheme::None:
      return ImportPlainText(text);
    case LinkScheme::Ftp:
      if (!desktop_.StatusCaption().empty()) desktop_.SetStatusCaption("");
      return Refuse(messages::FtpRefused);
    case LinkScheme::File:
      desktop_.SetStatusCaption(std::string(link_status) + link.link);
      return ShowResult(ImportFileLink(link.link));
    case LinkScheme::Http:
    case LinkScheme::Https:
      // The address of a map's page says where it is: nobody has to be asked.
      if (HoldsPosition(link.link)) return ShowResult(ImportPoint(link.link));
      break;
  }
  desktop_.SetStatusCaption(std::string(link_status) + link.link);
  return ShowResult(FetchLink(link.link));
}

Outcome ImportCommands::ImportFileLink(const std::string& link) {
  const LocalPath path = LocalPathOf(link, static_cast<char>(std::filesystem::path::preferred_separator));
  return path.refusal.empty() ? ImportFile(path.path) : Refuse(path.refusal);
}

Outcome ImportCommands::FetchLink(const std::string& link) {
  if (inet_ == nullptr) return Refuse(messages::UnsupportedFile(link));
  const BusyGuard guard(state_);
  last_import_ = {};
  state_.SetCancelEnabled(true);
  InetResult answer = inet_->OpenUrl(link);
  state_.SetCancelEnabled(false);
  if (answer.cancelled) return Outcome::Cancelled;
  if (!answer.Ok()) return Refuse(answer.error);
  ImportText text = ImportText::OfBytes(std::move(answer.bytes));
  const Format* format = RecognizeFormat(text.Beginning(), PathOfLink(link));
  if (format == nullptr) format = RecognizeFormat(text.Beginning());
  return Read(std::move(text), format, link);
}

/// What is copied often begins with an empty line.
Outcome ImportCommands::ImportPlainText(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of("\r\n"), text.size()));
  const Format* format = RecognizeFormat(text);
  if (format == nullptr) return ShowResult(ImportPoint(text));
  desktop_.SetStatusCaption(format->paste_status);
  const BusyGuard guard(state_);
  last_import_ = {};
  return ShowResult(Read(ImportText::OfUtf8(std::string(text)), format, {}));
}

// ---- A point from a map

Outcome ImportCommands::ImportPoint(std::string_view text) {
  const auto point = RecognizeMapPoint(text);
  if (LeadsOffGlobe(text)) return Refuse(messages::OffGlobe);
  if (!point || dialogs_ == nullptr) return Refuse(messages::UnsupportedText());
  ShowClip(*point, garmin_.Protocols().waypoint, clip_);
  clip_.is_new = false;
  return AskForPoint();
}

Outcome ImportCommands::NewWaypoint(const std::optional<MapPlace>& place) {
  if (state_.Busy()) return Outcome::Busy;
  if (dialogs_ == nullptr) return Outcome::Refused;
  const UndoStep step(state_, StepKind::NewRecord);
  const MapPlace at = place.value_or(MapPlace{});
  ShowClip({at.lat_deg, at.lon_deg, Datum::Wgs84, {}, {}}, garmin_.Protocols().waypoint, clip_);
  clip_.is_new = true;
  // Without a place there is none to begin with.
  if (!place) clip_.lat = clip_.lon = "";
  return AskForPoint();
}

Outcome ImportCommands::AskForPoint() {
  const BusyGuard guard(state_);
  last_import_ = {};
  const auto waypoint = dialogs_->ShowClipProAtlas(clip_);
  return waypoint ? TakePoint(*waypoint) : Outcome::Cancelled;
}

/// What the dialog does not ask for is unknown: a height of 0 would be one.
Outcome ImportCommands::TakePoint(const ClipWaypoint& clip) {
  const RecordCounts held_before = CountsOf(state_.Data());
  Waypoint waypoint;
  waypoint.ident = UpperCase(clip.ident);
  waypoint.cmnt = UpperCase(clip.cmnt);
  waypoint.lat_deg = clip.lat_deg;
  waypoint.lon_deg = clip.lon_deg;
  waypoint.smbl = static_cast<std::uint16_t>(clip.smbl);
  waypoint.dspl = static_cast<std::uint8_t>(clip.dspl);
  if (state_.Data().Add(std::move(waypoint)) != AddResult::Stored) {
    return Refuse(messages::KindFull(DataKind::Waypoint));
  }
  state_.SetHeldCount(DataKind::Waypoint, static_cast<int>(state_.Data().Count(DataKind::Waypoint)));
  last_import_.stored[IndexOf(DataKind::Waypoint)] = 1;
  NoteDeed(held_before);
  return Outcome::Done;
}

}  // namespace walrim
