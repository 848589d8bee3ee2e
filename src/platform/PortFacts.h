// What the system knows of a serial port besides its bytes.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace walrim {

/// Who keeps a port, or may take it.
struct PortHolder {
  enum class Kind : std::uint8_t {
    Process,      ///< has it open, or locked; name and process tell which
    LockFile,     ///< a lock file names the process
    Gpsd,         ///< the GPS daemon lists it among its devices
    ModemManager  ///< runs, and asks every new port whether it is a modem
  };
  Kind kind = Kind::Process;
  std::string name;  ///< of the process, or the lock file's path; may be empty
  int process = 0;   ///< its number; 0 where it is not known

  friend bool operator==(const PortHolder&, const PortHolder&) = default;
};

/// The adapter behind a port.
struct PortAdapter {
  std::string usb_id;             ///< "067b:2303"; empty for a port without USB
  std::optional<int> latency_ms;  ///< how long it holds bytes back, where it tells

  /// Whether a screen reader for braille displays takes such adapters for its own on some systems.
  [[nodiscard]] bool TakenByBrltty() const { return usb_id == "1a86:7523" || usb_id == "10c4:ea60"; }
};

/// A port that can be asked for a receiver.
struct PortChoice {
  std::string name;    ///< as SerialPort::Open takes it
  std::string device;  ///< "/dev/ttyUSB0"

  friend bool operator==(const PortChoice&, const PortChoice&) = default;
};

class PortFacts {
 public:
  virtual ~PortFacts() = default;

  /// The ports there are now, in the order in which they are worth asking.
  [[nodiscard]] virtual std::vector<PortChoice> Ports() const = 0;
  /// Who keeps a device. Takes half a second at most; what cannot be seen is left out.
  [[nodiscard]] virtual std::vector<PortHolder> Holders(std::string_view device) const = 0;
  [[nodiscard]] virtual PortAdapter Adapter(std::string_view device) const = 0;
  /// Whether a device was there a moment ago and went by itself.
  [[nodiscard]] virtual bool VanishedLately(std::string_view device) const = 0;
};

}  // namespace walrim
