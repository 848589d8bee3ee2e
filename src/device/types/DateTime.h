// The date and time (D600) on the wire.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "text/Dates.h"

namespace walrim {

/// UTC. Nothing where the data are too short, or no date that there is.
[[nodiscard]] std::optional<CivilTime> DecodeDateTime(std::span<const std::uint8_t> data);
/// Of a year from 0 to 65535.
[[nodiscard]] std::vector<std::uint8_t> EncodeDateTime(const CivilTime& utc);

}  // namespace walrim
