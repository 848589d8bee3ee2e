// The wordings.
#include "window/Messages.h"

#include <gtest/gtest.h>

namespace walrim::window_messages {
namespace {

TEST(WindowMessages, AreWordedSo) {
  EXPECT_EQ(DropHint, "ここにドロップすると，内部データに取り込みます．");
  EXPECT_EQ(Cancelling, "中止しています...");
  EXPECT_EQ(NoRecords, "データはありません．情報取得のあと，ダウンロードを押すか，ファイルを取り込んでください．");
  EXPECT_EQ(HeldCount, "内部データの件数");
  EXPECT_EQ(UnsavedCount, "内部データの件数（保存されていない変更があります）");
  EXPECT_EQ(RecordNeverCame, "受信機から届かなかった記録です");
  EXPECT_EQ(Code, "コード ");
  EXPECT_EQ(NumberTooLarge, "数値が範囲（-32768～32767）を超えています：");
  EXPECT_EQ(About("6.4"),
            "ハンディGPS（GARMIN社）用データローダー\n"
            "GPS 12からeTrexまでの受信機のウェイポイント，ルート，トラックログを\n"
            "受け取り，保存し，送り返します．\n\n"
            "MITライセンスで配布されています．\nQt 6.4 を使っています．");
}

}  // namespace
}  // namespace walrim::window_messages
