// What programs that did not come to their end have left behind.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/FileStore.h"
#include "platform/Descriptor.h"

namespace walrim {

/// A file of a program that is gone. While this object is there no other program takes it for left.
class LeftRecovery {
 public:
  /// lock is held, and lock_path's.
  LeftRecovery(std::filesystem::path path, std::filesystem::path lock_path, int lock)
      : path_(std::move(path)), lock_path_(std::move(lock_path)), lock_(lock) {}
  LeftRecovery(LeftRecovery&& other) noexcept
      : path_(std::move(other.path_)), lock_path_(std::move(other.lock_path_)), lock_(other.lock_.Release()) {}
  LeftRecovery& operator=(LeftRecovery&&) = delete;
  ~LeftRecovery();

  [[nodiscard]] const std::filesystem::path& Path() const { return path_; }
  /// Its text; what could be read of it, where not all could.
  [[nodiscard]] std::string Text() const;
  /// When it was written, in Unix time.
  [[nodiscard]] std::optional<std::int64_t> Written() const;
  void Discard();
  /// Renames it, so that it is not taken for left again; its name then.
  [[nodiscard]] std::filesystem::path SetAside();

 private:
  std::filesystem::path path_;
  std::filesystem::path lock_path_;
  Descriptor lock_;
};

/// A folder of recovery files: a text and a lock for each program that runs. The lock ends with its process, however
/// that ends; a text without a lock that is held is left. Only the user may read the texts.
class RecoveryFiles {
 public:
  explicit RecoveryFiles(std::filesystem::path folder) : folder_(std::move(folder)) {}
  RecoveryFiles(const RecoveryFiles&) = delete;
  RecoveryFiles& operator=(const RecoveryFiles&) = delete;
  /// The text stays, and counts as left.
  ~RecoveryFiles();

  /// Puts a text in the place of this program's last one, whole or not at all; why it could not. Makes the folder.
  [[nodiscard]] std::optional<FileProblem> Keep(std::string_view text);
  /// Takes this program's text away.
  void Remove();
  /// The texts that are left.
  [[nodiscard]] std::vector<LeftRecovery> Left() const;

 private:
  [[nodiscard]] std::filesystem::path TextPath(int number) const;
  [[nodiscard]] std::filesystem::path LockPath(int number) const;
  [[nodiscard]] bool Claim();

  std::filesystem::path folder_;
  int number_ = 0;  ///< this program's; 0: none yet
  Descriptor lock_;
};

/// The folder for what this user's programs know from one run to the next; nothing where there is none.
[[nodiscard]] std::optional<std::filesystem::path> UserStateFolder();

}  // namespace walrim
