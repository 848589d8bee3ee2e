// Files, looked at, read and written.
#include "app/FileStore.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "WholeFiles.h"
#include "support/Processes.h"

namespace walrim {
namespace {

namespace fs = std::filesystem;

class FileStoreTest : public ::testing::Test {
 protected:
  [[nodiscard]] std::string Path(std::string_view name) const { return folder.Path(name); }

  TemporaryFolder folder;
};

TEST_F(FileStoreTest, StandardInputMayBeAPipe) {
  int pipe[2];
  ASSERT_EQ(::pipe2(pipe, O_CLOEXEC), 0);
  ASSERT_EQ(::write(pipe[1], "WPT,D", 5), 5);
  ::close(pipe[1]);
  const int own_input = ::dup(STDIN_FILENO);
  ::dup2(pipe[0], STDIN_FILENO);
  ::close(pipe[0]);
  const auto bytes = ReadWholeFile("-");
  if (own_input >= 0) ::dup2(own_input, STDIN_FILENO);
  ::close(own_input);
  EXPECT_EQ(bytes, "WPT,D");
}

TEST_F(FileStoreTest, StandardInputThatIsClosedIsSaidWithItsReason) {
  const auto read_it = [this] {
    ::close(STDIN_FILENO);
    FileProblem problem;
    const bool read = ReadWholeFile("-", &problem).has_value();
    std::_Exit(!read && problem.detail == std::strerror(EBADF) ? 0 : 1);
  };
  EXPECT_EXIT(read_it(), ::testing::ExitedWithCode(0), "");
}

TEST_F(FileStoreTest, WritingReplacesTheOldFileAndKeepsItsMode) {
  PutFile(Path("a"), "old");
  ::chmod(Path("a").c_str(), 0640);
  EXPECT_FALSE(WriteWholeFile(Path("a"), "new"));
  EXPECT_EQ(FileContents(Path("a")), "new");
  EXPECT_EQ(fs::status(Path("a")).permissions(), static_cast<fs::perms>(0640));
  EXPECT_EQ(folder.Names().size(), 1U);
}

TEST_F(FileStoreTest, AFullDiskLeavesTheOldFileAndNothingBesides) {
  // Under a file size limit a write fails as on a full disk.
  PutFile(Path("a"), "old");
  const auto write_under_limit = [this] {
    ::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    limit.rlim_cur = 1000;
    limit.rlim_max = 1000;
    ::setrlimit(RLIMIT_FSIZE, &limit);
    const bool failed = WriteWholeFile(Path("a"), std::string(100000, 'x')).has_value();
    std::_Exit(failed && FileContents(Path("a")) == "old" && folder.Names().size() == 1 ? 0 : 1);
  };
  EXPECT_EXIT(write_under_limit(), ::testing::ExitedWithCode(0), "");
}

TEST_F(FileStoreTest, ASymbolicLinkKeepsPointingAtTheFileThatIsWritten) {
  PutFile(Path("real"), "old");
  fs::create_symlink(Path("real"), Path("link"));
  EXPECT_FALSE(WriteWholeFile(Path("link"), "new"));
  EXPECT_TRUE(fs::is_symlink(Path("link")));
  EXPECT_EQ(FileContents(Path("real")), "new");
}

TEST_F(FileStoreTest, ADeviceIsWrittenAndNotReplaced) {
  EXPECT_FALSE(WriteWholeFile("/dev/null", "gone"));
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
  EXPECT_TRUE(WriteWholeFile("/dev/full", "never"));  // a device that is always full
}

TEST_F(FileStoreTest, AFileThatCannotBeLookedAtMayExist) {
  fs::create_directory(Path("locked"));
  PutFile(Path("locked/a"), "old");
  ::chmod(folder.Path("").c_str(), 0755);
  ::chmod(Path("locked").c_str(), 0);
  const auto look = [this] {
    const bool right = BecomeNobody() && FileExists(Path("locked/a")) && FileExists(Path("locked/b")) &&
                       !FileExists(Path("a")) && !FileExists(Path("missing/a"));
    std::_Exit(right ? 0 : 1);
  };
  EXPECT_EXIT(look(), ::testing::ExitedWithCode(0), "");
  ::chmod(Path("locked").c_str(), 0700);
  EXPECT_FALSE(FileExists(Path("locked/a/b")));
}

TEST_F(FileStoreTest, AFolderCannotBeWritten) {
  EXPECT_TRUE(WriteWholeFile(folder.Path(""), "x"));
  EXPECT_TRUE(CheckWritable(folder.Path("")));
  EXPECT_TRUE(CheckWritable(Path("missing/a")));
  EXPECT_FALSE(CheckWritable(Path("a")));
  EXPECT_EQ(folder.Names().size(), 0U);
}

TEST_F(FileStoreTest, ReadingAFileThatIsTooLargeIsRefused) {
  PutFile(Path("a"), "");
  fs::resize_file(Path("a"), LargestFile + 1);
  FileProblem problem;
  EXPECT_FALSE(ReadWholeFile(Path("a"), &problem));
  EXPECT_EQ(problem.detail, std::strerror(EFBIG));
}

}  // namespace
}  // namespace walrim
