// Who includes whom under src/, and the table that says who may.
#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace walrim {

/// A file with its path from the top of the house: "src/qt/QtClock.cpp".
struct SourceFile {
  std::string path;
  std::string text;
};

/// One #include. target is empty where the directive names none in quotes or angle brackets.
struct IncludeLine {
  std::string path;
  int line = 0;
  std::string target;
  bool quoted = false;
};

/// A broken rule and where it is broken.
struct Violation {
  std::string path;
  int line = 0;
  std::string what;
};

/// Of each folder, the folders that it may include; "Qt" stands for Qt's headers.
using LayerTable = std::map<std::string, std::set<std::string>>;

/// The rows "| `src/NAME/` | ... | `a`, `b` |" of a page.
[[nodiscard]] LayerTable ParseLayerTable(std::string_view page);

[[nodiscard]] std::vector<IncludeLine> IncludesOf(const SourceFile& file);
[[nodiscard]] std::vector<IncludeLine> IncludesOf(const std::vector<SourceFile>& files);

/// Includes that the table does not allow: of a folder not in the row, of Qt where the row has none, not rooted at
/// src/, or from a folder without a row.
[[nodiscard]] std::vector<Violation> CheckIncludes(const LayerTable& table, const std::vector<IncludeLine>& includes);

/// Libraries in the link line of a folder's CMakeLists.txt that its row does not allow.
[[nodiscard]] std::vector<Violation> CheckLinkLines(const LayerTable& table, const std::vector<SourceFile>& list_files);

/// Circles among files that include each other, each at the line that closes it.
[[nodiscard]] std::vector<Violation> FileCircles(const std::vector<IncludeLine>& includes);

/// Circles among the rows of the table.
[[nodiscard]] std::vector<Violation> FolderCircles(const LayerTable& table);

/// A line "path:line: what" for each.
[[nodiscard]] std::string Report(const std::vector<Violation>& violations);

}  // namespace walrim
