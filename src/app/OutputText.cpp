// The texts that export and copy write, one way for each output type.
#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

#include "app/FileStore.h"
#include "app/PrivateFolder.h"
#include "app/SouthAndWest.h"
#include "app/WalrimMain.h"
#include "device/NameTables.h"
#include "formats/MpsWpt.h"
#include "formats/ProAtlas.h"

namespace walrim {

namespace {

constexpr std::array<std::string_view, DataKindCount> ExportStatus{"Export Wpt[", "Export Rte[", "Export Trk["};
/// Records between two turns of the event loop.
constexpr int RecordsPerYield = 64;

/// Commas of a WPT+ line whose last field holds none.
std::ptrdiff_t CommasOf(std::string_view line) {
  if (line.starts_with("RN")) return 2;
  return line.starts_with("TP") ? 6 : 7;
}

/// WPT+ lines with more commas than fields, or a quote: what a field loses in reading.
int WptLinesWithComma(std::string_view text) {
  int lines = 0;
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    const std::string_view line = text.substr(begin, end - begin);
    const bool has_quote = line.find('"') != std::string_view::npos;
    if (has_quote || std::count(line.begin(), line.end(), ',') > CommasOf(line)) ++lines;
    begin = end + 1;
  }
  return lines;
}

}  // namespace

std::array<bool, DataKindCount> WalrimMain::WantedKinds() const {
  std::array<bool, DataKindCount> wanted{};
  for (std::size_t k = 0; k < DataKindCount; ++k)
    wanted[k] = controls.DoCheck[k] && loaded_[k];
  return wanted;
}

TextSettings WalrimMain::OutputSettings() const {
  return {controls.DegreeType, controls.Datum, controls.UTCOffsetNum};
}

StandardWriter::Progress WalrimMain::ExportProgress() {
  return [this, written = 0](DataKind kind, int number, int count) mutable {
    garmin_.Status().SetCaption(std::string(ExportStatus[IndexOf(kind)]) + std::to_string(number) + "/" +
                                std::to_string(count) + "]");
    garmin_.Status().SetProgress(number, count);
    if (++written % RecordsPerYield == 0) event_loop_.Yield();
  };
}

std::optional<std::string> WalrimMain::BuildText() {
  auto text = BuildInType();
  garmin_.Status().SetProgress(0, 0);
  if (text && text->empty()) desktop_.ShowMessage("保存するデータがありません．");
  return text;
}

void WalrimMain::NoteSouthAndWest(std::string_view output_type) {
  if (output_type != "MPS" && controls.DegreeType != "DMS") return;
  const int positions = CountSouthAndWest(data_, WantedKinds());
  if (positions == 0) return;
  notices_.push_back("南緯・西経の位置が" + std::to_string(positions) +
                     "件あります．DMSの表記では正しく読み戻せません．");
}

std::optional<std::string> WalrimMain::BuildInType() {
  const std::string_view type = OutputTypeOfName(controls.OutputTypeOption).name;
  NoteSouthAndWest(type);
  if (type == "WPT+") return BuildWptPlus("WPT+");
  if (type == "MPS") return BuildScript();
  return BuildStandard();
}

void WalrimMain::NoteCommas(int lines, std::string_view what) {
  if (lines == 0) return;
  notices_.push_back(std::string(what) + "を含む文字列が" + std::to_string(lines) +
                     "件あります．このファイルを読み込むと，そこで切れます．");
}

std::string WalrimMain::BuildStandard() {
  StandardWriter writer(data_, AllNameTables(), OutputSettings());
  const auto wanted = WantedKinds();
  const auto progress = ExportProgress();
  std::string text;
  for (const DataKind kind : AllDataKinds) {
    if (wanted[IndexOf(kind)]) writer.AppendKind(text, kind, controls.WithHeader, progress);
  }
  return text;
}

std::string WalrimMain::BuildWptPlus(std::string_view output_type) {
  const WptSettings settings{std::string(output_type), OutputSettings(), clock_.LocalTime()};
  std::string text = BuildWptText(data_, WantedKinds(), settings, ExportProgress());
  // The first line is the Datum line, whose commas are its own.
  NoteCommas(WptLinesWithComma(std::string_view(text).substr(std::min(text.find('\n') + 1, text.size()))),
             "コンマか引用符");
  return text;
}

/// In two steps, each through its temporary file. Nothing when it was given up; a message was shown, or the user did.
std::optional<std::string> WalrimMain::BuildScript() {
  garmin_.Status().SetCaption("Converting (WPT+)to(MPS)");
  if (dialogs_ != nullptr && !dialogs_->ShowMpsOption(controls.MpsOption)) return std::nullopt;
  std::string wpt = BuildWptPlus("MPS");
  if (wpt.empty()) return wpt;
  const PrivateFolder folder;
  if (!folder.Problem().empty()) {
    desktop_.ShowMessage(WriteProblemText("Temp.txt", folder.Problem()));
    return std::nullopt;
  }
  if (!PassThroughFile(folder.File("Temp.txt"), wpt)) return std::nullopt;
  garmin_.Status().SetCaption("Converting (WPT+)to(MPS)");
  Conversion script =
      ConvertWptToScript(wpt, controls.MpsOption, clock_.LocalTime(), [this](std::size_t done, std::size_t total) {
        garmin_.Status().SetProgress(static_cast<std::int64_t>(done), static_cast<std::int64_t>(total));
        event_loop_.Yield();
      });
  NoteMessages(script.messages);
  if (script.skipped > 0) {
    notices_.push_back(std::to_string(script.skipped) +
                       "件の記録は，文字列の中の記号のためスクリプトに書けませんでした．");
  }
  // A script is large; what it was made of is not needed beside it.
  std::string().swap(wpt);
  if (!PassThroughFile(folder.File("Temp.mps"), script.text)) return std::nullopt;
  return std::move(script.text);
}

void WalrimMain::NoteMessages(const MessageList& messages) {
  notices_.insert(notices_.end(), messages.kept.begin(), messages.kept.end());
  const int more = messages.count - static_cast<int>(messages.kept.size());
  if (more > 0) notices_.push_back("ほか" + std::to_string(more) + "件");
}

/// Writes a text to a file and reads it back in its place: the two are never held at once. False, with a message, where
/// that fails.
bool WalrimMain::PassThroughFile(const std::string& path, std::string& text) {
  FileProblem problem;
  const auto failed = WriteWholeFile(path, text);
  std::string().swap(text);  // an assignment would keep its memory
  auto back = failed ? std::nullopt : ReadWholeFile(path, &problem);
  if (back) {
    text = *std::move(back);
    return true;
  }
  desktop_.ShowMessage(WriteProblemText(path, failed ? failed->detail : problem.detail));
  return false;
}

}  // namespace walrim
