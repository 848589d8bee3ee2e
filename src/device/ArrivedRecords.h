// The records of a download between the line and the tables.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "device/Frame.h"

namespace walrim {

/// On the checked link a record that comes again, byte for byte, is one whose ACK was lost, or one that the receiver
/// holds twice. The announced number tells, at the end: from the first such record on they wait here, in order.
class ArrivedRecords {
 public:
  using Take = std::function<void(const Frame&)>;

  /// take stores a record. Not on a checked link: every record is stored as it comes.
  ArrivedRecords(bool checked, Take take) : checked_(checked), take_(std::move(take)) {}

  /// waited is how long the record took to come.
  void Add(const Frame& record, std::chrono::nanoseconds waited);
  /// Whether this record, or one that waits, may be there because its ACK was lost.
  [[nodiscard]] bool MayHaveRepeated(const Frame& next) const;
  /// Leaves out the one among those that took longest to come. MayHaveRepeated was true before the last Add.
  void DropRepeated();
  /// Stores those that wait.
  void Store();

 private:
  struct Waiting {
    Frame record;
    bool repeats;  ///< the one before it
    std::chrono::nanoseconds waited;
  };

  [[nodiscard]] bool Repeats(const Frame& record) const;

  bool checked_;
  Take take_;
  std::optional<Frame> last_;
  std::vector<Waiting> waiting_;
  int repeats_ = 0;  ///< among those that wait
};

}  // namespace walrim
