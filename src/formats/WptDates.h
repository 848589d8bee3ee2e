// Dates, times and creation stamps as WPT+ texts and map-server scripts carry them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "text/Dates.h"

namespace walrim {

/// Appends "mm/dd/yyyy", a separator and "hh:nn:ss".
void AppendWptMoment(std::string& out, const CivilTime& moment, char separator);

/// The two fields as the standard file writes a moment, "yyyy/mm/dd hh:nn:ss". A date of another form is left as it
/// is, the time always.
[[nodiscard]] std::string StandardMoment(std::string_view date, std::string_view time);
/// The moment of the two fields; nothing where they are none.
[[nodiscard]] std::optional<CivilTime> ParseWptMoment(std::string_view date, std::string_view time);

/// The fields of a point without a time: the receivers' epoch.
inline constexpr std::string_view NoDate = "12/31/1989";
inline constexpr std::string_view NoTime = "00:00:00";
/// True for the receivers' epoch in any zone of whole hours, which is what a point without a time is written with.
/// local is in seconds since that epoch.
[[nodiscard]] bool IsEpochSomewhere(std::int64_t local);

[[nodiscard]] CivilTime ShiftedByHours(const CivilTime& moment, int hours);

/// "CRTD 14:05 15-Nov-02", the comment of a waypoint that has none.
[[nodiscard]] std::string CreationStamp(const CivilTime& now);

/// A creation stamp inside a comment.
struct FoundStamp {
  std::size_t at = 0;  ///< its first byte; it is as long as CreationStamp's text
  CivilTime moment;
};
/// The stamp at the comment's first "CRTD"; nothing where none follows there. Months are read in any case by the table
/// JAN FEB MAR APL MAY JUN JLY AUG SEP OCT NOV DEC and as APR and JUL; years below 50 are 20yy.
[[nodiscard]] std::optional<FoundStamp> FindCreationStamp(std::string_view comment);
/// The comment with its stamp, where it has one, shifted by hours and in capitals.
[[nodiscard]] std::string WithShiftedStamp(std::string_view comment, int hours);

}  // namespace walrim
