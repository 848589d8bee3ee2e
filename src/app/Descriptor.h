// A file descriptor with an owner.
#pragma once

#include <unistd.h>

namespace walrim {

/// A file descriptor (below 0: none) that is closed when it goes.
class Descriptor {
 public:
  explicit Descriptor(int fd) : fd_(fd) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (fd_ >= 0) ::close(fd_);
  }

  [[nodiscard]] int Get() const { return fd_; }
  /// Takes another descriptor in place of none.
  void Set(int fd) { fd_ = fd; }
  /// False when closing reports an error that writing did not.
  [[nodiscard]] bool Close() {
    const int fd = fd_;
    fd_ = -1;
    return ::close(fd) == 0;
  }

 private:
  int fd_;
};

}  // namespace walrim
