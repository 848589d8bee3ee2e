#include "device/OutgoingRecords.h"

#include <stdexcept>
#include <utility>

#include "device/Messages.h"
#include "device/PacketIds.h"
#include "device/types/RouteTypes.h"
#include "device/types/TrackTypes.h"
#include "device/types/WaypointTypes.h"

namespace walrim {

namespace {

std::string CountersOf(std::size_t number, std::size_t count) {
  return std::to_string(number) + "/" + std::to_string(count);
}

/// Encodes record after record, and tells what became of them.
class Encoder {
 public:
  Encoder(const DeviceProtocols& types, TransferReport& report) : types_(types), report_(report) {}

  [[nodiscard]] std::vector<OutgoingPacket> Waypoints(const std::vector<Waypoint>& waypoints) {
    for (std::size_t i = 0; i < waypoints.size(); ++i) {
      Add(
          {PacketId::WptData, {}, "[" + CountersOf(i + 1, waypoints.size()) + "]"},
          [&] { return "Waypoint " + std::to_string(i + 1); },
          [&](EncodeNotes& notes) { return EncodeWaypoint(waypoints[i], types_.waypoint, notes); });
    }
    return std::move(packets_);
  }

  [[nodiscard]] std::vector<OutgoingPacket> Routes(const std::vector<Route>& routes) {
    for (std::size_t r = 0; r < routes.size(); ++r) {
      const std::string name = "Route " + std::to_string(r + 1);
      Add(
          {PacketId::RteHdr, {}, {}}, [&] { return name; },
          [&](EncodeNotes& notes) { return EncodeRouteHeader(routes[r], types_.route_header, notes); });
      const std::size_t count = routes[r].points.size();
      for (std::size_t p = 0; p < count; ++p) {
        AddRoutePoint(routes[r].points[p], name + " Point " + std::to_string(p + 1),
                      "[" + CountersOf(r + 1, routes.size()) + "," + CountersOf(p + 1, count) + "]");
      }
    }
    return std::move(packets_);
  }

  [[nodiscard]] std::vector<OutgoingPacket> Logs(const std::vector<TrackLog>& logs, int number) {
    for (const TrackLog& log : logs) {
      const std::string name = "TrackLog " + std::to_string(number++);
      if (types_.track_header != TrackHeaderType::None) {
        Add(
            {PacketId::TrkHdr, {}, {}}, [&] { return name; },
            [&](EncodeNotes& notes) { return EncodeTrackHeader(log, types_.track_header, notes); });
      }
      for (std::size_t p = 0; p < log.points.size(); ++p) {
        Add(
            {PacketId::TrkData, {}, {}}, [&] { return name + " Point " + std::to_string(p + 1); },
            [&](EncodeNotes& /*notes*/) { return EncodeTrackPoint(log.points[p], types_.track_point); });
      }
    }
    for (std::size_t k = 0; k < packets_.size(); ++k)
      packets_[k].counters = "[" + CountersOf(k + 1, packets_.size()) + "]";
    return std::move(packets_);
  }

 private:
  void AddRoutePoint(const RoutePoint& point, const std::string& name, std::string counters) {
    Add(
        {PacketId::RteWptData, {}, std::move(counters)}, [&] { return name; },
        [&](EncodeNotes& notes) { return EncodeWaypoint(point.waypoint, types_.waypoint, notes); });
    if (types_.route_link == RouteLinkType::None) return;
    Add(
        {PacketId::RteLinkData, {}, {}}, [&] { return name + " Link"; },
        [&](EncodeNotes& notes) { return EncodeRouteLink(*point.link, types_.route_link, notes); });
  }

  /// name() gives the record's name for messages; encode(notes) its data.
  template <typename Name, typename Encode>
  void Add(OutgoingPacket packet, Name name, Encode encode) {
    EncodeNotes notes;
    std::string unsendable;
    try {
      packet.data = encode(notes);
      if (notes.lacking) unsendable = device_messages::CharacterNotSendable(name(), notes.lacking->utf8);
    } catch (const std::overflow_error&) {
      unsendable = device_messages::ValueOutOfRange(name());
    }
    packets_.push_back(std::move(packet));
    // The texts that are cut are counted to the end. Of the rest the first record that cannot be sent is the last word.
    report_.cut_texts += notes.cut_texts;
    if (!report_.unsendable.empty()) return;
    report_.unsendable = unsendable;
    if (!unsendable.empty()) return;
    if (notes.cut) report_.cut_records.push_back(name());
    if (notes.replaced) report_.replaced_records.push_back(name());
  }

  DeviceProtocols types_;
  TransferReport& report_;
  std::vector<OutgoingPacket> packets_;
};

}  // namespace

OutgoingRecords OutgoingRecordsOf(const DataSet& data, DataKind kind, const DeviceProtocols& types,
                                  TransferReport& report) {
  Encoder encoder(types, report);
  switch (kind) {
    case DataKind::Waypoint:
      return {DeviceCommand::TransferWpt, ShownProgress::AsIfSent, encoder.Waypoints(data.Waypoints())};
    case DataKind::Route:
      return {DeviceCommand::TransferRte, ShownProgress::BeforeSent, encoder.Routes(data.Routes())};
    case DataKind::TrackLog:
      return {DeviceCommand::TransferTrk, ShownProgress::Sent, encoder.Logs(data.Logs(), data.FirstLogNumber())};
  }
  return {};
}

}  // namespace walrim
