// A bash that runs the completions.
#pragma once

#include <string>
#include <vector>

#include "packaging/HelpTexts.h"

namespace walrim {

/// A text as one word of a command.
[[nodiscard]] std::string Quoted(const std::string& text);

/// A bash without a person's settings, away from the terminal that the tests run on.
[[nodiscard]] std::vector<std::string> Bash(std::vector<std::string> arguments);

/// The options that begin with two hyphens, sorted.
[[nodiscard]] std::vector<std::string> LongOptions(const std::vector<HelpOption>& options);

}  // namespace walrim
