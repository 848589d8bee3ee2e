// The busy flag of a command.
#pragma once

namespace walrim {

/// Holds a flag up until it goes or is released.
class BusyGuard {
 public:
  explicit BusyGuard(bool& flag) : flag_(flag) { flag_ = true; }
  BusyGuard(const BusyGuard&) = delete;
  BusyGuard& operator=(const BusyGuard&) = delete;
  ~BusyGuard() { flag_ = false; }

 private:
  bool& flag_;
};

}  // namespace walrim
