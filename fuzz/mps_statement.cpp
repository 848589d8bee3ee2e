// A statement of any text. Building one writes some values otherwise; from then on building and parsing change nothing.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "formats/StatementBuilder.h"
#include "formats/StatementParser.h"
#include "text/Scan.h"

using namespace walrim;

namespace {

std::string Built(const Statement& statement) {
  std::string text;
  AppendStatement(text, statement.keyword, statement.values);
  return text;
}

/// The statement of a script of one, or of nothing.
std::optional<Statement> Reparsed(const std::string& script, std::string& text) {
  LineSource lines(script, TextEncoding::Utf8);
  StatementSplitter splitter(lines);
  if (!splitter.Next(text)) std::abort();
  return ParseStatement(text);
}

/// Whether a comma ends a value: at a line's end it is taken for the one between two lines, and is lost.
bool LosesComma(const Statement& statement) {
  return std::any_of(statement.values.begin(), statement.values.end(), [](std::string_view value) {
    return TrimAny(value, std::string_view(" \t\r\n\0", 5)).ends_with(',');
  });
}

void Check(const Statement& statement) {
  if (statement.keyword == StatementKeyword::Comment) return;
  std::string text;
  const auto again = Reparsed(Built(statement), text);
  if (!again || again->keyword != statement.keyword) std::abort();
  if (LosesComma(*again)) return;
  const std::string settled = Built(*again);
  std::string settled_text;
  const auto third = Reparsed(settled, settled_text);
  if (!third || Built(*third) != settled) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(bytes), size);
  if (const auto raw = ParseStatement(text)) Check(*raw);
  LineSource lines(text, TextEncoding::Utf8);
  StatementSplitter splitter(lines);
  for (std::string joined; splitter.Next(joined);) {
    if (joined.find('\n') != std::string::npos) std::abort();
    if (const auto statement = ParseStatement(joined)) Check(*statement);
  }
  return 0;
}
