#include "app/FileFormat.h"

#include <stdexcept>
#include <string>

#include "geo/GeneralLib.h"
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

/// First column of the first line, in upper case; empty when the line has too many columns.
std::string FirstWord(std::string_view text) {
  const std::string_view line = text.substr(0, text.find_first_of("\r\n"));
  try {
    return UpperCase(SplitColumns(line).front());
  } catch (const std::out_of_range&) {
    return {};
  }
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
