// The models of receivers, and which data types each of them speaks.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "records/Route.h"
#include "records/TrackLog.h"
#include "records/Waypoint.h"

namespace walrim {

/// What follows each point of a route.
enum class RouteLinkType : std::uint8_t {
  None,
  Empty,  ///< a packet without data
  D210
};

/// What stands in front of the points of a track log.
enum class TrackHeaderType : std::uint8_t {
  None,
  Empty,  ///< a packet without data, which begins no log
  D310
};

/// The data types of a receiver's records. As it is made: what an unknown model speaks.
struct DeviceProtocols {
  WaypointType waypoint = WaypointType::D104;
  RouteHeaderType route_header = RouteHeaderType::D201;
  RouteLinkType route_link = RouteLinkType::None;
  TrackPointType track_point = TrackPointType::D300;
  TrackHeaderType track_header = TrackHeaderType::None;

  friend bool operator==(const DeviceProtocols&, const DeviceProtocols&) = default;
};

/// The types of the receiver with this product description: those of the last model of the table whose name stands
/// anywhere in it. The case of letters counts, and so does the blank behind most names.
[[nodiscard]] DeviceProtocols ProtocolsOf(std::string_view description);
/// The same of models whose types are known for certain; nothing for others.
[[nodiscard]] std::optional<DeviceProtocols> KnownProtocolsOf(std::string_view description);

/// The names of those models.
[[nodiscard]] std::vector<std::string_view> KnownModels();

/// What a model has room for, by its manual and by what owners report. Sources disagree: a limit is worth a warning and
/// never forbids.
struct ReceiverLimits {
  std::size_t waypoints;
  std::size_t name;  ///< letters of a waypoint's name, capitals and digits
  bool blanks;       ///< names may have blanks and hyphens as well
  std::size_t routes;
  std::size_t route_points;  ///< of one route
  std::size_t active_log;    ///< points; what is uploaded goes there

  friend bool operator==(const ReceiverLimits&, const ReceiverLimits&) = default;
};

/// The limits of the receiver with this product description; nothing for models that are not known.
[[nodiscard]] std::optional<ReceiverLimits> LimitsOf(std::string_view description);

/// Before any receiver has been identified: the richest types.
inline constexpr DeviceProtocols RichestProtocols{WaypointType::D108, RouteHeaderType::D202, RouteLinkType::D210,
                                                  TrackPointType::D301, TrackHeaderType::D310};

}  // namespace walrim
