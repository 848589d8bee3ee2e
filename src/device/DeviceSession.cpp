#include "device/DeviceSession.h"

#include <algorithm>
#include <stdexcept>

#include "device/Messages.h"
#include "text/Numbers.h"

namespace walrim {

std::string FormatRemaining(std::int64_t seconds) {
  return PadNumber(seconds / 60, 2) + ":" + PadNumber(seconds % 60, 2);
}

std::string ProgressText(std::string_view counters, std::int64_t done, std::int64_t total, double elapsed_s) {
  std::string text(counters);
  text += " Remaining ";
  if (done > 0) {
    const double left =
        static_cast<double>(std::max<std::int64_t>(total - done, 0)) * (elapsed_s / static_cast<double>(done));
    text += FormatRemaining(static_cast<std::int64_t>(left));
  }
  return text;
}

bool DeviceSession::ProbePort(std::string_view port_name) {
  if (link_.ProbePort(port_name)) return true;
  ShowMessage(device_messages::PortNotOpened(port_name, link_.LastPortResult()));
  return false;
}

bool DeviceSession::OpenPort(std::string_view port_name) {
  if (link_.OpenPort(port_name)) return true;
  report_.port_failed = true;
  ShowMessage(device_messages::PortNotOpened(port_name, link_.LastPortResult()));
  return false;
}

PacketReply DeviceSession::Exchange(int packet_id, std::span<const std::uint8_t> data, ExpectedAnswer answer) {
  return checked_link_ ? link_.ExchangeChecked(packet_id, data, answer) : link_.ExchangeData(packet_id, data, answer);
}

PacketReply DeviceSession::Exchange(int packet_id, int value, ExpectedAnswer answer) {
  return Exchange(packet_id, NumberData(value), answer);
}

void DeviceSession::ReceiveBehindAck(PacketReply& reply, int ack_slot) {
  if (ack_slot < reply.count) return;
  if (checked_link_) {
    reply.count = ReceiveTimeout;  // it was waited for already
  } else {
    link_.ReceiveMore(reply);
  }
}

/// Whoever refuses, or talks on and on without answering, is there.
void DeviceSession::NoteFirstAnswer(const PacketReply& reply) {
  const bool failed = reply.count < 0;
  const bool is_there = !failed || reply.why == NoAnswer::Refusal || reply.why == NoAnswer::Trickle;
  report_.cancelled = failed && reply.why == NoAnswer::Cancel;
  report_.not_acknowledged = is_there;
  report_.no_answer = !is_there && !report_.cancelled;
}

void DeviceSession::NoteStatus(const PacketReply& reply) {
  if (reply.count >= 0) return;
  Abort();
  report_.refused = reply.why == NoAnswer::Refusal;
  report_.cancelled = reply.why == NoAnswer::Cancel;
}

std::int32_t DeviceSession::AbortedResult(std::int16_t last_status) const {
  const bool silent = last_status == ReceiveTimeout && !report_.refused && !report_.cancelled;
  return silent ? TransferTimedOut : TransferGivenUp;
}

void DeviceSession::SendAbort() {
  try {
    const PacketReply reply = Exchange(PacketId::CommandData, DeviceCommand::AbortTransfer, ExpectedAnswer::Ack);
    if (reply.count < 0 && reply.why == NoAnswer::Cancel) report_.cancelled = true;
  } catch (const std::out_of_range&) {
    link_.DrainInput();
  }
}

void DeviceSession::AbandonTransfer() {
  link_.SendPacket(PacketId::CommandData, NumberData(DeviceCommand::AbortTransfer));
  link_.DrainInput();
}

void DeviceSession::ShowProgress(std::string_view counters, std::int64_t done, std::int64_t total,
                                 std::chrono::nanoseconds start) {
  const std::chrono::duration<double> elapsed = Now() - start;
  desktop_.SetStatusCaption(caption_ + " " + ProgressText(counters, done, total, elapsed.count()));
  desktop_.SetProgress(done, total);
}

void DeviceSession::EndProgress() {
  desktop_.SetStatusCaption(caption_);
  desktop_.SetProgress(0, 0);
}

}  // namespace walrim
