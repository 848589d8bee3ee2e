#include "qt/PortList.h"

#include <QSerialPortInfo>
#include <algorithm>
#include <cstddef>

#include "text/Scan.h"

namespace walrim {

namespace {

/// Takes the digits off the front of text, without leading zeros.
std::string_view TakeNumber(std::string_view& text) {
  std::string_view digits = TakeDigits(text);
  digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
  return digits;
}

/// The device that a mapping gives its number to, with the system's description where the system knows it.
NumberedPort MappedPort(int number, const std::string& device, const std::vector<SystemPort>& ports) {
  const auto known = std::find_if(ports.begin(), ports.end(), [&](const auto& port) { return port.device == device; });
  if (known == ports.end()) return {number, device, {}, {}};
  return {number, device, known->description, known->serial_number};
}

bool IsMapped(const PortMapping& mapping, const std::string& device) {
  return std::any_of(mapping.begin(), mapping.end(), [&](const auto& entry) { return entry.second == device; });
}

int NextFreeNumber(int after, const PortMapping& mapping) {
  int number = after + 1;
  while (mapping.contains(number))
    ++number;
  return number;
}

}  // namespace

std::optional<std::pair<int, std::string>> ParsePortMapping(std::string_view text) {
  if (text.size() < 3 || text[0] < '1' || text[0] > '0' + MaxPortNumber || text[1] != '=') return std::nullopt;
  return std::pair(text[0] - '0', std::string(text.substr(2)));
}

bool NaturalLess(std::string_view name, std::string_view other) {
  while (!name.empty() && !other.empty()) {
    if (IsDigit(name[0]) && IsDigit(other[0])) {
      const std::string_view digits = TakeNumber(name);
      const std::string_view other_digits = TakeNumber(other);
      if (digits.size() != other_digits.size()) return digits.size() < other_digits.size();
      if (digits != other_digits) return digits < other_digits;
      continue;
    }
    if (name[0] != other[0]) return name[0] < other[0];
    name.remove_prefix(1);
    other.remove_prefix(1);
  }
  return name.empty() && !other.empty();
}

std::vector<SystemPort> OrderPorts(std::vector<SystemPort> ports) {
  std::stable_sort(ports.begin(), ports.end(), [](const SystemPort& port, const SystemPort& other) {
    if (port.usb != other.usb) return port.usb;
    return NaturalLess(port.name, other.name);
  });
  return ports;
}

std::vector<NumberedPort> NumberPorts(std::vector<SystemPort> ports, const PortMapping& mapping) {
  ports = OrderPorts(std::move(ports));
  std::vector<NumberedPort> numbered;
  for (const auto& [number, device] : mapping)
    numbered.push_back(MappedPort(number, device, ports));

  std::vector<NumberedPort> unnumbered;
  int number = NextFreeNumber(0, mapping);
  for (const SystemPort& port : ports) {
    if (IsMapped(mapping, port.device)) continue;
    if (number > MaxPortNumber) {
      unnumbered.push_back({0, port.device, port.description, port.serial_number});
      continue;
    }
    numbered.push_back({number, port.device, port.description, port.serial_number});
    number = NextFreeNumber(number, mapping);
  }
  std::sort(numbered.begin(), numbered.end(),
            [](const NumberedPort& port, const NumberedPort& other) { return port.number < other.number; });
  numbered.insert(numbered.end(), unnumbered.begin(), unnumbered.end());
  return numbered;
}

std::vector<SystemPort> SystemPorts() {
  std::vector<SystemPort> ports;
  for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts()) {
    SystemPort port{info.portName().toStdString(), info.systemLocation().toStdString(),
                    info.description().toStdString()};
    if (port.description.empty()) port.description = info.manufacturer().toStdString();
    port.serial_number = info.serialNumber().toStdString();
    port.usb = info.hasVendorIdentifier() || port.name.starts_with("ttyUSB") || port.name.starts_with("ttyACM");
    ports.push_back(std::move(port));
  }
  return ports;
}

std::vector<NumberedPort> ListPorts(const PortMapping& mapping) {
  return NumberPorts(SystemPorts(), mapping);
}

}  // namespace walrim
