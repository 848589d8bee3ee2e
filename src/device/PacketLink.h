// The packet link to a receiver: link protocol L001's framing over a serial port.
//
//   frame = DLE id size data*size checksum DLE ETX        DLE 10h, ETX 03h
//
// Size, data and checksum bytes of 10h are sent twice. The checksum makes the sum of id, size, data and checksum 0
// modulo 256. The link does not test the checksum of what it receives, sends no NAK and repeats nothing; damage is
// only noted.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "device/ByteBuffer.h"
#include "device/DeviceSession.h"
#include "device/FrameTrace.h"
#include "platform/Clock.h"
#include "platform/EventLoop.h"
#include "platform/SerialPort.h"

namespace walrim {

inline constexpr std::uint8_t DLE = 16;
inline constexpr std::uint8_t ETX = 3;
/// Size of a receive that timed out, and count of an exchange that failed so.
inline constexpr std::int16_t ReceiveTimeout = -9;
/// Settings of a receiver's line.
inline constexpr std::string_view DefaultPortSettings = "9600,N,8,1";
/// How long a silent line is waited for.
inline constexpr std::chrono::milliseconds ReceiveTimeoutTime{1500};
/// The shortest settle time of a burst, before the pacing factor.
inline constexpr std::chrono::milliseconds ShortestSettleTime{20};
/// Most data bytes that a frame carries: its buffer holds 256 bytes, six of them framing.
inline constexpr std::size_t LongestSentData = 250;

/// A received frame without its doubled bytes, from DLE to ETX.
struct Frame {
  /// Bytes that any frame may take; a frame whose size byte promises 251 to 255 data bytes may be that much longer.
  static constexpr std::size_t Capacity = 256;
  static constexpr std::size_t LongestCapacity = 255 + 6;

  std::array<std::uint8_t, LongestCapacity> bytes{};
  std::int16_t Size = 0;  ///< size byte + 6, or ReceiveTimeout
  bool damaged = false;   ///< its length does not fit its size byte, or its checksum is wrong

  [[nodiscard]] int Id() const { return bytes[1]; }
};

/// Data of a received frame: as many bytes as its size byte says (those that never came are 0).
[[nodiscard]] ByteBuffer PacketData(const Frame& frame);

/// The frames of one exchange. slots[1..Count] in arrival order; slot 0 stays empty.
struct PacketReply {
  static constexpr int LastSlot = 5;

  std::array<Frame, LastSlot + 1> slots;
  std::int16_t Count = 0;  ///< number of the last slot filled, or ReceiveTimeout

  /// Slot number k; throws std::out_of_range above LastSlot.
  [[nodiscard]] const Frame& Slot(int k) const { return slots.at(static_cast<std::size_t>(k)); }
  /// Packet id of the first frame; nothing matches -1.
  [[nodiscard]] int FirstId() const { return Count >= 1 ? slots[1].Id() : -1; }
};

/// The first slot with an ACK; -1 when there is none.
[[nodiscard]] int FindAckSlot(const PacketReply& reply);

class PacketLink {
 public:
  PacketLink(SerialPort& port, const Clock& clock, EventLoop& event_loop, DeviceSession& session);

  /// nullptr: no trace. The trace must outlive the link or be taken away.
  void SetTrace(FrameTrace* trace);

  /// Opens the port with both buffers empty; empty settings become DefaultPortSettings. False when it cannot be
  /// opened; LastPortResult then says why.
  [[nodiscard]] bool OpenPort(std::string_view port_name, std::string& settings);
  /// Opens the port and closes it at once; true when both succeed.
  [[nodiscard]] bool ProbePort(std::string_view port_name);
  void ClosePort();
  [[nodiscard]] const PortResult& LastPortResult() const { return last_port_result_; }

  /// Sends a frame and waits until it has left the output buffer. data.Size is 0..255.
  void SendPacket(int packet_id, const ByteBuffer& data);
  /// One frame. A burst is taken once it has settled: no new byte for as long as it took to begin, at least 20 ms
  /// times the pacing factor. Size is ReceiveTimeout after 1.5 s without a byte, and at once on a lost line.
  /// Throws std::out_of_range for a frame beyond Frame's capacity.
  [[nodiscard]] Frame ReceivePacket();
  /// All frames of a burst. Throws std::out_of_range at a sixth one.
  [[nodiscard]] PacketReply ReceivePackets();
  /// Receives once more behind the frames of reply; for a frame that a receiver sends late after its ACK.
  void ReceiveMore(PacketReply& reply);
  /// Drops what has come, sends, and receives the answer.
  [[nodiscard]] PacketReply ExchangeData(int packet_id, const ByteBuffer& data);

  /// Drops what comes until the line has been quiet for a moment, a second and a half at most.
  void DrainInput();

  /// Lets the event loop run.
  void YieldOnce() { event_loop_.Yield(); }
  /// Lets the event loop run, and rests a moment; for loops that wait for nothing but the user.
  void Idle();

 private:
  class FrameBuilder;

  void WaitForBurst(std::chrono::nanoseconds& last_progress, bool& timed_out);
  void WaitForOutput();
  void Rest(std::chrono::milliseconds at_most);
  void YieldNowAndThen();
  [[nodiscard]] std::chrono::nanoseconds TraceTime() const { return clock_.Monotonic() - trace_start_; }
  void Note(std::string_view text);

  SerialPort& port_;
  const Clock& clock_;
  EventLoop& event_loop_;
  DeviceSession& session_;
  FrameTrace* trace_ = nullptr;
  std::chrono::nanoseconds trace_start_{};
  std::chrono::nanoseconds last_yield_{};
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
