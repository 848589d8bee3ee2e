// Track headers and points on the wire.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "device/Models.h"
#include "device/types/Wire.h"
#include "records/TrackLog.h"

namespace walrim {

/// Where the position, two numbers of semicircles, stands in the data of a point of any type.
inline constexpr std::size_t TrackPointPosition = 0;

[[nodiscard]] TrackPoint DecodeTrackPoint(std::span<const std::uint8_t> data, TrackPointType type);
/// Throws std::overflow_error for a position that does not fit.
[[nodiscard]] std::vector<std::uint8_t> EncodeTrackPoint(const TrackPoint& point, TrackPointType type);

/// A log without points, of D310.
[[nodiscard]] TrackLog DecodeTrackHeader(std::span<const std::uint8_t> data);
[[nodiscard]] std::vector<std::uint8_t> EncodeTrackHeader(const TrackLog& log, TrackHeaderType type,
                                                          EncodeNotes& notes);

}  // namespace walrim
