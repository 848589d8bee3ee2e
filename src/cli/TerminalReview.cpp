#include "cli/TerminalReview.h"

#include <algorithm>
#include <cstddef>

#include "cli/Messages.h"
#include "preflight/Messages.h"
#include "text/Cp932.h"

namespace walrim {

namespace {

constexpr std::size_t MostTold = 3;
/// A name that is longer than the fields of fixed width is told when it has been cut.
constexpr std::size_t FixedName = 6;

bool ToldByTheUpload(const UploadFinding& finding, const Recipient& to) {
  if (finding.cause == Cause::NotSendable) return true;
  if (finding.cause != Cause::Type) return false;
  switch (finding.difference.loss) {
    case Loss::Comment:
    case Loss::Picture:
    case Loss::Colour:
    case Loss::Capitals:  // nothing is lost that a reader would miss
      return true;
    case Loss::Name:
      return HasFixedWidthTexts(to.types.waypoint) && Cp932Width(finding.difference.was) > FixedName;
    case Loss::Missing:
    case Loss::Points:
    case Loss::Number:
    case Loss::Overwrites:
    case Loss::SharedName:
    case Loss::SharedRouteName:
    case Loss::NoRouteName:
    case Loss::Height:
    case Loss::Depth:
    case Loss::Distance:
    case Loss::Details:
    case Loss::LogName:
    case Loss::Time:
      return false;
  }
  return false;
}

}  // namespace

UploadDecision TerminalReview::Review(UploadPlan& plan) {
  std::size_t count = 0;
  for (const UploadFinding& finding : plan.findings) {
    if (ToldByTheUpload(finding, plan.to)) continue;
    if (count++ < MostTold) desktop_.ShowMessage(preflight_messages::FindingLine(plan.data, finding));
  }
  if (count > 0) desktop_.ShowMessage(cli_messages::WouldBeLost(count));
  return UploadDecision::Send;
}

}  // namespace walrim
