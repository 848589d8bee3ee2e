#include "receiver/PseudoTerminal.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <poll.h>
#include <string_view>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <system_error>
#include <termios.h>
#include <unistd.h>

#include "text/Scan.h"

namespace walrim {

namespace {

std::string SystemProblem(const std::string& what) {
  return what + ": " + std::strerror(errno);
}

bool SetRawMode(int descriptor) {
  termios mode{};
  if (tcgetattr(descriptor, &mode) != 0) return false;
  cfmakeraw(&mode);
  cfsetispeed(&mode, B9600);
  cfsetospeed(&mode, B9600);
  return tcsetattr(descriptor, TCSANOW, &mode) == 0;
}

// By its name: what a killed program left behind points to a pseudo-terminal that is gone.
bool IsTerminalPath(std::string_view path) {
  return Take(path, "/dev/pts/") && AllDigits(path);
}

// Made beside it and renamed over it, so that the link is there at every moment.
std::error_code Replace(const std::string& link, const std::string& target) {
  namespace fs = std::filesystem;
  std::error_code problem;
  const std::string fresh = link + "." + std::to_string(getpid());
  fs::create_symlink(target, fresh, problem);
  if (problem) return problem;
  fs::rename(fresh, link, problem);
  std::error_code ignored;
  if (problem) fs::remove(fresh, ignored);
  return problem;
}

}  // namespace

std::string PseudoTerminal::Open() {
  master_.Reset(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
  if (!master_.Valid()) return SystemProblem("no pseudo-terminal");
  std::array<char, 128> name{};
  if (grantpt(master_.Get()) != 0 || unlockpt(master_.Get()) != 0 ||
      ptsname_r(master_.Get(), name.data(), name.size()) != 0) {
    return SystemProblem("no pseudo-terminal");
  }
  path_ = name.data();
  slave_.Reset(open(path_.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
  if (!slave_.Valid() || !SetRawMode(slave_.Get())) return SystemProblem(path_);
  watch_.Reset(inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
  if (!watch_.Valid() || inotify_add_watch(watch_.Get(), path_.c_str(), IN_OPEN | IN_CLOSE) < 0) {
    return SystemProblem("cannot watch " + path_);
  }
  return {};
}

void PseudoTerminal::TakeClientEvents() {
  alignas(inotify_event) std::array<char, 4096> buffer{};
  const ssize_t size = read(watch_.Get(), buffer.data(), buffer.size());
  bool gone = false;
  for (ssize_t at = 0; at + static_cast<ssize_t>(sizeof(inotify_event)) <= size;) {
    inotify_event event{};
    std::memcpy(&event, buffer.data() + at, sizeof event);
    at += static_cast<ssize_t>(sizeof event + event.len);
    if ((event.mask & IN_OPEN) != 0) ++clients_;
    if ((event.mask & IN_CLOSE) != 0) {
      clients_ = std::max(clients_ - 1, 0);
      gone = gone || clients_ == 0;
    }
  }
  if (gone && clients_ == 0) ClearLine();
}

void PseudoTerminal::ClearLine() {
  ioctl(slave_.Get(), TIOCNXCL);
  tcflush(slave_.Get(), TCIFLUSH);
  static_cast<void>(SetRawMode(slave_.Get()));
}

std::vector<std::uint8_t> PseudoTerminal::Read() {
  std::vector<std::uint8_t> bytes(4096);
  const ssize_t size = read(master_.Get(), bytes.data(), bytes.size());
  bytes.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
  return bytes;
}

void PseudoTerminal::Write(std::span<const std::uint8_t> bytes) {
  if (clients_ == 0) return;
  while (!bytes.empty()) {
    const ssize_t size = write(master_.Get(), bytes.data(), bytes.size());
    if (size <= 0) return;
    bytes = bytes.subspan(static_cast<std::size_t>(size));
  }
}

void PseudoTerminal::WaitUntilRead(std::chrono::milliseconds at_most) {
  int unread = 0;
  for (; at_most.count() > 0; --at_most) {
    if (clients_ == 0 || ioctl(slave_.Get(), FIONREAD, &unread) != 0 || unread == 0) return;
    poll(nullptr, 0, 1);
    TakeClientEvents();
  }
}

std::string PathLink::Make(const std::string& link, const std::string& target) {
  namespace fs = std::filesystem;
  std::error_code problem;
  const fs::file_status status = fs::symlink_status(link, problem);
  if (status.type() == fs::file_type::not_found) {
    fs::create_symlink(target, link, problem);
    if (problem) return link + ": " + problem.message();
  } else if (!IsTerminalPath(fs::read_symlink(link, problem).string())) {
    return link + " exists and is no symbolic link to a pseudo-terminal";
  } else {
    problem = Replace(link, target);
    if (problem) return link + ": " + problem.message();
  }
  link_ = link;
  target_ = target;
  return {};
}

void PathLink::Remove() {
  if (link_.empty()) return;
  std::error_code problem;
  if (std::filesystem::read_symlink(link_, problem) == target_) std::filesystem::remove(link_, problem);
  link_.clear();
}

}  // namespace walrim
