// Routes and their points.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "records/Rare.h"
#include "records/Waypoint.h"

namespace walrim {

/// The way from a route point to the next (D210).
struct RouteLink {
  std::uint16_t link_class = 0;
  Subclass subclass = NoSubclass;
  std::string ident;  ///< UTF-8

  friend bool operator==(const RouteLink&, const RouteLink&) = default;
};

/// A waypoint of a route, and its link.
struct RoutePoint {
  Waypoint waypoint;
  Rare<RouteLink> link;

  friend bool operator==(const RoutePoint&, const RoutePoint&) = default;
};

/// The route header types.
enum class RouteHeaderType : std::uint8_t {
  D201,  ///< a number and a comment of 20 bytes; its points have no links
  D202   ///< a name of any length
};

struct Route {
  RouteHeaderType type = RouteHeaderType::D202;  ///< the type it came as; D202 from a file
  std::uint8_t nmbr = 0;
  /// UTF-8. Of D201 as wide as its field (20 bytes of code page 932), as Waypoint's ident is.
  std::string cmnt;
  std::vector<RoutePoint> points;
  bool chosen = true;    ///< as a waypoint's; that of its points says nothing
  bool damaged = false;  ///< its header came in a damaged frame

  friend bool operator==(const Route&, const Route&) = default;
};

}  // namespace walrim
