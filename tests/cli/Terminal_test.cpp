#include <chrono>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include "app/Messages.h"
#include "cli/Arguments.h"
#include "cli/Commands.h"
#include "cli/Messages.h"
#include "cli/TerminalDesktop.h"
#include "cli/TraceFile.h"
#include "cli/Watchdog.h"
#include "support/Fakes.h"
#include "support/Processes.h"

namespace walrim {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

/// What goes to standard error while use runs.
template <typename Use>
std::string Printed(Use use) {
  ::testing::internal::CaptureStderr();
  use();
  return ::testing::internal::GetCapturedStderr();
}

class TerminalDesktopTest : public ::testing::Test {
 protected:
  FakeClock clock;
};

TEST_F(TerminalDesktopTest, OnATerminalTheStatusIsOneLineRewrittenInPlace) {
  const std::string printed = Printed([&] {
    TerminalDesktop desktop({false, false, true}, clock);
    desktop.SetStatusCaption("A");
    desktop.SetStatusCaption("B [1/2]");
    clock.Advance(seconds{1});
    desktop.SetStatusCaption("B [2/2]");
    desktop.ShowMessage("M");
  });
  EXPECT_EQ(printed, "\r\033[KA\r\033[KB [1/2]\r\033[KB [2/2]\nM\n");
}

TEST_F(TerminalDesktopTest, ElsewhereItIsLinesAndCountingIsThinnedButEndsWithTheLastCount) {
  const std::string printed = Printed([&] {
    TerminalDesktop desktop({false, false, false}, clock);
    for (int i = 1; i <= 9; ++i) {
      desktop.SetStatusCaption("B [" + std::to_string(i) + "/9]");
      clock.Advance(milliseconds{60});
    }
    desktop.SetStatusCaption("C");
  });
  EXPECT_EQ(printed, "B [1/9]\nB [6/9]\nB [9/9]\nC\n");
}

TEST_F(TerminalDesktopTest, QuietHidesTheStatusAndNotTheMessages) {
  const std::string printed = Printed([&] {
    TerminalDesktop desktop({true, false, false}, clock);
    desktop.SetStatusCaption("A");
    EXPECT_EQ(desktop.StatusCaption(), "A");
    desktop.ShowMessage("M");
  });
  EXPECT_EQ(printed, "M\n");
}

TEST_F(TerminalDesktopTest, ControlCharactersDoNotReachTheTerminal) {
  const std::string printed = Printed([&] {
    TerminalDesktop desktop({false, false, false}, clock);
    desktop.SetStatusCaption(
        "A\xC2\x9B"
        "31mB");
    desktop.ShowMessage(
        "C\x1b[31m\x7f\xC2\x80\xC2\x9F\xC2\xA0\nD\xC2\x85"
        "高尾");
  });
  EXPECT_EQ(printed, "A 31mB\nC [31m   \xC2\xA0\nD 高尾\n");
}

TEST_F(TerminalDesktopTest, ARefusedOverwriteNamesTheOption) {
  const std::string printed = Printed([&] {
    TerminalDesktop desktop({true, false, false}, clock);
    EXPECT_FALSE(desktop.AskOkCancel("上書きしますか？"));
  });
  EXPECT_EQ(printed, "上書きしますか？\n" + std::string(cli_messages::ForceAdvice) + "\n");
}

TEST_F(TerminalDesktopTest, ForceAnswersTheOverwriteQuestionAlone) {
  static_cast<void>(Printed([&] {
    TerminalDesktop with({true, true, false}, clock);
    TerminalDesktop without({true, false, false}, clock);
    EXPECT_TRUE(with.AskOkCancel("?"));
    EXPECT_FALSE(without.AskOkCancel("?"));
    EXPECT_FALSE(with.AskYesNo("?"));
    EXPECT_EQ(with.SaveFileDialog("*"), std::nullopt);
  }));
}

TEST(Commands, AnExceptionIsSaidAndRefused) {
  ExitStatus status{};
  const std::string printed =
      Printed([&] { status = SayingExceptions([]() -> ExitStatus { throw std::runtime_error("no\tmemory"); }); });
  EXPECT_EQ(status, ExitStatus::Refused);
  EXPECT_EQ(printed, messages::BrokenOff("no memory") + "\n");
  EXPECT_EQ(SayingExceptions([] { return ExitStatus::NoReceiver; }), ExitStatus::NoReceiver);
}

TEST(WatchdogTest, ATransferWithoutProgressIsCancelledAfter30Seconds) {
  FakeClock clock;
  Watchdog watchdog(clock, [] { return false; });
  std::int64_t frames = 0;
  int cancels = 0;
  watchdog.Yield();  // nothing to watch yet
  watchdog.Watch([&] { return frames; }, [&] { ++cancels; });
  clock.Advance(seconds{29});
  watchdog.Yield();
  ++frames;
  watchdog.Yield();
  clock.Advance(seconds{30});
  watchdog.Yield();
  EXPECT_EQ(cancels, 0);
  clock.Advance(milliseconds{1});
  watchdog.Yield();
  watchdog.Yield();
  EXPECT_EQ(cancels, 1);
  EXPECT_TRUE(watchdog.Stalled());
}

TEST(WatchdogTest, ASignalCancelsAtEveryTurn) {
  FakeClock clock;
  bool came = false;
  Watchdog watchdog(clock, [&] { return came; });
  int cancels = 0;
  watchdog.Watch([] { return std::int64_t{0}; }, [&] { ++cancels; });
  watchdog.Yield();
  EXPECT_EQ(cancels, 0);
  came = true;
  watchdog.Yield();
  watchdog.Yield();  // a command that cleared the request in between is asked again
  EXPECT_EQ(cancels, 2);
  EXPECT_FALSE(watchdog.Stalled());
}

TEST(TraceFileTest, WritesALineAFrame) {
  const TemporaryFolder folder;
  const Bytes frame{0x10, 0x0A, 0x00, 0xF6, 0x10, 0x03};
  {
    TraceFile trace;
    EXPECT_FALSE(trace.Open(folder.Path("missing/trace")));
    ASSERT_TRUE(trace.Open(folder.Path("trace")));
    trace.Frame({FrameDirection::Sent, milliseconds{1500}, frame, {}});
    // Seen before the file is closed.
    EXPECT_EQ(FileContents(folder.Path("trace")),
              "# seconds\tdirection\tid\tsize\tbytes\n1.500000\tTX\t10\t0\t10 0A 00 F6 10 03\n");
  }
}

TEST(TraceFileTest, ReplacesOnlyAnotherTraceUnlessThatIsWanted) {
  const TemporaryFolder folder;
  const std::string path = folder.Path("trace");
  for (const std::string_view data : {"WPT\tD", "# seconds\tdirection\tid\tsize\tbytez", "#"}) {
    PutFile(path, data);
    TraceFile trace;
    EXPECT_FALSE(trace.Open(path));
    EXPECT_TRUE(trace.Refused());
    EXPECT_EQ(trace.Problem(), cli_messages::NoTrace);
    EXPECT_EQ(FileContents(path), data);
    EXPECT_TRUE(trace.Open(path, true));
    EXPECT_FALSE(trace.Refused());
    EXPECT_EQ(FileContents(path), "# seconds\tdirection\tid\tsize\tbytes\n");
  }
  PutFile(path, FileContents(path) + "1.5\tTX\n");
  EXPECT_TRUE(TraceFile().Open(path));
  EXPECT_EQ(FileContents(path), "# seconds\tdirection\tid\tsize\tbytes\n");
  PutFile(path, "");
  EXPECT_TRUE(TraceFile().Open(path));
  EXPECT_TRUE(TraceFile().Open("/dev/null"));
}

TEST(TraceFileTest, FollowsNoLinkOfAnotherUserInASharedFolder) {
  if (::geteuid() != 0) GTEST_SKIP() << "only the administrator can make a link of another user";
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder.Path("shared"));
  ::chmod(folder.Path("shared").c_str(), 01777);
  std::filesystem::create_symlink("../data", folder.Path("shared/trace"));
  ASSERT_EQ(::lchown(folder.Path("shared/trace").c_str(), Nobody, Nobody), 0);
  TraceFile trace;
  EXPECT_FALSE(trace.Open(folder.Path("shared/trace"), true));
  EXPECT_FALSE(std::filesystem::exists(folder.Path("data")));
}

TEST(ArgumentsTest, DefaultsAreTheDocumentedOnes) {
  const char* words[] = {"walrim-cli", "convert", "in", "-o", "out"};
  const ParsedArguments parsed = ParseArguments(5, words);
  ASSERT_TRUE(parsed.arguments);
  EXPECT_EQ(parsed.arguments->command, CliCommand::Convert);
  EXPECT_EQ(parsed.arguments->settings.datum, Datum::Wgs84);
  EXPECT_EQ(parsed.arguments->settings.notation, AngleNotation::D);
  EXPECT_EQ(parsed.arguments->settings.utc_offset_hours, 9);
  EXPECT_EQ(parsed.arguments->settings.encoding, TextEncoding::ShiftJis);
  EXPECT_EQ(parsed.arguments->settings.chosen_kinds, (std::array<bool, 3>{true, true, true}));
  EXPECT_FALSE(parsed.arguments->force);
  EXPECT_EQ(parsed.arguments->pacing_factor, 1.0F);
}

TEST(ArgumentsTest, KindsAreAListAndMayBeGivenTwice) {
  const char* words[] = {"walrim-cli", "download", "--port",         "1",       "-o",
                         "-",          "--kinds",  "Track,waypoint", "--kinds", "route"};
  const ParsedArguments all = ParseArguments(10, words);
  ASSERT_TRUE(all.arguments);
  EXPECT_EQ(all.arguments->settings.chosen_kinds, (std::array<bool, 3>{true, true, true}));
  const ParsedArguments two = ParseArguments(8, words);
  ASSERT_TRUE(two.arguments);
  EXPECT_EQ(two.arguments->settings.chosen_kinds, (std::array<bool, 3>{true, false, true}));
}

TEST(ArgumentsTest, TheLinkIsAutomaticCheckedOrPlainAndNeverBoth) {
  const char* words[] = {"walrim-cli", "info", "--port", "1", "--checked-link", "--plain-link"};
  const ParsedArguments neither = ParseArguments(4, words);
  ASSERT_TRUE(neither.arguments);
  EXPECT_EQ(neither.arguments->settings.link, LinkChoice::Automatic);
  const ParsedArguments checked = ParseArguments(5, words);
  ASSERT_TRUE(checked.arguments);
  EXPECT_EQ(checked.arguments->settings.link, LinkChoice::Checked);
  std::swap(words[4], words[5]);
  const ParsedArguments plain = ParseArguments(5, words);
  ASSERT_TRUE(plain.arguments);
  EXPECT_EQ(plain.arguments->settings.link, LinkChoice::Plain);
  for (int i = 0; i < 2; ++i) {
    const ParsedArguments both = ParseArguments(6, words);
    EXPECT_FALSE(both.arguments);
    EXPECT_EQ(both.exit_status, ExitStatus::BadUsage);
    std::swap(words[4], words[5]);
  }
}

TEST(ArgumentsTest, KindsTakeNoFileNameThatFollows) {
  const char* words[] = {"walrim-cli", "convert", "--kinds", "track", "a.grc", "b.grc", "-o", "out", "--quiet"};
  const ParsedArguments parsed = ParseArguments(9, words);
  ASSERT_TRUE(parsed.arguments);
  EXPECT_EQ(parsed.arguments->files, (std::vector<std::string>{"a.grc", "b.grc"}));
  EXPECT_EQ(parsed.arguments->settings.chosen_kinds, (std::array<bool, 3>{false, false, true}));
}

}  // namespace
}  // namespace walrim
