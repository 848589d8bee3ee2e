// Records between packets and the device tables, by data type name.
//
// A type name other than those of the family leaves the tables untouched and encodes to an empty buffer. An index
// beyond a table throws std::out_of_range.
#pragma once

#include <string_view>

#include "data/InternalData.h"
#include "device/Layout.h"
#include "device/PacketLink.h"

namespace walrim {

/// Whether a latitude is one; a longitude in semicircles always is.
[[nodiscard]] constexpr bool IsLatitude(double degrees) {
  return degrees >= -90 && degrees <= 90;
}

/// Fills slot index of the named type's waypoint table.
void DecodeWaypoint(InternalData& data, const Frame& frame, int index, std::string_view type_name);
[[nodiscard]] ByteBuffer EncodeWaypoint(const InternalData& data, int index, std::string_view type_name,
                                        EncodeNotes* notes = nullptr);

/// type_name: "D201" or "D202".
void DecodeRouteHeader(InternalData& data, const Frame& frame, int route, std::string_view type_name);
[[nodiscard]] ByteBuffer EncodeRouteHeader(const InternalData& data, int route, std::string_view type_name,
                                           EncodeNotes* notes = nullptr);

/// The waypoint of a route's point, in the slot that the route and the point give.
void DecodeRoutePoint(InternalData& data, const Frame& frame, int route, int point, std::string_view type_name);
[[nodiscard]] ByteBuffer EncodeRoutePoint(const InternalData& data, int route, int point, std::string_view type_name,
                                          EncodeNotes* notes = nullptr);

/// type_name: "D210".
void DecodeRouteLink(InternalData& data, const Frame& frame, int route, int point, std::string_view type_name);
[[nodiscard]] ByteBuffer EncodeRouteLink(const InternalData& data, int route, int point, std::string_view type_name,
                                         EncodeNotes* notes = nullptr);

/// type_name: "D300" or "D301". Returns whether the point begins a new log.
bool DecodeTrackPoint(InternalData& data, const Frame& frame, int slot, std::string_view type_name);
[[nodiscard]] ByteBuffer EncodeTrackPoint(const InternalData& data, int slot, std::string_view type_name);

/// type_name: "D310".
void DecodeTrackHeader(InternalData& data, const Frame& frame, int log, std::string_view type_name);
[[nodiscard]] ByteBuffer EncodeTrackHeader(const InternalData& data, int log, std::string_view type_name,
                                           EncodeNotes* notes = nullptr);

}  // namespace walrim
