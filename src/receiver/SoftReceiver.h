// A receiver made of software: what a GPS receiver does on its end of the line, as one state machine without a thread
// or a clock of its own.
//
// Commands (A010) and transfers (A100, A200/A201, A300/A301) on link protocol L001:
//   product request (254)        -> ACK, product data (255); for its ACK, on models that announce, the list of
//                                   protocols (253)
//   command 7, 4 or 6 (10)       -> ACK, Records (27) with the count, for each ACK the next record, then
//                                   Xfer_Cmplt (12) with the command's number
//   command 5 or 2               -> ACK, date and time (14) or position (17)
//   command 0                    -> ACK, and the running transfer ends
//   Records, records, Xfer_Cmplt -> an ACK for each; the records then replace the memory of their kind,
//                                   whichever command the end names
// A NAK has the last packet sent again, or, where none waits for its ACK, the last ACK or NAK; a frame that does not
// hold is answered with NAK.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <span>
#include <vector>

#include "receiver/LineEnd.h"
#include "receiver/LineFrame.h"
#include "receiver/ReceiverFaults.h"
#include "receiver/ReceiverMemory.h"
#include "receiver/ReceiverModel.h"

namespace walrim {

/// A strict receiver takes and keeps what StrictRules.h says: it refuses ill-formed packets and unannounced records
/// with NAK, and sends every second again what was not acknowledged.
enum class ReceiverTemper { Lenient, Strict };

/// Noon in Japan on the last day of the demonstration data, in seconds since 1989/12/31 00:00:00 UTC.
[[nodiscard]] std::int64_t DemoUtcSeconds();

class SoftReceiver : public LineEnd {
 public:
  /// A line of baud bits a second takes ten bit times for a byte, in either direction; with 0 it takes no time.
  SoftReceiver(const ReceiverModel& model, ReceiverMemory memory, int baud, ReceiverFaults faults,
               ReceiverTemper temper = ReceiverTemper::Lenient);
  SoftReceiver(const SoftReceiver&) = delete;
  SoftReceiver& operator=(const SoftReceiver&) = delete;

  /// Sets the clock to utc_s seconds since 1989/12/31 00:00:00 at this time; it runs on. Until then it is
  /// DemoUtcSeconds at time 0.
  void SetClock(std::int64_t utc_s, std::chrono::nanoseconds now);

  /// Its firmware is so many roll-overs of 1024 weeks behind: it tells its clock earlier by that, and its logs
  /// too where it recorded them itself, until its clock is set with packet 14. Logs that are uploaded stay as they
  /// came.
  void FallBack(int roll_overs, bool with_logs);

  /// Puts bytes on the line towards the receiver. They pass one after the other from now, or from when the line is
  /// free; a frame is answered from when its last byte has passed.
  void Receive(std::span<const std::uint8_t> bytes, std::chrono::nanoseconds now) override;
  /// When the last byte put on the line towards the receiver has passed; in the past when the line is free.
  [[nodiscard]] std::chrono::nanoseconds InputFreeAt() const { return input_free_at_; }

  /// When the next byte from the receiver has passed, or it does something unasked; nothing when neither will be. What
  /// it does unasked (fixes, repetitions) begins with the first call of Receive or Send.
  [[nodiscard]] std::optional<std::chrono::nanoseconds> NextDue() const override;
  [[nodiscard]] std::vector<std::uint8_t> Send(std::chrono::nanoseconds now) override;

  /// True once the cable has been pulled, which happens only as a fault. Nothing passes any more.
  [[nodiscard]] bool LineClosed() const override;

  [[nodiscard]] const ReceiverMemory& Memory() const { return memory_; }

 private:
  struct DueByte {
    std::chrono::nanoseconds due;
    std::uint8_t byte;
  };
  struct Download {
    std::uint16_t command;
    std::vector<LinePacket> records;
    std::size_t sent;
  };
  struct Upload {
    std::size_t announced;
    std::vector<LinePacket> records;
  };

  /// When something happens that no byte of the host brings about; nothing when nothing will.
  [[nodiscard]] std::optional<std::chrono::nanoseconds> NextUnasked() const;
  [[nodiscard]] std::optional<std::chrono::nanoseconds> RepeatDue() const;
  void ActUnasked(std::chrono::nanoseconds now);

  void TakeFrame(const ReceivedFrame& frame);
  void TakePacket(const LinePacket& packet);
  void TakeCommand(std::uint16_t command);
  void StartDownload(std::uint16_t command);
  [[nodiscard]] std::vector<LinePacket> RecordsToSend(std::uint16_t command);
  /// As the receiver believes it to be.
  [[nodiscard]] std::int64_t UtcSeconds(std::chrono::nanoseconds at) const;
  void TakeDateTime(const LinePacket& packet);
  void TakeAck(const LinePacket& ack);
  void TakeNak();
  void StartUpload(std::uint16_t count);
  void TakeRecord(const LinePacket& packet);
  void FinishUpload(std::uint16_t command);
  [[nodiscard]] std::vector<LinePacket>* MemoryOf(std::uint16_t command);

  [[nodiscard]] bool Strict() const { return temper_ == ReceiverTemper::Strict; }
  [[nodiscard]] bool Allowed(const LinePacket& packet) const;

  void SendProductData();
  /// The ACK or NAK of a packet that came.
  void SendVerdict(std::uint8_t verdict, std::uint8_t packet_id);
  void SendAck(std::uint8_t packet_id);
  /// What is sent next begins this much later.
  void LaterBy(std::chrono::milliseconds time);
  [[nodiscard]] LinePacket AckOf(std::uint8_t packet_id) const;
  void SendAnswer(const LinePacket& packet);
  void SendNextRecord();
  void SendRecord(const std::vector<LinePacket>& records, std::size_t index);
  void SendBurst(const std::vector<LinePacket>& records);
  /// A packet that stands until the host has acknowledged it.
  void SendPacket(const LinePacket& packet, std::uint8_t checksum_error = 0);
  void SendAwaited(const LinePacket& packet, const std::vector<std::uint8_t>& frame);
  void SendFrame(const std::vector<std::uint8_t>& frame);
  void SendBytes(std::span<const std::uint8_t> bytes);
  [[nodiscard]] bool NoFrameLeft() const;
  [[nodiscard]] bool RefusesPacket(const LinePacket& packet);

  const ReceiverModel& model_;
  ReceiverMemory memory_;
  ReceiverFaults faults_;
  ReceiverTemper temper_;
  std::chrono::nanoseconds byte_time_;
  std::chrono::nanoseconds clock_start_;  // when UTC was 1989/12/31 00:00:00

  std::int64_t clock_behind_s_ = 0;
  std::int64_t logs_behind_s_ = 0;

  LineFrameReader reader_;
  std::chrono::nanoseconds input_free_at_{std::chrono::nanoseconds::min()};
  std::chrono::nanoseconds output_free_at_{std::chrono::nanoseconds::min()};
  std::deque<DueByte> outgoing_;
  int frames_sent_ = 0;
  int packets_taken_ = 0;
  int acks_sent_ = 0;

  std::optional<LinePacket> last_verdict_;
  std::optional<LinePacket> refused_;
  std::optional<LinePacket> awaiting_ack_;
  std::chrono::nanoseconds awaiting_since_{0};
  std::optional<std::chrono::nanoseconds> next_fix_at_;
  std::optional<Download> download_;
  std::optional<Upload> upload_;
};

}  // namespace walrim
