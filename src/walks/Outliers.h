// Points that no walk can have come by.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "records/TrackLog.h"

namespace walrim {

/// A point's acceleration, in modified z-scores from the median of its log's, above which it may be an outlier.
inline constexpr double OutlierScore = 5;
/// What the position of such receivers is off by on a usual day. A way that a point makes longer by less is none that
/// the point is to blame for.
inline constexpr double UsualError_m = 15;
/// Who turns round on his heel changes his velocity by twice his speed. A change of so many times the log's median
/// speed may be walked.
inline constexpr double MostTurn = 3;

/// The outliers among the points of a log, by their indices in rising order. The acceleration at a point is the change
/// of the velocity between the ways to it and from it, over the time that half of both takes; its score is
/// 0.6745 |a - median| / MAD, where MAD is the median of |a - median|. The worst goes first, and its neighbours are
/// judged again without it: they would have the blame otherwise. First and last points of segments, and points between
/// which no time passes, are never any.
[[nodiscard]] std::vector<std::size_t> OutliersOf(std::span<const TrackPoint> points);

}  // namespace walrim
