#include "app/TraceCommands.h"

#include "app/AppTest.h"

namespace walrim {
namespace {

class TraceCommandsTest : public AppTest {
 protected:
  TraceCommandsTest() { desktop.save_path = Path("trace.txt"); }
};

TEST_F(TraceCommandsTest, WhereNothingWasSentThatIsSaid) {
  EXPECT_EQ(main.Traces().Save(), Outcome::Refused);
  EXPECT_EQ(desktop.messages, Strings{std::string(messages::NothingTraced)});
  EXPECT_TRUE(desktop.filters.empty());
}

TEST_F(TraceCommandsTest, WritesTheFramesOfTheCommandsBeforeIt) {
  ASSERT_EQ(main.Device().GetInfo(), Outcome::Done);
  Forget();
  desktop.answer = Answer::Second;
  EXPECT_EQ(main.Traces().Save(), Outcome::Done);
  EXPECT_EQ(desktop.questions, Strings{std::string(messages::HidePositionsQuestion)});
  EXPECT_EQ(desktop.caption, messages::TraceSaved(Path("trace.txt")));
  const std::string text = FileContents(Path("trace.txt"));
  EXPECT_EQ(text.find(std::string(TraceHeading) + "\n"), 0U);
  EXPECT_NE(text.find("\tTX\t254\t2\t10 FE 02 00 00 00 10 03\n"), std::string::npos) << text;
  EXPECT_NE(text.find("\t--\tport closed\n"), std::string::npos) << text;
}

TEST_F(TraceCommandsTest, WhoGoesBackHasSavedNothing) {
  ASSERT_EQ(main.Device().GetInfo(), Outcome::Done);
  desktop.answer = Answer::Back;
  EXPECT_EQ(main.Traces().Save(), Outcome::Cancelled);
  EXPECT_FALSE(std::filesystem::exists(Path("trace.txt")));
}

TEST_F(TraceCommandsTest, AFileThatIsThereIsAskedAbout) {
  ASSERT_EQ(main.Device().GetInfo(), Outcome::Done);
  Forget();
  PutFile(Path("trace.txt"), "mine");
  desktop.ok = false;
  EXPECT_EQ(main.Traces().Save(), Outcome::Refused);
  EXPECT_EQ(desktop.questions, Strings{messages::OverwriteQuestion(Path("trace.txt"))});
  EXPECT_EQ(FileContents(Path("trace.txt")), "mine");
  desktop.save_path.reset();
  Forget();
  EXPECT_EQ(main.Traces().Save(), Outcome::Refused);
  EXPECT_TRUE(desktop.questions.empty());
}

TEST_F(TraceCommandsTest, AFileThatCannotBeWrittenIsTold) {
  ASSERT_EQ(main.Device().GetInfo(), Outcome::Done);
  Forget();
  desktop.save_path = Path("missing/trace.txt");
  EXPECT_EQ(main.Traces().Save(), Outcome::Refused);
  ASSERT_EQ(desktop.messages.size(), 1U);
  EXPECT_NE(desktop.messages[0].find("missing/trace.txt"), std::string::npos);
}

}  // namespace
}  // namespace walrim
