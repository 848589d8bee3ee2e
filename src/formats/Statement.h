// The statements of a map-server script: a keyword and its values.
//
//   statement = TAB TAB keyword TAB key "=" value *(CR LF 4TAB key "=" value) ";"
//   script    = *(statement CR LF | "//" anything CR LF)
//
// There is no escape. A ";", a TAB or a line end inside a value would end it, so that a value is written with the
// full-width "；" for ";" and with a blank for the others. All else stands as it is.
#pragma once

#include <array>
#include <cstddef>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace walrim {

inline constexpr std::size_t MaxStatementValues = 16;

/// Appends a statement without a line end. values are in the order of the keyword's keys; missing ones are empty, and
/// an empty one is left out. A keyword that is not known gives the comment "// Not Suport [keyword]".
void AppendStatement(std::string& out, std::string_view keyword, std::span<const std::string_view> values);
[[nodiscard]] std::string BuildStatement(std::string_view keyword, std::initializer_list<std::string_view> values);

/// A statement taken apart. The views point into its text.
struct Statement {
  std::string_view keyword;  ///< as BuildStatement takes it
  std::array<std::string_view, MaxStatementValues> values;
  /// The value of a key; empty where it is not given or the keyword has no such key.
  [[nodiscard]] std::string_view Value(std::string_view key) const;
};

/// The inverse of BuildStatement, for a text whose lines were joined by StatementSplitter or still have their ends.
/// Ends at the first ";". Keywords are read in any case. In a statement that is laid out as BuildStatement does it, a
/// key stands behind TABs; in any other, behind any comma, so that a value must not look like a key there. So it does
/// in a point or line that would have no key but its first. Nothing for an unknown keyword.
[[nodiscard]] std::optional<Statement> ParseStatement(std::string_view text);

/// Cuts a script into statements: empty lines and those that begin with "//" are passed over, the others joined up to
/// the first that has a ";", with a "," between two lines unless the earlier one ends with one.
class StatementSplitter {
 public:
  explicit StatementSplitter(std::string_view script) : script_(script) {}

  /// False at the end.
  [[nodiscard]] bool Next(std::string& statement);
  /// After the end: lines were left that no ";" ended.
  [[nodiscard]] bool Incomplete() const { return incomplete_; }
  [[nodiscard]] std::size_t Offset() const { return offset_; }  ///< bytes read so far

 private:
  std::string_view script_;
  std::size_t offset_ = 0;
  bool incomplete_ = false;
};

}  // namespace walrim
