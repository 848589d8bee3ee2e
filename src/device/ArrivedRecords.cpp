#include "device/ArrivedRecords.h"

#include <algorithm>

namespace walrim {

void ArrivedRecords::Add(const Frame& record, std::chrono::nanoseconds waited) {
  const bool repeats = Repeats(record);
  last_ = record;
  if (!repeats && waiting_.empty()) {
    take_(record);
    return;
  }
  waiting_.push_back({record, repeats, waited});
  if (repeats) ++repeats_;
}

bool ArrivedRecords::Repeats(const Frame& record) const {
  return checked_ && last_ == record;
}

bool ArrivedRecords::MayHaveRepeated(const Frame& next) const {
  return repeats_ > 0 || Repeats(next);
}

void ArrivedRecords::DropRepeated() {
  const auto slower = [](const Waiting& one, const Waiting& other) {
    return one.repeats != other.repeats ? other.repeats : one.waited < other.waited;
  };
  const auto slowest = std::max_element(waiting_.begin(), waiting_.end(), slower);
  if (slowest == waiting_.end() || !slowest->repeats) return;
  waiting_.erase(slowest);
  --repeats_;
}

void ArrivedRecords::Store() {
  for (const Waiting& one : waiting_)
    take_(one.record);
  waiting_.clear();
  repeats_ = 0;
}

}  // namespace walrim
