#include "device/types/WaypointTypes.h"

#include "device/types/D103.h"
#include "device/types/D104.h"
#include "device/types/D107.h"
#include "device/types/D108.h"

namespace walrim {

namespace {

/// Calls use with an object of the class that describes a type.
template <typename Use>
auto WithType(WaypointType type, Use use) {
  switch (type) {
    case WaypointType::D103:
      return use(D103());
    case WaypointType::D104:
      return use(D104());
    case WaypointType::D107:
      return use(D107());
    case WaypointType::D108:
      return use(D108());
  }
  return use(D108());
}

}  // namespace

Waypoint DecodeWaypoint(std::span<const std::uint8_t> data, WaypointType type) {
  return WithType(type, [&](auto codec) {
    Waypoint waypoint = codec.Blank();
    PacketReader reader(data);
    codec.Read(reader, waypoint);
    return waypoint;
  });
}

std::vector<std::uint8_t> EncodeWaypoint(const Waypoint& waypoint, WaypointType type, EncodeNotes& notes) {
  return WithType(type, [&](auto codec) {
    const Waypoint fitting = codec.Fitting(waypoint, notes);
    PacketWriter writer(notes);
    codec.Write(writer, fitting);
    return writer.Finish();
  });
}

std::size_t PositionOffset(WaypointType type) {
  return WithType(type, [](auto codec) { return decltype(codec)::PositionOffset; });
}

Waypoint MissingWaypoint(WaypointType type) {
  Waypoint waypoint = WithType(type, [](auto codec) { return codec.Blank(); });
  waypoint.missing = true;
  return waypoint;
}

}  // namespace walrim
