// The options that a man page describes.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace walrim {

/// What is read of a page: the sections with their subsections, and in them the heads of the paragraphs that describe
/// something. Marks of the font are taken out.
struct ManPage {
  struct Part {
    std::string section;     ///< "OPTIONS"
    std::string subsection;  ///< "Options of info, download and upload"; empty before the first
    std::vector<std::string> heads;
  };
  std::string version;  ///< "Walrim 0.1.0" of the title line
  std::string text;     ///< all of it
  std::vector<Part> parts;
};

/// Reads share/man/NAME ("man1/walrim.1").
[[nodiscard]] ManPage ReadManPage(std::string_view name);

/// The options ("-o", "--output") that a head describes; none when it is no option.
[[nodiscard]] std::set<std::string> OptionsOfHead(const std::string& head);

/// All long options that a text names.
[[nodiscard]] std::set<std::string> LongOptionsIn(const std::string& text);

}  // namespace walrim
