// Figures as the tables show them. What is edited, saved and copied has all its digits.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "geo/AngleNotation.h"

namespace walrim {

/// "35.632301" with six decimals, some ten centimetres; 35°37'56.3" for DMS; other notations as files have them.
[[nodiscard]] std::string ShownAngle(double degrees, AngleNotation notation);
/// Whole metres; empty where nothing is known.
[[nodiscard]] std::string ShownMetres(std::optional<double> metres);
/// Kilometres with two decimals.
[[nodiscard]] std::string ShownKilometres(double metres);
/// "1:02:03"; empty where nothing is known.
[[nodiscard]] std::string ShownDuration(std::optional<std::int64_t> seconds);

}  // namespace walrim
