// The program walrim and the commands that other programs give it, as real processes.
#include <QEventLoop>
#include <filesystem>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <thread>

#include "app/Messages.h"
#include "qt/CommandSocket.h"
#include "qt/Messages.h"
#include "window/WindowTest.h"

namespace walrim {
namespace {

constexpr std::string_view OneWaypoint = "WPT\tD\tWGS84\t=\"A\"\t35\t139\t=\"\"\r\n";

/// How a program ended and what it printed.
struct Ended {
  int status = -1;
  std::string out;
  std::string err;

  friend bool operator==(const Ended&, const Ended&) = default;
};

void PrintTo(const Ended& ended, std::ostream* stream) {
  *stream << "status " << ended.status << ", out \"" << ended.out << "\", err \"" << ended.err << "\"";
}

Ended Printed(std::int32_t result) {
  return {0, std::to_string(result) + "\n", ""};
}

std::vector<std::string> CommandWords(std::vector<std::string> words) {
  words.insert(words.begin(), {WALRIM_WINDOW, "--command"});
  return words;
}

/// walrim --command WORDS, started at once; Answer lets the event loop run until it has ended.
class Calling {
 public:
  explicit Calling(std::vector<std::string> words)
      : process_(CommandWords(std::move(words))), waiting_([this] {
          ended_.status = process_.Wait();
          ended_.out = process_.Out();
          ended_.err = process_.Err();
          QMetaObject::invokeMethod(
              &loop_,
              [this] {
                has_ended_ = true;
                loop_.quit();
              },
              Qt::QueuedConnection);
        }) {}
  ~Calling() {
    if (waiting_.joinable()) waiting_.join();
  }
  Calling(const Calling&) = delete;
  Calling& operator=(const Calling&) = delete;

  const Ended& Answer() {
    // Another one's loop may have seen the end.
    if (!has_ended_) loop_.exec();
    if (waiting_.joinable()) waiting_.join();
    return ended_;
  }

 private:
  QEventLoop loop_;
  bool has_ended_ = false;
  Process process_;
  Ended ended_;
  std::thread waiting_;
};

Ended Call(std::vector<std::string> words) {
  return Calling(std::move(words)).Answer();
}

/// A runtime folder that is this test's own, for this program and those that it starts.
class OwnRuntimeFolder {
 public:
  explicit OwnRuntimeFolder(const TemporaryFolder& folder) : path_(folder.Path("runtime")) {
    std::filesystem::create_directory(path_);
    std::filesystem::permissions(path_, std::filesystem::perms::owner_all);
    qputenv("XDG_RUNTIME_DIR", QByteArray::fromStdString(path_));
  }
  ~OwnRuntimeFolder() {
    if (before_set_) {
      qputenv("XDG_RUNTIME_DIR", before_);
    } else {
      qunsetenv("XDG_RUNTIME_DIR");
    }
  }
  OwnRuntimeFolder(const OwnRuntimeFolder&) = delete;
  OwnRuntimeFolder& operator=(const OwnRuntimeFolder&) = delete;

 private:
  bool before_set_ = qEnvironmentVariableIsSet("XDG_RUNTIME_DIR");
  QByteArray before_ = qgetenv("XDG_RUNTIME_DIR");
  std::string path_;
};

/// Sees when a window has tried to take commands and let it be: it opens the lock's file and closes it again.
class AttemptsToListen {
 public:
  AttemptsToListen() { inotify_add_watch(watch_, (FindCommandPlace().name + ".lock").c_str(), IN_CLOSE_WRITE); }
  ~AttemptsToListen() { close(watch_); }
  AttemptsToListen(const AttemptsToListen&) = delete;
  AttemptsToListen& operator=(const AttemptsToListen&) = delete;

  [[nodiscard]] bool AwaitOne() const {
    pollfd event{watch_, POLLIN, 0};
    return poll(&event, 1, 60000) == 1;
  }

 private:
  int watch_ = inotify_init1(IN_CLOEXEC);
};

// ---- The program in a process of its own

class WindowProcessTest : public testing::Test {
 protected:
  WindowProcessTest() {
    PutFile(folder.Path("a.grc"), OneWaypoint);
    qputenv("XDG_STATE_HOME", QByteArray::fromStdString(folder.Path("state")));
  }
  ~WindowProcessTest() override { qputenv("XDG_STATE_HOME", state_before_); }

  static std::unique_ptr<Process> Start(std::vector<std::string> words = {}) {
    words.insert(words.begin(), WALRIM_WINDOW);
    return std::make_unique<Process>(words);
  }
  /// True once a window takes commands. A SetDoCheck without a kind does nothing.
  static bool TakesCommands() {
    return QTest::qWaitFor(
        [] {
          return SendCommand(FindCommandPlace(), {"SetDoCheck", "", ""}).outcome == CommandAnswer::Outcome::Result;
        },
        60000);
  }

  TemporaryFolder folder;
  OwnRuntimeFolder runtime{folder};

 private:
  const QByteArray state_before_ = qgetenv("XDG_STATE_HOME");
};

TEST_F(WindowProcessTest, CommandsPrintTheirResultAlone) {
  const auto window = Start({"--demo"});
  ASSERT_TRUE(TakesCommands());
  EXPECT_EQ(Call({"GetFile", folder.Path("a.grc")}), Printed(CommandDone));
  EXPECT_EQ(Call({"SetDoCheck", "0", "1"}), Printed(CommandDone));
  EXPECT_EQ(Call({"SetDoCheck", "3", "1"}), Printed(CommandRefused));
  EXPECT_EQ(Call({"Delete", "ALL"}), Printed(CommandDone));
  EXPECT_EQ(Call({"delete", "all"}), Printed(CommandDone));
  EXPECT_EQ(Call({"GetFile", "cancel"}), Printed(CommandDone));
  EXPECT_EQ(Call({"Dance"}), Printed(CommandUnknown));
}

TEST_F(WindowProcessTest, ACallNeedsNoDisplay) {
  const auto window = Start();
  ASSERT_TRUE(TakesCommands());
  qputenv("QT_QPA_PLATFORM", "no-such-platform");
  const Ended ended = Call({"Delete", "ALL"});
  qputenv("QT_QPA_PLATFORM", "offscreen");
  EXPECT_EQ(ended, Printed(CommandDone));
}

TEST_F(WindowProcessTest, WithoutAWindowACallSaysSoAndFails) {
  const Ended ended = Call({"GetFile", folder.Path("a.grc")});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.out, "");
  EXPECT_EQ(ended.err, std::string(qt_messages::NoWindow) + "\n");
}

TEST_F(WindowProcessTest, ACallThatCannotBeReadFailsWithoutAResult) {
  const Ended ended = Call({});
  EXPECT_EQ(ended.status, 2);
  EXPECT_EQ(ended.out, "");
  EXPECT_NE(ended.err, "");
}

TEST_F(WindowProcessTest, AfterAHardEndTheNextWindowTakesCommandsAgain) {
  auto window = Start();
  ASSERT_TRUE(TakesCommands());
  window->Signal(SIGKILL);
  EXPECT_EQ(window->Wait(), 128 + SIGKILL);
  EXPECT_TRUE(std::filesystem::exists(FindCommandPlace().name)) << "it had no time to tidy up";
  EXPECT_EQ(Call({"Delete", "ALL"}).status, 1);
  window = Start();
  ASSERT_TRUE(TakesCommands());
  EXPECT_EQ(Call({"GetFile", folder.Path("a.grc")}), Printed(CommandDone));
}

TEST_F(WindowProcessTest, ASecondWindowLeavesTheCommandsToTheFirst) {
  const auto first = Start();
  ASSERT_TRUE(TakesCommands());
  const AttemptsToListen attempts;
  const auto second = Start();
  ASSERT_TRUE(attempts.AwaitOne());
  EXPECT_EQ(Call({"GetFile", folder.Path("a.grc")}), Printed(CommandDone));
  second->Signal(SIGKILL);
  EXPECT_EQ(second->Wait(), 128 + SIGKILL);
  EXPECT_EQ(Call({"Delete", "ALL"}), Printed(CommandDone));
}

TEST_F(WindowProcessTest, WhenTheFirstWindowGoesTheSecondTakesTheCommands) {
  const auto first = Start();
  ASSERT_TRUE(TakesCommands());
  const AttemptsToListen attempts;
  const auto second = Start();
  ASSERT_TRUE(attempts.AwaitOne());
  first->Signal(SIGKILL);
  EXPECT_EQ(first->Wait(), 128 + SIGKILL);
  ASSERT_TRUE(TakesCommands());
  EXPECT_EQ(Call({"GetFile", folder.Path("a.grc")}), Printed(CommandDone));
}

TEST_F(WindowProcessTest, TheSocketIsItsUsersAlone) {
  const auto window = Start();
  ASSERT_TRUE(TakesCommands());
  struct stat file {};
  ASSERT_EQ(stat(FindCommandPlace().name.c_str(), &file), 0);
  EXPECT_TRUE(S_ISSOCK(file.st_mode));
  EXPECT_EQ(file.st_mode & 077U, 0U);
}

// ---- Calls to a window that the test looks into

class CommandTest : public WindowTest {
 protected:
  CommandTest() {
    PutFile(folder.Path("a.grc"), OneWaypoint);
    EXPECT_EQ(socket.Listen(FindCommandPlace().name), "");
  }

  OwnRuntimeFolder runtime{folder};
  CommandSocket socket{[this](const std::string& word, const std::string& arg1, const std::string& arg2) {
    const std::int32_t result = window->RunExternalCommand(word, arg1, arg2);
    return result == CommandBusy ? std::nullopt : std::optional(result);
  }};
};

TEST_F(CommandTest, AFileOfTheCallersFolderIsImported) {
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(folder.Path("."));
  Calling calling({"getfile", "a.grc"});
  std::filesystem::current_path(before);
  EXPECT_EQ(calling.Answer(), Printed(CommandDone));
  EXPECT_EQ(Texts("GpsNum"), "1|-|-");
  EXPECT_TRUE(Status().starts_with("取り込み：Waypoint 1，")) << Status();
}

TEST_F(CommandTest, AFileThatCannotBeUsedIsToldInTheWindowAndRefused) {
  PutFile(folder.Path("other.bin"), "hello\r\n");
  EXPECT_EQ(Call({"GetFile", folder.Path("other.bin")}), Printed(CommandRefused));
  EXPECT_EQ(Messages(), messages::UnsupportedFile(folder.Path("other.bin")));
  EXPECT_EQ(Call({"GetFile", folder.Path("missing.grc")}), Printed(CommandRefused));
  EXPECT_EQ(answerer.boxes.size(), 2U);
  EXPECT_EQ(Texts("GpsNum"), "-|-|-");
}

TEST_F(CommandTest, SetDoCheckTicksTheBoxOfAKind) {
  for (const char* kind : {"0", "1", "2"}) {
    const QString box = QString("DoCheck_") + kind;
    EXPECT_EQ(Call({"SetDoCheck", kind, "TRUE"}), Printed(CommandDone));
    EXPECT_TRUE(Get<QCheckBox>(box).isChecked()) << kind;
    EXPECT_EQ(Call({"SETDOCHECK", kind, "0"}), Printed(CommandDone));
    EXPECT_FALSE(Get<QCheckBox>(box).isChecked()) << kind;
  }
  EXPECT_EQ(Call({"SetDoCheck", "", "1"}), Printed(CommandDone));
  EXPECT_FALSE(Get<QCheckBox>("DoCheck_0").isChecked());
}

TEST_F(CommandTest, DeleteAllEmptiesEveryKindWithoutAQuestion) {
  CheckAll("DownCheck");
  Click("GpsDownLoad");
  ASSERT_GT(Data().Count(DataKind::TrackLog), 0U);
  EXPECT_EQ(Call({"delete", "all"}), Printed(CommandDone));
  EXPECT_EQ(Texts("GpsNum"), "-|-|-");
  EXPECT_EQ(Data().Count(DataKind::TrackLog), 0U);
  EXPECT_TRUE(Get<QCheckBox>("DoCheck_2").isChecked());
  EXPECT_EQ(Messages(), "");
}

TEST_F(CommandTest, TwoCallsAtTheSameMomentAreEachDoneOrToldToWait) {
  constexpr int Calls = 6;
  std::vector<std::unique_ptr<Calling>> callings;
  callings.reserve(Calls);
  for (int i = 0; i < Calls; ++i)
    callings.push_back(std::make_unique<Calling>(std::vector<std::string>{"GetFile", folder.Path("a.grc")}));
  int done = 0;
  for (const auto& calling : callings) {
    const Ended& ended = calling->Answer();
    EXPECT_TRUE(ended == Printed(CommandDone) || ended == Printed(CommandBusy)) << testing::PrintToString(ended);
    done += ended == Printed(CommandDone) ? 1 : 0;
  }
  EXPECT_GT(done, 0);
  EXPECT_EQ(Data().Count(DataKind::Waypoint), done) << "what was answered as done is there, and nothing else";
}

TEST_F(CommandTest, ACallDuringATransferIsToldToWaitAndDoesNothing) {
  CheckAll("DownCheck");
  std::vector<Ended> during;
  event_loop.on_yield = [&] {
    if (!during.empty() || !Status().starts_with("DownLoading : Route")) return;
    during.emplace_back();
    for (const auto& words : {std::vector<std::string>{"GetFile", folder.Path("a.grc")},
                              {"Delete", "ALL"},
                              {"SetDoCheck", "0", "1"},
                              {"Dance"}})
      during.push_back(Call(words));
  };
  Click("GpsDownLoad");
  event_loop.on_yield = {};
  ASSERT_EQ(during.size(), 5U);
  for (std::size_t i = 1; i < during.size(); ++i)
    EXPECT_EQ(during[i], Printed(CommandBusy)) << i;
  EXPECT_GT(Data().Count(DataKind::Waypoint), 1U);
  EXPECT_GT(Data().Count(DataKind::TrackLog), 0U) << "the transfer went on";
  EXPECT_FALSE(Get<QCheckBox>("DoCheck_0").isChecked());
  EXPECT_EQ(Messages(), "");
  EXPECT_EQ(Call({"GetFile", folder.Path("a.grc")}), Printed(CommandDone)) << "and now it is free";
}

TEST_F(CommandTest, ACallThatUploadsAnswersWhenTheUploadHasEnded) {
  Check("AutoUpload");
  EXPECT_EQ(Call({"GetFile", folder.Path("a.grc")}), Printed(CommandDone));
  EXPECT_FALSE(Get<QLineEdit>("GpsDataNum_0").text().isEmpty()) << "the receiver's new count";
}

TEST_F(CommandTest, AnUploadWithoutAReceiverHasAResultOfItsOwn) {
  DemoReceiverOptions options;
  options.faults.silent = 1;
  UseReceiver(options);
  Check("AutoUpload");
  EXPECT_EQ(Call({"GetFile", folder.Path("a.grc")}), Printed(CommandNoReceiver));
  EXPECT_EQ(Texts("GpsNum"), "1|-|-") << "what came in stays";
}

TEST_F(CommandTest, WhoLeavesBeforeTheResultDoesNoHarm) {
  Process caller(CommandWords({"GetFile", folder.Path("a.grc")}));
  EXPECT_TRUE(QTest::qWaitFor([this] { return Data().Count(DataKind::Waypoint) == 1; }, 60000));
  caller.Signal(SIGKILL);
  static_cast<void>(caller.Wait());
  EXPECT_EQ(Call({"Delete", "ALL"}), Printed(CommandDone));
}

}  // namespace
}  // namespace walrim
