// The commands that write the data set: to a file, or to the clipboard.
#include <algorithm>
#include <filesystem>
#include <system_error>

#include "app/BusyGuard.h"
#include "app/FileStore.h"
#include "app/ReadBack.h"
#include "app/WalrimMain.h"
#include "text/Cp932.h"
#include "text/Numbers.h"
#include "text/Utf8.h"

namespace walrim {

namespace {

/// "yyyymmdd_hhnnss"
std::string StampOf(const CivilTime& time) {
  return PadNumber(time.year, 4) + PadNumber(time.month, 2) + PadNumber(time.day, 2) + "_" + PadNumber(time.hour, 2) +
         PadNumber(time.minute, 2) + PadNumber(time.second, 2);
}

/// Characters of a line that a message quotes.
constexpr std::size_t LongestQuote = 40;

/// Byte offset of the character with an index.
std::size_t OffsetOf(std::string_view utf8, std::size_t index) {
  std::size_t offset = 0;
  for (std::size_t seen = 0; offset < utf8.size(); ++offset) {
    const bool begins_character = (static_cast<unsigned char>(utf8[offset]) & 0xC0U) != 0x80U;
    if (begins_character && seen++ == index) break;
  }
  return offset;
}

std::string CutToCharacters(std::string_view text, std::size_t count) {
  return std::string(text.substr(0, OffsetOf(text, count)));
}

/// A standard line's tag and its first text; the beginning of any other line.
std::string DescribeLine(std::string_view line) {
  line.remove_prefix(std::min(line.find_first_not_of('\t'), line.size()));
  const std::size_t tag_end = line.find('\t');
  const std::size_t value = line.find("=\"");
  if (tag_end == std::string_view::npos || value == std::string_view::npos) {
    return "「" + CutToCharacters(line, LongestQuote) + "」";
  }
  return std::string(line.substr(0, tag_end)) + "「" +
         std::string(line.substr(value + 2, line.find('"', value + 2) - value - 2)) + "」";
}

/// A line's number and what it says, to find the record by.
std::string DescribeRecord(std::string_view text, std::size_t offset) {
  const auto line_number = std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(offset), '\n') + 1;
  std::size_t begin = text.rfind('\n', offset);
  begin = begin == std::string_view::npos ? 0 : begin + 1;
  const std::string_view line = text.substr(begin, text.find('\r', begin) - begin);
  return std::to_string(line_number) + "行目の" + DescribeLine(line);
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

/// What AutoDelete does behind a command that did all it was asked for: only what was kept elsewhere as a whole may go.
void WalrimMain::DeleteHandled(std::string_view lost) {
  if (!controls.AutoDelete) return;
  if (something_lost_) {
    notices_.emplace_back(lost);
    ShowNotices();
  } else {
    DeleteSelected();
  }
}

/// Whether a text that was written reads back as the kinds it was written of.
bool WalrimMain::GivesBack(const std::string& text) {
  const FileFormat format = OutputTypeOfName(controls.OutputTypeOption).format;
  return ReadsBack(data_, WantedKinds(), text, format, controls.UTCOffsetNum);
}

Outcome WalrimMain::FileExport_Click() {
  const Outcome outcome = ExportSelected();
  if (outcome == Outcome::Done) DeleteHandled(NotReadBackNotice);
  return outcome;
}

Outcome WalrimMain::ExportSelected() {
  if (busy_) return Outcome::Busy;
  if (!SomethingToWrite()) return Outcome::Refused;
  const BusyGuard guard(busy_);
  notices_.clear();
  std::string base_name;
  if (controls.AutoFileName) {
    std::error_code error;
    base_name = (std::filesystem::current_path(error) / StampOf(clock_.LocalTime())).string();
  }
  const Outcome outcome = ExportRoutine(base_name);
  ShowNotices();
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
  if (outcome == Outcome::Done && controls.AutoDelete) {
    auto bytes = ReadWholeFile(path);
    something_lost_ = !bytes || !GivesBack(DecodeOwnedText(*std::move(bytes)));
  }
  status.SetCaption("");
  return outcome;
}

Outcome WalrimMain::WriteText(const std::string& path, const std::optional<std::string>& text) {
  if (!text) return Outcome::Refused;
  if (text->empty()) {
    desktop_.ShowMessage("DatasetがDownLoadされていません．");
    return Outcome::Refused;
  }
  // UTF-8 is what the text is in already.
  const bool as_it_is = controls.Encoding == TextEncoding::Utf8;
  const auto encoded = as_it_is ? std::nullopt : EncodeText(*text);
  if (!as_it_is && !encoded) return Outcome::Refused;
  if (const auto problem = WriteWholeFile(path, as_it_is ? *text : *encoded)) {
    desktop_.ShowMessage(WriteProblemText(path, problem->detail));
    return Outcome::Refused;
  }
  return Outcome::Done;
}

Outcome WalrimMain::Copy_Click() {
  const Outcome outcome = CopySelected();
  if (outcome == Outcome::Done) DeleteHandled(NotReadBackNotice);
  return outcome;
}

Outcome WalrimMain::CopySelected() {
  if (busy_) return Outcome::Busy;
  if (!SomethingToWrite()) return Outcome::Refused;
  const BusyGuard guard(busy_);
  notices_.clear();
  const auto text = BuildText();
  ShowNotices();
  if (!text) return Outcome::Refused;
  if (text->empty()) {
    desktop_.ShowMessage("DatasetがDownLoadされていません．");
    return Outcome::Refused;
  }
  desktop_.SetClipboardText(*text);
  something_lost_ = controls.AutoDelete && !GivesBack(*text);
  return Outcome::Done;
}

}  // namespace walrim
