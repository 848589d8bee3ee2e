#include "cli/TraceFile.h"

#include <cerrno>
#include <cstring>

namespace walrim {

bool TraceFile::Open(const std::string& path) {
  problem_.clear();
  file_.reset(std::fopen(path.c_str(), "we"));
  if (!file_) {
    NoteProblem();
    return false;
  }
  WriteLine("# seconds\tdirection\tid\tsize\tbytes");
  return problem_.empty();
}

void TraceFile::WriteLine(const std::string& line) {
  if (!file_) return;
  if (std::fputs((line + "\n").c_str(), file_.get()) < 0 || std::fflush(file_.get()) != 0) NoteProblem();
}

void TraceFile::NoteProblem() {
  if (problem_.empty()) problem_ = std::strerror(errno);
}

}  // namespace walrim
