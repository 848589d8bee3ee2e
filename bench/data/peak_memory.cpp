// How much memory a command takes at its peak.
//   walrim_peak_memory COMMAND [ARGUMENT...]    runs it and prints the bytes that it held in memory at most
//   walrim_peak_memory tables                   prints the bytes of the data set's tables
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "data/InternalData.h"

namespace walrim {
namespace {

template <typename Entry>
std::size_t Bytes(const std::vector<Entry>& table) {
  return table.size() * sizeof(Entry);
}

std::size_t TableBytes() {
  const InternalData data;
  return sizeof data + Bytes(data.d103) + Bytes(data.d104) + Bytes(data.d107) + Bytes(data.d108) +
         Bytes(data.waypoint_origin) + Bytes(data.d201) + Bytes(data.d202) + Bytes(data.d210) + Bytes(data.d310) +
         Bytes(data.track_points);
}

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
  if (argc == 2 && std::string_view(argv[1]) == "tables") {
    std::printf("%zu\n", walrim::TableBytes());
    return 0;
  }
  return walrim::RunAndPrintPeak(argv + 1);
}
