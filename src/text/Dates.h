// Dates and times: the receiver's seconds, and their texts.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace walrim {

/// A civil date and time in the proleptic Gregorian calendar, without a zone.
struct CivilTime {
  int year = 1989;
  int month = 12;  ///< 1..12
  int day = 31;    ///< 1..31
  int hour = 0;    ///< 0..23
  int minute = 0;  ///< 0..59
  int second = 0;  ///< 0..59

  friend bool operator==(const CivilTime&, const CivilTime&) = default;
};

/// Seconds from the receivers' epoch, 1989/12/31 00:00:00, to a civil time; negative before it.
[[nodiscard]] std::int64_t SecondsSinceGarminEpoch(const CivilTime& time);

/// The inverse of SecondsSinceGarminEpoch.
[[nodiscard]] CivilTime CivilFromGarminSeconds(std::int64_t seconds);

/// Receiver values from here up mean "no time known" and are written as the epoch.
inline constexpr double UnknownGarminTime = 4294967290.0;

/// Local civil time of a receiver's time (unsigned seconds since the epoch, carried in a double) in a zone that is
/// utc_offset_hours ahead of UTC. UnknownGarminTime and above count as 0.
[[nodiscard]] CivilTime LocalTimeOfGarminTime(double garmin_time, int utc_offset_hours);

/// "yyyy/mm/dd hh:nn:ss"
[[nodiscard]] std::string DateTimeText(const CivilTime& time);

/// Reads "yyyy/mm/dd hh:nn:ss" leniently, as people and spreadsheets rewrite it: one or two digits a field, "-" for
/// "/", seconds or the whole time left out, a fraction of a second. second_fraction (if given) gets the fraction.
/// Nothing when the text is no such date or the date does not exist.
[[nodiscard]] std::optional<CivilTime> ParseDateTime(std::string_view text, double* second_fraction = nullptr);

/// Receiver seconds of a local date text: the difference to the epoch shifted by the offset, rounded half up, kept
/// within 0..4294967295; 0 where the text is no date.
[[nodiscard]] double GarminTimeOfText(std::string_view text, int utc_offset_hours);

}  // namespace walrim
