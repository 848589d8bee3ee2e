#include "app/FileFormat.h"

#include <string>

#include "text/Utf8.h"

namespace walrim {

namespace {

struct FirstColumn {
  std::string_view word;
  FileFormat format;
};

constexpr FirstColumn FirstColumns[] = {
    {"WALRIM", FileFormat::Standard}, {"WPT", FileFormat::Standard},       {"RTH", FileFormat::Standard},
    {"RTP", FileFormat::Standard},    {"TRH", FileFormat::Standard},       {"TRP", FileFormat::Standard},
    {"DATUM", FileFormat::WptPlus},   {"TOKYO MEAN", FileFormat::WptPlus}, {"WGS84", FileFormat::WptPlus},
    {"WP", FileFormat::WptPlus},      {"RN", FileFormat::WptPlus},         {"RP", FileFormat::WptPlus},
    {"TP", FileFormat::WptPlus},
};

/// First column of the first line, in upper case.
std::string FirstWord(std::string_view text) {
  return UpperCase(TrimBlanks(text.substr(0, text.find_first_of("\t,\r\n"))));
}

}  // namespace

FileFormat RecognizeFormat(std::string_view text, std::string_view path) {
  const std::string word = FirstWord(text);
  for (const FirstColumn& row : FirstColumns) {
    if (word == row.word) return row.format;
  }
  const std::string_view ending = path.substr(path.size() < 3 ? 0 : path.size() - 3);
  return UpperCase(ending) == "MPS" ? FileFormat::MapServerScript : FileFormat::Unknown;
}

FileFormat RecognizeText(std::string_view text) {
  constexpr std::string_view script_title = "//HEADER";
  const FileFormat format = RecognizeFormat(text, {});
  if (format != FileFormat::Unknown) return format;
  return UpperCase(text.substr(0, script_title.size())) == script_title ? FileFormat::MapServerScript
                                                                        : FileFormat::Unknown;
}

}  // namespace walrim
