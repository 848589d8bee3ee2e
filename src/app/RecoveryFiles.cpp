#include "app/RecoveryFiles.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>

#include "app/FileReplacement.h"

namespace walrim {

namespace {

/// More programs than this do not keep a text at the same time.
constexpr int MostFiles = 64;
constexpr mode_t OwnerOnly = 0600;

/// Whether a descriptor is still that of the file that has a name: whoever held the lock before may have removed it.
bool IsAt(int fd, const std::filesystem::path& path) {
  struct stat opened {};
  struct stat named {};
  return ::fstat(fd, &opened) == 0 && ::stat(path.c_str(), &named) == 0 && opened.st_dev == named.st_dev &&
         opened.st_ino == named.st_ino;
}

/// Takes a lock that ends with the process; below 0, with the reason in errno, where it is held or cannot be made.
int TakeLock(const std::filesystem::path& path) {
  while (true) {
    Descriptor lock(::open(path.c_str(), O_CREAT | O_RDWR | O_CLOEXEC | O_NOFOLLOW, OwnerOnly));
    if (!lock.Valid() || ::flock(lock.Get(), LOCK_EX | LOCK_NB) != 0) return -1;
    if (IsAt(lock.Get(), path)) return lock.Release();
  }
}

std::optional<FileProblem> LastProblem() {
  return FileProblem{std::generic_category().message(errno)};
}

}  // namespace

// ---- What is left

LeftRecovery::~LeftRecovery() {
  if (lock_.Valid()) ::unlink(lock_path_.c_str());
}

std::string LeftRecovery::Text() const {
  FileReader file(path_.string());
  std::string text;
  for (std::string_view piece = file.Next(); !piece.empty(); piece = file.Next())
    text += piece;
  return text;
}

std::optional<std::int64_t> LeftRecovery::Written() const {
  return FileReader(path_.string()).Modified();
}

void LeftRecovery::Discard() {
  ::unlink(path_.c_str());
}

std::filesystem::path LeftRecovery::SetAside() {
  std::filesystem::path aside;
  int number = 1;
  do {
    aside = path_.string() + ".damaged-" + std::to_string(number++);
  } while (FileExists(aside.string()) && number < MostFiles);
  std::error_code error;
  std::filesystem::rename(path_, aside, error);
  return error ? path_ : aside;
}

// ---- The folder

RecoveryFiles::~RecoveryFiles() {
  if (lock_.Valid()) ::unlink(LockPath(number_).c_str());
}

std::filesystem::path RecoveryFiles::TextPath(int number) const {
  return folder_ / ("recovery-" + std::to_string(number) + ".txt");
}

std::filesystem::path RecoveryFiles::LockPath(int number) const {
  return folder_ / ("recovery-" + std::to_string(number) + ".lock");
}

/// Finds a number that no program has, and that none has left a text under. False with the reason in errno.
bool RecoveryFiles::Claim() {
  std::error_code error;
  std::filesystem::create_directories(folder_.parent_path(), error);
  if (::mkdir(folder_.c_str(), OwnerOnly | S_IXUSR) != 0 && errno != EEXIST) return false;
  for (int number = 1; number <= MostFiles; ++number) {
    Descriptor lock(TakeLock(LockPath(number)));
    if (!lock.Valid() && errno != EWOULDBLOCK) return false;
    if (!lock.Valid()) continue;
    if (FileExists(TextPath(number).string())) {
      ::unlink(LockPath(number).c_str());
      continue;
    }
    number_ = number;
    lock_.Reset(lock.Release());
    return true;
  }
  errno = EMFILE;
  return false;
}

std::optional<FileProblem> RecoveryFiles::Keep(std::string_view text) {
  if (!lock_.Valid() && !Claim()) return LastProblem();
  FileReplacement file(TextPath(number_));
  const bool kept =
      file.Get() >= 0 && ::fchmod(file.Get(), OwnerOnly) == 0 && WriteAll(file.Get(), text) && file.TakePlace();
  return kept ? std::nullopt : LastProblem();
}

void RecoveryFiles::Remove() {
  if (!lock_.Valid()) return;
  ::unlink(TextPath(number_).c_str());
  ::unlink(LockPath(number_).c_str());
  lock_.Reset();
}

std::vector<LeftRecovery> RecoveryFiles::Left() const {
  std::vector<LeftRecovery> left;
  for (int number = 1; number <= MostFiles; ++number) {
    if (number == number_ && lock_.Valid()) continue;
    std::error_code error;
    if (!std::filesystem::exists(TextPath(number), error)) continue;
    Descriptor lock(TakeLock(LockPath(number)));
    if (!lock.Valid()) continue;
    // Its program may have come to its end just now.
    const bool is_there = std::filesystem::exists(TextPath(number), error);
    LeftRecovery one(TextPath(number), LockPath(number), lock.Release());
    if (is_there) left.push_back(std::move(one));
  }
  return left;
}

std::optional<std::filesystem::path> UserStateFolder() {
  const char* state = std::getenv("XDG_STATE_HOME");
  if (state != nullptr && std::filesystem::path(state).is_absolute()) return state;
  const char* home = std::getenv("HOME");
  if (home == nullptr || !std::filesystem::path(home).is_absolute()) return std::nullopt;
  return std::filesystem::path(home) / ".local" / "state";
}

}  // namespace walrim
