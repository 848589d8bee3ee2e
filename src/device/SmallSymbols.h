// What the receivers with 16 symbols and three colours (D103, D107) can show of what the others have.
#pragma once

#include <cstdint>

namespace walrim {

/// A symbol of D104 and D108 as one of the 16.
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
