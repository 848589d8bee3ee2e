// Opening and locking the device node of a serial line.
#pragma once

#include <string>

#include "platform/Descriptor.h"
#include "platform/SerialPort.h"

namespace walrim {

/// Opens the serial line at an absolute path without waiting for anything, and locks it; nothing else than a terminal
/// device is opened. What node held before is closed first. Fills the result's device with the path behind all links.
/// The lock is advisory (flock), so that two programs of the house see each other even as root, whom the exclusive mode
/// of a terminal device does not keep out.
[[nodiscard]] PortResult OpenDeviceNode(const std::string& path, Descriptor& node);

}  // namespace walrim
