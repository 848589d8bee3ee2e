// A file that takes another one's place in one step.
#pragma once

#include <filesystem>
#include <string>
#include <sys/types.h>

#include "platform/Descriptor.h"

namespace walrim {

/// What a file is called while it is filled.
enum class WhileFilled { Nameless, Hidden };

/// A new file in its target's folder. It is to be filled over Get(), and is gone with this object unless TakePlace
/// moved it over the target. Failures are in errno.
class FileReplacement {
 public:
  /// target is a regular file, whose owner and rights the new one gets, or not there; no symbolic link. A nameless file
  /// is gone even with a process that is killed; on file systems that know none, and on request, it is a hidden one.
  explicit FileReplacement(const std::filesystem::path& target, WhileFilled name = WhileFilled::Nameless);
  FileReplacement(const FileReplacement&) = delete;
  FileReplacement& operator=(const FileReplacement&) = delete;
  ~FileReplacement();

  /// Below 0 when the file could not be made.
  [[nodiscard]] int Get() const { return file_.Get(); }
  /// Flushes the file to the disk and moves it over the target. False leaves the target as it was.
  [[nodiscard]] bool TakePlace();

 private:
  void OpenHidden(mode_t mode);
  [[nodiscard]] bool GiveName();

  std::filesystem::path target_;
  std::filesystem::path folder_;
  std::string name_;  ///< the hidden name; empty while there is none
  Descriptor file_;
};

/// The folder that a path's file lies in.
[[nodiscard]] std::filesystem::path FolderOf(const std::filesystem::path& path);

}  // namespace walrim
