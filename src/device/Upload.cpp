#include "device/Upload.h"

#include <exception>

#include "device/OutgoingRecords.h"

namespace walrim {

namespace {

std::int16_t SendRecords(DeviceSession& session, const OutgoingRecords& records) {
  const auto start = session.Now();
  const auto total = static_cast<std::int64_t>(records.packets.size());
  std::int16_t last_status = 0;
  std::int64_t number = 0;
  for (const OutgoingPacket& packet : records.packets) {
    ++number;
    session.Link().YieldOnce();
    if (!packet.counters.empty() && records.shown != ShownProgress::Sent) {
      const std::int64_t done = records.shown == ShownProgress::AsIfSent ? number : number - 1;
      session.ShowProgress(packet.counters, done, total, start);
    }
    if (session.Aborted()) break;
    const PacketReply reply = session.Exchange(packet.id, packet.data, ExpectedAnswer::Ack);
    last_status = reply.count;
    session.NoteStatus(reply);
    if (last_status >= 0 && FindAckSlot(reply) < 0) ++session.Report().refused_records;
    if (records.shown == ShownProgress::Sent) session.ShowProgress(packet.counters, number, total, start);
  }
  return last_status;
}

}  // namespace

std::int32_t UploadRecords(DeviceSession& session, const DataSet& data, DataKind kind, std::string_view port_name) {
  TransferReport& report = session.Report();
  const OutgoingRecords records = OutgoingRecordsOf(data, kind, session.Protocols(), report);
  const auto count = static_cast<std::int32_t>(records.packets.size());
  if (!report.unsendable.empty()) {
    session.Abort();
    return TransferGivenUp;
  }
  if (!session.OpenPort(port_name)) return 0;
  const PortGuard guard(session.Link());
  PacketReply reply = session.Exchange(PacketId::Records, count, ExpectedAnswer::Ack);
  session.NoteStatus(reply);
  if (FindAckSlot(reply) < 0) {
    session.NoteFirstAnswer(reply);
    return 0;
  }
  session.BeginProgress();
  std::int16_t last_status = 0;
  try {
    last_status = SendRecords(session, records);
  } catch (const std::exception&) {
    session.EndProgress();
    session.AbandonTransfer();
    throw;
  }
  session.EndProgress();
  if (session.Aborted()) {
    session.SendAbort();
    return session.AbortedResult(last_status);
  }
  reply = session.Exchange(PacketId::XferCmplt, records.transfer_command, ExpectedAnswer::Ack);
  report.end_refused = FindAckSlot(reply) < 0;
  report.cancelled = reply.count < 0 && reply.why == NoAnswer::Cancel;
  return count;
}

}  // namespace walrim
