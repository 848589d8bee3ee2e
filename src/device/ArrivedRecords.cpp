#include "device/ArrivedRecords.h"

#include <algorithm>

namespace walrim {

void ArrivedRecords::Add(const Frame& record, std::chrono::nanoseconds waited) {
  const bool repeats = Repeats(record);
  last_ = record;
  if (repeats || !waiting_.empty()) {
    waiting_.push_back({record, repeats, waited});
    repeats_ += repeats ? 1 : 0;
  } else {
    take_(record);
  }
  if (AllThere()) {
    LeaveOneOut();
  } else {
    ++received_;
  }
}

/// Who sends one record for ever is not listened to for ever.
bool ArrivedRecords::OneMayBeRepeated(const Frame& next) const {
  return left_out_ < announced_ && (repeats_ > 0 || Repeats(next));
}

void ArrivedRecords::LeaveOneOut() {
  const auto slower = [](const Waiting& one, const Waiting& other) {
    return one.repeats != other.repeats ? other.repeats : one.waited < other.waited;
  };
  const auto slowest = std::max_element(waiting_.begin(), waiting_.end(), slower);
  if (slowest == waiting_.end() || !slowest->repeats) return;
  waiting_.erase(slowest);
  --repeats_;
  ++left_out_;
}

void ArrivedRecords::Store() {
  for (const Waiting& one : waiting_)
    take_(one.record);
  waiting_.clear();
  repeats_ = 0;
}

}  // namespace walrim
