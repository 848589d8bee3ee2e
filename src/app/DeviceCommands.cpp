// The commands that talk to the receiver.
#include <exception>
#include <string>

#include "app/BusyGuard.h"
#include "app/CutTexts.h"
#include "app/WalrimMain.h"
#include "text/Utf8.h"

namespace walrim {

namespace {

constexpr std::string_view LinkLostMessage = "電源が切れたか，コードが外れました．";
constexpr std::string_view NotAcknowledgedMessage = "受信機が要求に応じませんでした．";
constexpr std::string_view NotIdentifiedMessage = "受信機を識別できませんでした．";
constexpr std::string_view BadAnswerMessage = "受信機からの応答が正しくないため，通信を中止しました．";
constexpr std::string_view BadDataMessage = "受信データが異常なため，通信を中止しました．";

/// What helps against damaged records, which a checked link never takes.
constexpr std::string_view CheckedLinkAdvice = "「誤り検査」を「する」にして，もう一度ダウンロードしてください．";

constexpr std::string_view EndRefusedNotice =
    "受信機が転送の終わりを受け取らなかったため，書き込まれていない可能性があります．";

constexpr std::string_view CutNotice = "切って送信した文字列があるため，内部データは削除しませんでした．";

/// The most records that a message lists one by one.
constexpr std::size_t LongestList = 20;

/// A port that was there when the receiver was identified, and is no more: the adapter was pulled between two kinds.
bool PortIsGone(const PortResult& result) {
  return result.problem == PortProblem::Missing || result.problem == PortProblem::Other;
}

/// Which link the transfers use, for the status line.
std::string LinkText(const DeviceSession& session) {
  const std::string text = session.checked_link ? "誤り検査：する" : "誤り検査：しない";
  return session.link_choice == LinkChoice::Automatic ? text + "（自動）" : text;
}

std::string JoinNames(const std::vector<std::string>& names) {
  std::string text;
  for (std::size_t i = 0; i < names.size() && i < LongestList; ++i)
    text += (i > 0 ? "，" : "") + names[i];
  if (names.size() > LongestList) text += "，ほか" + std::to_string(names.size() - LongestList) + "件";
  return text;
}

}  // namespace

void WalrimMain::Cancel_Click() {
  cancel_requested_ = true;
  garmin_.session.TransferAborted = true;
  garmin_.session.cancel_requested = true;
  if (inet_ != nullptr) inet_->Cancel();
}

ProductInfo WalrimMain::IdentifyDevice() {
  StatusLine& status = garmin_.Status();
  status.SetCaption("Initializing Device");
  garmin_.session.link_choice = controls.CheckedLink;
  garmin_.session.TransferAborted = false;
  garmin_.session.cancel_requested = false;
  garmin_.session.report = {};
  damaged_records_came_ = false;
  try {
    device_info_ = garmin_.ConnectDevice(controls.CommPort);
  } catch (const std::exception&) {
    device_info_ = {};
    desktop_.ShowMessage(BadDataMessage);
  }
  status.SetCaption("");
  // Of a receiver that was not waited for nothing is said.
  if (!garmin_.session.report.cancelled) {
    controls.GpsInfo = IdentityText() + " (Pid:" + std::to_string(device_info_.ProductId) + ")";
  }
  desktop_.ControlsChanged();
  if (device_info_.ProductId > 0) status.SetCaption(LinkText(garmin_.session));
  return device_info_;
}

std::string WalrimMain::IdentityText() const {
  if (device_info_.ProductId >= -1 && (device_info_.ProductId != 0 || !garmin_.LastPortResult().Ok())) {
    return WithoutControlCharacters(device_info_.Description);
  }
  return std::string(garmin_.session.report.refused ? NotAcknowledgedMessage : NotIdentifiedMessage);
}

Outcome WalrimMain::OutcomeWithoutReceiver() const {
  if (cancel_requested_) return Outcome::Cancelled;
  return garmin_.LastPortResult().Ok() ? Outcome::NoReceiver : Outcome::Refused;
}

/// Runs one transfer with the abort flag down. An exception ends it as given up, with a message, and failed set.
template <typename Transfer>
std::int32_t WalrimMain::RunTransfer(Transfer transfer, bool& failed) {
  failed = false;
  garmin_.session.TransferAborted = false;
  garmin_.session.cancel_requested = false;
  try {
    return transfer();
  } catch (const std::exception&) {
    failed = true;
    desktop_.ShowMessage(BadDataMessage);
    return TransferGivenUp;
  }
}

void WalrimMain::NoteReport(DataKind kind) {
  const TransferReport& report = garmin_.session.report;
  const std::string name = "(" + std::string(DataKindName(kind)) + ")";
  if (report.damaged_records > 0) {
    damaged_records_came_ = true;
    notices_.push_back(name + "破損した記録が" + std::to_string(report.damaged_records) + "件届きました．" +
                       std::string(CheckedLinkAdvice));
  }
  if (report.missing_records > 0) {
    notices_.push_back(std::string(DataKindName(kind)) + "：" + std::to_string(garmin_.session.RecordsAnnounced) +
                       "件中" + std::to_string(report.missing_records) + "件が届きませんでした．");
  }
  if (report.refused_records > 0) {
    notices_.push_back(name + "受信機が受け取らなかった記録が" + std::to_string(report.refused_records) +
                       "件あります．");
  }
  if (!report.replaced_records.empty()) {
    something_lost_ = true;
    notices_.push_back(name + "受信機にない絵や色を，近いものに替えて送信しました：" +
                       JoinNames(report.replaced_records) + "．");
  }
  if (!report.unsendable.empty()) desktop_.ShowMessage(report.unsendable);
  if (!report.cut_records.empty()) {
    something_lost_ = true;
    desktop_.ShowMessage(name + "長すぎる記録の文字列の末尾を切って送信しました：" + JoinNames(report.cut_records));
  }
}

/// Names and comments that the receiver's fields are too short for were cut without a sign on the line.
void WalrimMain::NoteCutTexts(DataKind kind) {
  const int cut = CountCutTexts(data_, kind, garmin_.session.protocols);
  if (cut == 0) return;
  something_lost_ = true;
  notices_.push_back("(" + std::string(DataKindName(kind)) + ")受信機の欄より長い文字列が" + std::to_string(cut) +
                     "件あり，末尾を切って送信しました．");
}

/// The status line is left empty, or tells what went wrong without a message.
void WalrimMain::ShowNotices() {
  std::string text;
  for (const std::string& notice : notices_)
    text += notice;
  garmin_.Status().SetCaption(text);
}

/// A result of 0 may be an empty receiver, or one that did not take the first packet.
WalrimMain::KindEnd WalrimMain::EndWithoutRecords() {
  const TransferReport& report = garmin_.session.report;
  if (report.port_failed && !PortIsGone(garmin_.LastPortResult())) return {false, Outcome::Refused};
  if (report.no_answer || report.port_failed) {
    desktop_.ShowMessage(LinkLostMessage);
    return {false, Outcome::LinkLost};
  }
  if (report.not_acknowledged) {
    desktop_.ShowMessage(NotAcknowledgedMessage);
    return {false, Outcome::NoReceiver};
  }
  return {};
}

// ---- Get GPS info

void WalrimMain::AskCount(DataKind kind, Outcome& outcome) {
  std::string& count_text = controls.GpsDataNum[IndexOf(kind)];
  bool failed = false;
  const std::int32_t count =
      RunTransfer([&] { return garmin_.Download(kind, controls.CommPort, TransferMode::CountOnly); }, failed);
  if (count <= 0) count_text.clear();
  if (count == TransferTimedOut) {
    desktop_.ShowMessage(LinkLostMessage);
    outcome = Outcome::LinkLost;
  } else if (count < 0) {
    if (!failed && garmin_.session.report.bad_answer) desktop_.ShowMessage(BadAnswerMessage);
    outcome = cancel_requested_ ? Outcome::Cancelled : Outcome::Refused;
    if (TellRefusal()) outcome = Outcome::NoReceiver;
  } else if (garmin_.session.report.cancelled && count == 0) {
    outcome = Outcome::Cancelled;
  } else if (const KindEnd end = EndWithoutRecords(); !end.go_on) {
    outcome = end.outcome;
  } else {
    count_text = std::to_string(count);
  }
  desktop_.ControlsChanged();
}

Outcome WalrimMain::Get_GpsInfo_Click() {
  if (busy_) return Outcome::Busy;
  Outcome outcome = Outcome::Done;
  {
    const BusyGuard guard(busy_);
    SetCancelEnabled(true);
    outcome = IdentifyDevice().ProductId > 0 ? AskCounts() : OutcomeWithoutReceiver();
    SetCancelEnabled(false);
  }
  if (outcome != Outcome::Done || !controls.AutoDownload) return outcome;
  controls.DownCheck.fill(true);
  desktop_.ControlsChanged();
  return GpsDownLoad_Click();
}

Outcome WalrimMain::AskCounts() {
  for (const DataKind kind : AllDataKinds)
    controls.GpsDataNum[IndexOf(kind)].clear();
  desktop_.ControlsChanged();
  Outcome outcome = Outcome::Done;
  for (const DataKind kind : AllDataKinds) {
    if (cancel_requested_) break;
    garmin_.Status().SetCaption("Get Data Num of " + std::string(DataKindName(kind)));
    AskCount(kind, outcome);
    if (outcome != Outcome::Done) break;
  }
  garmin_.Status().SetCaption("");
  return cancel_requested_ ? Outcome::Cancelled : outcome;
}

/// Cancel can be pressed from here on, or no longer.
void WalrimMain::SetCancelEnabled(bool enabled) {
  cancel_requested_ = false;
  controls.CancelEnabled = enabled;
  desktop_.ControlsChanged();
}

// ---- Download

Outcome WalrimMain::GpsDownLoad_Click() {
  if (busy_) return Outcome::Busy;
  if (!AnyChecked(controls.DownCheck)) {
    desktop_.ShowMessage("DownLoadするDataSetが選択されていません．");
    return Outcome::Refused;
  }
  Outcome outcome = Outcome::Done;
  {
    const BusyGuard guard(busy_);
    notices_.clear();
    SetCancelEnabled(true);
    outcome = IdentifyDevice().ProductId > 0 ? DownloadSelected() : OutcomeWithoutReceiver();
    ShowNotices();
    SetCancelEnabled(false);
  }
  if (outcome == Outcome::Done) RunAutoSaveAndCopy();
  return outcome;
}

Outcome WalrimMain::DownloadSelected() {
  Outcome outcome = Outcome::Done;
  for (const DataKind kind : AllDataKinds) {
    if (cancel_requested_) return Outcome::Cancelled;
    if (!controls.DownCheck[IndexOf(kind)] || controls.GpsDataNum[IndexOf(kind)] == "0") continue;
    if (loaded_[IndexOf(kind)] && !desktop_.AskYesNo("現在の内部データ(" + std::string(DataKindName(kind)) +
                                                     ")は上書きされます．よろしいですか？")) {
      continue;
    }
    const KindEnd end = DownloadKind(kind);
    if (end.outcome != Outcome::Done) outcome = end.outcome;
    if (cancel_requested_) return Outcome::Cancelled;
    if (!end.go_on) break;
  }
  return outcome;
}

WalrimMain::KindEnd WalrimMain::DownloadKind(DataKind kind) {
  garmin_.Status().SetCaption("DownLoading : " + std::string(DataKindName(kind)));
  bool failed = false;
  const std::int32_t result =
      RunTransfer([&] { return garmin_.Download(kind, controls.CommPort, TransferMode::Transfer); }, failed);
  NoteReport(kind);
  if (result > 0) {
    loaded_[IndexOf(kind)] = true;
    SetGpsNum(kind, std::to_string(result));
    return {};
  }
  if (result == 0) return EndWithoutRecords();
  const bool lost = result == TransferTimedOut;
  if (lost) desktop_.ShowMessage(LinkLostMessage);
  if (!failed && garmin_.session.report.bad_answer) desktop_.ShowMessage(BadAnswerMessage);
  const bool refused = TellRefusal();
  EmptyKind(kind);
  // Who has stopped answering, or answers nonsense, is not asked for the next kind.
  if (refused) return {false, Outcome::NoReceiver};
  return {false, lost ? Outcome::LinkLost : Outcome::Refused};
}

/// Whether the receiver refused a packet of the checked link to the end; then that is told.
bool WalrimMain::TellRefusal() {
  const TransferReport& report = garmin_.session.report;
  if (report.refused) desktop_.ShowMessage(NotAcknowledgedMessage);
  return report.refused;
}

/// The kinds that were saved are still there to be copied; they are deleted when all that was wanted has been done.
/// What the download had to tell stays told.
void WalrimMain::RunAutoSaveAndCopy() {
  const std::vector<std::string> of_download = notices_;
  if (!controls.AutoSave && !controls.AutoCopy) return;
  bool all_done = true;
  controls.DoCheck = controls.DownCheck;
  desktop_.ControlsChanged();
  bool lost = false;
  if (controls.AutoSave) {
    all_done = ExportSelected() == Outcome::Done;
    lost = something_lost_;
  }
  if (controls.AutoCopy) {
    all_done = CopySelected() == Outcome::Done && all_done;
    lost = lost || something_lost_;
  }
  something_lost_ = lost;
  if (all_done) DeleteHandled(NotReadBackNotice);
  if (of_download.empty()) return;
  notices_.insert(notices_.begin(), of_download.begin(), of_download.end());
  ShowNotices();
}

// ---- Upload

Outcome WalrimMain::GpsUpLoad_Click() {
  if (busy_) return Outcome::Busy;
  if (!AnyChecked(controls.DoCheck)) {
    desktop_.ShowMessage("UpLoadするDataSetが選択されていません．");
    return Outcome::Refused;
  }
  if (!AnyLoaded()) {
    desktop_.ShowMessage("内部データがありません．");
    return Outcome::Refused;
  }
  Outcome outcome = Outcome::Done;
  {
    const BusyGuard guard(busy_);
    notices_.clear();
    something_lost_ = false;
    SetCancelEnabled(true);
    outcome = IdentifyDevice().ProductId > 0 ? UploadSelected() : OutcomeWithoutReceiver();
    ShowNotices();
    SetCancelEnabled(false);
  }
  if (outcome == Outcome::Done) DeleteHandled(CutNotice);
  return outcome;
}

Outcome WalrimMain::UploadSelected() {
  Outcome outcome = Outcome::Done;
  for (const DataKind kind : AllDataKinds) {
    if (cancel_requested_) return Outcome::Cancelled;
    if (!controls.DoCheck[IndexOf(kind)] || !loaded_[IndexOf(kind)]) continue;
    garmin_.Status().SetCaption("UpLoading : " + std::string(DataKindName(kind)));
    const KindEnd end = UploadKind(kind);
    garmin_.Status().SetCaption("");
    if (end.outcome != Outcome::Done) outcome = end.outcome;
    if (cancel_requested_) return Outcome::Cancelled;
    if (!end.go_on) break;
  }
  return outcome;
}

WalrimMain::KindEnd WalrimMain::UploadKind(DataKind kind) {
  bool failed = false;
  const std::int32_t result = RunTransfer([&] { return garmin_.Upload(kind, controls.CommPort); }, failed);
  const bool end_refused = garmin_.session.report.end_refused;
  const bool all_taken = garmin_.session.report.refused_records == 0 && !end_refused;
  NoteReport(kind);
  NoteCutTexts(kind);
  if (result == TransferTimedOut) {
    desktop_.ShowMessage(LinkLostMessage);
    return {false, Outcome::LinkLost};
  }
  if (result == TransferGivenUp && TellRefusal()) return {false, Outcome::NoReceiver};
  // Who has not answered Cancel is not asked how much it holds now.
  if (failed || garmin_.session.report.cancelled) {
    controls.GpsDataNum[IndexOf(kind)].clear();  // nobody knows what the receiver has taken
    return {false, Outcome::Refused};
  }
  // A record that cannot be sent stops its own kind alone: the receiver was not even asked.
  if (!garmin_.session.report.unsendable.empty()) return {true, Outcome::Refused};
  if (result == 0) {
    if (const KindEnd end = EndWithoutRecords(); !end.go_on) return end;
  }
  Outcome asked = Outcome::Done;
  AskCount(kind, asked);
  // Where the link is lost, that has been said.
  if (end_refused && asked != Outcome::LinkLost) {
    notices_.push_back("(" + std::string(DataKindName(kind)) + ")" + std::string(EndRefusedNotice));
  }
  if (asked != Outcome::Done) return {false, asked};
  return {result >= 0, result >= 0 && all_taken ? Outcome::Done : Outcome::Refused};
}

}  // namespace walrim
