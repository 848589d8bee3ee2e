#include "device/Download.h"

#include <exception>
#include <string>

#include "device/Messages.h"

namespace walrim {

Download::Download(DeviceSession& session, DataSet& data, DataKind kind)
    : session_(session), data_(data), kind_(kind), records_(IncomingRecordsOf(kind, session.Protocols(), incoming_)) {}

std::int32_t Download::End(std::int16_t last_status, std::int32_t count) {
  session_.SendAbort();
  return session_.Aborted() ? session_.AbortedResult(last_status) : count;
}

std::int32_t Download::Run(std::string_view port_name, TransferMode mode) {
  if (!session_.OpenPort(port_name)) return 0;
  const PortGuard guard(session_.Link());
  PacketReply reply =
      session_.Exchange(PacketId::CommandData, records_->TransferCommand(), ExpectedAnswer::AckAndAnswer);
  session_.NoteStatus(reply);
  const int ack = FindAckSlot(reply);
  if (ack < 0) {
    session_.NoteFirstAnswer(reply);
    return 0;
  }
  session_.ReceiveBehindAck(reply, ack);
  session_.NoteStatus(reply);
  if (reply.count < 0) return End(reply.count, 0);
  const Frame& answer = reply.Slot(ack + 1);
  const std::int32_t count = NumberOf(PacketData(answer));
  const bool too_many = mode == TransferMode::Transfer && count > records_->MostAnnounced();
  if (answer.Id() != PacketId::Records || count < 0 || too_many) {
    session_.Report().bad_answer = true;
    session_.Abort();
    return End(0, 0);
  }
  if (mode == TransferMode::CountOnly || count == 0) {
    session_.SendAbort();
    return count;
  }
  return ReceiveRecords(count);
}

std::int32_t Download::ReceiveRecords(std::int32_t announced) {
  session_.Report().announced_records = announced;
  session_.BeginProgress();
  std::int16_t last_status = 0;
  try {
    last_status = ReceiveLoop(announced);
  } catch (const std::exception&) {
    session_.EndProgress();
    session_.AbandonTransfer();
    throw;
  }
  session_.EndProgress();
  if (!session_.Aborted()) {
    if (!records_->Finish(announced)) data_lost_ = true;
    data_.Take(kind_, incoming_);
    session_.Report().data_loss = data_lost_;
    if (data_lost_) session_.ShowMessage(device_messages::DataLoss);
  }
  return End(last_status, announced);
}

std::int16_t Download::ReceiveLoop(std::int32_t announced) {
  ArrivedRecords arrived(session_.CheckedLinkInUse(), announced, [this](const Frame& record) { TakeIn(record); });
  PacketReply reply = session_.Exchange(PacketId::Ack, PacketId::Records, ExpectedAnswer::OneFrame);
  session_.NoteStatus(reply);
  const auto start = session_.Now();
  while (true) {
    session_.Link().YieldOnce();
    data_lost_ = reply.count >= 1 && reply.FirstId() == PacketId::XferCmplt;
    if (data_lost_) break;
    const bool is_record = IsRecord(reply);
    if (is_record) {
      arrived.Add(reply.Slot(1), reply.waited);
      reply = session_.Exchange(PacketId::Ack, reply.FirstId(), ExpectedAnswer::OneFrame);
      // Once all that was announced has come, the answer to the last ACK is not needed.
      if (!arrived.AllThere()) session_.NoteStatus(reply);
    }
    const std::int32_t received = arrived.Received();
    session_.ShowProgress("[" + std::to_string(received) + "/" + std::to_string(announced) + "]", received, announced,
                          start);
    if (IsOver(arrived, reply)) break;
    // A packet that is none of these is neither acknowledged nor skipped: only the user ends this.
    if (!is_record) session_.Link().Idle();
  }
  arrived.Store();
  session_.Report().missing_records = session_.Aborted() ? 0 : announced - arrived.Received();
  return arrived.AllThere() ? std::int16_t{0} : reply.count;
}

void Download::TakeIn(const Frame& record) {
  if (!records_->Take(record)) ++session_.Report().damaged_records;
}

/// A receiver that goes on after the announced number had more to give.
bool Download::IsOver(const ArrivedRecords& arrived, const PacketReply& reply) {
  const bool goes_on = arrived.AllThere() && IsRecord(reply);
  data_lost_ = goes_on && !arrived.OneMayBeRepeated(reply.Slot(1));
  return session_.Aborted() || data_lost_ || (arrived.AllThere() && !goes_on);
}

}  // namespace walrim
