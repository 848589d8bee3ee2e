// What the tables do to records, and how it is taken back.
#include "app/RecordCommands.h"

#include "app/AppTest.h"

namespace walrim {
namespace {

constexpr DataKind Waypoints = DataKind::Waypoint;
constexpr DataKind Routes = DataKind::Route;
constexpr DataKind Logs = DataKind::TrackLog;

class RecordCommandsTest : public AppTest {
 protected:
  RecordCommandsTest() {
    for (const char* ident : {"A", "B", "C"})
      HoldWaypoint(ident);
    AddRoute("R", 4);
    AddLog("S", "|...|..");
    AddLog("T", "|..");
    AddLog("U", "|.");
    main.State().SetHeldCount(Routes, 1);
    main.State().SetHeldCount(Logs, 3);
    main.State().KeepSteps();
    before_ = Written();
  }

  void AddRoute(const std::string& name, char points) {
    ASSERT_EQ(Data().Begin(Route{RouteHeaderType::D202, 1, name, {}}), AddResult::Stored);
    for (char i = 0; i < points; ++i) {
      RoutePoint point;
      point.waypoint.ident = std::string(1, static_cast<char>('1' + i));
      ASSERT_EQ(Data().Add(point), AddResult::Stored);
    }
  }
  /// "|" begins a segment with the next ".".
  void AddLog(const std::string& name, std::string_view pattern) {
    ASSERT_EQ(Data().Begin(TrackLog{false, true, 255, name, {}}), AddResult::Stored);
    TrackPoint point;
    GarminSeconds time = 1;
    for (const char c : pattern) {
      if (c == '|') {
        point.new_trk = true;
        continue;
      }
      point.time = time++;
      ASSERT_EQ(Data().Add(point), AddResult::Stored);
      point.new_trk = false;
    }
  }
  /// "A B C R1234 S|123|45 T|12 U|1"
  [[nodiscard]] std::string Written() {
    std::string text;
    for (const Waypoint& waypoint : Data().Waypoints())
      text += waypoint.ident + " ";
    for (const Route& route : Data().Routes()) {
      text += route.cmnt;
      for (const RoutePoint& point : route.points)
        text += point.waypoint.ident;
      text += " ";
    }
    for (const TrackLog& log : Data().Logs()) {
      text += log.trk_ident;
      for (const TrackPoint& point : log.points)
        text += (point.new_trk ? "|" : "") + std::to_string(*point.time);
      text += " ";
    }
    return text;
  }
  /// What a command made of the data; undone, all is as before.
  [[nodiscard]] std::string Made(Outcome outcome) {
    EXPECT_EQ(outcome, Outcome::Done);
    std::string made = Written();
    name_ = messages::UndoCaption(main.State().Steps().NextUndo());
    EXPECT_EQ(main.Edits().Undo(), Outcome::Done);
    EXPECT_EQ(Written(), before_);
    return made;
  }
  RecordCommands& Records() { return main.Records(); }
  [[nodiscard]] std::string Edit(DataKind kind, const RecordPlace& place, EditField field, std::string_view text) {
    return Records().EditCell(kind, place, field, text);
  }

  std::string before_;
  std::string name_;  ///< of the step that was undone last
};

TEST_F(RecordCommandsTest, ACellIsEditedAsOneStep) {
  EXPECT_EQ(Edit(Waypoints, {1, {}}, EditField::Name, "new"), "");
  EXPECT_EQ(Made(Outcome::Done), "A NEW C R1234 S|123|45 T|12 U|1 ");
  EXPECT_EQ(name_, "元に戻す：編集（Waypoint 1件）");
  EXPECT_EQ(Edit(Routes, {0, {}}, EditField::Comment, "way"), "");
  EXPECT_EQ(Made(Outcome::Done), "A B C WAY1234 S|123|45 T|12 U|1 ");
  EXPECT_EQ(Edit(Routes, {0, 2}, EditField::Name, "x"), "");
  EXPECT_EQ(Made(Outcome::Done), "A B C R12X4 S|123|45 T|12 U|1 ");
  EXPECT_EQ(Edit(Logs, {1, {}}, EditField::Name, "day"), "");
  EXPECT_EQ(Made(Outcome::Done), "A B C R1234 S|123|45 DAY|12 U|1 ");
  EXPECT_EQ(Edit(Logs, {0, 3}, EditField::Height, "77"), "");
  EXPECT_EQ(Data().Logs()[0].points[3].alt_m, 77.0F);
  EXPECT_EQ(main.Edits().Undo(), Outcome::Done);
  EXPECT_EQ(Data().Logs()[0].points[3].alt_m, std::nullopt);
}

TEST_F(RecordCommandsTest, APositionIsReadAsItIsShown) {
  main.State().Settings().notation = AngleNotation::DMS;
  EXPECT_EQ(Edit(Waypoints, {0, {}}, EditField::Latitude, "36.0730"), "");
  EXPECT_EQ(Data().Waypoints()[0].lat_deg, 36.125);
}

TEST_F(RecordCommandsTest, WhatIsRefusedOrAlreadyThereIsNoStep) {
  EXPECT_EQ(Edit(Waypoints, {0, {}}, EditField::Height, "x"), messages::NoHeight("x"));
  EXPECT_EQ(Edit(Waypoints, {0, {}}, EditField::Name, "A"), "");
  EXPECT_EQ(Edit(Waypoints, {9, {}}, EditField::Name, "A"), messages::RecordIsGone);
  EXPECT_EQ(Edit(Routes, {0, 9}, EditField::Name, "A"), messages::RecordIsGone);
  EXPECT_EQ(Edit(Logs, {0, 9}, EditField::Height, "1"), messages::RecordIsGone);
  EXPECT_EQ(Written(), before_);
  EXPECT_EQ(main.Edits().Undo(), Outcome::Refused);
  EXPECT_EQ(desktop.messages, Strings{});
}

TEST_F(RecordCommandsTest, WhileACommandRunsNothingIsEdited) {
  const BusyGuard guard(main.State());
  EXPECT_EQ(Edit(Waypoints, {0, {}}, EditField::Name, "X"), messages::BusyWithCommand);
  EXPECT_EQ(Records().Delete(Waypoints, {{0, {}}}), Outcome::Busy);
  EXPECT_EQ(Written(), before_);
}

TEST_F(RecordCommandsTest, RecordsAreTakenOut) {
  EXPECT_EQ(Made(Records().Delete(Waypoints, {{0, {}}, {2, {}}})), "B R1234 S|123|45 T|12 U|1 ");
  EXPECT_EQ(name_, "元に戻す：削除（Waypoint 2件）");
  EXPECT_EQ(Made(Records().Delete(Routes, {{0, {}}})), "A B C S|123|45 T|12 U|1 ");
  EXPECT_EQ(Made(Records().Delete(Logs, {{1, {}}})), "A B C R1234 S|123|45 U|1 ");
  EXPECT_EQ(Records().Delete(Waypoints, {}), Outcome::Refused);
}

TEST_F(RecordCommandsTest, CountsFollow) {
  EXPECT_EQ(Records().Delete(Waypoints, {{0, {}}}), Outcome::Done);
  EXPECT_EQ(Records().Delete(Routes, {{0, {}}}), Outcome::Done);
  EXPECT_EQ(Held(), (Counts{2, std::nullopt, 3}));
  EXPECT_EQ(main.Edits().Undo(), Outcome::Done);
  EXPECT_EQ(Held(), (Counts{2, 1, 3}));
}

TEST_F(RecordCommandsTest, PointsAreTakenOutAndSegmentsStay) {
  EXPECT_EQ(Made(Records().Delete(Routes, {{0, 1}, {0, 3}})), "A B C R13 S|123|45 T|12 U|1 ");
  EXPECT_EQ(Made(Records().Delete(Logs, {{0, 0}, {0, 2}})), "A B C R1234 S|2|45 T|12 U|1 ");
  EXPECT_EQ(Made(Records().Delete(Logs, {{0, 3}, {1, 0}, {1, 1}})), "A B C R1234 S|123|5 T U|1 ");
  EXPECT_EQ(Made(Records().Delete(Logs, {{0, 3}, {0, 4}})), "A B C R1234 S|123 T|12 U|1 ");
  EXPECT_EQ(Made(Records().Delete(Logs, {{0, 0}, {0, 1}, {0, 2}})), "A B C R1234 S|45 T|12 U|1 ");
  EXPECT_EQ(name_, "元に戻す：削除（TrackLog 3点）");
}

TEST_F(RecordCommandsTest, PointsOfARouteChangePlaces) {
  EXPECT_EQ(Made(Records().MovePoints(0, {2}, true)), "A B C R1324 S|123|45 T|12 U|1 ");
  EXPECT_EQ(Made(Records().MovePoints(0, {0}, false)), "A B C R2134 S|123|45 T|12 U|1 ");
  EXPECT_EQ(Made(Records().MovePoints(0, {1, 2}, true)), "A B C R2314 S|123|45 T|12 U|1 ");
  EXPECT_EQ(Made(Records().MovePoints(0, {0, 2}, false)), "A B C R2143 S|123|45 T|12 U|1 ");
  EXPECT_EQ(Records().MovePoints(0, {0, 1}, true), Outcome::Refused);
  EXPECT_EQ(Records().MovePoints(0, {3}, false), Outcome::Refused);
  EXPECT_EQ(Records().MovePoints(7, {1}, false), Outcome::Refused);
}

TEST_F(RecordCommandsTest, LogsAreJoined) {
  EXPECT_EQ(Made(Records().JoinLogs({0, 2})), "A B C R1234 S|123|45|1 T|12 ");
  EXPECT_EQ(Made(Records().JoinLogs({1, 2})), "A B C R1234 S|123|45 T|12|1 ");
  EXPECT_EQ(Made(Records().JoinLogs({0, 1, 2})), "A B C R1234 S|123|45|12|1 ");
  EXPECT_EQ(Records().JoinLogs({1}), Outcome::Refused);
  EXPECT_EQ(desktop.messages, Strings{});
}

TEST_F(RecordCommandsTest, ALogIsCut) {
  EXPECT_EQ(Made(Records().CutLog(0, 1)), "A B C R1234 S|1 S-2|23|45 T|12 U|1 ");
  EXPECT_EQ(Records().CutLog(0, 0), Outcome::Refused);
  EXPECT_EQ(Records().CutLog(0, 5), Outcome::Refused);
  EXPECT_EQ(Records().CutLog(9, 1), Outcome::Refused);
}

TEST_F(RecordCommandsTest, LogsAreSplitByTime) {
  // Their points have the times 1, 2, 3 ..: the first log's third is moved on by an hour.
  TrackPoint later = Data().Logs()[0].points[2];
  later.time = *later.time + 3600;
  ASSERT_TRUE(Data().Edit(Replacement(2, later, 0)));
  before_ = Written();
  EXPECT_EQ(Made(Records().SplitByGap({0, 1}, std::chrono::hours(1))), "A B C R1234 S|12 S-2|3603|45 T|12 U|1 ");
  EXPECT_EQ(name_, "元に戻す：分割（TrackLog 2件）");
  EXPECT_EQ(Records().SplitByGap({0, 1}, std::chrono::hours(1)), Outcome::Done);
  EXPECT_EQ(desktop.StatusCaption(), messages::SplitInto(2, 3));
  EXPECT_EQ(Records().SplitByGap({1}, std::chrono::hours(1)), Outcome::Refused);
  EXPECT_EQ(desktop.StatusCaption(), messages::NothingToSplit);
  EXPECT_EQ(Records().SplitByDay({0, 1, 9}), Outcome::Refused);
}

TEST_F(RecordCommandsTest, MoreLogsThanAreHeldAreTold) {
  while (Data().Count(Logs) < MaxTrackLogs)
    ASSERT_EQ(Data().Begin(TrackLog{}), AddResult::Stored);
  before_ = Written();
  EXPECT_EQ(Records().CutLog(0, 1), Outcome::Refused);
  EXPECT_EQ(desktop.messages, Strings{messages::KindFull(Logs)});
  EXPECT_EQ(Written(), before_);
}

TEST_F(RecordCommandsTest, RoutesAndLogsAreTurnedRound) {
  EXPECT_EQ(Made(Records().Reverse(Routes, {0})), "A B C R4321 S|123|45 T|12 U|1 ");
  EXPECT_EQ(Made(Records().Reverse(Logs, {0, 1})), "A B C R1234 S|54|321 T|21 U|1 ");
  EXPECT_EQ(Records().Reverse(Waypoints, {0}), Outcome::Refused);
}

TEST_F(RecordCommandsTest, LogsAreShortened) {
  // All points lie at one place: the ends of segments stay.
  EXPECT_EQ(Made(Records().ShortenLogs({0, 1}, 4)), "A B C R1234 S|13|45 T|12 U|1 ");
  EXPECT_EQ(Records().ShortenLogs({0, 1}, 4), Outcome::Done);
  EXPECT_EQ(desktop.StatusCaption(), messages::Shortened(7, 6));
}

TEST_F(RecordCommandsTest, TheDatesToBeRepairedFollowTheirLogs) {
  main.State().SetDateRepairs({{0, 1, 5, 11, 15, 1}, {1, 1, 2, 11, 12, 1}});
  EXPECT_EQ(Records().Delete(Logs, {{0, {}}}), Outcome::Done);
  EXPECT_EQ(main.State().DateRepairs(), (std::vector<DateRepair>{{0, 1, 2, 11, 12, 1}}));
  EXPECT_EQ(main.Edits().Undo(), Outcome::Done);
  EXPECT_EQ(main.State().DateRepairs().size(), 2U);
}

}  // namespace
}  // namespace walrim
