#include "app/History.h"

#include "app/AppTest.h"

namespace walrim {
namespace {

Waypoint Named(const std::string& ident) {
  Waypoint waypoint;
  waypoint.ident = ident;
  return waypoint;
}

class HistoryTest : public AppTest {
 protected:
  HistoryTest() {
    for (const char* ident : {"A", "B", "C"})
      HoldWaypoint(ident);
    main.State().KeepSteps();
  }

  Outcome Rename(std::size_t at, const std::string& ident) {
    return main.Edits().Edit(StepKind::Edit, [&](DataSet& data) { return data.Edit(Replacement(at, Named(ident))); });
  }
  [[nodiscard]] std::string Next() { return messages::UndoCaption(main.State().Steps().NextUndo()); }
};

TEST_F(HistoryTest, AnEditIsAStep) {
  EXPECT_EQ(main.Edits().Undo(), Outcome::Refused);
  EXPECT_EQ(Rename(1, "NEW"), Outcome::Done);
  EXPECT_EQ(Idents(), (Strings{"A", "NEW", "C"}));
  EXPECT_EQ(Next(), "元に戻す：編集（Waypoint 1件）");
  EXPECT_EQ(main.Edits().Undo(), Outcome::Done);
  EXPECT_EQ(Idents(), (Strings{"A", "B", "C"}));
  EXPECT_EQ(desktop.StatusCaption(), "元に戻しました：編集（Waypoint 1件）");
  EXPECT_EQ(main.Edits().Undo(), Outcome::Refused);
  EXPECT_EQ(main.Edits().Redo(), Outcome::Done);
  EXPECT_EQ(Idents(), (Strings{"A", "NEW", "C"}));
  EXPECT_EQ(desktop.StatusCaption(), "やり直しました：編集（Waypoint 1件）");
  EXPECT_EQ(main.Edits().Redo(), Outcome::Refused);
}

TEST_F(HistoryTest, ARefusedEditLeavesNothing) {
  const auto half = [](DataSet& data) {
    return data.Edit(Erasure<Waypoint>({0})) && data.Edit(Erasure<Waypoint>({7}));
  };
  EXPECT_EQ(main.Edits().Edit(StepKind::Edit, half), Outcome::Refused);
  EXPECT_EQ(Idents(), (Strings{"A", "B", "C"}));
  EXPECT_EQ(Next(), "元に戻す");
}

TEST_F(HistoryTest, AnEditThatChangesNothingIsNoStep) {
  EXPECT_EQ(Rename(0, "A2"), Outcome::Done);
  EXPECT_EQ(main.Edits().Undo(), Outcome::Done);
  EXPECT_EQ(main.Edits().Edit(StepKind::Edit, [](DataSet&) { return true; }), Outcome::Done);
  EXPECT_EQ(Next(), "元に戻す");
  EXPECT_EQ(main.Edits().Redo(), Outcome::Done) << "nor does it take the way forth";
}

TEST_F(HistoryTest, ANewStepTakesTheWayForth) {
  EXPECT_EQ(Rename(0, "A2"), Outcome::Done);
  EXPECT_EQ(main.Edits().Undo(), Outcome::Done);
  EXPECT_EQ(Rename(1, "B2"), Outcome::Done);
  EXPECT_EQ(main.Edits().Redo(), Outcome::Refused);
  EXPECT_EQ(Idents(), (Strings{"A", "B2", "C"}));
}

TEST_F(HistoryTest, TheCountsFollow) {
  const auto erase = [](std::vector<std::size_t> places) {
    return [places](DataSet& data) { return data.Edit(Erasure<Waypoint>(places)); };
  };
  EXPECT_EQ(main.Edits().Edit(StepKind::Delete, erase({0, 2})), Outcome::Done);
  EXPECT_EQ(Held(), (Counts{1}));
  EXPECT_EQ(main.Edits().Edit(StepKind::Delete, erase({0})), Outcome::Done);
  EXPECT_EQ(Held(), Counts{});
  EXPECT_EQ(main.Edits().Undo(), Outcome::Done);
  EXPECT_EQ(main.Edits().Undo(), Outcome::Done);
  EXPECT_EQ(Held(), (Counts{3}));
}

TEST_F(HistoryTest, FiftyStepsCanBeTakenBack) {
  for (int i = 0; i < 60; ++i)
    EXPECT_EQ(Rename(0, std::to_string(i)), Outcome::Done);
  int undone = 0;
  while (main.Edits().Undo() == Outcome::Done)
    ++undone;
  EXPECT_EQ(undone, 50);
  EXPECT_EQ(Idents().front(), "9");
}

TEST_F(HistoryTest, AStepInsideAStepIsPartOfIt) {
  {
    const UndoStep step(main.State(), StepKind::Join);
    EXPECT_EQ(Rename(0, "A2"), Outcome::Done);
    EXPECT_EQ(Rename(1, "B2"), Outcome::Done);
  }
  EXPECT_EQ(Next(), "元に戻す：結合（Waypoint 2件）");
  EXPECT_EQ(main.Edits().Undo(), Outcome::Done);
  EXPECT_EQ(Idents(), (Strings{"A", "B", "C"}));
}

TEST_F(HistoryTest, WhatCameOutsideAStepEndsTheWayBack) {
  EXPECT_EQ(Rename(0, "A2"), Outcome::Done);
  HoldWaypoint("D");
  EXPECT_EQ(main.Edits().Undo(), Outcome::Done);
  EXPECT_EQ(Idents(), (Strings{"A2", "B", "C", "D"}));
}

TEST_F(HistoryTest, WhatIsSavedIsKnownByKind) {
  EXPECT_TRUE(main.State().Unsaved(DataKind::Waypoint) == false) << "what is held at the beginning";
  EXPECT_EQ(Rename(0, "A2"), Outcome::Done);
  EXPECT_TRUE(main.State().Unsaved(DataKind::Waypoint));
  EXPECT_FALSE(main.State().Unsaved(DataKind::Route));
  main.State().SetSaved(DataKind::Waypoint);
  EXPECT_FALSE(main.State().Unsaved(DataKind::Waypoint));
  EXPECT_EQ(Rename(0, "A3"), Outcome::Done);
  EXPECT_TRUE(main.State().Unsaved(DataKind::Waypoint));
  EXPECT_EQ(main.Edits().Undo(), Outcome::Done);
  EXPECT_FALSE(main.State().Unsaved(DataKind::Waypoint)) << "it is what was saved";
  EXPECT_EQ(main.Edits().Undo(), Outcome::Done);
  EXPECT_TRUE(main.State().Unsaved(DataKind::Waypoint)) << "it is what was there before the file";
}

TEST_F(HistoryTest, TheDatesToBeRepairedFollowTheirLogs) {
  const auto behind = [](GarminSeconds time) {
    TrackLog log;
    log.points.resize(1);
    log.points[0].time = time;
    return log;
  };
  const auto insert = [&](DataSet& data) {
    return data.Edit(Insertion<TrackLog>(0, {behind(1000), behind(2000), behind(3000)}));
  };
  EXPECT_EQ(main.Edits().Edit(StepKind::Import, insert), Outcome::Done);
  main.State().SetDateRepairs(DateRepairsBy(Data().Logs(), 0, 1));
  ASSERT_EQ(main.State().DateRepairs().size(), 3U);
  const auto erase = [](DataSet& data) { return data.Edit(Erasure<TrackLog>({1})); };
  EXPECT_EQ(main.Edits().Edit(StepKind::Delete, erase), Outcome::Done);
  ASSERT_EQ(main.State().DateRepairs().size(), 2U);
  EXPECT_EQ(main.State().DateRepairs()[1].log, 1U);
  EXPECT_EQ(main.State().DateRepairs()[1].old_first, 3000U);
  EXPECT_EQ(main.Edits().Undo(), Outcome::Done);
  EXPECT_EQ(main.State().DateRepairs().size(), 3U);
}

}  // namespace
}  // namespace walrim
