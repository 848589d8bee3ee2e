// One exchange on the checked link: a packet goes out until it has been taken, and its answer comes in whole.
#pragma once

#include <chrono>
#include <optional>

#include "device/CheckedFrameReader.h"
#include "device/PacketLink.h"

namespace walrim {

class PacketLink::CheckedExchange {
 public:
  /// A packet is sent, or a damaged frame asked for, at most this often.
  static constexpr int MostTries = 3;

  CheckedExchange(PacketLink& link, ExpectedAnswer answer) : link_(link), answer_(answer) {}

  /// See PacketLink::ExchangeChecked.
  [[nodiscard]] PacketReply Run(int packet_id, const ByteBuffer& data);
  /// Drops what still comes of a burst of which so many frames have been taken, and counts it. Throws
  /// std::out_of_range when they are more than a burst can have.
  void FinishBurst(int& frames);
  /// See PacketLink::AcknowledgeInput.
  void AcknowledgeRest();

 private:
  enum class Trouble { None, Silence, Refused, Damaged, AckMissing };

  [[nodiscard]] PacketReply Failed(Trouble trouble);
  [[nodiscard]] bool TakeDamagedAck();
  void Send(int packet_id, const ByteBuffer& data);
  [[nodiscard]] bool PassOver(CheckedFrameReader::Found found);
  [[nodiscard]] Trouble Collect();
  [[nodiscard]] Trouble TakeWhole(const Frame& frame);
  [[nodiscard]] Trouble TakeDamaged(const Frame& frame);
  [[nodiscard]] Trouble WaitBehindDamage();
  [[nodiscard]] bool IsStale(const Frame& frame) const;
  [[nodiscard]] bool AckIsDue() const;
  [[nodiscard]] bool WaitIsOver() const;
  [[nodiscard]] std::chrono::nanoseconds Patience() const;
  [[nodiscard]] Trouble TroubleOfSilence();
  void Repeat(Trouble trouble, int packet_id, const ByteBuffer& data);
  [[nodiscard]] CheckedFrameReader::Found NextFrame(std::chrono::nanoseconds patience);
  [[nodiscard]] CheckedFrameReader::Found TakeInput();
  [[nodiscard]] CheckedFrameReader::Found TakeByte(std::uint8_t byte);
  void TraceFound(CheckedFrameReader::Found found);
  void TraceCutShort();
  void TakeFrame(const Frame& frame);
  [[nodiscard]] bool Complete() const;
  [[nodiscard]] bool BeganTooEarly() const;
  [[nodiscard]] Trouble SettleLateBurst(CheckedFrameReader::Found first);
  void DropWhatFollows();

  PacketLink& link_;
  ExpectedAnswer answer_;
  CheckedFrameReader reader_;
  PacketReply reply_;

  int packet_id_ = 0;
  int frames_ = 0;  ///< that came since something was sent
  // What was sent last; a NAK is sent again too.
  int sent_id_ = 0;
  ByteBuffer sent_data_;
  bool repeated_ = false;
  int damaged_id_ = 0;  ///< what a NAK names; 0 where no id came
  bool damage_passed_over_ = false;
  bool settled_ = false;
  std::optional<Frame> damaged_ack_;

  std::chrono::nanoseconds started_at_{};
  std::chrono::nanoseconds sent_at_{};
  std::chrono::nanoseconds sent_line_time_{};
  std::chrono::nanoseconds slowest_answer_{};
  std::chrono::nanoseconds frame_began_{};
  std::chrono::nanoseconds frame_ended_{};
};

}  // namespace walrim
