#include "formats/Messages.h"

#include <gtest/gtest.h>

namespace walrim {
namespace {

using namespace format_messages;

TEST(FormatMessages, AreWordedLikeThis) {
  EXPECT_EQ(UnknownNotation, "角度の表記が不明です");
  EXPECT_EQ(UnknownDatum, "測地系が不明です");
  EXPECT_EQ(TooManyColumns, "列が多すぎます");
  EXPECT_EQ(NoPosition, "緯度または経度がありません");
  EXPECT_EQ(BadAngle, "緯度または経度の書き方が不正です");
  EXPECT_EQ(PositionOutOfRange, "緯度または経度が範囲外です");
  EXPECT_EQ(NoRouteHeader, "前にルートのヘッダ行(RTH)がありません");
  EXPECT_EQ(NoTrackHeader, "前にトラックログのヘッダ行(TRH)がありません");
  EXPECT_EQ(HeaderRefused, "ヘッダ行を格納できなかったため，この点も格納できません");
  EXPECT_EQ(StoreFull, "内部データ容量の限界です");
  EXPECT_EQ(UnreadPosition, "位置が読めません");
  EXPECT_EQ(TooManyLogPoints, "トラックログの点が多すぎます");
  EXPECT_EQ(StatementTail, "文の後ろに同じ行の続きがあります");
  EXPECT_EQ(OpenStatement, "文に終わりがありません");
  EXPECT_EQ(NotWellFormed, "XMLの書き方が不正です");
  EXPECT_EQ(NoXmlCharacter, "XMLにない文字があります");
  EXPECT_EQ(UnknownEntity, "XMLにない実体参照があります");
  EXPECT_EQ(EntityDeclared, "実体の宣言には対応していません");
  EXPECT_EQ(TooDeep, "要素の入れ子が深すぎます");
  EXPECT_EQ(TooManyAttributes, "要素の属性が多すぎます");
  EXPECT_EQ(TooLongAttribute, "属性の値が長すぎます");
  EXPECT_EQ(UnreadEncoding, "文字コードが宣言と合わないか，対応していません");
  EXPECT_EQ(TooLarge, "64MBを超えています");
  EXPECT_EQ(NoGpx, "GPXではありません");
  EXPECT_EQ(AtPlace("why", 3, 14), "why（3行目の14文字目）");
  EXPECT_EQ(UnknownSymbols("A，B"), "知らないシンボルはWaypointにしました：A，B．");
  EXPECT_EQ(NearestSymbols("A"), "受信機にないシンボルは近いものにしました：A．");
  EXPECT_EQ(SplitRoutes(2), "99点を超えるルートが2本あり，続きを別のルートにしました．");
  EXPECT_EQ(WaypointFolder, "ウェイポイント");
  EXPECT_EQ(RouteFolder, "ルート");
  EXPECT_EQ(TrackLogFolder, "トラックログ");
  EXPECT_EQ(WalkDistance("1.25"), "距離 1.25 km");
  EXPECT_EQ(WalkTimes("1:02:03", "0:59:59"), "，時間 1:02:03（移動 0:59:59）");
  EXPECT_EQ(WalkClimbs(300, 20, 10), "，登り 300 m，下り 20 m（10 m以上の高低差）");
  EXPECT_EQ(UnknownCommand("XY"), "command [XY] is not suppoted");
}

}  // namespace
}  // namespace walrim
