// The texts that only the terminal shows.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace walrim::cli_messages {

/// What helps where a file is not replaced, where Shift-JIS lacks a character, and where damaged records came.
inline constexpr std::string_view ForceAdvice = "--force を指定すると，上書きします．";
inline constexpr std::string_view Utf8Advice = "--encoding utf8 を指定すると，UTF-8で保存できます．";
inline constexpr std::string_view CheckedLinkAdvice = "誤り検査は --checked-link で指定できます．";
/// In front of the trace's path.
inline constexpr std::string_view TraceIsData = "通信の記録は，読み書きするデータとは別のファイルにしてください：";
/// Why a file is not replaced by a trace.
inline constexpr std::string_view NoTrace = "通信の記録ではないファイルです";
inline constexpr std::string_view FixDatesAdvice = "--fix-dates auto を指定すると，直します．";
inline constexpr std::string_view FixDatesQuestion = "直しますか？";
inline constexpr std::string_view YesAdvice = "--yes を指定すると，尋ねずに合わせます．";
/// In front of how many more there are, and of the way to see them all.
[[nodiscard]] inline std::string WouldBeLost(std::size_t count) {
  return "このまま送信すると，失われるか変わるものが" + std::to_string(count) +
         "件あります．--check を指定すると，送信せずにすべて示します．--fit を指定すると，提案どおりにして送信します．";
}
/// In front of the backup's path.
inline constexpr std::string_view BackupIsData =
    "受信機のデータは，読み書きするデータとは別のファイルに保存してください：";
inline constexpr std::string_view Stalled = "30秒間データが届かないため，通信を中止しました．";
inline constexpr std::string_view Cancelled = "中止しました．";
inline constexpr std::string_view NothingImported = "取り込めるデータがありません．";
[[nodiscard]] inline std::string OfFile(const std::string& path, const std::string& complaint) {
  return path + "：" + complaint;
}
[[nodiscard]] inline std::string Named(const std::string& path) {
  return "（" + path + "）";
}

// Of the figures of logs and routes.
inline constexpr std::array<std::string_view, 16> LogTitles{
    "番号", "名前",      "開始",     "終了",   "点数",   "区間",   "距離 km", "時間",
    "移動", "平均 km/h", "移動平均", "最高速", "上り m", "下り m", "最低 m",  "最高 m"};
inline constexpr std::array<std::string_view, 5> RouteTitles{"番号", "名前", "点数", "距離 km", "区間 km"};
inline constexpr std::string_view Total = "合計";
inline constexpr std::string_view NothingToMeasure = "ルートもトラックログもありません．";
/// How climbs are counted.
[[nodiscard]] inline std::string AscentNote(int threshold_m) {
  return "上り・下りは，" + std::to_string(threshold_m) + "m以上の高度差だけを数えます．";
}

}  // namespace walrim::cli_messages
