// Opening and locking the device node of a serial line.
#pragma once

#include <string>

#include "platform/SerialPort.h"

namespace walrim {

/// An open and locked device node; closed with its owner.
/// The lock is advisory (flock), so that two programs of the house see each other even as root, whom the exclusive mode
/// of a terminal device does not keep out.
class DeviceNode {
 public:
  DeviceNode() = default;
  DeviceNode(const DeviceNode&) = delete;
  DeviceNode& operator=(const DeviceNode&) = delete;
  ~DeviceNode();

  /// Opens the serial line at an absolute path without waiting for anything; nothing else than a terminal device is
  /// opened. What was open before is closed first. Fills the result's device with the path behind all links.
  [[nodiscard]] PortResult Open(const std::string& path);
  void Close();

 private:
  int handle_ = -1;
};

}  // namespace walrim
