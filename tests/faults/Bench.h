// A program and a receiver made of software on one line, in virtual time.
#pragma once

#include <array>
#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/WalrimMain.h"
#include "cli/Watchdog.h"
#include "faults/Rows.h"
#include "receiver/DemoSerialPort.h"
#include "support/Fakes.h"

namespace walrim {

/// A port whose receiver is exchanged as a cable is. Keeps what went over it.
class LinePort : public SerialPort {
 public:
  explicit LinePort(const Clock& clock) : clock_(clock) {}

  void Plug(std::unique_ptr<DemoSerialPort> line) { line_ = std::move(line); }
  [[nodiscard]] DemoSerialPort& Line() { return *line_; }

  [[nodiscard]] PortResult Open(std::string_view comm_port, int baud) override { return line_->Open(comm_port, baud); }
  [[nodiscard]] bool PortOpen() const override { return line_->PortOpen(); }
  void Close() override { line_->Close(); }
  [[nodiscard]] std::size_t InBufferCount() override { return line_->InBufferCount(); }
  void ClearInBuffer() override { line_->ClearInBuffer(); }
  [[nodiscard]] std::optional<std::uint8_t> Input() override {
    const std::optional<std::uint8_t> byte = line_->Input();
    if (byte) {
      Turn(false).push_back(*byte);
      heard_at = clock_.Monotonic();
    }
    return byte;
  }
  void Output(std::uint8_t byte) override {
    Turn(true).push_back(byte);
    line_->Output(byte);
  }
  [[nodiscard]] std::size_t OutBufferCount() override { return line_->OutBufferCount(); }
  void ClearOutBuffer() override { line_->ClearOutBuffer(); }
  void Wait(std::chrono::milliseconds at_most) override { line_->Wait(at_most); }
  [[nodiscard]] bool LineLost() const override { return line_->LineLost(); }

  /// Bytes that went one way without a byte of the other way between them.
  struct OneWay {
    bool from_host = false;
    Bytes bytes;
  };
  std::vector<OneWay> turns;
  std::chrono::nanoseconds heard_at{};  ///< when the last byte was read

 private:
  Bytes& Turn(bool from_host) {
    if (turns.empty() || turns.back().from_host != from_host) turns.push_back({from_host, {}});
    return turns.back().bytes;
  }

  const Clock& clock_;
  std::unique_ptr<DemoSerialPort> line_;
};

/// Walrim at a terminal that nobody sits at.
class Bench {
 public:
  explicit Bench(Link link);

  /// Puts a receiver on the line. fault as on its command line; empty: none.
  void Plug(std::string_view model, const Amounts& holds, const std::string& fault, int baud);
  Outcome Run(Command command, std::optional<DataKind> kind);
  /// Forgets what was shown and what went over the line.
  void Forget();

  /// The lines of a kind that the data set shows.
  [[nodiscard]] std::vector<std::string> Lines(DataKind kind);
  [[nodiscard]] bool Stalled() const { return loop_.watchdog && loop_.watchdog->Stalled(); }

  FakeClock clock;
  LinePort port{clock};
  RecordingDesktop desktop;

 private:
  /// A new watchdog looks after each command.
  struct WatchedLoop : EventLoop {
    void Yield() override {
      if (watchdog) watchdog->Yield();
    }
    std::optional<Watchdog> watchdog;
  };
  WatchedLoop loop_;

 public:
  WalrimMain main{port, clock, loop_, desktop};
};

/// A packet of the program and what the receiver answered to it.
struct ExchangeOnLine {
  std::uint8_t id = 0;
  Bytes data;
  std::vector<std::uint8_t> answers;  ///< ids of the frames
};

/// The exchanges of a command without a fault.
[[nodiscard]] std::vector<ExchangeOnLine> CleanRun(const Row& row);

/// Where a row's phase stands in its clean run.
struct PhasePlace {
  int frame = 0;   ///< number of the receiver's frame, from 1
  int packet = 0;  ///< number of the packet before it that calls for an answer, ACKs left out
  std::uint8_t answer_id = 0;
};
/// Throws std::out_of_range where the exchanges are not as long as a clean run's.
[[nodiscard]] PhasePlace PlaceOf(const Row& row, const std::vector<ExchangeOnLine>& clean_run);

/// The fault with its number, as on the receiver's command line.
[[nodiscard]] std::string FaultText(const Row& row, const std::vector<ExchangeOnLine>& clean_run);

}  // namespace walrim
