// The receiver's clock: asked, and set.
#pragma once

#include <optional>
#include <string_view>

#include "device/DeviceSession.h"
#include "text/Dates.h"

namespace walrim {

/// See Garmin::AskClock and Garmin::SetClock.
[[nodiscard]] std::optional<CivilTime> AskReceiverClock(DeviceSession& session, std::string_view port_name);
[[nodiscard]] bool SetReceiverClock(DeviceSession& session, std::string_view port_name, const CivilTime& utc);

}  // namespace walrim
