// A file descriptor with an owner.
#pragma once

#include <unistd.h>
#include <utility>

namespace walrim {

/// A file descriptor (below 0: none) that is closed when it goes.
class Descriptor {
 public:
  explicit Descriptor(int fd = -1) : fd_(fd) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() { Reset(); }

  [[nodiscard]] int Get() const { return fd_; }
  [[nodiscard]] bool Valid() const { return fd_ >= 0; }
  /// Takes another one; closes what it had.
  void Reset(int fd = -1) {
    if (fd_ >= 0) ::close(fd_);
    fd_ = fd;
  }
  /// Leaves it to the caller to close it.
  [[nodiscard]] int Release() { return std::exchange(fd_, -1); }
  /// False when closing reports an error that writing did not.
  [[nodiscard]] bool Close() { return ::close(Release()) == 0; }

 private:
  int fd_;
};

}  // namespace walrim
