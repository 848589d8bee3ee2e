#include "qt/LineSettings.h"

#include <gtest/gtest.h>

namespace walrim {
namespace {

TEST(LineSettings, ReadsTheReceiversLine) {
  EXPECT_EQ(ParseLineSettings("9600,N,8,1"), (LineSettings{9600, LineParity::None, 8, 1}));
}

TEST(LineSettings, ReadsOtherLines) {
  EXPECT_EQ(ParseLineSettings("4800,E,7,2"), (LineSettings{4800, LineParity::Even, 7, 2}));
  EXPECT_EQ(ParseLineSettings("115200,o,8,1"), (LineSettings{115200, LineParity::Odd, 8, 1}));
  EXPECT_EQ(ParseLineSettings("300,m,5,1"), (LineSettings{300, LineParity::Mark, 5, 1}));
  EXPECT_EQ(ParseLineSettings("300,S,6,1"), (LineSettings{300, LineParity::Space, 6, 1}));
}

TEST(LineSettings, RefusesWhatIsNone) {
  for (const char* text : {"", "9600", "9600,N,8", "9600,N,8,1,", "9600,N,8,1,1", "9600,X,8,1", "9600,NN,8,1",
                           "0,N,8,1", "-9600,N,8,1", "9600x,N,8,1", "99999999999,N,8,1", "9600,N,4,1", "9600,N,9,1",
                           "9600,N,8,0", "9600,N,8,3", " 9600,N,8,1", "9600,,8,1", ",,,"}) {
    EXPECT_EQ(ParseLineSettings(text), std::nullopt) << text;
  }
}

}  // namespace
}  // namespace walrim
