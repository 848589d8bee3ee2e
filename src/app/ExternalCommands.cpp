// The commands that other programs give.
#include <optional>

#include "app/WalrimMain.h"
#include "text/Numbers.h"
#include "text/Utf8.h"

namespace walrim {

namespace {

/// A truth value as other programs spell it: a number other than 0, or TRUE.
bool IsTrue(const std::string& text) {
  return UpperCase(text) == "TRUE" || LeadingNumber(text) != 0;
}

std::optional<std::size_t> KindOfNumber(const std::string& text) {
  const double number = LeadingNumber(text);
  if (number < 0 || number >= static_cast<double>(DataKindCount)) return std::nullopt;
  return static_cast<std::size_t>(number);
}

std::int32_t ResultOf(Outcome outcome) {
  switch (outcome) {
    case Outcome::Done:
      return CommandDone;
    case Outcome::Busy:
      return CommandBusy;
    case Outcome::Refused:
    case Outcome::Cancelled:
      return CommandRefused;
    case Outcome::NoReceiver:
    case Outcome::LinkLost:
      return CommandNoReceiver;
  }
  return CommandRefused;
}

}  // namespace

std::int32_t WalrimMain::WalrimCmd(const std::string& command, const std::string& argument1,
                                   const std::string& argument2) {
  if (busy_) return CommandBusy;
  const std::string word = UpperCase(command);
  if (word == "DELETE" && UpperCase(argument1) == "ALL") return DeleteAll();
  if (word == "GETFILE") return ResultOf(GetFile(argument1));
  if (word == "SETDOCHECK") return SetDoCheck(argument1, argument2);
  return CommandUnknown;
}

std::int32_t WalrimMain::DeleteAll() {
  controls.DoCheck.fill(true);
  desktop_.ControlsChanged();
  return ResultOf(Delete_Click());
}

std::int32_t WalrimMain::SetDoCheck(const std::string& kind_number, const std::string& value) {
  if (kind_number.empty()) return CommandDone;
  const auto kind = KindOfNumber(kind_number);
  if (!kind) return CommandRefused;
  controls.DoCheck[*kind] = IsTrue(value);
  desktop_.ControlsChanged();
  return CommandDone;
}

Outcome WalrimMain::GetFile(const std::string& path) {
  if (path.empty() || path == DialogCancelled) return Outcome::Done;
  // "-" is a file like others here: nobody feeds the standard input of a program that is called from outside.
  const Outcome outcome = ImportFrom(path == "-" ? "./-" : path);
  if (outcome != Outcome::Done || !controls.AutoUpload) return outcome;
  return UploadImported();
}

Outcome WalrimMain::UploadImported() {
  for (const DataKind kind : AllDataKinds)
    controls.DoCheck[IndexOf(kind)] = last_import_.summary.Received(kind);
  desktop_.ControlsChanged();
  return GpsUpLoad_Click();
}

}  // namespace walrim
