// A receiver that holds any records and sends them as it should: what is held after a download of each kind is what it
// holds.
//
// The first byte chooses the kind (two bits), the receiver's types (two bits) and the link (its high bit: checked). The
// rest are the records, each a byte that chooses its id, its number of bytes and its data.
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "data/InternalData.h"
#include "device/Codecs.h"
#include "device/Garmin.h"
#include "support/Fakes.h"
#include "support/ScriptedReceiver.h"
#include "transfer_input.h"

using namespace walrim;

namespace {

/// More records, and longer ones, find nothing new.
constexpr std::size_t MostRecords = 6;
constexpr std::size_t LongestRecord = 120;

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

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  static const auto data = std::make_unique<InternalData>();
  InputReader input(std::span(bytes, size));
  const std::uint8_t choice = input.Byte();
  const DataKind kind = AllDataKinds[choice % 4U % AllDataKinds.size()];

  FakeClock clock;
  ScriptedPort port(clock);
  FakeEventLoop loop;
  RecordingDesktop desktop;
  Garmin garmin(*data, port, clock, loop, desktop);
  garmin.SetDefaultProtocols();
  ChooseProtocols(Descriptions[choice / 4 % Descriptions.size()], garmin.session.protocols);
  ScriptedReceiver receiver(port);
  receiver.packets = RecordsOf(input, kind, garmin.session.protocols);
  const bool cut = std::any_of(receiver.packets.begin(), receiver.packets.end(), PlainLinkCuts);
  garmin.session.checked_link = choice >= 128 || cut;

  const std::int32_t result = garmin.Download(kind, "1", TransferMode::Transfer);
  if (result != static_cast<std::int32_t>(receiver.packets.size())) std::abort();
  if (garmin.session.report.missing_records != 0 || garmin.session.TransferAborted) std::abort();
  if (port.PortOpen() || port.opened != 1) std::abort();
  if (TextOf(*data, kind) != TextOf(receiver.packets, kind, garmin.session.protocols)) std::abort();
  data->Clear(kind);
  return 0;
}
