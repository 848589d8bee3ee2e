// The serial line on the computer's ports.
#pragma once

#include <QSerialPort>

#include "platform/SerialPort.h"
#include "qt/DeviceNode.h"
#include "qt/PortList.h"

namespace walrim {

/// A port of the port list ("1" to "4") or a device path ("/dev/ttyUSB0", "/dev/pts/3", a link to one).
/// Needs a QCoreApplication. Bytes handed to Output leave at the latest in the next OutBufferCount or Wait. No member
/// runs the event loop.
class QtSerialPort final : public SerialPort {
 public:
  /// Numbers of the mapping go before those of the system's ports.
  explicit QtSerialPort(PortMapping mapping = {});
  ~QtSerialPort() override;

  [[nodiscard]] PortResult Open(std::string_view comm_port, int baud) override;
  [[nodiscard]] bool PortOpen() const override;
  void Close() override;

  [[nodiscard]] std::size_t InBufferCount() override;
  void ClearInBuffer() override;
  [[nodiscard]] std::optional<std::uint8_t> Input() override;

  void Output(std::uint8_t byte) override;
  [[nodiscard]] std::size_t OutBufferCount() override;
  void ClearOutBuffer() override;

  void Wait(std::chrono::milliseconds at_most) override;

  [[nodiscard]] bool LineLost() const override;

 private:
  [[nodiscard]] std::optional<std::string> DevicePath(std::string_view comm_port) const;
  [[nodiscard]] PortResult OpenDevice(PortResult found, int baud);
  void FetchInput();
  void Flush();
  [[nodiscard]] bool Usable() const { return port_.isOpen() && !line_lost_; }
  int Look(short events, int at_most_ms = 0) const;
  [[nodiscard]] std::size_t QueuedBySystem(unsigned long which) const;

  PortMapping mapping_;
  Descriptor node_;
  QSerialPort port_;
  mutable bool line_lost_ = false;  ///< as far as it has been seen
  mutable bool looked_ = false;     ///< in the last Wait, for whoever asks next whether the line is lost
  std::size_t counted_ = 0;         ///< what InBufferCount last told
};

}  // namespace walrim
