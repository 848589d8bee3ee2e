#include "qt/LockFile.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fstream>
#include <signal.h>

namespace walrim {

namespace {

/// "/dev/pts/3" is "LCK..pts_3".
std::string LockName(std::string device) {
  constexpr std::string_view Devices = "/dev/";
  if (device.starts_with(Devices)) device.erase(0, Devices.size());
  std::replace(device.begin(), device.end(), '/', '_');
  return "LCK.." + device;
}

/// The process that a lock file names; 0 for none.
pid_t ProcessOf(const std::filesystem::path& file) {
  pid_t process = 0;
  std::ifstream in(file);
  return in >> process && process > 0 ? process : 0;
}

bool IsGone(pid_t process) {
  return ::kill(process, 0) != 0 && errno == ESRCH;
}

}  // namespace

std::optional<PortLock> FindPortLock(const std::string& device, std::span<const std::filesystem::path> folders) {
  for (const std::filesystem::path& folder : folders) {
    const std::filesystem::path file = folder / LockName(device);
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) continue;
    const pid_t process = ProcessOf(file);
    if (process > 0) return PortLock{file.string(), process, IsGone(process)};
  }
  return std::nullopt;
}

std::optional<PortLock> FindPortLock(const std::string& device) {
  static const std::array<std::filesystem::path, 8> folders{"/var/lock",         "/etc/locks", "/var/spool/locks",
                                                            "/var/spool/uucp",   "/tmp",       "/var/tmp",
                                                            "/var/lock/lockdev", "/run/lock"};
  return FindPortLock(device, folders);
}

}  // namespace walrim
