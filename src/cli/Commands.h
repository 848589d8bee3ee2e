// The commands of walrim-cli.
#pragma once

#include "cli/Arguments.h"

namespace walrim {

/// Runs a parsed command line. Data go to the file or to standard output, everything else to standard error.
[[nodiscard]] ExitStatus RunCommand(const Arguments& arguments, int argc, char** argv);

}  // namespace walrim
