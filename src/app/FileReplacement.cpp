#include "app/FileReplacement.h"

#include <cerrno>
#include <fcntl.h>
#include <functional>
#include <random>
#include <sys/stat.h>

namespace walrim {

namespace {

/// Names that are tried; a name that is taken already is next to impossible.
constexpr int MostNames = 100;
constexpr mode_t AllRights = 0777;

/// Tries hidden names until one is not taken; empty, with the reason in errno, where none could be used. They have a
/// length of their own: the target's may already be as long as names can be.
std::string TakeHiddenName(const std::filesystem::path& folder, const std::function<bool(const std::string&)>& take) {
  std::random_device random;
  for (int i = 0; i < MostNames; ++i) {
    std::string name = (folder / (".walrim-" + std::to_string(random()) + "-" + std::to_string(random()))).string();
    if (take(name)) return name;
    if (errno != EEXIST) break;
  }
  return {};
}

/// Owner and rights of the file that is replaced, as far as the user may give them away. What cannot be kept is no
/// reason to lose the data: file systems without owners and rights refuse both.
void CopyOwnerAndRights(const struct stat& from, int fd) {
  const bool owned = ::fchown(fd, from.st_uid, from.st_gid) == 0 || ::fchown(fd, uid_t(-1), from.st_gid) == 0;
  // Rights of one group are not for another.
  const mode_t kept = owned ? AllRights : AllRights & ~mode_t(S_IRWXG);
  static_cast<void>(::fchmod(fd, from.st_mode & kept));
}

/// A file without a name; below 0 where there can be none, or none that could be given a name later.
int OpenNameless(const std::filesystem::path& folder, mode_t mode) {
  if (::access("/proc/self/fd", X_OK) != 0) return -1;
  return ::open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, mode);
}

void FlushFolder(const std::filesystem::path& folder) {
  const Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (opened.Valid()) ::fsync(opened.Get());
}

}  // namespace

std::filesystem::path FolderOf(const std::filesystem::path& path) {
  const auto folder = path.parent_path();
  return folder.empty() ? std::filesystem::path(".") : folder;
}

FileReplacement::FileReplacement(const std::filesystem::path& target, WhileFilled name)
    : target_(target), folder_(FolderOf(target)) {
  struct stat old {};
  const bool replaces = ::stat(target.c_str(), &old) == 0;
  // Never open to more than the old file was, not even for a moment.
  const mode_t mode = replaces ? old.st_mode & AllRights : 0666;
  if (name == WhileFilled::Nameless) file_.Reset(OpenNameless(folder_, mode));
  if (!file_.Valid()) OpenHidden(mode);
  if (file_.Valid() && replaces) CopyOwnerAndRights(old, file_.Get());
}

FileReplacement::~FileReplacement() {
  const int problem = errno;
  if (!name_.empty()) ::unlink(name_.c_str());
  errno = problem;
}

void FileReplacement::OpenHidden(mode_t mode) {
  name_ = TakeHiddenName(folder_, [&](const std::string& name) {
    file_.Reset(::open(name.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, mode));
    return file_.Valid();
  });
}

/// A file without a name cannot be moved over another one: it is given a hidden name first.
bool FileReplacement::GiveName() {
  const std::string self = "/proc/self/fd/" + std::to_string(file_.Get());
  name_ = TakeHiddenName(folder_, [&](const std::string& name) {
    return ::linkat(AT_FDCWD, self.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
  });
  return !name_.empty();
}

bool FileReplacement::TakePlace() {
  if (::fsync(file_.Get()) != 0) return false;
  if (name_.empty() && !GiveName()) return false;
  if (!file_.Close() || ::rename(name_.c_str(), target_.c_str()) != 0) return false;
  name_.clear();
  FlushFolder(folder_);
  return true;
}

}  // namespace walrim
