// The device module: identification and the transfers of all kinds.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "data/InternalData.h"
#include "device/Codecs.h"
#include "device/DeviceSession.h"
#include "device/PacketLink.h"
#include "device/StatusLine.h"
#include "platform/Clock.h"
#include "platform/Desktop.h"
#include "platform/EventLoop.h"
#include "platform/SerialPort.h"

namespace walrim {

/// What a transfer routine does: move the records, or only ask how many there are.
enum class TransferMode { Transfer = 0, CountOnly = -1 };

// Results of transfer routines; 0 and above are counts.
inline constexpr std::int32_t TransferGivenUp = -1;
inline constexpr std::int32_t TransferTimedOut = -9;

/// "[i/n] Remaining mm:ss"; without a time while nothing has been moved (done 0).
/// elapsed_s are the seconds since the transfer began; the rest is extrapolated in a straight line.
[[nodiscard]] std::string ProgressText(std::string_view counters, std::int64_t done, std::int64_t total,
                                       double elapsed_s);
/// Minutes and seconds, at least two digits each: 75 is "01:15", 5400 is "90:00".
[[nodiscard]] std::string FormatRemaining(std::int64_t seconds);

/// Talks to one receiver at a time. Every operation opens the port and has it closed when it returns, also by an
/// exception. Exceptions (std::out_of_range, std::overflow_error) leave a transfer when a number or an index lies
/// beyond what the tables hold; the kind is then as far as it got.
class Garmin {
 public:
  /// All must outlive this object.
  Garmin(InternalData& data, SerialPort& port, const Clock& clock, EventLoop& event_loop, Desktop& desktop);

  DeviceSession session;
  [[nodiscard]] PacketLink& Link() { return link_; }
  /// Why the port could not be opened the last time, if so.
  [[nodiscard]] const PortResult& LastPortResult() const { return link_.LastPortResult(); }
  [[nodiscard]] StatusLine& Status() { return status_; }

  /// Identifies the receiver at a port, and chooses its protocols and the link (session.checked_link). Shows the
  /// port-in-use message and returns an empty ProductInfo when the port cannot be opened. A silent receiver gives id
  /// -1.
  [[nodiscard]] ProductInfo ConnectDevice(std::string_view port_name);
  /// The product request alone, once more where nothing or nonsense answers it. session.report tells of a receiver that
  /// refuses (refused) and of Cancel (cancelled); both give an empty ProductInfo.
  [[nodiscard]] ProductInfo RequestProduct(std::string_view port_name);
  /// Link protocol L001, command protocol A010.
  void SetDefaultProtocols();

  // Transfers. Results: a count, TransferGivenUp, TransferTimedOut; 0 also when the first packet was not acknowledged.
  // session.report tells the rest.

  [[nodiscard]] std::int32_t DownloadWaypoints(std::string_view port_name, TransferMode mode);
  [[nodiscard]] std::int32_t DownloadRoutes(std::string_view port_name, TransferMode mode);
  [[nodiscard]] std::int32_t DownloadTracks(std::string_view port_name, TransferMode mode);
  [[nodiscard]] std::int32_t UploadWaypoints(std::string_view port_name);
  [[nodiscard]] std::int32_t UploadRoutes(std::string_view port_name);
  [[nodiscard]] std::int32_t UploadTracks(std::string_view port_name);

  [[nodiscard]] std::int32_t Download(DataKind kind, std::string_view port_name, TransferMode mode);
  [[nodiscard]] std::int32_t Upload(DataKind kind, std::string_view port_name);

  /// Builds the data of a packet from its id and up to two arguments, drops pending input, sends it, and receives the
  /// answer.
  [[nodiscard]] PacketReply ExchangePacket(int packet_id, int first = 0, int second = 0);
  [[nodiscard]] ExpectedAnswer AnswerTo(int packet_id, int first) const;
  [[nodiscard]] ByteBuffer BuildPacketData(int packet_id, int first, int second, EncodeNotes* notes = nullptr) const;

 private:
  /// What a kind's download differs in.
  struct DownloadPlan {
    int command;                                   ///< the transfer command
    std::int32_t most;                             ///< more announced records than this are given up
    DataKind kind;                                 ///< what the records are
    std::function<bool(int packet_id)> is_record;  ///< whether a packet is one of the kind's records
    std::function<bool(const Frame&)> take;        ///< stores a record; false where its position is not on the globe
    std::function<bool()> complete;                ///< sets the counts after a normal end; false: records were dropped
  };

  /// One packet of an upload, with the counters shown while it goes.
  struct UploadStep {
    int packet_id;
    int first;
    int second;
    std::string counters;      ///< "[3/10]"; empty: nothing is shown
    std::string name;          ///< of the record, for messages
    bool shown_after = false;  ///< the counters are shown once the packet has gone, not while it goes
  };

  [[nodiscard]] std::int32_t RunDownload(std::string_view port_name, TransferMode mode, const DownloadPlan& plan);
  [[nodiscard]] std::int32_t ReceiveRecords(const DownloadPlan& plan);
  /// Receives until all have come or the transfer was aborted; returns the last exchange's status.
  [[nodiscard]] std::int16_t ReceiveLoop(const DownloadPlan& plan, bool& data_lost);
  [[nodiscard]] std::int32_t EndDownload(std::int16_t last_status, std::int32_t count);

  /// What an upload's remaining time is taken from.
  enum class ProgressBase { WithThisPacket, PacketsSent };

  /// result_count is what the upload returns when all steps went through.
  [[nodiscard]] std::int32_t RunUpload(std::string_view port_name, int command, const std::vector<UploadStep>& steps,
                                       ProgressBase progress_base, std::int32_t result_count);
  [[nodiscard]] bool CheckUpload(const std::vector<UploadStep>& steps);
  [[nodiscard]] std::int16_t SendRecords(const std::vector<UploadStep>& steps, ProgressBase progress_base);

  /// False, with the port's message shown, when the port cannot be opened.
  [[nodiscard]] bool OpenForTransfer(std::string_view port_name);
  void ShowPortProblem(std::string_view port_name);
  void SendAbort();
  void AbandonTransfer();
  /// The product data that answer a request for them. Nothing where there are none; why then holds the reason, or
  /// nothing for an answer that makes no sense.
  [[nodiscard]] std::optional<Frame> AskProduct(std::optional<NoAnswer>& why);
  /// Where the choice of the link is automatic: reads the answer as it was published. False where it is not so.
  [[nodiscard]] bool ReadAsPublished(PacketReply& reply) const;
  [[nodiscard]] static ProductInfo ReadProduct(const Frame& frame);
  void ReceiveBehindAck(PacketReply& reply, int ack_slot);
  void NoteFirstAnswer(const PacketReply& reply);
  /// Ends the transfer where an exchange has failed.
  void NoteStatus(const PacketReply& reply);
  /// The result of a transfer that has ended with TransferAborted.
  [[nodiscard]] std::int32_t AbortedResult(std::int16_t last_status) const;
  void ShowDataLoss();
  void ShowProgress(std::string_view counters, std::int64_t done, std::int64_t total, std::chrono::nanoseconds start);
  void EndProgress();

  InternalData& data_;
  InternalData incoming_;  ///< what a download brings, until it has ended: what is held stays as it is so long
  const Clock& clock_;
  Desktop& desktop_;
  PacketLink link_;
  StatusLine status_;
};

}  // namespace walrim
