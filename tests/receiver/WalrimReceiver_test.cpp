// The program itself, started and talked to over its pseudo-terminal.
#ifdef WALRIM_RECEIVER

#include <csignal>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <poll.h>
#include <string>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include "receiver/ReceiverHost.h"
#include "text/Dates.h"

namespace walrim {
namespace {

namespace fs = std::filesystem;

constexpr int PatienceMs = 20000;

bool Readable(int descriptor, int at_most_ms = PatienceMs) {
  pollfd poll_it{descriptor, POLLIN, 0};
  return poll(&poll_it, 1, at_most_ms) == 1 && (poll_it.revents & POLLIN) != 0;
}

/// A run of walrim-receiver; killed with its owner.
class Program {
 public:
  explicit Program(const std::vector<std::string>& arguments) {
    std::vector<char*> argv;
    std::vector<std::string> all{WALRIM_RECEIVER};
    all.insert(all.end(), arguments.begin(), arguments.end());
    for (std::string& argument : all)
      argv.push_back(argument.data());
    argv.push_back(nullptr);
    int out[2];
    int err[2];
    EXPECT_EQ(pipe2(out, O_CLOEXEC), 0);
    EXPECT_EQ(pipe2(err, O_CLOEXEC), 0);
    pid_ = fork();
    if (pid_ == 0) {
      dup2(out[1], 1);
      dup2(err[1], 2);
      execv(argv[0], argv.data());
      _exit(127);
    }
    close(out[1]);
    close(err[1]);
    out_ = out[0];
    err_ = err[0];
  }
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;
  ~Program() {
    if (pid_ > 0) {
      kill(pid_, SIGKILL);
      waitpid(pid_, nullptr, 0);
    }
    close(out_);
    close(err_);
  }

  /// The next line of its standard output, without its end.
  std::string Line() {
    std::string line;
    char c = 0;
    while (Readable(out_) && read(out_, &c, 1) == 1 && c != '\n')
      line.push_back(c);
    return line;
  }
  std::string Errors() { return All(err_); }
  std::string Output() { return All(out_); }
  void Signal(int signal) const { kill(pid_, signal); }
  /// Its exit status once it has ended; the signal that killed it, negative.
  int Wait() {
    int status = 0;
    waitpid(pid_, &status, 0);
    pid_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
  }

 private:
  static std::string All(int descriptor) {
    std::string text;
    char buffer[1024];
    for (ssize_t size = 1; size > 0;) {
      size = read(descriptor, buffer, sizeof buffer);
      if (size > 0) text.append(buffer, static_cast<std::size_t>(size));
    }
    return text;
  }

  pid_t pid_ = -1;
  int out_ = -1;
  int err_ = -1;
};

/// A program that has opened the line.
class Client {
 public:
  explicit Client(const std::string& path) : line_(open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {}
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;
  ~Client() { Close(); }

  [[nodiscard]] bool Open() const { return line_ >= 0; }
  [[nodiscard]] int Line() const { return line_; }
  void Close() {
    if (line_ >= 0) close(line_);
    line_ = -1;
  }
  void Send(const Bytes& bytes) const {
    EXPECT_EQ(write(line_, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
  }
  /// Takes bytes until they make up so many frames.
  std::vector<SeenFrame> Take(std::size_t count) const {
    Bytes came;
    while (FramesIn(came).size() < count && Readable(line_)) {
      std::uint8_t buffer[512];
      const ssize_t size = read(line_, buffer, sizeof buffer);
      if (size <= 0) break;
      came.insert(came.end(), buffer, buffer + size);
    }
    return FramesIn(came);
  }
  std::vector<SeenFrame> Exchange(const Bytes& frame, std::size_t count) const {
    Send(frame);
    return Take(count);
  }

 private:
  int line_;
};

class WalrimReceiverTest : public testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = testing::TempDir() + "walrim-receiver-XXXXXX";
    folder = mkdtemp(pattern.data());
  }
  void TearDown() override { fs::remove_all(folder); }

  fs::path folder;
};

TEST_F(WalrimReceiverTest, PrintsItsPathAndAnswersOnIt) {
  Program program({});
  const std::string path = program.Line();
  ASSERT_TRUE(path.starts_with("/dev/")) << path;
  Client client(path);
  ASSERT_TRUE(client.Open());
  const auto frames = client.Exchange(ProductRequestFrame, 2);
  ASSERT_EQ(frames.size(), 2U);
  EXPECT_EQ(frames[0], Sound(6, {254, 0}));
  const std::string texts(frames[1].data.begin() + 4, frames[1].data.end());
  EXPECT_TRUE(texts.starts_with("eTrex ")) << texts;
  program.Signal(SIGTERM);
  EXPECT_EQ(program.Wait(), 0);
  EXPECT_EQ(program.Output(), "");
  EXPECT_EQ(program.Errors(), "");
}

TEST_F(WalrimReceiverTest, TheLineIsRaw) {
  Program program({"--baud", "0"});
  Client client(program.Line());
  ASSERT_TRUE(client.Open());
  // An upload whose bytes a cooked line would change, echo or act upon.
  EXPECT_EQ(client.Exchange(HostFrame(27, {1, 0}), 1).at(0), Sound(6, {27, 0}));
  Bytes data;
  for (int byte = 0; byte < 255; ++byte)
    data.push_back(static_cast<std::uint8_t>(byte));
  EXPECT_EQ(client.Exchange(HostFrame(35, data), 1).at(0), Sound(6, {35, 0}));
  EXPECT_EQ(client.Exchange(HostFrame(12, {7, 0}), 1).at(0), Sound(6, {12, 0}));
  EXPECT_EQ(client.Exchange(HostFrame(10, {7, 0}), 2).at(1), Sound(27, {1, 0}));
  EXPECT_EQ(client.Exchange(HostFrame(6, {27, 0}), 1).at(0), Sound(35, data));
}

TEST_F(WalrimReceiverTest, MakesItsLinkAndRemovesItAtTheEnd) {
  const fs::path link = folder / "gps";
  for (const int signal : {SIGINT, SIGTERM}) {
    Program program({"--link", link.string()});
    const std::string path = program.Line();
    EXPECT_EQ(fs::read_symlink(link), path);
    EXPECT_TRUE(Client(link).Open());
    program.Signal(signal);
    EXPECT_EQ(program.Wait(), 0);
    EXPECT_FALSE(fs::exists(fs::symlink_status(link)));
    EXPECT_TRUE(fs::is_empty(folder));
  }
}

TEST_F(WalrimReceiverTest, ReplacesALinkToAPseudoTerminalThatIsGone) {
  const fs::path link = folder / "gps";
  fs::create_symlink("/dev/pts/987654", link);
  Program program({"--link", link.string()});
  const std::string path = program.Line();
  EXPECT_EQ(fs::read_symlink(link), path);
  program.Signal(SIGTERM);
  EXPECT_EQ(program.Wait(), 0);
  EXPECT_TRUE(fs::is_empty(folder));
}

TEST_F(WalrimReceiverTest, ReplacesNoLinkToAnythingElse) {
  const fs::path precious = folder / "precious";
  std::ofstream(precious) << "precious";
  const fs::path link = folder / "gps";
  for (const auto& target : {precious, fs::path("/nowhere"), fs::path("/dev/pts/"), fs::path("/dev/pts/1x"),
                             fs::path("/dev/pts/../null"), fs::path("/dev/null"), fs::path("/tmp/dev/pts/1")}) {
    fs::create_symlink(target, link);
    Program program({"--link", link.string()});
    EXPECT_EQ(program.Line(), "") << target;
    program.Signal(SIGTERM);  // in case it serves
    EXPECT_EQ(program.Wait(), 1) << target;
    EXPECT_NE(program.Errors().find(link.string()), std::string::npos);
    EXPECT_EQ(fs::read_symlink(link), target);
    fs::remove(link);
  }
  EXPECT_TRUE(fs::is_regular_file(precious));
}

TEST_F(WalrimReceiverTest, ReplacesNoFileAndNoFolder) {
  const fs::path file = folder / "file";
  std::ofstream(file) << "precious";
  for (const fs::path& path : {file, folder, file / "below"}) {
    Program program({"--link", path.string()});
    EXPECT_EQ(program.Line(), "") << path;
    program.Signal(SIGTERM);  // in case it serves
    EXPECT_EQ(program.Wait(), 1) << path;
    EXPECT_NE(program.Errors().find(path.string()), std::string::npos);
  }
  EXPECT_EQ(fs::file_size(file), 8U);
}

TEST_F(WalrimReceiverTest, LeavesALinkThatPointsElsewhereByNow) {
  const fs::path link = folder / "gps";
  Program program({"--link", link.string()});
  ASSERT_NE(program.Line(), "");
  fs::remove(link);
  fs::create_symlink("/elsewhere", link);
  program.Signal(SIGTERM);
  EXPECT_EQ(program.Wait(), 0);
  EXPECT_EQ(fs::read_symlink(link), "/elsewhere");
}

TEST_F(WalrimReceiverTest, ServesOneClientAfterTheOther) {
  Program program({"--baud", "0"});
  const std::string path = program.Line();
  for (int i = 0; i < 20; ++i) {
    Client client(path);
    ASSERT_TRUE(client.Open());
    EXPECT_EQ(client.Exchange(ProductRequestFrame, 2).size(), 2U);
  }
}

TEST_F(WalrimReceiverTest, AClientThatWasKilledLeavesNothingBehind) {
  Program program({"--baud", "0"});
  const std::string path = program.Line();
  {
    // Excludes others, changes the line's mode, leaves its answer unread and goes without a word.
    Client killed(path);
    ASSERT_TRUE(killed.Open());
    ASSERT_EQ(ioctl(killed.Line(), TIOCEXCL), 0);
    termios mode{};
    ASSERT_EQ(tcgetattr(killed.Line(), &mode), 0);
    mode.c_lflag |= ECHO;
    ASSERT_EQ(tcsetattr(killed.Line(), TCSANOW, &mode), 0);
    killed.Send(ProductRequestFrame);
    ASSERT_TRUE(Readable(killed.Line()));
  }
  // The receiver notices in its own time; what is asked afterwards is answered as ever.
  int exclusive = 1;
  int left = 1;
  for (int tries = 0; tries < PatienceMs && (exclusive != 0 || left != 0); ++tries) {
    Client client(path);
    if (!client.Open()) continue;
    ASSERT_EQ(ioctl(client.Line(), TIOCGEXCL, &exclusive), 0);
    ASSERT_EQ(ioctl(client.Line(), FIONREAD, &left), 0);
  }
  EXPECT_EQ(exclusive, 0);
  EXPECT_EQ(left, 0);
  Client client(path);
  ASSERT_TRUE(client.Open());
  EXPECT_EQ(client.Exchange(ProductRequestFrame, 2).size(), 2U);
}

TEST_F(WalrimReceiverTest, TellsTheComputersTime) {
  constexpr std::int64_t unix_time_of_the_epoch = 631065600;
  Program program({"--baud", "0"});
  Client client(program.Line());
  ASSERT_TRUE(client.Open());
  const auto frames = client.Exchange(HostFrame(10, {5, 0}), 2);
  ASSERT_EQ(frames.size(), 2U);
  ASSERT_EQ(frames[1].id, 14);
  const Bytes& data = frames[1].data;
  ASSERT_EQ(data.size(), 8U);
  const CivilTime told{data[2] + 256 * data[3], data[0], data[1], data[4] + 256 * data[5], data[6], data[7]};
  EXPECT_NEAR(static_cast<double>(SecondsSinceGarminEpoch(told) + unix_time_of_the_epoch),
              static_cast<double>(std::time(nullptr)), 60);
}

TEST_F(WalrimReceiverTest, TellsTheTimeThatIsSet) {
  const auto told = [](const std::vector<std::string>& arguments) {
    Program program(arguments);
    Client client(program.Line());
    EXPECT_TRUE(client.Open());
    const auto frames = client.Exchange(HostFrame(10, {5, 0}), 2);
    Bytes date = frames.size() == 2 ? frames[1].data : Bytes(8, 0);
    date.resize(6);  // seconds pass
    return date;
  };
  EXPECT_EQ(told({"--baud", "0", "--clock", "2031-05-04T13:45:00Z"}), (Bytes{5, 4, 0xEF, 0x07, 13, 0}));
  EXPECT_EQ(told({"--baud", "0", "--clock", "2031-05-04"}), (Bytes{5, 4, 0xEF, 0x07, 0, 0}));
  // 7168 days earlier.
  EXPECT_EQ(told({"--baud", "0", "--clock", "2031-05-04", "--rollovers", "1"}), (Bytes{9, 18, 0xDB, 0x07, 0, 0}));
}

TEST_F(WalrimReceiverTest, LogsBeforeTheReceiversEpochAreRefused) {
  Program program({"--clock", "2026-11-22", "--rollovers", "2"});
  EXPECT_EQ(program.Wait(), 1);
  EXPECT_NE(program.Errors().find("--rollovers"), std::string::npos);
}

TEST_F(WalrimReceiverTest, KeepsThePaceOfTheLine) {
  Program program({});
  Client client(program.Line());
  ASSERT_TRUE(client.Open());
  const auto start = std::chrono::steady_clock::now();
  const auto frames = client.Exchange(ProductRequestFrame, 2);
  const auto time = std::chrono::steady_clock::now() - start;
  ASSERT_EQ(frames.size(), 2U);
  const std::size_t bytes = 8 + 8 + frames[1].data.size() + 6;
  EXPECT_GE(time, bytes * std::chrono::nanoseconds(1041666));
}

TEST_F(WalrimReceiverTest, FillsItsMemoryFromAFile) {
  const fs::path file = folder / "memory.grc";
  std::ofstream(file, std::ios::binary) << "WPT\tD\tWGS84\t=\"takao\"\t35\t135\t=\"C\"\t10\r\n"
                                           "TRH\t1\tTRUE\t255\t=\"LOG\"\r\n"
                                           "TRP\tD\tWGS84\t35\t135\t1990/01/01 00:00:00\tTRUE\t\t\t0\r\n";
  Program program({"--model", "GPS 12", "--memory", file.string(), "--utc-offset", "0", "--baud", "0"});
  Client client(program.Line());
  ASSERT_TRUE(client.Open());
  EXPECT_EQ(client.Exchange(HostFrame(10, {7, 0}), 2).at(1), Sound(27, {1, 0}));
  EXPECT_EQ(client.Exchange(HostFrame(6, {27, 0}), 1).at(0),
            Sound(35, BytesOf("TAKAO ") + Bytes{0x39, 0x8E, 0xE3, 0x18, 0x00, 0x00, 0x00, 0x60, 0, 0, 0, 0, 'C'} +
                          Bytes(39, ' ') + Bytes{10, 0}));
  EXPECT_EQ(client.Exchange(HostFrame(10, {6, 0}), 2).at(1), Sound(27, {1, 0}));
  EXPECT_EQ(client.Exchange(HostFrame(6, {27, 0}), 1).at(0),
            Sound(34, Bytes{0x39, 0x8E, 0xE3, 0x18, 0x00, 0x00, 0x00, 0x60, 0x80, 0x51, 0x01, 0x00, 255}));
}

TEST_F(WalrimReceiverTest, ReplaysATraceUntilAPacketDiffers) {
  const fs::path trace = folder / "trace";
  std::ofstream(trace) << "0.1\tTX\t10\t2\t10 0A 02 07 00 ED 10 03\n0.2\tRX\t27\t2\t10 1B 02 05 00 DE 10 03\n";
  Program program({"--replay", trace.string()});
  Client client(program.Line());
  ASSERT_TRUE(client.Open());
  EXPECT_EQ(client.Exchange(HostFrame(10, {7, 0}), 1), std::vector{Sound(27, {5, 0})});
  client.Send(HostFrame(10, {6, 0}));
  EXPECT_EQ(program.Wait(), 1);
  EXPECT_EQ(program.Errors(), "walrim-receiver: " + trace.string() +
                                  ": packet 2: nothing expected, the trace is over; came id 10, 10 0A 02 06 00 EE 10 "
                                  "03\n");
}

TEST_F(WalrimReceiverTest, ATraceThatIsMissingOrMalformedIsRefused) {
  const fs::path trace = folder / "trace";
  std::ofstream(trace) << "nothing\n";
  for (const fs::path& path : {folder / "missing", trace}) {
    Program program({"--replay", path.string()});
    EXPECT_EQ(program.Wait(), 1);
    EXPECT_EQ(program.Output(), "");
    EXPECT_NE(program.Errors().find(path.string()), std::string::npos);
  }
}

TEST_F(WalrimReceiverTest, AMemoryFileThatIsMissingOrEmptyIsRefused) {
  const fs::path file = folder / "empty.grc";
  std::ofstream(file) << "nothing\n";
  for (const fs::path& path : {folder / "missing.grc", file}) {
    Program program({"--memory", path.string()});
    EXPECT_EQ(program.Wait(), 1);
    EXPECT_EQ(program.Output(), "");
    EXPECT_NE(program.Errors().find(path.string()), std::string::npos);
  }
}

TEST_F(WalrimReceiverTest, APulledCableEndsTheProgramAndItsLink) {
  const fs::path link = folder / "gps";
  Program program({"--link", link.string(), "--fault", "unplug-after=1"});
  Client client(program.Line());
  ASSERT_TRUE(client.Open());
  EXPECT_EQ(client.Exchange(ProductRequestFrame, 1), std::vector{Sound(6, {254, 0})});
  EXPECT_EQ(program.Wait(), 0);
  EXPECT_FALSE(fs::exists(fs::symlink_status(link)));
  pollfd line{client.Line(), POLLIN, 0};
  ASSERT_EQ(poll(&line, 1, PatienceMs), 1);
  EXPECT_NE(line.revents & POLLHUP, 0);
}

TEST_F(WalrimReceiverTest, WrongOptionsAreToldWithStatusTwo) {
  const std::vector<std::vector<std::string>> wrong{{"--model", "GPS 99"},      {"--baud", "-1"},
                                                    {"--baud", "fast"},         {"--fault", "nonsense"},
                                                    {"--fault", "gap=x"},       {"--nothing"},
                                                    {"--fault", "silent", "x"}, {"extra"},
                                                    {"--utc-offset", "99"},     {"--clock", "yesterday"},
                                                    {"--clock", "1980-01-01"},  {"--rollovers", "4"}};
  for (const auto& arguments : wrong) {
    Program program(arguments);
    EXPECT_EQ(program.Wait(), 2) << arguments.back();
    EXPECT_EQ(program.Output(), "") << arguments.back();
    EXPECT_NE(program.Errors(), "") << arguments.back();
  }
}

TEST_F(WalrimReceiverTest, HelpNamesTheOptions) {
  Program program({"--help"});
  EXPECT_EQ(program.Wait(), 0);
  const std::string help = program.Output();
  for (const auto* option : {"--model", "--memory", "--baud", "--link", "--fault", "--strict", "--clock", "--rollovers",
                             "GPS 12CX", "unplug-after=N"}) {
    EXPECT_NE(help.find(option), std::string::npos) << option;
  }
}

TEST_F(WalrimReceiverTest, StrictRefusesWhatWasNotAnnounced) {
  Program program({"--baud", "0", "--strict"});
  Client client(program.Line());
  ASSERT_TRUE(client.Open());
  EXPECT_EQ(client.Exchange(HostFrame(35, {1}), 1), std::vector{Sound(21, {35, 0})});
}

TEST_F(WalrimReceiverTest, TellsItsFixUnaskedWithoutBeingSpokenTo) {
  Program program({"--baud", "0", "--fault", "pvt=4"});
  Client client(program.Line());
  ASSERT_TRUE(client.Open());
  const auto frames = client.Take(2);
  ASSERT_EQ(frames.size(), 2U);
  EXPECT_EQ(frames[0].id, 51);
  EXPECT_EQ(frames[1].id, 51);
}

TEST_F(WalrimReceiverTest, SeveralFaultsMayBeGiven) {
  Program program({"--baud", "0", "--fault", "garbage=1", "--fault", "short-count=1000"});
  Client client(program.Line());
  ASSERT_TRUE(client.Open());
  const auto frames = client.Exchange(HostFrame(10, {7, 0}), 2);
  ASSERT_EQ(frames.size(), 2U);
  EXPECT_FALSE(frames[0].noise.empty());
  EXPECT_EQ(frames[1], Sound(27, {0, 0}));
}

}  // namespace
}  // namespace walrim

#endif
