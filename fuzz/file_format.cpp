// What a text is taken for. Its first element, or its first column in any case and with blanks around it, alone
// decides, against a plain list of the words; a path and a title decide where it says nothing. The first byte chooses a
// word that is put in front of the text, its case, and what stands behind it.
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

#include "formats/Format.h"
#include "formats/GpxReader.h"
#include "text/Scan.h"

using namespace walrim;

namespace {

struct Word {
  std::string_view text;
  std::optional<FormatId> format;
};
constexpr std::array Words{Word{"walrim", FormatId::Standard}, Word{"wpt", FormatId::Standard},
                           Word{"rth", FormatId::Standard},    Word{"rtp", FormatId::Standard},
                           Word{"trh", FormatId::Standard},    Word{"trp", FormatId::Standard},
                           Word{"datum", FormatId::WptPlus},   Word{"tokyo mean", FormatId::WptPlus},
                           Word{"wgs84", FormatId::WptPlus},   Word{"wp", FormatId::WptPlus},
                           Word{"rn", FormatId::WptPlus},      Word{"rp", FormatId::WptPlus},
                           Word{"tp", FormatId::WptPlus},      Word{"//header", std::nullopt},
                           Word{"wptx", std::nullopt},         Word{"", std::nullopt}};
constexpr std::string_view Title = "//HEADER";

char Lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::optional<FormatId> PlainlyRecognized(std::string_view text) {
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
  return std::nullopt;
}

bool HasTitle(std::string_view text) {
  std::string begin(text.substr(0, Title.size()));
  for (char& c : begin)
    c = Lower(c);
  return begin == "//header";
}

std::optional<FormatId> Recognized(std::string_view text, std::string_view path) {
  const Format* const format = RecognizeFormat(text, path);
  return format == nullptr ? std::nullopt : std::optional(format->id);
}

void CheckText(const std::string& text) {
  // An element at the beginning counts before everything else.
  if (IsGpx(text)) {
    for (const std::string_view path : {"", "a.txt", "a.mps"}) {
      if (Recognized(text, path) != FormatId::Gpx) std::abort();
    }
    return;
  }
  const auto expected = PlainlyRecognized(text);
  if (Recognized(text, "a.txt") != expected) std::abort();
  for (const std::string_view path : {"mps", "a.mps", "A.MpS"}) {
    if (Recognized(text, path) != expected.value_or(FormatId::Script)) std::abort();
  }
  const auto untold = HasTitle(text) ? std::optional(FormatId::Script) : std::nullopt;
  if (Recognized(text, "") != (expected ? expected : untold)) std::abort();
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
