#include "window/Program.h"

int main(int argc, char** argv) {
  return walrim::RunProgram(argc, argv);
}
