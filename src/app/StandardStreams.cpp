#include "app/StandardStreams.h"

#include <fcntl.h>
#include <initializer_list>
#include <unistd.h>

namespace walrim {

void OpenClosedStandardStreams() {
  for (const int fd : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (::fcntl(fd, F_GETFD) >= 0) continue;
    // The lowest free descriptor is this one. It is opened the wrong way round: data that nobody gets are an error.
    if (::open("/dev/null", fd == STDIN_FILENO ? O_WRONLY : O_RDONLY) != fd) return;
  }
}

}  // namespace walrim
