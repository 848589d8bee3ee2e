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

/// The same of Unix time, which counts from 1970/01/01.
[[nodiscard]] constexpr std::int64_t GarminSecondsOfUnix(std::int64_t seconds) {
  return seconds - 631'065'600;
}

/// The inverse of SecondsSinceGarminEpoch, for years from -32767 to 32767.
[[nodiscard]] CivilTime CivilFromGarminSeconds(std::int64_t seconds);

/// Receivers' values from here up, and 0, say that no time is known.
inline constexpr std::int64_t UnknownGarminTime = 4294967290;
/// A receiver's time; nothing for a value that says that it is not known, or that no receiver has.
[[nodiscard]] std::optional<std::uint32_t> KnownGarminTime(std::int64_t seconds);

/// Local civil time of a receiver's time (seconds since the epoch) in a zone that is utc_offset_hours ahead of UTC. One
/// that is not known is written as the epoch.
[[nodiscard]] CivilTime LocalTimeOfGarminTime(std::optional<std::uint32_t> garmin_time, int utc_offset_hours);

/// "yyyy/mm/dd hh:nn:ss"
[[nodiscard]] std::string DateTimeText(const CivilTime& time);
void AppendDateTime(std::string& out, const CivilTime& time);

/// Reads "yyyy/mm/dd hh:nn:ss" leniently, as people and spreadsheets rewrite it: one or two digits a field, "-" for
/// "/", seconds or the whole time left out, a fraction of a second. second_fraction (if given) gets the fraction.
/// Nothing when the text is no such date or the date does not exist.
[[nodiscard]] std::optional<CivilTime> ParseDateTime(std::string_view text, double* second_fraction = nullptr);

/// A receiver's time of a local date text: rounded to whole seconds, half up. Nothing where the text is no date, or one
/// that no receiver can tell.
[[nodiscard]] std::optional<std::uint32_t> GarminTimeOfText(std::string_view text, int utc_offset_hours);

}  // namespace walrim
