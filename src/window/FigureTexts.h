// Figures of walks as they are shown, rounded as the terminal rounds them.
#pragma once

#include <QString>
#include <cstdint>
#include <optional>

namespace walrim {

/// "12.34 km"
[[nodiscard]] QString DistanceText(double metres);
/// "1:05:09"; what is not known is "-", here and below.
[[nodiscard]] QString DurationText(std::optional<std::int64_t> seconds);
/// "4.2 km/h"
[[nodiscard]] QString SpeedText(std::optional<double> metres_per_second);
/// "845 m"
[[nodiscard]] QString HeightText(std::optional<double> metres);

}  // namespace walrim
