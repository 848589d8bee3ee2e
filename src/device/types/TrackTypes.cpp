#include "device/types/TrackTypes.h"

namespace walrim {

namespace {

bool HasHeight(TrackPointType type) {
  switch (type) {
    case TrackPointType::D300:
      return false;
    case TrackPointType::D301:
      return true;
  }
  return false;
}

template <typename Wire, typename Record>
void WalkTrackPoint(Wire& wire, Record& point, TrackPointType type) {
  wire.Angle(point.lat_deg);
  wire.Angle(point.lon_deg);
  wire.Time(point.time);
  if (HasHeight(type)) {
    wire.Height(point.alt_m);
    wire.Height(point.dpth_m);
  }
  wire.Truth(point.new_trk);
}

template <typename Wire, typename Record>
void WalkD310(Wire& wire, Record& log) {
  wire.Truth(log.dspl);
  wire.Byte(log.color);
  wire.ZeroText(log.trk_ident);
}

}  // namespace

TrackPoint DecodeTrackPoint(std::span<const std::uint8_t> data, TrackPointType type) {
  TrackPoint point;
  PacketReader reader(data);
  WalkTrackPoint(reader, point, type);
  return point;
}

std::vector<std::uint8_t> EncodeTrackPoint(const TrackPoint& point, TrackPointType type) {
  EncodeNotes notes;
  PacketWriter writer(notes);
  WalkTrackPoint(writer, point, type);
  return writer.Finish();
}

TrackLog DecodeTrackHeader(std::span<const std::uint8_t> data) {
  TrackLog log;
  PacketReader reader(data);
  WalkD310(reader, log);
  return log;
}

std::vector<std::uint8_t> EncodeTrackHeader(const TrackLog& log, TrackHeaderType type, EncodeNotes& notes) {
  PacketWriter writer(notes);
  switch (type) {
    case TrackHeaderType::None:
    case TrackHeaderType::Empty:
      break;
    case TrackHeaderType::D310:
      WalkD310(writer, log);
      break;
  }
  return writer.Finish();
}

}  // namespace walrim
