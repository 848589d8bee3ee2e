// What an upload would lose, why, and what is proposed against it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "preflight/Comparison.h"
#include "preflight/Proposals.h"
#include "preflight/Recipient.h"
#include "preflight/ShortNames.h"
#include "records/DataSet.h"

namespace walrim {

enum class Cause : std::uint8_t {
  Type,         ///< the receiver's record has no room for it
  Letters,      ///< no letter of the name is one of the receiver's
  Overwritten,  ///< by a later record of the same name, or number
  NoRoom,       ///< the receiver has room for fewer
  TooLong,      ///< a text is longer than the receiver takes
  NotSendable   ///< it cannot be sent, nor the other records of its kind
};

struct UploadFinding {
  Difference difference;
  Cause cause = Cause::Type;
  std::optional<std::size_t> other;  ///< the index of the record that has the same name or number
  std::vector<Proposal> proposals;   ///< together; none where there is nothing to do
};

/// What an upload of some kinds would lose, in the order of the records: what comparing shows once it is done. before
/// is what the receiver holds, empty where that is not known.
[[nodiscard]] std::vector<UploadFinding> FindingsOf(const DataSet& data, const DataKinds& kinds, const DataSet& before,
                                                    const Recipient& to, const NameLookup& lookup);

/// The proposals of all findings.
[[nodiscard]] std::vector<Proposal> ProposalsOf(const std::vector<UploadFinding>& findings);

/// A copy with all proposals taken, also those against what only then comes to light.
[[nodiscard]] DataSet Fitted(const DataSet& data, const DataKinds& kinds, const DataSet& before, const Recipient& to,
                             const NameLookup& lookup);

}  // namespace walrim
