#include "app/PrivateFolder.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace walrim {

PrivateFolder::PrivateFolder() {
  std::error_code error;
  const std::filesystem::path base = std::filesystem::temp_directory_path(error);
  if (error) {
    problem_ = error.message();
    return;
  }
  std::string pattern = (base / "walrim-XXXXXX").string();
  if (::mkdtemp(pattern.data()) == nullptr) {
    problem_ = std::strerror(errno);
    return;
  }
  path_ = pattern;
}

PrivateFolder::~PrivateFolder() {
  std::error_code error;
  if (!path_.empty()) std::filesystem::remove_all(path_, error);
}

}  // namespace walrim
