// The circle as every computation of the program takes it. Results are meant to match these values, not the exact ones.
#pragma once

namespace walrim {

inline constexpr double RoundPi = 3.1415926;
/// RoundPi / 180.
inline constexpr double DegreesToRadians = 0.017453292222222222;

}  // namespace walrim
