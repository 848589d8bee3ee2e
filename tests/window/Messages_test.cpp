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
  EXPECT_EQ(RecordDamaged, "破損して届いた記録，または破損した点を含む記録です");
  EXPECT_EQ(CheckTip, "チェックのある記録だけを，保存・コピー・アップロード・削除します");
  EXPECT_EQ(CheckedRow("3", true), "3 チェックあり");
  EXPECT_EQ(CheckedRow("3", false), "3 チェックなし");
  EXPECT_EQ(Dismiss, "閉じる");
  EXPECT_EQ(
      Stalled,
      "30秒間，データが進んでいません．待っても進まないときは，「中止」を押して，電源とケーブルを確かめてください．");
  EXPECT_EQ(
      TilesTellWhere("example.org"),
      "この背景では，地図に見えている場所の画像を example.org から取り寄せます．どこを見ているかがそのサーバーに伝わ"
      "ります．よろしいですか？");
  EXPECT_EQ(NoTileAddress, "タイルのアドレスは，http://かhttps://で始まり，{z}，{x}，{y}を含むものにしてください．");
  EXPECT_EQ(NoHeights, "高度のデータはありません");
  EXPECT_EQ(AscentNote(10), "登りと下りは，10 m以上の高度の変化だけを数えています．");
  EXPECT_EQ(RangeFigures("1 km", "0:20:00", "5 m", "6 m", "3 km/h"),
            "1 km   0:20:00   登り 5 m   下り 6 m   平均 3 km/h");
  EXPECT_EQ(CodeTip("flag symbol", 178), "flag symbol（コード 178）");
  EXPECT_EQ(CodeTip("", 77), "コード 77");
  EXPECT_EQ(Matching(5, 19) + MatchingPoints(1, 30), "5 / 19件 が一致（ポイント 1 / 30）");
  EXPECT_EQ(HiddenRowsCount, "隠れている行も，チェックがあれば保存・コピー・アップロード・削除されます．");
  EXPECT_EQ(NumberTooLarge, "数値が範囲（-32768～32767）を超えています：");
  EXPECT_EQ(About("6.4"),
            "ハンディGPS（GARMIN社）用データローダー\n"
            "GPS 12からeTrexまでの受信機のウェイポイント，ルート，トラックログを\n"
            "受け取り，保存し，送り返します．\n\n"
            "MITライセンスで配布されています．\nQt 6.4 を使っています．");
}

TEST(WindowMessages, OfFiguresAreWordedSo) {
  EXPECT_EQ(FiguresOfChosen, "選択");
  EXPECT_EQ(FiguresOfAll, "すべて");
  EXPECT_EQ(FigurePoints, "点数");
  EXPECT_EQ(FigureSegments, "区間数");
  EXPECT_EQ(FigureDistance, "距離");
  EXPECT_EQ(FigureDuration, "時間");
  EXPECT_EQ(FigureMoving, "移動時間");
  EXPECT_EQ(FigureAverage, "平均速度");
  EXPECT_EQ(FigureMovingSpeed, "移動平均速度");
  EXPECT_EQ(FigureFastest, "最高速度");
  EXPECT_EQ(FigureAscent, "登り");
  EXPECT_EQ(FigureDescent, "下り");
  EXPECT_EQ(FigureLowest, "最低高度");
  EXPECT_EQ(FigureHighest, "最高高度");
  EXPECT_EQ(FigureLength, "長さ");
}

TEST(WindowMessages, OfUploadsAreWordedSo) {
  EXPECT_EQ(
      WouldBeLost,
      "このまま送信すると，次のものが失われるか変わります．チェックを付けた提案どおりに直して送信します（名前は書き"
      "換えられます）．");
  EXPECT_EQ(NothingWouldBeLost, "失われるものはありません．");
  EXPECT_EQ(SameNameAs("Waypoint 1「A」"), "Waypoint 1「A」と同じ名前になります");
  EXPECT_EQ(FittedFrom("a-b", "AB"), "「a-b」は，受信機では「AB」になります．");
  EXPECT_EQ(NoLettersOf("高"), "「高」には受信機の文字がないため，もとの提案に戻しました．");
  EXPECT_EQ(AllThere, "送信したデータは，すべて受信機にあります．");
  EXPECT_EQ(Differ(3), "受信機のデータは，送信したものと3件違います．");
}

}  // namespace
}  // namespace walrim::window_messages
