// What is told of an upload before and after it.
#pragma once

#include <string>

#include "preflight/Findings.h"

namespace walrim::preflight_messages {

/// What a difference is about, as "Waypoint 3「高尾山」" or "Route 1 Point 2「START」"; the kind alone where it is told
/// once.
[[nodiscard]] std::string RecordText(const DataSet& data, const Difference& difference);
/// What is lost, without the record.
[[nodiscard]] std::string LossText(const Difference& difference);
/// Why, without the record and without a full stop.
[[nodiscard]] std::string FindingText(const UploadFinding& finding);
/// What is proposed against it; empty where nothing is.
[[nodiscard]] std::string ProposalText(const UploadFinding& finding);

/// A line of what an upload would lose, and of what one has lost.
[[nodiscard]] std::string FindingLine(const DataSet& data, const UploadFinding& finding);
[[nodiscard]] std::string DifferenceLine(const DataSet& data, const Difference& difference);

}  // namespace walrim::preflight_messages
