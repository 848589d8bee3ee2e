#include "app/ProgramName.h"

#include <gtest/gtest.h>

namespace walrim {
namespace {

TEST(WindowTitle, NamesTheProgramItsVersionAndWhatItIs) {
  EXPECT_EQ(WindowTitle(), "Walrim(Ver " + std::string(ProgramVersion()) + ")－ハンディGPS(GARMIN社)用データローダー");
}

}  // namespace
}  // namespace walrim
