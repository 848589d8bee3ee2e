// The commands that write the data set: to a file, or to the clipboard.
#include <algorithm>
#include <filesystem>
#include <system_error>

#include "app/BusyGuard.h"
#include "app/FileStore.h"
#include "app/WalrimMain.h"
#include "device/NameTables.h"
#include "text/Cp932.h"
#include "text/Numbers.h"

namespace walrim {

namespace {

constexpr std::array<std::string_view, DataKindCount> ExportStatus{"Export Wpt[", "Export Rte[", "Export Trk["};
/// Records between two turns of the event loop.
constexpr int RecordsPerYield = 64;

/// "yyyymmdd_hhnnss"
std::string StampOf(const CivilTime& time) {
  return PadNumber(time.year, 4) + PadNumber(time.month, 2) + PadNumber(time.day, 2) + "_" + PadNumber(time.hour, 2) +
         PadNumber(time.minute, 2) + PadNumber(time.second, 2);
}

/// Byte offset of the character with an index.
std::size_t OffsetOf(std::string_view utf8, std::size_t index) {
  std::size_t offset = 0;
  for (std::size_t seen = 0; offset < utf8.size(); ++offset) {
    const bool begins_character = (static_cast<unsigned char>(utf8[offset]) & 0xC0U) != 0x80U;
    if (begins_character && seen++ == index) break;
  }
  return offset;
}

/// A line's number and its beginning, to find the record by.
std::string DescribeRecord(std::string_view text, std::size_t offset) {
  const auto line_number = std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(offset), '\n') + 1;
  std::size_t begin = text.rfind('\n', offset);
  begin = begin == std::string_view::npos ? 0 : begin + 1;
  const std::string_view line = text.substr(begin, text.find('\r', begin) - begin);
  const std::string tag(line.substr(0, line.find('\t')));
  const std::size_t value = line.find("=\"");
  std::string name;
  if (value != std::string_view::npos) name = line.substr(value + 2, line.find('"', value + 2) - value - 2);
  return std::to_string(line_number) + "行目の" + tag + "「" + name + "」";
}

/// Numbers are written without commas, so that one stands inside a text.
int LinesWithComma(std::string_view text) {
  int lines = 0;
  for (std::size_t at = text.find(','); at != std::string_view::npos; at = text.find(',', text.find('\n', at)))
    ++lines;
  return lines;
}

}  // namespace

std::string OverwriteQuestion(std::string_view path) {
  return "このファイル（" + std::string(path) + ")は存在します．上書きしますか？";
}

std::string WriteProblemText(std::string_view path, std::string_view detail) {
  return "ファイルに書き込めません：" + std::string(path) + "（" + std::string(detail) + "）";
}

bool WalrimMain::SomethingToWrite() {
  if (!AnyLoaded()) {
    desktop_.ShowMessage("DataSetがDownLoadされていません．");
    return false;
  }
  if (!AnyChecked(controls.DoCheck)) {
    desktop_.ShowMessage("DataSetが選択されていません．");
    return false;
  }
  return true;
}

void WalrimMain::AppendStandardText(std::string& text) {
  StandardWriter writer(data_, AllNameTables(), {controls.DegreeType, controls.Datum, controls.UTCOffsetNum});
  int written = 0;
  for (const DataKind kind : AllDataKinds) {
    if (!controls.DoCheck[IndexOf(kind)] || !loaded_[IndexOf(kind)]) continue;
    writer.AppendKind(text, kind, controls.WithHeader, [&](DataKind of, int number, int count) {
      garmin_.Status().SetCaption(std::string(ExportStatus[IndexOf(of)]) + std::to_string(number) + "/" +
                                  std::to_string(count) + "]");
      if (++written % RecordsPerYield == 0) event_loop_.Yield();
    });
  }
}

std::string WalrimMain::BuildText() {
  std::string text;
  AppendStandardText(text);
  if (text.empty()) desktop_.ShowMessage("保存するデータがありません．");
  if (const int lines = LinesWithComma(text); lines > 0) {
    notices_.push_back("コンマを含む文字列が" + std::to_string(lines) +
                       "件あります．このファイルを読み込むと，そこで切れます．");
  }
  return text;
}

std::optional<std::string> WalrimMain::EncodeText(const std::string& text) {
  if (controls.Encoding == TextEncoding::Utf8) return text;
  UnencodableCharacter lacking;
  if (auto bytes = EncodeCp932(text, &lacking)) return bytes;
  const std::string where = DescribeRecord(text, OffsetOf(text, lacking.index));
  if (!desktop_.AskYesNo(where + "の文字「" + lacking.utf8 + "」はShift-JISでは表せません．UTF-8で保存しますか？")) {
    return std::nullopt;
  }
  return text;
}

Outcome WalrimMain::FileExport_Click() {
  if (busy_) return Outcome::Busy;
  if (!SomethingToWrite()) return Outcome::Refused;
  Outcome outcome = Outcome::Done;
  {
    const BusyGuard guard(busy_);
    std::string base_name;
    if (controls.AutoFileName) {
      std::error_code error;
      base_name = (std::filesystem::current_path(error) / StampOf(clock_.LocalTime())).string();
    }
    outcome = ExportRoutine(base_name);
    garmin_.Status().SetCaption("");
  }
  // Only what was really written may go.
  if (outcome == Outcome::Done && controls.AutoDelete) Delete_Click();
  return outcome;
}

Outcome WalrimMain::ExportRoutine(const std::string& base_name) {
  const OutputType& type = OutputTypeOfName(controls.OutputTypeOption);
  if (!base_name.empty()) return ExportTo(base_name + "." + std::string(type.extension));
  const std::string path = desktop_.SaveFileDialog(DialogFilter(type));
  if (path == DialogCancelled) return Outcome::Refused;
  return ExportTo(path);
}

Outcome WalrimMain::ExportTo(const std::string& path) {
  StatusLine& status = garmin_.Status();
  status.SetCaption("Export to " + path);
  if (FileExists(path) && !desktop_.AskOkCancel(OverwriteQuestion(path))) {
    status.SetCaption("");
    return Outcome::Refused;
  }
  const Outcome outcome = WriteText(path, BuildText());
  status.SetCaption("");
  return outcome;
}

Outcome WalrimMain::WriteText(const std::string& path, const std::string& text) {
  if (text.empty()) {
    desktop_.ShowMessage("DatasetがDownLoadされていません．");
    return Outcome::Refused;
  }
  const auto bytes = EncodeText(text);
  if (!bytes) return Outcome::Refused;
  if (const auto problem = WriteWholeFile(path, *bytes)) {
    desktop_.ShowMessage(WriteProblemText(path, problem->detail));
    return Outcome::Refused;
  }
  return Outcome::Done;
}

Outcome WalrimMain::Copy_Click() {
  if (busy_) return Outcome::Busy;
  if (!SomethingToWrite()) return Outcome::Refused;
  bool copied = false;
  {
    const BusyGuard guard(busy_);
    const std::string text = BuildText();
    garmin_.Status().SetCaption("");
    if (text.empty()) {
      desktop_.ShowMessage("DatasetがDownLoadされていません．");
    } else {
      desktop_.SetClipboardText(text);
      copied = true;
    }
  }
  if (copied && controls.AutoDelete) Delete_Click();
  return copied ? Outcome::Done : Outcome::Refused;
}

}  // namespace walrim
