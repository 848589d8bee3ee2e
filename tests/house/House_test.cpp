// The rules of the house, held against the house itself.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

#include "house/IncludeRules.h"

namespace walrim {
namespace {

namespace fs = std::filesystem;

const fs::path Top = WALRIM_SOURCE_DIR;

SourceFile ReadSource(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  EXPECT_TRUE(in.is_open()) << path;
  return {fs::relative(path, Top).generic_string(), std::string(std::istreambuf_iterator<char>(in), {})};
}

template <typename Wanted>
std::vector<SourceFile> SourcesWhere(Wanted wanted) {
  std::vector<SourceFile> files;
  for (const auto& entry : fs::recursive_directory_iterator(Top / "src")) {
    if (entry.is_regular_file() && wanted(entry.path())) files.push_back(ReadSource(entry.path()));
  }
  std::sort(files.begin(), files.end(), [](const auto& file, const auto& other) { return file.path < other.path; });
  return files;
}

std::vector<SourceFile> CodeFiles() {
  return SourcesWhere([](const fs::path& path) { return path.extension() == ".h" || path.extension() == ".cpp"; });
}

std::vector<SourceFile> FolderListFiles() {
  return SourcesWhere(
      [](const fs::path& path) { return path.filename() == "CMakeLists.txt" && path.parent_path() != Top / "src"; });
}

LayerTable TableOfTheDocs() {
  return ParseLayerTable(ReadSource(Top / "docs" / "layers.md").text);
}

TEST(House, EveryFolderOfTheSourcesHasItsRow) {
  const LayerTable table = TableOfTheDocs();
  for (const auto& entry : fs::directory_iterator(Top / "src")) {
    if (!entry.is_directory()) continue;
    EXPECT_TRUE(table.contains(entry.path().filename().string())) << entry.path();
  }
}

TEST(House, RowsNameFoldersThatHaveRows) {
  const LayerTable table = TableOfTheDocs();
  ASSERT_FALSE(table.empty());
  for (const auto& [folder, row] : table) {
    for (const std::string& name : row)
      EXPECT_TRUE(name == "Qt" || table.contains(name)) << folder << ": " << name;
  }
}

TEST(House, IncludesKeepToTheTable) {
  const auto includes = IncludesOf(CodeFiles());
  ASSERT_FALSE(includes.empty());
  EXPECT_EQ(Report(CheckIncludes(TableOfTheDocs(), includes)), "");
}

TEST(House, LinkLinesKeepToTheTable) {
  const auto list_files = FolderListFiles();
  ASSERT_FALSE(list_files.empty());
  EXPECT_EQ(Report(CheckLinkLines(TableOfTheDocs(), list_files)), "");
}

TEST(House, FilesFormNoCircle) {
  EXPECT_EQ(Report(FileCircles(IncludesOf(CodeFiles()))), "");
}

TEST(House, FoldersFormNoCircle) {
  EXPECT_EQ(Report(FolderCircles(TableOfTheDocs())), "");
}

TEST(House, OnlyTheFacesAndThePlatformMayUseQt) {
  for (const auto& [folder, row] : TableOfTheDocs()) {
    const bool may = folder == "qt" || folder == "window" || folder == "cli";
    EXPECT_EQ(row.contains("Qt"), may) << folder;
  }
}

TEST(House, TheReceiverSharesNothingWithTheDeviceLink) {
  LayerTable table = TableOfTheDocs();
  EXPECT_FALSE(table["receiver"].contains("device"));
  EXPECT_FALSE(table["receiver"].contains("data"));
  EXPECT_FALSE(table["device"].contains("receiver"));
}

}  // namespace
}  // namespace walrim
