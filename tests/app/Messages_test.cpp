// The wordings.
#include "app/Messages.h"

#include <gtest/gtest.h>

#include "text/Dates.h"

namespace walrim::messages {
namespace {

using Strings = std::vector<std::string>;

TEST(AppMessages, OfTheReceiverAreWordedSo) {
  EXPECT_EQ(LinkLost, "電源が切れたか，コードが外れました．");
  EXPECT_EQ(NotAcknowledged, "受信機が要求に応じませんでした．");
  EXPECT_EQ(NotIdentified, "受信機を識別できませんでした．");
  EXPECT_EQ(BadAnswer, "受信機からの応答が正しくないため，通信を中止しました．");
  EXPECT_EQ(BadData, "受信データが異常なため，通信を中止しました．");
  EXPECT_EQ(NothingToDownload, "DownLoadするDataSetが選択されていません．");
  EXPECT_EQ(NothingToUpload, "UpLoadするDataSetが選択されていません．");
  EXPECT_EQ(NothingHeld, "内部データがありません．");
  EXPECT_EQ(Initializing, "Initializing Device");
  EXPECT_EQ(Counting(DataKind::Route), "Get Data Num of Route");
  EXPECT_EQ(Downloading(DataKind::Waypoint), "DownLoading : Waypoint");
  EXPECT_EQ(Uploading(DataKind::TrackLog), "UpLoading : TrackLog");
  EXPECT_EQ(LinkInUse(true, true), "誤り検査：する（自動）");
  EXPECT_EQ(LinkInUse(false, false), "誤り検査：しない");
  EXPECT_EQ(ReceiverText("GPS 12 Software", 77), "GPS 12 Software (Pid:77)");
  EXPECT_EQ(OverwriteHeldQuestion(DataKind::Route), "現在の内部データ(Route)は上書きされます．よろしいですか？");
}

TEST(AppMessages, OfDownloadsAreWordedSo) {
  EXPECT_EQ(DownloadResultLines({{DataKind::Waypoint, 19, 0, 0, true, true},
                                 {DataKind::Route, 36, 4, 2, true, false},
                                 {DataKind::TrackLog, 443, 0, 1, true, false}}),
            (Strings{"Waypoint：19件すべてが届きました．",
                     "Route：36件のうち32件が届き，4件は届きませんでした．2件は破損しています．",
                     "TrackLog：443件が届きました．1件は破損しています．"}));
  EXPECT_EQ(DownloadResultLines({{DataKind::Waypoint, 19, 0, 0, false, true}}),
            (Strings{"Waypoint：受け取れませんでした．", "前の内部データには，「編集」の「元に戻す」で戻せます．"}));
  EXPECT_EQ(DownloadResultLines({{DataKind::Route, 36, 0, 0, false, false}}), Strings{"Route：受け取れませんでした．"});
}

TEST(AppMessages, OfDeedsAreWordedSo) {
  EXPECT_EQ(DeedLine({Deed::Kind::Imported, 3, {}, {}, {}}), "3件を取り込みました．");
  EXPECT_EQ(DeedLine({Deed::Kind::Imported, 3, {}, {}, {{{0, 1}, {}, {4}}}}), "3件を取り込みました（重複 3件）．");
  EXPECT_EQ(DeedLine({Deed::Kind::Saved, 19, "/tmp/x.grc", {}, {}}), "19件を /tmp/x.grc に保存しました．");
  EXPECT_EQ(DeedLine({Deed::Kind::Copied, 1, {}, {}, {}}), "1件をコピーしました．");
  EXPECT_EQ(DeedLine({Deed::Kind::Sent, 2, {}, {}, {}}), "2件を送信しました．");
  EXPECT_EQ(TransferPart(TransferWay::FromReceiver, DataKind::Route, 2, 3), "受信中：Route（2/3）");
  EXPECT_EQ(TransferPart(TransferWay::ToReceiver, DataKind::Waypoint, 1, 1), "送信中：Waypoint");
}

TEST(AppMessages, OfEditsAreWordedSo) {
  EXPECT_EQ(LineBreakInText, "改行やタブは入力できません．");
  EXPECT_EQ(NoSuchSymbol, "そのシンボルは一覧にありません．");
  EXPECT_EQ(HeightOutOfRange, "高度は-100000 mから100000 mまでの数で入力してください．");
  EXPECT_EQ(HeadlessLogHasNoName, "見出しのないトラックログには名前を付けられません．");
  EXPECT_EQ(BusyWithCommand, "ほかの処理が終わってから入力してください．");
  EXPECT_EQ(RecordIsGone, "この記録はもうありません．");
  EXPECT_EQ(TextTooLong(250), "長すぎます．入力できるのは250バイト（漢字やかなは2バイト）までです．");
  EXPECT_EQ(NoHeight("abc"), "高度「abc」は数として読めません．わからないときは空にしてください．");
  EXPECT_EQ(Shortened(1000, 100), "ポイントを間引きました：1000点 → 100点");
  EXPECT_EQ(NothingToSplit, "分けるところがありません");
  EXPECT_EQ(SplitInto(1, 3), "トラックログを分けました：1本 → 3本");
  EXPECT_EQ(OutliersFound(0), "外れ値はありません");
  EXPECT_EQ(OutliersFound(2), "外れ値を2点選びました．「選んだ行を削除」で取り除けます");
}

TEST(AppMessages, OfStepsAreWordedSo) {
  const StepName erased{StepKind::Delete, {{19, 0, 2}, {0, 0, 7}}};
  EXPECT_EQ(UndoCaption(nullptr), "元に戻す");
  EXPECT_EQ(RedoCaption(nullptr), "やり直し");
  EXPECT_EQ(UndoCaption(&erased), "元に戻す：削除（Waypoint 19件，TrackLog 2件）");
  EXPECT_EQ(RedoCaption(&erased), "やり直し：削除（Waypoint 19件，TrackLog 2件）");
  EXPECT_EQ(Undone({StepKind::Edit, {{}, {0, 0, 5}}}), "元に戻しました：編集（TrackLog 5点）");
  EXPECT_EQ(Redone({StepKind::Join, {}}), "やり直しました：結合");
  const std::array<std::pair<StepKind, const char*>, 11> names{{{StepKind::Import, "取り込み"},
                                                                {StepKind::Paste, "貼り付け"},

                                                                {StepKind::Download, "ダウンロード"},
                                                                {StepKind::FixDates, "日付の修正"},
                                                                {StepKind::Restore, "復元"},
                                                                {StepKind::Edit, "編集"},
                                                                {StepKind::NewRecord, "追加"},
                                                                {StepKind::Cut, "分割"},
                                                                {StepKind::Reverse, "逆順"},
                                                                {StepKind::Shorten, "間引き"},
                                                                {StepKind::Reorder, "並べ替え"}}};
  for (const auto& [kind, name] : names) {
    const StepName step{kind, {}};
    EXPECT_EQ(UndoCaption(&step), "元に戻す：" + std::string(name));
  }
}

TEST(AppMessages, BeforeTheEndAreWordedSo) {
  EXPECT_EQ(UnsavedQuestion({true, false, true}),
            "保存されていない変更があります（Waypoint，TrackLog）．終了する前に保存しますか？");
  EXPECT_EQ(DroppedQuestion({false, true, true}),
            "どのファイルにも保存せずに消した記録があります（Route，TrackLog）．「元に戻す」で戻せますが，終了すると戻"
            "せません．"
            "終了しますか？");
  EXPECT_EQ(SaveAnswers.first, "保存");
  EXPECT_EQ(SaveAnswers.second, "保存しない");
  EXPECT_EQ(SaveAnswers.back, "戻る");
}

TEST(AppMessages, OfABackupAreWordedSo) {
  EXPECT_EQ(BackupSent({}), "送る前のデータを受信機へ送り戻し，読み戻して確かめました．");
  EXPECT_EQ(BackupSent({"A", "B"}), std::string(BackupSent({})) +
                                        "送る前になかったWaypoint 2件（A，B）は受信機に残っています．"
                                        "要らなければ，受信機で消してください．");
  EXPECT_NE(BackupSent({"1", "2", "3", "4", "5", "6"}).find("6件（1，2，3，4，5…）"), std::string::npos);
}

TEST(AppMessages, OfRecoveryAreWordedSo) {
  EXPECT_EQ(RecoveryQuestion("2026/11/22 12:00:00", {{19, 0, 0}, {0, 0, 7}}),
            "正常に終了しなかったWalrimの内部データが残っています（2026/11/22 12:00:00，Waypoint 19件，TrackLog 7点）．"
            "復元しますか？");
  EXPECT_EQ(RecoveryAnswers.first, "復元する");
  EXPECT_EQ(RecoveryAnswers.second, "捨てる");
  EXPECT_EQ(RecoveryAnswers.back, "あとで");
  EXPECT_EQ(RecoveryDamaged("/a"), "正常に終了しなかったWalrimの内部データは，壊れているため復元できません：/a");
  EXPECT_EQ(
      RecoveryTooMuch,
      "いまの内部データに入りきらないため，復元しませんでした．保存して削除すると，次に起動したときに復元できます．");
  EXPECT_EQ(RecoveryNotWritten("why"), "復元用のファイルを書けません：why");
}

TEST(AppMessages, OfDatesAreWordedSo) {
  const std::int64_t moment = SecondsSinceGarminEpoch({2007, 4, 7, 16, 0, 0});
  const auto at = static_cast<GarminSeconds>(moment);
  const auto later = static_cast<GarminSeconds>(moment + RollOver_s);
  EXPECT_EQ(ReceiverClock(moment), "受信機の時計：2007/04/07 16:00:00（UTC）");
  EXPECT_EQ(SetClockQuestion(moment, moment + 1),
            "受信機の時計は2007/04/07 16:00:00（UTC），コンピュータの時計は2007/04/07 16:00:01（UTC）です．"
            "受信機の時計をコンピュータに合わせますか？");
  EXPECT_EQ(ClockSet(moment), "受信機の時計を合わせました：2007/04/07 16:00:00（UTC）");
  EXPECT_EQ(ClockNotTaken(moment),
            "受信機の時計が合いませんでした．受信機は2007/04/07 16:00:00（UTC）を示しています．");
  EXPECT_EQ(NoReceiverClock, "受信機から日時の応答がないため，時計を合わせられません．");
  EXPECT_EQ(DatesBehind({{0, at, at, later, later, 1}, {2, at - 86400, at, later - 86400, later, 1}}, 9),
            "日付が1024週の単位で遅れているトラックログが2件あります（2007/04/07～2007/04/08は，正しくは2026/11/"
            "21～2026/11/22）．");
  EXPECT_EQ(FixDatesByMenu, "「編集」の「日付を直す」で直せます．");
  EXPECT_EQ(DatesFixed({{}, {}}), "トラックログ2件の日付を直しました．");
}

TEST(AppMessages, BehindATransferAreWordedSo) {
  EXPECT_EQ(DamagedRecords(DataKind::Waypoint, 2),
            "(Waypoint)破損した記録が2件届きました．「誤り検査」を「する」にして，もう一度ダウンロードしてください．");
  EXPECT_EQ(MissingRecords(DataKind::Route, 6, 4), "Route：6件中4件が届きませんでした．");
  EXPECT_EQ(RefusedRecords(DataKind::TrackLog, 3), "(TrackLog)受信機が受け取らなかった記録が3件あります．");
  EXPECT_EQ(ReplacedRecords(DataKind::Waypoint, {"Waypoint 1", "Waypoint 3"}),
            "(Waypoint)受信機にない絵や色を，近いものに替えて送信しました：Waypoint 1，Waypoint 3．");
  EXPECT_EQ(CutRecords(DataKind::Waypoint, {"Waypoint 1"}),
            "(Waypoint)長すぎる記録の文字列の末尾を切って送信しました：Waypoint 1");
  EXPECT_EQ(CutRecords(DataKind::Waypoint, Strings(22, "W")),
            "(Waypoint)長すぎる記録の文字列の末尾を切って送信しました："
            "W，W，W，W，W，W，W，W，W，W，W，W，W，W，W，W，W，W，W，W，ほか2件");
  EXPECT_EQ(CutTexts(DataKind::Route, 2), "(Route)受信機の欄より長い文字列が2件あり，末尾を切って送信しました．");
  EXPECT_EQ(EndRefused(DataKind::Waypoint),
            "(Waypoint)受信機が転送の終わりを受け取らなかったため，書き込まれていない可能性があります．");
}

TEST(AppMessages, OfWhatIsHeldAreWordedSo) {
  EXPECT_EQ(KindFull(DataKind::TrackLog), "(TrackLog)内部データ容量の限界です．");
  EXPECT_EQ(Deleting, "内部データ削除中");
  EXPECT_EQ(NotReadBack, "書き出した内容を読み戻すと失われるものがあるため，内部データは削除しませんでした．");
  EXPECT_EQ(CutNotDeleted, "切って送信した文字列があるため，内部データは削除しませんでした．");
}

TEST(AppMessages, OfWritingAreWordedSo) {
  EXPECT_EQ(NothingDownloaded, "DataSetがDownLoadされていません．");
  EXPECT_EQ(NothingChosen, "DataSetが選択されていません．");
  EXPECT_EQ(NothingToSave, "保存するデータがありません．");
  EXPECT_EQ(NothingWritten, "DatasetがDownLoadされていません．");
  EXPECT_EQ(Converting, "Converting (WPT+)to(MPS)");
  EXPECT_EQ(ExportTo("/tmp/a"), "Export to /tmp/a");
  EXPECT_EQ(Exporting(DataKind::Waypoint, 1, 9), "Export Wpt[1/9]");
  EXPECT_EQ(Exporting(DataKind::Route, 2, 9), "Export Rte[2/9]");
  EXPECT_EQ(Exporting(DataKind::TrackLog, 3, 9), "Export Trk[3/9]");
  EXPECT_EQ(NothingTraced, "通信の記録はまだありません．受信機と通信してから保存してください．");
  EXPECT_EQ(HidePositionsQuestion,
            "記録の中の位置を隠しますか？隠すと，最初の位置が0度になるように，すべての位置をずらします．");
  EXPECT_EQ(HidePositionsAnswers.first, "隠して保存");
  EXPECT_EQ(HidePositionsAnswers.second, "そのまま保存");
  EXPECT_EQ(HidePositionsAnswers.back, "戻る");
  EXPECT_EQ(TraceFilter, "すべてのファイル (*.*)|*.*|通信記録 (*.txt)|*.txt|");
  EXPECT_EQ(TraceSaved("a"), "通信記録を保存しました：a");
  EXPECT_EQ(OverwriteQuestion("a"), "このファイル（a)は存在します．上書きしますか？");
  EXPECT_EQ(WriteProblem("a", "why"), "ファイルに書き込めません：a（why）");
  EXPECT_EQ(Utf8Question("1行目の「X」", "é"),
            "1行目の「X」の文字「é」はShift-JISでは表せません．UTF-8で保存しますか？");
  EXPECT_EQ(RecordInLine(2, "WPT\tD\tWGS84\t=\"CAFé\"\t35"), "2行目のWPT「CAFé」");
  EXPECT_EQ(RecordInLine(3, "\t\tstr=CAFé"), "3行目の「str=CAFé」");
  EXPECT_EQ(RecordInLine(4, std::string(39, 'x') + "山山"), "4行目の「" + std::string(39, 'x') + "山」");
  EXPECT_EQ(SouthAndWest(2), "南緯・西経の位置が2件あります．DMSの表記では正しく読み戻せません．");
  EXPECT_EQ(BrokenTexts(2), "コンマか引用符を含む文字列が2件あります．このファイルを読み込むと，そこで切れます．");
  EXPECT_EQ(SkippedRecords(2), "2件の記録は，文字列の中の記号のためスクリプトに書けませんでした．");
  EXPECT_EQ(PointsOffGlobe(2), "2点は，位置が地球上にないため書けませんでした．");
}

TEST(AppMessages, OfReadingAreWordedSo) {
  EXPECT_EQ(EmptyClipboard, "クリップボードにデータがありません．");
  EXPECT_EQ(UnsupportedText(),
            "未対応のファイルです．\n標準形式，WPT+形式，MPS形式，GPX形式の文字列か，地図上の位置を取り込めます．");
  EXPECT_EQ(UnsupportedFile("a.x"),
            "未対応のファイルです．\na.x\n標準形式（grc），WPT+"
            "形式（txt），MPS形式（mps），GPX形式（gpx）のファイルを取り込めます．");
  EXPECT_EQ(StandardInput, "標準入力");
  EXPECT_EQ(FtpRefused, "現時点ではFTPには対応していません（http://かfile://）");
  EXPECT_EQ(NoFileLink, "file://のリンクではありません．");
  EXPECT_EQ(NoFileName, "リンクにファイルの名前がありません．");
  EXPECT_EQ(OffGlobe, "緯度または経度が範囲外です（緯度は-90度から90度，経度は-180度から180度）．");
  EXPECT_EQ(ImportFrom, "Import from ");
  EXPECT_EQ(ClipFrom, "Clip From URL=");
  EXPECT_EQ(FileOfAnotherComputer("pc"), "ほかのコンピュータ（pc）のファイルは読み込めません．");
  EXPECT_EQ(RefusedFile("a", "why"), "取り込めません：a：why．");
  EXPECT_EQ(RefusedFile("", "why"), "取り込めません：why．");
  EXPECT_EQ(ReadProblem("a", "why"), "ファイルを読み込めません：a（why）");
  EXPECT_EQ(LinkNotOpened("https://a"), "リンクを開けませんでした：https://a");
  EXPECT_EQ(ForeignLink, "ほかの利用者が置いたリンクです");
  EXPECT_EQ(NoRegularFile, "通常のファイルではありません");
  EXPECT_EQ(BrokenOff("why"), "処理を中止しました：why");
}

TEST(AppMessages, AnImportIsReportedSo) {
  ImportResult result;
  result.stored = {3, 2, 1};
  EXPECT_EQ(ImportReport(result), "取り込み：Waypoint 3，Route 2，TrackLog 1．");
  EXPECT_EQ(ImportComplaints(result), Strings{});
  result.route_points = 5;
  result.track_points = 7;
  result.messages.Add("command [X] is not suppoted");
  result.messages.count = 4;
  result.statements.Add(0, "位置が読めません");
  result.skipped.Add(2, "測地系が不明です");
  result.skipped.Add(3, "角度の表記が不明です");
  result.overfull.Add(4);
  result.unread_time.Add(5);
  const Strings complaints{"command [X] is not suppoted",
                           "ほかに3行，分からない命令があります．",
                           "1個の文を読み飛ばしました（最初の理由：位置が読めません）．",
                           "2行を読み飛ばしました（最初は2行目：測地系が不明です）．",
                           "1行で列が多すぎます（最初は4行目）．文字列の中のコンマで切れている可能性があります．",
                           "1点の日時が読めません（最初は5行目）．時刻なしとして取り込みました．"};
  EXPECT_EQ(ImportComplaints(result), complaints);
  EXPECT_EQ(ImportReport(result), "取り込み：Waypoint 3，Route 2（5点），TrackLog 1（7点）．" + complaints[0] + " " +
                                      complaints[1] + complaints[2] + complaints[3] + complaints[4] + complaints[5]);
}

}  // namespace
}  // namespace walrim::messages
