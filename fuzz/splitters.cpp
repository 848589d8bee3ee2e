// The line and list splitters. The first byte chooses the pair of the list.
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

void CheckColumns(std::string_view line) {
  std::size_t separators = 0;
  for (const char c : line)
    separators += c == '\t' || c == ',' ? 1U : 0U;
  try {
    const std::vector<std::string_view> columns = SplitColumns(line);
    if (columns.size() != separators + 1) std::abort();
    std::string joined;
    for (const std::string_view column : columns) {
      if (column != TrimBlanks(column) || column.find_first_of("\t,") != std::string_view::npos) std::abort();
      joined.append(column).append(1, ',');
    }
    joined.pop_back();
    if (SplitColumns(joined) != columns) std::abort();
  } catch (const std::out_of_range&) {
    if (separators < MaxColumns) std::abort();
  }
}

void CheckPair(std::string_view list, std::size_t k) {
  ListPair pair{"key", "value", -1};
  std::size_t commas = 0;
  for (const char c : list)
    commas += c == ',' ? 1U : 0U;
  try {
    GetListPair(list, k, pair);
    const double items = list.empty() ? 0 : static_cast<double>(commas + 1);
    if (pair.count != items / 2) std::abort();
    if (pair.key.find_first_of(",\n") != std::string::npos) std::abort();
  } catch (const std::out_of_range&) {
    if (commas < 5120 || pair.key != "key" || pair.count != -1) std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(bytes), size);
  CheckColumns(text);
  CheckPair(text.substr(size == 0 ? 0 : 1), size == 0 ? 1 : bytes[0]);
  return 0;
}
