// The packet link to a receiver: frames over a serial port, sent and received.
//
// The plain link does not test the checksum of what it receives, sends no NAK and repeats nothing; damage is only
// noted. A checked link tests, has damaged frames sent again, and waits no longer than for the frames that an exchange
// can have.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "device/Frame.h"
#include "device/FrameTrace.h"
#include "device/PacketIds.h"
#include "platform/Clock.h"
#include "platform/EventLoop.h"
#include "platform/SerialPort.h"

namespace walrim {

/// Size of a receive that timed out, and count of an exchange that failed so.
inline constexpr std::int16_t ReceiveTimeout = -9;
/// The rate of a receiver's line.
inline constexpr int LineBaud = 9600;
/// How long a silent line is waited for.
inline constexpr std::chrono::milliseconds ReceiveTimeoutTime{1500};
/// The shortest settle time of a burst, before the pacing factor.
inline constexpr std::chrono::milliseconds ShortestSettleTime{20};
/// How long an exchange may last in all. What the line can carry takes a fraction of it.
inline constexpr std::chrono::seconds LongestExchange{10};
/// A line without a byte for this long is quiet.
inline constexpr std::chrono::milliseconds QuietTime{100};
/// A byte on a line of 9600 baud: start bit, eight data bits, stop bit.
inline constexpr std::chrono::nanoseconds LineByteTime{10'000'000'000 / LineBaud};

/// What ends an operation before its time.
struct StopFlags {
  bool aborted = false;    ///< by the user, or because the transfer has failed
  bool cancelled = false;  ///< by the user: no silence is waited out any more
};

/// What kept an exchange from its answer.
enum class NoAnswer {
  Silence,  ///< or a line that was lost
  Refusal,  ///< a NAK at the third try
  Damage,   ///< damaged frames to the third try
  Trickle,  ///< bytes kept coming, but no answer
  Cancel    ///< the user's
};

/// The frames of one exchange. slots[1..count] in arrival order; slot 0 stays empty.
struct PacketReply {
  static constexpr int LastSlot = 5;

  std::array<Frame, LastSlot + 1> slots;
  std::int16_t count = 0;             ///< number of the last slot filled, or ReceiveTimeout
  NoAnswer why = NoAnswer::Silence;   ///< of ReceiveTimeout
  std::chrono::nanoseconds waited{};  ///< from the packet to the first byte of the frame behind it; checked link only

  /// Slot number k; throws std::out_of_range above LastSlot.
  [[nodiscard]] const Frame& Slot(int k) const { return slots.at(static_cast<std::size_t>(k)); }
  /// Packet id of the first frame; nothing matches -1.
  [[nodiscard]] int FirstId() const { return count >= 1 ? slots[1].Id() : -1; }
};

/// The frames that answer a packet.
enum class ExpectedAnswer {
  OneFrame,     ///< behind an ACK: the next record, or the end of them
  Ack,          ///< behind what is uploaded, and behind an abort
  AckAndAnswer  ///< behind a command
};

/// The first slot with an ACK; -1 when there is none.
[[nodiscard]] int FindAckSlot(const PacketReply& reply);

class PacketLink {
 public:
  /// All must outlive this object.
  PacketLink(SerialPort& port, const Clock& clock, EventLoop& event_loop, const StopFlags& stop)
      : port_(port), clock_(clock), event_loop_(event_loop), stop_(stop) {}

  /// Stretches the settle time of received bursts; 0 is taken as 1.
  void SetPacing(float factor) { pacing_factor_ = factor == 0.0F ? 1.0F : factor; }
  /// Grows over the whole run whenever something comes.
  [[nodiscard]] std::int64_t InputSeen() const { return input_seen_; }

  /// nullptr: no trace. The trace must outlive the link or be taken away.
  void SetTrace(FrameTrace* trace);

  /// Opens the port at LineBaud, with both buffers empty. False when it cannot be opened; LastPortResult then says
  /// why.
  [[nodiscard]] bool OpenPort(std::string_view port_name);
  /// Opens the port and closes it at once; true when both succeed.
  [[nodiscard]] bool ProbePort(std::string_view port_name);
  void ClosePort();
  [[nodiscard]] bool LineLost() const { return port_.LineLost(); }
  [[nodiscard]] const PortResult& LastPortResult() const { return last_port_result_; }

  /// Sends a frame with at most 255 bytes of data, and waits until it has left the output buffer.
  void SendPacket(int packet_id, std::span<const std::uint8_t> data);
  /// One frame. A burst is taken once it has settled: no new byte for as long as it took to begin, at least 20 ms
  /// times the pacing factor. size is ReceiveTimeout after 1.5 s without a byte, and at once on a lost line.
  /// Throws std::out_of_range for a frame beyond Frame's capacity.
  [[nodiscard]] Frame ReceivePacket();
  /// Drops what has come, sends, and receives the answer: the first burst with a frame that can be one. Whole frames
  /// that cannot are passed over: ACKs of other packets, and what comes unasked, which is acknowledged. ReceiveTimeout
  /// stands also for bytes that keep coming for LongestExchange.
  [[nodiscard]] PacketReply ExchangeData(int packet_id, std::span<const std::uint8_t> data, ExpectedAnswer answer);
  /// Receives once more, all frames of a burst, behind those of reply; for a frame that a receiver sends late after its
  /// ACK. Throws std::out_of_range at a sixth frame.
  void ReceiveMore(PacketReply& reply);
  /// Exchanges that are not over by then have failed, until the port is opened again.
  void LimitExchanges(std::chrono::nanoseconds from_now) { deadline_ = clock_.Monotonic() + from_now; }
  /// The answer that ExchangeData has brought, its frames read as they were published: none of their data ends one.
  /// Nothing where a size, a checksum or a doubled byte is wrong, or a byte belongs to no frame.
  [[nodiscard]] std::optional<PacketReply> AnswerAsPublished() const;
  /// The same on a checked link, where the answer can have as many frames as answer says. A damaged frame is answered
  /// with NAK, a NAK with the packet once more; after three tries, and after a silence of 1.5 s, the frames that are
  /// whole are the reply, or ReceiveTimeout where none is. The reply has no damaged frame but an ACK: one whose answer
  /// came, or one that the receiver did not send again. Frames that cannot be the answer are passed over, and what
  /// comes unasked is acknowledged. All tries together take LongestExchange at most; a cancelled transfer waits 1.5 s.
  /// Throws std::out_of_range at a sixth frame in one burst, and where no frame is found in what comes.
  [[nodiscard]] PacketReply ExchangeChecked(int packet_id, std::span<const std::uint8_t> data, ExpectedAnswer answer);

  /// Drops what comes until the line has been quiet for so long, a second and a half at most.
  void DrainInput(std::chrono::nanoseconds quiet = QuietTime);
  /// Acknowledges a packet whose ACK nothing answers.
  void Acknowledge(int packet_id);
  /// Acknowledges what comes unasked until the line has been quiet for a moment, a second and a half at most.
  void AcknowledgeInput();
  /// Writes a line of text into the trace.
  void Note(std::string_view text);

  /// Lets the event loop run.
  void YieldOnce() { event_loop_.Yield(); }
  /// Lets the event loop run, and rests a moment; for loops that wait for nothing but the user.
  void Idle();

 private:
  class FrameBuilder;
  class CheckedExchange;
  class CheckedInput;

  void TraceHeard(std::size_t begin, std::string_view mark);
  void WaitForBurst(std::chrono::nanoseconds& last_progress, bool& timed_out);
  [[nodiscard]] bool GivesUp(std::size_t count, std::chrono::nanoseconds waited,
                             std::chrono::nanoseconds last_progress);
  void BeginExchange(int packet_id, ExpectedAnswer answer);
  /// Why nothing more is waited for, whatever may still come.
  [[nodiscard]] std::optional<NoAnswer> WaitIsOver(std::chrono::nanoseconds last_progress) const;
  void TakeBurst(PacketReply& reply, std::vector<int>& unasked);
  [[nodiscard]] bool CanBeAnswer(const Frame& frame) const;
  [[nodiscard]] bool BelongsToNoTransfer(const Frame& frame) const;
  void WaitForOutput();
  void Rest(std::chrono::milliseconds at_most);
  void YieldNowAndThen();
  [[nodiscard]] std::chrono::nanoseconds TraceTime() const { return clock_.Monotonic() - trace_start_; }

  SerialPort& port_;
  const Clock& clock_;
  EventLoop& event_loop_;
  const StopFlags& stop_;
  float pacing_factor_ = 1.0F;
  std::int64_t input_seen_ = 0;
  FrameTrace* trace_ = nullptr;
  std::chrono::nanoseconds trace_start_{};
  std::chrono::nanoseconds last_yield_{};
  bool input_while_sending_ = false;  ///< something came before the last packet had left
  int burst_frames_ = 0;              ///< frames of the last checked exchange; 0 when it failed
  std::vector<std::uint8_t> heard_;   ///< bytes of the last exchange of the plain link
  // The exchange that is under way.
  int asked_id_ = 0;
  ExpectedAnswer asked_answer_ = ExpectedAnswer::AckAndAnswer;
  std::chrono::nanoseconds exchange_began_{};
  std::chrono::nanoseconds deadline_ = std::chrono::nanoseconds::max();
  NoAnswer why_ = NoAnswer::Silence;  ///< nothing came the last time
  PortResult last_port_result_;
};

/// Closes the link's port when it goes, whatever ended the operation.
class PortGuard {
 public:
  explicit PortGuard(PacketLink& link) : link_(link) {}
  PortGuard(const PortGuard&) = delete;
  PortGuard& operator=(const PortGuard&) = delete;
  ~PortGuard() { link_.ClosePort(); }

 private:
  PacketLink& link_;
};

}  // namespace walrim
