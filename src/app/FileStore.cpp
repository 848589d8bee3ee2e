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

/// The path behind symbolic links, also where nothing stands there yet. Links in a circle are left as they are.
std::filesystem::path Resolved(const std::filesystem::path& path) {
  constexpr int MostLinks = 40;
  std::filesystem::path target = path;
  std::error_code error;
  for (int links = 0; links < MostLinks && std::filesystem::is_symlink(target, error); ++links)
    target = target.parent_path() / std::filesystem::read_symlink(target, error);
  return target;
}

/// Why nothing can be written at a path, whatever its folder allows. A file may be replaced where its folder may be
/// changed, but one that is protected against writing is meant to stay.
std::optional<FileProblem> ProblemOfTarget(const std::filesystem::path& target) {
  std::error_code error;
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
  const bool standard_input = path == "-";
  const Descriptor file(standard_input ? ::dup(STDIN_FILENO) : ::open(path.c_str(), O_RDONLY | O_CLOEXEC));
  std::string bytes;
  if (file.Get() >= 0 && ReadAll(file.Get(), bytes)) return bytes;
  if (problem != nullptr) *problem = LastError();
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

bool FileExists(const std::string& path) {
  std::error_code error;
  return std::filesystem::exists(path, error);
}

}  // namespace walrim
