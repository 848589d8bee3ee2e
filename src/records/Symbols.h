// The names of symbols, display modes and colours, and what receivers with few of them can show.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "records/Waypoint.h"

namespace walrim {

/// A code and its name.
struct NamedCode {
  int code;
  std::string_view name;
};

/// Rows sorted by code.
[[nodiscard]] std::span<const NamedCode> SymbolNames(WaypointType type);
[[nodiscard]] std::span<const NamedCode> DisplayNames(WaypointType type);
/// The name of a code; empty for one without a row.
[[nodiscard]] std::string_view NameOf(std::span<const NamedCode> names, int code);

/// A symbol of D104 and D108 as one of the 16 of D103 and D107.
struct SmallSymbol {
  std::uint8_t code = 0;  ///< 0 to 15; 0, the dot, where none is near
  bool exact = false;     ///< the same picture, not only the nearest
};

/// code is that of a symbol that is none of the 16 by its number: above 15.
[[nodiscard]] SmallSymbol SmallSymbolFor(int code);

inline constexpr int LargestSmallSymbol = 15;
inline constexpr std::uint8_t LargestSmallColour = 3;    ///< 0 the default, red, green, blue
inline constexpr std::uint8_t DefaultLargeColour = 255;  ///< the default colour of D108

}  // namespace walrim
