// What the transfers of all kinds have in common.
#include <algorithm>
#include <exception>
#include <stdexcept>
#include <utility>

#include "device/ArrivedRecords.h"
#include "device/Garmin.h"
#include "text/Numbers.h"

namespace walrim {

namespace {

constexpr std::string_view DataLossMessage =
    "GPS内のデータ不具合もしくは通信エラーのためデータの取りこぼしが発生した可能性があります．";

double Seconds(std::chrono::nanoseconds time) {
  return std::chrono::duration<double>(time).count();
}

}  // namespace

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

Garmin::Garmin(InternalData& data, SerialPort& port, const Clock& clock, EventLoop& event_loop, Desktop& desktop)
    : data_(data), clock_(clock), desktop_(desktop), link_(port, clock, event_loop, session), status_(desktop) {}

ByteBuffer Garmin::BuildPacketData(int packet_id, int first, int second, EncodeNotes* notes) const {
  const LinkPids& pids = session.link_pids;
  const DeviceProtocols& types = session.protocols;
  if (packet_id == Pid_Ack_Byte) return IntegerToBuffer(first);
  if (packet_id == Pid_Product_Rqst) return IntegerToBuffer(0);
  if (packet_id == pids.Pid_Command_Data) return IntegerToBuffer(first);
  if (packet_id == pids.Pid_Records) return IntegerToBuffer(first);
  if (packet_id == pids.Pid_Xfer_Cmplt) return IntegerToBuffer(first);
  if (packet_id == pids.Pid_Wpt_Data) return EncodeWaypoint(data_, first, types.WaypointType, notes);
  if (packet_id == pids.Pid_Rte_Hdr) return EncodeRouteHeader(data_, first, types.RouteHeaderType, notes);
  if (packet_id == pids.Pid_Rte_Wpt_Data) return EncodeRoutePoint(data_, first, second, types.WaypointType, notes);
  if (packet_id == pids.Pid_Rte_Link_Data) return EncodeRouteLink(data_, first, second, types.RouteLinkType, notes);
  if (packet_id == pids.Pid_Trk_Data) return EncodeTrackPoint(data_, first, types.TrackPointType);
  if (packet_id == pids.Pid_Trk_Hdr) return EncodeTrackHeader(data_, first, types.TrackHeaderType, notes);
  return {};
}

PacketReply Garmin::ExchangePacket(int packet_id, int first, int second) {
  const ByteBuffer data = BuildPacketData(packet_id, first, second);
  const ExpectedAnswer answer = AnswerTo(packet_id, first);
  return session.checked_link ? link_.ExchangeChecked(packet_id, data, answer)
                              : link_.ExchangeData(packet_id, data, answer);
}

/// A request for product data and a command that begins a transfer are answered by more than one frame.
ExpectedAnswer Garmin::AnswerTo(int packet_id, int first) const {
  const bool command =
      packet_id == session.link_pids.Pid_Command_Data && first != session.device_commands.Cmnd_Abort_Transfer;
  if (packet_id == Pid_Product_Rqst || command) return ExpectedAnswer::AckAndAnswer;
  return packet_id == Pid_Ack_Byte ? ExpectedAnswer::OneFrame : ExpectedAnswer::Ack;
}

bool Garmin::OpenForTransfer(std::string_view port_name) {
  std::string settings;
  if (link_.OpenPort(port_name, settings)) return true;
  session.report.port_failed = true;
  ShowPortProblem(port_name);
  return false;
}

/// Receivers and USB adapters may leave a gap behind the ACK that is longer than a burst's settle time.
void Garmin::ReceiveBehindAck(PacketReply& reply, int ack_slot) {
  if (ack_slot < reply.Count) return;
  if (session.checked_link) {
    reply.Count = ReceiveTimeout;  // it was waited for already
  } else {
    link_.ReceiveMore(reply);
  }
}

/// Whoever refuses, or talks on and on without answering, is there.
void Garmin::NoteFirstAnswer(const PacketReply& reply) {
  const bool failed = reply.Count < 0;
  const bool is_there = !failed || reply.why == NoAnswer::Refusal || reply.why == NoAnswer::Trickle;
  session.report.cancelled = failed && reply.why == NoAnswer::Cancel;
  session.report.not_acknowledged = is_there;
  session.report.no_answer = !is_there && !session.report.cancelled;
}

void Garmin::NoteStatus(const PacketReply& reply) {
  if (reply.Count >= 0) return;
  session.TransferAborted = true;
  session.report.refused = reply.why == NoAnswer::Refusal;
  session.report.cancelled = reply.why == NoAnswer::Cancel;
}

std::int32_t Garmin::AbortedResult(std::int16_t last_status) const {
  const bool silent = last_status == ReceiveTimeout && !session.report.refused && !session.report.cancelled;
  return silent ? TransferTimedOut : TransferGivenUp;
}

void Garmin::ShowDataLoss() {
  session.report.data_loss = true;
  desktop_.ShowMessage(DataLossMessage);
}

void Garmin::ShowProgress(std::string_view counters, std::int64_t done, std::int64_t total,
                          std::chrono::nanoseconds start) {
  status_.SetStatus(ProgressText(counters, done, total, Seconds(clock_.Monotonic() - start)));
  status_.SetProgress(done, total);
}

void Garmin::EndProgress() {
  status_.SetStatus("POP");
  status_.SetProgress(0, 0);
}

/// Nonsense in answer to the abort changes nothing of what has come before it.
void Garmin::SendAbort() {
  try {
    const PacketReply reply =
        ExchangePacket(session.link_pids.Pid_Command_Data, session.device_commands.Cmnd_Abort_Transfer);
    if (reply.Count < 0 && reply.why == NoAnswer::Cancel) session.report.cancelled = true;
  } catch (const std::out_of_range&) {
    link_.DrainInput();
  }
}

/// Tells the receiver to stop without looking at its answers any more: they have made no sense.
void Garmin::AbandonTransfer() {
  link_.SendPacket(session.link_pids.Pid_Command_Data, IntegerToBuffer(session.device_commands.Cmnd_Abort_Transfer));
  link_.DrainInput();
}

std::int32_t Garmin::EndDownload(std::int16_t last_status, std::int32_t count) {
  SendAbort();
  return session.TransferAborted ? AbortedResult(last_status) : count;
}

std::int32_t Garmin::RunDownload(std::string_view port_name, TransferMode mode, const DownloadPlan& plan) {
  session.report = {};
  if (!OpenForTransfer(port_name)) return 0;
  const PortGuard guard(link_);
  PacketReply reply = ExchangePacket(session.link_pids.Pid_Command_Data, plan.command);
  NoteStatus(reply);
  const int ack = FindAckSlot(reply);
  if (ack < 0) {
    NoteFirstAnswer(reply);
    return 0;
  }
  ReceiveBehindAck(reply, ack);
  NoteStatus(reply);
  if (reply.Count < 0) return EndDownload(reply.Count, 0);
  const Frame& records = reply.Slot(ack + 1);
  const std::int32_t count = IntegerFromBytes(PacketData(records));
  const bool too_many = mode == TransferMode::Transfer && count > plan.most;
  if (records.Id() != session.link_pids.Pid_Records || count < 0 || too_many) {
    session.report.bad_answer = true;
    session.TransferAborted = true;
    return EndDownload(0, 0);
  }
  if (mode == TransferMode::CountOnly || count == 0) {
    SendAbort();
    return count;
  }
  session.RecordsAnnounced = count;
  return ReceiveRecords(plan);
}

std::int32_t Garmin::ReceiveRecords(const DownloadPlan& plan) {
  incoming_.Clear(plan.kind);
  status_.SetStatus("PUSH");
  bool data_lost = false;
  std::int16_t last_status = 0;
  try {
    last_status = ReceiveLoop(plan, data_lost);
  } catch (const std::exception&) {
    EndProgress();
    AbandonTransfer();
    throw;
  }
  EndProgress();
  if (!session.TransferAborted) {
    if (!plan.complete()) data_lost = true;
    data_.TakeKind(plan.kind, incoming_);
    if (data_lost) ShowDataLoss();
  }
  return EndDownload(last_status, session.RecordsAnnounced);
}

std::int16_t Garmin::ReceiveLoop(const DownloadPlan& plan, bool& data_lost) {
  const LinkPids& pids = session.link_pids;
  const std::int32_t count = session.RecordsAnnounced;
  ArrivedRecords arrived(session.checked_link, count, [&](const Frame& record) {
    const bool on_globe = plan.take(record);
    if (record.damaged || !on_globe) ++session.report.damaged_records;
  });
  PacketReply reply = ExchangePacket(Pid_Ack_Byte, pids.Pid_Records);
  NoteStatus(reply);
  const auto start = clock_.Monotonic();
  while (true) {
    link_.YieldOnce();
    const bool is_record = reply.Count >= 1 && plan.is_record(reply.FirstId());
    data_lost = reply.Count >= 1 && reply.FirstId() == pids.Pid_Xfer_Cmplt;
    if (data_lost) break;
    if (is_record) {
      arrived.Add(reply.Slot(1), reply.waited);
      reply = ExchangePacket(Pid_Ack_Byte, reply.FirstId());
      // Once all that was announced has come, the answer to the last ACK is not needed.
      if (!arrived.AllThere()) NoteStatus(reply);
    }
    const std::int32_t received = arrived.Received();
    ShowProgress("[" + std::to_string(received) + "/" + std::to_string(count) + "]", received, count, start);
    const bool goes_on = arrived.AllThere() && reply.Count >= 1 && plan.is_record(reply.FirstId());
    // A receiver that goes on after the announced number had more to give.
    data_lost = goes_on && !arrived.OneMayBeRepeated(reply.Slot(1));
    if (session.TransferAborted || data_lost || (arrived.AllThere() && !goes_on)) break;
    // A packet that is none of these is neither acknowledged nor skipped: only the user ends this.
    if (!is_record) link_.Idle();
  }
  arrived.Store();
  session.report.missing_records = session.TransferAborted ? 0 : count - arrived.Received();
  return arrived.AllThere() ? std::int16_t{0} : reply.Count;
}

bool Garmin::CheckUpload(const std::vector<UploadStep>& steps) {
  for (const UploadStep& step : steps) {
    EncodeNotes notes;
    try {
      static_cast<void>(BuildPacketData(step.packet_id, step.first, step.second, &notes));
    } catch (const std::overflow_error&) {
      session.report.unsendable = step.name + "の値が受信機の範囲を超えています．";
      return false;
    }
    if (notes.lacking) {
      session.report.unsendable = step.name + "の文字「" + notes.lacking->utf8 + "」は受信機に送れません．";
      return false;
    }
    if (notes.cut) session.report.cut_records.push_back(step.name);
    if (notes.replaced) session.report.replaced_records.push_back(step.name);
  }
  return true;
}

std::int16_t Garmin::SendRecords(const std::vector<UploadStep>& steps, ProgressBase progress_base) {
  const auto start = clock_.Monotonic();
  const auto total = static_cast<std::int64_t>(steps.size());
  std::int16_t last_status = 0;
  std::int64_t number = 0;
  for (const UploadStep& step : steps) {
    ++number;
    link_.YieldOnce();
    const std::int64_t done = progress_base == ProgressBase::WithThisPacket ? number : number - 1;
    if (!step.counters.empty() && !step.shown_after) ShowProgress(step.counters, done, total, start);
    if (session.TransferAborted) break;
    const PacketReply reply = ExchangePacket(step.packet_id, step.first, step.second);
    last_status = reply.Count;
    NoteStatus(reply);
    if (last_status >= 0 && FindAckSlot(reply) < 0) ++session.report.refused_records;
    if (step.shown_after) ShowProgress(step.counters, number, total, start);
  }
  return last_status;
}

std::int32_t Garmin::RunUpload(std::string_view port_name, int command, const std::vector<UploadStep>& steps,
                               ProgressBase progress_base, std::int32_t result_count) {
  session.report = {};
  if (!CheckUpload(steps)) {
    session.TransferAborted = true;
    return TransferGivenUp;
  }
  if (!OpenForTransfer(port_name)) return 0;
  const PortGuard guard(link_);
  PacketReply reply = ExchangePacket(session.link_pids.Pid_Records, static_cast<int>(steps.size()));
  NoteStatus(reply);
  if (FindAckSlot(reply) < 0) {
    NoteFirstAnswer(reply);
    return 0;
  }
  status_.SetStatus("PUSH");
  std::int16_t last_status = 0;
  try {
    last_status = SendRecords(steps, progress_base);
  } catch (const std::exception&) {
    EndProgress();
    AbandonTransfer();
    throw;
  }
  EndProgress();
  if (session.TransferAborted) {
    SendAbort();
    return AbortedResult(last_status);
  }
  reply = ExchangePacket(session.link_pids.Pid_Xfer_Cmplt, command);
  session.report.end_refused = FindAckSlot(reply) < 0;
  session.report.cancelled = reply.Count < 0 && reply.why == NoAnswer::Cancel;
  return result_count;
}

std::int32_t Garmin::Download(DataKind kind, std::string_view port_name, TransferMode mode) {
  switch (kind) {
    case DataKind::Waypoint:
      return DownloadWaypoints(port_name, mode);
    case DataKind::Route:
      return DownloadRoutes(port_name, mode);
    case DataKind::TrackLog:
      return DownloadTracks(port_name, mode);
  }
  return 0;
}

std::int32_t Garmin::Upload(DataKind kind, std::string_view port_name) {
  switch (kind) {
    case DataKind::Waypoint:
      return UploadWaypoints(port_name);
    case DataKind::Route:
      return UploadRoutes(port_name);
    case DataKind::TrackLog:
      return UploadTracks(port_name);
  }
  return 0;
}

}  // namespace walrim
