// What the window says beyond the captions and tool tips of its controls, which stand where the controls are made.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "text/Phrase.h"

namespace walrim::window_messages {

inline constexpr std::string_view DropHint = "ここにドロップすると，内部データに取り込みます．";
inline constexpr std::string_view Cancelling = "中止しています...";
/// Beside the button that ends it.
inline constexpr std::string_view Stalled =
    "30秒間，データが進んでいません．待っても進まないときは，「中止」を押して，電源とケーブルを確かめてください．";
/// Over the number of records of a kind that are held.
inline constexpr std::string_view HeldCount = "内部データの件数";
inline constexpr std::string_view UnsavedCount = "内部データの件数（保存されていない変更があります）";
/// Stands in place of a table without records.
inline constexpr std::string_view NoRecords =
    "データはありません．情報取得のあと，ダウンロードを押すか，ファイルを取り込んでください．";
inline constexpr std::string_view RecordNeverCame = "受信機から届かなかった記録です";
inline constexpr std::string_view RecordDamaged = "破損して届いた記録，または破損した点を含む記録です";
/// Over a record's check, and what a screen reader says of it.
inline constexpr std::string_view CheckTip = "チェックのある記録だけを，保存・コピー・アップロード・削除します";
[[nodiscard]] inline std::string CheckedRow(std::string_view number, bool checked) {
  return checked ? Phrase("%1 チェックあり", number) : Phrase("%1 チェックなし", number);
}
/// On the button below a file that could not be restored.
inline constexpr std::string_view Dismiss = "閉じる";
inline constexpr std::string_view WouldBeLost =
    "このまま送信すると，次のものが失われるか変わります．チェックを付けた提案どおりに直して送信します（名前は書き換えら"
    "れます）．";
/// Beside a name before an upload. record: "Waypoint 3「CAMP」".
[[nodiscard]] inline std::string SameNameAs(std::string_view record) {
  return Phrase("%1と同じ名前になります", record);
}
[[nodiscard]] inline std::string FittedFrom(std::string_view typed, std::string_view name) {
  return Phrase("「%1」は，受信機では「%2」になります．", typed, name);
}
[[nodiscard]] inline std::string NoLettersOf(std::string_view typed) {
  return Phrase("「%1」には受信機の文字がないため，もとの提案に戻しました．", typed);
}
inline constexpr std::string_view NothingWouldBeLost = "失われるものはありません．";
inline constexpr std::string_view AllThere = "送信したデータは，すべて受信機にあります．";
[[nodiscard]] inline std::string Differ(std::size_t count) {
  return Phrase("受信機のデータは，送信したものと%1件違います．", count);
}
/// In front of the choice of a background, with the name of its server.
[[nodiscard]] inline std::string TilesTellWhere(std::string_view host) {
  return Phrase(
      "この背景では，地図に見えている場所の画像を %1 から取り寄せます．どこを見ているかがそのサーバーに伝わります．"
      "よろしいですか？",
      host);
}
inline constexpr std::string_view NoTileAddress =
    "タイルのアドレスは，http://かhttps://で始まり，{z}，{x}，{y}を含むものにしてください．";
inline constexpr std::string_view NoHeights = "高度のデータはありません";
inline constexpr std::string_view FiguresOfChosen = "選択";
inline constexpr std::string_view FiguresOfAll = "すべて";
inline constexpr std::string_view FigurePoints = "点数";
inline constexpr std::string_view FigureSegments = "区間数";
inline constexpr std::string_view FigureDistance = "距離";
inline constexpr std::string_view FigureDuration = "時間";
inline constexpr std::string_view FigureMoving = "移動時間";
inline constexpr std::string_view FigureAverage = "平均速度";
inline constexpr std::string_view FigureMovingSpeed = "移動平均速度";
inline constexpr std::string_view FigureFastest = "最高速度";
inline constexpr std::string_view FigureAscent = "登り";
inline constexpr std::string_view FigureDescent = "下り";
inline constexpr std::string_view FigureLowest = "最低高度";
inline constexpr std::string_view FigureHighest = "最高高度";
inline constexpr std::string_view FigureLength = "長さ";
[[nodiscard]] inline std::string AscentNote(int threshold_m) {
  return Phrase("登りと下りは，%1 m以上の高度の変化だけを数えています．", threshold_m);
}
/// Of a part of a log. A speed is the average.
[[nodiscard]] inline std::string RangeFigures(std::string_view distance, std::string_view duration,
                                              std::string_view ascent, std::string_view descent,
                                              std::string_view speed) {
  return Phrase("%1   %2   登り %3   下り %4   平均 %5", distance, duration, ascent, descent, speed);
}
/// Over a symbol or a display mode. english may be empty.
[[nodiscard]] inline std::string CodeTip(std::string_view english, int code) {
  return english.empty() ? Phrase("コード %1", code) : Phrase("%1（コード %2）", english, code);
}
/// Beside the text that tables are filtered by.
[[nodiscard]] inline std::string Matching(int shown, int held) {
  return Phrase("%1 / %2件 が一致", shown, held);
}
[[nodiscard]] inline std::string MatchingPoints(int shown, int held) {
  return Phrase("（ポイント %1 / %2）", shown, held);
}
inline constexpr std::string_view HiddenRowsCount =
    "隠れている行も，チェックがあれば保存・コピー・アップロード・削除されます．";
/// In both languages: who has chosen one may not read the other.
inline constexpr std::string_view LanguageFromNextStart =
    "次に起動したときから変わります．／The next start will speak it.";
/// In front of what was typed.
inline constexpr std::string_view NumberTooLarge = "数値が範囲（-32768～32767）を超えています：";
[[nodiscard]] inline std::string About(std::string_view qt_version) {
  return Phrase(
      "ハンディGPS（GARMIN社）用データローダー\n"
      "GPS 12からeTrexまでの受信機のウェイポイント，ルート，トラックログを\n"
      "受け取り，保存し，送り返します．\n\n"
      "MITライセンスで配布されています．\nQt %1 を使っています．",
      qt_version);
}

}  // namespace walrim::window_messages
