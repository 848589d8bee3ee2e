#include "app/RecoveryFiles.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <sys/stat.h>
#include <vector>

#include "support/Processes.h"

namespace walrim {
namespace {

class RecoveryFilesTest : public testing::Test {
 protected:
  [[nodiscard]] std::string Folder() const { return folder.Path("state/walrim"); }
  [[nodiscard]] std::vector<std::string> Names() const {
    std::vector<std::string> names;
    if (!std::filesystem::exists(Folder())) return names;
    for (const auto& entry : std::filesystem::directory_iterator(Folder()))
      names.push_back(entry.path().filename().string());
    std::ranges::sort(names);
    return names;
  }
  static mode_t ModeOf(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? status.st_mode & 0777U : 0;
  }
  using Strings = std::vector<std::string>;

  TemporaryFolder folder;
};

TEST_F(RecoveryFilesTest, NothingIsThereBeforeSomethingIsKept) {
  const RecoveryFiles files(Folder());
  EXPECT_TRUE(files.Left().empty());
  EXPECT_FALSE(std::filesystem::exists(Folder()));
}

TEST_F(RecoveryFilesTest, OnlyTheUserMayReadThem) {
  RecoveryFiles files(Folder());
  EXPECT_FALSE(files.Keep("one"));
  EXPECT_FALSE(files.Keep("two"));
  EXPECT_EQ(FileContents(Folder() + "/recovery-1.txt"), "two");
  EXPECT_EQ(ModeOf(Folder() + "/recovery-1.txt"), 0600U);
  EXPECT_EQ(ModeOf(Folder()), 0700U);
  files.Remove();
  EXPECT_EQ(Names(), Strings{});
}

TEST_F(RecoveryFilesTest, AProgramThatRunsHasLeftNothing) {
  RecoveryFiles files(Folder());
  EXPECT_FALSE(files.Keep("one"));
  EXPECT_TRUE(files.Left().empty());
  EXPECT_TRUE(RecoveryFiles(Folder()).Left().empty());
}

TEST_F(RecoveryFilesTest, TwoProgramsHaveTwo) {
  RecoveryFiles files(Folder());
  RecoveryFiles others(Folder());
  EXPECT_FALSE(files.Keep("one"));
  EXPECT_FALSE(others.Keep("two"));
  EXPECT_EQ(FileContents(Folder() + "/recovery-1.txt"), "one");
  EXPECT_EQ(FileContents(Folder() + "/recovery-2.txt"), "two");
  files.Remove();
  EXPECT_EQ(Names(), (Strings{"recovery-2.lock", "recovery-2.txt"}));
}

TEST_F(RecoveryFilesTest, WhatIsLeftIsFoundOnceAndNotWrittenOver) {
  EXPECT_FALSE(std::make_unique<RecoveryFiles>(Folder())->Keep("left"));
  RecoveryFiles files(Folder());
  EXPECT_FALSE(files.Keep("mine"));
  {
    const std::vector<LeftRecovery> left = files.Left();
    ASSERT_EQ(left.size(), 1U);
    EXPECT_EQ(left[0].Text(), "left");
    EXPECT_TRUE(left[0].Written());
    EXPECT_TRUE(RecoveryFiles(Folder()).Left().empty()) << "another program that starts just now is not asked too";
  }
  std::vector<LeftRecovery> left = RecoveryFiles(Folder()).Left();
  ASSERT_EQ(left.size(), 1U) << "nothing became of it";
  left[0].Discard();
  left.clear();
  EXPECT_TRUE(RecoveryFiles(Folder()).Left().empty());
  EXPECT_EQ(Names(), (Strings{"recovery-2.lock", "recovery-2.txt"}));
}

TEST_F(RecoveryFilesTest, WhatIsSetAsideIsNotFoundAgain) {
  for (const char* text : {"one", "two"}) {
    EXPECT_FALSE(std::make_unique<RecoveryFiles>(Folder())->Keep(text));
    std::vector<LeftRecovery> left = RecoveryFiles(Folder()).Left();
    ASSERT_EQ(left.size(), 1U);
    EXPECT_EQ(FileContents(left[0].SetAside().string()), text);
  }
  EXPECT_TRUE(RecoveryFiles(Folder()).Left().empty());
  EXPECT_EQ(Names(), (Strings{"recovery-1.txt.damaged-1", "recovery-1.txt.damaged-2"}));
}

TEST_F(RecoveryFilesTest, AFolderThatCannotBeIsTold) {
  PutFile(folder.Path("state"), "a file");
  RecoveryFiles files(Folder());
  EXPECT_TRUE(files.Keep("one"));
  EXPECT_TRUE(files.Left().empty());
  files.Remove();
}

}  // namespace
}  // namespace walrim
