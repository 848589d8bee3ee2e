// The line and list splitters against plain ones that look at one character after the other. The first byte chooses the
// pair of the list.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "geo/GeneralLib.h"
#include "text/Utf8.h"

using namespace walrim;

namespace {

constexpr std::size_t MostItems = 5120;

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
    const std::vector<std::string_view> columns = SplitColumns(line);
    if (!std::equal(columns.begin(), columns.end(), expected.begin(), expected.end())) std::abort();
  } catch (const std::out_of_range&) {
    if (expected.size() <= MaxColumns) std::abort();
  }
}

/// An item as a pair gives it: its marks in front, its line feeds left out.
std::string Marked(std::string item) {
  const auto marks = static_cast<std::size_t>(std::count(item.begin(), item.end(), '&'));
  std::erase_if(item, [](char c) { return c == '&' || c == '\n'; });
  return std::string(marks, '&') + item;
}

void CheckPair(std::string_view list, std::size_t k) {
  const std::vector<std::string> items = list.empty() ? std::vector<std::string>{} : Cut(list, ",");
  const bool too_many = items.size() > MostItems;
  // What is not there stays as it was.
  ListPair expected{"key", "value", too_many ? -1 : static_cast<double>(items.size()) / 2};
  if (!too_many && k > 0 && 2 * k - 1 <= items.size()) expected.key = Marked(items[2 * k - 2]);
  if (!too_many && k > 0 && 2 * k <= items.size()) expected.value = Marked(items[2 * k - 1]);
  ListPair pair{"key", "value", -1};
  try {
    GetListPair(list, k, pair);
    if (too_many) std::abort();
  } catch (const std::out_of_range&) {
    if (!too_many) std::abort();
  }
  if (pair.key != expected.key || pair.value != expected.value || pair.count != expected.count) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(bytes), size);
  const std::string_view list = text.substr(size == 0 ? 0 : 1);
  CheckColumns(text);
  CheckPair(list, size == 0 ? 1 : bytes[0]);
  // Any other pair is beyond the end of most lists.
  CheckPair(list, size == 0 ? 1 : bytes[0] % 4U);
  return 0;
}
