#include "text/TextOutput.h"

#include <gtest/gtest.h>

namespace walrim {
namespace {

TEST(TextOutput, HandsOnWholeLinesInPieces) {
  std::string text;
  std::size_t largest = 0;
  TextOutput out([&](const std::string& lines) {
    EXPECT_TRUE(lines.ends_with("\r\n"));
    largest = std::max(largest, lines.size());
    text += lines;
  });
  EXPECT_TRUE(out.Empty());
  std::string expected;
  for (int i = 0; i < 20000; ++i) {
    out.Line() += std::to_string(i);
    out.EndLine();
    expected += std::to_string(i) + "\r\n";
  }
  EXPECT_FALSE(out.Empty());
  EXPECT_FALSE(text.empty()) << "all of it was held";
  out.Flush();
  EXPECT_EQ(text, expected);
  EXPECT_LT(largest, std::size_t{70000});
  EXPECT_FALSE(out.Empty());
}

TEST(TextOutput, NothingIsHandedOnWhereNothingWasWritten) {
  TextOutput out([](const std::string&) { FAIL(); });
  out.Flush();
  EXPECT_TRUE(out.Empty());
}

}  // namespace
}  // namespace walrim
