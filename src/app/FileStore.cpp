#include "app/FileStore.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace walrim {

namespace {

FileProblem LastError() {
  return {std::strerror(errno)};
}

/// A file descriptor that is closed when it goes.
class Descriptor {
 public:
  explicit Descriptor(int fd) : fd_(fd) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (fd_ >= 0) ::close(fd_);
  }

  [[nodiscard]] int Get() const { return fd_; }
  /// False when closing reports an error that writing did not.
  [[nodiscard]] bool Close() {
    const int fd = fd_;
    fd_ = -1;
    return ::close(fd) == 0;
  }

 private:
  int fd_;
};

bool WriteAll(int fd, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(fd, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

std::optional<FileProblem> WriteDirectly(const std::string& path, std::string_view bytes) {
  Descriptor file(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
  if (file.Get() < 0 || !WriteAll(file.Get(), bytes) || !file.Close()) return LastError();
  return std::nullopt;
}

/// Access rights of a file to be replaced, or those that a new file gets.
mode_t ModeFor(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) == 0) return status.st_mode & 07777;
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return 0666 & ~mask;
}

void FlushFolder(const std::filesystem::path& folder) {
  const Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (opened.Get() >= 0) ::fsync(opened.Get());
}

std::filesystem::path FolderOf(const std::filesystem::path& path) {
  const auto folder = path.parent_path();
  return folder.empty() ? std::filesystem::path(".") : folder;
}

/// The path behind symbolic links, also where nothing stands there yet.
std::filesystem::path Resolved(const std::string& path) {
  std::error_code error;
  if (!std::filesystem::is_symlink(path, error)) return path;
  auto target = std::filesystem::weakly_canonical(path, error);
  return error ? std::filesystem::path(path) : target;
}

}  // namespace

std::optional<std::string> ReadWholeFile(const std::string& path, FileProblem* problem) {
  const bool standard_input = path == "-";
  const Descriptor file(standard_input ? ::dup(STDIN_FILENO) : ::open(path.c_str(), O_RDONLY | O_CLOEXEC));
  std::string bytes;
  std::size_t length = 0;
  while (file.Get() >= 0) {
    if (length > LargestFile) {
      errno = EFBIG;
      break;
    }
    bytes.resize(length + (length < 65536 ? 65536 : length));
    const ssize_t got = ::read(file.Get(), bytes.data() + length, bytes.size() - length);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) break;
    length += static_cast<std::size_t>(got);
    if (got == 0) {
      bytes.resize(length);
      return bytes;
    }
  }
  if (problem != nullptr) *problem = LastError();
  return std::nullopt;
}

std::optional<FileProblem> WriteWholeFile(const std::string& path, std::string_view bytes) {
  const std::filesystem::path target = Resolved(path);
  std::error_code error;
  const auto kind = std::filesystem::status(target, error).type();
  if (kind == std::filesystem::file_type::directory) return FileProblem{std::strerror(EISDIR)};
  if (kind != std::filesystem::file_type::regular && kind != std::filesystem::file_type::not_found &&
      kind != std::filesystem::file_type::none) {
    return WriteDirectly(target, bytes);
  }
  const auto folder = FolderOf(target);
  // A name of its own length: the target's may already be as long as names can be.
  std::string temporary = (folder / ".walrim-XXXXXX").string();
  Descriptor file(::mkstemp(temporary.data()));
  if (file.Get() < 0) return LastError();
  const bool written = ::fchmod(file.Get(), ModeFor(target)) == 0 && WriteAll(file.Get(), bytes) &&
                       ::fsync(file.Get()) == 0 && file.Close() && ::rename(temporary.c_str(), target.c_str()) == 0;
  if (!written) {
    const FileProblem problem = LastError();
    ::unlink(temporary.c_str());
    return problem;
  }
  FlushFolder(folder);
  return std::nullopt;
}

std::optional<FileProblem> CheckWritable(const std::string& path) {
  const std::filesystem::path target = Resolved(path);
  std::error_code error;
  if (std::filesystem::is_directory(target, error)) return FileProblem{std::strerror(EISDIR)};
  if (std::filesystem::exists(target, error) && !std::filesystem::is_regular_file(target, error)) return std::nullopt;
  if (::access(FolderOf(target).c_str(), W_OK | X_OK) != 0) return LastError();
  return std::nullopt;
}

bool FileExists(const std::string& path) {
  std::error_code error;
  return std::filesystem::exists(path, error);
}

}  // namespace walrim
