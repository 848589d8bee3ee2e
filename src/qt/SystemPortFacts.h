// What this computer knows of its serial ports.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Clock.h"
#include "platform/PortFacts.h"
#include "qt/PortList.h"

namespace walrim {

/// Where the computer tells of itself.
struct SystemPlaces {
  std::filesystem::path processes = "/proc";
  std::filesystem::path devices = "/sys/class/tty";
  std::uint16_t gpsd_port = 2947;  ///< on 127.0.0.1
};

/// Other users' processes show what they have locked, not what they have open.
class SystemPortFacts final : public PortFacts {
 public:
  /// clock must outlive this object.
  explicit SystemPortFacts(const Clock& clock, PortMapping mapping = {}, SystemPlaces places = {});

  /// Notes which ports are there now; to be called now and then by whoever wants to know what has gone.
  void Look(const std::vector<NumberedPort>& ports);

  [[nodiscard]] std::vector<PortChoice> Ports() const override;
  [[nodiscard]] std::vector<PortHolder> Holders(std::string_view device) const override;
  [[nodiscard]] PortAdapter Adapter(std::string_view device) const override;
  [[nodiscard]] bool VanishedLately(std::string_view device) const override;

 private:
  const Clock& clock_;
  PortMapping mapping_;
  SystemPlaces places_;
  std::map<std::string, std::chrono::nanoseconds> seen_;  ///< when each device was there last
};

/// Whether a GPS daemon's answer to "?DEVICES;" names a device.
[[nodiscard]] bool GpsdLists(std::string_view answer, std::string_view device);

}  // namespace walrim
