// What a text is taken for. Its first column alone decides, in any case and with blanks around it, against a plain list
// of the words; a path and a title decide where it says nothing. The first byte chooses a word that is put in front of
// the text, its case, and what stands behind it.
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "app/FileFormat.h"
#include "text/Utf8.h"

using namespace walrim;

namespace {

struct Word {
  std::string_view text;
  FileFormat format;
};
constexpr std::array Words{
    Word{"walrim", FileFormat::Standard}, Word{"wpt", FileFormat::Standard},       Word{"rth", FileFormat::Standard},
    Word{"rtp", FileFormat::Standard},    Word{"trh", FileFormat::Standard},       Word{"trp", FileFormat::Standard},
    Word{"datum", FileFormat::WptPlus},   Word{"tokyo mean", FileFormat::WptPlus}, Word{"wgs84", FileFormat::WptPlus},
    Word{"wp", FileFormat::WptPlus},      Word{"rn", FileFormat::WptPlus},         Word{"rp", FileFormat::WptPlus},
    Word{"tp", FileFormat::WptPlus},      Word{"//header", FileFormat::Unknown},   Word{"wptx", FileFormat::Unknown},
    Word{"", FileFormat::Unknown}};
constexpr std::string_view Title = "//HEADER";

char Lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

FileFormat PlainlyRecognized(std::string_view text) {
  std::string column;
  for (const char c : text) {
    if (c == '\t' || c == ',' || c == '\r' || c == '\n') break;
    column += Lower(c);
  }
  for (const Word& word : Words) {
    const std::size_t at = column.find_first_not_of(' ');
    if (at == std::string::npos || word.text.empty()) continue;
    if (column.substr(at, column.find_last_not_of(' ') - at + 1) == word.text) return word.format;
  }
  return FileFormat::Unknown;
}

bool HasTitle(std::string_view text) {
  std::string begin(text.substr(0, Title.size()));
  for (char& c : begin)
    c = Lower(c);
  return begin == "//header";
}

void CheckText(const std::string& text) {
  const FileFormat expected = PlainlyRecognized(text);
  const bool known = expected != FileFormat::Unknown;
  if (RecognizeFormat(text, "") != expected || RecognizeFormat(text, "a.txt") != expected) std::abort();
  for (const std::string_view path : {"mps", "a.mps", "A.MpS"}) {
    if (RecognizeFormat(text, path) != (known ? expected : FileFormat::MapServerScript)) std::abort();
  }
  const FileFormat untold = HasTitle(text) ? FileFormat::MapServerScript : FileFormat::Unknown;
  if (RecognizeText(text) != (known ? expected : untold)) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  if (size == 0) return 0;
  const std::string rest(reinterpret_cast<const char*>(bytes) + 1, size - 1);
  CheckText(rest);
  constexpr std::array<std::string_view, 4> behind{"\t", " ,", "\r\n", "x"};
  const std::string_view word = Words[bytes[0] % Words.size()].text;
  const std::string spelled = bytes[0] >= 128 ? UpperCase(word) : std::string(word);
  CheckText(spelled + std::string(behind[bytes[0] / Words.size() % behind.size()]) + rest);
  return 0;
}
