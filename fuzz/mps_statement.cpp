// A statement of any text. Building one writes some values otherwise; from then on building and parsing change nothing.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "formats/StatementBuilder.h"
#include "formats/StatementParser.h"

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

void Check(const Statement& statement) {
  if (statement.keyword == StatementKeyword::Comment) return;
  std::string text;
  const auto again = Reparsed(Built(statement), text);
  if (!again || again->keyword != statement.keyword) std::abort();
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
