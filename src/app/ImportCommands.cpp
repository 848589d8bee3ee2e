// The commands that read data into the data set.
#include <algorithm>
#include <utility>

#include "app/BusyGuard.h"
#include "app/FileFormat.h"
#include "app/FileStore.h"
#include "app/WalrimMain.h"
#include "text/Utf8.h"

namespace walrim {

Outcome WalrimMain::FileImport_Click() {
  if (busy_) return Outcome::Busy;
  const std::string path = desktop_.OpenFileDialog(DialogFilter(OutputTypeOfName(controls.OutputTypeOption)));
  if (path == DialogCancelled) return Outcome::Refused;
  garmin_.Status().SetCaption("Import from " + path);
  const Outcome outcome = ImportFile(path);
  garmin_.Status().SetCaption("");
  return outcome;
}

Outcome WalrimMain::ImportFile(const std::string& path) {
  if (busy_) return Outcome::Busy;
  if (path.empty()) return Outcome::Done;
  const BusyGuard guard(busy_);
  last_import_ = {};
  FileProblem problem;
  auto bytes = ReadWholeFile(path, &problem);
  if (!bytes) {
    desktop_.ShowMessage("ファイルを読み込めません：" + path + "（" + problem.detail + "）");
    return Outcome::Refused;
  }
  const std::string text = DecodeOwnedText(std::move(*bytes));
  if (RecognizeFormat(text, path) != FileFormat::Standard) {
    desktop_.ShowMessage("未対応のファイルです．");
    return Outcome::Refused;
  }
  StandardReader reader(data_, controls.UTCOffsetNum);
  reader.ReadText(text);
  last_import_ = reader.Summary();
  ShowCounters(last_import_);
  return Outcome::Done;
}

void WalrimMain::ShowCounters(const ImportSummary& summary) {
  for (const DataKind kind : AllDataKinds) {
    if (summary.Received(kind)) SetGpsNum(kind, std::to_string(data_.Count(kind)));
  }
}

}  // namespace walrim
