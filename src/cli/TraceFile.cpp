#include "cli/TraceFile.h"

namespace walrim {

bool TraceFile::Open(const std::string& path) {
  file_.reset(std::fopen(path.c_str(), "we"));
  if (!file_) return false;
  WriteLine("# seconds\tdirection\tid\tsize\tbytes");
  return true;
}

void TraceFile::WriteLine(const std::string& line) {
  if (!file_) return;
  std::fputs((line + "\n").c_str(), file_.get());
  std::fflush(file_.get());
}

}  // namespace walrim
