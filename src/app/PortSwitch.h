// One serial port made of several: the name decides which of them is opened.
#pragma once

#include <functional>
#include <string_view>

#include "platform/SerialPort.h"

namespace walrim {

/// Hands everything to one of two ports, chosen when it is opened. Both must outlive it.
class PortSwitch : public SerialPort {
 public:
  using IsSecond = std::function<bool(std::string_view comm_port)>;

  PortSwitch(SerialPort& first, SerialPort& second, IsSecond is_second);

  [[nodiscard]] PortResult Open(std::string_view comm_port, int baud) override;
  [[nodiscard]] bool PortOpen() const override { return chosen_->PortOpen(); }
  void Close() override { chosen_->Close(); }
  [[nodiscard]] std::size_t InBufferCount() override { return chosen_->InBufferCount(); }
  void ClearInBuffer() override { chosen_->ClearInBuffer(); }
  [[nodiscard]] std::optional<std::uint8_t> Input() override { return chosen_->Input(); }
  void Output(std::uint8_t byte) override { chosen_->Output(byte); }
  [[nodiscard]] std::size_t OutBufferCount() override { return chosen_->OutBufferCount(); }
  void ClearOutBuffer() override { chosen_->ClearOutBuffer(); }
  void Wait(std::chrono::milliseconds at_most) override { chosen_->Wait(at_most); }
  [[nodiscard]] bool LineLost() const override { return chosen_->LineLost(); }

 private:
  SerialPort& first_;
  SerialPort& second_;
  IsSecond is_second_;
  SerialPort* chosen_;
};

}  // namespace walrim
