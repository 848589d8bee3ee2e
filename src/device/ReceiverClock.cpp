#include "device/ReceiverClock.h"

#include <stdexcept>

#include "device/types/DateTime.h"

namespace walrim {

namespace {

/// Not every receiver tells its date; nobody waits longer for one.
constexpr std::chrono::seconds LongestQuestion{2};

std::optional<CivilTime> ReceiveClock(DeviceSession& session) {
  PacketReply reply =
      session.Exchange(PacketId::CommandData, DeviceCommand::TransferTime, ExpectedAnswer::AckAndAnswer);
  const int ack = FindAckSlot(reply);
  if (ack < 0) return std::nullopt;
  session.ReceiveBehindAck(reply, ack);
  if (reply.count <= ack) return std::nullopt;
  const Frame& answer = reply.Slot(ack + 1);
  if (answer.damaged || answer.Id() != PacketId::DateTimeData) return std::nullopt;
  session.Link().Acknowledge(answer.Id());
  return DecodeDateTime(PacketData(answer));
}

}  // namespace

std::optional<CivilTime> AskReceiverClock(DeviceSession& session, std::string_view port_name) {
  if (!session.Link().OpenPort(port_name)) return std::nullopt;
  const PortGuard guard(session.Link());
  session.Link().LimitExchanges(LongestQuestion);
  try {
    return ReceiveClock(session);
  } catch (const std::out_of_range&) {
    return std::nullopt;  // what comes is no frame
  }
}

bool SetReceiverClock(DeviceSession& session, std::string_view port_name, const CivilTime& utc) {
  if (!session.OpenPort(port_name)) return false;
  const PortGuard guard(session.Link());
  try {
    return FindAckSlot(session.Exchange(PacketId::DateTimeData, EncodeDateTime(utc), ExpectedAnswer::Ack)) >= 0;
  } catch (const std::out_of_range&) {
    return false;
  }
}

}  // namespace walrim
