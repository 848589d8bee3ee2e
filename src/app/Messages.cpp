#include "app/Messages.h"

#include <algorithm>
#include <array>

#include "formats/Format.h"
#include "formats/Messages.h"
#include "text/Dates.h"

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
    if (format.read != nullptr) text += (text.empty() ? "" : "，") + named(format);
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
    text += (i > 0 ? "，" : "") + names[i];
  if (names.size() > LongestList) text += "，ほか" + std::to_string(names.size() - LongestList) + "件";
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
    counts += Joined({counts.empty() ? "" : "，", DataKindName(kind), " "});
    counts += records > 0 ? std::to_string(records) + "件" : std::to_string(points) + "点";
  }
  return counts;
}

std::string StepText(const StepName& step) {
  const std::string counts = ConcernedText(step.concerned);
  return counts.empty() ? std::string(NameOfStep(step.kind)) : Joined({NameOfStep(step.kind), "（", counts, "）"});
}

std::string DownloadResultLine(const DownloadResult& result) {
  std::string line = std::string(DataKindName(result.kind)) + "：";
  if (!result.received) return line + "受け取れませんでした．";
  const std::string announced = std::to_string(result.announced) + "件";
  if (result.Whole()) return line + announced + "すべてが届きました．";
  if (result.missing > 0) {
    line += announced + "のうち" + std::to_string(result.announced - result.missing) + "件が届き，" +
            std::to_string(result.missing) + "件は届きませんでした．";
  } else {
    line += announced + "が届きました．";
  }
  if (result.damaged > 0) line += std::to_string(result.damaged) + "件は破損しています．";
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

std::string AtLine(int line) {
  return "（最初は" + std::to_string(line) + "行目";
}

std::string WithPoints(int points) {
  return points > 0 ? "（" + std::to_string(points) + "点）" : "";
}

std::string ImportCounts(const ImportResult& result) {
  const auto count = [&](DataKind kind) {
    return std::string(DataKindName(kind)) + " " + std::to_string(result.stored[IndexOf(kind)]);
  };
  return "取り込み：" + count(DataKind::Waypoint) + "，" + count(DataKind::Route) + WithPoints(result.route_points) +
         "，" + count(DataKind::TrackLog) + WithPoints(result.track_points) + "．";
}

std::string UtcText(std::int64_t utc_s) {
  return DateTimeText(CivilFromGarminSeconds(utc_s)) + "（UTC）";
}

/// "yyyy/mm/dd"
std::string DayText(GarminSeconds time, int utc_offset_hours) {
  return DateTimeText(LocalTimeOfGarminTime(time, utc_offset_hours)).substr(0, 10);
}

}  // namespace

std::string DeedLine(const Deed& deed) {
  const std::string records = std::to_string(deed.records) + "件を";
  const std::size_t already_held = CountOf(deed.already_held);
  switch (deed.kind) {
    case Deed::Kind::Imported:
      return Joined({records, "取り込みました",
                     already_held > 0 ? "（重複 " + std::to_string(already_held) + "件）" : std::string(), "．"});
    case Deed::Kind::Saved:
      return Joined({records, " ", deed.path, " に保存しました．"});
    case Deed::Kind::Copied:
      return records + "コピーしました．";
    case Deed::Kind::Sent:
      return records + "送信しました．";
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
  const std::string text = Joined({way == TransferWay::ToReceiver ? "送信中：" : "受信中：", DataKindName(kind)});
  if (count < 2) return text;
  return Joined({text, "（", std::to_string(number), "/", std::to_string(count), "）"});
}

std::string LinkInUse(bool checked, bool chosen_automatically) {
  return Joined({checked ? "誤り検査：する" : "誤り検査：しない", chosen_automatically ? "（自動）" : ""});
}

std::string ReceiverText(std::string_view identity, int product_id) {
  return Joined({identity, " (Pid:", std::to_string(product_id), ")"});
}

std::string OverwriteHeldQuestion(DataKind kind) {
  return "現在の内部データ" + OfKind(kind) + "は上書きされます．よろしいですか？";
}

/// With what helps against damage, which a checked link never takes.
std::string DamagedRecords(DataKind kind, int count) {
  return OfKind(kind) + "破損した記録が" + std::to_string(count) +
         "件届きました．「誤り検査」を「する」にして，もう一度ダウンロードしてください．";
}

std::string MissingRecords(DataKind kind, int announced, int missing) {
  return std::string(DataKindName(kind)) + "：" + std::to_string(announced) + "件中" + std::to_string(missing) +
         "件が届きませんでした．";
}

std::vector<std::string> DownloadResultLines(const std::vector<DownloadResult>& results) {
  std::vector<std::string> lines;
  bool lost = false;
  for (const DownloadResult& result : results) {
    lines.push_back(DownloadResultLine(result));
    lost = lost || (!result.received && result.replaced);
  }
  if (lost) lines.emplace_back("前の内部データには，「編集」の「元に戻す」で戻せます．");
  return lines;
}

std::string RefusedRecords(DataKind kind, int count) {
  return OfKind(kind) + "受信機が受け取らなかった記録が" + std::to_string(count) + "件あります．";
}

std::string ReplacedRecords(DataKind kind, const std::vector<std::string>& names) {
  return OfKind(kind) + "受信機にない絵や色を，近いものに替えて送信しました：" + JoinNames(names) + "．";
}

std::string CutRecords(DataKind kind, const std::vector<std::string>& names) {
  return OfKind(kind) + "長すぎる記録の文字列の末尾を切って送信しました：" + JoinNames(names);
}

std::string CutTexts(DataKind kind, int count) {
  return OfKind(kind) + "受信機の欄より長い文字列が" + std::to_string(count) + "件あり，末尾を切って送信しました．";
}

std::string EndRefused(DataKind kind) {
  return OfKind(kind) + "受信機が転送の終わりを受け取らなかったため，書き込まれていない可能性があります．";
}

std::string ReceiverClock(std::int64_t utc_s) {
  return Joined({"受信機の時計：", UtcText(utc_s)});
}

std::string SetClockQuestion(std::int64_t receiver_s, std::int64_t computer_s) {
  return Joined({"受信機の時計は", UtcText(receiver_s), "，コンピュータの時計は", UtcText(computer_s),
                 "です．受信機の時計をコンピュータに合わせますか？"});
}

std::string ClockSet(std::int64_t utc_s) {
  return Joined({"受信機の時計を合わせました：", UtcText(utc_s)});
}

std::string ClockNotTaken(std::int64_t receiver_s) {
  return Joined({"受信機の時計が合いませんでした．受信機は", UtcText(receiver_s), "を示しています．"});
}

std::string DatesBehind(const std::vector<DateRepair>& repairs, int utc_offset_hours) {
  const auto range = [&](GarminSeconds DateRepair::*first, GarminSeconds DateRepair::*last) {
    GarminSeconds oldest = repairs.front().*first;
    GarminSeconds newest = repairs.front().*last;
    for (const DateRepair& repair : repairs) {
      oldest = std::min({oldest, repair.*first, repair.*last});
      newest = std::max({newest, repair.*first, repair.*last});
    }
    return DayText(oldest, utc_offset_hours) + "～" + DayText(newest, utc_offset_hours);
  };
  return "日付が1024週の単位で遅れているトラックログが" + std::to_string(repairs.size()) + "件あります（" +
         range(&DateRepair::old_first, &DateRepair::old_last) + "は，正しくは" +
         range(&DateRepair::new_first, &DateRepair::new_last) + "）．";
}

std::string DatesFixed(const std::vector<DateRepair>& repairs) {
  return "トラックログ" + std::to_string(repairs.size()) + "件の日付を直しました．";
}

std::string KindFull(DataKind kind) {
  return Joined({OfKind(kind), format_messages::StoreFull, "．"});
}

std::string UndoCaption(const StepName* step) {
  return step == nullptr ? "元に戻す" : "元に戻す：" + StepText(*step);
}

std::string RedoCaption(const StepName* step) {
  return step == nullptr ? "やり直し" : "やり直し：" + StepText(*step);
}

std::string Undone(const StepName& step) {
  return "元に戻しました：" + StepText(step);
}

std::string Redone(const StepName& step) {
  return "やり直しました：" + StepText(step);
}

std::string RecoveryQuestion(std::string_view local_time, const ConcernedRecords& held) {
  return Joined({"正常に終了しなかったWalrimの内部データが残っています（", local_time, "，", ConcernedText(held),
                 "）．復元しますか？"});
}

std::string RecoveryDamaged(std::string_view path) {
  return Joined({"正常に終了しなかったWalrimの内部データは，壊れているため復元できません：", path});
}

std::string RecoveryNotWritten(std::string_view detail) {
  return Joined({"復元用のファイルを書けません：", detail});
}

std::string TextTooLong(std::size_t bytes) {
  return "長すぎます．入力できるのは" + std::to_string(bytes) + "バイト（漢字やかなは2バイト）までです．";
}

std::string NoHeight(std::string_view text) {
  return Joined({"高度「", text, "」は数として読めません．わからないときは空にしてください．"});
}

std::string Shortened(std::size_t before, std::size_t after) {
  return "ポイントを間引きました：" + std::to_string(before) + "点 → " + std::to_string(after) + "点";
}

std::string SplitInto(std::size_t before, std::size_t after) {
  return "トラックログを分けました：" + std::to_string(before) + "本 → " + std::to_string(after) + "本";
}

std::string OutliersFound(std::size_t count) {
  if (count == 0) return "外れ値はありません";
  return "外れ値を" + std::to_string(count) + "点選びました．「選んだ行を削除」で取り除けます";
}

std::string ExportTo(std::string_view path) {
  return Joined({"Export to ", path});
}

std::string Exporting(DataKind kind, int number, int count) {
  constexpr std::array<std::string_view, DataKindCount> beginnings{"Export Wpt[", "Export Rte[", "Export Trk["};
  return Joined({beginnings[IndexOf(kind)], std::to_string(number), "/", std::to_string(count), "]"});
}

std::string BackupSent(const std::vector<std::string>& added) {
  const std::string sent = "送る前のデータを受信機へ送り戻し，読み戻して確かめました．";
  if (added.empty()) return sent;
  constexpr std::size_t Shown = 5;
  const std::vector<std::string> first(added.begin(),
                                       added.begin() + static_cast<std::ptrdiff_t>(std::min(added.size(), Shown)));
  return sent + "送る前になかったWaypoint " + std::to_string(added.size()) + "件（" + JoinNames(first) +
         (added.size() > Shown ? "…" : "") + "）は受信機に残っています．要らなければ，受信機で消してください．";
}

std::string BackupSaved(std::string_view path) {
  return Joined({"受信機のデータを保存しました：", path});
}

std::string NamesLeftOut(std::string_view path) {
  return Joined({"名前の対応に読めない行があります：", path, "．"});
}

std::string NamesImported(int count) {
  return "名前の対応を" + std::to_string(count) + "件取り込みました．";
}

std::string LongNamesFound(int count) {
  return std::to_string(count) + "件の短い名前を，覚えている元の名前に戻しました．";
}

std::string TraceSaved(std::string_view path) {
  return Joined({"通信記録を保存しました：", path});
}

std::string OverwriteQuestion(std::string_view path) {
  return Joined({"このファイル（", path, ")は存在します．上書きしますか？"});
}

std::string WriteProblem(std::string_view path, std::string_view detail) {
  return Joined({"ファイルに書き込めません：", path, "（", detail, "）"});
}

std::string Utf8Question(std::string_view record, std::string_view character) {
  return Joined({record, "の文字「", character, "」はShift-JISでは表せません．UTF-8で保存しますか？"});
}

std::string RecordInLine(long line_number, std::string_view line) {
  line.remove_prefix(std::min(line.find_first_not_of('\t'), line.size()));
  const std::size_t tag_end = line.find('\t');
  const std::size_t value = line.find("=\"");
  const std::string where = std::to_string(line_number) + "行目の";
  if (tag_end == std::string_view::npos || value == std::string_view::npos) {
    return Joined({where, "「", FirstCharacters(line, LongestQuote), "」"});
  }
  const std::string_view text = line.substr(value + 2, line.find('"', value + 2) - value - 2);
  return Joined({where, line.substr(0, tag_end), "「", text, "」"});
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
  return "保存されていない変更があります（" + KindNames(kinds) + "）．終了する前に保存しますか？";
}

std::string DroppedQuestion(const DataKinds& kinds) {
  return "どのファイルにも保存せずに消した記録があります（" + KindNames(kinds) +
         "）．「元に戻す」で戻せますが，終了すると戻せません．終了しますか？";
}

std::string SouthAndWest(int positions) {
  return "南緯・西経の位置が" + std::to_string(positions) + "件あります．DMSの表記では正しく読み戻せません．";
}

std::string BrokenTexts(int count) {
  return "コンマか引用符を含む文字列が" + std::to_string(count) +
         "件あります．このファイルを読み込むと，そこで切れます．";
}

std::string SkippedRecords(int count) {
  return std::to_string(count) + "件の記録は，文字列の中の記号のためスクリプトに書けませんでした．";
}

std::string PointsOffGlobe(int count) {
  return std::to_string(count) + "点は，位置が地球上にないため書けませんでした．";
}

std::string FileOfAnotherComputer(std::string_view host) {
  return Joined({"ほかのコンピュータ（", host, "）のファイルは読み込めません．"});
}

std::string LinkNotOpened(std::string_view link) {
  return Joined({"リンクを開けませんでした：", link});
}

std::string UnsupportedText() {
  const auto format = [](const Format& row) { return Joined({row.name, "形式"}); };
  return Joined({Unsupported, ListOfFormats(format), "の文字列か，地図上の位置を取り込めます．"});
}

std::string UnsupportedFile(std::string_view name) {
  const auto format = [](const Format& row) { return Joined({row.name, "形式（", row.ending, "）"}); };
  return Joined({Unsupported, name, "\n", ListOfFormats(format), "のファイルを取り込めます．"});
}

std::string RefusedFile(std::string_view name, std::string_view why) {
  return Joined({"取り込めません：", name, name.empty() ? "" : "：", why, "．"});
}

std::string ReadProblem(std::string_view path, std::string_view detail) {
  return Joined({"ファイルを読み込めません：", path, "（", detail, "）"});
}

std::vector<std::string> ImportComplaints(const ImportResult& result) {
  std::vector<std::string> complaints = result.messages.kept;
  const int more = result.messages.count - static_cast<int>(result.messages.kept.size());
  if (more > 0) complaints.push_back("ほかに" + std::to_string(more) + "行，分からない命令があります．");
  if (result.statements.count > 0) {
    complaints.push_back(std::to_string(result.statements.count) + "個の文を読み飛ばしました（最初の理由：" +
                         result.statements.first_why + "）．");
  }
  if (result.skipped.count > 0) {
    complaints.push_back(std::to_string(result.skipped.count) + "行を読み飛ばしました" +
                         AtLine(result.skipped.first_line) + "：" + result.skipped.first_why + "）．");
  }
  if (result.overfull.count > 0) {
    complaints.push_back(std::to_string(result.overfull.count) + "行で列が多すぎます" +
                         AtLine(result.overfull.first_line) + "）．文字列の中のコンマで切れている可能性があります．");
  }
  if (result.unread_time.count > 0) {
    complaints.push_back(std::to_string(result.unread_time.count) + "点の日時が読めません" +
                         AtLine(result.unread_time.first_line) + "）．時刻なしとして取り込みました．");
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
  return Joined({"処理を中止しました：", why});
}

}  // namespace walrim::messages
