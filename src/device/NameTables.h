// Names of the waypoint symbols, display modes and colours of each waypoint type.
#pragma once

#include "data/GeneralWalrim.h"

namespace walrim {

/// The tables of one waypoint type; all empty where the type has none.
[[nodiscard]] NameTables NameTablesFor(WaypointType type);

/// The tables of all types.
[[nodiscard]] const NameTablesByType& AllNameTables();

}  // namespace walrim
