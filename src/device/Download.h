// One download.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "device/ArrivedRecords.h"
#include "device/DeviceSession.h"
#include "device/IncomingRecords.h"
#include "device/TransferReport.h"
#include "records/DataSet.h"

namespace walrim {

class Download {
 public:
  /// Both must outlive this object.
  Download(DeviceSession& session, DataSet& data, DataKind kind);

  /// See Garmin::Download. To be called once.
  [[nodiscard]] std::int32_t Run(std::string_view port_name, TransferMode mode);

 private:
  [[nodiscard]] std::int32_t ReceiveRecords(std::int32_t announced);
  /// Receives until all have come or the transfer was aborted; returns the last exchange's status.
  [[nodiscard]] std::int16_t ReceiveLoop(std::int32_t announced);
  void TakeIn(const Frame& record);
  [[nodiscard]] bool IsOver(const ArrivedRecords& arrived, const PacketReply& reply);
  [[nodiscard]] std::int32_t End(std::int16_t last_status, std::int32_t count);
  [[nodiscard]] bool IsRecord(const PacketReply& reply) const {
    return reply.count >= 1 && records_->IsRecord(reply.FirstId());
  }

  DeviceSession& session_;
  DataSet& data_;
  DataKind kind_;
  DataSet incoming_;  ///< until all has come: what is held stays as it is so long
  std::unique_ptr<IncomingRecords> records_;
  bool data_lost_ = false;
};

}  // namespace walrim
