// The memory of a receiver: the packets of each kind of data, as they go over the line.
//
//   D103 := ident[6] position unused[4] cmnt[40] smbl:8 dspl:8                          GPS 12, 12XL, 48, II+
//   D104 := ident[6] position unused[4] cmnt[40] dst:float smbl:16 dspl:8               GPS III, III+
//   D107 := ident[6] position unused[4] cmnt[40] smbl:8 dspl:8 dst:float color:8        GPS 12CX
//   D108 := wpt_class:8 color:8 dspl:8 attr:8 smbl:16 subclass[18] position alt:float dpth:float dist:float
//           state[2] cc[2] ident* cmnt* facility* city* addr* cross_road*               eMap, eTrex
//   D201 := nmbr:8 cmnt[20]                    D202 := rte_ident*
//   D210 := class:16 subclass[18] ident*
//   D300 := position time:32 new_trk           D301 := position time:32 alt:float dpth:float new_trk
//   D310 := dspl color:8 trk_ident*
//
// position := lat:32 lon:32 in semicircles; text[n] is padded with blanks, text* ends with a zero byte.
#pragma once

#include <cstdint>
#include <vector>

#include "receiver/HeldContents.h"
#include "receiver/LineFrame.h"
#include "receiver/ReceiverModel.h"

namespace walrim {

namespace record_id {
inline constexpr std::uint8_t RouteHeader = 29;
inline constexpr std::uint8_t RouteWaypoint = 30;
inline constexpr std::uint8_t TrackPoint = 34;
inline constexpr std::uint8_t Waypoint = 35;
inline constexpr std::uint8_t RouteLink = 98;
inline constexpr std::uint8_t TrackHeader = 99;
}  // namespace record_id

struct ReceiverMemory {
  std::vector<LinePacket> waypoints;
  std::vector<LinePacket> routes;
  std::vector<LinePacket> tracks;
};

/// The contents as this model sends them. Waypoint identifiers are upper-cased; texts that are too long for their
/// field or, in D108 from the last one backwards, for a packet of 255 bytes are cut.
[[nodiscard]] ReceiverMemory EncodeMemory(const HeldContents& contents, const ReceiverModel& model);

/// Route packets without the link behind each route's last point.
[[nodiscard]] std::vector<LinePacket> WithLinksBetweenPoints(const std::vector<LinePacket>& routes);

/// Track packets whose points have times so many seconds earlier; those without a time stay.
[[nodiscard]] std::vector<LinePacket> WithTimesBack(std::vector<LinePacket> tracks, std::int64_t seconds);

/// Track packets whose first log, where it has a header, has two segments: the second begins in its middle.
[[nodiscard]] std::vector<LinePacket> WithTwoSegments(std::vector<LinePacket> tracks);

}  // namespace walrim
