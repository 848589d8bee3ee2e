#include "house/IncludeRules.h"

#include <algorithm>
#include <optional>
#include <regex>
#include <sstream>

namespace walrim {

namespace {

std::vector<std::string> LinesOf(std::string_view text) {
  std::vector<std::string> lines;
  std::istringstream stream{std::string(text)};
  for (std::string line; std::getline(stream, line);)
    lines.push_back(line);
  return lines;
}

std::set<std::string> MatchesOf(const std::string& text, const std::regex& pattern) {
  std::set<std::string> matches;
  for (std::sregex_iterator match(text.begin(), text.end(), pattern), end; match != end; ++match) {
    matches.insert((*match)[1]);
  }
  return matches;
}

/// "qt" of "src/qt/QtClock.cpp"; nothing for a path that is not in a folder of src/.
std::optional<std::string> FolderOf(const std::string& path) {
  static const std::regex pattern("src/([^/]+)/.+");
  std::smatch match;
  if (!std::regex_match(path, match, pattern)) return std::nullopt;
  return match[1];
}

bool IsQtHeader(const std::string& target) {
  static const std::regex pattern("(Q[A-Z]|Qt|q[a-z]+\\.h).*");
  return std::regex_match(target, pattern);
}

/// What is wrong with an include of a file in a folder with this row; empty when nothing is.
std::string Complaint(const IncludeLine& include, const std::string& folder, const std::set<std::string>& row) {
  if (include.target.empty()) return "an include that names no file";
  if (IsQtHeader(include.target)) {
    return row.contains("Qt") ? "" : folder + " may not include Qt (" + include.target + ")";
  }
  if (!include.quoted) return "";
  const std::size_t slash = include.target.find('/');
  if (slash == std::string::npos || include.target.find("./") != std::string::npos) {
    return "\"" + include.target + "\" is not rooted at src/";
  }
  const std::string target_folder = include.target.substr(0, slash);
  if (target_folder == folder || row.contains(target_folder)) return "";
  return folder + " may not include " + target_folder + " (" + include.target + ")";
}

/// Finds circles among named things that lead to one another.
class CircleSearch {
 public:
  /// Where a thing leads to, and the line that says so.
  using Edges = std::map<std::string, std::map<std::string, int>>;

  explicit CircleSearch(const Edges& edges) : edges_(edges) {}

  std::vector<Violation> Run() {
    for (const auto& [name, targets] : edges_)
      Visit(name);
    return std::move(circles_);
  }

 private:
  void Visit(const std::string& name) {
    if (!visited_.insert(name).second) return;
    way_.push_back(name);
    if (const auto found = edges_.find(name); found != edges_.end()) {
      for (const auto& [target, line] : found->second)
        Follow(target, line);
    }
    way_.pop_back();
  }

  void Follow(const std::string& target, int line) {
    const auto start = std::find(way_.begin(), way_.end(), target);
    if (start == way_.end()) return Visit(target);
    std::string circle = "a circle: ";
    for (auto step = start; step != way_.end(); ++step)
      circle += *step + " -> ";
    circles_.push_back({way_.back(), line, circle + target});
  }

  const Edges& edges_;
  std::set<std::string> visited_;
  std::vector<std::string> way_;
  std::vector<Violation> circles_;
};

}  // namespace

LayerTable ParseLayerTable(std::string_view page) {
  static const std::regex row_pattern(R"(\|\s*`src/([^/`]+)/`\s*\|.*\|([^|]*)\|\s*)");
  static const std::regex name_pattern("`([^`]+)`");
  LayerTable table;
  for (const std::string& line : LinesOf(page)) {
    std::smatch match;
    if (std::regex_match(line, match, row_pattern)) table[match[1]] = MatchesOf(match[2], name_pattern);
  }
  return table;
}

std::vector<IncludeLine> IncludesOf(const SourceFile& file) {
  static const std::regex directive(R"(^\s*#\s*include(_next)?\b(.*))");
  static const std::regex named(R"(\s*(["<])([^">]+)[">].*)");
  std::vector<IncludeLine> includes;
  int number = 0;
  for (const std::string& line : LinesOf(file.text)) {
    ++number;
    std::smatch match;
    if (!std::regex_match(line, match, directive)) continue;
    const std::string rest = match[2];
    std::smatch name;
    const bool has_name = std::regex_match(rest, name, named);
    includes.push_back({file.path, number, has_name ? name[2].str() : "", has_name && name[1] == "\""});
  }
  return includes;
}

std::vector<IncludeLine> IncludesOf(const std::vector<SourceFile>& files) {
  std::vector<IncludeLine> all;
  for (const SourceFile& file : files) {
    const auto includes = IncludesOf(file);
    all.insert(all.end(), includes.begin(), includes.end());
  }
  return all;
}

std::vector<Violation> CheckIncludes(const LayerTable& table, const std::vector<IncludeLine>& includes) {
  std::vector<Violation> violations;
  for (const IncludeLine& include : includes) {
    const auto folder = FolderOf(include.path);
    const auto row = table.find(folder.value_or(""));
    const std::string complaint =
        row == table.end() ? "its folder has no row in the table" : Complaint(include, *folder, row->second);
    if (!complaint.empty()) violations.push_back({include.path, include.line, complaint});
  }
  return violations;
}

std::vector<Violation> CheckLinkLines(const LayerTable& table, const std::vector<SourceFile>& list_files) {
  static const std::regex library_pattern(R"(\bwalrim_([a-z]+)\b)");
  static const std::regex qt_pattern(R"(\b(Qt6::)\w+)");
  // The house's functions and the list of options are no libraries of a folder.
  static const std::set<std::string> functions{"library", "test", "fuzz", "options"};
  std::vector<Violation> violations;
  for (const SourceFile& file : list_files) {
    const std::string folder = FolderOf(file.path).value_or("");
    const auto row = table.find(folder);
    if (row == table.end()) {
      violations.push_back({file.path, 1, "its folder has no row in the table"});
      continue;
    }
    int number = 0;
    for (const std::string& line : LinesOf(file.text)) {
      ++number;
      for (const std::string& name : MatchesOf(line, library_pattern)) {
        if (functions.contains(name) || name == folder || row->second.contains(name)) continue;
        violations.push_back({file.path, number, folder + " may not link " + name});
      }
      if (!MatchesOf(line, qt_pattern).empty() && !row->second.contains("Qt")) {
        violations.push_back({file.path, number, folder + " may not link Qt"});
      }
    }
  }
  return violations;
}

std::vector<Violation> FileCircles(const std::vector<IncludeLine>& includes) {
  CircleSearch::Edges edges;
  for (const IncludeLine& include : includes) {
    if (include.quoted) edges[include.path].emplace("src/" + include.target, include.line);
  }
  return CircleSearch(edges).Run();
}

std::vector<Violation> FolderCircles(const LayerTable& table) {
  CircleSearch::Edges edges;
  for (const auto& [folder, row] : table) {
    for (const std::string& target : row)
      edges[folder].emplace(target, 0);
  }
  return CircleSearch(edges).Run();
}

std::string Report(const std::vector<Violation>& violations) {
  std::string report;
  for (const Violation& violation : violations) {
    report += violation.path + ":" + std::to_string(violation.line) + ": " + violation.what + "\n";
  }
  return report;
}

}  // namespace walrim
