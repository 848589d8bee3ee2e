#include "qt/SystemPortFacts.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <arpa/inet.h>
#include <charconv>
#include <fstream>
#include <netinet/in.h>
#include <optional>
#include <poll.h>
#include <sstream>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include "qt/LockFile.h"
#include "text/Scan.h"

namespace walrim {

namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;

/// A port that went no longer ago than this is told from one that was never there.
constexpr std::chrono::seconds Lately{60};
constexpr milliseconds GpsdPatience{200};
constexpr const char* ModemManagerName = "ModemManager";

std::string FirstLine(const fs::path& file) {
  std::ifstream in(file);
  std::string line;
  std::getline(in, line);
  return std::string(TrimSpace(line));
}

std::optional<int> NumberIn(std::string_view text) {
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

std::string Resolved(std::string_view device) {
  std::error_code error;
  const fs::path path = fs::canonical(device, error);
  return error ? std::string(device) : path.string();
}

/// Numbers of the processes there are, without our own.
std::vector<int> Processes(const fs::path& folder) {
  std::vector<int> processes;
  std::error_code error;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
    const auto process = NumberIn(entry.path().filename().string());
    if (process && *process != getpid()) processes.push_back(*process);
  }
  std::ranges::sort(processes);
  return processes;
}

bool HasOpen(const fs::path& process, const std::string& device) {
  std::error_code error;
  for (const fs::directory_entry& entry : fs::directory_iterator(process / "fd", error)) {
    if (fs::read_symlink(entry.path(), error) == device) return true;
  }
  return false;
}

/// A pseudo-terminal is kept open by its other end too, who is no rival.
bool Uses(const fs::path& process, const std::string& device) {
  constexpr std::string_view PseudoTerminals = "/dev/pts/";
  if (!HasOpen(process, device)) return false;
  return !device.starts_with(PseudoTerminals) || (!HasOpen(process, "/dev/ptmx") && !HasOpen(process, "/dev/pts/ptmx"));
}

/// The process that holds a file locked: a line is "1: FLOCK  ADVISORY  WRITE 1234 00:18:5 0 EOF", the file's device in
/// hexadecimal digits and its number in decimal ones.
std::optional<int> LockingProcess(const fs::path& locks, const std::string& device) {
  struct stat status {};
  if (stat(device.c_str(), &status) != 0) return std::nullopt;
  char wanted[64];
  std::snprintf(wanted, sizeof wanted, "%02x:%02x:%llu", major(status.st_dev), minor(status.st_dev),
                static_cast<unsigned long long>(status.st_ino));
  std::ifstream in(locks);
  for (std::string line; std::getline(in, line);) {
    std::istringstream words(line);
    std::string number, kind, mode, access, process, file;
    words >> number >> kind >> mode >> access >> process >> file;
    if (file == wanted) return NumberIn(process);
  }
  return std::nullopt;
}

/// What a service on this computer answers to a question; empty where there is none.
std::string AskService(std::uint16_t port, std::string_view question) {
  const int service = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
  if (service < 0) return {};
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  static_cast<void>(connect(service, reinterpret_cast<const sockaddr*>(&address), sizeof address));
  const auto ready = [&](short event) {
    pollfd watched{service, event, 0};
    return poll(&watched, 1, static_cast<int>(GpsdPatience.count())) > 0 && (watched.revents & event) != 0;
  };
  std::string answer;
  const auto size = static_cast<ssize_t>(question.size());
  if (ready(POLLOUT) && send(service, question.data(), question.size(), MSG_NOSIGNAL) == size) {
    constexpr std::size_t LongestAnswer = 16384;
    char part[4096];
    while (answer.find("\"DEVICES\"") == std::string::npos && answer.size() < LongestAnswer && ready(POLLIN)) {
      const ssize_t got = recv(service, part, sizeof part, 0);
      if (got <= 0) break;
      answer.append(part, static_cast<std::size_t>(got));
    }
  }
  close(service);
  return answer;
}

/// A port's USB device is some folders above it.
std::string UsbId(const fs::path& port) {
  std::error_code error;
  fs::path folder = fs::canonical(port / "device", error);
  for (; !error && folder.has_relative_path(); folder = folder.parent_path()) {
    const std::string vendor = FirstLine(folder / "idVendor");
    if (!vendor.empty()) return vendor + ":" + FirstLine(folder / "idProduct");
  }
  return {};
}

}  // namespace

bool GpsdLists(std::string_view answer, std::string_view device) {
  while (!answer.empty()) {
    const std::string_view line = TakeUpTo(answer, '\n');
    const QJsonDocument document =
        QJsonDocument::fromJson(QByteArray(line.data(), static_cast<qsizetype>(line.size())));
    for (const QJsonValue each : document.object().value("devices").toArray()) {
      if (Resolved(each.toObject().value("path").toString().toStdString()) == device) return true;
    }
  }
  return false;
}

SystemPortFacts::SystemPortFacts(const Clock& clock, PortMapping mapping, SystemPlaces places)
    : clock_(clock), mapping_(std::move(mapping)), places_(std::move(places)) {}

void SystemPortFacts::Look(const std::vector<NumberedPort>& ports) {
  for (const NumberedPort& port : ports)
    seen_[port.device] = clock_.Monotonic();
}

std::vector<PortChoice> SystemPortFacts::Ports() const {
  std::vector<PortChoice> choices;
  for (const NumberedPort& port : ListPorts(mapping_))
    choices.push_back({port.number > 0 ? std::to_string(port.number) : port.device, port.device});
  return choices;
}

std::vector<PortHolder> SystemPortFacts::Holders(std::string_view device_name) const {
  const std::string device = Resolved(device_name);
  std::vector<PortHolder> holders;
  const auto locking = LockingProcess(places_.processes / "locks", device);
  bool modem_manager = false;
  for (const int process : Processes(places_.processes)) {
    const fs::path folder = places_.processes / std::to_string(process);
    const std::string name = FirstLine(folder / "comm");
    if (name == ModemManagerName) modem_manager = true;
    if (process == locking || Uses(folder, device)) {
      holders.push_back({PortHolder::Kind::Process, name, process});
    }
  }
  if (const auto lock = FindPortLock(device); lock && !lock->gone && lock->process != getpid()) {
    holders.push_back({PortHolder::Kind::LockFile, lock->path, lock->process});
  }
  if (GpsdLists(AskService(places_.gpsd_port, "?DEVICES;\n"), device)) {
    holders.push_back({PortHolder::Kind::Gpsd, "", 0});
  }
  if (modem_manager) holders.push_back({PortHolder::Kind::ModemManager, "", 0});
  return holders;
}

PortAdapter SystemPortFacts::Adapter(std::string_view device) const {
  const fs::path port = places_.devices / fs::path(Resolved(device)).filename();
  return {UsbId(port), NumberIn(FirstLine(port / "device" / "latency_timer"))};
}

bool SystemPortFacts::VanishedLately(std::string_view device) const {
  const auto found = seen_.find(std::string(device));
  return found != seen_.end() && clock_.Monotonic() - found->second < Lately;
}

}  // namespace walrim
