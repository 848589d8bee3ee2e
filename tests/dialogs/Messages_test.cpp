#include "dialogs/Messages.h"

#include <gtest/gtest.h>

namespace walrim {
namespace {

using namespace dialog_messages;

TEST(DialogMessages, AreWordedLikeThis) {
  EXPECT_EQ(NoAngle(Latitude, "abc", LatitudeInDegrees), "緯度「abc」は度（D形式，例 35.6252）として読めません．");
  EXPECT_EQ(NoAngle(Longitude, "x", LongitudeInDegrees), "経度「x」は度（D形式，例 139.2437）として読めません．");
  EXPECT_EQ(NoAngle(Latitude, "35.6", LatitudeInDms),
            "緯度「35.6」は度分秒（DMS形式，例 35.373072）として読めません．");
  EXPECT_EQ(NoAngle(Longitude, "139.6", LongitudeInDms),
            "経度「139.6」は度分秒（DMS形式，例 139.143732）として読めません．");
  EXPECT_EQ(OutOfRange(Latitude, "90.1", 90), "緯度「90.1」は-90度から90度までの範囲にありません．");
  EXPECT_EQ(OutOfRange(Longitude, "-180.01", 180), "経度「-180.01」は-180度から180度までの範囲にありません．");
  EXPECT_EQ(NoNegativeDms(Longitude, "-180"), "経度「-180」は南緯・西経のため，度分秒（DMS形式）では扱えません．");
}

TEST(DialogMessages, OfCellsAreWordedLikeThis) {
  EXPECT_EQ(NoPosition(Latitude, "abc"),
            "緯度「abc」は位置として読めません．度（例 35.6252），度分秒（例 35°37'30.7\"），地図のリンクのどれかで"
            "入力してください．");
  EXPECT_EQ(OtherAxis(Latitude, "E139.2"), "「E139.2」は緯度ではありません．");
  EXPECT_EQ(LinkOffGlobe, "その位置は地球の上にありません．");
}

}  // namespace
}  // namespace walrim
