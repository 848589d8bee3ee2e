#include "qt/QtSerialPort.h"

#include <QCoreApplication>
#include <algorithm>
#include <cerrno>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <grp.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <system_error>
#include <termios.h>
#include <thread>
#include <unistd.h>

#include "qt/LockFile.h"
#include "qt/Messages.h"
#include "qt/PseudoTerminal.h"
#include "qt/QtEventLoop.h"
#include "support/Processes.h"

namespace {

/// How often the program has asked the system about descriptors.
int polls = 0;

}  // namespace

/// Stands in front of the system's own.
extern "C" int poll(pollfd* descriptors, nfds_t count, int timeout_ms) {
  ++polls;
  const timespec timeout{timeout_ms / 1000, timeout_ms % 1000 * 1'000'000};
  return ppoll(descriptors, count, timeout_ms < 0 ? nullptr : &timeout, nullptr);
}

namespace walrim {
namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;

constexpr int Baud = 9600;

std::string AllBytes() {
  std::string bytes;
  for (int value = 0; value < 256; ++value)
    bytes.push_back(static_cast<char>(value));
  return bytes;
}

std::chrono::microseconds TimeOf(const timeval& time) {
  return std::chrono::seconds(time.tv_sec) + std::chrono::microseconds(time.tv_usec);
}

/// A folder of its own for a test's files, removed with it.
class ScratchFolder {
 public:
  ScratchFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "walrim-qt-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) ADD_FAILURE() << "no scratch folder";
    path_ = pattern;
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  ~ScratchFolder() { std::filesystem::remove_all(path_); }

  [[nodiscard]] std::string File(const std::string& name) const { return (path_ / name).string(); }

 private:
  std::filesystem::path path_;
};

class QtSerialPortTest : public testing::Test {
 protected:
  void OpenPort() {
    const PortResult result = port.Open(line.Device(), Baud);
    ASSERT_TRUE(result.Ok()) << result.detail;
  }

  /// Waits until count bytes have come; false when they do not.
  bool WaitForInput(std::size_t count) {
    const auto give_up = steady_clock::now() + 5s;
    while (port.InBufferCount() < count && steady_clock::now() < give_up)
      port.Wait(100ms);
    return port.InBufferCount() >= count;
  }

  std::string ReadAll() {
    std::string bytes;
    while (const auto byte = port.Input())
      bytes.push_back(static_cast<char>(*byte));
    return bytes;
  }

  void Write(std::string_view bytes) {
    for (const char byte : bytes)
      port.Output(static_cast<std::uint8_t>(byte));
  }

  PseudoTerminal line;
  QtSerialPort port;
};

TEST_F(QtSerialPortTest, OpensAndClosesAPseudoTerminal) {
  EXPECT_FALSE(port.PortOpen());
  const PortResult result = port.Open(line.Device(), Baud);
  EXPECT_EQ(result.problem, PortProblem::None);
  EXPECT_EQ(result.device, line.Device());
  EXPECT_TRUE(port.PortOpen());
  port.Close();
  EXPECT_FALSE(port.PortOpen());
  EXPECT_TRUE(port.Open(line.Device(), Baud).Ok()) << "a closed port can be opened again";
  EXPECT_TRUE(port.Open(line.Device(), Baud).Ok()) << "an open port is closed first";
}

TEST_F(QtSerialPortTest, SetsABinaryLineOf9600Baud) {
  OpenPort();
  termios modes{};
  ASSERT_EQ(tcgetattr(line.Handle(), &modes), 0);
  EXPECT_EQ(cfgetispeed(&modes), speed_t{B9600});
  EXPECT_EQ(cfgetospeed(&modes), speed_t{B9600});
  EXPECT_EQ(modes.c_cflag & CSIZE, tcflag_t{CS8});
  EXPECT_EQ(modes.c_cflag & (PARENB | CSTOPB | CRTSCTS), 0U);
  EXPECT_EQ(modes.c_lflag & (ICANON | ECHO | ISIG | IEXTEN), 0U);
  EXPECT_EQ(modes.c_iflag & (IXON | IXOFF | ICRNL | INLCR | ISTRIP), 0U);
  EXPECT_EQ(modes.c_oflag & OPOST, 0U);
}

TEST_F(QtSerialPortTest, TakesAnotherRate) {
  ASSERT_TRUE(port.Open(line.Device(), 4800).Ok());
  termios modes{};
  ASSERT_EQ(tcgetattr(line.Handle(), &modes), 0);
  EXPECT_EQ(cfgetispeed(&modes), speed_t{B4800});
}

TEST_F(QtSerialPortTest, EveryByteComesInUnchanged) {
  OpenPort();
  line.Send(AllBytes());
  ASSERT_TRUE(WaitForInput(256));
  EXPECT_EQ(ReadAll(), AllBytes());
  EXPECT_EQ(port.InBufferCount(), 0U);
  EXPECT_EQ(port.Input(), std::nullopt);
}

TEST_F(QtSerialPortTest, EveryByteGoesOutUnchanged) {
  OpenPort();
  Write(AllBytes());
  EXPECT_EQ(port.OutBufferCount(), 0U) << "asking for the count sends what was collected";
  EXPECT_EQ(line.Receive(256), AllBytes());
}

TEST_F(QtSerialPortTest, WaitSendsWhatWasCollected) {
  OpenPort();
  Write("abc");
  port.Wait(0ms);
  EXPECT_EQ(line.Receive(3), "abc");
}

TEST_F(QtSerialPortTest, CloseSendsWhatWasCollected) {
  OpenPort();
  Write("abc");
  port.Close();
  EXPECT_EQ(line.Receive(3), "abc");
}

TEST_F(QtSerialPortTest, CountsWhatHasComeWithoutAWait) {
  OpenPort();
  line.Send("12345");
  ASSERT_TRUE(WaitForInput(5));
  EXPECT_EQ(port.Input(), std::uint8_t{'1'});
  EXPECT_EQ(port.InBufferCount(), 4U);
}

TEST_F(QtSerialPortTest, ClearInBufferDropsWhatHasComeAndNothingLater) {
  OpenPort();
  line.Send("late bytes");
  ASSERT_TRUE(WaitForInput(10));
  port.ClearInBuffer();
  EXPECT_EQ(port.InBufferCount(), 0U);
  EXPECT_EQ(port.Input(), std::nullopt);
  line.Send("new");
  ASSERT_TRUE(WaitForInput(3));
  EXPECT_EQ(ReadAll(), "new");
}

TEST_F(QtSerialPortTest, ClearInBufferDropsWhatTheSystemStillHolds) {
  OpenPort();
  line.Send("x");
  ASSERT_TRUE(WaitForInput(1));
  line.Send("yz");
  port.Wait(5000ms);
  port.ClearInBuffer();
  EXPECT_EQ(port.InBufferCount(), 0U);
}

TEST_F(QtSerialPortTest, ALineThatTakesNothingMoreShowsInOutBufferCount) {
  OpenPort();
  const std::string much(300'000, 'w');
  Write(much);
  EXPECT_GT(port.OutBufferCount(), 0U);
  port.ClearOutBuffer();
  EXPECT_EQ(port.OutBufferCount(), 0U);
}

TEST_F(QtSerialPortTest, WaitEndsWhenSomethingWasSent) {
  OpenPort();
  const std::string much(300'000, 'w');
  Write(much);
  ASSERT_GT(port.OutBufferCount(), 0U);
  const auto start = steady_clock::now();
  std::string received;
  std::thread receiver([&] { received = line.Receive(much.size()); });
  while (port.OutBufferCount() > 0 && steady_clock::now() < start + 30s)
    port.Wait(60s);
  receiver.join();
  EXPECT_LT(steady_clock::now() - start, 30s);
  EXPECT_EQ(received, much);
  EXPECT_FALSE(port.LineLost()) << "a full line is no lost line";
}

TEST_F(QtSerialPortTest, WaitEndsWhenBytesHaveComeBefore) {
  OpenPort();
  line.Send("x");
  const auto start = steady_clock::now();
  port.Wait(60s);
  EXPECT_LT(steady_clock::now() - start, 30s);
  EXPECT_EQ(port.InBufferCount(), 1U);
}

TEST_F(QtSerialPortTest, WaitEndsWhenBytesComeMeanwhile) {
  OpenPort();
  const auto start = steady_clock::now();
  std::thread sender([this] { line.Send("x"); });
  port.Wait(60s);
  sender.join();
  EXPECT_LT(steady_clock::now() - start, 30s);
  EXPECT_EQ(port.InBufferCount(), 1U);
}

TEST_F(QtSerialPortTest, WaitLooksForMoreThanWhatWasCounted) {
  OpenPort();
  line.Send("x");
  ASSERT_TRUE(WaitForInput(1));
  auto start = steady_clock::now();
  port.Wait(20ms);
  EXPECT_GE(steady_clock::now() - start, 20ms) << "a byte that was counted is nothing new";
  line.Send("y");
  start = steady_clock::now();
  port.Wait(60s);
  EXPECT_LT(steady_clock::now() - start, 30s);
  EXPECT_EQ(port.InBufferCount(), 2U);
}

TEST_F(QtSerialPortTest, WaitOverASilentLineLeavesTheProcessorAlone) {
  OpenPort();
  const auto start = steady_clock::now();
  rusage before{};
  getrusage(RUSAGE_SELF, &before);
  for (int i = 0; i < 50; ++i)
    port.Wait(2ms);
  rusage after{};
  getrusage(RUSAGE_SELF, &after);
  const auto elapsed = steady_clock::now() - start;
  EXPECT_GE(elapsed, 100ms);
  EXPECT_LT(TimeOf(after.ru_utime) + TimeOf(after.ru_stime) - TimeOf(before.ru_utime) - TimeOf(before.ru_stime),
            elapsed / 2)
      << "a wait sleeps";
}

TEST_F(QtSerialPortTest, AFloodIsHeldUpAndThenReadWhole) {
  OpenPort();
  std::string sent;
  const std::string block(4096, '\0');
  const auto give_up = steady_clock::now() + 20s;
  // The line takes no more once the port's buffer and the system's are full.
  for (std::size_t took = 1; took > 0 && sent.size() < 1'000'000;) {
    took = 0;
    for (int attempt = 0; attempt < 20 && took == 0; ++attempt) {
      took = line.SendWhatFits(block);
      port.Wait(1ms);
      (void)port.InBufferCount();
    }
    for (std::size_t i = 0; i < took; ++i)
      sent.push_back('\0');
  }
  EXPECT_LT(sent.size(), 500'000U);
  EXPECT_LE(port.InBufferCount(), 65536U);
  std::string read;
  while (read.size() < sent.size() && steady_clock::now() < give_up) {
    read += ReadAll();
    port.Wait(1ms);
  }
  EXPECT_EQ(read.size(), sent.size());
}

TEST_F(QtSerialPortTest, YieldingKeepsTheBytesThatCome) {
  OpenPort();
  QtEventLoop loop;
  line.Send("12345");
  const auto give_up = steady_clock::now() + 5s;
  while (port.InBufferCount() < 5 && steady_clock::now() < give_up)
    loop.Yield();
  EXPECT_EQ(ReadAll(), "12345");
  Write("67890");
  loop.Yield();
  EXPECT_EQ(line.Receive(5), "67890");
}

TEST_F(QtSerialPortTest, WaitRunsNoEvents) {
  OpenPort();
  bool ran = false;
  QMetaObject::invokeMethod(
      QCoreApplication::instance(), [&ran] { ran = true; }, Qt::QueuedConnection);
  line.Send("x");
  ASSERT_TRUE(WaitForInput(1));
  port.Wait(1ms);
  EXPECT_FALSE(ran);
  QtEventLoop().Yield();
  EXPECT_TRUE(ran);
}

TEST_F(QtSerialPortTest, OpensThroughASymbolicLink) {
  const ScratchFolder folder;
  const std::string link = folder.File("receiver");
  std::filesystem::create_symlink(line.Device(), link);
  const PortResult result = port.Open(link, Baud);
  ASSERT_TRUE(result.Ok()) << result.detail;
  EXPECT_EQ(result.device, line.Device());
  Write("hello");
  EXPECT_EQ(port.OutBufferCount(), 0U);
  EXPECT_EQ(line.Receive(5), "hello");
}

TEST_F(QtSerialPortTest, OpensAMappedNumber) {
  QtSerialPort mapped(PortMapping{{3, line.Device()}});
  const PortResult result = mapped.Open("3", Baud);
  EXPECT_TRUE(result.Ok()) << result.detail;
  EXPECT_EQ(result.device, line.Device());
}

TEST_F(QtSerialPortTest, ASecondPortFindsTheLineInUse) {
  OpenPort();
  QtSerialPort second;
  const PortResult result = second.Open(line.Device(), Baud);
  EXPECT_EQ(result.problem, PortProblem::InUse);
  EXPECT_EQ(result.device, line.Device());
  EXPECT_FALSE(second.PortOpen());
  line.Send("x");
  EXPECT_TRUE(WaitForInput(1)) << "the first port goes on";
  port.Close();
  EXPECT_TRUE(second.Open(line.Device(), Baud).Ok());
}

TEST_F(QtSerialPortTest, ASecondNameOfTheLineIsInUseToo) {
  OpenPort();
  const ScratchFolder folder;
  const std::string link = folder.File("receiver");
  std::filesystem::create_symlink(line.Device(), link);
  QtSerialPort second;
  EXPECT_EQ(second.Open(link, Baud).problem, PortProblem::InUse);
}

TEST_F(QtSerialPortTest, AnotherProcessFindsTheLineInUse) {
  OpenPort();
  const pid_t child = fork();
  if (child == 0) {
    const int node = open(line.Device().c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
    // Root gets past the exclusive mode and is kept out by the lock; others do not get that far.
    const bool kept_out = node < 0 ? errno == EBUSY : flock(node, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    _exit(kept_out ? 0 : 1);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
}

TEST_F(QtSerialPortTest, ALockThatAnotherProgramHoldsMeansInUse) {
  const int node = open(line.Device().c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
  ASSERT_GE(node, 0);
  ASSERT_EQ(flock(node, LOCK_EX | LOCK_NB), 0);
  EXPECT_EQ(port.Open(line.Device(), Baud).problem, PortProblem::InUse);
  close(node);
  OpenPort();
}

/// Which keeps ordinary users out by itself; the administrator is let in, and must leave it as it is.
TEST_F(QtSerialPortTest, ALineThatAnotherProgramKeepsToItselfIsInUse) {
  const int node = open(line.Device().c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
  ASSERT_GE(node, 0);
  ASSERT_EQ(ioctl(node, TIOCEXCL), 0);
  EXPECT_EQ(port.Open(line.Device(), Baud).problem, PortProblem::InUse);
  int exclusive = 0;
  EXPECT_EQ(ioctl(node, TIOCGEXCL, &exclusive), 0);
  EXPECT_EQ(exclusive, 1);
  ASSERT_EQ(ioctl(node, TIOCNXCL), 0);
  close(node);
  OpenPort();
}

/// A process number that nobody has.
pid_t DeadProcess() {
  const pid_t child = fork();
  if (child == 0) _exit(0);
  int status = 0;
  waitpid(child, &status, 0);
  return child;
}

/// The lock file of another user's program.
class LockOfAnother {
 public:
  LockOfAnother(const std::string& device, pid_t process) : path_("/var/lock/LCK.." + device.substr(5)) {
    std::replace(path_.begin() + 10, path_.end(), '/', '_');
    std::ofstream(path_) << process << "\nminicom\n";
  }
  LockOfAnother(const LockOfAnother&) = delete;
  LockOfAnother& operator=(const LockOfAnother&) = delete;
  ~LockOfAnother() { std::filesystem::remove(path_); }
  [[nodiscard]] const std::string& Path() const { return path_; }

 private:
  std::string path_;
};

/// What comes of opening a port as a user without rights, who may use the line.
class LockedPort : public QtSerialPortTest {
 protected:
  void SetUp() override {
    if (geteuid() != 0) GTEST_SKIP() << "only the administrator can make a lock file of another user";
    QtSerialPortTest::SetUp();
    chmod(line.Device().c_str(), 0666);
  }
  void ExpectOnOpening(PortProblem problem, const std::string& detail) {
    const auto open = [&] {
      if (!BecomeNobody()) std::_Exit(2);
      const PortResult result = port.Open(line.Device(), Baud);
      std::_Exit(result.problem == problem && result.detail == detail ? 0 : 1);
    };
    EXPECT_EXIT(open(), ::testing::ExitedWithCode(0), "");
  }
};

TEST_F(LockedPort, NamesAStaleLockFile) {
  const pid_t gone = DeadProcess();
  const LockOfAnother lock(line.Device(), gone);
  ExpectOnOpening(PortProblem::Other, qt_messages::LockOutlived(gone, lock.Path()));
}

TEST_F(LockedPort, OfALivingProcessIsInUse) {
  const LockOfAnother lock(line.Device(), getpid());
  ExpectOnOpening(PortProblem::InUse, "");
}

TEST(LockFile, IsLookedForInAllFoldersAndHasToNameAProcess) {
  const ScratchFolder scratch;
  std::filesystem::create_directory(scratch.File("one"));
  std::filesystem::create_directory(scratch.File("two"));
  const std::vector<std::filesystem::path> folders{scratch.File("missing"), scratch.File("one"), scratch.File("two")};
  EXPECT_FALSE(FindPortLock("/dev/ttyUSB0", folders));
  const auto put = [&](const std::string& name, const std::string& text) { std::ofstream(scratch.File(name)) << text; };
  put("one/LCK..ttyUSB0", std::to_string(getpid()) + "\n");
  put("two/LCK..ttyUSB1", "nobody");
  const auto living = FindPortLock("/dev/ttyUSB0", folders);
  ASSERT_TRUE(living);
  EXPECT_FALSE(living->gone);
  EXPECT_FALSE(FindPortLock("/dev/ttyUSB1", folders));
  const pid_t gone = DeadProcess();
  put("two/LCK..ttyUSB3", std::to_string(gone) + "\nwalrim-cli\nhost\n");
  const auto stale = FindPortLock("/dev/ttyUSB3", folders);
  ASSERT_TRUE(stale);
  EXPECT_EQ(stale->path, scratch.File("two/LCK..ttyUSB3"));
  EXPECT_EQ(stale->process, gone);
  EXPECT_TRUE(stale->gone);
  EXPECT_FALSE(FindPortLock("/dev/ttyUSB2", folders));
}

TEST_F(QtSerialPortTest, AMissingPathIsMissing) {
  const PortResult result = port.Open("/dev/walrim-no-such-port", Baud);
  EXPECT_EQ(result.problem, PortProblem::Missing);
  EXPECT_EQ(result.device, "/dev/walrim-no-such-port");
  EXPECT_FALSE(port.PortOpen());
  EXPECT_EQ(port.Open("", Baud).problem, PortProblem::Missing);
}

TEST_F(QtSerialPortTest, ALinkThatLeadsNowhereIsMissing) {
  const ScratchFolder folder;
  const std::string link = folder.File("receiver");
  std::filesystem::create_symlink("/dev/walrim-no-such-port", link);
  EXPECT_EQ(port.Open(link, Baud).problem, PortProblem::Missing);
}

TEST_F(QtSerialPortTest, ANumberWithoutAPortIsMissing) {
  const std::size_t ports = SystemPorts().size();
  if (ports >= static_cast<std::size_t>(MaxPortNumber)) return;
  const PortResult result = port.Open(std::to_string(ports + 1), Baud);
  EXPECT_EQ(result.problem, PortProblem::Missing);
  EXPECT_EQ(result.device, "");
}

TEST_F(QtSerialPortTest, WhatIsNoTerminalIsRefusedAndNotWaitedFor) {
  const ScratchFolder folder;
  const std::string file = folder.File("data.grc");
  std::ofstream(file) << "kept\n";
  const std::string pipe = folder.File("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  for (const std::string& path : {file, folder.File("."), pipe, std::string("/dev/null")}) {
    const PortResult result = port.Open(path, Baud);
    EXPECT_EQ(result.problem, PortProblem::Other) << path;
    EXPECT_EQ(result.detail, qt_messages::NoSerialPort) << path;
    EXPECT_FALSE(port.PortOpen());
  }
  std::string kept;
  std::getline(std::ifstream(file) >> std::ws, kept);
  EXPECT_EQ(kept, "kept");
}

/// What a port that may not be opened tells, from a process without the right. As root the device is given to a group
/// first; others cannot do that, and take all rights away.
PortResult OpenWithoutTheRight(const std::string& device, mode_t mode) {
  QtSerialPort port;
  if (geteuid() != 0) {
    chmod(device.c_str(), 0);
    return port.Open(device, Baud);
  }
  constexpr gid_t SomeGroup = 20;
  if (chown(device.c_str(), 0, SomeGroup) != 0) return {};
  chmod(device.c_str(), mode);
  int answers[2];
  if (pipe(answers) != 0) return {};
  const pid_t child = fork();
  if (child == 0) {
    constexpr uid_t Nobody = 65534;
    if (setgroups(0, nullptr) != 0 || setgid(Nobody) != 0 || setuid(Nobody) != 0) _exit(2);
    const PortResult result = port.Open(device, Baud);
    const ssize_t written = write(answers[1], result.group.data(), result.group.size());
    _exit(written < 0 || result.problem != PortProblem::NotPermitted ? 1 : 0);
  }
  close(answers[1]);
  PortResult result;
  char buffer[256];
  for (ssize_t got = 0; (got = read(answers[0], buffer, sizeof buffer)) > 0;) {
    result.group.append(buffer, static_cast<std::size_t>(got));
  }
  close(answers[0]);
  int status = 0;
  waitpid(child, &status, 0);
  if (WIFEXITED(status) && WEXITSTATUS(status) == 0) result.problem = PortProblem::NotPermitted;
  return result;
}

TEST_F(QtSerialPortTest, APortOfOthersIsNotPermittedAndNamesTheirGroup) {
  const PortResult result = OpenWithoutTheRight(line.Device(), 0660);
  EXPECT_EQ(result.problem, PortProblem::NotPermitted);
  struct stat status {};
  ASSERT_EQ(stat(line.Device().c_str(), &status), 0);
  const group* owner = getgrgid(status.st_gid);
  const std::string name = owner != nullptr ? owner->gr_name : std::to_string(status.st_gid);
  EXPECT_EQ(result.group, geteuid() == 0 ? name : "");
}

TEST_F(QtSerialPortTest, AGroupThatMayNotUseThePortEitherIsNotNamed) {
  const PortResult result = OpenWithoutTheRight(line.Device(), 0600);
  EXPECT_EQ(result.problem, PortProblem::NotPermitted);
  EXPECT_EQ(result.group, "");
}

TEST_F(QtSerialPortTest, OrdinaryFailuresPrintNothing) {
  testing::internal::CaptureStderr();
  (void)port.Open("/dev/walrim-no-such-port", Baud);
  (void)port.Open("/dev/null", Baud);
  OpenPort();
  QtSerialPort second;
  (void)second.Open(line.Device(), Baud);
  line.Hangup();
  Write("lost");
  port.Wait(1ms);
  QtEventLoop().Yield();
  (void)port.InBufferCount();
  (void)port.Input();
  port.ClearInBuffer();
  port.ClearOutBuffer();
  port.Close();
  (void)port.Input();
  port.Output(0);
  port.Wait(0ms);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(QtSerialPortTest, AHangUpIsLookedForOnceATurnAndNotWithEveryByte) {
  OpenPort();
  const std::string bytes(500, 'x');
  line.Send(bytes);
  ASSERT_TRUE(WaitForInput(bytes.size()));
  polls = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    ASSERT_GT(port.InBufferCount(), 0U);
    ASSERT_TRUE(port.Input());
  }
  EXPECT_LE(polls, 1);

  polls = 0;
  std::string received;
  std::thread receiver([&] { received = line.Receive(bytes.size()); });
  Write(bytes);
  int turns = 0;
  for (; port.OutBufferCount() > 0; ++turns)
    port.Wait(2ms);
  receiver.join();
  EXPECT_EQ(received, bytes);
  EXPECT_LE(polls, 4 * (turns + 1)) << turns;

  polls = 0;
  for (turns = 0; turns < 20 && !port.LineLost(); ++turns) {
    EXPECT_EQ(port.InBufferCount(), 0U);
    port.Wait(1ms);
  }
  EXPECT_LE(polls, turns + 1) << "the wait itself tells";
}

TEST_F(QtSerialPortTest, AHangUpEndsAWaitAndIsThenKnown) {
  OpenPort();
  line.Hangup();
  const auto start = steady_clock::now();
  port.Wait(5s);
  EXPECT_LT(steady_clock::now() - start, 4s);
  Write("anyone there?");
  EXPECT_EQ(port.OutBufferCount(), 0U);
  EXPECT_EQ(port.Input(), std::nullopt);
  EXPECT_TRUE(port.LineLost());
}

TEST_F(QtSerialPortTest, ALostLineIsSilentAndSwallowsWhatIsWritten) {
  OpenPort();
  EXPECT_FALSE(port.LineLost());
  line.Hangup();
  EXPECT_TRUE(port.LineLost());
  Write("anyone there?");
  EXPECT_EQ(port.OutBufferCount(), 0U);
  EXPECT_EQ(port.InBufferCount(), 0U);
  EXPECT_EQ(port.Input(), std::nullopt);
  EXPECT_TRUE(port.PortOpen()) << "it is closed by its owner";
  const auto start = steady_clock::now();
  port.Wait(20ms);
  EXPECT_GE(steady_clock::now() - start, 20ms) << "who polls a lost line must not spin";
  EXPECT_TRUE(port.LineLost());
  port.Close();
  EXPECT_TRUE(port.LineLost()) << "why the operation ended can still be asked";
}

TEST_F(QtSerialPortTest, ALineLostWithBytesUnsentHasNoneLeft) {
  OpenPort();
  Write(std::string(300'000, 'w'));
  ASSERT_GT(port.OutBufferCount(), 0U);
  line.Hangup();
  EXPECT_EQ(port.OutBufferCount(), 0U);
}

TEST_F(QtSerialPortTest, ALineLostWhileYieldingIsNoticed) {
  OpenPort();
  line.Hangup();
  QtEventLoop loop;
  for (int i = 0; i < 10; ++i)
    loop.Yield();
  EXPECT_TRUE(port.LineLost());
  EXPECT_EQ(port.InBufferCount(), 0U);
}

TEST_F(QtSerialPortTest, ALostLineDoesNotStayLostForTheNextOpen) {
  OpenPort();
  line.Hangup();
  EXPECT_TRUE(port.LineLost());
  const PseudoTerminal other;
  ASSERT_TRUE(port.Open(other.Device(), Baud).Ok());
  EXPECT_FALSE(port.LineLost());
  other.Send("x");
  EXPECT_TRUE(WaitForInput(1));
}

TEST_F(QtSerialPortTest, AClosedPortIsSilent) {
  EXPECT_EQ(port.InBufferCount(), 0U);
  EXPECT_EQ(port.Input(), std::nullopt);
  port.Output(1);
  EXPECT_EQ(port.OutBufferCount(), 0U);
  port.ClearInBuffer();
  port.ClearOutBuffer();
  EXPECT_FALSE(port.LineLost());
  OpenPort();
  EXPECT_EQ(port.OutBufferCount(), 0U);
  Write("a");
  EXPECT_EQ(port.OutBufferCount(), 0U);
  EXPECT_EQ(line.Receive(1), "a") << "what was written to a closed port is gone";
}

}  // namespace
}  // namespace walrim
