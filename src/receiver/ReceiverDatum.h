// The old Japanese datum in files that fill a receiver's memory.
#pragma once

namespace walrim {

struct DatumPosition {
  double lat_deg = 0;
  double lon_deg = 0;
};

/// A position on the WGS84 datum of one on the Tokyo mean datum, both on their ellipsoid's surface: geocentric shift
/// with one Bowring step, with pi = 3.1415926 and the shift's small corrections, as the program's files have it.
[[nodiscard]] DatumPosition PositionOnWgs84(const DatumPosition& tokyo);

}  // namespace walrim
