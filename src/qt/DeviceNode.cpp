#include "qt/DeviceNode.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <grp.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "qt/Messages.h"

namespace walrim {

namespace {

std::string GroupName(gid_t id) {
  group entry{};
  group* found = nullptr;
  std::array<char, 4096> text{};
  if (getgrgid_r(id, &entry, text.data(), text.size(), &found) == 0 && found != nullptr) return entry.gr_name;
  return std::to_string(id);
}

/// The group that may use a device node; empty where joining it would not help, or would give all rights.
std::string GroupOf(const std::string& device) {
  struct stat status {};
  constexpr mode_t Both = S_IRGRP | S_IWGRP;
  if (stat(device.c_str(), &status) != 0 || status.st_gid == 0 || (status.st_mode & Both) != Both) return {};
  return GroupName(status.st_gid);
}

/// The system's error numbers, in the few causes that a user can act on.
PortResult Failure(int error, const std::string& device) {
  PortResult result;
  result.device = device;
  switch (error) {
    case ENOENT:
    case ENOTDIR:
    case ENODEV:
    case ENXIO:
      result.problem = PortProblem::Missing;
      break;
    case EBUSY:
    case EWOULDBLOCK:
      result.problem = PortProblem::InUse;
      break;
    case EACCES:
    case EPERM:
      result.problem = PortProblem::NotPermitted;
      result.group = GroupOf(device);
      break;
    case ENOTTY:
      result.problem = PortProblem::Other;
      result.detail = qt_messages::NoSerialPort;
      break;
    default:
      result.problem = PortProblem::Other;
      result.detail = std::generic_category().message(error);
  }
  return result;
}

/// The path behind all links, or the path itself where the links lead nowhere.
std::string ResolveLinks(const std::string& path) {
  std::error_code error;
  const std::filesystem::path resolved = std::filesystem::canonical(path, error);
  return error ? path : resolved.string();
}

/// Whether a program keeps the node to itself (TIOCEXCL). The administrator gets in all the same, and would take that
/// away with the next closing.
bool IsExclusive(int node) {
  int exclusive = 0;
  return ioctl(node, TIOCGEXCL, &exclusive) == 0 && exclusive != 0;
}

/// 0 for a character device, else the error number: opening a pipe or a file would succeed and mean nothing.
int CheckKind(const std::string& device) {
  struct stat status {};
  if (stat(device.c_str(), &status) != 0) return errno;
  return S_ISCHR(status.st_mode) ? 0 : ENOTTY;
}

}  // namespace

PortResult OpenDeviceNode(const std::string& path, Descriptor& node) {
  node.Reset();
  PortResult result;
  result.device = ResolveLinks(path);
  if (const int error = CheckKind(result.device); error != 0) return Failure(error, result.device);

  node.Reset(open(result.device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
  if (!node.Valid()) return Failure(errno, result.device);
  if (isatty(node.Get()) == 0 || flock(node.Get(), LOCK_EX | LOCK_NB) != 0) {
    const int error = errno;
    node.Reset();
    return Failure(error, result.device);
  }
  if (!IsExclusive(node.Get())) return result;
  node.Reset();
  return Failure(EBUSY, result.device);
}

}  // namespace walrim
