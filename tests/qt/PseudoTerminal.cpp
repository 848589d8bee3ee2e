#include "qt/PseudoTerminal.h"

#include <array>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>

namespace walrim {

namespace {

constexpr int PatienceMs = 5000;

bool Ready(int handle, short events) {
  pollfd watched{handle, events, 0};
  return poll(&watched, 1, PatienceMs) > 0 && (watched.revents & events) != 0;
}

}  // namespace

PseudoTerminal::PseudoTerminal() : handle_(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {
  std::array<char, 128> name{};
  if (handle_ < 0 || grantpt(handle_) != 0 || unlockpt(handle_) != 0 ||
      ptsname_r(handle_, name.data(), name.size()) != 0) {
    ADD_FAILURE() << "no pseudo-terminal";
    return;
  }
  device_ = name.data();
}

PseudoTerminal::~PseudoTerminal() {
  Hangup();
}

void PseudoTerminal::Send(std::string_view bytes) const {
  while (!bytes.empty()) {
    const ssize_t sent = write(handle_, bytes.data(), bytes.size());
    if (sent > 0) bytes.remove_prefix(static_cast<std::size_t>(sent));
    if (sent < 0 && !Ready(handle_, POLLOUT)) {
      ADD_FAILURE() << "the line takes nothing";
      return;
    }
  }
}

std::size_t PseudoTerminal::SendWhatFits(std::string_view bytes) const {
  const ssize_t sent = write(handle_, bytes.data(), bytes.size());
  return sent > 0 ? static_cast<std::size_t>(sent) : 0;
}

std::string PseudoTerminal::Receive(std::size_t count) const {
  std::string received;
  std::array<char, 4096> chunk{};
  while (received.size() < count && Ready(handle_, POLLIN)) {
    const ssize_t got = read(handle_, chunk.data(), chunk.size());
    if (got <= 0) break;
    received.append(chunk.data(), static_cast<std::size_t>(got));
  }
  return received;
}

void PseudoTerminal::Hangup() {
  if (handle_ >= 0) close(handle_);
  handle_ = -1;
}

}  // namespace walrim
