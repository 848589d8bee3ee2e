// The commands that read data into the data set, wherever they come from.
#include <algorithm>
#include <filesystem>
#include <utility>

#include "app/BusyGuard.h"
#include "app/FileFormat.h"
#include "app/FileStore.h"
#include "app/ImportReport.h"
#include "app/ImportSource.h"
#include "app/PrivateFolder.h"
#include "app/TextImport.h"
#include "app/WalrimMain.h"
#include "data/WaypointValues.h"
#include "device/NameTables.h"
#include "dialogs/MapPoint.h"
#include "text/Numbers.h"
#include "text/Utf8.h"

namespace walrim {

namespace {

constexpr std::string_view UnsupportedMessage = "未対応のファイルです．";
constexpr std::string_view SupportedFiles =
    "標準形式（grc），WPT+形式（txt），MPS形式（mps）のファイルを取り込めます．";
constexpr std::string_view SupportedTexts = "標準形式，WPT+形式，MPS形式の文字列か，地図上の位置を取り込めます．";
constexpr std::string_view EmptyClipboardMessage = "クリップボードにデータがありません．";

/// The refusal of a file or a link, by its name, with what is expected.
std::string UnsupportedFileText(const std::string& name) {
  return std::string(UnsupportedMessage) + "\n" + name + "\n" + std::string(SupportedFiles);
}

/// A pasted text's format as the status line names it, and the ending of the file that it passes through.
struct PastedFormat {
  std::string_view status;
  std::string_view extension;
};

/// The second bracket of WPT+ is full-width, as it always was.
PastedFormat PastedFormatOf(FileFormat format) {
  switch (format) {
    case FileFormat::WptPlus:
      return {"Import From ClipBoard (Wpt+形式）", ".txt"};
    case FileFormat::MapServerScript:
      return {"Import From ClipBoard (MPS形式)", ".mps"};
    default:
      return {"Import From ClipBoard (標準形式)", ".grc"};
  }
}

/// The ending of a link's path, by which scripts are known; without what follows "?" or "#".
std::string EndingOfLink(const std::string& link) {
  const std::string path = link.substr(0, link.find_first_of("?#"));
  return UpperCase(path).ends_with("MPS") ? ".mps" : ".txt";
}

std::string ReadProblemText(const std::string& path, const std::string& detail) {
  return "ファイルを読み込めません：" + path + "（" + detail + "）";
}

}  // namespace

Outcome WalrimMain::FileImport_Click() {
  if (busy_) return Outcome::Busy;
  const std::string path = desktop_.OpenFileDialog(DialogFilter(OutputTypeOfName(controls.OutputTypeOption)));
  if (path == DialogCancelled) return Outcome::Refused;
  return ImportFrom(path);
}

Outcome WalrimMain::ImportFrom(const std::string& path) {
  if (busy_) return Outcome::Busy;
  garmin_.Status().SetCaption("Import from " + path);
  return EndImport(ImportFile(path));
}

Outcome WalrimMain::ImportFiles(const std::vector<std::string>& paths) {
  Outcome outcome = Outcome::Done;
  ImportResult sum;
  for (const std::string& path : paths) {
    const Outcome one = ImportFrom(path);
    if (one != Outcome::Done) outcome = one;
    if (one == Outcome::Busy) return one;
    sum.Add(last_import_);
  }
  last_import_ = sum;
  if (paths.size() > 1) garmin_.Status().SetCaption(ImportReport(sum));
  return outcome;
}

Outcome WalrimMain::EndImport(Outcome outcome) {
  garmin_.Status().SetCaption(outcome == Outcome::Done ? ImportReport(last_import_) : "");
  return outcome;
}

Outcome WalrimMain::ImportFile(const std::string& path) {
  if (busy_) return Outcome::Busy;
  const BusyGuard guard(busy_);
  last_import_ = {};
  return path.empty() ? Outcome::Done : ReadFileIn(path, path);
}

Outcome WalrimMain::ReadFileIn(const std::string& path, const std::string& shown_name) {
  FileProblem problem;
  auto bytes = ReadWholeFile(path, &problem);
  if (!bytes) {
    desktop_.ShowMessage(ReadProblemText(path, problem.detail));
    return Outcome::Refused;
  }
  const std::string text = DecodeOwnedText(std::move(*bytes));
  // Standard input has no name that could tell a script.
  const FileFormat format = path == "-" ? RecognizeText(text) : RecognizeFormat(text, path);
  if (format == FileFormat::Unknown) {
    desktop_.ShowMessage(UnsupportedFileText(path == "-" ? "標準入力" : shown_name));
    return Outcome::Refused;
  }
  ReadTextIn(text, format);
  return Outcome::Done;
}

void WalrimMain::ReadTextIn(const std::string& text, FileFormat format) {
  last_import_ = ReadTextInto(data_, text, format, controls.UTCOffsetNum);
  ShowCounters(last_import_.summary);
}

void WalrimMain::ShowCounters(const ImportSummary& summary) {
  for (const DataKind kind : AllDataKinds) {
    if (summary.Received(kind)) SetGpsNum(kind, std::to_string(data_.Count(kind)));
  }
}

// ---- Texts and links

Outcome WalrimMain::Paste_Click() {
  if (busy_) return Outcome::Busy;
  const std::string text = desktop_.ClipboardText();
  if (text.find_first_not_of(" \t\r\n") == std::string::npos) {
    ClearStatus();
    desktop_.ShowMessage(EmptyClipboardMessage);
    return Outcome::Refused;
  }
  return ImportText(text, "Clip From URL=");
}

Outcome WalrimMain::ImportTyped(const std::string& text) {
  if (busy_) return Outcome::Busy;
  return ImportText(text, "Import from ");
}

Outcome WalrimMain::TakeDrop(const std::vector<std::string>& paths, const std::string& text) {
  if (busy_) return Outcome::Busy;
  const Outcome outcome = paths.empty() ? ImportText(text, "Import from ") : ImportFiles(paths);
  if (outcome != Outcome::Done || !controls.AutoUpload) return outcome;
  return UploadImported();
}

Outcome WalrimMain::ImportText(const std::string& text, std::string_view link_status) {
  const ImportLink link = LinkOf(text);
  switch (link.scheme) {
    case LinkScheme::None:
      return ImportPlainText(text);
    case LinkScheme::Ftp:
      ClearStatus();
      desktop_.ShowMessage(FtpRefusal);
      return Outcome::Refused;
    case LinkScheme::File:
      garmin_.Status().SetCaption(std::string(link_status) + link.link);
      return EndImport(ImportFileLink(link.link));
    case LinkScheme::Http:
    case LinkScheme::Https:
      break;
  }
  garmin_.Status().SetCaption(std::string(link_status) + link.link);
  return EndImport(FetchLink(link.link));
}

Outcome WalrimMain::ImportFileLink(const std::string& link) {
  const LocalPath path = LocalPathOf(link, static_cast<char>(std::filesystem::path::preferred_separator));
  if (!path.refusal.empty()) {
    desktop_.ShowMessage(path.refusal);
    return Outcome::Refused;
  }
  return ImportFile(path.path);
}

/// The answer passes through a temporary file, as everything that is read does.
Outcome WalrimMain::FetchLink(const std::string& link) {
  if (inet_ == nullptr) {
    desktop_.ShowMessage(UnsupportedFileText(link));
    return Outcome::Refused;
  }
  const BusyGuard guard(busy_);
  last_import_ = {};
  cancel_requested_ = false;
  controls.CancelEnabled = true;
  desktop_.ControlsChanged();
  const InetResult answer = inet_->OpenUrl(link);
  controls.CancelEnabled = false;
  desktop_.ControlsChanged();
  cancel_requested_ = false;
  if (answer.cancelled) return Outcome::Cancelled;
  if (!answer.Ok()) {
    desktop_.ShowMessage(answer.error);
    return Outcome::Refused;
  }
  const bool is_script = RecognizeText(answer.bytes) == FileFormat::MapServerScript;
  return ReadThroughFile("TempLink" + (is_script ? ".mps" : EndingOfLink(link)), answer.bytes, link);
}

Outcome WalrimMain::ReadThroughFile(const std::string& name, const std::string& bytes, const std::string& shown_name) {
  const PrivateFolder folder;
  std::string problem = folder.Problem();
  if (problem.empty()) {
    if (const auto failed = WriteWholeFile(folder.File(name), bytes)) problem = failed->detail;
  }
  if (!problem.empty()) {
    desktop_.ShowMessage(WriteProblemText(name, problem));
    return Outcome::Refused;
  }
  return ReadFileIn(folder.File(name), shown_name);
}

Outcome WalrimMain::ImportPlainText(const std::string& whole_text) {
  // What is copied often begins with an empty line.
  const std::string text = whole_text.substr(std::min(whole_text.find_first_not_of("\r\n"), whole_text.size()));
  const FileFormat format = RecognizeText(text);
  if (format == FileFormat::Unknown) return EndImport(ImportPoint(text));
  const PastedFormat pasted = PastedFormatOf(format);
  garmin_.Status().SetCaption(pasted.status);
  const BusyGuard guard(busy_);
  last_import_ = {};
  return EndImport(ReadThroughFile("TempClip" + std::string(pasted.extension), text, "クリップボード"));
}

// ---- A point from a map

Outcome WalrimMain::ImportPoint(const std::string& text) {
  const auto point = RecognizeMapPoint(text);
  if (!point || dialogs_ == nullptr) {
    desktop_.ShowMessage(std::string(UnsupportedMessage) + "\n" + std::string(SupportedTexts));
    return Outcome::Refused;
  }
  clip_.SetNames(NameTablesFor(data_.CurrentWaypointType));
  clip_.SetClip("", ShortestNumber(point->lat_deg), ShortestNumber(point->lon_deg), point->datum, point->ident,
                point->cmnt);
  const BusyGuard guard(busy_);
  last_import_ = {};
  const auto waypoint = dialogs_->ShowClipProAtlas(clip_);
  if (!waypoint) return Outcome::Cancelled;
  if (RetClip(*waypoint) <= 0) return Outcome::Refused;
  last_import_.summary.stored[IndexOf(DataKind::Waypoint)] = 1;
  return Outcome::Done;
}

int WalrimMain::RetClip(const ClipWaypoint& clip) {
  // What the dialog does not ask for is unknown: a height of 0 would be one.
  WaypointValues values;
  values.ident = clip.ident;
  values.lat_deg = clip.lat_deg;
  values.lon_deg = clip.lon_deg;
  values.cmnt = clip.cmnt;
  values.smbl = clip.smbl;
  values.dspl = static_cast<std::uint8_t>(clip.dspl);
  const int slot = data_.AddWaypoint(values);
  if (slot > 0) {
    SetGpsNum(DataKind::Waypoint, std::to_string(data_.Count(DataKind::Waypoint)));
  } else {
    desktop_.ShowMessage(CapacityMessage(DataKind::Waypoint));
  }
  return slot;
}

}  // namespace walrim
