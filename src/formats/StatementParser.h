// Reading the statements of a map-server script.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "formats/StatementTable.h"
#include "geo/Datum.h"
#include "text/TextEncoding.h"

namespace walrim {

/// A statement taken apart. The views point into its text.
struct Statement {
  StatementKeyword keyword = StatementKeyword::Comment;
  std::array<std::string_view, MaxStatementValues> values;  ///< in the order of the row's keys; empty where not given
};

/// The inverse of AppendStatement, for a text whose lines were joined by StatementSplitter. Ends at the first ";".
/// Keywords and keys are read in any case. In a statement that is laid out as AppendStatement does it, with a TAB
/// behind the keyword, a key stands behind TABs; in any other, behind any comma or blank, so that a value must not look
/// like a key there. So it does in a point or line that would have no key but its first. Nothing for an unknown
/// keyword.
[[nodiscard]] std::optional<Statement> ParseStatement(std::string_view text);

/// Takes the next position off the pos of a point or a line: two angles "d/mm/ss.s", latitude first, as leniently as
/// ReadPosition; on the datum of the script. Nothing where the two are no position on the globe; they are taken then
/// too.
[[nodiscard]] std::optional<GeoPoint> TakePosition(std::string_view& pos);

/// Cuts a script into statements: empty lines and those that begin with "//" are passed over, the others joined up to
/// the first that has a ";", with a "," between two lines unless the earlier one ends with one.
class StatementSplitter {
 public:
  explicit StatementSplitter(LineSource& lines) : lines_(lines) {}

  /// False at the end.
  [[nodiscard]] bool Next(std::string& statement);
  /// After the end: lines were left that no ";" ended.
  [[nodiscard]] bool Incomplete() const { return incomplete_; }

 private:
  LineSource& lines_;
  bool incomplete_ = false;
};

}  // namespace walrim
