// Uploads that are looked at before, and compared after.
#include "app/UploadCommands.h"

#include "app/AppTest.h"

namespace walrim {
namespace {

/// Decides what it is told to.
class FakeReview : public UploadReview {
 public:
  [[nodiscard]] UploadDecision Review(UploadPlan& plan) override {
    findings.push_back(plan.findings.size());
    asked.push_back(plan.receiver_asked);
    if (decide) return decide(plan);
    return UploadDecision::Send;
  }

  std::function<UploadDecision(UploadPlan&)> decide;
  std::vector<std::size_t> findings;
  std::vector<bool> asked;
};

class UploadCommandsTest : public AppTest {
 protected:
  UploadCommandsTest() { main.Uploads().SetReview(&review); }
  ~UploadCommandsTest() override { main.Uploads().SetReview(nullptr); }

  Outcome Upload(const UploadCare& care = {}) { return main.Uploads().Upload(care); }

  FakeReview review;
};

TEST_F(UploadCommandsTest, NobodyIsAskedWhereNothingWouldBeLost) {
  HoldWaypoint("TAKAO");
  EXPECT_EQ(Upload(), Outcome::Done);
  EXPECT_TRUE(review.findings.empty());
  EXPECT_TRUE(Uploaded());
}

TEST_F(UploadCommandsTest, BackSendsNothing) {
  HoldWaypoint("高尾山");
  review.decide = [](UploadPlan&) { return UploadDecision::Back; };
  EXPECT_EQ(Upload(), Outcome::Cancelled);
  EXPECT_EQ(review.findings.size(), 1U);
  EXPECT_FALSE(Uploaded());
}

TEST_F(UploadCommandsTest, WhatTheReviewMakesOfThePlanIsSentAndWhatIsHeldStays) {
  HoldWaypoint("高尾山");
  review.decide = [](UploadPlan& plan) {
    plan.data = WithProposals(plan.data, ProposalsOf(plan.findings), plan.to);
    return UploadDecision::Send;
  };
  EXPECT_EQ(Upload(), Outcome::Done);
  EXPECT_EQ(main.Uploads().Sent().Waypoints()[0].ident, "SAN");
  EXPECT_EQ(Idents(), Strings{"高尾山"});
  EXPECT_TRUE(main.State().SomethingLost()) << "what is held must not be deleted";
}

TEST_F(UploadCommandsTest, TheReceiverIsAskedOnRequestAndThenTheReviewComesAgain) {
  HoldWaypoint("高尾山");
  review.decide = [](UploadPlan& plan) {
    return plan.receiver_asked ? UploadDecision::Back : UploadDecision::AskReceiver;
  };
  EXPECT_EQ(Upload(), Outcome::Cancelled);
  EXPECT_EQ(review.asked, (std::vector<bool>{false, true}));
  EXPECT_FALSE(Uploaded());
}

TEST_F(UploadCommandsTest, ACheckTellsAndSendsAndWritesNothing) {
  HoldWaypoint("高尾山");
  UploadCare care;
  care.check = true;
  care.backup = Path("before.grc");
  EXPECT_EQ(Upload(care), Outcome::Done);
  EXPECT_FALSE(main.Uploads().Plan().findings.empty());
  EXPECT_TRUE(main.Uploads().Plan().receiver_asked);
  EXPECT_FALSE(std::filesystem::exists(care.backup));
  EXPECT_FALSE(Uploaded());
  EXPECT_FALSE(main.Uploads().HasBackup());
}

TEST_F(UploadCommandsTest, FitTakesAllProposalsUnasked) {
  HoldWaypoint("高尾山", "", 35.5);
  HoldWaypoint("大山", "", 35.6);
  UploadCare care;
  care.fit = true;
  EXPECT_EQ(Upload(care), Outcome::Done);
  EXPECT_TRUE(review.findings.empty());
  EXPECT_EQ(main.Uploads().Sent().Waypoints()[0].ident, "SAN");
  EXPECT_EQ(main.Uploads().Sent().Waypoints()[1].ident, "SAN2");
}

TEST_F(UploadCommandsTest, ABackupThatFailsEndsItBeforeAnythingIsSent) {
  HoldWaypoint("TAKAO");
  UploadCare care;
  care.backup = Path("nowhere/before.grc");
  EXPECT_EQ(Upload(care), Outcome::Refused);
  EXPECT_FALSE(Uploaded());
  EXPECT_EQ(main.Uploads().SendBackup(), Outcome::Refused);
  care.backup = Put("mine.grc", "mine");
  desktop.ok = false;
  EXPECT_EQ(Upload(care), Outcome::Refused);
  EXPECT_EQ(FileContents(care.backup), "mine");
  EXPECT_FALSE(Uploaded());
}

TEST_F(UploadCommandsTest, WhatWasSentIsComparedWithWhatIsHeldThen) {
  HoldWaypoint("TAKAO");
  UploadCare care;
  care.verify = true;
  EXPECT_EQ(Upload(care), Outcome::Done);
  EXPECT_TRUE(main.Uploads().Compared());
  ASSERT_EQ(main.Uploads().Differences().size(), 1U) << "this receiver holds nothing then";
  EXPECT_EQ(main.Uploads().Differences()[0].loss, Loss::Missing);
}

}  // namespace
}  // namespace walrim
