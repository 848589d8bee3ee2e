// The command line of walrim.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "qt/PortList.h"
#include "text/CommandMessage.h"

namespace walrim {

struct WindowArguments {
  PortMapping mapping;             ///< port numbers that were given a device
  bool demo = false;               ///< starts with the demonstration receiver chosen
  std::vector<std::string> files;  ///< read into the data set at the start
  /// A command for the window that runs already; then nothing else is done.
  std::optional<CommandCall> command;
};

/// What reading the command line gave: arguments to run with, or a status to exit with at once (help, version and
/// errors have been printed then).
struct ParsedWindowArguments {
  std::optional<WindowArguments> arguments;
  int exit_status = 0;
};

/// Qt's own options must have been taken out.
[[nodiscard]] ParsedWindowArguments ParseWindowArguments(int argc, const char* const* argv);

/// Whether the command line asks for nothing that needs a display: help, version, or a command for another window.
[[nodiscard]] bool NeedsNoWindow(int argc, const char* const* argv);

}  // namespace walrim
