// What identification and the transfers share: the link that is in use, its exchanges, and what is told of them.
#pragma once

#include <chrono>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "device/LinkChoice.h"
#include "device/Models.h"
#include "device/PacketLink.h"
#include "device/TransferReport.h"
#include "platform/Clock.h"
#include "platform/Desktop.h"
#include "platform/EventLoop.h"
#include "platform/SerialPort.h"

namespace walrim {

class DeviceSession {
 public:
  DeviceSession(SerialPort& port, const Clock& clock, EventLoop& event_loop, Desktop& desktop)
      : clock_(clock), desktop_(desktop), link_(port, clock, event_loop, stop_) {}
  DeviceSession(const DeviceSession&) = delete;
  DeviceSession& operator=(const DeviceSession&) = delete;

  [[nodiscard]] PacketLink& Link() { return link_; }
  [[nodiscard]] const PacketLink& Link() const { return link_; }
  [[nodiscard]] TransferReport& Report() { return report_; }
  [[nodiscard]] const TransferReport& Report() const { return report_; }

  void SetLinkChoice(LinkChoice choice) { link_choice_ = choice; }
  [[nodiscard]] LinkChoice Choice() const { return link_choice_; }
  void UseCheckedLink(bool checked) { checked_link_ = checked; }
  [[nodiscard]] bool CheckedLinkInUse() const { return checked_link_; }
  void SetProtocols(const DeviceProtocols& protocols) { protocols_ = protocols; }
  [[nodiscard]] const DeviceProtocols& Protocols() const { return protocols_; }

  void Cancel() { stop_ = {true, true}; }
  void ClearCancel() { stop_ = {}; }
  /// Ends the transfer that is under way.
  void Abort() { stop_.aborted = true; }
  [[nodiscard]] bool Aborted() const { return stop_.aborted; }

  /// False, with the port's message shown, when the port cannot be opened.
  [[nodiscard]] bool OpenPort(std::string_view port_name);
  /// The same for a port that is closed again at once.
  [[nodiscard]] bool ProbePort(std::string_view port_name);

  /// Sends a packet on the link in use, and receives its answer.
  [[nodiscard]] PacketReply Exchange(int packet_id, std::span<const std::uint8_t> data, ExpectedAnswer answer);
  /// The same for a packet whose data are one number.
  [[nodiscard]] PacketReply Exchange(int packet_id, int value, ExpectedAnswer answer);
  /// Receivers and USB adapters may leave a gap behind the ACK that is longer than a burst's settle time.
  void ReceiveBehindAck(PacketReply& reply, int ack_slot);

  /// Notes why the first packet of a transfer had no ACK.
  void NoteFirstAnswer(const PacketReply& reply);
  /// Ends the transfer where an exchange has failed.
  void NoteStatus(const PacketReply& reply);
  /// The result of a transfer that was aborted.
  [[nodiscard]] std::int32_t AbortedResult(std::int16_t last_status) const;
  /// Nonsense in answer to the abort changes nothing of what has come before it.
  void SendAbort();
  /// Tells the receiver to stop without looking at its answers any more: they have made no sense.
  void AbandonTransfer();

  [[nodiscard]] std::chrono::nanoseconds Now() const { return clock_.Monotonic(); }
  void ShowMessage(std::string_view text) { desktop_.ShowMessage(text); }
  /// Progress is shown behind the text of the status line that stands there now; its end leaves that text alone.
  void BeginProgress() { caption_ = desktop_.StatusCaption(); }
  void ShowProgress(std::string_view counters, std::int64_t done, std::int64_t total, std::chrono::nanoseconds start);
  void EndProgress();

 private:
  const Clock& clock_;
  Desktop& desktop_;
  StopFlags stop_;
  PacketLink link_;
  std::string caption_;
  LinkChoice link_choice_ = LinkChoice::Automatic;
  bool checked_link_ = false;
  DeviceProtocols protocols_ = RichestProtocols;
  TransferReport report_;
};

/// "[i/n] Remaining mm:ss"; without a time while nothing has been moved (done 0).
/// elapsed_s are the seconds since the transfer began; the rest is extrapolated in a straight line.
[[nodiscard]] std::string ProgressText(std::string_view counters, std::int64_t done, std::int64_t total,
                                       double elapsed_s);
/// Minutes and seconds, at least two digits each: 75 is "01:15", 5400 is "90:00".
[[nodiscard]] std::string FormatRemaining(std::int64_t seconds);

}  // namespace walrim
