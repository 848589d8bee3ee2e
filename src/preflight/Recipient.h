// The receiver that records are meant for.
#pragma once

#include <optional>

#include "device/Models.h"

namespace walrim {

struct Recipient {
  DeviceProtocols types;
  std::optional<ReceiverLimits> limits;  ///< nothing where the model is not known
  bool checked_link = false;             ///< a record that is refused then ends the upload
};

}  // namespace walrim
