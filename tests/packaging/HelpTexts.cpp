#include "packaging/HelpTexts.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <regex>
#include <sstream>

#include "support/Processes.h"

namespace walrim {

namespace {

std::vector<std::string> SplitAt(char separator, const std::string& text) {
  std::vector<std::string> parts;
  std::istringstream stream(text);
  for (std::string part; std::getline(stream, part, separator);)
    parts.push_back(part);
  return parts;
}

std::string Help(std::vector<std::string> program) {
  program.emplace_back("--help");
  Process process(program);
  EXPECT_EQ(process.Wait(), 0) << program[0];
  return process.Out();
}

HelpOption OptionOfLine(const std::smatch& line) {
  static const std::regex values_pattern(R"(:\{(.*)\})");
  HelpOption option{SplitAt(',', line[1]), {}};
  const std::string type = line[2];
  std::smatch values;
  if (std::regex_search(type, values, values_pattern)) option.values = SplitAt(',', values[1]);
  std::sort(option.values.begin(), option.values.end());
  return option;
}

}  // namespace

std::vector<std::string> LinesOf(std::string_view text) {
  return SplitAt('\n', std::string(text));
}

std::vector<HelpOption> HelpOptions(std::vector<std::string> program) {
  static const std::regex pattern(R"(^  (-[^ ]+)(.*)$)");
  std::vector<HelpOption> options;
  for (const std::string& line : LinesOf(Help(std::move(program)))) {
    std::smatch match;
    if (std::regex_match(line, match, pattern)) options.push_back(OptionOfLine(match));
  }
  EXPECT_FALSE(options.empty());
  return options;
}

std::vector<std::string> CommandsOfTheHelp() {
  static const std::regex pattern(R"(^  ([a-z][a-z-]*) .*$)");
  std::vector<std::string> commands;
  for (const std::string& line : LinesOf(Help({WALRIM_CLI}))) {
    std::smatch match;
    if (std::regex_match(line, match, pattern)) commands.push_back(match[1]);
  }
  EXPECT_FALSE(commands.empty());
  return commands;
}

}  // namespace walrim
