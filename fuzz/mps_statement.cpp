// A statement of any text. Building one writes some values otherwise; from then on building and parsing change nothing.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "formats/Statement.h"

using namespace walrim;

namespace {

std::string Built(const Statement& statement) {
  std::string text;
  AppendStatement(text, statement.keyword, statement.values);
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(bytes), size);
  const auto raw = ParseStatement(text);
  StatementSplitter splitter(text);
  for (std::string joined; splitter.Next(joined);) {
    if (joined.find('\n') != std::string::npos) std::abort();
    (void)ParseStatement(joined);
  }
  if (!raw || raw->keyword == "comment" || raw->keyword == "mapserver" || raw->keyword == "hedder") return 0;
  const std::string built = Built(*raw);
  const auto again = ParseStatement(built);
  if (!again || again->keyword != raw->keyword) std::abort();
  const std::string settled = Built(*again);
  const auto third = ParseStatement(settled);
  if (!third || Built(*third) != settled) std::abort();
  return 0;
}
