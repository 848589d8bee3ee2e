#include "app/History.h"

#include <random>

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

// ---- Any sequence

/// What is held, as plain copies.
struct HeldRecords {
  std::vector<Waypoint> waypoints;
  std::vector<Route> routes;
  std::vector<TrackLog> logs;
  Counts counts;

  friend bool operator==(const HeldRecords&, const HeldRecords&) = default;
};

/// Commands by chance. What should be held is known from copies that were taken behind each of them.
class AnySequence : public AppTest {
 protected:
  AnySequence() {
    main.State().KeepSteps();
    states_.push_back(Now());
  }

  void Step() {
    const std::size_t chance = Any(100);
    if (chance < 20) return UndoSome();
    if (chance < 35) return RedoSome();
    if (chance < 38) return Save();
    const auto revisions = main.State().Revisions();
    Command();
    const HeldRecords now = Now();
    // What is put in and taken out again in one command is a step too.
    if (revisions == main.State().Revisions()) {
      ASSERT_TRUE(now == states_[at_]);
      return;
    }
    states_.resize(at_ + 1);
    states_.push_back(now);
    if (++at_ > History::MostSteps) {
      states_.erase(states_.begin());
      --at_;
    }
  }
  void ExpectAsTheModelSays() {
    ASSERT_TRUE(Now() == states_[at_]);
    const History& steps = main.State().Steps();
    ASSERT_EQ(steps.NextUndo() != nullptr, at_ > 0);
    ASSERT_EQ(steps.NextRedo() != nullptr, at_ + 1 < states_.size());
    std::size_t points = 0;
    for (const TrackLog& log : Data().Logs())
      points += log.points.size();
    ASSERT_EQ(Data().TrackPointCount(), points);
    const HeldRecords& held = states_[at_];
    ExpectSaved(DataKind::Waypoint, held.waypoints, saved_.waypoints);
    ExpectSaved(DataKind::Route, held.routes, saved_.routes);
    ExpectSaved(DataKind::TrackLog, held.logs, saved_.logs);
  }

  std::size_t undone = 0;
  std::size_t redone = 0;
  std::size_t changed = 0;
  std::size_t saved_again = 0;
  std::size_t unsaved_again = 0;

 private:
  /// No two records are the same: what is as it was saved is found again by undoing and redoing alone.
  template <typename Records>
  void ExpectSaved(DataKind kind, const Records& records, const Records& saved) {
    const bool unsaved = main.State().Unsaved(kind);
    if (records.empty() || records != saved) {
      ASSERT_EQ(unsaved, !records.empty());
    } else {
      unsaved ? ++unsaved_again : ++saved_again;
    }
  }
  [[nodiscard]] std::size_t Any(std::size_t below) {
    return std::uniform_int_distribution<std::size_t>(0, below - 1)(random_);
  }
  [[nodiscard]] HeldRecords Now() { return {Data().Waypoints(), Data().Routes(), Data().Logs(), Held()}; }
  /// No two records are the same.
  [[nodiscard]] Waypoint NewWaypoint() { return Named(std::to_string(++stamp_)); }
  [[nodiscard]] TrackPoint NewPoint() {
    TrackPoint point;
    point.lon_deg = static_cast<double>(++stamp_);
    return point;
  }
  [[nodiscard]] Route NewRoute() {
    Route route;
    route.cmnt = std::to_string(++stamp_);
    return route;
  }
  [[nodiscard]] TrackLog NewLog() {
    TrackLog log;
    log.trk_ident = std::to_string(++stamp_);
    return log;
  }
  [[nodiscard]] std::vector<std::size_t> Some(std::size_t size) {
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < size; ++i) {
      if (Any(3) == 0) places.push_back(i);
    }
    return places;
  }

  void UndoSome() {
    for (std::size_t i = Any(5); i < 5; ++i) {
      const bool can = at_ > 0;
      ASSERT_EQ(main.Edits().Undo(), can ? Outcome::Done : Outcome::Refused);
      if (can) --at_, ++undone;
      ASSERT_TRUE(Now() == states_[at_]);
    }
  }
  void RedoSome() {
    for (std::size_t i = Any(5); i < 5; ++i) {
      const bool can = at_ + 1 < states_.size();
      ASSERT_EQ(main.Edits().Redo(), can ? Outcome::Done : Outcome::Refused);
      if (can) ++at_, ++redone;
      ASSERT_TRUE(Now() == states_[at_]);
    }
  }
  void Save() {
    saved_ = Now();
    for (const DataKind kind : AllDataKinds)
      main.State().SetSaved(kind);
  }

  void Command() {
    const std::size_t chance = Any(100);
    ++changed;
    if (chance < 5) return Delete();
    if (chance < 10) return Download();
    if (chance < 15) return ImportWaypoints();
    const bool refused = Any(10) == 0;
    const HeldRecords before = Now();
    const Outcome outcome = main.Edits().Edit(StepKind::Edit, [&](DataSet& data) {
      bool done = true;
      for (std::size_t i = Any(3); i < 3 && done; ++i)
        done = EditOnce(data);
      return done && !refused;
    });
    if (outcome != Outcome::Refused) return;
    ASSERT_TRUE(Now() == before);
  }
  void Delete() {
    for (bool& chosen : main.State().Settings().chosen_kinds)
      chosen = Any(2) == 0;
    EXPECT_EQ(main.Deletes().Delete(), Outcome::Done);
  }
  /// As a download does it, one that fails amid it too.
  void Download() {
    const UndoStep step(main.State(), StepKind::Download);
    DataSet incoming;
    EXPECT_EQ(incoming.Add(NewWaypoint()), AddResult::Stored);
    Data().Take(DataKind::Waypoint, incoming);
    main.State().SetHeldCount(DataKind::Waypoint, 1);
    if (Any(2) == 0) return main.State().Empty(DataKind::TrackLog);
    EXPECT_EQ(incoming.Begin(NewLog()), AddResult::Stored);
    EXPECT_EQ(incoming.Add(NewPoint()), AddResult::Stored);
    Data().Take(DataKind::TrackLog, incoming);
    main.State().SetHeldCount(DataKind::TrackLog, 2);
  }
  void ImportWaypoints() {
    std::string text;
    for (std::size_t i = Any(3); i < 3; ++i)
      text += "WPT\tD\tWGS84\t=\"" + std::to_string(++stamp_) + "\"\t35\t139\t=\"\"\r\n";
    EXPECT_EQ(main.Imports().ImportTyped(text), Outcome::Done);
  }

  [[nodiscard]] bool EditOnce(DataSet& data) {
    switch (Any(6)) {
      case 0:
        return Grow(data);
      case 1:
        return EditWaypoints(data);
      case 2:
        return EditRoutes(data);
      case 3:
        return EditLogs(data);
      case 4:
        return data.Routes().empty() || EditPoints(data, Any(data.Routes().size()));
      default:
        return data.Logs().empty() || EditTrackPoints(data, Any(data.Logs().size()));
    }
  }
  [[nodiscard]] bool Grow(DataSet& data) {
    for (std::size_t i = Any(5); i < 5; ++i)
      if (data.Add(NewWaypoint()) != AddResult::Stored) return false;
    if (Any(2) == 0 && data.Begin(NewRoute()) != AddResult::Stored) return false;
    for (std::size_t i = Any(4); i < 4; ++i)
      if (data.Add(RoutePoint{NewWaypoint(), {}}) != AddResult::Stored) return false;
    if (Any(2) == 0 && data.Begin(NewLog()) != AddResult::Stored) return false;
    for (std::size_t i = Any(6); i < 6; ++i)
      if (data.Add(NewPoint()) != AddResult::Stored) return false;
    return true;
  }
  [[nodiscard]] bool EditWaypoints(DataSet& data) {
    const std::size_t size = data.Waypoints().size();
    const std::size_t at = Any(size + 1);
    if (Any(3) == 0) return data.Edit(Erasure<Waypoint>(Some(size)));
    if (Any(2) == 0) return data.Edit(Insertion<Waypoint>(at, {NewWaypoint(), NewWaypoint()}));
    return data.Edit(Replacement(at, NewWaypoint()));  // one behind the end is refused
  }
  [[nodiscard]] bool EditRoutes(DataSet& data) {
    const std::size_t at = Any(data.Routes().size() + 1);
    if (Any(2) == 0) return data.Edit(Erasure<Route>(Some(data.Routes().size())));
    return data.EditHeader(at, NewRoute());
  }
  [[nodiscard]] bool EditPoints(DataSet& data, std::size_t route) {
    const std::vector<RoutePoint>& points = data.Routes()[route].points;
    if (points.size() < 2) return data.Edit(Insertion<RoutePoint>(0, {{NewWaypoint(), {}}}, route));
    const std::size_t from = Any(points.size());
    const std::size_t to = (from + 1 + Any(points.size() - 1)) % points.size();
    return data.Edit(Move(points, from, to, route));
  }
  [[nodiscard]] bool EditLogs(DataSet& data) {
    const std::size_t size = data.Logs().size();
    if (size < 2 || Any(3) == 0) return data.Edit(Erasure<TrackLog>(Some(size)));
    const std::size_t at = Any(size - 1);
    TrackLog joined = data.Logs()[at];
    const TrackLog& second = data.Logs()[at + 1];
    if (Any(2) == 0) return data.EditHeader(at, NewLog());
    joined.points.insert(joined.points.end(), second.points.begin(), second.points.end());
    return data.Edit(Replacement<TrackLog>(at, 2, {joined}));
  }
  [[nodiscard]] bool EditTrackPoints(DataSet& data, std::size_t log) {
    const std::vector<TrackPoint>& points = data.Logs()[log].points;
    if (points.empty()) return data.Edit(Insertion<TrackPoint>(0, {NewPoint()}, log));
    if (Any(2) == 0) return data.Edit(Erasure<TrackPoint>(Some(points.size()), log));
    std::vector<TrackPoint> reversed(points.rbegin(), points.rend());
    if (Any(2) == 0) return data.Edit(Replacement(0, points.size(), std::move(reversed), log));
    return data.Edit(Replacement(Any(points.size()), NewPoint(), log));
  }

  std::mt19937 random_{4711};
  std::uint64_t stamp_ = 0;
  std::vector<HeldRecords> states_;
  std::size_t at_ = 0;
  HeldRecords saved_;
};

TEST_F(AnySequence, EndsWhereTheModelSays) {
  for (int i = 0; i < 10'000; ++i) {
    Step();
    ASSERT_NO_FATAL_FAILURE(ExpectAsTheModelSays()) << "behind command " << i;
    if (HasFatalFailure()) return;
  }
  EXPECT_GT(undone, 1000U);
  EXPECT_GT(redone, 500U);
  EXPECT_GT(changed, 5000U);
  EXPECT_GT(saved_again, 1000U);
  EXPECT_LT(unsaved_again, saved_again / 10) << "only what a command took in and out again";
}

}  // namespace
}  // namespace walrim
