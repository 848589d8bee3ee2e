// The splitter of lines against a plain one that looks at one character after the other.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "text/Columns.h"

using namespace walrim;

namespace {

std::vector<std::string> Cut(std::string_view text, std::string_view separators) {
  std::vector<std::string> parts{""};
  for (const char c : text) {
    if (separators.find(c) == std::string_view::npos)
      parts.back() += c;
    else
      parts.emplace_back();
  }
  return parts;
}

std::string Trimmed(std::string text) {
  while (text.ends_with(' '))
    text.pop_back();
  while (text.starts_with(' '))
    text.erase(0, 1);
  return text;
}

void CheckColumns(std::string_view line) {
  std::vector<std::string> expected = Cut(line, "\t,");
  std::transform(expected.begin(), expected.end(), expected.begin(), Trimmed);
  try {
    std::array<std::string_view, MaxColumns> columns;
    const std::size_t count = SplitColumns(line, columns);
    if (count != expected.size() || !std::equal(expected.begin(), expected.end(), columns.begin())) std::abort();
  } catch (const std::out_of_range&) {
    if (expected.size() <= MaxColumns) std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  CheckColumns(std::string_view(reinterpret_cast<const char*>(bytes), size));
  return 0;
}
