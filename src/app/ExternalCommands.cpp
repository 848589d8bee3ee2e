#include "app/ExternalCommands.h"

#include <optional>

#include "records/Chosen.h"
#include "text/Numbers.h"
#include "text/Scan.h"

namespace walrim {

namespace {

/// A truth value as other programs spell it: a number other than 0, or TRUE.
bool IsTrue(const std::string& text) {
  return SameWord(text, "TRUE") || LeadingNumber(text) != 0;
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

std::int32_t ExternalCommands::Run(const std::string& command, const std::string& argument1,
                                   const std::string& argument2) {
  if (state_.Busy()) return CommandBusy;
  if (SameWord(command, "DELETE") && SameWord(argument1, "ALL")) return DeleteAll();
  if (SameWord(command, "GETFILE")) return ResultOf(GetFile(argument1));
  if (SameWord(command, "SETDOCHECK")) return ChooseKind(argument1, argument2);
  return CommandUnknown;
}

std::int32_t ExternalCommands::DeleteAll() {
  state_.Settings().chosen_kinds.fill(true);
  for (const DataKind kind : AllDataKinds)
    SetAllChosen(state_.Data(), kind, true);
  desktop_.ControlsChanged();
  return ResultOf(deletes_.Delete());
}

std::int32_t ExternalCommands::ChooseKind(const std::string& kind_number, const std::string& value) {
  if (kind_number.empty()) return CommandDone;
  const auto kind = KindOfNumber(kind_number);
  if (!kind) return CommandRefused;
  state_.Settings().chosen_kinds[*kind] = IsTrue(value);
  desktop_.ControlsChanged();
  return CommandDone;
}

Outcome ExternalCommands::GetFile(const std::string& path) {
  if (path.empty() || path == NoFilePath) return Outcome::Done;
  // "-" is a file like others here: nobody feeds the standard input of a program that is called from outside.
  return UploadBehind(imports_.ImportFrom(path == StandardStream ? "./-" : path));
}

Outcome ExternalCommands::TakeDrop(const std::vector<std::string>& paths, const std::string& text) {
  if (state_.Busy()) return Outcome::Busy;
  return UploadBehind(paths.empty() ? imports_.ImportTyped(text) : imports_.ImportFiles(paths));
}

Outcome ExternalCommands::UploadBehind(Outcome import) {
  if (import != Outcome::Done || !state_.Settings().auto_upload) return import;
  for (const DataKind kind : AllDataKinds)
    state_.Settings().chosen_kinds[IndexOf(kind)] = imports_.LastImport().Received(kind);
  desktop_.ControlsChanged();
  return device_.Upload();
}

}  // namespace walrim
