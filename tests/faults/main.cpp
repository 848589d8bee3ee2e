#include <cstdio>
#include <gtest/gtest.h>
#include <string_view>

#include "faults/Table.h"

int main(int argc, char** argv) {
  if (argc == 2 && std::string_view(argv[1]) == "--table") {
    return std::fputs(walrim::ReliabilityDocument().c_str(), stdout) < 0 ? 1 : 0;
  }
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
