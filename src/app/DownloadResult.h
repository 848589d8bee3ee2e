// What became of a kind in a download.
#pragma once

#include <cstdint>

#include "records/DataKind.h"

namespace walrim {

struct DownloadResult {
  DataKind kind = DataKind::Waypoint;
  std::int32_t announced = 0;  ///< records, as the receiver counts them
  int missing = 0;             ///< of them never came
  int damaged = 0;             ///< of those that came
  bool received = false;       ///< the records are held now; else the kind was given up
  bool replaced = false;       ///< records of the kind were held before

  /// All that the receiver holds has come, and whole.
  [[nodiscard]] bool Whole() const { return received && missing == 0 && damaged == 0; }
};

}  // namespace walrim
