// One progress for all the kinds of a transfer.
#pragma once

#include <array>
#include <cstdint>

#include "platform/Desktop.h"
#include "records/DataSet.h"

namespace walrim {

enum class TransferWay : std::uint8_t { FromReceiver, ToReceiver };

/// How much of a transfer each kind is, in any unit; 0 of a kind that is not transferred.
using TransferShares = std::array<double, DataKindCount>;

/// What goes over the line for the records of some kinds.
[[nodiscard]] TransferShares SharesOf(const DataSet& data, const DataKinds& kinds);

/// Tells the desktop which kind is on its way, and how much of the whole lies before it, until this goes.
class TransferParts {
 public:
  /// desktop must outlive this object.
  TransferParts(Desktop& desktop, TransferWay way, const TransferShares& shares)
      : desktop_(desktop), way_(way), shares_(shares) {}
  TransferParts(const TransferParts&) = delete;
  TransferParts& operator=(const TransferParts&) = delete;
  ~TransferParts() { desktop_.EndParts(); }

  void Begin(DataKind kind);

 private:
  Desktop& desktop_;
  TransferWay way_;
  TransferShares shares_;
};

}  // namespace walrim
