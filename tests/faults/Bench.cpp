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

std::string LineOfWaypoint(const WaypointRecord& record) {
  const std::string ident = Trimmed(record[WaypointField::ident]);
  if (ident.empty()) return "blank";
  return WaypointLine(ident, std::stod(record[WaypointField::lat]), std::stod(record[WaypointField::lon]));
}

std::vector<std::string> WaypointLines(InternalData& data) {
  std::vector<std::string> lines;
  for (int slot = 1; slot <= data.WaypointCount; ++slot)
    lines.push_back(LineOfWaypoint(data.GetWaypoint(slot)));
  return lines;
}

std::vector<std::string> RouteLines(InternalData& data) {
  std::vector<std::string> lines;
  const RouteCounters& routes = data.mirrored_routes;
  for (int r = 1; r <= routes.RouteCount; ++r) {
    lines.push_back(RouteLine(Trimmed(data.GetRouteHeader(r)[RouteHeaderField::cmnt])));
    const int first = routes.first_point.at(static_cast<std::size_t>(r));
    for (int p = first; p < first + routes.RoutePointCount.at(static_cast<std::size_t>(r)); ++p) {
      const RoutePoint point = data.GetRoutePoint(r, p);
      lines.push_back(LineOfWaypoint(point.waypoint));
      const std::string link = point.link[LinkField::ident];
      if (!link.empty()) lines.push_back(LinkLine(link));
    }
  }
  return lines;
}

std::vector<std::string> TrackLines(InternalData& data) {
  std::vector<std::string> lines;
  const TrackCounters& tracks = data.mirrored_tracks;
  for (int log = 0; log <= tracks.TrackCount; ++log) {
    const std::string ident = data.GetTrackHeader(log)[TrackHeaderField::trk_ident];
    if (!ident.empty()) lines.push_back(TrackLine(ident));
    for (int p = 0; p < tracks.TrackPointCount.at(static_cast<std::size_t>(log)); ++p) {
      const TrackPointEntry& point = data.TrackPointAt(log, p);
      lines.push_back(TrackPointLine(static_cast<std::uint32_t>(point.time), point.new_trk, point.lat_deg));
    }
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
  main.controls.CheckedLink = choices[static_cast<std::size_t>(link)];
  main.controls.CommPort = "demo";
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
  main.controls.DownCheck = kinds;
  main.controls.DoCheck = kinds;
  loop_.watchdog.emplace(clock, [] { return false; });
  loop_.watchdog->Watch([this] { return main.Device().session.input_seen; }, [this] { main.Cancel_Click(); });
  switch (command) {
    case Command::Info:
      return main.Get_GpsInfo_Click();
    case Command::Download:
      return main.GpsDownLoad_Click();
    case Command::Upload:
      break;
  }
  return main.GpsUpLoad_Click();
}

void Bench::Forget() {
  desktop.messages.clear();
  desktop.questions.clear();
  desktop.captions.clear();
  desktop.progress.clear();
  port.turns.clear();
  static_cast<void>(main.TakeNotices());
}

std::vector<std::string> Bench::Lines(DataKind kind) {
  switch (kind) {
    case DataKind::Waypoint:
      return WaypointLines(main.Data());
    case DataKind::Route:
      return RouteLines(main.Data());
    case DataKind::TrackLog:
      break;
  }
  return TrackLines(main.Data());
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
