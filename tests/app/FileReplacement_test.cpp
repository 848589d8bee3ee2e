// Files are written whole or not at all, whatever happens meanwhile: to the disk, the folder, the program or the file.
#include "app/FileReplacement.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <sched.h>
#include <signal.h>
#include <string>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "AppTest.h"
#include "WholeFiles.h"
#include "app/FileStore.h"

namespace walrim {
namespace {

namespace fs = std::filesystem;
using Strings = std::vector<std::string>;

constexpr std::size_t Large = 3U * 1024U * 1024U;
/// Exit status of a child that found that it may not mount.
constexpr int MayNotMount = 77;

std::string Old() {
  return std::string(Large, 'o');
}
std::string New() {
  return std::string(Large + 12345, 'n');
}

/// A child process that runs a function, whose result is its exit status.
class Child {
 public:
  explicit Child(const std::function<int()>& run) : pid_(::fork()) {
    if (pid_ == 0) std::_Exit(run());
  }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;
  ~Child() { Kill(); }

  void Kill() {
    if (pid_ <= 0) return;
    ::kill(pid_, SIGKILL);
    static_cast<void>(Status());
  }
  /// Waits for its end: the exit status, or 128 and the signal.
  int Status() {
    int status = 0;
    ::waitpid(pid_, &status, 0);
    pid_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  }
  [[nodiscard]] bool Runs() const {
    siginfo_t info{};
    return ::waitid(P_PID, static_cast<id_t>(pid_), &info, WEXITED | WNOHANG | WNOWAIT) == 0 && info.si_pid == 0;
  }

 private:
  pid_t pid_;
};

int StatusOf(const std::function<int()>& run) {
  return Child(run).Status();
}

/// Files cannot grow beyond a limit while this lives: a write that reaches it fails as on a full disk.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(std::size_t bytes) : handler_(::signal(SIGXFSZ, SIG_IGN)) {
    ::getrlimit(RLIMIT_FSIZE, &before_);
    rlimit limit = before_;
    limit.rlim_cur = bytes;
    ::setrlimit(RLIMIT_FSIZE, &limit);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;
  ~FileSizeLimit() {
    ::setrlimit(RLIMIT_FSIZE, &before_);
    ::signal(SIGXFSZ, handler_);
  }

 private:
  rlimit before_{};
  sighandler_t handler_;
};

/// Makes a namespace of mounts for this process alone. A user who may not mount gets one of users with it, in which
/// the user is the same and may.
bool LeaveCommonMounts() {
  const std::string uid = std::to_string(::geteuid());
  const std::string gid = std::to_string(::getegid());
  if (::geteuid() == 0) return ::unshare(CLONE_NEWNS) == 0;
  if (::unshare(CLONE_NEWNS | CLONE_NEWUSER) != 0) return false;
  PutFile("/proc/self/setgroups", "deny");
  PutFile("/proc/self/uid_map", uid + " " + uid + " 1");
  PutFile("/proc/self/gid_map", gid + " " + gid + " 1");
  return true;
}

/// Puts an empty disk with options over a folder, for this process alone.
bool MountDisk(const std::string& folder, const char* options) {
  return LeaveCommonMounts() && ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
         ::mount("none", folder.c_str(), "tmpfs", 0, options) == 0;
}

fs::perms RightsOf(const std::string& path) {
  return fs::symlink_status(path).permissions();
}

/// A comparison that does not print megabytes.
bool Holds(const std::string& path, const std::string& contents) {
  return FileContents(path) == contents;
}

bool Fill(const FileReplacement& file, std::string_view bytes) {
  return ::write(file.Get(), bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
}

class FileAtomicity : public ::testing::Test {
 protected:
  FileAtomicity() { PutFile(path, Old()); }

  [[nodiscard]] bool IsOldOrNew() const {
    const std::string contents = FileContents(path);
    return contents == Old() || contents == New();
  }
  /// Whether the folder's disk knows files without a name.
  [[nodiscard]] bool KnowsNamelessFiles() const {
    const Descriptor file(::open(folder.Path("").c_str(), O_TMPFILE | O_WRONLY, 0600));
    return file.Get() >= 0;
  }
  /// Writes the two contents in turn until it is killed, and a byte into a pipe after each.
  [[nodiscard]] int WriteForever(int pipe = -1) const {
    const std::string contents[] = {New(), Old()};
    for (std::size_t i = 0; !WriteWholeFile(path, contents[i % 2]).has_value(); ++i) {
      if (pipe >= 0 && ::write(pipe, "+", 1) != 1) return 2;
    }
    return 1;
  }

  TemporaryFolder folder;
  std::string path = folder.Path("data.grc");
};

// ---- A full disk

class FullDisk : public FileAtomicity, public ::testing::WithParamInterface<std::size_t> {};

TEST_P(FullDisk, LeavesTheOldFileAndNothingBesides) {
  std::optional<FileProblem> problem;
  {
    const FileSizeLimit limit(GetParam());
    problem = WriteWholeFile(path, New());
  }
  ASSERT_TRUE(problem);
  EXPECT_EQ(problem->detail, std::strerror(EFBIG));
  EXPECT_TRUE(Holds(path, Old()));
  EXPECT_EQ(folder.Names(), Strings{"data.grc"});
}

TEST_P(FullDisk, MakesNoFileWhereNoneWas) {
  fs::remove(path);
  {
    const FileSizeLimit limit(GetParam());
    EXPECT_TRUE(WriteWholeFile(path, New()));
  }
  EXPECT_EQ(folder.Names(), Strings{});
}

INSTANTIATE_TEST_SUITE_P(AtByte, FullDisk, ::testing::Values(0, 1, Large / 2, Large, Large + 12344));

TEST_F(FileAtomicity, ADiskThatTakesTheLastByteIsNotFull) {
  {
    const FileSizeLimit limit(New().size());
    EXPECT_FALSE(WriteWholeFile(path, New()));
  }
  EXPECT_TRUE(Holds(path, New()));
}

TEST_F(FileAtomicity, ARealDiskThatIsFullSaysSoAndKeepsTheOldFile) {
  const int status = StatusOf([this] {
    if (!MountDisk(folder.Path(""), "size=4m")) return MayNotMount;
    PutFile(path, Old());
    const auto problem = WriteWholeFile(path, New());
    if (!problem || problem->detail != std::strerror(ENOSPC)) return 1;
    return FileContents(path) == Old() && folder.Names() == Strings{"data.grc"} ? 0 : 2;
  });
  if (status == MayNotMount) GTEST_SKIP() << "this user may not mount a disk of a given size";
  EXPECT_EQ(status, 0);
}

// ---- A folder that cannot be written to, or is gone

TEST_F(FileAtomicity, AReadOnlyFolderKeepsTheOldFile) {
  ::chmod(folder.Path("").c_str(), 0555);
  ::chmod(path.c_str(), 0666);
  const int status = StatusOf([this] {
    if (!BecomeNobody()) return 2;
    const auto problem = WriteWholeFile(path, New());
    return problem && problem->detail == std::strerror(EACCES) && CheckWritable(path).has_value() ? 0 : 1;
  });
  ::chmod(folder.Path("").c_str(), 0755);
  EXPECT_EQ(status, 0);
  EXPECT_TRUE(Holds(path, Old()));
  EXPECT_EQ(folder.Names(), Strings{"data.grc"});
}

TEST_F(FileAtomicity, AFolderThatTakesNoFilesIsSaidToEveryUser) {
  const auto problem = WriteWholeFile("/proc/data.grc", "new");
  ASSERT_TRUE(problem);
  EXPECT_FALSE(problem->detail.empty());
  EXPECT_FALSE(FileExists("/proc/data.grc"));
}

TEST_F(FileAtomicity, AReadOnlyDiskIsSaidToEveryUser) {
  const int status = StatusOf([this] {
    if (!MountDisk(folder.Path(""), "size=8m")) return MayNotMount;
    PutFile(path, Old());
    if (::mount(nullptr, folder.Path("").c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr) != 0) return MayNotMount;
    const auto problem = WriteWholeFile(path, New());
    if (!problem || problem->detail != std::strerror(EROFS) || !CheckWritable(path)) return 1;
    return FileContents(path) == Old() ? 0 : 2;
  });
  if (status == MayNotMount) GTEST_SKIP() << "this user may not mount a read-only disk";
  EXPECT_EQ(status, 0);
}

TEST_F(FileAtomicity, AFileThatIsWriteProtectedIsNotReplaced) {
  ::chmod(folder.Path("").c_str(), 0777);
  ::chmod(path.c_str(), 0444);
  const int status = StatusOf([this] {
    if (!BecomeNobody()) return 2;
    const auto problem = WriteWholeFile(path, New());
    return problem && problem->detail == std::strerror(EACCES) && CheckWritable(path).has_value() ? 0 : 1;
  });
  EXPECT_EQ(status, 0);
  EXPECT_TRUE(Holds(path, Old()));
}

TEST_F(FileAtomicity, AFolderThatVanishedAfterTheCheckIsSaidAndNotMadeAgain) {
  fs::create_directory(folder.Path("deep"));
  const std::string deep = folder.Path("deep/data.grc");
  ASSERT_FALSE(CheckWritable(deep));
  fs::remove(folder.Path("deep"));
  const auto problem = WriteWholeFile(deep, New());
  ASSERT_TRUE(problem);
  EXPECT_EQ(problem->detail, std::strerror(ENOENT));
  EXPECT_EQ(folder.Names(), Strings{"data.grc"});
}

TEST_F(FileAtomicity, AFolderThatTurnedIntoAFileAfterTheCheckIsSaid) {
  fs::create_directory(folder.Path("deep"));
  ASSERT_FALSE(CheckWritable(folder.Path("deep/data.grc")));
  fs::remove(folder.Path("deep"));
  PutFile(folder.Path("deep"), "file");
  EXPECT_TRUE(WriteWholeFile(folder.Path("deep/data.grc"), New()));
  EXPECT_EQ(FileContents(folder.Path("deep")), "file");
}

// ---- A new file on its way

class Replacement : public FileAtomicity, public ::testing::WithParamInterface<WhileFilled> {
 protected:
  /// Files of ours that a process may leave when it is killed while it writes.
  [[nodiscard]] std::size_t MayStay() const {
    return GetParam() == WhileFilled::Nameless && KnowsNamelessFiles() ? 0 : 1;
  }
};

INSTANTIATE_TEST_SUITE_P(File, Replacement, ::testing::Values(WhileFilled::Nameless, WhileFilled::Hidden),
                         [](const auto& kind) { return kind.param == WhileFilled::Hidden ? "Hidden" : "Nameless"; });

TEST_P(Replacement, TakesThePlaceOfTheOldFileInOneStep) {
  FileReplacement file(path, GetParam());
  ASSERT_TRUE(Fill(file, New()));
  EXPECT_TRUE(Holds(path, Old()));
  EXPECT_TRUE(file.TakePlace());
  EXPECT_TRUE(Holds(path, New()));
  EXPECT_EQ(folder.Names(), Strings{"data.grc"});
}

TEST_P(Replacement, IsGoneWhenItIsGivenUp) {
  {
    FileReplacement file(path, GetParam());
    ASSERT_TRUE(Fill(file, New()));
    EXPECT_EQ(folder.Names().size(), 1 + MayStay());
  }
  EXPECT_TRUE(Holds(path, Old()));
  EXPECT_EQ(folder.Names(), Strings{"data.grc"});
}

TEST_P(Replacement, WhoseFolderVanishesMeanwhileFails) {
  FileReplacement file(path, GetParam());
  ASSERT_TRUE(Fill(file, New()));
  fs::remove_all(folder.Path(""));
  EXPECT_FALSE(file.TakePlace());
  EXPECT_EQ(errno, ENOENT);
  EXPECT_FALSE(FileExists(folder.Path("")));
}

TEST_P(Replacement, OfAProcessThatDiesAtAByteLeavesTheOldFile) {
  for (const std::size_t byte : {std::size_t{1}, Large / 2, Large + 12344}) {
    const int status = StatusOf([this, byte] {
      const rlimit no_core{};
      ::setrlimit(RLIMIT_CORE, &no_core);
      const FileSizeLimit limit(byte);
      ::signal(SIGXFSZ, SIG_DFL);
      const FileReplacement file(path, GetParam());
      // The first write takes what fits, the second one kills.
      while (file.Get() >= 0 && ::write(file.Get(), New().data(), New().size()) > 0) {
      }
      return 0;
    });
    EXPECT_EQ(status, 128 + SIGXFSZ);
    EXPECT_TRUE(Holds(path, Old()));
    fs::rename(path, folder.Path("old"));
    EXPECT_EQ(folder.Names().size(), 1 + MayStay());
    fs::rename(folder.Path("old"), path);
    for (const std::string& name : folder.Names()) {
      if (name.starts_with(".walrim-")) fs::remove(folder.Path(name));
    }
  }
}

TEST_P(Replacement, IsNeverOpenToMoreThanTheOldFileWas) {
  ::chmod(path.c_str(), 0600);
  const FileReplacement file(path, GetParam());
  struct stat status {};
  ASSERT_EQ(::fstat(file.Get(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0600U);
}

// ---- Several processes

TEST_F(FileAtomicity, AKilledProgramLeavesOneOfTheTwoContentsWhole) {
  constexpr int Kills = 40;
  int seen_new = 0;
  for (int kill = 0; kill < Kills; ++kill) {
    int done[2];
    ASSERT_EQ(::pipe2(done, O_CLOEXEC), 0);
    Child writer([&] { return WriteForever(done[1]); });
    ::close(done[1]);
    char byte = 0;
    EXPECT_EQ(::read(done[0], &byte, 1), 1);
    // From here on the moment moves on from kill to kill, through one replacement and into the next ones.
    for (int look = 0; look < kill * 200; ++look)
      static_cast<void>(FileExists(path));
    EXPECT_TRUE(writer.Runs());
    writer.Kill();
    ::close(done[0]);
    ASSERT_TRUE(IsOldOrNew()) << "kill " << kill;
    if (FileContents(path) == New()) ++seen_new;
    ASSERT_LE(folder.Names().size(), 2U);
    for (const std::string& name : folder.Names()) {
      EXPECT_TRUE(name == "data.grc" || name.starts_with(".walrim-")) << name;
      if (name != "data.grc") fs::remove(folder.Path(name));
    }
  }
  EXPECT_GT(seen_new, 0);
}

TEST_F(FileAtomicity, AReaderSeesOneWholeContentDuringReplacements) {
  const Child writer([this] { return WriteForever(); });
  int changes = 0;
  bool was_old = true;
  while (changes < 20) {
    ASSERT_TRUE(writer.Runs());
    const auto contents = ReadWholeFile(path);
    ASSERT_TRUE(contents);
    const bool is_old = *contents == Old();
    ASSERT_TRUE(is_old || *contents == New());
    if (is_old != was_old) ++changes;
    was_old = is_old;
  }
}

TEST_F(FileAtomicity, TwoExportsAtOnceLeaveOneOfTheTwoWholeAndNothingBesides) {
  const auto write_often = [this](const std::string& contents) {
    for (int i = 0; i < 30; ++i) {
      if (WriteWholeFile(path, contents)) return 1;
    }
    return 0;
  };
  Child one([&] { return write_often(Old()); });
  Child other([&] { return write_often(New()); });
  while (one.Runs() && other.Runs())
    ASSERT_TRUE(IsOldOrNew());
  EXPECT_EQ(one.Status(), 0);
  EXPECT_EQ(other.Status(), 0);
  EXPECT_TRUE(IsOldOrNew());
  EXPECT_EQ(folder.Names(), Strings{"data.grc"});
}

// ---- Owner and rights

TEST_F(FileAtomicity, TheRightsOfTheOldFileStay) {
  for (const mode_t mode : {0600U, 0640U, 0666U, 0755U}) {
    ::chmod(path.c_str(), mode);
    ASSERT_FALSE(WriteWholeFile(path, New()));
    EXPECT_EQ(RightsOf(path), static_cast<fs::perms>(mode));
  }
}

TEST_F(FileAtomicity, ANewFileGetsTheRightsThatTheUserGivesNewFiles) {
  for (const mode_t mask : {0022U, 0077U}) {
    const mode_t before = ::umask(mask);
    const std::string fresh = folder.Path("fresh");
    EXPECT_FALSE(WriteWholeFile(fresh, New()));
    ::umask(before);
    EXPECT_EQ(RightsOf(fresh), static_cast<fs::perms>(0666 & ~mask));
    fs::remove(fresh);
  }
}

TEST_F(FileAtomicity, TheOwnerOfTheOldFileStays) {
  // Only the administrator's export could change it.
  const uid_t owner = ::geteuid() == 0 ? Nobody : ::geteuid();
  ASSERT_EQ(::chown(path.c_str(), owner, ::getegid()), 0);
  ASSERT_FALSE(WriteWholeFile(path, New()));
  struct stat status {};
  ASSERT_EQ(::stat(path.c_str(), &status), 0);
  EXPECT_EQ(status.st_uid, owner);
  EXPECT_EQ(status.st_gid, ::getegid());
}

TEST_F(FileAtomicity, RightsOfAGroupThatCannotBeKeptAreNotGivenToAnother) {
  if (::geteuid() != 0) GTEST_SKIP() << "only the administrator can make a file of another group";
  ::chmod(folder.Path("").c_str(), 0777);
  ::chmod(path.c_str(), 0666);
  ASSERT_EQ(StatusOf([this] { return BecomeNobody() && !WriteWholeFile(path, New()) ? 0 : 1; }), 0);
  EXPECT_TRUE(Holds(path, New()));
  EXPECT_EQ(RightsOf(path), static_cast<fs::perms>(0606));
}

// ---- Links

TEST_F(FileAtomicity, AChainOfLinksIntoAnotherFolderKeepsPointingAtTheFileThatIsWritten) {
  fs::create_directory(folder.Path("other"));
  fs::create_symlink("../data.grc", folder.Path("other/second"));
  fs::create_symlink("other/second", folder.Path("first"));
  EXPECT_FALSE(WriteWholeFile(folder.Path("first"), New()));
  EXPECT_EQ(fs::read_symlink(folder.Path("first")), "other/second");
  EXPECT_EQ(fs::read_symlink(folder.Path("other/second")), "../data.grc");
  EXPECT_TRUE(Holds(path, New()));
  EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(path)));
}

TEST_F(FileAtomicity, ALinkToNothingStaysAndItsFileIsMade) {
  fs::create_symlink("fresh", folder.Path("link"));
  EXPECT_FALSE(WriteWholeFile(folder.Path("link"), New()));
  EXPECT_TRUE(fs::is_symlink(folder.Path("link")));
  EXPECT_TRUE(Holds(folder.Path("fresh"), New()));
}

TEST_F(FileAtomicity, ALinkIntoAFolderThatIsNotThereIsSaidAndStays) {
  fs::create_symlink("missing/fresh", folder.Path("link"));
  EXPECT_TRUE(WriteWholeFile(folder.Path("link"), New()));
  EXPECT_TRUE(fs::is_symlink(folder.Path("link")));
}

TEST_F(FileAtomicity, LinksThatLeadInACircleAreSaidAndStay) {
  fs::create_symlink("two", folder.Path("one"));
  fs::create_symlink("one", folder.Path("two"));
  const auto problem = WriteWholeFile(folder.Path("one"), New());
  ASSERT_TRUE(problem);
  EXPECT_EQ(problem->detail, std::strerror(ELOOP));
  EXPECT_TRUE(CheckWritable(folder.Path("one")));
  EXPECT_TRUE(fs::is_symlink(folder.Path("one")));
  EXPECT_TRUE(fs::is_symlink(folder.Path("two")));
}

class SharedFolder : public FileAtomicity {
 protected:
  void SetUp() override {
    if (::geteuid() != 0) GTEST_SKIP() << "only the administrator can make a link of another user";
    fs::create_directory(folder.Path("shared"));
    ::chmod(folder.Path("shared").c_str(), 01777);
    ASSERT_EQ(::chown(folder.Path("shared").c_str(), Nobody - 1, Nobody - 1), 0);
    fs::create_symlink("../data.grc", link);
  }
  /// Gives the link to a user.
  void Own(uid_t user) { ASSERT_EQ(::lchown(link.c_str(), user, user), 0); }

  std::string link = folder.Path("shared/link");
};

TEST_F(SharedFolder, ALinkOfAnotherUserIsNotFollowed) {
  Own(Nobody);
  for (const std::string& at : {link, folder.Path("own")}) {
    EXPECT_TRUE(FileExists(at));
    const auto problem = WriteWholeFile(at, New());
    ASSERT_TRUE(problem);
    EXPECT_EQ(problem->detail, std::string(messages::ForeignLink));
    ASSERT_TRUE(CheckWritable(at));
    EXPECT_EQ(CheckWritable(at)->detail, problem->detail);
    EXPECT_TRUE(Holds(path, Old()));
    EXPECT_TRUE(fs::is_symlink(link));
    if (at == link) fs::create_symlink("shared/link", folder.Path("own"));
  }
}

TEST_F(SharedFolder, ALinkOfAnotherUserToNothingMakesNoFile) {
  fs::remove(path);
  Own(Nobody);
  EXPECT_TRUE(WriteWholeFile(link, New()));
  EXPECT_FALSE(fs::exists(path));
}

TEST_F(SharedFolder, OnesOwnLinkAndOneOfTheFoldersOwnerAreFollowed) {
  for (const uid_t owner : {uid_t{0}, Nobody - 1}) {
    Own(owner);
    PutFile(path, Old());
    EXPECT_FALSE(WriteWholeFile(link, New()));
    EXPECT_TRUE(Holds(path, New()));
  }
}

TEST_F(SharedFolder, ALinkOfAnotherUserInAFolderThatIsNotSharedIsFollowed) {
  Own(Nobody);
  ::chmod(folder.Path("shared").c_str(), 0755);
  EXPECT_FALSE(WriteWholeFile(link, New()));
  EXPECT_TRUE(Holds(path, New()));
}

TEST_F(FileAtomicity, AnotherHardLinkKeepsTheOldContents) {
  fs::create_hard_link(path, folder.Path("backup"));
  EXPECT_FALSE(WriteWholeFile(path, New()));
  EXPECT_TRUE(Holds(path, New()));
  EXPECT_TRUE(Holds(folder.Path("backup"), Old()));
}

// ---- The commands

/// Exports over an old file, with AutoDelete, in one output type.
class ExportThatFails : public AppTest, public ::testing::WithParamInterface<FormatId> {
 protected:
  void SetUp() override {
    std::string lines = "RTH\t1\tWALK\r\nRTP\tD\tWGS84\tA\t35\t139\r\nTRH\t1\r\nTRP\tD\tWGS84\t35\t139\r\n";
    for (std::size_t i = 0; i < Waypoints; ++i)
      lines += "WPT\tD\tWGS84\tTAKAO\t35.5\t139.25\r\n";
    Hold(lines);
    path = Put("out", "old");
    main.State().Settings().format = GetParam();
    main.State().Settings().auto_delete = true;
    desktop.save_path = path;
  }
  /// That everything is as it was before the export.
  void ExpectUntouched() {
    EXPECT_TRUE(main.State().Settings().auto_delete);
    EXPECT_EQ(Held(), (Counts{Waypoints, 1, 1}));
    EXPECT_EQ(Idents(), Strings(Waypoints, "TAKAO"));
    EXPECT_EQ(Data().Routes().at(0).points.size(), 1U);
    EXPECT_EQ(Data().TrackPointCount(), 1U);
    EXPECT_FALSE(main.State().Busy());
    EXPECT_EQ(desktop.caption, "");
  }
  void ExpectSaid(const std::string& at, int error_number) {
    EXPECT_EQ(desktop.messages, Strings{messages::WriteProblem(at, std::strerror(error_number))});
  }

  /// Enough for the export to let the event loop turn once.
  static constexpr std::size_t Waypoints = 70;
  std::string path;
};

INSTANTIATE_TEST_SUITE_P(OutputType, ExportThatFails,
                         ::testing::Values(FormatId::Standard, FormatId::WptPlus, FormatId::Script),
                         [](const auto& type) { return std::string(FormatOf(type.param).ending); });

TEST_P(ExportThatFails, OnAFullDiskLeavesDataAndOldFileAndSaysSo) {
  Outcome outcome{};
  {
    const FileSizeLimit limit(10);
    outcome = main.Exports().Export();
  }
  EXPECT_EQ(outcome, Outcome::Refused);
  ASSERT_EQ(desktop.messages.size(), 1U);
  EXPECT_EQ(desktop.messages[0], messages::WriteProblem(path, std::strerror(EFBIG)));
  ExpectUntouched();
  EXPECT_EQ(FileContents(path), "old");
  EXPECT_EQ(folder.Names(), Strings{"out"});
}

TEST_P(ExportThatFails, OnADeviceThatIsFullLeavesTheDataAndSaysSo) {
  desktop.save_path = "/dev/full";
  EXPECT_EQ(main.Exports().Export(), Outcome::Refused);
  ExpectSaid("/dev/full", ENOSPC);
  ExpectUntouched();
}

TEST_P(ExportThatFails, IntoAFolderThatVanishedBehindTheDialogLeavesTheDataAndSaysSo) {
  std::filesystem::create_directory(Path("usb"));
  desktop.save_path = Path("usb/out");
  loop.on_yield = [this] { std::filesystem::remove(Path("usb")); };
  EXPECT_EQ(main.Exports().Export(), Outcome::Refused);
  ExpectSaid(Path("usb/out"), ENOENT);
  ExpectUntouched();
  EXPECT_EQ(folder.Names(), Strings{"out"});
}

TEST_P(ExportThatFails, OverAFolderLeavesTheDataAndSaysSo) {
  std::filesystem::create_directory(Path("taken"));
  desktop.save_path = Path("taken");
  EXPECT_EQ(main.Exports().Export(), Outcome::Refused);
  ExpectSaid(Path("taken"), EISDIR);
  ExpectUntouched();
}

TEST_P(ExportThatFails, WorksOnceThereIsRoomAgainAndThenDeletes) {
  {
    const FileSizeLimit limit(10);
    ASSERT_EQ(main.Exports().Export(), Outcome::Refused);
  }
  Forget();
  EXPECT_EQ(main.Exports().Export(), Outcome::Done);
  EXPECT_EQ(desktop.messages, Strings{});
  EXPECT_NE(FileContents(path), "old");
  EXPECT_EQ(Held(), (Counts{std::nullopt, std::nullopt, std::nullopt}));
}

}  // namespace
}  // namespace walrim
