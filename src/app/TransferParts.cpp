#include "app/TransferParts.h"

#include <algorithm>
#include <numeric>

#include "app/Messages.h"

namespace walrim {

TransferShares SharesOf(const DataSet& data, const DataKinds& kinds) {
  TransferShares shares{};
  for (std::size_t kind = 0; kind < DataKindCount; ++kind) {
    if (!kinds[kind]) continue;
    const auto all = [&](const auto& records, int packets_a_point) {
      for (const auto& record : records)
        shares[kind] += 1.0 + packets_a_point * static_cast<double>(record.points.size());
    };
    if (kind == IndexOf(DataKind::Waypoint)) shares[kind] = static_cast<double>(data.Waypoints().size());
    if (kind == IndexOf(DataKind::Route)) all(data.Routes(), 2);
    if (kind == IndexOf(DataKind::TrackLog)) all(data.Logs(), 1);
  }
  return shares;
}

void TransferParts::Begin(DataKind kind) {
  const auto here = shares_.begin() + static_cast<std::ptrdiff_t>(IndexOf(kind));
  const double before = std::accumulate(shares_.begin(), here, 0.0);
  const double all = std::accumulate(shares_.begin(), shares_.end(), 0.0);
  const auto is_transferred = [](double share) { return share > 0; };
  const auto number = static_cast<int>(std::count_if(shares_.begin(), here, is_transferred)) + 1;
  const auto count = static_cast<int>(std::ranges::count_if(shares_, is_transferred));
  const double whole = all > 0 ? all : 1;
  desktop_.BeginPart(messages::TransferPart(way_, kind, number, count), before / whole, (before + *here) / whole);
}

}  // namespace walrim
