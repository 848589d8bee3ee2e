// The commands that come from outside: from other programs, and from what is dropped on the window.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "app/DeleteCommands.h"
#include "app/DeviceCommands.h"
#include "app/ImportCommands.h"
#include "app/Outcome.h"
#include "app/ProgramState.h"
#include "platform/Desktop.h"

namespace walrim {

// What a command from another program comes to.
inline constexpr std::int32_t CommandDone = 0;
inline constexpr std::int32_t CommandRefused = 1;     ///< a file that cannot be used, a kind there is not, Cancel
inline constexpr std::int32_t CommandNoReceiver = 3;  ///< the upload behind an import found no receiver, or lost it
inline constexpr std::int32_t CommandUnknown = -1;    ///< no such command
inline constexpr std::int32_t CommandBusy = -2;       ///< another command runs; nothing was done

/// The path that GetFile takes for no file, as programs pass it on from a dialog that was cancelled.
inline constexpr std::string_view NoFilePath = "cancel";

class ExternalCommands {
 public:
  /// All must outlive this object.
  ExternalCommands(ProgramState& state, DeleteCommands& deletes, ImportCommands& imports, DeviceCommands& device,
                   Desktop& desktop)
      : state_(state), deletes_(deletes), imports_(imports), device_(device), desktop_(desktop) {}

  /// "Delete" "ALL"; "GetFile" and a path (NoFilePath does nothing), which with AutoUpload is uploaded; "SetDoCheck", a
  /// kind's number and a value (a number, or TRUE). Words in any case. Returns one of the results above.
  [[nodiscard]] std::int32_t Run(const std::string& command, const std::string& argument1,
                                 const std::string& argument2);

  /// Imports what was dropped: files one after the other, or, without any, a text. With AutoUpload what came in is then
  /// uploaded.
  Outcome TakeDrop(const std::vector<std::string>& paths, const std::string& text);

 private:
  [[nodiscard]] std::int32_t DeleteAll();
  [[nodiscard]] std::int32_t ChooseKind(const std::string& kind_number, const std::string& value);
  [[nodiscard]] Outcome GetFile(const std::string& path);
  /// Uploads the kinds that an import brought, where that is wanted.
  Outcome UploadBehind(Outcome import);

  ProgramState& state_;
  DeleteCommands& deletes_;
  ImportCommands& imports_;
  DeviceCommands& device_;
  Desktop& desktop_;
};

}  // namespace walrim
