// The texts that the commands show: messages, questions, notices and status texts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "app/Deed.h"
#include "app/DownloadResult.h"
#include "app/History.h"
#include "app/TransferParts.h"
#include "formats/ImportResult.h"
#include "platform/Desktop.h"
#include "records/DataKind.h"
#include "walks/RollOver.h"

namespace walrim::messages {

/// What a command has done.
[[nodiscard]] std::string DeedLine(const Deed& deed);

// ---- The receiver

inline constexpr std::string_view LinkLost = "電源が切れたか，コードが外れました．";
inline constexpr std::string_view NotAcknowledged = "受信機が要求に応じませんでした．";
inline constexpr std::string_view NotIdentified = "受信機を識別できませんでした．";
inline constexpr std::string_view BadAnswer = "受信機からの応答が正しくないため，通信を中止しました．";
inline constexpr std::string_view BadData = "受信データが異常なため，通信を中止しました．";
inline constexpr std::string_view NothingToDownload = "DownLoadするDataSetが選択されていません．";
inline constexpr std::string_view NothingToUpload = "UpLoadするDataSetが選択されていません．";
inline constexpr std::string_view NothingHeld = "内部データがありません．";
inline constexpr std::string_view Initializing = "Initializing Device";
[[nodiscard]] std::string Counting(DataKind kind);
[[nodiscard]] std::string Downloading(DataKind kind);
[[nodiscard]] std::string Uploading(DataKind kind);
/// Which of the kinds of a transfer is on its way, beside the status line.
[[nodiscard]] std::string TransferPart(TransferWay way, DataKind kind, int number, int count);
/// Which link the transfers use, in the status line.
[[nodiscard]] std::string LinkInUse(bool checked, bool chosen_automatically);
/// A name and the product number behind it.
[[nodiscard]] std::string ReceiverText(std::string_view identity, int product_id);
[[nodiscard]] std::string OverwriteHeldQuestion(DataKind kind);

/// The receiver's clock, of a time in seconds since 1989/12/31 00:00:00 UTC.
[[nodiscard]] std::string ReceiverClock(std::int64_t utc_s);
[[nodiscard]] std::string SetClockQuestion(std::int64_t receiver_s, std::int64_t computer_s);
[[nodiscard]] std::string ClockSet(std::int64_t utc_s);
/// What the receiver tells behind the setting is another date.
[[nodiscard]] std::string ClockNotTaken(std::int64_t receiver_s);
inline constexpr std::string_view NoReceiverClock = "受信機から日時の応答がないため，時計を合わせられません．";

/// A download's results, a line a kind; the last line is about what was held before, where that has gone.
[[nodiscard]] std::vector<std::string> DownloadResultLines(const std::vector<DownloadResult>& results);

// Notices behind a transfer.
[[nodiscard]] std::string DamagedRecords(DataKind kind, int count);
[[nodiscard]] std::string MissingRecords(DataKind kind, int announced, int missing);
[[nodiscard]] std::string RefusedRecords(DataKind kind, int count);
[[nodiscard]] std::string ReplacedRecords(DataKind kind, const std::vector<std::string>& names);
[[nodiscard]] std::string CutRecords(DataKind kind, const std::vector<std::string>& names);
[[nodiscard]] std::string CutTexts(DataKind kind, int count);
[[nodiscard]] std::string EndRefused(DataKind kind);

// ---- What is held

[[nodiscard]] std::string KindFull(DataKind kind);
inline constexpr std::string_view Deleting = "内部データ削除中";
/// Why AutoDelete deleted nothing behind an export or a copy, and behind an upload.
inline constexpr std::string_view NotReadBack =
    "書き出した内容を読み戻すと失われるものがあるため，内部データは削除しませんでした．";
inline constexpr std::string_view CutNotDeleted = "切って送信した文字列があるため，内部データは削除しませんでした．";

// ---- Steps

/// The names of what can be taken back and done again: "元に戻す：削除（Waypoint 19件）". Without a step the bare
/// command.
[[nodiscard]] std::string UndoCaption(const StepName* step);
[[nodiscard]] std::string RedoCaption(const StepName* step);
[[nodiscard]] std::string Undone(const StepName& step);
[[nodiscard]] std::string Redone(const StepName& step);

// ---- Recovery

/// Records that a program left at a local time.
[[nodiscard]] std::string RecoveryQuestion(std::string_view local_time, const ConcernedRecords& held);
inline constexpr ThreeAnswers RecoveryAnswers{"復元する", "捨てる", "あとで"};
/// path: where the file lies now.
[[nodiscard]] std::string RecoveryDamaged(std::string_view path);
inline constexpr std::string_view RecoveryTooMuch =
    "いまの内部データに入りきらないため，復元しませんでした．保存して削除すると，次に起動したときに復元できます．";
[[nodiscard]] std::string RecoveryNotWritten(std::string_view detail);

// ---- Edits of records

/// Why a text is not taken, at its cell.
inline constexpr std::string_view LineBreakInText = "改行やタブは入力できません．";
inline constexpr std::string_view NoSuchSymbol = "そのシンボルは一覧にありません．";
inline constexpr std::string_view HeightOutOfRange = "高度は-100000 mから100000 mまでの数で入力してください．";
inline constexpr std::string_view HeadlessLogHasNoName = "見出しのないトラックログには名前を付けられません．";
inline constexpr std::string_view BusyWithCommand = "ほかの処理が終わってから入力してください．";
inline constexpr std::string_view RecordIsGone = "この記録はもうありません．";
[[nodiscard]] std::string TextTooLong(std::size_t bytes);
[[nodiscard]] std::string NoHeight(std::string_view text);
/// What a shortening left of the points.
[[nodiscard]] std::string Shortened(std::size_t before, std::size_t after);
inline constexpr std::string_view NothingToSplit = "分けるところがありません";
/// Logs before and after.
[[nodiscard]] std::string SplitInto(std::size_t before, std::size_t after);
[[nodiscard]] std::string OutliersFound(std::size_t count);

// ---- Dates

/// How many logs are 1024 weeks behind, and what their dates would become; in local time.
[[nodiscard]] std::string DatesBehind(const std::vector<DateRepair>& repairs, int utc_offset_hours);
inline constexpr std::string_view FixDatesByMenu = "「編集」の「日付を直す」で直せます．";
[[nodiscard]] std::string DatesFixed(const std::vector<DateRepair>& repairs);

// ---- Writing

inline constexpr std::string_view NothingDownloaded = "DataSetがDownLoadされていません．";
inline constexpr std::string_view NothingChosen = "DataSetが選択されていません．";
inline constexpr std::string_view NothingToSave = "保存するデータがありません．";
inline constexpr std::string_view NothingWritten = "DatasetがDownLoadされていません．";
inline constexpr std::string_view Converting = "Converting (WPT+)to(MPS)";
[[nodiscard]] std::string ExportTo(std::string_view path);
[[nodiscard]] std::string Exporting(DataKind kind, int number, int count);
[[nodiscard]] std::string OverwriteQuestion(std::string_view path);
[[nodiscard]] std::string WriteProblem(std::string_view path, std::string_view detail);
/// The question whether UTF-8 may be used. record and character say what Shift-JIS lacks where.
[[nodiscard]] std::string Utf8Question(std::string_view record, std::string_view character);
/// The record of a line, to find it by: a standard line's tag and its first text; the beginning of any other line.
[[nodiscard]] std::string RecordInLine(long line_number, std::string_view line);
/// Before the program ends.
[[nodiscard]] std::string UnsavedQuestion(const DataKinds& kinds);
/// Before the end, where records were deleted that were in no file.
[[nodiscard]] std::string DroppedQuestion(const DataKinds& kinds);
inline constexpr ThreeAnswers SaveAnswers{"保存", "保存しない", "戻る"};
[[nodiscard]] std::string SouthAndWest(int positions);
[[nodiscard]] std::string BrokenTexts(int count);
[[nodiscard]] std::string SkippedRecords(int count);
[[nodiscard]] std::string PointsOffGlobe(int count);

// ---- Uploads that are looked after

inline constexpr std::string_view NoBackup = "受信機のデータを保存できなかったため，送信しませんでした．";
inline constexpr std::string_view NotCompared =
    "送信したデータを受信機から読み戻せなかったため，比べられませんでした．";
[[nodiscard]] std::string BackupSaved(std::string_view path);
/// added: names of waypoints that the receiver holds beside them. Nothing is deleted over the line.
[[nodiscard]] std::string BackupSent(const std::vector<std::string>& added);

// ---- Short names and long ones

/// The filter of the dialogs for their file.
inline constexpr std::string_view NamesFilter = "すべてのファイル (*.*)|*.*|名前の対応 (*.tsv)|*.tsv|";
[[nodiscard]] std::string NamesLeftOut(std::string_view path);
[[nodiscard]] std::string NamesImported(int count);
[[nodiscard]] std::string LongNamesFound(int count);

// ---- What went over the line

inline constexpr std::string_view NothingTraced = "通信の記録はまだありません．受信機と通信してから保存してください．";
inline constexpr std::string_view HidePositionsQuestion =
    "記録の中の位置を隠しますか？隠すと，最初の位置が0度になるように，すべての位置をずらします．";
inline constexpr ThreeAnswers HidePositionsAnswers{"隠して保存", "そのまま保存", "戻る"};
/// The filter of the dialog for its file.
inline constexpr std::string_view TraceFilter = "すべてのファイル (*.*)|*.*|通信記録 (*.txt)|*.txt|";
[[nodiscard]] std::string TraceSaved(std::string_view path);

// ---- Reading

inline constexpr std::string_view EmptyClipboard = "クリップボードにデータがありません．";
inline constexpr std::string_view StandardInput = "標準入力";
inline constexpr std::string_view FtpRefused = "現時点ではFTPには対応していません（http://かfile://）";
inline constexpr std::string_view NoFileLink = "file://のリンクではありません．";
inline constexpr std::string_view NoFileName = "リンクにファイルの名前がありません．";
inline constexpr std::string_view OffGlobe =
    "緯度または経度が範囲外です（緯度は-90度から90度，経度は-180度から180度）．";
inline constexpr std::string_view ImportFrom = "Import from ";
inline constexpr std::string_view ClipFrom = "Clip From URL=";
[[nodiscard]] std::string FileOfAnotherComputer(std::string_view host);
/// What can be read instead is named from the rows of the formats.
[[nodiscard]] std::string UnsupportedText();
[[nodiscard]] std::string UnsupportedFile(std::string_view name);
/// name may be empty, of a text without one.
[[nodiscard]] std::string RefusedFile(std::string_view name, std::string_view why);
[[nodiscard]] std::string ReadProblem(std::string_view path, std::string_view detail);

/// What did not come in as it stood there, a sentence each; empty where all did.
[[nodiscard]] std::vector<std::string> ImportComplaints(const ImportResult& result);
/// How many records of each kind came in, and the complaints, in one line.
[[nodiscard]] std::string ImportReport(const ImportResult& result);

[[nodiscard]] std::string LinkNotOpened(std::string_view link);

// ---- Files

inline constexpr std::string_view ForeignLink = "ほかの利用者が置いたリンクです";
inline constexpr std::string_view NoRegularFile = "通常のファイルではありません";

/// What ended a command that nobody expected to end.
[[nodiscard]] std::string BrokenOff(std::string_view why);

}  // namespace walrim::messages
