#include "packaging/ManPage.h"

#include <gtest/gtest.h>
#include <regex>

#include "packaging/HelpTexts.h"
#include "support/Processes.h"

namespace walrim {

namespace {

std::string WithoutEscapes(const std::string& line) {
  static const std::regex font(R"(\\f.)");
  static const std::regex dash(R"(\\-)");
  return std::regex_replace(std::regex_replace(line, font, ""), dash, "-");
}

/// The words of a line; blanks between quotes belong to a word.
std::vector<std::string> WordsOf(const std::string& line) {
  static const std::regex pattern(R"X("([^"]*)"|([^ "]+))X");
  std::vector<std::string> words;
  for (std::sregex_iterator match(line.begin(), line.end(), pattern), end; match != end; ++match) {
    words.push_back((*match)[1].str() + (*match)[2].str());
  }
  return words;
}

/// What a line shows: .BI and its like join their words, other macros leave the blanks.
std::string Shown(const std::string& line) {
  std::vector<std::string> words = WordsOf(line);
  if (words.empty() || !words[0].starts_with('.')) return line;
  static const std::set<std::string> joining{".BI", ".BR", ".IB", ".IR", ".RB", ".RI"};
  const bool joined = joining.contains(words[0]);
  std::string shown;
  for (std::size_t i = 1; i < words.size(); ++i)
    shown += (i == 1 || joined ? "" : " ") + words[i];
  return shown;
}

/// Reads a page line by line.
class PageReader {
 public:
  void Take(const std::string& line) {
    page.text += line + "\n";
    if (line.starts_with(".TH ")) {
      page.version = WordsOf(line).at(4);
    } else if (line.starts_with(".SH ")) {
      page.parts.push_back({Shown(line), "", {}});
    } else if (line.starts_with(".SS ")) {
      page.parts.push_back({page.parts.back().section, Shown(line), {}});
    } else if (after_tag_) {
      page.parts.back().heads.push_back(Shown(line));
    }
    after_tag_ = line.starts_with(".TP");
  }
  ManPage page;

 private:
  bool after_tag_ = false;
};

std::set<std::string> MatchesIn(const std::string& text, const std::regex& pattern) {
  std::set<std::string> matches;
  for (std::sregex_iterator match(text.begin(), text.end(), pattern), end; match != end; ++match)
    matches.insert((*match)[1]);
  return matches;
}

}  // namespace

ManPage ReadManPage(std::string_view name) {
  const std::string text = FileContents(WALRIM_SOURCE_DIR "/share/man/" + std::string(name));
  EXPECT_FALSE(text.empty()) << name;
  PageReader reader;
  for (const std::string& line : LinesOf(text))
    reader.Take(WithoutEscapes(line));
  return reader.page;
}

std::set<std::string> OptionsOfHead(const std::string& head) {
  static const std::regex pattern("(?:^|, )(--?[a-z][a-z-]*)");
  return MatchesIn(head, pattern);
}

std::set<std::string> LongOptionsIn(const std::string& text) {
  static const std::regex pattern("(--[a-z][a-z-]*)");
  return MatchesIn(text, pattern);
}

}  // namespace walrim
