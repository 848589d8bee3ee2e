// A strict receiver without its line: what it holds after an upload, as a download gives it.
#pragma once

#include <string>
#include <vector>

#include "device/IncomingRecords.h"
#include "device/Models.h"
#include "device/OutgoingRecords.h"
#include "device/PacketIds.h"
#include "preflight/Recipient.h"
#include "receiver/ReceiverModel.h"
#include "receiver/StrictRules.h"

namespace walrim {

class StrictReceiver {
 public:
  explicit StrictReceiver(const ReceiverModel& model) : model_(model) {}

  [[nodiscard]] Recipient AsRecipient(bool checked_link) const {
    return {ProtocolsOf(model_.description), LimitsOf(model_.description), checked_link};
  }

  /// As an upload of the kinds on a link goes.
  void Upload(const DataSet& data, const DataKinds& kinds, bool checked_link) {
    for (const DataKind kind : AllDataKinds) {
      if (!kinds[IndexOf(kind)] || !data.Holds(kind)) continue;
      TransferReport report;
      const OutgoingRecords outgoing = OutgoingRecordsOf(data, kind, AsRecipient(checked_link).types, report);
      if (!report.unsendable.empty()) continue;
      std::vector<LinePacket> records;
      bool refused = false;
      for (const OutgoingPacket& packet : outgoing.packets) {
        const LinePacket record{static_cast<std::uint8_t>(packet.id), packet.data};
        if (WellFormed(record, model_)) records.push_back(record);
        refused = refused || !WellFormed(record, model_);
      }
      if (refused && checked_link) return;
      StoreUpload(memory_, records, model_);
    }
  }

  /// As a download gives it.
  [[nodiscard]] DataSet Held() const {
    DataSet data;
    Read(DataKind::Waypoint, memory_.waypoints, data);
    Read(DataKind::Route, memory_.routes, data);
    Read(DataKind::TrackLog, memory_.tracks, data);
    return data;
  }

 private:
  void Read(DataKind kind, const std::vector<LinePacket>& packets, DataSet& data) const {
    const auto records = IncomingRecordsOf(kind, ProtocolsOf(model_.description), data);
    for (const LinePacket& packet : packets) {
      Frame frame;
      frame.bytes[0] = DLE;
      frame.bytes[1] = packet.id;
      frame.bytes[2] = static_cast<std::uint8_t>(packet.data.size());
      std::copy(packet.data.begin(), packet.data.end(), frame.bytes.begin() + 3);
      static_cast<void>(records->Take(frame));
    }
    static_cast<void>(records->Finish(static_cast<std::int32_t>(packets.size())));
  }

  const ReceiverModel& model_;
  ReceiverMemory memory_;
};

}  // namespace walrim
