// What the dialog for a point from a map, and a cell with a position, say of one that they do not take.
#pragma once

#include <string>
#include <string_view>

#include "text/Phrase.h"

namespace walrim::dialog_messages {

// Which of the two a text is.
inline constexpr std::string_view Latitude = "緯度";
inline constexpr std::string_view Longitude = "経度";

// What is expected in a notation.
inline constexpr std::string_view LatitudeInDegrees = "度（D形式，例 35.6252）";
inline constexpr std::string_view LongitudeInDegrees = "度（D形式，例 139.2437）";
inline constexpr std::string_view LatitudeInDms = "度分秒（DMS形式，例 35.373072）";
inline constexpr std::string_view LongitudeInDms = "度分秒（DMS形式，例 139.143732）";

[[nodiscard]] inline std::string NoAngle(std::string_view axis, std::string_view text, std::string_view expected) {
  return Phrase("%1「%2」は%3として読めません．", Phrase(axis), text, Phrase(expected));
}
/// limit is in degrees.
[[nodiscard]] inline std::string OutOfRange(std::string_view axis, std::string_view text, int limit) {
  return Phrase("%1「%2」は-%3度から%3度までの範囲にありません．", Phrase(axis), text, limit);
}
[[nodiscard]] inline std::string NoNegativeDms(std::string_view axis, std::string_view text) {
  return Phrase("%1「%2」は南緯・西経のため，度分秒（DMS形式）では扱えません．", Phrase(axis), text);
}

// What a cell says of a text that is no position.
[[nodiscard]] inline std::string NoPosition(std::string_view axis, std::string_view text) {
  return Phrase(
      "%1「%2」は位置として読めません．度（例 35.6252），度分秒（例 35°37'30.7\"），"
      "地図のリンクのどれかで入力してください．",
      Phrase(axis), text);
}
[[nodiscard]] inline std::string OtherAxis(std::string_view axis, std::string_view text) {
  return Phrase("「%1」は%2ではありません．", text, Phrase(axis));
}
inline constexpr std::string_view LinkOffGlobe = "その位置は地球の上にありません．";

}  // namespace walrim::dialog_messages
