// The lock files by which programs keep a serial line for themselves.
#pragma once

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <sys/types.h>

namespace walrim {

/// A lock file (LCK..NAME, its first line a process number).
struct PortLock {
  std::string path;
  pid_t process = 0;
  bool gone = false;  ///< the process is not there any more
};

/// The lock file of a device in the folders where they lie by custom. Whose it is does not matter: it may be another
/// user's, who alone may remove it.
[[nodiscard]] std::optional<PortLock> FindPortLock(const std::string& device);
[[nodiscard]] std::optional<PortLock> FindPortLock(const std::string& device,
                                                   std::span<const std::filesystem::path> folders);

}  // namespace walrim
