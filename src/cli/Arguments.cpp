#include "cli/Arguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <iostream>
#include <map>

#include "app/FileStore.h"
#include "app/ProgramName.h"
#include "formats/Format.h"
#include "receiver/DemoSerialPort.h"
#include "text/Scan.h"

namespace walrim {

namespace {

const std::map<std::string, DataKind> KindWords{
    {"waypoint", DataKind::Waypoint}, {"route", DataKind::Route}, {"track", DataKind::TrackLog}};
/// The endings of the formats, which the type is chosen by.
std::vector<std::string> TypeWords() {
  std::vector<std::string> words;
  for (const Format& format : Formats())
    words.emplace_back(format.ending);
  return words;
}

std::string TypeHelp() {
  std::string help;
  for (const Format& format : Formats()) {
    help += (help.empty() ? "" : ", ") + std::string(format.ending) + " (" + std::string(format.english_name) + ")";
  }
  return help;
}

/// The type of an output that none is given for: its ending.
std::string TypeOfOutput(const std::string& output) {
  const std::string ending = output == StandardStream ? "" : std::filesystem::path(output).extension().string();
  return ending.substr(ending.empty() ? 0 : 1);
}

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
  if (AllDigits(text) && (text.size() > 1 || text[0] < '1' || text[0] > '4')) return "ports are numbered 1 to 4";
  if (text.rfind("demo:", 0) != 0) return "";
  std::string models;
  for (const std::string& model : DemoModelNames()) {
    if (text.substr(5) == model) return "";
    models.append(models.empty() ? "" : ", ").append(model);
  }
  return "the models are " + models;
}

/// An option whose value is one of some words, in any case.
void AddChoice(CLI::App& command, const char* name, std::string& value, const std::string& help, const char* type_name,
               const std::vector<std::string>& words) {
  command.add_option(name, value, help)->type_name(type_name)->transform(CLI::IsMember(words, CLI::ignore_case));
}

DateFixing DateFixingOf(std::string_view word) {
  if (word == "never") return DateFixing::Never;
  if (word == "ask") return DateFixing::Ask;
  return word == "auto" ? DateFixing::Auto : DateFixing::ByNumber;
}

/// Fills the options' variables; lives as long as the parsing.
struct Parser {
  Arguments arguments;
  std::vector<std::string> kind_words;
  std::string type;
  std::string datum{DatumName(Datum::Wgs84)};
  std::string notation{AngleNotationName(AngleNotation::D)};
  std::string encoding = "sjis";
  std::string fix_dates = "never";
  CLI::App app{"Loads waypoints, routes and track logs from and to handheld GPS receivers.", "walrim-cli"};

  Parser();
  void AddCommands();
  void AddStats();
  void AddDoctor();
  void AddCommon(CLI::App& command);
  CLI::Option* AddPort(CLI::App& command);
  void AddLine(CLI::App& command);
  void AddKinds(CLI::App& command);
  void AddUtcOffset(CLI::App& command);
  void AddForce(CLI::App& command);
  void AddWriting(CLI::App& command);
  CLI::App& Add(const char* name, const char* help, CliCommand command);
  void AddFixDates(CLI::App& command);
  void AddCare(CLI::App& upload);
  void AddScript(CLI::App& command);
  void Finish();
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
  AddFixDates(download);

  CLI::App& upload = Add("upload", "Read files and upload what they hold", CliCommand::Upload);
  AddLine(upload);
  AddForce(upload);
  AddKinds(upload);
  AddUtcOffset(upload);
  AddCare(upload);
  upload.add_option("files", arguments.files, "Files to read; - is standard input")->required()->type_name("FILE");

  CLI::App& convert = Add("convert", "Read files and write them as one", CliCommand::Convert);
  AddKinds(convert);
  AddUtcOffset(convert);
  AddWriting(convert);
  AddFixDates(convert);
  convert.add_option("files", arguments.files, "Files to read; - is standard input")->required()->type_name("FILE");

  AddStats();
  AddDoctor();

  CLI::App& set_clock =
      Add("set-clock", "Show the receiver's date beside the computer's and set it", CliCommand::SetClock);
  AddLine(set_clock);
  AddForce(set_clock);
  set_clock.add_flag("--yes", arguments.yes, "Set it without asking");

  Add("ports", "List the serial ports", CliCommand::Ports);
}

void Parser::AddStats() {
  CLI::App& stats = Add("stats", "Print the figures of the logs and routes in files", CliCommand::Stats);
  AddUtcOffset(stats);
  stats.add_flag("--json", arguments.json, "Print them as JSON");
  stats.add_option("files", arguments.files, "Files to read; - is standard input")->required()->type_name("FILE");
}

void Parser::AddDoctor() {
  CLI::App& doctor = Add("doctor", "Examine the line and tell what is wrong with it", CliCommand::Doctor);
  CLI::Option* port = AddPort(doctor)->required(false);
  CLI::Option* find =
      doctor.add_flag("--find", arguments.find, "Ask every port that nobody keeps, and print the one that answers")
          ->excludes(port);
  doctor.add_flag("--json", arguments.json, "Print the finding as JSON")->excludes(find);
  doctor.callback([this, port] {
    arguments.command = CliCommand::Doctor;
    if (port->count() == 0 && !arguments.find) throw CLI::RequiredError("--port or --find");
  });
}

void Parser::AddCommon(CLI::App& command) {
  command.add_flag("--quiet", arguments.quiet, "No status and no progress; messages still show");
}

CLI::Option* Parser::AddPort(CLI::App& command) {
  return command.add_option("--port", arguments.settings.port, "1 to 4, a device path, demo, or demo:MODEL")
      ->required()
      ->type_name("P")
      ->check(CheckPort);
}

void Parser::AddLine(CLI::App& command) {
  AddPort(command);
  command.add_option("--pacing", arguments.pacing_factor, "Receive pacing factor (default 1.0)")
      ->type_name("X")
      ->check(PacingRange);
  const auto add_link = [&](const char* name, LinkChoice choice, const char* help) {
    return command.add_flag_callback(
        name, [this, choice] { arguments.settings.link = choice; }, help);
  };
  CLI::Option* checked = add_link("--checked-link", LinkChoice::Checked,
                                  "Always test checksums, ask for damaged frames again, and wait no longer than for a "
                                  "whole answer (default: where the receiver's first answer is framed as published)");
  CLI::Option* plain = add_link("--plain-link", LinkChoice::Plain, "Never do so: damage is told, not mended");
  plain->excludes(checked);
  command.add_option("--trace", arguments.trace_path, "Write every frame of the line to a file")
      ->type_name("FILE")
      ->check(NotEmpty);
  command.add_flag("--hide-positions", arguments.hide_positions, "Move all positions in the trace to around 0, 0")
      ->needs("--trace");
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
  command
      .add_option("--utc-offset", arguments.settings.utc_offset_hours,
                  "Hours that local time is ahead of UTC (default 9)")
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
  AddChoice(command, "--type", type, TypeHelp(), "T", TypeWords());
  AddChoice(command, "--datum", datum, "WGS84 or Tokyo (default WGS84)", "D", {"WGS84", "Tokyo"});
  AddChoice(command, "--degree", notation, "D, DMS or MPS (default D)", "N", {"D", "DMS", "MPS"});
  command.add_flag("--header", arguments.settings.with_header, "Write the header lines");
  AddChoice(command, "--encoding", encoding, "sjis or utf8 (default sjis)", "E", {"sjis", "utf8"});
  AddForce(command);
  AddScript(command);
}

void Parser::AddFixDates(CLI::App& command) {
  AddChoice(
      command, "--fix-dates", fix_dates,
      "What to do about dates 1024 weeks behind: ask, auto, never, or a number of roll-overs from 0 to 3 (default "
      "never, with a notice)",
      "M", {"ask", "auto", "never", "0", "1", "2", "3"});
}

void Parser::AddCare(CLI::App& upload) {
  UploadCare& care = arguments.care;
  CLI::Option* check =
      upload.add_flag("--check", care.check, "Send nothing; print what would be lost (exit 4 when something would)");
  upload.add_flag("--fit", care.fit, "Send unique short names, routes in parts and logs that fit")->excludes(check);
  upload
      .add_flag("--verify", care.verify,
                "Download afterwards and print what the receiver does not hold (exit 4 when there is something)")
      ->excludes(check);
  upload.add_option("--backup", care.backup, "First save what the receiver holds, as a standard file")
      ->type_name("FILE")
      ->check(NotEmpty);
}

void Parser::AddScript(CLI::App& command) {
  ScriptOptions& script = arguments.settings.script;
  command.add_option("--mps-utc-offset", script.utc_offset_hours, "Map-server script: hours added to times")
      ->type_name("H");
  command.add_option("--mps-origin", script.origin_name, "Map-server script: label of a route's first point")
      ->type_name("NAME");
  command.add_option("--mps-destination", script.destination_name, "Map-server script: label of a route's last point")
      ->type_name("NAME");
  command.add_flag("--mps-descending", script.numbering_down, "Map-server script: number route points downwards");
  command.add_option("--mps-step", script.track_log_step, "Map-server script: step between track points")
      ->type_name("N");
}

void Parser::Finish() {
  UserSettings& settings = arguments.settings;
  if (const Format* format = FormatOfEnding(type.empty() ? TypeOfOutput(arguments.output) : type)) {
    settings.format = format->id;
  }
  settings.datum = DatumOfName(datum).value_or(settings.datum);
  settings.notation = AngleNotationOfName(notation).value_or(settings.notation);
  settings.encoding = encoding == "utf8" ? TextEncoding::Utf8 : TextEncoding::ShiftJis;
  settings.date_fixing = DateFixingOf(fix_dates);
  if (settings.date_fixing == DateFixing::ByNumber) settings.roll_overs = fix_dates.front() - '0';
  settings.chosen_kinds.fill(kind_words.empty());
  for (const std::string& word : kind_words)
    settings.chosen_kinds[IndexOf(KindWords.at(LowerCase(word)))] = true;
  settings.download_kinds = settings.chosen_kinds;
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
