// The records of a download, as they are put together to a data set.
#pragma once

#include <cstdint>
#include <memory>

#include "device/Frame.h"
#include "device/Models.h"
#include "records/DataSet.h"

namespace walrim {

/// What a kind's download differs in.
class IncomingRecords {
 public:
  virtual ~IncomingRecords() = default;

  /// The transfer command.
  [[nodiscard]] virtual int TransferCommand() const = 0;
  /// More announced records than this make no sense.
  [[nodiscard]] virtual std::int32_t MostAnnounced() const = 0;
  /// Whether a packet is one of the kind's records.
  [[nodiscard]] virtual bool IsRecord(int packet_id) const = 0;
  /// Takes the next record; false where its frame is damaged or its position is not on the globe, which it says itself
  /// then. Throws std::out_of_range for one more than a
  /// data set holds.
  [[nodiscard]] virtual bool Take(const Frame& record) = 0;
  /// Puts what has come into the data set, when no more comes of the announced records. False: some were dropped.
  [[nodiscard]] virtual bool Finish(std::int32_t announced) = 0;
};

/// For a receiver of these types. data must outlive the result, and hold nothing of the kind.
[[nodiscard]] std::unique_ptr<IncomingRecords> IncomingRecordsOf(DataKind kind, const DeviceProtocols& types,
                                                                 DataSet& data);

}  // namespace walrim
