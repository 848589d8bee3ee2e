// The receiver made of software behind the serial port interface, in the same process.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Clock.h"
#include "platform/SerialPort.h"
#include "receiver/HeldContents.h"
#include "receiver/ReceiverFaults.h"
#include "receiver/SoftReceiver.h"

namespace walrim {

struct DemoReceiverOptions {
  std::string model = "eTrex";  ///< what the port's name does not tell
  int baud = 9600;              ///< the line's pace; 0 takes no time
  ReceiverFaults faults;        ///< of every model's receiver
  ReceiverTemper temper = ReceiverTemper::Lenient;
  std::optional<HeldContents> contents;  ///< none: the demonstration data
};

/// The names of the models that "demo:MODEL" takes.
[[nodiscard]] std::vector<std::string> DemoModelNames();

/// Opens as "demo" and "demo:MODEL"; other names and unknown models are missing ports. Each model's receiver keeps
/// its memory while the object lives, and its line is gone for good once it was pulled.
class DemoSerialPort : public SerialPort {
 public:
  /// clock must outlive the object. sleep returns after this long, or earlier.
  DemoSerialPort(DemoReceiverOptions options, const Clock& clock, std::function<void(std::chrono::nanoseconds)> sleep);

  [[nodiscard]] PortResult Open(std::string_view comm_port, int baud) override;
  [[nodiscard]] bool PortOpen() const override { return receiver_ != nullptr; }
  void Close() override;

  [[nodiscard]] std::size_t InBufferCount() override;
  void ClearInBuffer() override;
  [[nodiscard]] std::optional<std::uint8_t> Input() override;

  void Output(std::uint8_t byte) override;
  [[nodiscard]] std::size_t OutBufferCount() override;
  /// Drops what waits behind the byte that is on the line.
  void ClearOutBuffer() override;

  void Wait(std::chrono::milliseconds at_most) override;
  [[nodiscard]] bool LineLost() const override;

  /// What a model's receiver holds; nullptr when its port has not been opened yet.
  [[nodiscard]] const ReceiverMemory* MemoryOf(std::string_view model) const;

 private:
  struct WaitingByte {
    std::chrono::nanoseconds since;
    std::uint8_t byte;
  };

  [[nodiscard]] SoftReceiver& ReceiverOf(const ReceiverModel& model);
  void Pump();
  void PumpOutput(std::chrono::nanoseconds now);
  [[nodiscard]] std::size_t OutCountAt(std::chrono::nanoseconds now) const;
  [[nodiscard]] std::chrono::nanoseconds NextEvent(std::chrono::nanoseconds now,
                                                   std::chrono::nanoseconds at_latest) const;

  DemoReceiverOptions options_;
  const Clock& clock_;
  std::function<void(std::chrono::nanoseconds)> sleep_;
  std::map<std::string_view, std::unique_ptr<SoftReceiver>> receivers_;  // by the name in the table of models
  SoftReceiver* receiver_ = nullptr;
  std::deque<std::uint8_t> in_;
  std::deque<WaitingByte> out_;
  std::size_t told_in_count_ = 0;
};

}  // namespace walrim
