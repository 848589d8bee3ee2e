#include "app/StandardStreams.h"
#include "cli/Arguments.h"
#include "cli/Commands.h"

int main(int argc, char** argv) {
  walrim::OpenClosedStandardStreams();
  const walrim::ParsedArguments parsed = walrim::ParseArguments(argc, argv);
  if (!parsed.arguments) return static_cast<int>(parsed.exit_status);
  return static_cast<int>(walrim::RunCommand(*parsed.arguments, argc, argv));
}
