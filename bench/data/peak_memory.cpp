// How much memory a command takes at its peak.
//   walrim_peak_memory COMMAND [ARGUMENT...]    runs it and prints the bytes that it held in memory at most
#include <cstdio>
#include <cstdlib>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace walrim {
namespace {

int RunAndPrintPeak(char** command) {
  const pid_t child = ::fork();
  if (child == 0) {
    ::execv(command[0], command);
    std::_Exit(127);
  }
  int status = 0;
  rusage usage{};
  if (child < 0 || ::wait4(child, &status, 0, &usage) != child) return 1;
  std::printf("%lld\n", static_cast<long long>(usage.ru_maxrss) * 1024);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}

}  // namespace
}  // namespace walrim

int main(int argc, char** argv) {
  if (argc < 2) return 2;
  return walrim::RunAndPrintPeak(argv + 1);
}
