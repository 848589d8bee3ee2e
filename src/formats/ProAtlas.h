// Map-server scripts: made of a WPT+ text, and turned back into one.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "data/MpsOptions.h"
#include "formats/WptLine.h"
#include "text/Dates.h"

namespace walrim {

/// The two version texts of the script's form. They are not the program's.
inline constexpr std::string_view ScriptProgramVersion = "1.0.8.0";
inline constexpr std::string_view ScriptTemplateVersion = "1.2";

struct Conversion {
  std::string text;
  /// Lines or statements that were left out: no position on the globe, an unknown datum, no end, or behind the end of
  /// another statement on the same line.
  int skipped = 0;
  std::string first_skipped_why;  ///< in Japanese
  int cut = 0;                    ///< WPT+ lines that lost their tail behind a comma
  MessageList messages;           ///< about unknown WPT+ commands

  /// Counts what was left out; the reason of the first stays.
  void Skip(std::string_view why) {
    if (skipped++ == 0) first_skipped_why = why;
  }
};

/// Called now and then with how much of the input was read; the caller may let its event loop turn.
using ConversionProgress = std::function<void(std::size_t done_bytes, std::size_t total_bytes)>;

/// The script that draws a WPT+ text. Its positions stay on the text's datum, which the theme names; so stay the
/// positions of a text without a Datum line, which is on WGS84. now is the head's date.
[[nodiscard]] Conversion ConvertWptToScript(std::string_view wpt, const MpsOptions& options, const CivilTime& now,
                                            const ConversionProgress& progress = {});

/// The WPT+ text of a script, in "D" on the Tokyo datum, which its first line names; positions of a script on WGS84 are
/// converted. A script of ConvertWptToScript gives back its waypoints, routes and track logs; of any other, each point
/// becomes a waypoint.
[[nodiscard]] Conversion ConvertScriptToWpt(std::string_view script, const ConversionProgress& progress = {});

}  // namespace walrim
