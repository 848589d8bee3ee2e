// Records that are checked, and what the commands make of the others.
#include "app/EditCommands.h"

#include "app/AppTest.h"
#include "records/Chosen.h"

namespace walrim {
namespace {

class CheckedRecords : public AppTest {
 protected:
  CheckedRecords() {
    for (const char* ident : {"A", "B", "C"})
      HoldWaypoint(ident);
    Uncheck({1});
  }
  void Uncheck(const std::vector<std::size_t>& indices) {
    ASSERT_EQ(main.Edits().Choose(DataKind::Waypoint, indices, false), Outcome::Done);
  }
  static bool Names(std::string_view text, std::string_view ident) {
    return text.find("=\"" + std::string(ident) + "\"") != std::string_view::npos;
  }
};

TEST_F(CheckedRecords, AreCopiedAndTheOthersAreNot) {
  EXPECT_EQ(main.Exports().Copy(), Outcome::Done);
  EXPECT_TRUE(Names(desktop.clipboard, "A"));
  EXPECT_FALSE(Names(desktop.clipboard, "B"));
  EXPECT_TRUE(Names(desktop.clipboard, "C"));
}

TEST_F(CheckedRecords, AreSavedAndTheOthersAreNot) {
  EXPECT_EQ(main.Exports().ExportTo(Path("part.grc")), Outcome::Done);
  const std::string text = FileContents(Path("part.grc"));
  EXPECT_TRUE(Names(text, "A") && Names(text, "C"));
  EXPECT_FALSE(Names(text, "B"));
}

TEST_F(CheckedRecords, AreDeletedAndTheOthersAreNot) {
  EXPECT_EQ(main.Deletes().Delete(), Outcome::Done);
  EXPECT_EQ(Idents(), Strings{"B"});
  EXPECT_EQ(Held()[0], 1);
  EXPECT_EQ(desktop.messages, Strings{});
}

TEST_F(CheckedRecords, AreOneStepWhereTheyAreDeleted) {
  main.State().KeepSteps();
  EXPECT_EQ(main.Deletes().Delete(), Outcome::Done);
  EXPECT_EQ(messages::UndoCaption(main.State().Steps().NextUndo()), "元に戻す：削除（Waypoint 2件）");
  EXPECT_EQ(main.Edits().Undo(), Outcome::Done);
  EXPECT_EQ(Idents(), (Strings{"A", "B", "C"}));
  EXPECT_EQ(ChosenIndices(Data(), DataKind::Waypoint), (std::vector<std::size_t>{0, 2}));
}

TEST_F(CheckedRecords, AreWhatAutoDeleteDeletes) {
  main.State().Settings().auto_delete = true;
  EXPECT_EQ(main.Exports().Copy(), Outcome::Done);
  EXPECT_EQ(Idents(), Strings{"B"});
}

TEST_F(CheckedRecords, AreSentAndTheOthersAreNot) {
  EXPECT_EQ(main.Device().Upload(), Outcome::Done);
  EXPECT_EQ(receiver.CountReceived({27, {2, 0}}), 1U);
  EXPECT_EQ(receiver.CountReceived({27, {3, 0}}), 0U);
}

TEST_F(CheckedRecords, MakeAKindThatHasNoneOfThemOneWithNothingToWrite) {
  Uncheck({0, 2});
  EXPECT_EQ(main.Exports().ExportTo(Path("none.grc")), Outcome::Refused);
  EXPECT_EQ(desktop.messages, (Strings{std::string(messages::NothingToSave), std::string(messages::NothingWritten)}));
  EXPECT_EQ(folder.Names(), Strings{});
  Forget();
  EXPECT_EQ(main.Device().Upload(), Outcome::Refused);
  EXPECT_EQ(desktop.messages, Strings{std::string(messages::NothingToUpload)});
  EXPECT_EQ(main.Deletes().Delete(), Outcome::Done);
  EXPECT_EQ(Idents(), (Strings{"A", "B", "C"}));
  EXPECT_EQ(Held()[0], 3);
}

TEST_F(CheckedRecords, AKindWithNoneStandsBesideOneWithSome) {
  Hold("RTH\t1\t=\"R\"\t1\r\n");
  Uncheck({0, 2});
  EXPECT_EQ(main.Exports().Copy(), Outcome::Done);
  EXPECT_TRUE(Names(desktop.clipboard, "R"));
  EXPECT_FALSE(Names(desktop.clipboard, "A"));
}

TEST_F(CheckedRecords, DoNotConcernAnotherProgramThatDeletesAll) {
  EXPECT_EQ(main.External().Run("DELETE", "ALL", ""), CommandDone);
  EXPECT_EQ(Idents(), Strings{});
}

TEST_F(CheckedRecords, LeaveTheDatesOfTheOtherLogsToBeRepaired) {
  for (const GarminSeconds time : {1U, 5U, 9U}) {
    TrackPoint point;
    point.time = time;
    ASSERT_EQ(Data().Begin(TrackLog{}), AddResult::Stored);
    ASSERT_EQ(Data().Add(point), AddResult::Stored);
  }
  main.State().SetHeldCount(DataKind::TrackLog, 3);
  main.State().SetDateRepairs({{0, 1, 1, 2, 2, 1}, {1, 5, 5, 6, 6, 1}, {2, 9, 9, 10, 10, 1}});
  EXPECT_EQ(main.Edits().Choose(DataKind::TrackLog, {2}, false), Outcome::Done);
  EXPECT_EQ(main.Deletes().Delete(), Outcome::Done);
  EXPECT_EQ(main.State().DateRepairs(), (std::vector<DateRepair>{{0, 9, 9, 10, 10, 1}}));
}

TEST_F(CheckedRecords, StayAsTheyAreWhileACommandRuns) {
  const BusyGuard guard(main.State());
  EXPECT_EQ(main.Edits().Choose(DataKind::Waypoint, {0}, false), Outcome::Busy);
  EXPECT_EQ(ChosenCount(Data(), DataKind::Waypoint), 2U);
}

class MissingRecords : public AppTest {
 protected:
  void HoldMissing() {
    Waypoint missing;
    missing.missing = true;
    ASSERT_EQ(Data().Add(missing), AddResult::Stored);
    main.State().SetHeldCount(DataKind::Waypoint, static_cast<int>(Data().Waypoints().size()));
  }
};

TEST_F(MissingRecords, AreTakenOutWithOnePressAndComeBackWithAnother) {
  main.State().KeepSteps();
  HoldWaypoint("A");
  HoldMissing();
  HoldWaypoint("B");
  HoldMissing();
  const std::vector<Waypoint> before = Data().Waypoints();
  EXPECT_EQ(main.Edits().RemoveMissing(), Outcome::Done);
  ASSERT_EQ(Data().Waypoints().size(), 2U);
  EXPECT_EQ(Data().Waypoints()[0], before[0]);
  EXPECT_EQ(Data().Waypoints()[1], before[2]);
  EXPECT_EQ(main.State().HeldCount(DataKind::Waypoint), 2);
  EXPECT_EQ(main.Edits().Undo(), Outcome::Done);
  EXPECT_EQ(Data().Waypoints(), before);
}

TEST_F(MissingRecords, WhereAllCameThereIsNothingToTakeOut) {
  HoldWaypoint("A");
  EXPECT_EQ(main.Edits().RemoveMissing(), Outcome::Refused);
  EXPECT_EQ(Data().Waypoints().size(), 1U);
}

}  // namespace
}  // namespace walrim
