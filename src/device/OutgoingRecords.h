// The records of an upload as packets.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "device/Models.h"
#include "device/TransferReport.h"
#include "records/DataSet.h"

namespace walrim {

/// One packet of an upload.
struct OutgoingPacket {
  int id = 0;
  std::vector<std::uint8_t> data;
  std::string counters;  ///< shown for it, as "[3/10]"; nothing is shown for an empty one
};

/// When the counters of a packet are shown, and what the remaining time is taken from.
enum class ShownProgress : std::uint8_t {
  AsIfSent,    ///< before it goes, counted as if it had gone
  BeforeSent,  ///< before it goes
  Sent         ///< once it has gone
};

struct OutgoingRecords {
  int transfer_command = 0;
  ShownProgress shown = ShownProgress::BeforeSent;
  std::vector<OutgoingPacket> packets;
};

/// What is held of a kind, for a receiver of these types. The report tells what was cut and replaced; with its
/// unsendable the packets are not to be sent.
[[nodiscard]] OutgoingRecords OutgoingRecordsOf(const DataSet& data, DataKind kind, const DeviceProtocols& types,
                                                TransferReport& report);

}  // namespace walrim
