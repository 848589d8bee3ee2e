// A receiver that holds any records and sends them as it should: what is held after a download of each kind is what it
// holds.
//
// The first byte is a TransferChoice. The rest are the records, each a byte that chooses its id, its number of bytes
// and its data.
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <utility>
#include <vector>

#include "device/types/RouteTypes.h"
#include "device/types/TrackTypes.h"
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
    if (id == 98 && types.route_link == RouteLinkType::None) continue;
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

/// A record whose latitude is none counts as damaged, however whole its frame is.
template <typename Record>
Record WithDamage(Record record) {
  record.damaged = !(record.lat_deg >= -90 && record.lat_deg <= 90);
  return record;
}

void HoldWaypoints(DataSet& data, const std::vector<PlainPacket>& records, const DeviceProtocols& types) {
  for (const PlainPacket& record : records)
    static_cast<void>(data.Add(WithDamage(DecodeWaypoint(record.data, types.waypoint))));
}

/// Points and links in front of the first header belong to no route.
void HoldRoutes(DataSet& data, const std::vector<PlainPacket>& records, const DeviceProtocols& types) {
  std::vector<Route> routes;
  for (const PlainPacket& record : records) {
    if (record.id == 29) {
      const auto number = static_cast<int>(routes.size()) + 1;
      routes.push_back(DecodeRouteHeader(record.data, types.route_header, number));
    } else if (record.id == 30 && !routes.empty()) {
      routes.back().points.push_back({WithDamage(DecodeWaypoint(record.data, types.waypoint)), {}});
    } else if (record.id == 98 && !routes.empty() && !routes.back().points.empty()) {
      routes.back().points.back().link = DecodeRouteLink(record.data);
    }
  }
  for (Route& route : routes)
    static_cast<void>(data.Begin(std::move(route)));
}

/// Headers begin logs; where there are none in front of it, a point that says so begins one.
void HoldLogs(DataSet& data, const std::vector<PlainPacket>& records, const DeviceProtocols& types) {
  bool header = false;
  for (const PlainPacket& record : records) {
    if (record.id == 99) {
      if (types.track_header != TrackHeaderType::D310) continue;
      header = true;
      static_cast<void>(data.Begin(DecodeTrackHeader(record.data)));
      continue;
    }
    const TrackPoint point = WithDamage(DecodeTrackPoint(record.data, types.track_point));
    TrackLog log;
    log.headless = data.Logs().empty();
    if (point.new_trk && !header) log.headless = false;
    if (log.headless || (point.new_trk && !header)) static_cast<void>(data.Begin(std::move(log)));
    static_cast<void>(data.Add(point));
  }
}

/// What a receiver's records are as a data set.
DataSet HeldOf(const std::vector<PlainPacket>& records, DataKind kind, const DeviceProtocols& types) {
  DataSet data;
  if (kind == DataKind::Waypoint) HoldWaypoints(data, records, types);
  if (kind == DataKind::Route) HoldRoutes(data, records, types);
  if (kind == DataKind::TrackLog) HoldLogs(data, records, types);
  return data;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  InputReader input(std::span(bytes, size));
  const TransferChoice choice(input.Byte());
  const DeviceProtocols types = ProtocolsOf(choice.description);
  const std::vector<PlainPacket> packets = RecordsOf(input, choice.kind, types);
  const bool cut = std::any_of(packets.begin(), packets.end(), PlainLinkCuts);
  DeviceWorld world;
  world.Meet(choice.description, cut ? LinkChoice::Checked : choice.link);
  world.receiver.packets = packets;

  const std::int32_t result = world.Download(choice.kind);
  if (result != static_cast<std::int32_t>(packets.size())) std::abort();
  if (world.garmin.Report().missing_records != 0) std::abort();
  if (world.port.PortOpen() || world.port.opened != 1) std::abort();
  if (!SameRecords(world.data, HeldOf(packets, choice.kind, types), choice.kind)) std::abort();
  return 0;
}
