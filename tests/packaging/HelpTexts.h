// What the programs say about their own command lines.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace walrim {

struct HelpOption {
  std::vector<std::string> names;   ///< "-o", "--output"
  std::vector<std::string> values;  ///< the words it takes, sorted; empty where the help lists none
};

[[nodiscard]] std::vector<std::string> LinesOf(std::string_view text);

/// Runs the program, and its command where a second word names one, with --help.
[[nodiscard]] std::vector<HelpOption> HelpOptions(std::vector<std::string> program);

/// The commands of walrim-cli, in the help's order.
[[nodiscard]] std::vector<std::string> CommandsOfTheHelp();

}  // namespace walrim
