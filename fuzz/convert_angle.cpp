// Angles of every notation into every notation. What is written reads back within its rounding.
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <string_view>

#include "geo/AngleNotation.h"
#include "text/Numbers.h"

using namespace walrim;

namespace {

using enum AngleNotation;

constexpr std::array Notations{D, DM, DMS, MPS, PAO};

/// An angle text in another notation.
std::string ConvertAngle(std::string_view value, AngleNotation from, AngleNotation to) {
  std::string text;
  AppendConvertedAngle(text, value, from, to);
  return text;
}

/// Half of the last place, in degrees, of what a notation writes.
double Rounding(AngleNotation notation) {
  if (notation == DMS) return 0.005 / 3600;
  if (notation == MPS) return 0.05 / 3600;
  return 0.0005 / 3600;
}

void CheckRoundTrip(double degrees) {
  if (!(degrees >= 0 && degrees <= 360)) return;
  const std::string text = ShortestNumber(degrees);
  for (const AngleNotation notation : {DMS, MPS, PAO}) {
    const double back = DegreesOfAngle(ConvertAngle(text, D, notation), notation);
    if (!(std::abs(back - degrees) <= Rounding(notation) + 1e-12)) std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string_view value(reinterpret_cast<const char*>(bytes), size);
  for (const AngleNotation from : Notations) {
    try {
      const double degrees = DegreesOfAngle(value, from);
      if (!std::isfinite(degrees)) std::abort();
      for (const AngleNotation to : Notations) {
        const bool written = to != DM;
        if (ConvertAngle(value, from, to).empty() == written) std::abort();
      }
      CheckRoundTrip(degrees);
      if (const auto read = ReadAngle(value, from); read && *read != degrees) std::abort();
    } catch (const std::out_of_range&) {
      if (from != MPS && from != PAO) std::abort();
    }
  }
  return 0;
}
