// The sending side of the checked link: a packet goes out until it has been taken, and its answer comes in whole.
//
//   Send -> Collect          frame after frame, until the answer is complete (Trouble::None) or something is wrong:
//             whole frame      a NAK: Refused. A stale one (of an earlier exchange) is left out. Any other is a part of
//                              the answer; behind damage, and still without the ACK: AckMissing.
//             damaged frame    where the ACK of a command is due: it may be that ACK; what comes next tells. Else
//                              WaitBehindDamage: a whole frame behind it counts, nothing behind it: Damaged.
//             early frame      the burst before goes on: SettleLateBurst waits for its end, and takes its last frames.
//             silence          nothing at all: Silence. Half a frame, or an answer that lacks its ACK: Damaged,
//                              AckMissing.
//
//             +-------------------- Collect <---------------------+
//             |                        |                          |
//           None        Refused, Damaged, AckMissing           Repeat    Damaged: NAK, for the frame once more
//             |                        |                          |      Refused, AckMissing: the packet once more
//             |                        +-- fewer than MostTries --+      Refused of a NAK: that NAK once more
//             |                        |
//             |           Silence, or the last try --- the ACK that is due came damaged: that will do ---+
//             |                        |                                                                 |
//             |                     Failed: the reply tells why                                          |
//             +--> DropWhatFollows <---------------------------------------------------------------------+
//                        |
//                      reply
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "device/CheckedFrameReader.h"
#include "device/CheckedInput.h"
#include "device/PacketLink.h"

namespace walrim {

/// One exchange.
class PacketLink::CheckedExchange {
 public:
  /// A packet is sent, or a damaged frame asked for, at most this often.
  static constexpr int MostTries = 3;

  CheckedExchange(PacketLink& link, ExpectedAnswer answer) : link_(link), input_(link), answer_(answer) {}

  /// See PacketLink::ExchangeChecked.
  [[nodiscard]] PacketReply Run(int packet_id, std::span<const std::uint8_t> data);

 private:
  /// What stands between a packet and its answer.
  enum class Trouble { None, Silence, Refused, Damaged, AckMissing };

  void Send(int packet_id, std::span<const std::uint8_t> data);
  void Repeat(Trouble trouble, int packet_id, std::span<const std::uint8_t> data);
  [[nodiscard]] Trouble Collect();
  [[nodiscard]] Trouble TakeWhole(const Frame& frame);
  [[nodiscard]] Trouble TakeDamaged(const Frame& frame);
  [[nodiscard]] Trouble WaitBehindDamage();
  [[nodiscard]] Trouble SettleLateBurst(CheckedFrameReader::Found first);
  [[nodiscard]] Trouble TroubleOfSilence();
  [[nodiscard]] bool IsStale(const Frame& frame) const;
  [[nodiscard]] bool AckIsDue() const;
  [[nodiscard]] bool Complete() const;
  void TakeFrame(const Frame& frame);
  [[nodiscard]] bool TakeDamagedAck();
  [[nodiscard]] PacketReply Failed(Trouble trouble);
  void DropWhatFollows();

  PacketLink& link_;
  CheckedInput input_;
  ExpectedAnswer answer_;
  PacketReply reply_;

  int packet_id_ = 0;
  int frames_ = 0;  ///< that came since something was sent
  // What was sent last; a NAK is sent again too.
  int sent_id_ = 0;
  std::vector<std::uint8_t> sent_data_;
  bool repeated_ = false;
  int damaged_id_ = 0;  ///< what a NAK names; 0 where no id came
  bool damage_passed_over_ = false;
  bool settled_ = false;
  std::optional<Frame> damaged_ack_;
};

}  // namespace walrim
