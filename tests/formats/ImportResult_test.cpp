#include "formats/ImportResult.h"

#include <gtest/gtest.h>

namespace walrim {
namespace {

TEST(LineCount, KeepsTheFirstLineAndItsReason) {
  LineCount count;
  count.Add(7, "first");
  count.Add(3, "second");
  EXPECT_EQ(count.count, 2);
  EXPECT_EQ(count.first_line, 7);
  EXPECT_EQ(count.first_why, "first");
}

TEST(ImportResult, ASumKeepsTheLinesOfTheOneThatComplainedFirst) {
  ImportResult sum;
  ImportResult clean;
  clean.stored = {1, 2, 3};
  clean.route_points = 4;
  clean.track_points = 5;
  ImportResult faulty = clean;
  faulty.skipped.Add(9, "why");
  faulty.overfull.Add(8);
  ImportResult later;
  later.skipped.Add(2, "other");
  later.unread_time.Add(6);
  later.statements.Add(0, "statement");
  for (const ImportResult& each : {clean, faulty, later})
    sum.Add(each);
  EXPECT_EQ(sum.stored, (std::array<int, DataKindCount>{2, 4, 6}));
  EXPECT_EQ(sum.route_points, 8);
  EXPECT_EQ(sum.track_points, 10);
  EXPECT_EQ(sum.skipped.count, 2);
  EXPECT_EQ(sum.skipped.first_line, 9);
  EXPECT_EQ(sum.skipped.first_why, "why");
  EXPECT_EQ(sum.overfull.first_line, 8);
  EXPECT_EQ(sum.unread_time.first_line, 6);
  EXPECT_EQ(sum.statements.first_why, "statement");
}

TEST(ImportResult, MessagesAreCountedBeyondThoseThatAreKept) {
  ImportResult sum;
  ImportResult many;
  for (int i = 0; i < 25; ++i)
    many.messages.Add(std::to_string(i));
  sum.Add(many);
  sum.Add(many);
  EXPECT_EQ(sum.messages.count, 50);
  EXPECT_EQ(sum.messages.kept.size(), MessageList::MostKept);
  EXPECT_EQ(sum.messages.kept.back(), "19");
}

TEST(ImportResult, PointsAloneBringTheirKindToo) {
  ImportResult result;
  EXPECT_FALSE(result.Received(DataKind::Route));
  result.route_points = 1;
  EXPECT_TRUE(result.Received(DataKind::Route));
  EXPECT_FALSE(result.Received(DataKind::TrackLog));
  result.track_points = 1;
  EXPECT_TRUE(result.Received(DataKind::TrackLog));
  EXPECT_FALSE(result.Received(DataKind::Waypoint));
}

}  // namespace
}  // namespace walrim
