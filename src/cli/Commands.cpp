#include "cli/Commands.h"

#include <QCoreApplication>
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <thread>
#include <unistd.h>

#include "app/FileStore.h"
#include "app/ImportReport.h"
#include "app/PortSwitch.h"
#include "cli/TerminalDesktop.h"
#include "cli/TraceFile.h"
#include "cli/Watchdog.h"
#include "qt/PortList.h"
#include "qt/QtClock.h"
#include "qt/QtSerialPort.h"
#include "receiver/DemoSerialPort.h"
#include "text/Utf8.h"

namespace walrim {

namespace {

constexpr std::string_view StandardStream = "-";

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
  if (!printed) std::fputs((WriteProblemText("-", std::strerror(errno)) + "\n").c_str(), stderr);
  return printed;
}

/// Everything a command stands on.
class Terminal {
 public:
  Terminal(const Arguments& arguments, int argc, char** argv)
      : arguments_(arguments),
        application_(argc, argv),
        desktop_({arguments.quiet, arguments.force, ::isatty(STDERR_FILENO) != 0}, clock_),
        watchdog_(clock_, Interrupted),
        demo_port_({}, clock_, [](std::chrono::nanoseconds time) { std::this_thread::sleep_for(time); }),
        port_(serial_port_, demo_port_, IsDemoPortName),
        main_(port_, clock_, watchdog_, desktop_) {
    Controls& controls = main_.controls;
    controls.CommPort = arguments.port;
    controls.CheckedLink = arguments.link;
    controls.DegreeType = arguments.degree_type;
    controls.Datum = arguments.datum;
    controls.UTCOffsetNum = arguments.utc_offset_hours;
    controls.WithHeader = arguments.with_header;
    controls.MpsOption = arguments.mps_options;
    controls.Encoding = arguments.encoding;
    main_.Device().session.pacing_factor = arguments.pacing_factor;
  }

  ExitStatus Info();
  ExitStatus Download();
  ExitStatus Upload();
  ExitStatus Convert();

 private:
  [[nodiscard]] bool StartTrace();
  void Watch();
  [[nodiscard]] bool ImportFiles();
  [[nodiscard]] bool OutputUsable();
  [[nodiscard]] ExitStatus WriteOutput();
  [[nodiscard]] ExitStatus WriteStandardOutput();
  [[nodiscard]] ExitStatus Report(Outcome outcome);
  void ReportImport(const std::string& path);
  void Message(std::string_view text) { desktop_.ShowMessage(text); }

  const Arguments& arguments_;
  QCoreApplication application_;
  QtClock clock_;
  TraceFile trace_;
  TerminalDesktop desktop_;
  Watchdog watchdog_;
  QtSerialPort serial_port_;
  DemoSerialPort demo_port_;
  PortSwitch port_;
  WalrimMain main_;
};

bool Terminal::StartTrace() {
  if (arguments_.trace_path.empty()) return true;
  if (SameFile(arguments_.trace_path, arguments_.output) ||
      std::any_of(arguments_.files.begin(), arguments_.files.end(),
                  [this](const std::string& file) { return SameFile(arguments_.trace_path, file); })) {
    Message("通信の記録は，読み書きするデータとは別のファイルにしてください：" + arguments_.trace_path);
    return false;
  }
  if (!trace_.Open(arguments_.trace_path, arguments_.force)) {
    Message(WriteProblemText(arguments_.trace_path, trace_.Problem()));
    if (trace_.Refused()) Message(ForceAdvice);
    return false;
  }
  main_.Device().Link().SetTrace(&trace_);
  return true;
}

void Terminal::Watch() {
  CatchSignals();
  watchdog_.Watch([this] { return main_.Device().session.input_seen; }, [this] { main_.Cancel_Click(); });
}

ExitStatus Terminal::Report(Outcome outcome) {
  if (outcome != Outcome::Done && Interrupted()) outcome = Outcome::Cancelled;
  // The status line tells the notices too, and then stays.
  const std::vector<std::string> notices = main_.TakeNotices();
  if (!notices.empty()) desktop_.KeepStatus();
  if (arguments_.quiet) {
    for (const std::string& notice : notices)
      Message(notice);
  }
  if (main_.DamagedRecordsCame()) Message("誤り検査は --checked-link で指定できます．");
  if (!trace_.Problem().empty()) Message(WriteProblemText(arguments_.trace_path, trace_.Problem()));
  if (watchdog_.Stalled()) {
    Message("30秒間データが届かないため，通信を中止しました．");
    return ExitStatus::NoReceiver;
  }
  switch (outcome) {
    case Outcome::Done:
      return Interrupted() ? ExitStatus::Refused : ExitStatus::Done;
    case Outcome::Busy:
    case Outcome::Refused:
      return ExitStatus::Refused;
    case Outcome::Cancelled:
      Message("中止しました．");
      return ExitStatus::Refused;
    case Outcome::LinkLost:
      return ExitStatus::NoReceiver;
    case Outcome::NoReceiver:
      break;
  }
  if (main_.DeviceInfo().ProductId <= 0) Message(main_.IdentityText());
  return ExitStatus::NoReceiver;
}

ExitStatus Terminal::Info() {
  if (!StartTrace()) return ExitStatus::Refused;
  Watch();
  const ExitStatus status = Report(main_.Get_GpsInfo_Click());
  if (status != ExitStatus::Done) return status;
  std::string text = main_.controls.GpsInfo + "\n";
  for (const DataKind kind : AllDataKinds) {
    text += std::string(DataKindName(kind)) + " " + main_.controls.GpsDataNum[IndexOf(kind)] + "\n";
  }
  return PrintOut(text) ? ExitStatus::Done : ExitStatus::Refused;
}

/// Tells before a long transfer what would make its result unusable after it.
bool Terminal::OutputUsable() {
  const std::string& path = arguments_.output;
  std::string extension = arguments_.type_extension;
  if (extension.empty() && path != StandardStream) {
    extension = std::filesystem::path(path).extension().string();
    if (!extension.empty()) extension.erase(0, 1);
  }
  const OutputType& type = OutputTypeOfExtension(extension);
  main_.controls.OutputTypeOption = type.name;
  if (path == StandardStream) return true;
  if (const auto problem = CheckWritable(path)) {
    Message(WriteProblemText(path, problem->detail));
    return false;
  }
  return !FileExists(path) || desktop_.AskOkCancel(OverwriteQuestion(path));
}

ExitStatus Terminal::WriteStandardOutput() {
  const auto text = main_.BuildText();
  desktop_.SetStatusCaption("");
  if (!text || text->empty()) return ExitStatus::Refused;
  const auto bytes = main_.EncodeText(*text);
  return bytes && PrintOut(*bytes) ? ExitStatus::Done : ExitStatus::Refused;
}

ExitStatus Terminal::WriteOutput() {
  if (Interrupted()) return Report(Outcome::Cancelled);
  main_.controls.DoCheck = arguments_.kinds;
  // Once the file is there, a signal that came in the meantime changes nothing.
  const bool written = arguments_.output == StandardStream ? WriteStandardOutput() == ExitStatus::Done
                                                           : main_.ExportTo(arguments_.output) == Outcome::Done;
  for (const std::string& notice : main_.TakeNotices())
    Message(notice);
  if (!written && desktop_.AskedYesNo()) Message("--encoding utf8 を指定すると，UTF-8で保存できます．");
  return written ? ExitStatus::Done : ExitStatus::Refused;
}

ExitStatus Terminal::Download() {
  if (!OutputUsable() || !StartTrace()) return ExitStatus::Refused;
  Watch();
  main_.controls.DownCheck = arguments_.kinds;
  const ExitStatus status = Report(main_.GpsDownLoad_Click());
  return status == ExitStatus::Done ? WriteOutput() : status;
}

void Terminal::ReportImport(const std::string& path) {
  for (const std::string& complaint : ImportComplaints(main_.LastImport()))
    Message(std::string(path).append("：").append(complaint));
}

bool Terminal::ImportFiles() {
  for (const std::string& path : arguments_.files) {
    desktop_.SetStatusCaption("Import from " + path);
    const Outcome outcome = main_.ImportFile(path);
    desktop_.SetStatusCaption("");
    if (outcome != Outcome::Done) {
      // Most messages name their file.
      if (desktop_.LastMessage().find(path) == std::string::npos) Message("（" + path + "）");
      return false;
    }
    ReportImport(path);
  }
  const bool any = std::any_of(AllDataKinds.begin(), AllDataKinds.end(), [this](DataKind kind) {
    return arguments_.kinds[IndexOf(kind)] && main_.DataSetLoaded(kind);
  });
  if (!any) Message("取り込めるデータがありません．");
  return any;
}

ExitStatus Terminal::Upload() {
  ExitOnSignals();
  if (!ImportFiles() || !StartTrace()) return ExitStatus::Refused;
  Watch();
  main_.controls.DoCheck = arguments_.kinds;
  return Report(main_.GpsUpLoad_Click());
}

ExitStatus Terminal::Convert() {
  ExitOnSignals();
  if (!OutputUsable() || !ImportFiles()) return ExitStatus::Refused;
  CatchSignals();
  return WriteOutput();
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
    std::fprintf(stderr, "処理を中止しました：%s\n", WithoutControlCharacters(error.what()).c_str());
    return ExitStatus::Refused;
  }
}

ExitStatus RunCommand(const Arguments& arguments, int argc, char** argv) {
  IgnoreBrokenPipes();
  return SayingExceptions([&] { return Run(arguments, argc, argv); });
}

}  // namespace walrim
