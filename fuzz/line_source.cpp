// Lines and encodings of a text that comes in pieces, against those of the whole. The first byte is the pieces' size.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "text/Cp932.h"
#include "text/Scan.h"
#include "text/TextEncoding.h"
#include "text/Utf8.h"

using namespace walrim;

namespace {

std::vector<std::string> LinesOf(LineSource source) {
  std::vector<std::string> lines;
  for (std::string_view line; source.Next(line);)
    lines.emplace_back(line);
  return lines;
}

/// The lines by the plainest way there is.
std::vector<std::string> PlainLines(const std::string& text) {
  std::vector<std::string> lines;
  std::string line;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\r' && text[i] != '\n') {
      line += text[i];
      continue;
    }
    if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
    lines.push_back(line);
    line.clear();
  }
  if (!line.empty()) lines.push_back(line);
  return lines;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  if (size == 0) return 0;
  const std::string_view text(reinterpret_cast<const char*>(bytes) + 1, size - 1);
  const std::size_t piece = bytes[0] % 16U + 3U;  // a mark comes whole
  EncodingDetector detector;
  for (std::string_view rest = text; !rest.empty();)
    detector.Add(TakeBytes(rest, piece));
  const TextEncoding encoding = EncodingOf(text);
  if (detector.Encoding() != encoding) std::abort();
  const bool marked = text.starts_with(Utf8Mark);
  const std::string_view behind = text.substr(marked ? Utf8Mark.size() : 0);
  const std::string whole = encoding == TextEncoding::ShiftJis ? DecodeCp932(text) : WellFormed(behind);
  if (!IsValidUtf8(whole)) std::abort();
  const auto expected = PlainLines(whole);
  if (LinesOf(LineSource(text, encoding)) != expected) std::abort();
  std::string_view rest = text;
  if (LinesOf(LineSource([&] { return TakeBytes(rest, piece); }, encoding)) != expected) std::abort();
  return 0;
}
