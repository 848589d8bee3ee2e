#include "qt/QtSerialPort.h"

#include <algorithm>
#include <filesystem>
#include <poll.h>
#include <sys/ioctl.h>
#include <thread>
#include <utility>

#include "qt/LockFile.h"
#include "qt/Messages.h"

namespace walrim {

namespace {

using std::chrono::milliseconds;

/// A line that floods without being read is held up here; the link's frames have 256 bytes.
constexpr qint64 InputLimit = 64 * 1024;

/// At 9600 baud a byte leaves in about a millisecond.
constexpr milliseconds SendingStep{1};

PortProblem ProblemOf(QSerialPort::SerialPortError error) {
  switch (error) {
    case QSerialPort::DeviceNotFoundError:
      return PortProblem::Missing;
    case QSerialPort::PermissionError:
      // The node itself was opened before, so that this is another program's lock file or exclusive use.
      return PortProblem::InUse;
    default:
      return PortProblem::Other;
  }
}

/// What a program that is gone left behind keeps the line as one that is there would.
void NameStaleLock(PortResult& result) {
  const auto lock = FindPortLock(result.device);
  if (!lock || !lock->gone) return;
  result.problem = PortProblem::Other;
  result.detail = qt_messages::LockOutlived(lock->process, lock->path);
}

bool IsPortNumber(std::string_view name) {
  return name.size() == 1 && name[0] >= '1' && name[0] <= '0' + MaxPortNumber;
}

std::size_t NotNegative(qint64 count) {
  return count > 0 ? static_cast<std::size_t>(count) : 0;
}

}  // namespace

QtSerialPort::QtSerialPort(PortMapping mapping) : mapping_(std::move(mapping)) {
  port_.setReadBufferSize(InputLimit);
}

QtSerialPort::~QtSerialPort() {
  QtSerialPort::Close();
}

PortResult QtSerialPort::Open(std::string_view comm_port, int baud) {
  Close();
  line_lost_ = false;
  looked_ = false;
  PortResult result;
  const auto path = DevicePath(comm_port);
  if (!path) {
    result.problem = PortProblem::Missing;
    return result;
  }
  result = OpenDeviceNode(*path, node_);
  if (!result.Ok()) return result;
  result = OpenDevice(std::move(result), baud);
  if (!result.Ok()) Close();
  return result;
}

std::optional<std::string> QtSerialPort::DevicePath(std::string_view comm_port) const {
  if (!IsPortNumber(comm_port)) {
    std::error_code error;
    const auto path = std::filesystem::absolute(comm_port, error);
    return error ? std::nullopt : std::optional(path.string());
  }
  for (NumberedPort& port : ListPorts(mapping_)) {
    if (port.number == comm_port[0] - '0') return std::move(port.device);
  }
  return std::nullopt;
}

PortResult QtSerialPort::OpenDevice(PortResult found, int baud) {
  port_.setPortName(QString::fromStdString(found.device));
  // What is left is as the port has it at first: 8 bits, no parity, one stop bit, no flow control.
  port_.setBaudRate(baud);
  if (!port_.open(QIODevice::ReadWrite)) {
    found.problem = ProblemOf(port_.error());
    if (found.problem == PortProblem::Other) found.detail = port_.errorString().toStdString();
    if (found.problem == PortProblem::InUse) NameStaleLock(found);
    return found;
  }
  // A pseudo-terminal has no such lines and refuses; a cable that is fed from them needs both.
  port_.setDataTerminalReady(true);
  port_.setRequestToSend(true);
  port_.clearError();
  return found;
}

bool QtSerialPort::PortOpen() const {
  return port_.isOpen();
}

void QtSerialPort::Close() {
  Flush();
  if (port_.isOpen()) port_.close();
  node_.Reset();
  counted_ = 0;
}

std::size_t QtSerialPort::InBufferCount() {
  FetchInput();
  counted_ = NotNegative(port_.bytesAvailable());
  return counted_;
}

void QtSerialPort::ClearInBuffer() {
  counted_ = 0;
  if (!port_.isOpen()) return;
  port_.readAll();
  if (!LineLost()) port_.clear(QSerialPort::Input);
}

std::optional<std::uint8_t> QtSerialPort::Input() {
  if (!port_.isOpen()) return std::nullopt;
  if (port_.bytesAvailable() == 0) FetchInput();
  char byte = 0;
  if (port_.bytesAvailable() == 0 || !port_.getChar(&byte)) return std::nullopt;
  if (counted_ > 0) --counted_;
  return static_cast<std::uint8_t>(byte);
}

void QtSerialPort::Output(std::uint8_t byte) {
  if (Usable()) port_.putChar(static_cast<char>(byte));
}

std::size_t QtSerialPort::OutBufferCount() {
  Flush();
  if (!Usable()) return 0;
  return NotNegative(port_.bytesToWrite()) + QueuedBySystem(TIOCOUTQ);
}

void QtSerialPort::ClearOutBuffer() {
  if (port_.isOpen() && !LineLost()) port_.clear(QSerialPort::Output);
}

void QtSerialPort::Wait(milliseconds at_most) {
  Flush();
  if (!Usable()) {
    std::this_thread::sleep_for(at_most);
    return;
  }
  FetchInput();
  const qint64 available = port_.bytesAvailable();
  if (NotNegative(available) > counted_) return;

  // Input is fetched and a full buffer is not watched, so that only what comes from now on ends the wait.
  short events = 0;
  if (available < InputLimit) events |= POLLIN;
  if (port_.bytesToWrite() > 0) events |= POLLOUT;
  if (QueuedBySystem(TIOCOUTQ) > 0) at_most = std::min(at_most, SendingStep);
  Look(events, static_cast<int>(std::max<milliseconds::rep>(at_most.count(), 0)));
  looked_ = true;
  Flush();
}

bool QtSerialPort::LineLost() const {
  if (!looked_) Look(0);
  looked_ = false;
  return line_lost_;
}

/// Moves what has come from the system into the port's buffer.
void QtSerialPort::FetchInput() {
  if (port_.bytesAvailable() >= InputLimit || !Usable()) return;
  if (QueuedBySystem(FIONREAD) > 0) port_.waitForReadyRead(0);
}

/// Hands over what the system takes at once. A full system is not asked: QSerialPort calls that a failed device.
void QtSerialPort::Flush() {
  if (Usable() && port_.bytesToWrite() > 0 && (Look(POLLOUT) & POLLOUT) != 0 && Usable()) port_.flush();
}

/// Waits for one of the events; those that can be seen on the line then. Notices a line that has gone.
int QtSerialPort::Look(short events, int at_most_ms) const {
  if (!Usable()) return 0;
  pollfd watched{port_.handle(), events, 0};
  const int happened = poll(&watched, 1, at_most_ms) > 0 ? watched.revents : 0;
  line_lost_ = (happened & (POLLHUP | POLLERR | POLLNVAL)) != 0;
  return happened;
}

/// Bytes that wait in the system's buffer: FIONREAD for those that have come, TIOCOUTQ for those to be sent.
std::size_t QtSerialPort::QueuedBySystem(unsigned long which) const {
  int count = 0;
  return ioctl(port_.handle(), which, &count) == 0 && count > 0 ? static_cast<std::size_t>(count) : 0;
}

}  // namespace walrim
