// Whether what was written gives the data set back. What it lost must not be deleted.
#pragma once

#include "formats/Format.h"
#include "records/DataSet.h"

namespace walrim {

/// Whether back, which was read from a text that was written of some kinds, holds what data does: every record and
/// point in its place, with its texts (the fields that the format has), its time, and the numbers of routes and points;
/// of a standard text also its logs. Positions may be rounded as the notations round them. Texts are compared without
/// case, as reading capitalises them.
[[nodiscard]] bool ReadsBack(const DataSet& data, const DataSet& back, const DataKinds& kinds, const Format& format);

/// Whether two records are the same, by what a standard text holds of them and in the way of ReadsBack.
[[nodiscard]] bool SameRecord(const Waypoint& one, const Waypoint& other);
[[nodiscard]] bool SameRecord(const Route& one, const Route& other);
[[nodiscard]] bool SameRecord(const TrackLog& one, const TrackLog& other);

}  // namespace walrim
