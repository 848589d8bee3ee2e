#include "faults/Bench.h"

#include <algorithm>
#include <stdexcept>

#include "receiver/ReceiverHost.h"

namespace walrim {

namespace {

constexpr std::uint8_t Ack = 6;
constexpr std::uint8_t Command_Data = 10;
constexpr std::uint8_t Announcement = 27;

std::string Trimmed(std::string_view text) {
  return std::string(text.substr(0, text.find_last_not_of(' ') + 1));
}

std::string LineOfWaypoint(const Waypoint& waypoint) {
  const std::string ident = Trimmed(waypoint.ident);
  return ident.empty() ? "blank" : WaypointLine(ident, waypoint.lat_deg, waypoint.lon_deg);
}

std::vector<std::string> WaypointLines(const DataSet& data) {
  std::vector<std::string> lines;
  for (const Waypoint& waypoint : data.Waypoints())
    lines.push_back(LineOfWaypoint(waypoint));
  return lines;
}

std::vector<std::string> RouteLines(const DataSet& data) {
  std::vector<std::string> lines;
  for (const Route& route : data.Routes()) {
    lines.push_back(RouteLine(Trimmed(route.cmnt)));
    for (const RoutePoint& point : route.points) {
      lines.push_back(LineOfWaypoint(point.waypoint));
      if (!point.link->ident.empty()) lines.push_back(LinkLine(point.link->ident));
    }
  }
  return lines;
}

std::vector<std::string> TrackLines(const DataSet& data) {
  std::vector<std::string> lines;
  for (const TrackLog& log : data.Logs()) {
    if (!log.trk_ident.empty()) lines.push_back(TrackLine(log.trk_ident));
    for (const TrackPoint& point : log.points)
      lines.push_back(TrackPointLine(point.time.value_or(0), point.new_trk, point.lat_deg));
  }
  return lines;
}

std::uint8_t TransferCommand(DataKind kind) {
  constexpr std::array<std::uint8_t, DataKindCount> commands{7, 4, 6};
  return commands[IndexOf(kind)];
}

/// Kinds of the command in front of the one that is hit.
int KindsBefore(const Row& row) {
  return row.kind || !row.struck ? 0 : static_cast<int>(IndexOf(*row.struck));
}

/// The exchange with which the transfer of the kind that is hit begins.
std::size_t OpeningExchange(const Row& row, const std::vector<ExchangeOnLine>& run) {
  int uploads_before = KindsBefore(row);
  for (std::size_t i = 0; i < run.size(); ++i) {
    if (row.command == Command::Upload) {
      if (run[i].id == Announcement && uploads_before-- == 0) return i;
    } else if (row.struck && run[i].id == Command_Data && run[i].data[0] == TransferCommand(*row.struck)) {
      return i;
    }
  }
  throw std::out_of_range("no such transfer");
}

struct ExchangeAndAnswer {
  std::size_t exchange = 0;
  std::size_t answer = 0;
};

ExchangeAndAnswer FindPhase(const Row& row, const std::vector<ExchangeOnLine>& run) {
  if (row.phase == Phase::Request) return {0, 0};
  if (row.phase == Phase::Product) return {0, 1};
  const std::size_t opening = OpeningExchange(row, run);
  const int count = static_cast<int>(MovedRecords(row, *row.struck).size());
  const bool no_records = row.command == Command::Info;
  const std::size_t close = opening + static_cast<std::size_t>(count) + 1;
  switch (row.phase) {
    case Phase::Opening:
      return {opening, 0};
    case Phase::Number:
      return {opening, 1};
    case Phase::Close:
      return {close, 0};
    case Phase::NewOpening:
      return {close + 1, 0};
    case Phase::NewNumber:
      return {close + 1, 1};
    case Phase::End:
      return {no_records ? opening + 1 : close + (row.command == Command::Upload ? 2U : 1U), 0};
    default:
      return {opening + static_cast<std::size_t>(RecordNumber(row.phase, count)), 0};
  }
}

void AppendTurn(std::vector<ExchangeOnLine>& run, const LinePort::OneWay& turn) {
  for (const SeenFrame& frame : FramesIn(turn.bytes)) {
    if (turn.from_host) {
      run.push_back({frame.id, frame.data, {}});
    } else {
      run.back().answers.push_back(frame.id);
    }
  }
}

}  // namespace

Bench::Bench(Link link) {
  constexpr std::array choices{LinkChoice::Plain, LinkChoice::Checked, LinkChoice::Automatic};
  main.State().Settings().link = choices[static_cast<std::size_t>(link)];
  main.State().Settings().port = "demo";
}

void Bench::Plug(std::string_view model, const Amounts& holds, const std::string& fault, int baud) {
  DemoReceiverOptions options;
  options.model = model;
  options.baud = baud;
  options.contents = ContentsOf(holds);
  if (!fault.empty()) {
    const std::string problem = AddFault(options.faults, fault);
    if (!problem.empty()) throw std::invalid_argument(problem);
  }
  port.Plug(std::make_unique<DemoSerialPort>(options, clock, [this](auto time) { clock.Advance(time); }));
}

Outcome Bench::Run(Command command, std::optional<DataKind> kind) {
  std::array<bool, DataKindCount> kinds{true, true, true};
  if (kind) {
    kinds.fill(false);
    kinds[IndexOf(*kind)] = true;
  }
  main.State().Settings().download_kinds = kinds;
  main.State().Settings().chosen_kinds = kinds;
  loop_.watchdog.emplace(clock, [] { return false; });
  loop_.watchdog->Watch([this] { return main.Receiver().InputSeen(); }, [this] { main.Cancel(); });
  switch (command) {
    case Command::Info:
      return main.Device().GetInfo();
    case Command::Download:
      return main.Device().Download();
    case Command::Upload:
      break;
  }
  return main.Device().Upload();
}

void Bench::Forget() {
  desktop.messages.clear();
  desktop.questions.clear();
  desktop.captions.clear();
  desktop.progress.clear();
  port.turns.clear();
  static_cast<void>(main.State().Told().Take());
}

std::vector<std::string> Bench::Lines(DataKind kind) {
  switch (kind) {
    case DataKind::Waypoint:
      return WaypointLines(main.State().Data());
    case DataKind::Route:
      return RouteLines(main.State().Data());
    case DataKind::TrackLog:
      break;
  }
  return TrackLines(main.State().Data());
}

std::vector<ExchangeOnLine> CleanRun(const Row& row) {
  Bench bench(row.link);
  bench.Plug(row.model, MovedAmounts(row), "", 0);
  if (row.command == Command::Upload) {
    static_cast<void>(bench.Run(Command::Download, std::nullopt));
    bench.Plug(row.model, AllOld, "", 0);
    bench.Forget();
  }
  static_cast<void>(bench.Run(row.command, row.kind));
  std::vector<ExchangeOnLine> run;
  for (const LinePort::OneWay& turn : bench.port.turns)
    AppendTurn(run, turn);
  return run;
}

PhasePlace PlaceOf(const Row& row, const std::vector<ExchangeOnLine>& clean_run) {
  const ExchangeAndAnswer place = FindPhase(row, clean_run);
  PhasePlace found;
  found.answer_id = clean_run.at(place.exchange).answers.at(place.answer);
  found.frame = static_cast<int>(place.answer) + 1;
  for (std::size_t i = 0; i <= place.exchange; ++i) {
    if (clean_run[i].id != Ack) ++found.packet;
    if (i < place.exchange) found.frame += static_cast<int>(clean_run[i].answers.size());
  }
  return found;
}

std::string FaultText(const Row& row, const std::vector<ExchangeOnLine>& clean_run) {
  std::string text(row.fault->text);
  if (row.fault->counts == Counts::Nothing) return text;
  text.pop_back();
  const DataKind kind = row.struck.value_or(row.kind.value_or(DataKind::Waypoint));
  const int count = static_cast<int>(MovedRecords(row, kind).size());
  switch (row.fault->counts) {
    case Counts::Nothing:
      break;
    case Counts::FramesBefore:
      return text + std::to_string(PlaceOf(row, clean_run).frame - 1);
    case Counts::Frame:
      return text + std::to_string(PlaceOf(row, clean_run).frame);
    case Counts::Packet:
      return text + std::to_string(PlaceOf(row, clean_run).packet);
    case Counts::RecordsBefore:
      return text + std::to_string(RecordNumber(row.phase, count) - 1);
    case Counts::Record:
      return text + std::to_string(RecordNumber(row.phase, count));
    case Counts::HalfOfRecords:
      return text + std::to_string(count / 2);
  }
  return text;
}

}  // namespace walrim
