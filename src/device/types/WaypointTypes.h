// Waypoints on the wire.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "device/types/Wire.h"
#include "records/Waypoint.h"

namespace walrim {

/// Any data are a waypoint of any type.
[[nodiscard]] Waypoint DecodeWaypoint(std::span<const std::uint8_t> data, WaypointType type);
/// The packet data of a waypoint for a receiver of a type. One that came as this type goes as it came, pictures that
/// the type lacks apart. Throws std::overflow_error for a position that does not fit.
[[nodiscard]] std::vector<std::uint8_t> EncodeWaypoint(const Waypoint& waypoint, WaypointType type, EncodeNotes& notes);
/// Where the position, two numbers of semicircles, stands in the data of a waypoint.
[[nodiscard]] std::size_t PositionOffset(WaypointType type);
/// What is held of a waypoint that was announced and never came.
[[nodiscard]] Waypoint MissingWaypoint(WaypointType type);

}  // namespace walrim
