// Names that a receiver has letters and room for, in place of those that it has not.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "preflight/Recipient.h"
#include "records/DataSet.h"

namespace walrim {

/// The short name that a user has given a long one; empty where there is none.
using NameLookup = std::function<std::string(std::string_view long_name)>;

/// The names of a data set as they are proposed, each fitting the receiver. One that fits stays. Waypoints have
/// different names; a point of a route has that of the waypoint at its place, and another one than all other places.
struct ShortNames {
  std::vector<std::string> waypoints;
  std::vector<std::vector<std::string>> route_points;
};

/// The names that before holds at other places are not taken.
[[nodiscard]] ShortNames ChooseShortNames(const DataSet& data, const DataSet& before, const Recipient& to,
                                          const NameLookup& lookup);

/// The letters of the most that a name may have and that a receiver's names may be of, from a name in any letters:
/// Japanese ones romanised. May be empty.
[[nodiscard]] std::string ProposedName(std::string_view name, const Recipient& to);

}  // namespace walrim
