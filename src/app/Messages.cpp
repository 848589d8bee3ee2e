#include "app/Messages.h"

#include <algorithm>
#include <array>

#include "formats/Format.h"
#include "formats/Messages.h"
#include "text/Dates.h"
#include "text/Phrase.h"

namespace walrim::messages {

namespace {

/// The most records that a message lists one by one.
constexpr std::size_t LongestList = 20;
/// Characters of a line that a message quotes.
constexpr std::size_t LongestQuote = 40;

std::string Joined(std::initializer_list<std::string_view> parts) {
  std::string text;
  for (const std::string_view part : parts)
    text += part;
  return text;
}

constexpr std::string_view Unsupported = "未対応のファイルです．\n";

template <typename Named>
std::string ListOfFormats(Named named) {
  std::string text;
  for (const Format& format : Formats()) {
    if (format.read != nullptr) text += (text.empty() ? "" : Phrase("，")) + named(format);
  }
  return text;
}

/// "(Route)", which many notices begin with.
std::string OfKind(DataKind kind) {
  return Joined({"(", DataKindName(kind), ")"});
}

std::string JoinNames(const std::vector<std::string>& names) {
  std::string text;
  for (std::size_t i = 0; i < names.size() && i < LongestList; ++i)
    text += (i > 0 ? Phrase("，") : "") + names[i];
  if (names.size() > LongestList) text += Phrase("，ほか%1件", names.size() - LongestList);
  return text;
}

std::string_view NameOfStep(StepKind kind) {
  switch (kind) {
    case StepKind::Import:
      return "取り込み";
    case StepKind::Paste:
      return "貼り付け";
    case StepKind::Download:
      return "ダウンロード";
    case StepKind::Delete:
      return "削除";
    case StepKind::FixDates:
      return "日付の修正";
    case StepKind::Restore:
      return "復元";
    case StepKind::Edit:
      return "編集";
    case StepKind::NewRecord:
      return "追加";
    case StepKind::Join:
      return "結合";
    case StepKind::Cut:
      return "分割";
    case StepKind::Reverse:
      return "逆順";
    case StepKind::Shorten:
      return "間引き";
    case StepKind::Reorder:
      return "並べ替え";
  }
  return {};
}

/// "Waypoint 19件，Route 2件"; points count where they alone are concerned.
std::string ConcernedText(const ConcernedRecords& concerned) {
  std::string counts;
  for (const DataKind kind : AllDataKinds) {
    const std::size_t records = concerned.records[IndexOf(kind)];
    const std::size_t points = concerned.points[IndexOf(kind)];
    if (records == 0 && points == 0) continue;
    if (!counts.empty()) counts += Phrase("，");
    counts +=
        records > 0 ? Phrase("%1 %2件", DataKindName(kind), records) : Phrase("%1 %2点", DataKindName(kind), points);
  }
  return counts;
}

std::string StepText(const StepName& step) {
  const std::string counts = ConcernedText(step.concerned);
  const std::string name = Phrase(NameOfStep(step.kind));
  return counts.empty() ? name : Phrase("%1（%2）", name, counts);
}

std::string DownloadResultLine(const DownloadResult& result) {
  const std::string_view kind = DataKindName(result.kind);
  if (!result.received) return Phrase("%1：受け取れませんでした．", kind);
  if (result.Whole()) return Phrase("%1：%2件すべてが届きました．", kind, result.announced);
  std::string line = result.missing > 0 ? Phrase("%1：%2件のうち%3件が届き，%4件は届きませんでした．", kind,
                                                 result.announced, result.announced - result.missing, result.missing)
                                        : Phrase("%1：%2件が届きました．", kind, result.announced);
  if (result.damaged > 0) line += Phrase("%1件は破損しています．", result.damaged);
  return line;
}

std::string_view FirstCharacters(std::string_view utf8, std::size_t count) {
  std::size_t offset = 0;
  for (std::size_t seen = 0; offset < utf8.size(); ++offset) {
    const bool begins_character = (static_cast<unsigned char>(utf8[offset]) & 0xC0U) != 0x80U;
    if (begins_character && seen++ == count) break;
  }
  return utf8.substr(0, offset);
}

std::string ImportCounts(const ImportResult& result) {
  const auto count = [&](DataKind kind) { return result.stored[IndexOf(kind)]; };
  const auto points = [](int number) { return number > 0 ? Phrase("（%1点）", number) : ""; };
  return Phrase("取り込み：Waypoint %1，Route %2%3，TrackLog %4%5．", count(DataKind::Waypoint), count(DataKind::Route),
                points(result.route_points), count(DataKind::TrackLog), points(result.track_points));
}

std::string UtcText(std::int64_t utc_s) {
  return Phrase("%1（UTC）", DateTimeText(CivilFromGarminSeconds(utc_s)));
}

/// "yyyy/mm/dd"
std::string DayText(GarminSeconds time, int utc_offset_hours) {
  return DateTimeText(LocalTimeOfGarminTime(time, utc_offset_hours)).substr(0, 10);
}

}  // namespace

std::string DeedLine(const Deed& deed) {
  const std::size_t already_held = CountOf(deed.already_held);
  switch (deed.kind) {
    case Deed::Kind::Imported:
      return already_held > 0 ? Phrase("%1件を取り込みました（重複 %2件）．", deed.records, already_held)
                              : Phrase("%1件を取り込みました．", deed.records);
    case Deed::Kind::Saved:
      return Phrase("%1件を %2 に保存しました．", deed.records, deed.path);
    case Deed::Kind::Copied:
      return Phrase("%1件をコピーしました．", deed.records);
    case Deed::Kind::Sent:
      return Phrase("%1件を送信しました．", deed.records);
  }
  return {};
}

std::string Counting(DataKind kind) {
  return Joined({"Get Data Num of ", DataKindName(kind)});
}

std::string Downloading(DataKind kind) {
  return Joined({"DownLoading : ", DataKindName(kind)});
}

std::string Uploading(DataKind kind) {
  return Joined({"UpLoading : ", DataKindName(kind)});
}

std::string TransferPart(TransferWay way, DataKind kind, int number, int count) {
  const std::string text = Phrase(way == TransferWay::ToReceiver ? "送信中：%1" : "受信中：%1", DataKindName(kind));
  if (count < 2) return text;
  return Phrase("%1（%2/%3）", text, number, count);
}

std::string LinkInUse(bool checked, bool chosen_automatically) {
  return Phrase(checked ? "誤り検査：する" : "誤り検査：しない") + (chosen_automatically ? Phrase("（自動）") : "");
}

std::string ReceiverText(std::string_view identity, int product_id) {
  return Joined({identity, " (Pid:", std::to_string(product_id), ")"});
}

std::string OverwriteHeldQuestion(DataKind kind) {
  return "現在の内部データ" + OfKind(kind) + "は上書きされます．よろしいですか？";
}

/// With what helps against damage, which a checked link never takes.
std::string DamagedRecords(DataKind kind, int count) {
  return OfKind(kind) +
         Phrase("破損した記録が%1件届きました．「誤り検査」を「する」にして，もう一度ダウンロードしてください．",
                count);
}

std::string MissingRecords(DataKind kind, int announced, int missing) {
  return Phrase("%1：%2件中%3件が届きませんでした．", DataKindName(kind), announced, missing);
}

std::vector<std::string> DownloadResultLines(const std::vector<DownloadResult>& results) {
  std::vector<std::string> lines;
  bool lost = false;
  for (const DownloadResult& result : results) {
    lines.push_back(DownloadResultLine(result));
    lost = lost || (!result.received && result.replaced);
  }
  if (lost) lines.push_back(Phrase("前の内部データには，「編集」の「元に戻す」で戻せます．"));
  return lines;
}

std::string RefusedRecords(DataKind kind, int count) {
  return OfKind(kind) + Phrase("受信機が受け取らなかった記録が%1件あります．", count);
}

std::string ReplacedRecords(DataKind kind, const std::vector<std::string>& names) {
  return OfKind(kind) + Phrase("受信機にない絵や色を，近いものに替えて送信しました：%1．", JoinNames(names));
}

std::string CutRecords(DataKind kind, const std::vector<std::string>& names) {
  return OfKind(kind) + Phrase("長すぎる記録の文字列の末尾を切って送信しました：%1", JoinNames(names));
}

std::string CutTexts(DataKind kind, int count) {
  return OfKind(kind) + Phrase("受信機の欄より長い文字列が%1件あり，末尾を切って送信しました．", count);
}

std::string EndRefused(DataKind kind) {
  return OfKind(kind) + Phrase("受信機が転送の終わりを受け取らなかったため，書き込まれていない可能性があります．");
}

std::string ReceiverClock(std::int64_t utc_s) {
  return Phrase("受信機の時計：%1", UtcText(utc_s));
}

std::string SetClockQuestion(std::int64_t receiver_s, std::int64_t computer_s) {
  return Phrase("受信機の時計は%1，コンピュータの時計は%2です．受信機の時計をコンピュータに合わせますか？",
                UtcText(receiver_s), UtcText(computer_s));
}

std::string ClockSet(std::int64_t utc_s) {
  return Phrase("受信機の時計を合わせました：%1", UtcText(utc_s));
}

std::string ClockNotTaken(std::int64_t receiver_s) {
  return Phrase("受信機の時計が合いませんでした．受信機は%1を示しています．", UtcText(receiver_s));
}

std::string DatesBehind(const std::vector<DateRepair>& repairs, int utc_offset_hours) {
  const auto range = [&](GarminSeconds DateRepair::*first, GarminSeconds DateRepair::*last) {
    GarminSeconds oldest = repairs.front().*first;
    GarminSeconds newest = repairs.front().*last;
    for (const DateRepair& repair : repairs) {
      oldest = std::min({oldest, repair.*first, repair.*last});
      newest = std::max({newest, repair.*first, repair.*last});
    }
    return Phrase("%1～%2", DayText(oldest, utc_offset_hours), DayText(newest, utc_offset_hours));
  };
  return Phrase("日付が1024週の単位で遅れているトラックログが%1件あります（%2は，正しくは%3）．", repairs.size(),
                range(&DateRepair::old_first, &DateRepair::old_last),
                range(&DateRepair::new_first, &DateRepair::new_last));
}

std::string DatesFixed(const std::vector<DateRepair>& repairs) {
  return Phrase("トラックログ%1件の日付を直しました．", repairs.size());
}

std::string KindFull(DataKind kind) {
  return Joined({OfKind(kind), format_messages::StoreFull, "．"});
}

std::string UndoCaption(const StepName* step) {
  return step == nullptr ? Phrase("元に戻す") : Phrase("元に戻す：%1", StepText(*step));
}

std::string RedoCaption(const StepName* step) {
  return step == nullptr ? Phrase("やり直し") : Phrase("やり直し：%1", StepText(*step));
}

std::string Undone(const StepName& step) {
  return Phrase("元に戻しました：%1", StepText(step));
}

std::string Redone(const StepName& step) {
  return Phrase("やり直しました：%1", StepText(step));
}

std::string RecoveryQuestion(std::string_view local_time, const ConcernedRecords& held) {
  return Phrase("正常に終了しなかったWalrimの内部データが残っています（%1，%2）．復元しますか？", local_time,
                ConcernedText(held));
}

std::string RecoveryDamaged(std::string_view path) {
  return Phrase("正常に終了しなかったWalrimの内部データは，壊れているため復元できません：%1", path);
}

std::string RecoveryNotWritten(std::string_view detail) {
  return Phrase("復元用のファイルを書けません：%1", detail);
}

std::string TextTooLong(std::size_t bytes) {
  return Phrase("長すぎます．入力できるのは%1バイト（漢字やかなは2バイト）までです．", bytes);
}

std::string NoHeight(std::string_view text) {
  return Phrase("高度「%1」は数として読めません．わからないときは空にしてください．", text);
}

std::string Shortened(std::size_t before, std::size_t after) {
  return Phrase("ポイントを間引きました：%1点 → %2点", before, after);
}

std::string SplitInto(std::size_t before, std::size_t after) {
  return Phrase("トラックログを分けました：%1本 → %2本", before, after);
}

std::string OutliersFound(std::size_t count) {
  if (count == 0) return Phrase("外れ値はありません");
  return Phrase("外れ値を%1点選びました．「選んだ行を削除」で取り除けます", count);
}

std::string ExportTo(std::string_view path) {
  return Joined({"Export to ", path});
}

std::string Exporting(DataKind kind, int number, int count) {
  constexpr std::array<std::string_view, DataKindCount> beginnings{"Export Wpt[", "Export Rte[", "Export Trk["};
  return Joined({beginnings[IndexOf(kind)], std::to_string(number), "/", std::to_string(count), "]"});
}

std::string BackupSent(const std::vector<std::string>& added) {
  const std::string sent = Phrase("送る前のデータを受信機へ送り戻し，読み戻して確かめました．");
  if (added.empty()) return sent;
  constexpr std::size_t Shown = 5;
  const std::vector<std::string> first(added.begin(),
                                       added.begin() + static_cast<std::ptrdiff_t>(std::min(added.size(), Shown)));
  return sent +
         Phrase("送る前になかったWaypoint %1件（%2%3）は受信機に残っています．要らなければ，受信機で消してください．",
                added.size(), JoinNames(first), added.size() > Shown ? "…" : "");
}

std::string BackupSaved(std::string_view path) {
  return Phrase("受信機のデータを保存しました：%1", path);
}

std::string NamesLeftOut(std::string_view path) {
  return Phrase("名前の対応に読めない行があります：%1．", path);
}

std::string NamesImported(int count) {
  return Phrase("名前の対応を%1件取り込みました．", count);
}

std::string LongNamesFound(int count) {
  return Phrase("%1件の短い名前を，覚えている元の名前に戻しました．", count);
}

std::string TraceSaved(std::string_view path) {
  return Phrase("通信記録を保存しました：%1", path);
}

std::string OverwriteQuestion(std::string_view path) {
  return Joined({"このファイル（", path, ")は存在します．上書きしますか？"});
}

std::string WriteProblem(std::string_view path, std::string_view detail) {
  return Phrase("ファイルに書き込めません：%1（%2）", path, Phrase(detail));
}

std::string Utf8Question(std::string_view record, std::string_view character) {
  return Phrase("%1の文字「%2」はShift-JISでは表せません．UTF-8で保存しますか？", record, character);
}

std::string RecordInLine(long line_number, std::string_view line) {
  line.remove_prefix(std::min(line.find_first_not_of('\t'), line.size()));
  const std::size_t tag_end = line.find('\t');
  const std::size_t value = line.find("=\"");
  if (tag_end == std::string_view::npos || value == std::string_view::npos) {
    return Phrase("%1行目の「%2」", line_number, FirstCharacters(line, LongestQuote));
  }
  const std::string_view text = line.substr(value + 2, line.find('"', value + 2) - value - 2);
  return Phrase("%1行目の%2「%3」", line_number, line.substr(0, tag_end), text);
}

namespace {

std::string KindNames(const DataKinds& kinds) {
  std::vector<std::string> names;
  for (const DataKind kind : AllDataKinds) {
    if (kinds[IndexOf(kind)]) names.emplace_back(DataKindName(kind));
  }
  return JoinNames(names);
}

}  // namespace

std::string UnsavedQuestion(const DataKinds& kinds) {
  return Phrase("保存されていない変更があります（%1）．終了する前に保存しますか？", KindNames(kinds));
}

std::string DroppedQuestion(const DataKinds& kinds) {
  return Phrase(
      "どのファイルにも保存せずに消した記録があります（%1）．"
      "「元に戻す」で戻せますが，終了すると戻せません．終了しますか？",
      KindNames(kinds));
}

std::string SouthAndWest(int positions) {
  return Phrase("南緯・西経の位置が%1件あります．DMSの表記では正しく読み戻せません．", positions);
}

std::string BrokenTexts(int count) {
  return Phrase("コンマか引用符を含む文字列が%1件あります．このファイルを読み込むと，そこで切れます．", count);
}

std::string SkippedRecords(int count) {
  return Phrase("%1件の記録は，文字列の中の記号のためスクリプトに書けませんでした．", count);
}

std::string PointsOffGlobe(int count) {
  return Phrase("%1点は，位置が地球上にないため書けませんでした．", count);
}

std::string FileOfAnotherComputer(std::string_view host) {
  return Phrase("ほかのコンピュータ（%1）のファイルは読み込めません．", host);
}

std::string LinkNotOpened(std::string_view link) {
  return Phrase("リンクを開けませんでした：%1", link);
}

std::string UnsupportedText() {
  const auto format = [](const Format& row) { return Phrase("%1形式", Phrase(row.name)); };
  return Phrase(Unsupported) + Phrase("%1の文字列か，地図上の位置を取り込めます．", ListOfFormats(format));
}

std::string UnsupportedFile(std::string_view name) {
  const auto format = [](const Format& row) { return Phrase("%1形式（%2）", Phrase(row.name), row.ending); };
  return Phrase(Unsupported) + Phrase("%1\n%2のファイルを取り込めます．", name, ListOfFormats(format));
}

std::string RefusedFile(std::string_view name, std::string_view why) {
  return name.empty() ? Phrase("取り込めません：%1．", Phrase(why))
                      : Phrase("取り込めません：%1：%2．", name, Phrase(why));
}

std::string ReadProblem(std::string_view path, std::string_view detail) {
  return Phrase("ファイルを読み込めません：%1（%2）", path, Phrase(detail));
}

std::vector<std::string> ImportComplaints(const ImportResult& result) {
  std::vector<std::string> complaints = result.messages.kept;
  const int more = result.messages.count - static_cast<int>(result.messages.kept.size());
  if (more > 0) complaints.push_back(Phrase("ほかに%1行，分からない命令があります．", more));
  if (result.statements.count > 0) {
    complaints.push_back(Phrase("%1個の文を読み飛ばしました（最初の理由：%2）．", result.statements.count,
                                Phrase(result.statements.first_why)));
  }
  if (result.skipped.count > 0) {
    complaints.push_back(Phrase("%1行を読み飛ばしました（最初は%2行目：%3）．", result.skipped.count,
                                result.skipped.first_line, Phrase(result.skipped.first_why)));
  }
  if (result.overfull.count > 0) {
    complaints.push_back(
        Phrase("%1行で列が多すぎます（最初は%2行目）．文字列の中のコンマで切れている可能性があります．",
               result.overfull.count, result.overfull.first_line));
  }
  if (result.unread_time.count > 0) {
    complaints.push_back(Phrase("%1点の日時が読めません（最初は%2行目）．時刻なしとして取り込みました．",
                                result.unread_time.count, result.unread_time.first_line));
  }
  return complaints;
}

std::string ImportReport(const ImportResult& result) {
  std::string text = ImportCounts(result);
  for (const std::string& complaint : ImportComplaints(result)) {
    if (!text.ends_with("．")) text += ' ';
    text += complaint;
  }
  return text;
}

std::string BrokenOff(std::string_view why) {
  return Phrase("処理を中止しました：%1", Phrase(why));
}

}  // namespace walrim::messages
