// The records of a download between the line and the tables.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "device/Frame.h"

namespace walrim {

/// On the checked link a record that comes again, byte for byte, is one whose ACK was lost, or one that the receiver
/// holds twice. The announced number tells, at the end: from the first such record on they wait here, in order.
class ArrivedRecords {
 public:
  using Take = std::function<void(const Frame&)>;

  /// take stores a record. Not on a checked link: every record is stored as it comes.
  ArrivedRecords(bool checked, std::int32_t announced, Take take)
      : checked_(checked), announced_(announced), take_(std::move(take)) {}

  /// waited is how long the record took to come. Once all are there, one of those that came again is left out for it:
  /// the one that took longest.
  void Add(const Frame& record, std::chrono::nanoseconds waited);
  /// Stores those that wait.
  void Store();

  [[nodiscard]] std::int32_t Received() const { return received_; }
  [[nodiscard]] bool AllThere() const { return received_ == announced_; }
  /// Whether this record, which comes beyond the announced number, or one that waits may have lost its ACK.
  [[nodiscard]] bool OneMayBeRepeated(const Frame& next) const;

 private:
  struct Waiting {
    Frame record;
    bool repeats;  ///< the one before it
    std::chrono::nanoseconds waited;
  };

  [[nodiscard]] bool Repeats(const Frame& record) const { return checked_ && last_ == record; }
  void LeaveOneOut();

  bool checked_;
  std::int32_t announced_;
  Take take_;
  std::int32_t received_ = 0;
  std::int32_t left_out_ = 0;
  std::optional<Frame> last_;
  std::vector<Waiting> waiting_;
  int repeats_ = 0;  ///< among those that wait
};

}  // namespace walrim
