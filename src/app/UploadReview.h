// Who looks at an upload before its first byte.
#pragma once

#include <cstdint>
#include <vector>

#include "preflight/Findings.h"
#include "preflight/Recipient.h"
#include "records/DataSet.h"

namespace walrim {

/// What is to be sent, and what of it would be lost.
struct UploadPlan {
  DataSet data;
  DataKinds kinds{};
  Recipient to;
  DataSet before;  ///< what the receiver holds; empty while it has not been asked
  bool receiver_asked = false;
  std::vector<UploadFinding> findings;
};

enum class UploadDecision : std::uint8_t {
  Send,        ///< what stands in the plan's data now
  Back,        ///< nothing is sent
  AskReceiver  ///< for what it holds, and then look again
};

class UploadReview {
 public:
  virtual ~UploadReview() = default;

  /// Called where there are findings, and again when AskReceiver was decided.
  [[nodiscard]] virtual UploadDecision Review(UploadPlan& plan) = 0;
};

}  // namespace walrim
