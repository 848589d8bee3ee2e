#include "app/FileStore.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "app/Descriptor.h"
#include "app/FileReplacement.h"

namespace walrim {

namespace {

FileProblem LastError() {
  return {std::strerror(errno)};
}

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

/// Whether a link is another user's, in a folder where everybody may put files: it may lead to any file of whoever
/// follows it. The folder's owner could do worse than that.
bool IsForeignLink(const std::filesystem::path& link) {
  constexpr mode_t Shared = S_ISVTX | S_IWOTH;
  struct stat folder {};
  struct stat status {};
  if (::stat(FolderOf(link).c_str(), &folder) != 0 || ::lstat(link.c_str(), &status) != 0) return false;
  return (folder.st_mode & Shared) == Shared && status.st_uid != ::geteuid() && status.st_uid != folder.st_uid;
}

/// The path behind symbolic links, also where nothing stands there yet. Links in a circle, and one that is not to be
/// followed, are left as they are.
std::filesystem::path Resolved(const std::filesystem::path& path) {
  constexpr int MostLinks = 40;
  std::filesystem::path target = path;
  std::error_code error;
  for (int links = 0; links < MostLinks && std::filesystem::is_symlink(target, error); ++links) {
    if (IsForeignLink(target)) break;
    target = target.parent_path() / std::filesystem::read_symlink(target, error);
  }
  return target;
}

/// Why a path that was resolved is still a link.
std::optional<FileProblem> ProblemOfLink(const std::filesystem::path& target) {
  std::error_code error;
  if (!std::filesystem::is_symlink(target, error) || !IsForeignLink(target)) return std::nullopt;
  return FileProblem{"ほかの利用者が置いたリンクです"};
}

/// Why nothing can be written at a path, whatever its folder allows. A file may be replaced where its folder may be
/// changed, but one that is protected against writing is meant to stay.
std::optional<FileProblem> ProblemOfTarget(const std::filesystem::path& target) {
  std::error_code error;
  if (const auto problem = ProblemOfLink(target)) return problem;
  const auto kind = std::filesystem::status(target, error).type();
  if (kind == std::filesystem::file_type::directory) return FileProblem{std::strerror(EISDIR)};
  if (kind == std::filesystem::file_type::none) return FileProblem{error.message()};
  if (kind == std::filesystem::file_type::regular && ::access(target.c_str(), W_OK) != 0) return LastError();
  return std::nullopt;
}

/// Whether a new file may stand at a path: no pipe or device does.
bool MayBeReplaced(const std::filesystem::path& target) {
  std::error_code error;
  const auto kind = std::filesystem::status(target, error).type();
  return kind == std::filesystem::file_type::regular || kind == std::filesystem::file_type::not_found;
}

/// What is made room for at first: a file's size and the byte behind it, where its end is seen.
std::size_t FirstRoom(int fd) {
  constexpr std::size_t OfUnknownSize = 65536;
  struct stat status {};
  if (::fstat(fd, &status) != 0 || !S_ISREG(status.st_mode)) return OfUnknownSize;
  return std::min(static_cast<std::size_t>(status.st_size), LargestFile) + 1;
}

/// Opens a file to read it; below 0 with the problem where it is none. A device is not even opened: that may move it.
int OpenToRead(const std::string& path, FileProblem& problem) {
  struct stat status {};
  if (::stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode)) {
    problem.detail = "通常のファイルではありません";
    return -1;
  }
  // What has become a pipe meanwhile is not waited for.
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
  if (fd < 0) problem = LastError();
  return fd;
}

int OpenStandardInput(FileProblem& problem) {
  const int fd = ::dup(STDIN_FILENO);
  if (fd < 0) problem = LastError();
  return fd;
}

/// Reads up to the end; false, with the reason in errno, where that fails.
bool ReadAll(int fd, std::string& bytes) {
  bytes.resize(FirstRoom(fd));
  std::size_t length = 0;
  for (;;) {
    if (length > LargestFile) {
      errno = EFBIG;
      return false;
    }
    if (length == bytes.size()) bytes.resize(2 * length);
    const ssize_t got = ::read(fd, bytes.data() + length, bytes.size() - length);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return false;
    length += static_cast<std::size_t>(got);
    if (got > 0) continue;
    bytes.resize(length);
    return true;
  }
}

}  // namespace

std::optional<std::string> ReadWholeFile(const std::string& path, FileProblem* problem) {
  FileProblem found;
  const Descriptor file(path == "-" ? OpenStandardInput(found) : OpenToRead(path, found));
  std::string bytes;
  if (file.Get() >= 0) {
    if (ReadAll(file.Get(), bytes)) return bytes;
    found = LastError();
  }
  if (problem != nullptr) *problem = found;
  return std::nullopt;
}

std::optional<FileProblem> WriteWholeFile(const std::string& path, std::string_view bytes) {
  const std::filesystem::path target = Resolved(path);
  if (const auto problem = ProblemOfTarget(target)) return problem;
  if (!MayBeReplaced(target)) return WriteDirectly(target, bytes);
  FileReplacement file(target);
  if (file.Get() < 0 || !WriteAll(file.Get(), bytes) || !file.TakePlace()) return LastError();
  return std::nullopt;
}

std::optional<FileProblem> CheckWritable(const std::string& path) {
  const std::filesystem::path target = Resolved(path);
  if (const auto problem = ProblemOfTarget(target)) return problem;
  if (MayBeReplaced(target) && ::access(FolderOf(target).c_str(), W_OK | X_OK) != 0) return LastError();
  return std::nullopt;
}

std::optional<FileProblem> CheckLink(const std::string& path) {
  return ProblemOfLink(Resolved(path));
}

bool FileExists(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 || (errno != ENOENT && errno != ENOTDIR);
}

}  // namespace walrim
