// What a user types over a field of a record, as the record that it makes.
//
// Texts are taken without the blanks around them and in capitals, as the readers of files take them. A text of a record
// with fields of fixed width (D103, D104, D107; D201) is padded to its field. One that is wider makes the record what
// such a record is for a receiver with texts of any length (D108; D202): the symbol is the same picture of its set, and
// everything else stays. A symbol is one of the record's type, and symbol_set says so.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "dialogs/PositionEdit.h"
#include "records/Route.h"
#include "records/TrackLog.h"
#include "records/Waypoint.h"

namespace walrim {

/// The fields that can be edited.
enum class EditField : std::uint8_t { Name, Comment, Latitude, Longitude, Height, Symbol };

/// The record as it becomes, or why the text is not taken.
template <typename Record>
struct CellEdit {
  std::optional<Record> record;
  std::string refusal;
};

/// A text of Symbol is the number of a symbol of the waypoint's type. A waypoint that never came is one then.
[[nodiscard]] CellEdit<Waypoint> EditWaypoint(const Waypoint& before, EditField field, std::string_view text,
                                              const PositionForm& form);
/// Its comment.
[[nodiscard]] CellEdit<Route> EditRoute(const Route& before, std::string_view text);
/// Its name.
[[nodiscard]] CellEdit<TrackLog> EditLog(const TrackLog& before, std::string_view text);
/// Its position or its height; other fields are refused.
[[nodiscard]] CellEdit<TrackPoint> EditTrackPoint(const TrackPoint& before, EditField field, std::string_view text,
                                                  const PositionForm& form);

}  // namespace walrim
