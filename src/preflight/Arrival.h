// What a receiver holds once records have been sent to it.
#pragma once

#include "preflight/Recipient.h"
#include "records/DataSet.h"

namespace walrim {

/// What a download gives after an upload of some kinds, of a receiver that held something before:
/// - A waypoint of a name that is there is overwritten; one without a letter that the receiver has is dropped.
/// - A route of a number that is there, or where routes have none of a name that is there, is overwritten.
/// - Track points, whatever log they came in, go to the end of the active log, which is the first one.
/// - What there is no room for is dropped.
/// Only the first of these holds for a model that is not known.
[[nodiscard]] DataSet HeldAfterUpload(const DataSet& data, const DataKinds& kinds, const DataSet& before,
                                      const Recipient& to);

}  // namespace walrim
