// What the receivers of the fault matrix hold, and what a program shows that has taken it over.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "receiver/HeldContents.h"
#include "receiver/LineFrame.h"
#include "receiver/ReceiverMemory.h"
#include "records/DataKind.h"

namespace walrim {

/// How much of a kind there is. No record of one amount is a record of another.
enum class Amount { Old, Small, Large };
using Amounts = std::array<Amount, DataKindCount>;
inline constexpr Amounts AllOld{Amount::Old, Amount::Old, Amount::Old};
inline constexpr Amounts AllLarge{Amount::Large, Amount::Large, Amount::Large};

[[nodiscard]] HeldContents ContentsOf(const Amounts& amounts);

/// A record on the line, in the order in which a receiver sends them.
struct NamedRecord {
  std::uint8_t id = 0;  ///< of its packet
  std::string line;     ///< what the data set shows of it
  std::string mark;     ///< bytes that its packet holds, and no other one's
};

/// The records of a kind. A model either has route links and track headers, or neither.
[[nodiscard]] std::vector<NamedRecord> RecordsOf(DataKind kind, Amount amount, bool links_and_headers);

/// Lines of a waypoint, a route header and so on, as RecordsOf has them.
[[nodiscard]] std::string WaypointLine(std::string_view ident, double lat_deg, double lon_deg);
[[nodiscard]] std::string RouteLine(std::string_view name);
[[nodiscard]] std::string LinkLine(std::string_view ident);
[[nodiscard]] std::string TrackLine(std::string_view ident);
[[nodiscard]] std::string TrackPointLine(std::uint32_t time_s, bool new_trk, double lat_deg);

[[nodiscard]] const std::vector<LinePacket>& PacketsOf(const ReceiverMemory& memory, DataKind kind);
/// Why packets are not these records; empty when they are.
[[nodiscard]] std::string Differs(const std::vector<LinePacket>& packets, const std::vector<NamedRecord>& records);

}  // namespace walrim
