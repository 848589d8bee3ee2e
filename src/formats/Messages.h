// What the readers of files say of lines and statements that they leave out, and of commands that they do not know.
#pragma once

#include <string>
#include <string_view>

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

/// What a WPT+ text whose lines begin with an unknown word brings.
[[nodiscard]] inline std::string UnknownCommand(std::string_view command) {
  return "command [" + std::string(command) + "] is not suppoted";
}

}  // namespace walrim::format_messages
