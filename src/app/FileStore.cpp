#include "app/FileStore.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "app/Messages.h"

namespace walrim {

namespace {

/// Bytes that are read at once.
constexpr std::size_t PieceSize = 16384;

FileProblem LastError() {
  return {std::strerror(errno)};
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
  return FileProblem{std::string(messages::ForeignLink)};
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

/// Opens a file to read it; below 0 with the problem where it is none. A device is not even opened: that may move it.
int OpenToRead(const std::string& path, std::optional<FileProblem>& problem) {
  struct stat status {};
  if (::stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode)) {
    problem = FileProblem{std::string(messages::NoRegularFile)};
    return -1;
  }
  // What has become a pipe meanwhile is not waited for.
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
  if (fd < 0) problem = LastError();
  return fd;
}

/// Reads until a piece is full or the input has ended; fewer than 0 bytes, with the reason in errno, on an error.
ssize_t ReadPiece(int fd, std::string& piece) {
  std::size_t length = 0;
  while (length < piece.size()) {
    const ssize_t got = ::read(fd, piece.data() + length, piece.size() - length);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return got;
    if (got == 0) break;
    length += static_cast<std::size_t>(got);
  }
  return static_cast<ssize_t>(length);
}

}  // namespace

bool WriteAll(int fd, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(fd, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

FileReader::FileReader(const std::string& path) {
  standard_input_ = path == StandardStream;
  if (standard_input_) {
    file_.Reset(::dup(STDIN_FILENO));
    if (!file_.Valid()) problem_ = LastError();
  } else {
    file_.Reset(OpenToRead(path, problem_));
  }
}

std::optional<std::int64_t> FileReader::Modified() const {
  struct stat status {};
  if (standard_input_ || ::fstat(file_.Get(), &status) != 0) return std::nullopt;
  return status.st_mtim.tv_sec;
}

std::string_view FileReader::Next() {
  if (problem_) return {};
  piece_.resize(PieceSize);
  const ssize_t length = ReadPiece(file_.Get(), piece_);
  if (length < 0) {
    problem_ = LastError();
    return {};
  }
  read_ += static_cast<std::size_t>(length);
  if (read_ > LargestFile) {
    problem_ = FileProblem{std::strerror(EFBIG)};
    return {};
  }
  return std::string_view(piece_).substr(0, static_cast<std::size_t>(length));
}

void FileReader::Rewind() {
  read_ = 0;
  if (!problem_ && ::lseek(file_.Get(), 0, SEEK_SET) != 0) problem_ = LastError();
}

void FileWriter::Begin() {
  begun_ = true;
  if (path_ == StandardStream) return;
  const std::filesystem::path target = Resolved(path_);
  problem_ = ProblemOfTarget(target);
  if (problem_) return;
  target_ = target.string();
  if (!MayBeReplaced(target)) return;
  file_.emplace(target);
  if (file_->Get() < 0) problem_ = LastError();
}

void FileWriter::Add(std::string_view bytes) {
  if (!begun_) Begin();
  if (problem_) return;
  if (!file_) {
    held_.emplace_back(bytes);
  } else if (!WriteAll(file_->Get(), bytes)) {
    problem_ = LastError();
  }
}

void FileWriter::StartOver() {
  begun_ = false;
  file_.reset();
  held_.clear();
  problem_.reset();
}

void FileWriter::WriteHeld() {
  Descriptor file(path_ == StandardStream ? ::dup(STDOUT_FILENO) : ::open(target_.c_str(), O_WRONLY | O_CLOEXEC));
  bool written = file.Valid();
  for (const std::string& bytes : held_)
    written = written && WriteAll(file.Get(), bytes);
  if (!written || !file.Close()) problem_ = LastError();
}

std::optional<FileProblem> FileWriter::Finish() {
  if (!begun_) Begin();
  if (problem_) return problem_;
  if (!file_) {
    WriteHeld();
  } else if (!file_->TakePlace()) {
    problem_ = LastError();
  }
  return problem_;
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
