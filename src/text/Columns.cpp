#include "text/Columns.h"

#include <stdexcept>

#include "text/Scan.h"

namespace walrim {

std::size_t SplitColumns(std::string_view line, std::array<std::string_view, MaxColumns>& columns) {
  const char* begin = line.data();
  const char* const end = begin + line.size();
  std::size_t count = 0;
  for (const char* at = begin;; ++at) {
    if (at != end && *at != '\t' && *at != ',') continue;
    if (count == MaxColumns) throw std::out_of_range("a line has more columns than it may");
    columns[count++] = TrimBlanks(std::string_view(begin, static_cast<std::size_t>(at - begin)));
    if (at == end) return count;
    begin = at + 1;
  }
}

}  // namespace walrim
