// The device module: identification and the transfers of all kinds.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "device/DeviceSession.h"
#include "device/FrameTrace.h"
#include "device/LinkChoice.h"
#include "device/Models.h"
#include "device/TransferReport.h"
#include "platform/Clock.h"
#include "platform/Desktop.h"
#include "platform/EventLoop.h"
#include "platform/SerialPort.h"
#include "records/DataSet.h"
#include "text/Dates.h"

namespace walrim {

/// Talks to one receiver at a time. Every operation opens the port and has it closed when it returns, also by an
/// exception. std::out_of_range leaves an operation where what comes is no frame, is too many, or is more than a data
/// set holds.
class Garmin {
 public:
  /// All must outlive this object.
  Garmin(SerialPort& port, const Clock& clock, EventLoop& event_loop, Desktop& desktop)
      : session_(port, clock, event_loop, desktop) {}

  /// Of the identifications to come.
  void SetLinkChoice(LinkChoice choice) { session_.SetLinkChoice(choice); }
  /// Stretches the settle time of received bursts; 0 is taken as 1.
  void SetPacing(float factor) { session_.Link().SetPacing(factor); }
  /// nullptr: no trace. The trace must outlive this object or be taken away.
  void SetTrace(FrameTrace* trace) { session_.Link().SetTrace(trace); }

  /// The user's Cancel: what runs is ended, and no silence is waited out any more. Holds until ClearCancel.
  void Cancel() { session_.Cancel(); }
  /// To be called before each identification and each transfer; a transfer that has failed leaves no other one to run.
  void ClearCancel() { session_.ClearCancel(); }

  /// Of the receiver that was identified last; RichestProtocols before.
  [[nodiscard]] const DeviceProtocols& Protocols() const { return session_.Protocols(); }
  /// Frames are tested, damaged ones sent again, and no burst is waited for.
  [[nodiscard]] bool CheckedLinkInUse() const { return session_.CheckedLinkInUse(); }
  /// Of the last identification or transfer.
  [[nodiscard]] const TransferReport& Report() const { return session_.Report(); }
  [[nodiscard]] std::int32_t RecordsAnnounced() const { return Report().announced_records; }
  /// Why the port could not be opened the last time, if so.
  [[nodiscard]] const PortResult& LastPortResult() const { return session_.Link().LastPortResult(); }
  /// Grows whenever something comes over the line: whoever waits sees progress.
  [[nodiscard]] std::int64_t InputSeen() const { return session_.Link().InputSeen(); }

  /// Identifies the receiver at a port, and chooses its protocols and the link. Shows the port-in-use message and
  /// returns an empty ProductInfo when the port cannot be opened. A silent receiver gives id -1. Report tells of a
  /// receiver that refuses (refused) and of Cancel (cancelled); both give an empty ProductInfo.
  [[nodiscard]] ProductInfo ConnectDevice(std::string_view port_name);

  // Transfers. Results: a count, TransferGivenUp, TransferTimedOut; 0 also when the first packet was not acknowledged.
  // Report tells the rest.

  /// What data holds of the kind stays as it is until all has come.
  [[nodiscard]] std::int32_t Download(DataSet& data, DataKind kind, std::string_view port_name, TransferMode mode);
  [[nodiscard]] std::int32_t Upload(const DataSet& data, DataKind kind, std::string_view port_name);

  /// What the receiver's clock tells, in UTC; nothing where the receiver does not tell a date within two seconds.
  [[nodiscard]] std::optional<CivilTime> AskClock(std::string_view port_name);
  /// Sets it; false where the receiver did not acknowledge that.
  [[nodiscard]] bool SetClock(std::string_view port_name, const CivilTime& utc);

 private:
  DeviceSession session_;
};

}  // namespace walrim
