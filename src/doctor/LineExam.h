// The connection assistant: what is wrong with a line, and where a receiver answers.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "doctor/LineReport.h"
#include "platform/Clock.h"
#include "platform/EventLoop.h"
#include "platform/PortFacts.h"
#include "platform/SerialPort.h"

namespace walrim {

/// Examines one line at a time. A line at 9600 baud takes 5 seconds at most, one of another speed 12. The port is
/// closed when a call returns. Nothing but requests for the product data, and what acknowledges their answers, is sent.
class LineExam {
 public:
  /// A step has been done; the report holds what is known so far.
  using StepDone = std::function<void(ExamStep, const LineReport&)>;
  /// A port has been asked; whether a receiver answered.
  using PortAsked = std::function<void(const PortChoice&, bool)>;

  /// All must outlive this object.
  LineExam(SerialPort& port, const Clock& clock, EventLoop& event_loop, const PortFacts& facts)
      : port_(port), clock_(clock), event_loop_(event_loop), facts_(facts) {}

  [[nodiscard]] LineReport Examine(std::string_view port_name, const StepDone& step_done);
  /// Asks each port in turn, but for those that somebody keeps, until one answers: that one, or nothing.
  [[nodiscard]] std::optional<PortChoice> FindReceiver(const PortAsked& port_asked);

  /// Ends the call that runs.
  void Cancel() { cancelled_ = true; }

 private:
  using Time = std::chrono::nanoseconds;
  /// What one request for the product data brought.
  struct Answer {
    bool whole = false;
    std::optional<Time> ack;
    Time end{};
    int damaged_frames = 0;
    int stray_bytes = 0;
    std::vector<std::uint8_t> product;
  };
  struct Listener;

  void Find(LineReport& report);
  [[nodiscard]] bool OpenPort(LineReport& report);
  void FindAtOtherSpeeds(LineReport& report);
  [[nodiscard]] bool FindSentences(LineReport& report, Time longest);
  void TakeFigures(LineReport& report);
  void AskHolders(LineReport& report);
  [[nodiscard]] Answer Ask(Time patience);
  void SendFrame(int packet_id, std::span<const std::uint8_t> data);
  void Listen(Time longest, const std::function<bool(std::uint8_t)>& take);
  void Done(ExamStep step, const LineReport& report) const;

  SerialPort& port_;
  const Clock& clock_;
  EventLoop& event_loop_;
  const PortFacts& facts_;
  StepDone step_done_;
  std::vector<std::uint8_t> unasked_;  ///< what came while nothing was asked, or was no frame
  bool cancelled_ = false;
};

}  // namespace walrim
