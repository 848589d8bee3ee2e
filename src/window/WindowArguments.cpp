#include "window/WindowArguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <string_view>

#include "app/ExternalCommands.h"
#include "app/ProgramName.h"
#include "text/Scan.h"

namespace walrim {

namespace {

constexpr int BadUsage = 2;

std::string CheckMapping(const std::string& text) {
  return ParsePortMapping(text) ? "" : "N=DEVICE is needed, N from 1 to 4";
}

/// The window that gets the call has a current directory of its own.
CommandCall CallOf(std::vector<std::string> words) {
  words.resize(3);
  if (SameWord(words[0], "GETFILE") && !words[1].empty() && words[1] != NoFilePath) {
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(words[1], error);
    if (!error) words[1] = absolute.string();
  }
  return {words[0], words[1], words[2]};
}

}  // namespace

ParsedWindowArguments ParseWindowArguments(int argc, const char* const* argv) {
  WindowArguments arguments;
  std::vector<std::string> mappings;
  std::vector<std::string> command;
  CLI::App app{"Loads waypoints, routes and track logs from and to handheld GPS receivers.", "walrim"};
  app.set_version_flag("--version", "walrim " + std::string(ProgramVersion()));
  app.add_option("--port", mappings, "Give a port number a device; can be repeated")
      ->type_name("N=DEVICE")
      ->take_all()
      ->allow_extra_args(false)
      ->check(CheckMapping);
  app.add_flag("--demo", arguments.demo, "Start with the demonstration receiver chosen");
  CLI::Option* call = app.add_option("--command", command,
                                     "Give the window that runs a command: Delete ALL, GetFile PATH, SetDoCheck K V")
                          ->type_name("WORD [ARG1] [ARG2]")
                          ->expected(1, 3)
                          ->multi_option_policy(CLI::MultiOptionPolicy::Throw);
  app.add_option("FILE", arguments.files, "Files to read into the data set")->excludes(call);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return {std::nullopt, app.exit(error) == 0 ? 0 : BadUsage};
  }
  for (const std::string& text : mappings) {
    const auto mapping = ParsePortMapping(text);
    if (mapping) arguments.mapping[mapping->first] = mapping->second;
  }
  if (!command.empty()) arguments.command = CallOf(command);
  return {arguments, 0};
}

bool NeedsNoWindow(int argc, const char* const* argv) {
  return std::any_of(argv + 1, argv + argc, [](std::string_view word) {
    return word == "--help" || word == "-h" || word == "--version" || word == "--command" ||
           word.starts_with("--command=");
  });
}

}  // namespace walrim
