// walrim-receiver: the receiver made of software on a pseudo-terminal.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <poll.h>
#include <string>
#include <sys/prctl.h>
#include <sys/signalfd.h>
#include <time.h>
#include <vector>

#include "receiver/DemoContents.h"
#include "receiver/MemoryFile.h"
#include "receiver/PseudoTerminal.h"
#include "receiver/ReceiverFaults.h"
#include "receiver/ReceiverFix.h"
#include "receiver/ReceiverMemory.h"
#include "receiver/ReceiverModel.h"
#include "receiver/SoftReceiver.h"
#include "receiver/TraceReplay.h"
#include "receiver/UnaskedTalker.h"
#include "text/Dates.h"

namespace walrim {
namespace {

using std::chrono::nanoseconds;

struct Options {
  std::string model = "eTrex";
  std::string memory_path;
  int utc_offset_hours = 9;
  int baud = 9600;
  std::string link;
  std::vector<std::string> fault_texts;
  ReceiverFaults faults;
  bool strict = false;
  std::string mode;
  std::string trace_path;
  std::string clock;
  int roll_overs = 0;
};

constexpr int ExitDone = 0;
constexpr int ExitRefused = 1;
constexpr int ExitWrongOptions = 2;
constexpr int MaxBaud = 4'000'000;

// Seconds since 1989/12/31 00:00:00 of a date in UTC as ISO 8601 writes it; nothing for any other text.
std::optional<std::int64_t> ClockOf(std::string text) {
  if (text.ends_with('Z')) text.pop_back();
  if (text.size() > 10 && text[10] == 'T') text[10] = ' ';
  const auto time = ParseDateTime(text);
  if (!time || SecondsSinceGarminEpoch(*time) < 0) return std::nullopt;
  return SecondsSinceGarminEpoch(*time);
}

std::string FaultHelp() {
  std::string text = "What the receiver does wrong, any number of times:";
  for (const std::string& form : FaultForms())
    text += " " + form;
  return text;
}

void DescribeOptions(CLI::App& app, Options& options) {
  std::vector<std::string> models;
  for (const ReceiverModel& model : ReceiverModels())
    models.emplace_back(model.name);
  app.add_option("--model", options.model, "The receiver's model")->check(CLI::IsMember(models))->capture_default_str();
  app.add_option("--memory", options.memory_path, "Standard file that fills the memory; else demonstration data");
  app.add_option("--utc-offset", options.utc_offset_hours, "Hours that the memory file's times are ahead of UTC")
      ->check(CLI::Range(-12, 14))
      ->capture_default_str();
  app.add_option("--baud", options.baud, "Pace of the line in bits a second; 0 sends at once")
      ->check(CLI::Range(0, MaxBaud))
      ->capture_default_str();
  app.add_option("--link", options.link, "Symbolic link to the pseudo-terminal while it serves");
  app.add_flag("--strict", options.strict,
               "Takes only what the protocol's pages allow, and keeps a real receiver's limits");
  app.add_option("--mode", options.mode, "Sends nmea[:BAUD], text, noise or nothing (silent) instead of the protocol")
      ->type_name("MODE")
      ->check([](const std::string& text) {
        return TalkerSettingOf(text) ? "" : "nmea, nmea:BAUD, text, noise or silent";
      });
  app.add_option("--replay", options.trace_path, "Answers as the receiver of a trace did, to the same packets")
      ->type_name("TRACE")
      ->excludes("--mode");
  app.add_option("--clock", options.clock, "Sets its clock, in UTC (YYYY-MM-DD or YYYY-MM-DDTHH:MM:SSZ); it runs on")
      ->type_name("DATE")
      ->check([](const std::string& text) { return ClockOf(text) ? "" : "a date such as 2026-11-22T09:30:00Z"; });
  app.add_option("--rollovers", options.roll_overs,
                 "Dates its clock and new logs this often 1024 weeks back, until its clock is set")
      ->type_name("K")
      ->check(CLI::Range(0, 3));
  app.add_option("--fault", options.fault_texts, FaultHelp())
      ->type_name("KIND[=N]")
      ->expected(1)
      ->take_all()
      ->allow_extra_args(false);
}

void ReadFaults(Options& options) {
  for (const std::string& text : options.fault_texts) {
    const std::string problem = AddFault(options.faults, text);
    if (!problem.empty()) throw CLI::ValidationError("--fault", problem);
  }
}

int Refuse(const std::string& problem) {
  std::fprintf(stderr, "walrim-receiver: %s\n", problem.c_str());
  return ExitRefused;
}

nanoseconds Now() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return std::chrono::seconds(now.tv_sec) + nanoseconds(now.tv_nsec);
}

std::int64_t UtcSeconds() {
  constexpr std::int64_t garmin_epoch_in_unix_time = 631'065'600;
  return static_cast<std::int64_t>(time(nullptr)) - garmin_epoch_in_unix_time;
}

// The signals that end the program, as something to poll.
int EndSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP})
    sigaddset(&signals, signal);
  sigprocmask(SIG_BLOCK, &signals, nullptr);
  return signalfd(-1, &signals, SFD_NONBLOCK | SFD_CLOEXEC);
}

// Waits until one of the descriptors is readable or the time has come.
void WaitFor(std::array<pollfd, 3>& descriptors, const std::optional<nanoseconds>& due) {
  timespec timeout{};
  if (due) {
    const nanoseconds wait = std::max(*due - Now(), nanoseconds(0));
    timeout.tv_sec = static_cast<time_t>(std::chrono::duration_cast<std::chrono::seconds>(wait).count());
    timeout.tv_nsec = static_cast<long>((wait % std::chrono::seconds(1)).count());
  }
  for (pollfd& descriptor : descriptors)
    descriptor.revents = 0;
  ppoll(descriptors.data(), descriptors.size(), due ? &timeout : nullptr, nullptr);
}

// Until a signal comes or the line is pulled.
void Serve(PseudoTerminal& terminal, LineEnd& receiver, int end_signals) {
  std::array<pollfd, 3> descriptors{pollfd{end_signals, POLLIN, 0}, pollfd{terminal.ClientDescriptor(), POLLIN, 0},
                                    pollfd{terminal.LineDescriptor(), POLLIN, 0}};
  while (!receiver.LineClosed()) {
    WaitFor(descriptors, receiver.NextDue());
    if (descriptors[0].revents != 0) return;
    if (descriptors[1].revents != 0) terminal.TakeClientEvents();
    if (descriptors[2].revents != 0) {
      terminal.TakeClientEvents();  // whoever wrote has opened before
      receiver.Receive(terminal.Read(), Now());
    }
    terminal.Write(receiver.Send(Now()));
  }
  terminal.WaitUntilRead(std::chrono::milliseconds(250));
}

std::unique_ptr<LineEnd> MakeTalker(const std::string& mode) {
  const auto clock_s = std::chrono::floor<std::chrono::seconds>(Now()).count();
  return std::make_unique<UnaskedTalker>(TalkerSettingOf(mode).value(), UtcSeconds() - clock_s);
}

// The demonstration's logs, recorded by whole weeks later: the last of them in the week before a moment.
void MoveLogs(HeldContents& contents, std::int64_t utc_s) {
  constexpr std::int64_t week_s = 7 * 86400;
  const std::int64_t later_s = (utc_s - DemoUtcSeconds()) / week_s * week_s;
  for (HeldTrackLog& log : contents.track_logs) {
    for (HeldTrackPoint& point : log.points)
      point.time_s = static_cast<std::uint32_t>(point.time_s + later_s);
  }
}

// Whether all logs stay behind the epoch of the receivers' times.
bool CanFallBack(const HeldContents& contents, int roll_overs) {
  return std::ranges::all_of(contents.track_logs, [&](const HeldTrackLog& log) {
    return log.points.empty() || log.points.front().time_s > roll_overs * SecondsPerRollOver;
  });
}

// Nothing, with the reason in problem, where the memory's file cannot be used.
std::unique_ptr<LineEnd> MakeReceiver(const Options& options, std::string& problem) {
  const ReceiverModel& model = *FindReceiverModel(options.model);
  MemoryFileResult memory{DemoContents(model), {}, 0, 0};
  if (!options.memory_path.empty()) memory = LoadMemoryFile(options.memory_path, options.utc_offset_hours);
  problem = memory.problem;
  const std::int64_t utc_s = ClockOf(options.clock).value_or(UtcSeconds());
  if (memory.contents && options.memory_path.empty() && options.roll_overs > 0) {
    MoveLogs(*memory.contents, utc_s);
    if (!CanFallBack(*memory.contents, options.roll_overs)) problem = "--rollovers: no dates so long ago";
  }
  if (!problem.empty()) return nullptr;
  if (!memory.contents) return nullptr;
  if (memory.skipped > 0) {
    std::fprintf(stderr, "walrim-receiver: %s: %d lines skipped, the first is line %d\n", options.memory_path.c_str(),
                 memory.skipped, memory.first_skipped_line);
  }
  auto receiver =
      std::make_unique<SoftReceiver>(model, EncodeMemory(*memory.contents, model), options.baud, options.faults,
                                     options.strict ? ReceiverTemper::Strict : ReceiverTemper::Lenient);
  receiver->SetClock(utc_s, Now());
  receiver->FallBack(options.roll_overs, options.memory_path.empty());
  return receiver;
}

// Serves on a pseudo-terminal of its own. The exit status.
int ServeLine(LineEnd& receiver, const Options& options) {
  const Descriptor end_signals(EndSignals());
  PseudoTerminal terminal;
  std::string problem = terminal.Open();
  if (!problem.empty()) return Refuse(problem);
  PathLink link;
  if (!options.link.empty()) problem = link.Make(options.link, terminal.Path());
  if (!problem.empty()) return Refuse(problem);

  std::printf("%s\n", terminal.Path().c_str());
  std::fflush(stdout);
  // Waits are held to a microsecond: the usual slack is a twentieth of a byte.
  prctl(PR_SET_TIMERSLACK, 1000UL, 0UL, 0UL, 0UL);
  Serve(terminal, receiver, end_signals.Get());
  return ExitDone;
}

// The trace's receiver is done when a packet differs, with an error.
int ServeTrace(const Options& options) {
  std::ifstream file(options.trace_path, std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  if (!file) return Refuse(options.trace_path + " cannot be read");
  TraceReading trace = ReadTrace(text);
  if (!trace.problem.empty()) return Refuse(options.trace_path + ": " + trace.problem);
  TraceReplay replay(std::move(trace.steps));
  const int status = ServeLine(replay, options);
  return replay.Problem().empty() ? status : Refuse(options.trace_path + ": " + replay.Problem());
}

int Run(const Options& options) {
  if (!options.trace_path.empty()) return ServeTrace(options);
  std::string problem;
  const std::unique_ptr<LineEnd> receiver =
      options.mode.empty() ? MakeReceiver(options, problem) : MakeTalker(options.mode);
  return receiver == nullptr ? Refuse(problem) : ServeLine(*receiver, options);
}

}  // namespace
}  // namespace walrim

int main(int argc, char** argv) {
  using walrim::Options;
  Options options;
  CLI::App app("A GPS receiver made of software, on a pseudo-terminal whose path is its first line of output.",
               "walrim-receiver");
  walrim::DescribeOptions(app, options);
  try {
    app.parse(argc, argv);
    walrim::ReadFaults(options);
  } catch (const CLI::ParseError& problem) {
    return app.exit(problem) == 0 ? walrim::ExitDone : walrim::ExitWrongOptions;
  }
  return walrim::Run(options);
}
