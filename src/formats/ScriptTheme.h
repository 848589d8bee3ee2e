// What the positions and the times of a script are on.
//
//   theme   str     "Walrim Datum:" name " UTCOffset:" hours
//   georef  system  name
#pragma once

#include <optional>
#include <string>

#include "formats/StatementParser.h"
#include "geo/Datum.h"

namespace walrim {

struct ScriptTheme {
  Datum datum = Datum::Tokyo;
  int utc_offset_hours = 0;  ///< hours that were added to its times
};

[[nodiscard]] std::string ThemeText(const ScriptTheme& theme);

/// Finds out what a script is on from its statements. The first georef or theme that names a datum counts, whatever
/// else stands in its text; where none does, it is Tokyo. The hours are those of the first theme, 0 in one of another
/// kind.
class ScriptThemeFinder {
 public:
  void Take(const Statement& statement);
  /// Whether no further statement can change what was found.
  [[nodiscard]] bool Sure() const { return datum_ && hours_; }
  [[nodiscard]] ScriptTheme Found() const { return {datum_.value_or(Datum::Tokyo), hours_.value_or(0)}; }

 private:
  std::optional<Datum> datum_;
  std::optional<int> hours_;
};

}  // namespace walrim
