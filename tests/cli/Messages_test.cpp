// The wordings.
#include "cli/Messages.h"

#include <gtest/gtest.h>

namespace walrim::cli_messages {
namespace {

TEST(CliMessages, AreWordedSo) {
  EXPECT_EQ(ForceAdvice, "--force を指定すると，上書きします．");
  EXPECT_EQ(Utf8Advice, "--encoding utf8 を指定すると，UTF-8で保存できます．");
  EXPECT_EQ(CheckedLinkAdvice, "誤り検査は --checked-link で指定できます．");
  EXPECT_EQ(TraceIsData, "通信の記録は，読み書きするデータとは別のファイルにしてください：");
  EXPECT_EQ(NoTrace, "通信の記録ではないファイルです");
  EXPECT_EQ(FixDatesAdvice, "--fix-dates auto を指定すると，直します．");
  EXPECT_EQ(FixDatesQuestion, "直しますか？");
  EXPECT_EQ(YesAdvice, "--yes を指定すると，尋ねずに合わせます．");
  EXPECT_EQ(Stalled, "30秒間データが届かないため，通信を中止しました．");
  EXPECT_EQ(Cancelled, "中止しました．");
  EXPECT_EQ(NothingImported, "取り込めるデータがありません．");
  EXPECT_EQ(OfFile("a.txt", "why"), "a.txt：why");
  EXPECT_EQ(Named("-"), "（-）");
  EXPECT_EQ(LogTitles[6], "距離 km");
  EXPECT_EQ(RouteTitles[4], "区間 km");
  EXPECT_EQ(Total, "合計");
  EXPECT_EQ(NothingToMeasure, "ルートもトラックログもありません．");
  EXPECT_EQ(AscentNote(10), "上り・下りは，10m以上の高度差だけを数えます．");
}

}  // namespace
}  // namespace walrim::cli_messages
