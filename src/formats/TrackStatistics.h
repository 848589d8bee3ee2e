// What a script tells about a track log and its points: times, distances, speeds.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace walrim {

/// A point of a log as its statistics see it.
struct LoggedPoint {
  std::optional<std::int64_t> seconds;  ///< since the receivers' epoch; nothing for a point without a time
  double leg_km = 0;                    ///< distance from the point before it; 0 for the first
};

/// A number that is not negative, as "####.###" writes it: up to three decimals, no 0 before the point. 0 is "0".
[[nodiscard]] std::string ThousandthsText(double value);

/// " Start[..] End[..] Total:hh:mm:ss 52tps 4.123km 4.045km/hr". What cannot be computed is left out: the elapsed time
/// of points without times or whose times run backwards, and the speed where no time passed.
[[nodiscard]] std::string LogStatistics(std::span<const LoggedPoint> points);

/// "mm/dd/yyyy hh:mm:ss" of the point, or the epoch's without a time.
[[nodiscard]] std::string PointTime(const LoggedPoint& point);
/// " Intv. hh:mm:ss .042km 5.04km/hr", where point's leg is the way from before.
[[nodiscard]] std::string IntervalText(const LoggedPoint& before, const LoggedPoint& point);

}  // namespace walrim
