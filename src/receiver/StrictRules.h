// What a strict receiver asks of a host, and how it keeps what it takes.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "receiver/LineFrame.h"
#include "receiver/ReceiverMemory.h"
#include "receiver/ReceiverModel.h"

namespace walrim {

/// Whether a host's packet has the size and the zero bytes that the model's layout has: a command, a number of records
/// or an end of two bytes, records of exactly their fields, zero-terminated texts no longer than theirs. Packets that
/// the model has no layout for are none; others, which belong to no transfer, are.
[[nodiscard]] bool WellFormed(const LinePacket& packet, const ReceiverModel& model);

/// Adds uploaded records to the memory, as far as there is room; the rest is dropped without a word.
/// - Names of waypoints keep the letters that the model has, small ones as capitals, up to its length; a waypoint
///   without any is dropped. One of the same name is overwritten.
/// - A route of the same number, or where it has none of the same name, is overwritten.
/// - Track points, whatever log they came in, go to the end of the active log, which is the first one. A header begins
///   a segment there.
void StoreUpload(ReceiverMemory& memory, const std::vector<LinePacket>& records, const ReceiverModel& model);

}  // namespace walrim
