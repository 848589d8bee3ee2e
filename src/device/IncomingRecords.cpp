#include "device/IncomingRecords.h"

#include <stdexcept>
#include <utility>

#include "device/PacketIds.h"
#include "device/types/RouteTypes.h"
#include "device/types/TrackTypes.h"
#include "device/types/WaypointTypes.h"

namespace walrim {

namespace {

void RequireStored(AddResult result) {
  if (result != AddResult::Stored) throw std::out_of_range("more records than there is room for");
}

/// Whether a latitude is one; a longitude in semicircles always is.
bool IsLatitude(double degrees) {
  return degrees >= -90 && degrees <= 90;
}

class IncomingWaypoints : public IncomingRecords {
 public:
  IncomingWaypoints(const DeviceProtocols& types, DataSet& data) : type_(types.waypoint), data_(data) {}

  [[nodiscard]] int TransferCommand() const override { return DeviceCommand::TransferWpt; }
  [[nodiscard]] std::int32_t MostAnnounced() const override { return MaxWaypoints; }
  [[nodiscard]] bool IsRecord(int packet_id) const override { return packet_id == PacketId::WptData; }

  [[nodiscard]] bool Take(const Frame& record) override {
    Waypoint waypoint = DecodeWaypoint(PacketData(record), type_);
    waypoint.damaged = record.damaged || !IsLatitude(waypoint.lat_deg);
    const bool whole = !waypoint.damaged;
    RequireStored(data_.Add(std::move(waypoint)));
    return whole;
  }

  [[nodiscard]] bool Finish(std::int32_t announced) override {
    while (data_.Waypoints().size() < static_cast<std::size_t>(announced))
      RequireStored(data_.Add(MissingWaypoint(type_)));
    return true;
  }

 private:
  WaypointType type_;
  DataSet& data_;
};

class IncomingRoutes : public IncomingRecords {
 public:
  IncomingRoutes(const DeviceProtocols& types, DataSet& data) : types_(types), data_(data) {}

  [[nodiscard]] int TransferCommand() const override { return DeviceCommand::TransferRte; }
  [[nodiscard]] std::int32_t MostAnnounced() const override { return MaxRoutes * (1 + 2 * MaxRoutePoints); }
  [[nodiscard]] bool IsRecord(int packet_id) const override {
    return packet_id == PacketId::RteHdr || packet_id == PacketId::RteWptData ||
           (types_.route_link != RouteLinkType::None && packet_id == PacketId::RteLinkData);
  }

  [[nodiscard]] bool Take(const Frame& record) override {
    if (record.Id() == PacketId::RteWptData) return TakePoint(record);
    if (record.Id() == PacketId::RteHdr)
      TakeHeader(record);
    else
      TakeLink(record);
    return !record.damaged;
  }

  [[nodiscard]] bool Finish(std::int32_t /*announced*/) override {
    StoreRoute();
    return !dropped_;
  }

 private:
  void TakeHeader(const Frame& record) {
    StoreRoute();
    if (number_ >= static_cast<int>(MaxRoutes)) throw std::out_of_range("more routes than there is room for");
    ++number_;
    point_kept_ = false;
    route_ = DecodeRouteHeader(PacketData(record), types_.route_header, number_);
    route_.damaged = record.damaged;
  }
  bool TakePoint(const Frame& record) {
    point_kept_ = number_ > 0 && route_.points.size() < MaxReceivedRoutePoints;
    dropped_ = dropped_ || !point_kept_;
    if (!point_kept_) return !record.damaged;
    route_.points.push_back({DecodeWaypoint(PacketData(record), types_.waypoint), {}});
    Waypoint& point = route_.points.back().waypoint;
    point.damaged = record.damaged || !IsLatitude(point.lat_deg);
    return !point.damaged;
  }
  /// A link goes with the point that came last.
  void TakeLink(const Frame& record) {
    if (!point_kept_ || types_.route_link != RouteLinkType::D210) return;
    RoutePoint& point = route_.points.back();
    point.link = DecodeRouteLink(PacketData(record));
    point.waypoint.damaged = point.waypoint.damaged || record.damaged;
  }
  void StoreRoute() {
    if (number_ > 0) RequireStored(data_.Begin(std::move(route_)));
  }

  DeviceProtocols types_;
  DataSet& data_;
  int number_ = 0;  ///< of the route that comes, from 1; 0 before the first header
  Route route_;
  bool point_kept_ = false;
  bool dropped_ = false;
};

/// A header begins a log, and a flag inside it a segment; where no header came, a flag begins a log. Points in front of
/// both are the log that has no header.
class IncomingLogs : public IncomingRecords {
 public:
  IncomingLogs(const DeviceProtocols& types, DataSet& data) : types_(types), data_(data) {}

  [[nodiscard]] int TransferCommand() const override { return DeviceCommand::TransferTrk; }
  [[nodiscard]] std::int32_t MostAnnounced() const override {
    const std::size_t headers = types_.track_header == TrackHeaderType::D310 ? MaxTrackLogs : 0;
    return static_cast<std::int32_t>(MaxTrackPoints + headers);
  }
  [[nodiscard]] bool IsRecord(int packet_id) const override {
    return packet_id == PacketId::TrkHdr || packet_id == PacketId::TrkData;
  }

  [[nodiscard]] bool Take(const Frame& record) override {
    if (record.Id() == PacketId::TrkData) {
      TrackPoint point = DecodeTrackPoint(PacketData(record), types_.track_point);
      point.damaged = record.damaged || !IsLatitude(point.lat_deg);
      return TakePoint(point);
    }
    if (types_.track_header == TrackHeaderType::D310) {
      header_came_ = true;
      TrackLog log = DecodeTrackHeader(PacketData(record));
      log.damaged = record.damaged;
      RequireStored(data_.Begin(std::move(log)));
    }
    return !record.damaged;
  }

  [[nodiscard]] bool Finish(std::int32_t /*announced*/) override { return true; }

 private:
  bool TakePoint(const TrackPoint& point) {
    const bool begins_log = point.new_trk && !header_came_;
    if (begins_log || data_.Logs().empty()) {
      TrackLog log;
      log.headless = !begins_log;
      RequireStored(data_.Begin(std::move(log)));
    }
    RequireStored(data_.Add(point));
    return !point.damaged;
  }

  DeviceProtocols types_;
  DataSet& data_;
  bool header_came_ = false;
};

}  // namespace

std::unique_ptr<IncomingRecords> IncomingRecordsOf(DataKind kind, const DeviceProtocols& types, DataSet& data) {
  switch (kind) {
    case DataKind::Waypoint:
      return std::make_unique<IncomingWaypoints>(types, data);
    case DataKind::Route:
      return std::make_unique<IncomingRoutes>(types, data);
    case DataKind::TrackLog:
      return std::make_unique<IncomingLogs>(types, data);
  }
  return nullptr;
}

}  // namespace walrim
