// What is left when the program does not come to its end.
#include "app/RecoveryCommands.h"

#include <fcntl.h>
#include <random>
#include <sys/wait.h>

#include "app/AppTest.h"
#include "records/PlainForm.h"

namespace walrim {
namespace {

Waypoint Named(const std::string& ident) {
  Waypoint waypoint;
  waypoint.ident = ident;
  return waypoint;
}

/// A program, from its start to an end of one kind or the other.
struct Program {
  explicit Program(const std::string& folder) {
    main.State().KeepSteps();
    main.Recovery().UseFolder(folder);
  }

  void Add(const std::string& ident) {
    EXPECT_EQ(main.Edits().Edit(StepKind::NewRecord,
                                [&](DataSet& data) { return data.Add(Named(ident)) == AddResult::Stored; }),
              Outcome::Done);
  }
  [[nodiscard]] std::vector<std::string> Idents() {
    std::vector<std::string> idents;
    for (const Waypoint& waypoint : main.State().Data().Waypoints())
      idents.push_back(waypoint.ident);
    return idents;
  }

  FakeClock clock;
  ScriptedPort port{clock};
  FakeEventLoop loop;
  RecordingDesktop desktop;
  WalrimMain main{port, clock, loop, desktop};
};

class RecoveryTest : public testing::Test {
 protected:
  RecoveryTest() { Start(); }
  void Start() {
    program.reset();
    program = std::make_unique<Program>(Folder());
    clock = &program->clock;
  }
  void Crash() { program.reset(); }

  [[nodiscard]] std::string Folder() const { return folder.Path("walrim"); }
  [[nodiscard]] std::string Path() const { return Folder() + "/recovery-1.txt"; }
  [[nodiscard]] std::vector<std::string> Kept() const {
    std::vector<std::string> idents;
    if (!std::filesystem::exists(Path())) return idents;
    const auto data = ReadPlainForm(FileContents(Path()));
    EXPECT_TRUE(data);
    if (!data) return idents;
    for (const Waypoint& waypoint : data->Waypoints())
      idents.push_back(waypoint.ident);
    return idents;
  }
  RecoveryCommands& Recovery() { return program->main.Recovery(); }
  /// Gives the answer to each question that comes at the start.
  void Offer() {
    Recovery().FindLeft();
    while (const auto question = Recovery().Question()) {
      (question->damaged ? damaged : questions).push_back(question->text);
      ASSERT_EQ(Recovery().AnswerLeft(answer), Outcome::Done);
    }
  }
  using Strings = std::vector<std::string>;

  TemporaryFolder folder;
  std::unique_ptr<Program> program;
  FakeClock* clock = nullptr;
  Answer answer = Answer::Back;
  Strings questions;
  Strings damaged;
};

TEST_F(RecoveryTest, IsWrittenAtOnceAndThenEveryThirtySecondsAtMost) {
  Recovery().Keep();
  EXPECT_FALSE(std::filesystem::exists(Folder())) << "nothing is held";
  program->Add("A");
  EXPECT_EQ(Recovery().DueIn(), std::chrono::seconds(0));
  Recovery().Keep();
  EXPECT_EQ(Kept(), Strings{"A"});
  EXPECT_EQ(Recovery().DueIn(), std::nullopt);
  program->Add("B");
  clock->Advance(std::chrono::seconds(29));
  Recovery().Keep();
  EXPECT_EQ(Kept(), Strings{"A"});
  EXPECT_EQ(Recovery().DueIn(), std::chrono::seconds(1));
  clock->Advance(std::chrono::seconds(1));
  Recovery().Keep();
  EXPECT_EQ(Kept(), (Strings{"A", "B"}));
}

TEST_F(RecoveryTest, IsNotWrittenWhereNothingChanged) {
  program->Add("A");
  Recovery().Keep();
  std::filesystem::remove(Path());
  clock->Advance(std::chrono::hours(1));
  Recovery().Keep();
  EXPECT_FALSE(std::filesystem::exists(Path()));
}

TEST_F(RecoveryTest, GoesWhenAllIsSavedAndWhenTheProgramEnds) {
  program->Add("A");
  Recovery().Keep();
  program->main.State().SetSaved(DataKind::Waypoint);
  Recovery().Keep();
  EXPECT_TRUE(std::filesystem::is_empty(Folder()));
  program->Add("B");
  clock->Advance(std::chrono::seconds(30));
  Recovery().Keep();
  EXPECT_EQ(Kept(), (Strings{"A", "B"}));
  Recovery().End();
  EXPECT_TRUE(std::filesystem::is_empty(Folder()));
}

TEST_F(RecoveryTest, KeepsWhatWasDeletedWithoutASave) {
  program->Add("A");
  Recovery().Keep();
  program->main.State().Settings().chosen_kinds = {true, false, false};
  EXPECT_EQ(program->main.Deletes().Delete(), Outcome::Done);
  EXPECT_EQ(program->main.State().DroppedKinds(), (DataKinds{true, false, false}));
  clock->Advance(std::chrono::hours(1));
  Recovery().Keep();
  EXPECT_EQ(Kept(), Strings{"A"});
  EXPECT_EQ(program->main.Edits().Undo(), Outcome::Done);
  EXPECT_EQ(program->main.State().DroppedKinds(), DataKinds{});
}

TEST_F(RecoveryTest, ARestoreThatIsUndoneIsNotLostSilently) {
  program->Add("A");
  Recovery().Keep();
  Crash();
  Start();
  answer = Answer::First;
  Offer();
  EXPECT_EQ(program->main.Edits().Undo(), Outcome::Done);
  EXPECT_EQ(program->main.State().DroppedKinds(), (DataKinds{true, false, false}));
  Recovery().Keep();
  EXPECT_TRUE(std::filesystem::exists(Folder() + "/recovery-2.txt"));
  EXPECT_EQ(program->main.Edits().Redo(), Outcome::Done);
  EXPECT_EQ(program->main.State().DroppedKinds(), DataKinds{});
}

TEST_F(RecoveryTest, IsRestoredAsAnUnsavedStep) {
  program->Add("A");
  program->Add("B");
  Recovery().Keep();
  Crash();
  Start();
  answer = Answer::First;
  Offer();
  ASSERT_EQ(questions.size(), 1U);
  EXPECT_NE(questions[0].find("Waypoint 2件"), std::string::npos);
  EXPECT_EQ(program->Idents(), (Strings{"A", "B"}));
  EXPECT_EQ(program->main.State().HeldCount(DataKind::Waypoint), 2);
  EXPECT_TRUE(program->main.State().Unsaved(DataKind::Waypoint));
  EXPECT_FALSE(std::filesystem::exists(Path())) << "it lies in the new program's file now";
  EXPECT_EQ(FileContents(Folder() + "/recovery-2.txt"), PlainFormOf(program->main.State().Data()));
  EXPECT_EQ(program->main.Edits().Undo(), Outcome::Done);
  EXPECT_EQ(program->Idents(), Strings{});
}

TEST_F(RecoveryTest, IsThrownAwayOrKeptForLater) {
  program->Add("A");
  Recovery().Keep();
  Crash();
  Start();
  answer = Answer::Back;
  Offer();
  EXPECT_EQ(Kept(), Strings{"A"});
  answer = Answer::Second;
  Offer();
  EXPECT_TRUE(std::filesystem::is_empty(Folder()));
  Offer();
  EXPECT_EQ(questions.size(), 2U);
  EXPECT_EQ(program->Idents(), Strings{});
}

TEST_F(RecoveryTest, WaitsForItsAnswerWhileThingsGoOn) {
  program->Add("A");
  Recovery().Keep();
  Crash();
  Start();
  EXPECT_EQ(Recovery().AnswerLeft(Answer::First), Outcome::Refused) << "nothing has been looked for";
  Recovery().FindLeft();
  EXPECT_TRUE(RecoveryFiles(Folder()).Left().empty()) << "another program asks as well";
  program->Add("B");
  Recovery().Keep();
  EXPECT_EQ(Kept(), Strings{"A"}) << "what is asked for stays";
  EXPECT_EQ(Recovery().AnswerLeft(Answer::First), Outcome::Done);
  EXPECT_EQ(program->Idents(), (Strings{"B", "A"}));
  EXPECT_FALSE(Recovery().Question());
}

TEST_F(RecoveryTest, AQuestionThatIsNotAnsweredComesAgain) {
  program->Add("A");
  Recovery().Keep();
  Crash();
  Start();
  Recovery().FindLeft();
  Recovery().End();
  Start();
  Offer();
  EXPECT_EQ(questions.size(), 1U);
}

TEST_F(RecoveryTest, ADamagedFileIsToldOnce) {
  program->Add("A");
  Recovery().Keep();
  Crash();
  std::filesystem::resize_file(Path(), 30);
  Start();
  Offer();
  EXPECT_EQ(damaged, Strings{messages::RecoveryDamaged(Path() + ".damaged-1")});
  Offer();
  EXPECT_EQ(damaged.size(), 1U);
  EXPECT_EQ(questions, Strings{});
}

TEST_F(RecoveryTest, WhatFindsNoRoomStaysWhereItIs) {
  const auto fill = [](DataSet& data) {
    return data.Edit(Insertion<Waypoint>(0, std::vector<Waypoint>(MaxWaypoints)));
  };
  program->Add("A");
  Recovery().Keep();
  Crash();
  Start();
  ASSERT_EQ(program->main.Edits().Edit(StepKind::Import, fill), Outcome::Done);
  program->desktop.messages.clear();
  answer = Answer::First;
  Offer();
  EXPECT_EQ(program->desktop.messages, Strings{std::string(messages::RecoveryTooMuch)});
  EXPECT_EQ(Kept(), Strings{"A"});
  EXPECT_EQ(program->main.State().Data().Count(DataKind::Waypoint), MaxWaypoints);
}

TEST_F(RecoveryTest, AFolderThatCannotBeWrittenIsToldOnceAndHoldsNothingUp) {
  PutFile(Folder(), "a file");
  program->Add("A");
  Recovery().Keep();
  EXPECT_EQ(program->desktop.captions.back().find(messages::RecoveryNotWritten("")), 0U);
  program->desktop.captions.clear();
  EXPECT_EQ(Recovery().DueIn(), RecoveryCommands::Interval) << "it is tried again, not at once";
  program->Add("B");
  clock->Advance(std::chrono::seconds(30));
  Recovery().Keep();
  EXPECT_EQ(program->desktop.captions, Strings{});
  EXPECT_EQ(program->Idents(), (Strings{"A", "B"}));
}

// ---- Killed

/// Edits for ever, a second between two edits; tells the number of each through a pipe once it is held.
[[noreturn]] void EditUntilKilled(const std::string& folder, int told) {
  Program program(folder);
  for (std::uint32_t number = 1;; ++number) {
    const std::string ident = std::to_string(number);
    static_cast<void>(program.main.Edits().Edit(StepKind::Edit, [&](DataSet& data) {
      const std::size_t held = data.Waypoints().size();
      return held < 300 ? data.Edit(Insertion<Waypoint>(held, {Named(ident)}))
                        : data.Edit(Replacement<Waypoint>(held - 1, Named(ident)));
    }));
    program.clock.Advance(std::chrono::seconds(1));
    program.main.Recovery().Keep();
    if (::write(told, &number, sizeof number) != sizeof number) std::_Exit(1);
  }
}

/// Kills such a program some turns of a loop after an edit, wherever it is then; returns the last edit that it told of.
std::uint32_t KillAfter(std::uint32_t edits, std::uint32_t turns, const std::string& folder) {
  std::array<int, 2> pipe{};
  if (::pipe2(pipe.data(), O_CLOEXEC) != 0) std::abort();
  const pid_t child = ::fork();
  if (child == 0) {
    ::close(pipe[0]);
    EditUntilKilled(folder, pipe[1]);
  }
  ::close(pipe[1]);
  std::uint32_t number = 0;
  std::uint32_t last = 0;
  while (::read(pipe[0], &number, sizeof number) == sizeof number) {
    last = number;
    if (number != edits) continue;
    for (volatile std::uint32_t turn = 0; turn < turns;)
      turn = turn + 1;
    ::kill(child, SIGKILL);
  }
  ::close(pipe[0]);
  ::waitpid(child, nullptr, 0);
  return last;
}

TEST(RecoveryOfAKilledProgram, HoldsAllButTheLastThirtySecondsAndIsNeverHalf) {
  std::mt19937 random(4711);
  const auto any = [&random](std::uint32_t least, std::uint32_t most) {
    return std::uniform_int_distribution<std::uint32_t>(least, most)(random);
  };
  for (int i = 0; i < 200; ++i) {
    const TemporaryFolder folder;
    // Half of them while the file is written, which is behind each thirtieth edit.
    const bool amid_writing = i % 2 == 0;
    const std::uint32_t edits = amid_writing ? 30 * any(1, 5) : any(1, 150);
    const std::uint32_t last = KillAfter(edits, any(0, 10'000'000), folder.Path("walrim"));
    const std::vector<LeftRecovery> left = RecoveryFiles(folder.Path("walrim")).Left();
    ASSERT_EQ(left.size(), 1U);
    const auto data = ReadPlainForm(left[0].Text());
    ASSERT_TRUE(data) << "half a file, after edit " << last;
    const std::uint32_t kept = static_cast<std::uint32_t>(std::stoul(data->Waypoints().back().ident));
    EXPECT_GE(kept + 30, last);
    EXPECT_EQ(data->Waypoints().size(), std::min<std::size_t>(kept, 300));
  }
}

}  // namespace
}  // namespace walrim
