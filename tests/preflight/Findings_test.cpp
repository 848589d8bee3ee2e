#include "preflight/Findings.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "preflight/Arrival.h"
#include "preflight/Messages.h"
#include "preflight/RandomData.h"
#include "preflight/StrictReceiver.h"

namespace walrim {

namespace {

constexpr DataKinds AllKinds{true, true, true};

/// A line each, for a comparison that tells the lines that differ.
std::string Lines(const std::vector<Difference>& differences) {
  std::string lines;
  for (const Difference& difference : differences) {
    lines += std::string(DataKindName(difference.kind)) + " " + std::to_string(difference.record) + "." +
             (difference.point ? std::to_string(*difference.point) : "") + " " +
             preflight_messages::LossText(difference) + " " + difference.was + ">" + difference.is + " x" +
             std::to_string(difference.count) + "\n";
  }
  return lines;
}

std::vector<Difference> Foretold(const std::vector<UploadFinding>& findings) {
  std::vector<Difference> differences;
  for (const UploadFinding& finding : findings) {
    differences.push_back(finding.difference);
  }
  return differences;
}

class EveryModel : public ::testing::TestWithParam<const ReceiverModel*> {};

TEST_P(EveryModel, LosesWhatWasForetoldAndNothingElse) {
  for (unsigned seed = 1; seed <= 25; ++seed) {
    RandomData random(seed);
    const bool checked = random.Below(2) == 0;
    StrictReceiver receiver(*GetParam());
    if (random.Below(2) == 0) receiver.Upload(random.Make(), AllKinds, false);
    const DataSet before = receiver.Held();
    const DataSet data = random.Make();
    DataKinds kinds = AllKinds;
    if (random.Below(3) == 0) kinds[random.Below(DataKindCount)] = false;
    const Recipient to = receiver.AsRecipient(checked);
    const std::vector<UploadFinding> findings = FindingsOf(data, kinds, before, to, nullptr);
    receiver.Upload(data, kinds, checked);
    ASSERT_EQ(Lines(Foretold(findings)), Lines(Compare(data, kinds, receiver.Held(), before, to))) << "seed " << seed;
  }
}

/// Against what has nothing been proposed: room, and what the receiver's types lack.
bool CannotBeKept(const UploadFinding& finding) {
  if (ToldOnce(finding.difference.loss)) return true;
  switch (finding.cause) {
    case Cause::Type:
      return finding.difference.loss == Loss::Comment || finding.difference.loss == Loss::Picture;
    case Cause::NoRoom:
      return finding.difference.loss == Loss::Missing || finding.difference.kind == DataKind::TrackLog;
    case Cause::Letters:
    case Cause::Overwritten:
    case Cause::TooLong:
    case Cause::NotSendable:
      return false;
  }
  return false;
}

TEST_P(EveryModel, LosesOnlyWhatCannotBeKeptOnceTheProposalsAreTaken) {
  for (unsigned seed = 1; seed <= 25; ++seed) {
    RandomData random(seed);
    StrictReceiver receiver(*GetParam());
    if (random.Below(2) == 0) receiver.Upload(random.Make(), AllKinds, false);
    const DataSet before = receiver.Held();
    const DataSet data = random.Make();
    const Recipient to = receiver.AsRecipient(true);
    const DataSet fitted = Fitted(data, AllKinds, before, to, nullptr);
    for (const UploadFinding& finding : FindingsOf(fitted, AllKinds, before, to, nullptr)) {
      EXPECT_TRUE(CannotBeKept(finding)) << "seed " << seed << " " << preflight_messages::FindingLine(fitted, finding);
    }
    receiver.Upload(fitted, AllKinds, true);
    for (const Difference& difference : Compare(fitted, AllKinds, receiver.Held(), before, to)) {
      EXPECT_NE(difference.loss, Loss::Name) << "seed " << seed;
      EXPECT_NE(difference.loss, Loss::Number) << "seed " << seed;
      EXPECT_NE(difference.loss, Loss::Overwrites) << "seed " << seed;
    }
    if (HasFailure()) break;
  }
}

INSTANTIATE_TEST_SUITE_P(Models, EveryModel, ::testing::ValuesIn([] {
                           std::vector<const ReceiverModel*> models;
                           for (const ReceiverModel& model : ReceiverModels())
                             models.push_back(&model);
                           return models;
                         }()));

}  // namespace
}  // namespace walrim
