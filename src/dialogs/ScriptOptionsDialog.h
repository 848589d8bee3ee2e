// The dialog of the script export's settings, without its widgets.
#pragma once

#include <string>

#include "formats/ScriptOptions.h"

namespace walrim {

/// What the dialog's controls show.
struct ScriptOptionControls {
  std::string utc_offset;
  std::string origin_name;
  std::string destination_name;
  bool numbering_down = false;
  std::string track_log_step;

  friend bool operator==(const ScriptOptionControls&, const ScriptOptionControls&) = default;
};

/// The controls as the dialog opens with these settings.
[[nodiscard]] ScriptOptionControls ShowScriptOptions(const ScriptOptions& options);

/// Which control holds a number that no setting does.
enum class ScriptOptionProblem { None, UtcOffsetOverflow, TrackLogStepOverflow };

/// Stores the controls back. Numbers are the leading number of their text, rounded (halves away from 0); a text without
/// one is 0. A number outside -32768..32767 is a problem, and then nothing is stored.
[[nodiscard]] ScriptOptionProblem ApplyScriptOptions(const ScriptOptionControls& controls, ScriptOptions& options);

}  // namespace walrim
