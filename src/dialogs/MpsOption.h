// The dialog of the script export's settings, without its widgets.
#pragma once

#include <string>

#include "data/MpsOptions.h"

namespace walrim {

/// What the dialog's controls show, under the controls' names.
struct MpsOptionControls {
  std::string OptUTCOffset;
  std::string OptMpsWptOrgName;
  std::string OptMpsWptDestinationName;
  bool OptMpsWptRPnumberingDown = false;
  std::string OptWptTrackLogStep;

  friend bool operator==(const MpsOptionControls&, const MpsOptionControls&) = default;
};

/// The controls as the dialog opens with these settings.
[[nodiscard]] MpsOptionControls ShowMpsOptions(const MpsOptions& options);

/// Which control holds a number that no setting does.
enum class MpsOptionProblem { None, UtcOffsetOverflow, TrackLogStepOverflow };

/// Stores the controls back. Numbers are the leading number of their text, rounded (halves away from 0); a text without
/// one is 0. A number outside -32768..32767 is a problem, and then nothing is stored.
[[nodiscard]] MpsOptionProblem ApplyMpsOptions(const MpsOptionControls& controls, MpsOptions& options);

}  // namespace walrim
