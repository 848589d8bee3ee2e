// The command line of walrim-cli.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "app/WalrimMain.h"

namespace walrim {

enum class CliCommand { Info, Download, Upload, Convert, Ports };

/// Exit statuses of walrim-cli.
enum class ExitStatus : int {
  Done = 0,
  Refused = 1,     ///< refused or given up
  BadUsage = 2,    ///< the command line is wrong
  NoReceiver = 3,  ///< the receiver did not answer, or stopped answering
};

struct Arguments {
  CliCommand command = CliCommand::Ports;
  std::string port;
  std::vector<std::string> files;
  std::string output;
  std::string type_extension;  ///< "grc", "txt" or "mps"; empty: by the output's extension
  std::array<bool, DataKindCount> kinds{true, true, true};
  std::string datum = "WGS84";
  std::string degree_type = "D";
  int utc_offset_hours = 9;
  bool with_header = false;
  TextEncoding encoding = TextEncoding::ShiftJis;
  bool force = false;
  bool quiet = false;
  float pacing_factor = 1.0F;
  LinkChoice link = LinkChoice::Automatic;
  std::string trace_path;  ///< empty: no trace
  MpsOptions mps_options;
};

/// What reading the command line gave: arguments to run, or a status to exit with at once (help, version and errors
/// have been printed then).
struct ParsedArguments {
  std::optional<Arguments> arguments;
  ExitStatus exit_status = ExitStatus::Done;
};

[[nodiscard]] ParsedArguments ParseArguments(int argc, const char* const* argv);

}  // namespace walrim
