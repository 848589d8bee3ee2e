#include "app/StandardStreams.h"
#include "window/Program.h"

int main(int argc, char** argv) {
  walrim::OpenClosedStandardStreams();
  return walrim::RunProgram(argc, argv);
}
