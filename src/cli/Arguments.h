// The command line of walrim-cli.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/UploadCommands.h"
#include "app/UserSettings.h"

namespace walrim {

enum class CliCommand { Info, Download, Upload, Convert, Ports, Doctor, SetClock, Stats };

/// Exit statuses of walrim-cli.
enum class ExitStatus : int {
  Done = 0,
  Refused = 1,     ///< refused or given up
  BadUsage = 2,    ///< the command line is wrong
  NoReceiver = 3,  ///< the receiver did not answer, or stopped answering; a line is not healthy
  Lost = 4,        ///< something of an upload is or would be lost or changed
};

struct Arguments {
  CliCommand command = CliCommand::Ports;
  UserSettings settings;
  std::vector<std::string> files;
  std::string output;
  bool force = false;
  bool quiet = false;
  bool json = false;
  bool find = false;  ///< the port on which a receiver answers
  bool yes = false;   ///< the answer to the command's question
  UploadCare care;
  float pacing_factor = 1.0F;
  std::string trace_path;  ///< empty: no trace
  bool hide_positions = false;
};

/// What reading the command line gave: arguments to run, or a status to exit with at once (help, version and errors
/// have been printed then).
struct ParsedArguments {
  std::optional<Arguments> arguments;
  ExitStatus exit_status = ExitStatus::Done;
};

[[nodiscard]] ParsedArguments ParseArguments(int argc, const char* const* argv);

}  // namespace walrim
