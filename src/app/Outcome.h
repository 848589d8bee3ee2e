// How commands end.
#pragma once

namespace walrim {

/// How a command ended.
enum class Outcome {
  Done,
  Busy,        ///< another command runs; nothing was done
  Refused,     ///< nothing selected or held, a file that cannot be used, an answer No, a nonsensical receiver
  Cancelled,   ///< by Cancel
  NoReceiver,  ///< nobody, or nobody who speaks the protocol, answered
  LinkLost     ///< the receiver stopped answering
};

}  // namespace walrim
