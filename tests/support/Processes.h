// Programs as a person starts them: with arguments, standard streams, signals and an exit status.
#pragma once

#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <grp.h>
#include <iterator>
#include <poll.h>
#include <signal.h>
#include <string>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace walrim {

/// A running program. It is ended when the object goes.
class Process {
 public:
  explicit Process(std::vector<std::string> words, std::string_view standard_input = {}) {
    int in[2];
    int out[2];
    int err[2];
    if (::pipe2(in, O_CLOEXEC) != 0 || ::pipe2(out, O_CLOEXEC) != 0 || ::pipe2(err, O_CLOEXEC) != 0) std::abort();
    pid_ = ::fork();
    if (pid_ == 0) {
      ::dup2(in[0], STDIN_FILENO);
      ::dup2(out[1], STDOUT_FILENO);
      ::dup2(err[1], STDERR_FILENO);
      std::vector<char*> arguments;
      for (std::string& word : words)
        arguments.push_back(word.data());
      arguments.push_back(nullptr);
      ::execv(arguments[0], arguments.data());
      std::_Exit(127);
    }
    ::close(in[0]);
    ::close(out[1]);
    ::close(err[1]);
    out_fd_ = out[0];
    err_fd_ = err[0];
    // What a test feeds fits into a pipe.
    if (!standard_input.empty() && ::write(in[1], standard_input.data(), standard_input.size()) < 0) std::abort();
    ::close(in[1]);
  }
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;
  ~Process() {
    if (!ended_) {
      ::kill(pid_, SIGKILL);
      static_cast<void>(Wait());
    }
    ::close(out_fd_);
    ::close(err_fd_);
  }

  void Signal(int number) const { ::kill(pid_, number); }

  /// Reads until the output (standard error included) holds text; false when the program ends, or a minute goes by
  /// without a byte, before that.
  [[nodiscard]] bool ReadUntil(std::string_view text) {
    while (out_.find(text) == std::string::npos && err_.find(text) == std::string::npos) {
      if (!ReadSome()) return false;
    }
    return true;
  }
  /// Reads all that comes and returns the exit status (128 + the signal for a program that was killed).
  int Wait() {
    while (ReadSome()) {
    }
    int status = 0;
    ::waitpid(pid_, &status, 0);
    ended_ = true;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  }
  [[nodiscard]] const std::string& Out() const { return out_; }
  [[nodiscard]] const std::string& Err() const { return err_; }

 private:
  bool ReadSome() {
    pollfd both[2] = {{out_open_ ? out_fd_ : -1, POLLIN, 0}, {err_open_ ? err_fd_ : -1, POLLIN, 0}};
    if (!out_open_ && !err_open_) return false;
    if (::poll(both, 2, 60000) <= 0) return false;
    if (both[0].revents != 0) out_open_ = Take(out_fd_, out_);
    if (both[1].revents != 0) err_open_ = Take(err_fd_, err_);
    return out_open_ || err_open_;
  }
  static bool Take(int fd, std::string& text) {
    char buffer[65536];
    const ssize_t got = ::read(fd, buffer, sizeof buffer);
    if (got <= 0) return false;
    text.append(buffer, static_cast<std::size_t>(got));
    return true;
  }

  pid_t pid_ = -1;
  int out_fd_ = -1;
  int err_fd_ = -1;
  bool out_open_ = true;
  bool err_open_ = true;
  bool ended_ = false;
  std::string out_;
  std::string err_;
};

/// A folder that goes with its contents.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "walrim-test-XXXXXX").string();
    path_ = ::mkdtemp(pattern.data());
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() { std::filesystem::remove_all(path_); }

  [[nodiscard]] std::string Path(std::string_view name) const { return (path_ / name).string(); }
  [[nodiscard]] std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(path_))
      names.push_back(entry.path().filename());
    return names;
  }

 private:
  std::filesystem::path path_;
};

/// The user without rights.
inline constexpr uid_t Nobody = 65534;

/// Gives up the right to read and write everywhere. False where the process keeps it.
inline bool BecomeNobody() {
  if (::geteuid() != 0) return true;
  return ::setgroups(0, nullptr) == 0 && ::setgid(Nobody) == 0 && ::setuid(Nobody) == 0;
}

inline std::string FileContents(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

inline void PutFile(const std::string& path, std::string_view text) {
  std::ofstream(path, std::ios::binary).write(text.data(), static_cast<std::streamsize>(text.size()));
}

}  // namespace walrim
