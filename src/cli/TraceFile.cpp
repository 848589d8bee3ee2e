#include "cli/TraceFile.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

#include "app/FileStore.h"
#include "cli/Messages.h"
#include "platform/Descriptor.h"

namespace walrim {

namespace {

/// Whether an open file has nothing to lose: it is empty, an older trace, or no file that keeps anything.
bool HoldsNothingElse(int fd) {
  struct stat status {};
  if (::fstat(fd, &status) != 0 || !S_ISREG(status.st_mode) || status.st_size == 0) return true;
  std::string beginning(TraceHeading.size(), '\0');
  const ssize_t got = ::pread(fd, beginning.data(), beginning.size(), 0);
  return got == static_cast<ssize_t>(TraceHeading.size()) && beginning == TraceHeading;
}

}  // namespace

bool TraceFile::Open(const std::string& path, bool replace) {
  problem_.clear();
  file_.reset();
  refused_ = false;
  if (!Begin(path, replace)) {
    if (problem_.empty()) NoteProblem();
    return false;
  }
  WriteLine(std::string(TraceHeading));
  return problem_.empty();
}

bool TraceFile::Begin(const std::string& path, bool replace) {
  if (const auto problem = CheckLink(path)) {
    problem_ = problem->detail;
    return false;
  }
  Descriptor file(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOCTTY, 0666));
  if (!file.Valid()) return false;
  if (!replace && !HoldsNothingElse(file.Get())) {
    problem_ = cli_messages::NoTrace;
    refused_ = true;
    return false;
  }
  // A pipe or a terminal has no length to cut.
  if (::ftruncate(file.Get(), 0) != 0 && errno != EINVAL) return false;
  file_.reset(::fdopen(file.Get(), "w"));
  return file_ && file.Release() >= 0;  // fclose closes it
}

void TraceFile::Frame(const TracedFrame& frame) {
  WriteLine(hiding_ ? TraceLine({frame.direction, frame.time, hiding_->Hide(frame.bytes), frame.mark})
                    : TraceLine(frame));
}

void TraceFile::WriteLine(const std::string& line) {
  if (!file_) return;
  if (std::fputs((line + "\n").c_str(), file_.get()) < 0 || std::fflush(file_.get()) != 0) NoteProblem();
}

void TraceFile::NoteProblem() {
  if (problem_.empty()) problem_ = std::strerror(errno);
}

}  // namespace walrim
