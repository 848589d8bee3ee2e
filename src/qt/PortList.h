// The serial ports of the computer, and the numbers 1 to 4 that the program calls them by.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace walrim {

/// The program knows ports by the numbers 1 to this; a further port is named by its device path.
inline constexpr int MaxPortNumber = 4;

/// A serial port as the system tells of it.
struct SystemPort {
  std::string name;             ///< "ttyUSB0"
  std::string device;           ///< "/dev/ttyUSB0"
  std::string description;      ///< "FT232R USB UART"; empty where the system has none
  bool usb = false;             ///< a USB adapter or a receiver with USB
  std::string serial_number{};  ///< the adapter's; empty where it has none
};

/// A port of the list. number is 0 for a port that got none.
struct NumberedPort {
  int number = 0;
  std::string device;
  std::string description;
  std::string serial_number{};

  friend bool operator==(const NumberedPort&, const NumberedPort&) = default;
};

/// Port numbers that were given to a device by hand.
using PortMapping = std::map<int, std::string>;

/// Reads "N=DEVICE" with N from 1 to MaxPortNumber; nothing for any other text.
[[nodiscard]] std::optional<std::pair<int, std::string>> ParsePortMapping(std::string_view text);

/// True when name comes before other in natural order: runs of digits compare as numbers (ttyUSB2 before ttyUSB10).
[[nodiscard]] bool NaturalLess(std::string_view name, std::string_view other);

/// USB adapters first, then the others, each in natural order of the names; ports of the same name keep their order.
[[nodiscard]] std::vector<SystemPort> OrderPorts(std::vector<SystemPort> ports);

/// Numbers the ordered ports. A mapped number belongs to its device, which need not be among the ports; the others fill
/// the numbers that are free. The list is in the order of the numbers, followed by the ports that got none.
[[nodiscard]] std::vector<NumberedPort> NumberPorts(std::vector<SystemPort> ports, const PortMapping& mapping = {});

/// The ports that exist now, in no particular order.
[[nodiscard]] std::vector<SystemPort> SystemPorts();

/// The ports that exist now, numbered.
[[nodiscard]] std::vector<NumberedPort> ListPorts(const PortMapping& mapping = {});

}  // namespace walrim
