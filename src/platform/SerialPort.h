// The serial line, as the device link sees it.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace walrim {

/// Why a port could not be opened.
enum class PortProblem { None, Missing, InUse, NotPermitted, Other };

/// The outcome of opening a port. On success problem is None.
struct PortResult {
  PortProblem problem = PortProblem::None;
  std::string device;  ///< the device node behind the port's name, where there is one
  std::string group;   ///< NotPermitted: the group that may use the device node, where there is one to join
  std::string detail;  ///< Other: the reason in words

  [[nodiscard]] bool Ok() const { return problem == PortProblem::None; }
};

/// A serial port that is opened and closed by name. Owned by the face of the program; one byte is 8N1.
/// No member throws; a line that is lost while open reads as silence and swallows what is written.
class SerialPort {
 public:
  virtual ~SerialPort() = default;

  /// Opens the port of this name ("1" to "4", a device path, or what else the implementation knows) at a rate in bits
  /// a second. An open port is closed first.
  [[nodiscard]] virtual PortResult Open(std::string_view comm_port, int baud) = 0;
  [[nodiscard]] virtual bool PortOpen() const = 0;
  virtual void Close() = 0;

  /// Bytes that have come and were not read yet.
  [[nodiscard]] virtual std::size_t InBufferCount() = 0;
  /// Drops the bytes that have come and were not read yet.
  virtual void ClearInBuffer() = 0;
  /// Takes one byte; nothing when none has come.
  [[nodiscard]] virtual std::optional<std::uint8_t> Input() = 0;

  /// Hands one byte over for sending.
  virtual void Output(std::uint8_t byte) = 0;
  /// Bytes handed over that have not left yet; 0 on a lost line.
  [[nodiscard]] virtual std::size_t OutBufferCount() = 0;
  virtual void ClearOutBuffer() = 0;

  /// Sleeps until more input has come than InBufferCount last told, something was sent, or at most this long.
  virtual void Wait(std::chrono::milliseconds at_most) = 0;

  /// True once the line has gone (cable pulled, device removed) since it was opened.
  [[nodiscard]] virtual bool LineLost() const = 0;
};

}  // namespace walrim
