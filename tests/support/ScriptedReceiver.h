// A receiver of a few lines for transfer tests: what it holds is a list of packets.
#pragma once

#include <chrono>
#include <cstddef>
#include <map>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "support/Fakes.h"
#include "support/Packets.h"

namespace walrim {

class ScriptedReceiver {
 public:
  explicit ScriptedReceiver(ScriptedPort& port) {
    port.script = [this](const Bytes& wire) { return Answer(Unwrapped(wire)); };
  }

  std::string_view description = "eTrex Software Version 2.14";
  int product_id = 130;
  std::vector<PlainPacket> packets;                    ///< what a download sends
  std::map<int, std::vector<PlainPacket>> packets_of;  ///< the same for one transfer command
  std::optional<int> announced;                        ///< instead of the number of packets
  std::optional<std::size_t> silent_after;             ///< answers no further after this many received frames
  bool acknowledges = true;
  bool tells_clock = true;
  bool takes_clock = false;
  Bytes clock{12, 8, 0xD2, 7, 3, 0, 0, 0};  ///< 2002/12/08 03:00:00 as packet 14
  std::chrono::nanoseconds delay{std::chrono::milliseconds{2}};
  std::chrono::nanoseconds gap{};     ///< between an ACK and the packet behind it
  std::vector<PlainPacket> received;  ///< everything the host sent

  [[nodiscard]] std::size_t CountReceived(const PlainPacket& packet) const {
    std::size_t count = 0;
    for (const PlainPacket& one : received)
      count += one == packet ? 1U : 0U;
    return count;
  }
  /// Ids of the received packets that are not ACKs, in order.
  [[nodiscard]] std::vector<int> ReceivedIds() const {
    std::vector<int> ids;
    for (const PlainPacket& one : received) {
      if (one.id != 6) ids.push_back(one.id);
    }
    return ids;
  }

 private:
  using Answers = std::vector<ScriptedPort::Answer>;

  Answers Answer(const PlainPacket& packet) {
    received.push_back(packet);
    if (silent_after && received.size() > *silent_after) return {};
    switch (packet.id) {
      case 254:
        return AckAnd(254, {255, ProductData()});
      case 10:
        return OnCommand(packet.data.at(0));
      case 6:
        return OnAck(packet.data.at(0));
      case 14:
        if (takes_clock) clock = packet.data;
        return {{delay, Ack(packet.id)}};
      default:
        return {{delay, Ack(packet.id)}};
    }
  }
  Bytes Ack(int id) const { return acknowledges ? WireFrame(6, Int16(id)) : WireFrame(21, Int16(id)); }
  Answers AckAnd(int id, const PlainPacket& packet) const {
    const Bytes frame = WireFrame(packet.id, packet.data);
    if (!acknowledges) return {{delay, Ack(id)}};
    return {{delay, Ack(id)}, {delay + gap, frame}};
  }
  Bytes ProductData() const {
    Bytes data = Int16(product_id);
    const Bytes version = Int16(214);
    data.insert(data.end(), version.begin(), version.end());
    data.insert(data.end(), description.begin(), description.end());
    data.push_back(0);
    return data;
  }
  const std::vector<PlainPacket>& Packets() const {
    const auto found = packets_of.find(command_);
    return found == packets_of.end() ? packets : found->second;
  }
  Answers OnCommand(int command) {
    if (command == 0 || (command == 5 && !tells_clock)) return {{delay, Ack(10)}};
    if (command == 5) return AckAnd(10, {14, clock});
    command_ = command;
    next_ = 0;
    awaiting_ = 27;
    return AckAnd(10, {27, Int16(announced.value_or(static_cast<int>(Packets().size())))});
  }
  /// Only the ACK of a number of records or of a record calls for the next one.
  Answers OnAck(int id) {
    if (id != awaiting_ || next_ > Packets().size()) return {};
    const PlainPacket packet = next_ < Packets().size() ? Packets()[next_] : PlainPacket{12, Int16(command_)};
    ++next_;
    awaiting_ = packet.id;
    return {{delay, WireFrame(packet.id, packet.data)}};
  }

  int command_ = 0;
  int awaiting_ = 0;
  std::size_t next_ = 0;
};

}  // namespace walrim
