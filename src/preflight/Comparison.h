// What was sent, record by record, beside what a receiver holds.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "preflight/Recipient.h"
#include "records/DataSet.h"

namespace walrim {

/// What a record has lost.
enum class Loss : std::uint8_t {
  Missing,  ///< all of it
  Points,   ///< a route's or a log's, was and is tell how many
  Name,     ///< letters of its name
  Comment,  ///< the end of its comment, of a route its name
  Picture,  ///< its symbol
  Number,   ///< a route's
  // What the record itself keeps.
  Overwrites,       ///< what the receiver held under its name or number, which is tells
  SharedName,       ///< a route's point has the name of another place
  SharedRouteName,  ///< another route has its name: some receivers want different ones
  NoRouteName,      ///< some receivers lose a route without one
  // What goes with the type is told once for all records of a kind.
  Capitals,  ///< small letters of names and comments
  Colour,
  Height,
  Depth,
  Distance,  ///< the proximity distance
  Details,   ///< facility, city, address, cross road, state, country
  LogName,
  Time
};

[[nodiscard]] bool ToldOnce(Loss loss);

struct Difference {
  DataKind kind = DataKind::Waypoint;
  Loss loss = Loss::Missing;
  std::size_t record = 0;            ///< index in the data set; of one that is told once, that of the first record
  std::optional<std::size_t> point;  ///< of a route, an index
  std::size_t count = 1;             ///< of one that is told once: records, or points
  std::string was;                   ///< empty where there is no text to tell
  std::string is;

  friend bool operator==(const Difference&, const Difference&) = default;
};

/// What became of the records of some kinds. A record is found in held by its place, and by a name that is its
/// own or the beginning of that; a route and a log by their points; of several that may be it, the one that differs
/// least. before is what the receiver held first, empty where that is not known.
[[nodiscard]] std::vector<Difference> Compare(const DataSet& sent, const DataKinds& kinds, const DataSet& held,
                                              const DataSet& before, const Recipient& to);

/// Whether two positions, of which one came over the line, are the same.
[[nodiscard]] bool SamePlace(double lat_deg, double lon_deg, double other_lat_deg, double other_lon_deg);
template <typename A, typename B>
[[nodiscard]] bool SamePlace(const A& a, const B& b) {
  return SamePlace(a.lat_deg, a.lon_deg, b.lat_deg, b.lon_deg);
}

}  // namespace walrim
