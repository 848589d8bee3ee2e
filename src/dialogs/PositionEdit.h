// A latitude or a longitude that a user types over the one that is shown.
//
//   text = angle in the shown notation | angle with marks or letters (MapPoint.h) | d/mm/ss.s
//        | whole position: a pair, a geo link, the address of a map's page (MapPoint.h)
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "geo/AngleNotation.h"
#include "geo/Datum.h"

namespace walrim {

enum class PositionAxis : std::uint8_t { Latitude, Longitude };

/// How positions are shown.
struct PositionForm {
  AngleNotation notation = AngleNotation::D;
  Datum datum = Datum::Wgs84;
};

/// What came of it.
struct PositionEdit {
  std::optional<GeoPoint> point;  ///< on WGS84
  std::string refusal;            ///< why there is none
};

/// before is on WGS84. An angle replaces its axis and leaves the other one as it is shown; a whole position replaces
/// both, on whichever axis it is typed.
[[nodiscard]] PositionEdit EditPosition(const GeoPoint& before, PositionAxis axis, std::string_view text,
                                        const PositionForm& form);

}  // namespace walrim
