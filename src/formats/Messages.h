// What the readers of files say of lines and statements that they leave out, of commands that they do not know, and of
// texts that they refuse.
#pragma once

#include <string>
#include <string_view>

#include "text/Phrase.h"

namespace walrim::format_messages {

// Why a line was not stored.
inline constexpr std::string_view UnknownNotation = "角度の表記が不明です";
inline constexpr std::string_view UnknownDatum = "測地系が不明です";
inline constexpr std::string_view TooManyColumns = "列が多すぎます";
inline constexpr std::string_view NoPosition = "緯度または経度がありません";
inline constexpr std::string_view BadAngle = "緯度または経度の書き方が不正です";
inline constexpr std::string_view PositionOutOfRange = "緯度または経度が範囲外です";
inline constexpr std::string_view NoRouteHeader = "前にルートのヘッダ行(RTH)がありません";
inline constexpr std::string_view NoTrackHeader = "前にトラックログのヘッダ行(TRH)がありません";
inline constexpr std::string_view HeaderRefused = "ヘッダ行を格納できなかったため，この点も格納できません";
inline constexpr std::string_view StoreFull = "内部データ容量の限界です";

// Why a statement of a script, or a point of one, was not stored.
inline constexpr std::string_view UnreadPosition = "位置が読めません";
inline constexpr std::string_view TooManyLogPoints = "トラックログの点が多すぎます";
inline constexpr std::string_view StatementTail = "文の後ろに同じ行の続きがあります";
inline constexpr std::string_view OpenStatement = "文に終わりがありません";

// Why a text in XML was refused as a whole.
inline constexpr std::string_view NotWellFormed = "XMLの書き方が不正です";
inline constexpr std::string_view NoXmlCharacter = "XMLにない文字があります";
inline constexpr std::string_view UnknownEntity = "XMLにない実体参照があります";
inline constexpr std::string_view EntityDeclared = "実体の宣言には対応していません";
inline constexpr std::string_view TooDeep = "要素の入れ子が深すぎます";
inline constexpr std::string_view TooManyAttributes = "要素の属性が多すぎます";
inline constexpr std::string_view TooLongAttribute = "属性の値が長すぎます";
inline constexpr std::string_view UnreadEncoding = "文字コードが宣言と合わないか，対応していません";
inline constexpr std::string_view TooLarge = "64MBを超えています";
inline constexpr std::string_view NoGpx = "GPXではありません";
/// A reason, and where it was met: line and character of the line, from 1.
[[nodiscard]] inline std::string AtPlace(std::string_view why, int line, int column) {
  return Phrase("%1（%2行目の%3文字目）", Phrase(why), line, column);
}

// What a GPX text brings.
/// names are the unknown ones, or those of which only something near is there.
[[nodiscard]] inline std::string UnknownSymbols(std::string_view names) {
  return Phrase("知らないシンボルはWaypointにしました：%1．", names);
}
[[nodiscard]] inline std::string NearestSymbols(std::string_view names) {
  return Phrase("受信機にないシンボルは近いものにしました：%1．", names);
}
[[nodiscard]] inline std::string SplitRoutes(int count) {
  return Phrase("99点を超えるルートが%1本あり，続きを別のルートにしました．", count);
}

// What a KML file calls its folders, and says of a walk.
inline constexpr std::string_view WaypointFolder = "ウェイポイント";
inline constexpr std::string_view RouteFolder = "ルート";
inline constexpr std::string_view TrackLogFolder = "トラックログ";
[[nodiscard]] inline std::string WalkDistance(std::string_view km) {
  return "距離 " + std::string(km) + " km";
}
/// "h:mm:ss" each.
[[nodiscard]] inline std::string WalkTimes(std::string_view all, std::string_view moving) {
  return "，時間 " + std::string(all) + "（移動 " + std::string(moving) + "）";
}
/// threshold is the least difference that counts.
[[nodiscard]] inline std::string WalkClimbs(long up_m, long down_m, int threshold_m) {
  return "，登り " + std::to_string(up_m) + " m，下り " + std::to_string(down_m) + " m（" +
         std::to_string(threshold_m) + " m以上の高低差）";
}

/// What a WPT+ text whose lines begin with an unknown word brings.
[[nodiscard]] inline std::string UnknownCommand(std::string_view command) {
  return "command [" + std::string(command) + "] is not suppoted";
}

}  // namespace walrim::format_messages
