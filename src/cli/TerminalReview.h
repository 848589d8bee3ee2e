// Tells of what an upload would lose, and lets it go on.
#pragma once

#include "app/UploadReview.h"
#include "platform/Desktop.h"

namespace walrim {

class TerminalReview : public UploadReview {
 public:
  /// desktop must outlive this object.
  explicit TerminalReview(Desktop& desktop) : desktop_(desktop) {}

  /// Tells the first findings and how many there are; what the upload itself will tell is left to it.
  [[nodiscard]] UploadDecision Review(UploadPlan& plan) override;

 private:
  Desktop& desktop_;
};

}  // namespace walrim
