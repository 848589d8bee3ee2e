#include "cli/Commands.h"

#include <QCoreApplication>
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <filesystem>
#include <thread>
#include <unistd.h>

#include "app/FileStore.h"
#include "app/Messages.h"
#include "app/PortSwitch.h"
#include "app/WalrimMain.h"
#include "cli/DoctorOutput.h"
#include "cli/Messages.h"
#include "cli/StatsOutput.h"
#include "cli/TerminalDesktop.h"
#include "cli/TerminalReview.h"
#include "cli/TraceFile.h"
#include "cli/Watchdog.h"
#include "preflight/Messages.h"
#include "qt/PortList.h"
#include "qt/QtClock.h"
#include "qt/QtSerialPort.h"
#include "qt/SystemPortFacts.h"
#include "receiver/DemoSerialPort.h"
#include "text/Utf8.h"

namespace walrim {

namespace {

bool IsDemoPortName(std::string_view name) {
  return name == "demo" || name.starts_with("demo:");
}

/// Whether two paths name one file, which need not be there yet.
bool SameFile(const std::string& path, const std::string& other) {
  std::error_code error;
  if (path.empty() || other.empty()) return false;
  if (std::filesystem::equivalent(path, other, error)) return true;
  return std::filesystem::weakly_canonical(path, error) == std::filesystem::weakly_canonical(other, error);
}

/// Prints to standard output; says so when that cannot be written.
bool PrintOut(std::string_view text) {
  const bool printed = std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
  if (!printed) std::fputs((messages::WriteProblem(StandardStream, std::strerror(errno)) + "\n").c_str(), stderr);
  return printed;
}

/// Whether somebody sits there who can answer.
bool IsTerminal() {
  return ::isatty(STDIN_FILENO) != 0 && ::isatty(STDERR_FILENO) != 0;
}

TerminalDesktop::Questions QuestionsOf(const Arguments& arguments) {
  using Questions = TerminalDesktop::Questions;
  if (arguments.yes) return Questions::Agree;
  return arguments.command == CliCommand::SetClock && IsTerminal() ? Questions::Ask : Questions::Refuse;
}

/// Everything a command stands on.
class Terminal {
 public:
  Terminal(const Arguments& arguments, int argc, char** argv)
      : arguments_(arguments),
        application_(argc, argv),
        desktop_({arguments.quiet || arguments.command == CliCommand::Doctor, arguments.force,
                  ::isatty(STDERR_FILENO) != 0, QuestionsOf(arguments)},
                 clock_),
        watchdog_(clock_, Interrupted),
        demo_port_({}, clock_, [](std::chrono::nanoseconds time) { std::this_thread::sleep_for(time); }),
        port_(serial_port_, demo_port_, IsDemoPortName),
        facts_(clock_),
        main_(port_, clock_, watchdog_, desktop_, nullptr, nullptr, &facts_) {
    main_.State().Settings() = arguments.settings;
    main_.Names().Use(NamesPath(std::getenv("XDG_DATA_HOME"), std::getenv("HOME")));
    main_.Receiver().SetPacing(arguments.pacing_factor);
    main_.Receiver().SetTrace(nullptr);  // nobody asks for it afterwards
  }

  ExitStatus Info();
  ExitStatus Download();
  ExitStatus Upload();
  ExitStatus Convert();
  ExitStatus Doctor();
  ExitStatus SetClock();
  ExitStatus Stats();

 private:
  [[nodiscard]] bool StartTrace();
  void Watch();
  [[nodiscard]] bool ImportFiles();
  [[nodiscard]] bool OutputUsable();
  [[nodiscard]] bool BackupUsable();
  void HandleDates();
  [[nodiscard]] ExitStatus WriteOutput();
  [[nodiscard]] ExitStatus Report(Outcome outcome);
  void ReportImport(const std::string& path);
  void Message(std::string_view text) { desktop_.ShowMessage(text); }

  const Arguments& arguments_;
  QCoreApplication application_;
  QtClock clock_;
  TraceFile trace_;
  TerminalDesktop desktop_;
  TerminalReview review_{desktop_};
  Watchdog watchdog_;
  QtSerialPort serial_port_;
  DemoSerialPort demo_port_;
  PortSwitch port_;
  SystemPortFacts facts_;
  WalrimMain main_;
};

bool Terminal::StartTrace() {
  if (arguments_.trace_path.empty()) return true;
  if (SameFile(arguments_.trace_path, arguments_.output) ||
      std::any_of(arguments_.files.begin(), arguments_.files.end(),
                  [this](const std::string& file) { return SameFile(arguments_.trace_path, file); })) {
    Message(std::string(cli_messages::TraceIsData) + arguments_.trace_path);
    return false;
  }
  if (!trace_.Open(arguments_.trace_path, arguments_.force)) {
    Message(messages::WriteProblem(arguments_.trace_path, trace_.Problem()));
    if (trace_.Refused()) Message(cli_messages::ForceAdvice);
    return false;
  }
  if (arguments_.hide_positions) trace_.HidePositions();
  main_.Receiver().SetTrace(&trace_);
  return true;
}

void Terminal::Watch() {
  CatchSignals();
  watchdog_.Watch([this] { return main_.Receiver().InputSeen(); }, [this] { main_.Cancel(); });
}

ExitStatus Terminal::Report(Outcome outcome) {
  if (outcome != Outcome::Done && Interrupted()) outcome = Outcome::Cancelled;
  // The status line tells the notices too, and then stays.
  const std::vector<std::string> notices = main_.State().Told().Take();
  if (!notices.empty()) desktop_.KeepStatus();
  if (arguments_.quiet) {
    for (const std::string& notice : notices)
      Message(notice);
  }
  if (main_.Device().DamagedRecordsCame()) Message(cli_messages::CheckedLinkAdvice);
  if (!trace_.Problem().empty()) Message(messages::WriteProblem(arguments_.trace_path, trace_.Problem()));
  if (watchdog_.Stalled()) {
    Message(cli_messages::Stalled);
    return ExitStatus::NoReceiver;
  }
  switch (outcome) {
    case Outcome::Done:
      return Interrupted() ? ExitStatus::Refused : ExitStatus::Done;
    case Outcome::Busy:
    case Outcome::Refused:
      return ExitStatus::Refused;
    case Outcome::Cancelled:
      Message(cli_messages::Cancelled);
      return ExitStatus::Refused;
    case Outcome::LinkLost:
      return ExitStatus::NoReceiver;
    case Outcome::NoReceiver:
      break;
  }
  if (main_.Device().Identified().product_id <= 0) Message(main_.Device().IdentityText());
  return ExitStatus::NoReceiver;
}

ExitStatus Terminal::Info() {
  if (!StartTrace()) return ExitStatus::Refused;
  Watch();
  const ExitStatus status = Report(main_.Device().GetInfo());
  if (status != ExitStatus::Done) return status;
  std::string text = main_.State().ReceiverText() + "\n";
  for (const DataKind kind : AllDataKinds) {
    text +=
        std::string(DataKindName(kind)) + " " + std::to_string(main_.State().ReceiverCount(kind).value_or(0)) + "\n";
  }
  if (!PrintOut(text)) return ExitStatus::Refused;
  main_.Dates().TellReceiverClock();
  return ExitStatus::Done;
}

/// Tells before a long transfer what would make its result unusable after it.
bool Terminal::OutputUsable() {
  const std::string& path = arguments_.output;
  if (path == StandardStream) return true;
  if (const auto problem = CheckWritable(path)) {
    Message(messages::WriteProblem(path, problem->detail));
    return false;
  }
  return !FileExists(path) || desktop_.AskOkCancel(messages::OverwriteQuestion(path));
}

/// Repairs the dates that are written, where that is wanted; else tells what would be repaired.
void Terminal::HandleDates() {
  const UserSettings& settings = main_.State().Settings();
  const std::vector<DateRepair>& repairs = main_.State().DateRepairs();
  if (repairs.empty() || !settings.chosen_kinds[IndexOf(DataKind::TrackLog)]) return;
  const std::string told = messages::DatesBehind(repairs, settings.utc_offset_hours);
  const bool ask = settings.date_fixing == DateFixing::Ask && IsTerminal();
  const bool fix = settings.date_fixing == DateFixing::Auto || settings.date_fixing == DateFixing::ByNumber;
  if (fix) {
    desktop_.SetStatusCaption(told);
  } else if (!ask) {
    Message(told + std::string(cli_messages::FixDatesAdvice));
  }
  const bool wanted = fix || (ask && desktop_.AskOnTerminal(told + std::string(cli_messages::FixDatesQuestion)));
  if (wanted) static_cast<void>(main_.Dates().FixDates());
}

ExitStatus Terminal::WriteOutput() {
  if (Interrupted()) return Report(Outcome::Cancelled);
  // Once the file is there, a signal that came in the meantime changes nothing.
  const bool written =
      Outcome::Done == (arguments_.output == StandardStream ? main_.Exports().ExportToStandardOutput()
                                                            : main_.Exports().ExportTo(arguments_.output));
  for (const std::string& notice : main_.State().Told().Take())
    Message(notice);
  if (!written && desktop_.AskedYesNo()) Message(cli_messages::Utf8Advice);
  return written ? ExitStatus::Done : ExitStatus::Refused;
}

ExitStatus Terminal::Download() {
  if (!OutputUsable() || !StartTrace()) return ExitStatus::Refused;
  Watch();
  const ExitStatus status = Report(main_.Device().Download());
  if (status != ExitStatus::Done) return status;
  HandleDates();
  return WriteOutput();
}

void Terminal::ReportImport(const std::string& path) {
  for (const std::string& complaint : messages::ImportComplaints(main_.Imports().LastImport()))
    Message(cli_messages::OfFile(path, complaint));
}

bool Terminal::ImportFiles() {
  for (const std::string& path : arguments_.files) {
    desktop_.SetStatusCaption(std::string(messages::ImportFrom) + path);
    const Outcome outcome = main_.Imports().ImportFile(path);
    desktop_.SetStatusCaption("");
    if (outcome != Outcome::Done) {
      // The message has named it, but standard input not as it stands in the command line.
      if (path == StandardStream) Message(cli_messages::Named(path));
      return false;
    }
    ReportImport(path);
  }
  const bool any = AnyOf(main_.State().WantedKinds());
  if (!any) Message(cli_messages::NothingImported);
  return any;
}

ExitStatus Terminal::Upload() {
  ExitOnSignals();
  if (!BackupUsable() || !ImportFiles() || !StartTrace()) return ExitStatus::Refused;
  Watch();
  UploadCommands& uploads = main_.Uploads();
  uploads.SetReview(&review_);
  const ExitStatus status = Report(uploads.Upload(arguments_.care));
  if (status != ExitStatus::Done) return status;
  std::string lines;
  if (arguments_.care.check) {
    for (const UploadFinding& finding : uploads.Plan().findings)
      lines += preflight_messages::FindingLine(uploads.Plan().data, finding) + "\n";
  }
  for (const Difference& difference : uploads.Differences())
    lines += preflight_messages::DifferenceLine(uploads.Sent(), difference) + "\n";
  if (!PrintOut(lines)) return ExitStatus::Refused;
  return lines.empty() ? ExitStatus::Done : ExitStatus::Lost;
}

/// Tells before a long transfer what would make its backup impossible, or overwrite what is sent.
bool Terminal::BackupUsable() {
  const std::string& path = arguments_.care.backup;
  if (path.empty() || arguments_.care.check) return true;
  if (path == StandardStream || SameFile(path, arguments_.trace_path) ||
      std::ranges::any_of(arguments_.files, [&](const std::string& file) { return SameFile(path, file); })) {
    Message(std::string(cli_messages::BackupIsData) + path);
    return false;
  }
  const auto problem = CheckWritable(path);
  if (problem) Message(messages::WriteProblem(path, problem->detail));
  return !problem;
}

ExitStatus Terminal::Convert() {
  ExitOnSignals();
  if (!OutputUsable() || !ImportFiles()) return ExitStatus::Refused;
  HandleDates();
  CatchSignals();
  return WriteOutput();
}

ExitStatus ExitOf(Outcome doctor) {
  return doctor == Outcome::Done ? ExitStatus::Done : ExitStatus::NoReceiver;
}

ExitStatus Terminal::SetClock() {
  if (!StartTrace()) return ExitStatus::Refused;
  Watch();
  const ExitStatus status = Report(main_.Device().SetClock());
  if (desktop_.AskedYesNo()) Message(cli_messages::YesAdvice);
  return status;
}

/// The steps as they are done, the finding and what to do; with --json all of it at the end.
ExitStatus Terminal::Doctor() {
  CatchSignals();
  watchdog_.Watch([] { return std::int64_t{0}; }, [this] { main_.Cancel(); });
  DoctorCommands& doctor = main_.Doctor();
  bool printed = true;
  if (!arguments_.json) {
    doctor.SetLineTold([&](std::string_view line) { printed = PrintOut(std::string(line) + "\n") && printed; });
  }
  const Outcome outcome = arguments_.find ? doctor.FindReceiver() : doctor.Examine();
  if (outcome == Outcome::Cancelled || Interrupted()) return Report(Outcome::Cancelled);
  if (arguments_.find) printed = PrintOut(doctor.Headline() + "\n") && printed;
  if (arguments_.find) return !printed ? ExitStatus::Refused : ExitOf(outcome);
  const LineReport& report = *doctor.Report();
  printed = PrintOut(arguments_.json ? DoctorJson(report, doctor.Lines()) : DoctorText(report)) && printed;
  if (!printed) return ExitStatus::Refused;
  return ExitOf(outcome);
}

ExitStatus Terminal::Stats() {
  ExitOnSignals();
  if (!ImportFiles()) return ExitStatus::Refused;
  const DataSet& data = main_.State().Data();
  if (data.Routes().empty() && data.Logs().empty()) {
    Message(cli_messages::NothingToMeasure);
    return ExitStatus::Refused;
  }
  const std::string text = arguments_.json ? StatsJson(data) : StatsText(data, arguments_.settings.utc_offset_hours);
  return PrintOut(text) ? ExitStatus::Done : ExitStatus::Refused;
}

ExitStatus ListPortsCommand() {
  std::string text;
  for (const NumberedPort& port : ListPorts()) {
    text += (port.number > 0 ? std::to_string(port.number) : "-") + "\t" + port.device + "\t" + port.description + "\n";
  }
  return PrintOut(text) ? ExitStatus::Done : ExitStatus::Refused;
}

ExitStatus Run(const Arguments& arguments, int argc, char** argv) {
  if (arguments.command == CliCommand::Ports) return ListPortsCommand();
  Terminal terminal(arguments, argc, argv);
  switch (arguments.command) {
    case CliCommand::Info:
      return terminal.Info();
    case CliCommand::Download:
      return terminal.Download();
    case CliCommand::Upload:
      return terminal.Upload();
    case CliCommand::Convert:
      return terminal.Convert();
    case CliCommand::Doctor:
      return terminal.Doctor();
    case CliCommand::SetClock:
      return terminal.SetClock();
    case CliCommand::Stats:
      return terminal.Stats();
    case CliCommand::Ports:
      break;
  }
  return ExitStatus::BadUsage;
}

}  // namespace

ExitStatus SayingExceptions(const std::function<ExitStatus()>& run) {
  try {
    return run();
  } catch (const std::exception& error) {
    std::fputs((messages::BrokenOff(WithoutControlCharacters(error.what())) + "\n").c_str(), stderr);
    return ExitStatus::Refused;
  }
}

ExitStatus RunCommand(const Arguments& arguments, int argc, char** argv) {
  IgnoreBrokenPipes();
  return SayingExceptions([&] { return Run(arguments, argc, argv); });
}

}  // namespace walrim
