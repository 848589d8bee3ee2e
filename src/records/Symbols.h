// The names of symbols and display modes, and what receivers with few of them can show.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
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

/// What symbols show; several share a shape.
enum class SymbolShape : std::uint8_t {
  Airfield,
  Anchor,
  Ball,
  Beacon,
  Bed,
  Bell,
  Boat,
  Bridge,
  Building,
  Buoy,
  Camera,
  Car,
  Cart,
  Church,
  CircleX,
  City,
  Cross,
  Crossing,
  Dam,
  Deer,
  Diamond,
  Dice,
  DiverFlag,
  Dot,
  Drop,
  Dumbbell,
  Envelope,
  Exit,
  Feet,
  Film,
  Fir,
  Fish,
  Fix,
  Flag,
  Fork,
  Gate,
  Glider,
  Golf,
  Grave,
  Hexagon,
  Horn,
  House,
  InformationSign,
  Label,
  Lamp,
  Lifebuoy,
  Mask,
  Money,
  Mug,
  NoEntry,
  Nothing,
  Parachute,
  Parasol,
  ParkingSign,
  Paw,
  Peak,
  Pick,
  Pizza,
  Pump,
  Restroom,
  Road,
  Scales,
  School,
  Shield,
  Shower,
  Signpost,
  Skate,
  Ski,
  Skull,
  Square,
  Stadium,
  Star,
  Store,
  Table,
  Telephone,
  Temple,
  Tent,
  Tower,
  Tree,
  Truck,
  Tunnel,
  Warning,
  Waves,
  Wheel,
  Wreck
};
enum class SymbolColour : std::uint8_t { Amber, Black, Blue, Brown, Green, Orange, Red, Violet, White };
struct SymbolPicture {
  SymbolShape shape = SymbolShape::Dot;
  SymbolColour colour = SymbolColour::Black;
  std::optional<SymbolColour> second{};  ///< of its lower half, where that differs
};

/// A symbol's name in Japanese; empty for a code without a row.
[[nodiscard]] std::string_view JapaneseSymbolName(WaypointType type, int code);
/// A display mode's name in Japanese; empty for a code without a row.
[[nodiscard]] std::string_view JapaneseDisplayName(WaypointType type, int code);
/// What its picture shows; a dot for a code without a row.
[[nodiscard]] SymbolPicture SymbolPictureOf(WaypointType type, int code);

/// A symbol of D104 and D108 as one of the 16 of D103 and D107.
struct SmallSymbol {
  std::uint8_t code = 0;  ///< 0 to 15; 0, the dot, where none is near
  bool exact = false;     ///< the same picture, not only the nearest
};

/// code is one of D104's and D108's.
[[nodiscard]] SmallSymbol SmallSymbolFor(int code);

/// The symbol of D104 and D108 with the picture of one of the 16 of D103 and D107; the dot for any other code.
[[nodiscard]] std::uint16_t LargeSymbolFor(int code);

/// Whether a record's symbol is one of the 16, or surely one of D104's and D108's.
[[nodiscard]] bool HasSmallSymbol(const Waypoint& waypoint);
[[nodiscard]] bool HasLargeSymbol(const Waypoint& waypoint);
/// The set that has a name for a number up to 15; Untold for another name and for other numbers.
[[nodiscard]] SymbolSet SymbolSetOf(int code, std::string_view name);

/// The name that GPX has for a symbol of D104, D108 or later receivers; empty for a code without one.
[[nodiscard]] std::string GpxSymbolName(int code);

/// A symbol of D104 and D108 for a name in GPX.
struct GpxSymbol {
  std::uint16_t code = 0;
  bool exact = false;  ///< the picture that is meant, not only the nearest
};
/// name in any case of letters; nothing for a name that is not known.
[[nodiscard]] std::optional<GpxSymbol> SymbolOfGpxName(std::string_view name);

inline constexpr std::uint16_t WaypointDotSymbol = 18;  ///< of D104 and D108, the usual one
inline constexpr int LargestSmallSymbol = 15;
inline constexpr std::uint8_t LargestSmallColour = 3;    ///< 0 the default, red, green, blue
inline constexpr std::uint8_t DefaultLargeColour = 255;  ///< the default colour of D108

}  // namespace walrim
