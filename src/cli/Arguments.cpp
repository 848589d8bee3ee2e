#include "cli/Arguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <iostream>
#include <map>

#include "receiver/DemoSerialPort.h"
#include "text/Utf8.h"

namespace walrim {

namespace {

const std::map<std::string, DataKind> KindWords{
    {"waypoint", DataKind::Waypoint}, {"route", DataKind::Route}, {"track", DataKind::TrackLog}};

std::string NotEmpty(const std::string& text) {
  return text.empty() ? "a name is needed" : "";
}

std::string PacingRange(const std::string& text) {
  double number = 0;
  if (!CLI::detail::lexical_cast(text, number)) return "a number is needed";
  return std::isfinite(number) && number >= 0 && number <= 100 ? "" : "between 0 and 100";
}

/// What is wrong with a port's name; empty for a number from 1 to 4, a path, and a demonstration receiver there is.
std::string CheckPort(const std::string& text) {
  if (text.empty()) return "a port is needed";
  const bool is_number = std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
  if (is_number && (text.size() > 1 || text[0] < '1' || text[0] > '4')) return "ports are numbered 1 to 4";
  if (text.rfind("demo:", 0) != 0) return "";
  std::string models;
  for (const std::string& model : DemoModelNames()) {
    if (text.substr(5) == model) return "";
    models.append(models.empty() ? "" : ", ").append(model);
  }
  return "the models are " + models;
}

/// Fills the options' variables; lives as long as the parsing.
struct Parser {
  Arguments arguments;
  std::vector<std::string> kind_words;
  std::string encoding = "sjis";
  CLI::App app{"Loads waypoints, routes and track logs from and to handheld GPS receivers.", "walrim-cli"};

  Parser();
  void AddCommands();
  void AddCommon(CLI::App& command);
  void AddLine(CLI::App& command);
  void AddKinds(CLI::App& command);
  void AddUtcOffset(CLI::App& command);
  void AddForce(CLI::App& command);
  void AddWriting(CLI::App& command);
  CLI::App& Add(const char* name, const char* help, CliCommand command);
  void Finish();

  bool mps_descending = false;
};

Parser::Parser() {
  app.set_version_flag("--version", "walrim-cli " + std::string(ProgramVersion()));
  app.require_subcommand(1);
  AddCommands();
}

CLI::App& Parser::Add(const char* name, const char* help, CliCommand command) {
  CLI::App& added = *app.add_subcommand(name, help);
  added.callback([this, command] { arguments.command = command; });
  AddCommon(added);
  return added;
}

void Parser::AddCommands() {
  CLI::App& info = Add("info", "Identify the receiver and ask how many records it holds", CliCommand::Info);
  AddLine(info);
  AddForce(info);

  CLI::App& download = Add("download", "Download records and write them to a file", CliCommand::Download);
  AddLine(download);
  AddKinds(download);
  AddUtcOffset(download);
  AddWriting(download);

  CLI::App& upload = Add("upload", "Read files and upload what they hold", CliCommand::Upload);
  AddLine(upload);
  AddForce(upload);
  AddKinds(upload);
  AddUtcOffset(upload);
  upload.add_option("files", arguments.files, "Files to read; - is standard input")->required()->type_name("FILE");

  CLI::App& convert = Add("convert", "Read files and write them as one", CliCommand::Convert);
  AddKinds(convert);
  AddUtcOffset(convert);
  AddWriting(convert);
  convert.add_option("files", arguments.files, "Files to read; - is standard input")->required()->type_name("FILE");

  Add("ports", "List the serial ports", CliCommand::Ports);
}

void Parser::AddCommon(CLI::App& command) {
  command.add_flag("--quiet", arguments.quiet, "No status and no progress; messages still show");
}

void Parser::AddLine(CLI::App& command) {
  command.add_option("--port", arguments.port, "1 to 4, a device path, demo, or demo:MODEL")
      ->required()
      ->type_name("P")
      ->check(CheckPort);
  command.add_option("--pacing", arguments.pacing_factor, "Receive pacing factor (default 1.0)")
      ->type_name("X")
      ->check(PacingRange);
  const auto add_link = [&](const char* name, LinkChoice choice, const char* help) {
    return command.add_flag_callback(
        name, [this, choice] { arguments.link = choice; }, help);
  };
  CLI::Option* checked = add_link("--checked-link", LinkChoice::Checked,
                                  "Always test checksums, ask for damaged frames again, and wait no longer than for a "
                                  "whole answer (default: where the receiver's first answer is framed as published)");
  CLI::Option* plain = add_link("--plain-link", LinkChoice::Plain, "Never do so: damage is told, not mended");
  plain->excludes(checked);
  command.add_option("--trace", arguments.trace_path, "Write every frame of the line to a file")
      ->type_name("FILE")
      ->check(NotEmpty);
}

void Parser::AddKinds(CLI::App& command) {
  command.add_option("--kinds", kind_words, "Comma list of waypoint, route, track (default: all)")
      ->type_name("LIST")
      ->delimiter(',')
      ->expected(1)
      ->allow_extra_args(false)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
      ->check(CLI::IsMember(KindWords, CLI::ignore_case));
}

void Parser::AddUtcOffset(CLI::App& command) {
  command.add_option("--utc-offset", arguments.utc_offset_hours, "Hours that local time is ahead of UTC (default 9)")
      ->type_name("H")
      ->check(CLI::Range(-24, 24));
}

void Parser::AddForce(CLI::App& command) {
  command.add_flag("--force", arguments.force, "Replace an existing file");
}

void Parser::AddWriting(CLI::App& command) {
  command.add_option("-o,--output", arguments.output, "File to write; - is standard output")
      ->required()
      ->type_name("FILE")
      ->check(NotEmpty);
  command.add_option("--type", arguments.type_extension, "grc (standard), txt (WPT+), mps (map-server script)")
      ->type_name("T")
      ->transform(CLI::IsMember({"grc", "txt", "mps"}, CLI::ignore_case));
  command.add_option("--datum", arguments.datum, "WGS84 or Tokyo (default WGS84)")
      ->type_name("D")
      ->transform(CLI::IsMember({"WGS84", "Tokyo"}, CLI::ignore_case));
  command.add_option("--degree", arguments.degree_type, "D, DMS or MPS (default D)")
      ->type_name("N")
      ->transform(CLI::IsMember({"D", "DMS", "MPS"}, CLI::ignore_case));
  command.add_flag("--header", arguments.with_header, "Write the header lines");
  command.add_option("--encoding", encoding, "sjis or utf8 (default sjis)")
      ->type_name("E")
      ->transform(CLI::IsMember({"sjis", "utf8"}, CLI::ignore_case));
  AddForce(command);

  command
      .add_option("--mps-utc-offset", arguments.mps_options.utc_offset_hours, "Map-server script: hours added to times")
      ->type_name("H");
  command
      .add_option("--mps-origin", arguments.mps_options.origin_name,
                  "Map-server script: label of a route's first point")
      ->type_name("NAME");
  command
      .add_option("--mps-destination", arguments.mps_options.destination_name,
                  "Map-server script: label of a route's last point")
      ->type_name("NAME");
  command.add_flag("--mps-descending", mps_descending, "Map-server script: number route points downwards");
  command
      .add_option("--mps-step", arguments.mps_options.track_log_step, "Map-server script: step between track points")
      ->type_name("N");
}

void Parser::Finish() {
  arguments.encoding = encoding == "utf8" ? TextEncoding::Utf8 : TextEncoding::ShiftJis;
  arguments.mps_options.numbering_down = mps_descending ? 1 : 0;
  if (kind_words.empty()) return;
  arguments.kinds.fill(false);
  for (const std::string& word : kind_words) {
    for (const auto& [name, kind] : KindWords) {
      if (UpperCase(name) == UpperCase(word)) arguments.kinds[IndexOf(kind)] = true;
    }
  }
}

}  // namespace

ParsedArguments ParseArguments(int argc, const char* const* argv) {
  Parser parser;
  try {
    parser.app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    const bool asked_for = parser.app.exit(error, std::cout, std::cerr) == 0;
    return {std::nullopt, asked_for ? ExitStatus::Done : ExitStatus::BadUsage};
  }
  parser.Finish();
  return {parser.arguments, ExitStatus::Done};
}

}  // namespace walrim
