// A receiver that answers anything: a download of each kind ends with the port closed and with data that can be
// written. And one that holds any records and sends them as it should: what is held then is what it holds.
//
// The first byte chooses the kind (two bits), the receiver's types (two bits), the mode (three bits: 7 counts only, 2
// and 6 are the receiver that does as it should) and the link (one bit: checked). The rest are the records that the
// receiver holds, each a byte that chooses its id, its number of bytes and its data; or it is a list of answers, one
// for each frame that the host sends, each begun by a byte whose low three bits choose its form:
//   0            none
//   1 n bytes    bytes that are no frame
//   2 id n data  an ACK, and a frame
//   3 id n data  a frame
//   4 n data     a record of the kind, chosen by the high bits of the form
//   5            the end of the transfer
//   6 lo hi      an ACK, and the number of records
//   7            the answer before once more
// Once the list is at its end the receiver is silent.
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "data/GeneralWalrim.h"
#include "data/InternalData.h"
#include "device/Garmin.h"
#include "support/Fakes.h"
#include "support/ScriptedReceiver.h"
#include "text/Utf8.h"

using namespace walrim;

namespace {

/// After this many turns of the event loop the user has had enough.
constexpr int MostYields = 500;
/// More records, and longer ones, find nothing new.
constexpr std::size_t MostRecords = 24;
constexpr std::size_t LongestRecord = 200;

constexpr std::array<std::string_view, 4> Descriptions{"GPS 12 Software", "GPS III Software", "GPS 12CX Software",
                                                       "eTrex Software"};

/// Takes an input apart; what is not there is 0 or empty.
class InputReader {
 public:
  explicit InputReader(std::span<const std::uint8_t> input) : input_(input) {}

  [[nodiscard]] bool AtEnd() const { return input_.empty(); }
  std::uint8_t Byte() {
    if (input_.empty()) return 0;
    const std::uint8_t byte = input_[0];
    input_ = input_.subspan(1);
    return byte;
  }
  /// Bytes behind their number.
  Bytes Counted() {
    const std::size_t wanted = Byte();
    const std::size_t size = std::min(wanted, input_.size());
    const auto bytes = input_.first(size);
    input_ = input_.subspan(size);
    return {bytes.begin(), bytes.end()};
  }

 private:
  std::span<const std::uint8_t> input_;
};

/// Id of one of a kind's records.
int RecordId(DataKind kind, int choice) {
  switch (kind) {
    case DataKind::Waypoint:
      return 35;
    case DataKind::Route:
      return std::array{29, 30, 98}[static_cast<std::size_t>(choice % 3)];
    case DataKind::TrackLog:
      return std::array{34, 99}[static_cast<std::size_t>(choice % 2)];
  }
  return 0;
}

/// The receiver's side of the line.
class AnyReceiver {
 public:
  AnyReceiver(InputReader input, DataKind kind) : input_(input), kind_(kind) {}

  std::vector<ScriptedPort::Answer> Answer(const Bytes& frame) {
    if (input_.AtEnd()) return {};
    NextAnswer(frame.at(1));
    return {{std::chrono::milliseconds{2}, last_}};
  }

 private:
  void NextAnswer(std::uint8_t host_id) {
    const std::uint8_t form = input_.Byte();
    switch (form % 8) {
      case 0:
        last_.clear();
        break;
      case 1:
        last_ = input_.Counted();
        break;
      case 2:
        last_ = WireFrame(Pid_Ack_Byte, Int16(host_id));
        AppendFrame(input_.Byte());
        break;
      case 3:
        last_.clear();
        AppendFrame(input_.Byte());
        break;
      case 4:
        last_.clear();
        AppendFrame(RecordId(kind_, form / 8));
        break;
      case 5:
        last_ = WireFrame(12, Int16(0));
        break;
      case 6:
        last_ = WireFrame(Pid_Ack_Byte, Int16(host_id));
        Append(WireFrame(27, {input_.Byte(), input_.Byte()}));
        break;
      default:
        break;
    }
  }
  void AppendFrame(int id) { Append(WireFrame(id, input_.Counted())); }
  void Append(const Bytes& bytes) { last_.insert(last_.end(), bytes.begin(), bytes.end()); }

  InputReader input_;
  DataKind kind_;
  Bytes last_;
};

/// What is held of a kind, in the text of the standard file.
std::string TextOf(InternalData& data, DataKind kind) {
  static const NameTablesByType names;
  StandardWriter writer(data, names, {});
  std::string text;
  writer.AppendKind(text, kind, true);
  if (!IsValidUtf8(text)) std::abort();
  return text;
}

/// The records that a receiver of these types can hold.
std::vector<PlainPacket> RecordsOf(InputReader input, DataKind kind, const DeviceProtocols& types) {
  std::vector<PlainPacket> records;
  while (!input.AtEnd() && records.size() < MostRecords) {
    const int id = RecordId(kind, input.Byte());
    Bytes data = input.Counted();
    data.resize(std::min(data.size(), LongestRecord));
    if (id == 98 && types.RouteLinkType.empty()) continue;
    records.push_back({id, std::move(data)});
  }
  return records;
}

/// The plain link cuts a record in which 10h is followed by 03h.
bool PlainLinkCuts(const PlainPacket& record) {
  const Bytes wire = WireFrame(record.id, record.data);
  Bytes stored;
  for (std::size_t i = 2; i + 2 < wire.size(); ++i) {
    stored.push_back(wire[i]);
    if (wire[i] == DLE) ++i;
  }
  constexpr std::array end{DLE, ETX};
  return std::search(stored.begin(), stored.end(), end.begin(), end.end()) != stored.end();
}

Frame FrameOf(const PlainPacket& record) {
  Frame frame;
  frame.bytes[1] = static_cast<std::uint8_t>(record.id);
  frame.bytes[2] = static_cast<std::uint8_t>(record.data.size());
  std::copy(record.data.begin(), record.data.end(), frame.bytes.begin() + 3);
  frame.Size = static_cast<std::int16_t>(record.data.size() + 6);
  return frame;
}

void HoldWaypoints(InternalData& data, const std::vector<PlainPacket>& records, const DeviceProtocols& types) {
  for (const PlainPacket& record : records) {
    ++data.WaypointCount;
    DecodeWaypoint(data, FrameOf(record), data.WaypointCount, types.WaypointType);
    data.SpreadWaypoint(data.WaypointCount, *WaypointTypeOfName(types.WaypointType));
  }
}

/// Points and links in front of the first header belong to no route.
void HoldRoutes(InternalData& data, const std::vector<PlainPacket>& records, const DeviceProtocols& types) {
  int& route = data.routes.RouteCount;
  for (const PlainPacket& record : records) {
    if (record.id == 29) ++route;
    if (route == 0) continue;
    int& points = data.routes.RoutePointCount.at(static_cast<std::size_t>(route));
    if (record.id == 29) {
      DecodeRouteHeader(data, FrameOf(record), route, types.RouteHeaderType);
      data.SpreadRouteHeader(route, types.RouteHeaderType == "D201");
      data.routes.first_point.at(static_cast<std::size_t>(route)) = 1;
    } else if (record.id == 30) {
      DecodeRoutePoint(data, FrameOf(record), route, ++points, types.WaypointType);
      data.SpreadWaypoint(RoutePointSlot(route, points), *WaypointTypeOfName(types.WaypointType));
    } else {
      DecodeRouteLink(data, FrameOf(record), route, points, types.RouteLinkType);
    }
  }
  data.MirrorRouteCounters();
}

/// Headers begin logs; where there are none in front of it, a point that says so begins one.
void HoldLogs(InternalData& data, const std::vector<PlainPacket>& records, const DeviceProtocols& types) {
  TrackCounters& tracks = data.tracks;
  int slot = 0;
  bool header = false;
  const auto begin_log = [&] { tracks.TrackStart.at(static_cast<std::size_t>(++tracks.TrackCount)) = slot; };
  for (const PlainPacket& record : records) {
    if (record.id == 34) {
      const bool new_trk = DecodeTrackPoint(data, FrameOf(record), slot, types.TrackPointType);
      if (new_trk && !header) begin_log();
      ++tracks.TrackPointCount.at(static_cast<std::size_t>(tracks.TrackCount));
      ++slot;
    } else if (!types.TrackHeaderType.empty()) {
      header = true;
      begin_log();
      DecodeTrackHeader(data, FrameOf(record), tracks.TrackCount, types.TrackHeaderType);
    }
  }
  data.MirrorTrackCounters();
}

/// What a receiver's records are in the text of the standard file.
std::string TextOf(const std::vector<PlainPacket>& records, DataKind kind, const DeviceProtocols& types) {
  static const auto data = std::make_unique<InternalData>();
  if (kind == DataKind::Waypoint) HoldWaypoints(*data, records, types);
  if (kind == DataKind::Route) HoldRoutes(*data, records, types);
  if (kind == DataKind::TrackLog) HoldLogs(*data, records, types);
  const std::string text = TextOf(*data, kind);
  data->Clear(kind);
  return text;
}

/// A receiver that does as it should.
void CheckSoundReceiver(Garmin& garmin, InternalData& data, ScriptedPort& port, InputReader input, DataKind kind) {
  ScriptedReceiver receiver(port);
  receiver.packets = RecordsOf(input, kind, garmin.session.protocols);
  if (std::any_of(receiver.packets.begin(), receiver.packets.end(), PlainLinkCuts)) garmin.session.checked_link = true;
  const std::int32_t result = garmin.Download(kind, "1", TransferMode::Transfer);
  if (result != static_cast<std::int32_t>(receiver.packets.size())) std::abort();
  if (garmin.session.report.missing_records != 0 || garmin.session.TransferAborted) std::abort();
  if (TextOf(data, kind) != TextOf(receiver.packets, kind, garmin.session.protocols)) std::abort();
}

void CheckAnyReceiver(Garmin& garmin, InternalData& data, ScriptedPort& port, InputReader input, DataKind kind,
                      TransferMode mode) {
  AnyReceiver receiver(input, kind);
  port.script = [&receiver](const Bytes& frame) { return receiver.Answer(frame); };
  try {
    const std::int32_t result = garmin.Download(kind, "1", mode);
    if (result < 0 && result != TransferGivenUp && result != TransferTimedOut) std::abort();
  } catch (const std::exception&) {
    // Too many frames or records, or one that does not end.
  }
  static_cast<void>(TextOf(data, kind));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  static const auto data = std::make_unique<InternalData>();
  InputReader input(std::span(bytes, size));
  const std::uint8_t choice = input.Byte();
  const DataKind kind = AllDataKinds[choice % 4U % AllDataKinds.size()];
  const int mode = choice / 16 % 8;

  FakeClock clock;
  ScriptedPort port(clock);
  FakeEventLoop loop;
  RecordingDesktop desktop;
  Garmin garmin(*data, port, clock, loop, desktop);
  garmin.session.checked_link = choice >= 128;
  garmin.SetDefaultProtocols();
  ChooseProtocols(Descriptions[choice / 4 % Descriptions.size()], garmin.session.protocols);
  loop.on_yield = [&] {
    if (loop.yields >= MostYields) garmin.session.TransferAborted = true;
  };
  if (mode == 5 || mode == 6)
    CheckSoundReceiver(garmin, *data, port, input, kind);
  else
    CheckAnyReceiver(garmin, *data, port, input, kind, mode == 7 ? TransferMode::CountOnly : TransferMode::Transfer);
  if (port.PortOpen() || port.opened != 1) std::abort();
  data->Clear(kind);
  return 0;
}
