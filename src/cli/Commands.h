// The commands of walrim-cli.
#pragma once

#include <functional>

#include "cli/Arguments.h"

namespace walrim {

/// Runs something that may throw: an exception is said, and a refusal.
[[nodiscard]] ExitStatus SayingExceptions(const std::function<ExitStatus()>& run);

/// Runs a parsed command line. Data go to the file or to standard output, everything else to standard error.
[[nodiscard]] ExitStatus RunCommand(const Arguments& arguments, int argc, char** argv);

}  // namespace walrim
