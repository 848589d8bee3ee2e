// walrim up to its first frame, or with "--complete" as its first argument up to the frame with all contents.
#include <cstdlib>
#include <string_view>

#include "window/Program.h"

int main(int argc, char** argv) {
  const auto stop = [] { std::_Exit(0); };
  if (argc > 1 && std::string_view(argv[1]) == "--complete") {
    argv[1] = argv[0];
    return walrim::RunProgram(argc - 1, argv + 1, {{}, stop});
  }
  return walrim::RunProgram(argc, argv, {stop, {}});
}
