// How angles are written.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "geo/Datum.h"

namespace walrim {

/// The notations of angles in texts.
enum class AngleNotation : std::uint8_t {
  D,    ///< decimal degrees
  DM,   ///< dd.mm with the fraction of the minute behind; only read
  DMS,  ///< dd.mmssss
  MPS,  ///< d/mm/ss.s
  PAO   ///< d/mm/sssss, thousandths of a second
};

[[nodiscard]] std::string_view AngleNotationName(AngleNotation notation);
/// The notation of a name in any case, with or without blanks around it; nothing for another name.
[[nodiscard]] std::optional<AngleNotation> AngleNotationOfName(std::string_view name);

/// Appends an angle text of one notation in another. Texts are read as the decimal digits that they are. "DM" as the
/// target appends nothing. Throws std::out_of_range at a fourth "/" part.
void AppendConvertedAngle(std::string& out, std::string_view value, AngleNotation from, AngleNotation to);

/// Decimal degrees of an angle text as the double nearest to the value it writes; the reading half of
/// AppendConvertedAngle.
/// Lenient: a text without a number is 0.
[[nodiscard]] double DegreesOfAngle(std::string_view value, AngleNotation notation);

/// Decimal degrees of an angle that anybody may have written; nothing for a text that begins with no number, or with
/// one that fits no double, or has too many parts. What it takes, AppendConvertedAngle
/// takes too.
[[nodiscard]] std::optional<double> ReadAngle(std::string_view text, AngleNotation notation);
/// The position of two such texts; nothing where one is no angle or the two are off the globe.
[[nodiscard]] std::optional<GeoPoint> ReadPosition(std::string_view lat, std::string_view lon, AngleNotation notation);

/// Appends an angle in decimal degrees in a notation.
void AppendAngle(std::string& out, double degrees, AngleNotation notation);

}  // namespace walrim
