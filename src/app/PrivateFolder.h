// A folder for temporary files that nobody else can read.
#pragma once

#include <string>
#include <string_view>

namespace walrim {

/// Is made in the system's folder for temporary files, and goes with all that is in it.
class PrivateFolder {
 public:
  PrivateFolder();
  PrivateFolder(const PrivateFolder&) = delete;
  PrivateFolder& operator=(const PrivateFolder&) = delete;
  ~PrivateFolder();

  /// Why there is no folder; empty where there is one.
  [[nodiscard]] const std::string& Problem() const { return problem_; }
  /// The path of a file in it.
  [[nodiscard]] std::string File(std::string_view name) const { return path_ + "/" + std::string(name); }

 private:
  std::string path_;
  std::string problem_;
};

}  // namespace walrim
