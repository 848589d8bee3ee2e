// Route headers and links on the wire.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "device/Models.h"
#include "device/types/Wire.h"
#include "records/Route.h"

namespace walrim {

/// A route without points. number is the route's in the transfer, from 1, which a D202 gets for want of its own.
[[nodiscard]] Route DecodeRouteHeader(std::span<const std::uint8_t> data, RouteHeaderType type, int number);
[[nodiscard]] std::vector<std::uint8_t> EncodeRouteHeader(const Route& route, RouteHeaderType type, EncodeNotes& notes);

/// D210.
[[nodiscard]] RouteLink DecodeRouteLink(std::span<const std::uint8_t> data);
[[nodiscard]] std::vector<std::uint8_t> EncodeRouteLink(const RouteLink& link, RouteLinkType type, EncodeNotes& notes);

}  // namespace walrim
